// Checking the members of a call's line; see recorded_line.h.
#include "replay/recorded_line.h"

#include "record_numbers.h"
#include "records/values.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>

namespace qxsh {

namespace {

enum line_member : unsigned {
    line_call,
    line_process,
    line_time,
    line_function,
    line_arguments,
    line_status,
    line_name,
    line_fault,
    line_microseconds,
};
constexpr const char *line_members[] = {"call",   "process", "time",  "function",    "arguments",
                                        "status", "name",    "fault", "microseconds"};
constexpr line_member required[] = {line_call, line_function, line_arguments, line_status};

constexpr const char *too_large = "a number that is no integer, or too large";

constexpr const char *memory_members[] = {"before", "after"};

static_assert(most_fields <= 64, "a level has a bit for each");
static_assert(most_call_arguments <= 64);

// Text of a file for a message: short, and without what would confuse a terminal.
std::string quoted(const std::string &text)
{
    std::string result = "\"" + text.substr(0, 40);
    for (char &one : result)
        if (one < ' ' || one > '~')
            one = '?';
    return result + (text.size() > 40 ? "...\"" : "\"");
}

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

// ------------------------------------------------------------------------------- mistakes

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
            if (named && one.member != line_arguments)
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

// ------------------------------------------------------------------------- members, elements

bool recorded_line::now_comes(unsigned member)
{
    level &top = levels_.back();
    top.member = member;
    if ((top.seen >> member & 1) != 0)
        return refuse("is given twice");
    top.seen |= std::uint64_t{1} << member;
    return true;
}

bool recorded_line::line_key(const std::string &name)
{
    for (unsigned i = 0; i < std::size(line_members); ++i) {
        if (name != line_members[i])
            continue;
        if (i != line_arguments || call_->row != nullptr)
            return now_comes(i);
        levels_.back().member = UINT_MAX;
        return refuse("\"function\" has to stand before \"arguments\"");
    }
    levels_.back().member = UINT_MAX;
    return refuse("a call has no member " + quoted(name));
}

bool recorded_line::argument_key(const std::string &name)
{
    const auto rows = arguments_of(*call_->row);
    for (unsigned i = 0; i < rows.size(); ++i) {
        if (name != rows[i].name.text())
            continue;
        argument_ = i;
        return now_comes(i);
    }
    levels_.back().member = UINT_MAX;
    return refuse(std::string{call_->row->name.text()} + " has no argument " + quoted(name));
}

// Members come in the order of the fields: the first try is usually right.
bool recorded_line::field_key(const std::string &name)
{
    level &top = levels_.back();
    const auto rows = fields_of(*top.record);
    const unsigned likely = top.member + 1;
    if (likely < rows.size() && name == rows[likely].name.text())
        return now_comes(likely);
    for (unsigned i = 0; i < rows.size(); ++i)
        if (name == rows[i].name.text())
            return now_comes(i);
    if (is_outermost() && padding_key(name))
        return true;
    top.member = UINT_MAX;
    return refuse(std::string{top.record->name.text()} + " has no field " + quoted(name));
}

// "padding(12)", of bits that are in no field.
bool recorded_line::padding_key(const std::string &name)
{
    static constexpr std::string_view start = "padding(";
    if (!name.starts_with(start) || !name.ends_with(")"))
        return false;
    const char *const end = name.data() + name.size() - 1;
    const auto [read, error] = std::from_chars(name.data() + start.size(), end, padding_at_);
    if (error != std::errc{} || read != end)
        return false;
    levels_.back().member = padding_member;
    return true;
}

// The memory that an argument points to is there before any of it is told: zeros, all known.
void recorded_line::grow_memory()
{
    recorded_memory &into = memory();
    const std::size_t size = into.bytes.size() + argument().size;
    into.bytes.resize(size, 0);
    into.known.resize(size, 1);
    told_.resize(size, 0);
}

recorded_memory &recorded_line::memory()
{
    recorded_argument &one = call_->arguments[argument_];
    return after_ ? one.after : one.before;
}

bool recorded_line::open_outermost()
{
    const record_row &record = record_rows[argument().record];
    if (keys_ != recorded_keys::clear && secret_in_ != &record) {
        static constexpr holding key = holding::key;
        secret_.assign(record.size, 0);
        mark_fields(secret_.data(), record, &key);
        secret_in_ = &record;
    }
    const auto at = static_cast<std::uint32_t>(memory().bytes.size() - record.size);
    open({.what = kind::record, .record = &record, .at = at, .outer = at});
    return true;
}

bool recorded_line::open_record(const record_row &record, std::uint32_t at)
{
    const std::uint32_t outer = levels_.back().outer;
    open({.what = kind::record, .record = &record, .at = at, .outer = outer});
    return true;
}

// Another element of the array that is open; there may be `most`.
bool recorded_line::next_element(std::uint32_t most)
{
    level &top = levels_.back();
    if (top.count++ < most)
        return true;
    top.count = 0;
    return refuse("expected " + std::to_string(most) + " elements, not more");
}

// ----------------------------------------------------------------------------------- values

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

// ------------------------------------------------------------------------- objects, arrays

bool recorded_line::start_object(std::size_t)
{
    if (levels_.empty()) {
        open({.what = kind::line});
        return true;
    }
    level &top = levels_.back();
    switch (top.what) {
    case kind::line:
        if (top.member != line_arguments)
            return unexpected("an object");
        open({.what = kind::arguments});
        return true;
    case kind::arguments:
        if (!argument().pointer)
            return unexpected("an object");
        open({.what = kind::memory});
        return true;
    case kind::memory:
    case kind::elements:
        if (argument().record < 0 || (argument().count >= 0) != (top.what == kind::elements))
            return unexpected("an object");
        if (top.what == kind::elements && !next_element(most_recorded_elements))
            return false;
        grow_memory();
        return open_outermost();
    case kind::record:
        if (on_padding() || field().record < 0 || field().count != 0)
            return unexpected("an object");
        return open_record(*record_in(field()), top.at + field().offset);
    case kind::records:
        return next_element(top.field->count) &&
               open_record(*record_in(*top.field),
                           top.at + (levels_.back().count - 1) * top.field->size);
    default:
        return unexpected("an object");
    }
}

bool recorded_line::key(const std::string &name)
{
    level &top = levels_.back();
    switch (top.what) {
    case kind::line:
        return line_key(name);
    case kind::arguments:
        return argument_key(name);
    case kind::memory:
        after_ = name == memory_members[1];
        if (!after_ && name != memory_members[0])
            return refuse("expected \"before\" and \"after\", not " + quoted(name));
        told_.clear();
        return now_comes(after_ ? 1 : 0);
    default:
        return field_key(name);
    }
}

bool recorded_line::start_array(std::size_t)
{
    if (levels_.empty())
        return unexpected("an array");
    const level &top = levels_.back();
    if (top.what == kind::memory && argument().count >= 0) {
        open({.what = kind::elements});
        return true;
    }
    if (top.what != kind::record || on_padding() || field().count == 0)
        return unexpected("an array");
    const field_row &row = field();
    open({.what = row.record >= 0 ? kind::records : kind::numbers,
          .field = &row,
          .at = top.at + row.offset,
          .outer = top.outer});
    return true;
}

bool recorded_line::end_array()
{
    const level done = levels_.back();
    levels_.pop_back();
    if (done.what == kind::elements || done.count == done.field->count)
        return true;
    return refuse("expected " + std::to_string(done.field->count) + " elements, not " +
                  std::to_string(done.count));
}

bool recorded_line::end_object()
{
    const level done = levels_.back();
    bool good = true;
    switch (done.what) {
    case kind::line:
        good = end_line();
        break;
    case kind::arguments:
        good = end_arguments();
        break;
    case kind::memory:
        good = end_memory();
        break;
    default:
        good = end_record();
    }
    if (good)
        levels_.pop_back();
    return good;
}

// Whether the record that is open is in no other one.
bool recorded_line::is_outermost() const
{
    const kind around = levels_[levels_.size() - 2].what;
    return around == kind::memory || around == kind::elements;
}

bool recorded_line::is_missing(const level &of, unsigned member) const
{
    return (of.seen >> member & 1) == 0;
}

bool recorded_line::end_line()
{
    level &top = levels_.back();
    top.member = UINT_MAX;
    for (const line_member one : required)
        if (is_missing(top, one))
            return refuse(std::string{"\""} + line_members[one] + "\" is missing");
    return true;
}

// The lengths of arrays are compared here, because the count may stand behind the array.
bool recorded_line::end_arguments()
{
    level &top = levels_.back();
    const auto rows = arguments_of(*call_->row);
    top.member = UINT_MAX;
    for (unsigned i = 0; i < rows.size(); ++i)
        if (is_missing(top, i))
            return refuse(std::string{"the argument "} + rows[i].name.text() + " is missing");
    for (unsigned i = 0; i < rows.size(); ++i) {
        const recorded_argument &one = call_->arguments[i];
        if (rows[i].count < 0 || one.null)
            continue;
        const std::uint32_t count = call_->arguments[rows[i].count].value;
        for (const recorded_memory *memory : {&one.before, &one.after}) {
            if (!memory->read || memory->bytes.size() == std::size_t{count} * rows[i].size)
                continue;
            argument_ = i;
            top.member = i;
            return refuse("expected " + std::to_string(count) + " elements, not " +
                          std::to_string(memory->bytes.size() / rows[i].size));
        }
    }
    return true;
}

bool recorded_line::end_memory()
{
    level &top = levels_.back();
    top.member = UINT_MAX;
    for (unsigned i = 0; i < std::size(memory_members); ++i)
        if (is_missing(top, i))
            return refuse(std::string{"\""} + memory_members[i] + "\" is missing");
    return true;
}

bool recorded_line::end_record()
{
    level &top = levels_.back();
    top.member = UINT_MAX;
    const auto rows = fields_of(*top.record);
    const unsigned first = static_cast<unsigned>(std::countr_one(top.seen));
    if (first < rows.size())
        return refuse(std::string{"the field "} + rows[first].name.text() + " is missing");
    if (!is_outermost())
        return true;
    // Bytes of a hidden field that another one tells are known.
    recorded_memory &into = memory();
    for (const recorded_memory::hidden &one : into.keys)
        for (std::uint32_t at = one.offset; at < one.offset + one.size; ++at)
            into.known[at] = told_[at] != 0 ? 1 : 0;
    return true;
}

// ------------------------------------------------------------------------------- the line

std::string recorded_line::read(std::string_view line, recorded_call &call)
{
    const auto clear = [](recorded_memory &memory) {
        memory.read = true;
        memory.bytes.clear();
        memory.known.clear();
        memory.keys.clear();
    };
    for (recorded_argument &one : call.arguments) {
        one.value = 0;
        one.null = false;
        clear(one.before);
        clear(one.after);
    }
    call.row = nullptr;
    call.time_us.reset();
    call.microseconds.reset();
    call.process.reset();
    call.fault = false;
    call_ = &call;
    levels_.clear();
    mistake_.clear();
    if (line.empty())
        return "the line is empty";
    // To the parser, a null character is the end of the text.
    if (line.find('\0') != line.npos)
        return "a null character, column " + std::to_string(line.find('\0') + 1);
    nlohmann::json::sax_parse(line.begin(), line.end(), this);
    return mistake_;
}

} // namespace qxsh
