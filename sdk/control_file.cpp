// The control file. A line is words separated by blanks; a file name extends to the line's end.
#include "control_file.h"

#include "records/files.h"
#include "records/switches.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <iterator>
#include <unistd.h>
#include <utility>

namespace qxsim {

constexpr std::string_view blanks = " \t\r";

static std::string_view trimmed(std::string_view text)
{
    const auto start = text.find_first_not_of(blanks);
    if (start == std::string_view::npos)
        return {};
    return text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

// Removes the first word from the text and returns it.
static std::string_view next_word(std::string_view &text)
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
    const std::optional<bool> on = qxsh::switch_word(rest);
    if (!on)
        return "expected: keys on or keys off";
    settings.keys = on;
    return {};
}

// Whether the lines that follow are for this process.
static std::string read_process(std::string_view rest, bool &ours)
{
    pid_t process = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), process);
    if (error != std::errc{} || end != rest.data() + rest.size() || process < 1)
        return "expected: process ID";
    ours = process == getpid();
    return {};
}

// A line whose first word is followed by a file's name.
static std::string read_file_line(std::string_view word, std::string_view rest,
                                  control_order &order)
{
    using kind = control_action::kind;
    static constexpr std::pair<std::string_view, kind> actions[] = {{"snapshot", kind::snapshot},
                                                                    {"state", kind::state},
                                                                    {"save", kind::save},
                                                                    {"restore", kind::restore}};
    const auto *const action = std::find_if(std::begin(actions), std::end(actions),
                                            [&](const auto &one) { return one.first == word; });
    if (word != "log" && word != "answer" && action == std::end(actions))
        return "\"" + std::string{word} +
               "\" is not one of fault, latency, log, keys, reset, snapshot, state, save, restore, "
               "process, answer";
    if (rest.empty())
        return "expected: " + std::string{word} + " FILE";
    if (word == "log")
        order.settings.log = qxsh::absolute(rest);
    else if (word == "answer")
        order.answer = qxsh::absolute(rest);
    else
        order.actions.push_back({action->second, qxsh::absolute(rest)});
    return {};
}

static std::string read_line(std::string_view text, control_order &order, bool &ours)
{
    const std::string_view word = next_word(text);
    if (word == "process")
        return read_process(text, ours);
    if (!ours || word.empty() || word.front() == '#')
        return {};
    if (text.find('\0') != std::string_view::npos)
        return "a NUL character";
    if (word == "fault" || word == "latency")
        return read_rule(word, text, order.settings);
    if (word == "keys")
        return read_keys(text, order.settings);
    if (word != "reset")
        return read_file_line(word, text, order);
    if (!text.empty())
        return "expected: reset";
    order.actions.push_back({control_action::kind::reset, {}});
    return {};
}

static void read_lines(std::string_view rest, control_order &order)
{
    bool ours = true;
    for (unsigned line = 1; !rest.empty(); ++line) {
        const std::string_view one = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), one.size() + 1));
        std::string mistake = read_line(one, order, ours);
        if (!mistake.empty())
            order.mistakes.push_back({line, std::move(mistake)});
    }
}

void read_rules(const char *variable, const char *kind, std::string_view text,
                control_settings &settings, std::vector<std::string> &mistakes)
{
    while (!text.empty()) {
        const std::string_view one = text.substr(0, text.find(';'));
        text.remove_prefix(std::min(text.size(), one.size() + 1));
        if (trimmed(one).empty())
            continue;
        const std::string mistake = read_rule(kind, one, settings);
        if (!mistake.empty())
            mistakes.push_back(std::string{variable} + ": " + mistake);
    }
}

std::uint32_t fault_for(control_settings &first, control_settings &second,
                        std::string_view function)
{
    return fault_for(second.faults, function, fault_for(first.faults, function, 0));
}

std::uint32_t latency_for(const control_settings &first, const control_settings &second,
                          std::string_view function)
{
    return std::max(latency_for(first.latencies, function),
                    latency_for(second.latencies, function));
}

void keep_counts(const control_settings &before, control_settings &after)
{
    const auto &known = before.faults;
    for (auto rule = after.faults.begin(); rule != after.faults.end(); ++rule) {
        const auto same = [&](const fault_rule &other) { return other.same_as(*rule); };
        auto earlier = std::count_if(after.faults.begin(), rule, same);
        auto match = std::find_if(known.begin(), known.end(), same);
        for (; earlier > 0 && match != known.end(); --earlier)
            match = std::find_if(match + 1, known.end(), same);
        if (match != known.end()) {
            rule->seen = match->seen;
            rule->fired = match->fired;
        }
    }
}

bool control_file::read_if_changed(control_order &order)
{
    if (name_.empty())
        return false;
    qxsh::file_mark now = qxsh::mark_of(name_);
    if (now == seen_)
        return false;
    std::string text;
    if (now.exists())
        now.error = qxsh::read_file(name_, text);
    if (now.error == ENOENT) // removed meanwhile
        now = {};
    if (now == seen_)
        return false;
    order = {};
    if (now.error == 0)
        read_lines(text, order);
    else
        order.mistakes.push_back(
            {0, now.error == EINVAL ? "not a regular file" : std::strerror(now.error)});
    seen_ = now;
    return true;
}

} // namespace qxsim
