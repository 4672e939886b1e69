// Next hops, as tunnels use them.
#pragma once

#include "device.h"

namespace qxsim {

/// To be called after a tunnel that used this next hop was removed: removes the next hop if it has
/// no other user and no call added it. An unknown index is ignored.
void release_nexthop(device &here, std::uint32_t index) noexcept;

} // namespace qxsim
