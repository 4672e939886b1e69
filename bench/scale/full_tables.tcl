# SHELL full_tables.tcl OUTPUT FLOOR: what calls on the simulator's tables cost when a table holds
# one entry and when it is full but for one, with its memory of deleted entries full, too. Runs
# under a tool that counts instructions; writes a line for each counted region, in order, to OUTPUT:
# table, operation, `one` or `full`, `ours` or `floor`, passes. The floor is the same script with
# no_op in place of each command of the module. Relies on the extension floor.cpp.

lassign $argv output floor
load $floor
set channel [open $output w]

# A table: its capacity, a script that makes entry $i of it, in the order of $i, one that takes it
# away again, and others by name that read with entry $last, the last of those present. They use
# what `setup` has made. Entry 0, the first in order, which is the worst to insert, and entry 5000
# come and go in turn while the others are there.
proc table {name capacity setup add delete {reads {}}} {
    global channel
    uplevel #0 $setup
    define add_entry i $setup $add
    define delete_entry i $setup $delete
    # Entries that are not of use again, so that as many as possible are remembered.
    foreach fill {one full} {
        set count [expr {$fill eq "one" ? 1 : $capacity - 2}]
        if {$fill eq "full"} {
            foreach what {add_entry delete_entry} {
                for {set i 1} {$i <= $capacity} {incr i} {
                    ok "$what $name" [$what [expr {$i + 1100}]]
                }
            }
        }
        for {set i 1} {$i <= $count} {incr i} { ok "fill $name" [add_entry $i] }
        set ::last $count
        count $name change $fill \
                "add_entry 0; add_entry 5000; delete_entry 0; delete_entry 5000"
        foreach {read script} $reads {
            define read_entry {i last} $setup $script
            ok "$read $name" [read_entry $count $count]
            count $name $read $fill "read_entry $count $count; read_entry 1 1"
        }
        for {set i $count} {$i >= 1} {incr i -1} { ok "empty $name" [delete_entry $i] }
    }
}

# A procedure and its floor.
proc define {name arguments setup body} {
    set head "upvar #0 id id\n[globals $setup]\n"
    proc ::$name $arguments $head$body
    proc ::floor_$name $arguments $head[regsub -all {\mqx_\w+} $body no_op]
}

proc globals {setup} {
    set names {}
    foreach {- name} [regexp -all -inline {\mset (\w+)} $setup] { lappend names $name }
    expr {$names eq {} ? {} : "global [lsort -unique $names]"}
}

proc ok {what status} { if {$status != 0} { error "$what: status $status" } }

proc count {table operation fill script} {
    global channel
    foreach variant {ours floor} {
        if {$variant eq "floor"} { set script [regsub -all {\w+_entry} $script {floor_&}] }
        proc ::loop {n} \
            "bench_begin\nfor {set pass 0} {\$pass < \$n} {incr pass} {$script}\nbench_end region"
        foreach passes {5 10 60} {
            loop $passes
            puts $channel "$table $operation $fill $variant $passes"
        }
    }
}

proc address {record number} {
    qx_ip_address_set_addr_len $record 32
    qx_l3_ip_addr_set_ipv4_addr [qx_ip_address_get_ip_addr $record] $number
}

bench_start

set flow [qx_flow_create]
set in [qx_flow_get_ingress_pkt $flow]
set ports [qx_l4_header_get_udp [qx_pkt_info_get_l4_header $in]]
set found [qx_flow_create]
set cell [qx_uint32_create 0]
# The low byte of a port is compared first.
proc set_flow {i} {
    qx_flow_set_flow_id $::flow $i
    qx_l4_udp_set_sport $::ports [expr {($i & 255) << 8 | $i >> 8}]
}
table flows 1024 {
    set flow $flow; set cell $cell
} {set_flow $i; qx_flow_add 0 $flow} {qx_flow_delete 0 $i} {
    get {qx_flow_get_lastuse_tickcount 0 $i $cell}
}

set rule [qx_rule_hash_create]
set rule_key [qx_rule_hash_get_key $rule]
table rules 512 {set rule $rule; set rule_key $rule_key} {
    qx_rule_hash_set_hash_index $rule [expr {$i % 1024}]
    qx_rule_hash_key_set_mcgid $rule_key $i
    qx_rule_hash_add 0 $rule
} {qx_rule_hash_delete_by_hash_index 0 [expr {$i % 1024}]} {
    get {qx_rule_hash_get_by_hash_index 0 $i $rule}
}

set stream [qx_rtp_cfg_create]
set stats [qx_rtp_stats_create]
table rtp_translations 64 {set stream $stream; set stats $stats; set cell $cell; set flow $flow} {
    set_flow $i
    qx_rtp_cfg_set_input_ssrc $stream $i
    set status [qx_rtp_translate_add 0 $stream $flow $cell]
    set id($i) [qx_uint32_get $cell]
    set status
} {
    qx_rtp_cfg_set_input_ssrc $stream $i
    qx_rtp_translate_delete 0 $stream
} {get {qx_rtp_statistics_get $id($i) $stats}}

set translation [qx_ip_translate_cfg_create]
set packet [qx_ip_translate_cfg_get_v6_pkt $translation]
qx_ip_address_set_afi [qx_pkt_info_get_da_ip $packet] 1
qx_ip_address_set_afi [qx_pkt_info_get_sa_ip $packet] 1
table ip_translations 32 {set translation $translation; set cell $cell} {
    qx_ip_translate_cfg_set_port_set_id $translation $i
    set status [qx_ip_translate_add 0 $translation $cell]
    set id($i) [qx_uint32_get $cell]
    set status
} {qx_ip_translate_del 0 $id($i)} {get {qx_ip_translate_get 0 $id($i) $translation}}

set hop [qx_l3_nexthop_create]
set hop_id [qx_l3_nexthop_get_nhid $hop]
set route [qx_l3_route_create]
set prefix [qx_l3_route_get_prefix $route]
table routes 512 {set route $route; set prefix $prefix} {
    address $prefix [expr {$i << 16}]
    qx_l3_route_add 0 $route
} {address $prefix [expr {$i << 16}]; qx_l3_route_delete 0 $route} {
    get {address $prefix [expr {$i << 16}]; qx_l3_route_get 0 $route}
    walk {address $prefix [expr {($last - 1) << 16}]; qx_l3_route_show 0 $route 1}
}
table nexthops 256 {set hop $hop; set hop_id $hop_id; set cell $cell} {
    qx_l3_nexthop_id_set_intf_id $hop_id $i
    set status [qx_l3_nexthop_add 0 $hop $cell]
    set id($i) [qx_uint32_get $cell]
    set status
} {qx_l3_nexthop_id_set_intf_id $hop_id $i; qx_l3_nexthop_delete 0 $hop} {
    get {qx_l3_nexthop_get 0 $id($i) $hop}
    walk {qx_l3_nexthop_id_set_intf_id $hop_id [expr {$last - 1}]; qx_l3_nexthop_show 0 $hop 1}
}

set subnet [qx_ip_address_create]
table nat_subnets 64 {set subnet $subnet} {
    address $subnet $i; qx_nat_subnet_add 0 1 $subnet
} {address $subnet $i; qx_nat_subnet_delete 0 1 $subnet}

set tunnel [qx_tunnel_cfg_create]
address [qx_tunnel_cfg_get_dest_addr $tunnel] 1
address [qx_tunnel_cfg_get_src_addr $tunnel] 2
set settings [qx_tunnel_cfg_union_get_l2tp [qx_tunnel_cfg_get_tunnel $tunnel]]
table tunnels 64 {set tunnel $tunnel; set settings $settings; set cell $cell} {
    qx_l2tp_tunnel_cfg_set_tid $settings $i
    set status [qx_tunnel_add 0 $tunnel $cell]
    set id($i) [qx_uint32_get $cell]
    set status
} {qx_l2tp_tunnel_cfg_set_tid $settings $i; qx_tunnel_delete 0 $tunnel} {
    get {qx_tunnel_get 0 $id($i) $tunnel}
}

ok "the tunnel of the sessions" [qx_tunnel_add 0 $tunnel $cell]
set carrier [qx_uint32_get $cell]
set byte [qx_uint8_create 0]
table l2tp_sessions 256 {set carrier $carrier; set byte $byte} {
    qx_l2tp_session_add 0 $carrier [expr {$i + 1}]
} {qx_l2tp_session_delete 0 $carrier [expr {$i + 1}]} {
    get {qx_l2tp_session_get 0 $carrier [expr {$i + 1}] $byte}
}
ok "the session of the prefixes" [qx_l2tp_session_add 0 $carrier 1]
set v6 [qx_ip_address_create]
qx_ip_address_set_afi $v6 1
proc address6 {record number} {
    qx_ip_address_set_afi $record 1
    address $record $number
}
table l2tp_prefixes 256 {set carrier $carrier; set v6 $v6} {
    address6 $v6 $i; qx_ipv6_over_l2tp_add 0 $carrier 1 $v6
} {address6 $v6 $i; qx_ipv6_over_l2tp_delete 0 $carrier 1 $v6} {
    walk {address6 $v6 [expr {$last - 1}]; qx_ipv6_over_l2tp_getnext 0 $carrier 1 $v6}
}

ok "IPsec" [qx_ipsec_init 0]
table spds 8 {set cell $cell} {
    set status [qx_ipsec_spd_add 0 1 $i $cell]
    set id($i) [qx_uint32_get $cell]
    set status
} {qx_ipsec_spd_delete 0 $id($i)}
ok "the SPD of the policies" [qx_ipsec_spd_add 0 1 0 $cell]
set spd [qx_uint32_get $cell]
set policy [qx_ipsec_policy_create]
qx_ipsec_policy_set_policy_action $policy 2
qx_ipsec_policy_set_selector_count $policy 1
table policies 64 {set spd $spd; set policy $policy; set cell $cell} {
    qx_ipsec_policy_set_policy_id $policy $i
    set status [qx_ipsec_policy_add 0 $spd $policy $cell]
    set id($i) [qx_uint32_get $cell]
    set status
} {qx_ipsec_policy_delete 0 $spd $id($i)}
ok "the policy of the associations" [qx_ipsec_policy_add 0 $spd $policy $cell]
set protection [qx_uint32_get $cell]
set sa [qx_ipsec_sa_create]
qx_ipsec_sa_set_sa_dir $sa 1
table associations 128 {set spd $spd; set protection $protection; set sa $sa; set cell $cell} {
    qx_ipsec_sa_set_spi $sa [expr {$i + 256}]
    set status [qx_ipsec_sa_add 0 $spd $protection 1 $sa 0 $cell]
    set id($i) [qx_uint32_get $cell]
    set status
} {qx_ipsec_sa_delete 0 $spd $protection $id($i)}

set session [qx_pptp_sa_create]
table pptp_sessions 64 {set session $session} {
    qx_pptp_sa_set_sa_id $session [expr {$i + 1}]
    qx_pptp_session_add 0 $session
} {qx_pptp_session_delete 0 [expr {$i + 1}] 0} {
    get {qx_pptp_sa_set_sa_id $session [expr {$i + 1}]; qx_pptp_session_get 0 $session}
}
set port [qx_pppoe_port_cfg_create]
qx_pppoe_port_cfg_set_pppoe_session_id $port 1
table pppoe_ports 64 {set port $port} {
    qx_pppoe_port_add 0 1 $i
} {qx_pppoe_port_delete 0 $i} {
    change_encap {qx_pppoe_port_encap_set 0 $i $port}
    get {qx_pppoe_port_encap_set 0 $i $port; qx_pppoe_port_config_get 0 $i $port}
}
# Every MTU of a port and encapsulation can be set, so entry 32 and up are encapsulation 1.
table port_mtus 64 {set cell $cell} {
    if {$i >= 64} { return 0 }
    qx_port_encap_ip_mtu_add 0 [expr {$i % 32}] [expr {$i / 32}] 1500
} {
    if {$i >= 64} { return 0 }
    qx_port_encap_ip_mtu_delete 0 [expr {$i % 32}] [expr {$i / 32}]
} {get {qx_port_encap_ip_mtu_get 0 [expr {$i % 32}] [expr {$i / 32}] $cell}}
close $channel
