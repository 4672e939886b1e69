// The key of a flow and its slot in the flow table, by the formula in docs/simulator.md. Package qx
// is compiled with it.
#pragma once

#include "qx_sdk.h"

#include <array>
#include <cstdint>

namespace qxsim {

/// The bytes of an ingress packet that are hashed, in that order.
using flow_key = std::array<std::uint8_t, 64>;

/// `ipv4` is the number of that address family.
flow_key flow_key_of(const qx_pkt_info_t &packet, std::uint32_t ipv4);

/// The hash of a key.
std::uint32_t flow_hash(const flow_key &key);

/// The home slot of a hash in a table of so many slots. A flow is in this slot or one of the
/// following ones, wrapping at the end.
unsigned flow_home(std::uint32_t hash, std::uint32_t slots);

/// How many slots are tried for a flow.
constexpr unsigned flow_probe_count = 16;

/// The slot that is tried for a flow in this step, below flow_probe_count, from the home slot on.
constexpr std::uint16_t probed(unsigned home, unsigned step, std::uint32_t slots)
{
    return static_cast<std::uint16_t>((home + step) % slots);
}

} // namespace qxsim
