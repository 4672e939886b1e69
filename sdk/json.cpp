// Text in JSON.
#include "json.h"

namespace qxsim {

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
    static constexpr char digits[] = "0123456789abcdef";
    begin_value();
    text_ += '"';
    for (; *text != '\0'; ++text) {
        const auto byte = static_cast<unsigned char>(*text);
        if (byte < 0x20) {
            text_ += "\\u00";
            text_ += digits[byte >> 4];
            text_ += digits[byte & 15];
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

void json_text::field(const void *bytes, const field_description &field)
{
    const unsigned count = field.count == 0 ? 1 : field.count;
    name(field.name);
    if (field.secret && !keys_) {
        string((std::to_string(count) + " bytes").c_str());
        return;
    }
    if (field.count != 0)
        array();
    for (unsigned index = 0; index < count; ++index) {
        if (field.record != nullptr)
            record(static_cast<const unsigned char *>(bytes) + field.offset +
                       index * field.record->size,
                   *field.record);
        else
            number(read_field(bytes, field, index));
    }
    if (field.count != 0)
        end();
}

json_text &json_text::record(const void *bytes, const record_description &description)
{
    object();
    for (const field_description &one : description.fields)
        field(bytes, one);
    return end();
}

} // namespace qxsim
