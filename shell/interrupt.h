// Ctrl-C at the prompt: it ends the running command, never the shell. Only for an interactive
// shell; otherwise SIGINT keeps its action.
#pragma once

#include <tcl.h>

namespace qxsh {

/// From now on SIGINT ends the interpreter's running command with the error "interrupted", error
/// code {QXSH INTERRUPTED}. A second one within a second cannot be caught: it ends everything up to
/// the prompt. An SDK call runs until it returns. While Tcl's loop waits for a line, a message on
/// stderr says what the terminal has dropped. To be called in the thread of Tcl's loop, before it
/// starts. Changes nothing if the process was started with SIGINT ignored, or if no pipe or thread
/// can be created.
void interrupt_scripts(Tcl_Interp *interp);

} // namespace qxsh
