// The values of fields in memory, little-endian, at any alignment. Nothing here makes sure that the
// memory is there: whoever cannot know asks helpers/guarded_memory.h for the whole record first.
#pragma once

#include "records/table.h"

#include <cstring>

namespace qxsh {

/// `width` ones above `bit`; width 1 to 32, bit + width at most 32.
constexpr std::uint32_t bit_mask(unsigned bit, unsigned width)
{
    return (UINT32_MAX >> (32 - width)) << bit;
}

/// A number of 1, 2 or 4 bytes.
inline std::uint32_t read_number(const void *place, unsigned size)
{
    std::uint32_t value = 0;
    switch (size) {
    case 1:
        std::memcpy(&value, place, 1);
        return value;
    case 2:
        std::memcpy(&value, place, 2);
        return value;
    default:
        std::memcpy(&value, place, 4);
        return value;
    }
}

/// Writes as many low bytes of the value.
inline void write_number(void *place, unsigned size, std::uint32_t value)
{
    switch (size) {
    case 1:
        std::memcpy(place, &value, 1);
        break;
    case 2:
        std::memcpy(place, &value, 2);
        break;
    default:
        std::memcpy(place, &value, 4);
        break;
    }
}

/// Where element `index` of a field lies.
inline const unsigned char *place_of(const void *record, const field_row &field, unsigned index = 0)
{
    return static_cast<const unsigned char *>(record) + field.offset + index * field.size;
}

/// The value of element `index` of a field that is no record.
inline std::uint32_t read_field(const void *record, const field_row &field, unsigned index = 0)
{
    const std::uint32_t value = read_number(place_of(record, field, index), field.size);
    return field.width == 0 ? value : value >> field.bit & bit_mask(0, field.width);
}

/// Sets a byte of `bytes` to 1 for each byte of a record that belongs to a field, or to one that
/// holds `only`. The others stay.
void mark_fields(unsigned char *bytes, const record_row &record, const holding *only = nullptr);

/// Sets the bytes of a record that belong to no field to zero, so that records with equal fields
/// are equal bytes.
void clear_padding(void *bytes, const record_row &record);

} // namespace qxsh
