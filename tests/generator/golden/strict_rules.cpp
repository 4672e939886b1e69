// What each command does with memory, in the order of the command table.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "strict/rules.h"

#include "helpers.h"
#include "types.h"

namespace qxsh {

using enum memory_use;

const element_type element_types[] = {
    {1, -1},
    {4, -1},
    {3, 0},
    {56, 2},
    {4, 1},
    {1, -1},
    {4, -1},
    {8, -1},
};

const word_rule word_rules[] = {
    // qx_lamp_colour_create
    {handle_of(type_qx_lamp_colour_t), makes, 0},
    // qx_lamp_colour_init
    {handle_of(type_qx_lamp_colour_t), element, 0}, {word_unsigned_char, none, 0},
    {word_unsigned_short, none, 0}, {word_end, none, 0},
    // qx_lamp_colour_dump
    {handle_of(type_qx_lamp_colour_t), element, 0}, {word_end, none, 0},
    // qx_lamp_colour_set_hue
    {handle_of(type_qx_lamp_colour_t), element, 0}, {word_unsigned_char, none, 0},
    {word_end, none, 0},
    // qx_lamp_colour_get_hue
    {handle_of(type_qx_lamp_colour_t), element, 0}, {word_end, none, 0},
    // qx_lamp_colour_set_level
    {handle_of(type_qx_lamp_colour_t), element, 0}, {word_unsigned_short, none, 0},
    {word_end, none, 0},
    // qx_lamp_colour_get_level
    {handle_of(type_qx_lamp_colour_t), element, 0}, {word_end, none, 0},
    // qx_lamp_colour_array_create
    {word_unsigned_int, none, 0}, {handle_of(type_qx_lamp_colour_t), makes, 1},
    // qx_lamp_colour_array_set
    {handle_of(type_qx_lamp_colour_t), indexed, 3}, {handle_of(type_qx_lamp_colour_t), element, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_colour_array_get
    {handle_of(type_qx_lamp_colour_t), base, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_view_create
    {handle_of(type_qx_lamp_view_t), makes, 0},
    // qx_lamp_view_dump
    {handle_of(type_qx_lamp_view_t), element, 0}, {word_end, none, 0},
    // qx_lamp_view_set_word
    {handle_of(type_qx_lamp_view_t), element, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_view_get_word
    {handle_of(type_qx_lamp_view_t), element, 0}, {word_end, none, 0},
    // qx_lamp_view_set_colour
    {handle_of(type_qx_lamp_view_t), element, 0}, {handle_of(type_qx_lamp_colour_t), element, 0},
    {word_end, none, 0},
    // qx_lamp_view_get_colour
    {handle_of(type_qx_lamp_view_t), element, 0}, {word_end, none, 0},
    // qx_lamp_view_array_create
    {word_unsigned_int, none, 0}, {handle_of(type_qx_lamp_view_t), makes, 1},
    // qx_lamp_view_array_set
    {handle_of(type_qx_lamp_view_t), indexed, 3}, {handle_of(type_qx_lamp_view_t), element, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_view_array_get
    {handle_of(type_qx_lamp_view_t), base, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_create
    {handle_of(type_qx_lamp_t), makes, 0},
    // qx_lamp_init
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_short, none, 0},
    {word_unsigned_char, none, 0}, {word_unsigned_char, none, 0}, {word_unsigned_char, none, 0},
    {word_unsigned_int, none, 0}, {word_unsigned_int, none, 0},
    {handle_of(type_qx_lamp_view_t), element, 0}, {handle_of(type_qx_lamp_colour_t), element, 0},
    {word_end, none, 0},
    // qx_lamp_dump
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_set_id
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_short, none, 0}, {word_end, none, 0},
    // qx_lamp_get_id
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_set_mode
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_char, none, 0}, {word_end, none, 0},
    // qx_lamp_get_mode
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_set_group
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_char, none, 0}, {word_end, none, 0},
    // qx_lamp_get_group
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_set_flags
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_char, none, 0}, {word_end, none, 0},
    // qx_lamp_get_flags
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_set_serial
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_get_serial
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_set_kind
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_get_kind
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_set_name
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_char, none, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_get_name
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_set_hours
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_char, none, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_get_hours
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_set_view
    {handle_of(type_qx_lamp_t), element, 0}, {handle_of(type_qx_lamp_view_t), element, 0},
    {word_end, none, 0},
    // qx_lamp_get_view
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_set_palette
    {handle_of(type_qx_lamp_t), element, 0}, {handle_of(type_qx_lamp_colour_t), element, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_get_palette
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_set_program
    {handle_of(type_qx_lamp_t), element, 0}, {handle_of(type_qx_lamp_view_t), element, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_get_program
    {handle_of(type_qx_lamp_t), element, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_set_secret
    {handle_of(type_qx_lamp_t), element, 0}, {handle_of(type_qx_lamp_colour_t), element, 0},
    {word_end, none, 0},
    // qx_lamp_get_secret
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_lamp_array_create
    {word_unsigned_int, none, 0}, {handle_of(type_qx_lamp_t), makes, 1},
    // qx_lamp_array_set
    {handle_of(type_qx_lamp_t), indexed, 3}, {handle_of(type_qx_lamp_t), element, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_array_get
    {handle_of(type_qx_lamp_t), base, 0}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_lamp_add
    {word_unsigned_short, none, 0}, {handle_of(type_qx_lamp_t), element, 0},
    {handle_of(type_unsigned_int), element, 0}, {word_end, none, 0},
    // qx_lamp_tune
    {word_unsigned_short, none, 0}, {word_unsigned_char, none, 0}, {word_unsigned_int, none, 0},
    {handle_of(type_qx_lamp_t), element, 0}, {word_end, none, 0},
    // qx_data_free
    {word_any_handle, released, 0}, {word_end, none, 0},
    // qx_uint64_create
    {word_unsigned_long_long, none, 0}, {handle_of(type_unsigned_long_long), makes, 0},
    // qx_uint64_get
    {handle_of(type_unsigned_long_long), element, 0}, {word_end, none, 0},
    // qx_uint32_create
    {word_unsigned_int, none, 0}, {handle_of(type_unsigned_int), makes, 0},
    // qx_uint32_get
    {handle_of(type_unsigned_int), element, 0}, {word_end, none, 0},
    // qx_uint32_array_create
    {word_unsigned_int, none, 0}, {word_unsigned_int, none, 0},
    {handle_of(type_unsigned_int), makes, 2},
    // qx_uint32_array_get
    {handle_of(type_unsigned_int), indexed, 2}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_uint32_array_set
    {handle_of(type_unsigned_int), indexed, 3}, {word_unsigned_int, none, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_uint64_array_create
    {word_unsigned_long_long, none, 0}, {word_unsigned_int, none, 0},
    {handle_of(type_unsigned_long_long), makes, 2},
    // qx_uint64_array_get
    {handle_of(type_unsigned_long_long), indexed, 2}, {word_unsigned_int, none, 0},
    {word_end, none, 0},
    // qx_uint64_array_set
    {handle_of(type_unsigned_long_long), indexed, 3}, {word_unsigned_long_long, none, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_uint8_create
    {word_unsigned_char, none, 0}, {handle_of(type_unsigned_char), makes, 0},
    // qx_uint8_get
    {handle_of(type_unsigned_char), element, 0}, {word_end, none, 0},
    // qx_uint8_array_create
    {word_unsigned_char, none, 0}, {word_unsigned_int, none, 0},
    {handle_of(type_unsigned_char), makes, 2},
    // qx_uint8_array_get
    {handle_of(type_unsigned_char), indexed, 2}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_uint8_array_set
    {handle_of(type_unsigned_char), indexed, 3}, {word_unsigned_char, none, 0},
    {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_int32_create
    {word_int, none, 0}, {handle_of(type_int), makes, 0},
    // qx_int32_get
    {handle_of(type_int), element, 0}, {word_end, none, 0},
    // qx_int32_array_create
    {word_int, none, 0}, {word_unsigned_int, none, 0}, {handle_of(type_int), makes, 2},
    // qx_int32_array_get
    {handle_of(type_int), indexed, 2}, {word_unsigned_int, none, 0}, {word_end, none, 0},
    // qx_int32_array_set
    {handle_of(type_int), indexed, 3}, {word_int, none, 0}, {word_unsigned_int, none, 0},
    {word_end, none, 0},
};

const command_rule command_rules[] = {
    {0, 0},
    {1, 3},
    {5, 1},
    {7, 2},
    {10, 1},
    {12, 2},
    {15, 1},
    {17, 1},
    {19, 3},
    {23, 2},
    {26, 0},
    {27, 1},
    {29, 2},
    {32, 1},
    {34, 2},
    {37, 1},
    {39, 1},
    {41, 3},
    {45, 2},
    {48, 0},
    {49, 9},
    {59, 1},
    {61, 2},
    {64, 1},
    {66, 2},
    {69, 1},
    {71, 2},
    {74, 1},
    {76, 2},
    {79, 1},
    {81, 2},
    {84, 1},
    {86, 2},
    {89, 1},
    {91, 3},
    {95, 2},
    {98, 3},
    {102, 2},
    {105, 2},
    {108, 1},
    {110, 3},
    {114, 2},
    {117, 3},
    {121, 2},
    {124, 2},
    {127, 1},
    {129, 1},
    {131, 3},
    {135, 2},
    {138, 3},
    {142, 4},
    {147, 1},
    {149, 1},
    {151, 1},
    {153, 1},
    {155, 1},
    {157, 2},
    {160, 2},
    {163, 3},
    {167, 2},
    {170, 2},
    {173, 3},
    {177, 1},
    {179, 1},
    {181, 2},
    {184, 2},
    {187, 3},
    {191, 1},
    {193, 1},
    {195, 2},
    {198, 2},
    {201, 3},
};

} // namespace qxsh
