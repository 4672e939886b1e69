# An L2TP tunnel with two sessions, and the IPv6 prefixes that are reached through one of them.
# Run it with:  ./run examples/l2tp_tunnel.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0

# ------------------------------------------------------------------------------------ the tunnel

# Every kind of tunnel is described by the same record: what they have in common, and a union of
# what each kind needs (type 0 L2TP, 1 GRE, 2 IPsec, 3 EtherIP). Direction 2 is both ways; next hop
# 0 is none.
set cfg [qx_tunnel_cfg_create]
set_fields qx_tunnel_cfg $cfg type 0 tx_port 4 nexthop_id 0 dir 2
set_ip [qx_tunnel_cfg_get_src_addr $cfg] 203.0.113.5
set_ip [qx_tunnel_cfg_get_dest_addr $cfg] 198.51.100.99

# The union's members lie over each other; this handle sees it as L2TP settings. Version 2 over UDP.
set l2tp [qx_tunnel_cfg_union_get_l2tp [qx_tunnel_cfg_get_tunnel $cfg]]
set_fields qx_l2tp_tunnel_cfg $l2tp ver 2 tid 9 src_port 1701 dest_port 1701 send_seq 1
set_fields qx_l2tp_tunnel_cfg $l2tp encap_type 1 calc_udp_csum 1 cookie_len 4
fill_array qx_l2tp_tunnel_cfg_set_cookie $l2tp {0xc0 0x01 0xca 0xfe}
qx::set $l2tp {l2tp_src_mac 02:00:00:00:01:04 peer_l2tp_src_mac 02:00:00:bb:00:01}

set tunnel [filled uint32 cell { must qx_tunnel_add $device $cfg $cell }]

set found [qx_tunnel_cfg_create]
must qx_tunnel_get $device $tunnel $found
puts "tunnel $tunnel: [ip [qx_tunnel_cfg_get_src_addr $found]] ->\
    [ip [qx_tunnel_cfg_get_dest_addr $found]], [fields qx_tunnel_cfg $found type tx_port dir]"
puts "its L2TP settings:"
qx_l2tp_tunnel_cfg_dump [qx_tunnel_cfg_union_get_l2tp [qx_tunnel_cfg_get_tunnel $found]]

# Room for the headers: the MTU inside is smaller than outside.
set mtu [qx_tunnel_mtu_create]
qx_tunnel_mtu_init $mtu 0 $tunnel 1460
must qx_tunnel_mtu_set $device $mtu
qx_tunnel_mtu_set_mtu $mtu 0
must qx_tunnel_mtu_get $device $mtu
puts "inside, the MTU is [qx_tunnel_mtu_get_mtu $mtu]"

# ---------------------------------------------------------------------------------- the sessions

foreach session {11 12} { must qx_l2tp_session_add $device $tunnel $session }
foreach session {11 12 13} {
    set there [filled uint8 cell { must qx_l2tp_session_get $device $tunnel $session $cell }]
    puts "session $session: [lindex {absent present} $there]"
}

# --------------------------------------------------------------------- the prefixes of session 11

set prefixes {2001:db8:b::/48 2001:db8:a:1::/64 2001:db8:a::/48}
set prefix [qx_ip_address_create]
foreach text $prefixes {
    set_ip $prefix $text
    must qx_ipv6_over_l2tp_add $device $tunnel 11 $prefix
}

# They are walked in order: each call turns the prefix in the record into the one after it, and a
# record of zeros stands before all.
release $prefix
set prefix [qx_ip_address_create]
proc next_prefix {prefix} {
    expect {QX_OK QX_NO_MORE} qx_ipv6_over_l2tp_getnext $::device $::tunnel 11 $prefix
}
while {[next_prefix $prefix] eq "QX_OK"} {
    puts "behind session 11: [ip $prefix]"
}

# --------------------------------------------------------------------------------------- tear-down

# From the inside out: prefixes, sessions, tunnel. The other way round is refused.
puts "deleting session 11 now: [expect QX_IN_USE qx_l2tp_session_delete $device $tunnel 11]"
foreach text $prefixes {
    set_ip $prefix $text
    must qx_ipv6_over_l2tp_delete $device $tunnel 11 $prefix
}
puts "deleting the tunnel now: [expect QX_IN_USE qx_tunnel_delete_by_idx $device $tunnel]"
foreach session {11 12} { must qx_l2tp_session_delete $device $tunnel $session }
must qx_tunnel_delete_by_idx $device $tunnel
puts "prefixes, sessions, tunnel: deleted"

release $cfg $found $mtu $prefix
puts done
