# IPsec: security policy databases (SPDs), policies with up to four traffic selectors, and
# security associations with their keys, algorithms and lifetimes. Handles given out by the add
# calls name the objects afterwards.

area ipsec "IPsec policies and security associations"

record qx_ipsec_tunnel_cfg_t 4 "settings of an IPsec tunnel" {
    0   u32  ipsec_policy  "handle of the IPsec policy"
}

record qx_ipsec_selector_t 48 "traffic selector of a policy" {
    0   u8               protocol  "IP protocol number"
    1   qx_ip_address_t  src_ip    "source address"
    22  qx_ip_address_t  dst_ip    "destination address"
    44  u16              src_port  "source port"
    46  u16              dst_port  "destination port"
}

record qx_ipsec_policy_t 204 "one policy" {
    0   u32                     policy_id       "policy identifier"
    4   u32                     policy_action   "what becomes of matching traffic, an SDK code"
    8   u32                     selector_count  "number of selectors; not kept in step with them"
    12  qx_ipsec_selector_t[4]  selector_array  "the selectors"
}

record qx_ipsec_sa_t 136 "one security association" {
    0      u16            replay_window          "size of the anti-replay window"
    4      u32            spi                    "security parameter index"
    8      u32            seq_num                "sequence number"
    12     u8[32]         ekey       -holds key  "encryption key"
    44     u8[32]         akey       -holds key  "authentication key"
    # one 32-bit word, filled by its bit-fields
    76.0   u32:1          ip_ver                 "IP version, an SDK code"
    76.1   u32:1          proto                  "IPsec protocol, an SDK code"
    76.2   u32:1          tunnel                 "tunnel or transport mode, an SDK code"
    76.3   u32:1          sa_dir                 "direction, an SDK code"
    76.4   u32:2          ealg                   "encryption algorithm, an SDK code"
    76.6   u32:3          ealg_mode              "mode of the encryption algorithm, an SDK code"
    76.9   u32:4          enc_keylen             "length of the encryption key, 4 bits"
    76.13  u32:4          iv_len                 "length of the initialisation vector, 4 bits"
    76.17  u32:3          aalg                   "authentication algorithm, an SDK code"
    76.20  u32:4          auth_keylen            "length of the authentication key, 4 bits"
    76.24  u32:4          icv_trunclen           "truncated length of the ICV, 4 bits"
    76.28  u32:1          etherIP                "flag: EtherIP"
    76.29  u32:1          copy_ip_id             "flag: copy the IP identification"
    76.30  u32:1          copy_tos               "flag: copy the type of service"
    76.31  u32:1          reserved               "reserved bit"
    80     qx_l3_ip_addr  tunnel_saddr           "outer source address in tunnel mode"
    96     qx_l3_ip_addr  tunnel_daddr           "outer destination address in tunnel mode"
    112    u32            lifetime_bytes         "lifetime in bytes"
    116    u32            bytes_count            "bytes so far"
    120    u32            lifetime_packets       "lifetime in packets"
    124    u32            packets_count          "packets so far"
    128    u8             is_natt                "flag: NAT traversal is in use"
    130    u16            natt_ingress_src_port  "NAT traversal: source port on arrival"
    132    u16            natt_egress_dest_port  "NAT traversal: destination port on departure"
}

call qx_ipsec_init "initialise IPsec" {
    in     u16                 device_id
    example  0
}

call qx_ipsec_spd_add "add an SPD" {
    in     u16                 device_id
    in     u32                 direction           "direction of the traffic, an SDK code"
    in     u32                 spd_id              "SPD identifier"
    out    u32*                spd_handle          "receives the handle of the SPD"
    after    qx_ipsec_init
    example  spd = 0 1 1
}

call qx_ipsec_spd_delete "remove an SPD" {
    in     u16                 device_id
    in     u32                 spd_handle
    after    qx_ipsec_spd_add
    example  0 $spd
}

call qx_ipsec_policy_add "add a policy to an SPD" {
    in     u16                 device_id
    in     u32                 spd_handle
    in     qx_ipsec_policy_t*  policy              "the policy"
    out    u32*                policy_handle       "receives the handle of the policy"
    after    qx_ipsec_spd_add
    example  policy = 0 $spd {policy_action 2 selector_count 1}
}

call qx_ipsec_policy_delete "remove a policy from an SPD" {
    in     u16                 device_id
    in     u32                 spd_handle
    in     u32                 policy_handle
    after    qx_ipsec_policy_add
    example  0 $spd $policy
}

call qx_ipsec_sa_add "add security associations to a policy" {
    in     u16                 device_id
    in     u32                 spd_handle
    in     u32                 policy_handle
    in     u8                  sa_count            "number of records in sa_array, 0 to 255"
    in     qx_ipsec_sa_t*      sa_array            "the security associations, sa_count of them"
    in     u32                 previous_sa_handle  "handle of the SA that the new one follows"
    out    u32*                sa_handle           "receives the handle of the new SA"
    after    qx_ipsec_policy_add
    example  sa = 0 $spd $policy {{spi 4096 sa_dir 1} {spi 4097 sa_dir 1}} 0
}

call qx_ipsec_sa_delete "remove a security association from a policy" {
    in     u16                 device_id
    in     u32                 spd_handle
    in     u32                 policy_handle
    in     u32                 sa_handle           "handle of the SA"
    after    qx_ipsec_sa_add
    example  0 $spd $policy $sa
}

table spds "security policy databases" {
    instead "no call reads them; keep what qx_ipsec_spd_add returns"
}

table policies "IPsec policies" {
    instead "no call reads them; keep what qx_ipsec_policy_add returns"
    node    "IPsec policy"
}

table associations "security associations" {
    instead "no call reads them; keep what qx_ipsec_sa_add returns"
    node    "security association"
}
