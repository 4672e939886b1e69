// Every table filled to its capacity, refused there, and usable again after one entry went. Then
// all of it is taken away and nothing is left.
#include "numbers.h"
#include "simulated.h"

#include <functional>
#include <vector>

using namespace simulated;
using qxsim::default_size;
using qxsim::sized;

namespace {

class capacity : public devices
{
protected:
    /// Fills a table by `add(n)`, empties it by `remove(n)`; n counts from 0.
    static void fill(unsigned capacity, const std::function<unsigned(unsigned)> &add,
                     const std::function<unsigned(unsigned)> &remove)
    {
        const std::string before = snapshot();
        for (unsigned number = 0; number < capacity; ++number)
            ASSERT_EQ(add(number), QX_OK) << "entry " << number;
        const std::string full = snapshot();
        ASSERT_EQ(add(capacity), QX_TABLE_FULL);
        ASSERT_EQ(full, snapshot());
        ASSERT_EQ(remove(capacity / 2), QX_OK);
        ASSERT_EQ(add(capacity), QX_OK);
        ASSERT_EQ(add(capacity + 1), QX_TABLE_FULL);
        for (unsigned number = 0; number <= capacity; ++number) {
            if (number != capacity / 2) {
                ASSERT_EQ(remove(number), QX_OK) << "entry " << number;
            }
        }
        EXPECT_EQ(before, snapshot());
    }
};

unsigned short narrow(unsigned number)
{
    return static_cast<unsigned short>(number);
}

} // namespace

TEST_F(capacity, of_flows)
{
    const auto add = [](unsigned number) {
        qx_flow_t one = flow(narrow(number));
        return qx_flow_add(0, &one);
    };
    fill(default_size(sized::flows), add,
         [](unsigned number) { return qx_flow_delete(0, narrow(number)); });
}

TEST_F(capacity, of_rules)
{
    const auto add = [](unsigned number) {
        qx_rule_hash_t one = rule(narrow(number), 1);
        return qx_rule_hash_add(0, &one);
    };
    const auto remove = [](unsigned number) {
        return qx_rule_hash_delete_by_hash_index(0, narrow(number));
    };
    fill(default_size(sized::rules), add, remove);
}

TEST_F(capacity, of_translations)
{
    const auto add_rtp = [](unsigned number) {
        qx_rtp_cfg_t cfg = rtp(number);
        qx_flow_t one = flow(narrow(number));
        unsigned id = 0;
        return qx_rtp_translate_add(0, &cfg, &one, &id);
    };
    const auto remove_rtp = [](unsigned number) {
        qx_rtp_cfg_t cfg = rtp(number);
        return qx_rtp_translate_delete(0, &cfg);
    };
    fill(default_size(sized::rtp_translations), add_rtp, remove_rtp);

    std::vector<unsigned> ids(100);
    const auto add = [&](unsigned number) {
        qx_ip_translate_cfg_t cfg = translation(narrow(number));
        return qx_ip_translate_add(0, &cfg, &ids[number]);
    };
    fill(default_size(sized::ip_translations), add,
         [&](unsigned number) { return qx_ip_translate_del(0, ids[number]); });
}

TEST_F(capacity, of_routes_and_next_hops)
{
    const auto with = [](unsigned number, unsigned hop) {
        return route(ipv4(number << 8, 24), nexthop(hop));
    };
    const auto remove = [&](unsigned number) {
        qx_l3_route_t one = with(number, 0);
        return qx_l3_route_delete(0, &one);
    };
    fill(
        default_size(sized::routes),
        [&](unsigned number) {
            qx_l3_route_t one = with(number, 0);
            return qx_l3_route_add(0, &one);
        },
        remove);
    fill(
        default_size(sized::nexthops),
        [&](unsigned number) {
            qx_l3_route_t one = with(number, number);
            return qx_l3_route_add(0, &one);
        },
        remove);
    fill(
        default_size(sized::nexthops),
        [](unsigned number) {
            qx_l3_nexthop_t one = nexthop(number);
            unsigned index = 0;
            return qx_l3_nexthop_add(0, &one, &index);
        },
        [](unsigned number) {
            qx_l3_nexthop_t one = nexthop(number);
            return qx_l3_nexthop_delete(0, &one);
        });
}

TEST_F(capacity, of_subnets)
{
    const auto add = [](unsigned number) {
        qx_ip_address_t one = ipv4(number << 8, 24);
        return qx_nat_subnet_add(0, 1, &one);
    };
    fill(default_size(sized::nat_subnets), add, [](unsigned number) {
        qx_ip_address_t one = ipv4(number << 8, 24);
        return qx_nat_subnet_delete(0, 1, &one);
    });
}

TEST_F(capacity, of_port_mtus_is_every_port_and_encapsulation)
{
    const std::string before = snapshot();
    for (unsigned short port = 0; port < default_size(sized::ports); ++port)
        for (unsigned encap = 0; encap < 2; ++encap)
            ASSERT_EQ(qx_port_encap_ip_mtu_add(0, port, encap, 1500), QX_OK);
    for (unsigned short port = 0; port < default_size(sized::ports); ++port)
        for (unsigned encap = 0; encap < 2; ++encap)
            ASSERT_EQ(qx_port_encap_ip_mtu_delete(0, port, encap), QX_OK);
    EXPECT_EQ(before, snapshot());
}

TEST_F(capacity, of_tunnels_and_what_they_carry)
{
    std::vector<unsigned> ids(100);
    fill(
        default_size(sized::tunnels),
        [&](unsigned number) {
            qx_tunnel_cfg_t one = gre_tunnel(number);
            return qx_tunnel_add(0, &one, &ids[number]);
        },
        [&](unsigned number) { return qx_tunnel_delete_by_idx(0, ids[number]); });

    qx_tunnel_cfg_t cfg = l2tp_tunnel(1);
    unsigned tunnel = 0;
    ASSERT_EQ(qx_tunnel_add(0, &cfg, &tunnel), QX_OK);
    fill(
        default_size(sized::l2tp_sessions),
        [&](unsigned number) { return qx_l2tp_session_add(0, tunnel, narrow(number + 1)); },
        [&](unsigned number) { return qx_l2tp_session_delete(0, tunnel, narrow(number + 1)); });
    ASSERT_EQ(qx_l2tp_session_add(0, tunnel, 1), QX_OK);
    fill(
        default_size(sized::l2tp_prefixes),
        [&](unsigned number) {
            qx_ip_address_t one = ipv6({number, 0, 0, 0}, 32);
            return qx_ipv6_over_l2tp_add(0, tunnel, 1, &one);
        },
        [&](unsigned number) {
            qx_ip_address_t one = ipv6({number, 0, 0, 0}, 32);
            return qx_ipv6_over_l2tp_delete(0, tunnel, 1, &one);
        });
}

TEST_F(capacity, of_ipsec)
{
    ASSERT_EQ(qx_ipsec_init(0), QX_OK);
    std::vector<unsigned> handles(200);
    fill(
        default_size(sized::spds),
        [&](unsigned number) { return qx_ipsec_spd_add(0, 0, number, &handles[number]); },
        [&](unsigned number) { return qx_ipsec_spd_delete(0, handles[number]); });
    unsigned spd = 0;
    ASSERT_EQ(qx_ipsec_spd_add(0, 0, 1, &spd), QX_OK);
    fill(
        default_size(sized::policies),
        [&](unsigned number) {
            qx_ipsec_policy_t one = policy(number);
            return qx_ipsec_policy_add(0, spd, &one, &handles[number]);
        },
        [&](unsigned number) { return qx_ipsec_policy_delete(0, spd, handles[number]); });
    unsigned parent = 0;
    qx_ipsec_policy_t one = policy(1);
    ASSERT_EQ(qx_ipsec_policy_add(0, spd, &one, &parent), QX_OK);
    fill(
        default_size(sized::associations),
        [&](unsigned number) {
            qx_ipsec_sa_t sa = association(256 + number, 0);
            return qx_ipsec_sa_add(0, spd, parent, 1, &sa, 0, &handles[number]);
        },
        [&](unsigned number) { return qx_ipsec_sa_delete(0, spd, parent, handles[number]); });
}

TEST_F(capacity, of_pptp_and_pppoe)
{
    fill(
        default_size(sized::pptp_sessions),
        [](unsigned number) {
            qx_pptp_sa_t one = pptp(narrow(number + 1), 0);
            return qx_pptp_session_add(0, &one);
        },
        [](unsigned number) { return qx_pptp_session_delete(0, narrow(number + 1), 0); });
    fill(
        default_size(sized::pppoe_ports),
        [](unsigned number) { return qx_pppoe_port_add(0, 1, narrow(number)); },
        [](unsigned number) { return qx_pppoe_port_delete(0, narrow(number)); });
}
