// The environment variables that control the shell and the simulator, and the words of a switch.
// In a process with elevated rights (setuid or setgid) none of them is set. Relies on POSIX.
#pragma once

#include <optional>
#include <string_view>

namespace qxsh {

/// The value of one of our environment variables; null if it is unset or empty. Valid until the
/// environment changes.
const char *environment_value(const char *name);

/// What a switch's word says: 1, on, yes, true or 0, off, no, false; nothing for any other word.
std::optional<bool> switch_word(std::string_view word);

/// Whether the environment turns this switch on. Any other value is reported on stderr and
/// means off.
bool switched_on(const char *name);

} // namespace qxsh
