// The flow table, for the translations too: their flows share it with those of qx_flow_add.
#pragma once

#include "device.h"
#include "qx_status.h"

namespace qxsim {

/// Checks the ranges of a packet's port, addresses and VLAN identifiers, and that both addresses
/// are of one family.
qx_status check_packet(const qx_pkt_info_t &packet);

/// Checks the ranges of both packets of a flow.
qx_status check_flow(const qx_flow_t &flow);

/// The key of a flow in the table.
hashed_flow_key key_of(const qx_flow_t &flow);

/// Adds a checked flow, with its key, in the first free slot from its home slot on. Fails if its id
/// or key exists, the table is full or no slot is free.
qx_status install_flow(device &here, const qx_flow_t &flow, const hashed_flow_key &key,
                       flow_owner owner);

/// Removes the flow with this key, which must be there.
void remove_flow(device &here, const hashed_flow_key &key);

} // namespace qxsim
