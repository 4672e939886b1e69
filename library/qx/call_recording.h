// A recording of the SDK calls that scripts make, as libqx-record.so writes it.
#pragma once

#include "records/call_line.h"
#include "replay/recording_writer.h"

#include <cstdint>
#include <string>

namespace qxsh {

class call_recording
{
public:
    /// Gets what calls are pointed to by this function.
    explicit call_recording(call_line::copy_function *copy);
    call_recording(const call_recording &) = delete;
    call_recording &operator=(const call_recording &) = delete;

    /// Begins a file with its header. Returns what is wrong; an empty text if nothing is.
    std::string begin(const std::string &name, bool replace, bool keys);
    void end() { writer_.close(); }
    bool is_on() const { return writer_.is_open(); }

    const std::string &name() const { return name_; }
    std::uint64_t calls() const { return calls_; } ///< in the file

    /// To be called before and after a call, with the same call and words.
    void before(const call_row &call, const call_word *words) { line_.start(call, words); }
    /// Returns why the recording has ended; an empty text if it goes on.
    std::string after(const call_row &call, const call_word *words, std::uint32_t status,
                      const char *name_of_status);

private:
    recording_writer writer_{};
    recording_header header_{};
    call_line line_;
    hidden_text hidden_ = length_text;
    std::string name_{};
    std::uint32_t process_ = 0;
    std::uint64_t calls_ = 0;
};

} // namespace qxsh
