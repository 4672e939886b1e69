// Which numbers a recording has where the library has others: statuses, codes and address families.
// What is seen becomes lines of a profile with which both agree. Relies on profiles and on the
// table of records and calls.
#pragma once

#include "replay/recorded_call.h"
#include "replay/shown_names.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace qxtrace {

class seen_numbers
{
public:
    explicit seen_numbers(const qxsh::profile &used);

    /// A status, and the library's for the same call.
    void status(std::uint32_t recorded, std::uint32_t now);

    /// Looks at what a call has put out, and puts the recorded number of each code into `now`.
    void outputs(const qxsh::argument_row &argument, const qxsh::recorded_memory &recorded,
                 unsigned char *now);

    /// Looks at what a successful call was given, for codes that no word has.
    void inputs(const qxsh::recorded_call &call);

    struct proposal
    {
        std::string lines{};                 ///< of a profile; comments on what cannot be told
        std::vector<std::string> replaced{}; ///< the sections that the lines are: "status"
        bool is_clear = true;                ///< whether each number that differed has got its line
    };
    proposal propose() const;

private:
    /// How often each number of a recording came for one of the library's.
    using pairs = std::map<std::uint32_t, std::map<std::uint32_t, std::uint64_t>>;
    struct place
    {
        std::string name;    ///< of a code, as in a profile
        std::uint32_t limit; ///< its highest number
        pairs seen{};
        std::map<std::uint32_t, std::uint64_t> unknown{}; ///< calls, by number that no word has
        std::uint64_t first_unknown = 0;                  ///< call
    };
    struct entry
    {
        std::uint32_t number;
        std::string name;
        std::string meaning{};
    };
    class renumbering;

    place *place_of(const qxsh::field_row &field) const;
    place *place_of(const qxsh::argument_row &argument) const;
    place *code_place(const std::string &name);
    bool is_named(const qxsh::field_row &field, std::uint32_t number) const;
    void input(place &at, std::uint32_t number, std::uint64_t call);
    void section(proposal &result, const std::string &head, const place &of,
                 const std::vector<entry> &old) const;

    const qxsh::profile used_;
    const qxsh::shown_names names_;
    place statuses_{"", 65535};
    place families_{"", UINT32_MAX};
    std::vector<std::unique_ptr<place>> codes_{}; ///< in the table's order
    std::vector<place *> fields_;                 ///< by number of the field; null: no codes
    std::vector<place *> arguments_;              ///< by number of the argument
};

} // namespace qxtrace
