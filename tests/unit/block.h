// A block of block memory that a test fills and compares; it is freed when it goes out of scope.
#pragma once

#include "helpers/block_memory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <vector>

using byte_list = std::vector<unsigned char>;

class block
{
public:
    explicit block(std::uint32_t size)
        : size_(size), start_(static_cast<unsigned char *>(qxsh::allocate_block(size)))
    {
        EXPECT_NE(start_, nullptr);
    }
    explicit block(const byte_list &bytes) : block(static_cast<std::uint32_t>(bytes.size()))
    {
        std::memcpy(start_, bytes.data(), bytes.size());
    }
    ~block() { qxsh::free_block(start_); }
    block(const block &) = delete;
    block &operator=(const block &) = delete;

    unsigned char *at(std::uint32_t offset) const { return start_ + offset; }
    operator void *() const { return start_; }
    byte_list bytes() const { return {start_, start_ + size_}; }
    void fill(unsigned char value) { std::memset(start_, value, size_); }
    /// Fills the block with 1, 2, 3, ...
    void count_up()
    {
        for (std::uint32_t i = 0; i < size_; ++i)
            start_[i] = static_cast<unsigned char>(i + 1);
    }

private:
    std::uint32_t size_;
    unsigned char *start_;
};
