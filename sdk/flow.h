// The flow table, for the translations too: their flows share it with those of qx_flow_add.
#pragma once

#include "device.h"
#include "qx_status.h"

namespace qxsim {

/// Checks the ranges of a packet's port, addresses and VLAN identifiers.
qx_status check_packet(const qx_pkt_info_t &packet) noexcept;

/// Checks the ranges of both packets of a flow.
qx_status check_flow(const qx_flow_t &flow) noexcept;

/// Adds a checked flow in the first free slot from its home slot on, and stores that in `slot`.
/// Fails if its id or key exists, the table is full or no slot is free; `slot` is then unspecified.
qx_status install_flow(device &here, const qx_flow_t &flow, flow_owner owner,
                       std::uint16_t &slot) noexcept;

/// The flow with this key, and its slot in `slot`; null if there is none. The pointer is valid
/// until the next add or remove.
flow_entry *find_flow(device &here, const flow_key &key, std::uint16_t &slot) noexcept;

/// Removes the flow in an occupied slot.
void remove_flow(device &here, std::uint16_t slot) noexcept;

} // namespace qxsim
