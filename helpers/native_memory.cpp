// Block memory for 32-bit builds: the C library's. The 64-bit one is low_memory.cpp.
#include "helpers/block_memory.h"

#include <cstdlib>
#include <cstring>

namespace qxsh {

static_assert(sizeof(void *) == 4);

void *allocate_block(std::uint32_t size)
{
    if (size > INT32_MAX)
        return nullptr;
    // Memory that calloc gets from the kernel is zero already, and stays untouched until used.
    constexpr std::uint32_t fresh_from_kernel = 128 * 1024;
    if (size >= fresh_from_kernel)
        return std::calloc(size, 1);
    // For small blocks this takes a third of calloc's time. The volatile pointer keeps the compiler
    // from merging malloc and memset into calloc.
    void *volatile const block = std::malloc(size != 0 ? size : 1);
    void *const zeroed = block;
    if (zeroed != nullptr)
        std::memset(zeroed, 0, size);
    return zeroed;
}

void free_block(void *block)
{
    std::free(block);
}

} // namespace qxsh
