// Handlers of fatal signals; see fatal_signals.h.
#include "shell/fatal_signals.h"

#include "helpers/guarded_memory.h"
#include "shell/crash.h"
#include "shell/signal_text.h"

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iterator>

namespace qxsh {

static constexpr struct
{
    int number;
    const char *name;
} fatal_signals[] = {{SIGSEGV, "SIGSEGV"},
                     {SIGBUS, "SIGBUS"},
                     {SIGFPE, "SIGFPE"},
                     {SIGILL, "SIGILL"},
                     {SIGABRT, "SIGABRT"}};

const char *name_of_fatal_signal(int signal)
{
    for (const auto &each : fatal_signals)
        if (each.number == signal)
            return each.name;
    return "?";
}

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
    for (const auto &each : fatal_signals)
        sigdelset(&action.sa_mask, each.number);
    sigdelset(&action.sa_mask, SIGALRM);
    // After a stack overflow the stack has no room for a handler.
    action.sa_flags = SA_NODEFER | SA_ONSTACK;
    return action;
}

void set_fatal_handlers(void (*handler)(int))
{
    auto action = undisturbed();
    action.sa_handler = handler;
    for (const auto &each : fatal_signals)
        sigaction(each.number, &action, nullptr);
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

static pthread_t shell_thread; // the one that runs Tcl

// A helper's access that faulted is left, and its command reports it; see guarded_memory.h. That
// applies only to real faults, not to a signal that some process sent meanwhile. The system hands
// such a signal to any thread, Tcl's notifier included; only the shell's can flush its stdout.
extern "C" {
static void on_fatal_signal(int signal, siginfo_t *info, void *context)
{
    const int error = errno;
    if (info->si_code == SI_USER && pthread_equal(pthread_self(), shell_thread) == 0) {
        pthread_kill(shell_thread, signal);
        errno = error;
        return;
    }
    const bool fault = (signal == SIGSEGV || signal == SIGBUS) && info->si_code > 0;
    if (!fault || !leave_guarded_access(context, info->si_addr))
        report_crash(signal, *info);
    errno = error;
}
}

// Zero-initialised, so that it takes no memory until it is used.
alignas(16) static unsigned char handler_stack[256 * 1024];

static void install_handlers()
{
    shell_thread = pthread_self();
    stack_t alternate = {};
    alternate.ss_sp = handler_stack;
    alternate.ss_size = sizeof handler_stack;
    sigaltstack(&alternate, nullptr);

    auto action = undisturbed();
    action.sa_flags |= SA_SIGINFO;
    action.sa_sigaction = on_fatal_signal;
    for (const auto &each : fatal_signals) {
        sigaction(each.number, &action, nullptr);
        let_come(each.number);
    }
}

static bool installed;

static bool is_ours(const struct sigaction &action)
{
    constexpr int needed = SA_SIGINFO | SA_ONSTACK; // signal() restores a handler without them
    return (action.sa_flags & needed) == needed && action.sa_sigaction == on_fatal_signal;
}

// What keeps the signal from our handler, or null.
static const char *obstacle(int signal, const sigset_t &blocked)
{
    struct sigaction action;
    sigaction(signal, nullptr, &action);
    const bool has_handler = (action.sa_flags & SA_SIGINFO) != 0 ||
                             (action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN);
    if (has_handler && !is_ours(action))
        return " (another handler)";
    if (!has_handler && action.sa_handler == SIG_IGN)
        return " (ignored)";
    if (!has_handler && installed)
        return " (default action)";
    return sigismember(&blocked, signal) == 1 ? " (blocked)" : nullptr;
}

static bool stack_is_ours()
{
    stack_t now;
    return sigaltstack(nullptr, &now) == 0 && now.ss_sp == handler_stack;
}

void take_back_fatal_signals(const char *call)
{
    static bool told[std::size(fatal_signals)];
    signal_text news;
    bool changed = !stack_is_ours();
    bool any_news = false;
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (std::size_t i = 0; i < std::size(fatal_signals); ++i) {
        const char *const why = obstacle(fatal_signals[i].number, blocked);
        changed = changed || why != nullptr;
        if (why == nullptr || told[i])
            continue;
        if (!any_news) {
            news.add("qxsh: taken over ").add(call == nullptr ? "before start" : "by the end of ");
            news.add(call == nullptr ? "" : call).add(", now taken back:");
        }
        news.add(any_news ? ", " : " ").add(fatal_signals[i].name).add(why);
        any_news = told[i] = true;
    }
    if (changed)
        install_handlers();
    if (any_news)
        news.end_line().write(STDERR_FILENO);
}

void catch_fatal_signals()
{
    take_back_fatal_signals(nullptr);
    installed = true;
}

#else

void catch_fatal_signals() {}

void take_back_fatal_signals(const char *) {}

#endif

} // namespace qxsh
