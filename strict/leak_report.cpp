// The leak report; see leak_report.h.
#include "strict/leak_report.h"

#include <algorithm>

namespace qxsh {

namespace {

struct sum
{
    std::uint32_t blocks = 0;
    std::uint64_t bytes = 0;
};

sum sum_from(const std::vector<leak> &leaks, std::size_t first)
{
    sum total;
    for (; first < leaks.size(); ++first) {
        total.blocks += leaks[first].blocks;
        total.bytes += leaks[first].bytes;
    }
    return total;
}

std::string counted(std::uint64_t number, const char *what)
{
    return std::to_string(number) + " " + what + (number == 1 ? "" : "s");
}

std::string counted(const sum &total)
{
    return counted(total.bytes, "byte") + " in " + counted(total.blocks, "block");
}

} // namespace

std::string leak_report(const std::vector<leak> &leaks)
{
    if (leaks.empty())
        return {};
    std::string text = "strict memory: never freed: " + counted(sum_from(leaks, 0)) + "\n";
    const std::size_t listed = std::min(leaks.size(), most_places);
    for (std::size_t i = 0; i < listed; ++i)
        text += "  " + counted({leaks[i].blocks, leaks[i].bytes}) + ", made by " +
                shown(*leaks[i].made) + "\n";
    if (listed < leaks.size())
        text += "  " + counted(sum_from(leaks, listed)) + ", made at " +
                counted(leaks.size() - listed, "other place") + "\n";
    return text;
}

} // namespace qxsh
