# Routes and next hops: a default route, two networks and an IPv6 one, found by the longest prefix,
# walked with the show commands, and led elsewhere by updating a next hop.
# Run it with:  ./run examples/routes.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0

# ----------------------------------------------------------------------------------- the next hops

# A next hop has an identity (type, address, interface), a binding and an encapsulation. Type 0: out
# of a port; its encapsulation is Ethernet (0).
proc port_nexthop {address interface port mac} {
    set hop [qx_l3_nexthop_create]
    set nhid [qx_l3_nexthop_get_nhid $hop]
    set_fields qx_l3_nexthop_id $nhid nhop_type 0 intf_id $interface
    set_ip [qx_l3_nexthop_id_get_addr $nhid] $address
    qx::set $hop [list da_mac $mac]
    qx_l3_nexthop_intf_binding_set_port_id [qx_l3_nexthop_get_id $hop] $port
    set encap [qx_l3_nexthop_encap_get_port_encap [qx_l3_nexthop_get_encap $hop]]
    qx_port_encap_set_type $encap 0
    set eth [qx_port_union_encap_get_eth [qx_port_encap_get_port_encap $encap]]
    qx::set $eth [list src_mac 02:00:00:00:01:0$port]
    return $hop
}
set outside [port_nexthop 203.0.113.1 40 4 02:00:00:bb:00:01]
set branch  [port_nexthop 10.0.0.2 50 5 02:00:00:ee:00:02]
set v6      [port_nexthop 2001:db8:ffff::1 40 4 02:00:00:bb:00:01]

# A next hop may be added by itself, which tells its index; a route adds the one it leads to if need
# be.
set index [filled uint32 cell { must qx_l3_nexthop_add $device $outside $cell }]
puts "next hop $index is in; its binding and its port's encapsulation:"
set hop [qx_l3_nexthop_create]
must qx_l3_nexthop_get $device $index $hop
qx_l3_nexthop_intf_binding_dump [qx_l3_nexthop_get_id $hop]
qx_eth_port_encap_dump [qx_port_union_encap_get_eth [qx_port_encap_get_port_encap \
    [qx_l3_nexthop_encap_get_port_encap [qx_l3_nexthop_get_encap $hop]]]]

# -------------------------------------------------------------------------------------- the routes

set route [qx_l3_route_create]
foreach {prefix name} {
    0.0.0.0/0        outside
    10.9.0.0/16      branch
    10.9.7.0/24      outside
    2001:db8:9::/48  v6
} {
    set_ip [qx_l3_route_get_prefix $route] $prefix
    qx_l3_route_set_nexthop $route [set $name]
    must qx_l3_route_add $device $route
}

proc way {nexthop} {
    set nhid [qx_l3_nexthop_get_nhid $nexthop]
    return "via [ip [qx_l3_nexthop_id_get_addr $nhid]],\
        port [qx_l3_nexthop_intf_binding_get_port_id [qx_l3_nexthop_get_id $nexthop]],\
        [dict get [qx::get $nexthop] da_mac]"
}

# Walking the table: next 0 asks for the first entry, 1 for the one after that in the record.
proc walk_routes {} {
    global device
    set route [qx_l3_route_create]
    set next 0
    while {[expect {QX_OK QX_NO_MORE} qx_l3_route_show $device $route $next] eq "QX_OK"} {
        puts "  [ip [qx_l3_route_get_prefix $route]] [way [qx_l3_route_get_nexthop $route]]"
        set next 1
    }
    release $route
}
proc walk_nexthops {} {
    global device
    set nexthop [qx_l3_nexthop_create]
    set next 0
    while {[expect {QX_OK QX_NO_MORE} qx_l3_nexthop_show $device $nexthop $next] eq "QX_OK"} {
        puts "  [way $nexthop]"
        set next 1
    }
    release $nexthop
}
puts "all routes:"
walk_routes
puts "all next hops:"
walk_nexthops

# Which way does a packet go? The longest prefix that fits comes back, with its next hop.
puts "looked up:"
foreach address {10.9.7.1 10.9.8.1 192.0.2.77} {
    set_ip [qx_l3_route_get_prefix $route] $address
    must qx_l3_route_get $device $route
    puts "  $address: [ip [qx_l3_route_get_prefix $route]] [way [qx_l3_route_get_nexthop $route]]"
}

# The branch is reached through another port now: update its next hop, and all its routes follow.
qx_l3_nexthop_intf_binding_set_port_id [qx_l3_nexthop_get_id $branch] 6
must qx_l3_nexthop_update $device $branch
puts "after the update:"
walk_routes

# ------------------------------------------------------------------------------ NAT on an interface

# What comes from the office's network is translated when it leaves through interface 40.
set subnet [new_ip 192.168.1.0/24]
must qx_nat_subnet_add $device 40 $subnet
puts "NAT for [ip $subnet] on interface 40"
must qx_nat_subnet_delete $device 40 $subnet

# --------------------------------------------------------------------------------------- tear-down

# One route by its prefix, the others by the interface they leave through.
set_ip [qx_l3_route_get_prefix $route] 10.9.0.0/16
must qx_l3_route_delete $device $route
must qx_l3_nhintf_all_route_delete $device 40
puts "routes left:"
walk_routes

# A next hop that only routes had used went with the last of them; the one added by itself is still
# there.
puts "next hops left:"
walk_nexthops
must qx_l3_nexthop_delete $device $outside
puts "next hops left:"
walk_nexthops

release $outside $branch $v6 $hop $route $subnet
puts done
