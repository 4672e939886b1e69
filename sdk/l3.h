// What tunnels need of next hops.
#pragma once

#include "device.h"

namespace qxsim {

/// To be called when a tunnel that used a next hop is gone: a next hop that no call has added goes
/// with its last user.
void release_nexthop(device &here, std::uint32_t index) noexcept;

} // namespace qxsim
