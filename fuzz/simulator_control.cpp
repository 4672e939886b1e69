// Fuzz target: control of the simulator. Any text is read as a control file or a switch as the
// model reads it, with one complaint per mistake; and calls under faults, latencies, logs and
// orders behave as the rules say and write valid JSON. Files are written to the program's own
// folder. Input: one byte selects one of these.
#include "fuzz/call_scene.h"
#include "fuzz/control_model.h"
#include "fuzz/expect.h"
#include "fuzz/own_folder.h"
#include "fuzz/target.h"

#include "control.h"
#include "control_file.h"
#include "listing.h"
#include "qx_status.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fuzz {

namespace {

namespace files = std::filesystem;

std::string folder;

std::string text_of(const std::string &file)
{
    std::ifstream stream{file, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

// By renaming, as docs/simulator.md requires.
void replace_file(const std::string &file, const std::string &text)
{
    std::ofstream{file + ".new", std::ios::binary} << text;
    expect(std::rename((file + ".new").c_str(), file.c_str()) == 0, "a file is renamed");
}

// Captures what is written to the C library's stderr.
class complaints
{
public:
    complaints() : real_(stderr), stream_(open_memstream(&text_, &size_)) { stderr = stream_; }
    ~complaints()
    {
        stderr = real_;
        std::fclose(stream_);
        std::free(text_);
    }
    complaints(const complaints &) = delete;
    complaints &operator=(const complaints &) = delete;

    std::vector<std::string> lines()
    {
        std::fflush(stream_);
        std::vector<std::string> found;
        std::size_t start = 0;
        const std::string_view all{text_, size_};
        for (std::size_t end; (end = all.find('\n', start)) != all.npos; start = end + 1)
            found.emplace_back(all.substr(start, end - start));
        return found;
    }

private:
    std::FILE *real_;
    char *text_ = nullptr;
    std::size_t size_ = 0;
    std::FILE *stream_;
};

void compare(const qxsim::control_settings &is, const model_settings &should)
{
    std::size_t faults = 0;
    std::size_t latencies = 0;
    for (const model_rule &rule : should.rules) {
        if (rule.fault) {
            expect(faults < is.faults.size(), "no fault is missing");
            const qxsim::fault_rule &read = is.faults[faults++];
            expect_equal(read.pattern, rule.pattern, "a fault's pattern");
            expect_equal(read.first, rule.first, "a fault's first call", rule.pattern);
            expect_equal(read.once, rule.once, "whether a fault fires once", rule.pattern);
            expect_equal(read.status, rule.number, "a fault's status", rule.pattern);
        } else {
            expect(latencies < is.latencies.size(), "no latency is missing");
            const qxsim::latency_rule &read = is.latencies[latencies++];
            expect_equal(read.pattern, rule.pattern, "a latency's pattern");
            expect_equal(read.microseconds, rule.number, "a latency", rule.pattern);
        }
    }
    expect_equal(is.faults.size(), faults, "faults");
    expect_equal(is.latencies.size(), latencies, "latencies");
    expect_equal(is.log, should.log, "the log");
    expect(is.keys == should.keys, "whether keys are shown");
}

void check_file(const std::string &text)
{
    const std::string name = folder + "/read";
    replace_file(name, text);
    qxsim::control_order order;
    qxsim::control_file reader;
    reader.name(name);
    expect(reader.read_if_changed(order), "a new file is read");
    const model_settings right = read_control_text(text);
    compare(order.settings, right);
    expect_equal(order.answer, right.answer, "where the answer goes");
    std::vector<std::string> orders;
    for (const qxsim::control_action &action : order.actions) {
        using kind = qxsim::control_action::kind;
        orders.push_back(action.what == kind::reset      ? "reset"
                         : action.what == kind::state    ? "state " + action.file
                         : action.what == kind::snapshot ? "snapshot " + action.file
                         : action.what == kind::save     ? "save " + action.file
                                                         : "restore " + action.file);
    }
    expect(orders == right.orders, "the orders are those of the file");
    expect_equal(order.mistakes.size(), right.mistakes.size(), "mistakes", text);
    for (std::size_t i = 0; i < order.mistakes.size(); ++i)
        expect_equal(order.mistakes[i].line, right.mistakes[i], "a mistake's line",
                     order.mistakes[i].text);
    expect(!reader.read_if_changed(order), "an old file is not read again");
}

void check_switch(const char *kind, const std::string &text)
{
    qxsim::control_settings settings;
    std::vector<std::string> mistakes;
    qxsim::read_rules("QX_SIM_SWITCH", kind, text, settings, mistakes);
    const model_settings right = read_switch(kind, text);
    compare(settings, right);
    expect_equal(mistakes.size(), right.mistakes.size(), "mistakes", text);
}

// ------------------------------------------------------------------------ calls under control

class controlled_scene
{
public:
    controlled_scene(bytes input, bool lists) : input_(input), calls_(input_), lists_(lists) {}
    void play();

private:
    std::string any_line();
    void put_in_force(const std::string &lines);
    bool cannot_be_obeyed(const model_settings &read) const;
    void check_orders() const;
    void check_answer(const std::string &name) const;
    void check_log() const;

    bytes input_;
    call_scene calls_;
    const bool lists_; ///< whether there are orders for snapshots and states
    model_settings model_;
    bool refused_ = false;            ///< the control file is, so no call is answered
    std::vector<std::string> logged_; ///< functions, while there is a log
};

// Mostly valid lines, with names of files that may be written, and a few invalid ones.
std::string controlled_scene::any_line()
{
    static const std::string names[] = {"/one", "/two", "/none/three", "/one",
                                        "/log", "/",    "/two",        "/one"};
    static const char *const patterns[] = {"*",     "qx_*",      "qx_flow_*", "qx_l3_*",
                                           "*_add", "*_get",     "*o*l*",     "qx_pm_cpu_info_get",
                                           "qx*t",  "qx_qos_**", "nothing",   "*_"};
    const std::uint8_t what = input_.byte();
    const std::uint8_t detail = input_.byte();
    const std::string pattern = patterns[detail % std::size(patterns)];
    const std::string when = detail < 80    ? "*"
                             : detail < 200 ? std::to_string(1 + detail % 5)
                                            : std::to_string(1 + detail % 5) + "+";
    switch (what % (lists_ ? 13 : 11)) {
    case 0:
    case 1:
    case 2:
        return "fault " + pattern + " " + when + " " + std::to_string(1 + what) + "\n";
    case 3:
        return "latency " + pattern + " " + std::to_string(detail % 3) + "\n";
    case 4:
    case 5:
        return "log " + folder + "/log\n";
    case 6:
        return detail < 128 ? "keys on\n" : "keys off\n";
    case 7:
        return "reset\n";
    case 8:
        return "answer " + folder + names[detail % std::size(names)] + "\n";
    case 9:
        return "process " + std::to_string(detail % 4 != 0 ? getpid() : 1 + detail) + "\n";
    case 10:
        return detail < 20 ? "nonsense\n" : "# " + pattern + "\n";
    case 11:
        return "snapshot " + folder + names[detail % std::size(names)] + "\n";
    default:
        return "state " + folder + names[detail % std::size(names)] + "\n";
    }
}

// Whether a file that the lines name cannot be written: in no folder, or a folder, or as an answer
// there already.
bool controlled_scene::cannot_be_obeyed(const model_settings &read) const
{
    const auto of_folder = [](const std::string &name) {
        return name.ends_with("/") || name.ends_with("/three");
    };
    std::map<std::string, bool> restorable; // files that the lines write: whether they are saved
    for (const std::string &order : read.orders) {
        const std::string file = order.substr(order.find(' ') + 1);
        const bool restores = order.starts_with("restore ");
        if (of_folder(order) || (!restores && order.ends_with(" " + read.answer)))
            return true;
        if (!restores)
            restorable[file] = order.starts_with("save ");
        else if (const auto known = restorable.find(file);
                 known != restorable.end() ? !known->second
                                           : !text_of(file).starts_with("qx_sim devices "))
            return true;
    }
    return of_folder(read.answer) || (!read.answer.empty() && files::exists(read.answer)) ||
           (!read.log.empty() && read.log == read.answer);
}

// The call that makes the simulator check the file does not count as a call.
void controlled_scene::put_in_force(const std::string &lines)
{
    replace_file(folder + "/control", lines);
    model_settings read = read_control_text(lines);
    std::vector<bool> kept(model_.rules.size());
    for (model_rule &rule : read.rules) {
        for (std::size_t i = 0; i < kept.size(); ++i) {
            if (!kept[i] && model_.rules[i] == rule) {
                rule.seen = model_.rules[i].seen;
                kept[i] = true;
                break;
            }
        }
    }
    files::remove(folder + "/one");
    files::remove(folder + "/two");
    refused_ = !read.mistakes.empty() || cannot_be_obeyed(read);
    if (read.mistakes.empty())
        model_ = read;
    complaints said;
    unsigned char cell = 7;
    expect_equal(qx_pm_ne_suspend_get(65535, &cell),
                 unsigned{refused_ ? QX_BAD_SWITCH : QX_BAD_DEVICE}, "a nudge", lines);
    expect(cell == 7, "a nudge writes nothing");
    if (read.answer.empty() && (!refused_ || !read.mistakes.empty())) {
        const auto told = said.lines();
        expect_equal(told.size(), read.mistakes.size(), "complaints", lines);
        for (std::size_t i = 0; i < told.size(); ++i)
            expect(told[i].starts_with("qx_sim: " + folder +
                                       "/control:" + std::to_string(read.mistakes[i]) + ": "),
                   told[i]);
    }
    if (!refused_)
        check_orders();
    if (!read.answer.empty() && !refused_)
        check_answer(read.answer);
}

void controlled_scene::check_answer(const std::string &name) const
{
    const std::string text = text_of(name);
    expect(text.starts_with("ok\n"), text);
    std::size_t fired = 0;
    for (std::size_t at = 0; (at = text.find("\nfired ", at)) != text.npos; ++at)
        ++fired;
    const auto faults = std::count_if(model_.rules.begin(), model_.rules.end(),
                                      [](const model_rule &rule) { return rule.fault; });
    expect_equal(fired, static_cast<std::size_t>(faults), "faults in the answer", text);
}

void controlled_scene::check_orders() const
{
    std::string last;
    for (const std::string &order : model_.orders)
        if (!order.starts_with("restore") && (order.ends_with("/one") || order.ends_with("/two")))
            last = order;
    if (last.empty() || last.starts_with("save"))
        return;
    const std::string text = text_of(last.substr(last.find(' ') + 1));
    expect(is_json(text), "an order's file is JSON");
    if (last.starts_with("snapshot") && model_.orders.back() == last)
        expect_equal(text, qxsim::snapshot_text(model_.keys.value_or(false)), "the snapshot");
}

void controlled_scene::check_log() const
{
    const std::string text = text_of(folder + "/log");
    std::size_t start = 0;
    std::size_t number = 0;
    for (std::size_t end; (end = text.find('\n', start)) != text.npos; start = end + 1) {
        const std::string line = text.substr(start, end - start);
        expect(is_json(line), line);
        expect(number < logged_.size(), "the log has a line for each call");
        expect(line.find("\"" + logged_[number] + "\"") != line.npos, line);
        ++number;
    }
    expect_equal(number, logged_.size(), "lines of the log");
}

void controlled_scene::play()
{
    complaints said;
    put_in_force("reset\n");
    files::remove(folder + "/log");
    bool log_overwritten = false;
    for (unsigned phase = 0; phase < 2 && !input_.empty(); ++phase) {
        std::string lines;
        for (unsigned left = input_.below(6); left > 0; --left)
            lines += any_line();
        log_overwritten = log_overwritten || lines.find("t " + folder + "/log") != lines.npos ||
                          lines.find("e " + folder + "/log") != lines.npos ||
                          lines.find("r " + folder + "/log") != lines.npos;
        put_in_force(lines);
        for (unsigned left = input_.below(5); left > 0; --left) {
            const made_call made = calls_.next();
            if (refused_) {
                expect_equal(made.status, unsigned{QX_BAD_SWITCH}, "a refused call's status");
                continue;
            }
            if (!model_.log.empty())
                logged_.emplace_back(made.function->name.text());
            const std::uint32_t fault = status_of(model_, made.function->name.text());
            if (fault != 0)
                expect_equal(made.status, fault, "a call's status", made.function->name.text());
            else if (!documented(made.function->name.text(), made.status))
                finding(std::string{made.function->name.text()} + " answered undocumentedly");
        }
    }
    if (!log_overwritten)
        check_log();
}

} // namespace

void prepare(const char *)
{
    folder = own_folder();
    for (const char *name : {"QX_SIM_FAULT", "QX_SIM_LATENCY", "QX_SIM_LOG", "QX_SIM_KEYS"})
        unsetenv(name);
    setenv("QX_SIM_CONTROL", (folder + "/control").c_str(), 1);
}

void execute(std::span<const std::uint8_t> data)
{
    bytes input{data};
    switch (input.byte() % 8) {
    case 0:
    case 1:
        return check_switch("fault", input.rest());
    case 2:
        return check_switch("latency", input.rest());
    case 3:
    case 4:
    case 5:
        return check_file(input.rest());
    default:
        return controlled_scene{input, one_in(64, data)}.play();
    }
}

} // namespace fuzz
