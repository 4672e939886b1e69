// A model of control files and switches: a second implementation, which the target compares with
// the simulator's reader.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

struct model_rule
{
    bool fault; ///< a fault, otherwise a latency
    std::string pattern;
    std::uint32_t first = 1;  ///< of a fault: the first call that fails
    bool once = false;        ///< of a fault: no later call fails
    std::uint32_t number = 0; ///< status or microseconds
    std::uint64_t seen = 0;

    bool operator==(const model_rule &other) const ///< the same words
    {
        return fault == other.fault && pattern == other.pattern && first == other.first &&
               once == other.once && number == other.number;
    }
};

struct model_settings
{
    std::vector<model_rule> rules;
    std::string log;
    std::string answer;
    std::optional<bool> keys;
    std::vector<std::string> orders;     ///< "reset", "snapshot FILE" and the like
    std::vector<std::uint32_t> mistakes; ///< numbers of the bad lines, or rules of a switch
};

/// Names of files become absolute ones, from the process's folder.
model_settings read_control_text(std::string_view text);

/// The rules in a switch's value; `kind` is "fault" or "latency".
model_settings read_switch(std::string_view kind, std::string_view text);

/// Whether a pattern matches a function's name.
bool pattern_fits(std::string_view pattern, std::string_view name);

/// Counts a call in all fault rules that match it; returns the status it fails with, or 0.
std::uint32_t status_of(model_settings &settings, std::string_view function);

/// Whether a text is one JSON value and nothing else.
bool is_json(std::string_view text);

} // namespace fuzz
