// The dump writer; see dump.h. Text is collected in one buffer and written once.
#include "helpers/dump.h"

#include "helpers/fields.h"
#include "helpers/output.h"

#include <bit>
#include <cstring>
#include <vector>

namespace qxsh {

namespace {

// Collects lines. The buffer stays for the next dump; dumps do not nest, as records do.
class dump_text
{
public:
    dump_text() : position_(buffer_.data()) {}

    std::string_view text() const
    {
        return {buffer_.data(), static_cast<std::size_t>(position_ - buffer_.data())};
    }

    /// "<name> = <hex> \n"
    void add_scalar(std::string_view name, std::uint32_t value)
    {
        char *const at = room_for(name);
        position_ = put(put_hex(put(put(at, name), " = "), value), " \n");
    }

    /// "<name>[<index>] = <hex>\n"
    void add_element(std::string_view name, unsigned index, std::uint32_t value)
    {
        char *const at = room_for(name);
        char *const number = put_decimal(put(put(at, name), "["), index);
        position_ = put(put_hex(put(number, "] = "), value), "\n");
    }

private:
    // Behind a name: an index of up to five digits, a value of up to ten, at most eight others.
    static constexpr std::size_t rest_of_line = 24;

    char *room_for(std::string_view name)
    {
        const std::size_t needed = name.size() + rest_of_line;
        const auto used = static_cast<std::size_t>(position_ - buffer_.data());
        if (buffer_.size() - used < needed) [[unlikely]] {
            buffer_.resize(2 * buffer_.size() + needed);
            position_ = buffer_.data() + used;
        }
        return position_;
    }

    static char *put(char *at, std::string_view text)
    {
        std::memcpy(at, text.data(), text.size());
        return at + text.size();
    }

    // What "%#x" prints: 0 for zero, else 0x and lower-case digits.
    static char *put_hex(char *at, std::uint32_t value)
    {
        if (value == 0) {
            *at = '0';
            return at + 1;
        }
        at = put(at, "0x");
        char *const end = at + (std::bit_width(value) + 3) / 4;
        for (char *digit = end; digit != at; value >>= 4)
            *--digit = "0123456789abcdef"[value & 15];
        return end;
    }

    static char *put_decimal(char *at, unsigned value)
    {
        if (value >= 10)
            at = put_decimal(at, value / 10);
        *at = static_cast<char>('0' + value % 10);
        return at + 1;
    }

    static std::vector<char> buffer_;
    char *position_;
};

std::vector<char> dump_text::buffer_(4096);

std::uint32_t load_sized(const unsigned char *element, unsigned size)
{
    switch (size) {
    case 1:  return load<std::uint8_t>(element, 0);
    case 2:  return load<std::uint16_t>(element, 0);
    default: return load<std::uint32_t>(element, 0);
    }
}

void add_record(dump_text &text, const unsigned char *record, const record_layout &layout);

void add_field(dump_text &text, const unsigned char *element, const field_layout &field)
{
    if (field.nested != nullptr) {
        const unsigned elements = field.count != 0 ? field.count : 1;
        for (unsigned index = 0; index < elements; ++index, element += field.nested->size)
            add_record(text, element, *field.nested);
    } else if (field.count != 0) {
        for (unsigned index = 0; index < field.count; ++index, element += field.size)
            text.add_element(field.name, index, load_sized(element, field.size));
    } else {
        const auto value = load_sized(element, field.size);
        const auto mask = bit_mask(field.bit, field.width != 0 ? field.width : 8 * field.size);
        text.add_scalar(field.name, (value & mask) >> field.bit);
    }
}

void add_record(dump_text &text, const unsigned char *record, const record_layout &layout)
{
    for (const auto &field : layout.fields) {
        if (field.dumped)
            add_field(text, record + field.offset, field);
    }
}

} // namespace

void dump_record(const void *record, const record_layout &layout)
{
    if (record == nullptr)
        return;
    dump_text text;
    add_record(text, static_cast<const unsigned char *>(record), layout);
    write_output(text.text());
}

} // namespace qxsh
