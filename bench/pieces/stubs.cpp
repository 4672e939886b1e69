// Fills Tcl's stub table before the first benchmark; see stubs.h.
#include "stubs.h"

#include "runtime/known_objects.h"

Tcl_Interp *stubbed_interpreter(Tcl_Interp *(*create)())
{
    static Tcl_Interp *const interp = [create] {
        Tcl_Interp *const made = create();
        Tcl_InitStubs(made, "8.5", 0);
        qxsh::learn_known_objects();
        return made;
    }();
    return interp;
}
