// The type table and the module record.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "types.h"

constexpr qxsh::handle_name swig_type_names[type_count] = {
    "_p_char",
    "_p_int",
    "_p_qx_lamp_colour_t",
    "_p_qx_lamp_t",
    "_p_qx_lamp_view_t",
    "_p_unsigned_char",
    "_p_unsigned_int",
    "_p_unsigned_long_long",
};

static swig_type_record record_p_char = {swig_type_names[type_char].text, "char *",
    nullptr, nullptr, nullptr, 0};
static swig_cast_record casts_p_char[] = {
    {&record_p_char, nullptr, nullptr, nullptr}, {nullptr, nullptr, nullptr, nullptr}};
static swig_type_record record_p_int = {swig_type_names[type_int].text, "int *",
    nullptr, nullptr, nullptr, 0};
static swig_cast_record casts_p_int[] = {
    {&record_p_int, nullptr, nullptr, nullptr}, {nullptr, nullptr, nullptr, nullptr}};
static swig_type_record record_p_qx_lamp_colour_t = {swig_type_names[type_qx_lamp_colour_t].text, "qx_lamp_colour_t *",
    nullptr, nullptr, nullptr, 0};
static swig_cast_record casts_p_qx_lamp_colour_t[] = {
    {&record_p_qx_lamp_colour_t, nullptr, nullptr, nullptr}, {nullptr, nullptr, nullptr, nullptr}};
static swig_type_record record_p_qx_lamp_t = {swig_type_names[type_qx_lamp_t].text, "qx_lamp_t *",
    nullptr, nullptr, nullptr, 0};
static swig_cast_record casts_p_qx_lamp_t[] = {
    {&record_p_qx_lamp_t, nullptr, nullptr, nullptr}, {nullptr, nullptr, nullptr, nullptr}};
static swig_type_record record_p_qx_lamp_view_t = {swig_type_names[type_qx_lamp_view_t].text, "qx_lamp_view_t *",
    nullptr, nullptr, nullptr, 0};
static swig_cast_record casts_p_qx_lamp_view_t[] = {
    {&record_p_qx_lamp_view_t, nullptr, nullptr, nullptr}, {nullptr, nullptr, nullptr, nullptr}};
static swig_type_record record_p_unsigned_char = {swig_type_names[type_unsigned_char].text, "unsigned char *",
    nullptr, nullptr, nullptr, 0};
static swig_cast_record casts_p_unsigned_char[] = {
    {&record_p_unsigned_char, nullptr, nullptr, nullptr}, {nullptr, nullptr, nullptr, nullptr}};
static swig_type_record record_p_unsigned_int = {swig_type_names[type_unsigned_int].text, "unsigned int *",
    nullptr, nullptr, nullptr, 0};
static swig_cast_record casts_p_unsigned_int[] = {
    {&record_p_unsigned_int, nullptr, nullptr, nullptr}, {nullptr, nullptr, nullptr, nullptr}};
static swig_type_record record_p_unsigned_long_long = {swig_type_names[type_unsigned_long_long].text, "unsigned long long *",
    nullptr, nullptr, nullptr, 0};
static swig_cast_record casts_p_unsigned_long_long[] = {
    {&record_p_unsigned_long_long, nullptr, nullptr, nullptr}, {nullptr, nullptr, nullptr, nullptr}};

swig_type_record *swig_types[type_count + 1];
swig_type_record swig_expected_types[type_count] = {
    {swig_type_names[type_char].text, "char *",
     nullptr, nullptr, nullptr, 0},
    {swig_type_names[type_int].text, "int *",
     nullptr, nullptr, nullptr, 0},
    {swig_type_names[type_qx_lamp_colour_t].text, "qx_lamp_colour_t *",
     nullptr, nullptr, nullptr, 0},
    {swig_type_names[type_qx_lamp_t].text, "qx_lamp_t *",
     nullptr, nullptr, nullptr, 0},
    {swig_type_names[type_qx_lamp_view_t].text, "qx_lamp_view_t *",
     nullptr, nullptr, nullptr, 0},
    {swig_type_names[type_unsigned_char].text, "unsigned char *",
     nullptr, nullptr, nullptr, 0},
    {swig_type_names[type_unsigned_int].text, "unsigned int *",
     nullptr, nullptr, nullptr, 0},
    {swig_type_names[type_unsigned_long_long].text, "unsigned long long *",
     nullptr, nullptr, nullptr, 0},
};
static swig_type_record *const type_initial[] = {
    &record_p_char,
    &record_p_int,
    &record_p_qx_lamp_colour_t,
    &record_p_qx_lamp_t,
    &record_p_qx_lamp_view_t,
    &record_p_unsigned_char,
    &record_p_unsigned_int,
    &record_p_unsigned_long_long,
};
static swig_cast_record *const cast_initial[] = {
    casts_p_char,
    casts_p_int,
    casts_p_qx_lamp_colour_t,
    casts_p_qx_lamp_t,
    casts_p_qx_lamp_view_t,
    casts_p_unsigned_char,
    casts_p_unsigned_int,
    casts_p_unsigned_long_long,
};
swig_module_record swig_module = {swig_types, type_count, nullptr, type_initial,
    cast_initial, nullptr};
