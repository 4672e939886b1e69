// The flow table as the translations use it: their flows stand in it beside those of qx_flow_add.
#pragma once

#include "device.h"
#include "qx_status.h"

namespace qxsim {

/// A packet's port, addresses and VLAN identifiers are within their ranges.
qx_status check_packet(const qx_pkt_info_t &packet) noexcept;

/// Both packets of a flow are within their ranges.
qx_status check_flow(const qx_flow_t &flow) noexcept;

/// Puts a checked flow into the first free slot from its home on; `slot` receives it.
qx_status install_flow(device &here, const qx_flow_t &flow, flow_owner owner,
                       std::uint16_t &slot) noexcept;

/// The flow whose ingress packet has the same key; null if there is none. `slot` receives its slot.
flow_entry *find_flow(device &here, const flow_key &key, std::uint16_t &slot) noexcept;

/// Takes the flow in an occupied slot out.
void remove_flow(device &here, std::uint16_t slot) noexcept;

} // namespace qxsim
