// Addresses and prefixes as keys. Family 0 is IPv4, an address in word 0; family 1 is IPv6, in
// words 0 to 3, the first word first. Words are numbers: the most significant bit comes first in an
// address.
#pragma once

#include "qx_sdk.h"

#include <array>
#include <compare>
#include <cstdint>

namespace qxsim {

constexpr std::uint32_t family_ipv4 = 0;
constexpr std::uint32_t family_ipv6 = 1;

/// An address without its length. An IPv4 address has zeros in words 1 to 3.
struct address_key
{
    std::uint32_t family = 0;
    std::array<std::uint32_t, 4> words{};
    auto operator<=>(const address_key &) const = default;
};

/// A prefix: an address cut to a length. IPv4 before IPv6, then by address, shorter ones first.
struct prefix_key
{
    address_key address;
    std::uint32_t length = 0;
    auto operator<=>(const prefix_key &) const = default;
};

/// True if the family is known and has that many bits.
bool valid_address(const qx_ip_address_t &address) noexcept;

/// Bits of an address of a known family: 32 or 128.
std::uint32_t family_bits(std::uint32_t family) noexcept;

/// The address of a valid record; its length does not count.
address_key address_of(const qx_ip_address_t &address) noexcept;

/// The prefix of a valid record; bits behind the length do not count.
prefix_key prefix_of(const qx_ip_address_t &address) noexcept;

/// The prefix cut to a length, if it is longer.
prefix_key shortened(const prefix_key &prefix, std::uint32_t length) noexcept;

} // namespace qxsim
