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
        ASSERT_EQ(QX_OK, qx_ipsec_init(0));
    }
};

unsigned add_spd(unsigned way, unsigned id)
{
    unsigned handle = 0;
    EXPECT_EQ(QX_OK, qx_ipsec_spd_add(0, way, id, &handle));
    return handle;
}

unsigned add_policy(unsigned spd, unsigned id)
{
    qx_ipsec_policy_t one = policy(id);
    unsigned handle = 0;
    EXPECT_EQ(QX_OK, qx_ipsec_policy_add(0, spd, &one, &handle));
    return handle;
}

unsigned add_sa(unsigned spd, unsigned policy, unsigned spi, unsigned previous, unsigned way)
{
    qx_ipsec_sa_t one = association(spi, way);
    unsigned handle = 0;
    EXPECT_EQ(QX_OK, qx_ipsec_sa_add(0, spd, policy, 1, &one, previous, &handle));
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
    EXPECT_EQ(QX_INITIALISED, qx_ipsec_init(0));
    const std::string before = snapshot();
    qx_ipsec_policy_t one = policy(1);
    qx_ipsec_sa_t sa = association(256, 0);
    unsigned handle = 0xa5;
    EXPECT_EQ(QX_NOT_INITIALISED, qx_ipsec_spd_add(1, 0, 1, &handle));
    EXPECT_EQ(QX_NOT_INITIALISED, qx_ipsec_spd_delete(1, 1));
    EXPECT_EQ(QX_NOT_INITIALISED, qx_ipsec_policy_add(1, 1, &one, &handle));
    EXPECT_EQ(QX_NOT_INITIALISED, qx_ipsec_policy_delete(1, 1, 1));
    EXPECT_EQ(QX_NOT_INITIALISED, qx_ipsec_sa_add(1, 1, 1, 1, &sa, 0, &handle));
    EXPECT_EQ(QX_NOT_INITIALISED, qx_ipsec_sa_delete(1, 1, 1, 1));
    EXPECT_EQ(0xa5U, handle);
    EXPECT_EQ(before, snapshot());
    EXPECT_EQ(QX_OK, qx_ipsec_init(1));
}

TEST_F(ipsec, comes_up_and_goes_down)
{
    const std::string before = snapshot();
    const unsigned spd = add_spd(1, 1);
    const unsigned policy = add_policy(spd, 10);
    const unsigned sa = add_sa(spd, policy, 0x1000, 0, 1);
    qx_tunnel_cfg_t tunnel = ipsec_tunnel(policy);
    unsigned id = 0;
    ASSERT_EQ(QX_OK, qx_tunnel_add(0, &tunnel, &id));
    qx_l3_nexthop_t hop = nexthop(1);
    hop.nhid.nhop_type = 2;
    hop.id.ipsec_said = sa;
    unsigned index = 0;
    ASSERT_EQ(QX_OK, qx_l3_nexthop_add(0, &hop, &index));

    EXPECT_EQ(QX_IN_USE, qx_ipsec_spd_delete(0, spd));
    EXPECT_EQ(QX_IN_USE, qx_ipsec_policy_delete(0, spd, policy));
    EXPECT_EQ(QX_IN_USE, qx_ipsec_sa_delete(0, spd, policy, sa));
    EXPECT_EQ(QX_OK, qx_l3_nexthop_delete(0, &hop));
    EXPECT_EQ(QX_OK, qx_ipsec_sa_delete(0, spd, policy, sa));
    EXPECT_EQ(QX_DELETED, qx_ipsec_sa_delete(0, spd, policy, sa));
    EXPECT_EQ(QX_IN_USE, qx_ipsec_policy_delete(0, spd, policy)) << "the tunnel is bound to it";
    EXPECT_EQ(QX_OK, qx_tunnel_delete(0, &tunnel));
    EXPECT_EQ(QX_OK, qx_ipsec_policy_delete(0, spd, policy));
    EXPECT_EQ(QX_DELETED, qx_ipsec_policy_delete(0, spd, policy));
    EXPECT_EQ(QX_OK, qx_ipsec_spd_delete(0, spd));
    EXPECT_EQ(QX_DELETED, qx_ipsec_spd_delete(0, spd));
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
            ASSERT_EQ(QX_OK, qx_tunnel_add(0, tunnel, &id));
            EXPECT_EQ(QX_IN_USE, qx_ipsec_policy_delete(0, spd, policy));
            EXPECT_EQ(QX_OK, qx_tunnel_delete_by_idx(0, id));
        }
        EXPECT_EQ(QX_OK, qx_ipsec_policy_delete(0, spd, policy));
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
    ASSERT_EQ(QX_OK, qx_ipsec_policy_add(0, out, &record, &bypass));
    const std::string before = state();
    const auto add = [](qx_tunnel_cfg_t cfg, unsigned dir) {
        cfg.dir = dir;
        unsigned id = 0xa5;
        const unsigned status = qx_tunnel_add(0, &cfg, &id);
        EXPECT_EQ(status == QX_OK, id != 0xa5);
        if (status == QX_OK) {
            EXPECT_EQ(QX_OK, qx_tunnel_delete_by_idx(0, id));
        }
        return status;
    };
    EXPECT_EQ(QX_BAD_ACTION, add(ipsec_tunnel(bypass), 1));
    EXPECT_EQ(QX_BAD_ACTION, add(ipsec_tunnel(bypass), 0)) << "the action comes first";
    EXPECT_EQ(QX_BAD_DIRECTION, add(ipsec_tunnel(in_policy), 1));
    EXPECT_EQ(QX_OK, add(ipsec_tunnel(in_policy), 0));
    EXPECT_EQ(QX_OK, add(ipsec_tunnel(in_policy), 2)) << "both directions";
    qx_tunnel_cfg_t cfg = etherip_tunnel(1);
    cfg.tunnel.etherip.ipsec_policy = bypass;
    EXPECT_EQ(QX_BAD_ACTION, add(cfg, 2));
    cfg = gre_tunnel(1);
    cfg.tunnel.gre.overlay_tunnel_egress.enc_policy = in_policy;
    EXPECT_EQ(QX_BAD_DIRECTION, add(cfg, 2)) << "the overlay's direction counts";
    cfg = l2tp_tunnel(1);
    cfg.tunnel.l2tp.ipsec_policy = in_policy;
    EXPECT_EQ(QX_BAD_DIRECTION, add(cfg, 1));
}

TEST_F(ipsec, what_is_deleted_stays_deleted_when_its_parents_are)
{
    const unsigned spd = add_spd(0, 1);
    const unsigned policy = add_policy(spd, 1);
    const unsigned other_spd = add_spd(0, 2);
    const unsigned other = add_policy(other_spd, 1);
    const unsigned sa = add_sa(spd, policy, 256, 0, 0);
    EXPECT_EQ(QX_OK, qx_ipsec_sa_delete(0, spd, policy, sa));
    EXPECT_EQ(QX_DELETED, qx_ipsec_sa_delete(0, spd, policy, sa));
    EXPECT_EQ(QX_NO_SA, qx_ipsec_sa_delete(0, other_spd, other, sa)) << "it was not there";
    EXPECT_EQ(QX_OK, qx_ipsec_policy_delete(0, spd, policy));
    EXPECT_EQ(QX_DELETED, qx_ipsec_sa_delete(0, spd, policy, sa));
    EXPECT_EQ(QX_NO_POLICY, qx_ipsec_policy_delete(0, other_spd, policy)) << "it was not there";
    EXPECT_EQ(QX_OK, qx_ipsec_spd_delete(0, spd));
    EXPECT_EQ(QX_DELETED, qx_ipsec_policy_delete(0, spd, policy));
    EXPECT_EQ(QX_DELETED, qx_ipsec_sa_delete(0, spd, policy, sa));
}

TEST_F(ipsec, a_next_hop_leads_into_outbound_associations)
{
    const unsigned spd = add_spd(0, 1);
    const unsigned sa = add_sa(spd, add_policy(spd, 1), 256, 0, 0);
    qx_l3_nexthop_t hop = nexthop(1);
    hop.nhid.nhop_type = 2;
    hop.id.ipsec_said = sa;
    unsigned index = 0xa5;
    EXPECT_EQ(QX_BAD_DIRECTION, qx_l3_nexthop_add(0, &hop, &index));
    qx_l3_route_t one = route(ipv4(0x0a000000, 8), hop);
    EXPECT_EQ(QX_BAD_DIRECTION, qx_l3_route_add(0, &one));
    EXPECT_EQ(0xa5U, index);
}

TEST_F(ipsec, handles_of_one_kind_are_none_of_another)
{
    const unsigned spd = add_spd(0, 1);
    const unsigned policy = add_policy(spd, 1);
    const unsigned sa = add_sa(spd, policy, 256, 0, 0);
    qx_ipsec_policy_t one = simulated::policy(2);
    unsigned handle = 0;
    EXPECT_EQ(QX_NO_SPD, qx_ipsec_policy_add(0, policy, &one, &handle));
    EXPECT_EQ(QX_NO_POLICY, qx_ipsec_sa_delete(0, spd, sa, sa));
    EXPECT_EQ(QX_NO_SA, qx_ipsec_sa_delete(0, spd, policy, policy));
    ASSERT_EQ(QX_OK, qx_ipsec_init(1));
    EXPECT_EQ(QX_NO_SPD, qx_ipsec_spd_delete(1, spd)) << "another device's handle";
    const unsigned other = add_spd(0, 2);
    EXPECT_EQ(QX_NO_POLICY, qx_ipsec_policy_delete(0, other, policy)) << "another SPD's policy";
}

TEST_F(ipsec, mistakes_have_their_statuses)
{
    const unsigned spd = add_spd(1, 1);
    const unsigned handle = add_policy(spd, 1);
    add_sa(spd, handle, 300, 0, 1);
    const std::string before = snapshot();
    unsigned written = 0xa5;
    EXPECT_EQ(QX_BAD_DIRECTION, qx_ipsec_spd_add(0, 2, 1, &written));
    EXPECT_EQ(QX_EXISTS, qx_ipsec_spd_add(0, 1, 1, &written));

    qx_ipsec_policy_t bad = policy(1);
    EXPECT_EQ(QX_EXISTS, qx_ipsec_policy_add(0, spd, &bad, &written));
    bad = policy(2);
    bad.policy_action = 3;
    EXPECT_EQ(QX_BAD_ACTION, qx_ipsec_policy_add(0, spd, &bad, &written));
    for (const unsigned count : {0U, 5U, 0xffffffffU}) {
        bad = policy(2);
        bad.selector_count = count;
        EXPECT_EQ(QX_BAD_COUNT, qx_ipsec_policy_add(0, spd, &bad, &written));
    }
    bad = policy(2);
    bad.selector_count = 4;
    bad.selector_array[3].src_ip.afi = 5;
    EXPECT_EQ(QX_BAD_ADDRESS, qx_ipsec_policy_add(0, spd, &bad, &written));
    bad.selector_array[3].src_ip = ipv6({1, 0, 0, 0}, 32);
    EXPECT_EQ(QX_BAD_FAMILY, qx_ipsec_policy_add(0, spd, &bad, &written));
    bad.selector_count = 3;
    bad.policy_id = 1;
    EXPECT_EQ(QX_EXISTS, qx_ipsec_policy_add(0, spd, &bad, &written))
        << "the fourth does not count";

    qx_ipsec_sa_t sas[5];
    for (unsigned index = 0; index < 5; ++index)
        sas[index] = association(400 + index, 1);
    const auto add = [&](unsigned char count, unsigned previous) {
        return qx_ipsec_sa_add(0, spd, handle, count, sas, previous, &written);
    };
    EXPECT_EQ(QX_BAD_COUNT, add(0, 0));
    EXPECT_EQ(QX_BAD_COUNT, add(5, 0));
    EXPECT_EQ(QX_BAD_COUNT, add(255, 0));
    EXPECT_EQ(QX_NO_SA, add(1, 1));
    sas[3].spi = 255;
    EXPECT_EQ(QX_BAD_SPI, add(4, 0));
    sas[3].spi = 400;
    EXPECT_EQ(QX_EXISTS, add(4, 0)) << "given twice";
    sas[3].spi = 300;
    EXPECT_EQ(QX_EXISTS, add(4, 0)) << "there already";
    sas[3].sa_dir = 0;
    EXPECT_EQ(QX_BAD_DIRECTION, add(4, 0));
    EXPECT_EQ(0xa5U, written);
    EXPECT_EQ(before, snapshot());

    qx_ipsec_policy_t discard = policy(3);
    discard.policy_action = 1;
    unsigned other = 0;
    ASSERT_EQ(QX_OK, qx_ipsec_policy_add(0, spd, &discard, &other));
    EXPECT_EQ(QX_BAD_ACTION, qx_ipsec_sa_add(0, spd, other, 1, sas, 0, &written));
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
    EXPECT_EQ(QX_NO_SA, qx_ipsec_sa_add(0, spd, other, 1, &one, a, &handle)) << "of another policy";
    EXPECT_EQ(QX_NO_SA, qx_ipsec_sa_delete(0, spd, other, a));
    EXPECT_EQ(QX_OK, qx_ipsec_sa_delete(0, spd, policy, d));
    EXPECT_EQ(QX_OK, qx_ipsec_sa_delete(0, spd, policy, c));
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
    ASSERT_EQ(QX_OK, qx_ipsec_sa_add(0, spd, policy, 4, sas, 0, &handle));
    EXPECT_NE(std::string::npos, snapshot().find("\"spi\": 259"));
    EXPECT_EQ((std::vector<unsigned>{handle}), chain(policy));
    EXPECT_EQ(QX_OK, qx_ipsec_sa_delete(0, spd, policy, handle));
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
            ASSERT_EQ(QX_OK, qx_ipsec_sa_delete(0, spd, policy, model[place]));
            model.erase(model.begin() + place);
        }
        if (round % 20 == 0) {
            ASSERT_EQ(model, chain(policy));
        }
    }
    EXPECT_EQ(model, chain(policy));
}
