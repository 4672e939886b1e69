# An EtherIP tunnel: Ethernet frames of one LAN travel through an IPv6 network to another one.
# Run it with:  ./run examples/etherip_tunnel.tcl
package require qx

set device 0
set local 2001:db8:12::1
set remote 2001:db8:34::1

# The tunnel's own end points have family and length, those in the settings of its kind are bare.
set settings [dict create replace_inner_sa 1 default_tos 0x10 hop_limit 64 flow_label 0x12345 \
    tun_saddr [list ipv6_addr $local] tun_daddr [list ipv6_addr $remote] \
    local_lan_mac 02:00:00:00:01:01 outer_src_mac 02:00:00:00:01:04 \
    outer_dst_mac 02:00:00:bb:00:01]
set tunnel [dict create type etherip src_addr $local dest_addr $remote tx_port 4 dir both \
    tunnel [list etherip $settings]]
set id [qx::call qx_tunnel_add $device $tunnel]

# A tunnel is known by its kind, end points and direction, so it can be deleted without its id.
qx::with found qx_tunnel_cfg_t [qx::call qx_tunnel_get $device $id] {
    puts "tunnel $id:"
    puts [qx::show $found]
    qx::call qx_tunnel_delete $device $found
    set status [qx::check -allow QX_NO_TUNNEL qx_tunnel_get $device $id $found]
    puts "deleted; reading it now: [qx::catalogue::status_name $status]"
}
