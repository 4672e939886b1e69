// Compiled with USE_TCL_STUBS, unlike the tests; see stub_table.h.
#include "tests/unit/stub_table.h"

bool fill_stub_table(Tcl_Interp *interp)
{
    return Tcl_InitStubs(interp, "8.5", 0) != nullptr;
}
