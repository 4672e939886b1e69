// The text of a handle: "_", the address and the type's name. These functions read well-formed
// handles fast; handle.h reads any handle.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace qxsh {

/// Digits of a handle's address.
constexpr std::size_t address_digits = 8;

/// Names are compared in words.
using name_word = unsigned long;

/// Whether the processor can read a word at any address.
#if defined __arm__ && !defined __ARM_FEATURE_UNALIGNED
constexpr bool reads_anywhere = false;
#else
constexpr bool reads_anywhere = true;
#endif

/// The part of a type's handles after the address: "_p_qx_flow_t". A name of more than 38
/// characters does not compile.
struct alignas(name_word) handle_name
{
    /// Where the name's last word begins in this object, in which the name is preceded by one
    /// byte, as by the last digit in a handle. -128 if the name is shorter than a word.
    std::int8_t last_word = 1 - int{sizeof(name_word)};
    char text[39] = {};

    consteval handle_name(const char *name)
    {
        for (int i = 0; name[i] != '\0'; ++i, ++last_word)
            text[i] = name[i];
        if (last_word < 1)
            last_word = -128;
    }

    /// The length of a handle; negative if its name cannot be compared by has_name.
    constexpr int handle_length() const
    {
        return last_word + int{address_digits + sizeof(name_word)};
    }
};

/// Whether the name follows the digits of `handle`, a text of exactly name.handle_length()
/// characters. False as well if the processor cannot read words there: the caller must then compare
/// in another way.
inline bool has_name(const char *handle, const handle_name &name)
{
    constexpr std::ptrdiff_t size = sizeof(name_word);
    static_assert(offsetof(handle_name, text) == 1);
    if (!reads_anywhere && reinterpret_cast<std::uintptr_t>(handle) % size != 0)
        return false;
    const char *const text = handle + address_digits;
    const char *const wanted = reinterpret_cast<const char *>(&name);
    const auto difference = [text, wanted](std::ptrdiff_t at) {
        name_word words[2];
        std::memcpy(&words[0], __builtin_assume_aligned(text + at, reads_anywhere ? 1 : size),
                    size);
        std::memcpy(&words[1], wanted + at, size);
        return words[0] ^ words[1];
    };
    if (difference(0) >> 8 != 0) // without the last digit
        return false;
    const std::ptrdiff_t last = name.last_word;
    std::ptrdiff_t at = size;
    for (; at <= last; at += size) {
        if (difference(at) != 0)
            return false;
    }
    // The last word may begin within the one before it.
    if constexpr (reads_anywhere)
        return difference(last) == 0;
    for (; at < last + size; ++at) {
        if (text[at] != wanted[at])
            return false;
    }
    return true;
}

constexpr char hex_digits[] = "0123456789abcdef";

/// What a digit contributes to a byte as its first and as its second digit.
struct digit_parts
{
    int high;
    int low;
};

/// The parts of each lower-case hexadecimal digit; -1 for every other character.
inline constexpr auto digit_values = [] {
    std::array<digit_parts, 256> values;
    values.fill({-1, -1});
    for (int value = 0; value < 16; ++value)
        values[hex_digits[value]] = {value << 4, value};
    return values;
}();

inline const digit_parts &parts_of(char digit)
{
    return digit_values[static_cast<unsigned char>(digit)];
}

/// The value of two digits; negative if one is bad.
inline int byte_value(const char *digits)
{
    return parts_of(digits[0]).high | parts_of(digits[1]).low;
}

/// Writes the eight digits of an address, without a terminator; returns the position after them.
inline char *write_address(char *text, std::uint32_t address)
{
    // Memory order: the first digits are those of the lowest byte.
    for (int byte = 0; byte < 4; ++byte, address >>= 8) {
        *text++ = hex_digits[address >> 4 & 15];
        *text++ = hex_digits[address & 15];
    }
    return text;
}

/// Reads the eight digits of an address; false, with `address` unchanged, if one is bad.
inline bool read_address(const char *text, std::uint32_t &address)
{
    const int first = byte_value(text) | byte_value(text + 2) << 8;
    const int last = byte_value(text + 4) | byte_value(text + 6) << 8;
    if ((first | last) < 0)
        return false;
    address = static_cast<std::uint32_t>(first | last << 16);
    return true;
}

} // namespace qxsh
