// The model of control.
#include "fuzz/control_model.h"

#include "default_profile.h"
#include "record_numbers.h"
#include "records/table.h"

#include <nlohmann/json.hpp>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

namespace fuzz {

namespace {

bool blank(char c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

std::vector<std::string> split(std::string_view text)
{
    std::vector<std::string> words;
    bool inside = false;
    for (const char c : text) {
        if (blank(c)) {
            inside = false;
        } else {
            if (!inside)
                words.emplace_back();
            inside = true;
            words.back() += c;
        }
    }
    return words;
}

// The text after the first word, trimmed.
std::string behind_first(std::string_view text)
{
    std::size_t start = 0;
    std::size_t end = text.size();
    while (start < end && blank(text[start]))
        ++start;
    while (start < end && !blank(text[start]))
        ++start;
    while (start < end && blank(text[start]))
        ++start;
    while (end > start && blank(text[end - 1]))
        --end;
    return std::string{text.substr(start, end - start)};
}

std::optional<std::uint32_t> decimal(std::string_view text, std::uint32_t least, std::uint32_t most)
{
    if (text.empty())
        return {};
    std::uint64_t value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9')
            return {};
        value = std::min<std::uint64_t>(value * 10 + static_cast<std::uint64_t>(c - '0'),
                                        std::uint64_t{1} << 40);
    }
    if (value < least || value > most)
        return {};
    return static_cast<std::uint32_t>(value);
}

std::optional<std::uint32_t> status_in(const std::string &word)
{
    for (const qxsh::default_status &each : qxsh::default_statuses)
        if (word == each.name)
            return each.number == 0 ? std::optional<std::uint32_t>{} : each.number;
    return decimal(word, 1, 65535);
}

bool some_function_fits(std::string_view pattern)
{
    return std::any_of(qxsh::call_rows, qxsh::call_rows + qxsh::call_count,
                       [&](const auto &call) { return pattern_fits(pattern, call.name.text()); });
}

std::optional<model_rule> read_rule(bool fault, const std::vector<std::string> &words)
{
    if (words.size() != (fault ? 3 : 2) || !some_function_fits(words[0]))
        return {};
    model_rule made{fault, words[0]};
    if (!fault) {
        const auto time = decimal(words[1], 0, 10'000'000);
        made.number = time.value_or(0);
        return time ? std::optional{made} : std::nullopt;
    }
    std::string when = words[1];
    if (when != "*") {
        made.once = when.back() != '+';
        if (!made.once)
            when.pop_back();
        const auto first = decimal(when, 1, UINT32_MAX);
        if (!first && when != "*") // a plus after a star is allowed, and has no effect
            return {};
        made.first = first.value_or(1);
    }
    const auto status = status_in(words[2]);
    made.number = status.value_or(0);
    return status ? std::optional{made} : std::nullopt;
}

std::string from_here(const std::string &name)
{
    return name[0] == '/' ? name : std::filesystem::current_path().string() + "/" + name;
}

// Passes over lines for other processes, but for the one that says so.
bool read_line(std::string_view line, model_settings &settings, bool &ours)
{
    std::vector<std::string> words = split(line);
    if (words.empty())
        return true;
    const std::string rest = behind_first(line);
    const std::string what = words[0];
    if (what == "process") {
        const auto id = decimal(rest, 1, INT32_MAX);
        if (id)
            ours = *id == static_cast<std::uint32_t>(getpid());
        return id.has_value();
    }
    if (!ours || what[0] == '#')
        return true;
    if (rest.find('\0') != rest.npos)
        return false;
    if (what == "fault" || what == "latency") {
        words.erase(words.begin());
        const auto rule = read_rule(what == "fault", words);
        if (rule)
            settings.rules.push_back(*rule);
        return rule.has_value();
    }
    static const std::map<std::string, bool> switches = {
        {"1", true},  {"on", true},   {"yes", true}, {"true", true},
        {"0", false}, {"off", false}, {"no", false}, {"false", false}};
    if (what == "keys" && switches.contains(rest)) {
        settings.keys = switches.at(rest);
    } else if (what == "reset" && rest.empty()) {
        settings.orders.push_back(what);
    } else if ((what == "snapshot" || what == "state" || what == "save" || what == "restore") &&
               !rest.empty()) {
        settings.orders.push_back(what + " " + from_here(rest));
    } else if (what == "log" && !rest.empty()) {
        settings.log = from_here(rest);
    } else if (what == "answer" && !rest.empty()) {
        settings.answer = from_here(rest);
    } else {
        return false;
    }
    return true;
}

// The parts between separators; an empty last part is dropped.
std::vector<std::string_view> parts_of(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const auto end = std::min(text.find(separator), text.size());
        parts.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

} // namespace

model_settings read_control_text(std::string_view text)
{
    model_settings settings;
    std::uint32_t number = 0;
    bool ours = true;
    for (const std::string_view line : parts_of(text, '\n')) {
        ++number;
        if (!read_line(line, settings, ours))
            settings.mistakes.push_back(number);
    }
    return settings;
}

model_settings read_switch(std::string_view kind, std::string_view text)
{
    model_settings settings;
    std::uint32_t number = 0;
    for (const std::string_view part : parts_of(text, ';')) {
        ++number;
        const auto words = split(part);
        if (words.empty())
            continue;
        if (const auto rule = read_rule(kind == "fault", words))
            settings.rules.push_back(*rule);
        else
            settings.mistakes.push_back(number);
    }
    return settings;
}

bool pattern_fits(std::string_view pattern, std::string_view name)
{
    if (!pattern.empty() && pattern[0] != '*' && !name.starts_with(pattern[0]))
        return false;
    // For the pattern up to this character: which prefixes of the name it matches.
    std::vector<bool> fits(name.size() + 1, false);
    fits[0] = true;
    for (const char c : pattern) {
        std::vector<bool> next(name.size() + 1, false);
        for (std::size_t length = 0; length <= name.size(); ++length) {
            if (c == '*')
                next[length] = fits[length] || (length > 0 && next[length - 1]);
            else
                next[length] = length > 0 && fits[length - 1] && name[length - 1] == c;
        }
        fits = next;
    }
    return fits[name.size()];
}

std::uint32_t status_of(model_settings &settings, std::string_view function)
{
    std::uint32_t status = 0;
    std::vector<model_rule> going_on; // before this call
    for (model_rule &rule : settings.rules) {
        if (!rule.fault || !pattern_fits(rule.pattern, function))
            continue;
        if (std::find(going_on.begin(), going_on.end(), rule) != going_on.end())
            continue;
        if (!rule.once || rule.seen < rule.first)
            going_on.push_back(rule);
        ++rule.seen;
        if (status == 0 && (rule.once ? rule.seen == rule.first : rule.seen >= rule.first))
            status = rule.number;
    }
    return status;
}

bool is_json(std::string_view text)
{
    return nlohmann::json::accept(text);
}

} // namespace fuzz
