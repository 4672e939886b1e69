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

// A library that changes something of the process's does so early as a rule.
constexpr unsigned int calls_inspected_singly = 64;
constexpr unsigned int calls_between_inspections = 2048; // a power of two

static void (*inspect_process)(const char *usage);

static void inspect(const char *usage)
{
    keep_c_output_in_order();
    if (inspect_process != nullptr)
        inspect_process(usage);
}

// Not inlined, which would make every call save more registers. Where C's stdout has to be flushed
// after every call, the process is not inspected more often.
[[gnu::noinline]] static void inspect_after_call()
{
    static unsigned int next = 0;
    if (history.count == next) {
        inspect(history.usage);
        next = history.count + 1;
        if (next >= calls_inspected_singly)
            next |= calls_between_inspections - 1;
    } else {
        keep_c_output_in_order();
    }
    history.next_inspection = stdout_now.c_stdout_is_direct ? next : history.count + 1;
}

void inspect_after_sdk_calls(void (*inspect)(const char *usage))
{
    inspect_process = inspect;
}

void inspect_after_latest_call()
{
    static unsigned int inspected = 0;
    if (inspected == history.count)
        return;
    inspected = history.count;
    inspect(history.calls[(inspected - 1) % call_history::length].usage);
}

void begin_sdk_call(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *usage)
{
    begin_call(interp, objc, objv, usage);
    if (stdout_now.tcl_stdout == nullptr || Tcl_OutputBuffered(stdout_now.tcl_stdout) > 0)
        flush_before_call();
}

int end_sdk_call(unsigned int status)
{
    if (history.count == history.next_inspection) [[unlikely]]
        inspect_after_call();
    history.calls[history.count % call_history::length] = {history.usage, status};
    ++history.count;
    Tcl_Interp *const interp = history.interp;
    end_call();
    return set_int_result(interp, static_cast<int>(status & 0xffff));
}

} // namespace qxsh
