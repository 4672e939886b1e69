# The operations that are measured in loops. A row is a name, under which bounds.tsv has its title
# and bounds, and a dictionary with
#   setup    script before the loop, in the loop's procedure; `n` is the number of passes
#   command  the loop's body; the floor has no_op in place of each command of the module
#   floor    the loop's body for the floor, instead
#   loop     `count` (for) or `texts` (foreach text $texts)          default count
#   passes   passes of the shorter and of the longer counted loop    default 500 2500
#   timed    passes of a timed loop                                  default 100000
#   peers    the peers that have equivalent commands                 default none
# Words are variables and literals, as in scripts. Used inside the shell and by the driver.

namespace eval rows {
    variable names {}
    variable all {}
}

proc rows::row {name properties} {
    variable names
    variable all
    set defaults {setup {} loop count passes {500 2500} timed 100000 peers {}}
    lappend names $name
    dict set all $name [dict merge $defaults $properties]
}

proc rows::get {name} { variable all; dict get $all $name }

rows::row getter {
    setup {set flow [qx_flow_create]; qx_flow_set_flow_id $flow 7}
    command {qx_flow_get_flow_id $flow}
    peers {hand critcl}
}
rows::row cell_read {
    setup {set cell [qx_uint32_create 7]}
    command {qx_uint32_get $cell}
    peers {hand critcl}
}
rows::row setter {
    setup {set flow [qx_flow_create]}
    command {qx_flow_set_flow_id $flow 7}
    peers {hand critcl}
}
rows::row array_field_get {
    setup {set flow [qx_flow_create]}
    command {qx_flow_get_swid_array $flow 1}
    peers {hand critcl}
}
rows::row array_field_set {
    setup {set flow [qx_flow_create]}
    command {qx_flow_set_swid_array $flow 7 1}
    peers {hand critcl}
}
rows::row cell_array_get {
    setup {set cells [qx_uint32_array_create 7 8]}
    command {qx_uint32_array_get $cells 5}
}
rows::row cell_array_set {
    setup {set cells [qx_uint32_array_create 7 8]}
    command {qx_uint32_array_set $cells 9 5}
}
rows::row nested_getter {
    setup {set flow [qx_flow_create]}
    command {qx_flow_get_ingress_pkt $flow}
    peers {hand critcl}
}
rows::row element_getter {
    setup {set flows [qx_flow_array_create 8]}
    command {qx_flow_array_get $flows 5}
    peers {hand critcl}
}
rows::row sdk_call {
    setup {set flow [qx_flow_create]}
    command {qx_flow_add 0 $flow}
    peers {hand critcl}
}
rows::row flow_init {
    setup {
        set flow [qx_flow_create]
        set in [qx_pkt_info_create]
        set out [qx_pkt_info_create]
    }
    command {qx_flow_init $flow 7 2 $in $out 1 300 4000 5 6}
    peers {hand critcl}
}
rows::row create_free {
    command {qx_data_free [qx_flow_create]}
    peers {hand critcl}
}
rows::row great_result {
    setup {set flow [qx_flow_create]; qx_flow_set_flow_type $flow 4294967295}
    command {qx_flow_get_flow_type $flow}
    peers {hand critcl}
}
rows::row new_text {
    setup {
        set flows [qx_flow_array_create $n]
        set handles {}
        for {set i 0} {$i < $n} {incr i} { lappend handles [qx_flow_array_get $flows $i] }
        # Split again, so that each element is a pure string.
        set texts [split [join $handles \n] \n]
    }
    command {qx_flow_get_flow_id $text}
    loop texts
    timed 20000
    peers {hand critcl}
}
rows::row dump {
    setup {set flow [qx_flow_create]; fill_flow $flow}
    command {qx_flow_dump $flow}
    passes {50 250}
    timed 4000
    peers {hand critcl}
}

# Whole records: the floor is what one would write by hand, or the other way to the same end.
set whole_flow {
    package require qx
    set flow [qx_flow_create]
    qx::set $flow {flow_id 7 flow_type 1 life_time 300 swid_array {1 2 3}
        ingress_pkt {phy_port 1 da_mac 02:00:00:00:01:01 sa_mac 02:00:00:00:00:02 eth_type 2048
            tag {{vlan_id 10} {vlan_id 20 priority 3}} sa_ip 192.168.1.23 da_ip 198.51.100.7
            protocol 6 l4_header {tcp {sport 40123 dport 443}}}
        egress_pkt {phy_port 2 da_mac 02:00:00:00:02:01 sa_mac 02:00:00:00:00:01 eth_type 34525
            sa_ip 2001:db8::17/128 da_ip 2001:db8:1::7/64 protocol 17
            l4_header {udp {sport 53 dport 4000}}}}
    set value [qx::get $flow]
    set by_hand [whole_flow_get $flow]
    if {$value ne $by_hand} { error "by hand: $by_hand" }
}
rows::row whole_get {
    command {qx::get $flow}
    floor {whole_flow_get $flow}
    passes {50 250}
    timed 20000
}
rows::row whole_set {
    command {qx::set $flow $value}
    floor {whole_flow_set $flow $by_hand}
    passes {50 250}
    timed 20000
}
rows::row whole_json {
    command {qx::json $flow}
    floor {qx::get $flow}
    passes {50 250}
    timed 20000
}
rows::row whole_call {
    command {qx::call qx_l3_route_get 0 $value}
    floor {qx::set $route $value; qx_l3_route_get 0 $route; qx::get $route}
    passes {50 250}
    timed 20000
}
foreach row {whole_get whole_set whole_json} { dict set rows::all $row setup $whole_flow }
dict set rows::all whole_call setup {
    package require qx
    set route [qx_l3_route_create]
    qx::set $route {prefix 10.0.0.0/8 nexthop {nhid {nhop_type 1 addr 192.0.2.9/32 intf_id 4}
        id {tunnel_id 5} encap {tunnel_cfg {type 1 src_addr 192.0.2.1/32 dest_addr 192.0.2.2/32
            dir 1 tunnel {gre {tunnel_id 5}}}}}}
    set value [qx::get $route]
}
unset whole_flow row
