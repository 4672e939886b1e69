// Finds Tcl's object types and its empty text with public calls only; see known_objects.h.
#include "runtime/known_objects.h"

namespace qxsh {

static object_type nothing = make_object_type("");
static const char no_text[] = "";

constinit known_objects known = {&nothing, &nothing, no_text};

void learn_known_objects()
{
    if (known.integer_type != &nothing)
        return;
    Tcl_Obj *const object = Tcl_NewObj();
    known.empty_text = object->bytes;
    Tcl_DecrRefCount(object);
    known.integer_type = Tcl_GetObjType("int");
    known.wide_type = Tcl_GetObjType("wideInt");
    if (known.wide_type == nullptr)
        known.wide_type = known.integer_type;
}

} // namespace qxsh
