// Random choices that are the same in every build: the generator and the way its numbers are used
// are fixed, which the distributions of the standard library are not.
#pragma once

#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace random_test {

class dice
{
public:
    explicit dice(std::uint64_t seed) : engine_(seed) {}

    /// A number below `limit`, which is not 0.
    std::uint32_t below(std::uint32_t limit)
    {
        return static_cast<std::uint32_t>(engine_() % limit);
    }

    /// True in so many of 100 cases.
    bool percent(std::uint32_t chance) { return below(100) < chance; }

    /// All 64 bits.
    std::uint64_t bits() { return engine_(); }

    template <class Item> const Item &of(const std::vector<Item> &items)
    {
        return items[below(static_cast<std::uint32_t>(items.size()))];
    }

    template <class Item> void shuffle(std::vector<Item> &items)
    {
        for (auto left = static_cast<std::uint32_t>(items.size()); left > 1; --left)
            std::swap(items[left - 1], items[below(left)]);
    }

private:
    std::mt19937_64 engine_;
};

} // namespace random_test
