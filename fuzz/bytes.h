// An input as a sequence of choices. After its end it reads as zeros, so every input is meaningful,
// and a shorter one is a simpler scene.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>

namespace fuzz {

class bytes
{
public:
    explicit bytes(std::span<const std::uint8_t> input) : left_(input) {}

    bool empty() const { return left_.empty(); }

    std::uint8_t byte()
    {
        if (left_.empty())
            return 0;
        const std::uint8_t first = left_.front();
        left_ = left_.subspan(1);
        return first;
    }

    /// A number below `limit`, which is 1 to 65536.
    std::uint32_t below(std::uint32_t limit)
    {
        std::uint32_t value = byte();
        if (limit > 256)
            value |= std::uint32_t{byte()} << 8;
        return value % limit;
    }

    /// An unsigned number of `width` bytes (0 to 8), little-endian.
    std::uint64_t number(unsigned width)
    {
        std::uint64_t value = 0;
        for (unsigned i = 0; i < width; ++i)
            value |= std::uint64_t{byte()} << (8 * i);
        return value;
    }

    /// A text of at most `limit` bytes (0 to 65535), preceded by its length.
    std::string text(std::uint32_t limit)
    {
        const std::size_t wanted = below(limit + 1);
        return take(std::min(wanted, left_.size()));
    }

    /// All that is left.
    std::string rest() { return take(left_.size()); }

private:
    std::string take(std::size_t length)
    {
        std::string text(left_.begin(), left_.begin() + static_cast<std::ptrdiff_t>(length));
        left_ = left_.subspan(length);
        return text;
    }

    std::span<const std::uint8_t> left_;
};

/// True for one input in `many`: for slow checks. It depends on a hash of all bytes, so the fuzzer
/// cannot learn to prefer such inputs.
inline bool one_in(std::uint32_t many, std::span<const std::uint8_t> input)
{
    std::uint32_t hash = 2166136261;
    for (const std::uint8_t each : input)
        hash = (hash ^ each) * 16777619;
    return (hash >> 8) % many == 0;
}

} // namespace fuzz
