# A PPPoE customer with NAT: a port of the customer's own, the way outside through the session, and
# the translation of the customer's network.
# Run it with:  ./run examples/pppoe_customer.tcl
package require qx

set device 0
set port 4
set customer 100 ;# the number of the PPPoE port
set office 192.168.1.0/24

# The session as discovery found it: the two stations, its number, and the VLAN it runs in.
qx::call qx_pppoe_port_add $device $port $customer
qx::call qx_pppoe_port_encap_set $device $customer [dict create \
    pppoe_session_id 0x2f01 vlan_tag 35 tx_phy_port $port \
    src_mac 02:00:00:00:01:04 dest_mac 02:00:00:dd:00:01]
puts "session: [qx::call qx_pppoe_port_config_get $device $customer]"

# PPPoE takes eight bytes of each frame.
foreach {encap mtu} {ethernet 1500 pppoe 1492} {
    qx::call qx_port_encap_ip_mtu_add $device $port $encap $mtu
}
puts [qx::show port_mtus]

# Everything goes out through the session, and leaves interface 40 with another source address.
set outside [list prefix 0.0.0.0/0 nexthop [dict create \
    nhid {nhop_type port addr 203.0.113.1 intf_id 40} id [list port_id $port] encap {
        port_encap {type pppoe port_encap {pppoe {
            src_mac 02:00:00:00:01:04 dest_mac 02:00:00:dd:00:01 pppoe_session_id 0x2f01
        }}}
    }]]
qx::call qx_l3_route_add $device $outside
qx::call qx_nat_subnet_add $device 40 $office
puts [qx::show routes]

qx::call qx_nat_subnet_delete $device 40 $office
qx::call qx_l3_route_delete $device $outside
foreach encap {ethernet pppoe} { qx::call qx_port_encap_ip_mtu_delete $device $port $encap }
qx::call qx_pppoe_port_delete $device $customer
