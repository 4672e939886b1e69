// The key of a flow and its slot in the flow table, by the formula in docs/simulator.md. Package qx
// has the same functions.
#pragma once

#include "qx_sdk.h"

#include <array>
#include <cstdint>

namespace qxsim {

/// The bytes of an ingress packet that are hashed, in that order.
using flow_key = std::array<std::uint8_t, 64>;

flow_key flow_key_of(const qx_pkt_info_t &packet) noexcept;

/// The home slot of a key, below flow_slot_count. A flow is in this slot or one of the following
/// ones, wrapping at the end.
unsigned flow_home(const flow_key &key) noexcept;

} // namespace qxsim
