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
#include <list>
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
    library_file sdk{};      ///< the library behind
    library_file self{};     ///< this one
    std::uint64_t calls = 0; ///< that are in the file
    std::uint32_t process = 0;
    pthread_key_t running{};
};

// Never destroyed: a call may come while the process ends.
recording *here = nullptr;

bool copy_memory(void *to, const void *from, std::size_t size)
{
    return here->memory.copy(to, from, size);
}

// A call that is being recorded. It may be left without returning, by longjmp or an exception: its
// place in the stack tells, at the latest when it is used again.
struct running_call
{
    const void *frame = nullptr; ///< of `recorded`; null: none runs
    call_line line{most_recorded_elements, copy_memory};
};
using running_calls = std::list<running_call>;

void forget_calls(void *all)
{
    delete static_cast<running_calls *>(all);
}

// This thread's; null without memory for them.
running_calls *calls_of_thread()
{
    auto *all = static_cast<running_calls *>(pthread_getspecific(here->running));
    if (all == nullptr) {
        all = new (std::nothrow) running_calls;
        if (all != nullptr && pthread_setspecific(here->running, all) != 0) {
            delete all;
            all = nullptr;
        }
    }
    return all;
}

bool on_signal_stack()
{
    stack_t stack{};
    return sigaltstack(nullptr, &stack) == 0 && (stack.ss_flags & SS_ONSTACK) != 0;
}

// A place for a call that begins. Stacks grow down, so what is below in this one does not run any
// more. May throw std::bad_alloc.
running_call &place_for(const void *frame, running_calls &all)
{
    running_call *place = nullptr;
    for (running_call &one : all) {
        if (one.frame != nullptr && one.frame <= frame &&
            (one.frame == frame || !on_signal_stack()))
            one.frame = nullptr;
        if (one.frame == nullptr)
            place = &one;
    }
    if (place == nullptr) {
        place = &all.emplace_back();
        place->line.show_keys(here->header.keys == recorded_keys::clear, here->hidden);
    }
    place->frame = frame;
    return *place;
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
    here->sdk = file_of(function_numbered(0));
    here->self = file_of(reinterpret_cast<any_function>(start_recording));
    if (here->sdk.path.empty())
        complain("/proc/self/maps does not tell where the SDK library is; "
                 "calls that it makes to itself are recorded, too");
    here->header = {here->sdk.path, here->sdk.size, here->sdk.build_id};
    here->header.keys = keys ? recorded_keys::clear : recorded_keys::fingerprints;
    describe_here_and_now(here->header);
    here->hidden = here->header.keys == recorded_keys::fingerprints
                       ? hidden_text{fingerprint_here, nullptr}
                       : length_text;
    if (!here->memory.open() || pthread_key_create(&here->running, forget_calls) != 0 ||
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

// The library calls itself: from its code, or from here if the call is the last of its function.
bool from_library(const void *caller)
{
    return here->sdk.has(caller) || here->self.has(caller);
}

// Begins a call; null if it is not to be recorded.
running_call *begin(unsigned int number, const call_word *words, const void *caller,
                    const void *frame)
{
    const quiet_turn held{turn};
    if (now == phase::before_first_call)
        start();
    if (now != phase::on || from_library(caller))
        return nullptr;
    here->memory.look_again();
    running_calls *const all = calls_of_thread();
    if (all == nullptr)
        return nullptr;
    try {
        running_call &mine = place_for(frame, *all);
        mine.line.start(call_rows[number], words);
        return &mine;
    } catch (const std::bad_alloc &) {
        end_recording("no memory for a call");
        return nullptr;
    }
}

void end(unsigned int number, const call_word *words, std::uint32_t status, call_line &mine)
{
    if (now != phase::on)
        return;
    const quiet_turn held{turn};
    if (now != phase::on)
        return;
    try {
        const std::string &line =
            mine.finish(call_rows[number], words,
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

// Nothing here is undone when a call is left by longjmp or an exception: see `running_call`.
unsigned int recorded(unsigned int number, any_function function, const call_word *words,
                      const void *caller)
{
    const void *const frame = __builtin_frame_address(0);
    running_call *const mine = begin(number, words, caller, frame);
    const unsigned int status = call_through(number, function, words);
    if (mine != nullptr && mine->frame == frame) {
        end(number, words, status, mine->line);
        mine->frame = nullptr;
    }
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

unsigned int answer_call(unsigned int number, const call_word *words, const void *caller)
{
    const any_function function = function_numbered(number);
    switch (now.load(std::memory_order_acquire)) {
    case phase::forked:
        tell_forked();
        break;
    case phase::before_first_call:
    case phase::on:
        return recorded(number, function, words, caller);
    default:
        break;
    }
    return call_through(number, function, words);
}

} // namespace qxsh
