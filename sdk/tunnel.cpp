// Tunnels: their kinds, identity, references and MTU.
#include "device.h"
#include "l3.h"
#include "numbers.h"
#include "sdk_calls.h"

#include <array>

namespace qxsim {

// ------------------------------------------------------------------------------------- identity

// A tunnel_type, or `unknown`.
static std::uint32_t type_of(const qx_tunnel_cfg_t &cfg)
{
    return meaning<place::tunnel_type>(cfg.type);
}

// A direction_code, or `unknown`.
static std::uint32_t way_of(const qx_tunnel_cfg_t &cfg)
{
    return meaning<place::tunnel_direction>(cfg.dir);
}

static tunnel_key key_of(const qx_tunnel_cfg_t &cfg)
{
    tunnel_key key{
        type_of(cfg), way_of(cfg), address_of(cfg.dest_addr), address_of(cfg.src_addr), {}};
    const qx_tunnel_cfg_union_t &tunnel = cfg.tunnel;
    switch (type_of(cfg)) {
    case tunnel_l2tp:
        key.ids[0] = tunnel.l2tp.tid;
        break;
    case tunnel_gre:
        key.ids = {tunnel.gre.tunnel_id, tunnel.gre.up_call_id, tunnel.gre.down_call_id};
        break;
    case tunnel_ipsec:
        key.ids[0] = tunnel.ipsec.ipsec_policy;
        break;
    default:
        for (unsigned index = 0; index < 4; ++index) {
            key.ids[index] = tunnel.etherip.tun_saddr.addr[index];
            key.ids[4 + index] = tunnel.etherip.tun_daddr.addr[index];
        }
    }
    return key;
}

// --------------------------------------------------------------------------------------- checks

static bool is_zero(const qx_ip_address_t &address)
{
    return address_of(address).words == std::array<std::uint32_t, 4>{};
}

static qx_status check_ranges(const qx_tunnel_cfg_t &cfg)
{
    if (type_of(cfg) == unknown)
        return QX_BAD_TYPE;
    if (!valid_address(cfg.dest_addr) || !valid_address(cfg.src_addr))
        return QX_BAD_ADDRESS;
    if (cfg.tx_port >= size_of(sized::ports))
        return QX_BAD_PORT;
    if (way_of(cfg) == unknown)
        return QX_BAD_DIRECTION;
    if (is_zero(cfg.dest_addr) || is_zero(cfg.src_addr))
        return QX_NO_ADDRESS;
    return cfg.dest_addr.afi != cfg.src_addr.afi ? QX_BAD_FAMILY : QX_OK;
}

// -------------------------------------------------------------------------------- what it refers
// to

/// A policy that a tunnel names, and the direction that the policy must have.
struct named_policy
{
    std::uint32_t handle; ///< 0: none
    std::uint32_t way;    ///< a direction_code
};

// An overlay word is a policy's handle if its upper half is not zero, otherwise a PPTP identifier.
static std::uint32_t policy_in(const qx_tunnel_union_overlay_t &overlay)
{
    return overlay.enc_policy > UINT16_MAX ? overlay.enc_policy : 0;
}

static std::array<named_policy, 2> policies_of(const qx_tunnel_cfg_t &cfg)
{
    const qx_tunnel_cfg_union_t &tunnel = cfg.tunnel;
    switch (type_of(cfg)) {
    case tunnel_l2tp:
        return {{{tunnel.l2tp.ipsec_policy, way_of(cfg)}}};
    case tunnel_gre:
        return {{{policy_in(tunnel.gre.overlay_tunnel_ingress), inbound},
                 {policy_in(tunnel.gre.overlay_tunnel_egress), outbound}}};
    case tunnel_ipsec:
        return {{{tunnel.ipsec.ipsec_policy, way_of(cfg)}}};
    default:
        return {{{tunnel.etherip.ipsec_policy, way_of(cfg)}}};
    }
}

// The PPTP sessions that a tunnel's overlays name; identifier 0 is none.
static std::array<pptp_key, 2> sessions_of(const qx_tunnel_cfg_t &cfg)
{
    std::array<pptp_key, 2> sessions{{{0, inbound}, {0, outbound}}};
    if (type_of(cfg) != tunnel_gre)
        return sessions;
    const qx_gre_tunnel_cfg_t &gre = cfg.tunnel.gre;
    if (policy_in(gre.overlay_tunnel_ingress) == 0)
        sessions[0].id = gre.overlay_tunnel_ingress.enc_policy;
    if (policy_in(gre.overlay_tunnel_egress) == 0)
        sessions[1].id = gre.overlay_tunnel_egress.enc_policy;
    return sessions;
}

static qx_status check_policy(const device &here, const named_policy &named)
{
    if (named.handle == 0)
        return QX_OK;
    const policy_entry *const entry = here.policies.find(named.handle);
    if (entry == nullptr)
        return QX_NO_POLICY;
    if (meaning<place::policy_action>(entry->policy->policy_action) != action_protect)
        return QX_BAD_ACTION;
    const std::uint32_t way = here.spds.find(entry->spd)->direction;
    return named.way == both_directions || named.way == way ? QX_OK : QX_BAD_DIRECTION;
}

static qx_status check_references(const device &here, const qx_tunnel_cfg_t &cfg)
{
    if (cfg.nexthop_id != 0 && here.nexthop_indexes.find(cfg.nexthop_id) == nullptr)
        return QX_NO_NEXTHOP;
    if (type_of(cfg) == tunnel_ipsec && cfg.tunnel.ipsec.ipsec_policy == 0)
        return QX_NO_POLICY;
    for (const named_policy &named : policies_of(cfg)) {
        const qx_status status = check_policy(here, named);
        if (status != QX_OK)
            return status;
    }
    for (const pptp_key &session : sessions_of(cfg))
        if (session.id != 0 && here.pptp.find(session) == nullptr)
            return QX_NO_SESSION;
    return QX_OK;
}

// Counts a tunnel at all that it refers to: 1 when it comes, -1 when it goes.
static void count_references(device &here, const qx_tunnel_cfg_t &cfg, int step)
{
    for (const named_policy &named : policies_of(cfg))
        if (named.handle != 0)
            here.policies.find(named.handle)->tunnels += static_cast<std::uint32_t>(step);
    for (const pptp_key &session : sessions_of(cfg))
        if (session.id != 0)
            here.pptp.find(session)->tunnels += static_cast<std::uint32_t>(step);
    count_tunnel(here, cfg.nexthop_id, step);
}

static bool has_sessions(const device &here, std::uint32_t tunnel)
{
    const auto *const row = here.sessions.next({tunnel, 0});
    return row != nullptr && row->key.tunnel == tunnel;
}

// ---------------------------------------------------------------------------------------- calls

qx_status tunnel_add(device &here, const qx_tunnel_cfg_t &p_tunnel_cfg, unsigned int &p_tunnel_id)
{
    const qx_status status = check_ranges(p_tunnel_cfg);
    if (status != QX_OK)
        return status;
    const tunnel_key key = key_of(p_tunnel_cfg);
    if (here.tunnel_ids.find(key) != nullptr)
        return QX_EXISTS;
    const qx_status reference = check_references(here, p_tunnel_cfg);
    if (reference != QX_OK)
        return reference;
    if (here.tunnels.full())
        return QX_TABLE_FULL;
    p_tunnel_id = here.tunnels.add({stored{p_tunnel_cfg}, mtu_default, 0});
    here.tunnel_ids.add(key, p_tunnel_id);
    count_references(here, p_tunnel_cfg, 1);
    return QX_OK;
}

qx_status tunnel_delete_by_idx(device &here, unsigned int tunnel_id)
{
    const tunnel_entry *const entry = here.tunnels.find(tunnel_id);
    if (entry == nullptr)
        return missing(here.tunnels, tunnel_id, QX_NO_TUNNEL);
    if (entry->nexthops != 0 || has_sessions(here, tunnel_id))
        return QX_IN_USE;
    const stored<qx_tunnel_cfg_t> cfg = entry->cfg;
    here.tunnel_ids.remove(key_of(*cfg));
    here.tunnels.remove(tunnel_id);
    count_references(here, *cfg, -1);
    return QX_OK;
}

qx_status tunnel_delete(device &here, const qx_tunnel_cfg_t &p_tunnel_cfg)
{
    const qx_status status = check_ranges(p_tunnel_cfg);
    if (status != QX_OK)
        return status;
    const tunnel_key key = key_of(p_tunnel_cfg);
    const std::uint32_t *const id = here.tunnel_ids.find(key);
    return id == nullptr ? missing(here.tunnel_ids, key, QX_NO_TUNNEL)
                         : tunnel_delete_by_idx(here, *id);
}

qx_status tunnel_get(device &here, unsigned int tunnel_id, qx_tunnel_cfg_t &p_tunnel_cfg)
{
    const tunnel_entry *const entry = here.tunnels.find(tunnel_id);
    if (entry == nullptr)
        return QX_NO_TUNNEL;
    entry->cfg.copy_to(p_tunnel_cfg);
    return QX_OK;
}

qx_status tunnel_mtu_get(device &here, qx_tunnel_mtu_t &p_mtu)
{
    const tunnel_entry *const entry = here.tunnels.find(p_mtu.tunnel_id);
    if (entry == nullptr)
        return QX_NO_TUNNEL;
    if (type_of(*entry->cfg) != meaning<place::tunnel_mtu_type>(p_mtu.tunnel_type))
        return QX_BAD_TYPE;
    p_mtu.mtu = static_cast<std::uint16_t>(entry->mtu);
    return QX_OK;
}

qx_status tunnel_mtu_set(device &here, const qx_tunnel_mtu_t &p_mtu)
{
    if (p_mtu.mtu < mtu_least || p_mtu.mtu > mtu_limit)
        return QX_BAD_MTU;
    tunnel_entry *const entry = here.tunnels.find(p_mtu.tunnel_id);
    if (entry == nullptr)
        return QX_NO_TUNNEL;
    if (type_of(*entry->cfg) != meaning<place::tunnel_mtu_type>(p_mtu.tunnel_type))
        return QX_BAD_TYPE;
    entry->mtu = p_mtu.mtu;
    return QX_OK;
}

} // namespace qxsim
