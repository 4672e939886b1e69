// Snapshots and state listings of the devices, as JSON in a fixed order.
#pragma once

#include "call.h"
#include "call_rules.h"
#include "sdk_calls.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace qxsim {

/// How many times each function was called since control was turned on.
class call_counts
{
public:
    /// Counts a call; returns the number of calls so far.
    std::uint32_t count(const call_row &call)
    {
        ++by_function_[static_cast<std::size_t>(&call - qxsh::call_rows)];
        return ++all_;
    }
    std::uint32_t all() const { return all_; }
    std::uint32_t of(std::size_t function) const { return by_function_[function]; }

private:
    std::array<std::uint32_t, qxsh::call_count> by_function_{};
    std::uint32_t all_ = 0;
};

/// The configuration of all devices and nothing else: devices with the same configuration give the
/// same text. Unless `keys` is true, lengths and fingerprints are written in place of keys.
std::string snapshot_text(bool keys);

/// The snapshot with the devices' own ids and slots, and the state that changes with use: clocks,
/// counters, table sizes, calls by function, and the rules of the environment and of the control
/// file.
std::string state_text(bool keys, const call_counts &counts,
                       const std::vector<fault_rule> &environment,
                       const std::vector<fault_rule> &file);

} // namespace qxsim
