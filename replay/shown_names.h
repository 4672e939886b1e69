// What a profile calls the numbers of statuses, codes and address families, and which view of a
// union a record's numbers choose by it. Relies on the table of records and calls, and on profiles.
#pragma once

#include "records/profile.h"
#include "records/table.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace qxsh {

class shown_names
{
public:
    explicit shown_names(const profile &in_use);

    /// The word for a number of a field or an argument; null if it has none.
    const std::string *word(const field_row &field, std::uint32_t number) const;
    const std::string *word(const argument_row &argument, std::uint32_t number) const;

    /// A status by its name, or as a number.
    std::string status(std::uint32_t number) const;

    /// The version of an address family: 4, 6, or 0 if the profile does not know it.
    int version_of(std::uint32_t family) const;

    /// The view in which a union is shown, which is the field `whole` of the record at `record`:
    /// the one that a number of this record chooses, else the first of the largest ones.
    const field_row &view_of(const field_row &whole, const unsigned char *record) const;

private:
    using words = std::vector<std::pair<std::uint32_t, std::string>>;
    struct choice
    {
        std::uint16_t field; ///< of the union
        std::uint16_t offset;
        std::uint8_t size;
        std::uint8_t view;
        std::uint32_t number;
    };

    static const std::string *word_in(const std::vector<words> &lists, std::size_t index,
                                      std::uint32_t number);
    words *place(const std::string &name);

    std::vector<words> fields_;    ///< by number of the field
    std::vector<words> arguments_; ///< by number of the argument
    std::unordered_map<std::uint32_t, std::string> statuses_;
    std::vector<choice> choices_;
    std::vector<std::pair<std::uint32_t, int>> families_;
};

} // namespace qxsh
