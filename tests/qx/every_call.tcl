# Runs inside the shell, after both_ways.tcl: a device from end to end with each of the 83 functions,
# each with success and with failures. Prints what `do` prints.

proc flow {id port args} {
    dict merge [list flow_id $id ingress_pkt [list phy_port 1 da_mac 02:00:00:00:01:01 protocol 6 \
        sa_ip 192.0.2.1 da_ip 198.51.100.1 tag {{vlan_id 5 priority 3}} \
        l4_header [list tcp [list sport $port dport 443]]] \
        egress_pkt {phy_port 2 sa_ip 203.0.113.9 tag {{} {vlan_id 6}}} swid_array {1 2}] $args
}
proc slot {fields} {
    set flow [qx_flow_create]
    qx::set $flow $fields
    set slot [qx::sim::flow_slot $flow]
    qx_data_free $flow
    return $slot
}

proc each_qos {} {
    foreach {area high} {dscp 64 dot1p 8} {
        do qx_qos_${area}_map_set 0 1 5 6
        do qx_qos_${area}_map_get 0 1 5
        foreach words [list {4 1 5} {0 32 5} [list 0 1 $high]] {
            do qx_qos_${area}_map_set {*}$words 6
            do qx_qos_${area}_map_get {*}$words
        }
        do qx_qos_${area}_map_set 0 1 5 8
    }
    do qx_qos_map_mode_set 0 1 2
    do qx_qos_map_mode_get 0 1
    foreach words {{4 1 1} {0 32 1} {0 1 3}} { do qx_qos_map_mode_set {*}$words }
    foreach words {{4 1} {0 32}} { do qx_qos_map_mode_get {*}$words }
}

proc each_power {} {
    foreach frequency {600 99 1201} { do qx_pm_cpu_frequency_set 0 $frequency }
    foreach words {{0 1} {0 0} {0 2} {4 1}} { do qx_pm_cpu_power_down {*}$words }
    foreach device {0 4} { do qx_pm_cpu_info_get $device }
    foreach words {{0 1} {0 2} {4 1}} { do qx_pm_cpu_power_up {*}$words }
    foreach words {{0 1 2} {0 1 3} {0 0 2} {0 2 1}} { do qx_pm_cpu_power_state_set {*}$words }
    do qx_pm_cpu_info_get 0
    foreach kind {pcie sata usb} {
        foreach words {{0 1 2} {0 2 1} {0 1 3}} { do qx_pm_${kind}_state_set {*}$words }
        foreach words {{0 1} {0 2} {4 1}} { do qx_pm_${kind}_state_get {*}$words }
    }
    do qx_pm_system_suspend_enter 0
    foreach flag {1 2} { do qx_pm_ne_suspend_set 0 $flag }
    foreach device {0 4} { do qx_pm_ne_suspend_get $device }
    do qx_pm_system_suspend_enter 0
    do qx_pm_ne_suspend_set 0 0
    foreach words {{0 3 1} {0 8 1} {0 3 2}} { do qx_pm_pe_suspend_set {*}$words }
    foreach words {{0 3} {0 8}} { do qx_pm_pe_suspend_get {*}$words }
}

proc each_flow {} {
    set slot [slot [flow 7 1000]]
    do qx_flow_add 0 [flow 7 1000]
    do qx_flow_add 0 [flow 7 1001]
    do qx_flow_add 0 {ingress_pkt {phy_port 32}}
    do qx_flow_add 0 {ingress_pkt {da_ip {afi 2}}}
    do qx_flow_add 0 {ingress_pkt {tag {{} {vlan_id 4096}}}}
    do qx_flow_get 0 $slot
    foreach words {{0 4096} {0 0} {4 0}} { do qx_flow_get {*}$words }
    foreach words {{0 7} {0 8}} { do qx_flow_get_lastuse_tickcount {*}$words }
    foreach words {{0 7} {0 7} {0 8}} { do qx_flow_delete {*}$words }
}

proc each_rule {} {
    set rule {apptype 1 hash_index 9 key {mac_da 02:00:00:00:00:05 vid_1 12 l4_dp 443 l7_field 7}
        fwd_result {l2 {mac_da 02:00:00:00:00:06 mcgid 4} act {drop 1}} fvlan {first_vid 77}}
    do qx_rule_hash_add 1 $rule
    do qx_rule_hash_add 1 $rule
    do qx_rule_hash_add 1 {hash_index 1024}
    do qx_rule_hash_add 1 {key {vid_2 4096}}
    foreach index {9 10 1024} { do qx_rule_hash_get_by_hash_index 1 $index }
    foreach index {9 9 10 1024} { do qx_rule_hash_delete_by_hash_index 1 $index }
}

proc each_translation {} {
    set settings {seq_num_diff 3 timestamp_diff 100 input_ssrc 5 output_ssrc 6}
    set id [do qx_rtp_translate_add 0 $settings [flow 20 2000]]
    do qx_rtp_translate_add 0 $settings [flow 21 2001]
    do qx_rtp_translate_add 0 {input_ssrc 1} {ingress_pkt {phy_port 32}}
    do qx_rtp_statistics_get $id
    do qx_rtp_statistics_get 999
    do qx_flow_delete 0 20
    do qx_rtp_translate_delete 0 {input_ssrc 9}
    foreach _ {1 2} { do qx_rtp_translate_delete 0 $settings }
    set id [do qx_rtp_translate_add 0 {input_ssrc 2} [flow 21 2001]]
    foreach number [list $id $id 999] { do qx_rtp_translate_delete_by_id 0 $number }
    set settings {translate_type 1 port_set_id 3 port_set_id_length 4 copy_tos 1
        v6_pkt {sa_ip 2001:db8::/64 da_ip 2001:db8:0:2::/128}}
    set id [do qx_ip_translate_add 0 $settings]
    do qx_ip_translate_add 0 $settings
    do qx_ip_translate_add 0 {translate_type 4}
    do qx_ip_translate_add 0 {v6_pkt {phy_port 40}}
    foreach number [list $id 99] { do qx_ip_translate_get 0 $number }
    foreach words [list [list $id [flow 30 3000]] [list $id [flow 30 3000]] [list 99 [flow 31 3001]]] {
        do qx_ip_translate_flow_add 0 {*}$words
    }
    do qx_ip_translate_del 0 $id
    foreach words [list [list $id [flow 31 3001]] [list $id [flow 30 3000]] [list $id [flow 30 3000]]] {
        do qx_ip_translate_flow_del 0 {*}$words
    }
    foreach number [list $id $id 99] { do qx_ip_translate_del 0 $number }
}

proc hop {number args} {
    dict merge [list nhid [list nhop_type 0 addr 10.0.0.$number intf_id $number] \
        da_mac 02:00:00:00:00:0$number id {port_id 5}] $args
}
proc each_l3 {} {
    set route [list prefix 10.1.0.0/16 nexthop [hop 1]]
    do qx_l3_route_add 2 $route
    do qx_l3_route_add 2 $route
    do qx_l3_route_add 2 {prefix {addr_len 33}}
    do qx_l3_route_add 2 [list prefix 10.2.0.0/16 nexthop [hop 1 da_mac 02:00:00:00:00:09]]
    do qx_l3_route_add 2 {nexthop {nhid {nhop_type 1} id {tunnel_id 9}}}
    do qx_l3_route_add 2 [list prefix 10.3.0.0/16 nexthop [hop 2]]
    foreach prefix {10.1.2.3 10.3.0.0/24 172.16.0.0/12} { do qx_l3_route_get 2 [list prefix $prefix] }
    do qx_l3_route_get 2 {prefix {afi 2}}
    do qx_l3_route_show 2 {} 0
    do qx_l3_route_show 2 {prefix 10.1.0.0/16} 1
    do qx_l3_route_show 2 {prefix 10.3.0.0/16} 1
    do qx_l3_route_show 2 {} 2
    set index [do qx_l3_nexthop_add 2 [hop 3]]
    do qx_l3_nexthop_add 2 [hop 3]
    do qx_l3_nexthop_add 2 {nhid {nhop_type 3}}
    do qx_l3_nexthop_add 2 {nhid {nhop_type 2} id {ipsec_said 1}}
    foreach number [list $index 99] { do qx_l3_nexthop_get 2 $number }
    do qx_l3_nexthop_show 2 {} 0
    do qx_l3_nexthop_show 2 [hop 2] 1
    do qx_l3_nexthop_show 2 [hop 3] 1
    do qx_l3_nexthop_show 2 {} 3
    do qx_l3_nexthop_update 2 [hop 3 da_mac 02:00:00:00:00:77]
    do qx_l3_nexthop_update 2 [hop 4]
    foreach number {1 3 3 4} { do qx_l3_nexthop_delete 2 [hop $number] }
    foreach _ {1 2} { do qx_l3_route_delete 2 $route }
    do qx_l3_route_delete 2 {prefix 192.0.2.0/24}
    do qx_l3_nhintf_all_route_delete 2 2
    do qx_l3_route_init_0 2
    foreach _ {1 2} { do qx_l3_route_shut 2 }
    do qx_l3_nhintf_all_route_delete 2 2
    do qx_l3_nexthop_get 2 1
    do qx_l3_route_init_0 2
    do qx_l3_route_add 2 $route
    do qx_l3_route_init_0 2
    foreach subnet {10.0.0.0/8 10.0.0.0/8 {addr_len 40}} { do qx_nat_subnet_add 2 3 $subnet }
    foreach subnet {10.0.0.0/8 10.0.0.0/8 11.0.0.0/8 {afi 5}} { do qx_nat_subnet_delete 2 3 $subnet }
    foreach words {{3 1 1400} {3 1 1400} {32 1 1400} {3 2 1400} {3 0 67}} {
        do qx_port_encap_ip_mtu_add 2 {*}$words
    }
    foreach words {{3 1} {4 1} {32 1} {3 2}} { do qx_port_encap_ip_mtu_get 2 {*}$words }
    foreach words {{3 1} {3 1} {4 1} {32 1} {3 2}} { do qx_port_encap_ip_mtu_delete 2 {*}$words }
}

proc tunnel {type number args} {
    dict merge [list type $type dest_addr 192.0.2.$number src_addr 192.0.2.250 tx_port 1 dir 1] $args
}
proc each_tunnel {} {
    set gre [tunnel 1 1 tunnel {gre {tunnel_id 4 up_call_id 5 down_call_id 6}}]
    set id [do qx_tunnel_add 0 $gre]
    do qx_tunnel_add 0 $gre
    do qx_tunnel_add 0 [tunnel 4 1]
    do qx_tunnel_add 0 [tunnel 1 2 tx_port 32]
    do qx_tunnel_add 0 [tunnel 1 2 nexthop_id 9]
    do qx_tunnel_add 0 [tunnel 2 2]
    do qx_tunnel_add 0 [tunnel 1 2 tunnel {gre {overlay_tunnel_egress {pptp_sa_id 9}}}]
    foreach number [list $id 99] { do qx_tunnel_get 0 $number }
    do qx_tunnel_mtu_set 0 [list tunnel_type 1 tunnel_id $id mtu 1400]
    do qx_tunnel_mtu_set 0 [list tunnel_type 1 tunnel_id $id mtu 67]
    do qx_tunnel_mtu_set 0 [list tunnel_type 0 tunnel_id $id mtu 1400]
    do qx_tunnel_mtu_get 0 [list tunnel_type 1 tunnel_id $id]
    do qx_tunnel_mtu_get 0 [list tunnel_type 0 tunnel_id $id]
    do qx_tunnel_mtu_get 0 {tunnel_type 1 tunnel_id 99}
    do qx_l2tp_session_add 0 $id 5
    foreach _ {1 2} { do qx_tunnel_delete 0 $gre }
    do qx_tunnel_delete 0 [tunnel 1 9]
    set l2tp [tunnel 0 3 tunnel {l2tp {tid 8 cookie_len 4 cookie 0xa1b2c3d4 l2specific_len 4
        l2tp_src_mac 02:00:00:00:00:31}}]
    set id [do qx_tunnel_add 0 $l2tp]
    do qx_tunnel_get 0 $id
    foreach session {5 5 0} { do qx_l2tp_session_add 0 $id $session }
    foreach words [list [list $id 5] [list $id 6] {99 5}] { do qx_l2tp_session_get 0 {*}$words }
    foreach prefix {2001:db8:0:1::/64 2001:db8:0:2::/64 2001:db8:0:1::/64 10.0.0.0/8} {
        do qx_ipv6_over_l2tp_add 0 $id 5 $prefix
    }
    do qx_ipv6_over_l2tp_add 0 $id 6 2001:db8:0:1::/64
    foreach prefix {{} 2001:db8:0:1::/64 2001:db8:0:2::/64 {afi 7}} {
        do qx_ipv6_over_l2tp_getnext 0 $id 5 $prefix
    }
    do qx_l2tp_session_delete 0 $id 5
    do qx_tunnel_delete_by_idx 0 $id
    foreach prefix {2001:db8:0:1::/64 2001:db8:0:2::/64 2001:db8:0:2::/64 2001:db8:0:9::/64} {
        do qx_ipv6_over_l2tp_delete 0 $id 5 $prefix
    }
    foreach session {5 5 6} { do qx_l2tp_session_delete 0 $id $session }
    foreach number [list $id $id 99] { do qx_tunnel_delete_by_idx 0 $number }
}

proc each_ipsec {} {
    do qx_ipsec_spd_add 3 1 1
    foreach _ {1 2} { do qx_ipsec_init 3 }
    set spd [do qx_ipsec_spd_add 3 1 1]
    foreach words {{1 1} {2 1}} { do qx_ipsec_spd_add 3 {*}$words }
    set fields {policy_id 20 policy_action 2 selector_count 2
        selector_array {{protocol 6 src_ip 10.1.0.0/16 dst_ip 10.9.0.0/16 dst_port 443} {protocol 17}}}
    set policy [do qx_ipsec_policy_add 3 $spd $fields]
    do qx_ipsec_policy_add 3 $spd $fields
    do qx_ipsec_policy_add 3 $spd {policy_action 3 selector_count 1}
    do qx_ipsec_policy_add 3 $spd {selector_count 5}
    do qx_ipsec_policy_add 3 $spd {selector_count 1 selector_array {{src_ip {afi 2}}}}
    do qx_ipsec_policy_add 3 99 {selector_count 1}
    set first {spi 4096 sa_dir 1 ekey 0x00112233445566778899aabbccddeeff ealg 2 enc_keylen 4}
    set second {spi 4097 sa_dir 1 tunnel 1 proto 1 lifetime_bytes 4000000000}
    set sa [do qx_ipsec_sa_add 3 $spd $policy [list $first $second] 0]
    do qx_ipsec_sa_add 3 $spd $policy [list $first] 0
    do qx_ipsec_sa_add 3 $spd $policy {{spi 255 sa_dir 1}} 0
    do qx_ipsec_sa_add 3 $spd $policy {{spi 5000 sa_dir 0}} 0
    do qx_ipsec_sa_add 3 $spd $policy {{spi 5000 sa_dir 1} {spi 5000 sa_dir 1}} 0
    do qx_ipsec_sa_add 3 $spd $policy {{} {} {} {} {}} 0
    do qx_ipsec_sa_add 3 $spd $policy {{spi 5000 sa_dir 1}} 99
    do qx_ipsec_sa_add 3 99 $policy {{spi 5000 sa_dir 1}} 0
    set after [do qx_ipsec_sa_add 3 $spd $policy {{spi 5001 sa_dir 1}} $sa]
    do qx_ipsec_policy_delete 3 $spd $policy
    foreach entry [list $sa $after $sa 99] { do qx_ipsec_sa_delete 3 $spd $policy $entry }
    do qx_ipsec_spd_delete 3 $spd
    foreach handle [list $policy $policy 99] { do qx_ipsec_policy_delete 3 $spd $handle }
    foreach handle [list $spd $spd 99] { do qx_ipsec_spd_delete 3 $handle }
}

proc each_session {} {
    set session {sa_id 5 dir 1 call_id 77 local_addr 192.0.2.1 remote_addr 192.0.2.2 crypto_type 1
        key 0x000102030405060708090a0b0c0d0eff keylen 16 seq_num 9}
    foreach _ {1 2} { do qx_pptp_session_add 1 $session }
    do qx_pptp_session_add 1 {sa_id 0}
    do qx_pptp_session_add 1 {sa_id 1 dir 2}
    do qx_pptp_session_add 1 {sa_id 1 keylen 17}
    do qx_pptp_session_add 1 {sa_id 1 local_addr {afi 2}}
    foreach words {{sa_id 5 dir 1} {sa_id 5 dir 0} {sa_id 5 dir 2}} { do qx_pptp_session_get 1 $words }
    foreach number {5 6} { do qx_pptp_key_change 1 $number }
    do qx_pptp_session_get 1 {sa_id 5 dir 1}
    do qx_pptp_session_add 1 {sa_id 8}
    do qx_pptp_key_change 1 8
    do qx_tunnel_add 1 [tunnel 1 2 tunnel {gre {overlay_tunnel_egress {pptp_sa_id 5}}}]
    do qx_pptp_session_clear_all 1
    do qx_pptp_session_delete 1 5 1
    do qx_tunnel_delete 1 [tunnel 1 2]
    foreach words {{5 1} {5 1} {6 1} {5 2}} { do qx_pptp_session_delete 1 {*}$words }
    foreach device {1 4} { do qx_pptp_session_clear_all $device }
    foreach words {{4 100} {4 100} {32 101}} { do qx_pppoe_port_add 1 {*}$words }
    do qx_pppoe_port_config_get 1 100
    set fields {src_mac 02:00:00:00:00:41 dest_mac 02:00:00:00:00:42 pppoe_session_id 9 vlan_tag 7}
    do qx_pppoe_port_encap_set 1 100 $fields
    do qx_pppoe_port_encap_set 1 101 $fields
    do qx_pppoe_port_encap_set 1 100 {pppoe_session_id 0}
    do qx_pppoe_port_encap_set 1 100 {pppoe_session_id 1 tx_phy_port 32}
    foreach port {100 101} { do qx_pppoe_port_config_get 1 $port }
    foreach port {100 100 101} { do qx_pppoe_port_delete 1 $port }
}

proc every_call {} {
    foreach part {qos power flow rule translation l3 tunnel ipsec session} { each_$part }
}
