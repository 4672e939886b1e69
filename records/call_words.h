// The words of an SDK call, for code that treats all calls alike. The 83 functions of a library
// with the SDK's interface are generated (entry_points.cpp): each only passes its words to
// answer_call.
#pragma once

#include <cstdint>

namespace qxsh {

/// An argument as the caller passed it: a number or a pointer.
struct call_word
{
    call_word(unsigned int number = 0) : value(number) {}
    call_word(void *address) : pointer(address) {}
    std::uint32_t value = 0;
    void *pointer = nullptr;
};

/// What a library does when its function with this number (below call_count) is called; returns the
/// function's status. `words` holds one word for each argument, `caller` is where the function
/// returns to. Each library has its own.
unsigned int answer_call(unsigned int number, const call_word *words, const void *caller);

/// Any function; call_through knows the types of its arguments.
using any_function = void (*)();

/// Calls `function`, which is the SDK function with this number, with these words.
unsigned int call_through(unsigned int number, any_function function, const call_word *words);

} // namespace qxsh
