// Ctrl-C at the prompt: it ends the running command, or discards a half-typed one, and the prompt
// comes back. Only for an interactive shell; otherwise SIGINT keeps its action.
#pragma once

#include <tcl.h>

namespace qxsh {

/// From now on SIGINT ends the interpreter's running command with the error "interrupted", error
/// code {QXSH INTERRUPTED}. A second one within a second cannot be caught: it ends everything up to
/// the prompt. An SDK call runs until it returns. Changes nothing if the process was started with
/// SIGINT ignored, or if no pipe or thread can be created.
void interrupt_scripts(Tcl_Interp *interp);

/// Whether a SIGINT is pending, that is, has not ended a command yet. If so, the next command will
/// end.
bool interrupt_waits();

/// Returns whether a SIGINT is pending, and clears it.
bool take_interrupt();

/// Restores the variable errorCode to its value before Tcl's loop prompted, once per prompt.
void restore_error_code(Tcl_Interp *interp);

/// To be called when Tcl's loop receives typed lines: the prompt is over.
void command_begins();

/// Waits until the descriptor is readable or a SIGINT is pending.
void wait_for_input(int descriptor);

/// Whether the interpreter is running a command, rather than waiting at the prompt.
bool runs_script(Tcl_Interp *interp);

} // namespace qxsh
