// Environment switches; see switches.h.
#include "records/switches.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace qxsh {

[[gnu::cold]] const char *environment_value(const char *name)
{
    if (getuid() != geteuid() || getgid() != getegid())
        return nullptr;
    const char *const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

std::optional<bool> switch_word(std::string_view word)
{
    static constexpr std::string_view on[] = {"1", "on", "yes", "true"};
    static constexpr std::string_view off[] = {"0", "off", "no", "false"};
    if (std::find(std::begin(on), std::end(on), word) != std::end(on))
        return true;
    if (std::find(std::begin(off), std::end(off), word) != std::end(off))
        return false;
    return {};
}

[[gnu::cold]] bool switched_on(const char *name)
{
    const char *const value = environment_value(name);
    if (value == nullptr)
        return false;
    const std::optional<bool> on = switch_word(value);
    if (!on)
        std::fprintf(stderr,
                     "%s is neither on (1, on, yes, true) nor off (0, off, no, false): it stays "
                     "off\n",
                     name);
    return on.value_or(false);
}

} // namespace qxsh
