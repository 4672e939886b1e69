// Where in the scripts something happened: the command, and the line as far as Tcl knows it.
#pragma once

#include "runtime/tcl_api.h"

#include <compare>
#include <string>

namespace qxsh {

struct script_place
{
    std::string command;
    std::string file;      ///< with its whole path; empty if the command stands in no file
    std::string procedure; ///< where there is no file: the procedure, if any
    int line = 0;          ///< of the file or the procedure; 0: not known

    auto operator<=>(const script_place &) const = default;
};

/// The place of the command that runs now. The interpreter's result is lost.
script_place current_place(Tcl_Interp *interp, const char *command);

/// E.g. "'qx_flow_create' at setup.tcl:12". A file below the current folder goes without that.
std::string shown(const script_place &place);

} // namespace qxsh
