// The blocks that scripts have made: the live ones, and the freed ones as long as their memory is
// kept from being used again. One table of a process; addresses are those of handles.
#pragma once

#include "strict/place.h"

#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <vector>

namespace qxsh {

struct known_block
{
    std::uint32_t address;
    std::uint32_t size;   ///< bytes
    int type;             ///< what it is made of, by number in the type table
    std::uint32_t serial; ///< from 1, in the order of making
    const script_place *made;
    const script_place *freed; ///< null: it is live

    bool live() const { return freed == nullptr; }
};

/// Blocks with one place of making that were never freed.
struct leak
{
    const script_place *made;
    std::uint32_t blocks;
    std::uint64_t bytes;
};

class block_table
{
public:
    /// `give_back` frees the memory of a block. Freed blocks are kept while their sizes, and
    /// `overhead` for each, are no more than `kept_bytes`; the oldest go first.
    block_table(void (*give_back)(void *), std::uint64_t kept_bytes);

    static constexpr std::uint32_t overhead = 64;

    /// Enters a new block. What the table held there before is forgotten: somebody else has given
    /// it back.
    void add(std::uint32_t address, std::uint32_t size, int type, const script_place &made);

    /// The block in which the address lies, live or freed; one of size 0 has its start. Or null.
    const known_block *at(std::uint32_t address) const;

    /// The last block that begins at or before the address, or null.
    const known_block *up_to(std::uint32_t address) const;

    /// Frees the live block that begins there.
    void release(std::uint32_t address, const script_place &freed);

    /// The live blocks by place of making, those with the most bytes first.
    std::vector<leak> leaks() const;

private:
    const script_place *remember(const script_place &place);
    void forget_overlapped(std::uint32_t address, std::uint32_t size);
    void give_back_oldest();

    void (*const give_back_)(void *);
    const std::uint64_t kept_bytes_;
    std::map<std::uint32_t, known_block> blocks_; // by address
    std::set<script_place> places_; // each once: there are far fewer places than blocks
    std::deque<known_block> kept_;  // freed blocks, the oldest first
    std::uint64_t kept_now_ = 0;    // bytes
    std::uint32_t made_ = 0;
};

} // namespace qxsh
