// What all SDK functions have in common: device and pointers are checked, records are copied in,
// the behaviour runs on the copies, and only a successful call copies results out. So a failing
// call writes nothing, and records need no alignment. The functions themselves are generated; each
// passes its words to `answer_call`, which calls the behaviour in its area's file.
#pragma once

#include "qx_status.h"
#include "record.h"
#include "record_numbers.h"
#include "records/call_words.h"
#include "records/table.h"

#include <cstddef>
#include <cstdint>

namespace qxsim {

struct device;
class call_frame;

using qxsh::call_row;
using qxsh::call_word;

/// The copies of one call's records and cells. Arrays are not copied but read in place. Arguments
/// are numbered from 0.
class call_frame
{
public:
    call_frame(const call_row &call, const call_word *words) : call_(call), words_(words) {}

    device *here = nullptr; ///< the device that the call names, not owned; null if it names none

    template <class Value> Value value(unsigned number) const
    {
        return static_cast<Value>(words_[number].value);
    }
    template <class Record> Record &record(unsigned number)
    {
        return *reinterpret_cast<Record *>(copies_ + arguments_of(call_)[number].place);
    }
    template <class Record> record_array<Record> array(unsigned number) const
    {
        const int count = arguments_of(call_)[number].count;
        return {words_[number].pointer, words_[count].value};
    }

    void fetch();   ///< copies the inputs in; no pointer may be null
    void deliver(); ///< copies the outputs to the caller

private:
    const call_row &call_;
    const call_word *words_;
    alignas(4) unsigned char copies_[qxsh::most_frame_bytes] = {};
};

} // namespace qxsim
