// The control file. A line is words separated by blanks; a file name extends to the line's end.
#include "control_file.h"

#include "files.h"

#include <algorithm>
#include <cstdio>
#include <sys/stat.h>

namespace qxsim {

constexpr std::string_view blanks = " \t\r";

static std::string_view trimmed(std::string_view text) noexcept
{
    const auto start = text.find_first_not_of(blanks);
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

// Removes the first word from the text and returns it.
static std::string_view next_word(std::string_view &text) noexcept
{
    text = trimmed(text);
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text = trimmed(text.substr(word.size()));
    return word;
}

static std::vector<std::string> words_of(std::string_view text)
{
    std::vector<std::string> words;
    while (!trimmed(text).empty())
        words.emplace_back(next_word(text));
    return words;
}

// The functions that read a line return what is wrong with it; an empty text if nothing is.
static std::string read_rule(std::string_view kind, std::string_view rest,
                             control_settings &settings)
{
    std::string mistake;
    if (kind == "fault") {
        fault_rule rule;
        if (read_fault(words_of(rest), rule, mistake))
            settings.faults.push_back(rule);
    } else {
        latency_rule rule;
        if (read_latency(words_of(rest), rule, mistake))
            settings.latencies.push_back(rule);
    }
    return mistake;
}

static std::string read_keys(std::string_view rest, control_settings &settings)
{
    if (rest != "on" && rest != "off")
        return "expected: keys on or keys off";
    settings.keys = rest == "on";
    return {};
}

static std::string read_line(std::string_view text, control_settings &settings,
                             std::vector<control_action> &actions)
{
    const std::string_view word = next_word(text);
    if (word.empty() || word.front() == '#')
        return {};
    if (word == "fault" || word == "latency")
        return read_rule(word, text, settings);
    if (word == "keys")
        return read_keys(text, settings);
    if (word == "reset") {
        if (!text.empty())
            return "expected: reset";
        actions.push_back({control_action::kind::reset, {}});
        return {};
    }
    if (word != "log" && word != "snapshot" && word != "state")
        return "\"" + std::string{word} +
               "\" is none of fault, latency, log, keys, reset, snapshot, state";
    if (text.empty())
        return "expected: " + std::string{word} + " FILE";
    if (word == "log")
        settings.log = text;
    else
        actions.push_back(
            {word == "state" ? control_action::kind::state : control_action::kind::snapshot,
             std::string{text}});
    return {};
}

void read_rules(const char *variable, const char *kind, std::string_view text,
                control_settings &settings)
{
    while (!text.empty()) {
        const std::string_view one = text.substr(0, text.find(';'));
        text.remove_prefix(std::min(text.size(), one.size() + 1));
        if (trimmed(one).empty())
            continue;
        const std::string mistake = read_rule(kind, one, settings);
        if (!mistake.empty())
            complain("%s: %s", variable, mistake.c_str());
    }
}

std::uint32_t fault_for(control_settings &first, control_settings &second,
                        std::string_view function) noexcept
{
    const std::uint32_t status = fault_for(first.faults, function);
    const std::uint32_t other = fault_for(second.faults, function);
    return status != 0 ? status : other;
}

std::uint32_t latency_for(const control_settings &first, const control_settings &second,
                          std::string_view function) noexcept
{
    return std::max(latency_for(first.latencies, function),
                    latency_for(second.latencies, function));
}

control_file::mark control_file::look() const noexcept
{
    struct stat file
    {};
    if (stat(name_.c_str(), &file) != 0)
        return {};
    return {static_cast<std::uint64_t>(file.st_dev), static_cast<std::uint64_t>(file.st_ino),
            static_cast<std::int64_t>(file.st_size), static_cast<std::int64_t>(file.st_mtim.tv_sec),
            static_cast<std::int64_t>(file.st_mtim.tv_nsec)};
}

static std::string content(const char *name)
{
    std::string text;
    std::FILE *const file = std::fopen(name, "r");
    if (file == nullptr)
        return text;
    char piece[4096];
    std::size_t count = 0;
    while ((count = std::fread(piece, 1, sizeof piece, file)) != 0)
        text.append(piece, count);
    std::fclose(file);
    return text;
}

// Fault lines that are still there keep their counts.
static void keep_counts(const control_settings &before, control_settings &after) noexcept
{
    for (fault_rule &rule : after.faults)
        for (const fault_rule &known : before.faults)
            if (rule.same_words(known))
                rule.seen = known.seen;
}

bool control_file::read_if_changed(control_settings &settings, std::vector<control_action> &actions)
{
    if (name_.empty())
        return false;
    const mark now = look();
    if (now == seen_)
        return false;
    control_settings read;
    const std::string text = now == mark{} ? std::string{} : content(name_.c_str());
    std::string_view rest = text;
    for (unsigned line = 1; !rest.empty(); ++line) {
        const std::string_view one = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), one.size() + 1));
        const std::string mistake = read_line(one, read, actions);
        if (!mistake.empty())
            complain("%s:%u: %s", name_.c_str(), line, mistake.c_str());
    }
    keep_counts(settings, read);
    settings = std::move(read);
    seen_ = now;
    return true;
}

} // namespace qxsim
