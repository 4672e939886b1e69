// Control of the simulator from outside the SDK. While a control file is named, a call on device
// 65535 only makes the simulator check that file: it is not counted, logged or delayed.
#include "control.h"

#include "call_log.h"
#include "control_file.h"
#include "device.h"
#include "files.h"
#include "listing.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <unistd.h>

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

    void apply();
    void obey(const control_action &action);
    void look();
};

controls *in_force = nullptr;

const char *switch_value(const char *name) noexcept
{
    const char *const value = std::getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

// A set-user-ID or set-group-ID program ignores the switches.
bool privileged() noexcept
{
    return getuid() != geteuid() || getgid() != getegid();
}

// A log named in the control file replaces the environment's; keys are shown if either asks for it.
void controls::apply()
{
    log.use(file.log.empty() ? environment.log : file.log, environment.keys || file.keys);
}

void controls::obey(const control_action &action)
{
    const bool keys = environment.keys || file.keys;
    switch (action.what) {
    case control_action::kind::reset:
        reset_devices();
        break;
    case control_action::kind::snapshot:
        write_file(action.file, snapshot_text(keys));
        break;
    case control_action::kind::state:
        write_file(action.file, state_text(keys, counts, environment.faults, file.faults));
        break;
    }
}

void controls::look()
{
    std::vector<control_action> actions;
    if (!reader.read_if_changed(file, actions))
        return;
    apply();
    for (const control_action &action : actions)
        obey(action);
}

void read_environment()
{
    static constexpr const char *names[] = {"QX_SIM_CONTROL", "QX_SIM_FAULT", "QX_SIM_LATENCY",
                                            "QX_SIM_LOG", "QX_SIM_KEYS"};
    std::array<const char *, 5> values{};
    bool any = false;
    for (std::size_t index = 0; index < values.size() && !privileged(); ++index) {
        values[index] = switch_value(names[index]);
        any = any || values[index] != nullptr;
    }
    if (!any) {
        control = control_mode::off;
        return;
    }
    auto made = std::make_unique<controls>();
    const auto [control_name, faults, latencies, log, keys] = values;
    if (control_name != nullptr)
        made->reader.name(control_name);
    if (faults != nullptr)
        read_rules("QX_SIM_FAULT", "fault", faults, made->environment);
    if (latencies != nullptr)
        read_rules("QX_SIM_LATENCY", "latency", latencies, made->environment);
    if (log != nullptr)
        made->environment.log = log;
    made->environment.keys = keys != nullptr && std::string{keys} != "0";
    made->apply();
    in_force = made.release();
    control = control_mode::on;
}

void wait(std::uint32_t microseconds) noexcept
{
    timespec rest{static_cast<time_t>(microseconds / 1'000'000),
                  static_cast<long>(microseconds % 1'000'000 * 1000)};
    while (nanosleep(&rest, &rest) != 0 && errno == EINTR) {
    }
}

// Obeys the control file; false if the call only asked for that.
bool prepare(controls &all, const call_row &call, const call_word *words) noexcept
try {
    all.look();
    return !(all.reader.named() && call.names_device && words[0].value == nudge_device);
} catch (...) {
    complain("no memory to obey the control file");
    return true;
}

} // namespace

unsigned int perform_controlled(const call_row &call, const call_word *words,
                                carry_out_function *carry_out) noexcept
{
    if (control == control_mode::unread) {
        try {
            read_environment();
        } catch (...) {
            complain("no memory to read the environment");
            control = control_mode::off;
        }
    }
    if (control == control_mode::off)
        return carry_out(call, words);
    controls &all = *in_force;
    if (!prepare(all, call, words))
        return QX_BAD_DEVICE;
    const std::uint32_t number = all.counts.count(call);
    if (all.log.open())
        all.log.start(call, words, number);
    const std::uint32_t latency = latency_for(all.environment, all.file, call.name.text());
    if (latency != 0)
        wait(latency);
    const std::uint32_t fault = fault_for(all.environment, all.file, call.name.text());
    const std::uint32_t status = fault != 0 ? fault : std::uint32_t{carry_out(call, words)};
    if (all.log.open())
        all.log.finish(call, words, status, fault != 0);
    return status;
}

} // namespace qxsim
