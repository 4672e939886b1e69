// Addresses and prefixes as keys. An IPv4 address is in word 0, an IPv6 address in words 0 to 3,
// first word first. The most significant bit of a word comes first in the address.
#pragma once

#include "numbers.h"
#include "qx_sdk.h"
#include "record.h"

#include <array>
#include <cstdint>

namespace qxsim {

/// An address without its length. An IPv4 address has zeros in words 1 to 3.
struct address_key
{
    std::uint32_t family = ipv4; ///< an address_family
    std::array<std::uint32_t, 4> words{};
    using sorted_by_words = void;
    bool operator==(const address_key &) const = default;
};

/// A prefix: an address whose bits beyond the length are zero. Sorted by family (IPv4 first),
/// address and length.
struct prefix_key
{
    address_key address;
    std::uint32_t length = 0;
    using sorted_by_words = void;
    bool operator==(const prefix_key &) const = default;
};

/// What the family of a record is: an address_family, or `unknown`.
inline std::uint32_t family_of(const qx_ip_address_t &address)
{
    return meaning<place::family>(address.afi);
}

/// True if the family is known and the length does not exceed its number of bits.
bool valid_address(const qx_ip_address_t &address);

/// The number of bits of an address: 32 for IPv4, otherwise 128.
std::uint32_t family_bits(std::uint32_t family);

/// The address in a valid record, whatever its length.
address_key address_of(const qx_ip_address_t &address);

/// The prefix in a valid record; bits beyond the length are cleared.
prefix_key prefix_of(const qx_ip_address_t &address);

/// The prefix cut to `length` bits, or unchanged if it is not longer.
prefix_key shortened(const prefix_key &prefix, std::uint32_t length);

/// The number of bits that two prefixes of one family begin with alike, at most the lesser length.
std::uint32_t common_bits(const prefix_key &left, const prefix_key &right);

} // namespace qxsim
