# The catalogue of the SDK: records, calls and scalar cells, one file per area.
# The areas stand in the order of the command table; an argument line describes, once,
# a call argument that means the same wherever its name appears.

areas qos power address flow translate multicast rule_hash l3 tunnel ipsec pptp l2tp pppoe data

argument device_id       "device number"
argument dev_id          "device number"

argument cpu_id          "number of the CPU core"
argument dot1p           -range 0..7 "802.1p value to map"
argument dscp            -range 0..63 "DSCP value to map"
argument encap           "encapsulation type, an SDK code"
argument flow_id         "identifier of the flow"
argument intf_id         "interface id"
argument ip_translate_id "identifier of the IP translation"
argument ipv6_prefix     "IPv6 prefix carried by the session"
argument next            "how the walk goes on, an SDK code"
argument p_flow_entry    "flow bound to the translation"
argument pcie_id         "number of the PCIe controller"
argument pe_id           "number of the packet engine"
argument policy_handle   "handle of the policy"
argument port_id         "port number"
argument pppoe_port_id   "number of the PPPoE port"
argument rtp_id          "identifier of the RTP translation"
argument sa_id           "identifier of the PPTP security association"
argument sata_id         "number of the SATA controller"
argument session_id      "L2TP session identifier, 16 bits"
argument spd_handle      "handle of the SPD"
argument tunnel_id       "tunnel id"
argument usb_id          "number of the USB controller"

# Numbers that the device assigns, by kind.
ids rtp         { rtp_id p_rtp_id }
ids spd         { spd_handle }
ids policy      { policy_handle qx_l2tp_tunnel_cfg_t.ipsec_policy qx_ipsec_tunnel_cfg_t.ipsec_policy
                  qx_etherip_tunnel_cfg_t.ipsec_policy qx_tunnel_union_overlay_t.enc_policy }
ids association { sa_handle previous_sa_handle qx_l3_nexthop_intf_binding_t.ipsec_said }
ids translation { ip_translate_id p_ip_translate_id }
ids nexthop     { index qx_tunnel_cfg_t.nexthop_id }
ids tunnel      { tunnel_id p_tunnel_id qx_l3_nexthop_intf_binding_t.tunnel_id
                  qx_tunnel_mtu_t.tunnel_id }

# Numbers that people read and write in hexadecimal: types and flags on the wire, ids, handles.
hexadecimal {
    eth_type ppp_protocol qx_ppp_hdr_t.pro ver spi natt_4_bytes flag
    vlan_tag qx_eth_port_encap_t.tag qx_pppoe_port_encap_t.tag
    ipsec_policy enc_policy ipsec_said nexthop_id
    qx_l3_nexthop_intf_binding_t.tunnel_id qx_tunnel_mtu_t.tunnel_id
}
