// The command table, in the order of registration, and what its commands are.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "test_wrap.h"

#include "record_numbers.h"
#include "types.h"

const swig_command_info swig_commands[] = {
    {"qx_lamp_colour_create", wrap_qx_lamp_colour_create, nullptr},
    {"qx_lamp_colour_init", wrap_qx_lamp_colour_init, nullptr},
    {"qx_lamp_colour_dump", wrap_qx_lamp_colour_dump, nullptr},
    {"qx_lamp_colour_set_hue", wrap_qx_lamp_colour_set_hue, nullptr},
    {"qx_lamp_colour_get_hue", wrap_qx_lamp_colour_get_hue, nullptr},
    {"qx_lamp_colour_set_level", wrap_qx_lamp_colour_set_level, nullptr},
    {"qx_lamp_colour_get_level", wrap_qx_lamp_colour_get_level, nullptr},
    {"qx_lamp_colour_array_create", wrap_qx_lamp_colour_array_create, nullptr},
    {"qx_lamp_colour_array_set", wrap_qx_lamp_colour_array_set, nullptr},
    {"qx_lamp_colour_array_get", wrap_qx_lamp_colour_array_get, nullptr},
    {"qx_lamp_view_create", wrap_qx_lamp_view_create, nullptr},
    {"qx_lamp_view_dump", wrap_qx_lamp_view_dump, nullptr},
    {"qx_lamp_view_set_word", wrap_qx_lamp_view_set_word, nullptr},
    {"qx_lamp_view_get_word", wrap_qx_lamp_view_get_word, nullptr},
    {"qx_lamp_view_set_colour", wrap_qx_lamp_view_set_colour, nullptr},
    {"qx_lamp_view_get_colour", wrap_qx_lamp_view_get_colour, nullptr},
    {"qx_lamp_view_array_create", wrap_qx_lamp_view_array_create, nullptr},
    {"qx_lamp_view_array_set", wrap_qx_lamp_view_array_set, nullptr},
    {"qx_lamp_view_array_get", wrap_qx_lamp_view_array_get, nullptr},
    {"qx_lamp_create", wrap_qx_lamp_create, nullptr},
    {"qx_lamp_init", wrap_qx_lamp_init, nullptr},
    {"qx_lamp_dump", wrap_qx_lamp_dump, nullptr},
    {"qx_lamp_set_id", wrap_qx_lamp_set_id, nullptr},
    {"qx_lamp_get_id", wrap_qx_lamp_get_id, nullptr},
    {"qx_lamp_set_mode", wrap_qx_lamp_set_mode, nullptr},
    {"qx_lamp_get_mode", wrap_qx_lamp_get_mode, nullptr},
    {"qx_lamp_set_group", wrap_qx_lamp_set_group, nullptr},
    {"qx_lamp_get_group", wrap_qx_lamp_get_group, nullptr},
    {"qx_lamp_set_flags", wrap_qx_lamp_set_flags, nullptr},
    {"qx_lamp_get_flags", wrap_qx_lamp_get_flags, nullptr},
    {"qx_lamp_set_serial", wrap_qx_lamp_set_serial, nullptr},
    {"qx_lamp_get_serial", wrap_qx_lamp_get_serial, nullptr},
    {"qx_lamp_set_kind", wrap_qx_lamp_set_kind, nullptr},
    {"qx_lamp_get_kind", wrap_qx_lamp_get_kind, nullptr},
    {"qx_lamp_set_name", wrap_qx_lamp_set_name, nullptr},
    {"qx_lamp_get_name", wrap_qx_lamp_get_name, nullptr},
    {"qx_lamp_set_hours", wrap_qx_lamp_set_hours, nullptr},
    {"qx_lamp_get_hours", wrap_qx_lamp_get_hours, nullptr},
    {"qx_lamp_set_view", wrap_qx_lamp_set_view, nullptr},
    {"qx_lamp_get_view", wrap_qx_lamp_get_view, nullptr},
    {"qx_lamp_set_palette", wrap_qx_lamp_set_palette, nullptr},
    {"qx_lamp_get_palette", wrap_qx_lamp_get_palette, nullptr},
    {"qx_lamp_set_program", wrap_qx_lamp_set_program, nullptr},
    {"qx_lamp_get_program", wrap_qx_lamp_get_program, nullptr},
    {"qx_lamp_set_secret", wrap_qx_lamp_set_secret, nullptr},
    {"qx_lamp_get_secret", wrap_qx_lamp_get_secret, nullptr},
    {"qx_lamp_array_create", wrap_qx_lamp_array_create, nullptr},
    {"qx_lamp_array_set", wrap_qx_lamp_array_set, nullptr},
    {"qx_lamp_array_get", wrap_qx_lamp_array_get, nullptr},
    {"qx_lamp_add", wrap_qx_lamp_add, nullptr},
    {"qx_lamp_tune", wrap_qx_lamp_tune, nullptr},
    {"qx_data_free", wrap_qx_data_free, nullptr},
    {"qx_uint64_create", wrap_qx_uint64_create, nullptr},
    {"qx_uint64_get", wrap_qx_uint64_get, nullptr},
    {"qx_uint32_create", wrap_qx_uint32_create, nullptr},
    {"qx_uint32_get", wrap_qx_uint32_get, nullptr},
    {"qx_uint32_array_create", wrap_qx_uint32_array_create, nullptr},
    {"qx_uint32_array_get", wrap_qx_uint32_array_get, nullptr},
    {"qx_uint32_array_set", wrap_qx_uint32_array_set, nullptr},
    {"qx_uint64_array_create", wrap_qx_uint64_array_create, nullptr},
    {"qx_uint64_array_get", wrap_qx_uint64_array_get, nullptr},
    {"qx_uint64_array_set", wrap_qx_uint64_array_set, nullptr},
    {"qx_uint8_create", wrap_qx_uint8_create, nullptr},
    {"qx_uint8_get", wrap_qx_uint8_get, nullptr},
    {"qx_uint8_array_create", wrap_qx_uint8_array_create, nullptr},
    {"qx_uint8_array_get", wrap_qx_uint8_array_get, nullptr},
    {"qx_uint8_array_set", wrap_qx_uint8_array_set, nullptr},
    {"qx_int32_create", wrap_qx_int32_create, nullptr},
    {"qx_int32_get", wrap_qx_int32_get, nullptr},
    {"qx_int32_array_create", wrap_qx_int32_array_create, nullptr},
    {"qx_int32_array_get", wrap_qx_int32_array_get, nullptr},
    {"qx_int32_array_set", wrap_qx_int32_array_set, nullptr},
    {nullptr, nullptr, nullptr},
};

namespace qxsh {

const command_row command_rows[] = {
    {0, 0, command_form::makes, type_qx_lamp_colour_t}, // qx_lamp_colour_create
    {24, 1, command_form::plain, 0}, // qx_lamp_colour_init
    {63, 5, command_form::plain, 0}, // qx_lamp_colour_dump
    {90, 7, command_form::plain, 0}, // qx_lamp_colour_set_hue
    {125, 5, command_form::plain, 0}, // qx_lamp_colour_get_hue
    {155, 10, command_form::plain, 0}, // qx_lamp_colour_set_level
    {194, 5, command_form::plain, 0}, // qx_lamp_colour_get_level
    {226, 13, command_form::makes_array, type_qx_lamp_colour_t}, // qx_lamp_colour_array_create
    {262, 15, command_form::indexes, 0}, // qx_lamp_colour_array_set
    {305, 19, command_form::points, 0}, // qx_lamp_colour_array_get
    {342, 0, command_form::makes, type_qx_lamp_view_t}, // qx_lamp_view_create
    {364, 22, command_form::plain, 0}, // qx_lamp_view_dump
    {389, 24, command_form::plain, 0}, // qx_lamp_view_set_word
    {424, 22, command_form::plain, 0}, // qx_lamp_view_get_word
    {453, 27, command_form::plain, 0}, // qx_lamp_view_set_colour
    {492, 22, command_form::plain, 0}, // qx_lamp_view_get_colour
    {523, 13, command_form::makes_array, type_qx_lamp_view_t}, // qx_lamp_view_array_create
    {557, 30, command_form::indexes, 0}, // qx_lamp_view_array_set
    {598, 24, command_form::points, 0}, // qx_lamp_view_array_get
    {633, 0, command_form::makes, type_qx_lamp_t}, // qx_lamp_create
    {650, 34, command_form::plain, 0}, // qx_lamp_init
    {722, 44, command_form::plain, 0}, // qx_lamp_dump
    {742, 46, command_form::plain, 0}, // qx_lamp_set_id
    {768, 44, command_form::plain, 0}, // qx_lamp_get_id
    {790, 49, command_form::plain, 0}, // qx_lamp_set_mode
    {820, 44, command_form::plain, 0}, // qx_lamp_get_mode
    {844, 49, command_form::plain, 0}, // qx_lamp_set_group
    {876, 44, command_form::plain, 0}, // qx_lamp_get_group
    {901, 49, command_form::plain, 0}, // qx_lamp_set_flags
    {933, 44, command_form::plain, 0}, // qx_lamp_get_flags
    {958, 52, command_form::plain, 0}, // qx_lamp_set_serial
    {992, 44, command_form::plain, 0}, // qx_lamp_get_serial
    {1018, 52, command_form::plain, 0}, // qx_lamp_set_kind
    {1048, 44, command_form::plain, 0}, // qx_lamp_get_kind
    {1072, 55, command_form::plain, 0}, // qx_lamp_set_name
    {1107, 52, command_form::plain, 0}, // qx_lamp_get_name
    {1136, 55, command_form::plain, 0}, // qx_lamp_set_hours
    {1173, 52, command_form::plain, 0}, // qx_lamp_get_hours
    {1203, 59, command_form::plain, 0}, // qx_lamp_set_view
    {1233, 44, command_form::plain, 0}, // qx_lamp_get_view
    {1257, 62, command_form::plain, 0}, // qx_lamp_set_palette
    {1298, 52, command_form::plain, 0}, // qx_lamp_get_palette
    {1330, 66, command_form::plain, 0}, // qx_lamp_set_program
    {1371, 52, command_form::plain, 0}, // qx_lamp_get_program
    {1403, 70, command_form::plain, 0}, // qx_lamp_set_secret
    {1437, 44, command_form::plain, 0}, // qx_lamp_get_secret
    {1463, 13, command_form::makes_array, type_qx_lamp_t}, // qx_lamp_array_create
    {1492, 73, command_form::indexes, 0}, // qx_lamp_array_set
    {1528, 52, command_form::points, 0}, // qx_lamp_array_get
    {1558, 77, command_form::calls, call_qx_lamp_add}, // qx_lamp_add
    {1595, 81, command_form::calls, call_qx_lamp_tune}, // qx_lamp_tune
    {1640, 86, command_form::releases, 0}, // qx_data_free
    {1661, 88, command_form::makes, type_unsigned_long_long}, // qx_uint64_create
    {1686, 90, command_form::plain, 0}, // qx_uint64_get
    {1707, 13, command_form::makes, type_unsigned_int}, // qx_uint32_create
    {1732, 92, command_form::plain, 0}, // qx_uint32_get
    {1753, 94, command_form::makes_array, type_unsigned_int}, // qx_uint32_array_create
    {1790, 97, command_form::indexes, 0}, // qx_uint32_array_get
    {1824, 100, command_form::indexes, 0}, // qx_uint32_array_set
    {1864, 104, command_form::makes_array, type_unsigned_long_long}, // qx_uint64_array_create
    {1901, 107, command_form::indexes, 0}, // qx_uint64_array_get
    {1935, 110, command_form::indexes, 0}, // qx_uint64_array_set
    {1975, 114, command_form::makes, type_unsigned_char}, // qx_uint8_create
    {1999, 116, command_form::plain, 0}, // qx_uint8_get
    {2019, 118, command_form::makes_array, type_unsigned_char}, // qx_uint8_array_create
    {2055, 121, command_form::indexes, 0}, // qx_uint8_array_get
    {2088, 124, command_form::indexes, 0}, // qx_uint8_array_set
    {2127, 128, command_form::makes, type_int}, // qx_int32_create
    {2151, 130, command_form::plain, 0}, // qx_int32_get
    {2171, 132, command_form::makes_array, type_int}, // qx_int32_array_create
    {2207, 135, command_form::indexes, 0}, // qx_int32_array_get
    {2240, 138, command_form::indexes, 0}, // qx_int32_array_set
};

const char command_usages[] =
    ":qx_lamp_colour_create " "\0"
    "ooo:qx_lamp_colour_init cfg hue level " "\0"
    "o:qx_lamp_colour_dump cfg " "\0"
    "oo:qx_lamp_colour_set_hue cfg hue " "\0"
    "o:qx_lamp_colour_get_hue cfg " "\0"
    "oo:qx_lamp_colour_set_level cfg level " "\0"
    "o:qx_lamp_colour_get_level cfg " "\0"
    "o:qx_lamp_colour_array_create size " "\0"
    "ooo:qx_lamp_colour_array_set arr item idx " "\0"
    "oo:qx_lamp_colour_array_get arr idx " "\0"
    ":qx_lamp_view_create " "\0"
    "o:qx_lamp_view_dump cfg " "\0"
    "oo:qx_lamp_view_set_word cfg word " "\0"
    "o:qx_lamp_view_get_word cfg " "\0"
    "oo:qx_lamp_view_set_colour cfg colour " "\0"
    "o:qx_lamp_view_get_colour cfg " "\0"
    "o:qx_lamp_view_array_create size " "\0"
    "ooo:qx_lamp_view_array_set arr item idx " "\0"
    "oo:qx_lamp_view_array_get arr idx " "\0"
    ":qx_lamp_create " "\0"
    "ooooooooo:qx_lamp_init cfg id mode group flags serial kind view secret " "\0"
    "o:qx_lamp_dump cfg " "\0"
    "oo:qx_lamp_set_id cfg id " "\0"
    "o:qx_lamp_get_id cfg " "\0"
    "oo:qx_lamp_set_mode cfg mode " "\0"
    "o:qx_lamp_get_mode cfg " "\0"
    "oo:qx_lamp_set_group cfg group " "\0"
    "o:qx_lamp_get_group cfg " "\0"
    "oo:qx_lamp_set_flags cfg flags " "\0"
    "o:qx_lamp_get_flags cfg " "\0"
    "oo:qx_lamp_set_serial cfg serial " "\0"
    "o:qx_lamp_get_serial cfg " "\0"
    "oo:qx_lamp_set_kind cfg kind " "\0"
    "o:qx_lamp_get_kind cfg " "\0"
    "ooo:qx_lamp_set_name cfg name idx " "\0"
    "oo:qx_lamp_get_name cfg idx " "\0"
    "ooo:qx_lamp_set_hours cfg hours idx " "\0"
    "oo:qx_lamp_get_hours cfg idx " "\0"
    "oo:qx_lamp_set_view cfg view " "\0"
    "o:qx_lamp_get_view cfg " "\0"
    "ooo:qx_lamp_set_palette cfg palette idx " "\0"
    "oo:qx_lamp_get_palette cfg idx " "\0"
    "ooo:qx_lamp_set_program cfg program idx " "\0"
    "oo:qx_lamp_get_program cfg idx " "\0"
    "oo:qx_lamp_set_secret cfg secret " "\0"
    "o:qx_lamp_get_secret cfg " "\0"
    "o:qx_lamp_array_create size " "\0"
    "ooo:qx_lamp_array_set arr item idx " "\0"
    "oo:qx_lamp_array_get arr idx " "\0"
    "ooo:qx_lamp_add dev_id lamp lamp_id " "\0"
    "oooo:qx_lamp_tune dev_id channel level lamp " "\0"
    "o:qx_data_free data " "\0"
    "o:qx_uint64_create data " "\0"
    "o:qx_uint64_get ptr " "\0"
    "o:qx_uint32_create data " "\0"
    "o:qx_uint32_get ptr " "\0"
    "oo:qx_uint32_array_create data size " "\0"
    "oo:qx_uint32_array_get ptr index " "\0"
    "ooo:qx_uint32_array_set ptr data index " "\0"
    "oo:qx_uint64_array_create data size " "\0"
    "oo:qx_uint64_array_get ptr index " "\0"
    "ooo:qx_uint64_array_set ptr data index " "\0"
    "o:qx_uint8_create data " "\0"
    "o:qx_uint8_get ptr " "\0"
    "oo:qx_uint8_array_create data size " "\0"
    "oo:qx_uint8_array_get ptr index " "\0"
    "ooo:qx_uint8_array_set ptr data index " "\0"
    "o:qx_int32_create data " "\0"
    "o:qx_int32_get ptr " "\0"
    "oo:qx_int32_array_create data size " "\0"
    "oo:qx_int32_array_get ptr index " "\0"
    "ooo:qx_int32_array_set ptr data index " "\0";

const word_kind word_kinds[] = {
    word_end,
    handle_of(type_qx_lamp_colour_t), word_unsigned_char, word_unsigned_short, word_end,
    handle_of(type_qx_lamp_colour_t), word_end,
    handle_of(type_qx_lamp_colour_t), word_unsigned_char, word_end,
    handle_of(type_qx_lamp_colour_t), word_unsigned_short, word_end,
    word_unsigned_int, word_end,
    handle_of(type_qx_lamp_colour_t), handle_of(type_qx_lamp_colour_t), word_unsigned_int, word_end,
    handle_of(type_qx_lamp_colour_t), word_unsigned_int, word_end,
    handle_of(type_qx_lamp_view_t), word_end,
    handle_of(type_qx_lamp_view_t), word_unsigned_int, word_end,
    handle_of(type_qx_lamp_view_t), handle_of(type_qx_lamp_colour_t), word_end,
    handle_of(type_qx_lamp_view_t), handle_of(type_qx_lamp_view_t), word_unsigned_int, word_end,
    handle_of(type_qx_lamp_t), word_unsigned_short, word_unsigned_char, word_unsigned_char,
    word_unsigned_char, word_unsigned_int, word_unsigned_int, handle_of(type_qx_lamp_view_t),
    handle_of(type_qx_lamp_colour_t), word_end,
    handle_of(type_qx_lamp_t), word_end,
    handle_of(type_qx_lamp_t), word_unsigned_short, word_end,
    handle_of(type_qx_lamp_t), word_unsigned_char, word_end,
    handle_of(type_qx_lamp_t), word_unsigned_int, word_end,
    handle_of(type_qx_lamp_t), word_unsigned_char, word_unsigned_int, word_end,
    handle_of(type_qx_lamp_t), handle_of(type_qx_lamp_view_t), word_end,
    handle_of(type_qx_lamp_t), handle_of(type_qx_lamp_colour_t), word_unsigned_int, word_end,
    handle_of(type_qx_lamp_t), handle_of(type_qx_lamp_view_t), word_unsigned_int, word_end,
    handle_of(type_qx_lamp_t), handle_of(type_qx_lamp_colour_t), word_end,
    handle_of(type_qx_lamp_t), handle_of(type_qx_lamp_t), word_unsigned_int, word_end,
    word_unsigned_short, handle_of(type_qx_lamp_t), handle_of(type_unsigned_int), word_end,
    word_unsigned_short, word_unsigned_char, word_unsigned_int, handle_of(type_qx_lamp_t), word_end,
    word_any_handle, word_end,
    word_unsigned_long_long, word_end,
    handle_of(type_unsigned_long_long), word_end,
    handle_of(type_unsigned_int), word_end,
    word_unsigned_int, word_unsigned_int, word_end,
    handle_of(type_unsigned_int), word_unsigned_int, word_end,
    handle_of(type_unsigned_int), word_unsigned_int, word_unsigned_int, word_end,
    word_unsigned_long_long, word_unsigned_int, word_end,
    handle_of(type_unsigned_long_long), word_unsigned_int, word_end,
    handle_of(type_unsigned_long_long), word_unsigned_long_long, word_unsigned_int, word_end,
    word_unsigned_char, word_end,
    handle_of(type_unsigned_char), word_end,
    word_unsigned_char, word_unsigned_int, word_end,
    handle_of(type_unsigned_char), word_unsigned_int, word_end,
    handle_of(type_unsigned_char), word_unsigned_char, word_unsigned_int, word_end,
    word_int, word_end,
    handle_of(type_int), word_end,
    word_int, word_unsigned_int, word_end,
    handle_of(type_int), word_unsigned_int, word_end,
    handle_of(type_int), word_int, word_unsigned_int, word_end,
};

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

} // namespace qxsh
