// Text in JSON; see json.h.
#include "records/json.h"

#include "record_numbers.h"
#include "records/values.h"

#include <algorithm>

namespace qxsh {

static constexpr char hexadecimal_digits[] = "0123456789abcdef";

static std::string length_of(const unsigned char *, std::size_t size, const void *)
{
    return std::to_string(size) + " bytes";
}

constinit const hidden_text length_text{length_of, nullptr};

void json_text::new_line()
{
    text_ += '\n';
    text_.append(levels_.size() * 2, ' ');
}

void json_text::begin_value()
{
    if (named_) {
        named_ = false;
        return;
    }
    if (levels_.empty())
        return;
    level &inner = levels_.back();
    if (!inner.empty)
        text_ += inner.style == layout::lines ? "," : ", ";
    inner.empty = false;
    if (inner.style == layout::lines)
        new_line();
}

json_text &json_text::open(char bracket, layout style)
{
    begin_value();
    text_ += bracket;
    levels_.push_back({bracket == '{' ? '}' : ']', style});
    return *this;
}

json_text &json_text::end()
{
    const level inner = levels_.back();
    levels_.pop_back();
    if (inner.style == layout::lines && !inner.empty)
        new_line();
    text_ += inner.closing;
    return *this;
}

json_text &json_text::name(const char *text)
{
    string(text);
    text_ += ": ";
    named_ = true;
    return *this;
}

json_text &json_text::number(std::uint64_t value)
{
    begin_value();
    text_ += std::to_string(value);
    return *this;
}

json_text &json_text::flag(bool value)
{
    begin_value();
    text_ += value ? "true" : "false";
    return *this;
}

json_text &json_text::null()
{
    begin_value();
    text_ += "null";
    return *this;
}

json_text &json_text::string(const char *text)
{
    begin_value();
    text_ += '"';
    for (; *text != '\0'; ++text) {
        const auto byte = static_cast<unsigned char>(*text);
        if (byte < 0x20) {
            text_ += "\\u00";
            text_ += hexadecimal_digits[byte >> 4];
            text_ += hexadecimal_digits[byte & 15];
            continue;
        }
        if (byte == '"' || byte == '\\')
            text_ += '\\';
        text_ += *text;
    }
    text_ += '"';
    return *this;
}

json_text &json_text::raw(const std::string &text)
{
    begin_value();
    text_ += text;
    return *this;
}

void json_text::field(const unsigned char *bytes, const unsigned char *secret,
                      const field_row &field)
{
    const unsigned count = elements_of(field);
    const unsigned size = count * field.size;
    const record_row *const inner = record_in(field);
    name(field.name.text());
    if (secret != nullptr)
        secret += field.offset;
    if (inner == nullptr && secret != nullptr &&
        std::find(secret, secret + size, 1) != secret + size) {
        string(hidden_->make(bytes + field.offset, size, hidden_->context).c_str());
        return;
    }
    if (field.count != 0)
        array();
    for (unsigned index = 0; index < count; ++index) {
        if (inner == nullptr)
            number(read_field(bytes, field, index));
        else
            fields(place_of(bytes, field, index),
                   secret != nullptr ? secret + index * field.size : nullptr, *inner);
    }
    if (field.count != 0)
        end();
}

void json_text::fields(const unsigned char *bytes, const unsigned char *secret,
                       const record_row &row)
{
    object();
    members(bytes, secret, row);
    end();
}

void json_text::members(const unsigned char *bytes, const unsigned char *secret,
                        const record_row &row)
{
    for (const field_row &one : fields_of(row))
        field(bytes, secret, one);
}

// The text in hexadecimal, two digits a byte.
static std::string hexadecimal(const unsigned char *bytes, std::size_t size)
{
    std::string text;
    for (const unsigned char *byte = bytes; byte != bytes + size; ++byte) {
        text += hexadecimal_digits[*byte >> 4];
        text += hexadecimal_digits[*byte & 15];
    }
    return text;
}

void json_text::padding(const unsigned char *bytes, const record_row &row)
{
    unsigned char used[most_record_bytes];
    std::memset(used, 0, row.size);
    mark_fields(used, row);
    for (unsigned start = 0; start < row.size; ++start) {
        if (used[start] != 0 || bytes[start] == 0)
            continue;
        unsigned end = start;
        while (end < row.size && used[end] == 0 && bytes[end] != 0)
            ++end;
        name(("padding(" + std::to_string(start) + ")").c_str());
        string(hexadecimal(bytes + start, end - start).c_str());
        start = end;
    }
}

json_text &json_text::record(const void *bytes, int number)
{
    const record_row &row = record_rows[number];
    static constexpr holding key = holding::key;
    unsigned char secret[most_record_bytes];
    std::memset(secret, 0, row.size);
    if (!keys_)
        mark_fields(secret, row, &key);
    const auto *const start = static_cast<const unsigned char *>(bytes);
    object();
    members(start, keys_ ? nullptr : secret, row);
    padding(start, row);
    return end();
}

} // namespace qxsh
