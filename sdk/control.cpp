// Control of the simulator from outside the SDK. While a control file is named, a call on device
// 65535 only makes the simulator check that file: it is not counted, logged or delayed.
#include "control.h"

#include "call_log.h"
#include "complaint.h"
#include "control_file.h"
#include "device.h"
#include "kept_state.h"
#include "listing.h"
#include "numbers.h"
#include "records/files.h"
#include "records/profile.h"
#include "records/switches.h"
#include "saved_devices.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <utility>

namespace qxsim {

control_mode control = control_mode::unread;

namespace {

constexpr std::uint32_t nudge_device = 65535;

// The state of control; created only if a switch is set, and kept until the process ends.
struct controls
{
    control_settings environment;
    control_settings file;
    control_file reader;
    call_log log;
    call_counts counts;
    kept_state state;
    bool refused = false;               ///< the control file is mistaken: no call is answered
    std::vector<std::string> told = {}; ///< the environment's mistakes that were last told

    bool keys() const { return file.keys.value_or(environment.keys.value_or(false)); }
    std::string apply();
    std::string obey(const control_action &action);
    void answer(const control_order &order);
    void look();
    bool read_environment(const std::array<const char *, 6> &values);
};

controls *in_force = nullptr;

// A log named in the control file replaces the environment's. Returns what is wrong with it.
std::string controls::apply()
{
    log.show_keys(keys());
    return log.use(file.log.empty() ? environment.log : file.log);
}

std::string controls::obey(const control_action &action)
{
    switch (action.what) {
    case control_action::kind::reset:
        reset_devices();
        break;
    case control_action::kind::snapshot:
        return qxsh::write_file(action.file, snapshot_text(keys()));
    case control_action::kind::state:
        return qxsh::write_file(action.file,
                                state_text(keys(), counts, environment.faults, file.faults));
    case control_action::kind::save:
        return qxsh::replace_file(action.file, saved_devices());
    case control_action::kind::restore:
        return restore_file(action.file);
    }
    return {};
}

std::string numbered(const control_mistake &mistake)
{
    return (mistake.line == 0 ? "" : std::to_string(mistake.line) + ": ") + mistake.text;
}

// Says what came of the control file: in the file it names for that, or else its mistakes on
// stderr.
void controls::answer(const control_order &order)
{
    if (order.answer.empty()) {
        for (const control_mistake &mistake : order.mistakes)
            complain("%s:%s%s", reader.name().c_str(), mistake.line == 0 ? " " : "",
                     numbered(mistake).c_str());
        return;
    }
    std::string text = order.mistakes.empty() ? "ok\n" : "";
    for (const control_mistake &mistake : order.mistakes)
        text += "error " + numbered(mistake) + "\n";
    for (const control_settings *const set : {&environment, &file})
        for (const fault_rule &rule : set->faults)
            text += "fired " + std::to_string(rule.fired) + " " + rule.words + "\n";
    const std::string mistake = qxsh::write_new_file(order.answer, text);
    if (!mistake.empty()) {
        complain("%s: %s", reader.name().c_str(), mistake.c_str());
        refused = true;
    }
}

void controls::look()
{
    control_order order;
    if (!reader.read_if_changed(order))
        return;
    if (order.mistakes.empty()) {
        keep_counts(file, order.settings);
        file = std::move(order.settings);
        const auto add_mistake = [&](std::string mistake) {
            if (!mistake.empty())
                order.mistakes.push_back({0, std::move(mistake)});
        };
        add_mistake(apply());
        for (const control_action &action : order.actions)
            add_mistake(obey(action));
        state.after();
    }
    refused = !order.mistakes.empty();
    answer(order);
}

// False after a mistake, which is told when it is new.
bool controls::read_environment(const std::array<const char *, 6> &values)
{
    const auto [control_name, faults, latencies, log_name, keys_word, state_name] = values;
    std::vector<std::string> mistakes;
    environment = {};
    reader.name(control_name != nullptr ? qxsh::absolute(control_name) : std::string{});
    if (faults != nullptr)
        read_rules("QX_SIM_FAULT", "fault", faults, environment, mistakes);
    if (latencies != nullptr)
        read_rules("QX_SIM_LATENCY", "latency", latencies, environment, mistakes);
    if (log_name != nullptr)
        environment.log = qxsh::absolute(log_name);
    std::string mistake = apply();
    if (!mistake.empty())
        mistakes.push_back("QX_SIM_LOG: " + std::move(mistake));
    if (mistakes != told)
        for (const std::string &each : mistakes)
            complain("%s", each.c_str());
    told = std::move(mistakes);
    if (!told.empty())
        return false;
    environment.keys = keys_word != nullptr && qxsh::switched_on("QX_SIM_KEYS");
    log.show_keys(keys());
    if (state_name != nullptr) {
        state.name(qxsh::absolute(state_name));
        std::atexit([] { in_force->state.finish(); });
    }
    return true;
}

// Uses the profile that the environment names. Returns what is wrong with it.
std::string begin_profile()
{
    const char *const value = qxsh::environment_value("QX_PROFILE");
    if (value == nullptr)
        return numbers == default_numbers ? std::string{} : use_profile({});
    const std::string name = value;
    std::string text;
    const int error = qxsh::read_file(qxsh::absolute(name), text);
    if (error != 0)
        return name + ": " + (error == EINVAL ? "not a regular file" : std::strerror(error));
    qxsh::profile profile;
    if (const auto mistake = qxsh::read_profile(text, profile))
        return name + ":" + std::to_string(mistake->line) + ": " + mistake->text;
    const std::string mistake = use_profile(std::move(profile));
    return mistake.empty() ? mistake : name + ":" + mistake;
}

// Reads the environment; false as long as it has a mistake.
bool begin_control()
{
    static std::string told; // the profile's mistake that was last told
    std::string mistake = begin_profile();
    if (!mistake.empty() && mistake != told)
        complain("%s", mistake.c_str());
    told = std::move(mistake);
    if (!told.empty())
        return false;
    static constexpr const char *names[] = {"QX_SIM_CONTROL", "QX_SIM_FAULT", "QX_SIM_LATENCY",
                                            "QX_SIM_LOG",     "QX_SIM_KEYS",  "QX_SIM_STATE"};
    std::array<const char *, 6> values{};
    bool any = false;
    for (std::size_t index = 0; index < values.size(); ++index) {
        values[index] = qxsh::environment_value(names[index]);
        any = any || values[index] != nullptr;
    }
    if (any) {
        if (in_force == nullptr)
            in_force = new controls;
        if (!in_force->read_environment(values))
            return false;
    }
    control = any ? control_mode::on : control_mode::off;
    return true;
}

void wait(std::uint32_t microseconds)
{
    timespec rest{static_cast<time_t>(microseconds / 1'000'000),
                  static_cast<long>(microseconds % 1'000'000 * 1000)};
    while (nanosleep(&rest, &rest) != 0 && errno == EINTR) {
    }
}

// Reads the environment and obeys the control file as far as that is still to do. Returns QX_OK if
// the call is to be performed, else its status.
qx_status prepare(const call_row &call, const call_word *words)
try {
    if (control == control_mode::unread && !begin_control())
        return QX_BAD_SWITCH;
    if (control == control_mode::off)
        return QX_OK;
    if (!in_force->state.before())
        return QX_BAD_SWITCH;
    in_force->look();
    if (in_force->refused)
        return QX_BAD_SWITCH;
    const bool nudge = in_force->reader.named() && call.names_device;
    return nudge && words[0].value == nudge_device ? QX_BAD_DEVICE : QX_OK;
} catch (...) {
    if (in_force != nullptr)
        in_force->reader.forget();
    return QX_NO_MEMORY;
}

} // namespace

unsigned int perform_controlled(const call_row &call, const call_word *words,
                                carry_out_function *carry_out)
{
    const qx_status refusal = prepare(call, words);
    if (refusal != QX_OK)
        return number_of(refusal);
    if (control == control_mode::off)
        return number_of(carry_out(call, words));
    controls &all = *in_force;
    const std::uint32_t number = all.counts.count(call);
    if (all.log.open())
        all.log.start(call, words, number);
    const std::uint32_t latency = latency_for(all.environment, all.file, call.name.text());
    if (latency != 0)
        wait(latency);
    const std::uint32_t fault = fault_for(all.environment, all.file, call.name.text());
    const std::uint32_t status = fault != 0 ? fault : number_of(carry_out(call, words));
    all.state.after();
    if (all.log.open())
        all.log.finish(call, words, status, fault != 0);
    return status;
}

} // namespace qxsim
