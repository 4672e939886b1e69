// Captures what the helpers print during its lifetime, in place of C's stdout.
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

    /// What was printed since the last take(), or since construction.
    std::string take()
    {
        calls_ = 0;
        return std::exchange(text_, {});
    }
    /// How many times the output function was called since then.
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
