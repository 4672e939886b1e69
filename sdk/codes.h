// The values of codes in records and arguments. They are the simulator's own and are listed in
// docs/simulator.md; on a board, the board's library defines them.
#pragma once

#include <cstdint>

namespace qxsim {

/// QoS map modes: 0 by port, 1 by DSCP, 2 by 802.1p.
constexpr std::uint32_t map_mode_limit = 2;

/// Power states of cores and controllers: 0 off, 1 on, 2 asleep.
constexpr std::uint32_t power_off = 0;
constexpr std::uint32_t power_on = 1;
constexpr std::uint32_t power_state_limit = 2;

/// Kinds of IP translation: 0 to 3.
constexpr std::uint32_t translate_type_limit = 3;

/// What a next hop is bound to, in the order of the members of qx_l3_nexthop_intf_binding_t.
constexpr std::uint32_t nexthop_by_port = 0;
constexpr std::uint32_t nexthop_by_tunnel = 1;
constexpr std::uint32_t nexthop_by_sa = 2;

/// Encapsulation of a port: 0 Ethernet, 1 PPPoE.
constexpr std::uint32_t encap_ethernet = 0;
constexpr std::uint32_t encap_limit = 1;

/// Kinds of tunnel, in the order of the members of qx_tunnel_cfg_union_t.
constexpr std::uint32_t tunnel_l2tp = 0;
constexpr std::uint32_t tunnel_gre = 1;
constexpr std::uint32_t tunnel_ipsec = 2;
constexpr std::uint32_t tunnel_etherip = 3;

/// Directions: 0 inbound (ingress), 1 outbound (egress); a tunnel also takes 2, both.
constexpr std::uint32_t inbound = 0;
constexpr std::uint32_t outbound = 1;
constexpr std::uint32_t both_directions = 2;

/// Policy actions: 0 bypass, 1 discard, 2 protect.
constexpr std::uint32_t action_protect = 2;

/// Encryption of a PPTP session: 0 is none, any other value an algorithm.
constexpr std::uint32_t crypto_none = 0;

} // namespace qxsim
