// The commands that the random script calls, matched with the table of all commands.
#include "script.h"

#include <algorithm>
#include <stdexcept>

namespace random_test {

namespace {

class action_list
{
public:
    explicit action_list(const tables &all) : all_(all) {}

    void add(deed what, const std::string &name, std::vector<std::string> arguments,
             const std::string &result, action on)
    {
        const auto place = all_.commands.find(name);
        if (place == all_.commands.end())
            throw std::runtime_error("commands.tsv has no " + name);
        if (place->second.arguments != arguments || place->second.result != result)
            throw std::runtime_error("commands.tsv: other arguments or result of " + name);
        on.what = what;
        on.called = &place->second;
        made_.push_back(on);
    }

    void add_record(const record &type);
    void add_field(const record &type, const field &member);
    void add_cell(const number_type &number);

    std::vector<action> made() const { return made_; }

private:
    const tables &all_;
    std::vector<action> made_;
};

void action_list::add_field(const record &type, const field &member)
{
    const std::string self = pointer_to(type.name);
    const action on{{}, nullptr, &type, &member, member.number};
    std::vector<std::string> set{self, member.type};
    std::vector<std::string> get{self};
    if (member.count != 0) {
        set.push_back("unsigned int");
        get.push_back("unsigned int");
    }
    const bool nested = member.nested != nullptr;
    add(nested ? deed::nested_set : deed::number_set, type.stem + "_set_" + member.name, set,
        "none", on);
    add(nested ? deed::nested_get : deed::number_get, type.stem + "_get_" + member.name, get,
        nested ? pointer_to(member.nested->name) : "unsigned", on);
}

void action_list::add_record(const record &type)
{
    const std::string self = pointer_to(type.name);
    const action on{{}, nullptr, &type, nullptr, nullptr};
    add(deed::record_create, type.stem + "_create", {}, self, on);
    add(deed::record_array_create, type.stem + "_array_create", {"unsigned int"}, self, on);
    add(deed::record_array_get, type.stem + "_array_get", {self, "unsigned int"}, self, on);
    add(deed::record_array_set, type.stem + "_array_set", {self, self, "unsigned int"}, "none", on);
    add(deed::record_dump, type.stem + "_dump", {self}, "none", on);
    if (type.has_init) {
        std::vector<std::string> arguments{self};
        for (const field &member : type.fields)
            if (member.in_init)
                arguments.push_back(member.type);
        add(deed::record_init, type.stem + "_init", arguments, "none", on);
    }
    for (const field &member : type.fields)
        add_field(type, member);
}

void action_list::add_cell(const number_type &number)
{
    const std::string stem = std::string{"qx_"} + number.cell;
    const std::string self = pointer_to(number.native);
    const std::string result = number.width == 8                     ? "uint64"
                               : std::string{"int"} == number.native ? "int"
                                                                     : "unsigned";
    const action on{{}, nullptr, nullptr, nullptr, &number};
    add(deed::cell_create, stem + "_create", {number.native}, self, on);
    add(deed::cell_get, stem + "_get", {self}, result, on);
    add(deed::cell_array_create, stem + "_array_create", {number.native, "unsigned int"}, self, on);
    add(deed::cell_array_get, stem + "_array_get", {self, "unsigned int"}, result, on);
    add(deed::cell_array_set, stem + "_array_set", {self, number.native, "unsigned int"}, "none",
        on);
}

} // namespace

std::vector<action> all_actions(const tables &all)
{
    action_list list{all};
    for (const record &type : all.records)
        list.add_record(type);
    for (const number_type &number : number_types())
        list.add_cell(number);
    list.add(deed::block_free, "qx_data_free", {"void *"}, "none", {});
    const auto sdk_calls =
        std::count_if(all.commands.begin(), all.commands.end(),
                      [](const auto &each) { return each.second.result == "status"; });
    if (list.made().size() + static_cast<std::size_t>(sdk_calls) != all.commands.size())
        throw std::runtime_error("commands.tsv has commands that no record and no cell explains");
    return list.made();
}

} // namespace random_test
