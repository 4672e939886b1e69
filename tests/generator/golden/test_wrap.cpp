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
    {0, command_form::makes, type_qx_lamp_colour_t}, // qx_lamp_colour_create
    {1, command_form::plain, 0}, // qx_lamp_colour_init
    {5, command_form::plain, 0}, // qx_lamp_colour_dump
    {7, command_form::plain, 0}, // qx_lamp_colour_set_hue
    {5, command_form::plain, 0}, // qx_lamp_colour_get_hue
    {10, command_form::plain, 0}, // qx_lamp_colour_set_level
    {5, command_form::plain, 0}, // qx_lamp_colour_get_level
    {13, command_form::makes_array, type_qx_lamp_colour_t}, // qx_lamp_colour_array_create
    {15, command_form::indexes, 0}, // qx_lamp_colour_array_set
    {19, command_form::points, 0}, // qx_lamp_colour_array_get
    {0, command_form::makes, type_qx_lamp_view_t}, // qx_lamp_view_create
    {22, command_form::plain, 0}, // qx_lamp_view_dump
    {24, command_form::plain, 0}, // qx_lamp_view_set_word
    {22, command_form::plain, 0}, // qx_lamp_view_get_word
    {27, command_form::plain, 0}, // qx_lamp_view_set_colour
    {22, command_form::plain, 0}, // qx_lamp_view_get_colour
    {13, command_form::makes_array, type_qx_lamp_view_t}, // qx_lamp_view_array_create
    {30, command_form::indexes, 0}, // qx_lamp_view_array_set
    {24, command_form::points, 0}, // qx_lamp_view_array_get
    {0, command_form::makes, type_qx_lamp_t}, // qx_lamp_create
    {34, command_form::plain, 0}, // qx_lamp_init
    {44, command_form::plain, 0}, // qx_lamp_dump
    {46, command_form::plain, 0}, // qx_lamp_set_id
    {44, command_form::plain, 0}, // qx_lamp_get_id
    {49, command_form::plain, 0}, // qx_lamp_set_mode
    {44, command_form::plain, 0}, // qx_lamp_get_mode
    {49, command_form::plain, 0}, // qx_lamp_set_group
    {44, command_form::plain, 0}, // qx_lamp_get_group
    {49, command_form::plain, 0}, // qx_lamp_set_flags
    {44, command_form::plain, 0}, // qx_lamp_get_flags
    {52, command_form::plain, 0}, // qx_lamp_set_serial
    {44, command_form::plain, 0}, // qx_lamp_get_serial
    {52, command_form::plain, 0}, // qx_lamp_set_kind
    {44, command_form::plain, 0}, // qx_lamp_get_kind
    {55, command_form::plain, 0}, // qx_lamp_set_name
    {52, command_form::plain, 0}, // qx_lamp_get_name
    {55, command_form::plain, 0}, // qx_lamp_set_hours
    {52, command_form::plain, 0}, // qx_lamp_get_hours
    {59, command_form::plain, 0}, // qx_lamp_set_view
    {44, command_form::plain, 0}, // qx_lamp_get_view
    {62, command_form::plain, 0}, // qx_lamp_set_palette
    {52, command_form::plain, 0}, // qx_lamp_get_palette
    {66, command_form::plain, 0}, // qx_lamp_set_program
    {52, command_form::plain, 0}, // qx_lamp_get_program
    {70, command_form::plain, 0}, // qx_lamp_set_secret
    {44, command_form::plain, 0}, // qx_lamp_get_secret
    {13, command_form::makes_array, type_qx_lamp_t}, // qx_lamp_array_create
    {73, command_form::indexes, 0}, // qx_lamp_array_set
    {52, command_form::points, 0}, // qx_lamp_array_get
    {77, command_form::calls, call_qx_lamp_add}, // qx_lamp_add
    {81, command_form::calls, call_qx_lamp_tune}, // qx_lamp_tune
    {86, command_form::releases, 0}, // qx_data_free
    {88, command_form::makes, type_unsigned_long_long}, // qx_uint64_create
    {90, command_form::plain, 0}, // qx_uint64_get
    {13, command_form::makes, type_unsigned_int}, // qx_uint32_create
    {92, command_form::plain, 0}, // qx_uint32_get
    {94, command_form::makes_array, type_unsigned_int}, // qx_uint32_array_create
    {97, command_form::indexes, 0}, // qx_uint32_array_get
    {100, command_form::indexes, 0}, // qx_uint32_array_set
    {104, command_form::makes_array, type_unsigned_long_long}, // qx_uint64_array_create
    {107, command_form::indexes, 0}, // qx_uint64_array_get
    {110, command_form::indexes, 0}, // qx_uint64_array_set
    {114, command_form::makes, type_unsigned_char}, // qx_uint8_create
    {116, command_form::plain, 0}, // qx_uint8_get
    {118, command_form::makes_array, type_unsigned_char}, // qx_uint8_array_create
    {121, command_form::indexes, 0}, // qx_uint8_array_get
    {124, command_form::indexes, 0}, // qx_uint8_array_set
    {128, command_form::makes, type_int}, // qx_int32_create
    {130, command_form::plain, 0}, // qx_int32_get
    {132, command_form::makes_array, type_int}, // qx_int32_array_create
    {135, command_form::indexes, 0}, // qx_int32_array_get
    {138, command_form::indexes, 0}, // qx_int32_array_set
};

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
