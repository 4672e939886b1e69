// The text of a call; see call_line.h.
#include "records/call_line.h"

#include "records/values.h"

#include <cstring>
#include <ctime>

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
    std::string text;
    append_number(text, static_cast<std::uint64_t>(time / 1'000'000));
    text += '.';
    for (std::int64_t unit = 100'000; unit != 0; unit /= 10)
        text += static_cast<char>('0' + time / unit % 10);
    return text;
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
    into.bytes.resize(into.read ? std::size_t{count} * argument.size : 0);
    into.read = into.read && copy_(into.bytes.data(), word.pointer, into.bytes.size());
}

void call_line::write(const image &all, const argument_row &argument)
{
    if (!all.read) {
        json_.string("not read");
        return;
    }
    if (argument.count >= 0)
        json_.array();
    for (std::size_t at = 0; at < all.bytes.size(); at += argument.size) {
        if (argument.record >= 0)
            json_.record(all.bytes.data() + at, argument.record);
        else
            json_.number(read_number(all.bytes.data() + at, argument.size));
    }
    if (argument.count >= 0)
        json_.end();
}

// Most calls leave most of what they get as it was: its text is copied.
void call_line::write_both(const image &before, const argument_row &argument)
{
    json_.object().name("before");
    const std::size_t start = json_.text().size();
    write(before, argument);
    const std::size_t end = json_.text().size();
    json_.name("after");
    if (after_ == before)
        json_.raw(text_.assign(json_.text(), start, end - start));
    else
        write(after_, argument);
    json_.end();
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
    json_.clear();
    json_.object().member("call", came.number).member("process", came.process);
    json_.name("time").raw(seconds(started_));
    json_.name("function").string(call.name.text()).name("arguments").object();
    const auto arguments = arguments_of(call);
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        const argument_row &argument = arguments[index];
        json_.name(argument.name.text());
        if (!argument.pointer) {
            json_.number(words[index].value);
        } else if (words[index].pointer == nullptr) {
            json_.null();
        } else {
            take(after_, argument, words, words[index]);
            write_both(before_[index], argument);
        }
    }
    json_.end().member("status", came.status).name("name").string(came.name);
    json_.name("fault").flag(came.fault);
    json_.member("microseconds", static_cast<std::uint64_t>(taken)).end();
    return json_.line();
}

} // namespace qxsh
