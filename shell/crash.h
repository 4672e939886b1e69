// The end of a process that a signal takes down: whatever can still be said is said first. All of
// it runs inside a handler of signals, in a process of which nothing is known to be whole any more.
#pragma once

#include <csignal>

namespace qxsh {

/// Writes what is buffered on stdout, reports the crash on stderr, and ends the process by the
/// signal's default action. Each part is tried once: if it meets a second crash, in which this is
/// called again, or takes seconds, the next part follows. Async-signal-safe.
[[noreturn]] void report_crash(int signal, const siginfo_t &info);

} // namespace qxsh
