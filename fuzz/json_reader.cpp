// JSON's grammar, each rule a function that takes what it reads off the text.
#include "fuzz/json_reader.h"

namespace fuzz {

namespace {

constexpr unsigned deepest = 64;

bool value(std::string_view &text, unsigned depth);

void blanks(std::string_view &text)
{
    while (!text.empty() && std::string_view{" \t\r\n"}.find(text[0]) != text.npos)
        text.remove_prefix(1);
}

bool take(std::string_view &text, std::string_view wanted)
{
    if (!text.starts_with(wanted))
        return false;
    text.remove_prefix(wanted.size());
    return true;
}

bool string(std::string_view &text)
{
    if (!take(text, "\""))
        return false;
    while (!text.empty() && text[0] != '"') {
        if (static_cast<unsigned char>(text[0]) < ' ')
            return false;
        const bool escape = text[0] == '\\';
        if (escape && (text.size() < 2 ||
                       std::string_view{"\"\\/bfnrtu"}.find(text[1]) == std::string_view::npos))
            return false;
        text.remove_prefix(escape ? 2 : 1);
    }
    return take(text, "\"");
}

bool number(std::string_view &text)
{
    take(text, "-");
    const auto digits = [&] {
        bool any = false;
        for (; !text.empty() && text[0] >= '0' && text[0] <= '9'; any = true)
            text.remove_prefix(1);
        return any;
    };
    return digits() && (!take(text, ".") || digits());
}

template <class Item> bool list(std::string_view &text, std::string_view end, Item item)
{
    blanks(text);
    if (take(text, end))
        return true;
    do {
        blanks(text);
        if (!item())
            return false;
        blanks(text);
    } while (take(text, ","));
    return take(text, end);
}

bool value(std::string_view &text, unsigned depth)
{
    if (depth > deepest)
        return false;
    const auto item = [&] { return value(text, depth + 1); };
    const auto member = [&] {
        if (!string(text))
            return false;
        blanks(text);
        return take(text, ":") && item();
    };
    blanks(text);
    if (take(text, "{"))
        return list(text, "}", member);
    if (take(text, "["))
        return list(text, "]", item);
    if (text.starts_with('"'))
        return string(text);
    return take(text, "null") || take(text, "true") || take(text, "false") || number(text);
}

} // namespace

bool is_json(std::string_view text)
{
    if (!value(text, 0))
        return false;
    blanks(text);
    return text.empty();
}

} // namespace fuzz
