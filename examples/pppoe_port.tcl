# A PPPoE port: a numbered port of its own on top of a physical one, with the encapsulation of its
# session, and the IP MTU that this leaves.
# Run it with:  ./run examples/pppoe_port.tcl
source [file join [file dirname [info script]] bringup.tcl]

set device 0
set port 4
set pppoe_port 100

must qx_pppoe_port_add $device $port $pppoe_port

# The session as discovery found it: the two stations, its number, and the VLAN it runs in.
set cfg [qx_pppoe_port_cfg_create]
qx_pppoe_port_cfg_init $cfg 0x2f01 35 $port
qx::set $cfg {src_mac 02:00:00:00:01:04 dest_mac 02:00:00:dd:00:01}

# Until it has its encapsulation the port has nothing to show.
set found [qx_pppoe_port_cfg_create]
puts "a port of its own: [expect QX_NO_ENCAP qx_pppoe_port_config_get $device $pppoe_port $found]"
must qx_pppoe_port_encap_set $device $pppoe_port $cfg
must qx_pppoe_port_config_get $device $pppoe_port $found
puts "PPPoE port $pppoe_port: session [qx_pppoe_port_cfg_get_pppoe_session_id $found],\
    [dict get [qx::get $found] src_mac] ->\
    [dict get [qx::get $found] dest_mac]"
puts "its configuration:"
qx_pppoe_port_cfg_dump $found

# PPPoE takes eight bytes of each frame. MTUs are set by port and encapsulation: 0 Ethernet, 1
# PPPoE.
must qx_port_encap_ip_mtu_add $device $port 0 1500
must qx_port_encap_ip_mtu_add $device $port 1 1492
foreach encap {0 1} name {Ethernet PPPoE} {
    set mtu [filled uint32 cell { must qx_port_encap_ip_mtu_get $device $port $encap $cell }]
    puts "IP MTU of port $port with $name: $mtu"
}

# -------------------------------------------------------------- the headers, for whoever needs them

# The shell also knows the headers themselves, for a driver or a test packet. Fields of more than
# one byte are stored as the processor has them; on the wire the high byte is first, so it is
# swapped here.
proc swapped {number} { expr {($number & 255) << 8 | $number >> 8} }
set header [qx_pppoe_hdr_create]
qx_pppoe_hdr_init $header 1 1 0 [swapped 0x2f01] [swapped 46]
set ppp [qx_ppp_hdr_create]
qx_ppp_hdr_set_pro $ppp [swapped 0x0021]
puts "a session header, then the protocol field of IPv4:"
qx_pppoe_hdr_dump $header
puts "pro on the wire: [format %04x [swapped [qx_ppp_hdr_get_pro $ppp]]]"

# --------------------------------------------------------------------------------------- tear-down

foreach encap {0 1} { must qx_port_encap_ip_mtu_delete $device $port $encap }
must qx_pppoe_port_delete $device $pppoe_port
puts "deleted; once more: [expect QX_DELETED qx_pppoe_port_delete $device $pppoe_port]"

release $cfg $found $header $ppp
puts done
