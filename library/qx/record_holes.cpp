// Finding bits in no field; see record_holes.h.
#include "library/qx/record_holes.h"

#include "records/values.h"

#include <tcl.h>

#include <cstring>

namespace qxsh {

void free_bits(const record_row &row, unsigned char *bits)
{
    std::memset(bits, 0, row.size);
    mark_bits(bits, row);
    for (unsigned i = 0; i < row.size; ++i)
        bits[i] = static_cast<unsigned char>(~bits[i]);
}

struct hole_lists::list
{
    unsigned count;
    hole *first() { return reinterpret_cast<hole *>(this + 1); }
};

hole_lists::~hole_lists()
{
    for (list *const each : of_records_)
        Tcl_Free(reinterpret_cast<char *>(each));
    for (list *const each : of_views_)
        Tcl_Free(reinterpret_cast<char *>(each));
}

holes hole_lists::kept(list *&list, const record_row &row, const field_row *view)
{
    if (list == nullptr) {
        unsigned char used[most_record_bytes];
        std::memset(used, 0, row.size);
        for (const field_row &field : fields_of(row))
            if (view == nullptr || &field == view)
                mark_bits(used, field, row.is_union);
        unsigned count = 0;
        for (unsigned i = 0; i < row.size; ++i)
            count += used[i] != 255 ? 1 : 0;
        const auto bytes = sizeof *list + count * sizeof(hole);
        list = reinterpret_cast<struct list *>(Tcl_Alloc(static_cast<unsigned>(bytes)));
        list->count = count;
        hole *next = list->first();
        for (unsigned i = 0; i < row.size; ++i)
            if (used[i] != 255)
                *next++ = {static_cast<std::uint16_t>(i), static_cast<std::uint8_t>(~used[i])};
    }
    return {list->first(), list->count};
}

holes hole_lists::of_record(const record_row &row)
{
    return kept(of_records_[&row - record_rows], row, nullptr);
}

holes hole_lists::of_view(const record_row &row, const field_row &view)
{
    return kept(of_views_[&view - field_rows], row, &view);
}

} // namespace qxsh
