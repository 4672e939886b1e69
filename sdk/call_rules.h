// Rules for selected calls: faults, which return a status without calling the device, and
// latencies, which delay the call. They are set in the environment and in the control file.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qxsim {

/// True if a function's name matches a pattern, in which `*` matches any characters.
bool fits(std::string_view pattern, std::string_view name);

/// True if a pattern matches the name of at least one SDK function.
bool fits_any(std::string_view pattern);

/// "fault PATTERN WHEN STATUS": one matching call (`3`: the third), that and all later ones (`3+`),
/// or all of them (`*`) return the status.
struct fault_rule
{
    std::string words; ///< as they were given, separated by one blank
    std::string pattern;
    std::uint32_t first = 1;
    bool once = false;        ///< only call `first`, not the later ones
    std::uint32_t status = 0; ///< 1 to 65535
    std::uint64_t seen = 0;   ///< calls counted so far
    std::uint64_t fired = 0;  ///< calls answered so far

    bool same_as(const fault_rule &other) const
    {
        return pattern == other.pattern && first == other.first && once == other.once &&
               status == other.status;
    }
};

/// "latency PATTERN MICROSECONDS": each matching call takes at least that long.
struct latency_rule
{
    std::string pattern;
    std::uint32_t microseconds = 0; ///< 0 to 10000000
};

/// Reads a rule from its words after the first. On a mistake, returns false and describes it in
/// `mistake`; the rule is then unspecified.
bool read_fault(const std::vector<std::string> &words, fault_rule &rule, std::string &mistake);
bool read_latency(const std::vector<std::string> &words, latency_rule &rule, std::string &mistake);

/// Counts a call in every fault rule that matches it, except for those that wait for the same rule
/// before them. Returns `answer` if that is not 0, else the status of the first rule that applies
/// to this call, or 0.
std::uint32_t fault_for(std::vector<fault_rule> &rules, std::string_view function,
                        std::uint32_t answer);

/// The delay of the first rule that matches, in microseconds, or 0.
std::uint32_t latency_for(const std::vector<latency_rule> &rules, std::string_view function);

} // namespace qxsim
