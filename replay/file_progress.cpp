// A line on the terminal.
#include "replay/file_progress.h"

#include <ctime>
#include <unistd.h>

namespace qxsh {

namespace {

std::int64_t milliseconds()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::int64_t{time.tv_sec} * 1000 + time.tv_nsec / 1'000'000;
}

// Nothing depends on whether it arrives.
void write_stderr(const std::string &text)
{
    if (write(STDERR_FILENO, text.data(), text.size()) < 0)
        return;
}

} // namespace

file_progress::file_progress(const std::string &what)
    : what_(isatty(STDERR_FILENO) != 0 ? what : ""), next_(milliseconds() + 2000)
{}

bool file_progress::is_due()
{
    if (what_.empty() || milliseconds() < next_)
        return false;
    next_ = milliseconds() + 200;
    return true;
}

void file_progress::show(double part)
{
    shown_ = true;
    write_stderr("\r\033[K" + what_ + ": " + std::to_string(static_cast<int>(part * 100)) + "%");
}

void file_progress::hide()
{
    if (shown_)
        write_stderr("\r\033[K");
    shown_ = false;
}

} // namespace qxsh
