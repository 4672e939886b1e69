// Addresses and prefixes as keys.
#include "address.h"

#include <algorithm>
#include <bit>

namespace qxsim {

std::uint32_t family_bits(std::uint32_t family)
{
    return family == ipv4 ? 32 : 128;
}

bool valid_address(const qx_ip_address_t &address)
{
    const std::uint32_t family = family_of(address);
    return family != unknown && address.addr_len <= family_bits(family);
}

address_key address_of(const qx_ip_address_t &address)
{
    address_key key{family_of(address), {}};
    const unsigned words = family_bits(key.family) / 32;
    for (unsigned index = 0; index < words; ++index)
        key.words[index] = address.ip_addr.addr[index];
    return key;
}

prefix_key shortened(const prefix_key &prefix, std::uint32_t length)
{
    prefix_key result = prefix;
    result.length = std::min(prefix.length, length);
    for (std::uint32_t index = 0; index < 4; ++index) {
        const std::uint32_t before = index * 32;
        const std::uint32_t kept = result.length > before ? result.length - before : 0;
        if (kept < 32)
            result.address.words[index] &= kept == 0 ? 0 : ~0U << (32 - kept);
    }
    return result;
}

std::uint32_t common_bits(const prefix_key &left, const prefix_key &right)
{
    const std::uint32_t limit = std::min(left.length, right.length);
    for (std::uint32_t index = 0; index < 4 && index * 32 < limit; ++index) {
        const std::uint32_t unlike = left.address.words[index] ^ right.address.words[index];
        if (unlike != 0)
            return std::min(limit,
                            index * 32 + static_cast<std::uint32_t>(std::countl_zero(unlike)));
    }
    return limit;
}

prefix_key prefix_of(const qx_ip_address_t &address)
{
    const std::uint32_t length = address.addr_len;
    return shortened({address_of(address), length}, length);
}

} // namespace qxsim
