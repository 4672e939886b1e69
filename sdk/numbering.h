// The order in which listings show what a device has numbered, and the numbers they show. The order
// follows from the entries' contents, not from the order in which they were added.
#pragma once

#include "device.h"

#include <cstdint>
#include <map>
#include <vector>

namespace qxsim {

/// All ids that a device has assigned, by kind, in the order of a listing. May throw
/// std::bad_alloc.
class numbering
{
public:
    explicit numbering(const device &here, bool renumber);

    std::vector<std::uint32_t> rtps, translations, nexthops, tunnels, spds, policies, associations;

    /// The number shown for an id: its place in its list, counted from 1, or the id itself unless
    /// the constructor was told to renumber. Any other number stays as it is.
    std::uint32_t shown(std::uint32_t id) const;

    /// Replaces the ids in a record.
    void replace_ids(qx_tunnel_cfg_t &cfg) const;
    void replace_ids(qx_l3_nexthop_t &nexthop) const;

    bool renumbers() const { return renumber_; }

private:
    void number(const std::vector<std::uint32_t> &ids);

    std::map<std::uint32_t, std::uint32_t> numbers_;
    bool renumber_;
};

} // namespace qxsim
