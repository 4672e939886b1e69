// The control file, snapshots and records of the simulator's tests.
#include "simulated.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <unistd.h>

namespace simulated {

namespace {

// Made before main and thus before the first SDK call, when the simulator reads the environment.
struct own_folder
{
    std::string name;

    own_folder()
    {
        const char *const base = std::getenv("TMPDIR");
        std::string pattern = std::string{base != nullptr ? base : "/tmp"} + "/qx_sim.XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            std::abort();
        name = pattern;
        setenv("QX_SIM_CONTROL", (name + "/control").c_str(), 1);
    }
    ~own_folder()
    {
        const std::string command = "rm -rf '" + name + "'";
        if (std::system(command.c_str()) != 0)
            std::fprintf(stderr, "%s is left\n", name.c_str());
    }
} own;

} // namespace

const std::string &folder()
{
    return own.name;
}

void order(const std::string &lines, unsigned status)
{
    const std::string control = own.name + "/control";
    std::ofstream{control + ".new"} << lines;
    std::rename((control + ".new").c_str(), control.c_str());
    ASSERT_EQ(status, qx_flow_delete(65535, 0));
}

std::string file_text(const std::string &name)
{
    std::ifstream file{name};
    return {std::istreambuf_iterator<char>{file}, {}};
}

static std::string listing(const std::string &what)
{
    const std::string answer = own.name + "/answer";
    std::remove(answer.c_str());
    order(what + " " + answer + "\n");
    return file_text(answer);
}

std::string snapshot()
{
    return listing("snapshot");
}
std::string state()
{
    return listing("state");
}

unsigned number_in(const std::string &listing, const std::string &from, const std::string &name)
{
    const auto start = listing.find(from);
    const auto place = listing.find("\"" + name + "\": ", start);
    if (start == std::string::npos || place == std::string::npos) {
        ADD_FAILURE() << name << " after " << from << " is not in\n" << listing;
        return 0;
    }
    return static_cast<unsigned>(
        std::strtoul(listing.c_str() + place + name.size() + 4, nullptr, 10));
}

bool long_tests()
{
    const char *const asked = std::getenv("QXSH_TEST_LONG");
    return asked != nullptr && *asked != '\0' && std::string{asked} != "0";
}

// --------------------------------------------------------------------------------------- records

qx_ip_address_t ipv4(std::uint32_t address, unsigned length)
{
    auto record = zeroed<qx_ip_address_t>();
    record.ip_addr.ipv4_addr = address;
    record.addr_len = static_cast<unsigned char>(length);
    return record;
}

qx_ip_address_t ipv6(std::array<std::uint32_t, 4> words, unsigned length)
{
    auto record = zeroed<qx_ip_address_t>();
    record.afi = 1;
    for (unsigned index = 0; index < 4; ++index)
        record.ip_addr.ipv6_addr[index] = words[index];
    record.addr_len = static_cast<unsigned char>(length);
    return record;
}

qx_flow_t flow(unsigned short id)
{
    auto record = zeroed<qx_flow_t>();
    record.flow_id = id;
    record.egress_pkt.phy_port = 1;
    record.ingress_pkt.eth_type = 0x0800;
    record.ingress_pkt.protocol = 17;
    record.ingress_pkt.da_ip = ipv4(0x0a000001);
    record.ingress_pkt.sa_ip = ipv4(0xc0a80101);
    record.ingress_pkt.l4_header.udp.sport = id;
    record.ingress_pkt.l4_header.udp.dport = 5060;
    return record;
}

qx_rule_hash_t rule(unsigned short slot, unsigned short vid)
{
    auto record = zeroed<qx_rule_hash_t>();
    record.hash_index = slot;
    record.key.vid_1 = vid;
    record.key.l4_dp = slot;
    return record;
}

qx_ip_translate_cfg_t translation(unsigned short port_set)
{
    auto record = zeroed<qx_ip_translate_cfg_t>();
    record.translate_type = 2;
    record.v6_pkt.da_ip = ipv6({0x20010db8, 0, 0, 1});
    record.v6_pkt.sa_ip = ipv6({0x20010db8, 0, 0, 2});
    record.port_set_id = port_set;
    record.port_set_id_length = 8;
    record.port_set_id_offset = 4;
    return record;
}

qx_rtp_cfg_t rtp(std::uint32_t ssrc)
{
    auto record = zeroed<qx_rtp_cfg_t>();
    record.seq_num_diff = 100;
    record.timestamp_diff = 1000;
    record.input_ssrc = ssrc;
    record.output_ssrc = ssrc + 1;
    return record;
}

qx_l3_nexthop_t nexthop(std::uint32_t address, std::uint32_t interface)
{
    auto record = zeroed<qx_l3_nexthop_t>();
    record.nhid.addr = ipv4(address);
    record.nhid.intf_id = interface;
    record.id.port_id = 3;
    record.da_mac[5] = static_cast<unsigned char>(address);
    return record;
}

qx_l3_route_t route(const qx_ip_address_t &prefix, const qx_l3_nexthop_t &via)
{
    auto record = zeroed<qx_l3_route_t>();
    record.prefix = prefix;
    std::memcpy(&record.nexthop, &via, sizeof via);
    if (via.nhid.nhop_type == 0)
        record.nexthop.nhid.addr.afi = prefix.afi;
    return record;
}

static qx_tunnel_cfg_t tunnel(std::uint32_t type)
{
    auto record = zeroed<qx_tunnel_cfg_t>();
    record.type = type;
    record.dest_addr = ipv4(0x0a000002);
    record.src_addr = ipv4(0x0a000003);
    record.tx_port = 2;
    record.dir = 2;
    return record;
}

qx_tunnel_cfg_t l2tp_tunnel(unsigned short tid)
{
    auto record = tunnel(0);
    record.tunnel.l2tp.tid = tid;
    return record;
}

qx_tunnel_cfg_t gre_tunnel(std::uint32_t id)
{
    auto record = tunnel(1);
    record.tunnel.gre.tunnel_id = id;
    return record;
}

qx_tunnel_cfg_t ipsec_tunnel(std::uint32_t policy)
{
    auto record = tunnel(2);
    record.tunnel.ipsec.ipsec_policy = policy;
    return record;
}

qx_tunnel_cfg_t etherip_tunnel(std::uint32_t destination)
{
    auto record = tunnel(3);
    record.tunnel.etherip.tun_daddr.ipv4_addr = destination;
    return record;
}

qx_ipsec_policy_t policy(std::uint32_t id)
{
    auto record = zeroed<qx_ipsec_policy_t>();
    record.policy_id = id;
    record.policy_action = 2;
    record.selector_count = 1;
    record.selector_array[0].dst_ip = ipv4(0x0a010000, 16);
    return record;
}

qx_ipsec_sa_t association(std::uint32_t spi, unsigned way)
{
    auto record = zeroed<qx_ipsec_sa_t>();
    record.spi = spi;
    record.sa_dir = way & 1;
    std::memset(record.ekey, 0x11, sizeof record.ekey);
    std::memset(record.akey, 0x22, sizeof record.akey);
    return record;
}

qx_pptp_sa_t pptp(unsigned short id, std::uint32_t way)
{
    auto record = zeroed<qx_pptp_sa_t>();
    record.sa_id = id;
    record.dir = way;
    record.local_addr = ipv4(0x0a000004);
    record.remote_addr = ipv4(0x0a000005);
    record.crypto_type = 1;
    record.keylen = 8;
    for (unsigned char index = 0; index < 16; ++index)
        record.key[index] = static_cast<unsigned char>(0xf8 + index);
    record.seq_num = 77;
    return record;
}

qx_pppoe_port_cfg_t pppoe(unsigned short session)
{
    auto record = zeroed<qx_pppoe_port_cfg_t>();
    record.pppoe_session_id = session;
    record.vlan_tag = 0x81000064;
    record.tx_phy_port = 5;
    record.dest_mac[0] = 2;
    return record;
}

} // namespace simulated
