// qx-trace show and stat: a recording for people.
#include "replay/shown_call.h"
#include "replay/trace.h"

#include "record_numbers.h"

#include <algorithm>
#include <cstdio>
#include <fnmatch.h>
#include <map>

namespace qxtrace {

using qxsh::recorded_call;

namespace {

constexpr std::uint64_t calls_around = 5; // on each side

struct filter
{
    std::string function; // empty: any
    bool failed = false;
    std::uint64_t first = 0;
    std::uint64_t last = UINT64_MAX;

    bool takes(const recorded_call &call) const
    {
        return call.number >= first && call.number <= last && (!failed || call.status != 0) &&
               (function.empty() || fnmatch(function.c_str(), call.row->name.text(), 0) == 0);
    }
};

struct counts
{
    std::uint64_t calls = 0;
    std::uint64_t failed = 0;
    std::uint64_t timed = 0; // of the calls, those that say how long they took
    std::uint64_t microseconds = 0;
    std::uint64_t longest = 0;

    void add(const counts &more)
    {
        calls += more.calls;
        failed += more.failed;
        timed += more.timed;
        microseconds += more.microseconds;
        longest = std::max(longest, more.longest);
    }
};

void print_row(const counts &of, const char *function)
{
    char line[160];
    char mean[24] = "-";
    if (of.timed != 0)
        std::snprintf(mean, sizeof mean, "%.1f",
                      static_cast<double>(of.microseconds) / static_cast<double>(of.timed));
    std::snprintf(line, sizeof line, "%9llu %8llu %12llu %8s %8llu  %s\n",
                  static_cast<unsigned long long>(of.calls),
                  static_cast<unsigned long long>(of.failed),
                  static_cast<unsigned long long>(of.microseconds), mean,
                  static_cast<unsigned long long>(of.longest), function);
    print(line);
}

// Functions with most calls come first, then in the catalogue's order.
void print_functions(const std::vector<counts> &by_function)
{
    std::vector<std::size_t> order;
    counts all;
    for (std::size_t i = 0; i < by_function.size(); ++i) {
        if (by_function[i].calls != 0)
            order.push_back(i);
        all.add(by_function[i]);
    }
    std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
        return by_function[one].calls > by_function[other].calls;
    });
    print("    calls   failed microseconds     mean  longest  function\n");
    for (const std::size_t each : order)
        print_row(by_function[each], qxsh::call_rows[each].name.text());
    print_row(all, "in all");
}

void print_header(const qxsh::recording_header &header)
{
    std::string text = "recorded " + header.date + ", processor " + header.processor + "\n";
    text += "library " + (header.library.empty() ? "unknown" : header.library) + ", " +
            std::to_string(header.size) + " bytes, ";
    text += header.build_id.empty() ? "no build id\n" : "build id " + header.build_id + "\n";
    text += std::string{"keys "} + qxsh::word_of(header.keys) + "\n\n";
    print(text);
}

} // namespace

int show(const words &all)
{
    words given = all;
    filter wanted;
    wanted.function = take_value(given, "-function");
    wanted.failed = take_option(given, "-failed");
    const std::string around = take_value(given, "-around");
    expect_words(given, 1);
    if (!around.empty()) {
        const std::uint64_t number = number_in(around, "N");
        wanted.first = number - std::min(number, calls_around);
        wanted.last = number + std::min(UINT64_MAX - number, calls_around);
    }
    const qxsh::shown_names names{used_profile()};
    recording from{given[0], recording::printing::each_call};
    recorded_call call;
    bool has_any = around.empty();
    while (from.next(call) && call.number <= wanted.last) {
        has_any = has_any || call.number >= wanted.first;
        if (wanted.takes(call))
            print(qxsh::shown_line(call, names) + "\n");
    }
    if (!has_any)
        throw trace_error{given[0] + " has no call around " + around};
    return 0;
}

int stat(const words &given)
{
    expect_words(given, 1);
    const qxsh::shown_names names{used_profile()};
    recording from{given[0]};
    std::vector<counts> by_function(qxsh::call_count);
    std::map<std::uint32_t, std::uint64_t> by_status;
    recorded_call call;
    while (from.next(call)) {
        counts one{1, call.status != 0 ? 1u : 0u};
        if (call.microseconds) {
            one.timed = 1;
            one.microseconds = one.longest = *call.microseconds;
        }
        by_function[static_cast<std::size_t>(call.row - qxsh::call_rows)].add(one);
        ++by_status[call.status];
    }
    print_header(from.header());
    print_functions(by_function);
    print("\n    calls  status\n");
    for (const auto &[status, count] : by_status) {
        char number[24];
        std::snprintf(number, sizeof number, "%9llu  ", static_cast<unsigned long long>(count));
        print(number + names.status(status) + "\n");
    }
    return 0;
}

} // namespace qxtrace
