// Tunnels: identity by configuration, what they refer to and who uses them, and their MTU. L2TP
// sessions and prefixes, PPTP sessions and PPPoE ports.
#include "simulated.h"

using namespace simulated;

namespace {

class tunnels : public devices
{};
class sessions : public devices
{};

unsigned add(qx_tunnel_cfg_t cfg, unsigned short device = 0)
{
    unsigned id = 0;
    EXPECT_EQ(qx_tunnel_add(device, &cfg, &id), QX_OK);
    return id;
}

} // namespace

TEST_F(tunnels, are_found_by_id_and_by_configuration)
{
    const std::string before = snapshot();
    qx_tunnel_cfg_t cfgs[] = {l2tp_tunnel(1), gre_tunnel(1), etherip_tunnel(1)};
    for (qx_tunnel_cfg_t &cfg : cfgs) {
        cfg.tunnel.etherip.hop_limit = 200;
        const unsigned id = add(cfg);
        auto got = untouched<qx_tunnel_cfg_t>();
        EXPECT_EQ(qx_tunnel_get(0, id, &got), QX_OK);
        EXPECT_TRUE(same_bytes(cfg, got));
        unsigned other = 0xa5;
        EXPECT_EQ(qx_tunnel_add(0, &cfg, &other), QX_EXISTS);
        EXPECT_EQ(other, 0xa5U);
        EXPECT_EQ(qx_tunnel_delete_by_idx(1, id), QX_NO_TUNNEL);
        EXPECT_EQ(qx_tunnel_delete(0, &cfg), QX_OK);
        EXPECT_EQ(qx_tunnel_delete(0, &cfg), QX_DELETED);
        EXPECT_EQ(qx_tunnel_get(0, id, &got), QX_NO_TUNNEL);
        const unsigned again = add(cfg);
        EXPECT_NE(id, again);
        EXPECT_EQ(qx_tunnel_delete_by_idx(0, again), QX_OK);
        EXPECT_EQ(qx_tunnel_delete_by_idx(0, again), QX_DELETED);
    }
    EXPECT_EQ(before, snapshot());
}

TEST_F(tunnels, identity_is_end_points_direction_and_the_ids_of_the_kind)
{
    add(gre_tunnel(1));
    qx_tunnel_cfg_t same = gre_tunnel(1);
    same.tx_port = 9;
    same.dest_addr.addr_len = 8;
    unsigned id = 0;
    EXPECT_EQ(qx_tunnel_add(0, &same, &id), QX_EXISTS);
    qx_tunnel_cfg_t other = gre_tunnel(1);
    other.dir = 1;
    add(other);
    other = gre_tunnel(1);
    other.dest_addr = ipv4(1);
    add(other);
    other = gre_tunnel(1);
    other.tunnel.gre.down_call_id = 1;
    add(other);
    EXPECT_EQ(qx_tunnel_delete(0, &same), QX_OK);
}

TEST_F(tunnels, mistakes_have_their_statuses)
{
    const unsigned id = add(l2tp_tunnel(1));
    const std::string before = snapshot();
    unsigned written = 0xa5;
    qx_tunnel_cfg_t bad = l2tp_tunnel(2);
    bad.type = 4;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_BAD_TYPE);
    bad = l2tp_tunnel(2);
    bad.src_addr.afi = 2;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_BAD_ADDRESS);
    bad = l2tp_tunnel(2);
    bad.tx_port = 32;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_BAD_PORT);
    bad = l2tp_tunnel(2);
    bad.dir = 3;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_BAD_DIRECTION);
    bad = l2tp_tunnel(2);
    bad.dest_addr = ipv6({1, 2, 3, 4});
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_BAD_FAMILY);
    EXPECT_EQ(qx_tunnel_delete(0, &bad), QX_BAD_FAMILY);
    bad.dest_addr = ipv4(0);
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_NO_ADDRESS);
    bad = zeroed<qx_tunnel_cfg_t>();
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_NO_ADDRESS);
    bad = l2tp_tunnel(2);
    bad.nexthop_id = 1;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_NO_NEXTHOP);
    bad = l2tp_tunnel(2);
    bad.tunnel.l2tp.ipsec_policy = 1;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_NO_POLICY);
    bad = ipsec_tunnel(0);
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_NO_POLICY);
    bad = etherip_tunnel(2);
    bad.tunnel.etherip.ipsec_policy = 7;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_NO_POLICY);
    bad = gre_tunnel(2);
    bad.tunnel.gre.overlay_tunnel_ingress.pptp_sa_id = 7;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_NO_SESSION);
    bad = gre_tunnel(2);
    bad.tunnel.gre.overlay_tunnel_egress.enc_policy = 0x02000001;
    EXPECT_EQ(qx_tunnel_add(0, &bad, &written), QX_NO_POLICY);
    auto mtu = zeroed<qx_tunnel_mtu_t>();
    mtu.tunnel_id = id;
    mtu.mtu = 67;
    EXPECT_EQ(qx_tunnel_mtu_set(0, &mtu), QX_BAD_MTU);
    mtu.mtu = 1400;
    mtu.tunnel_type = 1;
    EXPECT_EQ(qx_tunnel_mtu_set(0, &mtu), QX_BAD_TYPE);
    EXPECT_EQ(qx_tunnel_mtu_get(0, &mtu), QX_BAD_TYPE);
    mtu.tunnel_id = 99;
    EXPECT_EQ(qx_tunnel_mtu_set(0, &mtu), QX_NO_TUNNEL);
    EXPECT_EQ(qx_tunnel_mtu_get(0, &mtu), QX_NO_TUNNEL);
    EXPECT_EQ(mtu.mtu, 1400U);
    EXPECT_EQ(written, 0xa5U);
    EXPECT_EQ(before, snapshot());
}

TEST_F(tunnels, have_an_mtu_of_their_own)
{
    auto mtu = zeroed<qx_tunnel_mtu_t>();
    mtu.tunnel_type = 1;
    mtu.tunnel_id = add(gre_tunnel(1));
    EXPECT_EQ(qx_tunnel_mtu_get(0, &mtu), QX_OK);
    EXPECT_EQ(mtu.mtu, 1500U);
    mtu.mtu = 9216;
    EXPECT_EQ(qx_tunnel_mtu_set(0, &mtu), QX_OK);
    mtu.mtu = 0;
    EXPECT_EQ(qx_tunnel_mtu_get(0, &mtu), QX_OK);
    EXPECT_EQ(mtu.mtu, 9216U);

    // All but the answer stays as it was, padding too: seen in bytes, which no compiler leaves out.
    alignas(4) unsigned char bytes[sizeof mtu];
    std::memset(bytes, 0xa5, sizeof bytes);
    std::memcpy(bytes, &mtu, 8);
    EXPECT_EQ(qx_tunnel_mtu_get(0, reinterpret_cast<qx_tunnel_mtu_t *>(bytes)), QX_OK);
    EXPECT_EQ(bytes[8] | bytes[9] << 8, 9216U);
    EXPECT_EQ(bytes[10], 0xa5U);
    EXPECT_EQ(bytes[11], 0xa5U);
}

TEST_F(tunnels, and_next_hops_hold_each_other)
{
    const std::string before = snapshot();
    qx_l3_nexthop_t hop = nexthop(1);
    unsigned index = 0;
    ASSERT_EQ(qx_l3_nexthop_add(0, &hop, &index), QX_OK);
    qx_tunnel_cfg_t cfg = gre_tunnel(1);
    cfg.nexthop_id = index;
    const unsigned id = add(cfg);
    EXPECT_EQ(qx_l3_nexthop_delete(0, &hop), QX_IN_USE);
    EXPECT_EQ(qx_l3_route_shut(0), QX_IN_USE);
    qx_l3_nexthop_t through = nexthop(2);
    through.nhid.nhop_type = 1;
    through.id.tunnel_id = id;
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), through);
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_OK);
    EXPECT_EQ(qx_tunnel_delete_by_idx(0, id), QX_IN_USE);
    EXPECT_EQ(qx_tunnel_delete(0, &cfg), QX_IN_USE);
    EXPECT_EQ(qx_l3_route_delete(0, &one), QX_OK);
    EXPECT_EQ(qx_tunnel_delete(0, &cfg), QX_OK);
    EXPECT_EQ(qx_l3_nexthop_delete(0, &hop), QX_OK);
    EXPECT_EQ(before, snapshot());
}

TEST_F(tunnels, a_next_hop_does_not_lead_through_an_inbound_one)
{
    qx_tunnel_cfg_t cfg = gre_tunnel(1);
    cfg.dir = 0;
    qx_l3_nexthop_t through = nexthop(2);
    through.nhid.nhop_type = 1;
    through.id.tunnel_id = add(cfg);
    unsigned index = 0xa5;
    EXPECT_EQ(qx_l3_nexthop_add(0, &through, &index), QX_BAD_DIRECTION);
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), through);
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_BAD_DIRECTION);
    cfg.dir = 1;
    one.nexthop.id.tunnel_id = add(cfg);
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_OK);
    EXPECT_EQ(qx_l3_nexthop_update(0, &through), QX_BAD_DIRECTION);
    EXPECT_EQ(index, 0xa5U);
}

TEST_F(tunnels, an_update_does_not_close_a_circle)
{
    // A next hop through the first tunnel; the second tunnel uses it, and a third one uses a next
    // hop through the second.
    qx_l3_nexthop_t first = nexthop(1);
    first.nhid.nhop_type = 1;
    first.id.tunnel_id = add(gre_tunnel(1));
    unsigned index = 0;
    ASSERT_EQ(qx_l3_nexthop_add(0, &first, &index), QX_OK);
    qx_tunnel_cfg_t cfg = gre_tunnel(2);
    cfg.nexthop_id = index;
    const unsigned second_tunnel = add(cfg);
    qx_l3_nexthop_t second = nexthop(2);
    second.nhid.nhop_type = 1;
    second.id.tunnel_id = second_tunnel;
    ASSERT_EQ(qx_l3_nexthop_add(0, &second, &index), QX_OK);
    cfg = gre_tunnel(3);
    cfg.nexthop_id = index;
    const unsigned third_tunnel = add(cfg);
    const std::string before = snapshot();
    qx_l3_nexthop_t changed = first;
    changed.id.tunnel_id = second_tunnel;
    EXPECT_EQ(qx_l3_nexthop_update(0, &changed), QX_CIRCLE);
    changed.id.tunnel_id = third_tunnel;
    EXPECT_EQ(qx_l3_nexthop_update(0, &changed), QX_CIRCLE);
    EXPECT_EQ(before, snapshot());
    changed.id.tunnel_id = add(gre_tunnel(4));
    EXPECT_EQ(qx_l3_nexthop_update(0, &changed), QX_OK);
    qx_tunnel_cfg_t freed = gre_tunnel(1);
    EXPECT_EQ(qx_tunnel_delete(0, &freed), QX_OK) << "the update has let it go";
    EXPECT_EQ(qx_tunnel_delete_by_idx(0, changed.id.tunnel_id), QX_IN_USE);
}

TEST_F(tunnels, ids_of_another_kind_or_device_are_unknown)
{
    const unsigned tunnel = add(gre_tunnel(1));
    const unsigned elsewhere = add(gre_tunnel(1), 1);
    EXPECT_NE(tunnel, elsewhere);
    unsigned index = 0;
    qx_l3_nexthop_t hop = nexthop(1);
    ASSERT_EQ(qx_l3_nexthop_add(0, &hop, &index), QX_OK);
    unsigned translation_id = 0;
    qx_ip_translate_cfg_t settings = translation(1);
    ASSERT_EQ(qx_ip_translate_add(0, &settings, &translation_id), QX_OK);
    for (const unsigned id : {index, translation_id, elsewhere}) {
        EXPECT_NE(tunnel, id);
        EXPECT_EQ(qx_tunnel_delete_by_idx(0, id), QX_NO_TUNNEL);
        EXPECT_EQ(qx_l2tp_session_add(0, id, 1), QX_NO_TUNNEL);
    }
    auto got = untouched<qx_l3_nexthop_t>();
    EXPECT_EQ(qx_l3_nexthop_get(0, tunnel, &got), QX_NO_NEXTHOP);
    EXPECT_EQ(qx_l3_nexthop_get(1, index, &got), QX_NO_NEXTHOP);
    EXPECT_EQ(qx_ip_translate_del(0, tunnel), QX_NO_TRANSLATION);
    EXPECT_EQ(qx_ip_translate_del(1, translation_id), QX_NO_TRANSLATION);
}

TEST_F(tunnels, the_last_user_takes_a_next_hop_along)
{
    const std::string before = snapshot();
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), nexthop(1));
    ASSERT_EQ(qx_l3_route_add(0, &one), QX_OK);
    qx_tunnel_cfg_t cfg = gre_tunnel(1);
    cfg.nexthop_id = number_in(state(), "\"nexthops\": [", "index");
    add(cfg);
    EXPECT_EQ(qx_l3_route_delete(0, &one), QX_OK);
    auto got = untouched<qx_l3_nexthop_t>();
    EXPECT_EQ(qx_l3_nexthop_get(0, cfg.nexthop_id, &got), QX_OK);
    EXPECT_EQ(qx_tunnel_delete(0, &cfg), QX_OK);
    EXPECT_EQ(qx_l3_nexthop_get(0, cfg.nexthop_id, &got), QX_NO_NEXTHOP);
    EXPECT_EQ(before, snapshot());
}

// ----------------------------------------------------------------------------------------- L2TP

TEST_F(sessions, of_an_l2tp_tunnel)
{
    const std::string before = snapshot();
    const unsigned tunnel = add(l2tp_tunnel(1));
    const unsigned gre = add(gre_tunnel(1));
    unsigned char present = 0xa5;
    EXPECT_EQ(qx_l2tp_session_add(0, tunnel, 0), QX_BAD_SESSION_ID);
    EXPECT_EQ(qx_l2tp_session_add(0, 99, 1), QX_NO_TUNNEL);
    EXPECT_EQ(qx_l2tp_session_add(0, gre, 1), QX_BAD_TYPE);
    EXPECT_EQ(qx_l2tp_session_get(0, 99, 1, &present), QX_NO_TUNNEL);
    EXPECT_EQ(present, 0xa5U);
    EXPECT_EQ(qx_l2tp_session_get(0, tunnel, 65535, &present), QX_OK);
    EXPECT_EQ(present, 0U);
    EXPECT_EQ(qx_l2tp_session_add(0, tunnel, 65535), QX_OK);
    EXPECT_EQ(qx_l2tp_session_add(0, tunnel, 65535), QX_EXISTS);
    EXPECT_EQ(qx_l2tp_session_get(0, tunnel, 65535, &present), QX_OK);
    EXPECT_EQ(present, 1U);
    EXPECT_EQ(qx_tunnel_delete_by_idx(0, tunnel), QX_IN_USE);

    qx_ip_address_t prefix = ipv6({0x20010db8, 0, 0, 0}, 48);
    EXPECT_EQ(qx_ipv6_over_l2tp_add(0, tunnel, 1, &prefix), QX_NO_SESSION);
    EXPECT_EQ(qx_ipv6_over_l2tp_delete(0, tunnel, 65535, &prefix), QX_NO_PREFIX);
    EXPECT_EQ(qx_ipv6_over_l2tp_add(0, tunnel, 65535, &prefix), QX_OK);
    EXPECT_EQ(qx_ipv6_over_l2tp_add(0, tunnel, 65535, &prefix), QX_EXISTS);
    EXPECT_EQ(qx_l2tp_session_delete(0, tunnel, 65535), QX_IN_USE);
    qx_ip_address_t wrong = ipv4(1);
    EXPECT_EQ(qx_ipv6_over_l2tp_add(0, tunnel, 65535, &wrong), QX_BAD_ADDRESS);
    EXPECT_EQ(qx_ipv6_over_l2tp_delete(0, tunnel, 65535, &wrong), QX_BAD_ADDRESS);
    wrong = ipv6({1, 2, 3, 4}, 129);
    EXPECT_EQ(qx_ipv6_over_l2tp_getnext(0, tunnel, 65535, &wrong), QX_BAD_ADDRESS);
    EXPECT_EQ(qx_ipv6_over_l2tp_delete(0, tunnel, 65535, &prefix), QX_OK);
    EXPECT_EQ(qx_ipv6_over_l2tp_delete(0, tunnel, 65535, &prefix), QX_DELETED);

    EXPECT_EQ(qx_l2tp_session_delete(0, tunnel, 65535), QX_OK);
    EXPECT_EQ(qx_l2tp_session_delete(0, tunnel, 65535), QX_DELETED);
    EXPECT_EQ(qx_ipv6_over_l2tp_delete(0, tunnel, 65535, &prefix), QX_DELETED);
    EXPECT_EQ(qx_tunnel_delete_by_idx(0, tunnel), QX_OK);
    EXPECT_EQ(qx_l2tp_session_delete(0, tunnel, 65535), QX_DELETED);
    EXPECT_EQ(qx_ipv6_over_l2tp_delete(0, tunnel, 65535, &prefix), QX_DELETED);
    EXPECT_EQ(qx_tunnel_delete_by_idx(0, gre), QX_OK);
    EXPECT_EQ(before, snapshot());
}

TEST_F(sessions, prefixes_are_walked_within_their_session)
{
    const unsigned tunnel = add(l2tp_tunnel(1));
    for (const unsigned short session : {1, 2})
        ASSERT_EQ(qx_l2tp_session_add(0, tunnel, session), QX_OK);
    qx_ip_address_t prefixes[] = {ipv6({0, 0, 0, 0}, 0), ipv6({1, 0, 0, 0}, 32),
                                  ipv6({1, 0, 0, 0}, 40), ipv6({0xffffffff, 0, 0, 0}, 32)};
    for (const unsigned place : {2U, 0U, 3U, 1U})
        ASSERT_EQ(qx_ipv6_over_l2tp_add(0, tunnel, 1, &prefixes[place]), QX_OK);
    ASSERT_EQ(qx_ipv6_over_l2tp_add(0, tunnel, 2, &prefixes[1]), QX_OK);
    auto walk = zeroed<qx_ip_address_t>();
    for (const qx_ip_address_t &prefix : prefixes) {
        ASSERT_EQ(qx_ipv6_over_l2tp_getnext(0, tunnel, 1, &walk), QX_OK);
        EXPECT_TRUE(same_bytes(prefix, walk));
    }
    EXPECT_EQ(qx_ipv6_over_l2tp_getnext(0, tunnel, 1, &walk), QX_NO_MORE);
    EXPECT_TRUE(same_bytes(prefixes[3], walk));
    EXPECT_EQ(qx_ipv6_over_l2tp_getnext(0, tunnel, 3, &walk), QX_NO_SESSION);
}

// ------------------------------------------------------------------------------- PPTP and PPPoE

TEST_F(sessions, of_pptp_are_one_per_direction)
{
    const std::string before = snapshot();
    qx_pptp_sa_t in = pptp(5, 0);
    qx_pptp_sa_t out = pptp(5, 1);
    reinterpret_cast<unsigned char *>(&out)[79] = 3; // padding
    ASSERT_EQ(qx_pptp_session_add(0, &in), QX_OK);
    EXPECT_EQ(qx_pptp_session_add(0, &in), QX_EXISTS);
    ASSERT_EQ(qx_pptp_session_add(0, &out), QX_OK);
    auto got = zeroed<qx_pptp_sa_t>();
    got.sa_id = 5;
    got.dir = 1;
    EXPECT_EQ(qx_pptp_session_get(0, &got), QX_OK);
    EXPECT_TRUE(same_bytes(out, got));
    EXPECT_EQ(qx_pptp_session_delete(0, 5, 2), QX_BAD_DIRECTION);
    EXPECT_EQ(qx_pptp_session_delete(0, 6, 0), QX_NO_SESSION);
    EXPECT_EQ(qx_pptp_session_delete(0, 5, 0), QX_OK);
    EXPECT_EQ(qx_pptp_session_delete(0, 5, 0), QX_DELETED);
    EXPECT_EQ(qx_pptp_session_clear_all(0), QX_OK);
    EXPECT_EQ(qx_pptp_session_clear_all(0), QX_OK);
    EXPECT_EQ(qx_pptp_session_delete(0, 5, 1), QX_DELETED);
    EXPECT_EQ(qx_pptp_session_get(0, &got), QX_NO_SESSION);
    EXPECT_EQ(before, snapshot());

    qx_pptp_sa_t bad = pptp(0, 0);
    EXPECT_EQ(qx_pptp_session_add(0, &bad), QX_BAD_SESSION_ID);
    bad = pptp(1, 2);
    EXPECT_EQ(qx_pptp_session_add(0, &bad), QX_BAD_DIRECTION);
    EXPECT_EQ(qx_pptp_session_get(0, &bad), QX_BAD_DIRECTION);
    bad = pptp(1, 0);
    bad.remote_addr.addr_len = 33;
    EXPECT_EQ(qx_pptp_session_add(0, &bad), QX_BAD_ADDRESS);
    bad = pptp(1, 0);
    bad.remote_addr = ipv6({1, 0, 0, 0});
    EXPECT_EQ(qx_pptp_session_add(0, &bad), QX_BAD_FAMILY);
    bad = pptp(1, 0);
    bad.keylen = 17;
    EXPECT_EQ(qx_pptp_session_add(0, &bad), QX_BAD_KEY);
    EXPECT_EQ(before, snapshot());
}

TEST_F(sessions, a_key_change_moves_every_byte_of_the_key_by_one)
{
    qx_pptp_sa_t in = pptp(5, 0);
    qx_pptp_sa_t out = pptp(5, 1);
    out.keylen = 16;
    ASSERT_EQ(qx_pptp_session_add(0, &in), QX_OK);
    ASSERT_EQ(qx_pptp_session_add(0, &out), QX_OK);
    EXPECT_EQ(qx_pptp_key_change(0, 6), QX_NO_SESSION);
    EXPECT_EQ(qx_pptp_key_change(0, 5), QX_OK);
    qx_pptp_sa_t got = pptp(5, 0);
    ASSERT_EQ(qx_pptp_session_get(0, &got), QX_OK);
    for (unsigned index = 0; index < 16; ++index)
        EXPECT_EQ((0xf8 + index + (index < 8 ? 1 : 0)) & 0xff, got.key[index]);
    EXPECT_EQ(got.seq_num, 0U);
    got = pptp(5, 1);
    ASSERT_EQ(qx_pptp_session_get(0, &got), QX_OK);
    EXPECT_EQ((0xf8 + 15 + 1) & 0xff, got.key[15]);

    qx_pptp_sa_t plain = pptp(7, 0);
    plain.crypto_type = 0;
    ASSERT_EQ(qx_pptp_session_add(0, &plain), QX_OK);
    const std::string before = snapshot();
    EXPECT_EQ(qx_pptp_key_change(0, 7), QX_BAD_KEY);
    EXPECT_EQ(before, snapshot());
}

TEST_F(sessions, of_pptp_are_held_by_gre_tunnels)
{
    qx_pptp_sa_t in = pptp(5, 0);
    qx_pptp_sa_t out = pptp(5, 1);
    ASSERT_EQ(qx_pptp_session_add(0, &in), QX_OK);
    qx_tunnel_cfg_t cfg = gre_tunnel(1);
    cfg.tunnel.gre.overlay_tunnel_egress.pptp_sa_id = 5;
    unsigned id = 0;
    EXPECT_EQ(qx_tunnel_add(0, &cfg, &id), QX_NO_SESSION) << "there is none in that direction";
    ASSERT_EQ(qx_pptp_session_add(0, &out), QX_OK);
    EXPECT_EQ(qx_tunnel_add(0, &cfg, &id), QX_OK);
    EXPECT_EQ(qx_pptp_session_delete(0, 5, 1), QX_IN_USE);
    EXPECT_EQ(qx_pptp_session_clear_all(0), QX_IN_USE);
    EXPECT_EQ(qx_pptp_session_delete(0, 5, 0), QX_OK);
    EXPECT_EQ(qx_tunnel_delete_by_idx(0, id), QX_OK);
    EXPECT_EQ(qx_pptp_session_clear_all(0), QX_OK);
}

TEST_F(sessions, pppoe_ports_get_their_encapsulation)
{
    const std::string before = snapshot();
    auto got = untouched<qx_pppoe_port_cfg_t>();
    qx_pppoe_port_cfg_t cfg = pppoe(9);
    reinterpret_cast<unsigned char *>(&cfg)[14] = 4; // padding
    EXPECT_EQ(qx_pppoe_port_add(0, 32, 100), QX_BAD_PORT);
    EXPECT_EQ(qx_pppoe_port_encap_set(0, 100, &cfg), QX_NO_PPPOE_PORT);
    EXPECT_EQ(qx_pppoe_port_add(0, 3, 100), QX_OK);
    EXPECT_EQ(qx_pppoe_port_add(0, 4, 100), QX_EXISTS);
    EXPECT_EQ(qx_pppoe_port_config_get(0, 100, &got), QX_NO_ENCAP);
    EXPECT_EQ(qx_pppoe_port_config_get(0, 101, &got), QX_NO_PPPOE_PORT);
    EXPECT_TRUE(is_untouched(got));
    EXPECT_EQ(qx_pppoe_port_encap_set(0, 100, &cfg), QX_OK);
    EXPECT_EQ(qx_pppoe_port_config_get(0, 100, &got), QX_OK);
    EXPECT_TRUE(same_bytes(cfg, got));
    cfg.pppoe_session_id = 0;
    EXPECT_EQ(qx_pppoe_port_encap_set(0, 100, &cfg), QX_BAD_SESSION_ID);
    cfg.tx_phy_port = 32;
    EXPECT_EQ(qx_pppoe_port_encap_set(0, 100, &cfg), QX_BAD_PORT);
    EXPECT_EQ(qx_pppoe_port_delete(0, 100), QX_OK);
    EXPECT_EQ(qx_pppoe_port_delete(0, 100), QX_DELETED);
    EXPECT_EQ(before, snapshot());
}
