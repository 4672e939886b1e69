# Layer 3 forwarding: routes with their next hops, the port encapsulations (Ethernet, PPPoE) a
# next hop can carry in place of a tunnel, NAT subnets by interface, and the IP MTU by port and
# encapsulation.

area l3 "Layer 3 routes, next hops, NAT and port MTU"

record qx_eth_port_encap_t 16 "Ethernet encapsulation of a port" {
    0   u8[6]   src_mac  -holds mac  "source MAC address"
    8   u32[2]  tag                  "tag words"
}

record qx_pppoe_port_encap_t 24 "PPPoE encapsulation of a port" {
    0   u8[6]   src_mac           -holds mac  "source MAC address"
    6   u8[6]   dest_mac          -holds mac  "destination MAC address"
    12  u32[2]  tag                           "tag words"
    20  u16     pppoe_session_id              "PPPoE session id"
}

union qx_port_union_encap_t 24 "encapsulation of a port, by type" {
    0   qx_pppoe_port_encap_t  pppoe  "PPPoE encapsulation"
    0   qx_eth_port_encap_t    eth    "Ethernet encapsulation"
}

record qx_port_encap_t 28 "encapsulation of a port, with its type" {
    0   u32                    type        "encapsulation type, an SDK code"
    4   qx_port_union_encap_t  port_encap  -view-by {type ethernet eth pppoe pppoe} "the encapsulation"
}

record qx_l3_nexthop_id_t 32 "identity of a next hop" {
    0   u32              nhop_type  "next-hop type, an SDK code"
    4   qx_ip_address_t  addr       "address of the next hop"
    28  u32              intf_id    "interface id"
}

union qx_l3_nexthop_intf_binding_t 4 "what a next hop is bound to: one word, three readings" {
    0   u32  port_id     "port id"
    0   u32  tunnel_id   "tunnel id"
    0   u32  ipsec_said  "IPsec security association id"
}

union qx_l3_nexthop_encap_t 120 "encapsulation of a next hop" {
    0   qx_port_encap_t  port_encap  "by port"
    0   qx_tunnel_cfg_t  tunnel_cfg  "by tunnel"
}

record qx_l3_nexthop_t 164 "one next hop" {
    0   qx_l3_nexthop_id_t            nhid                "its identity"
    32  u8[6]                         da_mac  -holds mac  "destination MAC address"
    40  qx_l3_nexthop_intf_binding_t  id                  -view-by {nhid.nhop_type port port_id tunnel tunnel_id sa ipsec_said} "what it is bound to"
    44  qx_l3_nexthop_encap_t         encap               -view-by {nhid.nhop_type port port_encap tunnel tunnel_cfg} "its encapsulation"
}

record qx_l3_route_t 188 "one route" {
    0   qx_ip_address_t  prefix   "destination prefix"
    24  qx_l3_nexthop_t  nexthop  "its next hop"
}

call qx_l3_route_add "add a route" {
    in     u16               device_id
    in     qx_l3_route_t*    route       "the route"
    example  0 {prefix 10.1.0.0/16 nexthop {nhid {addr 192.0.2.1 intf_id 3} id {port_id 5}}}
}

call qx_l3_route_delete "remove a route" {
    in     u16               device_id
    in     qx_l3_route_t*    route       "the route to remove"
    after    qx_l3_route_add
    example  0 {prefix 10.1.0.0/16}
}

call qx_l3_route_get "read a route" {
    in     u16               device_id
    inout  qx_l3_route_t*    route       "the route asked for; receives the route found"
    after    qx_l3_route_add
    example  0 {prefix 10.1.2.3}
}

call qx_l3_route_show "walk the routes, one a call" {
    in     u16               device_id
    inout  qx_l3_route_t*    route       "place in the walk; receives a route"
    in     u8                next
    after    qx_l3_route_add
    example  0 {} 0
}

call qx_l3_route_shut "shut the route table down" {
    in     u16               device_id
    example  0
}

call qx_l3_route_init_0 "start the route table again" {
    in     u16               device_id
    after    qx_l3_route_shut
    example  0
}

call qx_l3_nexthop_add "add a next hop" {
    in     u16               device_id
    in     qx_l3_nexthop_t*  nexthop     "the next hop"
    out    u32*              index       "receives its index"
    example  index = 0 {nhid {addr 192.0.2.1 intf_id 3} id {port_id 5}}
}

call qx_l3_nexthop_delete "remove a next hop" {
    in     u16               device_id
    in     qx_l3_nexthop_t*  nexthop     "the next hop to remove"
    after    qx_l3_nexthop_add
    example  0 {nhid {addr 192.0.2.1 intf_id 3}}
}

# Here the index stands before the record; qx_l3_nexthop_add has them the other way round.
call qx_l3_nexthop_get "read the next hop at an index" {
    in     u16               device_id
    in     u32               index       "index of the next hop"
    out    qx_l3_nexthop_t*  nexthop     "receives the next hop"
    after    qx_l3_nexthop_add
    example  0 $index
}

call qx_l3_nexthop_show "walk the next hops, one a call" {
    in     u16               device_id
    inout  qx_l3_nexthop_t*  nexthop     "place in the walk; receives a next hop"
    in     u8                next
    after    qx_l3_nexthop_add
    example  0 {} 0
}

call qx_l3_nexthop_update "change a next hop" {
    in     u16               device_id
    in     qx_l3_nexthop_t*  nexthop     "the next hop as it is to be"
    after    qx_l3_nexthop_add
    example  0 {nhid {addr 192.0.2.1 intf_id 3} id {port_id 6}}
}

call qx_l3_nhintf_all_route_delete "remove all routes of a next-hop interface" {
    in     u16               device_id
    in     u32               intf_id
    after    qx_l3_route_add
    example  0 3
}

call qx_nat_subnet_add "add a NAT subnet to an interface" {
    in     u16               device_id
    in     u32               intf_id
    in     qx_ip_address_t*  nat_subnet  "the subnet"
    example  0 3 10.0.0.0/8
}

call qx_nat_subnet_delete "remove a NAT subnet from an interface" {
    in     u16               device_id
    in     u32               intf_id
    in     qx_ip_address_t*  nat_subnet  "the subnet to remove"
    after    qx_nat_subnet_add
    example  0 3 10.0.0.0/8
}

call qx_port_encap_ip_mtu_add "set the IP MTU of an encapsulation on a port" {
    in     u16               device_id
    in     u16               port_id
    in     u32               encap
    in     u32               ip_mtu      "IP MTU in bytes"
    example  0 3 1 1492
}

call qx_port_encap_ip_mtu_delete "remove the IP MTU of an encapsulation on a port" {
    in     u16               device_id
    in     u16               port_id
    in     u32               encap
    after    qx_port_encap_ip_mtu_add
    example  0 3 1
}

call qx_port_encap_ip_mtu_get "read the IP MTU of an encapsulation on a port" {
    in     u16               device_id
    in     u16               port_id
    in     u32               encap
    out    u32*              ip_mtu      "receives the IP MTU in bytes"
    after    qx_port_encap_ip_mtu_add
    example  0 3 1
}

table routes "routes, in the order of their prefixes" {
    call   qx_l3_route_show
    walk   next
    leads  route.prefix
    ends   QX_NO_MORE
    node   route  route.prefix
    holds  route.nexthop.nhid nexthop_indexes
    by     nexthop.nhid
}

table nexthops "next hops, in the order of type, address and interface" {
    call   qx_l3_nexthop_show
    walk   next
    leads  nexthop.nhid
    ends   QX_NO_MORE
}

table nexthop_indexes "next hops, by index" {
    call   qx_l3_nexthop_get
    index  index  ids
    empty  QX_NO_NEXTHOP
    node   "next hop"  nexthop.nhid
    holds  nexthop.id.tunnel_id tunnels
    if     nexthop.nhid.nhop_type tunnel
    holds  nexthop.id.ipsec_said associations
    if     nexthop.nhid.nhop_type sa
}

table nat_subnets "NAT subnets of the interfaces" {
    instead "no call reads them; qx_nat_subnet_add answers QX_EXISTS for one that is there"
}

table port_mtus "IP MTUs, by port and encapsulation" {
    call   qx_port_encap_ip_mtu_get
    index  port_id  ports
    index  encap    codes
    empty  QX_NO_MTU
}
