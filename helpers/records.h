// What every record helper shares: creation, slots of record arrays, and the field accessors with
// their null and index rules. A null record reads as 0 or null and ignores writes.
// `size` is always a record's size in bytes, `setter` the name that a bad index is reported under.
#pragma once

#include "helpers/fields.h"
#include "records/addresses.h"

#include <cstdint>
#include <cstring>

namespace qxsh {

/// The index that means every element.
constexpr std::uint32_t every_element = UINT32_MAX;

/// A zeroed record that the caller owns, or null without memory.
void *create_record(std::uint32_t size);

/// `count` zeroed records end to end, or null without memory. The product is taken modulo 2^32.
void *create_record_array(std::uint32_t count, std::uint32_t size);

/// Record `index` of an array; null for null. Arrays keep no length, so any index is computed.
inline void *record_slot(void *array, std::uint32_t index, std::uint32_t size)
{
    return array != nullptr ? address_at(array, index * size) : nullptr;
}

/// Copies `item` into slot `index`; nothing if either is null.
void set_record_slot(void *array, const void *item, std::uint32_t index, std::uint32_t size);

/// Copies a record of up to 4096 bytes; they may overlap. Neither is null. All of it or, where
/// there is no memory, nothing.
inline void copy_bytes(void *target, const void *source, std::uint32_t size)
{
    if (can_copy(target, source, size))
        std::memmove(target, source, size);
}

/// Copies a whole nested record from `source` to `offset`; they may overlap. Neither is null.
inline void copy_record(void *record, std::uint32_t offset, const void *source, std::uint32_t size)
{
    copy_bytes(address_at(record, offset), source, size);
}

/// The same where can_write() has said that the record is there.
inline void put_record(void *record, std::uint32_t offset, const void *source, std::uint32_t size)
{
    if (can_read(source, size))
        std::memmove(address_at(record, offset), source, size);
}

/// Copies a nested record in; nothing if either pointer is null.
inline void set_record(void *record, std::uint32_t offset, const void *source, std::uint32_t size)
{
    if (record != nullptr && source != nullptr)
        copy_record(record, offset, source, size);
}

/// A nested record's address; null for null.
inline void *record_at(void *record, std::uint32_t offset)
{
    return record != nullptr ? address_at(record, offset) : nullptr;
}

/// Copies `source` into element `index` of `count`, or into every element.
void set_record_element(void *record, std::uint32_t offset, std::uint32_t count, const void *source,
                        std::uint32_t size, std::uint32_t index, const char *setter);

/// The address of nested element `index`; null for a null record or an index past the end.
inline void *record_element(void *record, std::uint32_t offset, std::uint32_t count,
                            std::uint32_t size, std::uint32_t index)
{
    return record != nullptr && index < count ? address_at(record, offset + index * size) : nullptr;
}

/// Prints "<setter> bad Index " and a line end.
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

/// Element `index` of the `count` scalars at `offset`, or every element, becomes `value`.
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

template <class Storage>
Storage get_element(const void *record, std::uint32_t offset, std::uint32_t count,
                    std::uint32_t index)
{
    if (record == nullptr || index >= count)
        return 0;
    return load<Storage>(record, offset + index * sizeof(Storage));
}

} // namespace qxsh
