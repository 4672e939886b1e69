// How far the reading of a large file is: one line on stderr, if that is a terminal, and gone when
// the reading ends. Relies on POSIX.
#pragma once

#include <cstdint>
#include <string>

namespace qxsh {

class file_progress
{
public:
    /// `what` stands in front of the percentage: "qx-replay: checking FILE".
    explicit file_progress(const std::string &what);
    ~file_progress() { hide(); }
    file_progress(const file_progress &) = delete;
    file_progress &operator=(const file_progress &) = delete;

    /// The part that is done, 0 to 1, is asked for when the line is written: first after two
    /// seconds.
    template <class Part> void at(const Part &part)
    {
        if ((++steps_ & 63) == 0 && is_due())
            show(part());
    }

    void hide(); ///< takes the line away, for other output

private:
    bool is_due();
    void show(double part);

    const std::string what_; ///< empty: nobody would see it
    std::int64_t next_;      ///< when the line is written again, in milliseconds
    unsigned steps_ = 0;
    bool shown_ = false;
};

} // namespace qxsh
