// The numbers that a profile sets: of codes, address families, sizes and statuses. The default
// profile's are compiled in. Behaviours decide by meanings, which are the same under any profile;
// the numbers in records and arguments stay as the caller gave them.
#pragma once

#include "default_profile.h"
#include "qx_status.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qxsh {
struct profile;
}

namespace qxsim {

// --------------------------------------------------------------------------------------- meanings

/// The meaning of a number that has none at its place.
constexpr std::uint32_t unknown = UINT32_MAX;

// The meanings at a place are numbered as its words in `place_rows` are.
enum address_family : std::uint32_t { ipv4, ipv6 };
enum map_mode : std::uint32_t { by_port, by_dscp, by_dot1p };
enum power_state : std::uint32_t { power_off, power_on, power_asleep };
enum encapsulation : std::uint32_t { encap_ethernet, encap_pppoe };
enum nexthop_type : std::uint32_t { nexthop_by_port, nexthop_by_tunnel, nexthop_by_sa };
enum walk_step : std::uint32_t { walk_start, walk_continue };
enum tunnel_type : std::uint32_t { tunnel_l2tp, tunnel_gre, tunnel_ipsec, tunnel_etherip };
enum direction_code : std::uint32_t { inbound, outbound, both_directions };
enum policy_action : std::uint32_t { action_bypass, action_discard, action_protect };
enum crypto_type : std::uint32_t { crypto_none };

/// A place with codes: a field of a record or an argument of a function.
enum class place : unsigned {
    family,
    map_mode_get,
    map_mode_set,
    cpu_run,
    cpu_state,
    pcie_get,
    pcie_set,
    sata_get,
    sata_set,
    usb_get,
    usb_set,
    port_encap,
    mtu_add_encap,
    mtu_delete_encap,
    mtu_get_encap,
    nexthop_type,
    route_next,
    nexthop_next,
    tunnel_type,
    tunnel_mtu_type,
    tunnel_direction,
    spd_direction,
    sa_direction,
    pptp_direction,
    pptp_delete_direction,
    policy_action,
    crypto_type,
    count
};

constexpr std::size_t most_words = 4;
struct place_row
{
    std::string_view owner; ///< as a profile names it; empty for address families
    std::array<std::string_view, most_words> words;
    constexpr std::size_t size() const
    {
        std::size_t size = 0;
        while (size < most_words && !words[size].empty())
            ++size;
        return size;
    }
};

/// By place: what it is and its words, in the order of their meanings.
inline constexpr std::array<place_row, static_cast<std::size_t>(place::count)> place_rows{{
    {"", {"ipv4", "ipv6"}},
    {"qx_qos_map_mode_get.mode", {"port", "dscp", "dot1p"}},
    {"qx_qos_map_mode_set.mode", {"port", "dscp", "dot1p"}},
    {"qx_pm_cpu_info_t.cpu_run", {"off", "on", "sleep"}},
    {"qx_pm_cpu_power_state_set.cpu_state", {"off", "on", "sleep"}},
    {"qx_pm_pcie_state_get.state", {"off", "on", "sleep"}},
    {"qx_pm_pcie_state_set.state", {"off", "on", "sleep"}},
    {"qx_pm_sata_state_get.state", {"off", "on", "sleep"}},
    {"qx_pm_sata_state_set.state", {"off", "on", "sleep"}},
    {"qx_pm_usb_state_get.state", {"off", "on", "sleep"}},
    {"qx_pm_usb_state_set.state", {"off", "on", "sleep"}},
    {"qx_port_encap_t.type", {"ethernet", "pppoe"}},
    {"qx_port_encap_ip_mtu_add.encap", {"ethernet", "pppoe"}},
    {"qx_port_encap_ip_mtu_delete.encap", {"ethernet", "pppoe"}},
    {"qx_port_encap_ip_mtu_get.encap", {"ethernet", "pppoe"}},
    {"qx_l3_nexthop_id_t.nhop_type", {"port", "tunnel", "sa"}},
    {"qx_l3_route_show.next", {"start", "continue"}},
    {"qx_l3_nexthop_show.next", {"start", "continue"}},
    {"qx_tunnel_cfg_t.type", {"l2tp", "gre", "ipsec", "etherip"}},
    {"qx_tunnel_mtu_t.tunnel_type", {"l2tp", "gre", "ipsec", "etherip"}},
    {"qx_tunnel_cfg_t.dir", {"in", "out", "both"}},
    {"qx_ipsec_spd_add.direction", {"in", "out"}},
    {"qx_ipsec_sa_t.sa_dir", {"in", "out"}},
    {"qx_pptp_sa_t.dir", {"in", "out"}},
    {"qx_pptp_session_delete.direction", {"in", "out"}},
    {"qx_ipsec_policy_t.policy_action", {"bypass", "discard", "protect"}},
    {"qx_pptp_sa_t.crypto_type", {"none"}},
}};

// ------------------------------------------------------------------------------------------ sizes

/// What a profile can size.
enum class sized : unsigned {
    devices,
    ports,
    flows,
    flow_slots,
    rules,
    rule_slots,
    rtp_translations,
    ip_translations,
    routes,
    nexthops,
    nat_subnets,
    port_mtus,
    tunnels,
    l2tp_sessions,
    l2tp_prefixes,
    spds,
    policies,
    associations,
    pptp_sessions,
    pppoe_ports,
    count
};

struct size_row
{
    std::string_view name;
    std::uint32_t limit; ///< the most that the simulator has
};

/// The most rows of a table: bounded_table numbers present and removed ones in 16 bits.
constexpr std::uint32_t most_rows = 32767;
constexpr std::uint32_t most_devices = 16;

inline constexpr std::array<size_row, static_cast<std::size_t>(sized::count)> size_rows{{
    {"devices", most_devices},
    {"ports", 256},
    {"flows", most_rows},
    {"flow_slots", 65536},
    {"rules", most_rows},
    {"rule_slots", 65536},
    {"rtp_translations", most_rows},
    {"ip_translations", most_rows},
    {"routes", most_rows},
    {"nexthops", most_rows},
    {"nat_subnets", most_rows},
    {"port_mtus", most_rows},
    {"tunnels", most_rows},
    {"l2tp_sessions", most_rows},
    {"l2tp_prefixes", most_rows},
    {"spds", most_rows},
    {"policies", most_rows},
    {"associations", most_rows / 4}, // an index has each association of a bundle
    {"pptp_sessions", most_rows},
    {"pppoe_ports", most_rows},
}};

// ---------------------------------------------------------------------------------- the numbers

constexpr std::size_t known_statuses = 256; ///< the numbers in qx_status.h are below it

/// All numbers that a profile sets.
struct profile_numbers
{
    std::array<std::array<std::uint32_t, most_words>, place_rows.size()> codes{};
    std::array<std::uint32_t, size_rows.size()> sizes{};
    std::array<std::uint16_t, known_statuses> statuses{}; ///< by the number in qx_status.h
    bool operator==(const profile_numbers &) const = default;
};

/// A number of the default profile. There is none if it is not defined, which ends compilation.
template <class Rows>
constexpr std::uint32_t default_number(const Rows &rows, std::string_view owner,
                                       std::string_view name)
{
    for (const qxsh::default_number &row : rows)
        if (row.owner == owner && row.name == name)
            return row.number;
    throw "the default profile has no such line";
}

constexpr std::uint32_t default_size(sized what)
{
    return default_number(qxsh::default_sizes, {}, size_rows[static_cast<std::size_t>(what)].name);
}

constexpr profile_numbers numbers_by_default()
{
    profile_numbers made;
    for (std::size_t at = 0; at < place_rows.size(); ++at)
        for (std::size_t word = 0; word < place_rows[at].size(); ++word) {
            const auto &[owner, words] = place_rows[at];
            made.codes[at][word] = owner.empty()
                                       ? default_number(qxsh::default_families, owner, words[word])
                                       : default_number(qxsh::default_codes, owner, words[word]);
        }
    for (std::size_t at = 0; at < size_rows.size(); ++at)
        made.sizes[at] = default_size(static_cast<sized>(at));
    for (std::size_t number = 0; number < known_statuses; ++number)
        made.statuses[number] = static_cast<std::uint16_t>(number);
    return made;
}

inline constexpr profile_numbers default_numbers = numbers_by_default();

/// The numbers in use: those of the default profile, or of the one that use_profile was given.
extern profile_numbers numbers;

/// What a number means at a place; `unknown` if nothing.
template <place At> std::uint32_t meaning(std::uint32_t number)
{
    constexpr auto at = static_cast<std::size_t>(At);
    for (std::uint32_t word = 0; word < place_rows[at].size(); ++word)
        if (numbers.codes[at][word] == number)
            return word;
    return unknown;
}

/// The number of a meaning, which must be one at this place.
template <place At> std::uint32_t number_of(std::uint32_t meaning)
{
    return numbers.codes[static_cast<std::size_t>(At)][meaning];
}

inline std::uint32_t size_of(sized what)
{
    return numbers.sizes[static_cast<std::size_t>(what)];
}

/// The number that callers get for a status.
inline std::uint32_t number_of(qx_status status)
{
    return numbers.statuses[status];
}

/// Puts a profile's numbers in the place of the default ones, before there are devices. Returns
/// what the simulator cannot do, "LINE: what", and then changes nothing; an empty text otherwise.
std::string use_profile(qxsh::profile profile);

/// The name of a status by the number that callers get, such as "QX_OK", or "unknown"; never null,
/// valid until use_profile.
const char *status_name(std::uint32_t number);

/// Stores the number of the status with this name; false if there is none.
bool status_number(std::string_view name, std::uint32_t &number);

} // namespace qxsim
