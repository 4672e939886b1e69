# An IPsec gateway between two networks: a policy database (SPD) for each direction, policies whose
# selectors say which traffic they are for, security associations (SAs) with their keys, and the
# tunnel and the next hop that are bound to them. Everything is read back and then taken down in
# order.
# Run it with:  ./run examples/ipsec_gateway.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0
set inbound 0
set outbound 1
set protect 2 ;# policy actions: 0 lets traffic pass, 1 drops it

set here   {gateway 203.0.113.5    networks {10.1.0.0/16 10.2.0.0/16}}
set there  {gateway 198.51.100.99  networks {10.9.0.0/16}}

# ------------------------------------------------------------------------- databases and policies

must qx_ipsec_init $device
set spd(in)  [filled uint32 cell { must qx_ipsec_spd_add $device $inbound 1 $cell }]
set spd(out) [filled uint32 cell { must qx_ipsec_spd_add $device $outbound 1 $cell }]

# A selector for each pair of networks; protocol and ports 0 stand for any.
proc selectors {policy from to} {
    set count 0
    foreach source $from {
        foreach destination $to {
            set selector [qx_ipsec_policy_get_selector_array $policy $count]
            set_ip [qx_ipsec_selector_get_src_ip $selector] $source
            set_ip [qx_ipsec_selector_get_dst_ip $selector] $destination
            incr count
        }
    }
    # The count does not follow the slots by itself; there are four.
    qx_ipsec_policy_set_selector_count $policy $count
}

proc add_policy {spd id from to} {
    global device protect
    set record [qx_ipsec_policy_create]
    set_fields qx_ipsec_policy $record policy_id $id policy_action $protect
    selectors $record $from $to
    set handle [filled uint32 cell { must qx_ipsec_policy_add $device $spd $record $cell }]
    puts "policy $id: [fields qx_ipsec_policy $record policy_action selector_count]"
    for {set index 0} {$index < [qx_ipsec_policy_get_selector_count $record]} {incr index} {
        set selector [qx_ipsec_policy_get_selector_array $record $index]
        puts "  [ip [qx_ipsec_selector_get_src_ip $selector]] ->\
            [ip [qx_ipsec_selector_get_dst_ip $selector]]"
    }
    release $record
    return $handle
}

set policy(in)  [add_policy $spd(in) 10 [dict get $there networks] [dict get $here networks]]
set policy(out) [add_policy $spd(out) 20 [dict get $here networks] [dict get $there networks]]

# -------------------------------------------------------------------------------- the associations

# Fills one SA of an array: ESP in tunnel mode. The codes of algorithms and lengths are the SDK's
# own. Real keys come out of a key exchange and not out of a script.
proc fill_sa {sa spi direction from to key} {
    set_fields qx_ipsec_sa $sa spi $spi replay_window 64 tunnel 1 sa_dir $direction \
        ealg 1 ealg_mode 1 enc_keylen 8 iv_len 4 aalg 2 auth_keylen 5 icv_trunclen 3 \
        lifetime_bytes 4000000000 lifetime_packets 100000000
    for {set index 0} {$index < 32} {incr index} {
        qx_ipsec_sa_set_ekey $sa [expr {($key + $index) & 255}] $index
    }
    qx_ipsec_sa_set_akey $sa $key 4294967295 ;# this index means all 32
    qx::set [qx_ipsec_sa_get_tunnel_saddr $sa] [list ipv4_addr $from]
    qx::set [qx_ipsec_sa_get_tunnel_daddr $sa] [list ipv4_addr $to]
}

# The SAs of each direction stand in an array and are added together. Previous handle 0: first in
# the chain.
set near [dict get $here gateway]
set far  [dict get $there gateway]
set sas [qx_ipsec_sa_array_create 2]
fill_sa [qx_ipsec_sa_array_get $sas 0] 0x1001 $inbound $far $near 0x20
fill_sa [qx_ipsec_sa_array_get $sas 1] 0x1002 $inbound $far $near 0x40
set sa(in) [filled uint32 cell {
    must qx_ipsec_sa_add $device $spd(in) $policy(in) 2 $sas 0 $cell
}]
fill_sa [qx_ipsec_sa_array_get $sas 0] 0x2001 $outbound $near $far 0x60
set sa(out) [filled uint32 cell {
    must qx_ipsec_sa_add $device $spd(out) $policy(out) 1 $sas 0 $cell
}]

# A rekeyed SA stands behind the one it will replace: that one's handle is the previous one.
set rekeyed [qx_ipsec_sa_array_get $sas 1]
fill_sa $rekeyed 0x2002 $outbound $near $far 0x80
set sa(rekeyed) [filled uint32 cell {
    must qx_ipsec_sa_add $device $spd(out) $policy(out) 1 $rekeyed $sa(out) $cell
}]
puts "SAs are in; the rekeyed one:"
qx_ipsec_sa_dump $rekeyed

# --------------------------------------------------------------------- what is bound to all this

# A tunnel of type 2 names the policy that protects it.
set cfg [qx_tunnel_cfg_create]
set_fields qx_tunnel_cfg $cfg type 2 tx_port 4 dir $outbound
set_ip [qx_tunnel_cfg_get_src_addr $cfg] $near
set_ip [qx_tunnel_cfg_get_dest_addr $cfg] $far
set protection [qx_tunnel_cfg_union_get_ipsec [qx_tunnel_cfg_get_tunnel $cfg]]
qx_ipsec_tunnel_cfg_init $protection $policy(out)
set tunnel [filled uint32 cell { must qx_tunnel_add $device $cfg $cell }]
set mtu [qx_tunnel_mtu_create]
qx_tunnel_mtu_init $mtu 2 $tunnel 1400
must qx_tunnel_mtu_set $device $mtu

# A next hop of type 2 leads into an SA.
set hop [qx_l3_nexthop_create]
set nhid [qx_l3_nexthop_get_nhid $hop]
set_fields qx_l3_nexthop_id $nhid nhop_type 2 intf_id 4
set_ip [qx_l3_nexthop_id_get_addr $nhid] $far
qx_l3_nexthop_intf_binding_set_ipsec_said [qx_l3_nexthop_get_id $hop] $sa(out)
set index [filled uint32 cell { must qx_l3_nexthop_add $device $hop $cell }]

# ------------------------------------------------------------------------------------- reading back

proc yes_or_no {found meant} { expr {$found == $meant ? "yes" : "no, $found"} }

set found [qx_tunnel_cfg_create]
must qx_tunnel_get $device $tunnel $found
set protection [qx_tunnel_cfg_union_get_ipsec [qx_tunnel_cfg_get_tunnel $found]]
puts "tunnel: [ip [qx_tunnel_cfg_get_src_addr $found]] ->\
    [ip [qx_tunnel_cfg_get_dest_addr $found]], [fields qx_tunnel_cfg $found type tx_port dir]"
puts "  protected by the outbound policy:\
    [yes_or_no [qx_ipsec_tunnel_cfg_get_ipsec_policy $protection] $policy(out)]"
qx_tunnel_mtu_set_mtu $mtu 0
must qx_tunnel_mtu_get $device $mtu
puts "  MTU inside: [qx_tunnel_mtu_get_mtu $mtu]"

set found_hop [qx_l3_nexthop_create]
must qx_l3_nexthop_get $device $index $found_hop
set nhid [qx_l3_nexthop_get_nhid $found_hop]
puts "next hop $index: [ip [qx_l3_nexthop_id_get_addr $nhid]],\
    [fields qx_l3_nexthop_id $nhid nhop_type intf_id]"
set bound [qx_l3_nexthop_intf_binding_get_ipsec_said [qx_l3_nexthop_get_id $found_hop]]
puts "  leads into the outbound SA: [yes_or_no $bound $sa(out)]"

# The device gives no policy and no SA back. That they are there shows when something they hold is
# taken away.
puts "deleting what is in use:"
puts "  SPD:    [expect QX_IN_USE qx_ipsec_spd_delete $device $spd(out)]"
puts "  policy: [expect QX_IN_USE qx_ipsec_policy_delete $device $spd(out) $policy(out)]"
puts "  SA:     [expect QX_IN_USE qx_ipsec_sa_delete $device $spd(out) $policy(out) $sa(out)]"

# --------------------------------------------------------------------------------------- tear-down

# What is bound goes first, then associations, policies, databases.
must qx_l3_nexthop_delete $device $hop
must qx_tunnel_delete_by_idx $device $tunnel
must qx_ipsec_sa_delete $device $spd(out) $policy(out) $sa(out)
must qx_ipsec_sa_delete $device $spd(out) $policy(out) $sa(rekeyed)
must qx_ipsec_sa_delete $device $spd(in) $policy(in) $sa(in)
foreach way {in out} {
    must qx_ipsec_policy_delete $device $spd($way) $policy($way)
    must qx_ipsec_spd_delete $device $spd($way)
}
puts "next hop, tunnel, SAs, policies, SPDs: deleted"

release $sas $cfg $found $mtu $hop $found_hop
puts done
