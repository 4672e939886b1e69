// The process entry of qxsh: a Tcl shell whose interpreter knows the module.
#include "shell/demo.h"

int main(int argc, char *argv[])
{
    Tcl_Main(argc, argv, Demo_AppInit); // never returns
    return 0;
}
