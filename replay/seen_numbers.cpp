// Learning numbers; see seen_numbers.h. A number that came for two of the library's, or a word that
// came as two numbers, is told in a comment and gets no line.
#include "replay/seen_numbers.h"

#include "record_numbers.h"
#include "records/values.h"

#include <algorithm>
#include <functional>
#include <set>

namespace qxtrace {

using namespace qxsh;

namespace {

std::uint32_t limit_of(unsigned bits)
{
    return bits >= 32 ? UINT32_MAX : (std::uint32_t{1} << bits) - 1;
}

// Visits the numbers of a record, in the views that are shown.
using visit = std::function<void(const field_row &field, std::uint32_t at, unsigned index)>;

void each_field(const field_row &field, const unsigned char *bytes, std::uint32_t at,
                const shown_names &names, const visit &take);

void each_number(const record_row &record, const unsigned char *bytes, std::uint32_t at,
                 const shown_names &names, const visit &take)
{
    for (const field_row &field : fields_of(record))
        each_field(field, bytes, at, names, take);
}

// `at` is where the field's record begins.
void each_field(const field_row &field, const unsigned char *bytes, std::uint32_t at,
                const shown_names &names, const visit &take)
{
    const record_row *const inner = record_in(field);
    for (unsigned i = 0; i < elements_of(field); ++i) {
        const std::uint32_t place = at + field.offset + i * field.size;
        if (inner == nullptr)
            take(field, at, i);
        else if (inner->is_union)
            each_field(names.view_of(field, bytes + at), bytes, place, names, take);
        else
            each_number(*inner, bytes, place, names, take);
    }
}

void put_field(unsigned char *record, const field_row &field, unsigned index, std::uint32_t value)
{
    unsigned char *const place = record + field.offset + index * field.size;
    const std::uint32_t mask = field.width == 0 ? UINT32_MAX : bit_mask(field.bit, field.width);
    const std::uint32_t others = read_number(place, field.size) & ~mask;
    write_number(place, field.size, others | (value << field.bit & mask));
}

} // namespace

seen_numbers::seen_numbers(const profile &used)
    : used_(used), names_(used), fields_(field_count),
      arguments_(call_rows[call_count - 1].first + call_rows[call_count - 1].arguments)
{
    for (const record_row &record : std::span{record_rows, record_count})
        for (const field_row &field : fields_of(record)) {
            place *&at = fields_[static_cast<std::size_t>(&field - field_rows)];
            at = field.holds == holding::family
                     ? &families_
                     : code_place(std::string{record.name.text()} + "." + field.name.text());
            if (at != nullptr && at != &families_)
                at->limit = limit_of(field.width != 0 ? field.width : field.size * 8u);
        }
    for (const call_row &call : std::span{call_rows, call_count})
        for (const argument_row &argument : arguments_of(call)) {
            place *&at = arguments_[static_cast<std::size_t>(&argument - argument_rows)];
            at = code_place(std::string{call.name.text()} + "." + argument.name.text());
            if (at != nullptr)
                at->limit = limit_of(argument.size * 8u);
        }
}

// The place of this name; null if it has no code words.
seen_numbers::place *seen_numbers::code_place(const std::string &name)
{
    for (const auto &each : codes_)
        if (each->name == name)
            return each.get();
    for (const profile_number &code : used_.codes)
        if (code.place == name) {
            codes_.push_back(std::make_unique<place>(place{name, 0}));
            return codes_.back().get();
        }
    return nullptr;
}

seen_numbers::place *seen_numbers::place_of(const field_row &field) const
{
    return fields_[static_cast<std::size_t>(&field - field_rows)];
}

seen_numbers::place *seen_numbers::place_of(const argument_row &argument) const
{
    return arguments_[static_cast<std::size_t>(&argument - argument_rows)];
}

bool seen_numbers::is_named(const field_row &field, std::uint32_t number) const
{
    return field.holds == holding::family ? names_.version_of(number) != 0
                                          : names_.word(field, number) != nullptr;
}

void seen_numbers::status(std::uint32_t recorded, std::uint32_t now)
{
    ++statuses_.seen[now][recorded];
}

void seen_numbers::outputs(const argument_row &argument, const recorded_memory &recorded,
                           unsigned char *now)
{
    if (argument.record < 0) {
        place *const at = place_of(argument);
        const std::uint32_t number = read_number(now, argument.size);
        if (at == nullptr || names_.word(argument, number) == nullptr)
            return;
        const std::uint32_t wanted = read_number(recorded.bytes.data(), argument.size);
        ++at->seen[number][wanted];
        write_number(now, argument.size, wanted);
        return;
    }
    // The views are the library's: its numbers have to stay until all are visited.
    const std::vector<unsigned char> before{now, now + recorded.bytes.size()};
    for (std::uint32_t start = 0; start < before.size(); start += argument.size)
        each_number(record_rows[argument.record], before.data(), start, names_,
                    [&](const field_row &field, std::uint32_t at, unsigned index) {
                        place *const of = place_of(field);
                        if (of == nullptr)
                            return;
                        const std::uint32_t number = read_field(before.data() + at, field, index);
                        const std::uint32_t wanted =
                            read_field(recorded.bytes.data() + at, field, index);
                        if (!is_named(field, number) ||
                            recorded.known[at + field.offset + index * field.size] == 0)
                            return;
                        ++of->seen[number][wanted];
                        put_field(now + at, field, index, wanted);
                    });
}

void seen_numbers::input(place &at, std::uint32_t number, std::uint64_t call)
{
    if (at.unknown.empty())
        at.first_unknown = call;
    ++at.unknown[number];
}

// What the recorded library has refused may be wrong on purpose.
void seen_numbers::inputs(const recorded_call &call)
{
    const auto arguments = arguments_of(*call.row);
    for (std::size_t i = 0; i < arguments.size() && call.status == 0; ++i) {
        const argument_row &argument = arguments[i];
        const recorded_argument &given = call.arguments[i];
        if (!argument.pointer) {
            place *const at = place_of(argument);
            if (at != nullptr && names_.word(argument, given.value) == nullptr)
                input(*at, given.value, call.number);
            continue;
        }
        if (given.null || argument.way == direction::out || argument.record < 0)
            continue;
        const unsigned char *const bytes = given.before.bytes.data();
        for (std::uint32_t start = 0; start < given.before.bytes.size(); start += argument.size)
            each_number(record_rows[argument.record], bytes, start, names_,
                        [&](const field_row &field, std::uint32_t at, unsigned index) {
                            const std::uint32_t number = read_field(bytes + at, field, index);
                            if (place_of(field) != nullptr && !is_named(field, number))
                                input(*place_of(field), number, call.number);
                        });
    }
}

// ------------------------------------------------------------------------------- lines

// Appends a section of a profile; returns false if some numbers cannot be told.
bool seen_numbers::section(std::string &text, const std::string &head, const place &of,
                           const std::vector<entry> &old, bool whole)
{
    std::string comments;
    std::set<std::uint32_t> taken;            // by names whose number is clear
    std::map<std::uint32_t, unsigned> wanted; // names by the number that they would get
    for (const entry &each : old)
        if (const auto seen = of.seen.find(each.number); seen != of.seen.end())
            for (const auto &[number, count] : seen->second)
                ++wanted[number];
    std::map<std::string, std::uint32_t> clear;
    bool differs = false;
    for (const entry &each : old) {
        const auto seen = of.seen.find(each.number);
        if (seen == of.seen.end())
            continue;
        const std::uint32_t number = seen->second.begin()->first;
        differs = differs || seen->second.size() > 1 || number != each.number;
        if (seen->second.size() == 1 && wanted[number] == 1) {
            clear[each.name] = number;
            taken.insert(number);
            continue;
        }
        comments += "# " + each.name + " is not clear:";
        for (const auto &[other, count] : seen->second)
            comments += " " + std::to_string(other) + " in " + std::to_string(count) + " calls";
        comments += "\n";
    }
    for (const auto &[number, seen] : of.seen)
        if (std::none_of(old.begin(), old.end(),
                         [&](const entry &each) { return each.number == number; }))
            comments += "# The library's " + std::to_string(number) + " has no name here.\n";
    for (const auto &[number, count] : of.unknown)
        comments += "# " + of.name + ": no word has " + std::to_string(number) + ", given in " +
                    std::to_string(count) + " calls, first in call " +
                    std::to_string(of.first_unknown) + "\n";
    text += comments;
    if (!differs && !whole)
        return comments.empty();
    std::uint32_t free = of.limit;
    for (const entry &each : old)
        if (clear.count(each.name) == 0 && taken.count(each.number) == 0)
            taken.insert(each.number);
    std::set<std::uint32_t> used;
    for (const entry &each : old) {
        std::uint32_t number = each.number;
        if (const auto found = clear.find(each.name); found != clear.end()) {
            number = found->second;
        } else if (std::any_of(clear.begin(), clear.end(),
                               [&](const auto &one) { return one.second == each.number; })) {
            while (taken.count(free) != 0)
                --free;
            number = free;
            taken.insert(free);
            text += "# " + each.name + " was not seen, and " + std::to_string(each.number) +
                    " is another's:\n";
        }
        text += head + std::to_string(number) + " " + each.name;
        text += each.meaning.empty() ? "\n" : " " + each.meaning + "\n";
    }
    return comments.empty();
}

seen_numbers::proposal seen_numbers::propose(bool whole) const
{
    proposal result{{}, true};
    std::vector<entry> old;
    for (const profile_status &each : used_.statuses)
        old.push_back({each.number, each.name, each.meaning});
    result.is_clear = section(result.lines, "status ", statuses_, old, whole);
    for (const auto &of : codes_) {
        old.clear();
        for (const profile_number &each : used_.codes)
            if (each.place == of->name)
                old.push_back({each.number, each.name});
        if (!section(result.lines, "code " + of->name + " ", *of, old, whole))
            result.is_clear = false;
    }
    return result;
}

} // namespace qxtrace
