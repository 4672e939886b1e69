// The module's entry points.
#pragma once

#include <tcl.h>

extern "C" {

/// Makes the module known to an interpreter: package "demo" "0.0", its types in the interpreter's
/// registry, its commands and constants. TCL_ERROR for a null interpreter; with a message for one
/// older than Tcl 8.5, or of another thread than the first interpreter's: the module is for one
/// thread.
DLLEXPORT int Demo_Init(Tcl_Interp *interp);

/// The same for a safe interpreter: no command is withheld.
DLLEXPORT int Demo_SafeInit(Tcl_Interp *interp);

/// Initialises the shell's interpreter: Tcl, then the module, then the rc file's name.
int Demo_AppInit(Tcl_Interp *interp);
}
