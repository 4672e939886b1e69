// Building Tcl values from the events of nlohmann's JSON parser; see json_reader.h.
#include "library/qx/json_reader.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace qxsh {

namespace {

// Where a text is wrong, and what is. The text around the place may be a key and is not shown.
struct json_mistake
{
    int line = 0;   // from 1
    int column = 0; // from 1, in characters
    std::string what;
};

using json = nlohmann::json;

constexpr int most_depth = 32; // records nest six deep
constexpr const char *no_integer = "the number is not an integer, or too large";

// Notes how far the parser has read, which its events do not say.
class cursor
{
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    cursor(const char *at, const char **read) : at_(at), read_(read) {}
    reference operator*() const { return *at_; }
    cursor &operator++()
    {
        *read_ = ++at_;
        return *this;
    }
    bool operator==(const cursor &other) const { return at_ == other.at_; }
    bool operator!=(const cursor &other) const { return at_ != other.at_; }

private:
    const char *at_;
    const char **read_;
};

// The start of the word, number or text that ends at `end`.
const char *start_of(const char *begin, const char *end)
{
    const char *at = end - 1;
    if (*at != '"') {
        while (at > begin && std::strchr("+-.0123456789Eaeflnrstu", at[-1]) != nullptr)
            --at;
        return at;
    }
    while (at > begin) {
        --at;
        const char *slash = at;
        while (slash > begin && slash[-1] == '\\')
            --slash;
        if (*at == '"' && (at - slash) % 2 == 0)
            break;
    }
    return at;
}

// An empty list that has the type of lists, which Tcl's own does not.
Tcl_Obj *new_list()
{
    Tcl_Obj *const element = Tcl_NewObj();
    Tcl_Obj *const list = Tcl_NewListObj(1, &element);
    Tcl_ListObjReplace(nullptr, list, 0, 1, 0, nullptr);
    return list;
}

class value_builder
{
public:
    value_builder(std::string_view text, json_mistake &mistake) : text_(text), mistake_(mistake) {}
    ~value_builder()
    {
        for (int i = 0; i < depth_; ++i)
            if (levels_[i].key != nullptr)
                Tcl_DecrRefCount(levels_[i].key);
        if (root_ != nullptr)
            Tcl_DecrRefCount(root_);
    }
    value_builder(const value_builder &) = delete;
    value_builder &operator=(const value_builder &) = delete;

    Tcl_Obj *build();

    // The parser's events; false ends the parsing.
    bool null() { return refuse("null is neither a number, a text, a list nor an object"); }
    bool boolean(bool) { return refuse("true and false are written 1 and 0"); }
    bool number_integer(json::number_integer_t value) { return put(Tcl_NewWideIntObj(value)); }
    bool number_unsigned(json::number_unsigned_t value)
    {
        return value > static_cast<json::number_unsigned_t>(INT64_MAX)
                   ? refuse_number("the number is too large")
                   : put(Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(value)));
    }
    bool number_float(json::number_float_t, const std::string &)
    {
        return refuse_number(no_integer);
    }
    bool string(const std::string &value)
    {
        return value.find('\0') != value.npos ? refuse("the text has a null character in it")
                                              : put(text_object(value));
    }
    bool binary(json::binary_t &) { return false; }
    bool start_object(std::size_t) { return open(Tcl_NewDictObj(), true); }
    bool start_array(std::size_t) { return open(new_list(), false); }
    bool end_object() { return close(); }
    bool end_array() { return close(); }
    bool key(const std::string &name);
    bool parse_error(std::size_t, const std::string &, const json::exception &mistake);

private:
    struct level
    {
        Tcl_Obj *container;
        bool is_object;
        Tcl_Obj *key; // of the next value; owned here
    };

    static Tcl_Obj *text_object(const std::string &text)
    {
        return Tcl_NewStringObj(text.data(), static_cast<int>(text.size()));
    }
    bool put(Tcl_Obj *value);
    bool open(Tcl_Obj *container, bool is_object);
    bool close()
    {
        --depth_;
        return true;
    }
    const char *token() const;
    bool refuse(const std::string &what);
    bool refuse_number(const std::string &what)
    {
        is_number_ = true;
        return refuse(what);
    }
    void note(const char *at, const std::string &what);

    const std::string_view text_;
    json_mistake &mistake_;
    const char *read_ = nullptr;
    bool is_number_ = false; // the token that has just been read
    Tcl_Obj *root_ = nullptr;
    level levels_[most_depth];
    int depth_ = 0;
};

void value_builder::note(const char *at, const std::string &what)
{
    const char *line = text_.data();
    mistake_.line = 1;
    for (const char *each = line; each < at; ++each) {
        if (*each == '\n') {
            ++mistake_.line;
            line = each + 1;
        }
    }
    const auto is_first_byte = [](char byte) { return (byte & 0xc0) != 0x80; };
    mistake_.column = 1 + static_cast<int>(std::count_if(line, at, is_first_byte));
    mistake_.what = what;
}

// The start of the token that has just been read. Behind a number, one more character has been,
// unless the text ends there.
const char *value_builder::token() const
{
    const auto is_of_number = [](char c) { return std::strchr("+-.0123456789Ee", c) != nullptr; };
    const char *end = read_;
    if (end - text_.data() > 1 && !is_of_number(end[-1]) && is_of_number(end[-2]) && is_number_)
        --end;
    return start_of(text_.data(), end);
}

bool value_builder::refuse(const std::string &what)
{
    note(token(), what);
    return false;
}

// A value that has no place is freed.
bool value_builder::put(Tcl_Obj *value)
{
    if (depth_ == 0) {
        root_ = value;
        Tcl_IncrRefCount(root_);
        return true;
    }
    level &top = levels_[depth_ - 1];
    if (top.is_object) {
        Tcl_DictObjPut(nullptr, top.container, top.key, value);
        Tcl_DecrRefCount(top.key);
        top.key = nullptr;
    } else {
        Tcl_ListObjAppendElement(nullptr, top.container, value);
    }
    return true;
}

bool value_builder::open(Tcl_Obj *container, bool is_object)
{
    put(container);
    if (depth_ == most_depth)
        return refuse("nested more than " + std::to_string(most_depth) + " deep");
    levels_[depth_++] = {container, is_object, nullptr};
    return true;
}

bool value_builder::key(const std::string &name)
{
    level &top = levels_[depth_ - 1];
    Tcl_Obj *earlier = nullptr;
    if (name.find('\0') != name.npos)
        return refuse("the name has a null character in it");
    top.key = text_object(name);
    Tcl_IncrRefCount(top.key);
    Tcl_DictObjGet(nullptr, top.container, top.key, &earlier);
    return earlier == nullptr || refuse("\"" + name + "\" is given twice");
}

// The parser's message, without what it has read; of a number that no double can hold, our own.
bool value_builder::parse_error(std::size_t, const std::string &, const json::exception &mistake)
{
    constexpr int number_overflow = 406;
    if (mistake.id == number_overflow)
        return refuse_number(no_integer);
    std::string what = mistake.what();
    if (const auto start = what.find(" - "); start != what.npos)
        what.erase(0, start + 3);
    else if (const auto colon = what.find(": "); colon != what.npos)
        what.erase(0, colon + 2);
    what.erase(std::min(what.size(), what.find("; last read:")));
    is_number_ = what.starts_with("unexpected number");
    note(is_number_ ? token() : std::max(text_.data(), read_ - 1), what);
    return false;
}

Tcl_Obj *value_builder::build()
{
    const char *const begin = text_.data();
    read_ = begin;
    bool good = json::sax_parse(cursor{begin, &read_}, cursor{begin + text_.size(), &read_}, this);
    // To the parser, a null character is the end of the text.
    if (const auto null = text_.find('\0'); good && null != text_.npos) {
        note(begin + null, "unexpected null character; expected end of input");
        good = false;
    }
    Tcl_Obj *const value = root_;
    if (!good || value == nullptr)
        return nullptr;
    root_ = nullptr;
    return value;
}

} // namespace

Tcl_Obj *read_json(Tcl_Interp *interp, const std::string &source, std::string_view text)
{
    json_mistake mistake;
    Tcl_Obj *const value = value_builder{text, mistake}.build();
    if (value != nullptr)
        return value;
    const std::string line = std::to_string(mistake.line);
    const std::string column = std::to_string(mistake.column);
    Tcl_ResetResult(interp);
    Tcl_SetErrorCode(interp, "QX", "JSON", line.c_str(), column.c_str(), nullptr);
    Tcl_AppendResult(interp, source.c_str(), line.c_str(), ":", column.c_str(), ": ",
                     mistake.what.c_str(), nullptr);
    return nullptr;
}

} // namespace qxsh
