// The model's memory: blocks of bytes, and what getters, setters and dumps do to them.
#pragma once

#include "tables.h"

#include <cstdint>
#include <string>
#include <vector>

namespace random_test {

/// A block that the script has created and not freed yet: elements of one record or number type.
struct block
{
    std::string variable; ///< of the script, holding the handle
    const record *made_of = nullptr;
    const number_type *number = nullptr; ///< this or `made_of`
    std::uint32_t stride = 0;
    std::uint32_t count = 0;
    std::vector<std::uint8_t> bytes;

    std::string pointee() const { return made_of != nullptr ? made_of->name : number->native; }
};

/// A place in a block, or the null pointer.
struct place
{
    block *where = nullptr;
    std::uint32_t offset = 0;

    explicit operator bool() const { return where != nullptr; }
    place plus(std::uint32_t bytes) const { return {where, offset + bytes}; }
};

/// The little-endian number of so many bytes.
std::uint64_t load(place from, std::uint32_t width);
void store(place to, std::uint32_t width, std::uint64_t value);

/// Copies bytes, as if all were read before the first is written.
void copy(place to, place from, std::uint32_t count);

/// What a getter of a number reads, and what its setter leaves behind; `element` is 0 for scalars.
std::uint32_t get(place record, const field &which, std::uint32_t element);
void set(place record, const field &which, std::uint32_t element, std::uint64_t value);

/// Where a field of a record, or an element of an array field, lies.
place element_of(place record, const field &which, std::uint32_t element);

/// What a dump prints.
std::string dump(place from, const record &type);

/// The bytes of a block as hexadecimal digits.
std::string digits(const block &shown);

/// A number as C's %#x writes it.
std::string alternate(std::uint32_t value);

} // namespace random_test
