// Names of statuses, for logs and rules. The statuses are listed in qx_status.h.
#pragma once

#include <cstdint>
#include <string_view>

namespace qxsim {

/// The name of a status, such as "QX_OK", or "unknown"; never null, valid forever.
const char *status_name(std::uint32_t number);

/// Stores the number of the status with this name; false if there is none.
bool status_number(std::string_view name, std::uint32_t &number);

} // namespace qxsim
