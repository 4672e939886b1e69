// A channel transformation on stdin that lets an interrupt discard a half-typed command.
#pragma once

#include <tcl.h>

namespace qxsh {

/// Puts the transformation onto the channel stdin; does nothing without stdin. To be called once.
/// Scripts read as before, and channel options are those of the terminal.
void watch_prompt_input(Tcl_Interp *interp);

/// Gives Tcl's loop `size` bytes to read next: whole lines from a line editor, in the encoding of
/// stdin. They are copied; dropped if stdin is closed.
void give_typed(const char *bytes, int size);

} // namespace qxsh
