// Catches what the helpers print, instead of C's stdout, as long as it lives.
#pragma once

#include "helpers/output.h"

#include <string>
#include <utility>

class captured_output
{
public:
    captured_output()
    {
        text_.clear();
        calls_ = 0;
        qxsh::set_output(append);
    }
    ~captured_output() { qxsh::set_output(nullptr); }
    captured_output(const captured_output &) = delete;
    captured_output &operator=(const captured_output &) = delete;

    /// What was printed since the last call, or since the beginning.
    std::string take()
    {
        calls_ = 0;
        return std::exchange(text_, {});
    }
    /// How often the sink was called since then.
    int calls() const { return calls_; }

private:
    static void append(const char *bytes, std::size_t size)
    {
        text_.append(bytes, size);
        ++calls_;
    }

    static inline std::string text_;
    static inline int calls_;
};
