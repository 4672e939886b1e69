// Behaviours of the SDK functions.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#pragma once

#include "call.h"
#include "qx_sdk.h"

namespace qxsim {

/// By number of the call: its behaviour, on the frame's copies.
extern qx_status (*const behaviours[])(call_frame &);

qx_status lamp_add(device &here, const qx_lamp_t &lamp, unsigned int &lamp_id);
qx_status lamp_tune(device &here, unsigned char channel, unsigned int level, qx_lamp_t &lamp);

} // namespace qxsim
