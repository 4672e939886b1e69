// Files, and the signals that writing them may send. Relies on POSIX.
#include "records/files.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qxsh {

static std::string current_folder()
{
    char name[4096];
    return getcwd(name, sizeof name) != nullptr ? std::string{name} + "/" : std::string{};
}

std::string absolute(std::string_view name)
{
    // Never destroyed: a call may come while the process ends.
    static const std::string &start = *new std::string{current_folder()};
    return name.starts_with('/') ? std::string{name} : start + std::string{name};
}

std::string cannot_write(const std::string &name)
{
    const char *const reason = errno == ENXIO ? "nobody reads it" : std::strerror(errno);
    return "cannot write " + name + ": " + reason;
}

// Waiting for the reader of a FIFO is left out: without one, opening fails.
std::string open_for_writing(const std::string &name, int flags, int &file)
{
    file = open(name.c_str(), flags | O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK,
                S_IRUSR | S_IWUSR);
    if (file < 0)
        return cannot_write(name);
    struct stat is
    {};
    if (fstat(file, &is) == 0 && (!S_ISREG(is.st_mode) || (is.st_mode & (S_IRWXG | S_IRWXO)) == 0 ||
                                  fchmod(file, S_IRUSR | S_IWUSR) == 0))
        return {};
    std::string mistake = cannot_write(name) + ", and others may read it";
    close(file);
    file = -1;
    return mistake;
}

file_identity identity_of(int file)
{
    struct stat is
    {};
    if (fstat(file, &is) != 0)
        return {};
    return {static_cast<std::uint64_t>(is.st_dev), static_cast<std::uint64_t>(is.st_ino)};
}

int moved_away(int file)
{
    for (int lowest = 1000; lowest > 2; lowest /= 2) {
        const int other = fcntl(file, F_DUPFD_CLOEXEC, lowest);
        if (other >= 0) {
            close(file);
            return other;
        }
    }
    return file;
}

// Whether a file with something in it ends inside a line.
static bool ends_inside_line(int file, const std::string &name)
{
    struct stat is
    {};
    if (fstat(file, &is) != 0 || !S_ISREG(is.st_mode) || is.st_size == 0)
        return false;
    char last = '\0';
    const int reader = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (reader >= 0) {
        if (pread(reader, &last, 1, is.st_size - 1) != 1)
            last = '\0';
        close(reader);
    }
    return last != '\n';
}

std::string open_log(const std::string &name, int &file)
{
    std::string mistake = open_for_writing(name, O_APPEND, file);
    if (mistake.empty() && ends_inside_line(file, name) && !write_all(file, "\n")) {
        mistake = cannot_write(name);
        close(file);
        file = -1;
    }
    return mistake;
}

bool has_moved(int file, const std::string &name)
{
    struct stat open_one
    {};
    struct stat named
    {};
    return fstat(file, &open_one) != 0 || stat(name.c_str(), &named) != 0 ||
           open_one.st_dev != named.st_dev || open_one.st_ino != named.st_ino;
}

// A pipe has a second to take more, in pieces, so that signals do not prolong it.
static bool wait_for_reader(int file)
{
    for (int piece = 0; piece < 100; ++piece) {
        pollfd one{file, POLLOUT, 0};
        if (poll(&one, 1, 10) > 0)
            return true;
    }
    errno = EAGAIN;
    return false;
}

static bool write_pieces(int file, const std::string &text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = write(file, text.data() + done, text.size() - done);
        if (count >= 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR && (errno != EAGAIN || !wait_for_reader(file)))
            return false;
    }
    return true;
}

static constexpr int senders[] = {SIGPIPE, SIGXFSZ};

// Takes the signals of a failing write away again, but not those that had come before.
bool write_held(int file, const std::string &text, const sigset_t &before)
{
    sigset_t sent;
    sigset_t earlier;
    sigemptyset(&sent);
    sigemptyset(&earlier);
    for (const int signal : senders)
        sigaddset(&sent, signal);
    // A signal that was not held back cannot have been waiting.
    if (sigismember(&before, SIGPIPE) == 1 || sigismember(&before, SIGXFSZ) == 1)
        sigpending(&earlier);
    if (write_pieces(file, text))
        return true;
    const int error = errno;
    for (const int signal : senders)
        if (sigismember(&earlier, signal) == 1)
            sigdelset(&sent, signal);
    constexpr timespec at_once{};
    while (sigtimedwait(&sent, nullptr, &at_once) > 0) {
    }
    errno = error;
    return false;
}

bool write_all(int file, const std::string &text)
{
    sigset_t held;
    sigset_t before;
    sigemptyset(&held);
    for (const int signal : senders)
        sigaddset(&held, signal);
    pthread_sigmask(SIG_BLOCK, &held, &before);
    const bool written = write_held(file, text, before);
    const int error = errno;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    errno = error;
    return written;
}

static std::string write_and_close(int file, const std::string &name, const std::string &text)
{
    const bool written = write_all(file, text);
    const std::string mistake = written ? std::string{} : cannot_write(name);
    return close(file) != 0 && written ? cannot_write(name) : mistake;
}

std::string write_file(const std::string &name, const std::string &text)
{
    int file = -1;
    std::string mistake = open_for_writing(name, 0, file);
    if (!mistake.empty())
        return mistake;
    // A pipe has no length.
    if (ftruncate(file, 0) != 0 && errno != EINVAL) {
        close(file);
        return cannot_write(name);
    }
    return write_and_close(file, name, text);
}

std::string write_new_file(const std::string &name, const std::string &text)
{
    int file = -1;
    const std::string mistake = open_for_writing(name, O_EXCL, file);
    return mistake.empty() ? write_and_close(file, name, text) : mistake;
}

std::string replace_file(const std::string &name, const std::string &text)
{
    struct stat is
    {};
    if (stat(name.c_str(), &is) != 0 && errno != ENOENT)
        return cannot_write(name);
    if (is.st_mode != 0 && !S_ISREG(is.st_mode))
        return "cannot write " + name + ": it is not a regular file";
    const std::string other = name + ".new." + std::to_string(getpid());
    unlink(other.c_str()); // one that an earlier process with this number has left
    std::string mistake = write_new_file(other, text);
    if (mistake.empty() && rename(other.c_str(), name.c_str()) != 0)
        mistake = cannot_write(name);
    if (!mistake.empty())
        unlink(other.c_str());
    return mistake;
}

file_mark mark_of(const std::string &name)
{
    struct stat file
    {};
    if (stat(name.c_str(), &file) != 0)
        return {.error = errno == ENOENT ? 0 : errno};
    return {static_cast<std::uint64_t>(file.st_dev),
            static_cast<std::uint64_t>(file.st_ino),
            static_cast<std::int64_t>(file.st_size),
            static_cast<std::int64_t>(file.st_mtim.tv_sec),
            static_cast<std::int64_t>(file.st_mtim.tv_nsec),
            0};
}

int read_file(const std::string &name, std::string &text)
{
    const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0)
        return errno;
    struct stat is
    {};
    int error = fstat(file, &is) != 0 ? errno : S_ISREG(is.st_mode) ? 0 : EINVAL;
    char piece[4096];
    for (ssize_t count = 1; error == 0 && count != 0;) {
        count = read(file, piece, sizeof piece);
        if (count > 0)
            text.append(piece, static_cast<std::size_t>(count));
        else if (count < 0 && errno != EINTR)
            error = errno;
    }
    close(file);
    return error;
}

} // namespace qxsh
