// The blocks that a scene's commands have created and not freed yet: the only memory that
// well-formed handles may refer to.
#pragma once

#include "tests/random/tables.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// A place that holds an array of `count` objects of a type.
struct live_place
{
    std::string pointee;
    std::uint32_t address;
    std::uint32_t count;
    std::uint32_t block; ///< address of the block that contains it
};

class live_blocks
{
public:
    explicit live_blocks(const random_test::tables &all) : all_(all) {}

    void add(const std::string &pointee, std::uint32_t address, std::uint32_t count);
    void remove(std::uint32_t block);

    /// Remembers a place that a command returned, if it is entirely inside a live block and there
    /// are not too many places yet.
    void found(const std::string &pointee, std::uint32_t address);

    std::vector<live_place> of(const std::string &pointee) const; ///< the places of a type
    std::vector<live_place> whole() const;                        ///< the blocks, for freeing
    const std::vector<live_place> &all() const { return places_; }
    void clear() { places_.clear(); }

private:
    std::uint32_t size_of(const std::string &pointee) const;

    const random_test::tables &all_;
    std::vector<live_place> places_;
};

} // namespace fuzz
