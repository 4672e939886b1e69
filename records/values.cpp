// Which bytes of a record belong to its fields; see values.h.
#include "records/values.h"

#include "record_numbers.h"

#include <bit>

namespace qxsh {

static_assert(std::endian::native == std::endian::little, "records are little-endian");

void mark_fields(unsigned char *bytes, const record_row &record, const holding *only)
{
    for (const field_row &field : fields_of(record)) {
        unsigned char *const place = bytes + field.offset;
        if (const record_row *const inner = record_in(field); inner != nullptr) {
            for (unsigned index = 0; index < elements_of(field); ++index)
                mark_fields(place + index * field.size, *inner, only);
        } else if (only == nullptr || field.holds == *only) {
            std::memset(place, 1, elements_of(field) * field.size);
        }
    }
}

void mark_bits(unsigned char *bytes, const field_row &field, bool deep)
{
    bytes += field.offset;
    const record_row *const inner = record_in(field);
    if (inner != nullptr && deep && !inner->is_union) {
        for (unsigned i = 0; i < elements_of(field); ++i)
            for (const field_row &each : fields_of(*inner))
                mark_bits(bytes + i * field.size, each, deep);
    } else if (field.width != 0) {
        write_number(bytes, field.size,
                     read_number(bytes, field.size) | bit_mask(field.bit, field.width));
    } else {
        std::memset(bytes, 255, elements_of(field) * field.size);
    }
}

void mark_bits(unsigned char *bits, const record_row &record)
{
    for (const field_row &field : fields_of(record)) {
        const record_row *const inner = record_in(field);
        if (inner == nullptr)
            mark_bits(bits, field, false);
        else
            for (unsigned i = 0; i < elements_of(field); ++i)
                mark_bits(bits + field.offset + i * field.size, *inner);
    }
}

void clear_padding(void *bytes, const record_row &record)
{
    unsigned char used[most_record_bytes];
    std::memset(used, 0, record.size);
    mark_fields(used, record);
    for (unsigned place = 0; place < record.size; ++place)
        if (used[place] == 0)
            static_cast<unsigned char *>(bytes)[place] = 0;
}

} // namespace qxsh
