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

// While a handler runs, what else comes waits: nobody shall end a report half way. Fatal signals
// come all the same, for a fault that has to wait ends the process without a word; so does the
// alarm that a report sets.
static struct sigaction undisturbed()
{
    struct sigaction action = {};
    sigfillset(&action.sa_mask);
    for (const int signal : fatal_signals)
        sigdelset(&action.sa_mask, signal);
    sigdelset(&action.sa_mask, SIGALRM);
    // A stack that has overflown has no room for a handler.
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

// A helper's access that met no memory is left, and its command says so; see guarded_memory.h. That
// is for faults of this very access, not for a signal that some process sent meanwhile.
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
    // Zero until it is used, so that it takes no memory.
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
