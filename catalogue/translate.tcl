# Translation: rewriting of RTP streams (sequence number, timestamp, source) with its counters,
# and IP translation, described by an IPv6 packet, type of service and port set, to which flows
# are bound one by one.

area translate "IP translation and RTP"

record qx_rtp_cfg_t 16 "rewriting of an RTP stream" {
    0   u16  seq_num_diff    "difference of the sequence numbers"
    4   u32  timestamp_diff  "difference of the timestamps"
    8   u32  input_ssrc      "SSRC of the stream on arrival"
    12  u32  output_ssrc     "SSRC of the stream on departure"
}

record qx_rtp_stats_t 16 "counters of an RTP translation" {
    0   u16  available  "flag: the figures are available"
    2   u16  seq_num    "sequence number"
    4   u32  timestamp  "timestamp"
    8   u32  pkt_cnt    "number of packets"
    12  u32  byte_cnt   "number of bytes"
}

record qx_ip_translate_cfg_t 100 "settings of an IP translation" {
    0     u32            translate_type      "kind of translation, an SDK code"
    4     qx_pkt_info_t  v6_pkt     -no-dump "the IPv6 packet; print it by its own dump"
    92.0  u8:1           copy_tos            "flag: copy the type of service; 0 or 1"
    93    u8             default_tos         "default type of service"
    94    u16            port_set_id         "port set id"
    96    u16            port_set_id_length  "length of the port set id"
    98    u16            port_set_id_offset  "offset of the port set id"
}

call qx_rtp_translate_add "add an RTP translation for a flow" {
    in     u16                     device_id
    in     qx_rtp_cfg_t*           p_rtp_cfg           "the rewriting"
    in     qx_flow_t*              p_flow_entry
    out    u32*                    p_rtp_id            "receives the RTP translation id"
    example  rtp = 0 {input_ssrc 5 output_ssrc 6} {flow_id 7 ingress_pkt {da_ip 198.51.100.7}}
}

call qx_rtp_translate_delete "remove an RTP translation by its settings" {
    in     u16                     device_id
    in     qx_rtp_cfg_t*           p_rtp_cfg           "the rewriting it was added with"
    after    qx_rtp_translate_add
    example  0 {input_ssrc 5 output_ssrc 6}
}

call qx_rtp_translate_delete_by_id "remove an RTP translation by its identifier" {
    in     u16                     device_id
    in     u32                     rtp_id
    after    qx_rtp_translate_add
    example  0 $rtp
}

# The one call without a device number.
call qx_rtp_statistics_get "read the counters of an RTP translation" {
    in     u32                     rtp_id
    out    qx_rtp_stats_t*         data                "receives the counters"
    after    qx_rtp_translate_add
    example  $rtp
}

call qx_ip_translate_add "add an IP translation" {
    in     u16                     device_id
    in     qx_ip_translate_cfg_t*  p_ip_translate_cfg  "its settings"
    out    u32*                    p_ip_translate_id   "receives the translation id"
    example  translation = 0 {v6_pkt {sa_ip 2001:db8:1::1/128 da_ip 2001:db8:2::1/128}}
}

call qx_ip_translate_del "remove an IP translation" {
    in     u16                     device_id
    in     u32                     ip_translate_id
    after    qx_ip_translate_add
    example  0 $translation
}

call qx_ip_translate_get "read the settings of an IP translation" {
    in     u16                     device_id
    in     u32                     ip_translate_id
    out    qx_ip_translate_cfg_t*  p_ip_translate_cfg  "receives the settings"
    after    qx_ip_translate_add
    example  0 $translation
}

call qx_ip_translate_flow_add "bind a flow to an IP translation" {
    in     u16                     device_id
    in     u32                     ip_translate_id
    in     qx_flow_t*              p_flow_entry
    after    qx_ip_translate_add
    example  0 $translation {flow_id 7 ingress_pkt {da_ip 198.51.100.7}}
}

call qx_ip_translate_flow_del "take a flow off an IP translation" {
    in     u16                     device_id
    in     u32                     ip_translate_id
    in     qx_flow_t*              p_flow_entry
    after    qx_ip_translate_flow_add
    example  0 $translation {flow_id 7 ingress_pkt {da_ip 198.51.100.7}}
}

table rtp_translations "counters of the RTP translations, by id" {
    call   qx_rtp_statistics_get
    index  rtp_id  ids
    empty  QX_NO_RTP
    node   "RTP translation"
}

table ip_translations "settings of the IP translations, by id" {
    call   qx_ip_translate_get
    index  ip_translate_id  ids
    empty  QX_NO_TRANSLATION
    node   "IP translation"  p_ip_translate_cfg.v6_pkt.sa_ip p_ip_translate_cfg.v6_pkt.da_ip
}
