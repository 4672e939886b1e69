// Control of the simulator from outside the SDK: environment switches, read at the first call, and
// a control file named by a switch, checked for changes before each call. Off by default, at the
// cost of one branch per call. docs/simulator.md describes the switches and the file.
#pragma once

#include "call.h"

namespace qxsim {

enum class control_mode : unsigned char { unread, off, on };
extern control_mode control;

/// False once the environment has been read and sets no switch.
inline bool controlled()
{
    return control != control_mode::off;
}

using carry_out_function = qx_status(const call_row &, const call_word *);

/// Performs a call under control: obeys the control file, counts, delays and logs the call, and
/// calls `carry_out` unless a fault applies. Reads the environment first if that is still to do.
/// Returns the number of the status of the call or of the fault.
unsigned int perform_controlled(const call_row &call, const call_word *words,
                                carry_out_function *carry_out);

} // namespace qxsim
