// The text of a call: one line of JSON, with arguments by name, and what they point to before and
// after it. Call logs and recordings consist of such lines; docs/simulator.md describes them.
#pragma once

#include "records/call_words.h"
#include "records/json.h"
#include "records/table.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qxsh {

class call_line
{
public:
    /// Copies what a caller's pointer points to; false if it cannot be read.
    using copy_function = bool(void *to, const void *from, std::size_t size);

    static copy_function plain_copy; ///< memory that cannot be read ends the process

    /// Arrays with more elements than `most_elements` are not read. The rest is as for json_text.
    explicit call_line(unsigned most_elements, copy_function *copy = plain_copy)
        : copy_(copy), most_elements_(most_elements)
    {}
    /// Whether keys are written, and what is in their place if not. `hidden` must outlive the use.
    void show_keys(bool keys, const hidden_text &hidden = length_text)
    {
        json_ = json_text{keys, hidden};
    }

    /// To be called before and after a call, with the same call and words. May throw
    /// std::bad_alloc.
    void start(const call_row &call, const call_word *words);

    struct outcome
    {
        std::uint64_t number; ///< of the call, from 1
        std::uint32_t process;
        std::uint32_t status;
        const char *name; ///< of the status
        bool fault;       ///< whether the status was injected
    };
    /// The line, with a newline at its end, until the next use.
    const std::string &finish(const call_row &call, const call_word *words, const outcome &came);

private:
    /// What an argument points to.
    struct image
    {
        std::string bytes;
        bool read = false;

        bool operator==(const image &) const = default;
    };
    void take(image &into, const argument_row &argument, const call_word *words,
              const call_word &word) const;
    void write(const image &all, const argument_row &argument);
    void write_both(const image &before, const argument_row &argument);

    copy_function *copy_;
    unsigned most_elements_;
    json_text json_{false};

    // The current call.
    std::int64_t started_ = 0;    ///< microseconds since 1970
    std::int64_t clock_ = 0;      ///< microseconds of the monotonic clock
    std::vector<image> before_{}; ///< by argument
    image after_{};
    std::string text_{}; ///< of what was before
};

} // namespace qxsh
