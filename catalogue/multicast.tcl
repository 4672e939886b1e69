# Multicast: forwarding entries by MAC address, VLAN rewriting, and group members with the
# sources they listen to. No call of the SDK takes these records; they are built and read by
# their own commands only.

area multicast "Multicast records"

record qx_mcast_entry_t 10 "multicast forwarding entry" {
    0   u16    sub_port                "sub-port number"
    2   u16    mcast_vlan              "multicast VLAN"
    4   u8[6]  mac_addr    -holds mac  "MAC address"
}

record qx_mcast_vlan_cfg_t 12 "VLAN rewriting of multicast traffic" {
    0   u16  in_vlan_id   "VLAN id on arrival"
    4   u32  qx_vlan_cmd  "VLAN command, an SDK code"
    8   u16  out_vlan_id  "VLAN id on departure"
}

record qx_mcast_member_t 716 "member of a multicast group" {
    0   u32                  afi                     "address family, an SDK code"
    4   u16                  sub_port                "sub-port number"
    6   u16                  mcast_vlan              "multicast VLAN"
    8   qx_ip_address_t      grp_addr                "group address"
    32  u32                  mode                    "mode of the membership, an SDK code"
    36  u8[6]                dest_mac    -holds mac  "destination MAC address"
    42  u16                  src_num                 "number of sources; the list may hold others"
    44  qx_ip_address_t[32]  src_list                "source addresses"
}
