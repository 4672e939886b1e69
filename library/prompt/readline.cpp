// The library of the package qx::prompt: settings of Readline for serial lines and pasted scripts
// that a script cannot make through tclreadline.
//
//   qx::prompt::readline::settle PLAIN   once, after tclreadline has been initialized
//   qx::prompt::readline::files ON       whether file names complete where nothing else does
//   qx::prompt::readline::entries        how many lines have been remembered so far
//   qx::prompt::readline::remember FIRST TEXT   one line, which may be of several lines, in place
//   of
//                                        those from that number on
//
// The edited line itself is handled in typed_line.cpp.
#include "library/prompt/typed_line.h"

#include <cstdio>

#include <readline/history.h>
#include <readline/readline.h>
#include <tcl.h>

#include <poll.h>

namespace {

// After a pasted tab the next character arrives within this time, even on a slow serial line; a
// person who types Tab does not notice it.
constexpr int paste_wait_ms = 20;

void set_variable(const char *name, const char *value)
{
    // Older versions of Readline do not know all variables, and print a message.
    if (rl_variable_value(name) != nullptr)
        rl_variable_bind(name, value);
}

// A tab immediately followed by characters was pasted, and is inserted literally.
int complete_or_insert(int count, int key)
{
    pollfd input{fileno(rl_instream), POLLIN, 0};
    if (poll(&input, 1, paste_wait_ms) > 0)
        return rl_insert(count, key);
    // Readline lists the words when completion is requested twice in a row.
    if (rl_last_func == complete_or_insert)
        rl_last_func = rl_complete;
    return rl_complete(count, key);
}

bool files_wanted = false;

// Called by Readline when completion has offered nothing.
char *file_or_nothing(const char *text, int state)
{
    return files_wanted ? rl_filename_completion_function(text, state) : nullptr;
}

// The argument of a command that takes one boolean.
bool truth(Tcl_Interp *interp, int count, Tcl_Obj *const words[], int &value)
{
    if (count == 2)
        return Tcl_GetBooleanFromObj(interp, words[1], &value) == TCL_OK;
    Tcl_WrongNumArgs(interp, 1, words, "boolean");
    return false;
}

int files(ClientData, Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    int on = 0;
    if (!truth(interp, count, words, on))
        return TCL_ERROR;
    files_wanted = on != 0;
    return TCL_OK;
}

int settle(ClientData, Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    int plain = 0;
    if (!truth(interp, count, words, plain))
        return TCL_ERROR;

    // Settings that the user may override come before rl_initialize, which reads the user's
    // settings.
    set_variable("show-all-if-ambiguous", "on");
    rl_initialize();
    // Scripts are full of exclamation marks.
    history_expansion_char = '\0';
    // A serial console shows the codes of bracketed paste as garbage.
    set_variable("enable-bracketed-paste", "off");
    if (plain) {
        set_variable("colored-stats", "off");
        set_variable("colored-completion-prefix", "off");
    }
    // The listed words begin where a Tcl word does.
    rl_completer_word_break_characters = " \t\n;[]{}\"$";
    rl_completion_entry_function = file_or_nothing;
    if (rl_function_of_keyseq("\t", nullptr, nullptr) == rl_complete)
        rl_bind_key('\t', complete_or_insert);
    qx::prompt::bind_line_drop();
    return TCL_OK;
}

int entries(ClientData, Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    if (count != 1) {
        Tcl_WrongNumArgs(interp, 1, words, nullptr);
        return TCL_ERROR;
    }
    // Readline forgets the first ones when there are too many.
    Tcl_SetObjResult(interp, Tcl_NewIntObj(history_base + history_length));
    return TCL_OK;
}

int remember(ClientData, Tcl_Interp *interp, int count, Tcl_Obj *const words[])
{
    int first = 0;
    if (count != 3) {
        Tcl_WrongNumArgs(interp, 1, words, "first text");
        return TCL_ERROR;
    }
    if (Tcl_GetIntFromObj(interp, words[1], &first) != TCL_OK)
        return TCL_ERROR;
    while (history_length > 0 && history_base + history_length > first)
        free_history_entry(remove_history(history_length - 1));
    Tcl_DString text;
    Tcl_UtfToExternalDString(nullptr, Tcl_GetString(words[2]), -1, &text);
    add_history(Tcl_DStringValue(&text));
    Tcl_DStringFree(&text);
    using_history();
    return TCL_OK;
}

} // namespace

extern "C" __attribute__((visibility("default"))) int Qxreadline_Init(Tcl_Interp *interp)
{
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    if (Tcl_Eval(interp, "namespace eval ::qx::prompt::readline {}") != TCL_OK)
        return TCL_ERROR;
    Tcl_CreateObjCommand(interp, "::qx::prompt::readline::settle", settle, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "::qx::prompt::readline::files", files, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "::qx::prompt::readline::entries", entries, nullptr, nullptr);
    Tcl_CreateObjCommand(interp, "::qx::prompt::readline::remember", remember, nullptr, nullptr);
    qx::prompt::create_line_commands(interp);
    return TCL_OK;
}
