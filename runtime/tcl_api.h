// Tcl's API as the module sees it: through the stub table, whose pointer is linked into the module.
// Told that it is not somebody else's, the compiler reaches it without looking up where it is, which
// every call of Tcl would pay for.
#pragma once

// What tcl.h includes is somebody else's.
#include <cstdio>

#ifdef USE_TCL_STUBS
#pragma GCC visibility push(hidden)
#include <tcl.h>
#pragma GCC visibility pop
#else
#include <tcl.h>
#endif
