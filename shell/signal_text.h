// Text that a handler of signals may make and write: no allocation, no locale, no stdio.
#pragma once

#include <cstddef>

namespace qxsh {

/// A piece of a report, cut off where it becomes too long.
class signal_text
{
public:
    /// Adds text, or "?" for null. What a terminal would not show as it is becomes "?".
    signal_text &add(const char *text, std::size_t most = 1000);
    signal_text &add_number(long long number);
    /// Hexadecimal digits, as many as it takes, at least `digits`.
    signal_text &add_hex(unsigned long long number, unsigned digits);
    signal_text &end_line();

    /// Writes it, and is empty again.
    void write(int descriptor);

private:
    void add_character(char character);

    char text_[1024];
    std::size_t size_ = 0;
};

} // namespace qxsh
