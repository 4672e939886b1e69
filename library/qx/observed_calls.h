// SDK calls as they happen, written to a recording or to stderr, for qx::record and qx::trace. Both
// are the process's, whichever interpreter makes the calls.
#pragma once

#include <tcl.h>

namespace qxsh {

/// Creates the commands that qx::record and qx::trace consist of, of which NAME, an empty text or
/// a list say what is on:
///   ::qx::record::begin NAME REPLACE KEYS    ::qx::record::end    ::qx::record::now
///   ::qx::trace::begin PATTERN FUNCTIONS     ::qx::trace::end     ::qx::trace::pattern
///   ::qx::trace::counts                      lists: function, calls, failures, nanoseconds,
///   longest
/// What this interpreter has begun ends with it.
void create_observing_commands(Tcl_Interp *interp);

/// Another profile is in use in this interpreter.
void rename_observed(Tcl_Interp *interp);

} // namespace qxsh
