// Names of statuses, for logs and rules. The list itself is qx_status.h.
#pragma once

#include <cstdint>
#include <string_view>

namespace qxsim {

/// The name of a status, such as "QX_OK"; "unknown" for a number that has none.
const char *status_name(std::uint32_t number) noexcept;

/// The number behind a name; false if no status has it.
bool status_number(std::string_view name, std::uint32_t &number) noexcept;

} // namespace qxsim
