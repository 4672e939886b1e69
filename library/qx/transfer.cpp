// Copies through a pipe: the system checks the addresses of what it reads and writes, and tells of
// a bad one by EFAULT where an access of ours would end the process. POSIX only; no signal is
// involved.
#include "transfer.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace qxsh {

namespace {

class byte_pipe
{
public:
    // Opened when first used, and anew after a failure: what is left in a pipe then is anyone's
    // guess.
    bool is_open()
    {
        if (ends_[0] >= 0)
            return true;
        if (pipe(ends_) != 0) {
            ends_[0] = -1;
            return false;
        }
        for (const int end : ends_)
            fcntl(end, F_SETFD, FD_CLOEXEC);
        return true;
    }

    void shut()
    {
        if (ends_[0] < 0)
            return;
        for (const int end : ends_)
            close(end);
        ends_[0] = -1;
    }

    // Copies a piece that any pipe has room for; gives the number of bytes, or -1.
    ssize_t copy(char *target, const char *source, std::size_t size)
    {
        ssize_t written;
        do
            written = write(ends_[1], source, size);
        while (written < 0 && errno == EINTR);
        for (ssize_t done = 0; done < written;) {
            const ssize_t count =
                read(ends_[0], target + done, static_cast<std::size_t>(written - done));
            if (count > 0)
                done += count;
            else if (count == 0 || errno != EINTR)
                return -1;
        }
        return written;
    }

private:
    int ends_[2] = {-1, -1};
};

// Every POSIX pipe takes so many bytes at once.
constexpr std::size_t piece = 512;

} // namespace

bool transfer(void *target, const void *source, std::size_t size)
{
    static constinit byte_pipe pipe;
    auto *to = static_cast<char *>(target);
    auto *from = static_cast<const char *>(source);
    if (!pipe.is_open())
        return false;
    while (size > 0) {
        const ssize_t count = pipe.copy(to, from, std::min(size, piece));
        if (count <= 0) {
            pipe.shut();
            return false;
        }
        to += count;
        from += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

} // namespace qxsh
