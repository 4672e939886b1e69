// What is typed at the prompt, on its way to Tcl: a transformation on stdin that lets an interrupt
// drop a half-typed command.
#pragma once

#include <tcl.h>

namespace qxsh {

/// Puts it onto the channel stdin, once. Scripts read as before, options are the terminal's.
void watch_prompt_input(Tcl_Interp *interp);

/// Tcl's loop reads these bytes next, whole lines that were typed elsewhere.
void give_typed(const char *bytes, int size);

} // namespace qxsh
