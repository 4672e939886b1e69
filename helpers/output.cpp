// The output sink of the helpers; see output.h.
#include "helpers/output.h"

#include <cstdio>

namespace qxsh {

static void write_to_c_stdout(const char *bytes, std::size_t size)
{
    std::fwrite(bytes, 1, size, stdout);
}

static output_function sink = write_to_c_stdout;

[[gnu::cold]] void set_output(output_function function)
{
    sink = function != nullptr ? function : write_to_c_stdout;
}

void write_output(std::string_view bytes)
{
    sink(bytes.data(), bytes.size());
}

} // namespace qxsh
