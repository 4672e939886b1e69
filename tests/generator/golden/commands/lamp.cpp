// Commands of the area: Lamps.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "test_wrap.h"

#include "commands/sdk_call.h"
#include "commands/wrapper.h"
#include "helpers.h"

using namespace qxsh;

int wrap_qx_lamp_colour_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 1)
        return call_converted(command_qx_lamp_colour_create, interp, objc, objv);
    begin_call(command_qx_lamp_colour_create, interp, objv);
    auto *const result = qx_lamp_colour_create();
    end_call();
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_colour_init(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_colour_t *cfg;
    unsigned char hue;
    unsigned short level;
    if (objc != 4 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_colour_t]) ||
        !ready(objv[2], hue) ||
        !ready(objv[3], level))
        return call_converted(command_qx_lamp_colour_init, interp, objc, objv);
    qx_lamp_colour_init(cfg, hue, level);
    return finish(interp, command_qx_lamp_colour_init);
}

int wrap_qx_lamp_colour_dump(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_colour_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_colour_t]))
        return call_converted(command_qx_lamp_colour_dump, interp, objc, objv);
    qx_lamp_colour_dump(cfg);
    return finish(interp, command_qx_lamp_colour_dump);
}

int wrap_qx_lamp_colour_set_hue(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_colour_t *cfg;
    unsigned char hue;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_colour_t]) ||
        !ready(objv[2], hue))
        return call_converted(command_qx_lamp_colour_set_hue, interp, objc, objv);
    qx_lamp_colour_set_hue(cfg, hue);
    return finish(interp, command_qx_lamp_colour_set_hue);
}

int wrap_qx_lamp_colour_get_hue(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_colour_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_colour_t]))
        return call_converted(command_qx_lamp_colour_get_hue, interp, objc, objv);
    return finish(interp, command_qx_lamp_colour_get_hue, qx_lamp_colour_get_hue(cfg));
}

int wrap_qx_lamp_colour_set_level(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_colour_t *cfg;
    unsigned short level;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_colour_t]) ||
        !ready(objv[2], level))
        return call_converted(command_qx_lamp_colour_set_level, interp, objc, objv);
    qx_lamp_colour_set_level(cfg, level);
    return finish(interp, command_qx_lamp_colour_set_level);
}

int wrap_qx_lamp_colour_get_level(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_colour_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_colour_t]))
        return call_converted(command_qx_lamp_colour_get_level, interp, objc, objv);
    return finish(interp, command_qx_lamp_colour_get_level, qx_lamp_colour_get_level(cfg));
}

int wrap_qx_lamp_colour_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned int size;
    if (objc != 2 || !ready(objv[1], size))
        return call_converted(command_qx_lamp_colour_array_create, interp, objc, objv);
    begin_call(command_qx_lamp_colour_array_create, interp, objv);
    auto *const result = qx_lamp_colour_array_create(size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_colour_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_colour_t *arr;
    qx_lamp_colour_t *item;
    unsigned int idx;
    if (objc != 4 ||
        !ready(objv[1], arr, swig_expected_types[type_qx_lamp_colour_t]) ||
        !ready(objv[2], item, swig_expected_types[type_qx_lamp_colour_t]) ||
        !ready(objv[3], idx))
        return call_converted(command_qx_lamp_colour_array_set, interp, objc, objv);
    qx_lamp_colour_array_set(arr, item, idx);
    return finish(interp, command_qx_lamp_colour_array_set);
}

int wrap_qx_lamp_colour_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_colour_t *arr;
    unsigned int idx;
    if (objc != 3 ||
        !ready(objv[1], arr, swig_expected_types[type_qx_lamp_colour_t]) ||
        !ready(objv[2], idx))
        return call_converted(command_qx_lamp_colour_array_get, interp, objc, objv);
    auto *const result = qx_lamp_colour_array_get(arr, idx);
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_view_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 1)
        return call_converted(command_qx_lamp_view_create, interp, objc, objv);
    begin_call(command_qx_lamp_view_create, interp, objv);
    auto *const result = qx_lamp_view_create();
    end_call();
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_view_dump(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_view_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_view_t]))
        return call_converted(command_qx_lamp_view_dump, interp, objc, objv);
    qx_lamp_view_dump(cfg);
    return finish(interp, command_qx_lamp_view_dump);
}

int wrap_qx_lamp_view_set_word(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_view_t *cfg;
    unsigned int word;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_view_t]) ||
        !ready(objv[2], word))
        return call_converted(command_qx_lamp_view_set_word, interp, objc, objv);
    qx_lamp_view_set_word(cfg, word);
    return finish(interp, command_qx_lamp_view_set_word);
}

int wrap_qx_lamp_view_get_word(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_view_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_view_t]))
        return call_converted(command_qx_lamp_view_get_word, interp, objc, objv);
    return finish(interp, command_qx_lamp_view_get_word, qx_lamp_view_get_word(cfg));
}

int wrap_qx_lamp_view_set_colour(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_view_t *cfg;
    qx_lamp_colour_t *colour;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_view_t]) ||
        !ready(objv[2], colour, swig_expected_types[type_qx_lamp_colour_t]))
        return call_converted(command_qx_lamp_view_set_colour, interp, objc, objv);
    qx_lamp_view_set_colour(cfg, colour);
    return finish(interp, command_qx_lamp_view_set_colour);
}

int wrap_qx_lamp_view_get_colour(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_view_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_view_t]))
        return call_converted(command_qx_lamp_view_get_colour, interp, objc, objv);
    auto *const result = qx_lamp_view_get_colour(cfg);
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_view_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned int size;
    if (objc != 2 || !ready(objv[1], size))
        return call_converted(command_qx_lamp_view_array_create, interp, objc, objv);
    begin_call(command_qx_lamp_view_array_create, interp, objv);
    auto *const result = qx_lamp_view_array_create(size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_view_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_view_t *arr;
    qx_lamp_view_t *item;
    unsigned int idx;
    if (objc != 4 ||
        !ready(objv[1], arr, swig_expected_types[type_qx_lamp_view_t]) ||
        !ready(objv[2], item, swig_expected_types[type_qx_lamp_view_t]) ||
        !ready(objv[3], idx))
        return call_converted(command_qx_lamp_view_array_set, interp, objc, objv);
    qx_lamp_view_array_set(arr, item, idx);
    return finish(interp, command_qx_lamp_view_array_set);
}

int wrap_qx_lamp_view_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_view_t *arr;
    unsigned int idx;
    if (objc != 3 ||
        !ready(objv[1], arr, swig_expected_types[type_qx_lamp_view_t]) ||
        !ready(objv[2], idx))
        return call_converted(command_qx_lamp_view_array_get, interp, objc, objv);
    auto *const result = qx_lamp_view_array_get(arr, idx);
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 1)
        return call_converted(command_qx_lamp_create, interp, objc, objv);
    begin_call(command_qx_lamp_create, interp, objv);
    auto *const result = qx_lamp_create();
    end_call();
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_t]);
}

int wrap_qx_lamp_init(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned short id;
    unsigned char mode;
    unsigned char group;
    unsigned char flags;
    unsigned int serial;
    unsigned int kind;
    qx_lamp_view_t *view;
    qx_lamp_colour_t *secret;
    if (objc != 10 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], id) ||
        !ready(objv[3], mode) ||
        !ready(objv[4], group) ||
        !ready(objv[5], flags) ||
        !ready(objv[6], serial) ||
        !ready(objv[7], kind) ||
        !ready(objv[8], view, swig_expected_types[type_qx_lamp_view_t]) ||
        !ready(objv[9], secret, swig_expected_types[type_qx_lamp_colour_t]))
        return call_converted(command_qx_lamp_init, interp, objc, objv);
    qx_lamp_init(cfg, id, mode, group, flags, serial, kind, view, secret);
    return finish(interp, command_qx_lamp_init);
}

int wrap_qx_lamp_dump(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_dump, interp, objc, objv);
    qx_lamp_dump(cfg);
    return finish(interp, command_qx_lamp_dump);
}

int wrap_qx_lamp_set_id(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned short id;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], id))
        return call_converted(command_qx_lamp_set_id, interp, objc, objv);
    qx_lamp_set_id(cfg, id);
    return finish(interp, command_qx_lamp_set_id);
}

int wrap_qx_lamp_get_id(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_get_id, interp, objc, objv);
    return finish(interp, command_qx_lamp_get_id, qx_lamp_get_id(cfg));
}

int wrap_qx_lamp_set_mode(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned char mode;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], mode))
        return call_converted(command_qx_lamp_set_mode, interp, objc, objv);
    qx_lamp_set_mode(cfg, mode);
    return finish(interp, command_qx_lamp_set_mode);
}

int wrap_qx_lamp_get_mode(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_get_mode, interp, objc, objv);
    return finish(interp, command_qx_lamp_get_mode, qx_lamp_get_mode(cfg));
}

int wrap_qx_lamp_set_group(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned char group;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], group))
        return call_converted(command_qx_lamp_set_group, interp, objc, objv);
    qx_lamp_set_group(cfg, group);
    return finish(interp, command_qx_lamp_set_group);
}

int wrap_qx_lamp_get_group(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_get_group, interp, objc, objv);
    return finish(interp, command_qx_lamp_get_group, qx_lamp_get_group(cfg));
}

int wrap_qx_lamp_set_flags(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned char flags;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], flags))
        return call_converted(command_qx_lamp_set_flags, interp, objc, objv);
    qx_lamp_set_flags(cfg, flags);
    return finish(interp, command_qx_lamp_set_flags);
}

int wrap_qx_lamp_get_flags(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_get_flags, interp, objc, objv);
    return finish(interp, command_qx_lamp_get_flags, qx_lamp_get_flags(cfg));
}

int wrap_qx_lamp_set_serial(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned int serial;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], serial))
        return call_converted(command_qx_lamp_set_serial, interp, objc, objv);
    qx_lamp_set_serial(cfg, serial);
    return finish(interp, command_qx_lamp_set_serial);
}

int wrap_qx_lamp_get_serial(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_get_serial, interp, objc, objv);
    return finish(interp, command_qx_lamp_get_serial, qx_lamp_get_serial(cfg));
}

int wrap_qx_lamp_set_kind(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned int kind;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], kind))
        return call_converted(command_qx_lamp_set_kind, interp, objc, objv);
    qx_lamp_set_kind(cfg, kind);
    return finish(interp, command_qx_lamp_set_kind);
}

int wrap_qx_lamp_get_kind(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_get_kind, interp, objc, objv);
    return finish(interp, command_qx_lamp_get_kind, qx_lamp_get_kind(cfg));
}

int wrap_qx_lamp_set_name(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned char name;
    unsigned int idx;
    if (objc != 4 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], name) ||
        !ready(objv[3], idx))
        return call_converted(command_qx_lamp_set_name, interp, objc, objv);
    qx_lamp_set_name(cfg, name, idx);
    return finish(interp, command_qx_lamp_set_name);
}

int wrap_qx_lamp_get_name(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned int idx;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], idx))
        return call_converted(command_qx_lamp_get_name, interp, objc, objv);
    return finish(interp, command_qx_lamp_get_name, qx_lamp_get_name(cfg, idx));
}

int wrap_qx_lamp_set_hours(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned char hours;
    unsigned int idx;
    if (objc != 4 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], hours) ||
        !ready(objv[3], idx))
        return call_converted(command_qx_lamp_set_hours, interp, objc, objv);
    qx_lamp_set_hours(cfg, hours, idx);
    return finish(interp, command_qx_lamp_set_hours);
}

int wrap_qx_lamp_get_hours(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned int idx;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], idx))
        return call_converted(command_qx_lamp_get_hours, interp, objc, objv);
    return finish(interp, command_qx_lamp_get_hours, qx_lamp_get_hours(cfg, idx));
}

int wrap_qx_lamp_set_view(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    qx_lamp_view_t *view;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], view, swig_expected_types[type_qx_lamp_view_t]))
        return call_converted(command_qx_lamp_set_view, interp, objc, objv);
    qx_lamp_set_view(cfg, view);
    return finish(interp, command_qx_lamp_set_view);
}

int wrap_qx_lamp_get_view(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_get_view, interp, objc, objv);
    auto *const result = qx_lamp_get_view(cfg);
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_set_palette(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    qx_lamp_colour_t *palette;
    unsigned int idx;
    if (objc != 4 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], palette, swig_expected_types[type_qx_lamp_colour_t]) ||
        !ready(objv[3], idx))
        return call_converted(command_qx_lamp_set_palette, interp, objc, objv);
    qx_lamp_set_palette(cfg, palette, idx);
    return finish(interp, command_qx_lamp_set_palette);
}

int wrap_qx_lamp_get_palette(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned int idx;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], idx))
        return call_converted(command_qx_lamp_get_palette, interp, objc, objv);
    auto *const result = qx_lamp_get_palette(cfg, idx);
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_set_program(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    qx_lamp_view_t *program;
    unsigned int idx;
    if (objc != 4 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], program, swig_expected_types[type_qx_lamp_view_t]) ||
        !ready(objv[3], idx))
        return call_converted(command_qx_lamp_set_program, interp, objc, objv);
    qx_lamp_set_program(cfg, program, idx);
    return finish(interp, command_qx_lamp_set_program);
}

int wrap_qx_lamp_get_program(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    unsigned int idx;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], idx))
        return call_converted(command_qx_lamp_get_program, interp, objc, objv);
    auto *const result = qx_lamp_get_program(cfg, idx);
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_set_secret(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    qx_lamp_colour_t *secret;
    if (objc != 3 ||
        !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], secret, swig_expected_types[type_qx_lamp_colour_t]))
        return call_converted(command_qx_lamp_set_secret, interp, objc, objv);
    qx_lamp_set_secret(cfg, secret);
    return finish(interp, command_qx_lamp_set_secret);
}

int wrap_qx_lamp_get_secret(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *cfg;
    if (objc != 2 || !ready(objv[1], cfg, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_get_secret, interp, objc, objv);
    auto *const result = qx_lamp_get_secret(cfg);
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned int size;
    if (objc != 2 || !ready(objv[1], size))
        return call_converted(command_qx_lamp_array_create, interp, objc, objv);
    begin_call(command_qx_lamp_array_create, interp, objv);
    auto *const result = qx_lamp_array_create(size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_t]);
}

int wrap_qx_lamp_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *arr;
    qx_lamp_t *item;
    unsigned int idx;
    if (objc != 4 ||
        !ready(objv[1], arr, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], item, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[3], idx))
        return call_converted(command_qx_lamp_array_set, interp, objc, objv);
    qx_lamp_array_set(arr, item, idx);
    return finish(interp, command_qx_lamp_array_set);
}

int wrap_qx_lamp_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qx_lamp_t *arr;
    unsigned int idx;
    if (objc != 3 ||
        !ready(objv[1], arr, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[2], idx))
        return call_converted(command_qx_lamp_array_get, interp, objc, objv);
    auto *const result = qx_lamp_array_get(arr, idx);
    return set_pointer_result(interp, result, swig_types[type_qx_lamp_t]);
}

int wrap_qx_lamp_add(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned short dev_id;
    qx_lamp_t *lamp;
    unsigned int *lamp_id;
    if (objc != 4 ||
        !ready(objv[1], dev_id) ||
        !ready(objv[2], lamp, swig_expected_types[type_qx_lamp_t]) ||
        !ready(objv[3], lamp_id, swig_expected_types[type_unsigned_int]))
        return call_converted(command_qx_lamp_add, interp, objc, objv);
    begin_sdk_call(command_qx_lamp_add, interp, objv);
    return end_sdk_call(qx_lamp_add(dev_id, lamp, lamp_id));
}

int wrap_qx_lamp_tune(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned short dev_id;
    unsigned char channel;
    unsigned int level;
    qx_lamp_t *lamp;
    if (objc != 5 ||
        !ready(objv[1], dev_id) ||
        !ready(objv[2], channel) ||
        !ready(objv[3], level) ||
        !ready(objv[4], lamp, swig_expected_types[type_qx_lamp_t]))
        return call_converted(command_qx_lamp_tune, interp, objc, objv);
    begin_sdk_call(command_qx_lamp_tune, interp, objv);
    return end_sdk_call(qx_lamp_tune(dev_id, channel, level, lamp));
}
