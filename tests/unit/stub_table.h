// The stub table, through which the module's code calls Tcl. Demo_Init fills it; tests that do not
// call Demo_Init use this function.
#pragma once

#include <tcl.h>

/// Fills the stub table. False, with a message in the interpreter, if Tcl is too old.
bool fill_stub_table(Tcl_Interp *interp);
