// SIGINT as an error of the running command; see interrupt.h. The handler only marks an async
// handler of Tcl's, which runs between two commands and makes the error. A script may catch that; so
// a second signal sets a limit of Tcl's on commands, which ends every evaluation and is no error
// that can be caught. It has to go when Tcl's loop prompts again: before it does, it reads the
// variable tcl_prompt1, and a trace tells.
#include "shell/interrupt.h"

#include "shell/prompt_input.h"

#include <fcntl.h>
#include <sys/select.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace qxsh {

namespace {

Tcl_Interp *shell;
Tcl_AsyncHandler async;
int wake_up[2]; // a pipe: whoever waits for events looks up

Tcl_Obj *error_code; // the variable's value before the prompt
bool prompted;       // Tcl's loop has come to its prompt, and comes back to it

volatile sig_atomic_t interrupted; // and nothing has come of it yet
volatile sig_atomic_t repeated;    // within a second
timespec last;

extern "C" void on_interrupt(int)
{
    const int error = errno;
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    const long long nanoseconds = (now.tv_sec - last.tv_sec) * 1000000000LL + now.tv_nsec -
                                  last.tv_nsec;
    repeated = last.tv_sec != 0 && nanoseconds < 1000000000;
    last = now;
    interrupted = 1;
    Tcl_AsyncMark(async);
    static_cast<void>(!write(wake_up[1], "", 1));
    errno = error;
}

void empty_pipe(ClientData, int)
{
    char bytes[64];
    while (read(wake_up[0], bytes, sizeof bytes) > 0) {}
}

// What `info frame` says, whatever scripts have made of the name `info`. The result that the
// interpreter has stays.
Tcl_Obj *frame(Tcl_Interp *interp, const char *script)
{
    const Tcl_InterpState state = Tcl_SaveInterpState(interp, TCL_OK);
    Tcl_Obj *answer = nullptr;
    if (Tcl_EvalEx(interp, script, -1, 0) == TCL_OK)
        answer = Tcl_DuplicateObj(Tcl_GetObjResult(interp));
    Tcl_RestoreInterpState(interp, state);
    return answer;
}

// Line editing waits for keys as a script waits for events.
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

// Before Tcl's loop has begun to prompt, while it reads the rc file, it would end the process: a
// prompt that an rc file makes itself has only errors that can be caught.
void end_everything(Tcl_Interp *interp)
{
    if (!prompted)
        return;
    Tcl_LimitSetCommands(interp, 1);
    Tcl_LimitTypeSet(interp, TCL_LIMIT_COMMANDS);
    Tcl_LimitCheck(interp);
}

// Between two commands; or, without an interpreter, where a script waits for events. There no error
// can be returned, but a limit is looked at.
int end_command(ClientData, Tcl_Interp *interp, int code)
{
    const bool uncatchable = repeated != 0 || interp == nullptr;
    if (interp == nullptr && edits_line())
        interrupted = 0;
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

// Reading a traced variable that has no value makes an error code of Tcl's, where there would be
// none without the trace.
void keep_error_code(Tcl_Interp *interp)
{
    if (error_code == nullptr &&
        (error_code = Tcl_GetVar2Ex(interp, "errorCode", nullptr, TCL_GLOBAL_ONLY)) != nullptr)
        Tcl_IncrRefCount(error_code);
}

char *before_prompt(ClientData, Tcl_Interp *interp, const char *, const char *, int flags)
{
    if ((flags & TCL_TRACE_DESTROYED) != 0 && (flags & TCL_INTERP_DESTROYED) == 0) {
        Tcl_TraceVar(interp, "tcl_prompt1", TCL_TRACE_READS | TCL_TRACE_UNSETS | TCL_GLOBAL_ONLY,
                     before_prompt, nullptr);
    } else {
        // A script that reads the variable has no limit to lose.
        prompted = true;
        keep_error_code(interp);
        Tcl_LimitTypeReset(interp, TCL_LIMIT_COMMANDS);
        take_interrupt();
    }
    return nullptr;
}

bool open_pipe()
{
    if (pipe(wake_up) != 0)
        return false;
    for (const int end : wake_up) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
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
    const bool waits = take_interrupt(); // the evaluation below is not its business
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
    return commands > 1; // the question itself is one
}

bool interrupt_waits() { return interrupted != 0; }

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
    // One that comes between the question and the wait would be slept through.
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
    if (sigaction(SIGINT, nullptr, &action) != 0 || action.sa_handler == SIG_IGN || !open_pipe())
        return;
    shell = interp;
    async = Tcl_AsyncCreate(end_command, nullptr);
    Tcl_CreateFileHandler(wake_up[0], TCL_READABLE, empty_pipe, nullptr);
    Tcl_TraceVar(interp, "tcl_prompt1", TCL_TRACE_READS | TCL_TRACE_UNSETS | TCL_GLOBAL_ONLY,
                 before_prompt, nullptr);
    watch_prompt_input(interp);
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART | SA_ONSTACK; // an SDK need not know of it
    action.sa_handler = on_interrupt;
    sigaction(SIGINT, &action, nullptr);
}

} // namespace qxsh
