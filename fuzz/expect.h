// How a fuzz target tells a finding: one line on stderr and abort(), which libFuzzer takes as a
// crash and a replayed test as a failure.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string_view>

namespace fuzz {

[[noreturn]] inline void finding(std::string_view what)
{
    // Past the stream, which a target may have turned elsewhere.
    dprintf(2, "finding: %.*s\n", static_cast<int>(what.size()), what.data());
    std::abort();
}

/// `what` says what has to hold.
inline void expect(bool holds, std::string_view what)
{
    if (!holds) [[unlikely]]
        finding(what);
}

/// `on` is what was worked on, such as a script word.
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
