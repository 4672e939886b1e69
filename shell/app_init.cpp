// What the shell does with its interpreter before the first command. Linked with Tcl itself, since
// the stub table is filled by the module's start-up only.
#include "shell/demo.h"

int Demo_AppInit(Tcl_Interp *interp)
{
    if (Tcl_Init(interp) == TCL_ERROR)
        return TCL_ERROR;
    if (Demo_Init(interp) == TCL_ERROR)
        return TCL_ERROR;
    Tcl_SetVar(interp, "tcl_rcFileName", "~/.myapprc", TCL_GLOBAL_ONLY);
    return TCL_OK;
}
