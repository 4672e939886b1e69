// The SDK functions, their behaviours by number, and the statuses.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "sdk_calls.h"

#include "record_numbers.h"

namespace qxsim {

static qx_status behave_qx_lamp_add(call_frame &frame)
{
    return lamp_add(*frame.here, frame.record<qx_lamp_t>(1), frame.record<unsigned int>(2));
}

static qx_status behave_qx_lamp_tune(call_frame &frame)
{
    return lamp_tune(*frame.here, frame.value<unsigned char>(1), frame.value<unsigned int>(2),
        frame.record<qx_lamp_t>(3));
}

qx_status (*const behaviours[])(call_frame &) = {
    behave_qx_lamp_add,
    behave_qx_lamp_tune,
};

static constexpr status_description statuses[] = {
    {0, "QX_OK", "done"},
    {7, "QX_FAILED", "not done"},
};
const std::span<const status_description> status_descriptions = statuses;

} // namespace qxsim

using namespace qxsim;

unsigned int qx_lamp_add(unsigned short dev_id, qx_lamp_t *lamp, unsigned int *lamp_id)
{
    const call_word words[] = {dev_id, lamp, lamp_id};
    return perform(qxsh::call_qx_lamp_add, words);
}

unsigned int qx_lamp_tune(unsigned short dev_id, unsigned char channel, unsigned int level,
    qx_lamp_t *lamp)
{
    const call_word words[] = {dev_id, channel, level, lamp};
    return perform(qxsh::call_qx_lamp_tune, words);
}
