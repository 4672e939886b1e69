// The simulator's error messages.
#pragma once

namespace qxsim {

/// Prints one line on stderr: "qx_sim: ", then the message, formatted as by printf.
[[gnu::format(printf, 1, 2)]] void complain(const char *format, ...);

} // namespace qxsim
