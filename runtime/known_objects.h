// Tcl's own object types and empty text: looked up once, then compared with on nearly every call.
#pragma once

#include "runtime/tcl_api.h"

namespace qxsh {

struct known_objects
{
    object_type *integer_type; ///< objects whose value is internalRep.longValue
    object_type *wide_type;    ///< Tcl_WideInt objects; the same where Tcl has only one type
    const char *empty_text;    ///< the text of every new object, one array shared by all
};

/// Until learn_known_objects() has run, its members are equal to no object's.
[[gnu::visibility("hidden")]] extern known_objects known;

/// Fills `known` on the first call. Needs Tcl's stub table.
void learn_known_objects();

} // namespace qxsh
