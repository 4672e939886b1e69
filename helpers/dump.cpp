// The dump writer; see dump.h. What is the same in every dump of a type (names, indices, line ends,
// positions of values) is computed once; after that a dump is a copy of the record, a loop over its
// values, and one write.
#include "helpers/dump.h"

#include "helpers/guarded_memory.h"
#include "helpers/output.h"
#include "record_numbers.h"
#include "records/values.h"

#include <array>
#include <bit>
#include <cstring>
#include <string>
#include <vector>

namespace qxsh {

namespace {

/// Texts are copied in pieces of this size, which the compiler knows. Nearly all are one piece.
constexpr std::size_t piece_size = 32;

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
        text_.append(piece_size, '\0');
    }

    const std::vector<dump_step> &steps() const { return steps_; }
    /// The texts before the values, joined. The last one may be read to the end of its piece.
    const char *text() const { return text_.data(); }
    /// The end of the last line.
    const std::string &last_end() const { return gap_; }
    /// The length of the longest possible dump in characters, with its last piece.
    std::size_t longest() const
    {
        return text_.size() + digits_of_value * steps_.size() + gap_.size();
    }

    static constexpr std::size_t digits_of_value = 8;

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

// Copies a text that is not empty, and what follows it to the end of its piece. Returns the text's
// end.
char *put_text(char *at, const char *text, std::size_t length)
{
    std::size_t done = 0;
    do {
        std::memcpy(at + done, text + done, piece_size);
        done += piece_size;
    } while (done < length);
    return at + length;
}

constexpr auto digits_of_bytes = [] {
    std::array<std::array<char, 2>, 256> all{};
    for (unsigned byte = 0; byte < 256; ++byte)
        all[byte] = {"0123456789abcdef"[byte / 16], "0123456789abcdef"[byte % 16]};
    return all;
}();

void put_byte(char *at, std::uint32_t byte)
{
    const auto [high, low] = digits_of_bytes[byte];
    at[0] = high;
    at[1] = low;
}

// Completes "0x" to what "%#x" prints: adds the digits, or for zero steps back to the "0". Always
// writes eight characters; those behind the end that it returns do not count.
char *put_hex(char *at, std::uint32_t value)
{
    if (value == 0)
        return at - 1;
    const int zeros = std::countl_zero(value) / 4;
    value <<= 4 * zeros;
    put_byte(at, value >> 24);
    put_byte(at + 2, value >> 16 & 0xff);
    put_byte(at + 4, value >> 8 & 0xff);
    put_byte(at + 6, value & 0xff);
    return at + 8 - zeros;
}

} // namespace

void dump_record(const void *record, int number)
{
    const std::size_t size = record_rows[number].size;
    if (record == nullptr || !can_read(record, static_cast<std::uint32_t>(size)))
        return;
    const auto &plan = plan_for(number);
    // Kept for the next dump, but nobody else's meanwhile: what takes the text may run a script
    // that dumps another record. A value is always read as four bytes.
    static std::vector<char> kept;
    std::vector<char> memory;
    memory.swap(kept);
    const std::size_t most = plan.longest();
    if (memory.size() < most + size + 3)
        memory.resize(most + size + 3);
    char *const lines = memory.data();
    auto *const bytes = reinterpret_cast<unsigned char *>(lines + most);
    std::memcpy(bytes, record, size);

    const char *text = plan.text();
    char *at = lines;
    for (const dump_step &step : plan.steps()) {
        at = put_text(at, text, step.text_length);
        text += step.text_length;
        at = put_hex(at, compose(bytes + step.offset) >> step.shift & step.mask);
    }
    at += plan.last_end().copy(at, plan.last_end().size());
    write_output({lines, static_cast<std::size_t>(at - lines)});
    memory.swap(kept);
}

} // namespace qxsh
