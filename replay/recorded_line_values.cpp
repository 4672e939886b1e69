// The values of a call's line, put into the call.
#include "replay/recorded_line.h"

#include "record_numbers.h"
#include "records/values.h"

#include <charconv>
#include <cstring>

namespace qxsh {

namespace {

const call_row *call_named(const std::string &name)
{
    for (const call_row &row : std::span{call_rows, call_count})
        if (name == row.name.text())
            return &row;
    return nullptr;
}

// "1700000000.123456" as microseconds.
bool read_seconds(const std::string &text, std::int64_t &time)
{
    const std::size_t point = text.find('.');
    std::string digits = text.substr(0, point);
    std::string fraction = point == text.npos ? "" : text.substr(point + 1);
    if (fraction.size() > 6)
        return false;
    fraction.append(6 - fraction.size(), '0');
    digits += fraction;
    const char *const end = digits.data() + digits.size();
    const auto [read, error] = std::from_chars(digits.data(), end, time);
    return error == std::errc{} && read == end && time >= 0;
}

} // namespace

bool recorded_line::fits(std::uint64_t value, unsigned bits)
{
    if (value >> bits == 0)
        return true;
    const bool whole = bits % 8 == 0;
    const unsigned count = whole ? bits / 8 : bits;
    return refuse("the number is too large for " + std::to_string(count) +
                  (whole ? " byte" : " bit") + (count == 1 ? "" : "s"));
}

// Sets bits of the memory. Members of a union tell the same bits several times.
bool recorded_line::put(std::uint32_t at, unsigned size, std::uint32_t mask, std::uint32_t value)
{
    unsigned char *const bytes = memory().bytes.data() + at;
    unsigned char *const told = told_.data() + at;
    const std::uint32_t old = read_number(bytes, size);
    const std::uint32_t known = read_number(told, size);
    if (((old ^ value) & known & mask) != 0)
        return refuse("the members of a union contradict each other");
    write_number(bytes, size, old | (value & mask));
    write_number(told, size, known | mask);
    return true;
}

bool recorded_line::put(std::uint32_t at, const field_row &field, std::uint64_t value)
{
    const std::uint32_t inside = at - levels_.back().outer;
    if (keys_ != recorded_keys::clear &&
        std::memchr(secret_.data() + inside, 1, field.size) != nullptr)
        return refuse("a key in the clear, where the header says otherwise");
    const unsigned bits = field.width != 0 ? field.width : 8 * field.size;
    const std::uint32_t mask = bit_mask(field.width != 0 ? field.bit : 0, bits);
    return fits(value, bits) &&
           put(at, field.size, mask, static_cast<std::uint32_t>(value) << field.bit);
}

bool recorded_line::line_number(std::uint64_t value)
{
    switch (levels_.back().member) {
    case line_call:
        call_->number = value;
        return true;
    case line_process:
        call_->process = static_cast<std::uint32_t>(value);
        return fits(value, 32);
    case line_time:
        return number_float(0, std::to_string(value));
    case line_status:
        call_->status = static_cast<std::uint32_t>(value);
        return fits(value, 32);
    case line_microseconds:
        call_->microseconds = value;
        return true;
    default:
        return unexpected("a number");
    }
}

bool recorded_line::number_unsigned(std::uint64_t value)
{
    if (levels_.empty())
        return unexpected("a number");
    level &top = levels_.back();
    switch (top.what) {
    case kind::line:
        return line_number(value);
    case kind::arguments:
        if (argument().pointer)
            return unexpected("a number");
        call_->arguments[argument_].value = static_cast<std::uint32_t>(value);
        return fits(value, 8 * argument().size);
    case kind::memory:
    case kind::elements:
        if (argument().record >= 0 || (argument().count >= 0) != (top.what == kind::elements))
            return unexpected("a number");
        if (top.what == kind::elements && !next_element(most_recorded_elements))
            return false;
        grow_memory();
        return fits(value, 8 * argument().size) &&
               put(static_cast<std::uint32_t>(memory().bytes.size() - argument().size),
                   argument().size, UINT32_MAX, static_cast<std::uint32_t>(value));
    case kind::record:
        if (on_padding() || field().record >= 0 || field().count != 0)
            return unexpected("a number");
        return put(top.at + field().offset, field(), value);
    case kind::numbers:
        return next_element(top.field->count) &&
               put(top.at + (top.count - 1) * top.field->size, *top.field, value);
    default:
        return unexpected("a number");
    }
}

bool recorded_line::number_integer(std::int64_t)
{
    return unexpected("a negative number");
}

bool recorded_line::number_float(double, const std::string &text)
{
    if (levels_.empty() || levels_.back().what != kind::line || levels_.back().member != line_time)
        return unexpected(too_large);
    call_->time_us.emplace();
    return read_seconds(text, *call_->time_us) ||
           refuse("expected seconds since 1970 with at most six decimals");
}

bool recorded_line::null()
{
    if (levels_.empty() || levels_.back().what != kind::arguments || !argument().pointer)
        return unexpected("null");
    call_->arguments[argument_].null = true;
    return true;
}

bool recorded_line::boolean(bool value)
{
    if (levels_.empty() || levels_.back().what != kind::line || levels_.back().member != line_fault)
        return unexpected(value ? "true" : "false");
    call_->fault = value;
    return true;
}

bool recorded_line::string(const std::string &text)
{
    if (levels_.empty())
        return unexpected("a text");
    switch (levels_.back().what) {
    case kind::line:
        return line_text(text);
    case kind::memory:
        if (text != "not read")
            return unexpected("a text");
        memory().read = false;
        return true;
    case kind::record:
        return on_padding() ? padding(text) : hidden_field(text);
    default:
        return unexpected("a text");
    }
}

bool recorded_line::line_text(const std::string &text)
{
    switch (levels_.back().member) {
    case line_function:
        call_->row = call_named(text);
        if (call_->row == nullptr)
            return refuse("the SDK has no function " + quoted(text));
        call_->arguments.resize(call_->row->arguments);
        return true;
    case line_name:
        return true;
    default:
        return unexpected("a text");
    }
}

// The text in place of a key, or of a field that shares bytes with one.
bool recorded_line::hidden_field(const std::string &text)
{
    const level &top = levels_.back();
    const field_row &row = field();
    const std::uint32_t size = elements_of(row) * row.size;
    const std::uint32_t at = top.at + row.offset;
    if (row.record >= 0 || keys_ == recorded_keys::clear ||
        std::memchr(secret_.data() + (at - top.outer), 1, size) == nullptr)
        return unexpected("a text");
    std::string form = std::to_string(size) + " bytes";
    if (keys_ == recorded_keys::fingerprints) {
        form += ", ";
        if (text.size() != form.size() + 16 || !text.starts_with(form) ||
            !from_hexadecimal(std::string_view{text}.substr(form.size())))
            return refuse("expected \"" + form + "\" and 16 hexadecimal digits");
    } else if (text != form) {
        return refuse("expected \"" + form + "\"");
    }
    memory().keys.push_back({at, size, text});
    return true;
}

bool recorded_line::padding(const std::string &text)
{
    const level &top = levels_.back();
    const std::optional<std::string> bytes = from_hexadecimal(text);
    if (!bytes || bytes->empty())
        return refuse("expected pairs of hexadecimal digits, in lower case");
    if (padding_at_ >= top.record->size || bytes->size() > top.record->size - padding_at_)
        return refuse("is not in the record");
    unsigned char used[most_record_bytes];
    std::memset(used, 0, top.record->size);
    mark_bits(used, *top.record);
    const std::uint32_t at = top.at + padding_at_;
    for (std::size_t i = 0; i < bytes->size(); ++i) {
        const auto value = static_cast<unsigned char>((*bytes)[i]);
        const unsigned char field_bits = used[padding_at_ + i];
        if (field_bits == 255 || (value & field_bits) != 0)
            return refuse("these bits are not all in no field");
        if ((told_[at + i] & ~field_bits) != 0)
            return refuse("is given twice");
        memory().bytes[at + i] |= value;
        told_[at + i] |= static_cast<unsigned char>(~field_bits);
    }
    return true;
}

} // namespace qxsh
