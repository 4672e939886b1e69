// A line for each SDK call of chosen functions, and how often and how long each has run.
#pragma once

#include "record_numbers.h"
#include "records/call_line.h"
#include "replay/recorded_call.h"
#include "replay/shown_names.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <string>

namespace qxsh {

class call_trace
{
public:
    using functions = std::bitset<call_count>; ///< by number of the call

    struct counts
    {
        std::uint64_t calls = 0;
        std::uint64_t failed = 0;
        std::uint64_t nanoseconds = 0;
        std::uint64_t longest = 0; ///< nanoseconds
    };

    explicit call_trace(call_line::copy_function *copy) : copy_(copy) {}

    /// Begins with no counts. The counts stay when it ends.
    void begin(const std::string &pattern, const functions &chosen);
    void end() { chosen_.reset(); }
    bool is_on() const { return chosen_.any(); }
    bool shows(const call_row &call) const { return chosen_[number_of(call)]; }

    const std::string &pattern() const { return pattern_; } ///< that has chosen the functions
    const std::array<counts, call_count> &counted() const { return counts_; }

    /// To be called before and after a call that it shows, with the same call and words.
    void before(const call_row &call, const call_word *words);
    void after(const call_word *words, std::uint32_t status, std::uint64_t nanoseconds);
    /// The line for that call, with a newline.
    std::string line(const shown_names &names) const;

private:
    static std::size_t number_of(const call_row &call)
    {
        return static_cast<std::size_t>(&call - call_rows);
    }
    void take(recorded_memory &into, const argument_row &argument, const call_word *words,
              const void *memory) const;

    call_line::copy_function *copy_;
    std::string pattern_{};
    functions chosen_{};
    std::array<counts, call_count> counts_{};
    std::uint64_t calls_ = 0;
    recorded_call call_{}; ///< the current one
};

} // namespace qxsh
