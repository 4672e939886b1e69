// The command table: its end, its names and their order, and what Tcl is told of each command.
#include "commands/command_table.h"
#include "shell/demo.h"
#include "tests/unit/expected_table.h"
#include "tests/unit/interpreter.h"

#include <algorithm>
#include <map>
#include <set>

namespace {

class command_table : public testing::Test
{
protected:
    command_table()
    {
        for (const auto *each = swig_commands; each->name != nullptr; ++each)
            names_.emplace_back(each->name);
        for (const auto &row : read_expected("order.txt"))
            order_[row[0]].push_back(row[1]);
    }

    std::vector<std::string> names_;
    std::map<std::string, std::vector<std::string>> order_; // the second columns, by the first
};

TEST_F(command_table, has_1093_different_names_and_an_end)
{
    EXPECT_EQ(names_.size(), 1093u);
    EXPECT_EQ(std::set(names_.begin(), names_.end()).size(), 1093u);
    EXPECT_TRUE(std::all_of(names_.begin(), names_.end(),
                            [](const auto &name) { return name.starts_with("qx_"); }));
    const auto &end = swig_commands[1093];
    EXPECT_EQ(end.name, nullptr);
    EXPECT_EQ(end.wrapper, nullptr);
    EXPECT_EQ(end.client_data, nullptr);
}

TEST_F(command_table, begins_with_the_qos_maps)
{
    ASSERT_EQ(order_["first"].size(), 6u);
    EXPECT_EQ(std::vector(names_.begin(), names_.begin() + 6), order_["first"]);
}

TEST_F(command_table, ends_with_the_cells)
{
    ASSERT_EQ(order_["last"].size(), 26u);
    EXPECT_EQ(std::vector(names_.end() - 26, names_.end()), order_["last"]);
}

// The group of one record, one behind the other.
TEST_F(command_table, groups_of_records)
{
    std::map<std::string, std::vector<std::string>> fields;
    for (const auto &row : read_expected("fields.tsv"))
        fields[row[0]].push_back(row[1]);
    std::size_t records = 0;
    for (const auto &row : read_expected("records.tsv")) {
        const auto &record = row[0];
        const auto stem =
            (record.ends_with("_t") ? record.substr(0, record.size() - 2) : record) + "_";
        std::vector<std::string> group = {stem + "create"};
        if (row[1] == "record")
            group.push_back(stem + "init");
        group.push_back(stem + "dump");
        for (const auto &field : fields[record]) {
            group.push_back(stem + "set_" + field);
            group.push_back(stem + "get_" + field);
        }
        for (const char *operation : {"array_create", "array_set", "array_get"})
            group.push_back(stem + operation);
        const auto start = std::find(names_.begin(), names_.end(), group.front());
        ASSERT_GE(names_.end() - start, static_cast<std::ptrdiff_t>(group.size())) << record;
        EXPECT_EQ(std::vector(start, start + static_cast<std::ptrdiff_t>(group.size())), group);
        ++records;
    }
    EXPECT_EQ(records, 56u);
}

TEST_F(command_table, is_what_tcl_knows)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    for (const auto *each = swig_commands; each->name != nullptr; ++each) {
        Tcl_CmdInfo command;
        ASSERT_TRUE(Tcl_GetCommandInfo(tcl, each->name, &command)) << each->name;
        EXPECT_EQ(command.objProc, each->wrapper);
        EXPECT_EQ(command.objClientData, nullptr);
        EXPECT_EQ(command.deleteProc, nullptr);
        EXPECT_EQ(each->client_data, nullptr);
    }
    std::set<Tcl_ObjCmdProc *> wrappers;
    for (const auto *each = swig_commands; each->name != nullptr; ++each)
        wrappers.insert(each->wrapper);
    EXPECT_EQ(wrappers.size(), 1093u);
}

} // namespace
