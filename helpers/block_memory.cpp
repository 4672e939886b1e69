// Block memory for 32-bit builds: the C library's. The 64-bit one is low_memory.cpp.
#include "helpers/block_memory.h"

#include <cstdlib>

namespace qxsh {

static_assert(sizeof(void *) == 4);

void *allocate_block(std::uint32_t size)
{
    if (size > INT32_MAX)
        return nullptr;
    return std::calloc(size != 0 ? size : 1, 1);
}

void free_block(void *block) { std::free(block); }

} // namespace qxsh
