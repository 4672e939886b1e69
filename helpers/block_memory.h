// Memory of the blocks that scripts hold by handle. A handle has room for 32 address bits, so on a
// 64-bit build all blocks lie below 4 GiB; a 32-bit build uses malloc and free as they are.
#pragma once

#include <cstdint>

namespace qxsh {

/// A block of `size` bytes, all zero, aligned for every cell type; null if there is no memory (or,
/// as with the C library of the board, if `size` is 2 GiB or more). Size 0 gives a block of its
/// own. The caller owns it and gives it back with free_block.
void *allocate_block(std::uint32_t size);

/// Gives a block back. Null does nothing. An address that is not a live block is reported on stderr
/// and ends the process with abort(), as the C library's free does.
void free_block(void *block);

} // namespace qxsh
