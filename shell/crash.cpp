// The crash report; see crash.h. Anything that needs Tcl or the C library, which a signal handler
// may not call, is done by a forked child, which has a copy of everything, a second or two, and
// nothing to lose. If the fork fails, that part is left out.
#include "shell/crash.h"

#include "commands/sdk_call.h"
#include "runtime/command_words.h"
#include "shell/fatal_signals.h"
#include "shell/signal_text.h"

#include <tcl.h>

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>

namespace qxsh {

namespace {

constexpr unsigned child_seconds = 2;
constexpr unsigned part_seconds = 4; // longer than a child takes

struct
{
    volatile sig_atomic_t signal; // 0: none yet
    volatile sig_atomic_t next_part;
    int code;
    void *address;
} crash;

extern "C" void end_child(int)
{
    _exit(1);
}

// Has a child process do work that may crash, hang or find a lock taken.
void in_child(void (*work)())
{
    const pid_t child = fork();
    if (child == 0) {
        // A crash of the child is not reported and leaves no core file.
        set_fatal_handlers(end_child);
        alarm(child_seconds);
        work();
        _exit(0);
    }
    while (child > 0 && waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void add_handle(signal_text &text, const void *pointer, const swig_type_record *type)
{
    if (pointer == nullptr) {
        text.add("NULL");
        return;
    }
    char digits[address_digits];
    write_address(digits, address_of(pointer));
    text.add("_").add(digits, address_digits);
    text.add(type != nullptr ? type->name : "_p_void");
}

// Words are numbers and handles, in Tcl's objects or as converted words, which have no text. They
// never include a record's contents, such as a key.
void add_word(signal_text &text, const Tcl_Obj &word)
{
    const auto &value = word.internalRep;
    text.add(" ");
    if (word.typePtr == &converted_number || word.typePtr == known.wide_type)
        text.add_number(value.wideValue);
    else if (word.typePtr == known.integer_type)
        text.add_number(value.longValue);
    else if (word.typePtr == &handle_type)
        add_handle(text, value.twoPtrValue.ptr1,
                   static_cast<const swig_type_record *>(value.twoPtrValue.ptr2));
    else
        text.add(word.bytes, 80);
}

// ------------------------------------------------------------------------------- the parts

// When the SDK crashes the buffers are nearly always empty: its command began by flushing Tcl's,
// and this process's C stdout is unbuffered. But block memory is called without a flush, and a
// library may give C's stdout a buffer.
void flush_stdout()
{
    in_child([] {
        if (Tcl_Channel channel = Tcl_GetStdChannel(TCL_STDOUT); channel != nullptr)
            Tcl_Flush(channel);
        std::fflush(stdout);
    });
}

void write_signal()
{
    signal_text text;
    text.add("qxsh: ").add(name_of_fatal_signal(crash.signal));
    if (crash.code <= 0) // sent by a process: kill(), abort()
        text.add(" was sent");
    else
        text.add(" at 0x").add_hex(reinterpret_cast<std::uintptr_t>(crash.address), 8);
    text.add(history.interp != nullptr ? ", in command:" : ", outside the SDK and block memory");
    text.end_line().write(STDERR_FILENO);
}

void write_command()
{
    if (history.interp == nullptr)
        return;
    signal_text text;
    text.add("    ").add(name_of(history.command)).write(STDERR_FILENO);
}

void write_words()
{
    if (history.interp == nullptr)
        return;
    signal_text text;
    const int count = words_of(command_rows[history.command]);
    for (int i = 1; i <= count; ++i)
        add_word(text, *history.objv[i]);
    text.write(STDERR_FILENO);
}

void end_command()
{
    if (history.interp != nullptr)
        signal_text{}.end_line().write(STDERR_FILENO);
}

Tcl_Obj *value_of(Tcl_Obj *dictionary, const char *key)
{
    Tcl_Obj *value = nullptr;
    Tcl_DictObjGet(nullptr, dictionary, Tcl_NewStringObj(key, -1), &value);
    return value;
}

// The innermost command that is in a file. `info frame` is called without an evaluation, which
// would check the bounds of the stack, and the handler runs on another one. It also returns the
// command's text, which may be anything and is left out.
void write_place()
{
    Tcl_Interp *const interp = history.interp;
    Tcl_CmdInfo info_frame;
    if (Tcl_GetCommandInfo(interp, "::tcl::info::frame", &info_frame) == 0)
        return;
    for (int level = 0;; --level) {
        Tcl_Obj *const words[] = {Tcl_NewStringObj("frame", -1), Tcl_NewIntObj(level)};
        Tcl_ResetResult(interp);
        if (info_frame.objProc(info_frame.objClientData, interp, 2, words) != TCL_OK)
            return;
        Tcl_Obj *const frame = Tcl_GetObjResult(interp);
        Tcl_Obj *const file = value_of(frame, "file");
        Tcl_Obj *const line = value_of(frame, "line");
        if (file == nullptr || line == nullptr)
            continue;
        signal_text text;
        text.add("in file:").end_line();
        text.add("    ").add(Tcl_GetString(file), 800).add(":").add(Tcl_GetString(line), 20);
        text.end_line().write(STDERR_FILENO);
        return;
    }
}

void write_script()
{
    if (history.interp != nullptr)
        in_child(write_place);
}

void write_calls()
{
    signal_text text;
    const unsigned count = history.count;
    const unsigned first = count > call_history::length ? count - call_history::length : 0;
    if (count > first)
        text.add("SDK calls before, the latest last, with their statuses:").end_line();
    for (unsigned number = first; number < count; ++number) {
        const auto &call = history.calls[number % call_history::length];
        text.add("    ").add(name_of(call.command)).add(" ").add_number(call.status);
        text.end_line().write(STDERR_FILENO);
    }
}

constexpr void (*parts[])() = {flush_stdout, write_signal, write_command, write_words,
                               end_command,  write_script, write_calls};

[[noreturn]] void end_by_default(int signal)
{
    restore_default_action(signal);
    raise(signal);
    _exit(128 + signal);
}

[[noreturn]] void write_remaining_parts()
{
    while (crash.next_part < static_cast<int>(std::size(parts))) {
        const auto part = parts[crash.next_part];
        crash.next_part = crash.next_part + 1;
        alarm(part_seconds);
        part();
    }
    alarm(0);
    end_by_default(crash.signal);
}

extern "C" void skip_part(int)
{
    write_remaining_parts();
}

} // namespace

void report_crash(int signal, const siginfo_t &info)
{
    if (crash.signal == 0) {
        crash.signal = signal;
        crash.code = info.si_code;
        crash.address = info.si_addr;
        set_alarm_handler(skip_part);
    }
    write_remaining_parts();
}

} // namespace qxsh
