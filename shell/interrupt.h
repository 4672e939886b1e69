// Ctrl-C at the prompt: it ends the running command, or drops what is half typed, and the prompt
// comes back. For a shell whose commands are typed; elsewhere SIGINT keeps its action.
#pragma once

#include <tcl.h>

namespace qxsh {

/// From now on SIGINT ends what the interpreter runs with the error "interrupted", error code
/// {QXSH INTERRUPTED}. A second one within a second cannot be caught: it ends everything up to the
/// prompt. A command that is in the SDK goes on until it returns. Nothing is changed if the process
/// was started with SIGINT ignored.
void interrupt_scripts(Tcl_Interp *interp);

/// Whether a SIGINT has come that has ended nothing yet; the next command of the script ends then.
bool interrupt_waits();

/// The same; and forgets it.
bool take_interrupt();

/// Gives the variable errorCode the value it had before Tcl's loop prompted.
void restore_error_code(Tcl_Interp *interp);

/// Tcl's loop has been given what was typed: no script prompts any more.
void command_begins();

/// Waits until there is something to read or a SIGINT has come.
void wait_for_input(int descriptor);

/// Whether a command is being carried out; not so while the prompt waits.
bool runs_script(Tcl_Interp *interp);

} // namespace qxsh
