// Copies of memory that may not be there, without signals: the kernel copies, and says when it
// cannot. Relies on POSIX.
#pragma once

#include "records/files.h"

#include <cstddef>

namespace qxsh {

/// A pipe that takes bytes from memory and gives them back at once. One thread at a time uses it.
class readable_memory
{
public:
    readable_memory() = default;
    ~readable_memory() { close(); }
    readable_memory(const readable_memory &) = delete;
    readable_memory &operator=(const readable_memory &) = delete;

    /// False, with errno set, if there is no pipe to be had.
    bool open();

    /// To be called before a row of copies: the program may have closed the pipe and opened other
    /// files under its numbers, where the copies would end. The next one looks.
    void look_again() { looked_ = false; }

    /// Copies `size` bytes; false if not all of them can be read, or there is no pipe any more.
    bool copy(void *to, const void *from, std::size_t size);

private:
    void close();
    void forget_foreign();
    bool take_back(unsigned char *to, std::size_t size) const;

    int ends_[2] = {-1, -1};
    file_identity identity_{}; ///< of both ends
    bool looked_ = false;      ///< whether the numbers are known to be the pipe's
};

} // namespace qxsh
