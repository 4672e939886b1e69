// The library of the package qx: records as dicts, each in one command.
//
//   qx::get HANDLE ?PATH? ?OPTION ...?           qx::template RECORD ?OPTION ...?
//   qx::set HANDLE DICT | PATH VALUE ...          qx::call ?OPTION ...? FUNCTION ?WORD ...?
//   qx::set HANDLE -json TEXT                     qx::apply FILE
//   qx::json HANDLE ?OPTION ...?                  qx::diff HANDLE HANDLE ?OPTION ...?
//   qx::profile::parse NAME BYTES   qx::profile::changed   another profile is in use
//   qx::record::... qx::trace::...               see observed_calls.h
//   qx::sim::...                  see sim_commands.h
//
// Relies on the package's scripts for words that only look like handles, and for nearest names.
#include "library/qx/call_list.h"
#include "library/qx/checked_command.h"
#include "library/qx/held_object.h"
#include "library/qx/json_reader.h"
#include "library/qx/judged_calls.h"
#include "library/qx/observed_calls.h"
#include "library/qx/profile_file.h"
#include "library/qx/record_difference.h"
#include "library/qx/record_json.h"
#include "library/qx/record_plan.h"
#include "library/qx/record_session.h"
#include "library/qx/record_writer.h"
#include "library/qx/sdk_caller.h"
#include "library/qx/sim_commands.h"

#include <cstring>
#include <new>

namespace qxsh {

namespace {

struct package_data
{
    explicit package_data(Tcl_Interp *interp)
        : session(interp), plans(session), caller(session, plans)
    {}

    record_session session;
    plan_cache plans;
    sdk_caller caller;
};

package_data &data_of(ClientData data)
{
    return *static_cast<package_data *>(data);
}

constexpr const char *options_usage = "?-view views? ?-raw? ?-words?";

bool refuse_usage(Tcl_Interp *interp, Tcl_Obj *text)
{
    Tcl_SetObjResult(interp, text);
    Tcl_SetErrorCode(interp, "QX", "USAGE", nullptr);
    return false;
}

// Reads the options after a command's own words, which `words` names in the usage message.
bool read_options(Tcl_Interp *interp, const char *command, const char *words, int count,
                  Tcl_Obj *const given[], plan_options &options)
{
    for (int i = 0; i < count; ++i) {
        const char *const word = Tcl_GetString(given[i]);
        const bool again = std::strcmp(word, "-raw") == 0     ? options.raw
                           : std::strcmp(word, "-words") == 0 ? options.words
                           : std::strcmp(word, "-view") == 0  ? options.views != nullptr
                                                              : false;
        if (again)
            return refuse_usage(interp, Tcl_ObjPrintf("%s: %s is given twice", command, word));
        if (std::strcmp(word, "-raw") == 0) {
            options.raw = true;
        } else if (std::strcmp(word, "-words") == 0) {
            options.words = true;
        } else if (std::strcmp(word, "-view") != 0) {
            return refuse_usage(interp,
                                Tcl_ObjPrintf("bad option \"%s\": should be -raw, -view or -words;"
                                              " usage: %s %s %s",
                                              word, command, words, options_usage));
        } else if (++i == count) {
            return refuse_usage(interp, Tcl_NewStringObj("-view wants a list of views", -1));
        } else {
            options.views = given[i];
        }
    }
    return true;
}

int get_record(package_data &data, Tcl_Interp *interp, Tcl_Obj *handle, plan_options options)
{
    found_record found;
    if (!data.session.find(handle, found))
        return TCL_ERROR;
    const record_plan *const plan = data.plans.plan(*found.row, options);
    if (plan == nullptr)
        return TCL_ERROR;
    Tcl_SetObjResult(interp, read_record(*plan, found.memory));
    return TCL_OK;
}

// One field or element, as the record's dict would show it.
int get_place(package_data &data, Tcl_Interp *interp, Tcl_Obj *handle, Tcl_Obj *path,
              plan_options options)
{
    found_record found;
    path_target target;
    if (!data.session.find(handle, found) || !follow_path(data.session, *found.row, path, target))
        return TCL_ERROR;
    if (target.field == nullptr) {
        Tcl_SetObjResult(interp, read_padding(*target.row, static_cast<unsigned>(target.index),
                                              found.memory + target.at));
        return TCL_OK;
    }
    const record_plan *const plan = data.plans.plan(*target.row, options);
    if (plan == nullptr)
        return TCL_ERROR;
    Tcl_SetObjResult(interp,
                     read_field(*plan, *target.field, target.index, found.memory + target.at));
    return TCL_OK;
}

int get_command(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    plan_options options = {nullptr, false, false};
    if (objc < 2) {
        Tcl_WrongNumArgs(interp, 1, objv, "handle ?path? ?-view views? ?-raw? ?-words?");
        return TCL_ERROR;
    }
    const bool has_path = objc > 2 && Tcl_GetString(objv[2])[0] != '-';
    const int words = has_path ? 3 : 2;
    if (!read_options(interp, "qx::get", "handle ?path?", objc - words, objv + words, options))
        return TCL_ERROR;
    if (has_path)
        return get_place(data_of(client), interp, objv[1], objv[2], options);
    return get_record(data_of(client), interp, objv[1], options);
}

int json_command(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    package_data &data = data_of(client);
    plan_options options = {nullptr, false, false};
    found_record found;
    if (objc < 2) {
        Tcl_WrongNumArgs(interp, 1, objv, "handle ?-view views? ?-raw? ?-words?");
        return TCL_ERROR;
    }
    if (!read_options(interp, "qx::json", "handle", objc - 2, objv + 2, options) ||
        !data.session.find(objv[1], found))
        return TCL_ERROR;
    const record_plan *const plan = data.plans.plan(*found.row, options);
    if (plan == nullptr)
        return TCL_ERROR;
    Tcl_SetObjResult(interp, record_as_json(*plan, found.memory));
    return TCL_OK;
}

int diff_command(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    package_data &data = data_of(client);
    plan_options options = {nullptr, false, false};
    found_record first;
    found_record second;
    if (objc < 3) {
        Tcl_WrongNumArgs(interp, 1, objv, "first second ?-view views? ?-raw? ?-words?");
        return TCL_ERROR;
    }
    if (!read_options(interp, "qx::diff", "first second", objc - 3, objv + 3, options) ||
        !data.session.find(objv[1], first) || !data.session.find(objv[2], second))
        return TCL_ERROR;
    if (first.row != second.row) {
        Tcl_SetObjResult(interp, Tcl_ObjPrintf("a %s and a %s cannot be compared",
                                               first.row->name.text(), second.row->name.text()));
        Tcl_SetErrorCode(interp, "QX", "TYPE", nullptr);
        return TCL_ERROR;
    }
    const record_plan *const plan = data.plans.plan(*first.row, options);
    if (plan == nullptr)
        return TCL_ERROR;
    const held_object result{Tcl_NewListObj(0, nullptr)};
    differences(*plan, first.memory, second.memory, result.get());
    Tcl_SetObjResult(interp, result.get());
    return TCL_OK;
}

int template_command(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    static constexpr unsigned char zeros[most_record_bytes] = {};
    package_data &data = data_of(client);
    plan_options options = {nullptr, false, false};
    if (objc < 2) {
        Tcl_WrongNumArgs(interp, 1, objv, "record ?-view views? ?-raw? ?-words?");
        return TCL_ERROR;
    }
    if (!read_options(interp, "qx::template", "type", objc - 2, objv + 2, options))
        return TCL_ERROR;
    const char *const name = Tcl_GetString(objv[1]);
    const record_row *const row = data.session.record(name);
    if (row == nullptr) {
        Tcl_SetErrorCode(interp, "QX", "UNKNOWN", "record", name, nullptr);
        Tcl_AppendResult(interp, "there is no record \"", name, "\"", nullptr);
        return TCL_ERROR;
    }
    const record_plan *const plan = data.plans.plan(*row, options);
    if (plan == nullptr)
        return TCL_ERROR;
    Tcl_SetObjResult(interp, read_record(*plan, zeros));
    return TCL_OK;
}

// Writes paths and values, alternating, to a record's bytes.
bool write_places(package_data &data, const record_row &row, int count, Tcl_Obj *const words[],
                  unsigned char *bytes)
{
    record_writer writer{data.session, bytes};
    for (int i = 0; i < count; i += 2) {
        const char *const path = Tcl_GetString(words[i]);
        for (int j = 0; j < i; j += 2)
            if (std::strcmp(path, Tcl_GetString(words[j])) == 0)
                return refuse_place(data.session.interp(), path,
                                    Tcl_NewStringObj("named twice", -1));
        path_target target;
        if (!follow_path(data.session, row, words[i], target) ||
            !writer.write(target, words[i + 1], path))
            return false;
    }
    return true;
}

// A dict, a JSON text behind -json, or paths and values.
bool write_values(package_data &data, const record_row &row, int count, Tcl_Obj *const words[],
                  unsigned char *bytes)
{
    if (count == 1)
        return record_writer{data.session, bytes}.write(row, words[0]);
    if (std::strcmp(Tcl_GetString(words[0]), "-json") != 0)
        return write_places(data, row, count, words, bytes);
    int length;
    const char *const text = Tcl_GetStringFromObj(words[1], &length);
    Tcl_Obj *const values =
        count == 2 ? read_json(data.session.interp(), "", {text, static_cast<unsigned>(length)})
                   : nullptr;
    if (count != 2)
        refuse_usage(data.session.interp(),
                     Tcl_NewStringObj("usage: qx::set handle -json text", -1));
    if (values == nullptr)
        return false;
    const bool written =
        record_writer{data.session, bytes, record_writer::typing::strict}.write(row, values);
    Tcl_DecrRefCount(values);
    return written;
}

// The values are written to a copy, which replaces the record if all is well.
int set_command(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    package_data &data = data_of(client);
    if (objc < 3 || (objc > 3 && objc % 2 != 0)) {
        Tcl_WrongNumArgs(interp, 1, objv, "handle dict|-json text|path value ?path value ...?");
        return TCL_ERROR;
    }
    found_record found;
    if (!data.session.find(objv[1], found))
        return TCL_ERROR;
    unsigned char bytes[most_record_bytes];
    std::memcpy(bytes, found.memory, found.row->size);
    if (!write_values(data, *found.row, objc - 2, objv + 2, bytes) ||
        !data.session.check_writable(objv[1], found))
        return TCL_ERROR;
    std::memcpy(found.memory, bytes, found.row->size);
    return TCL_OK;
}

int apply_command(ClientData client, Tcl_Interp *, int objc, Tcl_Obj *const objv[])
{
    package_data &data = data_of(client);
    return apply_calls(data.session, data.caller, objc, objv);
}

int call_command(ClientData client, Tcl_Interp *, int objc, Tcl_Obj *const objv[])
{
    return data_of(client).caller.run(objc, objv);
}

// Another profile is in use.
int profile_changed_command(ClientData client, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    data_of(client).plans.clear();
    data_of(client).session.codes().close();
    rename_observed(interp);
    return TCL_OK;
}

template <Tcl_ObjCmdProc *command>
void create(Tcl_Interp *interp, const char *name, package_data *data)
{
    Tcl_CreateObjCommand(interp, name, checked_command<command>, data, nullptr);
}

void release(ClientData client, Tcl_Interp *)
{
    data_of(client).~package_data();
    Tcl_Free(static_cast<char *>(client));
}

} // namespace

} // namespace qxsh

extern "C" __attribute__((visibility("default"))) int Qxmemory_Init(Tcl_Interp *interp)
{
    using namespace qxsh;
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    auto *const data = new (Tcl_Alloc(sizeof(package_data))) package_data{interp};
    Tcl_CallWhenDeleted(interp, release, data);
    create<get_command>(interp, "::qx::get", data);
    create<set_command>(interp, "::qx::set", data);
    create<call_command>(interp, "::qx::call", data);
    create<apply_command>(interp, "::qx::apply", data);
    create<template_command>(interp, "::qx::template", data);
    create<json_command>(interp, "::qx::json", data);
    create<diff_command>(interp, "::qx::diff", data);
    create_judging_commands(interp);
    create_observing_commands(interp);
    create<parse_profile_command>(interp, "::qx::profile::parse", data);
    create<profile_changed_command>(interp, "::qx::profile::changed", data);
    create_sim_commands(interp, data->session);
    return TCL_OK;
}
