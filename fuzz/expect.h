// How a fuzz target reports a finding: one line on stderr and abort(), which is a crash to
// libFuzzer and a failure to a replayed test.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string_view>

namespace fuzz {

[[noreturn]] inline void finding(std::string_view what)
{
    // Not through the stream, which a target may have redirected.
    dprintf(2, "finding: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

/// Reports `what`, the condition in words, as a finding if it does not hold.
inline void expect(bool holds, std::string_view what)
{
    if (!holds) [[unlikely]]
        finding(what);
}

/// Reports a finding if the values differ. `on`, if not empty, is the input, such as a script word.
template <class Left, class Right>
void expect_equal(const Left &is, const Right &should, std::string_view what,
                  std::string_view on = {})
{
    if (is == should) [[likely]]
        return;
    std::ostringstream text;
    text << what << " is " << is << ", not " << should;
    if (!on.empty())
        text << ", of \"" << on << "\"";
    finding(text.str());
}

} // namespace fuzz
