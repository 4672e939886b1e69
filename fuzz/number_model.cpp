// The model of number words. Magnitudes saturate at a number too large for every type.
#include "fuzz/number_model.h"

#include "runtime/numbers.h"

namespace fuzz {

namespace {

bool blank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

int digit_of(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'Z')
        return c - 'A' + 10;
    return 99;
}

struct magnitude
{
    std::uint64_t value = 0;
    bool beyond = false; ///< more than 64 bits
};

// Reads one or more digits of the base; there must be no other characters.
std::optional<magnitude> digits(std::string_view text, unsigned base)
{
    if (text.empty())
        return {};
    magnitude made;
    for (const char c : text) {
        const auto digit = static_cast<unsigned>(digit_of(c));
        if (digit >= base)
            return {};
        if (made.value > (UINT64_MAX - digit) / base)
            made.beyond = true;
        made.value = made.value * base + digit;
    }
    return made;
}

struct number
{
    bool negative = false;
    magnitude size;
};

void skip_sign(std::string_view &text, number &made)
{
    if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
        made.negative = text[0] == '-';
        text.remove_prefix(1);
    }
}

void skip_blanks(std::string_view &text)
{
    while (!text.empty() && blank(text.front()))
        text.remove_prefix(1);
}

bool prefixed(std::string_view text, char letter)
{
    return text.size() > 2 && text[0] == '0' && (text[1] | 0x20) == letter;
}

// Tcl's syntax: blanks on both sides, and 0x, 0o, 0b or a leading 0.
std::optional<number> tcl_integer(std::string_view text)
{
    number made;
    skip_blanks(text);
    while (!text.empty() && blank(text.back()))
        text.remove_suffix(1);
    skip_sign(text, made);
    std::optional<magnitude> size;
    if (prefixed(text, 'x'))
        size = digits(text.substr(2), 16);
    else if (prefixed(text, 'o'))
        size = digits(text.substr(2), 8);
    else if (prefixed(text, 'b'))
        size = digits(text.substr(2), 2);
    else
        size = digits(text, text.size() > 1 && text[0] == '0' ? 8 : 10);
    if (!size)
        return {};
    made.size = *size;
    return made;
}

// The C library's syntax with base 0: blanks in front only, 0x or a leading 0.
std::optional<number> c_integer(std::string_view text)
{
    number made;
    skip_blanks(text);
    skip_sign(text, made);
    const auto size = prefixed(text, 'x') ? digits(text.substr(2), 16)
                                          : digits(text, !text.empty() && text[0] == '0' ? 8 : 10);
    if (!size)
        return {};
    made.size = *size;
    return made;
}

// The second way to read a word, truncated to the width of `greatest`.
number_reading read_text(std::string_view word, std::uint64_t greatest)
{
    if (word.empty())
        return {SWIG_TypeError};
    if (word[0] == '-')
        return {SWIG_OverflowError};
    const auto found = c_integer(word);
    if (!found)
        return {SWIG_TypeError};
    if (found->size.beyond || found->size.value > greatest)
        return {SWIG_OverflowError};
    return {SWIG_OK, (found->negative ? 0 - found->size.value : found->size.value) & greatest};
}

} // namespace

bool is_integer(std::string_view word)
{
    return tcl_integer(word).has_value();
}

std::optional<std::int32_t> long32(std::string_view word)
{
    const auto found = tcl_integer(word);
    if (!found || found->size.beyond || found->size.value > UINT32_MAX)
        return {};
    const auto low = static_cast<std::uint32_t>(found->size.value);
    return static_cast<std::int32_t>(found->negative ? 0 - low : low);
}

number_reading read_int(std::string_view word)
{
    const auto value = long32(word);
    if (!value)
        return {SWIG_TypeError};
    return {SWIG_OK, static_cast<std::uint64_t>(std::int64_t{*value})};
}

number_reading read_unsigned(std::string_view word, std::uint32_t greatest)
{
    const auto value = long32(word);
    const number_reading whole = value && *value >= 0
                                     ? number_reading{SWIG_OK, static_cast<std::uint32_t>(*value)}
                                     : read_text(word, UINT32_MAX);
    if (whole.code == SWIG_OK && whole.value > greatest)
        return {SWIG_OverflowError};
    return whole;
}

number_reading read_unsigned_long_long(std::string_view word)
{
    if (const auto value = long32(word))
        return {SWIG_OK, static_cast<std::uint32_t>(*value)};
    return read_text(word, UINT64_MAX);
}

} // namespace fuzz
