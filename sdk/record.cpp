// Reading fields by their description. Relies on little-endian memory.
#include "record.h"

#include <bit>

namespace qxsim {

static_assert(std::endian::native == std::endian::little);

std::uint32_t read_field(const void *record, const field_description &field,
                         unsigned index) noexcept
{
    const unsigned char *const place =
        static_cast<const unsigned char *>(record) + field.offset + std::size_t{index} * field.size;
    std::uint32_t value = 0;
    std::memcpy(&value, place, field.size);
    if (field.width == 0)
        return value;
    const std::uint32_t mask = field.width < 32 ? (1U << field.width) - 1 : ~0U;
    return (value >> field.bit) & mask;
}

// Marks the bytes that belong to fields.
static void mark_fields(unsigned char *used, const record_description &description) noexcept
{
    for (const field_description &field : description.fields) {
        const unsigned count = field.count == 0 ? 1 : field.count;
        for (unsigned index = 0; index < count; ++index) {
            if (field.record != nullptr)
                mark_fields(used + field.offset + index * field.record->size, *field.record);
            else
                std::memset(used + field.offset + index * field.size, 1, field.size);
        }
    }
}

void clear_padding(void *record, const record_description &description) noexcept
{
    unsigned char used[256] = {};
    mark_fields(used, description);
    for (std::uint32_t place = 0; place < description.size; ++place)
        if (used[place] == 0)
            static_cast<unsigned char *>(record)[place] = 0;
}

} // namespace qxsim
