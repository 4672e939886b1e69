// The place of a bit-field by the catalogue, and this compiler's way to store to it.
#pragma once

struct bit_field_place
{
    const char *name;    ///< record.field; null ends the table
    unsigned int offset; ///< in bytes, of the field's unit
    unsigned int bit;    ///< lowest bit of the field in the unit
    unsigned int width;  ///< in bits
    void (*store)(void *record, unsigned int value);
};

extern const bit_field_place bit_field_places[];
