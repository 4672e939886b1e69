# Routes and next hops: a default route, two networks and an IPv6 one, found by the longest prefix,
# and led elsewhere by updating a next hop.
# Run it with:  ./run examples/routes.tcl
package require qx

set device 0

# A next hop has an identity (type, address, interface), a binding and an encapsulation. This one
# leads out of a port with Ethernet.
proc port_nexthop {address interface port mac} {
    return [dict create nhid [list nhop_type port addr $address intf_id $interface] \
        da_mac $mac id [list port_id $port] \
        encap [list port_encap [list type ethernet \
            port_encap [list eth [list src_mac 02:00:00:00:01:0$port]]]]]
}
set outside [port_nexthop 203.0.113.1 40 4 02:00:00:bb:00:01]
set branch [port_nexthop 10.0.0.2 50 5 02:00:00:ee:00:02]
set v6 [port_nexthop 2001:db8:ffff::1 40 4 02:00:00:bb:00:01]

# A next hop may be added by itself, which tells its index; a route adds the one it leads to if need
# be.
puts "next hop [qx::call qx_l3_nexthop_add $device $outside] is in"
foreach {prefix nexthop} [list 0.0.0.0/0 $outside 10.9.0.0/16 $branch \
        10.9.7.0/24 $outside 2001:db8:9::/48 $v6] {
    qx::call qx_l3_route_add $device [list prefix $prefix nexthop $nexthop]
}
puts [qx::show routes]
puts [qx::show nexthops]

# Which way does a packet go? The longest prefix that fits comes back, with its next hop.
foreach address {10.9.7.1 10.9.8.1 192.0.2.77} {
    set route [qx::call qx_l3_route_get $device [list prefix $address]]
    puts "$address: [dict get $route prefix] via [dict get $route nexthop nhid addr ip_addr]"
}

# The branch is reached through another port now: update its next hop, and all its routes follow.
dict set branch id port_id 6
qx::call qx_l3_nexthop_update $device $branch
puts "after the update, the branch:\
    [dict get [qx::call qx_l3_route_get $device {prefix 10.9.8.1}] nexthop id]"

# What comes from the office's network is translated when it leaves through interface 40.
qx::call qx_nat_subnet_add $device 40 192.168.1.0/24
qx::call qx_nat_subnet_delete $device 40 192.168.1.0/24

# One route by its prefix, the others by the interface they leave through. A next hop that only
# routes had used goes with the last of them; the one added by itself is still there.
qx::call qx_l3_route_delete $device {prefix 10.9.0.0/16}
qx::call qx_l3_nhintf_all_route_delete $device 40
puts "left: [llength [qx::list routes]] routes, [llength [qx::list nexthops]] next hop"
qx::call qx_l3_nexthop_delete $device $outside
