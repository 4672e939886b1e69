// How far long work is, for C++: the commands of qx::progress in progress.tcl.
#pragma once

#include <tcl.h>

#include <cstddef>
#include <initializer_list>
#include <string>

namespace qxsh {

/// Some work, from its beginning to its end. The interpreter's result or error stays as it is.
class shown_progress
{
public:
    /// `what` is being done; `total`, with its noun, is how much there is.
    shown_progress(Tcl_Interp *interp, const std::string &what, const std::string &total)
        : interp_(interp)
    {
        run({"::qx::progress::begin", what.c_str(), total.c_str()});
    }
    ~shown_progress() { run({"::qx::progress::end"}); }
    shown_progress(const shown_progress &) = delete;
    shown_progress &operator=(const shown_progress &) = delete;

    /// So much is done.
    void at(std::size_t done) { run({"::qx::progress::at", std::to_string(done).c_str()}); }

private:
    void run(std::initializer_list<const char *> words)
    {
        Tcl_InterpState const state = Tcl_SaveInterpState(interp_, TCL_OK);
        Tcl_Obj *const command = Tcl_NewListObj(0, nullptr);
        Tcl_IncrRefCount(command);
        for (const char *const word : words)
            Tcl_ListObjAppendElement(nullptr, command, Tcl_NewStringObj(word, -1));
        Tcl_EvalObjEx(interp_, command, TCL_EVAL_GLOBAL | TCL_EVAL_DIRECT);
        Tcl_DecrRefCount(command);
        Tcl_RestoreInterpState(interp_, state);
    }

    Tcl_Interp *interp_;
};

} // namespace qxsh
