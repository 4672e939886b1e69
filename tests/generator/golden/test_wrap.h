// The wrappers, in the order of the command table.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#pragma once

#include "commands/command_table.h"

Tcl_ObjCmdProc wrap_qx_lamp_colour_create;
Tcl_ObjCmdProc wrap_qx_lamp_colour_init;
Tcl_ObjCmdProc wrap_qx_lamp_colour_dump;
Tcl_ObjCmdProc wrap_qx_lamp_colour_set_hue;
Tcl_ObjCmdProc wrap_qx_lamp_colour_get_hue;
Tcl_ObjCmdProc wrap_qx_lamp_colour_set_level;
Tcl_ObjCmdProc wrap_qx_lamp_colour_get_level;
Tcl_ObjCmdProc wrap_qx_lamp_colour_array_create;
Tcl_ObjCmdProc wrap_qx_lamp_colour_array_set;
Tcl_ObjCmdProc wrap_qx_lamp_colour_array_get;
Tcl_ObjCmdProc wrap_qx_lamp_view_create;
Tcl_ObjCmdProc wrap_qx_lamp_view_dump;
Tcl_ObjCmdProc wrap_qx_lamp_view_set_word;
Tcl_ObjCmdProc wrap_qx_lamp_view_get_word;
Tcl_ObjCmdProc wrap_qx_lamp_view_set_colour;
Tcl_ObjCmdProc wrap_qx_lamp_view_get_colour;
Tcl_ObjCmdProc wrap_qx_lamp_view_array_create;
Tcl_ObjCmdProc wrap_qx_lamp_view_array_set;
Tcl_ObjCmdProc wrap_qx_lamp_view_array_get;
Tcl_ObjCmdProc wrap_qx_lamp_create;
Tcl_ObjCmdProc wrap_qx_lamp_init;
Tcl_ObjCmdProc wrap_qx_lamp_dump;
Tcl_ObjCmdProc wrap_qx_lamp_set_id;
Tcl_ObjCmdProc wrap_qx_lamp_get_id;
Tcl_ObjCmdProc wrap_qx_lamp_set_mode;
Tcl_ObjCmdProc wrap_qx_lamp_get_mode;
Tcl_ObjCmdProc wrap_qx_lamp_set_group;
Tcl_ObjCmdProc wrap_qx_lamp_get_group;
Tcl_ObjCmdProc wrap_qx_lamp_set_flags;
Tcl_ObjCmdProc wrap_qx_lamp_get_flags;
Tcl_ObjCmdProc wrap_qx_lamp_set_serial;
Tcl_ObjCmdProc wrap_qx_lamp_get_serial;
Tcl_ObjCmdProc wrap_qx_lamp_set_kind;
Tcl_ObjCmdProc wrap_qx_lamp_get_kind;
Tcl_ObjCmdProc wrap_qx_lamp_set_name;
Tcl_ObjCmdProc wrap_qx_lamp_get_name;
Tcl_ObjCmdProc wrap_qx_lamp_set_hours;
Tcl_ObjCmdProc wrap_qx_lamp_get_hours;
Tcl_ObjCmdProc wrap_qx_lamp_set_view;
Tcl_ObjCmdProc wrap_qx_lamp_get_view;
Tcl_ObjCmdProc wrap_qx_lamp_set_palette;
Tcl_ObjCmdProc wrap_qx_lamp_get_palette;
Tcl_ObjCmdProc wrap_qx_lamp_set_program;
Tcl_ObjCmdProc wrap_qx_lamp_get_program;
Tcl_ObjCmdProc wrap_qx_lamp_set_secret;
Tcl_ObjCmdProc wrap_qx_lamp_get_secret;
Tcl_ObjCmdProc wrap_qx_lamp_array_create;
Tcl_ObjCmdProc wrap_qx_lamp_array_set;
Tcl_ObjCmdProc wrap_qx_lamp_array_get;
Tcl_ObjCmdProc wrap_qx_lamp_add;
Tcl_ObjCmdProc wrap_qx_lamp_tune;
Tcl_ObjCmdProc wrap_qx_data_free;
Tcl_ObjCmdProc wrap_qx_uint64_create;
Tcl_ObjCmdProc wrap_qx_uint64_get;
Tcl_ObjCmdProc wrap_qx_uint32_create;
Tcl_ObjCmdProc wrap_qx_uint32_get;
Tcl_ObjCmdProc wrap_qx_uint32_array_create;
Tcl_ObjCmdProc wrap_qx_uint32_array_get;
Tcl_ObjCmdProc wrap_qx_uint32_array_set;
Tcl_ObjCmdProc wrap_qx_uint64_array_create;
Tcl_ObjCmdProc wrap_qx_uint64_array_get;
Tcl_ObjCmdProc wrap_qx_uint64_array_set;
Tcl_ObjCmdProc wrap_qx_uint8_create;
Tcl_ObjCmdProc wrap_qx_uint8_get;
Tcl_ObjCmdProc wrap_qx_uint8_array_create;
Tcl_ObjCmdProc wrap_qx_uint8_array_get;
Tcl_ObjCmdProc wrap_qx_uint8_array_set;
Tcl_ObjCmdProc wrap_qx_int32_create;
Tcl_ObjCmdProc wrap_qx_int32_get;
Tcl_ObjCmdProc wrap_qx_int32_array_create;
Tcl_ObjCmdProc wrap_qx_int32_array_get;
Tcl_ObjCmdProc wrap_qx_int32_array_set;

/// The commands by number.
enum : qxsh::command_number {
    command_qx_lamp_colour_create,
    command_qx_lamp_colour_init,
    command_qx_lamp_colour_dump,
    command_qx_lamp_colour_set_hue,
    command_qx_lamp_colour_get_hue,
    command_qx_lamp_colour_set_level,
    command_qx_lamp_colour_get_level,
    command_qx_lamp_colour_array_create,
    command_qx_lamp_colour_array_set,
    command_qx_lamp_colour_array_get,
    command_qx_lamp_view_create,
    command_qx_lamp_view_dump,
    command_qx_lamp_view_set_word,
    command_qx_lamp_view_get_word,
    command_qx_lamp_view_set_colour,
    command_qx_lamp_view_get_colour,
    command_qx_lamp_view_array_create,
    command_qx_lamp_view_array_set,
    command_qx_lamp_view_array_get,
    command_qx_lamp_create,
    command_qx_lamp_init,
    command_qx_lamp_dump,
    command_qx_lamp_set_id,
    command_qx_lamp_get_id,
    command_qx_lamp_set_mode,
    command_qx_lamp_get_mode,
    command_qx_lamp_set_group,
    command_qx_lamp_get_group,
    command_qx_lamp_set_flags,
    command_qx_lamp_get_flags,
    command_qx_lamp_set_serial,
    command_qx_lamp_get_serial,
    command_qx_lamp_set_kind,
    command_qx_lamp_get_kind,
    command_qx_lamp_set_name,
    command_qx_lamp_get_name,
    command_qx_lamp_set_hours,
    command_qx_lamp_get_hours,
    command_qx_lamp_set_view,
    command_qx_lamp_get_view,
    command_qx_lamp_set_palette,
    command_qx_lamp_get_palette,
    command_qx_lamp_set_program,
    command_qx_lamp_get_program,
    command_qx_lamp_set_secret,
    command_qx_lamp_get_secret,
    command_qx_lamp_array_create,
    command_qx_lamp_array_set,
    command_qx_lamp_array_get,
    command_qx_lamp_add,
    command_qx_lamp_tune,
    command_qx_data_free,
    command_qx_uint64_create,
    command_qx_uint64_get,
    command_qx_uint32_create,
    command_qx_uint32_get,
    command_qx_uint32_array_create,
    command_qx_uint32_array_get,
    command_qx_uint32_array_set,
    command_qx_uint64_array_create,
    command_qx_uint64_array_get,
    command_qx_uint64_array_set,
    command_qx_uint8_create,
    command_qx_uint8_get,
    command_qx_uint8_array_create,
    command_qx_uint8_array_get,
    command_qx_uint8_array_set,
    command_qx_int32_create,
    command_qx_int32_get,
    command_qx_int32_array_create,
    command_qx_int32_array_get,
    command_qx_int32_array_set,
};
