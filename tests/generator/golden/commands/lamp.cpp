// Commands of the area: Lamps.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "test_wrap.h"

#include "commands/sdk_output.h"
#include "helpers.h"
#include "runtime/command_words.h"
#include "types.h"

using namespace qxsh;

int wrap_qx_lamp_colour_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        ":qx_lamp_colour_create "};
    if (!words.count(0))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_colour_create(),
        swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_colour_init(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_colour_init cfg hue level "};
    qx_lamp_colour_t *cfg;
    unsigned char hue;
    unsigned short level;
    if (!words.count(3) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_colour_t]) ||
        !words.get(2, hue) ||
        !words.get(3, level))
        return TCL_ERROR;
    qx_lamp_colour_init(cfg, hue, level);
    return words.none();
}

int wrap_qx_lamp_colour_dump(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_colour_dump cfg "};
    qx_lamp_colour_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_colour_t]))
        return TCL_ERROR;
    qx_lamp_colour_dump(cfg);
    return words.none();
}

int wrap_qx_lamp_colour_set_hue(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_colour_set_hue cfg hue "};
    qx_lamp_colour_t *cfg;
    unsigned char hue;
    if (!words.count(2) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_colour_t]) ||
        !words.get(2, hue))
        return TCL_ERROR;
    qx_lamp_colour_set_hue(cfg, hue);
    return words.none();
}

int wrap_qx_lamp_colour_get_hue(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_colour_get_hue cfg "};
    qx_lamp_colour_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_colour_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_colour_get_hue(cfg));
}

int wrap_qx_lamp_colour_set_level(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_colour_set_level cfg level "};
    qx_lamp_colour_t *cfg;
    unsigned short level;
    if (!words.count(2) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_colour_t]) ||
        !words.get(2, level))
        return TCL_ERROR;
    qx_lamp_colour_set_level(cfg, level);
    return words.none();
}

int wrap_qx_lamp_colour_get_level(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_colour_get_level cfg "};
    qx_lamp_colour_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_colour_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_colour_get_level(cfg));
}

int wrap_qx_lamp_colour_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_colour_array_create size "};
    unsigned int size;
    if (!words.count(1) || !words.get(1, size))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_colour_array_create(size),
        swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_colour_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_colour_array_set arr item idx "};
    qx_lamp_colour_t *arr;
    qx_lamp_colour_t *item;
    unsigned int idx;
    if (!words.count(3) ||
        !words.get(1, arr, swig_types[type_qx_lamp_colour_t]) ||
        !words.get(2, item, swig_types[type_qx_lamp_colour_t]) ||
        !words.get(3, idx))
        return TCL_ERROR;
    qx_lamp_colour_array_set(arr, item, idx);
    return words.none();
}

int wrap_qx_lamp_colour_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_colour_array_get arr idx "};
    qx_lamp_colour_t *arr;
    unsigned int idx;
    if (!words.count(2) ||
        !words.get(1, arr, swig_types[type_qx_lamp_colour_t]) ||
        !words.get(2, idx))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_colour_array_get(arr, idx),
        swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_view_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        ":qx_lamp_view_create "};
    if (!words.count(0))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_view_create(),
        swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_view_dump(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_view_dump cfg "};
    qx_lamp_view_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_view_t]))
        return TCL_ERROR;
    qx_lamp_view_dump(cfg);
    return words.none();
}

int wrap_qx_lamp_view_set_word(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_view_set_word cfg word "};
    qx_lamp_view_t *cfg;
    unsigned int word;
    if (!words.count(2) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_view_t]) ||
        !words.get(2, word))
        return TCL_ERROR;
    qx_lamp_view_set_word(cfg, word);
    return words.none();
}

int wrap_qx_lamp_view_get_word(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_view_get_word cfg "};
    qx_lamp_view_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_view_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_view_get_word(cfg));
}

int wrap_qx_lamp_view_set_colour(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_view_set_colour cfg colour "};
    qx_lamp_view_t *cfg;
    qx_lamp_colour_t *colour;
    if (!words.count(2) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_view_t]) ||
        !words.get(2, colour, swig_types[type_qx_lamp_colour_t]))
        return TCL_ERROR;
    qx_lamp_view_set_colour(cfg, colour);
    return words.none();
}

int wrap_qx_lamp_view_get_colour(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_view_get_colour cfg "};
    qx_lamp_view_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_view_t]))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_view_get_colour(cfg),
        swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_view_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_view_array_create size "};
    unsigned int size;
    if (!words.count(1) || !words.get(1, size))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_view_array_create(size),
        swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_view_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_view_array_set arr item idx "};
    qx_lamp_view_t *arr;
    qx_lamp_view_t *item;
    unsigned int idx;
    if (!words.count(3) ||
        !words.get(1, arr, swig_types[type_qx_lamp_view_t]) ||
        !words.get(2, item, swig_types[type_qx_lamp_view_t]) ||
        !words.get(3, idx))
        return TCL_ERROR;
    qx_lamp_view_array_set(arr, item, idx);
    return words.none();
}

int wrap_qx_lamp_view_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_view_array_get arr idx "};
    qx_lamp_view_t *arr;
    unsigned int idx;
    if (!words.count(2) ||
        !words.get(1, arr, swig_types[type_qx_lamp_view_t]) ||
        !words.get(2, idx))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_view_array_get(arr, idx),
        swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        ":qx_lamp_create "};
    if (!words.count(0))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_create(),
        swig_types[type_qx_lamp_t]);
}

int wrap_qx_lamp_init(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooooooooo:qx_lamp_init cfg id mode group flags serial kind view secret "};
    qx_lamp_t *cfg;
    unsigned short id;
    unsigned char mode;
    unsigned char group;
    unsigned char flags;
    unsigned int serial;
    unsigned int kind;
    qx_lamp_view_t *view;
    qx_lamp_colour_t *secret;
    if (!words.count(9) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_t]) ||
        !words.get(2, id) ||
        !words.get(3, mode) ||
        !words.get(4, group) ||
        !words.get(5, flags) ||
        !words.get(6, serial) ||
        !words.get(7, kind) ||
        !words.get(8, view, swig_types[type_qx_lamp_view_t]) ||
        !words.get(9, secret, swig_types[type_qx_lamp_colour_t]))
        return TCL_ERROR;
    qx_lamp_init(cfg, id, mode, group, flags, serial, kind, view, secret);
    return words.none();
}

int wrap_qx_lamp_dump(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_dump cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    qx_lamp_dump(cfg);
    return words.none();
}

int wrap_qx_lamp_set_id(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_set_id cfg id "};
    qx_lamp_t *cfg;
    unsigned short id;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, id))
        return TCL_ERROR;
    qx_lamp_set_id(cfg, id);
    return words.none();
}

int wrap_qx_lamp_get_id(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_get_id cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_get_id(cfg));
}

int wrap_qx_lamp_set_mode(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_set_mode cfg mode "};
    qx_lamp_t *cfg;
    unsigned char mode;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, mode))
        return TCL_ERROR;
    qx_lamp_set_mode(cfg, mode);
    return words.none();
}

int wrap_qx_lamp_get_mode(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_get_mode cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_get_mode(cfg));
}

int wrap_qx_lamp_set_group(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_set_group cfg group "};
    qx_lamp_t *cfg;
    unsigned char group;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, group))
        return TCL_ERROR;
    qx_lamp_set_group(cfg, group);
    return words.none();
}

int wrap_qx_lamp_get_group(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_get_group cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_get_group(cfg));
}

int wrap_qx_lamp_set_flags(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_set_flags cfg flags "};
    qx_lamp_t *cfg;
    unsigned char flags;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, flags))
        return TCL_ERROR;
    qx_lamp_set_flags(cfg, flags);
    return words.none();
}

int wrap_qx_lamp_get_flags(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_get_flags cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_get_flags(cfg));
}

int wrap_qx_lamp_set_serial(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_set_serial cfg serial "};
    qx_lamp_t *cfg;
    unsigned int serial;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, serial))
        return TCL_ERROR;
    qx_lamp_set_serial(cfg, serial);
    return words.none();
}

int wrap_qx_lamp_get_serial(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_get_serial cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_get_serial(cfg));
}

int wrap_qx_lamp_set_kind(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_set_kind cfg kind "};
    qx_lamp_t *cfg;
    unsigned int kind;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, kind))
        return TCL_ERROR;
    qx_lamp_set_kind(cfg, kind);
    return words.none();
}

int wrap_qx_lamp_get_kind(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_get_kind cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_get_kind(cfg));
}

int wrap_qx_lamp_set_name(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_set_name cfg name idx "};
    qx_lamp_t *cfg;
    unsigned char name;
    unsigned int idx;
    if (!words.count(3) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_t]) ||
        !words.get(2, name) ||
        !words.get(3, idx))
        return TCL_ERROR;
    qx_lamp_set_name(cfg, name, idx);
    return words.none();
}

int wrap_qx_lamp_get_name(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_get_name cfg idx "};
    qx_lamp_t *cfg;
    unsigned int idx;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, idx))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_get_name(cfg, idx));
}

int wrap_qx_lamp_set_hours(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_set_hours cfg hours idx "};
    qx_lamp_t *cfg;
    unsigned char hours;
    unsigned int idx;
    if (!words.count(3) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_t]) ||
        !words.get(2, hours) ||
        !words.get(3, idx))
        return TCL_ERROR;
    qx_lamp_set_hours(cfg, hours, idx);
    return words.none();
}

int wrap_qx_lamp_get_hours(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_get_hours cfg idx "};
    qx_lamp_t *cfg;
    unsigned int idx;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, idx))
        return TCL_ERROR;
    return words.unsigned_result(qx_lamp_get_hours(cfg, idx));
}

int wrap_qx_lamp_set_view(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_set_view cfg view "};
    qx_lamp_t *cfg;
    qx_lamp_view_t *view;
    if (!words.count(2) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_t]) ||
        !words.get(2, view, swig_types[type_qx_lamp_view_t]))
        return TCL_ERROR;
    qx_lamp_set_view(cfg, view);
    return words.none();
}

int wrap_qx_lamp_get_view(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_get_view cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_get_view(cfg),
        swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_set_palette(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_set_palette cfg palette idx "};
    qx_lamp_t *cfg;
    qx_lamp_colour_t *palette;
    unsigned int idx;
    if (!words.count(3) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_t]) ||
        !words.get(2, palette, swig_types[type_qx_lamp_colour_t]) ||
        !words.get(3, idx))
        return TCL_ERROR;
    qx_lamp_set_palette(cfg, palette, idx);
    return words.none();
}

int wrap_qx_lamp_get_palette(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_get_palette cfg idx "};
    qx_lamp_t *cfg;
    unsigned int idx;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, idx))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_get_palette(cfg, idx),
        swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_set_program(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_set_program cfg program idx "};
    qx_lamp_t *cfg;
    qx_lamp_view_t *program;
    unsigned int idx;
    if (!words.count(3) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_t]) ||
        !words.get(2, program, swig_types[type_qx_lamp_view_t]) ||
        !words.get(3, idx))
        return TCL_ERROR;
    qx_lamp_set_program(cfg, program, idx);
    return words.none();
}

int wrap_qx_lamp_get_program(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_get_program cfg idx "};
    qx_lamp_t *cfg;
    unsigned int idx;
    if (!words.count(2) || !words.get(1, cfg, swig_types[type_qx_lamp_t]) || !words.get(2, idx))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_get_program(cfg, idx),
        swig_types[type_qx_lamp_view_t]);
}

int wrap_qx_lamp_set_secret(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_set_secret cfg secret "};
    qx_lamp_t *cfg;
    qx_lamp_colour_t *secret;
    if (!words.count(2) ||
        !words.get(1, cfg, swig_types[type_qx_lamp_t]) ||
        !words.get(2, secret, swig_types[type_qx_lamp_colour_t]))
        return TCL_ERROR;
    qx_lamp_set_secret(cfg, secret);
    return words.none();
}

int wrap_qx_lamp_get_secret(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_get_secret cfg "};
    qx_lamp_t *cfg;
    if (!words.count(1) || !words.get(1, cfg, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_get_secret(cfg),
        swig_types[type_qx_lamp_colour_t]);
}

int wrap_qx_lamp_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_lamp_array_create size "};
    unsigned int size;
    if (!words.count(1) || !words.get(1, size))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_array_create(size),
        swig_types[type_qx_lamp_t]);
}

int wrap_qx_lamp_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_array_set arr item idx "};
    qx_lamp_t *arr;
    qx_lamp_t *item;
    unsigned int idx;
    if (!words.count(3) ||
        !words.get(1, arr, swig_types[type_qx_lamp_t]) ||
        !words.get(2, item, swig_types[type_qx_lamp_t]) ||
        !words.get(3, idx))
        return TCL_ERROR;
    qx_lamp_array_set(arr, item, idx);
    return words.none();
}

int wrap_qx_lamp_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_lamp_array_get arr idx "};
    qx_lamp_t *arr;
    unsigned int idx;
    if (!words.count(2) || !words.get(1, arr, swig_types[type_qx_lamp_t]) || !words.get(2, idx))
        return TCL_ERROR;
    return words.pointer_result(qx_lamp_array_get(arr, idx),
        swig_types[type_qx_lamp_t]);
}

int wrap_qx_lamp_add(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_lamp_add dev_id lamp lamp_id "};
    unsigned short dev_id;
    qx_lamp_t *lamp;
    unsigned int *lamp_id;
    if (!words.count(3) ||
        !words.get(1, dev_id) ||
        !words.get(2, lamp, swig_types[type_qx_lamp_t]) ||
        !words.get(3, lamp_id, swig_types[type_unsigned_int]))
        return TCL_ERROR;
    const sdk_output output;
    return words.status_result(qx_lamp_add(dev_id, lamp, lamp_id));
}

int wrap_qx_lamp_tune(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oooo:qx_lamp_tune dev_id channel level lamp "};
    unsigned short dev_id;
    unsigned char channel;
    unsigned int level;
    qx_lamp_t *lamp;
    if (!words.count(4) ||
        !words.get(1, dev_id) ||
        !words.get(2, channel) ||
        !words.get(3, level) ||
        !words.get(4, lamp, swig_types[type_qx_lamp_t]))
        return TCL_ERROR;
    const sdk_output output;
    return words.status_result(qx_lamp_tune(dev_id, channel, level, lamp));
}
