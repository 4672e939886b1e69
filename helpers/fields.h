// Fields of a record by byte offset, little-endian, at any alignment; C++ members are never used,
// as layouts may be packed or overlap. Bad addresses set pending_fault (guarded_memory.h).
#pragma once

#include "helpers/guarded_memory.h"
#include "records/values.h"

#include <cstdint>
#include <cstring>

namespace qxsh {

/// Reads the unsigned Storage at `offset`; `record` is not null.
template <class Storage> Storage load(const void *record, std::uint32_t offset)
{
    static_assert(sizeof(Storage) <= 4);
    const auto *const address = static_cast<const unsigned char *>(record) + offset;
    if constexpr (sizeof(Storage) == 1)
        return load_8(address);
    else if constexpr (sizeof(Storage) == 2)
        return load_16(address);
    else
        return load_32(address);
}

/// Writes `value`, truncated to Storage, at `offset`; `record` is not null.
template <class Storage> void store(void *record, std::uint32_t offset, std::uint32_t value)
{
    static_assert(sizeof(Storage) <= 4);
    auto *const address = static_cast<unsigned char *>(record) + offset;
    if constexpr (sizeof(Storage) == 1)
        store_8(address, value);
    else if constexpr (sizeof(Storage) == 2)
        store_16(address, value);
    else
        store_32(address, value);
}

/// The same, after can_write() has returned true for the memory.
template <class Storage> void put(void *record, std::uint32_t offset, std::uint32_t value)
{
    if constexpr (any_alignment) {
        const auto cut = static_cast<Storage>(value);
        std::memcpy(static_cast<unsigned char *>(record) + offset, &cut, sizeof cut);
    } else {
        store<Storage>(record, offset, value);
    }
}

/// Reads `width` bits (1 to 32) from bit `bit` up, shifted down; all lie within Storage.
template <class Storage>
std::uint32_t load_bits(const void *record, std::uint32_t offset, unsigned bit, unsigned width)
{
    return (load<Storage>(record, offset) & bit_mask(bit, width)) >> bit;
}

/// Writes the low `width` bits of `value` from bit `bit` up; the other bits keep their values.
template <class Storage>
void store_bits(void *record, std::uint32_t offset, unsigned bit, unsigned width,
                std::uint32_t value)
{
    const auto mask = bit_mask(bit, width);
    const auto rest = load<Storage>(record, offset) & ~mask;
    store<Storage>(record, offset, rest | ((value << bit) & mask));
}

} // namespace qxsh
