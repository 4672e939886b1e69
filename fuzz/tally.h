// Counts of what a target has run, for tools/reliability_table.
#pragma once

#include <cstdio>

namespace fuzz {

/// A count that is printed on stderr, as in "tally: 12 hostile words", when the program ends,
/// unless it is zero. For static objects; `what` must outlive it.
class tally
{
public:
    explicit constexpr tally(const char *what) : what_(what) {}
    ~tally()
    {
        if (count_ != 0)
            std::fprintf(stderr, "tally: %lu %s\n", count_, what_);
    }
    tally(const tally &) = delete;
    tally &operator=(const tally &) = delete;

    void operator++() { ++count_; }

private:
    const char *what_;
    unsigned long count_ = 0;
};

} // namespace fuzz
