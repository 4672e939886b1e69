// How the board converts words to numbers, using the same functions: Tcl's conversion to long, and
// the C library's strtoul and strtoull. A reference for ours; correct only if long has 32 bits.
#pragma once

#include "tests/unit/number_table.h"

#include <tcl.h>

static_assert(sizeof(long) == 4);

/// The readings of an object, whose internal representation may change. Overwrites the
/// interpreter's result.
number_row reference_readings(Tcl_Interp *interp, Tcl_Obj *object);
