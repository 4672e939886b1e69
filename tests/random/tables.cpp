// Reading the tables of tests/expected: lines of columns with tabs between, comments begin with #.
#include "tables.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace random_test {

namespace {

using row = std::vector<std::string>;

std::vector<std::string> split(const std::string &text, char separator)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(separator, start)) != std::string::npos; start = end + 1)
        parts.push_back(text.substr(start, end - start));
    parts.push_back(text.substr(start));
    return parts;
}

std::vector<row> read_rows(const std::string &file, std::size_t least_columns)
{
    std::ifstream stream{file};
    if (!stream)
        throw std::runtime_error(file + " cannot be read");
    std::vector<row> rows;
    for (std::string line; std::getline(stream, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        rows.push_back(split(line, '\t'));
        if (rows.back().size() < least_columns)
            throw std::runtime_error(file + ": too few columns: " + line);
    }
    return rows;
}

std::uint32_t number(const std::string &text)
{
    return text == "-" ? 0 : static_cast<std::uint32_t>(std::stoul(text));
}

void check(bool holds, const std::string &complaint)
{
    if (!holds)
        throw std::runtime_error(complaint);
}

std::string stem_of(const std::string &type)
{
    return type.ends_with("_t") ? type.substr(0, type.size() - 2) : type;
}

void read_fields(const std::string &file, tables &all)
{
    for (const row &columns : read_rows(file, 11)) {
        field made;
        made.name = columns[1];
        made.offset = number(columns[2]);
        made.bit = number(columns[3]);
        made.bits = number(columns[4]);
        made.count = number(columns[5]);
        made.number = number_named(columns[6]);
        made.nested = all.find_record(columns[6]);
        made.copied = number(columns[7]);
        made.type = columns[8];
        made.in_init = columns[9] == "yes";
        made.in_dump = columns[10] == "yes";
        record *const owner = const_cast<record *>(all.find_record(columns[0]));
        check(owner != nullptr && (made.number != nullptr) != (made.nested != nullptr),
              "fields.tsv: unknown type in " + columns[0] + "." + made.name);
        check(made.offset + (made.elements() - 1) * made.stride() + made.copied <= owner->size,
              "fields.tsv: " + columns[0] + "." + made.name + " ends behind its record");
        owner->fields.push_back(made);
    }
}

// The arguments of _init are the fields that say so, in their order.
void check_init(const std::string &file, tables &all)
{
    for (const row &columns : read_rows(file, 2)) {
        record *const owner = const_cast<record *>(all.find_record(columns[0]));
        check(owner != nullptr, "init.tsv: no record " + columns[0]);
        owner->has_init = true;
        std::string arguments;
        for (const field &each : owner->fields)
            if (each.in_init)
                arguments += (arguments.empty() ? "" : ",") + each.name + ":" + each.type;
        check(columns[1] == (arguments.empty() ? "-" : arguments),
              "init.tsv and fields.tsv disagree on " + owner->name);
    }
}

// The items of a dump are the fields that say so, in their order.
void check_dumps(const std::string &file, const tables &all)
{
    for (const row &columns : read_rows(file, 2)) {
        const record *const owner = all.find_record(columns[0]);
        check(owner != nullptr, "dumps.tsv: no record " + columns[0]);
        row items{owner->name};
        for (const field &each : owner->fields) {
            if (!each.in_dump)
                continue;
            const std::string count = std::to_string(each.count);
            if (each.nested != nullptr)
                items.push_back("@" + each.nested->name + (each.count == 0 ? "" : "*" + count));
            else
                items.push_back(each.name + (each.count == 0 ? "" : "[" + count + "]"));
        }
        check(columns == items, "dumps.tsv and fields.tsv disagree on " + owner->name);
    }
}

void read_commands(const std::string &file, tables &all)
{
    for (const row &columns : read_rows(file, 4)) {
        check(columns[1].ends_with(" |"), "commands.tsv: no usage text: " + columns[1]);
        const std::string usage = columns[1].substr(0, columns[1].size() - 1);
        row arguments;
        if (columns[2] != "-")
            arguments = split(columns[2], ',');
        all.commands[columns[0]] = {columns[0], usage, arguments, columns[3]};
    }
}

// Left out are words that Tcl would substitute, and bytes in hexadecimal, of which its versions
// take different numbers of digits.
void read_words(const std::string &file, tables &all)
{
    for (const row &columns : read_rows(file, 6)) {
        if (columns[0].find_first_of("$[]{}") != std::string::npos ||
            columns[0].find("\\x") != std::string::npos)
            continue;
        number_word word{columns[0], {}};
        for (const number_type &type : number_types()) {
            const std::string &text = columns[type.reading];
            number_word::reading reading;
            if (text.ends_with("Error"))
                reading.category = text;
            else if (text[0] == '-')
                reading.value = static_cast<std::uint32_t>(std::stoll(text));
            else
                reading.value = std::stoull(text);
            word.readings.push_back(reading);
        }
        all.words.push_back(word);
    }
}

} // namespace

const std::vector<number_type> &number_types()
{
    static const std::vector<number_type> types{{"u8", "unsigned char", 1, "uint8", 4},
                                                {"u16", "unsigned short", 2, "uint16", 3},
                                                {"u32", "unsigned int", 4, "uint32", 2},
                                                {"i32", "int", 4, "int32", 1},
                                                {"u64", "unsigned long long", 8, "uint64", 5}};
    return types;
}

const number_type *number_named(const std::string &name)
{
    for (const number_type &type : number_types())
        if (name == type.name)
            return &type;
    return nullptr;
}

const number_type *number_declared(const std::string &native)
{
    for (const number_type &type : number_types())
        if (native == type.native)
            return &type;
    return nullptr;
}

std::uint32_t field::stride() const
{
    return nested != nullptr ? nested->size : number->width;
}

const record *tables::find_record(const std::string &name) const
{
    const auto place = std::find_if(records.begin(), records.end(),
                                    [&](const record &each) { return each.name == name; });
    return place == records.end() ? nullptr : &*place;
}

std::string pointer_to(const std::string &pointee)
{
    return pointee + " *";
}

std::string pointee_of(const std::string &pointer)
{
    return pointer.ends_with(" *") ? pointer.substr(0, pointer.size() - 2) : std::string{};
}

std::string mangled(const std::string &pointee)
{
    std::string name = "_p_" + pointee;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

tables read_tables(const std::string &folder)
{
    tables all;
    for (const row &columns : read_rows(folder + "/records.tsv", 5)) {
        record made;
        made.name = columns[0];
        made.stem = stem_of(columns[0]);
        made.size = number(columns[2]);
        made.alignment = number(columns[3]);
        made.dump_lines = number(columns[4]);
        all.records.push_back(made);
    }
    read_fields(folder + "/fields.tsv", all);
    check_init(folder + "/init.tsv", all);
    check_dumps(folder + "/dumps.tsv", all);
    read_commands(folder + "/commands.tsv", all);
    read_words(folder + "/numbers.tsv", all);
    return all;
}

} // namespace random_test
