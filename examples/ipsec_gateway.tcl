# An IPsec gateway: databases (SPDs) and policies that say which traffic is protected, security
# associations (SAs) with their keys, the tunnel and the next hop that lead into them.
# Run it with:  ./run examples/ipsec_gateway.tcl
package require qx

set device 0
lassign {203.0.113.5 10.1.0.0/16 198.51.100.99 10.9.0.0/16} near here far there

# An SA: ESP in tunnel mode. Real keys come out of a key exchange.
proc association {spi dir from to key} {
    return [dict create spi $spi sa_dir $dir tunnel 1 replay_window 64 ealg 1 aalg 2 \
        tunnel_saddr $from tunnel_daddr $to ekey $key akey $key lifetime_bytes 4000000000]
}

qx::call qx_ipsec_init $device
foreach {dir from to source target spi} [list in $far $near $there $here 0x1001 \
        out $near $far $here $there 0x2001] {
    set spd($dir) [qx::call qx_ipsec_spd_add $device $dir 1]
    set policy($dir) [qx::call qx_ipsec_policy_add $device $spd($dir) [dict create policy_id 10 \
        policy_action protect selector_count 1 \
        selector_array [list [dict create src_ip $source dst_ip $target]]]]
    set sa($dir) [qx::call qx_ipsec_sa_add $device $spd($dir) $policy($dir) \
        [list [association $spi $dir $from $to 0x000102030405060708090a0b0c0d0e0f]] 0]
}
set tunnel [qx::call qx_tunnel_add $device [dict create type ipsec tx_port 4 dir out \
    src_addr $near dest_addr $far tunnel [list ipsec [list ipsec_policy $policy(out)]]]]
set hop [dict create nhid [list nhop_type sa addr $far intf_id 4] id [list ipsec_said $sa(out)]]
qx::call qx_l3_nexthop_add $device $hop
puts [qx::show nexthops]
puts "deleting the SA while a next hop leads into it: status\
    [qx::check -allow QX_IN_USE qx_ipsec_sa_delete $device $spd(out) $policy(out) $sa(out)]"

qx::call qx_l3_nexthop_delete $device $hop
qx::call qx_tunnel_delete_by_idx $device $tunnel
foreach dir {in out} {
    qx::call qx_ipsec_sa_delete $device $spd($dir) $policy($dir) $sa($dir)
    qx::call qx_ipsec_policy_delete $device $spd($dir) $policy($dir)
    qx::call qx_ipsec_spd_delete $device $spd($dir)
}
