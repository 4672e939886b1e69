// The simulated devices: creating, finding and resetting them.
#include "device.h"

#include <memory>

namespace qxsim {

static std::unique_ptr<device> devices[device_count];

qos_port initial_port() noexcept
{
    qos_port port;
    for (unsigned dscp = 0; dscp < dscp_count; ++dscp)
        port.dscp[dscp] = static_cast<std::uint8_t>(dscp >> 3);
    for (unsigned dot1p = 0; dot1p < dot1p_count; ++dot1p)
        port.dot1p[dot1p] = static_cast<std::uint8_t>(dot1p);
    return port;
}

device::device(unsigned own_number)
    : number(own_number), flows(flow_capacity), flow_slots(flow_capacity), rules(rule_capacity),
      rtps(rtp_capacity, rtp_base(own_number)), translations(translation_capacity, 0),
      routes(route_capacity), nexthops(nexthop_capacity), nexthop_indexes(nexthop_capacity, 0),
      subnets(subnet_capacity), port_mtus(port_count * 2), tunnels(tunnel_capacity, 0),
      sessions(l2tp_session_capacity), prefixes(l2tp_prefix_capacity),
      spds(spd_capacity, spd_base(own_number)), policies(policy_capacity, policy_base(own_number)),
      associations(sa_capacity, sa_base(own_number)), pptp(pptp_capacity), pppoe(pppoe_capacity)
{
    ports.fill(initial_port());
}

device &device_numbered(unsigned number)
{
    std::unique_ptr<device> &place = devices[number];
    if (!place)
        place = std::make_unique<device>(number);
    return *place;
}

void reset_devices() noexcept
{
    for (std::unique_ptr<device> &place : devices)
        place.reset();
}

} // namespace qxsim
