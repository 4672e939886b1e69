// What every record helper shares: creation, slots of record arrays, and the field accessors with
// their null and index rules. A null record reads as 0 or null and ignores writes.
// `size` is always a record's size in bytes, `setter` the name that a bad index is reported under.
#pragma once

#include "helpers/addresses.h"
#include "helpers/fields.h"

#include <cstdint>

namespace qxsh {

/// The index that means every element.
constexpr std::uint32_t every_element = UINT32_MAX;

/// A zeroed record that the caller owns, or null without memory.
void *create_record(std::uint32_t size);

/// `count` zeroed records end to end, or null without memory. The product is taken modulo 2^32.
void *create_record_array(std::uint32_t count, std::uint32_t size);

/// Record `index` of an array; null for null. Arrays keep no length, so any index is computed.
void *record_slot(void *array, std::uint32_t index, std::uint32_t size);

/// Copies `item` into slot `index`; nothing if either is null.
void set_record_slot(void *array, const void *item, std::uint32_t index, std::uint32_t size);

/// Copies a whole nested record from `source` to `offset`; they may overlap. Neither is null.
void copy_record(void *record, std::uint32_t offset, const void *source, std::uint32_t size);

/// Copies a nested record in; nothing if either pointer is null.
void set_record(void *record, std::uint32_t offset, const void *source, std::uint32_t size);

/// A nested record's address; null for null.
void *record_at(void *record, std::uint32_t offset);

/// Copies `source` into element `index` of `count`, or into every element.
void set_record_element(void *record, std::uint32_t offset, std::uint32_t count, const void *source,
                        std::uint32_t size, std::uint32_t index, const char *setter);

/// The address of nested element `index`; null for a null record or an index past the end.
void *record_element(void *record, std::uint32_t offset, std::uint32_t count, std::uint32_t size,
                     std::uint32_t index);

/// Prints "<setter> bad Index " and a line end.
void report_bad_index(const char *setter);

template <class Storage>
void set_scalar(void *record, std::uint32_t offset, std::uint32_t value)
{
    if (record != nullptr)
        store<Storage>(record, offset, value);
}

template <class Storage> Storage get_scalar(const void *record, std::uint32_t offset)
{
    return record != nullptr ? load<Storage>(record, offset) : Storage{0};
}

template <class Storage>
void set_bits(void *record, std::uint32_t offset, unsigned bit, unsigned width,
              std::uint32_t value)
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
