// The order and the numbers of listings.
#include "numbering.h"

#include "numbers.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace qxsim {

// The entries of an index of ids, in the order of its keys.
template <class Index> static std::vector<std::uint32_t> in_order(const Index &index)
{
    std::vector<std::uint32_t> ids;
    for (const auto &row : index)
        ids.push_back(row.entry);
    return ids;
}

// The same, in the order of what `sort_key` makes of a key.
template <class Index, class SortKey>
static std::vector<std::uint32_t> in_order(const Index &index, SortKey sort_key)
{
    std::vector<std::pair<decltype(sort_key(index.first()->key)), std::uint32_t>> rows;
    for (const auto &row : index)
        rows.emplace_back(sort_key(row.key), row.entry);
    std::sort(rows.begin(), rows.end());
    std::vector<std::uint32_t> ids;
    ids.reserve(rows.size());
    for (const auto &row : rows)
        ids.push_back(row.second);
    return ids;
}

numbering::numbering(const device &here, bool renumber) : renumber_(renumber)
{
    number(rtps = in_order(here.rtp_ids));
    number(translations = in_order(here.translation_ids));
    for (const auto &row : here.nexthops)
        nexthops.push_back(row.entry.index);
    number(nexthops);
    for (const auto &row : here.spds)
        spds.push_back(row.key);
    std::sort(spds.begin(), spds.end(), [&](std::uint32_t left, std::uint32_t right) {
        const spd_entry &one = *here.spds.find(left);
        const spd_entry &two = *here.spds.find(right);
        return std::tie(one.direction, one.id) < std::tie(two.direction, two.id);
    });
    number(spds);
    // Ids in keys are ordered by the places of what they name.
    const auto place = [&](std::uint32_t id) {
        const auto found = numbers_.find(id);
        return found == numbers_.end() ? id : found->second;
    };
    number(policies = in_order(here.policy_handles, [&](policy_key key) {
               key.spd = place(key.spd);
               return key;
           }));
    for (const std::uint32_t policy : policies)
        for (std::uint32_t id = here.policies.find(policy)->first_sa; id != 0;
             id = here.associations.find(id)->next)
            associations.push_back(id);
    number(associations);
    number(tunnels = in_order(here.tunnel_ids, [&](tunnel_key key) {
               if (key.type == tunnel_ipsec)
                   key.ids[0] = place(key.ids[0]);
               return key;
           }));
}

void numbering::number(const std::vector<std::uint32_t> &ids)
{
    std::uint32_t last = 0;
    for (const std::uint32_t id : ids)
        numbers_.emplace(id, ++last);
}

std::uint32_t numbering::shown(std::uint32_t id) const
{
    const auto found = numbers_.find(id);
    return renumber_ && found != numbers_.end() ? found->second : id;
}

// An overlay word up to 65535 is a PPTP session, which has no assigned id.
static void replace_policy(const numbering &numbers, qx_tunnel_union_overlay_t &overlay)
{
    if (overlay.enc_policy > UINT16_MAX)
        overlay.enc_policy = numbers.shown(overlay.enc_policy);
}

void numbering::replace_ids(qx_tunnel_cfg_t &cfg) const
{
    cfg.nexthop_id = shown(cfg.nexthop_id);
    switch (meaning<place::tunnel_type>(cfg.type)) {
    case tunnel_l2tp:
        cfg.tunnel.l2tp.ipsec_policy = shown(cfg.tunnel.l2tp.ipsec_policy);
        break;
    case tunnel_gre:
        replace_policy(*this, cfg.tunnel.gre.overlay_tunnel_ingress);
        replace_policy(*this, cfg.tunnel.gre.overlay_tunnel_egress);
        break;
    case tunnel_ipsec:
        cfg.tunnel.ipsec.ipsec_policy = shown(cfg.tunnel.ipsec.ipsec_policy);
        break;
    case tunnel_etherip:
        cfg.tunnel.etherip.ipsec_policy = shown(cfg.tunnel.etherip.ipsec_policy);
        break;
    default:
        break;
    }
}

void numbering::replace_ids(qx_l3_nexthop_t &nexthop) const
{
    const std::uint32_t type = meaning<place::nexthop_type>(nexthop.nhid.nhop_type);
    if (type == nexthop_by_port)
        return;
    nexthop.id.tunnel_id = shown(nexthop.id.tunnel_id); // or the association: it is the same word
    if (type == nexthop_by_tunnel)
        replace_ids(nexthop.encap.tunnel_cfg);
}

} // namespace qxsim
