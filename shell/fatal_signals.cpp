// Handlers of fatal signals; see fatal_signals.h.
#include "shell/fatal_signals.h"

#include "helpers/guarded_memory.h"
#include "shell/crash.h"

#include <cerrno>
#include <csignal>

namespace qxsh {

static constexpr int fatal_signals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};

static void let_come(int signal)
{
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, signal);
    sigprocmask(SIG_UNBLOCK, &only, nullptr);
}

// While a handler runs, other signals are blocked, so that none ends a report half way. Fatal
// signals are not, because a blocked fault ends the process silently; nor is the alarm that a
// report sets.
static struct sigaction undisturbed()
{
    struct sigaction action = {};
    sigfillset(&action.sa_mask);
    for (const int signal : fatal_signals)
        sigdelset(&action.sa_mask, signal);
    sigdelset(&action.sa_mask, SIGALRM);
    // After a stack overflow the stack has no room for a handler.
    action.sa_flags = SA_NODEFER | SA_ONSTACK;
    return action;
}

void set_fatal_handlers(void (*handler)(int))
{
    auto action = undisturbed();
    action.sa_handler = handler;
    for (const int signal : fatal_signals)
        sigaction(signal, &action, nullptr);
}

void set_alarm_handler(void (*handler)(int))
{
    auto action = undisturbed();
    action.sa_handler = handler;
    sigaction(SIGALRM, &action, nullptr);
    let_come(SIGALRM);
}

void restore_default_action(int signal)
{
    struct sigaction action = {};
    sigemptyset(&action.sa_mask);
    action.sa_handler = SIG_DFL;
    sigaction(signal, &action, nullptr);
    let_come(signal);
}

#ifndef QXSH_SANITIZED

// A helper's access that faulted is left, and its command reports it; see guarded_memory.h. That
// applies only to real faults, not to a signal that some process sent meanwhile.
extern "C" {
static void on_fatal_signal(int signal, siginfo_t *info, void *context)
{
    const int error = errno;
    const bool fault = (signal == SIGSEGV || signal == SIGBUS) && info->si_code > 0;
    if (!fault || !leave_guarded_access(context, info->si_addr))
        report_crash(signal, *info);
    errno = error;
}
}

void catch_fatal_signals()
{
    // Zero-initialised, so that it takes no memory until it is used.
    alignas(16) static unsigned char stack[256 * 1024];
    stack_t alternate = {};
    alternate.ss_sp = stack;
    alternate.ss_size = sizeof stack;
    sigaltstack(&alternate, nullptr);

    auto action = undisturbed();
    action.sa_flags |= SA_SIGINFO;
    action.sa_sigaction = on_fatal_signal;
    for (const int signal : fatal_signals)
        sigaction(signal, &action, nullptr);
}

#else

void catch_fatal_signals() {}

#endif

} // namespace qxsh
