// Routes, next hops, NAT subnets and port MTUs: bring-up and tear-down, walks, mistakes.
#include "simulated.h"

#include <vector>

using namespace simulated;

namespace {

class l3 : public devices
{};

qx_l3_route_t host(std::uint32_t address)
{
    return route(ipv4(address), zeroed<qx_l3_nexthop_t>());
}

} // namespace

TEST_F(l3, a_route_brings_its_next_hop_and_takes_it_along)
{
    const std::string before = snapshot();
    qx_l3_route_t added = route(ipv4(0x0a000000, 8), nexthop(0xc0a80001));
    reinterpret_cast<unsigned char *>(&added)[22] = 7;      // padding behind the prefix
    reinterpret_cast<unsigned char *>(&added)[24 + 26] = 8; // padding in the next hop's identity
    ASSERT_EQ(qx_l3_route_add(0, &added), QX_OK);
    qx_l3_route_t got = host(0x0a010203);
    EXPECT_EQ(qx_l3_route_get(0, &got), QX_OK);
    EXPECT_TRUE(same_bytes(added, got));
    EXPECT_EQ(qx_l3_nexthop_delete(0, &added.nexthop), QX_IN_USE);
    EXPECT_EQ(qx_l3_route_delete(0, &added), QX_OK);
    EXPECT_EQ(qx_l3_nexthop_delete(0, &added.nexthop), QX_DELETED);
    EXPECT_EQ(before, snapshot());
}

TEST_F(l3, the_longest_prefix_wins)
{
    const std::uint32_t lengths[] = {0, 8, 16, 24, 32};
    for (const std::uint32_t length : lengths) {
        qx_l3_route_t one = route(ipv4(0x0a010203, length), nexthop(length + 1));
        ASSERT_EQ(qx_l3_route_add(0, &one), QX_OK);
    }
    const auto via = [](std::uint32_t address, unsigned length) {
        qx_l3_route_t got = route(ipv4(address, length), zeroed<qx_l3_nexthop_t>());
        EXPECT_EQ(qx_l3_route_get(0, &got), QX_OK);
        return got.nexthop.nhid.addr.ip_addr.ipv4_addr - 1;
    };
    EXPECT_EQ(via(0x0a010203, 32), 32U);
    EXPECT_EQ(via(0x0a010204, 32), 24U);
    EXPECT_EQ(via(0x0a010303, 32), 16U);
    EXPECT_EQ(via(0x0a020203, 32), 8U);
    EXPECT_EQ(via(0x0b010203, 32), 0U);
    EXPECT_EQ(via(0x0a010203, 31), 24U) << "a prefix is found by one that covers it";
    EXPECT_EQ(via(0x0a010203, 7), 0U);
    qx_l3_route_t other = route(ipv6({0x0a010203, 0, 0, 0}), zeroed<qx_l3_nexthop_t>());
    EXPECT_EQ(qx_l3_route_get(0, &other), QX_NO_ROUTE) << "families are apart";
}

TEST_F(l3, bits_behind_the_length_do_not_count)
{
    qx_l3_route_t one = route(ipv4(0x0a010203, 16), nexthop(1));
    ASSERT_EQ(qx_l3_route_add(0, &one), QX_OK);
    qx_l3_route_t same = route(ipv4(0x0a01ffff, 16), nexthop(1));
    EXPECT_EQ(qx_l3_route_add(0, &same), QX_EXISTS);
    EXPECT_EQ(qx_l3_route_delete(0, &same), QX_OK);
}

TEST_F(l3, routes_are_walked_in_order)
{
    const qx_ip_address_t prefixes[] = {ipv4(0, 0),
                                        ipv4(0x0a000000, 8),
                                        ipv4(0x0a000000, 16),
                                        ipv4(0x0b000000, 8),
                                        ipv6({0, 0, 0, 0}, 0),
                                        ipv6({0x20010db8, 0, 0, 0}, 32),
                                        ipv6({0x20010db8, 0, 0, 0}, 64)};
    for (const unsigned place : {3U, 5U, 0U, 6U, 1U, 4U, 2U}) {
        qx_l3_route_t one = route(prefixes[place], nexthop(place));
        ASSERT_EQ(qx_l3_route_add(0, &one), QX_OK);
    }
    auto walk = untouched<qx_l3_route_t>();
    for (unsigned place = 0; place < 7; ++place) {
        ASSERT_EQ(qx_l3_route_show(0, &walk, place == 0 ? 0 : 1), QX_OK);
        EXPECT_TRUE(same_bytes(prefixes[place], walk.prefix)) << "at " << place;
    }
    const qx_l3_route_t last = walk;
    EXPECT_EQ(qx_l3_route_show(0, &walk, 1), QX_NO_MORE);
    EXPECT_TRUE(same_bytes(last, walk));

    // A walk goes on although the route it stands on is gone.
    walk = route(prefixes[1], nexthop(1));
    EXPECT_EQ(qx_l3_route_delete(0, &walk), QX_OK);
    EXPECT_EQ(qx_l3_route_show(0, &walk, 1), QX_OK);
    EXPECT_TRUE(same_bytes(prefixes[2], walk.prefix));
}

TEST_F(l3, next_hops_are_shared_and_updated)
{
    qx_l3_nexthop_t hop = nexthop(0xc0a80001, 4);
    unsigned index = 0;
    ASSERT_EQ(qx_l3_nexthop_add(0, &hop, &index), QX_OK);
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), hop);
    qx_l3_route_t two = route(ipv4(0x0b000000, 8), hop);
    ASSERT_EQ(qx_l3_route_add(0, &one), QX_OK);
    ASSERT_EQ(qx_l3_route_add(0, &two), QX_OK);
    EXPECT_EQ(number_in(snapshot(), "\"nexthops\"", "routes"), 2U);

    qx_l3_nexthop_t changed = hop;
    changed.da_mac[0] = 0x42;
    changed.id.port_id = 9;
    EXPECT_EQ(qx_l3_nexthop_update(0, &changed), QX_OK);
    auto got = untouched<qx_l3_nexthop_t>();
    EXPECT_EQ(qx_l3_nexthop_get(0, index, &got), QX_OK);
    EXPECT_TRUE(same_bytes(changed, got));
    qx_l3_route_t found = host(0x0b000001);
    EXPECT_EQ(qx_l3_route_get(0, &found), QX_OK);
    EXPECT_TRUE(same_bytes(changed, found.nexthop));

    EXPECT_EQ(qx_l3_nhintf_all_route_delete(0, 3), QX_OK);
    EXPECT_EQ(number_in(snapshot(), "\"nexthops\"", "routes"), 2U);
    EXPECT_EQ(qx_l3_nhintf_all_route_delete(0, 4), QX_OK);
    EXPECT_EQ(qx_l3_route_delete(0, &one), QX_DELETED);
    EXPECT_EQ(qx_l3_nexthop_get(0, index, &got), QX_OK) << "it was added by a call of its own";
    EXPECT_EQ(qx_l3_nexthop_delete(0, &hop), QX_OK);
    EXPECT_EQ(qx_l3_nexthop_get(0, index, &got), QX_NO_NEXTHOP);
}

TEST_F(l3, next_hops_are_compared_by_what_counts)
{
    qx_l3_nexthop_t hop = nexthop(0xc0a80001);
    unsigned index = 0;
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), hop);
    ASSERT_EQ(qx_l3_route_add(0, &one), QX_OK);
    hop.nhid.addr.ip_addr.addr[2] = 7;                     // behind an IPv4 address
    hop.encap.port_encap.port_encap.pppoe.dest_mac[0] = 7; // padding of the Ethernet reading
    hop.encap.port_encap.port_encap.pppoe.pppoe_session_id = 7;
    hop.encap.tunnel_cfg.tunnel.l2tp.cookie[0] = 7;
    reinterpret_cast<unsigned char *>(&hop)[38] = 7; // padding behind da_mac
    EXPECT_EQ(qx_l3_nexthop_add(0, &hop, &index), QX_OK);
    one = route(ipv4(0x0b000000, 8), hop);
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_OK);
    one = route(ipv4(0x0c000000, 8), hop);
    one.nexthop.encap.port_encap.port_encap.eth.tag[1] = 1;
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_CONFLICT);
    one.nexthop = hop;
    one.nexthop.encap.port_encap.type = 1;
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_CONFLICT);
}

TEST_F(l3, a_route_has_the_family_of_its_neighbour)
{
    qx_l3_route_t one = route(ipv6({0x20010db8, 0, 0, 0}, 32), nexthop(1));
    one.nexthop.nhid.addr.afi = 0;
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_BAD_FAMILY);
    one.nexthop.nhid.addr.afi = 1;
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_OK);
    qx_tunnel_cfg_t cfg = gre_tunnel(1);
    one = route(ipv6({0x20010db8, 1, 0, 0}, 64), nexthop(1));
    one.nexthop.nhid.nhop_type = 1;
    one.nexthop.nhid.addr.afi = 0;
    ASSERT_EQ(qx_tunnel_add(0, &cfg, &one.nexthop.id.tunnel_id), QX_OK);
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_OK) << "a tunnel carries either family";
}

TEST_F(l3, next_hops_are_walked_in_order)
{
    std::vector<qx_l3_nexthop_t> hops = {nexthop(1, 1), nexthop(1, 2), nexthop(2, 1)};
    hops.push_back(nexthop(0, 1));
    hops.back().nhid.addr = ipv6({0, 0, 0, 1});
    unsigned index = 0;
    for (const unsigned place : {3U, 0U, 2U, 1U})
        ASSERT_EQ(qx_l3_nexthop_add(0, &hops[place], &index), QX_OK);
    auto walk = untouched<qx_l3_nexthop_t>();
    for (unsigned place = 0; place < 4; ++place) {
        ASSERT_EQ(qx_l3_nexthop_show(0, &walk, place == 0 ? 0 : 1), QX_OK);
        EXPECT_TRUE(same_bytes(hops[place], walk)) << "at " << place;
    }
    EXPECT_EQ(qx_l3_nexthop_show(0, &walk, 1), QX_NO_MORE);
}

TEST_F(l3, mistakes_have_their_statuses)
{
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), nexthop(1));
    ASSERT_EQ(qx_l3_route_add(0, &one), QX_OK);
    const std::string before = snapshot();
    unsigned index = 0xa5;
    qx_l3_route_t bad = route(ipv4(0x0b000000, 33), nexthop(1));
    EXPECT_EQ(qx_l3_route_add(0, &bad), QX_BAD_ADDRESS);
    EXPECT_EQ(qx_l3_route_get(0, &bad), QX_BAD_ADDRESS);
    EXPECT_EQ(qx_l3_route_delete(0, &bad), QX_BAD_ADDRESS);
    EXPECT_EQ(qx_l3_route_show(0, &bad, 1), QX_BAD_ADDRESS);
    EXPECT_EQ(qx_l3_route_show(0, &one, 2), QX_BAD_FLAG);
    EXPECT_EQ(qx_l3_nexthop_show(0, &one.nexthop, 255), QX_BAD_FLAG);
    bad = route(ipv4(0x0b000000, 8), nexthop(1));
    bad.nexthop.da_mac[3] = 1;
    EXPECT_EQ(qx_l3_route_add(0, &bad), QX_CONFLICT);
    EXPECT_EQ(qx_l3_nexthop_add(0, &bad.nexthop, &index), QX_CONFLICT);
    bad.nexthop.nhid.nhop_type = 3;
    EXPECT_EQ(qx_l3_route_add(0, &bad), QX_BAD_TYPE);
    EXPECT_EQ(qx_l3_nexthop_delete(0, &bad.nexthop), QX_BAD_TYPE);
    bad.nexthop.nhid.nhop_type = 1;
    bad.nexthop.id.tunnel_id = 1;
    EXPECT_EQ(qx_l3_route_add(0, &bad), QX_NO_TUNNEL);
    bad.nexthop.nhid.nhop_type = 2;
    EXPECT_EQ(qx_l3_nexthop_add(0, &bad.nexthop, &index), QX_NO_SA);
    bad.nexthop = nexthop(2);
    bad.nexthop.id.port_id = 32;
    EXPECT_EQ(qx_l3_nexthop_add(0, &bad.nexthop, &index), QX_BAD_PORT);
    bad.nexthop = nexthop(2);
    bad.nexthop.encap.port_encap.type = 2;
    EXPECT_EQ(qx_l3_nexthop_update(0, &bad.nexthop), QX_BAD_ENCAP);
    bad.nexthop = nexthop(2);
    EXPECT_EQ(qx_l3_nexthop_update(0, &bad.nexthop), QX_NO_NEXTHOP);
    auto got = untouched<qx_l3_nexthop_t>();
    EXPECT_EQ(qx_l3_nexthop_get(0, 0, &got), QX_NO_NEXTHOP);
    EXPECT_TRUE(is_untouched(got));
    EXPECT_EQ(index, 0xa5U);
    EXPECT_EQ(before, snapshot());
    EXPECT_EQ(qx_l3_nexthop_add(0, &one.nexthop, &index), QX_OK) << "now it is kept without routes";
    EXPECT_EQ(qx_l3_nexthop_add(0, &one.nexthop, &index), QX_EXISTS);
}

TEST_F(l3, shutting_down_and_starting_again)
{
    EXPECT_EQ(qx_l3_route_init_0(0), QX_OK) << "an empty table may be initialised any time";
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), nexthop(1));
    unsigned index = 0;
    const std::string before = snapshot();
    ASSERT_EQ(qx_l3_route_add(0, &one), QX_OK);
    EXPECT_EQ(qx_l3_route_init_0(0), QX_INITIALISED);
    EXPECT_EQ(qx_l3_route_shut(0), QX_OK);
    EXPECT_EQ(qx_l3_route_shut(0), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_route_get(0, &one), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_route_delete(0, &one), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_route_show(0, &one, 0), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_nexthop_add(0, &one.nexthop, &index), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_nexthop_delete(0, &one.nexthop), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_nexthop_get(0, 1, &one.nexthop), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_nexthop_show(0, &one.nexthop, 0), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_nexthop_update(0, &one.nexthop), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_nhintf_all_route_delete(0, 1), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_l3_route_add(1, &one), QX_OK) << "another device runs on";
    EXPECT_EQ(qx_l3_route_shut(1), QX_OK);
    EXPECT_EQ(qx_l3_route_init_0(1), QX_OK);
    EXPECT_EQ(qx_l3_route_init_0(0), QX_OK);
    EXPECT_EQ(before, snapshot());
}

TEST_F(l3, subnets_and_port_mtus)
{
    const std::string before = snapshot();
    qx_ip_address_t subnet = ipv4(0xc0a80000, 16);
    EXPECT_EQ(qx_nat_subnet_delete(0, 1, &subnet), QX_NO_SUBNET);
    EXPECT_EQ(qx_nat_subnet_add(0, 1, &subnet), QX_OK);
    EXPECT_EQ(qx_nat_subnet_add(0, 1, &subnet), QX_EXISTS);
    EXPECT_EQ(qx_nat_subnet_add(0, 2, &subnet), QX_OK);
    EXPECT_EQ(qx_nat_subnet_delete(0, 1, &subnet), QX_OK);
    EXPECT_EQ(qx_nat_subnet_delete(0, 1, &subnet), QX_DELETED);
    EXPECT_EQ(qx_nat_subnet_delete(0, 2, &subnet), QX_OK);
    qx_ip_address_t within = ipv4(0xc0a80100, 24);
    EXPECT_EQ(qx_nat_subnet_add(0, 1, &subnet), QX_OK);
    EXPECT_EQ(qx_nat_subnet_add(0, 1, &within), QX_OK) << "subnets may overlap";
    EXPECT_EQ(qx_nat_subnet_delete(0, 1, &within), QX_OK);
    EXPECT_EQ(qx_nat_subnet_delete(0, 1, &subnet), QX_OK);
    EXPECT_EQ(qx_l3_nhintf_all_route_delete(0, 4711), QX_OK) << "any number is an interface";
    subnet.afi = 9;
    EXPECT_EQ(qx_nat_subnet_add(0, 1, &subnet), QX_BAD_ADDRESS);

    unsigned mtu = 0xa5;
    EXPECT_EQ(qx_port_encap_ip_mtu_get(0, 3, 1, &mtu), QX_NO_MTU);
    EXPECT_EQ(qx_port_encap_ip_mtu_add(0, 32, 0, 1500), QX_BAD_PORT);
    EXPECT_EQ(qx_port_encap_ip_mtu_add(0, 3, 2, 1500), QX_BAD_ENCAP);
    EXPECT_EQ(qx_port_encap_ip_mtu_add(0, 3, 1, 67), QX_BAD_MTU);
    EXPECT_EQ(qx_port_encap_ip_mtu_add(0, 3, 1, 9217), QX_BAD_MTU);
    EXPECT_EQ(mtu, 0xa5U);
    EXPECT_EQ(qx_port_encap_ip_mtu_add(0, 3, 1, 1492), QX_OK);
    EXPECT_EQ(qx_port_encap_ip_mtu_add(0, 3, 1, 1492), QX_EXISTS);
    EXPECT_EQ(qx_port_encap_ip_mtu_get(0, 3, 1, &mtu), QX_OK);
    EXPECT_EQ(mtu, 1492U);
    EXPECT_EQ(qx_port_encap_ip_mtu_get(0, 3, 0, &mtu), QX_NO_MTU);
    EXPECT_EQ(qx_port_encap_ip_mtu_delete(0, 3, 1), QX_OK);
    EXPECT_EQ(qx_port_encap_ip_mtu_delete(0, 3, 1), QX_DELETED);
    EXPECT_EQ(before, snapshot());
}
