// The IPsec database: order of bring-up and tear-down, handles, chains, and what holds what.
#include "simulated.h"

#include <algorithm>
#include <random>
#include <vector>

using namespace simulated;

namespace {

class ipsec : public devices
{
protected:
    void SetUp() override
    {
        devices::SetUp();
        ASSERT_EQ(qx_ipsec_init(0), QX_OK);
    }
};

unsigned add_spd(unsigned way, unsigned id)
{
    unsigned handle = 0;
    EXPECT_EQ(qx_ipsec_spd_add(0, way, id, &handle), QX_OK);
    return handle;
}

unsigned add_policy(unsigned spd, unsigned id)
{
    qx_ipsec_policy_t one = policy(id);
    unsigned handle = 0;
    EXPECT_EQ(qx_ipsec_policy_add(0, spd, &one, &handle), QX_OK);
    return handle;
}

unsigned add_sa(unsigned spd, unsigned policy, unsigned spi, unsigned previous, unsigned way)
{
    qx_ipsec_sa_t one = association(spi, way);
    unsigned handle = 0;
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, policy, 1, &one, previous, &handle), QX_OK);
    return handle;
}

// The chain of a policy, read from a listing of the state.
std::vector<unsigned> chain(unsigned policy)
{
    const std::string listing = state();
    std::vector<unsigned> handles;
    unsigned next = number_in(listing, "\"handle\": " + std::to_string(policy) + ",", "first_sa");
    while (next != 0 && handles.size() < 200) {
        handles.push_back(next);
        next = number_in(listing, "\"handle\": " + std::to_string(next) + ",", "next");
    }
    return handles;
}

} // namespace

TEST_F(ipsec, is_initialised_once_and_first)
{
    EXPECT_EQ(qx_ipsec_init(0), QX_INITIALISED);
    const std::string before = snapshot();
    qx_ipsec_policy_t one = policy(1);
    qx_ipsec_sa_t sa = association(256, 0);
    unsigned handle = 0xa5;
    EXPECT_EQ(qx_ipsec_spd_add(1, 0, 1, &handle), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_ipsec_spd_delete(1, 1), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_ipsec_policy_add(1, 1, &one, &handle), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_ipsec_policy_delete(1, 1, 1), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_ipsec_sa_add(1, 1, 1, 1, &sa, 0, &handle), QX_NOT_INITIALISED);
    EXPECT_EQ(qx_ipsec_sa_delete(1, 1, 1, 1), QX_NOT_INITIALISED);
    EXPECT_EQ(handle, 0xa5U);
    EXPECT_EQ(before, snapshot());
    EXPECT_EQ(qx_ipsec_init(1), QX_OK);
}

TEST_F(ipsec, comes_up_and_goes_down)
{
    const std::string before = snapshot();
    const unsigned spd = add_spd(1, 1);
    const unsigned policy = add_policy(spd, 10);
    const unsigned sa = add_sa(spd, policy, 0x1000, 0, 1);
    qx_tunnel_cfg_t tunnel = ipsec_tunnel(policy);
    unsigned id = 0;
    ASSERT_EQ(qx_tunnel_add(0, &tunnel, &id), QX_OK);
    qx_l3_nexthop_t hop = nexthop(1);
    hop.nhid.nhop_type = 2;
    hop.id.ipsec_said = sa;
    unsigned index = 0;
    ASSERT_EQ(qx_l3_nexthop_add(0, &hop, &index), QX_OK);

    EXPECT_EQ(qx_ipsec_spd_delete(0, spd), QX_IN_USE);
    EXPECT_EQ(qx_ipsec_policy_delete(0, spd, policy), QX_IN_USE);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, sa), QX_IN_USE);
    EXPECT_EQ(qx_l3_nexthop_delete(0, &hop), QX_OK);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, sa), QX_OK);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, sa), QX_DELETED);
    EXPECT_EQ(qx_ipsec_policy_delete(0, spd, policy), QX_IN_USE) << "the tunnel is bound to it";
    EXPECT_EQ(qx_tunnel_delete(0, &tunnel), QX_OK);
    EXPECT_EQ(qx_ipsec_policy_delete(0, spd, policy), QX_OK);
    EXPECT_EQ(qx_ipsec_policy_delete(0, spd, policy), QX_DELETED);
    EXPECT_EQ(qx_ipsec_spd_delete(0, spd), QX_OK);
    EXPECT_EQ(qx_ipsec_spd_delete(0, spd), QX_DELETED);
    EXPECT_EQ(before, snapshot());
}

TEST_F(ipsec, every_kind_of_tunnel_holds_its_policy)
{
    for (const unsigned way : {0U, 1U}) {
        const unsigned spd = add_spd(way, 1);
        const unsigned policy = add_policy(spd, 1);
        qx_tunnel_cfg_t l2tp = l2tp_tunnel(1);
        l2tp.tunnel.l2tp.ipsec_policy = policy;
        qx_tunnel_cfg_t gre = gre_tunnel(1);
        (way == 0 ? gre.tunnel.gre.overlay_tunnel_ingress : gre.tunnel.gre.overlay_tunnel_egress)
            .enc_policy = policy;
        qx_tunnel_cfg_t ipsec = ipsec_tunnel(policy);
        qx_tunnel_cfg_t etherip = etherip_tunnel(1);
        etherip.tunnel.etherip.ipsec_policy = policy;
        for (qx_tunnel_cfg_t *tunnel : {&l2tp, &gre, &ipsec, &etherip}) {
            unsigned id = 0;
            ASSERT_EQ(qx_tunnel_add(0, tunnel, &id), QX_OK);
            EXPECT_EQ(qx_ipsec_policy_delete(0, spd, policy), QX_IN_USE);
            EXPECT_EQ(qx_tunnel_delete_by_idx(0, id), QX_OK);
        }
        EXPECT_EQ(qx_ipsec_policy_delete(0, spd, policy), QX_OK);
    }
}

TEST_F(ipsec, a_tunnels_policy_protects_and_has_its_direction)
{
    const unsigned in = add_spd(0, 1);
    const unsigned out = add_spd(1, 1);
    const unsigned in_policy = add_policy(in, 1);
    unsigned bypass = 0;
    qx_ipsec_policy_t record = simulated::policy(2);
    record.policy_action = 0;
    ASSERT_EQ(qx_ipsec_policy_add(0, out, &record, &bypass), QX_OK);
    const std::string before = state();
    const auto add = [](qx_tunnel_cfg_t cfg, unsigned dir) {
        cfg.dir = dir;
        unsigned id = 0xa5;
        const unsigned status = qx_tunnel_add(0, &cfg, &id);
        EXPECT_EQ(status == QX_OK, id != 0xa5);
        if (status == QX_OK) {
            EXPECT_EQ(qx_tunnel_delete_by_idx(0, id), QX_OK);
        }
        return status;
    };
    EXPECT_EQ(add(ipsec_tunnel(bypass), 1), QX_BAD_ACTION);
    EXPECT_EQ(add(ipsec_tunnel(bypass), 0), QX_BAD_ACTION) << "the action comes first";
    EXPECT_EQ(add(ipsec_tunnel(in_policy), 1), QX_BAD_DIRECTION);
    EXPECT_EQ(add(ipsec_tunnel(in_policy), 0), QX_OK);
    EXPECT_EQ(add(ipsec_tunnel(in_policy), 2), QX_OK) << "both directions";
    qx_tunnel_cfg_t cfg = etherip_tunnel(1);
    cfg.tunnel.etherip.ipsec_policy = bypass;
    EXPECT_EQ(add(cfg, 2), QX_BAD_ACTION);
    cfg = gre_tunnel(1);
    cfg.tunnel.gre.overlay_tunnel_egress.enc_policy = in_policy;
    EXPECT_EQ(add(cfg, 2), QX_BAD_DIRECTION) << "the overlay's direction counts";
    cfg = l2tp_tunnel(1);
    cfg.tunnel.l2tp.ipsec_policy = in_policy;
    EXPECT_EQ(add(cfg, 1), QX_BAD_DIRECTION);
}

TEST_F(ipsec, what_is_deleted_stays_deleted_when_its_parents_are)
{
    const unsigned spd = add_spd(0, 1);
    const unsigned policy = add_policy(spd, 1);
    const unsigned other_spd = add_spd(0, 2);
    const unsigned other = add_policy(other_spd, 1);
    const unsigned sa = add_sa(spd, policy, 256, 0, 0);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, sa), QX_OK);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, sa), QX_DELETED);
    EXPECT_EQ(qx_ipsec_sa_delete(0, other_spd, other, sa), QX_NO_SA) << "it was not there";
    EXPECT_EQ(qx_ipsec_policy_delete(0, spd, policy), QX_OK);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, sa), QX_DELETED);
    EXPECT_EQ(qx_ipsec_policy_delete(0, other_spd, policy), QX_NO_POLICY) << "it was not there";
    EXPECT_EQ(qx_ipsec_spd_delete(0, spd), QX_OK);
    EXPECT_EQ(qx_ipsec_policy_delete(0, spd, policy), QX_DELETED);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, sa), QX_DELETED);
}

TEST_F(ipsec, a_next_hop_leads_into_outbound_associations)
{
    const unsigned spd = add_spd(0, 1);
    const unsigned sa = add_sa(spd, add_policy(spd, 1), 256, 0, 0);
    qx_l3_nexthop_t hop = nexthop(1);
    hop.nhid.nhop_type = 2;
    hop.id.ipsec_said = sa;
    unsigned index = 0xa5;
    EXPECT_EQ(qx_l3_nexthop_add(0, &hop, &index), QX_BAD_DIRECTION);
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), hop);
    EXPECT_EQ(qx_l3_route_add(0, &one), QX_BAD_DIRECTION);
    EXPECT_EQ(index, 0xa5U);
}

TEST_F(ipsec, handles_of_one_kind_are_none_of_another)
{
    const unsigned spd = add_spd(0, 1);
    const unsigned policy = add_policy(spd, 1);
    const unsigned sa = add_sa(spd, policy, 256, 0, 0);
    qx_ipsec_policy_t one = simulated::policy(2);
    unsigned handle = 0;
    EXPECT_EQ(qx_ipsec_policy_add(0, policy, &one, &handle), QX_NO_SPD);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, sa, sa), QX_NO_POLICY);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, policy), QX_NO_SA);
    ASSERT_EQ(qx_ipsec_init(1), QX_OK);
    EXPECT_EQ(qx_ipsec_spd_delete(1, spd), QX_NO_SPD) << "another device's handle";
    const unsigned other = add_spd(0, 2);
    EXPECT_EQ(qx_ipsec_policy_delete(0, other, policy), QX_NO_POLICY) << "another SPD's policy";
}

TEST_F(ipsec, mistakes_have_their_statuses)
{
    const unsigned spd = add_spd(1, 1);
    const unsigned handle = add_policy(spd, 1);
    add_sa(spd, handle, 300, 0, 1);
    const std::string before = snapshot();
    unsigned written = 0xa5;
    EXPECT_EQ(qx_ipsec_spd_add(0, 2, 1, &written), QX_BAD_DIRECTION);
    EXPECT_EQ(qx_ipsec_spd_add(0, 1, 1, &written), QX_EXISTS);

    qx_ipsec_policy_t bad = policy(1);
    EXPECT_EQ(qx_ipsec_policy_add(0, spd, &bad, &written), QX_EXISTS);
    bad = policy(2);
    bad.policy_action = 3;
    EXPECT_EQ(qx_ipsec_policy_add(0, spd, &bad, &written), QX_BAD_ACTION);
    for (const unsigned count : {0U, 5U, 0xffffffffU}) {
        bad = policy(2);
        bad.selector_count = count;
        EXPECT_EQ(qx_ipsec_policy_add(0, spd, &bad, &written), QX_BAD_COUNT);
    }
    bad = policy(2);
    bad.selector_count = 4;
    bad.selector_array[3].src_ip.afi = 5;
    EXPECT_EQ(qx_ipsec_policy_add(0, spd, &bad, &written), QX_BAD_ADDRESS);
    bad.selector_array[3].src_ip = ipv6({1, 0, 0, 0}, 32);
    EXPECT_EQ(qx_ipsec_policy_add(0, spd, &bad, &written), QX_BAD_FAMILY);
    bad.selector_count = 3;
    bad.policy_id = 1;
    EXPECT_EQ(qx_ipsec_policy_add(0, spd, &bad, &written), QX_EXISTS)
        << "the fourth does not count";

    qx_ipsec_sa_t sas[5];
    for (unsigned index = 0; index < 5; ++index)
        sas[index] = association(400 + index, 1);
    const auto add = [&](unsigned char count, unsigned previous) {
        return qx_ipsec_sa_add(0, spd, handle, count, sas, previous, &written);
    };
    EXPECT_EQ(add(0, 0), QX_BAD_COUNT);
    EXPECT_EQ(add(5, 0), QX_BAD_COUNT);
    EXPECT_EQ(add(255, 0), QX_BAD_COUNT);
    EXPECT_EQ(add(1, 1), QX_NO_SA);
    sas[3].spi = 255;
    EXPECT_EQ(add(4, 0), QX_BAD_SPI);
    sas[3].spi = 400;
    EXPECT_EQ(add(4, 0), QX_EXISTS) << "given twice";
    sas[3].spi = 300;
    EXPECT_EQ(add(4, 0), QX_EXISTS) << "there already";
    sas[3].sa_dir = 0;
    EXPECT_EQ(add(4, 0), QX_BAD_DIRECTION);
    EXPECT_EQ(written, 0xa5U);
    EXPECT_EQ(before, snapshot());

    qx_ipsec_policy_t discard = policy(3);
    discard.policy_action = 1;
    unsigned other = 0;
    ASSERT_EQ(qx_ipsec_policy_add(0, spd, &discard, &other), QX_OK);
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, other, 1, sas, 0, &written), QX_BAD_ACTION);
}

TEST_F(ipsec, associations_stand_in_their_chain)
{
    const unsigned spd = add_spd(0, 1);
    const unsigned policy = add_policy(spd, 1);
    const unsigned other = add_policy(spd, 2);
    const unsigned a = add_sa(spd, policy, 256, 0, 0);
    const unsigned b = add_sa(spd, policy, 257, a, 0);
    const unsigned c = add_sa(spd, policy, 258, a, 0);
    const unsigned d = add_sa(spd, policy, 259, 0, 0);
    EXPECT_EQ((std::vector<unsigned>{d, a, c, b}), chain(policy));
    qx_ipsec_sa_t one = association(260, 0);
    unsigned handle = 0;
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, other, 1, &one, a, &handle), QX_NO_SA) << "of another policy";
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, other, a), QX_NO_SA);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, d), QX_OK);
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, c), QX_OK);
    EXPECT_EQ((std::vector<unsigned>{a, b}), chain(policy));
}

TEST_F(ipsec, an_array_is_one_entry)
{
    const unsigned spd = add_spd(0, 1);
    const unsigned policy = add_policy(spd, 1);
    qx_ipsec_sa_t sas[4];
    for (unsigned index = 0; index < 4; ++index)
        sas[index] = association(256 + index, 0);
    unsigned handle = 0;
    ASSERT_EQ(qx_ipsec_sa_add(0, spd, policy, 4, sas, 0, &handle), QX_OK);
    EXPECT_NE(std::string::npos, snapshot().find("\"spi\": 259"));
    EXPECT_EQ((std::vector<unsigned>{handle}), chain(policy));
    EXPECT_EQ(qx_ipsec_sa_delete(0, spd, policy, handle), QX_OK);
    EXPECT_EQ(std::string::npos, snapshot().find("\"spi\": 259"));
}

// Random insertions and deletions against a vector.
TEST_F(ipsec, chains_behave_as_plain_lists)
{
    std::mt19937 random{2};
    const unsigned spd = add_spd(0, 1);
    const unsigned policy = add_policy(spd, 1);
    std::vector<unsigned> model;
    for (unsigned round = 0; round < 400; ++round) {
        if (model.size() < 100 && random() % 3 != 0) {
            const unsigned place = random() % (model.size() + 1); // 0: in front
            const unsigned previous = place == 0 ? 0 : model[place - 1];
            const unsigned handle = add_sa(spd, policy, 1000 + round, previous, 0);
            model.insert(model.begin() + place, handle);
        } else if (!model.empty()) {
            const unsigned place = random() % model.size();
            ASSERT_EQ(qx_ipsec_sa_delete(0, spd, policy, model[place]), QX_OK);
            model.erase(model.begin() + place);
        }
        if (round % 20 == 0) {
            ASSERT_EQ(model, chain(policy));
        }
    }
    EXPECT_EQ(model, chain(policy));
}
