// Records as their meaning.
#include "canonical.h"

#include "address.h"
#include "capacities.h"
#include "numbers.h"
#include "record_numbers.h"
#include "records/values.h"

#include <algorithm>
#include <cstring>

namespace qxsim {

namespace {

template <class Record> stored<Record> without_padding(const Record &record, int number)
{
    stored<Record> copy{record};
    qxsh::clear_padding(&*copy, qxsh::record_rows[number]);
    return copy;
}

// Keeps one reading of a union, which is member `reading` of it.
template <class Union, class Reading> void keep(Union &all, const Reading &reading, int number)
{
    const stored<Reading> kept = without_padding(reading, number);
    std::memset(static_cast<void *>(&all), 0, sizeof all);
    std::memcpy(static_cast<void *>(&all), &*kept, sizeof(Reading));
}

template <class Element> void clear_from(Element *elements, std::size_t start, std::size_t end)
{
    if (start < end)
        std::memset(static_cast<void *>(elements + start), 0, (end - start) * sizeof(Element));
}

void tidy(qx_ip_address_t &address)
{
    if (family_of(address) == ipv4)
        for (unsigned index = 1; index < 4; ++index)
            address.ip_addr.addr[index] = 0;
}

void tidy_prefix(qx_ip_address_t &prefix)
{
    const prefix_key masked = prefix_of(prefix);
    for (unsigned index = 0; index < 4; ++index)
        prefix.ip_addr.addr[index] = masked.address.words[index];
}

void tidy(qx_pkt_info_t &packet)
{
    tidy(packet.da_ip);
    tidy(packet.sa_ip);
    if (packet.pppoe_session_id_valid == 0)
        packet.pppoe_session_id = 0;
}

void tidy(qx_port_encap_t &encap)
{
    if (meaning<place::port_encap>(encap.type) == encap_ethernet)
        keep(encap.port_encap, encap.port_encap.eth, qxsh::record_qx_eth_port_encap_t);
    else
        keep(encap.port_encap, encap.port_encap.pppoe, qxsh::record_qx_pppoe_port_encap_t);
}

// A tunnel of unknown type keeps all of its settings.
void tidy(qx_tunnel_cfg_t &cfg)
{
    tidy(cfg.dest_addr);
    tidy(cfg.src_addr);
    qx_tunnel_cfg_union_t &all = cfg.tunnel;
    switch (meaning<place::tunnel_type>(cfg.type)) {
    case tunnel_l2tp:
        keep(all, all.l2tp, qxsh::record_qx_l2tp_tunnel_cfg_t);
        clear_from(all.l2tp.cookie, all.l2tp.cookie_len, sizeof all.l2tp.cookie);
        break;
    case tunnel_gre:
        keep(all, all.gre, qxsh::record_qx_gre_tunnel_cfg_t);
        break;
    case tunnel_ipsec:
        keep(all, all.ipsec, qxsh::record_qx_ipsec_tunnel_cfg_t);
        break;
    case tunnel_etherip:
        keep(all, all.etherip, qxsh::record_qx_etherip_tunnel_cfg_t);
        break;
    default:
        break;
    }
}

} // namespace

stored<qx_rule_hash_key_t> canonical(const qx_rule_hash_key_t &key)
{
    return without_padding(key, qxsh::record_qx_rule_hash_key_t);
}

stored<qx_rule_hash_t> canonical(const qx_rule_hash_t &rule)
{
    return without_padding(rule, qxsh::record_qx_rule_hash_t);
}

stored<qx_rtp_cfg_t> canonical(const qx_rtp_cfg_t &cfg)
{
    return without_padding(cfg, qxsh::record_qx_rtp_cfg_t);
}

stored<qx_flow_t> canonical(const qx_flow_t &flow)
{
    stored<qx_flow_t> copy = without_padding(flow, qxsh::record_qx_flow_t);
    tidy(copy->ingress_pkt);
    tidy(copy->egress_pkt);
    return copy;
}

stored<qx_ip_translate_cfg_t> canonical(const qx_ip_translate_cfg_t &cfg)
{
    stored<qx_ip_translate_cfg_t> copy = without_padding(cfg, qxsh::record_qx_ip_translate_cfg_t);
    tidy(copy->v6_pkt);
    return copy;
}

stored<qx_l3_nexthop_t> canonical(const qx_l3_nexthop_t &nexthop)
{
    stored<qx_l3_nexthop_t> copy = without_padding(nexthop, qxsh::record_qx_l3_nexthop_t);
    tidy(copy->nhid.addr);
    qx_l3_nexthop_encap_t &encap = copy->encap;
    const std::uint32_t type = meaning<place::nexthop_type>(copy->nhid.nhop_type);
    if (type == nexthop_by_port) {
        keep(encap, encap.port_encap, qxsh::record_qx_port_encap_t);
        tidy(encap.port_encap);
    } else if (type == nexthop_by_tunnel) {
        keep(encap, encap.tunnel_cfg, qxsh::record_qx_tunnel_cfg_t);
        tidy(encap.tunnel_cfg);
    }
    return copy;
}

stored<qx_tunnel_cfg_t> canonical(const qx_tunnel_cfg_t &cfg)
{
    stored<qx_tunnel_cfg_t> copy = without_padding(cfg, qxsh::record_qx_tunnel_cfg_t);
    tidy(*copy);
    return copy;
}

stored<qx_ipsec_policy_t> canonical(const qx_ipsec_policy_t &policy)
{
    stored<qx_ipsec_policy_t> copy = without_padding(policy, qxsh::record_qx_ipsec_policy_t);
    clear_from(copy->selector_array, copy->selector_count, selector_limit);
    for (qx_ipsec_selector_t &selector : copy->selector_array) {
        tidy_prefix(selector.src_ip);
        tidy_prefix(selector.dst_ip);
    }
    return copy;
}

stored<qx_ipsec_sa_t> canonical(const qx_ipsec_sa_t &association)
{
    return without_padding(association, qxsh::record_qx_ipsec_sa_t);
}

stored<qx_pptp_sa_t> canonical(const qx_pptp_sa_t &session)
{
    stored<qx_pptp_sa_t> copy = without_padding(session, qxsh::record_qx_pptp_sa_t);
    tidy(copy->local_addr);
    tidy(copy->remote_addr);
    clear_from(copy->key, copy->keylen, sizeof copy->key);
    return copy;
}

stored<qx_pppoe_port_cfg_t> canonical(const qx_pppoe_port_cfg_t &cfg)
{
    return without_padding(cfg, qxsh::record_qx_pppoe_port_cfg_t);
}

stored<qx_ip_address_t> canonical_prefix(const qx_ip_address_t &prefix)
{
    stored<qx_ip_address_t> copy{prefix};
    tidy_prefix(*copy);
    return copy;
}

} // namespace qxsim
