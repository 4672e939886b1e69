// The call log: a line of JSON per call, with arguments by name, and records before and after it.
#pragma once

#include "call.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qxsim {

/// An open log file, or none. Writing to it never affects a call: a failure is reported once on
/// stderr and ends the log. Each line is written in one piece.
class call_log
{
public:
    /// Continues in the file of this name, also if that is another one by now; an empty name ends
    /// the log. Returns what is wrong with the file; an empty text if nothing is.
    std::string use(const std::string &name);
    /// Unless keys are shown, only their lengths are written.
    void show_keys(bool keys) { keys_ = keys; }
    bool open() const { return file_ >= 0; }

    /// To be called before and after each call while the log is open, with the same call and words;
    /// `number` is the call's number in the log, `finish` writes the line.
    void start(const call_row &call, const call_word *words, std::uint32_t number);
    void finish(const call_row &call, const call_word *words, std::uint32_t status, bool fault);

private:
    void close();

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
