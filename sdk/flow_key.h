// The key of a flow and its slot in the flow table, by the formula in docs/simulator.md. Package qx
// has the same functions.
#pragma once

#include "capacities.h"
#include "qx_sdk.h"

#include <array>
#include <cstdint>

namespace qxsim {

/// The bytes of an ingress packet that are hashed, in that order.
using flow_key = std::array<std::uint8_t, 64>;

flow_key flow_key_of(const qx_pkt_info_t &packet);

/// The hash of a key.
std::uint32_t flow_hash(const flow_key &key);

/// The home slot of a key by its hash, below flow_slot_count. A flow is in this slot or one of the
/// following ones, wrapping at the end.
unsigned flow_home(std::uint32_t hash);
inline unsigned flow_home(const flow_key &key)
{
    return flow_home(flow_hash(key));
}

/// The slot that is tried for a flow in this step, below flow_probe_count, from the home slot on.
constexpr std::uint16_t probed(unsigned home, unsigned step)
{
    return static_cast<std::uint16_t>((home + step) % flow_slot_count);
}

} // namespace qxsim
