// Functions that all record helpers share. A null record reads as 0 or null and ignores writes; bad
// addresses set pending_fault (guarded_memory.h). `size` is always a record's size in bytes,
// `offset` a field's offset, `setter` the name that a bad index is reported with.
#pragma once

#include "helpers/fields.h"
#include "records/addresses.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace qxsh {

/// The index that selects every element.
constexpr std::uint32_t every_element = UINT32_MAX;

/// A zeroed record that the caller owns (free_block); null if there is no memory.
void *create_record(std::uint32_t size);

/// The same for `count` adjacent records; their size is multiplied modulo 2^32.
void *create_record_array(std::uint32_t count, std::uint32_t size);

/// The address of record `index`, which is not checked, modulo 2^32; null for null.
inline void *record_slot(void *array, std::uint32_t index, std::uint32_t size)
{
    return array != nullptr ? address_at(array, index * size) : nullptr;
}

/// Copies `item` to record `index` of an array; does nothing if either is null.
void set_record_slot(void *array, const void *item, std::uint32_t index, std::uint32_t size);

/// Copies a record of 1 to 4096 bytes, or nothing if any of the memory is missing. The two may
/// overlap; neither is null.
inline void copy_bytes(void *target, const void *source, std::uint32_t size)
{
    if (can_copy(target, source, size))
        std::memmove(target, source, size);
}

/// Copies a nested record to `offset` in the same way.
inline void copy_record(void *record, std::uint32_t offset, const void *source, std::uint32_t size)
{
    copy_bytes(address_at(record, offset), source, size);
}

/// What a 64-bit processor copies faster by itself than by a call: it has registers for all of it.
constexpr std::uint32_t most_in_registers = any_alignment && sizeof(void *) == 8 ? 128 : 0;

/// The same, after can_write() has returned true for the record.
template <std::uint32_t size>
[[gnu::always_inline]] inline void put_record(void *record, std::uint32_t offset,
                                              const void *source)
{
    if (!can_read(source, size)) [[unlikely]]
        return;
    void *const target = address_at(record, offset);
    if constexpr (size <= most_in_registers) {
        // Everything is read before anything is written: the two may overlap.
        std::array<unsigned char, size> bytes;
        std::memcpy(bytes.data(), source, size);
        std::memcpy(target, bytes.data(), size);
    } else {
        std::memmove(target, source, size);
    }
}

/// Copies a nested record to `offset`; does nothing if either pointer is null.
inline void set_record(void *record, std::uint32_t offset, const void *source, std::uint32_t size)
{
    if (record != nullptr && source != nullptr)
        copy_record(record, offset, source, size);
}

/// The address of a nested record; null for null.
inline void *record_at(void *record, std::uint32_t offset)
{
    return record != nullptr ? address_at(record, offset) : nullptr;
}

/// Copies `source` to element `index` of `count`, or to every element, and reports any other index;
/// does nothing if either pointer is null.
void set_record_element(void *record, std::uint32_t offset, std::uint32_t count, const void *source,
                        std::uint32_t size, std::uint32_t index, const char *setter);

/// The address of element `index` of `count`; null for a null record or an index past the end.
inline void *record_element(void *record, std::uint32_t offset, std::uint32_t count,
                            std::uint32_t size, std::uint32_t index)
{
    return record != nullptr && index < count ? address_at(record, offset + index * size) : nullptr;
}

/// Prints "<setter> bad Index " and a newline.
void report_bad_index(const char *setter);

template <class Storage> void set_scalar(void *record, std::uint32_t offset, std::uint32_t value)
{
    if (record != nullptr)
        store<Storage>(record, offset, value);
}

template <class Storage> Storage get_scalar(const void *record, std::uint32_t offset)
{
    return record != nullptr ? load<Storage>(record, offset) : Storage{0};
}

template <class Storage>
void set_bits(void *record, std::uint32_t offset, unsigned bit, unsigned width, std::uint32_t value)
{
    if (record != nullptr)
        store_bits<Storage>(record, offset, bit, width, value);
}

template <class Storage>
Storage get_bits(const void *record, std::uint32_t offset, unsigned bit, unsigned width)
{
    if (record == nullptr)
        return 0;
    return static_cast<Storage>(load_bits<Storage>(record, offset, bit, width));
}

/// Sets element `index` of `count` scalars, or every element. Reports any other index.
template <class Storage>
void set_element(void *record, std::uint32_t offset, std::uint32_t count, std::uint32_t value,
                 std::uint32_t index, const char *setter)
{
    if (record == nullptr)
        return;
    if (index < count) {
        store<Storage>(record, offset + index * sizeof(Storage), value);
    } else if (index == every_element) {
        for (std::uint32_t each = 0; each < count; ++each)
            store<Storage>(record, offset + each * sizeof(Storage), value);
    } else {
        report_bad_index(setter);
    }
}

/// Element `index` of `count` scalars; 0 for an index past the end.
template <class Storage>
Storage get_element(const void *record, std::uint32_t offset, std::uint32_t count,
                    std::uint32_t index)
{
    if (record == nullptr || index >= count)
        return 0;
    return load<Storage>(record, offset + index * sizeof(Storage));
}

} // namespace qxsh
