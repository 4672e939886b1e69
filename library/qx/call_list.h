// The command qx::apply: the SDK calls that a JSON file lists.
#pragma once

#include "library/qx/sdk_caller.h"

namespace qxsh {

/// The command `qx::apply FILE`. Sets the interpreter's result and returns TCL_OK or TCL_ERROR. The
/// whole file is read before the first call, and all but the words in `args` is checked.
int apply_calls(record_session &session, sdk_caller &caller, int objc, Tcl_Obj *const objv[]);

} // namespace qxsh
