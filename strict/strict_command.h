// Strict memory: every command's words are checked against the blocks that scripts have made
// before the command's wrapper is called with them. A session without it calls the wrappers.
#pragma once

#include "runtime/tcl_api.h"

namespace qxsh {

/// The procedure of all commands under strict memory; its client data is the command's row of
/// swig_commands.
int strict_command(ClientData row, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]);

/// Has the blocks that were never freed reported on stderr when the process ends. To be called
/// once or more.
void report_leaks_at_exit();

} // namespace qxsh
