// libqx-record.so: stands in front of the SDK library that the loader finds, passes each call on,
// and writes it down. The process must not notice: what goes wrong here is one line on stderr, and
// the calls go on. Relies on POSIX threads and signals.
#include "record_numbers.h"
#include "records/call_line.h"
#include "records/call_words.h"
#include "records/files.h"
#include "records/profile.h"
#include "records/sha256.h"
#include "records/switches.h"
#include "replay/quiet_turn.h"
#include "replay/readable_memory.h"
#include "replay/recorded_call.h"
#include "replay/recording_writer.h"
#include "replay/sdk_library.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <new>
#include <pthread.h>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

using namespace qxsh;

namespace {

// One write, and no signal if nobody reads it.
void complain(const std::string &text)
{
    write_all(STDERR_FILENO, "qx-record: " + text + "\n");
}

// ----------------------------------------------------------------------- the library behind

std::atomic<any_function> functions[call_count];

// Without this library, the loader would end the process in the same way.
[[noreturn]] void end_without(const char *function)
{
    complain(std::string{"there is no "} + function + " in an SDK library behind libqx-record.so");
    _exit(127);
}

// Found when it is first called. Two threads find the same.
any_function function_numbered(unsigned int number)
{
    any_function function = functions[number].load(std::memory_order_acquire);
    if (function == nullptr) [[unlikely]] {
        const char *const name = call_rows[number].name.text();
        function = find_behind(name);
        if (function == nullptr)
            end_without(name);
        functions[number].store(function, std::memory_order_release);
    }
    return function;
}

// ------------------------------------------------------------------------------ the recording

enum class phase : std::uint8_t { before_first_call, on, off, forked, told };
std::atomic<phase> now{phase::before_first_call};

// Threads take turns where a call is looked at or written, but not while it runs.
pthread_mutex_t turn = PTHREAD_MUTEX_INITIALIZER;

struct recording
{
    std::string file;
    recording_writer writer{};
    recording_header header{};
    readable_memory memory{};
    std::vector<profile_status> statuses{};
    hidden_text hidden{};
    std::uint64_t calls = 0;  ///< that are in the file
    std::uint64_t serial = 0; ///< of the last call that has begun
    std::uint32_t process = 0;
    pthread_key_t callers{};
};

// Never destroyed: a call may come while the process ends.
recording *here = nullptr;

bool copy_memory(void *to, const void *from, std::size_t size)
{
    return here->memory.copy(to, from, size);
}

// What a recorded call leaves in its stack: its serial number, often enough that whatever uses this
// part of the stack later overwrites some of it.
struct stack_mark
{
    std::uint64_t serials[32];
};

// A thread's call that is being recorded. A call can be left without returning, by longjmp or an
// exception. So its mark is looked up when another one comes.
struct caller
{
    const volatile stack_mark *mark = nullptr; ///< null: none is running
    std::uint64_t serial = 0;                  ///< what the mark says
    call_line line{most_recorded_elements, copy_memory};
};

void forget_caller(void *one)
{
    delete static_cast<caller *>(one);
}

// This thread's; null without memory for it.
caller *this_caller()
{
    auto *mine = static_cast<caller *>(pthread_getspecific(here->callers));
    if (mine == nullptr) {
        mine = new (std::nothrow) caller;
        if (mine != nullptr && pthread_setspecific(here->callers, mine) != 0) {
            delete mine;
            mine = nullptr;
        }
        if (mine != nullptr)
            mine->line.show_keys(here->header.keys == recorded_keys::clear, here->hidden);
    }
    return mine;
}

bool on_signal_stack()
{
    stack_t stack{};
    return sigaltstack(nullptr, &stack) == 0 && (stack.ss_flags & SS_ONSTACK) != 0;
}

// Whether the thread's recorded call still runs: the library calls itself, or a signal's handler
// calls it. Stacks grow down; `top` is where the new call begins, and what is below belongs to it.
bool still_runs(const caller &mine, const void *top)
{
    stack_mark found{};
    if (mine.mark == nullptr ||
        (const_cast<const stack_mark *>(mine.mark) < top && !on_signal_stack()))
        return false;
    if (!copy_memory(&found, const_cast<const stack_mark *>(mine.mark), sizeof found))
        return false;
    return std::all_of(std::begin(found.serials), std::end(found.serials),
                       [&](std::uint64_t serial) { return serial == mine.serial; });
}

const char *name_of_status(std::uint32_t number)
{
    for (const profile_status &status : here->statuses)
        if (status.number == number)
            return status.name.c_str();
    return "unknown";
}

// ---------------------------------------------------------------------------- begin and end

void end_recording(const std::string &mistake)
{
    now = phase::off;
    here->writer.close();
    complain(mistake + "; the recording ends here, with call " + std::to_string(here->calls));
}

// In the child of a fork: another thread may have had its turn, for ever.
void leave_to_parent()
{
    if (now != phase::on)
        return;
    now = phase::forked;
    here->writer.abandon();
}

std::string fingerprint_here(const unsigned char *bytes, std::size_t size, const void *)
{
    return fingerprint(here->header.salt, bytes, size);
}

void use_profile()
try {
    here->statuses = profile_in_use().statuses;
} catch (const profile_error &mistake) {
    complain(mistake.text + "; statuses have the simulator's names");
    here->statuses = default_profile().statuses;
}

// The programs that this one starts are not recorded, and may be of another processor, for which
// the loader would complain. Other entries stay as they are.
void leave_preload()
try {
    constexpr std::string_view separators = ": ";
    constexpr std::string_view mine = "libqx-record.so";
    const char *const set = environment_value("LD_PRELOAD");
    const std::string all = set != nullptr ? set : "";
    std::string others;
    for (std::size_t at = 0, next = 0; at < all.size(); at = next) {
        const std::size_t end = std::min(all.find_first_of(separators, at), all.size());
        next = std::min(end + 1, all.size());
        const std::string_view entry = std::string_view{all}.substr(at, end - at);
        if (entry.substr(entry.rfind('/') + 1) != mine)
            others += all.substr(at, next - at);
    }
    if (others.empty())
        unsetenv("LD_PRELOAD");
    else if (others != all)
        setenv("LD_PRELOAD", others.c_str(), 1);
} catch (const std::bad_alloc &) {
    complain("no memory to take libqx-record.so out of LD_PRELOAD");
}

// A process without an SDK library, such as a shell, only starts the one that is to be recorded.
__attribute__((constructor)) void load()
{
    if (is_behind(call_rows[0].name.text()))
        leave_preload();
}

// Makes the file. Returns what is wrong; an empty text if nothing is.
std::string start_recording(const char *name, bool replace, bool keys)
{
    here = new recording;
    here->file = absolute(name);
    here->process = static_cast<std::uint32_t>(getpid());
    const library_file library = file_of(function_numbered(0));
    here->header = {library.path, library.size, library.build_id};
    here->header.keys = keys ? recorded_keys::clear : recorded_keys::fingerprints;
    describe_here_and_now(here->header);
    here->hidden = here->header.keys == recorded_keys::fingerprints
                       ? hidden_text{fingerprint_here, nullptr}
                       : length_text;
    if (!here->memory.open() || pthread_key_create(&here->callers, forget_caller) != 0 ||
        pthread_atfork(nullptr, nullptr, leave_to_parent) != 0)
        return "no pipe, thread key or fork handler is to be had";
    use_profile();
    return here->writer.open(here->file, replace, here->header);
}

// At the process's first call. The programs that it starts are not recorded: they would find the
// file there, or replace it.
void start()
try {
    const char *const name = environment_value("QX_RECORD");
    if (name == nullptr) {
        now = phase::off;
        return;
    }
    leave_preload();
    const bool replace = switched_on("QX_RECORD_FORCE");
    errno = 0;
    const std::string mistake = start_recording(name, replace, switched_on("QX_RECORD_KEYS"));
    unsetenv("QX_RECORD");
    now = mistake.empty() ? phase::on : phase::off;
    if (!mistake.empty())
        complain(mistake + "; nothing is recorded" +
                 (errno == EEXIST ? " (QX_RECORD_FORCE=1 replaces the file)" : ""));
} catch (const std::bad_alloc &) {
    now = phase::off;
    complain("no memory for a recording; nothing is recorded");
}

// Begins a call, whose frame has `mark`. Returns its serial number; 0 if it is not to be recorded.
std::uint64_t begin(unsigned int number, const call_word *words, volatile stack_mark &mark)
{
    const quiet_turn held{turn};
    if (now == phase::before_first_call)
        start();
    if (now != phase::on)
        return 0;
    here->memory.look_again();
    caller *const mine = this_caller();
    if (mine == nullptr || still_runs(*mine, words + call_rows[number].arguments))
        return 0;
    mine->mark = &mark;
    mine->serial = ++here->serial;
    for (volatile std::uint64_t &serial : mark.serials)
        serial = mine->serial;
    try {
        mine->line.start(call_rows[number], words);
    } catch (const std::bad_alloc &) {
        end_recording("no memory for a call");
        return 0;
    }
    return mine->serial;
}

void end(unsigned int number, const call_word *words, std::uint32_t status, std::uint64_t serial)
{
    if (now != phase::on)
        return;
    const quiet_turn held{turn};
    caller *const mine = this_caller();
    if (now != phase::on || mine == nullptr || mine->serial != serial)
        return;
    mine->mark = nullptr;
    try {
        const std::string &line = mine->line.finish(
            call_rows[number], words,
            {here->calls + 1, here->process, status, name_of_status(status), false});
        const std::string mistake = here->writer.append(line, &held.before());
        if (!mistake.empty())
            end_recording(mistake);
        else
            ++here->calls;
    } catch (const std::bad_alloc &) {
        end_recording("no memory for a call");
    }
}

// Nothing here is undone when a call is left by longjmp or an exception: see `caller`.
unsigned int recorded(unsigned int number, any_function function, const call_word *words)
{
    volatile stack_mark mark;
    const std::uint64_t serial = begin(number, words, mark);
    const unsigned int status = call_through(number, function, words);
    if (serial != 0)
        end(number, words, status, serial);
    return status;
}

void tell_forked()
{
    if (now.exchange(phase::told) == phase::forked)
        complain("process " + std::to_string(getpid()) +
                 ", forked from the recorded one, is not in " + here->file);
}

// A compressed file gets its end. Calls that still come follow it.
__attribute__((destructor)) void end_process()
{
    if (now != phase::on)
        return;
    const quiet_turn held{turn};
    here->writer.finish();
}

} // namespace

namespace qxsh {

unsigned int answer_call(unsigned int number, const call_word *words)
{
    const any_function function = function_numbered(number);
    switch (now.load(std::memory_order_acquire)) {
    case phase::forked:
        tell_forked();
        break;
    case phase::before_first_call:
    case phase::on:
        return recorded(number, function, words);
    default:
        break;
    }
    return call_through(number, function, words);
}

} // namespace qxsh
