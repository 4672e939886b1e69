// The members of a call's line, its objects and arrays; see recorded_line.h.
#include "replay/recorded_line.h"

#include "record_numbers.h"
#include "records/values.h"

#include <nlohmann/json.hpp>

#include <bit>
#include <charconv>

namespace qxsh {

static_assert(most_fields <= 64, "a level has a bit for each");
static_assert(most_call_arguments <= 64);

// ------------------------------------------------------------------------- members, elements

static std::string elements(std::uint32_t count)
{
    return std::to_string(count) + (count == 1 ? " element" : " elements");
}

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
    return refuse("expected " + elements(most) + ", not more");
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
    return refuse("expected " + elements(done.field->count) + ", not " +
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
    for (const line_member one : {line_call, line_function, line_arguments, line_status})
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
            return refuse("expected " + elements(count) + ", not " +
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
