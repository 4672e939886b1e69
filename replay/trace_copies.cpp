// qx-trace keys and cut: a recording written again, with other texts for its keys, or in part. What
// is not changed stays as it is, character by character.
#include "replay/trace.h"

#include "records/json.h"
#include "records/sha256.h"
#include "records/values.h"
#include "replay/line_source.h"
#include "replay/recording_writer.h"

#include <string_view>
#include <unistd.h>

namespace qxtrace {

using namespace qxsh;

namespace {

// The lines of a recording, each with what it says.
class recorded_lines
{
public:
    explicit recorded_lines(const std::string &name) : calls_(name), lines_(name)
    {
        calls_.keep_keys();
    }

    const recording_header &header() const { return calls_.header(); }
    bool next(recorded_call &call, std::string_view &line)
    {
        if (!calls_.next(call))
            return false;
        do
            if (!lines_.next(line))
                throw trace_error{calls_.name() + ": the file has changed"};
        while (lines_.line() < call.line);
        return true;
    }

private:
    recording calls_;
    line_source lines_;
};

// A new recording; removed again unless it becomes whole.
class copy
{
public:
    copy(const std::string &name, const recording_header &header) : name_(name)
    {
        need(writer_.open(name, false, header));
        made_ = true;
    }
    ~copy()
    {
        if (made_)
            unlink(name_.c_str());
    }
    copy(const copy &) = delete;
    copy &operator=(const copy &) = delete;

    void append(std::string_view line) { need(writer_.append(std::string{line} + "\n")); }
    void finish()
    {
        need(writer_.finish());
        writer_.close();
        made_ = false;
    }

private:
    static void need(const std::string &mistake)
    {
        if (!mistake.empty())
            throw trace_error{mistake};
    }

    const std::string name_;
    recording_writer writer_;
    bool made_ = false;
};

// ------------------------------------------------------------------------------- keys

// What is written in place of keys.
class new_texts
{
public:
    new_texts(const recording_header &old, bool renew);

    const recording_header &header() const { return header_; }
    std::string line(const recorded_call &call, std::string_view line);

private:
    static std::string make(const unsigned char *bytes, std::size_t size, const void *context);
    std::string text_of(const unsigned char *bytes, std::size_t size) const;
    std::string memory(const argument_row &argument, const recorded_memory &memory);
    std::string arguments(const recorded_call &call);

    recording_header header_;
    std::string secret_{}; // of fingerprints of fingerprints
    const hidden_text hidden_{make, this};
    const recorded_memory *memory_ = nullptr; // that is written
};

new_texts::new_texts(const recording_header &old, bool renew) : header_(old)
{
    header_.keys = recorded_keys::lengths;
    header_.salt.clear();
    if (!renew)
        return;
    if (old.keys == recorded_keys::lengths)
        throw trace_error{"the recording has neither keys nor fingerprints of them"};
    recording_header fresh;
    fresh.keys = recorded_keys::fingerprints;
    describe_here_and_now(fresh);
    if (fresh.salt.empty())
        throw trace_error{"the system has no random numbers"};
    header_.keys = recorded_keys::fingerprints;
    (old.keys == recorded_keys::clear ? header_.salt : secret_) = fresh.salt;
}

std::string new_texts::make(const unsigned char *bytes, std::size_t size, const void *context)
{
    return static_cast<const new_texts *>(context)->text_of(bytes, size);
}

// The salt of new fingerprints of old ones is thrown away: nobody can make them from a key.
std::string new_texts::text_of(const unsigned char *bytes, std::size_t size) const
{
    if (header_.keys == recorded_keys::lengths)
        return length_text.make(bytes, size, nullptr);
    const auto offset = static_cast<std::size_t>(bytes - memory_->bytes.data());
    for (const auto &each : memory_->keys)
        if (each.offset == offset && each.size == size) {
            const auto *const old = reinterpret_cast<const unsigned char *>(each.text.data());
            const std::string text = fingerprint(secret_, old, each.text.size());
            return std::to_string(size) + " bytes" + text.substr(text.find(','));
        }
    return fingerprint(header_.salt, bytes, size);
}

std::string new_texts::memory(const argument_row &argument, const recorded_memory &memory)
{
    json_text json{false, hidden_};
    if (!memory.read)
        return json.string("not read").text();
    memory_ = &memory;
    if (argument.count >= 0)
        json.array();
    for (std::size_t at = 0; at < memory.bytes.size(); at += argument.size) {
        if (argument.record >= 0)
            json.record(memory.bytes.data() + at, argument.record);
        else
            json.number(read_number(memory.bytes.data() + at, argument.size));
    }
    if (argument.count >= 0)
        json.end();
    return json.text();
}

std::string new_texts::arguments(const recorded_call &call)
{
    json_text json{true};
    json.object();
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        const argument_row &row = arguments_of(*call.row)[i];
        const recorded_argument &given = call.arguments[i];
        json.name(row.name.text());
        if (!row.pointer)
            json.number(given.value);
        else if (given.null)
            json.null();
        else
            json.object()
                .name("before")
                .raw(memory(row, given.before))
                .name("after")
                .raw(memory(row, given.after))
                .end();
    }
    return json.end().text();
}

// Where the value of "arguments" begins in a line that has been read, and its size.
std::pair<std::size_t, std::size_t> place_of_arguments(std::string_view line)
{
    int depth = 0;
    std::size_t begin = 0;   // of the value
    std::string_view text{}; // the last one at depth 1
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') {
            const std::size_t start = ++i;
            for (; line[i] != '"'; ++i)
                i += line[i] == '\\' ? 1 : 0;
            if (depth == 1)
                text = line.substr(start, i - start);
        } else if (line[i] == '{' || line[i] == '[') {
            if (++depth == 2 && text == "arguments")
                begin = i;
        } else if (line[i] == '}' || line[i] == ']') {
            if (--depth == 1 && begin != 0)
                return {begin, i + 1 - begin};
        }
    }
    throw trace_error{"a line without arguments"};
}

std::string new_texts::line(const recorded_call &call, std::string_view line)
{
    const auto [begin, size] = place_of_arguments(line);
    return std::string{line.substr(0, begin)} + arguments(call) +
           std::string{line.substr(begin + size)};
}

} // namespace

int keys(const words &all)
{
    words given = all;
    const bool renew = take_option(given, "-renew");
    const bool remove = take_option(given, "-remove");
    expect_words(given, 2);
    if (renew == remove)
        throw usage_error{renew ? "-renew and -remove exclude each other"
                                : "-renew or -remove is missing"};
    recorded_lines from{given[0]};
    new_texts texts{from.header(), renew};
    copy to{given[1], texts.header()};
    recorded_call call;
    for (std::string_view line; from.next(call, line);)
        to.append(texts.line(call, line));
    to.finish();
    return 0;
}

int cut(const words &given)
{
    expect_words(given, 4);
    const std::uint64_t first = number_in(given[0], "FROM");
    const std::uint64_t last = number_in(given[1], "TO");
    recorded_lines from{given[2]};
    std::optional<copy> to;
    recorded_call call;
    std::string_view line;
    while (from.next(call, line) && call.number <= last) {
        if (call.number < first)
            continue;
        if (!to)
            to.emplace(given[3], from.header());
        to->append(line);
    }
    if (!to)
        throw trace_error{given[2] + " has no call from " + given[0] + " to " + given[1]};
    to->finish();
    return 0;
}

} // namespace qxtrace
