// Commands for qx::sim; see sim_commands.h. Where flows are in the simulator's table is computed by
// its own code.
#include "library/qx/sim_commands.h"

#include "library/qx/checked_command.h"
#include "sdk/flow_key.h"

#include <cstdlib>
#include <cstring>

namespace qxsh {

namespace {

// The key of the flow that is a command's only word.
bool take_flow_key(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[],
                   qxsim::flow_key &key)
{
    found_record found;
    if (objc != 2) {
        Tcl_WrongNumArgs(interp, 1, objv, "flow");
        return false;
    }
    auto &session = *static_cast<record_session *>(client);
    if (!session.codes().open() || !session.find(objv[1], found))
        return false;
    if (found.row != record_rows + record_qx_flow_t) {
        Tcl_SetErrorCode(interp, "QX", "HANDLE", Tcl_GetString(objv[1]), nullptr);
        Tcl_AppendResult(interp, Tcl_GetString(objv[1]), " is not a handle of a flow", nullptr);
        return false;
    }
    qx_flow_t flow;
    std::memcpy(&flow, found.memory, sizeof flow);
    key = qxsim::flow_key_of(flow.ingress_pkt, session.codes().families().ipv4);
    return true;
}

template <class Numbers> void set_number_list(Tcl_Interp *interp, const Numbers &numbers)
{
    Tcl_Obj *const list = Tcl_NewListObj(0, nullptr);
    for (const int number : numbers)
        Tcl_ListObjAppendElement(nullptr, list, Tcl_NewIntObj(number));
    Tcl_SetObjResult(interp, list);
}

int flow_key_command(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qxsim::flow_key key;
    if (!take_flow_key(client, interp, objc, objv, key))
        return TCL_ERROR;
    set_number_list(interp, key);
    return TCL_OK;
}

int flow_slots_command(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    qxsim::flow_key key;
    if (!take_flow_key(client, interp, objc, objv, key))
        return TCL_ERROR;
    const auto &session = *static_cast<record_session *>(client);
    std::uint32_t table = 0;
    if (!session.run_script("::qx::catalogue::capacity", {Tcl_NewStringObj("flow_slots", -1)}) ||
        session.take_number(Tcl_GetObjResult(interp), UINT32_MAX, table) !=
            record_session::taken::number)
        return TCL_ERROR;
    const unsigned home = qxsim::flow_home(qxsim::flow_hash(key), table);
    std::array<std::uint16_t, qxsim::flow_probe_count> slots;
    for (unsigned step = 0; step < slots.size(); ++step)
        slots[step] = qxsim::probed(home, step, table);
    set_number_list(interp, slots);
    return TCL_OK;
}

int make_folder_command(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 2) {
        Tcl_WrongNumArgs(interp, 1, objv, "prefix");
        return TCL_ERROR;
    }
    Tcl_DString name;
    Tcl_UtfToExternalDString(nullptr, Tcl_GetString(objv[1]), -1, &name);
    Tcl_DStringAppend(&name, "XXXXXX", -1);
    Tcl_ResetResult(interp);
    const bool made = mkdtemp(Tcl_DStringValue(&name)) != nullptr;
    const char *const reason = made ? "" : Tcl_PosixError(interp);
    if (made) {
        Tcl_DString text;
        Tcl_ExternalToUtfDString(nullptr, Tcl_DStringValue(&name), -1, &text);
        Tcl_DStringResult(interp, &text);
    } else {
        Tcl_AppendResult(interp, "cannot make a folder beside \"", Tcl_GetString(objv[1]),
                         "\": ", reason, nullptr);
    }
    Tcl_DStringFree(&name);
    return made ? TCL_OK : TCL_ERROR;
}

} // namespace

void create_sim_commands(Tcl_Interp *interp, record_session &session)
{
    Tcl_CreateObjCommand(interp, "::qx::sim::flow_key", checked_command<flow_key_command>, &session,
                         nullptr);
    Tcl_CreateObjCommand(interp, "::qx::sim::flow_slots", checked_command<flow_slots_command>,
                         &session, nullptr);
    Tcl_CreateObjCommand(interp, "::qx::sim::make_folder", checked_command<make_folder_command>,
                         nullptr, nullptr);
}

} // namespace qxsh
