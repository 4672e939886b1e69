// Commands of the library where memory ends: the C++ library's exception must not reach Tcl.
#pragma once

#include <tcl.h>

#include <new>

namespace qxsh {

/// The command, with the error {QX MEMORY <command>} if there is no memory for what it does.
template <Tcl_ObjCmdProc *command>
int checked_command(ClientData client, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    try {
        return command(client, interp, objc, objv);
    } catch (const std::bad_alloc &) {
        const char *const name = Tcl_GetString(objv[0]);
        Tcl_SetObjResult(interp, Tcl_ObjPrintf("there is no memory left for %s", name));
        Tcl_SetErrorCode(interp, "QX", "MEMORY", name, nullptr);
        return TCL_ERROR;
    }
}

} // namespace qxsh
