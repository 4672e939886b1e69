# Tunnels: end points, port, next hop, direction, and the settings of the tunnel's kind, one of
# L2TP, GRE, IPsec and EtherIP over the same 64 bytes. The MTU of a tunnel is a record of its
# own.

area tunnel "Tunnels and their MTU"

union qx_tunnel_union_overlay_t 4 "overlay of a GRE tunnel: one word, two readings" {
    0   u32  enc_policy  "encryption policy"
    0   u16  pptp_sa_id  "PPTP security association id: the low half of the word"
}

record qx_gre_tunnel_cfg_t 16 "settings of a GRE tunnel" {
    0   u32                        tunnel_id               "tunnel id"
    4   u16                        up_call_id              "call id upstream"
    6   u16                        down_call_id            "call id downstream"
    8   qx_tunnel_union_overlay_t  overlay_tunnel_ingress  "overlay on arrival"
    12  qx_tunnel_union_overlay_t  overlay_tunnel_egress   "overlay on departure"
}

record qx_etherip_tunnel_cfg_t 64 "settings of an EtherIP tunnel" {
    0   u8             replace_inner_da              "flag: replace the inner destination MAC address"
    1   u8             replace_inner_sa              "flag: replace the inner source MAC address"
    2   u8[6]          local_lan_mac     -holds mac  "MAC address of the local LAN"
    8   u8[6]          outer_dst_mac     -holds mac  "outer destination MAC address"
    14  u8[6]          outer_src_mac     -holds mac  "outer source MAC address"
    20  u8             default_tos                   "default type of service"
    21  u8             hop_limit                     "hop limit"
    24  u32            flow_label                    "flow label"
    28  qx_l3_ip_addr  tun_saddr                     "outer source address"
    44  qx_l3_ip_addr  tun_daddr                     "outer destination address"
    60  u32            ipsec_policy                  "handle of the IPsec policy that protects it"
}

union qx_tunnel_cfg_union_t 64 "settings of a tunnel, by kind" {
    0   qx_l2tp_tunnel_cfg_t     l2tp     "L2TP settings"
    0   qx_gre_tunnel_cfg_t      gre      "GRE settings"
    0   qx_ipsec_tunnel_cfg_t    ipsec    "IPsec settings"
    0   qx_etherip_tunnel_cfg_t  etherip  "EtherIP settings"
}

record qx_tunnel_cfg_t 120 "one tunnel" {
    0   u32                    type        "kind of tunnel, an SDK code"
    4   qx_ip_address_t        dest_addr   "destination address"
    25  qx_ip_address_t        src_addr    "source address"
    46  u16                    tx_port     "transmit port"
    48  u32                    nexthop_id  "next-hop identifier"
    52  u32                    dir         "direction, an SDK code"
    56  qx_tunnel_cfg_union_t  tunnel      -view-by {type l2tp l2tp gre gre ipsec ipsec etherip etherip} "settings of its kind"
}

record qx_tunnel_mtu_t 12 "MTU of a tunnel" {
    0   u32  tunnel_type  "kind of tunnel, an SDK code"
    4   u32  tunnel_id    "tunnel id"
    8   u16  mtu          "MTU in bytes"
}

call qx_tunnel_add "add a tunnel" {
    in     u16               device_id
    in     qx_tunnel_cfg_t*  p_tunnel_cfg  "the tunnel"
    out    u32*              p_tunnel_id   "receives the tunnel id"
    example  tunnel = 0 {type 0 src_addr 192.0.2.1 dest_addr 192.0.2.2 tunnel {l2tp {tid 8}}}
}

call qx_tunnel_delete "remove a tunnel by its configuration" {
    in     u16               device_id
    in     qx_tunnel_cfg_t*  p_tunnel_cfg  "the tunnel as it was added"
    after    qx_tunnel_add
    example  0 {type 0 src_addr 192.0.2.1 dest_addr 192.0.2.2 tunnel {l2tp {tid 8}}}
}

call qx_tunnel_delete_by_idx "remove a tunnel by its id" {
    in     u16               device_id
    in     u32               tunnel_id
    after    qx_tunnel_add
    example  0 $tunnel
}

call qx_tunnel_get "read a tunnel" {
    in     u16               device_id
    in     u32               tunnel_id
    out    qx_tunnel_cfg_t*  p_tunnel_cfg  "receives the tunnel"
    after    qx_tunnel_add
    example  0 $tunnel
}

call qx_tunnel_mtu_get "read the MTU of a tunnel" {
    in     u16               device_id
    inout  qx_tunnel_mtu_t*  p_mtu         "type and id select the tunnel; receives its MTU"
    after    qx_tunnel_add
    example  0 {tunnel_type 0 tunnel_id $tunnel}
}

call qx_tunnel_mtu_set "set the MTU of a tunnel" {
    in     u16               device_id
    in     qx_tunnel_mtu_t*  p_mtu         "the tunnel's type and id, and its MTU"
    after    qx_tunnel_add
    example  0 {tunnel_type 0 tunnel_id $tunnel mtu 1400}
}

table tunnels "tunnels, by id" {
    call   qx_tunnel_get
    index  tunnel_id  ids
    empty  QX_NO_TUNNEL
    node   tunnel  p_tunnel_cfg.type p_tunnel_cfg.src_addr p_tunnel_cfg.dest_addr
    holds  p_tunnel_cfg.nexthop_id nexthop_indexes
    holds  p_tunnel_cfg.tunnel.l2tp.ipsec_policy policies
    if     p_tunnel_cfg.type l2tp
    holds  p_tunnel_cfg.tunnel.ipsec.ipsec_policy policies
    if     p_tunnel_cfg.type ipsec
    holds  p_tunnel_cfg.tunnel.etherip.ipsec_policy policies
    if     p_tunnel_cfg.type etherip
    # Small numbers are sessions.
    holds  {p_tunnel_cfg.tunnel.gre.overlay_tunnel_ingress.enc_policy =in} pptp_sessions
    if     p_tunnel_cfg.type gre
    within 1..65535
    holds  p_tunnel_cfg.tunnel.gre.overlay_tunnel_ingress.enc_policy policies
    if     p_tunnel_cfg.type gre
    within 65536..4294967295
    holds  {p_tunnel_cfg.tunnel.gre.overlay_tunnel_egress.enc_policy =out} pptp_sessions
    if     p_tunnel_cfg.type gre
    within 1..65535
    holds  p_tunnel_cfg.tunnel.gre.overlay_tunnel_egress.enc_policy policies
    if     p_tunnel_cfg.type gre
    within 65536..4294967295
}

table tunnel_mtus "MTU of a tunnel" {
    call   qx_tunnel_mtu_get
    keys   p_mtu.tunnel_id tunnels
    index  p_mtu.tunnel_type  codes
    empty  QX_BAD_TYPE
}
