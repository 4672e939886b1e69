// The dump writer; see dump.h. Text is collected in one buffer and written once.
#include "helpers/dump.h"

#include "helpers/fields.h"
#include "helpers/output.h"

#include <charconv>
#include <cstring>
#include <string>

namespace qxsh {

namespace {

// Appends what "%#x" prints: 0 for zero, else 0x and lower-case digits.
void append_hex(std::string &text, std::uint32_t value)
{
    char digits[10] = {'0', 'x'};
    char *const start = value != 0 ? digits + 2 : digits;
    text.append(digits, std::to_chars(start, digits + sizeof digits, value, 16).ptr);
}

std::uint32_t element_value(const unsigned char *element, const field_layout &field)
{
    switch (field.size) {
    case 1: return field.width != 0 ? load_bits<std::uint8_t>(element, 0, field.bit, field.width)
                                    : load<std::uint8_t>(element, 0);
    case 2: return field.width != 0 ? load_bits<std::uint16_t>(element, 0, field.bit, field.width)
                                    : load<std::uint16_t>(element, 0);
    default: return field.width != 0 ? load_bits<std::uint32_t>(element, 0, field.bit, field.width)
                                     : load<std::uint32_t>(element, 0);
    }
}

void append_record(std::string &text, const unsigned char *record, const record_layout &layout);

void append_nested(std::string &text, const unsigned char *element, const field_layout &field)
{
    const unsigned elements = field.count != 0 ? field.count : 1;
    for (unsigned index = 0; index < elements; ++index, element += field.nested->size)
        append_record(text, element, *field.nested);
}

void append_array(std::string &text, const unsigned char *element, const field_layout &field)
{
    for (unsigned index = 0; index < field.count; ++index, element += field.size) {
        char number[8];
        text.append(field.name).append("[");
        text.append(number, std::to_chars(number, number + sizeof number, index).ptr);
        text.append("] = ");
        append_hex(text, element_value(element, field));
        text.append("\n");
    }
}

void append_record(std::string &text, const unsigned char *record, const record_layout &layout)
{
    for (const auto &field : layout.fields) {
        const auto *const start = record + field.offset;
        if (!field.dumped)
            continue;
        if (field.nested != nullptr) {
            append_nested(text, start, field);
        } else if (field.count != 0) {
            append_array(text, start, field);
        } else {
            text.append(field.name).append(" = ");
            append_hex(text, element_value(start, field));
            text.append(" \n");
        }
    }
}

} // namespace

void dump_record(const void *record, const record_layout &layout)
{
    if (record == nullptr)
        return;
    std::string text;
    append_record(text, static_cast<const unsigned char *>(record), layout);
    write_output(text);
}

} // namespace qxsh
