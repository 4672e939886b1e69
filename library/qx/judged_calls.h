// Statuses of SDK functions as errors, for qx::check with a script.
#pragma once

#include <tcl.h>

namespace qxsh {

/// Makes two commands in the interpreter. `::qx::status::judge_calls NAMES` lets these commands
/// tell `::qx::status::left WORDS CODE RESULT` when they have ended in anything but 0; an error
/// there becomes theirs. `::qx::status::leave_calls` ends that. Names that are no commands are
/// passed over.
void create_judging_commands(Tcl_Interp *interp);

} // namespace qxsh
