// Before and after SDK calls; see sdk_call.h.
#include "commands/sdk_call.h"

#include "commands/sdk_output.h"
#include "runtime/results.h"

namespace qxsh {

constinit call_history history = {};

// A channel of a script may run commands when it is flushed, which begin and end calls as well.
[[gnu::noinline]] static void flush_before_call()
{
    Tcl_Interp *const interp = history.interp;
    const char *const usage = history.usage;
    const int objc = history.objc;
    Tcl_Obj *const *const objv = history.objv;
    flush_tcl_output();
    begin_call(interp, objc, objv, usage);
}

void begin_sdk_call(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *usage)
{
    begin_call(interp, objc, objv, usage);
    if (stdout_now.tcl_stdout == nullptr || Tcl_OutputBuffered(stdout_now.tcl_stdout) > 0)
        flush_before_call();
}

int end_sdk_call(unsigned int status)
{
    if (!stdout_now.c_stdout_is_direct) [[unlikely]]
        flush_c_output();
    history.calls[history.count % call_history::length] = {history.usage, status};
    ++history.count;
    Tcl_Interp *const interp = history.interp;
    end_call();
    return set_int_result(interp, static_cast<int>(status & 0xffff));
}

} // namespace qxsh
