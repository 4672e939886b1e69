// Copies bytes from or to any address, and survives addresses without memory.
#pragma once

#include <cstddef>

namespace qxsh {

/// The most that one call may copy, in bytes; more than any record has.
constexpr int largest_transfer = 4096;

/// Copies `size` bytes. False if some of the source cannot be read or some of the target cannot be
/// written; then the target may hold a part of it. Not for several threads at a time.
bool transfer(void *target, const void *source, std::size_t size);

} // namespace qxsh
