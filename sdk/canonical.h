// Records as their meaning: two that mean the same to the device have equal bytes. Padding, the
// words behind an IPv4 address, the other readings of a union and unused elements are 0. Relies on
// the codes and on the table of records.
#pragma once

#include "qx_sdk.h"
#include "record.h"

namespace qxsim {

// The canonical copy of a record whose codes are valid.
stored<qx_rule_hash_key_t> canonical(const qx_rule_hash_key_t &key);
stored<qx_rule_hash_t> canonical(const qx_rule_hash_t &rule);
stored<qx_rtp_cfg_t> canonical(const qx_rtp_cfg_t &cfg);
stored<qx_flow_t> canonical(const qx_flow_t &flow);
stored<qx_ip_translate_cfg_t> canonical(const qx_ip_translate_cfg_t &cfg);
stored<qx_l3_nexthop_t> canonical(const qx_l3_nexthop_t &nexthop);
stored<qx_tunnel_cfg_t> canonical(const qx_tunnel_cfg_t &cfg);
stored<qx_ipsec_policy_t> canonical(const qx_ipsec_policy_t &policy);
stored<qx_ipsec_sa_t> canonical(const qx_ipsec_sa_t &association);
stored<qx_pptp_sa_t> canonical(const qx_pptp_sa_t &session);
stored<qx_pppoe_port_cfg_t> canonical(const qx_pppoe_port_cfg_t &cfg);

/// A prefix without the bits beyond its length.
stored<qx_ip_address_t> canonical_prefix(const qx_ip_address_t &prefix);

} // namespace qxsim
