// Strict memory: the words of every command are checked against the blocks that scripts have made
// before its wrapper is called. Sessions without it call the wrappers directly.
#pragma once

#include "runtime/tcl_api.h"

namespace qxsh {

/// The procedure of all commands under strict memory; the client data is the command's row of
/// swig_commands. Returns what the wrapper returns, or TCL_ERROR with a message.
int strict_command(ClientData row, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]);

/// memory_access::allows of strict memory: the whole record must lie in a live block, where such a
/// record may be.
bool strictly_allows(Tcl_Interp *interp, const void *address, const char *record);

/// Reports blocks that were never freed on stderr when the process ends. Later calls do nothing.
void report_leaks_at_exit();

} // namespace qxsh
