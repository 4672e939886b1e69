// Live blocks and the places in them.
#include "fuzz/live_blocks.h"

#include <algorithm>
#include <iterator>

namespace fuzz {

std::uint32_t live_blocks::size_of(const std::string &pointee) const
{
    const random_test::record *const record = all_.find_record(pointee);
    return record != nullptr ? record->size : random_test::number_declared(pointee)->width;
}

void live_blocks::add(const std::string &pointee, std::uint32_t address, std::uint32_t count)
{
    places_.push_back({pointee, address, count, address});
}

void live_blocks::remove(std::uint32_t block)
{
    std::erase_if(places_, [&](const live_place &each) { return each.block == block; });
}

void live_blocks::found(const std::string &pointee, std::uint32_t address)
{
    constexpr std::size_t most = 64;
    for (const live_place &each : whole()) {
        const std::uint64_t end = each.address + std::uint64_t{each.count} * size_of(each.pointee);
        if (address >= each.address && std::uint64_t{address} + size_of(pointee) <= end &&
            places_.size() < most) {
            places_.push_back({pointee, address, 1, each.address});
            return;
        }
    }
}

std::vector<live_place> live_blocks::of(const std::string &pointee) const
{
    std::vector<live_place> fitting;
    std::copy_if(
        places_.begin(), places_.end(), std::back_inserter(fitting),
        [&](const live_place &each) { return each.pointee == pointee && each.count != 0; });
    return fitting;
}

std::vector<live_place> live_blocks::whole() const
{
    std::vector<live_place> blocks;
    std::copy_if(places_.begin(), places_.end(), std::back_inserter(blocks),
                 [](const live_place &each) { return each.address == each.block; });
    // A nested record at a block's start has the same address; the first one is the block.
    std::vector<live_place> first;
    for (const live_place &each : blocks)
        if (std::none_of(first.begin(), first.end(),
                         [&](const live_place &known) { return known.block == each.block; }))
            first.push_back(each);
    return first;
}

} // namespace fuzz
