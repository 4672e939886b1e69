// Printing of 64-bit cells; see cells.h.
#include "helpers/cells.h"

#include "helpers/output.h"

#include <charconv>

namespace qxsh {

void print_number(unsigned long long value)
{
    char text[24];
    char *end = std::to_chars(text, text + sizeof text - 1, value).ptr;
    *end++ = '\n';
    write_output({text, static_cast<std::size_t>(end - text)});
}

} // namespace qxsh
