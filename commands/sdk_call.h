// What stands around a call of the SDK: one order of output, and a history of the latest calls for
// whoever has to tell what happened.
#pragma once

#include "runtime/tcl_api.h"

#include <array>

namespace qxsh {

/// The latest SDK calls and the command that may end the process. Plain data, so that a handler of
/// signals can read it.
struct call_history {
    static constexpr unsigned length = 16;

    struct call {
        const char *usage;   ///< e.g. "oo:qx_flow_add device_id p_flow "; null: none yet
        unsigned int status; ///< as the SDK gave it
    };
    std::array<call, length> calls; ///< call number n is at n % length
    unsigned int count;             ///< calls that have returned

    // The command that is in the SDK or in block memory now; a null interpreter means none.
    Tcl_Interp *interp;
    const char *usage;
    int objc;
    Tcl_Obj *const *objv; ///< may be converted words (runtime/command_words.h), which have no text
};

extern call_history history;

/// Notes that a command goes where a fault cannot be undone.
inline void begin_call(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *usage)
{
    history.usage = usage;
    history.objc = objc;
    history.objv = objv;
    history.interp = interp;
}

inline void end_call() { history.interp = nullptr; }

/// Stands before an SDK call: what is buffered in Tcl's stdout comes out before what the SDK prints.
void begin_sdk_call(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *usage);

/// Stands behind it: what the SDK has printed comes out. The command's result is the low 16 bits
/// of the status. Returns TCL_OK.
int end_sdk_call(unsigned int status);

} // namespace qxsh
