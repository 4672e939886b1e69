// Places of the bit-fields, and how the compiler's own records reach them.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "qx_sdk.h"

#include "tests/unit/bit_field_place.h"

const bit_field_place bit_field_places[] = {
    {"qx_lamp_t.mode", 2, 0, 3,
     [](void *record, unsigned int value) { static_cast<qx_lamp_t *>(record)->mode = value; }},
    {"qx_lamp_t.group", 2, 3, 5,
     [](void *record, unsigned int value) { static_cast<qx_lamp_t *>(record)->group = value; }},
    {"qx_lamp_t.serial", 4, 0, 30,
     [](void *record, unsigned int value) { static_cast<qx_lamp_t *>(record)->serial = value; }},
    {"qx_lamp_t.kind", 4, 30, 2,
     [](void *record, unsigned int value) { static_cast<qx_lamp_t *>(record)->kind = value; }},
    {nullptr, 0, 0, 0, nullptr},
};
