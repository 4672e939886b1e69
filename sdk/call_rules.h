// Rules that single out calls: faults, which answer a call with a status in place of the device,
// and latencies, which delay it. Written as words, in the environment and in the control file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qxsim {

/// True if a function's name fits a pattern, in which `*` stands for any characters.
bool fits(std::string_view pattern, std::string_view name) noexcept;

/// True if a pattern fits the name of any SDK function.
bool fits_any(std::string_view pattern) noexcept;

/// "fault PATTERN WHEN STATUS": the WHENth call that fits (`3`), that and all later ones (`3+`), or
/// every one (`*`) gets the status.
struct fault_rule
{
    std::string pattern;
    std::uint32_t first = 1;
    bool once = false;        ///< only the call with that number
    std::uint32_t status = 0; ///< 1 to 65535
    std::uint32_t seen = 0;   ///< calls that fitted so far

    bool same_words(const fault_rule &other) const noexcept
    {
        return pattern == other.pattern && first == other.first && once == other.once &&
               status == other.status;
    }
};

/// "latency PATTERN MICROSECONDS": each call that fits takes at least that long.
struct latency_rule
{
    std::string pattern;
    std::uint32_t microseconds = 0; ///< up to ten seconds
};

/// A rule from its words without the first; on a mistake false, and `mistake` says what is wrong.
bool read_fault(const std::vector<std::string> &words, fault_rule &rule, std::string &mistake);
bool read_latency(const std::vector<std::string> &words, latency_rule &rule, std::string &mistake);

/// Counts a call in every fault rule that fits it. The status of the first rule that fires; else 0.
std::uint32_t fault_for(std::vector<fault_rule> &rules, std::string_view function) noexcept;

/// The delay of the first rule that fits, in microseconds; else 0.
std::uint32_t latency_for(const std::vector<latency_rule> &rules,
                          std::string_view function) noexcept;

} // namespace qxsim
