// A place in the scripts: the command, and its line if Tcl knows it.
#pragma once

#include "runtime/tcl_api.h"

#include <compare>
#include <string>

namespace qxsh {

struct script_place
{
    std::string command;
    std::string file;      ///< full path; empty if the command is not in a file
    std::string procedure; ///< if there is no file: the procedure, or empty
    int line = 0;          ///< in the file or procedure, from 1; 0: unknown

    auto operator<=>(const script_place &) const = default;
};

/// The place of the running command, with `command` as its name; for scripts of package qx the
/// place where they were called. Resets the interpreter's result.
script_place current_place(Tcl_Interp *interp, const char *command);

/// The place as messages show it, e.g. "'qx_flow_create' at setup.tcl:12". A file below the current
/// folder is shown relative to it.
std::string shown(const script_place &place);

} // namespace qxsh
