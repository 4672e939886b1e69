# RTP translations: a voice stream is relayed, and its source identifier, sequence numbers and
# timestamps are shifted on the way. Each belongs to one flow, and counts what it relays.
# Run it with:  ./run examples/rtp.tcl
package require qx

set device 0
set relay 203.0.113.5

# One direction of a call: UDP to an even port of the relay, on to the other party.
proc voice_flow {id from to} {
    global relay
    set packet {eth_type 0x0800 tos 0xb8 protocol 17 l4_header {udp {sport 16384 dport 16386}}}
    return [dict create flow_id $id flow_type 3 life_time 30 \
        ingress_pkt [dict merge $packet [list phy_port 1 sa_ip $from da_ip $relay]] \
        egress_pkt [dict merge $packet [list phy_port 4 sa_ip $relay da_ip $to]]]
}

# What is added to sequence numbers and timestamps, and the identifier before and after.
set there [qx::call qx_rtp_translate_add $device \
    {seq_num_diff 1000 timestamp_diff 160000 input_ssrc 0x11111111 output_ssrc 0x22222222} \
    [voice_flow 41 192.0.2.10 198.51.100.20]]
set settings {seq_num_diff 2000 timestamp_diff 320000
    input_ssrc 0x33333333 output_ssrc 0x44444444}
set back [qx::call qx_rtp_translate_add $device $settings \
    [voice_flow 42 198.51.100.20 192.0.2.10]]

# Ids are unique over all devices: the statistics are asked for without naming one.
foreach id [list $there $back] {
    puts "translation $id: [qx::call qx_rtp_statistics_get $id]"
}
puts [qx::show flows]

# The flow belongs to its translation; deleting that takes it out as well.
set status [qx::check -allow QX_IN_USE qx_flow_delete $device 41]
puts "deleting its flow: [qx::catalogue::status_name $status]"
qx::call qx_rtp_translate_delete_by_id $device $there
qx::call qx_rtp_translate_delete $device $settings ;# found by its settings
puts "left: [llength [qx::list flows]] flows"
