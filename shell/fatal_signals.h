// Signals that end a process: SIGSEGV, SIGBUS, SIGFPE, SIGILL and SIGABRT. For the shell's process
// only; a package does not change what its host does about them. A program that the shell starts
// begins with the default actions, as the system sees to, and no signal stays blocked.
#pragma once

namespace qxsh {

/// Lets a command that met no memory end with an error, and every other crash with a report. In
/// builds with sanitizers nothing: those have handlers of their own.
void catch_fatal_signals();

// For handlers of signals:

/// Gives these signals a handler; they arrive inside it and inside each other.
void set_fatal_handlers(void (*handler)(int));

/// Gives SIGALRM a handler, and lets it come.
void set_alarm_handler(void (*handler)(int));

/// Gives a signal its default action, and lets it come.
void restore_default_action(int signal);

} // namespace qxsh
