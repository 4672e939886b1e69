// The simulated devices: each is a struct of bounded tables, whose sizes are in capacities.h and
// numbers.h. The behaviours are in one file per area.
#pragma once

#include "address.h"
#include "capacities.h"
#include "flow_key.h"
#include "numbers.h"
#include "qx_sdk.h"
#include "qx_status.h"
#include "record.h"
#include "record_numbers.h"
#include "table.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace qxsim {

// ------------------------------------------------------------------------------- QoS and power

struct qos_port
{
    std::uint32_t mode = by_port; ///< a map_mode
    std::array<std::uint8_t, dscp_count>
        dscp{}; ///< priority by DSCP; initially its upper three bits
    std::array<std::uint8_t, dot1p_count> dot1p{}; ///< priority by 802.1p value; at first equal
    bool operator==(const qos_port &) const = default;
};

/// A port's initial maps.
qos_port initial_port();

/// Parts are in a power_state.
struct power_states
{
    std::uint32_t frequency = 1000; ///< MHz
    std::array<std::uint32_t, cpu_count> cpu{power_on, power_on};
    std::array<std::uint32_t, pcie_count> pcie{power_on, power_on};
    std::array<std::uint32_t, sata_count> sata{power_on, power_on};
    std::array<std::uint32_t, usb_count> usb{power_on, power_on};
    std::uint32_t network_engine_suspended = 0;
    std::array<std::uint8_t, packet_engine_count> packet_engine_suspended{};
    std::uint32_t suspends = 0; ///< how often the system was suspended
};

// -------------------------------------------------------------------- flows, rules, translations

/// Who added a flow to the table; only its owner may remove it.
enum class flow_owner : std::uint32_t { caller, rtp, translation };

/// A flow's key with its hash, by which flows are sorted.
struct hashed_flow_key
{
    std::uint32_t hash = 0;
    flow_key bytes{};
    bool operator==(const hashed_flow_key &) const = default;
    bool operator<(const hashed_flow_key &other) const
    {
        return hash != other.hash ? hash < other.hash : bytes < other.bytes;
    }
};

struct flow_entry
{
    stored<qx_flow_t> flow;
    std::uint32_t slot = 0;
    std::uint32_t added = 0; ///< device::ticks when it was added
    flow_owner owner = flow_owner::caller;
    std::uint32_t owner_id = 0; ///< id of the owning RTP or IP translation
};

using rule_key = stored<qx_rule_hash_key_t>; ///< canonical

/// What identifies an RTP translation: all fields of its settings.
struct rtp_key
{
    std::uint32_t sequence = 0;
    std::uint32_t timestamp = 0;
    std::uint32_t input = 0;
    std::uint32_t output = 0;
    using sorted_by_words = void;
    bool operator==(const rtp_key &) const = default;
};

struct rtp_entry
{
    stored<qx_rtp_cfg_t> cfg;
    hashed_flow_key flow;
    std::uint32_t added = 0; ///< device::ticks when it was added
};

using translation_key = stored<qx_ip_translate_cfg_t>; ///< canonical

struct translation_entry
{
    stored<qx_ip_translate_cfg_t> cfg;
    std::uint32_t flows = 0; ///< flows bound to it
};

// -------------------------------------------------------------------------------------- layer 3

/// Identity of a next hop; walks are in this order.
struct nexthop_key
{
    std::uint32_t type = nexthop_by_port; ///< a nexthop_type
    address_key address;
    std::uint32_t interface = 0;
    using sorted_by_words = void;
    bool operator==(const nexthop_key &) const = default;
};

struct nexthop_entry
{
    stored<qx_l3_nexthop_t> nexthop;
    std::uint32_t index = 0;
    std::uint32_t routes = 0;  ///< number of routes that use it
    std::uint32_t tunnels = 0; ///< number of tunnels that use it
    std::uint32_t added = 0;   ///< 1: by its own call; 0: it is removed with its last user
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
    using sorted_by_words = void;
    bool operator==(const subnet_key &) const = default;
};

struct port_encap_key
{
    std::uint32_t port = 0;
    std::uint32_t encap = encap_ethernet; ///< an encapsulation
    using sorted_by_words = void;
    bool operator==(const port_encap_key &) const = default;
};

// ------------------------------------------------------------ tunnels, sessions, IPsec, PPPoE

/// What identifies a tunnel: type, end points, direction and the ids of its kind.
struct tunnel_key
{
    std::uint32_t type = tunnel_l2tp;  ///< a tunnel_type
    std::uint32_t direction = inbound; ///< a direction_code
    address_key destination;
    address_key source;
    std::array<std::uint32_t, 8> ids{};
    using sorted_by_words = void;
    bool operator==(const tunnel_key &) const = default;
};

struct tunnel_entry
{
    stored<qx_tunnel_cfg_t> cfg;
    std::uint32_t mtu = mtu_default;
    std::uint32_t nexthops = 0; ///< number of next hops that lead through it
};

struct session_key
{
    std::uint32_t tunnel = 0;
    std::uint32_t session = 0;
    using sorted_by_words = void;
    bool operator==(const session_key &) const = default;
};

struct session_prefix_key
{
    session_key session;
    prefix_key prefix;
    using sorted_by_words = void;
    bool operator==(const session_prefix_key &) const = default;
};

/// What identifies a policy: its SPD's handle and its own id.
struct policy_key
{
    std::uint32_t spd = 0;
    std::uint32_t id = 0;
    using sorted_by_words = void;
    bool operator==(const policy_key &) const = default;
};

/// What identifies a security association.
struct association_key
{
    std::uint32_t spi = 0;
    std::uint32_t protocol = 0;
    std::uint32_t direction = 0; ///< as in the record
    std::array<std::uint32_t, 4> destination{};
    using sorted_by_words = void;
    bool operator==(const association_key &) const = default;
};

struct spd_entry
{
    std::uint32_t direction = inbound; ///< a direction_code
    std::uint32_t id = 0;
};

struct policy_entry
{
    std::uint32_t spd = 0;
    stored<qx_ipsec_policy_t> policy;
    std::uint32_t first_sa = 0; ///< number of the first entry of its chain; 0: none
    std::uint32_t tunnels = 0;  ///< how often tunnels name it
};

/// Security associations that were added together, as a bundle.
struct sa_entry
{
    std::uint32_t policy = 0;
    std::uint32_t previous = 0; ///< number of the entry before in the policy's chain; 0: the first
    std::uint32_t next = 0;     ///< number of the next one; 0 at the end
    std::uint32_t nexthops = 0; ///< number of next hops that lead into it
    std::uint32_t count = 0;
    std::array<stored<qx_ipsec_sa_t>, sa_bundle_limit> associations{};
};

struct pptp_key
{
    std::uint32_t id = 0;
    std::uint32_t direction = inbound; ///< a direction_code
    using sorted_by_words = void;
    bool operator==(const pptp_key &) const = default;
};

struct pptp_entry
{
    stored<qx_pptp_sa_t> session;
    std::uint32_t tunnels = 0; ///< number of GRE tunnels over it
};

struct pppoe_entry
{
    std::uint32_t port = 0;
    std::uint32_t configured = 0; ///< 1 once the encapsulation is set
    stored<qx_pppoe_port_cfg_t> cfg;
};

// ----------------------------------------------------------------------------------- the device

/// One device. Its constructor allocates all of its memory and may throw std::bad_alloc.
struct device
{
    explicit device(unsigned number);

    unsigned number;
    std::uint32_t ticks = 0; ///< calls that named this device

    std::vector<qos_port> ports;
    power_states power;

    bounded_table<hashed_flow_key, flow_entry> flows;
    bounded_table<std::uint16_t, hashed_flow_key> flow_ids;     ///< key by flow id
    bounded_table<std::uint16_t, hashed_flow_key> flow_slots;   ///< key by slot
    bounded_table<std::uint16_t, stored<qx_rule_hash_t>> rules; ///< by slot
    bounded_table<rule_key, std::uint16_t> rule_slots;          ///< slot by key
    numbered_table<rtp_entry> rtps;
    bounded_table<rtp_key, std::uint32_t> rtp_ids;
    numbered_table<translation_entry> translations;
    bounded_table<translation_key, std::uint32_t> translation_ids;

    std::uint32_t l3_running = 1;
    bounded_table<prefix_key, route_entry> routes;
    bounded_table<nexthop_key, nexthop_entry> nexthops;
    numbered_table<nexthop_key> nexthop_indexes; ///< identity by index
    bounded_table<subnet_key, stored<qx_ip_address_t>> subnets;
    bounded_table<port_encap_key, std::uint32_t> port_mtus;

    numbered_table<tunnel_entry> tunnels;
    bounded_table<tunnel_key, std::uint32_t> tunnel_ids;
    bounded_table<session_key, std::uint32_t> sessions; ///< L2TP; the entries mean nothing
    bounded_table<session_prefix_key, stored<qx_ip_address_t>> prefixes;

    std::uint32_t ipsec_initialised = 0;
    numbered_table<spd_entry> spds;
    numbered_table<policy_entry> policies;
    bounded_table<policy_key, std::uint32_t> policy_handles;
    numbered_table<sa_entry> associations;
    bounded_table<association_key, std::uint32_t> association_handles;

    bounded_table<pptp_key, pptp_entry> pptp;
    bounded_table<std::uint16_t, pppoe_entry> pppoe; ///< by PPPoE port number

    /// Calls `each` with a device's parts that a saved device consists of, in a fixed order.
    template <class Device, class Each> static void each_part(Device &one, Each each)
    {
        each(one.ticks), each(one.ports), each(one.power);
        each(one.flows), each(one.flow_ids), each(one.flow_slots);
        each(one.rules), each(one.rule_slots), each(one.rtps), each(one.rtp_ids);
        each(one.translations), each(one.translation_ids);
        each(one.l3_running), each(one.routes), each(one.nexthops), each(one.nexthop_indexes);
        each(one.subnets), each(one.port_mtus);
        each(one.tunnels), each(one.tunnel_ids), each(one.sessions), each(one.prefixes);
        each(one.ipsec_initialised), each(one.spds), each(one.policies), each(one.policy_handles);
        each(one.associations), each(one.association_handles);
        each(one.pptp), each(one.pppoe);
    }
};

/// The kinds of ids that devices assign.
enum class id_kind : std::uint32_t { rtp, spd, policy, association, translation, nexthop, tunnel };

static_assert(static_cast<int>(id_kind::tunnel) + 1 == qxsh::id_tunnel &&
              qxsh::id_tunnel + 1 == qxsh::id_count);

/// The base of a device's ids of a kind: ids of different kinds or devices never coincide.
constexpr std::uint32_t id_base(id_kind kind, unsigned device)
{
    return static_cast<std::uint32_t>(kind) << 24 | device << 16;
}

/// The status of a delete that finds nothing: QX_DELETED if it was removed lately, else `unknown`.
template <class Table, class Key>
qx_status missing(const Table &table, const Key &key, qx_status unknown)
{
    return table.removed(key) != nullptr ? QX_DELETED : unknown;
}

/// The device with a number below size_of(sized::devices). It is created on first use, which may
/// throw std::bad_alloc, and stays valid until reset_devices.
device &device_numbered(unsigned number);

/// Puts a device in the place of the one with its number, to which references become invalid.
void replace_device(std::unique_ptr<device> made);

/// Returns all devices to their initial state; references to them become invalid.
void reset_devices();

} // namespace qxsim
