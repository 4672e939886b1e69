// Before and after SDK calls; see sdk_call.h.
#include "commands/sdk_call.h"

#include "commands/sdk_output.h"
#include "runtime/results.h"

namespace qxsh {

constinit call_history history = {};

void begin_sdk_call(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *usage)
{
    begin_call(interp, objc, objv, usage);
    if (stdout_now.tcl_stdout == nullptr || Tcl_OutputBuffered(stdout_now.tcl_stdout) > 0)
        flush_tcl_output();
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
