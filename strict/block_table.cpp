// The table of known blocks; see block_table.h.
#include "strict/block_table.h"

#include "records/addresses.h"

#include <algorithm>
#include <iterator>

namespace qxsh {

block_table::block_table(void (*give_back)(void *), std::uint64_t kept_bytes)
    : give_back_(give_back), kept_bytes_(kept_bytes)
{}

static std::uint64_t end_of(const known_block &block)
{
    return std::uint64_t{block.address} + std::max(block.size, std::uint32_t{1});
}

const script_place *block_table::remember(const script_place &place)
{
    return &*places_.insert(place).first;
}

void block_table::forget_overlapped(std::uint32_t address, std::uint32_t size)
{
    const auto end = end_of({address, size, 0, 0, nullptr, nullptr});
    auto each = blocks_.upper_bound(address);
    if (each != blocks_.begin() && end_of(std::prev(each)->second) > address)
        --each;
    while (each != blocks_.end() && each->first < end) {
        const auto gone = each->second;
        each = blocks_.erase(each);
        if (gone.live())
            continue;
        kept_now_ -= gone.size + overhead;
        std::erase_if(kept_, [&](const auto &kept) { return kept.address == gone.address; });
    }
}

void block_table::add(std::uint32_t address, std::uint32_t size, int type, const script_place &made)
{
    forget_overlapped(address, size);
    blocks_[address] = {address, size, type, ++made_, remember(made), nullptr};
}

const known_block *block_table::up_to(std::uint32_t address) const
{
    const auto next = blocks_.upper_bound(address);
    return next != blocks_.begin() ? &std::prev(next)->second : nullptr;
}

const known_block *block_table::at(std::uint32_t address) const
{
    const known_block *const block = up_to(address);
    return block != nullptr && address < end_of(*block) ? block : nullptr;
}

void block_table::release(std::uint32_t address, const script_place &freed)
{
    const auto found = blocks_.find(address);
    if (found == blocks_.end() || !found->second.live())
        return;
    found->second.freed = remember(freed);
    kept_.push_back(found->second);
    kept_now_ += found->second.size + overhead;
    while (kept_now_ > kept_bytes_)
        give_back_oldest();
}

void block_table::give_back_oldest()
{
    const known_block oldest = kept_.front();
    kept_.pop_front();
    kept_now_ -= oldest.size + overhead;
    blocks_.erase(oldest.address);
    give_back_(pointer_to(oldest.address));
}

std::vector<leak> block_table::leaks() const
{
    std::map<const script_place *, leak> by_place;
    for (const auto &[address, block] : blocks_) {
        if (!block.live())
            continue;
        auto &found = by_place.try_emplace(block.made, leak{block.made, 0, 0}).first->second;
        ++found.blocks;
        found.bytes += block.size;
    }
    std::vector<leak> all;
    all.reserve(by_place.size());
    for (const auto &each : by_place)
        all.push_back(each.second);
    // Equal sizes are ordered by place, so that reports are the same in every run.
    std::sort(all.begin(), all.end(), [](const leak &one, const leak &other) {
        return one.bytes != other.bytes ? one.bytes > other.bytes : *one.made < *other.made;
    });
    return all;
}

} // namespace qxsh
