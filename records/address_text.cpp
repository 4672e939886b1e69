// Addresses to text and back; see address_text.h.
#include "records/address_text.h"

#include <arpa/inet.h>

#include <algorithm>
#include <string_view>

namespace qxsh {

namespace {

constexpr char digits[] = "0123456789abcdef";
constexpr int groups = 8;

int digit(char letter)
{
    if (letter >= '0' && letter <= '9')
        return letter - '0';
    const char lower = static_cast<char>(letter | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

char *put_decimal(char *to, unsigned byte)
{
    if (byte >= 100)
        *to++ = static_cast<char>('0' + byte / 100);
    if (byte >= 10)
        *to++ = static_cast<char>('0' + byte / 10 % 10);
    *to++ = static_cast<char>('0' + byte % 10);
    return to;
}

char *put_group(char *to, unsigned group)
{
    for (int shift = 12; shift >= 0; shift -= 4)
        if (shift == 0 || group >> shift != 0)
            *to++ = digits[group >> shift & 15];
    return to;
}

unsigned group_of(const address_words &words, int number)
{
    return words[number / 2] >> (number % 2 == 0 ? 16 : 0) & 0xffff;
}

struct zero_run
{
    int start;
    int length;
};

// The longest run of at least two zeros; the first of equal ones.
zero_run longest_zeros(const address_words &words)
{
    zero_run best = {groups, 1};
    for (int start = 0; start < groups; ++start) {
        int end = start;
        while (end < groups && group_of(words, end) == 0)
            ++end;
        if (end - start > best.length)
            best = {start, end - start};
    }
    return best;
}

std::uint32_t big_endian(const unsigned char *bytes)
{
    return std::uint32_t{bytes[0]} << 24 | bytes[1] << 16 | bytes[2] << 8 | bytes[3];
}

} // namespace

char *put_mac(char *to, const unsigned char *bytes)
{
    for (int i = 0; i < 6; ++i) {
        if (i > 0)
            *to++ = ':';
        *to++ = digits[bytes[i] >> 4];
        *to++ = digits[bytes[i] & 15];
    }
    return to;
}

char *put_ipv4(char *to, std::uint32_t word)
{
    for (int shift = 24; shift >= 0; shift -= 8) {
        to = put_decimal(to, word >> shift & 255);
        if (shift > 0)
            *to++ = '.';
    }
    return to;
}

char *put_ipv6(char *to, const address_words &words)
{
    if (words[0] == 0 && words[1] == 0 && words[2] == 0xffff) {
        constexpr std::string_view mapped = "::ffff:";
        return put_ipv4(std::copy(mapped.begin(), mapped.end(), to), words[3]);
    }
    const zero_run zeros = longest_zeros(words);
    for (int number = 0; number < groups; ++number) {
        if (number == zeros.start) {
            *to++ = ':';
            number += zeros.length - 1;
            if (number == groups - 1)
                *to++ = ':';
            continue;
        }
        if (number > 0)
            *to++ = ':';
        to = put_group(to, group_of(words, number));
    }
    return to;
}

bool parse_mac(const char *text, unsigned char *bytes)
{
    for (int i = 0; i < 6; ++i) {
        if (i > 0 && *text != ':' && *text != '-')
            return false;
        text += i > 0 ? 1 : 0;
        int value = digit(*text);
        if (value < 0)
            return false;
        const int low = digit(*++text);
        if (low >= 0) {
            value = 16 * value + low;
            ++text;
        }
        bytes[i] = static_cast<unsigned char>(value);
    }
    return *text == '\0';
}

// Some C libraries take a zero in front of another digit, as in 01.2.3.4.
static bool has_leading_zero(const char *text)
{
    bool first = true;
    for (; *text != '\0'; ++text) {
        if (first && *text == '0' && digit(text[1]) >= 0)
            return true;
        first = *text == '.';
    }
    return false;
}

bool parse_ipv4(const char *text, std::uint32_t &word)
{
    unsigned char bytes[4];
    if (inet_pton(AF_INET, text, bytes) != 1 || has_leading_zero(text))
        return false;
    word = big_endian(bytes);
    return true;
}

int parse_ip(const char *text, address_words &words)
{
    if (parse_ipv4(text, words[0])) {
        words[1] = words[2] = words[3] = 0;
        return 4;
    }
    unsigned char bytes[16];
    if (inet_pton(AF_INET6, text, bytes) != 1)
        return 0;
    for (int i = 0; i < 4; ++i)
        words[i] = big_endian(bytes + 4 * i);
    return 6;
}

} // namespace qxsh
