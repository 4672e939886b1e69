// Commands of the area: Blocks and cells.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "test_wrap.h"

#include "commands/sdk_call.h"
#include "commands/wrapper.h"
#include "helpers.h"

using namespace qxsh;

int wrap_qx_data_free(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_data_free data ";
    void *data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_data_free, interp, objc, objv, usage, word_kinds + 86);
    begin_call(usage, interp, objc, objv);
    qx_data_free(data);
    end_call();
    return TCL_OK;
}

int wrap_qx_uint64_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint64_create data ";
    unsigned long long data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_uint64_create, interp, objc, objv, usage, word_kinds + 88);
    begin_call(usage, interp, objc, objv);
    auto *const result = qx_uint64_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_long_long]);
}

int wrap_qx_uint64_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint64_get ptr ";
    unsigned long long *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_expected_types[type_unsigned_long_long]))
        return call_converted(wrap_qx_uint64_get, interp, objc, objv, usage, word_kinds + 90);
    return finish(interp, usage, qx_uint64_get(ptr));
}

int wrap_qx_uint32_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint32_create data ";
    unsigned int data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_uint32_create, interp, objc, objv, usage, word_kinds + 13);
    begin_call(usage, interp, objc, objv);
    auto *const result = qx_uint32_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_int]);
}

int wrap_qx_uint32_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint32_get ptr ";
    unsigned int *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_expected_types[type_unsigned_int]))
        return call_converted(wrap_qx_uint32_get, interp, objc, objv, usage, word_kinds + 92);
    return finish(interp, usage, qx_uint32_get(ptr));
}

int wrap_qx_uint32_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint32_array_create data size ";
    unsigned int data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(wrap_qx_uint32_array_create, interp, objc, objv, usage,
                              word_kinds + 94);
    begin_call(usage, interp, objc, objv);
    auto *const result = qx_uint32_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_int]);
}

int wrap_qx_uint32_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint32_array_get ptr index ";
    unsigned int *ptr;
    unsigned int index;
    if (objc != 3 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_int]) ||
        !ready(objv[2], index))
        return call_converted(wrap_qx_uint32_array_get, interp, objc, objv, usage, word_kinds + 97);
    return finish(interp, usage, qx_uint32_array_get(ptr, index));
}

int wrap_qx_uint32_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "ooo:qx_uint32_array_set ptr data index ";
    unsigned int *ptr;
    unsigned int data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_int]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(wrap_qx_uint32_array_set, interp, objc, objv, usage,
                              word_kinds + 100);
    qx_uint32_array_set(ptr, data, index);
    return finish(interp, usage);
}

int wrap_qx_uint64_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint64_array_create data size ";
    unsigned long long data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(wrap_qx_uint64_array_create, interp, objc, objv, usage,
                              word_kinds + 104);
    begin_call(usage, interp, objc, objv);
    auto *const result = qx_uint64_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_long_long]);
}

int wrap_qx_uint64_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint64_array_get ptr index ";
    unsigned long long *ptr;
    unsigned int index;
    if (objc != 3 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_long_long]) ||
        !ready(objv[2], index))
        return call_converted(wrap_qx_uint64_array_get, interp, objc, objv, usage,
                              word_kinds + 107);
    return finish(interp, usage, qx_uint64_array_get(ptr, index));
}

int wrap_qx_uint64_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "ooo:qx_uint64_array_set ptr data index ";
    unsigned long long *ptr;
    unsigned long long data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_long_long]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(wrap_qx_uint64_array_set, interp, objc, objv, usage,
                              word_kinds + 110);
    qx_uint64_array_set(ptr, data, index);
    return finish(interp, usage);
}

int wrap_qx_uint8_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint8_create data ";
    unsigned char data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_uint8_create, interp, objc, objv, usage, word_kinds + 114);
    begin_call(usage, interp, objc, objv);
    auto *const result = qx_uint8_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_char]);
}

int wrap_qx_uint8_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint8_get ptr ";
    unsigned char *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_expected_types[type_unsigned_char]))
        return call_converted(wrap_qx_uint8_get, interp, objc, objv, usage, word_kinds + 116);
    return finish(interp, usage, qx_uint8_get(ptr));
}

int wrap_qx_uint8_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint8_array_create data size ";
    unsigned char data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(wrap_qx_uint8_array_create, interp, objc, objv, usage,
                              word_kinds + 118);
    begin_call(usage, interp, objc, objv);
    auto *const result = qx_uint8_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_char]);
}

int wrap_qx_uint8_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint8_array_get ptr index ";
    unsigned char *ptr;
    unsigned int index;
    if (objc != 3 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_char]) ||
        !ready(objv[2], index))
        return call_converted(wrap_qx_uint8_array_get, interp, objc, objv, usage, word_kinds + 121);
    return finish(interp, usage, qx_uint8_array_get(ptr, index));
}

int wrap_qx_uint8_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "ooo:qx_uint8_array_set ptr data index ";
    unsigned char *ptr;
    unsigned char data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_char]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(wrap_qx_uint8_array_set, interp, objc, objv, usage, word_kinds + 124);
    qx_uint8_array_set(ptr, data, index);
    return finish(interp, usage);
}

int wrap_qx_int32_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_int32_create data ";
    int data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_int32_create, interp, objc, objv, usage, word_kinds + 128);
    begin_call(usage, interp, objc, objv);
    auto *const result = qx_int32_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_int]);
}

int wrap_qx_int32_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_int32_get ptr ";
    int *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_expected_types[type_int]))
        return call_converted(wrap_qx_int32_get, interp, objc, objv, usage, word_kinds + 130);
    return finish(interp, usage, qx_int32_get(ptr));
}

int wrap_qx_int32_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_int32_array_create data size ";
    int data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(wrap_qx_int32_array_create, interp, objc, objv, usage,
                              word_kinds + 132);
    begin_call(usage, interp, objc, objv);
    auto *const result = qx_int32_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_int]);
}

int wrap_qx_int32_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_int32_array_get ptr index ";
    int *ptr;
    unsigned int index;
    if (objc != 3 || !ready(objv[1], ptr, swig_expected_types[type_int]) || !ready(objv[2], index))
        return call_converted(wrap_qx_int32_array_get, interp, objc, objv, usage, word_kinds + 135);
    return finish(interp, usage, qx_int32_array_get(ptr, index));
}

int wrap_qx_int32_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "ooo:qx_int32_array_set ptr data index ";
    int *ptr;
    int data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_expected_types[type_int]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(wrap_qx_int32_array_set, interp, objc, objv, usage, word_kinds + 138);
    qx_int32_array_set(ptr, data, index);
    return finish(interp, usage);
}
