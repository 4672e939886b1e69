// Tunnels: their kinds, identity, references and MTU.
#include "codes.h"
#include "device.h"
#include "l3.h"
#include "sdk_calls.h"

#include <algorithm>

namespace qxsim {

// ------------------------------------------------------------------------------------- identity

static bool same_words(const qx_l3_ip_addr &left, const qx_l3_ip_addr &right) noexcept
{
    for (unsigned index = 0; index < 4; ++index)
        if (left.addr[index] != right.addr[index])
            return false;
    return true;
}

static bool same_kind_settings(const qx_tunnel_cfg_t &left, const qx_tunnel_cfg_t &right) noexcept
{
    switch (left.type) {
    case tunnel_l2tp:
        return left.tunnel.l2tp.tid == right.tunnel.l2tp.tid;
    case tunnel_gre:
        return left.tunnel.gre.tunnel_id == right.tunnel.gre.tunnel_id &&
               left.tunnel.gre.up_call_id == right.tunnel.gre.up_call_id &&
               left.tunnel.gre.down_call_id == right.tunnel.gre.down_call_id;
    case tunnel_ipsec:
        return left.tunnel.ipsec.ipsec_policy == right.tunnel.ipsec.ipsec_policy;
    default:
        return same_words(left.tunnel.etherip.tun_saddr, right.tunnel.etherip.tun_saddr) &&
               same_words(left.tunnel.etherip.tun_daddr, right.tunnel.etherip.tun_daddr);
    }
}

// Finds a tunnel, existing or removed, of the same identity: kind, end points, direction, and the
// kind's identifiers.
template <class Rows> static auto find_tunnel(Rows &rows, const qx_tunnel_cfg_t &cfg) noexcept
{
    const address_key dest = address_of(cfg.dest_addr);
    const address_key src = address_of(cfg.src_addr);
    return find_row(rows, [&](const tunnel_entry &entry) {
        const qx_tunnel_cfg_t &other = *entry.cfg;
        return other.type == cfg.type && other.dir == cfg.dir &&
               address_of(other.dest_addr) == dest && address_of(other.src_addr) == src &&
               same_kind_settings(other, cfg);
    });
}

// --------------------------------------------------------------------------------------- checks

static qx_status check_ranges(const qx_tunnel_cfg_t &cfg) noexcept
{
    if (cfg.type > tunnel_etherip)
        return QX_BAD_TYPE;
    if (!valid_address(cfg.dest_addr) || !valid_address(cfg.src_addr))
        return QX_BAD_ADDRESS;
    if (cfg.tx_port >= port_count)
        return QX_BAD_PORT;
    return cfg.dir > both_directions ? QX_BAD_DIRECTION : QX_OK;
}

static qx_status check_policy(const device &here, std::uint32_t policy) noexcept
{
    return policy == 0 || here.policies.find(policy) != nullptr ? QX_OK : QX_NO_POLICY;
}

// The word is a policy handle if its upper half is not zero, otherwise a PPTP identifier.
static qx_status check_overlay(const device &here, const qx_tunnel_union_overlay_t &overlay,
                               std::uint32_t way) noexcept
{
    if (overlay.enc_policy == 0)
        return QX_OK;
    if (overlay.enc_policy > 0xffff)
        return check_policy(here, overlay.enc_policy);
    return here.pptp.find({overlay.pptp_sa_id, way}) != nullptr ? QX_OK : QX_NO_SESSION;
}

// Checks that what a tunnel refers to exists.
static qx_status check_references(const device &here, const qx_tunnel_cfg_t &cfg) noexcept
{
    if (cfg.nexthop_id != 0 && here.nexthop_indexes.find(cfg.nexthop_id) == nullptr)
        return QX_NO_NEXTHOP;
    switch (cfg.type) {
    case tunnel_l2tp:
        return check_policy(here, cfg.tunnel.l2tp.ipsec_policy);
    case tunnel_gre: {
        const qx_status status =
            check_overlay(here, cfg.tunnel.gre.overlay_tunnel_ingress, inbound);
        if (status != QX_OK)
            return status;
        return check_overlay(here, cfg.tunnel.gre.overlay_tunnel_egress, outbound);
    }
    case tunnel_ipsec:
        return cfg.tunnel.ipsec.ipsec_policy == 0
                   ? QX_NO_POLICY
                   : check_policy(here, cfg.tunnel.ipsec.ipsec_policy);
    default:
        return check_policy(here, cfg.tunnel.etherip.ipsec_policy);
    }
}

static bool used_by_nexthop(const device &here, std::uint32_t tunnel) noexcept
{
    return find_row(here.nexthops, [&](const nexthop_entry &entry) {
               return entry.nexthop->nhid.nhop_type == nexthop_by_tunnel &&
                      entry.nexthop->id.tunnel_id == tunnel;
           }) != nullptr;
}

static bool has_sessions(const device &here, std::uint32_t tunnel) noexcept
{
    return std::any_of(here.sessions.begin(), here.sessions.end(),
                       [&](const auto &row) { return row.key.tunnel == tunnel; });
}

// ---------------------------------------------------------------------------------------- calls

qx_status tunnel_add(device &here, const qx_tunnel_cfg_t &p_tunnel_cfg, unsigned int &p_tunnel_id)
{
    const qx_status status = check_ranges(p_tunnel_cfg);
    if (status != QX_OK)
        return status;
    if (find_tunnel(here.tunnels, p_tunnel_cfg) != nullptr)
        return QX_EXISTS;
    const qx_status reference = check_references(here, p_tunnel_cfg);
    if (reference != QX_OK)
        return reference;
    if (here.tunnels.full())
        return QX_TABLE_FULL;
    p_tunnel_id = here.tunnels.add({stored{p_tunnel_cfg}, mtu_default});
    return QX_OK;
}

qx_status tunnel_delete_by_idx(device &here, unsigned int tunnel_id)
{
    const tunnel_entry *const entry = here.tunnels.find(tunnel_id);
    if (entry == nullptr)
        return missing(here.tunnels, tunnel_id, QX_NO_TUNNEL);
    if (used_by_nexthop(here, tunnel_id) || has_sessions(here, tunnel_id))
        return QX_IN_USE;
    const std::uint32_t nexthop = entry->cfg->nexthop_id;
    here.tunnels.remove(tunnel_id);
    release_nexthop(here, nexthop);
    return QX_OK;
}

qx_status tunnel_delete(device &here, const qx_tunnel_cfg_t &p_tunnel_cfg)
{
    const qx_status status = check_ranges(p_tunnel_cfg);
    if (status != QX_OK)
        return status;
    const auto *const row = find_tunnel(here.tunnels, p_tunnel_cfg);
    if (row == nullptr)
        return find_tunnel(here.tunnels.removed(), p_tunnel_cfg) != nullptr ? QX_DELETED
                                                                            : QX_NO_TUNNEL;
    return tunnel_delete_by_idx(here, row->key);
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
    if (entry->cfg->type != p_mtu.tunnel_type)
        return QX_BAD_TYPE;
    p_mtu.mtu = entry->mtu;
    return QX_OK;
}

qx_status tunnel_mtu_set(device &here, const qx_tunnel_mtu_t &p_mtu)
{
    if (p_mtu.mtu < mtu_least || p_mtu.mtu > mtu_limit)
        return QX_BAD_MTU;
    tunnel_entry *const entry = here.tunnels.find(p_mtu.tunnel_id);
    if (entry == nullptr)
        return QX_NO_TUNNEL;
    if (entry->cfg->type != p_mtu.tunnel_type)
        return QX_BAD_TYPE;
    entry->mtu = p_mtu.mtu;
    return QX_OK;
}

} // namespace qxsim
