// Before and after SDK calls; see sdk_call.h.
#include "commands/sdk_call.h"

#include "commands/call_watching.h"
#include "commands/sdk_output.h"
#include "record_numbers.h"
#include "runtime/command_words.h"
#include "runtime/results.h"

namespace qxsh {

constinit call_history history = {};

static constinit const call_watcher *watcher = nullptr;

// The words of the current call, which are ready.
struct ready_words
{
    ready_words()
    {
        const int count = words_of(command_rows[history.command]);
        for (int i = 1; i <= count; ++i) {
            const Tcl_Obj *const word = history.objv[i];
            unsigned int number;
            if (ready(word, words[i - 1].pointer))
                continue;
            words[i - 1].pointer = nullptr;
            if (ready(word, number))
                words[i - 1].value = number;
        }
    }
    call_word words[most_call_arguments];
};

// A script may run commands meanwhile, which begin and end calls as well.
template <class Action> static void keep_call(Action action)
{
    Tcl_Interp *const interp = history.interp;
    const command_number command = history.command;
    Tcl_Obj *const *const objv = history.objv;
    action();
    begin_call(command, interp, objv);
}

// A channel of a script may run commands when it is flushed.
[[gnu::noinline]] static void prepare_call()
{
    keep_call(flush_tcl_output);
    if (watcher != nullptr)
        watcher->before(name_of(history.command), ready_words{}.words);
}

static void tell_watcher(unsigned int status)
{
    keep_call([status] {
        const char *const name = name_of(history.command);
        const ready_words given;
        end_call();
        watcher->after(name, given.words, status);
    });
}

// A library that changes something of the process's does so early as a rule.
constexpr unsigned int calls_inspected_singly = 64;
constexpr unsigned int calls_between_inspections = 2048; // a power of two

static void (*inspect_process)(const char *call);

static void inspect(command_number command)
{
    keep_c_output_in_order();
    if (inspect_process != nullptr)
        inspect_process(name_of(command));
}

// Where C's stdout has to be flushed after every call, the process is not inspected more often.
static void inspect_after_call(unsigned int status)
{
    static unsigned int next = 0;
    if (watcher != nullptr)
        tell_watcher(status);
    if (history.count == next) {
        inspect(history.command);
        next = history.count + 1;
        if (next >= calls_inspected_singly)
            next |= calls_between_inspections - 1;
    } else {
        keep_c_output_in_order();
    }
    const bool each = !stdout_now.c_stdout_is_direct || watcher != nullptr;
    history.next_inspection = each ? history.count + 1 : next;
}

static void watch(const call_watcher *wanted)
{
    watcher = wanted;
    prepare_each_call(wanted != nullptr);
    history.next_inspection = history.count;
}

void offer_call_watching(Tcl_Interp *interp)
{
    static constinit call_watching watching = {watch};
    Tcl_SetAssocData(interp, call_watching_name, nullptr, &watching);
}

void inspect_after_sdk_calls(void (*inspect)(const char *call))
{
    inspect_process = inspect;
}

void inspect_after_latest_call()
{
    static unsigned int inspected = 0;
    if (inspected == history.count)
        return;
    inspected = history.count;
    inspect(history.calls[(inspected - 1) % call_history::length].command);
}

void begin_sdk_call(command_number command, Tcl_Interp *interp, Tcl_Obj *const objv[])
{
    begin_call(command, interp, objv);
    if (stdout_now.tcl_stdout == nullptr || Tcl_OutputBuffered(stdout_now.tcl_stdout) > 0)
        prepare_call();
}

static inline int record_call(unsigned int status)
{
    history.calls[history.count % call_history::length] = {history.command, status};
    ++history.count;
    Tcl_Interp *const interp = history.interp;
    end_call();
    return set_int_result(interp, static_cast<int>(status & 0xffff));
}

// Not inlined, which would make every call save more registers.
[[gnu::noinline]] static int inspect_and_record_call(unsigned int status)
{
    inspect_after_call(status);
    return record_call(status);
}

int end_sdk_call(unsigned int status)
{
    if (history.count == history.next_inspection) [[unlikely]]
        return inspect_and_record_call(status);
    return record_call(status);
}

} // namespace qxsh
