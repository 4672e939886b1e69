# The profile of the simulated device: its statuses, the words of its codes, its sizes. A copy of this
# file with a board's numbers, named in QX_PROFILE, makes simulator and scripts speak of that board;
# docs/profile.md explains the lines.

# Statuses: number, name, meaning.
status 0  QX_OK              the call did what it says

# Any function.
status 1  QX_BAD_DEVICE      no device has this number
status 2  QX_NULL_POINTER    a pointer argument is null
status 3  QX_NO_MEMORY       the process has no memory left
status 4  QX_SUSPENDED       the network engine is suspended
status 5  QX_BAD_SWITCH      a switch or the control file of the simulator cannot be obeyed

# The state of a table or an area does not allow it.
status 10 QX_EXISTS          the same thing is already there
status 11 QX_TABLE_FULL      the table holds as many entries as it can
status 12 QX_NO_SLOT         every slot that the hash offers is taken by another flow
status 13 QX_IN_USE          something else still uses it
status 14 QX_CONFLICT        a next hop of the same identity has other contents
status 15 QX_NO_MORE         a walk has come to its end
status 16 QX_NOT_INITIALISED the area is not initialised yet, or was shut down
status 17 QX_INITIALISED     the area is initialised already
status 18 QX_NOT_SUSPENDED   the network engine has to be suspended before the system
status 19 QX_BOOT_CPU        CPU 0 runs the caller and cannot stop
status 20 QX_DELETED         it was there and has been deleted already
status 21 QX_CIRCLE          a tunnel would lead back into itself

# It is not there, or what the call builds on is not there.
status 30 QX_NO_FLOW         no such flow
status 31 QX_NO_RULE         the slot of the rule hash is empty
status 32 QX_NO_RTP          no such RTP translation
status 33 QX_NO_TRANSLATION  no such IP translation
status 34 QX_NO_ROUTE        no such route
status 35 QX_NO_NEXTHOP      no such next hop
status 36 QX_NO_SUBNET       no such NAT subnet on this interface
status 37 QX_NO_MTU          no MTU is set for this port and encapsulation
status 38 QX_NO_TUNNEL       no such tunnel
status 39 QX_NO_SPD          no such SPD
status 40 QX_NO_POLICY       no such IPsec policy, or not in this SPD
status 41 QX_NO_SA           no such security association, or not in this policy
status 42 QX_NO_SESSION      no such session
status 43 QX_NO_PREFIX       no such IPv6 prefix on this session
status 44 QX_NO_PPPOE_PORT   no such PPPoE port
status 45 QX_NO_ENCAP        the PPPoE port has no encapsulation yet

# An argument or a field of a record is outside its range.
status 60 QX_BAD_PORT        no physical port has this number
status 61 QX_BAD_INDEX       the slot lies outside the table
status 62 QX_BAD_ADDRESS     unknown address family, or more bits than the family has
status 63 QX_BAD_VLAN        the VLAN identifier exceeds 4095
status 64 QX_BAD_TYPE        unknown type, or another type than the call is for
status 65 QX_BAD_DIRECTION   unknown direction, or another one than the call is for
status 66 QX_BAD_COUNT       the count is zero or more than the call takes
status 67 QX_BAD_MTU         the MTU is too small or too large
status 68 QX_BAD_ENCAP       unknown encapsulation
status 69 QX_BAD_ACTION      unknown policy action, or a policy that does not protect
status 70 QX_BAD_SPI         security parameter indexes up to 255 are reserved
status 71 QX_BAD_KEY         the key is too long, or there is no key to change
status 72 QX_BAD_SESSION_ID  zero names no session
status 73 QX_BAD_FLAG        a flag is neither 0 nor 1
status 74 QX_BAD_PORT_SET    offset and length of the port set exceed 16 bits
status 75 QX_BAD_MAP_MODE    unknown QoS map mode
status 76 QX_BAD_DSCP        the DSCP exceeds 63
status 77 QX_BAD_DOT1P       the 802.1p value exceeds 7
status 78 QX_BAD_PRIORITY    the priority exceeds 7
status 79 QX_BAD_FREQUENCY   the processor clock cannot run at this frequency
status 80 QX_BAD_CPU         no CPU has this number
status 81 QX_BAD_CONTROLLER  no PCIe, SATA or USB controller has this number
status 82 QX_BAD_ENGINE      no packet engine has this number
status 83 QX_BAD_STATE       unknown power state
status 84 QX_BAD_FAMILY      addresses of two families where one is meant
status 85 QX_NO_ADDRESS      an address that has to be given is zero

# Codes: record and field, or function and argument; number; word.
code qx_qos_map_mode_get.mode 0 port
code qx_qos_map_mode_get.mode 1 dscp
code qx_qos_map_mode_get.mode 2 dot1p
code qx_qos_map_mode_set.mode 0 port
code qx_qos_map_mode_set.mode 1 dscp
code qx_qos_map_mode_set.mode 2 dot1p

code qx_pm_cpu_info_t.cpu_run 0 off
code qx_pm_cpu_info_t.cpu_run 1 on
code qx_pm_cpu_info_t.cpu_run 2 sleep
code qx_pm_cpu_power_state_set.cpu_state 0 off
code qx_pm_cpu_power_state_set.cpu_state 1 on
code qx_pm_cpu_power_state_set.cpu_state 2 sleep
code qx_pm_pcie_state_get.state 0 off
code qx_pm_pcie_state_get.state 1 on
code qx_pm_pcie_state_get.state 2 sleep
code qx_pm_pcie_state_set.state 0 off
code qx_pm_pcie_state_set.state 1 on
code qx_pm_pcie_state_set.state 2 sleep
code qx_pm_sata_state_get.state 0 off
code qx_pm_sata_state_get.state 1 on
code qx_pm_sata_state_get.state 2 sleep
code qx_pm_sata_state_set.state 0 off
code qx_pm_sata_state_set.state 1 on
code qx_pm_sata_state_set.state 2 sleep
code qx_pm_usb_state_get.state 0 off
code qx_pm_usb_state_get.state 1 on
code qx_pm_usb_state_get.state 2 sleep
code qx_pm_usb_state_set.state 0 off
code qx_pm_usb_state_set.state 1 on
code qx_pm_usb_state_set.state 2 sleep

code qx_port_encap_t.type 0 ethernet
code qx_port_encap_t.type 1 pppoe
code qx_port_encap_ip_mtu_add.encap 0 ethernet
code qx_port_encap_ip_mtu_add.encap 1 pppoe
code qx_port_encap_ip_mtu_delete.encap 0 ethernet
code qx_port_encap_ip_mtu_delete.encap 1 pppoe
code qx_port_encap_ip_mtu_get.encap 0 ethernet
code qx_port_encap_ip_mtu_get.encap 1 pppoe

code qx_l3_nexthop_id_t.nhop_type 0 port
code qx_l3_nexthop_id_t.nhop_type 1 tunnel
code qx_l3_nexthop_id_t.nhop_type 2 sa

code qx_l3_route_show.next 0 start
code qx_l3_route_show.next 1 continue
code qx_l3_nexthop_show.next 0 start
code qx_l3_nexthop_show.next 1 continue

code qx_tunnel_cfg_t.type 0 l2tp
code qx_tunnel_cfg_t.type 1 gre
code qx_tunnel_cfg_t.type 2 ipsec
code qx_tunnel_cfg_t.type 3 etherip
code qx_tunnel_mtu_t.tunnel_type 0 l2tp
code qx_tunnel_mtu_t.tunnel_type 1 gre
code qx_tunnel_mtu_t.tunnel_type 2 ipsec
code qx_tunnel_mtu_t.tunnel_type 3 etherip

code qx_tunnel_cfg_t.dir 0 in
code qx_tunnel_cfg_t.dir 1 out
code qx_tunnel_cfg_t.dir 2 both

code qx_ipsec_spd_add.direction 0 in
code qx_ipsec_spd_add.direction 1 out
code qx_ipsec_sa_t.sa_dir 0 in
code qx_ipsec_sa_t.sa_dir 1 out
code qx_pptp_sa_t.dir 0 in
code qx_pptp_sa_t.dir 1 out
code qx_pptp_session_delete.direction 0 in
code qx_pptp_session_delete.direction 1 out

code qx_ipsec_policy_t.policy_action 0 bypass
code qx_ipsec_policy_t.policy_action 1 discard
code qx_ipsec_policy_t.policy_action 2 protect

code qx_pptp_sa_t.crypto_type 0 none

# Values that change by themselves: comparisons of recordings leave them out.
loose qx_flow_get_lastuse_tickcount.lastuse_tickcount
loose qx_rtp_stats_t.seq_num
loose qx_rtp_stats_t.timestamp
loose qx_rtp_stats_t.pkt_cnt
loose qx_rtp_stats_t.byte_cnt

# A board's ids are given here, such as "ids tunnels 1..64"; the simulated device assigns its own.

# Address families.
family ipv4 0
family ipv6 1

# Devices, ports of each, and entries of each table.
devices 4
ports 32
capacity flows            1024
capacity flow_slots       4096
capacity rules            512
capacity rule_slots       1024
capacity rtp_translations 64
capacity ip_translations  32
capacity routes           512
capacity nexthops         256
capacity nat_subnets      64
capacity port_mtus        64
capacity tunnels          64
capacity l2tp_sessions    256
capacity l2tp_prefixes    256
capacity spds             8
capacity policies         64
capacity associations     128
capacity pptp_sessions    64
capacity pppoe_ports      64
