# A multicast membership: who has joined which group, and from which sources it wants to hear. These
# records have no SDK call in this shell; scripts build, keep and print them.
# Run it with:  ./run examples/multicast.tcl
source [file join [file dirname [info script]] bringup.tcl]

# Port 3 joins 232.1.1.1 in VLAN 200, and includes (mode 1) the listed sources only.
set member [qx_mcast_member_create]
set_fields qx_mcast_member $member afi 0 sub_port 3 mcast_vlan 200 mode 1
set_ip [qx_mcast_member_get_grp_addr $member] 232.1.1.1

# The group's MAC address is made of the low 23 bits of its IP address.
set address [qx_ip_address_get_ip_addr [qx_mcast_member_get_grp_addr $member]]
set group [qx_l3_ip_addr_get_addr $address 0]
fill_array qx_mcast_member_set_dest_mac $member [list 0x01 0x00 0x5e [expr {$group >> 16 & 127}] \
    [expr {$group >> 8 & 255}] [expr {$group & 255}]]

# There are 32 slots for sources. The count does not follow by itself.
foreach source {192.0.2.1 192.0.2.2 198.51.100.1} {
    set slot [qx_mcast_member_get_src_num $member]
    set_ip [qx_mcast_member_get_src_list $member $slot] $source
    qx_mcast_member_set_src_num $member [expr {$slot + 1}]
}

proc show {member} {
    set sources {}
    for {set slot 0} {$slot < [qx_mcast_member_get_src_num $member]} {incr slot} {
        lappend sources [ip [qx_mcast_member_get_src_list $member $slot]]
    }
    puts "[fields qx_mcast_member $member sub_port mcast_vlan mode],\
        group [ip [qx_mcast_member_get_grp_addr $member]]\
        ([dict get [qx::get $member] dest_mac]), from $sources"
}
show $member

# Three ports of the same membership: an array, each slot a copy.
set members [qx_mcast_member_array_create 3]
foreach slot {0 1 2} port {3 7 9} {
    qx_mcast_member_set_sub_port $member $port
    qx_mcast_member_array_set $members $member $slot
}

# Port 7 no longer wants the first source: close the gap, and clear what is left behind.
set second [qx_mcast_member_array_get $members 1]
set nobody [qx_ip_address_create]
qx_mcast_member_set_src_list $second [qx_mcast_member_get_src_list $second 1] 0
qx_mcast_member_set_src_list $second [qx_mcast_member_get_src_list $second 2] 1
qx_mcast_member_set_src_list $second $nobody 2
qx_mcast_member_set_src_num $second 2
foreach slot {0 1 2} { show [qx_mcast_member_array_get $members $slot] }

# The entry of the switch's table, and the VLAN its packets are put into.
set entry [qx_mcast_entry_create]
qx_mcast_entry_init $entry 3 200
fill_array qx_mcast_entry_set_mac_addr $entry [elements qx_mcast_member_get_dest_mac $member 6]
puts "the entry:"
qx_mcast_entry_dump $entry
set vlan [qx_mcast_vlan_cfg_create]
qx_mcast_vlan_cfg_init $vlan 200 1 35
puts "its VLAN:"
qx_mcast_vlan_cfg_dump $vlan
puts "the first source:"
qx_ip_address_dump [qx_mcast_member_get_src_list $member 0]

release $member $members $nobody $entry $vlan
puts done
