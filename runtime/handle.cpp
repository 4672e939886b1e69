// Pointer handles: making, reading and remembering them; see handle.h.
#include "runtime/handle.h"

#include "runtime/object_table.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr std::size_t handle_buffer = 1024;
constexpr std::size_t max_packed_length = 1000;

void *remembered_pointer(const Tcl_Obj *object)
{
    return object->internalRep.twoPtrValue.ptr1;
}

swig_type_record *remembered_type(const Tcl_Obj *object)
{
    return static_cast<swig_type_record *>(object->internalRep.twoPtrValue.ptr2);
}

void copy_memory(Tcl_Obj *source, Tcl_Obj *copy)
{
    qxsh::become_handle(copy, remembered_pointer(source), remembered_type(source));
}

void make_text(Tcl_Obj *object)
{
    const auto address = qxsh::address_of(remembered_pointer(object));
    const char *const name = remembered_type(object)->name;
    const std::size_t name_length = std::strlen(name);
    const std::size_t length = 1 + qxsh::address_digits + name_length;
    char *const text = Tcl_Alloc(static_cast<unsigned int>(length + 1));
    text[0] = '_';
    std::memcpy(qxsh::write_address(text + 1, address), name, name_length + 1);
    object->bytes = text;
    object->length = static_cast<int>(length);
}

// Evaluates `script` in the caller's frame and replaces `text` by the result.
bool evaluate(Tcl_Interp *interp, const std::string &script, std::string &text)
{
    if (Tcl_EvalEx(interp, script.data(), static_cast<int>(script.size()), 0) != TCL_OK)
        return false;
    text = Tcl_GetStringResult(interp);
    return true;
}

// Follows commands until `text` is a handle; false if it never is. True with an empty text means
// "NULL". The interpreter's result is reset if anything was evaluated.
bool resolve_commands(Tcl_Interp *interp, std::string &text)
{
    for (int round = 0; !text.starts_with('_'); ++round) {
        if (text == "NULL") {
            text.clear();
            return true;
        }
        if (text.empty() || interp == nullptr || round == qxsh::max_indirections)
            return false;
        // Looking up the name first keeps the handler of unknown commands from running.
        std::string known;
        if (!evaluate(interp, "info commands " + text, known) || known.empty() ||
            !evaluate(interp, text + " cget -this", text)) {
            Tcl_ResetResult(interp);
            return false;
        }
        Tcl_ResetResult(interp);
    }
    return true;
}

[[noreturn]] void report_new_memory()
{
    std::fprintf(stderr, "test_wrap:1088: SWIG_Tcl_ConvertPtrFromString: "
                         "Assertion `!newmemory' failed.\n");
    std::abort();
}

void apply(swig_cast_record *cast, void **pointer, int flags)
{
    if ((flags & swig_disown) != 0)
        qxsh::object_table::disown(*pointer);
    if (cast->converter == nullptr)
        return;
    int new_memory = 0;
    *pointer = cast->converter(*pointer, &new_memory);
    if (new_memory != 0)
        report_new_memory();
}

// What a text that begins with "_" names. Only a success for an expected type may be cached: only
// then has the conversion looked up the type that the text names.
struct named_pointer
{
    std::uint32_t address = 0;
    swig_type_record *source = nullptr; // null: of any type, or of none
};

int convert_handle(const char *text, std::size_t length, void **pointer, swig_type_record *type,
                   int flags, named_pointer &named)
{
    const char *rest = text + 1 + qxsh::address_digits;
    // If a digit is bad, read digit by digit: those before it count.
    if (length < 1 + qxsh::address_digits || !qxsh::read_address(text + 1, named.address))
        rest = swig_unpack_hex(text + 1, &named.address, sizeof named.address);
    *pointer = qxsh::pointer_to(named.address);
    if (type == nullptr)
        return 0;
    if (rest == nullptr)
        return -1;
    swig_cast_record *const cast = swig_type_check(rest, type);
    if (cast == nullptr)
        return -1;
    named.source = cast->type;
    apply(cast, pointer, flags);
    return 0;
}

int convert_other_text(Tcl_Interp *interp, const char *text, void **pointer, swig_type_record *type,
                       int flags)
{
    *pointer = nullptr;
    std::string word = text; // a copy: evaluating may free the original
    if (!resolve_commands(interp, word))
        return -1;
    if (word.empty())
        return 0;
    named_pointer named;
    return convert_handle(word.c_str(), word.size(), pointer, type, flags, named);
}

// Keeps the object's text: it came from a script and is never regenerated.
void remember(Tcl_Obj *object, std::uint32_t address, swig_type_record *source)
{
    if (object->typePtr != nullptr && object->typePtr->freeIntRepProc != nullptr)
        object->typePtr->freeIntRepProc(object);
    qxsh::become_handle(object, qxsh::pointer_to(address), source);
}

bool fits_buffer(const swig_type_record *type)
{
    return 1 + qxsh::address_digits + std::strlen(type->name) + 1 <= handle_buffer;
}

// Converts an object with a cached pointer, with the same result as its text.
int convert_remembered(Tcl_Obj *object, void **pointer, swig_type_record *type, int flags)
{
    auto *const source = remembered_type(object);
    *pointer = remembered_pointer(object);
    if (type == nullptr)
        return 0;
    const swig_cast_record *const head = type->cast;
    if (head != nullptr && head->type == source && head->converter == nullptr && flags == 0)
        return 0;
    swig_cast_record *const cast = swig_type_check(source->name, type);
    if (cast == nullptr)
        return -1;
    apply(cast, pointer, flags);
    return 0;
}

} // namespace

char *swig_pack_hex(char *text, const void *data, std::size_t size)
{
    const auto *const bytes = static_cast<const unsigned char *>(data);
    for (std::size_t i = 0; i < size; ++i) {
        *text++ = qxsh::hex_digits[bytes[i] >> 4];
        *text++ = qxsh::hex_digits[bytes[i] & 15];
    }
    return text;
}

const char *swig_unpack_hex(const char *text, void *data, std::size_t size)
{
    auto *const bytes = static_cast<unsigned char *>(data);
    for (std::size_t i = 0; i < size; ++i, text += 2) {
        const int high = qxsh::parts_of(text[0]).high;
        const int value = high < 0 ? high : high | qxsh::parts_of(text[1]).low;
        if (value < 0)
            return nullptr;
        bytes[i] = static_cast<unsigned char>(value);
    }
    return text;
}

// Not registered with Tcl, so nothing but this module converts objects to it.
qxsh::object_type qxsh::handle_type = qxsh::make_object_type("qx_handle", copy_memory, make_text);

Tcl_Obj *swig_new_pointer_obj(void *pointer, swig_type_record *type)
{
    if (!qxsh::has_handle(pointer))
        return Tcl_NewStringObj("NULL", -1);
    if (!fits_buffer(type))
        return nullptr;
    Tcl_Obj *const object = Tcl_NewObj();
    Tcl_InvalidateStringRep(object);
    qxsh::become_handle(object, pointer, type);
    return object;
}

Tcl_Obj *swig_new_packed_obj(const void *data, std::size_t size, swig_type_record *type)
{
    const std::size_t name_length = std::strlen(type->name);
    if (size > max_packed_length || 2 * size + 1 + name_length > max_packed_length)
        return nullptr;
    char text[handle_buffer] = "_";
    std::memcpy(swig_pack_hex(text + 1, data, size), type->name, name_length + 1);
    return Tcl_NewStringObj(text, -1);
}

int SWIG_Tcl_ConvertPtrFromString(Tcl_Interp *interp, const char *text, void **pointer,
                                  swig_type_record *type, int flags)
{
    if (text[0] != '_')
        return convert_other_text(interp, text, pointer, type, flags);
    named_pointer named;
    return convert_handle(text, std::strlen(text), pointer, type, flags, named);
}

int swig_convert_ptr(Tcl_Interp *interp, Tcl_Obj *object, void **pointer, swig_type_record *type,
                     int flags)
{
    if (object->typePtr == &qxsh::handle_type)
        return convert_remembered(object, pointer, type, flags);
    const char *const text = object->bytes != nullptr ? object->bytes : Tcl_GetString(object);
    if (text[0] != '_')
        return convert_other_text(interp, text, pointer, type, flags);
    named_pointer named;
    const int status =
        convert_handle(text, static_cast<std::size_t>(object->length), pointer, type, flags, named);
    if (status == 0 && named.source != nullptr)
        remember(object, named.address, named.source);
    return status;
}
