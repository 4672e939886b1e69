// What our converters make of an object, in the words of the number table.
#pragma once

#include "tests/unit/number_table.h"

#include <tcl.h>

/// The readings of an object, each by one converter. Also expects of each converter that it stores
/// nothing when it fails, says the same when it has nowhere to store to, and leaves no message.
number_row converter_readings(Tcl_Interp *interp, Tcl_Obj *object);
