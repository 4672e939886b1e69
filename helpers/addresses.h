// Addresses as the board has them: 32 bits, arithmetic modulo 2^32, on every build.
// A 64-bit build keeps all blocks below 4 GiB (block_memory.h), so the results are the same there.
#pragma once

#include <cstdint>

namespace qxsh {

/// The address `bytes` behind `base`, modulo 2^32. `bytes` may be a wrapped product. The base lies
/// below 4 GiB.
inline void *address_at(void *base, std::uint32_t bytes)
{
    const auto address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(base));
    return reinterpret_cast<void *>(static_cast<std::uintptr_t>(address + bytes));
}

} // namespace qxsh
