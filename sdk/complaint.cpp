// The simulator's error messages.
#include "complaint.h"

#include <cstdarg>
#include <cstdio>

namespace qxsim {

void complain(const char *format, ...)
{
    std::va_list words;
    va_start(words, format);
    std::fputs("qx_sim: ", stderr);
    std::vfprintf(stderr, format, words);
    std::fputc('\n', stderr);
    va_end(words);
}

} // namespace qxsim
