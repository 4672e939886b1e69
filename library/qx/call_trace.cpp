// Lines and counts of calls; see call_trace.h.
#include "library/qx/call_trace.h"

#include "replay/shown_call.h"

#include <algorithm>

namespace qxsh {

void call_trace::begin(const std::string &pattern, const functions &chosen)
{
    pattern_ = pattern;
    chosen_ = chosen;
    counts_ = {};
    calls_ = 0;
}

void call_trace::take(recorded_memory &into, const argument_row &argument, const call_word *words,
                      const void *memory) const
{
    const std::uint32_t count = argument.count < 0 ? 1 : words[argument.count].value;
    into.read = count <= most_recorded_elements;
    into.bytes.resize(into.read ? std::size_t{count} * argument.size : 0);
    into.known.assign(into.bytes.size(), 1);
    into.read = into.read && copy_(into.bytes.data(), memory, into.bytes.size());
}

void call_trace::before(const call_row &call, const call_word *words)
{
    const auto arguments = arguments_of(call);
    call_.row = &call;
    call_.arguments.resize(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        recorded_argument &given = call_.arguments[i];
        given.value = words[i].value;
        given.null = arguments[i].pointer && words[i].pointer == nullptr;
        if (arguments[i].pointer && !given.null)
            take(given.before, arguments[i], words, words[i].pointer);
    }
}

void call_trace::after(const call_word *words, std::uint32_t status, std::uint64_t nanoseconds)
{
    const auto arguments = arguments_of(*call_.row);
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].pointer && !call_.arguments[i].null)
            take(call_.arguments[i].after, arguments[i], words, words[i].pointer);
    call_.number = ++calls_;
    call_.status = status;
    call_.microseconds = nanoseconds / 1000;
    counts &own = counts_[number_of(*call_.row)];
    ++own.calls;
    own.failed += status != 0 ? 1 : 0;
    own.nanoseconds += nanoseconds;
    own.longest = std::max(own.longest, nanoseconds);
}

std::string call_trace::line(const shown_names &names) const
{
    return shown_line(call_, names) + "\n";
}

} // namespace qxsh
