# Words for scripts that the tests of the simulator run in the shell: statuses by name, records from fields,
# errors that have to be loud. Relies on the package qx; tests copy it beside their script (loud.tcl).
package require qx
set cell [qx_uint32_create 0]
# A status by its name.
proc status {args} { qx::catalogue::status_name [uplevel 1 $args] }
# What a call that adds assigns; its last argument is the cell. Anything but success is its name.
proc id {args} {
    set name [status {*}$args $::cell]
    return [expr {$name eq "QX_OK" ? [qx_uint32_get $::cell] : $name}]
}
proc must {args} {
    set name [uplevel 1 [linsert $args 0 status]]
    if {$name ne "QX_OK"} { error "[lindex $args 0]: $name" }
}
proc record {type fields} {
    set handle [${type}_create]
    qx::set $handle $fields
    return $handle
}
# ok, or failed where the script raises an error of one line, which says each of the words.
proc loud {script args} {
    if {![catch {uplevel #0 $script} message]} { return "not an error: $message" }
    if {$message eq {} || [string first \n $message] >= 0} { return "not one line: $message" }
    foreach word $args {
        if {[string first $word $message] < 0} { return "no \"$word\": $message" }
    }
    return loud
}
proc flow {id port} {
    record qx_flow [list flow_id $id ingress_pkt [list phy_port 1 protocol 6 sa_ip 192.0.2.1 \
        da_ip 198.51.100.1 l4_header [list tcp [list sport $port dport 443]]]]
}
proc tunnel {number args} {
    record qx_tunnel_cfg [dict merge [list type 1 dest_addr 192.0.2.$number src_addr 192.0.2.250 \
        tx_port 1 dir 1 tunnel [list gre [list tunnel_id $number]]] $args]
}
# Next hops: on a port, and through a tunnel or an association.
proc port_hop {number {port 5}} {
    record qx_l3_nexthop [list nhid [list nhop_type 0 addr 10.0.0.$number intf_id $number] \
        da_mac 02:00:00:00:00:0$number id [list port_id $port]]
}
proc hop_through {type number id} {
    set fields [list nhid [list nhop_type $type addr 10.0.1.$number intf_id $number]]
    set name [lindex {port_id tunnel_id ipsec_said} $type]
    record qx_l3_nexthop [concat $fields [list id [list $name $id]]]
}
proc route {prefix hop} {
    set route [record qx_l3_route [list prefix $prefix]]
    qx_l3_route_set_nexthop $route $hop
    return $route
}
proc translation {number} {
    record qx_ip_translate_cfg [list translate_type 1 port_set_id $number port_set_id_length 4 \
        v6_pkt {sa_ip 2001:db8::1 da_ip 2001:db8::2}]
}
# An SPD, a policy and an entry of one association -> their handles.
proc ipsec {device direction {action 2} {spi 4096} {fields {}}} {
    set spd [id qx_ipsec_spd_add $device $direction [expr {$direction + 1}]]
    set policy [record qx_ipsec_policy [list policy_id 1 policy_action $action selector_count 1]]
    set policy [id qx_ipsec_policy_add $device $spd $policy]
    set sa [record qx_ipsec_sa [concat [list spi $spi sa_dir $direction] $fields]]
    set sa [id qx_ipsec_sa_add $device $spd $policy 1 $sa 0]
    return [list $spd $policy $sa]
}
