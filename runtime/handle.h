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

/// Writes two lower-case digits per byte, without a terminator; returns the position after them.
char *swig_pack_hex(char *text, const void *data, std::size_t size);

/// Reads two lower-case digits for each of `size` bytes; returns the position after them, or null
/// at a bad digit (the bytes before it are written).
const char *swig_unpack_hex(const char *text, void *data, std::size_t size);

/// A new object (reference count 0) for the pointer; its text is created when it is first needed. A
/// null pointer gives "NULL". Returns null if the type's name is too long for a handle. A pointer
/// at or above 4 GiB has no handle: it gives "NULL", and fails an assertion in debug builds.
Tcl_Obj *swig_new_pointer_obj(void *pointer, swig_type_record *type);

/// A new object (reference count 0) with any `size` bytes in handle form, or null if the text would
/// exceed 1000 characters.
Tcl_Obj *swig_new_packed_obj(const void *data, std::size_t size, swig_type_record *type);

/// A flag of the conversions: remove the pointer from the object table.
constexpr int swig_disown = 1;

/// Converts a handle's text, or the name of a command that answers " cget -this" with one, to a
/// pointer. `type` is the expected type; null accepts any, even malformed digits. Returns 0, or -1
/// without an error message (the interpreter's result is reset if anything was evaluated). After a
/// failure `*pointer` is unspecified.
int SWIG_Tcl_ConvertPtrFromString(Tcl_Interp *interp, const char *text, void **pointer,
                                  swig_type_record *type, int flags);

/// The same for an object, which caches the conversion of its text.
int swig_convert_ptr(Tcl_Interp *interp, Tcl_Obj *object, void **pointer, swig_type_record *type,
                     int flags);

namespace qxsh {

/// The type of objects that cache the conversion of their handle text: twoPtrValue holds the
/// address and the swig_type_record of the type that the text names.
[[gnu::visibility("hidden")]] extern object_type handle_type;

/// Whether the pointer has a handle other than "NULL": it is not null and is below 4 GiB.
inline bool has_handle(const void *pointer)
{
    assert(lies_low(pointer) && "blocks that scripts hold lie below 4 GiB");
    return reinterpret_cast<std::uintptr_t>(pointer) - 1 < UINT32_MAX; // one comparison for both
}

/// Turns an object without text and type into a handle object of the pointer, which must have a
/// handle.
inline void become_handle(Tcl_Obj *object, void *pointer, swig_type_record *type)
{
    object->internalRep.twoPtrValue.ptr1 = pointer;
    object->internalRep.twoPtrValue.ptr2 = type;
    object->typePtr = &handle_type;
}

/// The fast path for an object that has only a text: if that is a well-formed handle of the type,
/// the object caches it; whether the type accepts its own handles is not looked at. Returns false,
/// with the object unchanged, for all other objects. `name` is the type's name.
inline bool read_new_handle(Tcl_Obj *object, swig_type_record *type, const handle_name &name)
{
    if (object->typePtr != nullptr || object->length != name.handle_length())
        return false;
    const char *const text = object->bytes;
    std::uint32_t address;
    if (text[0] != '_' || !has_name(text, name) || !read_address(text + 1, address))
        return false;
    become_handle(object, pointer_to(address), type);
    return true;
}

/// How many times a word may lead to another one (a command whose " cget -this" names a command
/// ...) before the conversion fails. Without a limit, words that lead in a circle would hang the
/// process: the rounds do not nest, so Tcl's own limit does not end them. Object commands need one
/// round.
constexpr int max_indirections = 64;

} // namespace qxsh
