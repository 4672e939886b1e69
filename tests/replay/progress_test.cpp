// The line that says how far a file is: on a terminal only, not at once, and gone at the end.
#include "replay/file_progress.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace {

// What arrives at the other end of a file that stderr is while something runs.
template <class Work> std::string written_to(int stderr_end, int other_end, const Work &work)
{
    const int saved = dup(STDERR_FILENO);
    dup2(stderr_end, STDERR_FILENO);
    work();
    dup2(saved, STDERR_FILENO);
    close(saved);
    // A terminal's text arrives some time after it was written.
    std::string text;
    pollfd waiting{other_end, POLLIN, 0};
    char piece[4096];
    while (poll(&waiting, 1, 1000) > 0) {
        const ssize_t size = read(other_end, piece, sizeof piece);
        if (size <= 0)
            break;
        text.append(piece, static_cast<std::size_t>(size));
    }
    close(stderr_end);
    close(other_end);
    return text;
}

// Steps for so many milliseconds.
void work_for(int time)
{
    qxsh::file_progress progress{"checking FILE"};
    const timespec moment{0, 1'000'000};
    for (int i = 0; i < time; ++i) {
        for (int step = 0; step < 64; ++step)
            progress.at([i, time] { return static_cast<double>(i) / time; });
        nanosleep(&moment, nullptr);
    }
}

struct terminal
{
    terminal()
    {
        grantpt(user);
        unlockpt(user);
        program = open(ptsname(user), O_RDWR | O_NOCTTY);
    }
    int user = posix_openpt(O_RDWR | O_NOCTTY);
    int program = -1;
};

} // namespace

TEST(file_progress, is_shown_on_a_terminal_after_two_seconds)
{
    const terminal one;
    ASSERT_GE(one.program, 0);
    const std::string text = written_to(one.program, one.user, [] { work_for(2600); });
    const std::string start = "\r\033[Kchecking FILE: ";
    EXPECT_TRUE(text.starts_with(start)) << text;
    EXPECT_NE(text.find("%"), text.npos);
    EXPECT_TRUE(text.ends_with("%\r\033[K")) << text;
    // Five times a second, not with every step.
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(start, at)) != text.npos; ++at)
        ++count;
    EXPECT_LE(count, 60U);
}

TEST(file_progress, says_nothing_of_short_work)
{
    const terminal one;
    EXPECT_EQ(written_to(one.program, one.user, [] { work_for(300); }), "");
}

TEST(file_progress, says_nothing_in_a_pipe)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(written_to(ends[1], ends[0], [] { work_for(2200); }), "");
}
