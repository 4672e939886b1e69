// Snapshots that tell configurations and nothing else, and devices that are saved and restored.
#include "simulated.h"

#include "records/sha256.h"

#include <fstream>
#include <functional>
#include <sys/stat.h>
#include <vector>

using namespace simulated;

namespace {

class snapshots : public devices
{};
class saved : public devices
{
protected:
    void TearDown() override { order(""); }

    const std::string file_ = folder() + "/saved";

    // What is said on stderr when the file is to be restored.
    std::string restore(const std::string &name, unsigned status = QX_BAD_SWITCH)
    {
        testing::internal::CaptureStderr();
        order("restore " + name + "\n", status);
        const std::string said = testing::internal::GetCapturedStderr();
        order("");
        return said;
    }
};

unsigned cell;

// One step of a configuration; steps of a list may be made in any order.
using steps = std::vector<std::function<void()>>;

void in_order(const steps &all)
{
    for (const auto &step : all)
        step();
}

void backwards(const steps &all)
{
    for (auto step = all.rbegin(); step != all.rend(); ++step)
        (*step)();
}

void add_tunnel(qx_tunnel_cfg_t cfg)
{
    EXPECT_EQ(qx_tunnel_add(0, &cfg, &cell), QX_OK);
}

// A part of the configuration for which the order does not matter, in one that does.
void add_gateway(unsigned number)
{
    unsigned spd = 0;
    unsigned handle = 0;
    EXPECT_EQ(qx_ipsec_spd_add(0, number & 1, number, &spd), QX_OK);
    qx_ipsec_policy_t rule = policy(number);
    EXPECT_EQ(qx_ipsec_policy_add(0, spd, &rule, &handle), QX_OK);
    qx_ipsec_sa_t sa = association(1000 + number, number & 1);
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, handle, 1, &sa, 0, &cell), QX_OK);
    unsigned tunnel = 0;
    qx_tunnel_cfg_t cfg = ipsec_tunnel(handle);
    EXPECT_EQ(qx_tunnel_add(0, &cfg, &tunnel), QX_OK);
    qx_tunnel_cfg_t carrier = l2tp_tunnel(static_cast<unsigned short>(number));
    carrier.tunnel.l2tp.ipsec_policy = handle;
    EXPECT_EQ(qx_tunnel_add(0, &carrier, &tunnel), QX_OK);
    EXPECT_EQ(qx_l2tp_session_add(0, tunnel, 7), QX_OK);
    qx_ip_address_t prefix = ipv6({0x20010db8, number, 0, 0}, 64);
    EXPECT_EQ(qx_ipv6_over_l2tp_add(0, tunnel, 7, &prefix), QX_OK);
    qx_l3_nexthop_t through = nexthop(number);
    through.nhid.nhop_type = 1;
    through.id.tunnel_id = tunnel;
    unsigned index = 0;
    EXPECT_EQ(qx_l3_nexthop_add(0, &through, &index), QX_OK);
    qx_tunnel_cfg_t outer = gre_tunnel(number);
    outer.nexthop_id = index;
    add_tunnel(outer);
    qx_rtp_cfg_t stream = rtp(number);
    qx_flow_t one = flow(static_cast<unsigned short>(number));
    EXPECT_EQ(qx_rtp_translate_add(0, &stream, &one, &cell), QX_OK);
    qx_ip_translate_cfg_t settings = translation(static_cast<unsigned short>(number));
    EXPECT_EQ(qx_ip_translate_add(0, &settings, &cell), QX_OK);
    one = flow(static_cast<unsigned short>(100 + number));
    EXPECT_EQ(qx_ip_translate_flow_add(0, cell, &one), QX_OK);
}

steps gateways()
{
    steps all;
    for (const unsigned number : {1U, 2U, 3U, 4U})
        all.push_back([number] { add_gateway(number); });
    // Two flows of one hash slot.
    for (const unsigned short id : {500, 501})
        all.push_back([id] {
            qx_flow_t one = flow(id);
            EXPECT_EQ(qx_flow_add(0, &one), QX_OK);
        });
    return all;
}

} // namespace

TEST_F(snapshots, do_not_tell_the_order_of_adding)
{
    ASSERT_EQ(qx_ipsec_init(0), QX_OK);
    in_order(gateways());
    const std::string text = snapshot();
    const std::string ids = state();
    order("reset\n");
    ASSERT_EQ(qx_ipsec_init(0), QX_OK);
    add_tunnel(gre_tunnel(99));
    qx_tunnel_cfg_t gone = gre_tunnel(99);
    ASSERT_EQ(qx_tunnel_delete(0, &gone), QX_OK); // the other ids begin with 2
    backwards(gateways());
    EXPECT_EQ(text, snapshot());
    EXPECT_NE(ids, state()) << "the state has the device's ids";
    EXPECT_NE(std::string::npos, text.find("\"ip_translations\": [\n        {\"id\": 1,"));
    EXPECT_EQ(std::string::npos, text.find("\"slot\""));
}

TEST_F(snapshots, do_not_tell_what_does_not_count)
{
    const auto text_of = [](const qx_l3_route_t &one, qx_tunnel_cfg_t cfg, qx_pptp_sa_t session) {
        order("reset\n");
        qx_l3_route_t copy = one;
        EXPECT_EQ(qx_l3_route_add(0, &copy), QX_OK);
        add_tunnel(cfg);
        EXPECT_EQ(qx_pptp_session_add(0, &session), QX_OK);
        return snapshot();
    };
    qx_l3_route_t one = route(ipv4(0x0a010203, 16), nexthop(1));
    qx_tunnel_cfg_t cfg = gre_tunnel(1);
    qx_pptp_sa_t session = pptp(1, 0);
    const std::string text = text_of(one, cfg, session);
    one.prefix = ipv4(0x0a01ffff, 16);
    one.prefix.ip_addr.addr[3] = 5;
    one.nexthop.encap.port_encap.port_encap.pppoe.pppoe_session_id = 3; // another reading
    cfg.tunnel.etherip.flow_label = 5;
    cfg.src_addr.ip_addr.addr[1] = 5;
    session.key[8] = 1; // keylen is 8
    EXPECT_EQ(text, text_of(one, cfg, session));
    session.key[7] ^= 1;
    EXPECT_NE(text, text_of(one, cfg, session)) << "another key";
}

TEST_F(snapshots, tell_keys_by_a_fingerprint)
{
    qx_pptp_sa_t session = pptp(1, 0);
    std::memset(session.key, 0, sizeof session.key);
    std::memset(session.key, 'a', 3);
    ASSERT_EQ(qx_pptp_session_add(0, &session), QX_OK);
    // printf 'aaa\0\0\0\0\0\0\0\0\0\0\0\0\0' | sha256sum
    EXPECT_NE(std::string::npos, snapshot().find("\"key\": \"16 bytes, 3c09f5e34f11f842\""))
        << snapshot();
}

TEST(sha256, has_the_digests_of_the_standard)
{
    const auto hex = [](const std::string &text) {
        std::string digits;
        for (const std::uint8_t byte : qxsh::sha256(text.data(), text.size())) {
            char pair[3];
            std::snprintf(pair, sizeof pair, "%02x", unsigned{byte});
            digits += pair;
        }
        return digits;
    };
    EXPECT_EQ(hex(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(hex("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(hex("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(hex(std::string(1000000, 'a')),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST_F(saved, devices_come_back_with_their_ids_clocks_and_memories)
{
    ASSERT_EQ(qx_ipsec_init(0), QX_OK);
    in_order(gateways());
    ASSERT_EQ(qx_flow_delete(0, 500), QX_OK);
    ASSERT_EQ(qx_pm_usb_state_set(3, 1, 2), QX_OK);
    ASSERT_EQ(qx_qos_dscp_map_set(2, 31, 63, 1), QX_OK);
    ASSERT_EQ(qx_l3_route_shut(1), QX_OK);
    const auto devices_of = [](const std::string &text) {
        return text.substr(text.find("activity"));
    };
    order("save " + file_ + "\n");
    const std::string before = devices_of(state());
    struct stat about
    {};
    ASSERT_EQ(stat(file_.c_str(), &about), 0);
    EXPECT_EQ(about.st_mode & 07777U, 0600U);
    order("reset\n");
    add_tunnel(gre_tunnel(3));
    EXPECT_EQ(restore(file_, QX_BAD_DEVICE), "");
    EXPECT_EQ(before, devices_of(state()));
    EXPECT_EQ(qx_flow_delete(0, 500), QX_DELETED);
    const unsigned tunnel = cell;
    add_tunnel(gre_tunnel(77));
    EXPECT_LT(tunnel, cell) << "ids count on";
    EXPECT_EQ(qx_flow_delete(0, 501), QX_OK);
}

TEST_F(saved, files_that_cannot_be_restored_are_told_and_change_nothing)
{
    add_tunnel(gre_tunnel(1));
    order("save " + file_ + "\nsnapshot " + folder() + "/listing\n");
    const std::string good = file_text(file_);
    const std::string before = state();
    const auto said_of = [&](const std::string &text) {
        std::ofstream{folder() + "/other"} << text;
        return restore(folder() + "/other");
    };
    EXPECT_NE(std::string::npos, restore(folder() + "/listing").find("this is a listing"));
    EXPECT_NE(std::string::npos, restore(folder() + "/none").find("cannot restore "));
    EXPECT_NE(std::string::npos, restore(folder()).find("not a regular file"));
    EXPECT_NE(std::string::npos, said_of("").find("not a file that save has written"));
    for (const std::size_t size : {good.size() - 1, good.size() / 2, std::size_t{17}})
        EXPECT_NE(std::string::npos, said_of(good.substr(0, size)).find("damaged")) << size;
    for (const std::size_t at : {std::size_t{20}, good.size() / 2, good.size() - 1}) {
        std::string bad = good;
        bad[at] = static_cast<char>(bad[at] ^ 1);
        EXPECT_NE(std::string::npos, said_of(bad).find("damaged")) << at;
    }
    // Another layout, with the right check sum.
    std::string other = good.substr(0, good.size() - 32);
    other[17] = static_cast<char>(other[17] ^ 1);
    const auto digest = qxsh::sha256(other.data(), other.size());
    other.append(reinterpret_cast<const char *>(digest.data()), digest.size());
    EXPECT_NE(std::string::npos, said_of(other).find("another version"));
    EXPECT_EQ(before.substr(before.find("activity")), [] {
        const std::string now = state();
        return now.substr(now.find("activity"));
    }());
}
