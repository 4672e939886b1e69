// The player as a library in a process: forked processes, threads, and how the process ends.
#include "made_calls.h"
#include "qx_sdk.h"
#include "record_numbers.h"
#include "replay/recording_writer.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace recorded;

namespace {

// Calls of qx_qos_map_mode_set with any words; the recording is named to the player.
class player : public testing::Test
{
public:
    static std::vector<made_call> calls_of(unsigned count)
    {
        std::mt19937 random{31};
        std::vector<made_call> calls;
        for (unsigned i = 0; i < count; ++i)
            calls.emplace_back(qxsh::call_rows[qxsh::call_qx_qos_map_mode_set], random);
        return calls;
    }
    static std::string text_of(std::vector<made_call> &calls)
    {
        qxsh::recording_header header;
        header.keys = qxsh::recorded_keys::clear;
        return recording_of(header, calls);
    }
    static unsigned make(const made_call &call)
    {
        return qx_qos_map_mode_set(static_cast<unsigned short>(call.values[0]),
                                   static_cast<unsigned short>(call.values[1]), call.values[2]);
    }

    void call_from_two_threads()
    {
        const auto half = [this](std::size_t from) {
            for (std::size_t i = from; i < from + 100; ++i)
                if (make(calls[i]) != calls[i].status)
                    _exit(90);
        };
        std::thread first(half, 0);
        std::thread second(half, 100);
        first.join();
        second.join();
        std::exit(0);
    }

    static void handle(int)
    {
        if (make(*first) != first->status)
            _exit(90);
        handled = handled + 1;
    }
    void call_beside_a_handler()
    {
        alarm(60);
        make(*first);
        signal(SIGPROF, handle);
        const itimerval often{{0, 1000}, {0, 1000}};
        setitimer(ITIMER_PROF, &often, nullptr);
        for (int count = 0; count < 10'000; ++count)
            make(*first);
        _exit(handled > 0 ? 0 : 91);
    }

    static void call_and_close(const std::vector<made_call> &all, const std::string &other)
    {
        make(all[0]);
        for (int number = 3; number < 1024; ++number)
            close(number);
        for (int number = 3; number < 1024; ++number)
            open(other.c_str(), O_RDONLY);
        for (std::size_t i = 1; i < all.size(); ++i)
            if (make(all[i]) != all[i].status)
                _exit(90);
        std::exit(0);
    }

    static inline const made_call *first = nullptr;
    static inline volatile sig_atomic_t handled = 0;
    std::vector<made_call> calls = calls_of(200);
    const file recording{"process", text_of(calls)};
    const int named = setenv("QX_REPLAY", recording.name.c_str(), 1);
};

} // namespace

// The standard's text has the child's message, the parent's answers go on.
TEST_F(player, does_not_answer_a_forked_process)
{
    EXPECT_EXIT(
        {
            if (make(calls[0]) != calls[0].status)
                _exit(90);
            if (fork() == 0)
                std::exit(0); // says nothing of the rest
            wait(nullptr);
            const pid_t child = fork();
            if (child == 0) {
                make(calls[1]);
                _exit(91);
            }
            int status = 0;
            waitpid(child, &status, 0);
            if (!WIFEXITED(status) || WEXITSTATUS(status) != 3)
                _exit(92);
            for (std::size_t i = 1; i < calls.size(); ++i)
                if (make(calls[i]) != calls[i].status)
                    _exit(93);
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        "^qx-replay: a forked process has no recording, now qx_qos_map_mode_set\n$");
}

TEST_F(player, ends_the_process_at_another_call)
{
    EXPECT_EXIT(
        {
            std::atexit([] { std::fputs("a handler of the end", stderr); });
            dup2(STDERR_FILENO, STDOUT_FILENO);
            std::fputs("printed ", stdout);
            qx_l3_route_shut(0);
        },
        testing::ExitedWithCode(3),
        "^printed qx-replay: call 1: recorded qx_qos_map_mode_set, now qx_l3_route_shut\n$");
}

TEST_F(player, says_what_was_not_called)
{
    EXPECT_EXIT(
        {
            make(calls[0]);
            std::exit(5);
        },
        testing::ExitedWithCode(5),
        "^qx-replay: the recording goes on with call 2, qx_qos_map_mode_set\n$");
}

// More than one block of the file is to be read then.
TEST_F(player, reads_on_where_the_program_closes_its_file)
{
    std::vector<made_call> same(5'000, calls[0]);
    const std::string text = text_of(same);
    const file other{"other", "no recording\n"};
    for (const std::string name : {"closed", "closed.gz"}) {
        if (name.ends_with(".gz") && !qxsh::can_compress())
            continue;
        const file recording_file{name, text};
        if (name.ends_with(".gz")) {
            qxsh::recording_writer writer;
            qxsh::recording_header header;
            header.keys = qxsh::recorded_keys::clear;
            ASSERT_EQ(writer.open(recording_file.name, true, header), "");
            ASSERT_EQ(writer.append(text.substr(text.find('\n') + 1)), "");
        }
        setenv("QX_REPLAY", recording_file.name.c_str(), 1);
        EXPECT_EXIT(call_and_close(same, other.name), testing::ExitedWithCode(0), "^$") << name;
    }
}

// One that came while a call runs would wait for its own thread.
TEST_F(player, answers_a_handler_of_signals)
{
    std::vector<made_call> same(20'000, calls[0]);
    const file many{"handler", text_of(same)};
    setenv("QX_REPLAY", many.name.c_str(), 1);
    first = &same[0];
    EXPECT_EXIT(call_beside_a_handler(), testing::ExitedWithCode(0), "^$");
}

// Whichever comes first: with loose order each thread gets the answers of its own calls.
TEST_F(player, answers_threads_one_at_a_time)
{
    setenv("QX_REPLAY_LOOSE", "yes", 1);
    EXPECT_EXIT(call_from_two_threads(), testing::ExitedWithCode(0), "^$");
    unsetenv("QX_REPLAY_LOOSE");
}

TEST_F(player, answers_nothing_from_a_bad_recording)
{
    const file bad{"bad", "{\"recording\": 1}\n"};
    setenv("QX_REPLAY", bad.name.c_str(), 1);
    EXPECT_EXIT(make(calls[0]), testing::ExitedWithCode(2),
                "^qx-replay: .*_bad:1: \"library\" is missing in the header\n$");
    unsetenv("QX_REPLAY");
    EXPECT_EXIT(make(calls[0]), testing::ExitedWithCode(2),
                "^qx-replay: QX_REPLAY does not name a recording\n$");
}
