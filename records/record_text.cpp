// A record as a JSON object; see record_text.h.
#include "records/record_text.h"

#include "record_numbers.h"
#include "records/values.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace qxsh {

// Constant texts are copied in pieces of this size, which is faster than to their exact length.
static constexpr std::size_t piece = 16;
static constexpr std::size_t digits_of_number = 10;
static constexpr char hexadecimal_digits[] = "0123456789abcdef";

static std::string length_of(const unsigned char *, std::size_t size, const void *)
{
    return std::to_string(size) + " bytes";
}

constinit const hidden_text length_text{length_of, nullptr};

void append_number(std::string &to, std::uint64_t value)
{
    char digits[20];
    to.append(digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

const record_text &record_text::of(int record)
{
    static const record_text *prepared[record_count]; // never released
    const record_text *&one = prepared[record];
    if (one == nullptr)
        one = new record_text(record);
    return *one;
}

record_text::record_text(int record)
{
    const record_row &row = record_rows[record];
    static constexpr holding key = holding::key;
    unsigned char secret[most_record_bytes] = {};
    mark_fields(secret, row, &key);
    text_ = "{";
    add_record(row, 0, secret);
    add_padding(row);
    text_ += '}';
    add_step({});
    text_.append(piece, ' ');
}

void record_text::add_step(step one)
{
    one.text = static_cast<std::uint32_t>(text_.size());
    steps_.push_back(one);
}

void record_text::add_record(const record_row &row, unsigned offset, const unsigned char *secret)
{
    for (const field_row &field : fields_of(row)) {
        if (&field != fields_of(row).data())
            text_ += ", ";
        text_ += std::string{"\""} + field.name.text() + "\": ";
        add_field(field, offset + field.offset, secret);
    }
}

void record_text::add_field(const field_row &field, unsigned offset, const unsigned char *secret)
{
    const unsigned count = elements_of(field);
    const record_row *const inner = record_in(field);
    const unsigned char *const end = secret + offset + count * field.size;
    std::size_t hider = 0;
    if (inner == nullptr && std::find(secret + offset, end, 1) != end) {
        add_step({.text = 0,
                  .offset = static_cast<std::uint16_t>(offset),
                  .size = static_cast<std::uint16_t>(count * field.size),
                  .what = step::value::secret});
        hider = steps_.size();
    }
    if (field.count != 0)
        text_ += '[';
    for (unsigned index = 0; index < count; ++index) {
        const unsigned place = offset + index * field.size;
        if (index != 0)
            text_ += ", ";
        if (inner == nullptr) {
            add_step({.text = 0,
                      .offset = static_cast<std::uint16_t>(place),
                      .size = field.size,
                      .what = step::value::number,
                      .bit = field.bit,
                      .width = field.width});
            continue;
        }
        text_ += '{';
        add_record(*inner, place, secret);
        text_ += '}';
    }
    if (field.count != 0)
        text_ += ']';
    if (hider != 0) {
        add_step({});
        steps_[hider - 1].rest = static_cast<std::uint16_t>(steps_.size() - hider);
    }
}

// A step for each run of bytes with bits that are in no field.
void record_text::add_padding(const record_row &row)
{
    unused_.assign(row.size, 0);
    mark_bits(unused_.data(), row);
    for (unsigned char &one : unused_)
        one = static_cast<unsigned char>(~one);
    for (unsigned at = 0; at < row.size; ++at) {
        const unsigned start = at;
        while (at < row.size && unused_[at] != 0)
            ++at;
        if (at > start)
            add_step({.text = 0,
                      .offset = static_cast<std::uint16_t>(start),
                      .size = static_cast<std::uint16_t>(at - start),
                      .what = step::value::padding});
    }
}

// The longest pieces of padding without a zero.
void record_text::append_padding(std::string &to, const unsigned char *bytes, const step &run) const
{
    const auto value = [&](unsigned at) { return bytes[at] & unused_[at]; };
    const unsigned end = run.offset + run.size;
    for (unsigned at = run.offset; at < end;) {
        if (value(at) == 0) {
            ++at;
            continue;
        }
        to += ", \"padding(";
        append_number(to, at);
        to += ")\": \"";
        for (; at < end && value(at) != 0; ++at) {
            to += hexadecimal_digits[value(at) >> 4];
            to += hexadecimal_digits[value(at) & 15];
        }
        to += '"';
    }
}

static char *put_number(char *to, std::uint32_t value)
{
    if (value < 10) {
        *to = static_cast<char>('0' + value);
        return to + 1;
    }
    return std::to_chars(to, to + digits_of_number, value).ptr;
}

static char *put_text(char *to, const char *from, std::size_t size)
{
    std::size_t done = 0;
    do
        std::memcpy(to + done, from + done, piece);
    while ((done += piece) < size);
    return to + size;
}

void record_text::append(std::string &to, const unsigned char *bytes,
                         const hidden_text *hidden) const
{
    const char *from = text_.data();
    const step *one = steps_.data();
    const step *const end = one + steps_.size();
    // Makes room for the longest text that may still come without hidden ones and padding.
    const auto grown = [&] {
        const std::size_t used = to.size();
        to.resize(used + static_cast<std::size_t>(text_.data() + text_.size() - from) +
                  static_cast<std::size_t>(end - one) * digits_of_number);
        return to.data() + used;
    };
    char *at = grown();
    for (; one != end; ++one) {
        const char *const until = text_.data() + one->text;
        at = put_text(at, from, static_cast<std::size_t>(until - from));
        from = until;
        if (one->what == step::value::number) {
            const std::uint32_t value = read_number(bytes + one->offset, one->size);
            at = put_number(at,
                            one->width == 0 ? value : value >> one->bit & bit_mask(0, one->width));
            continue;
        }
        const unsigned char *const start = bytes + one->offset;
        const bool hides = one->what == step::value::secret && hidden != nullptr;
        // Most padding is all zero.
        const bool pads = one->what == step::value::padding &&
                          std::find_if(start, start + one->size, [](unsigned char byte) {
                              return byte != 0;
                          }) != start + one->size;
        if (!hides && !pads)
            continue;
        // Texts of any length, so there must be room again behind them.
        to.resize(static_cast<std::size_t>(at - to.data()));
        if (hides) {
            to += '"';
            to += hidden->make(start, one->size, hidden->context);
            to += '"';
            one += one->rest;
            from = text_.data() + one->text;
        } else {
            append_padding(to, bytes, *one);
        }
        at = grown();
    }
    to.resize(static_cast<std::size_t>(at - to.data()));
}

} // namespace qxsh
