// Profiles: text files that say which numbers an SDK library uses for its statuses and codes, and
// how large its tables are. docs/profile.md describes the lines. Relies on the table of records and
// calls, and on the default profile for the names of the tables.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qxsh {

struct profile_status
{
    std::uint32_t number; ///< at most 65535
    std::string name;
    std::string meaning;
    unsigned line; ///< counted from 1
};

/// A word for a number: of a field or an argument, of a table's size, of an address family.
struct profile_number
{
    std::string place; ///< of a code, RECORD.FIELD or FUNCTION.ARGUMENT; otherwise empty
    std::string name;  ///< of a code its word, otherwise the table, "ports", "devices", the family
    std::uint32_t number;
    unsigned line; ///< counted from 1
};

/// The numbers from the first to the second.
struct number_range
{
    std::uint32_t first;
    std::uint32_t last;
};

/// Where the entries of a table are that has no list of its own, in ascending order.
struct profile_ids
{
    std::string table;
    std::vector<number_range> ranges;
    unsigned line; ///< counted from 1
};

/// What a profile says, in its order.
struct profile
{
    std::vector<profile_status> statuses;
    std::vector<profile_number> codes;
    std::vector<profile_number> sizes; ///< each at least 1
    std::vector<profile_number> families;
    std::vector<profile_ids> ids;   ///< of these tables; of others those of the simulated device
    std::vector<std::string> loose; ///< RECORD.FIELD or FUNCTION.ARGUMENT: change by themselves
};

struct profile_mistake
{
    unsigned line; ///< counted from 1
    std::string text;
};

/// Reads a profile. Returns its first mistake, and then leaves `result` as it was. May throw
/// std::bad_alloc.
std::optional<profile_mistake> read_profile(std::string_view text, profile &result);

/// The default profile; lines are 0.
profile default_profile();

/// What a program speaks when the environment's QX_PROFILE names a profile: the default profile
/// with what the file replaces. Without QX_PROFILE, or if it is empty, the default profile. Throws
/// profile_error.
profile profile_in_use();

/// The message "FILE:LINE: what is wrong", or "FILE: cannot be read: why".
struct profile_error
{
    std::string text;
};

} // namespace qxsh
