// The control file: settings apply as long as the file contains their lines, actions are carried
// out each time the file is read.
#pragma once

#include "call_rules.h"
#include "records/files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qxsim {

struct control_settings
{
    std::vector<fault_rule> faults;
    std::vector<latency_rule> latencies;
    std::string log;          ///< absolute name of the call log's file; empty: none
    std::optional<bool> keys; ///< whether key bytes are written, not only their lengths
};

/// Counts a call in both sets of rules. Returns the status that it fails with, or 0; the first set
/// takes precedence.
std::uint32_t fault_for(control_settings &first, control_settings &second,
                        std::string_view function);

/// The longer of the two sets' delays, in microseconds.
std::uint32_t latency_for(const control_settings &first, const control_settings &second,
                          std::string_view function);

struct control_action
{
    enum class kind : std::uint8_t { reset, snapshot, state, save, restore };
    kind what;
    std::string file; ///< absolute name of the file to write; empty for a reset
};

struct control_mistake
{
    unsigned line = 0; ///< in the control file, from 1; 0: not a line's
    std::string text;
};

/// What one version of a control file says.
struct control_order
{
    control_settings settings;
    std::vector<control_action> actions; ///< in order
    std::string answer;                  ///< absolute name of the file to answer in; empty: none
    std::vector<control_mistake> mistakes;
};

/// Adds the rules in an environment variable's value to `settings`: `text` holds rules of one kind
/// ("fault" or "latency"), separated by semicolons. Each mistake is appended to `mistakes`, with
/// the variable's name, and that rule is left out.
void read_rules(const char *variable, const char *kind, std::string_view text,
                control_settings &settings, std::vector<std::string> &mistakes);

/// Fault rules that are still there keep their counts, of equal ones the first keeps the first's.
void keep_counts(const control_settings &before, control_settings &after);

/// A control file that is read again whenever it has changed.
class control_file
{
public:
    void name(const std::string &file) { name_ = file; }
    const std::string &name() const { return name_; }
    bool named() const { return !name_.empty(); }

    /// If the file was created, changed or removed since the last check, stores what it says and
    /// returns true. If it cannot be read, that is a mistake, reported once while it lasts. May
    /// throw std::bad_alloc, and has then not read the file.
    bool read_if_changed(control_order &order);

    /// Reads the file at the next check, changed or not.
    void forget() { seen_.error = -1; }

private:
    std::string name_;
    qxsh::file_mark seen_;
};

} // namespace qxsim
