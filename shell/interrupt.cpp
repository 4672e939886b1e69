// SIGINT as an error of the running command; see interrupt.h. The signal handler only records the
// time and wakes a thread, which marks a Tcl async handler: marking takes a lock that the
// interrupted code may hold. The async handler runs between two commands and raises the error. A
// script may catch it; so a second signal sets Tcl's command limit, which ends every evaluation and
// cannot be caught. The limit must be removed before Tcl's loop prompts again: a trace on
// tcl_prompt1, which the loop then reads, does that.
#include "shell/interrupt.h"

#include "commands/sdk_call.h"
#include "shell/line_editing.h"
#include "shell/prompt_input.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/select.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <initializer_list>

namespace qxsh {

namespace {

Tcl_Interp *shell;
Tcl_AsyncHandler async;
int to_thread[2]; // a pipe: the signal handler wakes the thread
int wake_up[2];   // a pipe: wakes a wait for events

Tcl_Obj *error_code; // the variable's value before the prompt
bool prompted;       // Tcl's loop has reached its prompt once, so it is running
bool prompting;      // a user's prompt script is running
line_editing editing = {nullptr, give_typed};

volatile sig_atomic_t interrupted; // a SIGINT is pending
volatile sig_atomic_t repeated;    // it came within a second of the one before
timespec last;

extern "C" void on_interrupt(int)
{
    const int error = errno;
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    const long long nanoseconds =
        (now.tv_sec - last.tv_sec) * 1000000000LL + now.tv_nsec - last.tv_nsec;
    repeated = last.tv_sec != 0 && nanoseconds < 1000000000;
    last = now;
    interrupted = 1;
    static_cast<void>(!write(to_thread[1], "", 1));
    errno = error;
}

extern "C" void *mark_interrupts(void *)
{
    char byte;
    for (;;) {
        if (read(to_thread[0], &byte, 1) != 1)
            continue;
        Tcl_AsyncMark(async);
        static_cast<void>(!write(wake_up[1], "", 1));
    }
}

void empty_pipe(ClientData, int)
{
    char bytes[64];
    while (read(wake_up[0], bytes, sizeof bytes) > 0) {
    }
}

// The result of an `info frame` script, even if scripts have redefined `info`; null on an error.
// The interpreter's result is kept.
Tcl_Obj *frame(Tcl_Interp *interp, const char *script)
{
    const Tcl_InterpState state = Tcl_SaveInterpState(interp, TCL_OK);
    Tcl_Obj *answer = nullptr;
    if (Tcl_EvalEx(interp, script, -1, 0) == TCL_OK)
        answer = Tcl_DuplicateObj(Tcl_GetObjResult(interp));
    Tcl_RestoreInterpState(interp, state);
    return answer;
}

// Whether line editing is what waits for events: it waits for keys in the same way as a script.
bool edits_line()
{
    Tcl_Obj *const caller = frame(shell, "::tcl::info::frame -1");
    if (caller == nullptr)
        return false;
    const bool editing =
        Tcl_StringMatch(Tcl_GetString(caller), "*tclreadline::readline read *") != 0;
    Tcl_DecrRefCount(caller);
    return editing;
}

// If the limit were set while Tcl's loop reads the rc file or runs a prompt script, the loop would
// end the process: there an interrupt is only an error that can be caught.
void end_everything(Tcl_Interp *interp)
{
    if (!prompted || prompting)
        return;
    Tcl_LimitSetCommands(interp, 1);
    Tcl_LimitTypeSet(interp, TCL_LIMIT_COMMANDS);
    Tcl_LimitCheck(interp);
}

// Called between two commands or, with a null interpreter, where a script waits for events. There
// no error can be returned, but a limit is checked.
int end_command(ClientData, Tcl_Interp *interp, int code)
{
    const bool uncatchable = repeated != 0 || interp == nullptr;
    if (interp == nullptr && edits_line() && take_interrupt() && editing.drop_line != nullptr)
        editing.drop_line();
    if (!take_interrupt())
        return code;
    if (uncatchable)
        end_everything(shell);
    if (interp == nullptr)
        return code;
    Tcl_ResetResult(interp);
    Tcl_SetObjResult(interp, Tcl_NewStringObj("interrupted", -1));
    Tcl_SetErrorCode(interp, "QXSH", "INTERRUPTED", nullptr);
    return TCL_ERROR;
}

// Reading a traced variable without a value sets errorCode, which it would not do without the
// trace.
void keep_error_code(Tcl_Interp *interp)
{
    if (error_code != nullptr)
        Tcl_DecrRefCount(error_code);
    if ((error_code = Tcl_GetVar2Ex(interp, "errorCode", nullptr, TCL_GLOBAL_ONLY)) != nullptr)
        Tcl_IncrRefCount(error_code);
}

char *before_prompt(ClientData, Tcl_Interp *interp, const char *, const char *, int flags);

void watch_prompt(Tcl_Interp *interp, const char *name)
{
    Tcl_TraceVar(interp, name, TCL_TRACE_READS | TCL_TRACE_UNSETS | TCL_GLOBAL_ONLY, before_prompt,
                 nullptr);
}

char *before_prompt(ClientData, Tcl_Interp *interp, const char *name, const char *, int flags)
{
    if ((flags & TCL_TRACE_DESTROYED) != 0 && (flags & TCL_INTERP_DESTROYED) == 0) {
        watch_prompt(interp, name);
    } else {
        // Resetting is harmless if a script reads the variable: then no limit is set.
        prompted = true;
        keep_error_code(interp);
        prompting = Tcl_GetVar2Ex(interp, name, nullptr, TCL_GLOBAL_ONLY) != nullptr;
        Tcl_LimitTypeReset(interp, TCL_LIMIT_COMMANDS);
        take_interrupt();
        inspect_after_latest_call();
    }
    return nullptr;
}

bool open_pipes()
{
    if (pipe(wake_up) != 0 || pipe(to_thread) != 0)
        return false;
    for (const int end : {wake_up[0], wake_up[1], to_thread[0], to_thread[1]}) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        if (end != to_thread[0])
            fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
}

// The thread blocks all signals, so that the main thread gets them.
bool start_thread()
{
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    pthread_t thread;
    const bool started = pthread_create(&thread, nullptr, mark_interrupts, nullptr) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return started && pthread_detach(thread) == 0;
}

// Tcl deletes the async handler when it exits.
void default_again(ClientData)
{
    signal(SIGINT, SIG_DFL);
}

} // namespace

void restore_error_code(Tcl_Interp *interp)
{
    if (error_code == nullptr)
        return;
    Tcl_SetVar2Ex(interp, "errorCode", nullptr, error_code, TCL_GLOBAL_ONLY);
    Tcl_DecrRefCount(error_code);
    error_code = nullptr;
}

bool runs_script(Tcl_Interp *interp)
{
    const bool waits = take_interrupt(); // it must not end the evaluation below
    Tcl_Obj *const depth = frame(interp, "::tcl::info::frame");
    int commands = 1;
    if (depth != nullptr) {
        Tcl_GetIntFromObj(nullptr, depth, &commands);
        Tcl_DecrRefCount(depth);
    }
    if (waits) {
        interrupted = 1;
        Tcl_AsyncMark(async);
    }
    return commands > 1; // `info frame` itself counts as one
}

void command_begins()
{
    prompting = false;
}

bool interrupt_waits()
{
    // The thread may not have marked the handler yet.
    if (interrupted != 0)
        Tcl_AsyncMark(async);
    return interrupted != 0;
}

bool take_interrupt()
{
    const bool taken = interrupted != 0;
    interrupted = 0;
    return taken;
}

void wait_for_input(int descriptor)
{
    sigset_t interrupt;
    sigset_t before;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    // Blocked, so that a SIGINT between the check and the wait is not missed.
    sigprocmask(SIG_BLOCK, &interrupt, &before);
    if (interrupted == 0) {
        fd_set descriptors;
        FD_ZERO(&descriptors);
        FD_SET(descriptor, &descriptors);
        pselect(descriptor + 1, &descriptors, nullptr, nullptr, nullptr, &before);
    }
    sigprocmask(SIG_SETMASK, &before, nullptr);
}

void interrupt_scripts(Tcl_Interp *interp)
{
    struct sigaction action;
    if (sigaction(SIGINT, nullptr, &action) != 0 || action.sa_handler == SIG_IGN || !open_pipes())
        return;
    shell = interp;
    async = Tcl_AsyncCreate(end_command, nullptr);
    if (!start_thread()) {
        Tcl_AsyncDelete(async);
        return;
    }
    Tcl_CreateExitHandler(default_again, nullptr);
    Tcl_CreateFileHandler(wake_up[0], TCL_READABLE, empty_pipe, nullptr);
    watch_prompt(interp, "tcl_prompt1");
    watch_prompt_input(interp);
    Tcl_SetAssocData(interp, line_editing_key, nullptr, &editing);
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART | SA_ONSTACK; // the SDK's system calls are restarted
    action.sa_handler = on_interrupt;
    sigaction(SIGINT, &action, nullptr);
}

} // namespace qxsh
