// The stub table, through which the module's objects call Tcl. Demo_Init fills it; tests of
// functions that run without Demo_Init do it with this.
#pragma once

#include <tcl.h>

/// Fills the stub table. False, with a message in the interpreter, if Tcl is too old.
bool fill_stub_table(Tcl_Interp *interp);
