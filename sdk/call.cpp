// What all SDK functions have in common.
#include "call.h"

#include "control.h"
#include "device.h"
#include "sdk_calls.h"

#include <string_view>

namespace qxsim {

using qxsh::argument_row;
using qxsh::direction;

void call_frame::fetch()
{
    const auto arguments = arguments_of(call_);
    for (std::size_t number = 0; number < arguments.size(); ++number) {
        const argument_row &argument = arguments[number];
        if (argument.pointer && argument.count < 0 && argument.way != direction::out)
            std::memcpy(copies_ + argument.place, words_[number].pointer, argument.size);
    }
}

void call_frame::deliver()
{
    const auto arguments = arguments_of(call_);
    for (std::size_t number = 0; number < arguments.size(); ++number) {
        const argument_row &argument = arguments[number];
        if (argument.pointer && argument.way != direction::in)
            std::memcpy(words_[number].pointer, copies_ + argument.place, argument.size);
    }
}

static bool has_null(const call_row &call, const call_word *words)
{
    const auto arguments = arguments_of(call);
    for (std::size_t number = 0; number < arguments.size(); ++number)
        if (arguments[number].pointer && words[number].pointer == nullptr)
            return true;
    return false;
}

// Behaviours do not throw. Creating a device can, but then nothing has changed yet.
static qx_status carry_out(const call_row &call, const call_word *words)
try {
    call_frame frame{call, words};
    if (call.names_device) {
        if (words[0].value >= size_of(sized::devices))
            return QX_BAD_DEVICE;
        frame.here = &device_numbered(words[0].value);
        ++frame.here->ticks;
    }
    if (has_null(call, words))
        return QX_NULL_POINTER;
    if (frame.here != nullptr && frame.here->power.network_engine_suspended != 0 &&
        !std::string_view{call.name.text()}.starts_with("qx_pm_"))
        return QX_SUSPENDED;
    frame.fetch();
    const qx_status status = behaviours[&call - qxsh::call_rows](frame);
    if (status == QX_OK)
        frame.deliver();
    return status;
} catch (...) {
    return QX_NO_MEMORY;
}

} // namespace qxsim

unsigned int qxsh::answer_call(unsigned int number, const call_word *words, const void *)
{
    const call_row &call = call_rows[number];
    if (qxsim::controlled()) [[unlikely]]
        return qxsim::perform_controlled(call, words, qxsim::carry_out);
    return qxsim::number_of(qxsim::carry_out(call, words));
}
