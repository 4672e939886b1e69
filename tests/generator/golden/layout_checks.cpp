// Sizes, alignments and offsets of the records as this compiler sees them.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "qx_sdk.h"

#include <cstddef>

static_assert(sizeof(qx_lamp_colour_t) == 3);
static_assert(alignof(qx_lamp_colour_t) == 1);
static_assert(offsetof(qx_lamp_colour_t, hue) == 0);
static_assert(offsetof(qx_lamp_colour_t, level) == 1);

static_assert(sizeof(qx_lamp_view_t) == 4);
static_assert(alignof(qx_lamp_view_t) == 4);
static_assert(offsetof(qx_lamp_view_t, word) == 0);
static_assert(offsetof(qx_lamp_view_t, colour) == 0);

static_assert(sizeof(qx_lamp_t) == 56);
static_assert(alignof(qx_lamp_t) == 4);
static_assert(offsetof(qx_lamp_t, id) == 0);
static_assert(offsetof(qx_lamp_t, flags) == 3);
static_assert(offsetof(qx_lamp_t, name) == 8);
static_assert(offsetof(qx_lamp_t, hours) == 12);
static_assert(offsetof(qx_lamp_t, view) == 20);
static_assert(offsetof(qx_lamp_t, palette) == 24);
static_assert(offsetof(qx_lamp_t, program) == 36);
static_assert(offsetof(qx_lamp_t, secret) == 52);
