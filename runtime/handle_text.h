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

/// The part of a type's handles after the address: "_p_qx_flow_t". A name of more than 38
/// characters does not compile.
struct handle_name
{
    std::uint8_t length = 0;
    char text[39] = {};

    consteval handle_name(const char *name)
    {
        for (; name[length] != '\0'; ++length)
            text[length] = name[length];
    }
};

/// The widest word that the processor can read at any address.
#if defined __arm__ && !defined __ARM_FEATURE_UNALIGNED
using unaligned_word = unsigned char;
#else
using unaligned_word = unsigned long;
#endif

/// Whether `text`, which has the name's length, is the name. Always false for the few names shorter
/// than a word: the caller must compare them in another way.
inline bool is_name(const char *text, const handle_name &name)
{
    constexpr int size = sizeof(unaligned_word);
    const auto differ = [](const char *one, const char *other) {
        unaligned_word words[2];
        std::memcpy(&words[0], one, size);
        std::memcpy(&words[1], other, size);
        return words[0] != words[1];
    };
    if (name.length < size)
        return false;
    const char *wanted = name.text;
    int rest = name.length - size;
    for (; rest > 0; rest -= size, text += size, wanted += size) {
        if (differ(text, wanted))
            return false;
    }
    // The last word may begin within the one before it.
    return !differ(text + rest, wanted + rest);
}

constexpr char hex_digits[] = "0123456789abcdef";

/// The value of each lower-case hexadecimal digit; -1 for every other character.
constexpr auto digit_values = [] {
    std::array<std::int8_t, 256> values;
    values.fill(-1);
    for (int value = 0; value < 16; ++value)
        values[hex_digits[value]] = static_cast<std::int8_t>(value);
    return values;
}();

inline int digit_value(char digit)
{
    return digit_values[static_cast<unsigned char>(digit)];
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
    // A value of -1 makes the whole result negative.
    const auto value = [text](int i) { return digit_value(text[i]); };
    const int first = value(0) << 12 | value(1) << 8 | value(2) << 4 | value(3);
    const int last = value(4) << 12 | value(5) << 8 | value(6) << 4 | value(7);
    if ((first | last) < 0)
        return false;
    address = __builtin_bswap32(static_cast<std::uint32_t>(first << 16 | last));
    return true;
}

} // namespace qxsh
