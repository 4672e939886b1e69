// Where the catalogue says that a bit-field is, and how this compiler stores to it.
#pragma once

struct bit_field_place
{
    const char *name; ///< record.field; null ends the table
    unsigned int offset;
    unsigned int bit;
    unsigned int width;
    void (*store)(void *record, unsigned int value);
};

extern const bit_field_place bit_field_places[];
