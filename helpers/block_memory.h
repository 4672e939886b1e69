// Memory for the blocks that scripts hold by handle. A handle has room for 32 address bits, so a
// 64-bit build keeps all blocks below 4 GiB; a 32-bit build uses malloc and free. Not thread-safe.
#pragma once

#include <cstdint>

namespace qxsh {

/// Returns a zeroed block of `size` bytes, aligned for every cell type, which the caller owns and
/// frees with free_block. Size 0 gives a distinct block. Null if there is no memory or `size` is 2
/// GiB or more, as in the board's C library.
void *allocate_block(std::uint32_t size);

/// Frees a block; null does nothing. On a 64-bit build, an address that is not a live block is
/// reported on stderr and ends the process with abort(); a 32-bit build leaves it to free.
void free_block(void *block);

} // namespace qxsh
