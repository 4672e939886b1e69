// Turns statuses of SDK functions into errors, for qx::check with a script.
#pragma once

#include <tcl.h>

namespace qxsh {

/// Creates two commands. `::qx::status::judge_calls NAMES` makes each of these commands, unless it
/// returns 0, call `::qx::status::left WORDS CODE RESULT` at its end; an error there becomes the
/// command's error. Names that are not commands are ignored. `::qx::status::leave_calls` undoes it.
void create_judging_commands(Tcl_Interp *interp);

} // namespace qxsh
