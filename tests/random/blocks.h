// The live blocks of the script, and the ways to say where something lies in them: a handle from a
// getter, from an array, from a chain of both, or put together from address and type.
#pragma once

#include "dice.h"
#include "memory.h"

#include <list>
#include <map>
#include <string>
#include <vector>

namespace random_test {

/// A place and the word of the script that gives a handle to it.
struct spot
{
    place at;
    std::string word;
};

class blocks
{
public:
    /// With `as_made`, places are only taken for what was made there, or for bytes; without it, for
    /// whatever fits.
    blocks(const tables &all, dice &chance, bool as_made)
        : all_(all), chance_(chance), as_made_(as_made)
    {}

    /// A new block of zeros under a variable name of its own.
    block &add(const record *made_of, const number_type *number, std::uint32_t count);
    void remove(block &gone);

    std::list<block> &live() { return live_; }
    block &any();

    /// True if some block holds a record or number of this type.
    bool have(const std::string &pointee) const;

    /// A random place of a type that blocks have; it ends inside its block.
    spot pick(const std::string &pointee);

    /// A place for a source of a copy to `to`: mostly somewhere in the same block. `overlapping`
    /// allows that it shares some of the destination's bytes but not all.
    spot pick_source(const std::string &pointee, place to, bool overlapping);

    /// Whether a command may go there for a thing of this type.
    bool leads_to(place at, const std::string &pointee);

    /// A word that is not a handle of this type.
    std::string bad_word(const std::string &pointee);

    /// The null pointer, in one of its forms.
    std::string null_word(const std::string &pointee);

private:
    /// A way from a record to a nested one: its offset, and the getters around the outer one's
    /// word.
    struct way
    {
        std::uint32_t offset;
        std::string before, after;
    };
    using ways = std::vector<way>;

    const ways &ways_to(const record &outer, const std::string &pointee);
    void collect(const record &outer, const way &so_far, std::map<std::string, ways> &found);
    spot pick_in(block &from, const std::string &pointee);
    spot put_together(block &from, std::uint32_t offset, const std::string &pointee);
    spot anywhere(block &from, const std::string &pointee);
    std::uint32_t size_of(const std::string &pointee) const;
    std::uint32_t alignment_of(const std::string &pointee) const;
    bool holds(const block &from, const std::string &pointee);

    const tables &all_;
    dice &chance_;
    const bool as_made_;
    std::list<block> live_;
    unsigned made_ = 0;
    std::map<const record *, std::map<std::string, ways>> ways_;
};

} // namespace random_test
