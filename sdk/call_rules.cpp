// Faults and latencies.
#include "call_rules.h"

#include "numbers.h"
#include "sdk_calls.h"

#include <algorithm>
#include <charconv>

namespace qxsim {

constexpr std::uint32_t status_limit = 65535;
constexpr std::uint32_t latency_limit = 10'000'000;

bool fits(std::string_view pattern, std::string_view name)
{
    // On a mismatch the last star matches one more character.
    std::size_t in_pattern = 0;
    std::size_t in_name = 0;
    std::size_t star = std::string_view::npos;
    std::size_t taken = 0;
    while (in_name < name.size()) {
        if (in_pattern < pattern.size() && pattern[in_pattern] == '*') {
            star = in_pattern++;
            taken = in_name;
        } else if (in_pattern < pattern.size() && pattern[in_pattern] == name[in_name]) {
            ++in_pattern;
            ++in_name;
        } else if (star != std::string_view::npos) {
            in_pattern = star + 1;
            in_name = ++taken;
        } else {
            return false;
        }
    }
    while (in_pattern < pattern.size() && pattern[in_pattern] == '*')
        ++in_pattern;
    return in_pattern == pattern.size();
}

bool fits_any(std::string_view pattern)
{
    for (const call_row &call : std::span{qxsh::call_rows, qxsh::call_count})
        if (fits(pattern, call.name.text()))
            return true;
    return false;
}

// Reads a decimal number from `least` to `limit`.
static bool read_number(std::string_view text, std::uint32_t least, std::uint32_t limit,
                        std::uint32_t &number)
{
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size() && number >= least &&
           number <= limit;
}

static bool read_status(const std::string &text, std::uint32_t &number)
{
    return status_number(text, number) ? number != 0 : read_number(text, 1, status_limit, number);
}

bool read_fault(const std::vector<std::string> &words, fault_rule &rule, std::string &mistake)
{
    if (words.size() != 3) {
        mistake = "expected: fault FUNCTION WHEN STATUS";
        return false;
    }
    rule.words = words[0] + " " + words[1] + " " + words[2];
    rule.pattern = words[0];
    if (!fits_any(rule.pattern)) {
        mistake = "no SDK function fits \"" + words[0] + "\"";
        return false;
    }
    std::string_view when = words[1];
    rule.once = when != "*" && !when.ends_with('+');
    if (when.ends_with('+'))
        when.remove_suffix(1);
    if (when != "*" && !read_number(when, 1, UINT32_MAX, rule.first)) {
        mistake = "\"" + words[1] + "\" is neither a call's number, such as 3 or 3+, nor *";
        return false;
    }
    if (!read_status(words[2], rule.status)) {
        mistake = "\"" + words[2] + "\" is not a status to fail with";
        return false;
    }
    return true;
}

bool read_latency(const std::vector<std::string> &words, latency_rule &rule, std::string &mistake)
{
    if (words.size() != 2) {
        mistake = "expected: latency FUNCTION MICROSECONDS";
        return false;
    }
    rule.pattern = words[0];
    if (!fits_any(rule.pattern)) {
        mistake = "no SDK function fits \"" + words[0] + "\"";
        return false;
    }
    if (!read_number(words[1], 0, latency_limit, rule.microseconds)) {
        mistake = "\"" + words[1] + "\" is not a time from 0 to 10000000 microseconds";
        return false;
    }
    return true;
}

std::uint32_t fault_for(std::vector<fault_rule> &rules, std::string_view function,
                        std::uint32_t answer)
{
    for (auto rule = rules.begin(); rule != rules.end(); ++rule) {
        // A rule that has fired with this call has not been over before it.
        const auto goes_on = [&](const fault_rule &earlier) {
            return earlier.same_as(*rule) && !(earlier.once && earlier.seen > earlier.first);
        };
        if (!fits(rule->pattern, function) || std::any_of(rules.begin(), rule, goes_on))
            continue;
        ++rule->seen;
        if (answer != 0 || (rule->once ? rule->seen != rule->first : rule->seen < rule->first))
            continue;
        answer = rule->status;
        ++rule->fired;
    }
    return answer;
}

std::uint32_t latency_for(const std::vector<latency_rule> &rules, std::string_view function)
{
    for (const latency_rule &rule : rules)
        if (fits(rule.pattern, function))
            return rule.microseconds;
    return 0;
}

} // namespace qxsim
