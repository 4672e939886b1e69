// Random calls of all 83 functions.
#include "random_calls.h"

#include "flow_model.h"

namespace simulated {

// Calls a function by its name, which the caller learns.
#define CALL(function, ...) (name = #function, function(__VA_ARGS__))

qx_ip_address_t world::any_address()
{
    if (rarely())
        return ipv4(0, number(200));
    const std::uint32_t base = 0x0a000000 + below(8) * 0x10000;
    if (below(3) == 0)
        return ipv6({base, below(2), 0, 0}, 32 + below(4) * 8);
    return ipv4(base, 8 + below(4) * 8);
}

qx_flow_t world::any_flow()
{
    qx_flow_t one = flow(static_cast<unsigned short>(below(40)));
    one.ingress_pkt.phy_port = rarely() ? byte(40) : 0;
    if (rarely())
        one.egress_pkt.sa_ip = any_address();
    if (rarely())
        one.ingress_pkt.tag[0].vlan_id = word(5000);
    return one;
}

qx_l3_nexthop_t world::any_nexthop()
{
    qx_l3_nexthop_t one = nexthop(below(20), below(4));
    one.nhid.nhop_type = rarely() ? number(4) : below(8) == 0 ? 1 + below(2) : 0;
    if (one.nhid.nhop_type != 0)
        one.id.tunnel_id = id(one.nhid.nhop_type == 1 ? tunnel_id : sa_id);
    if (rarely())
        one.encap.port_encap.type = number(3);
    if (rarely())
        one.da_mac[0] = byte(3);
    return one;
}

qx_tunnel_cfg_t world::any_tunnel()
{
    const unsigned key = below(10);
    const unsigned policy = below(2) == 0 ? 0 : id(policy_id);
    qx_tunnel_cfg_t one = l2tp_tunnel(static_cast<unsigned short>(key));
    switch (below(4)) {
    case 0:
        one.tunnel.l2tp.ipsec_policy = policy;
        break;
    case 1:
        one = gre_tunnel(key);
        one.tunnel.gre.overlay_tunnel_ingress.enc_policy = below(2) == 0 ? policy : below(5);
        break;
    case 2:
        one = ipsec_tunnel(policy);
        break;
    default:
        one = etherip_tunnel(key);
        one.tunnel.etherip.ipsec_policy = policy;
    }
    one.nexthop_id = below(4) == 0 ? id(nexthop_id) : 0;
    one.dir = number(3);
    if (rarely())
        one.type = number(5);
    if (rarely())
        one.tx_port = word(40);
    return one;
}

qx_ipsec_policy_t world::any_policy()
{
    qx_ipsec_policy_t one = policy(below(40));
    one.policy_action = rarely() ? number(4) : 2;
    one.selector_count = rarely() ? number(6) : 1 + below(4);
    one.selector_array[2].src_ip = any_address();
    return one;
}

qx_ipsec_sa_t world::any_association(unsigned way)
{
    return association(rarely() ? number(300) : 256 + below(2000), rarely() ? 1 - way : way);
}

qx_pptp_sa_t world::any_pptp()
{
    qx_pptp_sa_t one =
        pptp(static_cast<unsigned short>(below(20)), rarely() ? number(3) : below(2));
    one.keylen = byte(18);
    one.crypto_type = below(3);
    return one;
}

void world::fill()
{
    cell_ = untouched<unsigned>();
    small_cell_ = untouched<unsigned char>();
    cpu_ = untouched<qx_pm_cpu_info_t>();
    flow_ = untouched<qx_flow_t>();
    rule_ = untouched<qx_rule_hash_t>();
    stats_ = untouched<qx_rtp_stats_t>();
    translation_ = untouched<qx_ip_translate_cfg_t>();
    nexthop_ = untouched<qx_l3_nexthop_t>();
    tunnel_ = untouched<qx_tunnel_cfg_t>();
    pppoe_ = untouched<qx_pppoe_port_cfg_t>();
}

bool world::untouched_outputs() const
{
    return is_untouched(cell_) && is_untouched(small_cell_) && is_untouched(cpu_) &&
           is_untouched(flow_) && is_untouched(rule_) && is_untouched(stats_) &&
           is_untouched(translation_) && is_untouched(nexthop_) && is_untouched(tunnel_) &&
           is_untouched(pppoe_);
}

unsigned world::id(kind wanted)
{
    if (rarely())
        wanted = static_cast<kind>(below(kinds));
    const std::vector<unsigned> &known = ids_[wanted];
    return known.empty() || rarely() ? number(9) : known[below(known.size())];
}

void world::forget()
{
    for (std::vector<unsigned> &known : ids_)
        known.clear();
}

unsigned world::gives(kind given, unsigned status)
{
    constexpr std::size_t kept = 3;
    std::vector<unsigned> &known = ids_[given];
    if (status != QX_OK)
        return status;
    if (known.size() < kept)
        known.push_back(cell_);
    else
        known[below(kept)] = cell_;
    return status;
}

unsigned world::call(const char *&name, bool &quiet)
{
    fill();
    // What builds on other things succeeds more rarely and is called more often.
    const unsigned area = below(10);
    unsigned status = 0;
    if (area == 0)
        status = call_fixed(below(22), name);
    else if (area < 3)
        status = call_flows(below(18), name);
    else if (area < 5)
        status = call_l3(below(17), name);
    else if (area < 8)
        status = call_tunnels(below(17), name);
    else
        status = call_sessions(below(19), name);
    quiet = status == QX_OK || untouched_outputs();
    return status;
}

// One call a line.
// clang-format off

unsigned world::call_fixed(unsigned which, const char *&name)
{
    const unsigned short port = word(34);
    switch (which) {
    case 0: return CALL(qx_qos_map_mode_get, device(), port, &cell_);
    case 1: return CALL(qx_qos_map_mode_set, device(), port, number(4));
    case 2: return CALL(qx_qos_dscp_map_get, device(), port, byte(66), &small_cell_);
    case 3: return CALL(qx_qos_dscp_map_set, device(), port, byte(66), byte(9));
    case 4: return CALL(qx_qos_dot1p_map_get, device(), port, byte(9), &small_cell_);
    case 5: return CALL(qx_qos_dot1p_map_set, device(), port, byte(9), byte(9));
    case 6: return CALL(qx_pm_cpu_info_get, device(), &cpu_);
    case 7: return CALL(qx_pm_cpu_frequency_set, device(), number(1300));
    case 8: return CALL(qx_pm_cpu_power_up, device(), number(3));
    case 9: return CALL(qx_pm_cpu_power_down, device(), number(3));
    case 10: return CALL(qx_pm_cpu_power_state_set, device(), number(3), number(4));
    case 11: return CALL(qx_pm_pcie_state_get, device(), number(3), &cell_);
    case 12: return CALL(qx_pm_pcie_state_set, device(), number(3), number(4));
    case 13: return CALL(qx_pm_sata_state_get, device(), number(3), &cell_);
    case 14: return CALL(qx_pm_sata_state_set, device(), number(3), number(4));
    case 15: return CALL(qx_pm_usb_state_get, device(), number(3), &cell_);
    case 16: return CALL(qx_pm_usb_state_set, device(), number(3), number(4));
    case 17: return CALL(qx_pm_ne_suspend_get, device(), rarely() ? nullptr : &small_cell_);
    case 18: return CALL(qx_pm_ne_suspend_set, device(), byte(3));
    case 19: return CALL(qx_pm_pe_suspend_get, device(), number(9), &small_cell_);
    case 20: return CALL(qx_pm_pe_suspend_set, device(), number(9), byte(3));
    default: return CALL(qx_pm_system_suspend_enter, device());
    }
}

unsigned world::call_flows(unsigned which, const char *&name)
{
    qx_flow_t one = any_flow();
    const unsigned short slot = rarely() ? word(5000) : static_cast<unsigned short>(flow_slot(one));
    qx_rtp_cfg_t stream = rtp(below(80));
    qx_rule_hash_t line = rule(word(30), static_cast<unsigned short>(below(2) * 4096));
    line.key.l4_dp = static_cast<unsigned short>(below(2000));
    qx_ip_translate_cfg_t cfg = translation(static_cast<unsigned short>(below(50)));
    cfg.translate_type = number(4);
    if (rarely())
        cfg.port_set_id_length = word(20);
    if (which == 12 && below(4) != 0)
        which = 14;
    switch (which) {
    case 0: return CALL(qx_flow_add, device(), rarely() ? nullptr : &one);
    default: return CALL(qx_flow_delete, device(), word(40));
    case 2: return CALL(qx_flow_get, device(), slot, &flow_);
    case 3: return CALL(qx_flow_get_lastuse_tickcount, device(), word(40), &cell_);
    case 4: return CALL(qx_rule_hash_add, device(), &line);
    case 5: return CALL(qx_rule_hash_delete_by_hash_index, device(), word(30));
    case 6: return CALL(qx_rule_hash_get_by_hash_index, device(), word(30), &rule_);
    case 7: return gives(rtp_id, CALL(qx_rtp_translate_add, device(), &stream, &one, &cell_));
    case 8: return CALL(qx_rtp_translate_delete, device(), &stream);
    case 9: return CALL(qx_rtp_translate_delete_by_id, device(), id(rtp_id));
    case 10: return CALL(qx_rtp_statistics_get, id(rtp_id), &stats_);
    case 11: return gives(translation_id, CALL(qx_ip_translate_add, device(), &cfg, &cell_));
    case 12: return CALL(qx_ip_translate_del, device(), id(translation_id));
    case 13: return CALL(qx_ip_translate_get, device(), id(translation_id), &translation_);
    case 1: case 14: return CALL(qx_ip_translate_flow_add, device(), id(translation_id), &one);
    case 15: return CALL(qx_ip_translate_flow_del, device(), id(translation_id), &one);
    }
}

unsigned world::call_l3(unsigned which, const char *&name)
{
    qx_ip_address_t prefix = any_address();
    qx_l3_nexthop_t hop = any_nexthop();
    qx_l3_route_t one = route(prefix, hop);
    const unsigned short port = word(33);
    switch (which) {
    case 0: return CALL(qx_l3_route_add, device(), &one);
    case 1: return CALL(qx_l3_route_delete, device(), &one);
    case 2: return CALL(qx_l3_route_get, device(), &one);
    case 3: return CALL(qx_l3_route_show, device(), &one, byte(2));
    case 4: return below(8) == 0 ? CALL(qx_l3_route_shut, device())
                                 : CALL(qx_l3_route_init_0, device());
    case 5: return CALL(qx_l3_route_init_0, device());
    case 6: return gives(nexthop_id, CALL(qx_l3_nexthop_add, device(), &hop, &cell_));
    case 7: return CALL(qx_l3_nexthop_delete, device(), &hop);
    case 8: return CALL(qx_l3_nexthop_get, device(), id(nexthop_id), &nexthop_);
    case 9: return CALL(qx_l3_nexthop_show, device(), &hop, byte(2));
    case 10: return CALL(qx_l3_nexthop_update, device(), &hop);
    case 11: return CALL(qx_l3_nhintf_all_route_delete, device(), number(5));
    case 12: return CALL(qx_nat_subnet_add, device(), number(3), &prefix);
    case 13: return CALL(qx_nat_subnet_delete, device(), number(3), &prefix);
    case 14: return CALL(qx_port_encap_ip_mtu_add, device(), port, number(3), number(9300));
    case 15: return CALL(qx_port_encap_ip_mtu_delete, device(), port, number(3));
    default: return CALL(qx_port_encap_ip_mtu_get, device(), port, number(3), &cell_);
    }
}

unsigned world::call_tunnels(unsigned which, const char *&name)
{
    qx_tunnel_cfg_t one = any_tunnel();
    qx_tunnel_mtu_t mtu{number(3), id(tunnel_id), word(9300)};
    qx_ipsec_policy_t rule = any_policy();
    const bool takes_away = which == 1 || which == 2 || which == 8 || which == 10;
    if (takes_away && below(4) != 0)
        which = 11;
    const unsigned way = below(2);
    qx_ipsec_sa_t sas[] = {any_association(way), any_association(way), any_association(way),
                           any_association(way)};
    switch (which) {
    case 0: return gives(tunnel_id, CALL(qx_tunnel_add, device(), &one, &cell_));
    case 1: return CALL(qx_tunnel_delete, device(), &one);
    case 2: return CALL(qx_tunnel_delete_by_idx, device(), id(tunnel_id));
    case 3: return CALL(qx_tunnel_get, device(), id(tunnel_id), &tunnel_);
    case 4: return CALL(qx_tunnel_mtu_get, device(), &mtu);
    case 5: return CALL(qx_tunnel_mtu_set, device(), &mtu);
    case 6: return CALL(qx_ipsec_init, device());
    case 7: return gives(spd_id, CALL(qx_ipsec_spd_add, device(), number(3), below(12), &cell_));
    case 8: return CALL(qx_ipsec_spd_delete, device(), id(spd_id));
    case 9: case 13: return gives(policy_id, CALL(qx_ipsec_policy_add, device(), id(spd_id), &rule,
                                                  &cell_));
    case 10: return CALL(qx_ipsec_policy_delete, device(), id(spd_id), id(policy_id));
    default: return gives(sa_id, CALL(qx_ipsec_sa_add, device(), id(spd_id), id(policy_id), byte(5),
                                      sas, below(2) == 0 ? 0 : id(sa_id), &cell_));
    case 12: return CALL(qx_ipsec_sa_delete, device(), id(spd_id), id(policy_id), id(sa_id));
    }
}

unsigned world::call_sessions(unsigned which, const char *&name)
{
    qx_ip_address_t prefix = rarely() ? any_address() : ipv6({0x20010db8, below(4), 0, 0}, 64);
    qx_pptp_sa_t session = any_pptp();
    qx_pppoe_port_cfg_t cfg = pppoe(static_cast<unsigned short>(below(20)));
    cfg.tx_phy_port = word(40);
    const unsigned short number_of_port = word(20);
    const bool takes_away = which == 9 || which == 12;
    if (takes_away && below(4) != 0)
        which = 14;
    const unsigned short session_id = word(3);
    switch (which) {
    case 0: case 15: return CALL(qx_l2tp_session_add, device(), id(tunnel_id), session_id);
    case 1: return CALL(qx_l2tp_session_delete, device(), id(tunnel_id), session_id);
    case 2: return CALL(qx_l2tp_session_get, device(), id(tunnel_id), session_id, &small_cell_);
    default: return CALL(qx_ipv6_over_l2tp_add, device(), id(tunnel_id), session_id, &prefix);
    case 4: return CALL(qx_ipv6_over_l2tp_delete, device(), id(tunnel_id), session_id, &prefix);
    case 5: return CALL(qx_ipv6_over_l2tp_getnext, device(), id(tunnel_id), session_id, &prefix);
    case 6: return CALL(qx_pptp_session_add, device(), &session);
    case 7: return CALL(qx_pptp_session_delete, device(), word(50), byte(3));
    case 8: return CALL(qx_pptp_session_get, device(), &session);
    case 9: return below(8) == 0 ? CALL(qx_pptp_session_clear_all, device())
                                 : CALL(qx_pptp_key_change, device(), word(50));
    case 10: return CALL(qx_pptp_key_change, device(), word(50));
    case 11: return CALL(qx_pppoe_port_add, device(), word(33), number_of_port);
    case 12: return CALL(qx_pppoe_port_delete, device(), number_of_port);
    case 13: return CALL(qx_pppoe_port_config_get, device(), number_of_port, &pppoe_);
    case 3: return CALL(qx_pppoe_port_encap_set, device(), number_of_port, &cfg);
    }
}

// clang-format on

} // namespace simulated
