// A model of how the board reads a word as a number: character by character, without Tcl, the C
// library or the converters, which the targets check against it.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace fuzz {

/// What a converter returns.
struct number_reading
{
    int code;                ///< as of runtime/numbers.h
    std::uint64_t value = 0; ///< if the code is SWIG_OK; signed numbers are sign-extended
};

/// Whether Tcl reads the word as an integer, of any size.
bool is_integer(std::string_view word);

/// Tcl's integer in a 32-bit long; nothing if the word is not an integer or does not fit.
std::optional<std::int32_t> long32(std::string_view word);

number_reading read_int(std::string_view word);

/// An unsigned number up to `greatest`, which is at most 4294967295.
number_reading read_unsigned(std::string_view word, std::uint32_t greatest);

number_reading read_unsigned_long_long(std::string_view word);

} // namespace fuzz
