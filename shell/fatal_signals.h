// Signals that end a process: SIGSEGV, SIGBUS, SIGFPE, SIGILL and SIGABRT. For the shell's process
// only; a package does not change how its host handles them. A program that the shell starts has
// the default actions again, because exec resets handlers, and no signal blocked.
#pragma once

namespace qxsh {

/// Installs handlers: a fault of a guarded memory access becomes its command's error, every other
/// fatal signal gets a crash report. Does nothing in builds with sanitizers, which have their own
/// handlers.
void catch_fatal_signals();

/// Installs the handlers again if a library handles, ignores or blocks one of the signals itself or
/// has replaced the handlers' stack. Says on stderr what was done to the signals, once for each.
/// `call`: the latest SDK call's name; null: none yet. For the thread that runs commands.
void take_back_fatal_signals(const char *call);

/// The signal's name, "?" for any other signal.
const char *name_of_fatal_signal(int signal);

// For signal handlers; async-signal-safe:

/// Sets the handler of the fatal signals. They can arrive while it runs.
void set_fatal_handlers(void (*handler)(int));

/// Sets the handler of SIGALRM and unblocks it.
void set_alarm_handler(void (*handler)(int));

/// Restores a signal's default action and unblocks it.
void restore_default_action(int signal);

} // namespace qxsh
