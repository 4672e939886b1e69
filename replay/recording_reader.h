// Reading a recording: its header, then call by call, each checked whole against the table of
// records and calls. Relies on nlohmann's JSON parser.
#pragma once

#include "replay/recorded_call.h"
#include "replay/recording_header.h"

#include <memory>
#include <string>

namespace qxsh {

/// An open recording. Everything here throws recording_error.
class recording_reader
{
public:
    /// Reads and checks the header.
    explicit recording_reader(const std::string &name);
    ~recording_reader();
    recording_reader(const recording_reader &) = delete;
    recording_reader &operator=(const recording_reader &) = delete;

    const recording_header &header() const;

    /// Reads the next call into `call`, whose memory is used again; false at the end.
    bool next(recorded_call &call);

    double done() const; ///< the part of the file that was read, 0 to 1
    void restart();      ///< goes back to the first call; only in a regular file

private:
    struct state;
    std::unique_ptr<state> state_;
};

} // namespace qxsh
