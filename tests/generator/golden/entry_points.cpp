// The functions of a library with the SDK's interface: records/call_words.h.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "qx_sdk.h"
#include "record_numbers.h"
#include "records/call_words.h"

using qxsh::call_word;

unsigned int qx_lamp_add(unsigned short dev_id, qx_lamp_t *lamp, unsigned int *lamp_id)
{
    const call_word words[] = {dev_id, lamp, lamp_id};
    return qxsh::answer_call(qxsh::call_qx_lamp_add, words, __builtin_return_address(0));
}

unsigned int qx_lamp_tune(unsigned short dev_id, unsigned char channel, unsigned int level,
    qx_lamp_t *lamp)
{
    const call_word words[] = {dev_id, channel, level, lamp};
    return qxsh::answer_call(qxsh::call_qx_lamp_tune, words, __builtin_return_address(0));
}
