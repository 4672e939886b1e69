# A flow: one connection that the packet engine forwards by itself. The flow says how its packets
# look when they arrive (ingress) and how they are to look when they leave (egress); here a TCP
# connection from the office goes through NAT to a server outside.
# Run it with:  ./run examples/flow.tcl
package require qx

set device 0

# It arrives on VLAN 100, the first of the packet's two tags.
set ingress {
    phy_port 1 eth_type 0x0800 protocol 6
    da_mac 02:00:00:00:01:01 sa_mac 02:00:00:aa:00:17
    sa_ip 192.168.1.23 da_ip 198.51.100.7
    tag {{tpid_encap_type 1 vlan_id 100 priority 3}}
    l4_header {tcp {sport 40123 dport 443}}
}

# It leaves much as it came: NAT and the next link change some fields, and the tag comes off.
set egress [dict replace $ingress phy_port 4 tag {} \
    da_mac 02:00:00:bb:00:01 sa_mac 02:00:00:00:01:04 \
    sa_ip 203.0.113.5 l4_header {tcp {sport 61000 dport 443}}]

# Flow 17 lives for 300 seconds after its last packet, which loses one hop like any routed packet.
set flow [dict create flow_id 17 flow_type 1 dec_ttl 1 voq_offset 2 life_time 300 \
    swid_array {1 0 0} ingress_pkt $ingress egress_pkt $egress]
qx::call qx_flow_add $device $flow

# Flows are read by their slot in the hash table, not by their number; a listing looks into all.
foreach found [qx::list flows] {
    puts "slot [dict get $found hash_index] holds flow [dict get $found p_flow flow_id]"
}

puts "last used at tick [qx::call qx_flow_get_lastuse_tickcount $device 17]"

# A record, in full: what is zero is left out.
qx::with record qx_flow_t [dict get $found p_flow] {
    puts "arrives on VLAN [qx::get $record ingress_pkt.tag(0).vlan_id]"
    puts [qx::show $record]
    qx::call qx_flow_delete $device 17
    set slot [dict get $found hash_index]
    set status [qx::check -allow QX_NO_FLOW qx_flow_get $device $slot $record]
    puts "deleted; reading it now: [qx::catalogue::status_name $status]"
}
