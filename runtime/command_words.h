// The words of a command. Nearly always a handle word remembers its pointer and a number word is a
// small integer object: such words are `ready`, which a wrapper decides inline, without a stack
// frame. All others are converted first, into words that are.
#pragma once

#include "runtime/handle.h"
#include "runtime/known_objects.h"
#include "runtime/numbers.h"
#include "runtime/tcl_api.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace qxsh {

/// What a word has to be. From `word_handle` on it is a handle of one type: word_handle + the
/// type's number in the module's type table.
enum word_kind : std::uint8_t {
    word_end, ///< behind a command's last word
    word_unsigned_char,
    word_unsigned_short,
    word_unsigned_int,
    word_int,
    word_unsigned_long_long,
    word_any_handle,
    word_handle,
};

/// The kind of a handle of type number `type`.
consteval word_kind handle_of(int type) { return static_cast<word_kind>(word_handle + type); }

/// The type of converted number words: internalRep.wideValue is the number. No script sees one.
[[gnu::visibility("hidden")]] extern object_type converted_number;

/// Whether the word is a number that fits, as it stands; gives it if so.
template <class Number>
[[gnu::always_inline]] inline bool ready(const Tcl_Obj *word, Number &value)
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

/// Whether the word remembers a pointer; gives it if so.
inline bool ready(const Tcl_Obj *word, void *&pointer)
{
    pointer = word->internalRep.twoPtrValue.ptr1;
    return word->typePtr == &handle_type;
}

/// Whether the word remembers a handle of exactly this type, which is the type of the pointer.
template <class Target>
bool ready(const Tcl_Obj *word, Target *&pointer, const swig_type_record *type)
{
    const auto &memory = word->internalRep.twoPtrValue;
    pointer = static_cast<Target *>(memory.ptr1);
    return word->typePtr == &handle_type && memory.ptr2 == type;
}

/// Converts the word that is `number` (from 1) of a command with this usage, e.g.
/// "oo:qx_flow_add device_id p_flow ". `type` is that of a handle of one type, "NULL" gives null.
/// `converted` becomes a word that is ready, to be read and no more: it is no object of Tcl's.
/// False with the message that the script sees.
bool convert_word(Tcl_Interp *interp, Tcl_Obj *word, int number, const char *usage, word_kind kind,
                  swig_type_record *type, Tcl_Obj &converted);

/// Makes the conversion error of that word the command's, whatever it is; gives false.
bool refuse_word(Tcl_Interp *interp, int number, const char *usage, word_kind kind,
                 const swig_type_record *type, int code = SWIG_TypeError);

} // namespace qxsh
