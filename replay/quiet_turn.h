// A thread's turn in a library that programs call from anywhere, handlers of signals included.
// Relies on POSIX threads and signals.
#pragma once

#include <cerrno>
#include <csignal>
#include <pthread.h>

namespace qxsh {

/// While it lives, this thread has its turn, and neither a signal's handler nor a cancellation
/// makes it leave: a handler that calls would wait for its own thread. Signals of crashes are not
/// held back: a crash here is one. errno stays as it is.
class quiet_turn
{
public:
    explicit quiet_turn(pthread_mutex_t &turn) : turn_(turn), error_(errno)
    {
        sigset_t all;
        sigfillset(&all);
        for (const int crash : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP})
            sigdelset(&all, crash);
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancelled_);
        pthread_sigmask(SIG_BLOCK, &all, &before_);
        pthread_mutex_lock(&turn_);
    }
    ~quiet_turn()
    {
        pthread_mutex_unlock(&turn_);
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);
        pthread_setcancelstate(cancelled_, nullptr);
        errno = error_;
    }
    quiet_turn(const quiet_turn &) = delete;
    quiet_turn &operator=(const quiet_turn &) = delete;

    /// What the thread held back before.
    const sigset_t &before() const { return before_; }

private:
    pthread_mutex_t &turn_;
    sigset_t before_;
    int cancelled_ = 0;
    int error_;
};

} // namespace qxsh
