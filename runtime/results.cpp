// Results of commands; see results.h.
#include "runtime/results.h"

#include "runtime/handle.h"
#include "runtime/known_objects.h"
#include "runtime/object_command.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace qxsh {

// The interpreter's result object, if it is as Tcl's reset leaves it, else null. Filling it is
// cheaper than creating an object, and its text, Tcl's shared empty one, need not be freed.
static inline Tcl_Obj *fresh_result(Tcl_Interp *interp)
{
    Tcl_Obj *const result = Tcl_GetObjResult(interp);
    const std::uintptr_t filled = reinterpret_cast<std::uintptr_t>(result->bytes) ^
                                  reinterpret_cast<std::uintptr_t>(known.empty_text);
    if ((filled | reinterpret_cast<std::uintptr_t>(result->typePtr)) != 0 || result->refCount > 1)
        return nullptr;
    return result;
}

// The slow paths are separate functions, so that the fast ones need no stack frame.
[[gnu::noinline]] static int replace_result(Tcl_Interp *interp, int value)
{
    Tcl_SetObjResult(interp, swig_from_int(value));
    return TCL_OK;
}

[[gnu::noinline]] static int replace_great_result(Tcl_Interp *interp, unsigned int value)
{
    Tcl_SetObjResult(interp, swig_from_unsigned_long(value));
    return TCL_OK;
}

[[gnu::noinline]] static int replace_result(Tcl_Interp *interp, void *pointer,
                                            swig_type_record *type)
{
    Tcl_SetObjResult(interp, swig_new_instance_obj(interp, pointer, type, 0));
    return TCL_OK;
}

int set_int_result(Tcl_Interp *interp, int value)
{
    Tcl_Obj *const result = fresh_result(interp);
    if (result == nullptr) [[unlikely]]
        return replace_result(interp, value);
    result->bytes = nullptr;
    result->internalRep.longValue = value;
    result->typePtr = known.integer_type;
    return TCL_OK;
}

struct alignas(2) digit_pair
{
    char digits[2];
};

static constexpr auto two_digits = [] {
    std::array<digit_pair, 100> pairs{};
    for (unsigned i = 0; i < 100; ++i)
        pairs[i] = {static_cast<char>('0' + i / 10), static_cast<char>('0' + i % 10)};
    return pairs;
}();

// Writes a number below 100 to an even address.
static inline void put_two_digits(char *text, unsigned int value)
{
    std::memcpy(__builtin_assume_aligned(text, 2), &two_digits[value], 2);
}

int set_great_result(Tcl_Interp *interp, unsigned int value)
{
    Tcl_Obj *const result = fresh_result(interp);
    if (result == nullptr) [[unlikely]]
        return replace_great_result(interp, value);
    constexpr int digits = 10; // of every 32-bit number beyond the integer objects
    char *const text = Tcl_Alloc(digits + 1);
#pragma GCC unroll 5
    for (int i = digits - 2; i >= 0; i -= 2, value /= 100)
        put_two_digits(text + i, value % 100);
    text[digits] = '\0';
    result->bytes = text;
    result->length = digits;
    return TCL_OK;
}

int set_low32_result(Tcl_Interp *interp, unsigned long long value)
{
    // Sign extension is intended: 2^31 gives 18446744071562067968.
    const auto widened = static_cast<long long>(static_cast<std::int32_t>(value));
    Tcl_SetObjResult(interp,
                     swig_from_unsigned_long_long(static_cast<unsigned long long>(widened)));
    return TCL_OK;
}

int set_pointer_result(Tcl_Interp *interp, void *pointer, swig_type_record *type)
{
    if (!has_handle(pointer) || type->client_data != nullptr) [[unlikely]]
        return replace_result(interp, pointer, type);
    Tcl_Obj *const result = fresh_result(interp);
    if (result == nullptr) [[unlikely]]
        return replace_result(interp, pointer, type);
    result->bytes = nullptr;
    become_handle(result, pointer, type);
    return TCL_OK;
}

} // namespace qxsh
