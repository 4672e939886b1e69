// What the command table says of each command, and strict memory goes by, against the tables of
// commands and records.
#include "commands/command_table.h"
#include "tests/unit/expected_table.h"
#include "types.h"

#include <map>
#include <sstream>

namespace {

using namespace qxsh;

bool is_pointer(const std::string &type)
{
    return type.ends_with("*");
}

std::string name_of(word_kind kind)
{
    switch (kind) {
    case word_end:
        return "none";
    case word_unsigned_char:
        return "unsigned char";
    case word_unsigned_short:
        return "unsigned short";
    case word_unsigned_int:
        return "unsigned int";
    case word_int:
        return "int";
    case word_unsigned_long_long:
        return "unsigned long long";
    case word_any_handle:
        return "void *";
    default:
        return swig_module.type_initial[kind - word_handle]->str;
    }
}

std::vector<std::string> split(const std::string &types)
{
    std::vector<std::string> all;
    std::istringstream rest{types};
    for (std::string type; types != "-" && std::getline(rest, type, ',');)
        all.push_back(type);
    return all;
}

// A command's form, by the names that commands have.
command_form expected_form(const table_row &command)
{
    const std::string &name = command[0];
    if (command[3] == "status")
        return command_form::calls;
    if (name.ends_with("_array_create"))
        return command_form::makes_array;
    if (name.ends_with("_create"))
        return command_form::makes;
    if (command[2] == "void *")
        return command_form::releases;
    if (name.ends_with("_array_get") && is_pointer(command[3]))
        return command_form::points;
    if (name.ends_with("_array_get") || name.ends_with("_array_set"))
        return command_form::indexes;
    return command_form::plain;
}

TEST(memory_rules, say_of_every_command_what_its_words_and_its_form_are)
{
    std::map<std::string, const swig_command_info *> rows;
    for (const auto *each = swig_commands; each->name != nullptr; ++each)
        rows[each->name] = each;
    const auto commands = read_expected("commands.tsv");
    EXPECT_EQ(commands.size(), rows.size());
    for (const auto &command : commands) {
        SCOPED_TRACE(command[0]);
        ASSERT_TRUE(rows.contains(command[0]));
        const command_row &row = row_of(*rows[command[0]]);
        const auto types = split(command[2]);
        ASSERT_EQ(words_of(row), static_cast<int>(types.size()));
        for (std::size_t i = 0; i < types.size(); ++i)
            EXPECT_EQ(name_of(word_kinds[row.kinds + i]), types[i]) << i;
        EXPECT_EQ(row.form, expected_form(command));
        if (row.form == command_form::makes || row.form == command_form::makes_array) {
            EXPECT_EQ(name_of(static_cast<word_kind>(word_handle + row.what)), command[3]);
        }
        if (row.form == command_form::calls) {
            EXPECT_EQ(call_rows[row.what].name.text(), command[0]);
        }
    }
}

TEST(memory_rules, know_the_size_of_every_element)
{
    std::map<std::string, std::uint32_t> sizes{
        {"char *", 1},         {"unsigned char *", 1}, {"unsigned short *", 2},
        {"unsigned int *", 4}, {"int *", 4},           {"unsigned long long *", 8}};
    const std::size_t numbers = sizes.size();
    for (const auto &record : read_expected("records.tsv"))
        sizes[record[0] + " *"] = static_cast<std::uint32_t>(std::stoul(record[2]));
    EXPECT_EQ(sizes.size(), std::size_t{type_count});
    std::size_t records = 0;
    for (int type = 0; type < type_count; ++type) {
        const char *const name = swig_module.type_initial[type]->str;
        EXPECT_EQ(element_types[type].size, sizes[name]) << name;
        const int record = element_types[type].record;
        records += record >= 0 ? 1 : 0;
        if (record >= 0) {
            EXPECT_EQ(record_rows[record].size, sizes[name]) << name;
        }
    }
    EXPECT_EQ(records + numbers, std::size_t{type_count});
}

} // namespace
