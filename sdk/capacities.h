// Sizes and limits of a simulated device, as listed in docs/simulator.md; a test fills each table.
#pragma once

#include <cstdint>

namespace qxsim {

constexpr unsigned device_count = 4; ///< devices 0 to 3

// The fixed parts of a device.
constexpr unsigned port_count = 32; ///< physical ports 0 to 31
constexpr unsigned cpu_count = 2;
constexpr unsigned pcie_count = 2;
constexpr unsigned sata_count = 2;
constexpr unsigned usb_count = 2;
constexpr unsigned packet_engine_count = 8;

// Table sizes, in entries.
constexpr unsigned flow_slot_count = 4096; ///< a power of two, for masking the hash
constexpr unsigned flow_probe_count = 16;  ///< slots tried for a flow, starting at its home slot
constexpr unsigned flow_capacity = 1024;
constexpr unsigned rule_slot_count = 1024;
constexpr unsigned rule_capacity = 512;
constexpr unsigned rtp_capacity = 64;
constexpr unsigned translation_capacity = 32;
constexpr unsigned route_capacity = 512;
constexpr unsigned nexthop_capacity = 256;
constexpr unsigned subnet_capacity = 64;
constexpr unsigned tunnel_capacity = 64;
constexpr unsigned l2tp_session_capacity = 256;
constexpr unsigned l2tp_prefix_capacity = 256;
constexpr unsigned spd_capacity = 8;
constexpr unsigned policy_capacity = 64;
constexpr unsigned sa_capacity = 128;
constexpr unsigned pptp_capacity = 64;
constexpr unsigned pppoe_capacity = 64;

// Ranges of arguments and fields.
constexpr unsigned vlan_limit = 4095;
constexpr unsigned priority_limit = 7;
constexpr unsigned dscp_count = 64;
constexpr unsigned dot1p_count = 8;
constexpr unsigned frequency_least = 100; ///< MHz
constexpr unsigned frequency_limit = 1200;
constexpr unsigned mtu_least = 68;
constexpr unsigned mtu_limit = 9216;
constexpr unsigned mtu_default = 1500;
constexpr unsigned selector_limit = 4;
constexpr unsigned sa_bundle_limit = 4;
constexpr unsigned spi_least = 256;
constexpr unsigned pptp_key_limit = 16;

} // namespace qxsim
