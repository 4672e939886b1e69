// What is said of a line that is not good: where, what, and nothing that may be a key.
#include "replay/recorded_line.h"

#include <algorithm>

namespace qxsh {

bool recorded_line::refuse(const std::string &what)
{
    const std::string place = path();
    mistake_ = place.empty() ? what : place + ": " + what;
    return false;
}

// The parser's message, without what it has read: that may be a key.
bool recorded_line::refuse_syntax(std::size_t at, const char *what)
{
    mistake_ = what;
    if (mistake_.find("number overflow") != mistake_.npos)
        return unexpected(too_large);
    if (const auto start = mistake_.find(" - "); start != mistake_.npos)
        mistake_.erase(0, start + 3);
    else if (const auto colon = mistake_.find("] "); colon != mistake_.npos)
        mistake_.erase(0, colon + 2);
    mistake_.erase(std::min(mistake_.size(), mistake_.find("; last read:")));
    const bool cut = mistake_.starts_with("unexpected end of input") ||
                     mistake_.find("missing closing quote") != mistake_.npos;
    mistake_ = cut ? "the line is cut off"
                   : "damaged JSON, column " + std::to_string(at) + ": " + mistake_;
    return false;
}

bool recorded_line::unexpected(const char *what)
{
    return refuse(std::string{"expected "} + expected() + ", not " + what);
}

// What may be at the place whose value comes.
const char *recorded_line::expected() const
{
    if (levels_.empty())
        return "a call, which is an object";
    const level &top = levels_.back();
    const auto value = [](bool array, bool record) {
        return array ? "an array" : record ? "an object" : "a number";
    };
    switch (top.what) {
    case kind::line:
        return top.member == line_function || top.member == line_name ? "a text"
               : top.member == line_fault                             ? "true or false"
                                          : value(false, top.member == line_arguments);
    case kind::arguments:
        return argument().pointer ? "an object or null" : "a number";
    case kind::memory:
        return value(argument().count >= 0, argument().record >= 0);
    case kind::elements:
        return value(false, argument().record >= 0);
    case kind::record:
        return on_padding() ? "a text of hexadecimal digits"
                            : value(field().count != 0, field().record >= 0);
    case kind::numbers:
        return "a number";
    default:
        return "an object";
    }
}

// The place whose value comes, such as "p_flow.before.tag(0).vlan_id".
std::string recorded_line::path() const
{
    std::string text;
    const auto add = [&text](const std::string &name) { text += text.empty() ? name : "." + name; };
    for (const level &one : levels_) {
        const bool named = one.member != UINT_MAX;
        switch (one.what) {
        case kind::line:
            // An argument's place begins with its own name.
            if (named && (one.member != line_arguments || &one == &levels_.back()))
                add(line_members[one.member]);
            break;
        case kind::arguments:
            if (named)
                add(argument().name.text());
            break;
        case kind::memory:
            if (named)
                add(memory_members[one.member]);
            break;
        case kind::record:
            if (named && one.member == padding_member)
                add("padding(" + std::to_string(padding_at_) + ")");
            else if (named)
                add(fields_of(*one.record)[one.member].name.text());
            break;
        default:
            if (one.count > 0)
                text += "(" + std::to_string(one.count - 1) + ")";
        }
    }
    return text;
}

// Text of a file for a message: short, and without what would confuse a terminal.
std::string recorded_line::quoted(const std::string &text)
{
    std::string result = "\"" + text.substr(0, 40);
    for (char &one : result)
        if (one < ' ' || one > '~')
            one = '?';
    return result + (text.size() > 40 ? "...\"" : "\"");
}

} // namespace qxsh
