# An IP translation: IPv4 connections travel through an IPv6 network. The translation holds the IPv6
# packet that the device puts around them (or makes of them), and the share of the port numbers that
# this customer has of the IPv4 address; flows are then bound to it.
# Run it with:  ./run examples/ip_translation.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0

# ------------------------------------------------------------------------------- the translation

# Port set 0x34 of 8 bits that stand behind the first 4: one 256th of the ports.
set cfg [qx_ip_translate_cfg_create]
set_fields qx_ip_translate_cfg $cfg translate_type 1 copy_tos 1 default_tos 0 \
    port_set_id 0x34 port_set_id_length 8 port_set_id_offset 4

# The IPv6 packet, set in place.
set packet [qx_ip_translate_cfg_get_v6_pkt $cfg]
set_fields qx_pkt_info $packet phy_port 4 eth_type 0x86dd protocol 4
qx::set $packet {da_mac 02:00:00:bb:00:01 sa_mac 02:00:00:00:01:04}
set_ip [qx_pkt_info_get_sa_ip $packet] 2001:db8:12:3400::1
set_ip [qx_pkt_info_get_da_ip $packet] 2001:db8:ffff::64

# The device gives the translation an id and writes it into a cell.
set id [filled uint32 cell { must qx_ip_translate_add $device $cfg $cell }]

set found [qx_ip_translate_cfg_create]
must qx_ip_translate_get $device $id $found
puts "translation $id:"
# The dump leaves the packet out; that is dumped by itself.
qx_ip_translate_cfg_dump $found
set packet [qx_ip_translate_cfg_get_v6_pkt $found]
puts "from [ip [qx_pkt_info_get_sa_ip $packet]] to [ip [qx_pkt_info_get_da_ip $packet]]; in full:"
qx_pkt_info_dump $packet

# ---------------------------------------------------------------------------- two flows bound to it

# A flow of a translation is not added with qx_flow_add: binding it puts it into the flow table.
proc udp_flow {id from port} {
    set flow [qx_flow_create]
    set_fields qx_flow $flow flow_id $id flow_type 2 life_time 60 dec_ttl 1
    set packet [qx_flow_get_ingress_pkt $flow]
    set_fields qx_pkt_info $packet phy_port 1 eth_type 0x0800 protocol 17
    set_ip [qx_pkt_info_get_sa_ip $packet] $from
    set_ip [qx_pkt_info_get_da_ip $packet] 198.51.100.53
    qx_l4_udp_init [qx_l4_header_get_udp [qx_pkt_info_get_l4_header $packet]] $port 53
    # Outside it has the address that the customers share, and a port of the customer's own set.
    qx_flow_set_egress_pkt $flow $packet
    set_ip [qx_pkt_info_get_sa_ip [qx_flow_get_egress_pkt $flow]] 203.0.113.5
    return $flow
}
set flows [list [udp_flow 31 192.168.1.23 0x1340] [udp_flow 32 192.168.1.24 0x1341]]
foreach flow $flows {
    must qx_ip_translate_flow_add $device $id $flow
    set packet [qx_flow_get_ingress_pkt $flow]
    puts "flow [qx_flow_get_flow_id $flow] of [ip [qx_pkt_info_get_sa_ip $packet]] is bound"
}

# --------------------------------------------------------------------------------------- tear-down

# The flows go first; until then the translation is in use.
puts "deleting the translation now: [expect QX_IN_USE qx_ip_translate_del $device $id]"
foreach flow $flows {
    must qx_ip_translate_flow_del $device $id $flow
    release $flow
}
must qx_ip_translate_del $device $id
puts "after its flows: deleted"

release $cfg $found
puts done
