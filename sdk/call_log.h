// The call log: a file with the line of each call (records/call_line.h).
#pragma once

#include "call.h"
#include "capacities.h"
#include "records/call_line.h"

#include <cstdint>
#include <string>

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
    void show_keys(bool keys) { line_.show_keys(keys); }
    bool open() const { return file_ >= 0; }

    /// To be called before and after each call while the log is open, with the same call and words;
    /// `number` is the call's number in the log, `finish` writes the line.
    void start(const call_row &call, const call_word *words, std::uint32_t number);
    void finish(const call_row &call, const call_word *words, std::uint32_t status, bool fault);

private:
    void close();

    std::string name_;
    int file_ = -1;
    std::uint32_t number_ = 0; ///< of the current call
    qxsh::call_line line_{sa_bundle_limit};
};

} // namespace qxsim
