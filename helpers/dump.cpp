// The dump writer; see dump.h. What is the same in every dump of a type (names, indices, line ends,
// positions of values) is computed once; after that a dump is a copy of the record, a loop over its
// values, and one write.
#include "helpers/dump.h"

#include "helpers/guarded_memory.h"
#include "helpers/output.h"
#include "record_numbers.h"
#include "records/values.h"

#include <bit>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace qxsh {

namespace {

/// One value of a dump, and the length of the text before it, which ends in "0x".
struct dump_step
{
    std::uint32_t mask; ///< applied after the shift
    std::uint16_t offset;
    std::uint8_t shift;
    std::uint8_t text_length;
};

/// The steps and texts for dumps of one record type, with nested records and arrays flattened.
class dump_plan
{
public:
    explicit dump_plan(const record_row &row)
    {
        add_record(row, 0);
        text_ += gap_;
    }

    const std::vector<dump_step> &steps() const { return steps_; }
    /// The texts before the values, joined, and the end of the last line.
    const std::string &text() const { return text_; }
    /// The length of the longest possible dump in characters.
    std::size_t longest() const { return text_.size() + longest_value * steps_.size(); }

    static constexpr std::size_t longest_value = 8; // digits

private:
    void add_record(const record_row &row, std::size_t offset)
    {
        for (const field_row &field : fields_of(row)) {
            if (field.dumped)
                add_field(field, offset + field.offset);
        }
    }

    void add_field(const field_row &field, std::size_t offset)
    {
        if (const record_row *const inner = record_in(field); inner != nullptr) {
            for (unsigned index = 0; index < elements_of(field); ++index, offset += field.size)
                add_record(*inner, offset);
        } else if (field.count != 0) {
            for (unsigned index = 0; index < field.count; ++index, offset += field.size)
                add_value(field, "[" + std::to_string(index) + "]", offset, "\n");
        } else {
            add_value(field, "", offset, " \n"); // the blank is intended
        }
    }

    // `gap_` is the end of the previous line.
    void add_value(const field_row &field, const std::string &index, std::size_t offset,
                   const char *line_end)
    {
        const auto text = gap_ + field.name.text() + index + " = 0x";
        const unsigned width = field.width != 0 ? field.width : 8u * field.size;
        steps_.push_back({bit_mask(0, width), static_cast<std::uint16_t>(offset), field.bit,
                          static_cast<std::uint8_t>(text.size())});
        text_ += text;
        gap_ = line_end;
    }

    std::vector<dump_step> steps_;
    std::string text_;
    std::string gap_;
};

// Built when a type is first dumped, and kept; a flow's takes about 4 KiB.
const dump_plan &plan_for(int number)
{
    static const dump_plan *plans[record_count];
    const dump_plan *&plan = plans[number];
    if (plan == nullptr)
        plan = new dump_plan{record_rows[number]};
    return *plan;
}

// Reads four bytes at any alignment. Where the processor can, the compiler uses one instruction.
std::uint32_t compose(const unsigned char *bytes)
{
    return bytes[0] | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

// Writes four hexadecimal digits, the highest first, computed together: one in each byte.
[[gnu::always_inline]] inline void put_four_digits(char *at, std::uint32_t value)
{
    constexpr std::uint32_t each = 0x01010101;
    const std::uint32_t pairs = value >> 8 | (value & 0xff) << 16;
    const std::uint32_t digits = (pairs >> 4 & 0x000f000f) | (pairs & 0x000f000f) << 8;
    const std::uint32_t letters = (digits + 6 * each) >> 4 & each;
    const std::uint32_t text = digits + '0' * each + ('a' - '0' - 10) * letters;
    at[0] = static_cast<char>(text);
    at[1] = static_cast<char>(text >> 8);
    at[2] = static_cast<char>(text >> 16);
    at[3] = static_cast<char>(text >> 24);
}

// Completes "0x" to what "%#x" prints: adds the digits, or for zero steps back to the "0". Writes
// up to three bytes past the end it returns.
[[gnu::always_inline]] inline char *put_hex(char *at, std::uint32_t value)
{
    if (value == 0)
        return at - 1;
    const unsigned digits = (static_cast<unsigned>(std::bit_width(value)) + 3) / 4;
    value <<= 32 - 4 * digits;
    put_four_digits(at, value >> 16);
    if (digits > 4)
        put_four_digits(at + 4, value & 0xffff);
    return at + digits;
}

} // namespace

void dump_record(const void *record, int number)
{
    const std::size_t size = record_rows[number].size;
    if (record == nullptr || !can_read(record, static_cast<std::uint32_t>(size)))
        return;
    const auto &plan = plan_for(number);
    // Kept for the next dump, but nobody else's meanwhile: what takes the text may run a script
    // that dumps another record. A value is always read as four bytes and written with at least
    // four digits.
    static std::vector<char> kept;
    std::vector<char> memory;
    memory.swap(kept);
    const std::size_t most = plan.longest() + 4;
    if (memory.size() < most + size + 3)
        memory.resize(most + size + 3);
    char *const lines = memory.data();
    auto *const bytes = reinterpret_cast<unsigned char *>(lines + most);
    std::memcpy(bytes, record, size);

    const char *text = plan.text().data();
    char *at = lines;
    for (const dump_step step : plan.steps()) {
        std::memcpy(at, text, step.text_length);
        text += step.text_length;
        at += step.text_length;
        at = put_hex(at, compose(bytes + step.offset) >> step.shift & step.mask);
    }
    const auto rest = static_cast<std::size_t>(plan.text().data() + plan.text().size() - text);
    std::memcpy(at, text, rest);
    write_output({lines, static_cast<std::size_t>(at + rest - lines)});
    memory.swap(kept);
}

} // namespace qxsh
