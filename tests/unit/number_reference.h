// How the board converts words to numbers, written down with the very calls it makes: Tcl's long
// conversion and the C library's strtoul and strtoull. Right only where long has 32 bits; ours is
// held against it.
#pragma once

#include "tests/unit/number_table.h"

#include <tcl.h>

static_assert(sizeof(long) == 4);

/// The readings of an object, which may change its internal representation. The interpreter's
/// result is written over.
number_row reference_readings(Tcl_Interp *interp, Tcl_Obj *object);
