# An IP translation: IPv4 connections travel through an IPv6 network. The translation holds the IPv6
# packet that the device puts around them (or makes of them), and the share of the port numbers that
# this customer has of the IPv4 address; flows are then bound to it.
# Run it with:  ./run examples/ip_translation.tcl
package require qx

set device 0

# Port set 0x34 of 8 bits that stand behind the first 4: one 256th of the ports.
set id [qx::call qx_ip_translate_add $device {
    translate_type 1 copy_tos 1 port_set_id 0x34 port_set_id_length 8 port_set_id_offset 4
    v6_pkt {
        phy_port 4 eth_type 0x86dd protocol 4
        da_mac 02:00:00:bb:00:01 sa_mac 02:00:00:00:01:04
        sa_ip 2001:db8:12:3400::1 da_ip 2001:db8:ffff::64
    }
}]
qx::with translation qx_ip_translate_cfg_t [qx::call qx_ip_translate_get $device $id] {
    puts "translation $id:"
    puts [qx::show $translation]
}

# A flow of a translation is not added with qx_flow_add: binding it puts it into the flow table.
# Outside it has the address that the customers share, and a port of the customer's own set.
proc udp_flow {id from port} {
    set packet [dict create phy_port 1 eth_type 0x0800 protocol 17 sa_ip $from \
        da_ip 198.51.100.53 l4_header [dict create udp [dict create sport $port dport 53]]]
    return [dict create flow_id $id flow_type 2 life_time 60 dec_ttl 1 ingress_pkt $packet \
        egress_pkt [dict replace $packet sa_ip 203.0.113.5]]
}
set flows [list [udp_flow 31 192.168.1.23 0x1340] [udp_flow 32 192.168.1.24 0x1341]]
foreach flow $flows { qx::call qx_ip_translate_flow_add $device $id $flow }
puts [qx::show flows]

# The flows go first; until then the translation is in use.
set status [qx::check -allow QX_IN_USE qx_ip_translate_del $device $id]
puts "deleting the translation now: [qx::catalogue::status_name $status]"
foreach flow $flows { qx::call qx_ip_translate_flow_del $device $id $flow }
qx::call qx_ip_translate_del $device $id
puts "after its flows: deleted"
