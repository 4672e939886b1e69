// Recording and tracing calls; see observed_calls.h.
#include "library/qx/observed_calls.h"

#include "commands/call_watching.h"
#include "commands/memory_access.h"
#include "library/qx/call_recording.h"
#include "library/qx/call_trace.h"
#include "library/qx/checked_command.h"
#include "library/qx/profile_file.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qxsh {

namespace {

bool copy_readable(void *to, const void *from, std::size_t size);

// What is on, and for whom. Never destroyed: a call may come while the process ends.
struct observation
{
    const memory_access *memory = nullptr;
    const call_watching *watching = nullptr;
    call_recording recording{copy_readable};
    call_trace trace{copy_readable};
    Tcl_Interp *recorder = nullptr; // that has begun it, if it is on
    Tcl_Interp *tracer = nullptr;
    Tcl_Interp *namer = nullptr; // whose profile names what is written
    std::vector<profile_status> statuses{};
    std::unique_ptr<shown_names> names{};
    std::unordered_map<const void *, const call_row *> rows{}; // by name

    // The current call.
    const call_row *row = nullptr; // null: there was no memory for it
    bool recorded = false;
    bool traced = false;
    std::uint64_t begun = 0; // nanoseconds
    bool writing = false;    // a line, to a channel that may call scripts
};
observation *here = nullptr;

bool copy_readable(void *to, const void *from, std::size_t size)
{
    constexpr std::size_t most_bytes = 4096; // at a time
    for (std::size_t at = 0; at < size; at += most_bytes) {
        const auto bytes = static_cast<std::uint32_t>(std::min(most_bytes, size - at));
        if (!here->memory->can_read(static_cast<const char *>(from) + at, bytes))
            return false;
    }
    std::memcpy(to, from, size);
    return true;
}

std::uint64_t nanoseconds()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * 1'000'000'000 +
           static_cast<std::uint64_t>(time.tv_nsec);
}

const call_row *row_of(const char *name)
{
    const auto [entry, is_new] = here->rows.try_emplace(name, nullptr);
    if (is_new)
        entry->second =
            std::find_if(call_rows, call_rows + call_count, [name](const call_row &call) {
                return std::string_view{name} == call.name.text();
            });
    return entry->second;
}

const char *name_of_status(std::uint32_t number)
{
    for (const profile_status &status : here->statuses)
        if (status.number == number)
            return status.name.c_str();
    return "unknown"; // as libqx-record.so has it
}

// --------------------------------------------------------------------------------- on and off

void before(const char *call, const call_word *words);
void after(const char *call, const call_word *words, unsigned int status);

void watch_if_needed()
{
    static constexpr call_watcher watcher = {before, after};
    const bool needed = here->recording.is_on() || here->trace.is_on();
    here->watching->watch(needed ? &watcher : nullptr);
}

void end_recording(ClientData = nullptr)
{
    if (here->recorder == nullptr)
        return;
    here->recorder = nullptr;
    here->recording.end();
    Tcl_DeleteExitHandler(end_recording, nullptr);
    watch_if_needed();
}

void end_trace()
{
    here->tracer = nullptr;
    here->trace.end();
    watch_if_needed();
}

// Scripts of the channel may make calls meanwhile, whose lines would need lines in turn: these
// calls are recorded and counted, but not shown.
void write_line(std::string_view text)
{
    Tcl_Channel const channel = Tcl_GetStdChannel(TCL_STDERR);
    if (channel == nullptr || here->writing)
        return;
    Tcl_DString line;
    Tcl_ExternalToUtfDString(nullptr, text.data(), static_cast<int>(text.size()), &line);
    here->writing = true;
    Tcl_WriteChars(channel, Tcl_DStringValue(&line), Tcl_DStringLength(&line));
    Tcl_Flush(channel);
    here->writing = false;
    Tcl_DStringFree(&line);
}

void give_up_recording(const std::string &mistake)
{
    const std::string line = "qx::record: " + mistake + "; the recording ends here, with call " +
                             std::to_string(here->recording.calls()) + "\n";
    end_recording();
    write_line(line);
}

// Ends what cannot go on, and needs no memory for that.
void give_up_memory()
{
    const bool records = here->recorder != nullptr;
    const bool traces = here->trace.is_on();
    end_recording();
    end_trace();
    if (records)
        write_line("qx::record: no memory for a call; the recording ends here\n");
    if (traces)
        write_line("qx::trace: no memory for a call; the trace ends here\n");
}

// -------------------------------------------------------------------------------------- calls

void before(const char *call, const call_word *words)
{
    observation &now = *here;
    now.row = nullptr;
    now.recorded = false;
    now.traced = false;
    try {
        now.row = row_of(call);
        if (now.trace.shows(*now.row)) {
            now.trace.before(*now.row, words);
            now.traced = true;
        }
        if (now.recording.is_on()) {
            now.recording.before(*now.row, words);
            now.recorded = true;
        }
        now.begun = nanoseconds();
    } catch (const std::bad_alloc &) {
        now.row = nullptr;
    }
}

void after(const char *, const call_word *words, unsigned int status)
{
    observation &now = *here;
    const std::uint64_t taken = nanoseconds() - now.begun;
    if (now.row == nullptr)
        return give_up_memory();
    try {
        std::string line;
        std::string mistake;
        if (now.recorded)
            mistake = now.recording.after(*now.row, words, status, name_of_status(status));
        if (now.traced) {
            now.trace.after(words, status, taken);
            line = now.trace.line(*now.names);
        }
        // From here on scripts may run.
        if (!mistake.empty())
            give_up_recording(mistake);
        if (!line.empty())
            write_line(line);
    } catch (const std::bad_alloc &) {
        give_up_memory();
    }
}

// ----------------------------------------------------------------------------------- commands

bool refuse(Tcl_Interp *interp, const std::string &text, const char *kind, const char *what)
{
    Tcl_DString message;
    Tcl_ExternalToUtfDString(nullptr, text.data(), static_cast<int>(text.size()), &message);
    Tcl_SetObjResult(interp, Tcl_NewStringObj(Tcl_DStringValue(&message), -1));
    Tcl_DStringFree(&message);
    Tcl_SetErrorCode(interp, "QX", kind, what, nullptr);
    return false;
}

// From now on the names are those of this profile.
void use_names(Tcl_Interp *interp, const profile &in_use)
{
    here->names = std::make_unique<shown_names>(in_use);
    here->statuses = in_use.statuses;
    here->namer = interp;
}

// Prepares for observing calls, with the names of the interpreter's profile. On failure returns
// false with an error in the interpreter.
bool prepare(Tcl_Interp *interp)
{
    const auto *const memory =
        static_cast<const memory_access *>(Tcl_GetAssocData(interp, memory_access_name, nullptr));
    const auto *const watching =
        static_cast<const call_watching *>(Tcl_GetAssocData(interp, call_watching_name, nullptr));
    if (memory == nullptr || watching == nullptr)
        return refuse(interp, "calls are recorded and traced where package demo is loaded",
                      "MEMORY", "demo");
    profile in_use;
    if (!take_profile(interp, in_use))
        return false;
    if (here == nullptr)
        here = new observation;
    here->memory = memory;
    here->watching = watching;
    use_names(interp, in_use);
    return true;
}

int begin_recording_command(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    int replace;
    int keys;
    if (objc != 4) {
        Tcl_WrongNumArgs(interp, 1, objv, "name replace keys");
        return TCL_ERROR;
    }
    if (Tcl_GetBooleanFromObj(interp, objv[2], &replace) != TCL_OK ||
        Tcl_GetBooleanFromObj(interp, objv[3], &keys) != TCL_OK || !prepare(interp))
        return TCL_ERROR;
    Tcl_DString native;
    Tcl_UtfToExternalDString(nullptr, Tcl_GetString(objv[1]), -1, &native);
    const std::string name = Tcl_DStringValue(&native);
    Tcl_DStringFree(&native);
    end_recording();
    if (const std::string mistake = here->recording.begin(name, replace != 0, keys != 0);
        !mistake.empty()) {
        refuse(interp, mistake, "RECORD", Tcl_GetString(objv[1]));
        return TCL_ERROR;
    }
    here->recorder = interp;
    Tcl_CreateExitHandler(end_recording, nullptr);
    watch_if_needed();
    return TCL_OK;
}

int end_recording_command(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    if (here == nullptr || !here->recording.is_on())
        return TCL_OK;
    end_recording();
    Tcl_SetObjResult(interp, Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(here->recording.calls())));
    return TCL_OK;
}

int recorded_file_command(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    if (here == nullptr || !here->recording.is_on())
        return TCL_OK;
    Tcl_DString name;
    Tcl_ExternalToUtfDString(nullptr, here->recording.name().c_str(), -1, &name);
    Tcl_DStringResult(interp, &name);
    return TCL_OK;
}

int begin_trace_command(ClientData, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[])
{
    if (objc != 3) {
        Tcl_WrongNumArgs(interp, 1, objv, "pattern functions");
        return TCL_ERROR;
    }
    call_trace::functions chosen;
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        Tcl_Obj *each;
        for (int at = 0; Tcl_ListObjIndex(interp, objv[2], at, &each) == TCL_OK && each; ++at)
            if (std::strcmp(call_rows[i].name.text(), Tcl_GetString(each)) == 0)
                chosen.set(i);
    }
    if (!prepare(interp))
        return TCL_ERROR;
    here->trace.begin(Tcl_GetString(objv[1]), chosen);
    here->tracer = interp;
    watch_if_needed();
    return TCL_OK;
}

int end_trace_command(ClientData, Tcl_Interp *, int, Tcl_Obj *const[])
{
    if (here != nullptr)
        end_trace();
    return TCL_OK;
}

int trace_pattern_command(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    if (here != nullptr && here->trace.is_on())
        Tcl_SetObjResult(interp, Tcl_NewStringObj(here->trace.pattern().c_str(), -1));
    return TCL_OK;
}

int trace_counts_command(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_Obj *const rows = Tcl_NewListObj(0, nullptr);
    for (int i = 0; here != nullptr && i < call_count; ++i) {
        const call_trace::counts &counted = here->trace.counted()[static_cast<std::size_t>(i)];
        if (counted.calls == 0)
            continue;
        Tcl_Obj *const row = Tcl_NewListObj(0, nullptr);
        Tcl_ListObjAppendElement(nullptr, row, Tcl_NewStringObj(call_rows[i].name.text(), -1));
        for (const std::uint64_t number :
             {counted.calls, counted.failed, counted.nanoseconds, counted.longest})
            Tcl_ListObjAppendElement(nullptr, row,
                                     Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(number)));
        Tcl_ListObjAppendElement(nullptr, rows, row);
    }
    Tcl_SetObjResult(interp, rows);
    return TCL_OK;
}

// The interpreter ends.
void release(ClientData, Tcl_Interp *interp)
{
    if (here == nullptr)
        return;
    if (here->recorder == interp)
        end_recording();
    if (here->tracer == interp)
        end_trace();
}

} // namespace

void create_observing_commands(Tcl_Interp *interp)
{
    constexpr struct
    {
        const char *name;
        Tcl_ObjCmdProc *command;
    } commands[] = {
        {"::qx::record::begin", checked_command<begin_recording_command>},
        {"::qx::record::end", checked_command<end_recording_command>},
        {"::qx::record::now", checked_command<recorded_file_command>},
        {"::qx::trace::begin", checked_command<begin_trace_command>},
        {"::qx::trace::end", checked_command<end_trace_command>},
        {"::qx::trace::pattern", checked_command<trace_pattern_command>},
        {"::qx::trace::counts", checked_command<trace_counts_command>},
    };
    for (const auto &[name, command] : commands)
        Tcl_CreateObjCommand(interp, name, command, nullptr, nullptr);
    Tcl_CallWhenDeleted(interp, release, nullptr);
}

void rename_observed(Tcl_Interp *interp)
{
    profile in_use;
    if (here != nullptr && here->namer == interp && take_profile(interp, in_use))
        use_names(interp, in_use);
}

} // namespace qxsh
