// Profiles in the form that the package's scripts keep them.
#pragma once

#include "records/profile.h"

#include <tcl.h>

namespace qxsh {

/// The command `qx::profile::parse NAME BYTES`, which reads a profile's text. Its result is a dict:
/// statuses, number -> name and meaning; codes, place -> word -> number; capacities and families,
/// name -> number. A mistake is an error `NAME:LINE: what` with the code {QX PROFILE NAME LINE}.
int parse_profile_command(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]);

/// What the profile says that is in use in the interpreter: statuses, codes and families. On
/// failure returns false with an error in the interpreter.
bool take_profile(Tcl_Interp *interp, profile &in_use);

} // namespace qxsh
