// The process entry of qxsh: a Tcl shell whose interpreter has the module.
#include "commands/sdk_call.h"
#include "commands/sdk_output.h"
#include "shell/demo.h"
#include "shell/fatal_signals.h"

int main(int argc, char *argv[])
{
    qxsh::catch_fatal_signals();
    qxsh::inspect_after_sdk_calls(qxsh::take_back_fatal_signals);
    qxsh::unbuffer_c_output();
    Tcl_Main(argc, argv, Demo_AppInit); // never returns
    return 0;
}
