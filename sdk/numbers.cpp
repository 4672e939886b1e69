// The numbers in use, and how a profile changes them.
#include "numbers.h"

#include "records/profile.h"
#include "sdk_calls.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace qxsim {

using qxsh::profile_number;

constinit profile_numbers numbers = default_numbers;

static std::vector<qxsh::profile_status> named_statuses; ///< of the profile; empty by default

// ------------------------------------------------------------------------------- use of a profile

namespace {

struct refusal
{
    std::string text;
};

[[noreturn]] void refuse(unsigned line, const std::string &text)
{
    throw refusal{std::to_string(line) + ": " + text};
}

// Gives names their numbers: that of its line, or else the present one, which no line may have.
class settlement
{
public:
    explicit settlement(std::vector<profile_number> lines) : lines_(std::move(lines)) {}

    std::uint32_t number(std::string_view name, std::uint32_t present)
    {
        const auto named = [&](const profile_number &line) { return line.name == name; };
        const auto line = std::find_if(lines_.begin(), lines_.end(), named);
        if (line != lines_.end())
            return line->number;
        const auto taken = [&](const profile_number &other) { return other.number == present; };
        const auto other = std::find_if(lines_.begin(), lines_.end(), taken);
        if (other != lines_.end()) {
            line_ = line_ == 0 ? other->line : line_;
            homeless_ += (homeless_.empty() ? "" : ", ") + std::string{name};
        }
        return present;
    }
    void finish() const
    {
        if (line_ != 0)
            refuse(line_, "the simulator needs lines for " + homeless_ +
                              " as well: their numbers are taken");
    }

private:
    std::vector<profile_number> lines_;
    std::string homeless_; ///< names without a number
    unsigned line_ = 0;    ///< that has taken the first one's
};

std::vector<profile_number> lines_for(const qxsh::profile &profile, std::string_view owner)
{
    std::vector<profile_number> lines = profile.families;
    if (!owner.empty()) {
        lines.clear();
        std::copy_if(profile.codes.begin(), profile.codes.end(), std::back_inserter(lines),
                     [&](const profile_number &line) { return line.place == owner; });
    }
    return lines;
}

void settle_codes(const qxsh::profile &profile, profile_numbers &made)
{
    for (std::size_t at = 0; at < place_rows.size(); ++at) {
        const place_row &row = place_rows[at];
        settlement numbers_here{lines_for(profile, row.owner)};
        for (std::size_t word = 0; word < row.size(); ++word)
            made.codes[at][word] = numbers_here.number(row.words[word], made.codes[at][word]);
        numbers_here.finish();
    }
}

void settle_sizes(const qxsh::profile &profile, profile_numbers &made)
{
    for (const profile_number &line : profile.sizes)
        for (std::size_t at = 0; at < size_rows.size(); ++at) {
            if (size_rows[at].name != line.name)
                continue;
            if (line.number > size_rows[at].limit)
                refuse(line.line, "the simulator has at most " +
                                      std::to_string(size_rows[at].limit) + " " + line.name);
            made.sizes[at] = line.number;
        }
}

// 0 is success, whatever the profile calls it.
void settle_statuses(const qxsh::profile &profile, profile_numbers &made)
{
    std::vector<profile_number> lines;
    for (const qxsh::profile_status &line : profile.statuses)
        lines.push_back({{}, line.name, line.number, line.line});
    settlement numbers_here{lines};
    for (const qxsh::default_status &status : qxsh::default_statuses) {
        if (status.number == QX_OK)
            continue;
        for (const profile_number &line : lines)
            if (line.name == status.name && line.number == 0)
                refuse(line.line, "0 is success, not " + line.name);
        made.statuses[status.number] =
            static_cast<std::uint16_t>(numbers_here.number(status.name, status.number));
    }
    numbers_here.finish();
}

} // namespace

std::string use_profile(qxsh::profile profile)
{
    try {
        profile_numbers made = default_numbers;
        settle_codes(profile, made);
        settle_sizes(profile, made);
        settle_statuses(profile, made);
        numbers = made;
        named_statuses = std::move(profile.statuses);
        return {};
    } catch (const refusal &reason) {
        return reason.text;
    }
}

// ------------------------------------------------------------------------------ names of statuses

const char *status_name(std::uint32_t number)
{
    for (const qxsh::profile_status &status : named_statuses)
        if (status.number == number)
            return status.name.c_str();
    for (const qxsh::default_status &status : qxsh::default_statuses)
        if (number_of(static_cast<qx_status>(status.number)) == number)
            return status.name;
    return "unknown";
}

bool status_number(std::string_view name, std::uint32_t &number)
{
    for (const qxsh::profile_status &status : named_statuses) {
        if (name == status.name) {
            number = status.number;
            return true;
        }
    }
    for (const qxsh::default_status &status : qxsh::default_statuses) {
        if (name == status.name) {
            number = number_of(static_cast<qx_status>(status.number));
            return true;
        }
    }
    return false;
}

} // namespace qxsim
