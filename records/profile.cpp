// The reader of profiles. A line that is wrong throws its mistake, which read_profile catches.
#include "records/profile.h"

#include "default_profile.h"
#include "record_numbers.h"
#include "records/table.h"
#include "records/utf8.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <utility>

namespace qxsh {

namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::uint32_t status_limit = 65535;

struct mistake
{
    std::string text;
};

std::string quoted(std::string_view word)
{
    return "\"" + std::string{word} + "\"";
}

void check_text(std::string_view text)
{
    while (!text.empty()) {
        const auto first = static_cast<unsigned char>(text.front());
        const std::size_t length = sequence_length(text);
        if (length == 0)
            throw mistake{"not UTF-8"};
        if (first == 0x7f || (first < 0x20 && blanks.find(text.front()) == std::string_view::npos))
            throw mistake{"a control character"};
        text.remove_prefix(length);
    }
}

bool is_letter(char one)
{
    return (one >= 'a' && one <= 'z') || (one >= 'A' && one <= 'Z') || one == '_';
}

bool is_digit(char one)
{
    return one >= '0' && one <= '9';
}

// A letter or `_`, then letters, digits, `_` and the characters of `more`.
bool is_name(std::string_view word, std::string_view more)
{
    return is_letter(word.front()) && std::all_of(word.begin(), word.end(), [&](char one) {
               return is_letter(one) || is_digit(one) || more.find(one) != std::string_view::npos;
           });
}

std::uint32_t number_in(std::string_view word, std::uint32_t least, std::uint32_t limit)
{
    const bool hexadecimal = word.starts_with("0x") || word.starts_with("0X");
    const std::string_view digits = word.substr(hexadecimal ? 2 : 0);
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number,
                                              hexadecimal ? 16 : 10);
    if (error != std::errc{} || end != digits.data() + digits.size() || number < least ||
        number > limit)
        throw mistake{quoted(word) + " is not a number from " + std::to_string(least) + " to " +
                      std::to_string(limit)};
    return number;
}

// FIRST..LAST, or one number.
number_range range_in(std::string_view word, std::uint32_t least, std::uint32_t limit)
{
    const std::size_t dots = word.find("..");
    const std::uint32_t first = number_in(word.substr(0, dots), least, limit);
    return {first, dots == word.npos ? first : number_in(word.substr(dots + 2), first, limit)};
}

// The row with this name; null if there is none.
template <class Rows> auto *row_named(const Rows &rows, std::string_view name)
{
    const auto found = std::find_if(std::begin(rows), std::end(rows),
                                    [&](const auto &row) { return row.name.text() == name; });
    return found == std::end(rows) ? nullptr : &*found;
}

std::uint32_t greatest(unsigned bits)
{
    return bits >= 32 ? UINT32_MAX : (std::uint32_t{1} << bits) - 1;
}

// Why a field cannot have code words, as it is not shown as a number; empty if it is.
std::string_view what_it_holds(const field_row &field)
{
    if (field.record >= 0)
        return "a record, not a number";
    switch (field.holds) {
    case holding::number:
        return {};
    case holding::mac:
        return "a MAC address, not a number";
    case holding::family:
        return "an address family, whose words are ipv4 and ipv6; their numbers are family lines";
    case holding::key:
        return "a key, not a number";
    default:
        return "an IP address, not a number";
    }
}

std::uint32_t field_limit(const record_row &record, std::string_view place, std::string_view name)
{
    const field_row *const field = row_named(fields_of(record), name);
    if (field == nullptr)
        throw mistake{quoted(record.name.text()) + " has no field " + quoted(name)};
    if (const std::string_view other = what_it_holds(*field); !other.empty())
        throw mistake{std::string{place} + " is " + std::string{other}};
    return greatest(field->width != 0 ? field->width : field->size * 8u);
}

std::uint32_t argument_limit(const call_row &call, std::string_view place, std::string_view name)
{
    const argument_row *const argument = row_named(arguments_of(call), name);
    if (argument == nullptr)
        throw mistake{quoted(call.name.text()) + " has no argument " + quoted(name)};
    if (argument->record >= 0)
        throw mistake{std::string{place} + " is a record, not a number"};
    return greatest(argument->size * 8u);
}

// The greatest number that a field or an argument holds.
std::uint32_t limit_of(std::string_view place)
{
    const std::size_t point = place.find('.');
    if (point == std::string_view::npos)
        throw mistake{quoted(place) + " is neither RECORD.FIELD nor FUNCTION.ARGUMENT"};
    const std::string_view owner = place.substr(0, point);
    const std::string_view name = place.substr(point + 1);
    if (const auto *record = row_named(std::span{record_rows, record_count}, owner))
        return field_limit(*record, place, name);
    if (const auto *call = row_named(std::span{call_rows, call_count}, owner))
        return argument_limit(*call, place, name);
    throw mistake{"there is no record or function " + quoted(owner)};
}

class profile_reader
{
public:
    profile read(std::string_view text);
    unsigned line() const { return line_; }

private:
    void read_line(std::string_view text);
    std::string_view next_word();
    std::string_view needed_word();
    void end_line();
    void once(const std::string &what, const std::string &mistaken);

    void status();
    void code();
    void capacity();
    void size(std::string_view name);
    void family();
    void check_families();
    void ids();
    void loose();

    profile result_;
    std::set<std::string> taken_;
    std::string_view rest_;  ///< of the line
    std::string_view usage_; ///< the form of its kind
    unsigned line_ = 0;
};

// Takes the next word off the line; empty at its end.
std::string_view profile_reader::next_word()
{
    rest_.remove_prefix(std::min(rest_.find_first_not_of(blanks), rest_.size()));
    const std::string_view word = rest_.substr(0, rest_.find_first_of(blanks));
    rest_.remove_prefix(word.size());
    return word;
}

std::string_view profile_reader::needed_word()
{
    const std::string_view word = next_word();
    if (word.empty())
        throw mistake{"expected: " + std::string{usage_}};
    return word;
}

void profile_reader::end_line()
{
    if (!next_word().empty())
        throw mistake{"expected: " + std::string{usage_}};
}

void profile_reader::once(const std::string &what, const std::string &mistaken)
{
    if (!taken_.insert(what).second)
        throw mistake{mistaken};
}

void profile_reader::status()
{
    usage_ = "status NUMBER NAME MEANING";
    const std::uint32_t number = number_in(needed_word(), 0, status_limit);
    const std::string name{needed_word()};
    if (!is_name(name, {}))
        throw mistake{quoted(name) + " is not a name of letters, digits and _"};
    std::string_view meaning = rest_;
    meaning.remove_prefix(needed_word().data() - meaning.data());
    meaning = meaning.substr(0, meaning.find_last_not_of(blanks) + 1);
    once("status " + name, "status " + name + " is given twice");
    const std::string digits = std::to_string(number);
    once("status number " + digits, "status number " + digits + " is given twice");
    if (name == "QX_OK" && number != 0)
        throw mistake{"QX_OK is success, which is 0"};
    result_.statuses.push_back({number, name, std::string{meaning}, line_});
}

void profile_reader::code()
{
    usage_ = "code RECORD.FIELD NUMBER WORD, or code FUNCTION.ARGUMENT NUMBER WORD";
    const std::string place{needed_word()};
    const std::uint32_t limit = limit_of(place);
    const std::uint32_t number = number_in(needed_word(), 0, limit);
    const std::string word{needed_word()};
    if (!is_name(word, "-"))
        throw mistake{quoted(word) + " is not a word of letters, digits, _ and -"};
    end_line();
    once("word " + place + " " + word, quoted(word) + " is given twice for " + place);
    const std::string digits = std::to_string(number);
    once("number " + place + " " + digits, digits + " is given twice for " + place);
    result_.codes.push_back({place, word, number, line_});
}

void profile_reader::capacity()
{
    usage_ = "capacity TABLE ENTRIES";
    const std::string_view name = needed_word();
    const bool known = std::any_of(std::begin(default_sizes), std::end(default_sizes),
                                   [&](const auto &size) { return size.name == name; });
    if (!known || name == "ports" || name == "devices")
        throw mistake{"there is no table " + quoted(name)};
    size(name);
}

void profile_reader::size(std::string_view name)
{
    const std::uint32_t number = number_in(needed_word(), 1, UINT32_MAX);
    end_line();
    once("size " + std::string{name}, std::string{name} + " is given twice");
    result_.sizes.push_back({{}, std::string{name}, number, line_});
}

void profile_reader::family()
{
    usage_ = "family ipv4 NUMBER, or family ipv6 NUMBER";
    const std::string name{needed_word()};
    if (name != "ipv4" && name != "ipv6")
        throw mistake{quoted(name) + " is neither ipv4 nor ipv6"};
    const std::uint32_t number = number_in(needed_word(), 0, UINT32_MAX);
    end_line();
    once("family " + name, "family " + name + " is given twice");
    const std::string digits = std::to_string(number);
    once("family number " + digits, "family number " + digits + " is given twice");
    result_.families.push_back({{}, name, number, line_});
}

// A family without a line keeps its default number, which the other one must not have.
void profile_reader::check_families()
{
    if (result_.families.size() != 1)
        return;
    const profile_number &only = result_.families.front();
    for (const default_number &other : default_families)
        if (other.name != only.name && other.number == only.number) {
            line_ = only.line;
            throw mistake{"the families ipv4 and ipv6 have the same number: " +
                          std::string{other.name} + " needs a line, too"};
        }
}

void profile_reader::ids()
{
    usage_ = "ids TABLE FIRST..LAST ...";
    const std::string name{needed_word()};
    const auto table = std::find_if(id_tables.begin(), id_tables.end(),
                                    [&](const auto &each) { return each.name == name; });
    if (table == id_tables.end())
        throw mistake{"there is no table " + quoted(name) + " that is listed by ids"};
    profile_ids ids{name, {}, line_};
    std::string_view word = needed_word();
    for (std::uint32_t least = 0; !word.empty(); word = next_word()) {
        if (!ids.ranges.empty() && ids.ranges.back().last == table->number)
            throw mistake{"there is no id behind " + std::to_string(table->number)};
        ids.ranges.push_back(range_in(word, least, table->number));
        least = ids.ranges.back().last + 1;
    }
    once("ids " + name, "the ids of " + name + " are given twice");
    result_.ids.push_back(std::move(ids));
}

void profile_reader::loose()
{
    usage_ = "loose RECORD.FIELD, or loose FUNCTION.ARGUMENT";
    const std::string place{needed_word()};
    limit_of(place);
    end_line();
    once("loose " + place, place + " is given twice");
    result_.loose.push_back(place);
}

void profile_reader::read_line(std::string_view text)
{
    check_text(text);
    rest_ = text;
    const std::string_view kind = next_word();
    if (kind.empty() || kind.front() == '#')
        return;
    usage_ = kind == "ports" ? "ports NUMBER" : "devices NUMBER";
    if (kind == "status")
        status();
    else if (kind == "code")
        code();
    else if (kind == "capacity")
        capacity();
    else if (kind == "ports" || kind == "devices")
        size(kind);
    else if (kind == "family")
        family();
    else if (kind == "ids")
        ids();
    else if (kind == "loose")
        loose();
    else
        throw mistake{quoted(kind) +
                      " is not one of status, code, capacity, ports, devices, family, ids, loose"};
}

profile profile_reader::read(std::string_view text)
{
    constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
    if (text.starts_with(byte_order_mark))
        text.remove_prefix(byte_order_mark.size());
    while (!text.empty()) {
        const std::string_view one = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), one.size() + 1));
        ++line_;
        read_line(one);
    }
    check_families();
    return std::move(result_);
}

} // namespace

std::optional<profile_mistake> read_profile(std::string_view text, profile &result)
{
    profile_reader reader;
    try {
        result = reader.read(text);
        return {};
    } catch (const mistake &wrong) {
        return profile_mistake{reader.line(), wrong.text};
    }
}

} // namespace qxsh
