// Commands of the area: Blocks and cells.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "test_wrap.h"

#include "commands/sdk_output.h"
#include "helpers.h"
#include "runtime/command_words.h"
#include "types.h"

using namespace qxsh;

int wrap_qx_data_free(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_data_free data "};
    void *data;
    if (!words.count(1) || !words.get(1, data))
        return TCL_ERROR;
    qx_data_free(data);
    return words.none();
}

int wrap_qx_uint64_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_uint64_create data "};
    unsigned long long data;
    if (!words.count(1) || !words.get(1, data))
        return TCL_ERROR;
    return words.pointer_result(qx_uint64_create(data),
        swig_types[type_unsigned_long_long]);
}

int wrap_qx_uint64_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_uint64_get ptr "};
    unsigned long long *ptr;
    if (!words.count(1) || !words.get(1, ptr, swig_types[type_unsigned_long_long]))
        return TCL_ERROR;
    return words.low32_result(qx_uint64_get(ptr));
}

int wrap_qx_uint32_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_uint32_create data "};
    unsigned int data;
    if (!words.count(1) || !words.get(1, data))
        return TCL_ERROR;
    return words.pointer_result(qx_uint32_create(data),
        swig_types[type_unsigned_int]);
}

int wrap_qx_uint32_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_uint32_get ptr "};
    unsigned int *ptr;
    if (!words.count(1) || !words.get(1, ptr, swig_types[type_unsigned_int]))
        return TCL_ERROR;
    return words.unsigned_result(qx_uint32_get(ptr));
}

int wrap_qx_uint32_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_uint32_array_create data size "};
    unsigned int data;
    unsigned int size;
    if (!words.count(2) || !words.get(1, data) || !words.get(2, size))
        return TCL_ERROR;
    return words.pointer_result(qx_uint32_array_create(data, size),
        swig_types[type_unsigned_int]);
}

int wrap_qx_uint32_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_uint32_array_get ptr index "};
    unsigned int *ptr;
    unsigned int index;
    if (!words.count(2) ||
        !words.get(1, ptr, swig_types[type_unsigned_int]) ||
        !words.get(2, index))
        return TCL_ERROR;
    return words.unsigned_result(qx_uint32_array_get(ptr, index));
}

int wrap_qx_uint32_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_uint32_array_set ptr data index "};
    unsigned int *ptr;
    unsigned int data;
    unsigned int index;
    if (!words.count(3) ||
        !words.get(1, ptr, swig_types[type_unsigned_int]) ||
        !words.get(2, data) ||
        !words.get(3, index))
        return TCL_ERROR;
    qx_uint32_array_set(ptr, data, index);
    return words.none();
}

int wrap_qx_uint64_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_uint64_array_create data size "};
    unsigned long long data;
    unsigned int size;
    if (!words.count(2) || !words.get(1, data) || !words.get(2, size))
        return TCL_ERROR;
    return words.pointer_result(qx_uint64_array_create(data, size),
        swig_types[type_unsigned_long_long]);
}

int wrap_qx_uint64_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_uint64_array_get ptr index "};
    unsigned long long *ptr;
    unsigned int index;
    if (!words.count(2) ||
        !words.get(1, ptr, swig_types[type_unsigned_long_long]) ||
        !words.get(2, index))
        return TCL_ERROR;
    return words.low32_result(qx_uint64_array_get(ptr, index));
}

int wrap_qx_uint64_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_uint64_array_set ptr data index "};
    unsigned long long *ptr;
    unsigned long long data;
    unsigned int index;
    if (!words.count(3) ||
        !words.get(1, ptr, swig_types[type_unsigned_long_long]) ||
        !words.get(2, data) ||
        !words.get(3, index))
        return TCL_ERROR;
    qx_uint64_array_set(ptr, data, index);
    return words.none();
}

int wrap_qx_uint8_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_uint8_create data "};
    unsigned char data;
    if (!words.count(1) || !words.get(1, data))
        return TCL_ERROR;
    return words.pointer_result(qx_uint8_create(data),
        swig_types[type_unsigned_char]);
}

int wrap_qx_uint8_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_uint8_get ptr "};
    unsigned char *ptr;
    if (!words.count(1) || !words.get(1, ptr, swig_types[type_unsigned_char]))
        return TCL_ERROR;
    return words.unsigned_result(qx_uint8_get(ptr));
}

int wrap_qx_uint8_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_uint8_array_create data size "};
    unsigned char data;
    unsigned int size;
    if (!words.count(2) || !words.get(1, data) || !words.get(2, size))
        return TCL_ERROR;
    return words.pointer_result(qx_uint8_array_create(data, size),
        swig_types[type_unsigned_char]);
}

int wrap_qx_uint8_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_uint8_array_get ptr index "};
    unsigned char *ptr;
    unsigned int index;
    if (!words.count(2) ||
        !words.get(1, ptr, swig_types[type_unsigned_char]) ||
        !words.get(2, index))
        return TCL_ERROR;
    return words.unsigned_result(qx_uint8_array_get(ptr, index));
}

int wrap_qx_uint8_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_uint8_array_set ptr data index "};
    unsigned char *ptr;
    unsigned char data;
    unsigned int index;
    if (!words.count(3) ||
        !words.get(1, ptr, swig_types[type_unsigned_char]) ||
        !words.get(2, data) ||
        !words.get(3, index))
        return TCL_ERROR;
    qx_uint8_array_set(ptr, data, index);
    return words.none();
}

int wrap_qx_int32_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_int32_create data "};
    int data;
    if (!words.count(1) || !words.get(1, data))
        return TCL_ERROR;
    return words.pointer_result(qx_int32_create(data),
        swig_types[type_int]);
}

int wrap_qx_int32_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "o:qx_int32_get ptr "};
    int *ptr;
    if (!words.count(1) || !words.get(1, ptr, swig_types[type_int]))
        return TCL_ERROR;
    return words.int_result(qx_int32_get(ptr));
}

int wrap_qx_int32_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_int32_array_create data size "};
    int data;
    unsigned int size;
    if (!words.count(2) || !words.get(1, data) || !words.get(2, size))
        return TCL_ERROR;
    return words.pointer_result(qx_int32_array_create(data, size),
        swig_types[type_int]);
}

int wrap_qx_int32_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "oo:qx_int32_array_get ptr index "};
    int *ptr;
    unsigned int index;
    if (!words.count(2) || !words.get(1, ptr, swig_types[type_int]) || !words.get(2, index))
        return TCL_ERROR;
    return words.int_result(qx_int32_array_get(ptr, index));
}

int wrap_qx_int32_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    const command_words words{interp, objc, objv,
        "ooo:qx_int32_array_set ptr data index "};
    int *ptr;
    int data;
    unsigned int index;
    if (!words.count(3) ||
        !words.get(1, ptr, swig_types[type_int]) ||
        !words.get(2, data) ||
        !words.get(3, index))
        return TCL_ERROR;
    qx_int32_array_set(ptr, data, index);
    return words.none();
}
