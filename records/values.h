// Field values in memory, little-endian, at any alignment. Nothing here checks that the memory
// exists: callers that cannot know check the whole record first (helpers/guarded_memory.h).
#pragma once

#include "records/table.h"

#include <cstring>

namespace qxsh {

/// `width` ones above `bit`; width 1 to 32, bit + width at most 32.
constexpr std::uint32_t bit_mask(unsigned bit, unsigned width)
{
    return (UINT32_MAX >> (32 - width)) << bit;
}

/// Reads a number of `size` bytes: 1, 2 or 4.
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

/// Writes the low `size` bytes of the value: 1, 2 or 4.
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

/// The address of element `index` of a field; the index is not checked.
inline const unsigned char *place_of(const void *record, const field_row &field, unsigned index = 0)
{
    return static_cast<const unsigned char *>(record) + field.offset + index * field.size;
}

/// The value of element `index` of a field that is not a record.
inline std::uint32_t read_field(const void *record, const field_row &field, unsigned index = 0)
{
    const std::uint32_t value = read_number(place_of(record, field, index), field.size);
    return field.width == 0 ? value : value >> field.bit & bit_mask(0, field.width);
}

/// Sets the bytes in `bytes` (record.size of them) that belong to a field to 1; if `only` is not
/// null, just those of fields that hold `*only`. The others keep their values.
void mark_fields(unsigned char *bytes, const record_row &record, const holding *only = nullptr);

/// Sets the bits of a field of the record at `bytes`. A nested record counts as a whole unless
/// `deep` is true; a nested union always does.
void mark_bits(unsigned char *bytes, const field_row &field, bool deep);

/// Sets the bits of all fields of the record at `bits`, of nested ones and views too.
void mark_bits(unsigned char *bits, const record_row &record);

/// In dicts and JSON, the name of the bytes that are in no field. No field has this name.
inline constexpr const char *padding_name = "padding";

/// Zeroes the bytes of a record that belong to no field, so that records with equal fields are
/// equal byte by byte.
void clear_padding(void *bytes, const record_row &record);

} // namespace qxsh
