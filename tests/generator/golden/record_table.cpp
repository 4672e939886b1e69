// The records, for the library of the package qx.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "library/qx/record_table.h"

namespace qxsh {

using enum holding;

const field_row field_rows[] = {
    // qx_lamp_colour_t
    {"hue", 0, 1, 0, 0, 0, number, -1},
    {"level", 1, 2, 0, 0, 0, number, -1},
    // qx_lamp_view_t
    {"word", 0, 4, 0, 0, 0, number, -1},
    {"colour", 0, 3, 0, 0, 0, number, 0},
    // qx_lamp_t
    {"id", 0, 2, 0, 0, 0, number, -1},
    {"mode", 2, 1, 0, 3, 0, number, -1},
    {"group", 2, 1, 3, 5, 0, number, -1},
    {"flags", 3, 1, 0, 0, 0, number, -1},
    {"serial", 4, 4, 0, 30, 0, number, -1},
    {"kind", 4, 4, 30, 2, 0, number, -1},
    {"name", 8, 1, 0, 0, 3, number, -1},
    {"hours", 12, 4, 0, 0, 2, number, -1},
    {"view", 20, 4, 0, 0, 0, number, 1},
    {"palette", 24, 3, 0, 0, 4, number, 0},
    {"program", 36, 4, 0, 0, 4, number, 1},
    {"secret", 52, 3, 0, 0, 0, number, 0},
};

const record_row record_rows[] = {
    {"qx_lamp_colour_t", 3, 0, 2, false, 0, -1},
    {"qx_lamp_view_t", 4, 2, 2, true, 0, -1},
    {"qx_lamp_t", 56, 4, 12, false, 0, -1},
};

const unsigned record_count = 3;
const unsigned field_count = 16;

static_assert(3 <= most_record_bytes && 2 <= most_fields);
static_assert(4 <= most_record_bytes && 2 <= most_fields);
static_assert(56 <= most_record_bytes && 12 <= most_fields);
static_assert(3 <= most_elements);
static_assert(2 <= most_elements);
static_assert(4 <= most_elements);
static_assert(4 <= most_elements);

} // namespace qxsh
