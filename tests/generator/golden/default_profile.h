// The default profile.
// Generated from the catalogue by tools/generate.tcl; changes belong there.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace qxsh {

struct default_number
{
    std::string_view owner; ///< of a code, OWNER.NAME; otherwise empty
    std::string_view name;  ///< of a code, its word
    std::uint32_t number;
};

struct default_status
{
    unsigned int number;
    const char *name;
    const char *meaning;
};

inline constexpr default_status default_statuses[] = {
    {0, "QX_OK", "done"},
    {7, "QX_FAILED", "not done"},
};

inline constexpr default_number default_codes[] = {
    {"qx_lamp_t.mode", "bright", 1},
    {"qx_lamp_t.mode", "dim-light", 2},
    {"qx_lamp_tune.level", "low", 3},
};

inline constexpr default_number default_sizes[] = {
    {"", "ports", 5},
    {"", "lamps", 12},
};

inline constexpr default_number default_families[] = {
    {"", "ipv6", 9},
};

inline constexpr std::array<std::string_view, 0> default_loose{
};

// Tables of which a file may say the ids, and the greatest number of each.
inline constexpr std::array<default_number, 1> id_tables{{
    {"", "chosen", 65535u},
}};

} // namespace qxsh
