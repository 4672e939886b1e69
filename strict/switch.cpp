// The environment switch of strict memory; see switch.h.
#include "strict/switch.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace qxsh {

static bool privileged()
{
    return getuid() != geteuid() || getgid() != getegid();
}

static bool read_switch()
{
    const char *const value = std::getenv("QXSH_STRICT_MEMORY");
    if (value == nullptr || *value == '\0' || std::strcmp(value, "0") == 0 || privileged())
        return false;
    if (std::strcmp(value, "1") == 0)
        return true;
    std::fprintf(stderr, "QXSH_STRICT_MEMORY is neither 0 nor 1: strict memory stays off\n");
    return false;
}

bool strict_memory_is_on()
{
    static const bool on = read_switch();
    return on;
}

} // namespace qxsh
