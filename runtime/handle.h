// Pointer handles: "_", the pointer's 4 bytes in memory order as hexadecimal digits, and the type's
// mangled name; "NULL" for a null pointer of any type. Handles are 8 digits wide on every build: a
// 64-bit build keeps its blocks below 4 GiB.
#pragma once

#include "records/addresses.h"
#include "runtime/handle_text.h"
#include "runtime/tcl_api.h"
#include "runtime/type_registry.h"

#include <cassert>
#include <cstddef>
#include <cstdint>

/// Writes two lower-case digits per byte, no terminator; returns the position behind them.
char *swig_pack_hex(char *text, const void *data, std::size_t size);

/// Reads two lower-case digits per byte; returns the position behind them, or null at a bad digit
/// (the bytes before it are written).
const char *swig_unpack_hex(const char *text, void *data, std::size_t size);

/// A new object (reference count 0) that stands for the pointer; its text is made when first asked
/// for. Null when the type's name is too long for a handle. A pointer at or above 4 GiB has no
/// handle: "NULL", and an assertion in debug builds.
Tcl_Obj *swig_new_pointer_obj(void *pointer, swig_type_record *type);

/// A new object with any bytes in handle form, or null when the text would exceed 1000 characters.
Tcl_Obj *swig_new_packed_obj(const void *data, std::size_t size, swig_type_record *type);

/// `flags` of the conversions: take the pointer out of the object table.
constexpr int swig_disown = 1;

/// Converts a handle's text, or the name of a command that answers " cget -this" with one, to a
/// pointer. `type` is the expected type; null accepts any, even malformed digits. Returns 0, or -1
/// without a message (the interpreter's result is then reset if anything was evaluated).
/// `*pointer` is meaningless after a failure.
int SWIG_Tcl_ConvertPtrFromString(Tcl_Interp *interp, const char *text, void **pointer,
                                  swig_type_record *type, int flags);

/// The same for an object, which remembers what its text stood for.
int swig_convert_ptr(Tcl_Interp *interp, Tcl_Obj *object, void **pointer, swig_type_record *type,
                     int flags);

namespace qxsh {

/// The type of objects that remember what their handle text stands for: twoPtrValue holds the
/// address and the record of the type that the text names.
[[gnu::visibility("hidden")]] extern object_type handle_type;

/// Whether the pointer has a handle other than "NULL": it is not null and lies below 4 GiB.
inline bool has_handle(const void *pointer)
{
    assert(lies_low(pointer) && "blocks that scripts hold lie below 4 GiB");
    return pointer != nullptr && lies_low(pointer);
}

/// Makes an object without text and type remember a pointer that has a handle.
inline void become_handle(Tcl_Obj *object, void *pointer, swig_type_record *type)
{
    object->internalRep.twoPtrValue.ptr1 = pointer;
    object->internalRep.twoPtrValue.ptr2 = type;
    object->typePtr = &handle_type;
}

/// The short way for a text that has not been looked at, of a type whose last match was the type
/// itself: if it is a well-formed handle of the type, the object remembers it. False, with the
/// object unchanged: it has to go the long way, swig_convert_ptr. `name` is the type's own.
inline bool read_new_handle(Tcl_Obj *object, swig_type_record *type, const handle_name &name)
{
    const swig_cast_record *const cast = type->cast;
    if (object->typePtr != nullptr || object->length != name.length + int{1 + address_digits} ||
        cast == nullptr || cast->type != type || cast->converter != nullptr)
        return false;
    const char *const text = object->bytes;
    std::uint32_t address;
    if (text[0] != '_' || !is_name(text + 1 + address_digits, name) ||
        !read_address(text + 1, address))
        return false;
    become_handle(object, pointer_to(address), type);
    return true;
}

/// How often a word may lead to another one (a command whose " cget -this" names a command ...)
/// before its conversion fails.
constexpr int max_indirections = 64;

} // namespace qxsh
