// Names for numbers; see shown_names.h.
#include "replay/shown_names.h"

#include "record_numbers.h"
#include "records/values.h"

namespace qxsh {

shown_names::shown_names(const profile &in_use)
    : fields_(field_count),
      arguments_(call_rows[call_count - 1].first + call_rows[call_count - 1].arguments)
{
    for (const profile_status &each : in_use.statuses)
        statuses_.emplace(each.number, each.name);
    for (const profile_number &each : in_use.codes)
        if (words *const list = place(each.place); list != nullptr)
            list->emplace_back(each.number, each.name);
    for (const profile_number &each : in_use.families)
        families_.emplace_back(each.number, each.name == "ipv4" ? 4 : 6);
    // A word that the profile does not have chooses nothing.
    for (const view_row &row : std::span{view_rows, view_count}) {
        choice made{row.field, row.offset, row.size, row.view, row.number};
        bool known = *row.word.text() == '\0';
        for (const auto &[number, word] : fields_[row.chooser])
            if (!known && word == row.word.text()) {
                made.number = number;
                known = true;
            }
        if (known)
            choices_.push_back(made);
    }
}

// The list of RECORD.FIELD or FUNCTION.ARGUMENT; null if there is no such place.
shown_names::words *shown_names::place(const std::string &name)
{
    const std::size_t point = name.find('.');
    const std::string owner = name.substr(0, point);
    const std::string part = name.substr(point + 1);
    for (const record_row &record : std::span{record_rows, record_count})
        if (owner == record.name.text())
            for (const field_row &field : fields_of(record))
                if (part == field.name.text())
                    return &fields_[static_cast<std::size_t>(&field - field_rows)];
    for (const call_row &call : std::span{call_rows, call_count})
        if (owner == call.name.text())
            for (const argument_row &argument : arguments_of(call))
                if (part == argument.name.text())
                    return &arguments_[static_cast<std::size_t>(&argument - argument_rows)];
    return nullptr;
}

const std::string *shown_names::word_in(const std::vector<words> &lists, std::size_t index,
                                        std::uint32_t number)
{
    for (const auto &[each, word] : lists[index])
        if (each == number)
            return &word;
    return nullptr;
}

const std::string *shown_names::word(const field_row &field, std::uint32_t number) const
{
    return word_in(fields_, static_cast<std::size_t>(&field - field_rows), number);
}

const std::string *shown_names::word(const argument_row &argument, std::uint32_t number) const
{
    return word_in(arguments_, static_cast<std::size_t>(&argument - argument_rows), number);
}

std::string shown_names::status(std::uint32_t number) const
{
    const auto found = statuses_.find(number);
    return found == statuses_.end() ? std::to_string(number) : found->second;
}

int shown_names::version_of(std::uint32_t family) const
{
    for (const auto &[number, version] : families_)
        if (number == family)
            return version;
    return 0;
}

const field_row &shown_names::view_of(const field_row &whole, const unsigned char *record) const
{
    const record_row &inner = *record_in(whole);
    for (const choice &each : choices_)
        if (field_rows + each.field == &whole &&
            read_number(record + each.offset, each.size) == each.number)
            return fields_of(inner)[each.view];
    return fields_of(inner)[static_cast<std::size_t>(inner.largest)];
}

} // namespace qxsh
