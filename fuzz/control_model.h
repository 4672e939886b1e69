// What the lines of a control file and the words of a switch mean, said once more. What the target
// holds the simulator's reader against.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

struct model_rule
{
    bool fault; ///< else a latency
    std::string pattern;
    std::uint32_t first = 1;  ///< of a fault: the call that gets it
    bool once = false;        ///< and no later one
    std::uint32_t number = 0; ///< status or microseconds
    std::uint32_t seen = 0;
};

struct model_settings
{
    std::vector<model_rule> rules;
    std::string log;
    bool keys = false;
    std::vector<std::string> orders;     ///< "reset", "snapshot FILE", "state FILE"
    std::vector<std::uint32_t> mistakes; ///< numbers of the lines, or of the rules of a switch
};

model_settings read_control_text(std::string_view text);

/// The rules of a switch: `kind` is "fault" or "latency".
model_settings read_switch(std::string_view kind, std::string_view text);

/// Whether a pattern fits a function's name.
bool pattern_fits(std::string_view pattern, std::string_view name);

/// Counts a call in all fault rules; the status it gets, or 0.
std::uint32_t status_of(model_settings &settings, std::string_view function);

/// Whether a text is one JSON value and nothing else.
bool is_json(std::string_view text);

} // namespace fuzz
