// The call log.
#include "call_log.h"

#include "capacities.h"
#include "files.h"
#include "numbers.h"
#include "records/json.h"
#include "records/values.h"

#include <ctime>
#include <unistd.h>

namespace qxsim {

using qxsh::argument_row;
using qxsh::json_text;

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

static void write_pointed(json_text &json, const argument_row &argument, const unsigned char *place)
{
    if (argument.record >= 0)
        json.record(place, argument.record);
    else
        json.number(qxsh::read_number(place, argument.size));
}

// What a pointer argument points to, as JSON. If the count is larger than any call accepts, the
// array is not read.
static std::string pointed(const call_row &call, const call_word *words, std::size_t number,
                           bool keys)
{
    const argument_row &argument = arguments_of(call)[number];
    const auto *const place = static_cast<const unsigned char *>(words[number].pointer);
    json_text json{keys};
    if (argument.count < 0) {
        write_pointed(json, argument, place);
        return json.text();
    }
    const std::uint32_t count = words[argument.count].value;
    if (count > sa_bundle_limit)
        return json.string("not read").text();
    json.array();
    for (std::uint32_t index = 0; index < count; ++index)
        write_pointed(json, argument, place + index * argument.size);
    return json.end().text();
}

void call_log::close()
{
    if (file_ >= 0)
        ::close(file_);
    file_ = -1;
}

std::string call_log::use(const std::string &name)
{
    if (name == name_ && open() && !has_moved(file_, name))
        return {};
    close();
    name_ = name;
    return name.empty() ? std::string{} : open_log(name, file_);
}

void call_log::start(const call_row &call, const call_word *words, std::uint32_t number)
try {
    number_ = number;
    started_ = microseconds(CLOCK_REALTIME);
    const auto arguments = arguments_of(call);
    before_.assign(arguments.size(), {});
    for (std::size_t index = 0; index < arguments.size(); ++index)
        if (arguments[index].pointer && words[index].pointer != nullptr)
            before_[index] = pointed(call, words, index, keys_);
    clock_ = microseconds(CLOCK_MONOTONIC);
} catch (...) {
    complain("no memory for the call log, which ends here");
    close();
}

void call_log::finish(const call_row &call, const call_word *words, std::uint32_t status,
                      bool fault)
try {
    const std::int64_t taken = microseconds(CLOCK_MONOTONIC) - clock_;
    json_text json{keys_};
    json.object().member("call", number_);
    json.member("process", static_cast<std::uint64_t>(getpid()))
        .name("time")
        .raw(seconds(started_));
    json.name("function").string(call.name.text()).name("arguments").object();
    const auto arguments = arguments_of(call);
    for (std::size_t index = 0; index < arguments.size(); ++index) {
        json.name(arguments[index].name.text());
        if (!arguments[index].pointer)
            json.number(words[index].value);
        else if (words[index].pointer == nullptr)
            json.null();
        else
            json.object()
                .name("before")
                .raw(before_[index])
                .name("after")
                .raw(pointed(call, words, index, keys_))
                .end();
    }
    json.end().member("status", status).name("name").string(status_name(status));
    json.name("fault").flag(fault).member("microseconds", static_cast<std::uint64_t>(taken)).end();
    if (!write_all(file_, json.text() + "\n")) {
        complain("%s; the call log ends here", cannot_write(name_).c_str());
        close();
    }
} catch (...) {
    complain("no memory for the call log, which ends here");
    close();
}

} // namespace qxsim
