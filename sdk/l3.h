// Next hops, as tunnels use them.
#pragma once

#include "device.h"

namespace qxsim {

/// Counts a tunnel at the next hop that it uses: `step` is 1 when the tunnel comes and -1 when it
/// goes, which removes a next hop that has no other user and was not added by a call. An unknown
/// index is ignored.
void count_tunnel(device &here, std::uint32_t index, int step);

} // namespace qxsim
