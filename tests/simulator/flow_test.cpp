// The flow table: slots, ids, what makes two flows the same, and when a flow was last used.
#include "flow_model.h"
#include "simulated.h"

#include <map>
#include <random>
#include <set>
#include <vector>

using namespace simulated;

namespace {

class flows : public devices
{};

// A flow other than the given ones whose hash names this slot.
qx_flow_t flow_for_slot(unsigned slot, unsigned short id, std::uint32_t &seed)
{
    qx_flow_t one = flow(id);
    do
        one.ingress_pkt.natt_4_bytes = ++seed;
    while (flow_slot(one) != slot);
    return one;
}

} // namespace

TEST_F(flows, a_flow_lies_in_the_slot_of_its_hash)
{
    const std::string before = snapshot();
    const qx_flow_t added = flow(7);
    EXPECT_EQ(qx_flow_add(0, const_cast<qx_flow_t *>(&added)), QX_OK);
    auto got = untouched<qx_flow_t>();
    EXPECT_EQ(qx_flow_get(0, static_cast<unsigned short>(flow_slot(added)), &got), QX_OK);
    EXPECT_TRUE(same_bytes(added, got));
    EXPECT_EQ(qx_flow_delete(0, 7), QX_OK);
    EXPECT_EQ(before, snapshot());
}

TEST_F(flows, every_byte_comes_back)
{
    qx_flow_t added = flow(9);
    auto *const bytes = reinterpret_cast<unsigned char *>(&added);
    for (const unsigned padding : {2U, 3U, 21U, 31U, 41U, 182U})
        bytes[padding] = static_cast<unsigned char>(padding);
    added.ingress_pkt.da_ip.ip_addr.addr[3] = 0x12345678;
    added.flag = 0xfedcba98;
    EXPECT_EQ(qx_flow_add(2, &added), QX_OK);
    auto got = untouched<qx_flow_t>();
    EXPECT_EQ(qx_flow_get(2, static_cast<unsigned short>(flow_slot(added)), &got), QX_OK);
    EXPECT_TRUE(same_bytes(added, got));
}

TEST_F(flows, mistakes_have_their_statuses)
{
    qx_flow_t one = flow(1);
    ASSERT_EQ(qx_flow_add(0, &one), QX_OK);
    const std::string before = snapshot();
    EXPECT_EQ(qx_flow_add(0, &one), QX_EXISTS);
    qx_flow_t same_id = flow(2);
    same_id.flow_id = 1;
    EXPECT_EQ(qx_flow_add(0, &same_id), QX_EXISTS);
    qx_flow_t same_key = one;
    same_key.flow_id = 2;
    EXPECT_EQ(qx_flow_add(0, &same_key), QX_EXISTS);
    auto got = untouched<qx_flow_t>();
    EXPECT_EQ(qx_flow_get(0, static_cast<unsigned short>(flow_slot(one) ^ 1), &got), QX_NO_FLOW);
    EXPECT_EQ(qx_flow_get(0, 4096, &got), QX_BAD_INDEX);
    EXPECT_TRUE(is_untouched(got));
    unsigned ticks = 0xa5;
    EXPECT_EQ(qx_flow_get_lastuse_tickcount(0, 2, &ticks), QX_NO_FLOW);
    EXPECT_EQ(ticks, 0xa5U);
    EXPECT_EQ(qx_flow_delete(0, 2), QX_NO_FLOW);
    EXPECT_EQ(qx_flow_delete(1, 1), QX_NO_FLOW);
    EXPECT_EQ(before, snapshot());
    EXPECT_EQ(qx_flow_delete(0, 1), QX_OK);
    EXPECT_EQ(qx_flow_delete(0, 1), QX_DELETED);
}

TEST_F(flows, packets_are_checked)
{
    const std::string before = snapshot();
    qx_flow_t bad = flow(1);
    bad.ingress_pkt.phy_port = 32;
    EXPECT_EQ(qx_flow_add(0, &bad), QX_BAD_PORT);
    bad = flow(1);
    bad.egress_pkt.phy_port = 255;
    EXPECT_EQ(qx_flow_add(0, &bad), QX_BAD_PORT);
    bad = flow(1);
    bad.ingress_pkt.sa_ip.afi = 2;
    EXPECT_EQ(qx_flow_add(0, &bad), QX_BAD_ADDRESS);
    bad = flow(1);
    bad.egress_pkt.da_ip.addr_len = 33;
    EXPECT_EQ(qx_flow_add(0, &bad), QX_BAD_ADDRESS);
    bad = flow(1);
    bad.ingress_pkt.tag[1].vlan_id = 4096;
    EXPECT_EQ(qx_flow_add(0, &bad), QX_BAD_VLAN);
    EXPECT_EQ(before, snapshot());
}

TEST_F(flows, what_is_not_in_the_key_makes_no_difference)
{
    qx_flow_t one = flow(1);
    one.ingress_pkt.pppoe_session_id = 5;
    ASSERT_EQ(qx_flow_add(0, &one), QX_OK);
    qx_flow_t other = one;
    other.flow_id = 2;
    other.ingress_pkt.tos = 9;
    other.ingress_pkt.pppoe_session_id = 6;
    other.ingress_pkt.da_ip.addr_len = 1;
    other.ingress_pkt.da_ip.ip_addr.addr[2] = 1;
    other.egress_pkt.protocol = 1;
    EXPECT_EQ(qx_flow_add(0, &other), QX_EXISTS);
    other.ingress_pkt.pppoe_session_id_valid = 1;
    EXPECT_EQ(qx_flow_add(0, &other), QX_OK);
}

TEST_F(flows, a_taken_slot_sends_a_flow_to_the_next_ones)
{
    constexpr unsigned home = 4090; // so that the slots go round the end
    std::uint32_t seed = 0;
    std::vector<qx_flow_t> added;
    for (unsigned short id = 0; id < 16; ++id) {
        added.push_back(flow_for_slot(home, id, seed));
        ASSERT_EQ(qx_flow_add(0, &added.back()), QX_OK);
        auto got = untouched<qx_flow_t>();
        ASSERT_EQ(qx_flow_get(0, static_cast<unsigned short>((home + id) % 4096), &got), QX_OK);
        EXPECT_TRUE(same_bytes(added.back(), got));
    }
    qx_flow_t last = flow_for_slot(home, 16, seed);
    const std::string before = snapshot();
    EXPECT_EQ(qx_flow_add(0, &last), QX_NO_SLOT);
    EXPECT_EQ(before, snapshot());

    // A gap is used again, and what lies behind it is still known.
    EXPECT_EQ(qx_flow_delete(0, 4), QX_OK);
    qx_flow_t again = added[9];
    again.flow_id = 99;
    EXPECT_EQ(qx_flow_add(0, &again), QX_EXISTS);
    EXPECT_EQ(qx_flow_add(0, &last), QX_OK);
    auto got = untouched<qx_flow_t>();
    EXPECT_EQ(qx_flow_get(0, (home + 4) % 4096, &got), QX_OK);
    EXPECT_EQ(got.flow_id, 16U);
}

TEST_F(flows, the_last_use_moves_on_every_fourth_call)
{
    qx_flow_t one = flow(1);
    ASSERT_EQ(qx_flow_add(3, &one), QX_OK); // tick 1 of the device
    for (unsigned tick = 2; tick < 20; ++tick) {
        unsigned used = 0;
        ASSERT_EQ(qx_flow_get_lastuse_tickcount(3, 1, &used), QX_OK);
        EXPECT_EQ(1 + (tick - 1) / 4 * 4, used) << "at tick " << tick;
    }
    unsigned char suspend = 0;
    EXPECT_EQ(qx_pm_ne_suspend_get(2, &suspend), QX_OK);
    unsigned used = 0;
    ASSERT_EQ(qx_flow_get_lastuse_tickcount(3, 1, &used), QX_OK);
    EXPECT_EQ(used, 17U) << "other devices have clocks of their own";
}

// Random adds, deletes and reads against a map of flows by id.
TEST_F(flows, behave_as_a_plain_table)
{
    std::mt19937 random{1};
    std::map<unsigned short, qx_flow_t> model;
    std::set<unsigned short> gone;
    const auto in_slot = [&](const qx_flow_t &wanted) {
        for (unsigned step = 0; step < 16; ++step) {
            auto got = untouched<qx_flow_t>();
            const auto slot = static_cast<unsigned short>((flow_slot(wanted) + step) % 4096);
            if (qx_flow_get(0, slot, &got) == QX_OK && same_bytes(got, wanted))
                return true;
        }
        return false;
    };
    for (int round = 0; round < 20000; ++round) {
        const auto id = static_cast<unsigned short>(random() % 300);
        qx_flow_t one = flow(id);
        one.life_time = random();
        if (random() % 3 != 0) {
            const unsigned expected = model.count(id) ? QX_EXISTS : QX_OK;
            ASSERT_EQ(expected, qx_flow_add(0, &one));
            if (expected == QX_OK)
                model.emplace(id, one);
            gone.erase(id);
        } else {
            const unsigned expected = model.erase(id)  ? QX_OK
                                      : gone.count(id) ? QX_DELETED
                                                       : QX_NO_FLOW;
            ASSERT_EQ(expected, qx_flow_delete(0, id));
            if (expected == QX_OK)
                gone.insert(id);
        }
        const auto known = model.find(static_cast<unsigned short>(random() % 300));
        if (known != model.end()) {
            ASSERT_TRUE(in_slot(known->second));
        }
    }
    for (const auto &[id, one] : model)
        ASSERT_EQ(qx_flow_delete(0, id), QX_OK);
}

TEST_F(flows, have_packets_of_one_family)
{
    qx_flow_t one = flow(1);
    one.ingress_pkt.da_ip = ipv6({1, 0, 0, 0});
    EXPECT_EQ(qx_flow_add(0, &one), QX_BAD_FAMILY);
    one = flow(1);
    one.egress_pkt.sa_ip = ipv6({1, 0, 0, 0});
    EXPECT_EQ(qx_flow_add(0, &one), QX_BAD_FAMILY);
    one.egress_pkt.da_ip = ipv6({2, 0, 0, 0});
    EXPECT_EQ(qx_flow_add(0, &one), QX_OK) << "a flow may change the family";
}
