// The results of our converters for an object, in the notation of the number table.
#pragma once

#include "tests/unit/number_table.h"

#include <tcl.h>

/// The readings of an object, one per converter. Also expects each converter to store nothing on
/// failure, to return the same code without a place to store to, and to leave no message.
number_row converter_readings(Tcl_Interp *interp, Tcl_Obj *object);
