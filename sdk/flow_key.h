// What the flow table finds a flow by, and the slot that follows: the formula of docs/simulator.md.
// Plain functions of a packet, which package qx has as well.
#pragma once

#include "qx_sdk.h"

#include <array>
#include <cstdint>

namespace qxsim {

/// The bytes of an ingress packet that the hash runs over, in that order.
using flow_key = std::array<std::uint8_t, 64>;

flow_key flow_key_of(const qx_pkt_info_t &packet) noexcept;

/// The slot that a key's hash names; a flow lies in this one or in one of the next ones, round the
/// end.
unsigned flow_home(const flow_key &key) noexcept;

} // namespace qxsim
