# Flows: one forwarded connection, as its packets look on arrival and on departure, and what the
# device does with them. Packets are described from port and MAC addresses up to the layer 4
# header, which is one of three by protocol.

area flow "Flow and packet records, the flow table"

record qx_l4_udp_t 4 "UDP ports" {
    0   u16  sport  "source port"
    2   u16  dport  "destination port"
}

record qx_l4_tcp_t 4 "TCP ports" {
    0   u16  sport  "source port"
    2   u16  dport  "destination port"
}

record qx_l4_esp_t 4 "ESP identification" {
    0   u32  spi_idx  "index of the IPsec SPI"
}

union qx_l4_header_t 4 "layer 4 header, by protocol" {
    0   qx_l4_tcp_t  tcp  "TCP ports"
    0   qx_l4_udp_t  udp  "UDP ports"
    0   qx_l4_esp_t  esp  "ESP identification"
}

record qx_vlan_t 8 "one VLAN tag of a packet" {
    0   u32  tpid_encap_type                "TPID encoding of the tag, an SDK code"
    4   u16  vlan_id          -range 0..4095 "VLAN identifier"
    6   u8   priority         -range 0..7    "802.1p priority"
}

record qx_pkt_info_t 88 "a packet as it arrives or leaves" {
    0   u8               phy_port                            "physical port"
    1   u8[6]            da_mac                  -holds mac  "destination MAC address"
    7   u8[6]            sa_mac                  -holds mac  "source MAC address"
    14  u16              eth_type                            "EtherType"
    16  qx_vlan_t[2]     tag                                 "the packet's two VLAN tags"
    32  u8               pppoe_session_id_valid              "flag: the PPPoE session id counts"
    34  u16              pppoe_session_id                    "PPPoE session id"
    36  qx_ip_address_t  da_ip                               "destination IP address"
    57  qx_ip_address_t  sa_ip                               "source IP address"
    78  u8               tos                                 "type of service byte"
    79  u8               protocol                            "IP protocol number"
    80  qx_l4_header_t   l4_header  -view-by {protocol 6 tcp 17 udp 50 esp} "layer 4 header, read by protocol"
    84  u32              natt_4_bytes                        "four bytes of NAT traversal"
}

record qx_flow_t 212 "one flow" {
    0    u16            flow_id       "identifier of the flow"
    4    u32            flow_type     "kind of flow, an SDK code"
    8    qx_pkt_info_t  ingress_pkt   "the packet on arrival"
    96   qx_pkt_info_t  egress_pkt    "the packet on departure"
    184  u16            dec_ttl       "TTL decrement"
    186  u16            voq_offset    "offset of the virtual output queue"
    188  u32            life_time     "life time of the flow, in the SDK's unit"
    192  u32[3]         swid_array    "three software identifiers"
    204  u32            sw_action_id  "identifier of the software action"
    208  u32            flag          "flow flags, an SDK code"
}

call qx_flow_add "install a flow" {
    in     u16         device_id
    in     qx_flow_t*  p_flow            "the flow"
    example  0 {flow_id 7 ingress_pkt {da_ip 198.51.100.7}}
}

call qx_flow_delete "remove a flow by its identifier" {
    in     u16         device_id
    in     u16         flow_id
    after    qx_flow_add
    example  0 7
}

call qx_flow_get "read the flow in a hash slot" {
    in     u16         device_id
    in     u16         hash_index        "slot of the flow table, not a flow id"
    out    qx_flow_t*  p_flow            "receives the flow"
    after    qx_flow_add
    example  0 3528
}

call qx_flow_get_lastuse_tickcount "read when a flow was last used" {
    in     u16         device_id
    in     u16         flow_id
    out    u32*        lastuse_tickcount "receives the tick count of the last use"
    after    qx_flow_add
    example  0 7
}

table flows "flows, by slot of the flow table" {
    call   qx_flow_get
    index  hash_index  flow_slots
    empty  QX_NO_FLOW
}

table flow_uses "when each flow was last used, by flow id" {
    call   qx_flow_get_lastuse_tickcount
    index  flow_id  0..65535
    empty  QX_NO_FLOW
}
