// The words of a command. Nearly always a handle word caches its pointer and a number word is a
// small integer object: such words are `ready`, which a wrapper checks inline, without a stack
// frame. All others are first converted into words that are ready.
#pragma once

#include "runtime/handle.h"
#include "runtime/known_objects.h"
#include "runtime/numbers.h"
#include "runtime/tcl_api.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace qxsh {

/// What a command expects of a word. Values from `word_handle` on mean a handle of one type:
/// word_handle + the type's index in the module's type table.
enum word_kind : std::uint8_t {
    word_end, ///< ends a list of kinds
    word_unsigned_char,
    word_unsigned_short,
    word_unsigned_int,
    word_int,
    word_unsigned_long_long,
    word_any_handle,
    word_handle,
};

/// The kind of a handle of the type with the index `type`.
consteval word_kind handle_of(int type)
{
    return static_cast<word_kind>(word_handle + type);
}

/// The type of converted number words: internalRep.wideValue is the number. Scripts never see one.
[[gnu::visibility("hidden")]] extern object_type converted_number;

/// Whether the word is ready: its object already holds a number that `Number` can represent. Sets
/// `value` if so; otherwise `value` is unspecified.
template <class Number> [[gnu::always_inline]] inline bool ready(const Tcl_Obj *word, Number &value)
{
    // Beyond 2147483647 a board has no integer that is not negative.
    constexpr auto greatest =
        std::min<unsigned long long>(std::numeric_limits<Number>::max(), INT32_MAX);
    const auto integer = static_cast<unsigned long>(word->internalRep.longValue);
    if (word->typePtr == known.integer_type) [[likely]] {
        if (integer <= greatest) [[likely]] {
            value = static_cast<Number>(integer);
            return true;
        }
    }
    value = static_cast<Number>(word->internalRep.wideValue);
    return word->typePtr == &converted_number;
}

/// Whether the word caches a pointer, of any type. Sets `pointer` if so; otherwise `pointer` is
/// unspecified.
inline bool ready(const Tcl_Obj *word, void *&pointer)
{
    pointer = word->internalRep.twoPtrValue.ptr1;
    return word->typePtr == &handle_type;
}

/// Whether the word caches a handle of exactly the expected type, which must be that of `pointer`,
/// and converting it would change nothing: the type stands first in its own cast list, without
/// converter (swig_expect_type). The first entry tells the type, too, for an entry is in one list
/// only. Sets `pointer` if so; otherwise `pointer` is unspecified.
template <class Target>
bool ready(const Tcl_Obj *word, Target *&pointer, const swig_type_record &expected)
{
    const auto &memory = word->internalRep.twoPtrValue;
    pointer = static_cast<Target *>(memory.ptr1);
    if (word->typePtr != &handle_type)
        return false;
    const auto *const cast = static_cast<const swig_type_record *>(memory.ptr2)->cast;
    // One branch for both: this is the fast path of every command that takes a handle.
    return ((reinterpret_cast<std::uintptr_t>(cast) -
             reinterpret_cast<std::uintptr_t>(expected.cast)) |
            reinterpret_cast<std::uintptr_t>(expected.cast->converter)) == 0;
}

/// The type of a word that must be a handle of one type.
struct wanted_type
{
    swig_type_record *resolved = nullptr; ///< null: handles of all types, or not a handle
    swig_type_record *expected = nullptr; ///< for swig_expect_type; null: as above
};

/// Converts word `number` (from 1) of the command of this name. The word "NULL" gives a null
/// pointer. `converted` becomes a ready word, whatever happens to cast lists, only for ready(): it
/// is not a proper Tcl object. Returns false with the error message in the interpreter.
bool convert_word(Tcl_Interp *interp, Tcl_Obj *word, int number, const char *command,
                  word_kind kind, wanted_type type, Tcl_Obj &converted);

/// Sets the error message for that word and returns false. `code` is a swig_error; `type` as in
/// convert_word.
bool refuse_word(Tcl_Interp *interp, int number, const char *command, word_kind kind,
                 wanted_type type, int code = SWIG_TypeError);

} // namespace qxsh
