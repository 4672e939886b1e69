// Comparing what a recording tells with what a program has now, or with another recording: by
// field, so that a difference has a name. Relies on the profile for what changes by itself.
#pragma once

#include "records/profile.h"
#include "replay/recorded_call.h"
#include "replay/recording_header.h"

#include <functional>
#include <string>
#include <vector>

namespace qxsh {

/// The fields and arguments whose values change by themselves, such as clocks and counters.
class loose_places
{
public:
    explicit loose_places(const profile &from);

    bool has(const field_row &field) const { return fields_[&field - field_rows]; }
    bool has(const argument_row &argument) const { return arguments_[&argument - argument_rows]; }

private:
    std::vector<bool> fields_;    ///< by index in field_rows
    std::vector<bool> arguments_; ///< by index in argument_rows
};

struct difference
{
    std::string argument;
    std::string path; ///< with the argument: "route.nexthop.id.port_id", "p_flow.padding(12)"
    std::string recorded;
    std::string now;
};

/// Takes a difference; false ends the comparison.
using difference_taker = std::function<bool(const difference &)>;

/// Compares what arguments point to. Keys never appear in a difference, only fingerprints; where
/// these cannot be made again, keys are not compared.
class memory_comparison
{
public:
    /// The references must outlive this.
    memory_comparison(const loose_places &loose, const recording_header &recorded)
        : loose_(loose), recorded_(recorded), now_(recorded)
    {}
    /// With memory of another recording as what is there now.
    memory_comparison(const loose_places &loose, const recording_header &recorded,
                      const recording_header &now)
        : loose_(loose), recorded_(recorded), now_(now)
    {}

    /// `now` has `elements` of an array's elements, or 1. More elements on one side are no
    /// difference: the argument with their count differs then. Returns false if `taker` did.
    bool compare(const argument_row &argument, const recorded_memory &recorded,
                 const unsigned char *now, std::uint32_t elements,
                 const difference_taker &taker) const;
    bool compare(const argument_row &argument, const recorded_memory &recorded,
                 const recorded_memory &now, const difference_taker &taker) const;

private:
    struct given
    {
        const unsigned char *bytes;
        const recorded_memory *memory; ///< null: all bytes are known
        std::uint32_t elements;
    };
    bool compare_elements(const argument_row &argument, const recorded_memory &recorded,
                          const given &now, const difference_taker &taker) const;

    const loose_places &loose_;
    const recording_header &recorded_;
    const recording_header &now_;
};

} // namespace qxsh
