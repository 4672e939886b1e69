// The call log: a line of JSON per call, with arguments by name, and records before and after it.
#pragma once

#include "call.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qxsim {

/// An open log file, or none. Writing to it never affects a call: a failure is reported once on
/// stderr and ends the log.
class call_log
{
public:
    /// Continues in this file; an empty name ends the log. Unless `keys` is true, only the lengths
    /// of keys are written. A file that cannot be opened is reported on stderr.
    void use(const std::string &name, bool keys);
    bool open() const noexcept { return file_ >= 0; }

    /// To be called before and after each call while the log is open, with the same call and words;
    /// `number` is the call's number in the log, `finish` writes the line.
    void start(const call_row &call, const call_word *words, std::uint32_t number) noexcept;
    void finish(const call_row &call, const call_word *words, std::uint32_t status,
                bool fault) noexcept;

private:
    void close() noexcept;

    std::string name_;
    int file_ = -1;
    bool keys_ = false;

    // The current call.
    std::uint32_t number_ = 0;
    std::int64_t started_ = 0;          ///< microseconds since 1970
    std::int64_t clock_ = 0;            ///< microseconds of the monotonic clock
    std::vector<std::string> before_{}; ///< what pointer arguments point to, as JSON
};

} // namespace qxsim
