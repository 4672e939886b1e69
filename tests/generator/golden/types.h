// The pointer types of this module: their numbers in the type table, in its order.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#pragma once

#include "runtime/handle_text.h"
#include "runtime/type_registry.h"

enum type_index {
    type_char,
    type_int,
    type_qx_lamp_colour_t,
    type_qx_lamp_t,
    type_qx_lamp_view_t,
    type_unsigned_char,
    type_unsigned_int,
    type_unsigned_long_long,
    type_count
};

/// Of the command with the longest usage.
constexpr int most_arguments = 9;

/// The types as resolved when the module was first linked; ends with a null.
[[gnu::visibility("hidden")]] extern swig_type_record *swig_types[type_count + 1];
/// The names of the types in the texts of handles.
[[gnu::visibility("hidden")]] extern const qxsh::handle_name swig_type_names[type_count];
extern swig_module_record swig_module;
