// Control of the simulator from outside the SDK.
#pragma once

#include "call.h"

namespace qxsim {

inline bool controlled() noexcept { return false; }

using carry_out_function = qx_status(const call_description &, const call_word *) noexcept;
inline unsigned int perform_controlled(const call_description &call, const call_word *words,
                                       carry_out_function *carry_out) noexcept
{
    return carry_out(call, words);
}

} // namespace qxsim
