# An L2TP tunnel with two sessions, and the IPv6 prefixes that are reached through one of them.
# Run it with:  ./run examples/l2tp_tunnel.tcl
package require qx

set device 0
set tunnel [qx::call qx_tunnel_add $device {
    type l2tp tx_port 4 dir both src_addr 203.0.113.5 dest_addr 198.51.100.99
    tunnel {l2tp {
        ver 2 tid 9 src_port 1701 dest_port 1701 send_seq 1 encap_type 1 calc_udp_csum 1
        cookie_len 4 cookie 0xc001cafe
        l2tp_src_mac 02:00:00:00:01:04 peer_l2tp_src_mac 02:00:00:bb:00:01
    }}
}]
qx::with found qx_tunnel_cfg_t [qx::call qx_tunnel_get $device $tunnel] { puts [qx::show $found] }

# Room for the headers: the MTU inside is smaller than outside.
qx::call qx_tunnel_mtu_set $device [list tunnel_type l2tp tunnel_id $tunnel mtu 1460]

foreach session {11 12} { qx::call qx_l2tp_session_add $device $tunnel $session }
foreach session {11 12 13} {
    puts "session $session: [qx::call qx_l2tp_session_get $device $tunnel $session]"
}

set prefixes {2001:db8:b::/48 2001:db8:a:1::/64 2001:db8:a::/48}
foreach prefix $prefixes { qx::call qx_ipv6_over_l2tp_add $device $tunnel 11 $prefix }
puts [qx::show l2tp_prefixes -tunnel_id $tunnel -session_id 11]

# From the inside out: prefixes, sessions, tunnel. The other way round is refused.
set status [qx::check -allow QX_IN_USE qx_l2tp_session_delete $device $tunnel 11]
puts "deleting session 11 now: [qx::catalogue::status_name $status]"
foreach prefix $prefixes { qx::call qx_ipv6_over_l2tp_delete $device $tunnel 11 $prefix }
foreach session {11 12} { qx::call qx_l2tp_session_delete $device $tunnel $session }
qx::call qx_tunnel_delete_by_idx $device $tunnel
puts "prefixes, sessions, tunnel: deleted"
