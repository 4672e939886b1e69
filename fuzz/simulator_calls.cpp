// Fuzz target: sequences of SDK calls. Every status is documented, a failing call writes and
// changes nothing, the devices stay consistent, and the same calls have the same effect. Input: the
// calls, as call_scene decodes them.
#include "fuzz/call_scene.h"
#include "fuzz/expect.h"
#include "fuzz/target.h"

#include "control.h"
#include "device.h"
#include "listing.h"
#include "qx_status.h"

namespace fuzz {

namespace {

constexpr unsigned most_calls = 64;

// Returns the statuses of all calls; `watch` compares the devices before and after each failure.
std::vector<std::uint32_t> run(bytes input, bool watch)
{
    qxsim::reset_devices();
    call_scene scene{input};
    std::vector<std::uint32_t> statuses;
    while (!input.empty() && statuses.size() < most_calls) {
        const std::string before = watch ? qxsim::snapshot_text(true) : std::string{};
        const made_call made = scene.next();
        statuses.push_back(made.status);
        if (!documented(made.function->name.text(), made.status))
            finding(std::string{made.function->name.text()} + " answered " +
                    std::to_string(made.status));
        if (watch && made.status != QX_OK && before != qxsim::snapshot_text(true))
            finding(std::string{made.function->name.text()} + " failed and changed the devices");
    }
    return statuses;
}

} // namespace

void prepare(const char *)
{
    qxsim::control = qxsim::control_mode::off;
}

void execute(std::span<const std::uint8_t> data)
{
    const bytes input{data};
    const auto statuses = run(input, false);
    check_device(qxsim::device_numbered(0));
    if (one_in(256, data)) {
        const std::string after = qxsim::snapshot_text(true);
        expect(run(input, true) == statuses, "the same calls have the same answers");
        expect(qxsim::snapshot_text(true) == after, "the same calls end in the same state");
    }
}

} // namespace fuzz
