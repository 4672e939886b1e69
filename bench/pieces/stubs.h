// An interpreter for benchmarks of the runtime, whose code calls Tcl through the stub table.
#pragma once

#include <tcl.h>

/// The one interpreter of the process, never deleted. `create` is libtcl's own Tcl_CreateInterp.
Tcl_Interp *stubbed_interpreter(Tcl_Interp *(*create)());
