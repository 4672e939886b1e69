# RTP translations: a voice stream is relayed, and its source identifier, sequence numbers and
# timestamps are shifted on the way. Each belongs to one flow, and counts what it relays.
# Run it with:  ./run examples/rtp.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0

# One direction of a call: UDP to an even port of the relay, on to the other party.
proc voice_flow {id from to} {
    set flow [qx_flow_create]
    set_fields qx_flow $flow flow_id $id flow_type 3 life_time 30
    foreach side {ingress egress} port {1 4} {
        set packet [qx_flow_get_${side}_pkt $flow]
        set_fields qx_pkt_info $packet phy_port $port eth_type 0x0800 tos 0xb8 protocol 17
        qx_l4_udp_init [qx_l4_header_get_udp [qx_pkt_info_get_l4_header $packet]] 16384 16386
    }
    set_ip [qx_pkt_info_get_sa_ip [qx_flow_get_ingress_pkt $flow]] $from
    set_ip [qx_pkt_info_get_da_ip [qx_flow_get_ingress_pkt $flow]] 203.0.113.5
    set_ip [qx_pkt_info_get_sa_ip [qx_flow_get_egress_pkt $flow]] 203.0.113.5
    set_ip [qx_pkt_info_get_da_ip [qx_flow_get_egress_pkt $flow]] $to
    return $flow
}

set there [voice_flow 41 192.0.2.10 198.51.100.20]
set back  [voice_flow 42 198.51.100.20 192.0.2.10]

# What is added to sequence numbers and timestamps, and the identifier before and after.
set there_cfg [qx_rtp_cfg_create]
qx_rtp_cfg_init $there_cfg 1000 160000 0x11111111 0x22222222
set back_cfg [qx_rtp_cfg_create]
qx_rtp_cfg_init $back_cfg 2000 320000 0x33333333 0x44444444

# Ids are unique over all devices: the statistics are asked for without naming one.
set there_id [filled uint32 cell { must qx_rtp_translate_add $device $there_cfg $there $cell }]
set back_id  [filled uint32 cell { must qx_rtp_translate_add $device $back_cfg $back $cell }]
puts "translations $there_id and $back_id; the first one:"
qx_rtp_cfg_dump $there_cfg

set statistics [qx_rtp_stats_create]
foreach id [list $there_id $back_id] {
    must qx_rtp_statistics_get $id $statistics
    puts "translation $id: [fields qx_rtp_stats $statistics seq_num timestamp pkt_cnt byte_cnt]"
}

# The flow belongs to its translation; deleting that takes it out as well.
puts "deleting its flow: [expect QX_IN_USE qx_flow_delete $device 41]"
must qx_rtp_translate_delete_by_id $device $there_id
must qx_rtp_translate_delete $device $back_cfg ;# found by its configuration
puts "deleted; statistics now: [expect QX_NO_RTP qx_rtp_statistics_get $there_id $statistics]"

release $there $back $there_cfg $back_cfg $statistics
puts done
