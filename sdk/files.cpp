// The simulator's files and error messages. Relies on POSIX files.
#include "files.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qxsim {

void complain(const char *format, ...) noexcept
{
    std::va_list words;
    va_start(words, format);
    std::fputs("qx_sim: ", stderr);
    std::vfprintf(stderr, format, words);
    std::fputc('\n', stderr);
    va_end(words);
}

static int open_file(const std::string &name, int flags) noexcept
{
    const int file =
        open(name.c_str(), flags | O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR);
    if (file < 0)
        complain("cannot write %s: %s", name.c_str(), std::strerror(errno));
    return file;
}

int open_log(const std::string &name) noexcept
{
    return open_file(name, O_APPEND);
}

bool write_all(int file, const std::string &text) noexcept
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(file, text.data() + done, text.size() - done);
        if (count < 0 && errno != EINTR)
            return false;
        if (count > 0)
            done += static_cast<std::size_t>(count);
    }
    return true;
}

void write_file(const std::string &name, const std::string &text) noexcept
{
    const int file = open_file(name, O_TRUNC);
    if (file < 0)
        return;
    const bool written = write_all(file, text);
    if (close(file) != 0 || !written)
        complain("cannot write %s: %s", name.c_str(), std::strerror(errno));
}

} // namespace qxsim
