// Errors of commands as scripts see them: a category, a message, the error code list {SWIG
// category}.
#pragma once

#include "runtime/tcl_api.h"

#include <string>

/// The category of an error code; "RuntimeError" for a code without one.
const char *swig_error_type_name(int code);

/// Makes "<category> <message>" the interpreter's result and {SWIG <category>} its error code.
void swig_set_error_msg(Tcl_Interp *interp, const char *category, const char *message);

namespace qxsh {

/// The command's name in its usage, e.g. "oo:qx_flow_add device_id p_flow ".
std::string method_name(const char *usage);

} // namespace qxsh
