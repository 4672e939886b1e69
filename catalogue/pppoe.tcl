# PPPoE: the PPP and PPPoE headers, and PPPoE ports, each bound to a physical port and with an
# encapsulation of its own. Header fields are little-endian in memory; nothing swaps them to network
# order.

area pppoe "PPP and PPPoE headers, PPPoE ports"

record qx_ppp_hdr_t 4 packed "PPP header" {
    0   u8   addr  "address byte"
    1   u8   ctrl  "control byte"
    2   u16  pro   "protocol number"
}

record qx_pppoe_hdr_t 6 packed "PPPoE header" {
    0.0  u8:4  type  "type, 0 to 15: the low nibble"
    0.4  u8:4  ver   "version, 0 to 15: the high nibble"
    1    u8    code  "code byte"
    2    u16   sid   "session id"
    4    u16   len   "length of the payload"
}

record qx_pppoe_port_cfg_t 24 "settings of a PPPoE port" {
    0   u8[6]  src_mac           -holds mac  "source MAC address"
    6   u8[6]  dest_mac          -holds mac  "destination MAC address"
    12  u16    pppoe_session_id              "PPPoE session id"
    16  u32    vlan_tag                      "VLAN tag"
    20  u16    tx_phy_port                   "physical port to transmit on"
}

call qx_pppoe_port_add "bind a PPPoE port to a physical port" {
    in     u16                   device_id
    in     u16                   port_id
    in     u16                   pppoe_port_id
    example  0 4 100
}

call qx_pppoe_port_delete "remove a PPPoE port" {
    in     u16                   device_id
    in     u16                   pppoe_port_id
    after    qx_pppoe_port_add
    example  0 100
}

call qx_pppoe_port_config_get "read the settings of a PPPoE port" {
    in     u16                   device_id
    in     u16                   pppoe_port_id
    out    qx_pppoe_port_cfg_t*  p_cfg          "receives the settings"
    after    qx_pppoe_port_encap_set
    example  0 100
}

call qx_pppoe_port_encap_set "set the encapsulation of a PPPoE port" {
    in     u16                   device_id
    in     u16                   pppoe_port_id
    in     qx_pppoe_port_cfg_t*  p_cfg          "the settings"
    after    qx_pppoe_port_add
    example  0 100 {dest_mac 02:00:00:00:00:42 pppoe_session_id 9}
}

table pppoe_ports "PPPoE ports, by number" {
    call   qx_pppoe_port_config_get
    index  pppoe_port_id  0..65535
    empty  QX_NO_PPPOE_PORT
    bare   QX_NO_ENCAP
}
