# A multicast membership: who has joined which group, and from which sources it wants to hear. These
# records have no SDK call in this shell; scripts build, keep and print them.
# Run it with:  ./run examples/multicast.tcl
package require qx

# The group's MAC address is made of the low 23 bits of its IP address.
proc group_mac {group} {
    lassign [split $group .] - b c d
    return [format 01:00:5e:%02x:%02x:%02x [expr {$b & 127}] $c $d]
}

# Port 3 joins the group in VLAN 200, and includes (mode 1) the listed sources only. The count does
# not follow the list by itself.
set group 232.1.1.1
set sources {192.0.2.1 192.0.2.2 198.51.100.1}
set member [qx::new qx_mcast_member_t [dict create afi 0 sub_port 3 mcast_vlan 200 mode 1 \
    grp_addr $group dest_mac [group_mac $group] \
    src_list $sources src_num [llength $sources]]]
puts [qx::show $member]

# Port 7 has the same membership, but no longer wants the first source.
set other [qx::new qx_mcast_member_t [qx::get $member]]
qx::set $other sub_port 7 src_num 2 src_list [concat [lrange $sources 1 end] 0.0.0.0]
puts "port 7 differs:"
foreach {path ours theirs} [qx::diff $member $other] { puts "  $path: $theirs, not $ours" }

# The entry of the switch's table, and the VLAN its packets are put into.
qx::with entry qx_mcast_entry_t [list sub_port 3 mcast_vlan 200 mac_addr [group_mac $group]] {
    puts [qx::json $entry]
}
qx::with vlan qx_mcast_vlan_cfg_t {in_vlan_id 200 qx_vlan_cmd 1 out_vlan_id 35} {
    puts [qx::get $vlan]
}

qx_data_free $member
qx_data_free $other
