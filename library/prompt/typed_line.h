// Commands of the package qx::prompt for the line being edited, and for giving a whole command to
// Tcl's loop.
#pragma once

#include <tcl.h>

namespace qx::prompt {

/// Creates the commands, and tells the shell what Ctrl-C does to a half-typed line.
///   qx::prompt::readline::expect        to be called before tclreadline reads a line
///   qx::prompt::readline::dropped       returns whether the last line was discarded
///   qx::prompt::readline::give BYTES    puts them in front of what the channel stdin has read
void create_line_commands(Tcl_Interp *interp);

/// Binds the key that discards the line. To be called after rl_initialize.
void bind_line_drop();

} // namespace qx::prompt
