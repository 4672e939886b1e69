// Network addresses as text: IPv4 with dots, IPv6 as in RFC 5952, MAC addresses with colons. A
// record stores a MAC address as six bytes, an IP address as one or four 32-bit words, with its
// first byte in the highest bits of the first word.
#pragma once

#include <cstdint>

namespace qxsh {

using address_words = std::uint32_t[4];

/// Characters of the longest text, without a terminator: eight groups of an IPv6 address.
constexpr unsigned most_address_text = 39;

// Each writes at most that many characters, without a terminator, and returns the end. put_mac
// reads six bytes. put_ipv6 writes IPv4-mapped addresses like ::ffff:10.0.0.1.
char *put_mac(char *to, const unsigned char *bytes);
char *put_ipv4(char *to, std::uint32_t word);
char *put_ipv6(char *to, const address_words &words);

/// Parses six bytes of one or two hexadecimal digits, separated by ':' or '-'. Returns false if the
/// text is anything else; `bytes` may then be partly written.
bool parse_mac(const char *text, unsigned char *bytes);

/// Parses four decimal bytes. Returns false, with `word` unchanged, for any other text.
bool parse_ipv4(const char *text, std::uint32_t &word);

/// Parses either version, IPv4 into the first word with zeros after it. Returns 4 or 6, or 0 with
/// `words` unchanged if the text is not an address.
int parse_ip(const char *text, address_words &words);

/// The simulated device's family numbers to versions, 4, 6 or 0 if unknown, and back.
constexpr int version_of(std::uint32_t family)
{
    return family == 0 ? 4 : family == 1 ? 6 : 0;
}
constexpr std::uint32_t family_of(int version)
{
    return version == 4 ? 0 : 1;
}

} // namespace qxsh
