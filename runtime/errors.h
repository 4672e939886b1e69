// Errors of commands as scripts see them: a category, a message, the error code list {SWIG
// category}.
#pragma once

#include "runtime/tcl_api.h"

/// The category of a swig_error, e.g. "TypeError"; "RuntimeError" for any other code. Static text.
const char *swig_error_type_name(int code);

/// Sets the interpreter's result to "<category> <message>" and its error code to {SWIG <category>}.
/// Both texts are copied.
void swig_set_error_msg(Tcl_Interp *interp, const char *category, const char *message);
