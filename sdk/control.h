// Control of the simulator from outside the SDK: environment switches, read at the first call, and
// a control file, looked at before each call when a switch names one. Off by default, at the cost
// of one branch a call. docs/simulator.md says what the switches and the lines of the file are.
#pragma once

#include "call.h"

namespace qxsim {

enum class control_mode : unsigned char { unread, off, on };
extern control_mode control;

/// False once the environment has been read and asks for nothing.
inline bool controlled() noexcept
{
    return control != control_mode::off;
}

using carry_out_function = qx_status(const call_row &, const call_word *) noexcept;

/// A call under control: the control file is obeyed, the call counted, delayed, logged, and carried
/// out unless a fault answers it.
unsigned int perform_controlled(const call_row &call, const call_word *words,
                                carry_out_function *carry_out) noexcept;

} // namespace qxsim
