// Text that a signal handler may build and write: no allocation, no locale, no stdio.
#pragma once

#include <cstddef>

namespace qxsh {

/// A piece of a report of at most 1024 characters; the rest is cut off.
class signal_text
{
public:
    /// Adds at most `most` characters of the text, or "?" for null. Control characters become "?".
    signal_text &add(const char *text, std::size_t most = 1000);
    signal_text &add_number(long long number);
    /// Adds hexadecimal digits, as many as needed, at least `digits`.
    signal_text &add_hex(unsigned long long number, unsigned digits);
    signal_text &end_line();

    /// Writes the text to the descriptor and empties it. Errors are ignored.
    void write(int descriptor);

private:
    void add_character(char character);

    char text_[1024];
    std::size_t size_ = 0;
};

} // namespace qxsh
