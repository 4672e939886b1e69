# A rule-hash entry: what a packet has to look like (the key), and what happens to it (VLAN edit,
# queue and policer, forwarding result). Here DNS requests of VLAN 20 are sent to a resolver of our
# own.
# Run it with:  ./run examples/rule_hash.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0
set slot 42 ;# the entry says itself which slot of the table it takes

set rule [qx_rule_hash_create]
set_fields qx_rule_hash $rule apptype 1 mac_type 2 hash_index $slot voq_pol_idx 7 fwd_rslt_idx 8 \
    vlan_rslt_idx 9

# --- the key: UDP to port 53, from VLAN 20. An IPv4 address is word 0 of its four.
set key [qx_rule_hash_get_key $rule]
qx::set $key {mac_da 02:00:00:00:01:01 mac_sa 02:00:00:aa:00:17}
set_fields qx_rule_hash_key $key eth_type 0x0800 tpid_enc_1 1 _8021p_1 0 vid_1 20
qx::set $key {sa 192.168.20.9 da 203.0.113.53}
set_fields qx_rule_hash_key $key ip_version 4 ip_valid 1 ip_prot 17 l4_valid 1 l4_sp 5353 l4_dp 53

# --- the tag comes off, and the packet goes into queue 3 under policer 1.
qx_rule_hash_fvlan_init [qx_rule_hash_get_fvlan $rule] 2 0 0 0 0 0 0
set_fields qx_rule_hash_voq_pol [qx_rule_hash_get_voq_pol $rule] voq_base 3 pol_base 1 ldpid 4

# --- forwarding: a new destination MAC (layer 2) and IP address (layer 3), one hop less, no drop.
set result [qx_rule_hash_get_fwd_result $rule]
set l2 [qx_rule_hash_fwd_result_get_l2 $result]
set_fields qx_rule_hash_fwd_result_l2 $l2 mac_da_replace_en 1 l2_index 11
qx::set $l2 {mac_da 02:00:00:cc:00:35}
set l3 [qx_rule_hash_fwd_result_get_l3 $result]
set_fields qx_rule_hash_fwd_result_l3 $l3 ip_da_replace_en 1 ip_da_index 5 decr_ttl_hoplimit 1
qx::set $l3 {ip_da 10.0.0.53}
qx_rule_hash_fwd_result_dest_init [qx_rule_hash_fwd_result_get_dest $result] 1 1 7
qx_rule_hash_fwd_result_act_init [qx_rule_hash_fwd_result_get_act $result] 1 2 0

must qx_rule_hash_add $device $rule
puts "rule in slot $slot"

# ------------------------------------------------------------------------------------- reading back

set found [qx_rule_hash_create]
must qx_rule_hash_get_by_hash_index $device $slot $found
set key [qx_rule_hash_get_key $found]
set l3 [qx_rule_hash_fwd_result_get_l3 [qx_rule_hash_get_fwd_result $found]]
set source [dict get [qx::get $key] sa]
set destination [dict get [qx::get $key] da]
set resolver [dict get [qx::get $l3] ip_da]
puts "from [dict get [qx::get $key] mac_sa], $source, VLAN\
    [qx_rule_hash_key_get_vid_1 $key]: $destination becomes $resolver"
puts "indexes: [fields qx_rule_hash $found hash_index voq_pol_idx fwd_rslt_idx vlan_rslt_idx]"
puts "the forwarding result:"
qx_rule_hash_fwd_result_dump [qx_rule_hash_get_fwd_result $found]

# A slot is taken until its rule is deleted.
puts "once more: [expect QX_EXISTS qx_rule_hash_add $device $rule]"
must qx_rule_hash_delete_by_hash_index $device $slot
puts "deleted; reading it now:\
    [expect QX_NO_RULE qx_rule_hash_get_by_hash_index $device $slot $found]"

release $rule $found
puts done
