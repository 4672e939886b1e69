// Checks whether a pointer that a command was given points to what the command expects. Each check
// returns an empty text if all is well, or the part of the error message after "argument <n>: ".
#pragma once

#include "strict/block_table.h"

#include <cstdint>
#include <string>

namespace qxsh {

/// A pointer as a command received it; `type` is its handle type's index in swig_types.
struct checked_pointer
{
    const void *pointer; ///< not null
    int type;
};

/// For access to the `count` elements from `first` on of the array at the pointer; `count` is not
/// 0. Addresses are computed modulo 2^32.
std::string problem_of_access(const block_table &blocks, checked_pointer what, std::uint32_t first,
                              std::uint32_t count);

/// For a computed address: the pointer must be an element, or the start of an array without one.
std::string problem_of_base(const block_table &blocks, checked_pointer what);

/// For a free of the block at the pointer, which is not null.
std::string problem_of_release(const block_table &blocks, const void *pointer);

} // namespace qxsh
