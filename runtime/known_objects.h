// What the runtime knows of Tcl's own objects: looked up once, then compared with on nearly every
// call.
#pragma once

#include "runtime/tcl_api.h"

namespace qxsh {

struct known_objects {
    object_type *integer_type; ///< objects whose value is internalRep.longValue
    object_type *wide_type;    ///< Tcl_WideInt objects; the same where Tcl has only one type
    const char *empty_text;    ///< what every new object has as its text, one array for all
};

/// Until learn_known_objects() has run, its members equal nothing that an object can hold.
[[gnu::visibility("hidden")]] extern known_objects known;

/// Fills `known` unless that was done. Needs Tcl's stub table.
void learn_known_objects();

} // namespace qxsh
