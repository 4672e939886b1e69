// Rules, RTP translations and IP translations with the flows that belong to them.
#include "flow_model.h"
#include "simulated.h"

using namespace simulated;

namespace {

class rules : public devices
{};
class rtps : public devices
{};
class translations : public devices
{};

unsigned add_rtp(unsigned short device, std::uint32_t ssrc, unsigned short flow_id)
{
    qx_rtp_cfg_t cfg = rtp(ssrc);
    qx_flow_t one = flow(flow_id);
    unsigned id = 0;
    EXPECT_EQ(qx_rtp_translate_add(device, &cfg, &one, &id), QX_OK);
    return id;
}

unsigned add_translation(unsigned short device, unsigned short port_set)
{
    qx_ip_translate_cfg_t cfg = translation(port_set);
    unsigned id = 0;
    EXPECT_EQ(qx_ip_translate_add(device, &cfg, &id), QX_OK);
    return id;
}

} // namespace

TEST_F(rules, a_rule_lies_in_the_slot_it_names)
{
    const std::string before = snapshot();
    qx_rule_hash_t added = rule(1023, 5);
    added.fwd_rslt_idx = 0xfedcba98;
    reinterpret_cast<unsigned char *>(&added)[122] = 0x77; // padding
    EXPECT_EQ(qx_rule_hash_add(0, &added), QX_OK);
    auto got = untouched<qx_rule_hash_t>();
    EXPECT_EQ(qx_rule_hash_get_by_hash_index(0, 1023, &got), QX_OK);
    EXPECT_TRUE(same_bytes(added, got));
    EXPECT_EQ(qx_rule_hash_delete_by_hash_index(0, 1023), QX_OK);
    EXPECT_EQ(qx_rule_hash_delete_by_hash_index(0, 1023), QX_DELETED);
    EXPECT_EQ(qx_rule_hash_add(0, &added), QX_OK);
    EXPECT_EQ(qx_rule_hash_delete_by_hash_index(0, 1023), QX_OK);
    EXPECT_EQ(before, snapshot());
}

TEST_F(rules, mistakes_have_their_statuses)
{
    qx_rule_hash_t added = rule(4, 5);
    ASSERT_EQ(qx_rule_hash_add(0, &added), QX_OK);
    const std::string before = snapshot();
    qx_rule_hash_t other = rule(4, 6);
    EXPECT_EQ(qx_rule_hash_add(0, &other), QX_EXISTS) << "the slot is taken";
    other = added;
    other.hash_index = 5;
    reinterpret_cast<unsigned char *>(&other)[8 + 71] = 1; // padding of the key
    EXPECT_EQ(qx_rule_hash_add(0, &other), QX_EXISTS) << "the key is there";
    other = rule(1024, 6);
    EXPECT_EQ(qx_rule_hash_add(0, &other), QX_BAD_INDEX);
    other = rule(6, 4096);
    EXPECT_EQ(qx_rule_hash_add(0, &other), QX_BAD_VLAN);
    EXPECT_EQ(qx_rule_hash_delete_by_hash_index(0, 5), QX_NO_RULE);
    EXPECT_EQ(qx_rule_hash_delete_by_hash_index(0, 1024), QX_BAD_INDEX);
    auto got = untouched<qx_rule_hash_t>();
    EXPECT_EQ(qx_rule_hash_get_by_hash_index(0, 5, &got), QX_NO_RULE);
    EXPECT_EQ(qx_rule_hash_get_by_hash_index(0, 65535, &got), QX_BAD_INDEX);
    EXPECT_TRUE(is_untouched(got));
    EXPECT_EQ(before, snapshot());
}

// ------------------------------------------------------------------------------------------ RTP

TEST_F(rtps, a_translation_brings_its_flow_and_takes_it_along)
{
    const std::string before = snapshot();
    qx_rtp_cfg_t cfg = rtp(1);
    const unsigned id = add_rtp(0, 1, 8);
    auto got = untouched<qx_flow_t>();
    EXPECT_EQ(qx_flow_get(0, static_cast<unsigned short>(flow_slot(flow(8))), &got), QX_OK);
    EXPECT_TRUE(same_bytes(flow(8), got));
    EXPECT_EQ(qx_flow_delete(0, 8), QX_IN_USE);
    EXPECT_EQ(qx_rtp_translate_delete(0, &cfg), QX_OK);
    EXPECT_EQ(qx_flow_delete(0, 8), QX_DELETED);
    EXPECT_EQ(qx_rtp_translate_delete_by_id(0, id), QX_DELETED);
    EXPECT_EQ(qx_rtp_translate_delete(0, &cfg), QX_DELETED);
    EXPECT_EQ(before, snapshot());
}

TEST_F(rtps, ids_are_apart_on_all_devices)
{
    unsigned ids[4] = {};
    for (unsigned short device = 0; device < 4; ++device) {
        ids[device] = add_rtp(device, 1, 8);
        for (unsigned short earlier = 0; earlier < device; ++earlier)
            EXPECT_NE(ids[earlier], ids[device]);
    }
    EXPECT_EQ(qx_rtp_translate_delete_by_id(1, ids[0]), QX_NO_RTP);
    EXPECT_EQ(qx_rtp_translate_delete_by_id(0, ids[0]), QX_OK);
    auto stats = untouched<qx_rtp_stats_t>();
    EXPECT_EQ(qx_rtp_statistics_get(ids[0], &stats), QX_NO_RTP);
    EXPECT_TRUE(is_untouched(stats));
    EXPECT_EQ(qx_rtp_statistics_get(ids[3], &stats), QX_OK);
}

TEST_F(rtps, an_id_is_not_given_out_again_at_once)
{
    const unsigned first = add_rtp(0, 1, 8);
    EXPECT_EQ(qx_rtp_translate_delete_by_id(0, first), QX_OK);
    EXPECT_NE(first, add_rtp(0, 1, 8));
}

TEST_F(rtps, counters_move_one_packet_a_tick)
{
    const unsigned id = add_rtp(2, 1, 8); // tick 1 of the device
    auto stats = untouched<qx_rtp_stats_t>();
    EXPECT_EQ(qx_rtp_statistics_get(id, &stats), QX_OK);
    EXPECT_EQ(stats.available, 1U);
    EXPECT_EQ(stats.pkt_cnt, 1U);
    EXPECT_EQ(stats.byte_cnt, 172U);
    EXPECT_EQ(stats.seq_num, 101U);
    EXPECT_EQ(stats.timestamp, 1160U);
    unsigned char suspend = 0;
    EXPECT_EQ(qx_pm_ne_suspend_get(2, &suspend), QX_OK);
    EXPECT_EQ(qx_rtp_statistics_get(id, &stats), QX_OK);
    EXPECT_EQ(stats.pkt_cnt, 3U);
    EXPECT_EQ(stats.byte_cnt, 516U);
    EXPECT_EQ(stats.seq_num, 103U);
    EXPECT_EQ(stats.timestamp, 1480U);
}

TEST_F(rtps, mistakes_have_their_statuses)
{
    add_rtp(0, 1, 8);
    const std::string before = snapshot();
    qx_rtp_cfg_t cfg = rtp(1);
    qx_flow_t one = flow(9);
    unsigned id = 0xa5;
    EXPECT_EQ(qx_rtp_translate_add(0, &cfg, &one, &id), QX_EXISTS);
    cfg = rtp(2);
    one = flow(8);
    EXPECT_EQ(qx_rtp_translate_add(0, &cfg, &one, &id), QX_EXISTS) << "the flow is there";
    one.ingress_pkt.phy_port = 40;
    EXPECT_EQ(qx_rtp_translate_add(0, &cfg, &one, &id), QX_BAD_PORT);
    EXPECT_EQ(qx_rtp_translate_delete(0, &cfg), QX_NO_RTP);
    EXPECT_EQ(id, 0xa5U);
    auto stats = untouched<qx_rtp_stats_t>();
    EXPECT_EQ(qx_rtp_statistics_get(0, &stats), QX_NO_RTP);
    EXPECT_EQ(qx_rtp_statistics_get(0xffffffff, &stats), QX_NO_RTP);
    const unsigned ticks = number_in(state(), "\"device\": 0", "ticks");
    EXPECT_EQ(qx_rtp_statistics_get(0, nullptr), QX_NULL_POINTER);
    EXPECT_EQ(qx_rtp_statistics_get(1, nullptr), QX_NULL_POINTER);
    EXPECT_EQ(ticks, number_in(state(), "\"device\": 0", "ticks"));
    EXPECT_EQ(before, snapshot());
}

// -------------------------------------------------------------------------------- IP translation

TEST_F(translations, bring_up_and_tear_down)
{
    const std::string before = snapshot();
    qx_ip_translate_cfg_t cfg = translation(1);
    reinterpret_cast<unsigned char *>(&cfg)[17] = 9; // padding
    unsigned id = 0;
    ASSERT_EQ(qx_ip_translate_add(0, &cfg, &id), QX_OK);
    auto got = untouched<qx_ip_translate_cfg_t>();
    EXPECT_EQ(qx_ip_translate_get(0, id, &got), QX_OK);
    EXPECT_TRUE(same_bytes(cfg, got));
    qx_flow_t one = flow(1);
    qx_flow_t two = flow(2);
    EXPECT_EQ(qx_ip_translate_flow_add(0, id, &one), QX_OK);
    EXPECT_EQ(qx_ip_translate_flow_add(0, id, &two), QX_OK);
    EXPECT_EQ(qx_flow_delete(0, 1), QX_IN_USE);
    EXPECT_EQ(qx_ip_translate_del(0, id), QX_IN_USE);
    EXPECT_EQ(qx_ip_translate_flow_del(0, id, &one), QX_OK);
    EXPECT_EQ(qx_ip_translate_flow_del(0, id, &one), QX_DELETED);
    EXPECT_EQ(qx_ip_translate_del(0, id), QX_IN_USE);
    EXPECT_EQ(qx_ip_translate_flow_del(0, id, &two), QX_OK);
    EXPECT_EQ(qx_ip_translate_del(0, id), QX_OK);
    EXPECT_EQ(qx_ip_translate_del(0, id), QX_DELETED);
    EXPECT_EQ(qx_ip_translate_flow_del(0, id, &two), QX_DELETED);
    EXPECT_EQ(before, snapshot());
}

// Flows of one hash slot: what is remembered of a deleted flow does not depend on its slot.
TEST_F(translations, a_deleted_flow_stays_deleted_when_another_takes_its_slot)
{
    unsigned short second = 2;
    while (flow_slot(flow(second)) != flow_slot(flow(1)))
        ++second;
    const unsigned id = add_translation(0, 1);
    qx_flow_t one = flow(1);
    qx_flow_t other = flow(second);
    ASSERT_EQ(qx_ip_translate_flow_add(0, id, &one), QX_OK);
    ASSERT_EQ(qx_ip_translate_flow_del(0, id, &one), QX_OK);
    ASSERT_EQ(qx_ip_translate_flow_add(0, id, &other), QX_OK);
    EXPECT_EQ(qx_ip_translate_flow_del(0, id, &one), QX_DELETED);
}

TEST_F(translations, mistakes_have_their_statuses)
{
    const unsigned id = add_translation(0, 1);
    const unsigned other_id = add_translation(0, 2);
    qx_flow_t bound = flow(1);
    ASSERT_EQ(qx_ip_translate_flow_add(0, id, &bound), QX_OK);
    qx_flow_t free = flow(2);
    ASSERT_EQ(qx_flow_add(0, &free), QX_OK);
    const std::string before = snapshot();

    unsigned written = 0xa5;
    qx_ip_translate_cfg_t cfg = translation(1);
    EXPECT_EQ(qx_ip_translate_add(0, &cfg, &written), QX_EXISTS);
    reinterpret_cast<unsigned char *>(&cfg)[17] = 9; // padding
    EXPECT_EQ(qx_ip_translate_add(0, &cfg, &written), QX_EXISTS);
    cfg = zeroed<qx_ip_translate_cfg_t>();
    EXPECT_EQ(qx_ip_translate_add(0, &cfg, &written), QX_BAD_FAMILY);
    cfg = translation(3);
    cfg.v6_pkt.da_ip = ipv4(1);
    EXPECT_EQ(qx_ip_translate_add(0, &cfg, &written), QX_BAD_FAMILY);
    cfg.translate_type = 4;
    EXPECT_EQ(qx_ip_translate_add(0, &cfg, &written), QX_BAD_TYPE);
    cfg = translation(3);
    cfg.port_set_id_length = 13;
    EXPECT_EQ(qx_ip_translate_add(0, &cfg, &written), QX_BAD_PORT_SET);
    cfg.port_set_id_length = 65535;
    cfg.port_set_id_offset = 65535;
    EXPECT_EQ(qx_ip_translate_add(0, &cfg, &written), QX_BAD_PORT_SET);
    EXPECT_EQ(written, 0xa5U);
    auto got = untouched<qx_ip_translate_cfg_t>();
    EXPECT_EQ(qx_ip_translate_get(0, 999, &got), QX_NO_TRANSLATION);
    EXPECT_EQ(qx_ip_translate_get(1, id, &got), QX_NO_TRANSLATION);
    EXPECT_TRUE(is_untouched(got));
    EXPECT_EQ(qx_ip_translate_flow_add(0, 999, &bound), QX_NO_TRANSLATION);
    EXPECT_EQ(qx_ip_translate_flow_add(0, other_id, &bound), QX_EXISTS);
    EXPECT_EQ(qx_ip_translate_flow_del(0, other_id, &bound), QX_NO_FLOW) << "another's flow";
    EXPECT_EQ(qx_ip_translate_flow_del(0, id, &free), QX_NO_FLOW) << "nobody's flow";
    EXPECT_EQ(before, snapshot());
}
