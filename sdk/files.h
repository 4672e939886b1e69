// The simulator's files and error messages. Files are created readable by their owner only.
#pragma once

#include <string>

namespace qxsim {

/// Prints one line on stderr: "qx_sim: ", then the message, formatted as by printf.
[[gnu::format(printf, 1, 2)]] void complain(const char *format, ...) noexcept;

/// Opens a file for appending, creating it with mode 0600. Returns a descriptor that the caller
/// closes, or -1 after complaining.
int open_log(const std::string &name) noexcept;

/// Writes all of a text to a file descriptor; false, with errno set, if that fails.
bool write_all(int file, const std::string &text) noexcept;

/// Replaces a file's content, creating it with mode 0600. Complains if that fails.
void write_file(const std::string &name, const std::string &text) noexcept;

} // namespace qxsim
