// Where ids are in calls and records; see device_ids.h.
#include "replay/device_ids.h"

#include "record_numbers.h"
#include "records/values.h"

namespace qxtrace {

using namespace qxsh;

std::uint32_t device_of(const recorded_call &call)
{
    return call.row->names_device ? call.arguments[0].value : any_device;
}

int new_id_argument(const call_row &call)
{
    const auto arguments = arguments_of(call);
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].pointer && arguments[i].record < 0 && arguments[i].way == direction::out &&
            arguments[i].id != id_none)
            return static_cast<int>(i);
    return -1;
}

// `at` is where the field's record begins.
static void change_field(const field_row &field, unsigned char *at, const shown_names &names,
                         const id_change &change)
{
    const record_row *const inner = record_in(field);
    for (unsigned i = 0; i < elements_of(field); ++i) {
        unsigned char *const place = at + field.offset + i * field.size;
        if (inner != nullptr && inner->is_union)
            change_field(names.view_of(field, at), place, names, change);
        else if (inner != nullptr)
            change_ids(*inner, place, names, change);
        else if (field.id != id_none && read_number(place, field.size) != 0)
            write_number(place, field.size, change(field.id, read_number(place, field.size)));
    }
}

void change_ids(const record_row &record, unsigned char *bytes, const shown_names &names,
                const id_change &change)
{
    for (const field_row &field : fields_of(record))
        change_field(field, bytes, names, change);
}

} // namespace qxtrace
