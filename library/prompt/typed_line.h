// The line that is being edited, and a whole command on its way to Tcl's loop: commands of the
// package qx::prompt.
#pragma once

#include <tcl.h>

namespace qx::prompt {

/// Creates the commands and tells the shell how a half-typed line is dropped.
///   qx::prompt::readline::expect        before tclreadline reads a line
///   qx::prompt::readline::dropped       whether the line read last was dropped
///   qx::prompt::readline::give BYTES    Tcl's loop reads them next, in the encoding of stdin
void create_line_commands(Tcl_Interp *interp);

/// Binds what drops the line; after rl_initialize.
void bind_line_drop();

} // namespace qx::prompt
