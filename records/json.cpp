// Text in JSON; see json.h.
#include "records/json.h"

namespace qxsh {

static constexpr char hexadecimal_digits[] = "0123456789abcdef";

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
    begin_value();
    text_ += '"';
    text_ += text;
    text_ += "\": ";
    named_ = true;
    return *this;
}

json_text &json_text::number(std::uint64_t value)
{
    begin_value();
    append_number(text_, value);
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
    while (*text != '\0') {
        const char *end = text;
        while (static_cast<unsigned char>(*end) >= 0x20 && *end != '"' && *end != '\\')
            ++end;
        text_.append(text, end);
        text = end;
        const auto byte = static_cast<unsigned char>(*text);
        if (byte == '\0')
            break;
        if (byte < 0x20) {
            text_ += "\\u00";
            text_ += hexadecimal_digits[byte >> 4];
            text_ += hexadecimal_digits[byte & 15];
        } else {
            text_ += '\\';
            text_ += *text;
        }
        ++text;
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

json_text &json_text::record(const void *bytes, int number)
{
    begin_value();
    record_text::of(number).append(text_, static_cast<const unsigned char *>(bytes),
                                   keys_ ? nullptr : hidden_);
    return *this;
}

} // namespace qxsh
