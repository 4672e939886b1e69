# An EtherIP tunnel: Ethernet frames of one LAN travel through an IPv6 network to another one.
# Run it with:  ./run examples/etherip_tunnel.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0
set local 2001:db8:12::1
set remote 2001:db8:34::1

# The settings of the kind. Its end points are bare addresses, without family and length.
set etherip [qx_etherip_tunnel_cfg_create]
set_fields qx_etherip_tunnel_cfg $etherip replace_inner_sa 1 default_tos 0x10 hop_limit 64 \
    flow_label 0x12345
set from [qx_etherip_tunnel_cfg_get_tun_saddr $etherip]
set to [qx_etherip_tunnel_cfg_get_tun_daddr $etherip]
qx::set $from [list ipv6_addr $local]
qx::set $to [list ipv6_addr $remote]
qx::set $etherip {local_lan_mac 02:00:00:00:01:01 outer_src_mac 02:00:00:00:01:04
    outer_dst_mac 02:00:00:bb:00:01}

# The tunnel itself, all fields in one go: type 3, port 4, no next hop of its own (0), both
# directions (2). The nested records are copied, so that the ones given here are free again
# afterwards.
set settings [qx_tunnel_cfg_union_create]
qx_tunnel_cfg_union_set_etherip $settings $etherip
set to [new_ip $remote]
set from [new_ip $local]
set cfg [qx_tunnel_cfg_create]
qx_tunnel_cfg_init $cfg 3 $to $from 4 0 2 $settings
release $settings $etherip $to $from

set tunnel [filled uint32 cell { must qx_tunnel_add $device $cfg $cell }]

# ------------------------------------------------------------------------------------- reading back

set found [qx_tunnel_cfg_create]
must qx_tunnel_get $device $tunnel $found
puts "tunnel $tunnel: [ip [qx_tunnel_cfg_get_src_addr $found]] ->\
    [ip [qx_tunnel_cfg_get_dest_addr $found]], [fields qx_tunnel_cfg $found type tx_port dir]"
set etherip [qx_tunnel_cfg_union_get_etherip [qx_tunnel_cfg_get_tunnel $found]]
puts "frames go out from [dict get [qx::get $etherip] outer_src_mac]\
    to [dict get [qx::get $etherip] outer_dst_mac]"
puts "its EtherIP settings:"
qx_etherip_tunnel_cfg_dump $etherip

# A tunnel is known by its kind, end points and direction: the same again is refused.
set cell [qx_uint32_create 4711]
puts "once more: [expect QX_EXISTS qx_tunnel_add $device $cfg $cell],\
    and nothing is written: [qx_uint32_get $cell]"

# That is also how it can be deleted without its id: by the configuration.
must qx_tunnel_delete $device $cfg
puts "deleted; reading it now: [expect QX_NO_TUNNEL qx_tunnel_get $device $tunnel $found]"

release $cfg $found $cell
puts done
