// The crash report of a process that a signal is about to end. All of it runs inside a signal
// handler, in a process whose state can no longer be trusted.
#pragma once

#include <csignal>

namespace qxsh {

/// Flushes stdout, reports the crash on stderr, and ends the process by the signal's default
/// action. Each part is tried once: if it crashes, which calls this function again, or takes
/// seconds, the next part follows. Async-signal-safe.
[[noreturn]] void report_crash(int signal, const siginfo_t &info);

} // namespace qxsh
