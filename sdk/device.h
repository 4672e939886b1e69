// The simulated devices: each is a struct of bounded tables, whose sizes are in capacities.h. The
// behaviours are in one file per area.
#pragma once

#include "address.h"
#include "capacities.h"
#include "flow_key.h"
#include "qx_sdk.h"
#include "qx_status.h"
#include "record.h"
#include "table.h"

#include <array>
#include <compare>
#include <cstdint>

namespace qxsim {

// ------------------------------------------------------------------------------- QoS and power

struct qos_port
{
    std::uint32_t mode = 0; ///< 0 by port, 1 by the DSCP map, 2 by the 802.1p map
    std::array<std::uint8_t, dscp_count>
        dscp{}; ///< priority by DSCP; initially its upper three bits
    std::array<std::uint8_t, dot1p_count> dot1p{}; ///< priority by 802.1p value; at first equal
    bool operator==(const qos_port &) const = default;
};

/// A port's initial maps.
qos_port initial_port() noexcept;

/// Power states: 0 off, 1 on, 2 asleep.
struct power_states
{
    std::uint32_t frequency = 1000; ///< MHz
    std::array<std::uint32_t, cpu_count> cpu{1, 1};
    std::array<std::uint32_t, pcie_count> pcie{1, 1};
    std::array<std::uint32_t, sata_count> sata{1, 1};
    std::array<std::uint32_t, usb_count> usb{1, 1};
    std::uint8_t network_engine_suspended = 0;
    std::array<std::uint8_t, packet_engine_count> packet_engine_suspended{};
    std::uint32_t suspends = 0; ///< how often the system was suspended
};

// -------------------------------------------------------------------- flows, rules, translations

/// Who added a flow to the table; only its owner may remove it.
enum class flow_owner : std::uint8_t { caller, rtp, translation };

struct flow_entry
{
    stored<qx_flow_t> flow;
    flow_key key{};
    std::uint32_t added = 0; ///< device::ticks when it was added
    flow_owner owner = flow_owner::caller;
    std::uint32_t owner_id = 0; ///< id of the owning RTP or IP translation
};

using rule_key = stored<qx_rule_hash_key_t>; ///< padding cleared

struct rule_entry
{
    stored<qx_rule_hash_t> rule;
    rule_key key;
};

struct rtp_entry
{
    stored<qx_rtp_cfg_t> cfg;
    std::uint16_t flow_slot = 0;
    std::uint32_t added = 0; ///< device::ticks when it was added
};

struct translation_entry
{
    stored<qx_ip_translate_cfg_t> cfg;
    std::uint32_t flows = 0; ///< flows bound to it
};

// -------------------------------------------------------------------------------------- layer 3

/// Identity of a next hop; walks are in this order.
struct nexthop_key
{
    std::uint32_t type = 0;
    address_key address;
    std::uint32_t interface = 0;
    auto operator<=>(const nexthop_key &) const = default;
};

struct nexthop_entry
{
    stored<qx_l3_nexthop_t> nexthop;
    std::uint32_t index = 0;
    std::uint32_t routes = 0; ///< number of routes that use it
    bool added = false;       ///< by its own call; otherwise it is removed with its last user
};

struct route_entry
{
    stored<qx_l3_route_t> route; ///< its next hop may be outdated: look up `nexthop`
    nexthop_key nexthop;
};

struct subnet_key
{
    std::uint32_t interface = 0;
    prefix_key prefix;
    auto operator<=>(const subnet_key &) const = default;
};

struct port_encap_key
{
    std::uint32_t port = 0;
    std::uint32_t encap = 0;
    auto operator<=>(const port_encap_key &) const = default;
};

// ------------------------------------------------------------ tunnels, sessions, IPsec, PPPoE

struct tunnel_entry
{
    stored<qx_tunnel_cfg_t> cfg;
    std::uint16_t mtu = mtu_default;
};

struct session_key
{
    std::uint32_t tunnel = 0;
    std::uint32_t session = 0;
    auto operator<=>(const session_key &) const = default;
};

struct session_prefix_key
{
    session_key session;
    prefix_key prefix;
    auto operator<=>(const session_prefix_key &) const = default;
};

struct spd_entry
{
    std::uint32_t direction = 0; ///< 0 inbound, 1 outbound
    std::uint32_t id = 0;
};

struct policy_entry
{
    std::uint32_t spd = 0;
    stored<qx_ipsec_policy_t> policy;
    std::uint32_t first_sa = 0; ///< number of the first entry of its chain; 0: none
};

/// Security associations that were added together, as a bundle.
struct sa_entry
{
    std::uint32_t policy = 0;
    std::uint32_t next = 0; ///< number of the next entry of the policy's chain; 0 at the end
    std::uint32_t count = 0;
    std::array<stored<qx_ipsec_sa_t>, sa_bundle_limit> associations{};
};

struct pptp_key
{
    std::uint32_t id = 0;
    std::uint32_t direction = 0; ///< 0 ingress, 1 egress
    auto operator<=>(const pptp_key &) const = default;
};

struct pppoe_entry
{
    std::uint16_t port = 0;
    bool configured = false;
    stored<qx_pppoe_port_cfg_t> cfg;
};

// ----------------------------------------------------------------------------------- the device

/// One device. Its constructor allocates all of its memory and may throw std::bad_alloc.
struct device
{
    explicit device(unsigned number);

    unsigned number;
    std::uint32_t ticks = 0; ///< calls that named this device

    std::array<qos_port, port_count> ports;
    power_states power;

    bounded_table<std::uint16_t, flow_entry> flows;         ///< by slot
    bounded_table<std::uint16_t, std::uint16_t> flow_slots; ///< slot by flow id
    bounded_table<std::uint16_t, rule_entry> rules;         ///< by slot
    numbered_table<rtp_entry> rtps;
    numbered_table<translation_entry> translations;

    bool l3_running = true;
    bounded_table<prefix_key, route_entry> routes;
    bounded_table<nexthop_key, nexthop_entry> nexthops;
    numbered_table<nexthop_key> nexthop_indexes; ///< identity by index
    bounded_table<subnet_key, stored<qx_ip_address_t>> subnets;
    bounded_table<port_encap_key, std::uint32_t> port_mtus;

    numbered_table<tunnel_entry> tunnels;
    bounded_table<session_key, bool> sessions; ///< L2TP
    bounded_table<session_prefix_key, stored<qx_ip_address_t>> prefixes;

    bool ipsec_initialised = false;
    numbered_table<spd_entry> spds;
    numbered_table<policy_entry> policies;
    numbered_table<sa_entry> associations;

    bounded_table<pptp_key, stored<qx_pptp_sa_t>> pptp;
    bounded_table<std::uint16_t, pppoe_entry> pppoe; ///< by PPPoE port number
};

/// Bases of serial numbers: ids of different kinds or devices never coincide.
constexpr std::uint32_t rtp_base(unsigned device)
{
    return device << 16;
}
constexpr std::uint32_t spd_base(unsigned device)
{
    return 0x01000000U | device << 16;
}
constexpr std::uint32_t policy_base(unsigned device)
{
    return 0x02000000U | device << 16;
}
constexpr std::uint32_t sa_base(unsigned device)
{
    return 0x03000000U | device << 16;
}

/// The status of a delete that finds nothing: QX_DELETED if it was removed lately, else `unknown`.
template <class Table, class Key>
qx_status missing(const Table &table, const Key &key, qx_status unknown) noexcept
{
    return was_removed(table, key) ? QX_DELETED : unknown;
}

/// The device with a number below device_count. It is created on first use, which may throw
/// std::bad_alloc, and stays valid until reset_devices.
device &device_numbered(unsigned number);

/// Returns all devices to their initial state; references to them become invalid.
void reset_devices() noexcept;

} // namespace qxsim
