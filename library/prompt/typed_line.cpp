// The line being edited; see typed_line.h. A line is discarded through a Readline key, so that it
// ends like every line: the terminal is restored and tclreadline is notified.
#include "library/prompt/typed_line.h"

#include "shell/line_editing.h"

#include <csignal>
#include <cstdio>
#include <initializer_list>

#include <readline/readline.h>

#include <unistd.h>

namespace qx::prompt {

namespace {

// Ctrl-C never arrives as a character, unless it is quoted: the terminal turns it into a signal.
constexpr int drop_key = 'C' & 0x1f;

bool line_was_dropped = false;

qxsh::line_editing *shell_of(Tcl_Interp *interp)
{
    return static_cast<qxsh::line_editing *>(
        Tcl_GetAssocData(interp, qxsh::line_editing_key, nullptr));
}

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

// First ends any unfinished operation: a search, a count, a key of several characters.
void drop_line()
{
    if (!RL_ISSTATE(RL_STATE_CALLBACK))
        return;
    rl_free_line_state();
    rl_callback_sigcleanup();
    rl_execute_next(drop_key);
    rl_callback_read_char();
}

// A script that waits for events while a line is typed handles keys, too, and tclreadline learns
// too late that the line has ended: Readline would end the process at the next key. So keys wait
// instead.
void read_key(ClientData, int)
{
    if (RL_ISSTATE(RL_STATE_CALLBACK))
        rl_callback_read_char();
    else
        Tcl_DeleteFileHandler(STDIN_FILENO);
}

int take_keys(Tcl_Event *, int)
{
    Tcl_CreateFileHandler(STDIN_FILENO, TCL_READABLE, read_key, nullptr);
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

// If the shell does not accept typed lines, they are put back into the channel stdin.
int give(ClientData, Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    if (count != 2) {
        Tcl_WrongNumArgs(interp, 1, words, "bytes");
        return TCL_ERROR;
    }
    Tcl_Channel in = Tcl_GetStdChannel(TCL_STDIN);
    int size = 0;
    auto *const bytes = reinterpret_cast<const char *>(Tcl_GetByteArrayFromObj(words[1], &size));
    const qxsh::line_editing *const shell = shell_of(interp);
    if (in != nullptr && shell != nullptr) {
        shell->give(bytes, size);
        return TCL_OK;
    }
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
    if (qxsh::line_editing *const shell = shell_of(interp))
        shell->drop_line = drop_line;
}

void bind_line_drop()
{
    for (const Keymap map : {emacs_standard_keymap, vi_insertion_keymap, vi_movement_keymap})
        rl_bind_key_in_map(drop_key, end_dropped_line, map);
}

} // namespace qx::prompt
