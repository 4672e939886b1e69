// The switch of strict memory, which is read once in a process: each test asks in one of its own.
#include "strict/switch.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>

namespace {

// Ends the process with 1 if strict memory is on. At once: without its rights a process cannot be
// searched for leaks.
[[noreturn]] void ask(const char *value)
{
    setenv("QXSH_STRICT_MEMORY", value, 1);
    _exit(qxsh::strict_memory_is_on() ? 1 : 0);
}

TEST(strict_switch, is_on_for_the_words_for_on_only)
{
    for (const char *const on : {"1", "on", "yes", "true"})
        EXPECT_EXIT(ask(on), testing::ExitedWithCode(1), "^$") << on;
    for (const char *const off : {"0", "off", "no", "false", ""})
        EXPECT_EXIT(ask(off), testing::ExitedWithCode(0), "^$") << off;
    for (const char *const unknown : {"2", "ON", "o", " 1", "maybe"})
        EXPECT_EXIT(ask(unknown), testing::ExitedWithCode(0),
                    "^QXSH_STRICT_MEMORY is neither on .* nor off .*: it stays off\n$")
            << unknown;
}

TEST(strict_switch, is_not_looked_at_with_rights_that_the_user_has_not)
{
    if (getuid() != 0)
        GTEST_SKIP() << "only root can give rights away";
    const auto ask_as_nobody = [](const char *value) {
        if (seteuid(65534) != 0)
            _exit(2);
        ask(value);
    };
    EXPECT_EXIT(ask_as_nobody("1"), testing::ExitedWithCode(0), "^$");
    EXPECT_EXIT(ask_as_nobody("maybe"), testing::ExitedWithCode(0), "^$");
}

} // namespace
