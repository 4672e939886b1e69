# IP addresses: the bare address, one 16-byte store for IPv4 and IPv6, and the address with its
# family and length. Both are byte-aligned, so that they lie at any offset of the records that
# hold them.

area address "IP addresses"

union qx_l3_ip_addr 16 packed "an IPv4 or IPv6 address" {
    0   u32[4]  addr       -holds ip    "the address as four words, whatever its family"
    0   u32     ipv4_addr  -holds ipv4  "the IPv4 address: word 0"
    0   u32[4]  ipv6_addr  -holds ipv6  "the IPv6 address: words 0 to 3"
}

record qx_ip_address_t 21 packed "an address with its family and length" {
    0   u32            afi       -holds family  "address family, an SDK code"
    4   qx_l3_ip_addr  ip_addr                  "the address"
    20  u8             addr_len                 "address length (prefix length) in bits"
}
