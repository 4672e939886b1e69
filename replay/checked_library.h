// The SDK library that the loader finds, called with what a recording tells, in a process of its
// own: whatever the library does there, it is known which call it was in. Relies on POSIX.
#pragma once

#include "record_numbers.h"
#include "records/call_words.h"
#include "replay/recorded_call.h"

#include <functional>
#include <string>
#include <vector>

namespace qxtrace {

class checked_library
{
public:
    checked_library(); ///< throws trace_error if there is none
    /// The file that it is in, or its name if that cannot be told.
    const std::string &path() const { return path_; }

    /// Calls the function with the words of the recorded call; pointers lead to a copy of `memory`,
    /// which has the elements before the call, and afterwards those behind it. Returns the status.
    std::uint32_t call(const qxsh::recorded_call &call,
                       std::vector<std::vector<unsigned char>> &memory) const;

private:
    void *library_;
    qxsh::any_function functions_[qxsh::call_count] = {};
    std::string path_;
};

/// Where a process that may end without warning says which call it makes.
class call_pipe
{
public:
    explicit call_pipe(int file) : file_(file) {}
    void begin(const qxsh::recorded_call &call) const;

private:
    int file_;
};

/// Runs the work in a child process, and returns its result. If the child ends in a call, prints
/// that as the call's difference.
int run_apart(const std::string &recording, const std::function<int(const call_pipe &)> &work);

} // namespace qxtrace
