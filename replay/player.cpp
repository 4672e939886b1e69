// libqx-replay.so: a library with the SDK's interface that answers from the recording in
// QX_REPLAY. What cannot be answered ends the process: status 2 if the recording is not good,
// status 3 if the program calls differently. Relies on POSIX.
#include "records/call_words.h"
#include "records/profile.h"
#include "records/switches.h"
#include "replay/quiet_turn.h"
#include "replay/replay.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <pthread.h>
#include <string>
#include <unistd.h>

namespace qxsh {

namespace {

enum exit_status { bad_recording = 2, other_call = 3 };

pthread_mutex_t turn = PTHREAD_MUTEX_INITIALIZER;
replay *running = nullptr; // from the first call to the end of the process
pid_t owner = 0;           // the process that made the first call
std::string file;

void say(const std::string &what)
{
    std::fprintf(stderr, "qx-replay: %s\n", what.c_str());
}

// What the program has printed so far comes first. Its own handlers of the end do not run: they
// might call again.
[[noreturn]] void leave(exit_status status, const std::string &what)
{
    std::fflush(nullptr);
    say(what);
    _exit(status);
}

// At the end of the process. Destructors that run later may still call, and are answered: then the
// line has come too early.
void say_rest()
try {
    const quiet_turn held{turn};
    if (running == nullptr || owner != getpid())
        return;
    if (const auto rest = running->rest())
        say("the recording goes on with " + *rest);
} catch (const recording_error &error) {
    say(error.message(file));
}

void begin()
{
    const char *const name = environment_value("QX_REPLAY");
    if (name == nullptr)
        leave(bad_recording, "QX_REPLAY does not name a recording");
    file = name;
    owner = getpid();
    auto next = std::make_unique<replay>(file, profile_in_use(), switched_on("QX_REPLAY_LOOSE"));
    next->on_unknown_key = [](const recorded_call &call) {
        say("call " + std::to_string(call.number) + ", " + call.row->name.text() +
            ": a key that this run has not given is answered with zeros, as all of them");
    };
    running = next.release();
    std::atexit(say_rest);
}

} // namespace

unsigned int answer_call(unsigned int number, const call_word *words, const void *)
try {
    const quiet_turn held{turn};
    const call_row &call = call_rows[number];
    if (running == nullptr)
        begin();
    if (owner != getpid())
        leave(other_call,
              std::string{"a forked process has no recording, now "} + call.name.text());
    return running->answer(call, words);
} catch (const replay_end &end) {
    leave(other_call, end.text);
} catch (const recording_error &error) {
    leave(bad_recording, error.message(file));
} catch (const profile_error &error) {
    leave(bad_recording, error.text);
} catch (const std::bad_alloc &) {
    leave(bad_recording, "no memory");
}

} // namespace qxsh
