// What the package's control of the simulator needs of C++.
#pragma once

#include "library/qx/record_session.h"

namespace qxsh {

/// Creates these commands; the session must outlive them.
///
///   qx::sim::flow_key FLOW        the key of a flow, a list of its bytes
///   qx::sim::flow_slots FLOW      the slots of the flow table that may have it, as they are tried
///   qx::sim::make_folder PREFIX   makes a new folder, its owner's alone, and returns its name
void create_sim_commands(Tcl_Interp *interp, record_session &session);

} // namespace qxsh
