// The text of a call; see call_line.h.
#include "records/call_line.h"

#include "records/values.h"

#include <cstring>
#include <ctime>
#include <unistd.h>

namespace qxsh {

static std::int64_t microseconds(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return std::int64_t{time.tv_sec} * 1'000'000 + time.tv_nsec / 1000;
}

// Microseconds as seconds with six decimals.
static std::string seconds(std::int64_t time)
{
    std::string fraction = std::to_string(time % 1'000'000);
    return std::to_string(time / 1'000'000) + "." + std::string(6 - fraction.size(), '0') +
           fraction;
}

bool call_line::plain_copy(void *to, const void *from, std::size_t size)
{
    std::memcpy(to, from, size);
    return true;
}

// Copies what an argument points to; an array is as long as its count says.
void call_line::take(image &into, const argument_row &argument, const call_word *words,
                     const call_word &word) const
{
    const std::uint32_t count = argument.count < 0 ? 1 : words[argument.count].value;
    into.read = count <= most_elements_;
    if (!into.read)
        return;
    into.bytes.resize(std::size_t{count} * argument.size);
    into.read = copy_(into.bytes.data(), word.pointer, into.bytes.size());
}

void call_line::describe(image &all, const argument_row &argument) const
{
    json_text json{keys_, *hidden_};
    if (!all.read)
        json.string("not read");
    else if (argument.count >= 0)
        json.array();
    for (std::size_t at = 0; all.read && at < all.bytes.size(); at += argument.size) {
        if (argument.record >= 0)
            json.record(all.bytes.data() + at, argument.record);
        else
            json.number(read_number(all.bytes.data() + at, argument.size));
    }
    if (all.read && argument.count >= 0)
        json.end();
    all.text = json.text();
}

void call_line::start(const call_row &call, const call_word *words)
{
    started_ = microseconds(CLOCK_REALTIME);
    const auto arguments = arguments_of(call);
    before_.resize(arguments.size());
    for (std::size_t index = 0; index < arguments.size(); ++index)
        if (arguments[index].pointer && words[index].pointer != nullptr)
            take(before_[index], arguments[index], words, words[index]);
    clock_ = microseconds(CLOCK_MONOTONIC);
}

const std::string &call_line::finish(const call_row &call, const call_word *words,
                                     const outcome &came)
{
    const std::int64_t taken = microseconds(CLOCK_MONOTONIC) - clock_;
    json_text json{keys_, *hidden_};
    json.object().member("call", came.number);
    json.member("process", static_cast<std::uint64_t>(getpid()));
    json.name("time").raw(seconds(started_));
    json.name("function").string(call.name.text()).name("arguments").object();
    const auto arguments = arguments_of(call);
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const argument_row &argument = arguments[index];
        json.name(argument.name.text());
        if (!argument.pointer) {
            json.number(words[index].value);
        } else if (words[index].pointer == nullptr) {
            json.null();
        } else {
            take(after_, argument, words, words[index]);
            describe(before_[index], argument);
            const bool same =
                after_.read == before_[index].read && after_.bytes == before_[index].bytes;
            if (!same)
                describe(after_, argument);
            json.object().name("before").raw(before_[index].text);
            json.name("after").raw(same ? before_[index].text : after_.text).end();
        }
    }
    json.end().member("status", came.status).name("name").string(came.name);
    json.name("fault").flag(came.fault);
    json.member("microseconds", static_cast<std::uint64_t>(taken)).end();
    line_ = json.text();
    line_ += '\n';
    return line_;
}

} // namespace qxsh
