# Ten mistakes that every bring-up script has made once, and the status that tells of each. A status
# is a plain result: a script that does not look at it goes on as if nothing had happened.
# Run it with:  ./run examples/classic_mistakes.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0
set number 0

# Makes a mistake: the call has to be refused, with this status.
proc mistake {what status function args} {
    expect $status $function {*}$args
    set meaning [qx::catalogue::status_meaning [qx::catalogue::status_number $status]]
    puts "[incr ::number]. $what: $status, $meaning"
}

# Most of what follows needs a flow, an address, and a cell for an id.
set flow [qx_flow_create]
set_fields qx_flow $flow flow_id 17 life_time 60
foreach packet [list [qx_flow_get_ingress_pkt $flow] [qx_flow_get_egress_pkt $flow]] {
    set_ip [qx_pkt_info_get_sa_ip $packet] 192.168.1.23
    set_ip [qx_pkt_info_get_da_ip $packet] 198.51.100.7
}
set address [qx_ip_address_create]
set cell [qx_uint32_create 0]

# --- Devices are numbered from 0.
mistake "counting devices from 1" QX_BAD_DEVICE qx_flow_add 4 $flow

# --- A getter that finds nothing gives NULL, and NULL goes wherever a handle does.
mistake "passing on a record that is not there" QX_NULL_POINTER \
    qx_flow_add $device [qx_flow_array_get NULL 0]

# --- The words of an IPv6 address are set, its family is not: 0 is IPv4, which has no 64 bits.
qx::set [qx_ip_address_get_ip_addr $address] {ipv6_addr 2001:db8:7::}
qx_ip_address_set_addr_len $address 64
mistake "an IPv6 prefix without its family" QX_BAD_ADDRESS qx_nat_subnet_add $device 40 $address
puts "   for the device got this:"
qx_ip_address_dump $address
qx_ip_address_set_afi $address 1
must qx_nat_subnet_add $device 40 $address

# --- Running the script a second time without its tear-down.
must qx_flow_add $device $flow
mistake "adding a flow that is there" QX_EXISTS qx_flow_add $device $flow

# --- Two places that clean up.
must qx_flow_delete $device 17
mistake "deleting it twice" QX_DELETED qx_flow_delete $device 17

# --- IPsec has to be told to begin, once, before anything else of it.
mistake "a policy database before qx_ipsec_init" QX_NOT_INITIALISED \
    qx_ipsec_spd_add $device 0 1 $cell
must qx_ipsec_init $device

# --- A status that nobody looked at: the tunnel was refused (for its direction), nothing was
# written into the cell, and what it held before is taken for the tunnel's id.
set tunnel [qx_tunnel_cfg_create]
qx_tunnel_cfg_set_dir $tunnel 9
qx_tunnel_add $device $tunnel $cell
mistake "going on with the id of a tunnel that was refused" QX_NO_TUNNEL \
    qx_l2tp_session_add $device [qx_uint32_get $cell] 11

# --- A next hop is known by type, address and interface. With other contents it is not another next
# hop: qx_l3_nexthop_update is the call for that.
set route [qx_l3_route_create]
set_ip [qx_l3_route_get_prefix $route] 10.9.0.0/16
must qx_l3_route_add $device $route
set_ip [qx_l3_route_get_prefix $route] 10.8.0.0/16
qx::set [qx_l3_route_get_nexthop $route] {da_mac 02:00:00:bb:00:01}
mistake "a route that changes a next hop in passing" QX_CONFLICT qx_l3_route_add $device $route

# --- Tearing down in the order of building up. The other way round works.
must qx_ipsec_spd_add $device 0 1 $cell
set spd [qx_uint32_get $cell]
set policy [qx_ipsec_policy_create]
qx_ipsec_policy_init $policy 10 2 1
must qx_ipsec_policy_add $device $spd $policy $cell
mistake "deleting a policy database that has policies" QX_IN_USE qx_ipsec_spd_delete $device $spd
must qx_ipsec_policy_delete $device $spd [qx_uint32_get $cell]
must qx_ipsec_spd_delete $device $spd

# --- Ports for sessions that come and go, never deleted: it works for days.
for {set port 0} {[qx_pppoe_port_add $device 4 $port] == 0} {incr port} {}
mistake "never deleting anything, $port PPPoE ports later" QX_TABLE_FULL \
    qx_pppoe_port_add $device 4 $port
must qx_pppoe_port_delete $device 0
must qx_pppoe_port_add $device 4 $port

# Everything goes back.
for {set one 1} {$one <= $port} {incr one} { must qx_pppoe_port_delete $device $one }
set_ip [qx_l3_route_get_prefix $route] 10.9.0.0/16
must qx_l3_route_delete $device $route
must qx_nat_subnet_delete $device 40 $address
release $flow $address $cell $tunnel $route $policy
puts done
