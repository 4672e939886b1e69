// Memory addresses as on the board, in every build: 32 bits, with arithmetic modulo 2^32. A 64-bit
// build keeps all blocks below 4 GiB (helpers/block_memory.h), so results are the same there.
#pragma once

#include <cstdint>

namespace qxsh {

/// Whether the pointer fits 32 bits. Always true in a 32-bit build.
inline bool lies_low(const void *pointer)
{
    return reinterpret_cast<std::uintptr_t>(pointer) <= UINT32_MAX;
}

/// The address of a pointer, its low 32 bits.
inline std::uint32_t address_of(const void *pointer)
{
    return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(pointer));
}

/// The pointer to an address.
inline void *pointer_to(std::uint32_t address)
{
    return reinterpret_cast<void *>(static_cast<std::uintptr_t>(address));
}

/// The pointer `bytes` after `base` (null or below 4 GiB), modulo 2^32.
inline void *address_at(void *base, std::uint32_t bytes)
{
    return pointer_to(address_of(base) + bytes);
}

} // namespace qxsh
