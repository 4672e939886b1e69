/* A peer: a Tcl extension as one writes it by hand without thought for speed. Handles are texts,
 * made with sprintf and read with strtoul and strcmp; numbers are read with Tcl's own conversion.
 * Commands are named like the module's, with hand_ for qx_. Relies on records.c, Tcl's stub table
 * and the SDK library. */
#include "records.h"

#include <tcl.h>

#include <limits.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char flow_type[] = "_p_qx_flow_t";
static const char packet_type[] = "_p_qx_pkt_info_t";
static const char cell_type[] = "_p_unsigned_int";

static int no_handle(Tcl_Interp *interp, const char *type)
{
    Tcl_SetObjResult(interp, Tcl_ObjPrintf("a handle that ends in %s was expected", type));
    return TCL_ERROR;
}

static int get_handle(Tcl_Interp *interp, Tcl_Obj *word, const char *type, void *target)
{
    const char *const text = Tcl_GetString(word);
    char *rest;
    void *pointer = NULL;
    if (strcmp(text, "NULL") != 0) {
        if (text[0] != '_')
            return no_handle(interp, type);
        pointer = (void *)(uintptr_t)strtoul(text + 1, &rest, 16);
        if (type != NULL && strcmp(rest, type) != 0)
            return no_handle(interp, type);
    }
    memcpy(target, &pointer, sizeof pointer);
    return TCL_OK;
}

static int get_number(Tcl_Interp *interp, Tcl_Obj *word, unsigned int greatest, unsigned int *value)
{
    Tcl_WideInt wide;
    if (Tcl_GetWideIntFromObj(interp, word, &wide) != TCL_OK)
        return TCL_ERROR;
    if (wide < 0 || wide > (Tcl_WideInt)greatest) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj("the number is out of range", -1));
        return TCL_ERROR;
    }
    *value = (unsigned int)wide;
    return TCL_OK;
}

static int handle_result(Tcl_Interp *interp, void *pointer, const char *type)
{
    char text[80];
    if (pointer == NULL)
        strcpy(text, "NULL");
    else
        sprintf(text, "_%08lx%s", (unsigned long)(uintptr_t)pointer, type);
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text, -1));
    return TCL_OK;
}

static int number_result(Tcl_Interp *interp, unsigned int value)
{
    Tcl_SetObjResult(interp, Tcl_NewWideIntObj(value));
    return TCL_OK;
}

#define COMMAND(name, count, usage)                                                                \
    static int name(ClientData data, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]);         \
    static int name##_checked(Tcl_Interp *interp, Tcl_Obj *const objv[]);                          \
    static int name(ClientData data, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])          \
    {                                                                                              \
        (void)data;                                                                                \
        if (objc != (count) + 1) {                                                                 \
            Tcl_WrongNumArgs(interp, 1, objv, usage);                                              \
            return TCL_ERROR;                                                                      \
        }                                                                                          \
        return name##_checked(interp, objv);                                                       \
    }                                                                                              \
    static int name##_checked(Tcl_Interp *interp, Tcl_Obj *const objv[])

COMMAND(create, 0, NULL)
{
    (void)objv;
    return handle_result(interp, flow_create(), flow_type);
}

COMMAND(array_create, 1, "size")
{
    unsigned int count;
    if (get_number(interp, objv[1], UINT_MAX, &count) != TCL_OK)
        return TCL_ERROR;
    return handle_result(interp, flow_array_create(count), flow_type);
}

COMMAND(release, 1, "data")
{
    void *record;
    if (get_handle(interp, objv[1], NULL, &record) != TCL_OK)
        return TCL_ERROR;
    record_free(record);
    return TCL_OK;
}

COMMAND(fill, 1, "cfg")
{
    qx_flow_t *flow;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK)
        return TCL_ERROR;
    flow_fill(flow);
    return TCL_OK;
}

COMMAND(get_flow_id, 1, "cfg")
{
    qx_flow_t *flow;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK)
        return TCL_ERROR;
    return number_result(interp, flow_get_flow_id(flow));
}

COMMAND(set_flow_id, 2, "cfg flow_id")
{
    qx_flow_t *flow;
    unsigned int value;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK ||
        get_number(interp, objv[2], USHRT_MAX, &value) != TCL_OK)
        return TCL_ERROR;
    flow_set_flow_id(flow, value);
    return TCL_OK;
}

COMMAND(get_flow_type, 1, "cfg")
{
    qx_flow_t *flow;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK)
        return TCL_ERROR;
    return number_result(interp, flow_get_flow_type(flow));
}

COMMAND(set_flow_type, 2, "cfg flow_type")
{
    qx_flow_t *flow;
    unsigned int value;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK ||
        get_number(interp, objv[2], UINT_MAX, &value) != TCL_OK)
        return TCL_ERROR;
    flow_set_flow_type(flow, value);
    return TCL_OK;
}

COMMAND(get_swid_array, 2, "cfg idx")
{
    qx_flow_t *flow;
    unsigned int index;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK ||
        get_number(interp, objv[2], UINT_MAX, &index) != TCL_OK)
        return TCL_ERROR;
    return number_result(interp, flow_get_swid_array(flow, index));
}

COMMAND(set_swid_array, 3, "cfg swid_array idx")
{
    qx_flow_t *flow;
    unsigned int value;
    unsigned int index;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK ||
        get_number(interp, objv[2], UINT_MAX, &value) != TCL_OK ||
        get_number(interp, objv[3], UINT_MAX, &index) != TCL_OK)
        return TCL_ERROR;
    flow_set_swid_array(flow, value, index);
    return TCL_OK;
}

COMMAND(get_ingress_pkt, 1, "cfg")
{
    qx_flow_t *flow;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK)
        return TCL_ERROR;
    return handle_result(interp, flow_get_ingress_pkt(flow), packet_type);
}

COMMAND(array_get, 2, "arr idx")
{
    qx_flow_t *flows;
    unsigned int index;
    if (get_handle(interp, objv[1], flow_type, &flows) != TCL_OK ||
        get_number(interp, objv[2], UINT_MAX, &index) != TCL_OK)
        return TCL_ERROR;
    return handle_result(interp, flow_array_get(flows, index), flow_type);
}

COMMAND(init, 10,
        "cfg flow_id flow_type ingress_pkt egress_pkt dec_ttl voq_offset life_time "
        "sw_action_id flag")
{
    qx_flow_t *flow;
    qx_pkt_info_t *ingress;
    qx_pkt_info_t *egress;
    unsigned int id, type, ttl, offset, life, action, flag;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK ||
        get_number(interp, objv[2], USHRT_MAX, &id) != TCL_OK ||
        get_number(interp, objv[3], UINT_MAX, &type) != TCL_OK ||
        get_handle(interp, objv[4], packet_type, &ingress) != TCL_OK ||
        get_handle(interp, objv[5], packet_type, &egress) != TCL_OK ||
        get_number(interp, objv[6], USHRT_MAX, &ttl) != TCL_OK ||
        get_number(interp, objv[7], USHRT_MAX, &offset) != TCL_OK ||
        get_number(interp, objv[8], UINT_MAX, &life) != TCL_OK ||
        get_number(interp, objv[9], UINT_MAX, &action) != TCL_OK ||
        get_number(interp, objv[10], UINT_MAX, &flag) != TCL_OK)
        return TCL_ERROR;
    flow_init(flow, id, type, ingress, egress, ttl, offset, life, action, flag);
    return TCL_OK;
}

COMMAND(add, 2, "device_id p_flow")
{
    unsigned int device;
    qx_flow_t *flow;
    if (get_number(interp, objv[1], USHRT_MAX, &device) != TCL_OK ||
        get_handle(interp, objv[2], flow_type, &flow) != TCL_OK)
        return TCL_ERROR;
    return number_result(interp, qx_flow_add((unsigned short)device, flow) & 0xffff);
}

COMMAND(dump, 1, "cfg")
{
    qx_flow_t *flow;
    if (get_handle(interp, objv[1], flow_type, &flow) != TCL_OK)
        return TCL_ERROR;
    flow_dump(flow);
    return TCL_OK;
}

COMMAND(pkt_info_create, 0, NULL)
{
    (void)objv;
    return handle_result(interp, calloc(1, sizeof(qx_pkt_info_t)), packet_type);
}

COMMAND(cell_create, 1, "data")
{
    unsigned int value;
    if (get_number(interp, objv[1], UINT_MAX, &value) != TCL_OK)
        return TCL_ERROR;
    return handle_result(interp, uint32_create(value), cell_type);
}

COMMAND(cell_get, 1, "ptr")
{
    unsigned int *cell;
    if (get_handle(interp, objv[1], cell_type, &cell) != TCL_OK)
        return TCL_ERROR;
    return number_result(interp, uint32_get(cell));
}

int Handwritten_Init(Tcl_Interp *interp)
{
    static const struct
    {
        const char *name;
        Tcl_ObjCmdProc *procedure;
    } commands[] = {
        {"hand_flow_create", create},
        {"hand_data_free", release},
        {"hand_fill_flow", fill},
        {"hand_flow_get_flow_id", get_flow_id},
        {"hand_flow_set_flow_id", set_flow_id},
        {"hand_flow_get_flow_type", get_flow_type},
        {"hand_flow_set_flow_type", set_flow_type},
        {"hand_flow_get_swid_array", get_swid_array},
        {"hand_flow_set_swid_array", set_swid_array},
        {"hand_flow_get_ingress_pkt", get_ingress_pkt},
        {"hand_flow_array_create", array_create},
        {"hand_flow_array_get", array_get},
        {"hand_flow_init", init},
        {"hand_flow_add", add},
        {"hand_flow_dump", dump},
        {"hand_pkt_info_create", pkt_info_create},
        {"hand_uint32_create", cell_create},
        {"hand_uint32_get", cell_get},
    };
    if (Tcl_InitStubs(interp, "8.5", 0) == NULL)
        return TCL_ERROR;
    for (size_t i = 0; i < sizeof commands / sizeof commands[0]; ++i)
        Tcl_CreateObjCommand(interp, commands[i].name, commands[i].procedure, NULL, NULL);
    return TCL_OK;
}
