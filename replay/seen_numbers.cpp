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

namespace {

std::string plural(std::uint64_t count, const char *what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

} // namespace

// The numbers that the names of one section of a profile get.
class seen_numbers::renumbering
{
public:
    renumbering(const place &of, const std::vector<entry> &old);

    bool is_clear() const { return clear_all_; }
    bool has_changes() const { return changes_; }
    const std::string &comments() const { return comments_; }

    /// The number of a name, behind a comment if it is made up.
    std::uint32_t number_of(const entry &each, std::string &text);

private:
    void take(const entry &each, const std::map<std::uint32_t, std::uint64_t> &numbers);

    std::map<std::uint32_t, unsigned> wanted_{}; // names, by the number that they came as
    std::map<std::string, std::uint32_t> clear_{};
    std::set<std::uint32_t> taken_{};
    std::set<std::uint32_t> given_{}; // to names that are clear
    std::uint32_t free_;              // from here down numbers are looked for
    std::string comments_{};
    bool changes_ = false;
    bool clear_all_ = true;
};

seen_numbers::renumbering::renumbering(const place &of, const std::vector<entry> &old)
    : free_(of.limit)
{
    for (const auto &[now, numbers] : of.seen)
        for (const auto &[number, count] : numbers)
            ++wanted_[number];
    std::set<std::uint32_t> named;
    for (const entry &each : old) {
        named.insert(each.number);
        taken_.insert(each.number);
        if (const auto seen = of.seen.find(each.number); seen != of.seen.end())
            take(each, seen->second);
    }
    for (const auto &[now, numbers] : of.seen)
        if (named.count(now) == 0 && (numbers.size() > 1 || numbers.begin()->first != now)) {
            comments_ += "# The library's " + std::to_string(now) + " has no name here.\n";
            clear_all_ = false;
        }
    for (const auto &[number, count] : of.unknown)
        comments_ += "# " + of.name + ": no word has " + std::to_string(number) + ", given in " +
                     plural(count, "call") + ", first in call " + std::to_string(of.first_unknown) +
                     ".\n";
}

// A name is clear if it came as one number, and no other name came as that.
void seen_numbers::renumbering::take(const entry &each,
                                     const std::map<std::uint32_t, std::uint64_t> &numbers)
{
    const std::uint32_t number = numbers.begin()->first;
    if (numbers.size() == 1 && wanted_[number] == 1) {
        changes_ = changes_ || number != each.number;
        clear_[each.name] = number;
        given_.insert(number);
        taken_.insert(number);
        return;
    }
    clear_all_ = false;
    comments_ += "# " + each.name + " is not clear: the recording has";
    for (const auto &[other, count] : numbers)
        comments_ +=
            (other == number ? " " : ", ") + std::to_string(other) + " in " + plural(count, "call");
    comments_ += ".\n";
}

std::uint32_t seen_numbers::renumbering::number_of(const entry &each, std::string &text)
{
    if (const auto found = clear_.find(each.name); found != clear_.end())
        return found->second;
    if (given_.count(each.number) == 0)
        return each.number;
    while (taken_.count(free_) != 0)
        --free_;
    taken_.insert(free_);
    text += "# " + each.name + " was not seen, and " + std::to_string(each.number) +
            " is another's: this number is made up.\n";
    return free_;
}

void seen_numbers::section(proposal &result, const std::string &head, const place &of,
                           const std::vector<entry> &old) const
{
    renumbering numbers{of, old};
    result.lines += numbers.comments();
    result.is_clear = result.is_clear && numbers.is_clear();
    if (!numbers.has_changes())
        return;
    result.replaced.push_back(head);
    for (const entry &each : old) {
        const std::uint32_t number = numbers.number_of(each, result.lines);
        if (&of == &families_)
            result.lines += head + " " + each.name + " " + std::to_string(number);
        else
            result.lines += head + " " + std::to_string(number) + " " + each.name;
        result.lines += each.meaning.empty() ? "\n" : " " + each.meaning + "\n";
    }
}

seen_numbers::proposal seen_numbers::propose() const
{
    proposal result;
    std::vector<entry> old;
    for (const profile_status &each : used_.statuses)
        old.push_back({each.number, each.name, each.meaning});
    section(result, "status", statuses_, old);
    for (const auto &of : codes_) {
        old.clear();
        for (const profile_number &each : used_.codes)
            if (each.place == of->name)
                old.push_back({each.number, each.name});
        section(result, "code " + of->name, *of, old);
    }
    old.clear();
    for (const profile_number &each : used_.families)
        old.push_back({each.number, each.name});
    section(result, "family", families_, old);
    return result;
}

} // namespace qxtrace
