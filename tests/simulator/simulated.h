// What the simulator's tests share: the control file, snapshots, and sample records. Every test of
// the fixture starts with all devices reset. Relies only on the simulator's public headers and its
// control interface.
#pragma once

#include "qx_sdk.h"
#include "qx_status.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string>

namespace simulated {

/// The folder for this process's files; removed when the process ends.
const std::string &folder();

/// Replaces the control file by these lines and makes the simulator read it, which answers so.
void order(const std::string &lines, unsigned status = QX_BAD_DEVICE);

std::string file_text(const std::string &name); ///< all of a file; empty if it cannot be read
std::string snapshot();                         ///< of all devices
std::string state();

/// The number after the first `"name": ` that follows `from` in a listing.
unsigned number_in(const std::string &listing, const std::string &from, const std::string &name);

class devices : public ::testing::Test
{
protected:
    void SetUp() override { order("reset\n"); }
};

/// True if the environment asks for the long tests.
bool long_tests();

// --------------------------------------------------------------------------------------- records

/// A record with all bytes zero, padding included.
template <class Record> Record zeroed()
{
    Record record;
    std::memset(&record, 0, sizeof record);
    return record;
}

template <class Record> bool same_bytes(const Record &left, const Record &right)
{
    return std::memcmp(&left, &right, sizeof left) == 0;
}

/// A record whose bytes are all 0xa5, to check that nothing was written.
template <class Record> Record untouched()
{
    Record record;
    std::memset(&record, 0xa5, sizeof record);
    return record;
}
template <class Record> bool is_untouched(const Record &record)
{
    return same_bytes(record, untouched<Record>());
}

qx_ip_address_t ipv4(std::uint32_t address, unsigned length = 32);
qx_ip_address_t ipv6(std::array<std::uint32_t, 4> words, unsigned length = 128);

/// A UDP flow over IPv4 from port 0 to port 1 whose source port is its id.
qx_flow_t flow(unsigned short id);
qx_rule_hash_t rule(unsigned short slot, unsigned short vid);
qx_ip_translate_cfg_t translation(unsigned short port_set);
qx_rtp_cfg_t rtp(std::uint32_t ssrc);

/// A next hop on a port with Ethernet encapsulation.
qx_l3_nexthop_t nexthop(std::uint32_t address, std::uint32_t interface = 1);
/// A route whose next hop, if it is on a port, has the prefix's family.
qx_l3_route_t route(const qx_ip_address_t &prefix, const qx_l3_nexthop_t &via);

qx_tunnel_cfg_t l2tp_tunnel(unsigned short tid);
qx_tunnel_cfg_t gre_tunnel(std::uint32_t id);
qx_tunnel_cfg_t ipsec_tunnel(std::uint32_t policy);
qx_tunnel_cfg_t etherip_tunnel(std::uint32_t destination);

/// A policy that protects, with one selector.
qx_ipsec_policy_t policy(std::uint32_t id);
qx_ipsec_sa_t association(std::uint32_t spi, unsigned way);
qx_pptp_sa_t pptp(unsigned short id, std::uint32_t way);
qx_pppoe_port_cfg_t pppoe(unsigned short session);

} // namespace simulated
