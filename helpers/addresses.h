// Addresses as the board has them: 32 bits, arithmetic modulo 2^32, on every build.
// A 64-bit build keeps all blocks below 4 GiB (block_memory.h), so the results are the same there.
#pragma once

#include <cstdint>

namespace qxsh {

/// The address `bytes` behind `base`, modulo 2^32. `bytes` may be a wrapped product.
/// A base at or above 4 GiB, which only tests of a 64-bit build can have, keeps its upper half.
inline void *address_at(void *base, std::uint32_t bytes)
{
    const auto address = reinterpret_cast<std::uintptr_t>(base);
    const auto low = static_cast<std::uint32_t>(address) + bytes;
    return reinterpret_cast<void *>((address & ~std::uintptr_t{UINT32_MAX}) | low);
}

} // namespace qxsh
