// The hash of the flow table; see flow_key.h.
#include "flow_key.h"

#include <cstddef>

namespace qxsim {

namespace {

// Collects the bytes of a key, numbers in little-endian order.
class key_writer
{
public:
    explicit key_writer(std::uint32_t ipv4) : ipv4_(ipv4) {}
    void number(std::uint32_t value, unsigned bytes)
    {
        for (; bytes != 0; --bytes, value >>= 8)
            key_[size_++] = static_cast<std::uint8_t>(value);
    }
    template <std::size_t Count> void bytes(const unsigned char (&values)[Count])
    {
        for (const unsigned char value : values)
            number(value, 1);
    }
    void address(const qx_ip_address_t &record)
    {
        number(record.afi, 1);
        // An IPv4 address is in the first word only.
        for (unsigned word = 0; word < 4; ++word)
            number(record.afi == ipv4_ && word > 0 ? 0 : record.ip_addr.addr[word], 4);
    }
    const flow_key &key() const { return key_; }

private:
    flow_key key_{};
    std::size_t size_ = 0;
    std::uint32_t ipv4_;
};

} // namespace

flow_key flow_key_of(const qx_pkt_info_t &packet, std::uint32_t ipv4)
{
    key_writer writer{ipv4};
    writer.number(packet.phy_port, 1);
    writer.bytes(packet.da_mac);
    writer.bytes(packet.sa_mac);
    writer.number(packet.eth_type, 2);
    for (const qx_vlan_t &tag : packet.tag)
        writer.number(tag.vlan_id, 2);
    writer.number(packet.pppoe_session_id_valid != 0 ? packet.pppoe_session_id : 0, 2);
    writer.address(packet.da_ip);
    writer.address(packet.sa_ip);
    writer.number(packet.protocol, 1);
    writer.number(packet.l4_header.esp.spi_idx, 4);
    writer.number(packet.natt_4_bytes, 4);
    return writer.key();
}

std::uint32_t flow_hash(const flow_key &key)
{
    std::uint32_t hash = 2166136261U;
    for (const std::uint8_t byte : key)
        hash = (hash ^ byte) * 16777619U;
    return hash;
}

unsigned flow_home(std::uint32_t hash, std::uint32_t slots)
{
    return (hash ^ hash >> 16) % slots;
}

} // namespace qxsim
