# The same as flow.tcl with nothing but the commands of the SDK's records, for whoever wants to see
# each step: create, set, call, look at the status, read, release.
# Run it with:  ./run examples/raw_commands.tcl

proc must {args} {
    set status [uplevel 1 $args]
    if {$status != 0} { error "[lindex $args 0]: status $status" }
}

# A getter of a nested record gives a handle into the flow itself.
set flow [qx_flow_create]
set ingress [qx_flow_get_ingress_pkt $flow]
qx_pkt_info_set_phy_port $ingress 1
qx_pkt_info_set_eth_type $ingress 0x0800
qx_pkt_info_set_protocol $ingress 6
set index 0
foreach byte {2 0 0 0 1 1} {
    qx_pkt_info_set_da_mac $ingress $byte $index
    incr index
}
foreach {getter word} {qx_pkt_info_get_sa_ip 0xc0a80117 qx_pkt_info_get_da_ip 0xc6336407} {
    set address [$getter $ingress]
    qx_ip_address_set_addr_len $address 32
    qx_l3_ip_addr_set_addr [qx_ip_address_get_ip_addr $address] $word 0
}

# The layer-4 header is a union, seen as TCP, UDP or ESP over the same four bytes.
set tcp [qx_l4_header_get_tcp [qx_pkt_info_get_l4_header $ingress]]
qx_l4_tcp_init $tcp 40123 443

# It leaves much as it came: copy the packet, then change what NAT changes. 4294967295 as an index
# means every element.
qx_flow_set_egress_pkt $flow $ingress
set egress [qx_flow_get_egress_pkt $flow]
qx_pkt_info_set_phy_port $egress 4
qx_l4_tcp_set_sport [qx_l4_header_get_tcp [qx_pkt_info_get_l4_header $egress]] 61000
qx_pkt_info_set_sa_mac $egress 2 4294967295
qx_flow_set_flow_id $flow 17
qx_flow_set_life_time $flow 300
must qx_flow_add 0 $flow

# Values come back through cells.
set ticks [qx_uint32_create 0]
must qx_flow_get_lastuse_tickcount 0 17 $ticks
puts "flow [qx_flow_get_flow_id $flow] was last used at tick [qx_uint32_get $ticks]"
puts "the packet that leaves:"
qx_pkt_info_dump $egress

# A status is a plain result. The packets were inside the flow and go with it.
must qx_flow_delete 0 17
puts "deleting it again: status [qx_flow_delete 0 17]"
qx_data_free $ticks
qx_data_free $flow
