// The dump writer; see dump.h. Text is collected in one buffer and written once.
#include "helpers/dump.h"

#include "helpers/fields.h"
#include "helpers/output.h"

#include <bit>
#include <cstring>
#include <string_view>
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
    void add_scalar(const field_name &name, std::uint32_t value)
    {
        char *const at = put(put_name(name), " = ");
        position_ = put(put_hex(at, value), " \n");
    }

    /// "<name>[<index>] = <hex>\n"
    void add_element(const field_name &name, unsigned index, std::uint32_t value)
    {
        char *const at = put(put_decimal(put(put_name(name), "["), index), "] = ");
        position_ = put(put_hex(at, value), "\n");
    }

private:
    // A name's room, an index of up to five digits, a value of up to ten, eight others.
    static constexpr std::size_t longest_line = field_name::room + 24;

    char *put_name(const field_name &name)
    {
        const auto used = static_cast<std::size_t>(position_ - buffer_.data());
        if (buffer_.size() - used < longest_line) [[unlikely]] {
            buffer_.resize(2 * buffer_.size());
            position_ = buffer_.data() + used;
        }
        std::memcpy(position_, name.text, field_name::room); // what is too much is written over
        return position_ + name.length;
    }

    template <std::size_t Size> static char *put(char *at, const char (&literal)[Size])
    {
        std::memcpy(at, literal, Size - 1);
        return at + Size - 1;
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
