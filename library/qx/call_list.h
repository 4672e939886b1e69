// The command qx::apply: the SDK calls that a JSON file lists.
#pragma once

#include "library/qx/sdk_caller.h"

#include <string>
#include <string_view>

namespace qxsh {

/// The command `qx::apply FILE`. Sets the interpreter's result and returns TCL_OK or TCL_ERROR. The
/// whole file is read before the first call, and all but the words in `args` is checked.
int apply_calls(record_session &session, sdk_caller &caller, int objc, Tcl_Obj *const objv[]);

/// As read_json; a mistake is an error in the interpreter, error code {QX JSON <line> <column>},
/// whose message begins with `source`.
Tcl_Obj *read_json_text(Tcl_Interp *interp, const std::string &source, std::string_view text);

} // namespace qxsh
