// Fuzz target: the package qx over the module under strict memory, on the simulator under control.
// qx::get, qx::set, qx::json, qx::diff, qx::apply and qx::check with handles of records, of arrays
// without elements, of freed blocks and of other places; orders given through qx::sim; dumps that
// an output callback interrupts with another dump. Records agree with the commands of their fields,
// statuses with a model of the faults, and only live blocks are accessed, which the sanitizers
// check. Input: the steps in order.
#include "fuzz/bytes.h"
#include "fuzz/control_model.h"
#include "fuzz/expect.h"
#include "fuzz/handle_model.h"
#include "fuzz/module.h"
#include "fuzz/own_folder.h"
#include "fuzz/tally.h"
#include "fuzz/target.h"

#include "control.h"
#include "device.h"
#include "records/addresses.h"
#include "sdk_calls.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

extern "C" int Qxmemory_Init(Tcl_Interp *interp);

namespace fuzz {

namespace {

namespace files = std::filesystem;

constexpr unsigned most_steps = 16;
constexpr std::uint32_t longest_array = 4;

tally commands{"commands of qx"};
tally refused{"refused handles"};
tally interrupted{"interrupted dumps"};
tally orders{"orders"};
tally checked{"checked calls"};

std::string folder;
Tcl_Interp *interp;

std::string printed;           ///< by the dump that runs
std::string interrupting_dump; ///< its handle; empty: none, or it has begun
std::string printed_by_interrupting;

std::string stem_of(const std::string &pointee)
{
    return tables().find_record(pointee)->stem;
}

std::string type_in(const std::string &handle)
{
    return handle.substr(handle.find("_p_") + 3);
}

int run(const std::vector<std::string> &words)
{
    const std::vector<held> objects(words.begin(), words.end());
    ++commands;
    return evaluate({objects.begin(), objects.end()});
}

bool succeeds(const std::vector<std::string> &words)
{
    const int status = run(words);
    expect(status == TCL_OK || status == TCL_ERROR, "a command succeeds or fails");
    return status == TCL_OK;
}

std::string result_of(const std::vector<std::string> &words)
{
    if (!succeeds(words))
        finding(words[0] + " failed: " + result());
    return result();
}

std::string list_of(const std::vector<std::string> &words)
{
    const held list{Tcl_NewListObj(0, nullptr)};
    for (const std::string &word : words)
        Tcl_ListObjAppendElement(nullptr, list, held{word});
    return std::string{list.text()};
}

// Receives what commands print.
void receive(const char *bytes, std::size_t size)
{
    if (!interrupting_dump.empty()) {
        const std::string handle = std::exchange(interrupting_dump, {});
        std::string outer;
        outer.swap(printed);
        result_of({stem_of(type_in(handle)) + "_dump", handle});
        printed_by_interrupting = printed;
        printed = outer;
    }
    printed.append(bytes, size);
}

std::string dump_of(const std::string &handle)
{
    printed.clear();
    result_of({stem_of(type_in(handle)) + "_dump", handle});
    return printed;
}

// ---------------------------------------------------------------------------------- the scene

struct block
{
    std::string pointee;
    std::uint32_t address;
    std::uint32_t count;
};

struct place
{
    std::string handle;
    bool usable; ///< a record is there
};

class scene
{
public:
    explicit scene(std::span<const std::uint8_t> data) : input_(data) {}
    void play();

private:
    void create();
    void free_block();
    place any_place();
    bool in_some_block(std::uint32_t address) const;
    std::string any_usable();
    void read_json(const std::string &handle, std::string json,
                   const std::vector<unsigned char> &expected);
    void scatter(std::span<unsigned char> memory);
    void read();
    void write();
    void compare();
    void interrupt_dump();
    void order();
    void check();
    void check_log() const;

    bytes input_;
    std::vector<block> live_;
    std::vector<block> freed_;
    model_settings model_;
    std::vector<std::string> logged_; ///< functions, while there is a log
};

std::string record_handle(const block &of, std::uint32_t index)
{
    const std::uint32_t size = tables().find_record(of.pointee)->size;
    return handle_text(of.address + index * size, random_test::mangled(of.pointee));
}

void scene::create()
{
    const auto &records = tables().records;
    const auto &record = records[input_.below(static_cast<std::uint32_t>(records.size()))];
    const std::uint32_t count = input_.below(longest_array);
    const std::string handle = result_of({record.stem + "_array_create", std::to_string(count)});
    live_.push_back({record.name, address_in(handle), count});
}

void scene::free_block()
{
    if (live_.empty())
        return;
    const auto chosen = live_.begin() + input_.below(static_cast<std::uint32_t>(live_.size()));
    result_of({"qx_data_free", record_handle(*chosen, 0)});
    freed_.push_back(*chosen);
    live_.erase(chosen);
}

place scene::any_place()
{
    static const std::string words[] = {
        "NULL", "", "_", "word", "_00000000_p_qx_flow_t", "_10000000_p_qx_flow_t"};
    const std::uint8_t choice = input_.byte();
    if (choice < 16)
        return {words[choice % std::size(words)], false};
    if (choice < 48 && !freed_.empty())
        return {record_handle(freed_[choice % freed_.size()], 0), false};
    if (live_.empty())
        create();
    const block &of = live_[choice % live_.size()];
    const std::uint32_t index = input_.below(longest_array + 1);
    // Behind a block there may be another one.
    if (index >= of.count && in_some_block(address_in(record_handle(of, index))))
        return {record_handle(of, 0), of.count != 0};
    return {record_handle(of, index), index < of.count};
}

bool scene::in_some_block(std::uint32_t address) const
{
    return std::any_of(live_.begin(), live_.end(), [=](const block &each) {
        return address - each.address < each.count * tables().find_record(each.pointee)->size;
    });
}

// An empty text if there is none.
std::string scene::any_usable()
{
    const place chosen = any_place();
    if (chosen.usable)
        return chosen.handle;
    const auto filled =
        std::find_if(live_.begin(), live_.end(), [](const block &each) { return each.count != 0; });
    return filled == live_.end() ? "" : record_handle(*filled, 0);
}

// The bytes of the record behind a handle that is usable.
std::span<unsigned char> bytes_of(const std::string &handle)
{
    return {static_cast<unsigned char *>(qxsh::pointer_to(address_in(handle))),
            tables().find_record(type_in(handle))->size};
}

// Any bytes, also where no field is, and half of the time few of them.
void scene::scatter(std::span<unsigned char> memory)
{
    const bool few = input_.byte() % 2 != 0;
    for (unsigned char &byte : memory)
        byte = few && input_.byte() % 4 != 0 ? 0 : input_.byte();
}

// A record's JSON gives its bytes. A text with a few bytes changed is taken or refused; so is a
// file with it, which never lists calls.
void scene::read_json(const std::string &handle, std::string json,
                      const std::vector<unsigned char> &expected)
{
    const std::span<unsigned char> memory = bytes_of(handle);
    const auto is_expected = [&] {
        return std::equal(memory.begin(), memory.end(), expected.begin());
    };
    scatter(memory);
    result_of({"qx::set", handle, "-json", json});
    expect(is_expected(), "a record written from its JSON: " + json);
    for (unsigned changes = input_.below(4); changes != 0; --changes)
        json[input_.below(static_cast<std::uint32_t>(json.size()))] =
            static_cast<char>(1 + input_.below(126));
    if (!succeeds({"qx::set", handle, "-json", json}))
        expect(is_expected(), "a record that a text does not change: " + json);
    std::copy(expected.begin(), expected.end(), memory.begin());
    std::ofstream{folder + "/calls.json"} << json;
    expect(!succeeds({"qx::apply", folder + "/calls.json"}), "no list of calls: " + json);
    files::remove(folder + "/calls.json");
}

// As a dict and as JSON, and written back as it was, over whatever bytes.
void scene::read()
{
    const place of = any_place();
    std::vector<std::string> words{"qx::get", of.handle};
    const bool raw = input_.byte() % 2 != 0;
    if (raw)
        words.emplace_back("-raw");
    if (of.usable)
        scatter(bytes_of(of.handle));
    const bool got = succeeds(words);
    const std::string value = result();
    expect_equal(got, of.usable, "whether a record is read", of.handle);
    words[0] = "qx::json";
    expect_equal(succeeds(words), of.usable, "whether a record becomes JSON", of.handle);
    if (!of.usable) {
        ++refused;
        expect(!succeeds({"qx::set", of.handle, ""}), "no record is written: " + of.handle);
        return;
    }
    const std::string json = result();
    expect(is_json(json), "JSON is " + json);
    words.insert(words.end(), {"-view", "nosuch"});
    expect(!succeeds(words), "a view that does not exist");
    const std::span<unsigned char> memory = bytes_of(of.handle);
    const std::vector<unsigned char> before{memory.begin(), memory.end()};
    scatter(memory);
    result_of({"qx::set", of.handle, value});
    expect(std::equal(memory.begin(), memory.end(), before.begin()),
           "a record written as it was read: " + value);
    read_json(of.handle, json, before);
    words.resize(raw ? 3 : 2);
    words[0] = "qx::get";
    expect_equal(result_of(words), value, "a record written as it was read");
}

// A field, which the record's own command reads; a record that is refused stays as it was.
void scene::write()
{
    const std::string handle = any_usable();
    if (handle.empty())
        return;
    const random_test::record &record = *tables().find_record(type_in(handle));
    const auto &field =
        record.fields[input_.below(static_cast<std::uint32_t>(record.fields.size()))];
    if (field.count != 0 || field.nested != nullptr)
        return;
    const std::vector<std::string> getter{record.stem + "_get_" + field.name, handle};
    const std::string before = result_of(getter);
    const std::string value = std::to_string(input_.number(input_.below(9)));
    std::vector<std::string> dict{field.name, value};
    const std::uint8_t extra = input_.byte();
    if (extra < 32)
        dict.insert(dict.end(), {"no_field", "1"});
    else if (extra < 48)
        dict.emplace_back("odd");
    const bool written = succeeds({"qx::set", handle, list_of(dict)});
    expect(!written || extra >= 48, "a dict with a mistake is refused");
    expect_equal(result_of(getter), written ? value : before, field.name);
}

void scene::compare()
{
    const std::string handle = any_usable();
    if (handle.empty())
        return;
    expect_equal(result_of({"qx::diff", handle, handle}), "", "the difference from itself");
    const place other = any_place();
    if (succeeds({"qx::diff", handle, other.handle})) {
        expect(other.usable, "no difference from " + other.handle);
        const bool none = result().empty();
        const std::span<unsigned char> first = bytes_of(handle);
        expect_equal(none, std::equal(first.begin(), first.end(), bytes_of(other.handle).begin()),
                     "whether records are equal");
    }
}

void scene::interrupt_dump()
{
    const std::string outer = any_usable();
    const std::string inner = any_usable();
    if (outer.empty())
        return;
    const std::string alone = dump_of(outer);
    const std::string inner_alone = dump_of(inner);
    interrupting_dump = inner;
    printed_by_interrupting.clear();
    const std::string together = dump_of(outer);
    expect(interrupting_dump.empty(), "a dump prints");
    expect_equal(together, alone, "an interrupted dump");
    expect_equal(printed_by_interrupting, inner_alone, "the dump that interrupts it");
    ++interrupted;
}

// ------------------------------------------------------------------------- orders and calls

void scene::order()
{
    static const char *const patterns[] = {"*",     "qx_*",  "qx_flow_*", "qx_l3_*",
                                           "*_add", "*_get", "qx_pm_*",   "qx_qos_dscp_map_get"};
    const std::uint8_t detail = input_.byte();
    ++orders;
    switch (input_.byte() % 8) {
    case 0:
    case 1: {
        model_rule made{true, patterns[detail % std::size(patterns)]};
        made.once = detail % 3 != 0;
        made.first = 1 + detail % 4;
        made.number = 1 + detail % 90;
        for (const model_rule &rule : model_.rules)
            if (rule.pattern == made.pattern && rule.first == made.first && rule.once == made.once)
                return;
        result_of({"qx::sim::fault", made.pattern,
                   std::to_string(made.first) + (made.once ? "" : "+"),
                   std::to_string(made.number)});
        model_.rules.push_back(made);
        return;
    }
    case 2:
        result_of({"qx::sim::latency", patterns[detail % std::size(patterns)],
                   std::to_string(detail % 20)});
        return;
    case 3:
        result_of({"qx::sim::log", folder + "/log"});
        model_.log = folder + "/log";
        return;
    case 4:
        result_of({"qx::sim::keys", detail % 2 != 0 ? "on" : "off"});
        return;
    case 5:
        result_of({"qx::sim::reset"});
        return;
    case 6:
        expect(is_json(result_of({"qx::sim::snapshot"})), "a snapshot is JSON");
        return;
    default:
        result_of({"qx::sim::clear"});
        model_.rules.clear();
        model_.log.clear();
    }
}

// A call alone or in a script. It reaches the simulator unless one of its words is refused.
void scene::check()
{
    const auto &call = qxsh::call_rows[input_.below(qxsh::call_count)];
    const std::string name = call.name.text();
    std::vector<std::string> words{name};
    for (const std::string &type : tables().commands.at(name).arguments) {
        if (!type.ends_with('*'))
            words.push_back(std::to_string(input_.byte() % 4));
        else if (input_.byte() % 2 != 0)
            words.push_back(any_place().handle);
        else
            words.emplace_back("NULL");
    }
    ++checked;
    const bool script = input_.byte() % 2 != 0;
    const bool done = script ? succeeds({"qx::check", list_of(words)}) : [&] {
        words.insert(words.begin(), "qx::check");
        return succeeds(words);
    }();
    const std::string code = Tcl_GetVar(interp, "errorCode", TCL_GLOBAL_ONLY);
    const bool failed = !done && code.starts_with("QX_STATUS ");
    if (!done && !failed) {
        expect(code.starts_with("SWIG "), name + " ends with " + code + ": " + result());
        return;
    }
    if (!model_.log.empty())
        logged_.push_back(name);
    const std::uint32_t fault = status_of(model_, name);
    const std::uint32_t status =
        failed ? static_cast<std::uint32_t>(std::stoul(code.substr(10))) : 0;
    if (fault != 0)
        expect_equal(status, fault, "a call's status", name);
}

void scene::check_log() const
{
    std::ifstream stream{folder + "/log"};
    std::size_t number = 0;
    for (std::string line; std::getline(stream, line); ++number) {
        expect(is_json(line), line);
        expect(number < logged_.size(), "the log has a line for each call");
        expect(line.find("\"" + logged_[number] + "\"") != line.npos, line);
    }
    expect_equal(number, logged_.size(), "lines of the log");
}

void scene::play()
{
    using step = void (scene::*)();
    static constexpr step steps[] = {&scene::create,  &scene::read,           &scene::write,
                                     &scene::compare, &scene::interrupt_dump, &scene::check,
                                     &scene::order,   &scene::read,           &scene::free_block};
    for (unsigned done = 0; done < most_steps && !input_.empty(); ++done)
        (this->*steps[input_.byte() % std::size(steps)])();
    check_log();
    result_of({"qx::sim::clear"});
    result_of({"qx::sim::keys", "off"});
    files::remove(folder + "/log");
    while (!live_.empty())
        free_block();
    qxsim::reset_devices();
}

} // namespace

void prepare(const char *program)
{
    folder = own_folder();
    for (const char *name : {"QX_SIM_FAULT", "QX_SIM_LATENCY", "QX_SIM_LOG", "QX_SIM_KEYS"})
        unsetenv(name);
    setenv("QXSH_STRICT_MEMORY", "1", 1);
    interp = start_module(program, receive, tcl_commands::all);
    qxsim::control = qxsim::control_mode::unread;
    if (Tcl_EvalFile(interp, QXSH_PACKAGE_QX "/qx.tcl") != TCL_OK ||
        Qxmemory_Init(interp) != TCL_OK)
        finding(Tcl_GetStringResult(interp));
    result_of({"qx::sim::attach", folder + "/control"});
}

void execute(std::span<const std::uint8_t> data)
{
    scene{data}.play();
}

} // namespace fuzz
