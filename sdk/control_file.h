// The control file and what can be set with it: settings last as long as the file holds their
// lines, actions are obeyed each time the file is read.
#pragma once

#include "call_rules.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qxsim {

struct control_settings
{
    std::vector<fault_rule> faults;
    std::vector<latency_rule> latencies;
    std::string log; ///< file of the call log; empty: none
    bool keys = false;
};

/// The status that a call fails with, or 0; both sets of rules count the call, the first set
/// answers first.
std::uint32_t fault_for(control_settings &first, control_settings &second,
                        std::string_view function) noexcept;

/// The longer one of the two sets' delays, in microseconds.
std::uint32_t latency_for(const control_settings &first, const control_settings &second,
                          std::string_view function) noexcept;

struct control_action
{
    enum class kind : std::uint8_t { reset, snapshot, state };
    kind what;
    std::string file; ///< to write; empty for a reset
};

/// Reads rules of one kind, separated by semicolons, as an environment variable holds them.
/// Mistakes are reported under the variable's name.
void read_rules(const char *variable, const char *kind, std::string_view text,
                control_settings &settings);

/// A control file that is read again whenever it is another one than before.
class control_file
{
public:
    void name(const char *file) { name_ = file; }
    bool named() const noexcept { return !name_.empty(); }

    /// If the file has appeared, changed or gone since the last look: replaces the settings by the
    /// file's, gives its actions in order, reports each mistake on stderr, and is true. A fault
    /// line that was there before goes on counting.
    bool read_if_changed(control_settings &settings, std::vector<control_action> &actions);

private:
    /// What tells one state of the file from another; all zero if there is no file.
    struct mark
    {
        std::uint64_t device = 0;
        std::uint64_t node = 0;
        std::int64_t size = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        bool operator==(const mark &) const = default;
    };

    mark look() const noexcept;

    std::string name_;
    mark seen_;
};

} // namespace qxsim
