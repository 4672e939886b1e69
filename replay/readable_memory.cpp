// Copies of memory that may not be there; see readable_memory.h.
#include "replay/readable_memory.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace qxsh {

bool readable_memory::open()
{
    close();
    if (pipe(ends_) != 0)
        return false;
    for (int &end : ends_) {
        end = moved_away(end);
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    identity_ = identity_of(ends_[0]);
    looked_ = true;
    return true;
}

void readable_memory::close()
{
    for (int &end : ends_) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
}

// Each look takes time. The first end has the lower number, which a program that opens files gets
// first.
void readable_memory::forget_foreign()
{
    looked_ = true;
    if (identity_of(ends_[0]) == identity_)
        return;
    for (int &end : ends_)
        if (identity_of(end) != identity_)
            end = -1;
}

bool readable_memory::take_back(unsigned char *to, std::size_t size) const
{
    for (std::size_t done = 0; done < size;) {
        const ssize_t count = read(ends_[0], to + done, size - done);
        if (count <= 0)
            return false;
        done += static_cast<std::size_t>(count);
    }
    return true;
}

// Any pipe holds a page. A piece that goes on where nothing can be read is taken in part.
bool readable_memory::copy(void *to, const void *from, std::size_t size)
{
    constexpr std::size_t page = 4096;
    auto *const into = static_cast<unsigned char *>(to);
    const auto *const start = static_cast<const unsigned char *>(from);
    bool again = false;
    if (!looked_)
        forget_foreign();
    for (std::size_t done = 0; done < size;) {
        const ssize_t count = write(ends_[1], start + done, std::min(page, size - done));
        if (count > 0 && take_back(into + done, static_cast<std::size_t>(count))) {
            done += static_cast<std::size_t>(count);
            continue;
        }
        // Otherwise the program has closed the pipe.
        if ((count < 0 && errno == EFAULT) || again || !open())
            return false;
        again = true;
    }
    return true;
}

} // namespace qxsh
