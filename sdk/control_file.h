// The control file: settings apply as long as the file contains their lines, actions are carried
// out each time the file is read.
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
    std::string log;   ///< name of the call log's file; empty: none
    bool keys = false; ///< whether key bytes are written, not only their lengths
};

/// Counts a call in both sets of rules. Returns the status that it fails with, or 0; the first set
/// takes precedence.
std::uint32_t fault_for(control_settings &first, control_settings &second,
                        std::string_view function) noexcept;

/// The longer of the two sets' delays, in microseconds.
std::uint32_t latency_for(const control_settings &first, const control_settings &second,
                          std::string_view function) noexcept;

struct control_action
{
    enum class kind : std::uint8_t { reset, snapshot, state };
    kind what;
    std::string file; ///< the file to write; empty for a reset
};

/// Adds the rules in an environment variable's value to `settings`: `text` holds rules of one kind
/// ("fault" or "latency"), separated by semicolons. Each mistake is reported on stderr under the
/// variable's name, and that rule is left out.
void read_rules(const char *variable, const char *kind, std::string_view text,
                control_settings &settings);

/// A control file that is read again whenever it has changed.
class control_file
{
public:
    void name(const char *file) { name_ = file; }
    bool named() const noexcept { return !name_.empty(); }

    /// If the file was created, changed or removed since the last check: replaces the settings,
    /// appends the file's actions in order, reports each mistake on stderr, and returns true. A
    /// fault line that was there before keeps its count of calls. May throw std::bad_alloc.
    bool read_if_changed(control_settings &settings, std::vector<control_action> &actions);

private:
    /// Identifies one version of the file; all zero if there is no file.
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
