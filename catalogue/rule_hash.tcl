# Rule hash: classification entries. A key (layers 2 to 4 and the engine's own selectors) leads
# to a first/second VLAN edit, a choice of queue and policer, and a forwarding result made of
# rewrites by layer, destination and action. Code values are those of the SDK.

area rule_hash "Rule hash entries"

record qx_rule_hash_key_t 96 "lookup key of a rule" {
    0   u8[6]   mac_da                  -holds mac  "destination MAC address"
    6   u8[6]   mac_sa                  -holds mac  "source MAC address"
    12  u16     eth_type                            "EtherType"
    14  u8      tpid_enc_1                          "TPID encoding of the outer tag, an SDK code"
    15  u8      _8021p_1                            "802.1p priority of the outer tag"
    16  u16     vid_1                               "VLAN id of the outer tag"
    18  u8      tpid_enc_2                          "TPID encoding of the inner tag, an SDK code"
    19  u8      _8021p_2                            "802.1p priority of the inner tag"
    20  u16     vid_2                               "VLAN id of the inner tag"
    24  u32[4]  da                      -holds ip   "destination IP address; IPv4 in word 0"
    40  u32[4]  sa                      -holds ip   "source IP address; IPv4 in word 0"
    56  u8      ip_prot                             "IP protocol number"
    57  u8      dscp                                "DSCP"
    58  u8      ip_version                          "IP version"
    59  u8      ip_valid                            "flag: the IP fields count"
    60  u16     l4_dp                               "layer 4 destination port"
    62  u16     l4_sp                               "layer 4 source port"
    64  u8      l4_valid                            "flag: the layer 4 fields count"
    65  u8      lspid                               "logical source port id"
    66  u8      fwdtype                             "forwarding type, an SDK code"
    67  u8      pppoe_session_id_valid              "flag: the PPPoE session id counts"
    68  u16     pppoe_session_id                    "PPPoE session id"
    70  u8      mask_ptr_0_7                        "pointer to the key mask, bits 0 to 7"
    72  u16     mcgid                               "multicast group id"
    74  u8      mc_idx                              "multicast index"
    75  u8      orig_lspid                          "logical source port id on arrival"
    76  u32     recirc_idx                          "recirculation index"
    80  u32     l7_field                            "layer 7 field"
    84  u8      l7_field_valid                      "flag: the layer 7 field counts"
    85  u8      ppp_protocol_vld                    "flag: the PPP protocol counts"
    86  u16     ppp_protocol                        "PPP protocol number"
    88  u8      spi_vld                             "flag: the SPI index counts"
    92  u32     spi_idx                             "index of the IPsec SPI"
}

record qx_rule_hash_fvlan_t 10 "edit of the first and second VLAN tag" {
    0   u8   first_vlan_cmd   "command for the first tag, an SDK code"
    2   u16  first_vid        "VLAN id of the first tag"
    4   u8   first_tpid_enc   "TPID encoding of the first tag, an SDK code"
    5   u8   second_vlan_cmd  "command for the second tag, an SDK code"
    6   u16  second_vid       "VLAN id of the second tag"
    8   u8   second_tpid_enc  "TPID encoding of the second tag, an SDK code"
    9   u8   parity           "parity, an SDK value"
}

record qx_rule_hash_voq_pol_t 8 "choice of virtual output queue and policer" {
    0   u8   voq_base          "base of the virtual output queues"
    1   u8   pol_base          "base of the policers"
    2   u8   cpu_pid           "port id of the CPU"
    3   u8   ldpid             "logical destination port id"
    4   u16  pppoe_session_id  "PPPoE session id"
    6   u8   cos_nop           "no operation on the class of service, an SDK value"
    7   u8   parity            "parity, an SDK value"
}

record qx_rule_hash_fwd_result_l2_t 24 "forwarding result, layer 2" {
    0   u8     mac_sa_replace_en              "flag: replace the source MAC address"
    1   u8     mac_da_replace_en              "flag: replace the destination MAC address"
    2   u16    l2_index                       "index of the layer 2 entry"
    4   u16    mcgid                          "multicast group id"
    6   u8     mcgid_valid                    "flag: the multicast group id counts"
    7   u8     flow_vlan_op_en                "flag: edit VLAN tags by flow"
    8   u16    flow_vlan_index                "index of the flow's VLAN entry"
    10  u8     pppoe_encap_en                 "flag: add the PPPoE header"
    11  u8     pppoe_decap_en                 "flag: strip the PPPoE header"
    12  u8[6]  mac_da             -holds mac  "new destination MAC address"
    18  u8[6]  mac_sa             -holds mac  "new source MAC address"
}

# In memory the destination address stands before the source address.
record qx_rule_hash_fwd_result_l3_t 40 "forwarding result, layer 3" {
    0   u8      ip_sa_replace_en              "flag: replace the source IP address"
    1   u8      ip_da_replace_en              "flag: replace the destination IP address"
    2   u16     ip_sa_index                   "index of the source IP address"
    4   u16     ip_da_index                   "index of the destination IP address"
    6   u8      decr_ttl_hoplimit             "flag: decrement TTL or hop limit"
    8   u32[4]  ip_da              -holds ip  "new destination IP address"
    24  u32[4]  ip_sa              -holds ip  "new source IP address"
}

record qx_rule_hash_fwd_result_l4_t 6 "forwarding result, layer 4" {
    0   u8   sp_replace_en  "flag: replace the source port"
    1   u8   dp_replace_en  "flag: replace the destination port"
    2   u16  sp             "new source port"
    4   u16  dp             "new destination port"
}

record qx_rule_hash_fwd_result_dest_t 4 "forwarding result, destination" {
    0   u8   pol_policy           "policer policy, an SDK code"
    1   u8   voq_policy           "virtual output queue policy, an SDK code"
    2   u16  voq_pol_table_index  "index in the table of queues and policers"
}

record qx_rule_hash_fwd_result_act_t 3 "forwarding result, action" {
    0   u8  fwd_type_valid  "flag: the forwarding type counts"
    1   u8  fwd_type        "forwarding type, an SDK code"
    2   u8  drop            "flag: drop the packet"
}

record qx_rule_hash_fwd_result_t 80 "forwarding result of a rule" {
    0   qx_rule_hash_fwd_result_l2_t    l2        "layer 2 rewrite"
    24  qx_rule_hash_fwd_result_l3_t    l3        "layer 3 rewrite"
    64  qx_rule_hash_fwd_result_l4_t    l4        "layer 4 rewrite"
    70  qx_rule_hash_fwd_result_dest_t  dest      "destination"
    74  qx_rule_hash_fwd_result_act_t   act       "action"
    77  u8                              acl_dsbl  "flag: disable the access control lists"
    78  u8                              parity    "parity, an SDK value"
}

record qx_rule_hash_t 220 "one rule" {
    0    u32                        apptype        "application type, an SDK code"
    4    u32                        mac_type       "MAC type, an SDK code"
    8    qx_rule_hash_key_t         key            "lookup key"
    104  qx_rule_hash_fvlan_t       fvlan          "VLAN edit"
    114  qx_rule_hash_voq_pol_t     voq_pol        "choice of queue and policer"
    124  qx_rule_hash_fwd_result_t  fwd_result     "forwarding result"
    204  u16                        hash_index     "slot of the rule hash"
    208  u32                        voq_pol_idx    "index of the queue and policer entry"
    212  u32                        fwd_rslt_idx   "index of the forwarding result entry"
    216  u32                        vlan_rslt_idx  "index of the VLAN result entry"
}

call qx_rule_hash_add "install a rule" {
    in     u16              device_id
    in     qx_rule_hash_t*  p_rule_hash  "the rule"
    example  0 {hash_index 9 key {l4_dp 443} fwd_result {act {drop 1}}}
}

call qx_rule_hash_delete_by_hash_index "remove the rule in a hash slot" {
    in     u16              device_id
    in     u16              hash_index   "slot of the rule hash"
    after    qx_rule_hash_add
    example  0 9
}

call qx_rule_hash_get_by_hash_index "read the rule in a hash slot" {
    in     u16              device_id
    in     u16              hash_index   "slot of the rule hash"
    out    qx_rule_hash_t*  p_rule_hash  "receives the rule"
    after    qx_rule_hash_add
    example  0 9
}

table rules "rules, by slot of the rule hash" {
    call   qx_rule_hash_get_by_hash_index
    index  hash_index  rule_slots
    empty  QX_NO_RULE
}
