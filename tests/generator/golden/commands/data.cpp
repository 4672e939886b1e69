// Commands of the area: Blocks and cells.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "test_wrap.h"

#include "commands/sdk_call.h"
#include "commands/wrapper.h"
#include "helpers.h"

using namespace qxsh;

int wrap_qx_data_free(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    void *data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(command_qx_data_free, interp, objc, objv);
    begin_call(command_qx_data_free, interp, objv);
    qx_data_free(data);
    end_call();
    return TCL_OK;
}

int wrap_qx_uint64_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned long long data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(command_qx_uint64_create, interp, objc, objv);
    begin_call(command_qx_uint64_create, interp, objv);
    auto *const result = qx_uint64_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_long_long]);
}

int wrap_qx_uint64_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned long long *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_expected_types[type_unsigned_long_long]))
        return call_converted(command_qx_uint64_get, interp, objc, objv);
    return finish(interp, command_qx_uint64_get, qx_uint64_get(ptr));
}

int wrap_qx_uint32_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned int data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(command_qx_uint32_create, interp, objc, objv);
    begin_call(command_qx_uint32_create, interp, objv);
    auto *const result = qx_uint32_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_int]);
}

int wrap_qx_uint32_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned int *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_expected_types[type_unsigned_int]))
        return call_converted(command_qx_uint32_get, interp, objc, objv);
    return finish(interp, command_qx_uint32_get, qx_uint32_get(ptr));
}

int wrap_qx_uint32_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned int data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(command_qx_uint32_array_create, interp, objc, objv);
    begin_call(command_qx_uint32_array_create, interp, objv);
    auto *const result = qx_uint32_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_int]);
}

int wrap_qx_uint32_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned int *ptr;
    unsigned int index;
    if (objc != 3 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_int]) ||
        !ready(objv[2], index))
        return call_converted(command_qx_uint32_array_get, interp, objc, objv);
    return finish(interp, command_qx_uint32_array_get, qx_uint32_array_get(ptr, index));
}

int wrap_qx_uint32_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned int *ptr;
    unsigned int data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_int]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(command_qx_uint32_array_set, interp, objc, objv);
    qx_uint32_array_set(ptr, data, index);
    return finish(interp, command_qx_uint32_array_set);
}

int wrap_qx_uint64_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned long long data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(command_qx_uint64_array_create, interp, objc, objv);
    begin_call(command_qx_uint64_array_create, interp, objv);
    auto *const result = qx_uint64_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_long_long]);
}

int wrap_qx_uint64_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned long long *ptr;
    unsigned int index;
    if (objc != 3 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_long_long]) ||
        !ready(objv[2], index))
        return call_converted(command_qx_uint64_array_get, interp, objc, objv);
    return finish(interp, command_qx_uint64_array_get, qx_uint64_array_get(ptr, index));
}

int wrap_qx_uint64_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned long long *ptr;
    unsigned long long data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_long_long]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(command_qx_uint64_array_set, interp, objc, objv);
    qx_uint64_array_set(ptr, data, index);
    return finish(interp, command_qx_uint64_array_set);
}

int wrap_qx_uint8_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned char data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(command_qx_uint8_create, interp, objc, objv);
    begin_call(command_qx_uint8_create, interp, objv);
    auto *const result = qx_uint8_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_char]);
}

int wrap_qx_uint8_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned char *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_expected_types[type_unsigned_char]))
        return call_converted(command_qx_uint8_get, interp, objc, objv);
    return finish(interp, command_qx_uint8_get, qx_uint8_get(ptr));
}

int wrap_qx_uint8_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned char data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(command_qx_uint8_array_create, interp, objc, objv);
    begin_call(command_qx_uint8_array_create, interp, objv);
    auto *const result = qx_uint8_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_char]);
}

int wrap_qx_uint8_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned char *ptr;
    unsigned int index;
    if (objc != 3 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_char]) ||
        !ready(objv[2], index))
        return call_converted(command_qx_uint8_array_get, interp, objc, objv);
    return finish(interp, command_qx_uint8_array_get, qx_uint8_array_get(ptr, index));
}

int wrap_qx_uint8_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    unsigned char *ptr;
    unsigned char data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_expected_types[type_unsigned_char]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(command_qx_uint8_array_set, interp, objc, objv);
    qx_uint8_array_set(ptr, data, index);
    return finish(interp, command_qx_uint8_array_set);
}

int wrap_qx_int32_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    int data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(command_qx_int32_create, interp, objc, objv);
    begin_call(command_qx_int32_create, interp, objv);
    auto *const result = qx_int32_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_int]);
}

int wrap_qx_int32_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    int *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_expected_types[type_int]))
        return call_converted(command_qx_int32_get, interp, objc, objv);
    return finish(interp, command_qx_int32_get, qx_int32_get(ptr));
}

int wrap_qx_int32_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    int data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(command_qx_int32_array_create, interp, objc, objv);
    begin_call(command_qx_int32_array_create, interp, objv);
    auto *const result = qx_int32_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_int]);
}

int wrap_qx_int32_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    int *ptr;
    unsigned int index;
    if (objc != 3 || !ready(objv[1], ptr, swig_expected_types[type_int]) || !ready(objv[2], index))
        return call_converted(command_qx_int32_array_get, interp, objc, objv);
    return finish(interp, command_qx_int32_array_get, qx_int32_array_get(ptr, index));
}

int wrap_qx_int32_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    int *ptr;
    int data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_expected_types[type_int]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(command_qx_int32_array_set, interp, objc, objv);
    qx_int32_array_set(ptr, data, index);
    return finish(interp, command_qx_int32_array_set);
}
