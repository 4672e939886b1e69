// The module's entry points.
#pragma once

#include <tcl.h>

extern "C" {

/// Initialises the module in an interpreter: package "demo" "0.0", its types in the interpreter's
/// registry, its commands and constants. Returns TCL_OK; TCL_ERROR without a message for a null
/// interpreter; TCL_ERROR with a message for one older than Tcl 8.5, or in another thread than the
/// first interpreter, because the module is for one thread.
DLLEXPORT int Demo_Init(Tcl_Interp *interp);

/// The same for a safe interpreter: it gets all commands.
DLLEXPORT int Demo_SafeInit(Tcl_Interp *interp);

/// Initialises the shell's interpreter: Tcl, then the module, then the rc file's name. Returns
/// TCL_OK, or TCL_ERROR with a message.
int Demo_AppInit(Tcl_Interp *interp);
}
