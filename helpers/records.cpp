// The record helpers that do not depend on a field's type; see records.h.
#include "helpers/records.h"

#include "helpers/block_memory.h"
#include "helpers/output.h"

#include <cstring>
#include <string>

namespace qxsh {

void *create_record(std::uint32_t size)
{
    return allocate_block(size);
}

void *create_record_array(std::uint32_t count, std::uint32_t size)
{
    // Deliberately not checked for overflow: a wrapped product gives a block of the wrapped size.
    return allocate_block(count * size);
}

void set_record_slot(void *array, const void *item, std::uint32_t index, std::uint32_t size)
{
    if (array != nullptr && item != nullptr)
        copy_bytes(address_at(array, index * size), item, size);
}

void set_record_element(void *record, std::uint32_t offset, std::uint32_t count, const void *source,
                        std::uint32_t size, std::uint32_t index, const char *setter)
{
    if (record == nullptr || source == nullptr)
        return;
    if (index < count) {
        copy_record(record, offset + index * size, source, size);
    } else if (index == every_element) {
        for (std::uint32_t each = 0; each < count; ++each)
            copy_record(record, offset + each * size, source, size);
    } else {
        report_bad_index(setter);
    }
}

void report_bad_index(const char *setter)
{
    write_output(std::string{setter} + " bad Index \n");
}

} // namespace qxsh
