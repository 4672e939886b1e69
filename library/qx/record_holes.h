// The bits of a record that belong to no field, and those of a union that one of its views does not
// show. Relies on the record table alone; lists are made on first use and kept.
#pragma once

#include "record_numbers.h"
#include "records/table.h"

#include <span>

namespace qxsh {

/// One byte of a record, and its bits that are meant.
struct hole
{
    std::uint16_t offset;
    std::uint8_t bits;
};

using holes = std::span<const hole>;

class hole_lists
{
public:
    hole_lists() = default;
    ~hole_lists();
    hole_lists(const hole_lists &) = delete;
    hole_lists &operator=(const hole_lists &) = delete;

    /// The bits in no field of the record, not counting those in nested records; of a union, those
    /// in none of its views, counting records nested in them.
    holes of_record(const record_row &row);

    /// The bits of a union that one of its views does not show, counting records nested in it.
    /// Unions nested in it show all of theirs.
    holes of_view(const record_row &row, const field_row &view);

private:
    struct list;
    static holes kept(list *&list, const record_row &row, const field_row *view);

    list *of_records_[record_count] = {};
    list *of_views_[field_count] = {};
};

/// Sets `bits`, a byte for each of the record's, to those in no field, counting all views of unions
/// and the fields of nested records.
void free_bits(const record_row &row, unsigned char *bits);

/// Whether one of the bits is set in the record at `memory`.
inline bool any_set(holes where, const unsigned char *memory)
{
    for (const hole &each : where)
        if ((memory[each.offset] & each.bits) != 0)
            return true;
    return false;
}

} // namespace qxsh
