// A call of a given function: records/call_words.h.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#include "qx_sdk.h"
#include "record_numbers.h"
#include "records/call_words.h"

namespace qxsh {

unsigned int call_through(unsigned int number, any_function function, const call_word *words)
{
    switch (number) {
    case call_qx_lamp_add:
        return reinterpret_cast<decltype(&qx_lamp_add)>(function)(
            static_cast<unsigned short>(words[0].value), static_cast<qx_lamp_t *>(words[1].pointer),
            static_cast<unsigned int *>(words[2].pointer));
    case call_qx_lamp_tune:
        return reinterpret_cast<decltype(&qx_lamp_tune)>(function)(
            static_cast<unsigned short>(words[0].value), static_cast<unsigned char>(words[1].value),
            static_cast<unsigned int>(words[2].value), static_cast<qx_lamp_t *>(words[3].pointer));
    default:
        return 0;
    }
}

} // namespace qxsh
