// Before and after an SDK call: keeping output in order, a history of the latest calls for crash
// reports, and inspecting now and then what the library has done to the process.
#pragma once

#include "commands/command_table.h"
#include "runtime/tcl_api.h"

#include <array>

namespace qxsh {

/// The latest SDK calls and the command that is running now. Plain data, so that a signal handler
/// can read it.
struct call_history
{
    static constexpr unsigned length = 16;

    struct call
    {
        command_number command;
        unsigned int status; ///< as the SDK returned it
    };
    std::array<call, length> calls; ///< call number n is at n % length
    unsigned int count;             ///< calls that have returned
    unsigned int next_inspection;   ///< the next call with an inspection or a flush after it

    // The command that is in the SDK or in block memory now; a null interpreter means none.
    Tcl_Interp *interp;
    command_number command;
    Tcl_Obj *const *objv; ///< may be converted words (runtime/command_words.h), which have no text
};

[[gnu::visibility("hidden")]] extern call_history history;

/// Records that a command enters code where a fault cannot be turned into an error. The arguments
/// must stay valid until end_call().
inline void begin_call(command_number command, Tcl_Interp *interp, Tcl_Obj *const objv[])
{
    history.command = command;
    history.objv = objv;
    history.interp = interp;
}

/// Records that the command has left that code.
inline void end_call()
{
    history.interp = nullptr;
}

/// To be called before an SDK call: begin_call, and flushes Tcl's stdout, so that earlier output
/// comes before the SDK's.
void begin_sdk_call(command_number command, Tcl_Interp *interp, Tcl_Obj *const objv[]);

/// To be called after it: flushes the SDK's output, records the call, and sets the command's result
/// to the low 16 bits of the status. Returns TCL_OK.
int end_sdk_call(unsigned int status);

/// Sets what, if not null, inspects the process after each of the first 64 SDK calls and every
/// 2048th, and undoes what the library has done. It gets the latest call's name. Calls that no
/// inspection follows do not pay for it.
void inspect_after_sdk_calls(void (*inspect)(const char *call));

/// Inspects at once, unless no call has returned since this function was last called. For times
/// when the shell waits: at a prompt, and for events.
void inspect_after_latest_call();

} // namespace qxsh
