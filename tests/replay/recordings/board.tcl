# What board.rec has the answers for, and board.txt what it prints. They were made by the build
# `board`, whose programs `launch` runs on a PC:
#     launch board LD_PRELOAD=<build>/lib/libqx-record.so QX_RECORD=board.rec \
#         <build>/bin/qxsh board.tcl
# with the SDK library in /opt/qx/lib, named in LD_LIBRARY_PATH. A recording of a real board's library
# may take its place.
package require qx

proc show {function args} {
    set out [qx::call -status status -dict $function {*}$args]
    puts [list $function $status $out]
    return [lindex $out 1]
}

# Numbers of all widths, failures.
show qx_pm_cpu_info_get 1
show qx_pm_cpu_frequency_set 1 99
show qx_qos_dscp_map_set 1 31 63 7
show qx_qos_dscp_map_get 1 31 63
show qx_qos_dscp_map_get 1 32 63
show qx_port_encap_ip_mtu_add 1 3 1 1492
show qx_port_encap_ip_mtu_get 1 3 1

# Records in records, arrays, unions, bit fields.
set flow {flow_id 65535 ingress_pkt {phy_port 31 da_mac 02:00:00:00:01:01 protocol 17
    sa_ip 2001:db8::1 da_ip 2001:db8::2 tag {{vlan_id 4095 priority 7}}
    l4_header {udp {sport 65535 dport 53}}} swid_array {1 2 3}}
show qx_flow_add 1 $flow
show qx_flow_add 1 $flow
show qx_flow_get_lastuse_tickcount 1 65535
show qx_flow_delete 1 65535
set settings {translate_type 3 copy_tos 1 port_set_id 9
    v6_pkt {sa_ip 2001:db8::/64 da_ip 2001:db8:1::/64}}
set id [show qx_ip_translate_add 1 $settings]
show qx_ip_translate_get 1 $id
show qx_ip_translate_del 1 $id
set route {prefix 10.1.0.0/16 nexthop {nhid {addr 10.0.0.1 intf_id 4}
    da_mac 02:00:00:00:00:01 id {port_id 5}}}
show qx_l3_route_add 1 $route
show qx_l3_route_get 1 {prefix 10.1.2.3}
show qx_l3_route_show 1 {} 0
show qx_l3_route_show 1 {prefix 10.1.0.0/16} 1
show qx_l3_route_delete 1 $route

# An array of records with keys, and the handles that a device gives.
show qx_ipsec_init 1
set spd [show qx_ipsec_spd_add 1 1 1]
set policy [show qx_ipsec_policy_add 1 $spd {policy_id 20 policy_action 2 selector_count 1}]
set first {spi 4096 sa_dir 1 ekey 0x00112233445566778899aabbccddeeff ealg 2 enc_keylen 4}
set sa [show qx_ipsec_sa_add 1 $spd $policy [list $first {spi 4097 sa_dir 1}] 0]
show qx_ipsec_sa_delete 1 $spd $policy 99
show qx_ipsec_sa_delete 1 $spd $policy $sa
show qx_pptp_session_add 1 {sa_id 5 dir 1 local_addr 192.0.2.1 remote_addr 192.0.2.2 crypto_type 1
    key 0x000102030405060708090a0b0c0d0eff keylen 16}
show qx_pptp_session_get 1 {sa_id 5 dir 1}
show qx_rtp_statistics_get 999
