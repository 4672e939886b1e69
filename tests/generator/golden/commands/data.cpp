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
    static constexpr word_kind kinds[] = {word_any_handle, word_end};
    void *data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_data_free, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    qx_data_free(data);
    end_call();
    return TCL_OK;
}

int wrap_qx_uint64_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint64_create data ";
    static constexpr word_kind kinds[] = {word_unsigned_long_long, word_end};
    unsigned long long data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_uint64_create, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    auto *const result = qx_uint64_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_long_long]);
}

int wrap_qx_uint64_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint64_get ptr ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_long_long), word_end};
    unsigned long long *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_types[type_unsigned_long_long]))
        return call_converted(wrap_qx_uint64_get, interp, objc, objv, usage, kinds);
    return finish(interp, usage, qx_uint64_get(ptr));
}

int wrap_qx_uint32_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint32_create data ";
    static constexpr word_kind kinds[] = {word_unsigned_int, word_end};
    unsigned int data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_uint32_create, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    auto *const result = qx_uint32_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_int]);
}

int wrap_qx_uint32_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint32_get ptr ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_int), word_end};
    unsigned int *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_types[type_unsigned_int]))
        return call_converted(wrap_qx_uint32_get, interp, objc, objv, usage, kinds);
    return finish(interp, usage, qx_uint32_get(ptr));
}

int wrap_qx_uint32_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint32_array_create data size ";
    static constexpr word_kind kinds[] = {word_unsigned_int, word_unsigned_int, word_end};
    unsigned int data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(wrap_qx_uint32_array_create, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    auto *const result = qx_uint32_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_int]);
}

int wrap_qx_uint32_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint32_array_get ptr index ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_int), word_unsigned_int,
        word_end};
    unsigned int *ptr;
    unsigned int index;
    if (objc != 3 || !ready(objv[1], ptr, swig_types[type_unsigned_int]) || !ready(objv[2], index))
        return call_converted(wrap_qx_uint32_array_get, interp, objc, objv, usage, kinds);
    return finish(interp, usage, qx_uint32_array_get(ptr, index));
}

int wrap_qx_uint32_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "ooo:qx_uint32_array_set ptr data index ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_int), word_unsigned_int,
        word_unsigned_int, word_end};
    unsigned int *ptr;
    unsigned int data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_types[type_unsigned_int]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(wrap_qx_uint32_array_set, interp, objc, objv, usage, kinds);
    qx_uint32_array_set(ptr, data, index);
    return finish(interp, usage);
}

int wrap_qx_uint64_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint64_array_create data size ";
    static constexpr word_kind kinds[] = {word_unsigned_long_long, word_unsigned_int, word_end};
    unsigned long long data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(wrap_qx_uint64_array_create, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    auto *const result = qx_uint64_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_long_long]);
}

int wrap_qx_uint64_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint64_array_get ptr index ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_long_long), word_unsigned_int,
        word_end};
    unsigned long long *ptr;
    unsigned int index;
    if (objc != 3 ||
        !ready(objv[1], ptr, swig_types[type_unsigned_long_long]) ||
        !ready(objv[2], index))
        return call_converted(wrap_qx_uint64_array_get, interp, objc, objv, usage, kinds);
    return finish(interp, usage, qx_uint64_array_get(ptr, index));
}

int wrap_qx_uint64_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "ooo:qx_uint64_array_set ptr data index ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_long_long),
        word_unsigned_long_long, word_unsigned_int, word_end};
    unsigned long long *ptr;
    unsigned long long data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_types[type_unsigned_long_long]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(wrap_qx_uint64_array_set, interp, objc, objv, usage, kinds);
    qx_uint64_array_set(ptr, data, index);
    return finish(interp, usage);
}

int wrap_qx_uint8_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint8_create data ";
    static constexpr word_kind kinds[] = {word_unsigned_char, word_end};
    unsigned char data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_uint8_create, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    auto *const result = qx_uint8_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_char]);
}

int wrap_qx_uint8_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_uint8_get ptr ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_char), word_end};
    unsigned char *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_types[type_unsigned_char]))
        return call_converted(wrap_qx_uint8_get, interp, objc, objv, usage, kinds);
    return finish(interp, usage, qx_uint8_get(ptr));
}

int wrap_qx_uint8_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint8_array_create data size ";
    static constexpr word_kind kinds[] = {word_unsigned_char, word_unsigned_int, word_end};
    unsigned char data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(wrap_qx_uint8_array_create, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    auto *const result = qx_uint8_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_unsigned_char]);
}

int wrap_qx_uint8_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_uint8_array_get ptr index ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_char), word_unsigned_int,
        word_end};
    unsigned char *ptr;
    unsigned int index;
    if (objc != 3 ||
        !ready(objv[1], ptr, swig_types[type_unsigned_char]) ||
        !ready(objv[2], index))
        return call_converted(wrap_qx_uint8_array_get, interp, objc, objv, usage, kinds);
    return finish(interp, usage, qx_uint8_array_get(ptr, index));
}

int wrap_qx_uint8_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "ooo:qx_uint8_array_set ptr data index ";
    static constexpr word_kind kinds[] = {handle_of(type_unsigned_char), word_unsigned_char,
        word_unsigned_int, word_end};
    unsigned char *ptr;
    unsigned char data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_types[type_unsigned_char]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(wrap_qx_uint8_array_set, interp, objc, objv, usage, kinds);
    qx_uint8_array_set(ptr, data, index);
    return finish(interp, usage);
}

int wrap_qx_int32_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_int32_create data ";
    static constexpr word_kind kinds[] = {word_int, word_end};
    int data;
    if (objc != 2 || !ready(objv[1], data))
        return call_converted(wrap_qx_int32_create, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    auto *const result = qx_int32_create(data);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_int]);
}

int wrap_qx_int32_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "o:qx_int32_get ptr ";
    static constexpr word_kind kinds[] = {handle_of(type_int), word_end};
    int *ptr;
    if (objc != 2 || !ready(objv[1], ptr, swig_types[type_int]))
        return call_converted(wrap_qx_int32_get, interp, objc, objv, usage, kinds);
    return finish(interp, usage, qx_int32_get(ptr));
}

int wrap_qx_int32_array_create(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_int32_array_create data size ";
    static constexpr word_kind kinds[] = {word_int, word_unsigned_int, word_end};
    int data;
    unsigned int size;
    if (objc != 3 || !ready(objv[1], data) || !ready(objv[2], size))
        return call_converted(wrap_qx_int32_array_create, interp, objc, objv, usage, kinds);
    begin_call(interp, objc, objv, usage);
    auto *const result = qx_int32_array_create(data, size);
    end_call();
    return set_pointer_result(interp, result, swig_types[type_int]);
}

int wrap_qx_int32_array_get(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "oo:qx_int32_array_get ptr index ";
    static constexpr word_kind kinds[] = {handle_of(type_int), word_unsigned_int, word_end};
    int *ptr;
    unsigned int index;
    if (objc != 3 || !ready(objv[1], ptr, swig_types[type_int]) || !ready(objv[2], index))
        return call_converted(wrap_qx_int32_array_get, interp, objc, objv, usage, kinds);
    return finish(interp, usage, qx_int32_array_get(ptr, index));
}

int wrap_qx_int32_array_set(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr char usage[] = "ooo:qx_int32_array_set ptr data index ";
    static constexpr word_kind kinds[] = {handle_of(type_int), word_int, word_unsigned_int,
        word_end};
    int *ptr;
    int data;
    unsigned int index;
    if (objc != 4 ||
        !ready(objv[1], ptr, swig_types[type_int]) ||
        !ready(objv[2], data) ||
        !ready(objv[3], index))
        return call_converted(wrap_qx_int32_array_set, interp, objc, objv, usage, kinds);
    qx_int32_array_set(ptr, data, index);
    return finish(interp, usage);
}
