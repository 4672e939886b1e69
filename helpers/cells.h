// Cells: bare blocks of one or more numbers of one type, used as out-parameters. They carry no
// length, so indices are not checked; a null cell reads as 0 and ignores writes. Bad addresses set
// pending_fault (guarded_memory.h).
#pragma once

#include "helpers/block_memory.h"
#include "helpers/fields.h"
#include "records/addresses.h"

#include <cstdint>
#include <type_traits>

namespace qxsh {

/// Prints the number in decimal and a newline.
void print_number(unsigned long long value);

/// The address of element `index`, modulo 2^32. The cell may be null.
template <class Number> void *cell_address(Number *cell, std::uint32_t index)
{
    return address_at(cell, index * std::uint32_t{sizeof(Number)});
}

/// Element `index`; 0 for a null cell.
template <class Number> Number read_cell(Number *cell, std::uint32_t index)
{
    if (cell == nullptr)
        return 0;
    const void *const address = cell_address(cell, index);
    if constexpr (sizeof(Number) <= 4) {
        return static_cast<Number>(load<std::make_unsigned_t<Number>>(address, 0));
    } else {
        const Number low = load<std::uint32_t>(address, 0);
        return low | static_cast<Number>(load<std::uint32_t>(address, 4)) << 32;
    }
}

/// The same, and prints the whole value: a command's result has room only for its low half. Prints
/// nothing while a fault is pending.
template <class Number> Number read_printed_cell(Number *cell, std::uint32_t index)
{
    const Number value = read_cell(cell, index);
    if (!pending_fault.happened)
        print_number(value);
    return value;
}

/// Sets element `index` to `value`; does nothing for a null cell.
template <class Number> void write_cell(Number *cell, Number value, std::uint32_t index)
{
    if (cell == nullptr)
        return;
    void *const address = cell_address(cell, index);
    if constexpr (sizeof(Number) <= 4) {
        store<std::make_unsigned_t<Number>>(address, 0, static_cast<std::uint32_t>(value));
    } else {
        store<std::uint32_t>(address, 0, static_cast<std::uint32_t>(value));
        store<std::uint32_t>(address, 4, static_cast<std::uint32_t>(value >> 32));
    }
}

/// A new cell with `value`, which the caller owns (free_block); null if there is no memory.
template <class Number> Number *create_cell(Number value)
{
    auto *const cell = static_cast<Number *>(allocate_block(sizeof(Number)));
    write_cell(cell, value, 0);
    return cell;
}

/// `count` cells with `value` in one block that the caller owns. Null if there is no memory or the
/// size does not fit 32 bits: unlike a record array, this fills all elements at once.
template <class Number> Number *create_cell_array(Number value, std::uint32_t count)
{
    if (count > UINT32_MAX / sizeof(Number))
        return nullptr;
    auto *const cells = static_cast<Number *>(allocate_block(count * sizeof(Number)));
    if (cells != nullptr) {
        for (std::uint32_t index = 0; index < count; ++index)
            cells[index] = value;
    }
    return cells;
}

} // namespace qxsh
