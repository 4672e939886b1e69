// What a scene's commands have created and not freed yet: the only memory that well-formed handles
// may lead to.
#pragma once

#include "tests/random/tables.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// A place that holds `count` things of a type, one behind the other.
struct live_place
{
    std::string pointee;
    std::uint32_t address;
    std::uint32_t count;
    std::uint32_t block; ///< address of the block it lies in
};

class live_blocks
{
public:
    explicit live_blocks(const random_test::tables &all) : all_(all) {}

    void add(const std::string &pointee, std::uint32_t address, std::uint32_t count);
    void remove(std::uint32_t block);

    /// Remembers a place that a command has answered with, if all of it lies in a live block.
    void found(const std::string &pointee, std::uint32_t address);

    /// The places of a type; those of blocks alone, as things that can be freed.
    std::vector<live_place> of(const std::string &pointee) const;
    std::vector<live_place> whole() const;
    const std::vector<live_place> &all() const { return places_; }
    void clear() { places_.clear(); }

private:
    std::uint32_t size_of(const std::string &pointee) const;

    const random_test::tables &all_;
    std::vector<live_place> places_;
};

} // namespace fuzz
