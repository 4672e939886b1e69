# Mistakes that every bring-up script has made once, and the status that tells of each.
# Run it with:  ./run examples/classic_mistakes.tcl
package require qx

set device 0
set number 0

# Makes a mistake: the call has to be refused, with this status.
proc mistake {what expected args} {
    if {![catch { qx::call {*}$args } message options]} { error "$args: not refused" }
    lassign [dict get $options -errorcode] kind status name
    if {$name ne $expected} { return -options $options $message }
    puts "[incr ::number]. $what: $name, [qx::catalogue::status_meaning $status]"
}

set flow {flow_id 17 life_time 60 ingress_pkt {sa_ip 192.168.1.23 da_ip 198.51.100.7}}
mistake "counting devices from 1" QX_BAD_DEVICE qx_flow_add 4 $flow
mistake "passing on a record that is not there" QX_NULL_POINTER qx_flow_add $device NULL

# The words of an IPv6 address are set, its family is not: family 0 is IPv4, which has no 64 bits.
mistake "an IPv6 prefix without its family" QX_BAD_ADDRESS \
    qx_nat_subnet_add $device 40 {ip_addr {ipv6_addr 2001:db8:7::} addr_len 64}

# Running a script a second time without its tear-down, and two places that clean up.
qx::call qx_flow_add $device $flow
mistake "adding a flow that is there" QX_EXISTS qx_flow_add $device $flow
qx::call qx_flow_delete $device 17
mistake "deleting it twice" QX_DELETED qx_flow_delete $device 17

# IPsec has to be told to begin, once, before anything else of it.
mistake "a policy database before qx_ipsec_init" QX_NOT_INITIALISED \
    qx_ipsec_spd_add $device in 1
mistake "an id that no call has given" QX_NO_TUNNEL qx_l2tp_session_add $device 4711 11

# A next hop is known by type, address and interface. With other contents it is not another next
# hop: qx_l3_nexthop_update is the call for that.
qx::call qx_l3_route_add $device {prefix 10.9.0.0/16}
mistake "a route that changes a next hop in passing" QX_CONFLICT qx_l3_route_add $device \
    {prefix 10.8.0.0/16 nexthop {da_mac 02:00:00:bb:00:01}}
qx::call qx_l3_route_delete $device {prefix 10.9.0.0/16}

# Tearing down in the order of building up. The other way round works.
qx::call qx_pppoe_port_add $device 4 100
mistake "adding a port number twice" QX_EXISTS qx_pppoe_port_add $device 5 100

# Numbers for ports that come and go, never deleted: it works for days, until port 164.
for {set port 101} {$port < 164} {incr port} { qx::call qx_pppoe_port_add $device 4 $port }
mistake "never deleting anything" QX_TABLE_FULL qx_pppoe_port_add $device 4 $port
for {set one 100} {$one < $port} {incr one} { qx::call qx_pppoe_port_delete $device $one }
