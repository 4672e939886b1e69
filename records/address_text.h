// Addresses as people write them: IPv4 with dots, IPv6 as RFC 5952 has it, MACs with colons. In a
// record an address is one or four numbers of 32 bits, the first bits of the address in the highest
// of the first, or six bytes.
#pragma once

#include <cstdint>

namespace qxsh {

using address_words = std::uint32_t[4];

/// Characters of the longest text, without an end mark: eight groups of an IPv6 address.
constexpr unsigned most_address_text = 39;

// Each writes a text of up to that many characters, without an end mark, and gives its end.
char *put_mac(char *to, const unsigned char *bytes);
char *put_ipv4(char *to, std::uint32_t word);
char *put_ipv6(char *to, const address_words &words);

/// Six bytes, each one or two digits, with ':' or '-' between them. False: the text is not such an
/// address.
bool parse_mac(const char *text, unsigned char *bytes);

bool parse_ipv4(const char *text, std::uint32_t &word);

/// Gives the version, 4 or 6, with the words; 0 if the text is not an address.
int parse_ip(const char *text, address_words &words);

/// Families as the simulated device has them. The version of a family's number, 0 if it is unknown.
constexpr int version_of(std::uint32_t family)
{
    return family == 0 ? 4 : family == 1 ? 6 : 0;
}
constexpr std::uint32_t family_of(int version)
{
    return version == 4 ? 0 : 1;
}

} // namespace qxsh
