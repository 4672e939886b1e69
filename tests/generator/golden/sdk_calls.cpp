// The behaviours of the SDK functions, by number.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "sdk_calls.h"

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

} // namespace qxsim
