# Fills device 0 with entries of every table; tests/qx/tables.test sources it in the shell. The ids
# that the device gives out are in variables.

proc fill {} {
    upvar 1 next_hop next_hop tunnel tunnel gre gre policy policy sa sa
    foreach {id mac address} {7 02:00:00:00:01:01 198.51.100.7 8 02:00:00:00:01:02 198.51.100.8} {
        qx::call qx_flow_add 0 [list flow_id $id life_time 300 ingress_pkt [list phy_port 1 \
            da_mac $mac eth_type 2048 da_ip $address sa_ip 192.168.1.23 protocol 6 \
            l4_header {tcp {sport 40123 dport 443}}] egress_pkt {phy_port 2 sa_ip 192.0.2.1}]
    }
    qx::call qx_rule_hash_add 0 {hash_index 5 apptype 2 key {ip_prot 17}}
    qx::call qx_ipsec_init 0
    set spd [qx::call qx_ipsec_spd_add 0 out 1]
    set policy [qx::call qx_ipsec_policy_add 0 $spd {policy_id 20 policy_action protect
        selector_array {{src_ip 10.1.0.0/16 dst_ip 10.9.0.0/16}} selector_count 1}]
    set sa [qx::call qx_ipsec_sa_add 0 $spd $policy {{spi 4096 sa_dir 1}} 0]
    set over_port {nhid {addr 192.0.2.254 intf_id 3} da_mac 02:00:00:00:00:09 id {port_id 3}}
    set next_hop [qx::call qx_l3_nexthop_add 0 $over_port]
    set tunnel [qx::call qx_tunnel_add 0 [list type l2tp src_addr 192.0.2.1 dest_addr 192.0.2.2 \
        nexthop_id $next_hop dir both tunnel [list l2tp [list tid 5 ipsec_policy $policy]]]]
    qx::call qx_l2tp_session_add 0 $tunnel 17
    qx::call qx_l2tp_session_add 0 $tunnel 65535
    qx::call qx_ipv6_over_l2tp_add 0 $tunnel 17 2001:db8:2::/48
    qx::call qx_ipv6_over_l2tp_add 0 $tunnel 17 2001:db8:1::/48
    qx::call qx_pptp_session_add 0 {sa_id 9 dir out call_id 3 local_addr 192.0.2.1
        remote_addr 192.0.2.7 crypto_type 1 key 0x000102030405060708090a0b0c0d0e0f keylen 16}
    set gre [qx::call qx_tunnel_add 0 [list type gre src_addr 192.0.2.1 dest_addr 192.0.2.7 \
        nexthop_id $next_hop dir both tunnel {gre {tunnel_id 1
        overlay_tunnel_egress {enc_policy 9}}}]]
    qx::call qx_l3_route_add 0 [list prefix 10.0.0.0/8 nexthop $over_port]
    qx::call qx_l3_route_add 0 [list prefix 10.9.0.0/16 nexthop \
        [list nhid {nhop_type sa addr 192.0.2.9 intf_id 4} id [list ipsec_said $sa]]]
    qx::call qx_l3_route_add 0 [list prefix 10.8.0.0/16 nexthop \
        [list nhid {nhop_type tunnel addr 192.0.2.2 intf_id 5} id [list tunnel_id $tunnel]]]
    qx::call qx_pppoe_port_add 0 4 11
    qx::call qx_pppoe_port_add 0 5 12
    qx::call qx_pppoe_port_encap_set 0 12 {src_mac 02:00:00:00:00:01 pppoe_session_id 77
        tx_phy_port 5}
    qx::call qx_port_encap_ip_mtu_add 0 4 pppoe 1492
    qx::call qx_port_encap_ip_mtu_add 0 31 ethernet 1500
    qx::call qx_ip_translate_add 0 {translate_type 1
        v6_pkt {da_ip 2001:db8::1 sa_ip 2001:db8::2}}
    qx::call qx_rtp_translate_add 0 {seq_num_diff 5 input_ssrc 1 output_ssrc 2} {flow_id 99
        ingress_pkt {phy_port 9}}
}

# What a script does: its result, or the error's message and code.
proc say {script} {
    if {[catch { uplevel #0 $script } result]} { set result "$result\n  [lrange $::errorCode 0 2]" }
    puts $result
}
