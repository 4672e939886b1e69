// The transformation on stdin; see prompt_input.h. Tcl's loop collects lines until they form a
// complete command, and cannot be made to discard them. So lines are held back here until the
// command is complete, and an interrupt discards them. If the user has set a second prompt, Tcl
// must get each line at once to show it; then only the current line is discarded.
#include "shell/prompt_input.h"

#include "shell/interrupt.h"

#include <unistd.h>

#include <cerrno>
#include <string>

namespace qxsh {

namespace {

struct prompt_input
{
    Tcl_Interp *interp;
    Tcl_Channel top; ///< the top of the channel stack: the transformation itself
    bool blocking = true;
    bool ended = false; ///< the end of input came after the kept lines
    bool whole = false; ///< the kept lines are complete and may be read
    std::string kept;

    Tcl_Channel below() const { return Tcl_GetStackedChannel(top); }
};

prompt_input *prompt; // the only one; null before it is created and after stdin is closed

prompt_input &input_of(ClientData data)
{
    return *static_cast<prompt_input *>(data);
}

// Prompts as Tcl's loop does.
void show_prompt(Tcl_Interp *interp)
{
    Tcl_Channel out = Tcl_GetStdChannel(TCL_STDOUT);
    if (out == nullptr)
        return;
    Tcl_WriteChars(out, "\n", 1);
    Tcl_Obj *const script = Tcl_GetVar2Ex(interp, "tcl_prompt1", nullptr, TCL_GLOBAL_ONLY);
    if (script == nullptr || Tcl_EvalObjEx(interp, script, TCL_EVAL_GLOBAL) != TCL_OK)
        Tcl_WriteChars(out, "% ", 2);
    if ((out = Tcl_GetStdChannel(TCL_STDOUT)) != nullptr)
        Tcl_Flush(out);
}

int give_kept(prompt_input &input, char *buffer, int size)
{
    const auto count = input.kept.copy(buffer, static_cast<std::size_t>(size));
    input.kept.erase(0, count);
    if (input.kept.empty())
        input.whole = false;
    command_begins();
    return static_cast<int>(count);
}

int fail(int *error, int code)
{
    *error = code;
    return -1;
}

// Reads for a running script: an interrupt ends the wait, and then the script.
int read_for_script(prompt_input &input, char *buffer, int size, int *error)
{
    if (input.blocking) {
        wait_for_input(STDIN_FILENO);
        if (interrupt_waits())
            return fail(error, EINTR);
    }
    const int count = Tcl_ReadRaw(input.below(), buffer, size);
    return count < 0 ? fail(error, Tcl_GetErrno()) : count;
}

bool has_second_prompt(Tcl_Interp *interp)
{
    return Tcl_GetVar2Ex(interp, "tcl_prompt2", nullptr, TCL_GLOBAL_ONLY) != nullptr;
}

int read_for_prompt(prompt_input &input, char *buffer, int size, int *error)
{
    restore_error_code(input.interp);
    while (!input.whole) {
        wait_for_input(STDIN_FILENO);
        if (take_interrupt()) {
            input.kept.clear();
            show_prompt(input.interp);
            continue;
        }
        const int count = Tcl_ReadRaw(input.below(), buffer, size);
        if (count < 0)
            return fail(error, Tcl_GetErrno());
        input.kept.append(buffer, static_cast<std::size_t>(count));
        input.ended = count == 0;
        input.whole = input.ended || has_second_prompt(input.interp) ||
                      (input.kept.back() == '\n' && Tcl_CommandComplete(input.kept.c_str()) != 0);
    }
    return give_kept(input, buffer, size);
}

int read_input(ClientData data, char *buffer, int size, int *error)
{
    auto &input = input_of(data);
    if (!input.kept.empty() && input.whole)
        return give_kept(input, buffer, size);
    if (input.ended) {
        input.ended = false;
        input.whole = false;
        return 0;
    }
    if (!input.blocking || runs_script(input.interp))
        return read_for_script(input, buffer, size, error);
    return read_for_prompt(input, buffer, size, error);
}

// ------------------------------------------------ everything else is passed to the terminal

int close_input(ClientData data, Tcl_Interp *)
{
    delete &input_of(data);
    prompt = nullptr;
    return 0;
}

int set_blocking(ClientData data, int mode)
{
    input_of(data).blocking = mode == TCL_MODE_BLOCKING;
    return 0;
}

int set_option(ClientData data, Tcl_Interp *interp, const char *name, const char *value)
{
    Tcl_Channel below = input_of(data).below();
    auto *const set = Tcl_ChannelSetOptionProc(Tcl_GetChannelType(below));
    if (set == nullptr)
        return Tcl_BadChannelOption(interp, name, "");
    return set(Tcl_GetChannelInstanceData(below), interp, name, value);
}

int get_option(ClientData data, Tcl_Interp *interp, const char *name, Tcl_DString *value)
{
    Tcl_Channel below = input_of(data).below();
    auto *const get = Tcl_ChannelGetOptionProc(Tcl_GetChannelType(below));
    if (get == nullptr)
        return name == nullptr ? TCL_OK : Tcl_BadChannelOption(interp, name, "");
    return get(Tcl_GetChannelInstanceData(below), interp, name, value);
}

void watch_input(ClientData data, int mask)
{
    Tcl_Channel below = input_of(data).below();
    Tcl_ChannelWatchProc(Tcl_GetChannelType(below))(Tcl_GetChannelInstanceData(below), mask);
}

int pass_event(ClientData, int mask)
{
    return mask;
}

} // namespace

void watch_prompt_input(Tcl_Interp *interp)
{
    static char name[] = "prompt"; // Tcl 8.5 declares it without const
    static Tcl_ChannelType type = {};
    type.typeName = name;
    type.version = TCL_CHANNEL_VERSION_5;
    type.closeProc = close_input;
    type.inputProc = read_input;
    type.setOptionProc = set_option;
    type.getOptionProc = get_option;
    type.watchProc = watch_input;
    type.blockModeProc = set_blocking;
    type.handlerProc = pass_event;
    Tcl_Channel in = Tcl_GetStdChannel(TCL_STDIN);
    if (in == nullptr)
        return;
    auto *const input = new prompt_input;
    input->interp = interp;
    input->top = Tcl_StackChannel(interp, &type, input, TCL_READABLE, in);
    if (input->top == nullptr)
        delete input;
    else
        prompt = input;
}

void give_typed(const char *bytes, int size)
{
    if (prompt == nullptr)
        return;
    prompt->kept.append(bytes, static_cast<std::size_t>(size));
    prompt->whole = true;
}

} // namespace qxsh
