# A flow: one connection that the packet engine forwards by itself. The flow says how its packets
# look when they arrive (ingress) and how they are to look when they leave (egress); here a TCP
# connection from the office goes through NAT to a server outside.
# Run it with:  ./run examples/flow.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0

# ------------------------------------------------------------------------------ the two packets

set flow [qx_flow_create]

# A getter of a nested record gives a handle into the flow itself: what is set there is set in the
# flow.
set ingress [qx_flow_get_ingress_pkt $flow]
set_fields qx_pkt_info $ingress phy_port 1 eth_type 0x0800 tos 0 protocol 6
qx::set $ingress {da_mac 02:00:00:00:01:01 sa_mac 02:00:00:aa:00:17}
set_ip [qx_pkt_info_get_sa_ip $ingress] 192.168.1.23
set_ip [qx_pkt_info_get_da_ip $ingress] 198.51.100.7

# It arrives on VLAN 100: the first of the packet's two tags.
set_fields qx_vlan [qx_pkt_info_get_tag $ingress 0] tpid_encap_type 1 vlan_id 100 priority 3

# The layer-4 header is a union, seen as TCP, UDP or ESP over the same four bytes.
set tcp [qx_l4_header_get_tcp [qx_pkt_info_get_l4_header $ingress]]
qx_l4_tcp_init $tcp 40123 443

# The packet leaves much as it came: take a copy, then change what NAT and the next link change.
qx_flow_set_egress_pkt $flow $ingress
set egress [qx_flow_get_egress_pkt $flow]
set_fields qx_pkt_info $egress phy_port 4
qx::set $egress {da_mac 02:00:00:bb:00:01 sa_mac 02:00:00:00:01:04}
set_ip [qx_pkt_info_get_sa_ip $egress] 203.0.113.5
qx_l4_tcp_set_sport [qx_l4_header_get_tcp [qx_pkt_info_get_l4_header $egress]] 61000

# No tag outside: copy an empty one over both. 4294967295 as an index means every element.
set untagged [qx_vlan_create]
qx_pkt_info_set_tag $egress $untagged 4294967295

# --------------------------------------------------------------------------------- the flow itself

# Flow 17 lives for 300 seconds after its last packet, which loses one hop like any routed packet.
set_fields qx_flow $flow flow_id 17 flow_type 1 dec_ttl 1 voq_offset 2 life_time 300 sw_action_id 0
fill_array qx_flow_set_swid_array $flow {1 0 0}

must qx_flow_add $device $flow
puts "flow [qx_flow_get_flow_id $flow] is in"

# ------------------------------------------------------------------------------------- reading back

# Flows are read by their slot in the hash table, not by their number. The simulated device
# publishes its hash; on a board this is a question to the SDK.
set slot [qx::sim::flow_slot $flow]
set found [qx_flow_create]
must qx_flow_get $device $slot $found

proc endpoints {packet} {
    set tcp [qx_l4_header_get_tcp [qx_pkt_info_get_l4_header $packet]]
    return "port [qx_pkt_info_get_phy_port $packet],\
        [ip [qx_pkt_info_get_sa_ip $packet]]:[qx_l4_tcp_get_sport $tcp] ->\
        [ip [qx_pkt_info_get_da_ip $packet]]:[qx_l4_tcp_get_dport $tcp],\
        VLAN [qx_vlan_get_vlan_id [qx_pkt_info_get_tag $packet 0]]"
}
puts "slot $slot holds: [fields qx_flow $found flow_id flow_type life_time dec_ttl]"
puts "  arrives: [endpoints [qx_flow_get_ingress_pkt $found]]"
puts "  leaves:  [endpoints [qx_flow_get_egress_pkt $found]]"
puts "the packet that leaves, in full:"
qx_pkt_info_dump [qx_flow_get_egress_pkt $found]

set ticks [filled uint32 cell { must qx_flow_get_lastuse_tickcount $device 17 $cell }]
puts "last used at tick $ticks"

# --------------------------------------------------------------------------------------- tear-down

must qx_flow_delete $device 17
puts "deleted; reading it now: [expect QX_NO_FLOW qx_flow_get $device $slot $found]"

# The packets were inside the flow and go with it.
release $flow $found $untagged
puts done
