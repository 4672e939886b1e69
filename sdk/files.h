// The simulator's files and its complaints. Files are created for their owner alone.
#pragma once

#include <string>

namespace qxsim {

/// One line on stderr, beginning with "qx_sim: "; the rest as printf makes it.
[[gnu::format(printf, 1, 2)]] void complain(const char *format, ...) noexcept;

/// Opens a file to append to, creating it with mode 0600; -1 after a complaint.
int open_log(const std::string &name) noexcept;

/// Writes all of a text to an open file; false if that fails.
bool write_all(int file, const std::string &text) noexcept;

/// Makes a file hold a text, creating it with mode 0600. Complains if that fails.
void write_file(const std::string &name, const std::string &text) noexcept;

} // namespace qxsim
