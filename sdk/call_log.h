// The call log: one JSON line a call, with its arguments by name, records in full before and after.
#pragma once

#include "call.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qxsim {

/// An open log file, or none. Writing to it never disturbs a call: on a failure the log ends with
/// one complaint.
class call_log
{
public:
    /// Goes on in this file; an empty name ends the log. Keys are written as lengths unless asked
    /// for.
    void use(const std::string &name, bool keys);
    bool open() const noexcept { return file_ >= 0; }

    /// Before and after a call; `finish` writes the line.
    void start(const call_row &call, const call_word *words, std::uint32_t number) noexcept;
    void finish(const call_row &call, const call_word *words, std::uint32_t status,
                bool fault) noexcept;

private:
    void close() noexcept;

    std::string name_;
    int file_ = -1;
    bool keys_ = false;

    // The call that runs.
    std::uint32_t number_ = 0;
    std::int64_t started_ = 0;          ///< microseconds since 1970
    std::int64_t clock_ = 0;            ///< microseconds of a clock that is never set
    std::vector<std::string> before_{}; ///< what pointer arguments point to, as JSON
};

} // namespace qxsim
