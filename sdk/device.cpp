// The simulated devices: creating, finding and resetting them.
#include "device.h"

#include <utility>

namespace qxsim {

static std::unique_ptr<device> devices[device_count];

qos_port initial_port()
{
    qos_port port;
    for (unsigned dscp = 0; dscp < dscp_count; ++dscp)
        port.dscp[dscp] = static_cast<std::uint8_t>(dscp >> 3);
    for (unsigned dot1p = 0; dot1p < dot1p_count; ++dot1p)
        port.dot1p[dot1p] = static_cast<std::uint8_t>(dot1p);
    return port;
}

// Nobody asks what was removed from the second indexes: they remember nothing.
device::device(unsigned own_number)
    : number(own_number), flows(flow_capacity), flow_ids(flow_capacity),
      flow_slots(flow_capacity, 0), rules(rule_capacity), rule_slots(rule_capacity, 0),
      rtps(rtp_capacity, id_base(id_kind::rtp, own_number)), rtp_ids(rtp_capacity),
      translations(translation_capacity, id_base(id_kind::translation, own_number)),
      translation_ids(translation_capacity, 0), routes(route_capacity), nexthops(nexthop_capacity),
      nexthop_indexes(nexthop_capacity, id_base(id_kind::nexthop, own_number)),
      subnets(subnet_capacity), port_mtus(port_count * 2),
      tunnels(tunnel_capacity, id_base(id_kind::tunnel, own_number)), tunnel_ids(tunnel_capacity),
      sessions(l2tp_session_capacity), prefixes(l2tp_prefix_capacity),
      spds(spd_capacity, id_base(id_kind::spd, own_number)),
      policies(policy_capacity, id_base(id_kind::policy, own_number)),
      policy_handles(policy_capacity, 0),
      associations(sa_capacity, id_base(id_kind::association, own_number)),
      association_handles(sa_capacity * sa_bundle_limit, 0), pptp(pptp_capacity),
      pppoe(pppoe_capacity)
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

void replace_device(std::unique_ptr<device> made)
{
    std::unique_ptr<device> &place = devices[made->number];
    place = std::move(made);
}

void reset_devices()
{
    for (std::unique_ptr<device> &place : devices)
        place.reset();
}

} // namespace qxsim
