// Sizes and limits of a simulated device that no profile changes; docs/simulator.md lists them.
// What a profile can size is in numbers.h.
#pragma once

namespace qxsim {

constexpr unsigned cpu_count = 2;
constexpr unsigned pcie_count = 2;
constexpr unsigned sata_count = 2;
constexpr unsigned usb_count = 2;
constexpr unsigned packet_engine_count = 8;

// Ranges of arguments and fields.
constexpr unsigned translate_type_limit = 3; ///< kinds of IP translation: 0 to 3
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
