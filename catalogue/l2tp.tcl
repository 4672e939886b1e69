# L2TP: the four header shapes (with and without length and offset), their flags-and-version
# word, the settings of a tunnel, sessions of a tunnel and the IPv6 prefixes they carry. Header
# fields are little-endian in memory; nothing swaps them to network order.

area l2tp "L2TP headers, tunnel settings and sessions"

record qx_l2tp_hdr1_t 6 packed "L2TP header without length and offset" {
    0   u16  ver     "flags and version"
    2   u16  tid     "tunnel id"
    4   u16  sid     "session id"
}

record qx_l2tp_hdr2_t 8 packed "L2TP header with length" {
    0   u16  ver     "flags and version"
    2   u16  len     "length of the message"
    4   u16  tid     "tunnel id"
    6   u16  sid     "session id"
}

record qx_l2tp_hdr3_t 8 packed "L2TP header with offset" {
    0   u16  ver     "flags and version"
    2   u16  tid     "tunnel id"
    4   u16  sid     "session id"
    6   u16  offset  "offset of the payload"
}

record qx_l2tp_hdr4_t 10 packed "L2TP header with length and offset" {
    0   u16  ver     "flags and version"
    2   u16  len     "length of the message"
    4   u16  tid     "tunnel id"
    6   u16  sid     "session id"
    8   u16  offset  "offset of the payload"
}

record qx_l2tp_ver_t_bits 2 "flags and version of an L2TP header, bit by bit" {
    0.0   u16:4  version  "version, 0 to 15"
    0.4   u16:4  rsvd1    "reserved, four bits"
    0.8   u16:1  p        "priority bit"
    0.9   u16:1  o        "offset bit"
    0.10  u16:1  rsvd2    "reserved, one bit"
    0.11  u16:1  s        "sequence bit"
    0.12  u16:2  rsvd3    "reserved, two bits"
    0.14  u16:1  l        "length bit"
    0.15  u16:1  t        "type bit"
}

union qx_l2tp_ver_t 2 packed "flags and version of an L2TP header" {
    0   u16                 u16   "as a number"
    0   qx_l2tp_ver_t_bits  bits  "bit by bit"
}

record qx_l2tp_tunnel_cfg_t 56 "settings of an L2TP tunnel" {
    0   u16    ver                            "flags and version"
    2   u16    len                            "length"
    4   u16    tid                            "tunnel id"
    6   u16    ipv4_id                        "IPv4 identification"
    8   u16    dest_port                      "destination port"
    10  u16    src_port                       "source port"
    12  u32    ipsec_policy                   "handle of the IPsec policy"
    16  u32    session_id                     "session id, 32 bits; the session calls take 16"
    20  u16    encap_type                     "encapsulation type, an SDK code"
    22  u16    l2specific_len                 "length of the L2-specific sublayer"
    24  u16    l2specific_type                "type of the L2-specific sublayer, an SDK code"
    26  u8     send_seq                       "flag: send sequence numbers"
    27  u8     calc_udp_csum                  "flag: calculate the UDP checksum"
    28  u32    ns                             "sequence number Ns"
    32  u16    cookie_len                     "length of the cookie"
    34  u8[8]  cookie             -holds key  "the cookie"
    42  u16    offset                         "offset of the payload"
    44  u8[6]  l2tp_src_mac       -holds mac  "source MAC address"
    50  u8[6]  peer_l2tp_src_mac  -holds mac  "source MAC address of the peer"
}

call qx_l2tp_session_add "add a session to a tunnel" {
    in     u16               device_id
    in     u32               tunnel_id
    in     u16               session_id
    after    qx_tunnel_add
    example  0 $tunnel 5
}

call qx_l2tp_session_delete "remove a session from a tunnel" {
    in     u16               device_id
    in     u32               tunnel_id
    in     u16               session_id
    after    qx_l2tp_session_add
    example  0 $tunnel 5
}

call qx_l2tp_session_get "ask whether a tunnel has a session" {
    in     u16               device_id
    in     u32               tunnel_id
    in     u16               session_id
    out    u8*               is_present   "receives the presence flag"
    after    qx_l2tp_session_add
    example  0 $tunnel 5
}

call qx_ipv6_over_l2tp_add "add an IPv6 prefix to a session" {
    in     u16               device_id
    in     u32               tunnel_id
    in     u16               session_id
    in     qx_ip_address_t*  ipv6_prefix
    after    qx_l2tp_session_add
    example  0 $tunnel 5 2001:db8:1::/48
}

call qx_ipv6_over_l2tp_delete "remove an IPv6 prefix from a session" {
    in     u16               device_id
    in     u32               tunnel_id
    in     u16               session_id
    in     qx_ip_address_t*  ipv6_prefix
    after    qx_ipv6_over_l2tp_add
    example  0 $tunnel 5 2001:db8:1::/48
}

call qx_ipv6_over_l2tp_getnext "walk the IPv6 prefixes of a session, one a call" {
    in     u16               device_id
    in     u32               tunnel_id
    in     u16               session_id
    inout  qx_ip_address_t*  ipv6_prefix  "place in the walk; receives a prefix"
    after    qx_ipv6_over_l2tp_add
    example  0 $tunnel 5 {}
}

table l2tp_sessions "sessions of an L2TP tunnel" {
    call   qx_l2tp_session_get
    keys   tunnel_id tunnels p_tunnel_cfg.type l2tp
    index  session_id  1..65535
    absent is_present
    node   "L2TP session"
}

table l2tp_prefixes "IPv6 prefixes of an L2TP session" {
    call   qx_ipv6_over_l2tp_getnext
    keys   {tunnel_id session_id} l2tp_sessions
    walk   getnext
    leads  ipv6_prefix
    ends   QX_NO_MORE
    node   prefix  ipv6_prefix
}
