// The ids that a device has assigned in the course of a recording, by kind and device, each with
// something that stands for it. Relies on the table of records and calls.
#pragma once

#include "replay/recorded_call.h"
#include "replay/shown_names.h"

#include <cstdint>
#include <functional>
#include <map>
#include <tuple>

namespace qxtrace {

/// Ids that no device is named with, as by the one call without a device.
constexpr std::uint32_t any_device = UINT32_MAX;

/// The device that a call names.
std::uint32_t device_of(const qxsh::recorded_call &call);

template <class Value> class device_ids
{
public:
    /// From now on the value stands for this id; one that it had before is forgotten.
    void note(unsigned kind, std::uint32_t device, std::uint32_t id, const Value &value)
    {
        values_[{kind, device, id}] = value;
        values_[{kind, any_device, id}] = value;
    }

    /// What stands for an id; null if no call has put it out.
    const Value *find(unsigned kind, std::uint32_t device, std::uint32_t id) const
    {
        const auto found = values_.find({kind, device, id});
        return found == values_.end() ? nullptr : &found->second;
    }

private:
    std::map<std::tuple<unsigned, std::uint32_t, std::uint32_t>, Value> values_;
};

/// The argument with which a call puts out a new id; -1 if it has none.
int new_id_argument(const qxsh::call_row &call);

/// Calls change(kind, number) for each id in a record that is not zero, in the views that are
/// shown, and stores what it returns.
using id_change = std::function<std::uint32_t(unsigned kind, std::uint32_t number)>;
void change_ids(const qxsh::record_row &record, unsigned char *bytes,
                const qxsh::shown_names &names, const id_change &change);

} // namespace qxtrace
