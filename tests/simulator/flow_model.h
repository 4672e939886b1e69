// A second implementation of the flow table's hash, from docs/simulator.md.
#pragma once

#include "qx_sdk.h"

#include <cstdint>
#include <string>

namespace simulated {

/// The bytes of the hash, in the documented order.
inline std::string flow_bytes(const qx_flow_t &flow)
{
    const qx_pkt_info_t &packet = flow.ingress_pkt;
    std::string bytes;
    const auto low_first = [&](std::uint32_t value, int count) {
        while (count-- > 0) {
            bytes += static_cast<char>(value & 0xff);
            value >>= 8;
        }
    };
    const auto address = [&](const qx_ip_address_t &one) {
        low_first(one.afi, 1);
        for (int word = 0; word < 4; ++word)
            low_first(one.afi == 0 && word > 0 ? 0 : one.ip_addr.addr[word], 4);
    };
    low_first(packet.phy_port, 1);
    bytes.append(reinterpret_cast<const char *>(packet.da_mac), 6);
    bytes.append(reinterpret_cast<const char *>(packet.sa_mac), 6);
    low_first(packet.eth_type, 2);
    low_first(packet.tag[0].vlan_id, 2);
    low_first(packet.tag[1].vlan_id, 2);
    low_first(packet.pppoe_session_id_valid ? packet.pppoe_session_id : 0, 2);
    address(packet.da_ip);
    address(packet.sa_ip);
    low_first(packet.protocol, 1);
    low_first(packet.l4_header.tcp.sport, 2);
    low_first(packet.l4_header.tcp.dport, 2);
    low_first(packet.natt_4_bytes, 4);
    return bytes;
}

inline unsigned flow_slot(const qx_flow_t &flow)
{
    std::uint32_t hash = 0x811c9dc5;
    for (const char byte : flow_bytes(flow)) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x01000193;
    }
    return (hash ^ (hash >> 16)) & 4095;
}

} // namespace simulated
