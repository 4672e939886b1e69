// The blocks that scripts have made: the live ones, and freed ones whose memory is not reused yet.
// There is one table per process; addresses are the 32-bit ones of handles.
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
    int type;             ///< of its elements: index in swig_types
    std::uint32_t serial; ///< from 1, in order of creation
    const script_place *made;
    const script_place *freed; ///< null while it is live

    bool live() const { return freed == nullptr; }
};

/// The blocks that one place in the scripts made and that were never freed.
struct leak
{
    const script_place *made;
    std::uint32_t blocks;
    std::uint64_t bytes;
};

class block_table
{
public:
    /// `give_back` frees the memory of a block. Freed blocks are kept while their sizes, plus
    /// `overhead` each, sum to at most `kept_bytes`; the oldest are given back first.
    block_table(void (*give_back)(void *), std::uint64_t kept_bytes);

    static constexpr std::uint32_t overhead = 64;

    /// Adds a live block; `type` is an index in swig_types. Entries that it overlaps are dropped:
    /// their memory was freed without the table.
    void add(std::uint32_t address, std::uint32_t size, int type, const script_place &made);

    /// The block, live or freed, that contains the address, or null; one of size 0 contains its
    /// start. This pointer and up_to()'s are valid until the next add or release.
    const known_block *at(std::uint32_t address) const;

    /// The last block that starts at or before the address, or null.
    const known_block *up_to(std::uint32_t address) const;

    /// Frees the live block that starts there, if any; may give back the oldest freed ones.
    void release(std::uint32_t address, const script_place &freed);

    /// The live blocks by place, most bytes first. The table owns the places.
    std::vector<leak> leaks() const;

private:
    const script_place *remember(const script_place &place);
    void forget_overlapped(std::uint32_t address, std::uint32_t size);
    void give_back_oldest();

    void (*const give_back_)(void *);
    const std::uint64_t kept_bytes_;
    std::map<std::uint32_t, known_block> blocks_; // by address
    std::set<script_place> places_;               // shared: far fewer than blocks
    std::deque<known_block> kept_;                // freed blocks, oldest first
    std::uint64_t kept_now_ = 0;                  // bytes
    std::uint32_t made_ = 0;
};

} // namespace qxsh
