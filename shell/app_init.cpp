// Initialises the shell's interpreter before the first command. Linked with Tcl itself, because
// only the module's start-up fills the stub table.
#include "commands/sdk_call.h"
#include "shell/demo.h"
#include "shell/interrupt.h"

#include <cstring>

// Before every wait for events. The plain prompt waits for a line instead; see shell/interrupt.
static void inspect_sdk(ClientData, int)
{
    qxsh::inspect_after_latest_call();
}

// Tcl's loop has set whether it will prompt.
static bool will_prompt(Tcl_Interp *interp)
{
    const char *const answer = Tcl_GetVar(interp, "tcl_interactive", TCL_GLOBAL_ONLY);
    return answer != nullptr && std::strcmp(answer, "1") == 0;
}

int Demo_AppInit(Tcl_Interp *interp)
{
    if (Tcl_Init(interp) == TCL_ERROR)
        return TCL_ERROR;
    if (Demo_Init(interp) == TCL_ERROR)
        return TCL_ERROR;
    Tcl_CreateEventSource(inspect_sdk, nullptr, nullptr);
    Tcl_SetVar(interp, "tcl_rcFileName", "~/.myapprc", TCL_GLOBAL_ONLY);
    if (will_prompt(interp))
        qxsh::interrupt_scripts(interp);
    return TCL_OK;
}
