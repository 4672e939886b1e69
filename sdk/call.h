// The common shape of every SDK function: device and null pointers are checked, records copied in,
// the behaviour runs on the copies, and only a successful call copies them out. So a failing call
// writes nothing, and records may lie at any address. The functions themselves are generated; each
// calls `perform` with its number and its words, which calls the behaviour in its area's file.
#pragma once

#include "qx_status.h"
#include "record.h"
#include "record_numbers.h"
#include "records/table.h"

#include <cstddef>
#include <cstdint>

namespace qxsim {

struct device;
class call_frame;

using qxsh::call_row;

/// An argument as the caller gave it.
struct call_word
{
    call_word(unsigned int number) noexcept : value(number) {}
    call_word(void *address) noexcept : pointer(address) {}
    std::uint32_t value = 0;
    void *pointer = nullptr;
};

/// The copies of one call's records and cells. An array stays where it is.
class call_frame
{
public:
    call_frame(const call_row &call, const call_word *words) noexcept : call_(call), words_(words)
    {}

    device *here = nullptr; ///< the device that the call names; null if it names none

    template <class Value> Value value(unsigned number) const noexcept
    {
        return static_cast<Value>(words_[number].value);
    }
    template <class Record> Record &record(unsigned number) noexcept
    {
        return *reinterpret_cast<Record *>(copies_ + arguments_of(call_)[number].place);
    }
    template <class Record> record_array<Record> array(unsigned number) const noexcept
    {
        const int count = arguments_of(call_)[number].count;
        return {words_[number].pointer, words_[count].value};
    }

    void fetch() noexcept;   ///< copies in what the call reads
    void deliver() noexcept; ///< copies out what the call fills

private:
    const call_row &call_;
    const call_word *words_;
    alignas(4) unsigned char copies_[qxsh::most_frame_bytes] = {};
};

/// One call of the SDK function with this number, from its first check to its status.
unsigned int perform(unsigned int number, const call_word *words) noexcept;

} // namespace qxsim
