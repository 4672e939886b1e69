// What is wrong with a pointer that a command was given: does it lead to what the command takes it
// for. Each check gives an empty text if nothing is wrong, or what the error says behind
// "argument <n>: ".
#pragma once

#include "strict/block_table.h"

#include <cstdint>
#include <string>

namespace qxsh {

/// A pointer of the handle type `type` (number in the type table), as a command received it.
struct checked_pointer
{
    const void *pointer; ///< not null
    int type;
};

/// Elements `first` up to `first + count` of the array at the pointer are accessed; the arithmetic
/// is that of addresses, modulo 2^32. `count` is not 0.
std::string problem_of_access(const block_table &blocks, checked_pointer what, std::uint32_t first,
                              std::uint32_t count);

/// An address is computed from the pointer: it has to be an element, or the start of an array
/// without one.
std::string problem_of_base(const block_table &blocks, checked_pointer what);

/// The block at the pointer is given back.
std::string problem_of_release(const block_table &blocks, const void *pointer);

} // namespace qxsh
