// SIGINT as an error of the running command; see interrupt.h. The signal handler wakes a thread,
// which marks a Tcl async handler: marking takes a lock that the interrupted code may hold. The
// async handler runs between two commands and raises the error. A script may catch it; so a second
// signal sets Tcl's command limit, which ends every evaluation and cannot be caught.
//
// A read of the terminal goes on after the signal, and whose read it is cannot be seen. So the
// thread sends the signal once more, and this time the handler replaces stdin by an empty pipe: a
// script's read returns, and its command ends; Tcl's loop finds no line, starts again and calls the
// main loop that the handler has set.
#include "shell/interrupt.h"

#include "shell/line_editing.h"

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <termios.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <string_view>

namespace qxsh {

namespace {

Tcl_Interp *shell;
pthread_t main_thread;
Tcl_AsyncHandler async;
int to_thread[2]; // a pipe: the signal handler wakes the thread
int wake_up[2];   // a pipe: wakes a wait for events
int nothing[2];   // a pipe that stays empty

bool prompted; // Tcl's loop has reached its prompt once, so it is running
line_editing editing = {nullptr, nullptr};

std::atomic<bool> interrupted;    // a SIGINT is pending
volatile sig_atomic_t repeated;   // it came within a second of the one before
volatile sig_atomic_t one_before; // there was one, and no prompt since
timespec last;

constexpr int shown = -1;
std::atomic<int> terminal = shown; // stdin's own descriptor while the empty pipe replaces it
std::atomic<bool> marked;          // the next signal is the thread's
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

// ------------------------------------------------------------------------------- the signal

void hide_input()
{
    termios settings;
    if (terminal != shown || tcgetattr(STDIN_FILENO, &settings) != 0)
        return;
    const int saved = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (saved < 0)
        return;
    terminal = saved;
    dup2(nothing[0], STDIN_FILENO);
}

void show_input()
{
    const int saved = terminal.exchange(shown);
    if (saved == shown)
        return;
    dup2(saved, STDIN_FILENO);
    close(saved);
}

void at_prompt();

void end_wait()
{
    // The command may have ended meanwhile.
    if (!interrupted || (editing.reads_keys != nullptr && editing.reads_keys()))
        return;
    Tcl_SetMainLoop(at_prompt); // only stores it: interrupt_scripts has called it before
    hide_input();
}

void begin_interrupt()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    const long long nanoseconds =
        (now.tv_sec - last.tv_sec) * 1000000000LL + now.tv_nsec - last.tv_nsec;
    repeated = one_before != 0 && nanoseconds < 1000000000;
    one_before = 1;
    last = now;
    interrupted = true;
    static_cast<void>(!write(to_thread[1], "", 1));
}

extern "C" void on_interrupt(int signal)
{
    const int error = errno;
    if (pthread_equal(pthread_self(), main_thread) == 0)
        pthread_kill(main_thread, signal);
    else if (marked.exchange(false))
        end_wait();
    else
        begin_interrupt();
    errno = error;
}

// A command that the SDK keeps busy does not need the empty pipe for long: it would be the stdin of
// programs that the SDK starts.
extern "C" void *mark_interrupts(void *)
{
    constexpr int patience_ms = 1000;
    for (;;) {
        pollfd signals{to_thread[0], POLLIN, 0};
        if (poll(&signals, 1, terminal == shown ? -1 : patience_ms) == 0)
            show_input();
        char byte;
        if ((signals.revents & POLLIN) == 0 || read(to_thread[0], &byte, 1) != 1)
            continue;
        Tcl_AsyncMark(async);
        static_cast<void>(!write(wake_up[1], "", 1));
        // Taken already: the next Ctrl-C may be on its way, and two signals at once may become one.
        if (!interrupted)
            continue;
        marked = true;
        pthread_kill(main_thread, SIGINT);
    }
}

void empty_pipe(ClientData, int)
{
    char bytes[64];
    while (read(wake_up[0], bytes, sizeof bytes) > 0) {
    }
}

bool take_interrupt()
{
    return interrupted.exchange(false);
}

// ------------------------------------------------------------------------------- the prompt

// The script that the prompt runs, or null.
const char *prompt_script()
{
    return Tcl_GetVar(shell, "tcl_prompt1", TCL_GLOBAL_ONLY);
}

// Whether the text has the command where a command may begin and end.
bool has_command(std::string_view text, std::string_view command)
{
    constexpr std::string_view blank = " \t\n;{}[]\"";
    const auto at = text.find(command);
    if (at == text.npos || command.empty())
        return false;
    const auto end = at + command.size();
    return (at == 0 || blank.find(text[at - 1]) != blank.npos) &&
           (end == text.size() || blank.find(text[end]) != blank.npos);
}

// Whether the outermost command is one of the prompt's script. Scripts may have redefined `info`.
bool runs_prompt_script()
{
    const char *const script = prompt_script();
    if (script == nullptr)
        return false;
    const Tcl_InterpState state = Tcl_SaveInterpState(shell, TCL_OK);
    bool found = false;
    if (Tcl_EvalEx(shell, "::dict get [::tcl::info::frame 1] cmd", -1, 0) == TCL_OK)
        found = has_command(script, Tcl_GetString(Tcl_GetObjResult(shell)));
    Tcl_RestoreInterpState(shell, state);
    return found;
}

// Tcl's loop reads the variable before it looks at the limit. A trace on a variable without a value
// would set errorCode; then the main loop removes the limit.
char *limit_ends(ClientData, Tcl_Interp *interp, const char *name, const char *, int)
{
    Tcl_LimitTypeReset(interp, TCL_LIMIT_COMMANDS);
    Tcl_UntraceVar(interp, name, TCL_TRACE_READS | TCL_GLOBAL_ONLY, limit_ends, nullptr);
    return nullptr;
}

// If the limit were set while Tcl's loop reads the rc file or runs a prompt script, the loop would
// end the process: there an interrupt is only an error that can be caught.
void end_everything()
{
    if (!prompted || runs_prompt_script())
        return;
    if (prompt_script() != nullptr)
        Tcl_TraceVar(shell, "tcl_prompt1", TCL_TRACE_READS | TCL_GLOBAL_ONLY, limit_ends, nullptr);
    Tcl_SetMainLoop(at_prompt);
    Tcl_LimitSetCommands(shell, 1);
    Tcl_LimitTypeSet(shell, TCL_LIMIT_COMMANDS);
    Tcl_LimitCheck(shell);
}

// The main loop, called by Tcl's own after the prompt has been shown: no command runs. It returns,
// and Tcl's loop waits for a line as before.
void at_prompt()
{
    prompted = true;
    one_before = 0;
    Tcl_LimitTypeReset(shell, TCL_LIMIT_COMMANDS);
    do {
        const bool taken = take_interrupt(); // first: from now on input stays as it is
        show_input();
        Tcl_Channel const errors = Tcl_GetStdChannel(TCL_STDERR);
        if (taken && errors != nullptr) {
            Tcl_WriteChars(errors, "\nline dropped; earlier lines of an unfinished command stay\n",
                           -1);
            Tcl_Flush(errors);
        }
    } while (interrupted);
}

// Called between two commands or, with a null interpreter, where a script waits for events. There
// no error can be returned, but a limit is checked.
int end_command(ClientData, Tcl_Interp *interp, int code)
{
    const bool uncatchable = repeated != 0 || interp == nullptr;
    const bool taken = take_interrupt();
    show_input();
    if (!taken)
        return code;
    if (interp == nullptr && editing.drop_line != nullptr && editing.drop_line())
        return code;
    if (uncatchable)
        end_everything();
    if (interp == nullptr)
        return code;
    Tcl_ResetResult(interp);
    Tcl_SetObjResult(interp, Tcl_NewStringObj("interrupted", -1));
    Tcl_SetErrorCode(interp, "QXSH", "INTERRUPTED", nullptr);
    return TCL_ERROR;
}

// --------------------------------------------------------------------------------- start-up

// Scripts see the numbers of descriptors in the names of channels, so ours are high.
bool open_pipe(int (&pipe_ends)[2])
{
    constexpr int high = 64;
    if (pipe(pipe_ends) != 0)
        return false;
    for (int &end : pipe_ends) {
        const int moved = fcntl(end, F_DUPFD_CLOEXEC, high);
        if (moved < 0) {
            fcntl(end, F_SETFD, FD_CLOEXEC);
            continue;
        }
        close(end);
        end = moved;
    }
    return true;
}

bool open_pipes()
{
    if (!open_pipe(wake_up) || !open_pipe(to_thread) || !open_pipe(nothing))
        return false;
    for (const int end : {wake_up[0], wake_up[1], to_thread[1], nothing[0]})
        fcntl(end, F_SETFL, O_NONBLOCK);
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

void interrupt_scripts(Tcl_Interp *interp)
{
    struct sigaction action;
    if (sigaction(SIGINT, nullptr, &action) != 0 || action.sa_handler == SIG_IGN || !open_pipes())
        return;
    shell = interp;
    main_thread = pthread_self();
    async = Tcl_AsyncCreate(end_command, nullptr);
    if (!start_thread()) {
        Tcl_AsyncDelete(async);
        return;
    }
    Tcl_CreateExitHandler(default_again, nullptr);
    Tcl_CreateFileHandler(wake_up[0], TCL_READABLE, empty_pipe, nullptr);
    Tcl_SetMainLoop(at_prompt);
    Tcl_SetAssocData(interp, line_editing_key, nullptr, &editing);
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART | SA_ONSTACK; // the SDK's system calls are restarted
    action.sa_handler = on_interrupt;
    sigaction(SIGINT, &action, nullptr);
}

} // namespace qxsh
