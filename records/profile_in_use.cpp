// The default profile, and what a file replaces of it; see profile.h.
#include "records/profile.h"

#include "default_profile.h"
#include "records/files.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <span>

namespace qxsh {

static std::vector<profile_number> numbers_of(std::span<const default_number> rows)
{
    std::vector<profile_number> numbers;
    for (const default_number &row : rows)
        numbers.push_back({std::string{row.owner}, std::string{row.name}, row.number, 0});
    return numbers;
}

profile default_profile()
{
    profile all;
    for (const default_status &status : default_statuses)
        all.statuses.push_back({status.number, status.name, status.meaning, 0});
    all.codes = numbers_of(default_codes);
    all.sizes = numbers_of(default_sizes);
    all.families = numbers_of(default_families);
    all.loose.assign(default_loose.begin(), default_loose.end());
    return all;
}

// Puts lines in place of those that `same` says are about the same.
template <class Same>
static void replace(std::vector<profile_number> &all, const std::vector<profile_number> &lines,
                    Same same)
{
    std::erase_if(all, [&](const profile_number &old) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const profile_number &line) { return same(old, line); });
    });
    all.insert(all.end(), lines.begin(), lines.end());
}

static void replace_with(profile &all, const profile &file)
{
    const auto same_place = [](const profile_number &one, const profile_number &other) {
        return one.place == other.place;
    };
    const auto same_name = [](const profile_number &one, const profile_number &other) {
        return one.name == other.name;
    };
    if (!file.statuses.empty())
        all.statuses = file.statuses;
    replace(all.codes, file.codes, same_place);
    replace(all.sizes, file.sizes, same_name);
    replace(all.families, file.families, same_name);
    all.ids = file.ids;
    if (!file.loose.empty())
        all.loose = file.loose;
}

profile profile_in_use()
{
    profile all = default_profile();
    const char *const name = std::getenv("QX_PROFILE");
    if (name == nullptr || *name == '\0')
        return all;
    std::string text;
    if (const int error = read_file(name, text); error != 0)
        throw profile_error{std::string{name} + ": cannot be read: " + std::strerror(error)};
    profile file;
    if (const auto mistake = read_profile(text, file))
        throw profile_error{std::string{name} + ":" + std::to_string(mistake->line) + ": " +
                            mistake->text};
    replace_with(all, file);
    return all;
}

} // namespace qxsh
