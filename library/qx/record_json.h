// Records as JSON text, by their plans.
#pragma once

#include "library/qx/record_plan.h"

namespace qxsh {

/// A new object (reference count 0): the record at `memory`, which must be readable, as a JSON
/// object with one field a line. It holds what read_record says.
Tcl_Obj *record_as_json(const record_plan &plan, const unsigned char *memory);

} // namespace qxsh
