# A rule-hash entry: what a packet has to look like (the key), and what happens to it (VLAN edit,
# queue and policer, forwarding result). Here DNS requests of VLAN 20 are sent to a resolver of our
# own.
# Run it with:  ./run examples/rule_hash.tcl
package require qx

set device 0
set slot 42 ;# the entry says itself which slot of the table it takes

# UDP to port 53, from VLAN 20.
set key {
    mac_da 02:00:00:00:01:01 mac_sa 02:00:00:aa:00:17 eth_type 0x0800
    tpid_enc_1 1 _8021p_1 0 vid_1 20
    sa 192.168.20.9 da 203.0.113.53 ip_version 4 ip_valid 1 ip_prot 17
    l4_valid 1 l4_sp 5353 l4_dp 53
}

# A new destination MAC (layer 2) and IP address (layer 3), one hop less, no drop.
set result {
    l2 {mac_da_replace_en 1 l2_index 11 mac_da 02:00:00:cc:00:35}
    l3 {ip_da_replace_en 1 ip_da_index 5 decr_ttl_hoplimit 1 ip_da 10.0.0.53}
}

# The tag comes off, and the packet goes into queue 3 under policer 1.
set rule [dict create apptype 1 mac_type 2 hash_index $slot \
    voq_pol_idx 7 fwd_rslt_idx 8 vlan_rslt_idx 9 key $key fwd_result $result \
    fvlan {first_vlan_cmd 2} voq_pol {voq_base 3 pol_base 1 ldpid 4}]
qx::call qx_rule_hash_add $device $rule

set found [qx::call qx_rule_hash_get_by_hash_index $device $slot]
puts "from [dict get $found key mac_sa], [dict get $found key sa],\
    VLAN [dict get $found key vid_1]: [dict get $found key da] becomes\
    [dict get $found fwd_result l3 ip_da]"

# A slot is taken until its rule is deleted.
qx::with record qx_rule_hash_t $found {
    puts [qx::show $record]
    set status [qx::check -allow QX_EXISTS qx_rule_hash_add $device $record]
    puts "once more: [qx::catalogue::status_name $status]"
}
qx::call qx_rule_hash_delete_by_hash_index $device $slot
puts "left: [llength [qx::list rules]] rules"
