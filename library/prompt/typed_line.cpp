// The line being edited; see typed_line.h. A line is discarded through a Readline key, so that it
// ends like every line: the terminal is restored and tclreadline is notified.
#include "library/prompt/typed_line.h"

#include "shell/line_editing.h"

#include <csignal>
#include <cstdio>
#include <initializer_list>

#include <readline/readline.h>

#include <fcntl.h>
#include <unistd.h>

namespace qx::prompt {

namespace {

// Ctrl-C never arrives as a character, unless it is quoted: the terminal turns it into a signal.
constexpr int drop_key = 'C' & 0x1f;

Tcl_Interp *prompting;
int terminal; // a descriptor of our own
bool line_was_dropped = false;

int end_dropped_line(int, int key)
{
    rl_point = rl_end;
    rl_redisplay();
    rl_echo_signal_char(SIGINT);
    rl_newline(1, key); // the screen keeps the line
    rl_replace_line("", 1);
    line_was_dropped = true;
    return 0;
}

bool reads_keys()
{
    return RL_ISSTATE(RL_STATE_CALLBACK) != 0;
}

// Whether tclreadline is what waits for events, rather than a script. The interpreter's result is
// kept, and scripts may have redefined `info`.
bool waits_for_keys()
{
    const Tcl_InterpState state = Tcl_SaveInterpState(prompting, TCL_OK);
    const bool waits =
        Tcl_EvalEx(prompting, "::tcl::info::frame -1", -1, 0) == TCL_OK &&
        Tcl_StringMatch(Tcl_GetStringResult(prompting), "*tclreadline::readline read *") != 0;
    Tcl_RestoreInterpState(prompting, state);
    return waits;
}

// First ends any unfinished operation: a search, a count, a key of several characters.
bool drop_line()
{
    if (!waits_for_keys())
        return false;
    if (reads_keys()) {
        rl_free_line_state();
        rl_callback_sigcleanup();
        rl_execute_next(drop_key);
        rl_callback_read_char();
    }
    return true;
}

// A script that waits for events while a line is typed handles keys, too, and tclreadline learns
// too late that the line has ended: Readline would end the process at the next key. So keys wait
// instead.
void read_key(ClientData, int)
{
    if (reads_keys())
        rl_callback_read_char();
    if (!reads_keys())
        Tcl_DeleteFileHandler(terminal);
}

// The channel stdin, when it is read, removes any handler of its own descriptor.
int take_keys(Tcl_Event *, int)
{
    Tcl_DeleteFileHandler(STDIN_FILENO);
    Tcl_CreateFileHandler(terminal, TCL_READABLE, read_key, nullptr);
    return 1;
}

int expect_line(ClientData, Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    if (count != 1) {
        Tcl_WrongNumArgs(interp, 1, words, nullptr);
        return TCL_ERROR;
    }
    auto *const event = reinterpret_cast<Tcl_Event *>(Tcl_Alloc(sizeof(Tcl_Event)));
    event->proc = take_keys;
    event->nextPtr = nullptr;
    Tcl_QueueEvent(event, TCL_QUEUE_HEAD);
    line_was_dropped = false;
    return TCL_OK;
}

int dropped(ClientData, Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    if (count != 1) {
        Tcl_WrongNumArgs(interp, 1, words, nullptr);
        return TCL_ERROR;
    }
    Tcl_SetObjResult(interp, Tcl_NewBooleanObj(line_was_dropped));
    return TCL_OK;
}

int give(ClientData, Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    if (count != 2) {
        Tcl_WrongNumArgs(interp, 1, words, "bytes");
        return TCL_ERROR;
    }
    Tcl_Channel in = Tcl_GetStdChannel(TCL_STDIN);
    int size = 0;
    auto *const bytes = reinterpret_cast<const char *>(Tcl_GetByteArrayFromObj(words[1], &size));
    if (in != nullptr && Tcl_Ungets(in, bytes, size, 0) == size)
        return TCL_OK;
    Tcl_SetObjResult(interp, Tcl_NewStringObj("stdin takes no commands", -1));
    return TCL_ERROR;
}

} // namespace

void create_line_commands(Tcl_Interp *interp)
{
    Tcl_CreateObjCommand(interp, "::qx::prompt::readline::expect", expect_line, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "::qx::prompt::readline::dropped", dropped, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "::qx::prompt::readline::give", give, nullptr, nullptr);
    prompting = interp;
    terminal = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 64);
    if (terminal < 0)
        terminal = STDIN_FILENO;
    auto *const shell = static_cast<qxsh::line_editing *>(
        Tcl_GetAssocData(interp, qxsh::line_editing_key, nullptr));
    if (shell != nullptr)
        *shell = {reads_keys, drop_line};
}

void bind_line_drop()
{
    for (const Keymap map : {emacs_standard_keymap, vi_insertion_keymap, vi_movement_keymap})
        rl_bind_key_in_map(drop_key, end_dropped_line, map);
}

} // namespace qx::prompt
