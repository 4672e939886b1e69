// The simulated devices: creating, finding and resetting them.
#include "device.h"

#include <utility>

namespace qxsim {

static std::unique_ptr<device> devices[most_devices];

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
    : number(own_number), ports(size_of(sized::ports), initial_port()),
      flows(size_of(sized::flows)), flow_ids(size_of(sized::flows)),
      flow_slots(size_of(sized::flows), 0), rules(size_of(sized::rules)),
      rule_slots(size_of(sized::rules), 0),
      rtps(size_of(sized::rtp_translations), id_base(id_kind::rtp, own_number)),
      rtp_ids(size_of(sized::rtp_translations)),
      translations(size_of(sized::ip_translations), id_base(id_kind::translation, own_number)),
      translation_ids(size_of(sized::ip_translations), 0), routes(size_of(sized::routes)),
      nexthops(size_of(sized::nexthops)),
      nexthop_indexes(size_of(sized::nexthops), id_base(id_kind::nexthop, own_number)),
      subnets(size_of(sized::nat_subnets)), port_mtus(size_of(sized::port_mtus)),
      tunnels(size_of(sized::tunnels), id_base(id_kind::tunnel, own_number)),
      tunnel_ids(size_of(sized::tunnels)), sessions(size_of(sized::l2tp_sessions)),
      prefixes(size_of(sized::l2tp_prefixes)),
      spds(size_of(sized::spds), id_base(id_kind::spd, own_number)),
      policies(size_of(sized::policies), id_base(id_kind::policy, own_number)),
      policy_handles(size_of(sized::policies), 0),
      associations(size_of(sized::associations), id_base(id_kind::association, own_number)),
      association_handles(size_of(sized::associations) * sa_bundle_limit, 0),
      pptp(size_of(sized::pptp_sessions)), pppoe(size_of(sized::pppoe_ports))
{}

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
