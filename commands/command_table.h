// The generated command table: every command of the module with its wrapper, in order of
// registration.
#pragma once

#include "runtime/tcl_api.h"

struct swig_command_info {
    const char *name; ///< null ends the table
    Tcl_ObjCmdProc *wrapper;
    ClientData client_data; ///< null for every command
};

extern const swig_command_info swig_commands[];
