// qx-trace check: the calls of a recording in the library that the loader finds. Ids that the
// library assigns are taken for the recorded ones; keys that the recording does not tell are made
// up, the same for the same fingerprint, and not compared.
#include "replay/checked_library.h"
#include "replay/comparison.h"
#include "replay/device_ids.h"
#include "replay/seen_numbers.h"
#include "replay/trace.h"

#include "record_numbers.h"
#include "records/files.h"
#include "records/switches.h"
#include "records/values.h"

#include <algorithm>
#include <optional>
#include <sstream>

namespace qxtrace {

using namespace qxsh;

namespace {

class checking
{
public:
    checking(const std::string &name, bool propose)
        : from_(name), used_(used_profile()), names_(used_), loose_(used_),
          comparison_(loose_, from_.header())
    {
        if (propose)
            seen_.emplace(used_);
    }

    int run(const call_pipe &pipe);

private:
    bool is_possible();
    void prepare();
    void translate(const argument_row &row, std::vector<unsigned char> &bytes,
                   const device_ids<std::uint32_t> &into) const;
    void compare(std::uint32_t status);
    void compare_memory(std::size_t number, std::uint32_t status);
    void found(const difference &what);
    void report();
    int finish() const;

    recording from_;
    const profile used_;
    const shown_names names_;
    const loose_places loose_;
    const memory_comparison comparison_;
    const checked_library library_{};
    std::optional<seen_numbers> seen_{};
    device_ids<std::uint32_t> present_{};  // by recorded id
    device_ids<std::uint32_t> recorded_{}; // by present id

    recorded_call call_{};
    std::vector<std::vector<unsigned char>> memory_{};
    std::string first_{}; // difference of the call
    std::uint64_t more_ = 0;

    std::uint64_t calls_ = 0;
    std::uint64_t statuses_ = 0;
    std::uint64_t values_ = 0;
    std::uint64_t left_out_ = 0;
};

// Whether the call can be made; if not, says so.
bool checking::is_possible()
{
    for (std::size_t i = 0; i < call_.arguments.size(); ++i) {
        if (call_.arguments[i].before.read)
            continue;
        ++left_out_;
        if (!seen_)
            print("call " + std::to_string(call_.number) + ", " + call_.row->name.text() +
                  ": left out, because " + arguments_of(*call_.row)[i].name.text() +
                  " was not read\n");
        return false;
    }
    return true;
}

// Zeros where nothing but the length of a key is known; else its fingerprint again and again.
void make_up(recorded_memory &memory)
{
    for (const auto &key : memory.keys) {
        const std::size_t comma = key.text.find(", ");
        const std::string text = comma == std::string::npos ? "" : key.text.substr(comma + 2);
        for (std::uint32_t i = 0; i < key.size && !text.empty(); ++i)
            if (memory.known[key.offset + i] == 0)
                memory.bytes[key.offset + i] = static_cast<unsigned char>(text[i % text.size()]);
    }
}

void checking::translate(const argument_row &row, std::vector<unsigned char> &bytes,
                         const device_ids<std::uint32_t> &into) const
{
    const auto change = [&](unsigned kind, std::uint32_t number) {
        const std::uint32_t *const other = into.find(kind, device_of(call_), number);
        return other == nullptr ? number : *other;
    };
    if (row.record >= 0)
        for (std::size_t at = 0; at < bytes.size(); at += row.size)
            change_ids(record_rows[row.record], bytes.data() + at, names_, change);
}

// The memory that the call gets, and its values as the library knows them.
void checking::prepare()
{
    const auto arguments = arguments_of(*call_.row);
    memory_.resize(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        recorded_argument &given = call_.arguments[i];
        make_up(given.before);
        memory_[i] = given.before.bytes;
        if (memory_[i].empty())
            memory_[i].resize(1); // an array without elements has an address
        else if (arguments[i].way != direction::out)
            translate(arguments[i], memory_[i], present_);
        if (arguments[i].pointer || arguments[i].id == id_none)
            continue;
        const auto *const id = present_.find(arguments[i].id, device_of(call_), given.value);
        given.value = id == nullptr ? given.value : *id;
    }
}

void checking::found(const difference &what)
{
    if (first_.empty())
        first_ = what.path + ": recorded " + what.recorded + ", now " + what.now;
    else
        ++more_;
}

void checking::compare_memory(std::size_t number, std::uint32_t status)
{
    const argument_row &row = arguments_of(*call_.row)[number];
    recorded_memory &recorded = call_.arguments[number].after;
    std::vector<unsigned char> &now = memory_[number];
    if (!recorded.read || recorded.bytes.empty())
        return;
    if (status == 0 && static_cast<int>(number) == new_id_argument(*call_.row)) {
        const std::uint32_t old_id = read_number(recorded.bytes.data(), row.size);
        const std::uint32_t new_id = read_number(now.data(), row.size);
        present_.note(row.id, device_of(call_), old_id, new_id);
        recorded_.note(row.id, device_of(call_), new_id, old_id);
        return;
    }
    translate(row, now, recorded_);
    if (seen_ && row.way != direction::in && status == 0)
        seen_->outputs(row, recorded, now.data());
    recorded.keys.clear();
    const auto elements = static_cast<std::uint32_t>(recorded.bytes.size() / row.size);
    comparison_.compare(row, recorded, now.data(), elements, [this](const difference &each) {
        found(each);
        return true;
    });
}

void checking::compare(std::uint32_t status)
{
    if (status != call_.status) {
        ++statuses_;
        found({"", "status", names_.status(call_.status), names_.status(status)});
        return;
    }
    for (std::size_t i = 0; i < call_.arguments.size(); ++i)
        if (arguments_of(*call_.row)[i].pointer && !call_.arguments[i].null)
            compare_memory(i, status);
    values_ += first_.empty() ? 0 : 1;
}

void checking::report()
{
    if (!first_.empty() && !seen_)
        print("call " + std::to_string(call_.number) + ", " + call_.row->name.text() + ": " +
              first_ + (more_ == 0 ? "" : " (and " + std::to_string(more_) + " more)") + "\n");
    first_.clear();
    more_ = 0;
}

int checking::run(const call_pipe &pipe)
{
    while (from_.next(call_)) {
        ++calls_;
        if (!is_possible())
            continue;
        if (seen_)
            seen_->inputs(call_);
        prepare();
        pipe.begin(call_);
        std::uint32_t status = library_.call(call_, memory_);
        if (seen_ && status != 0 && call_.status != 0) {
            seen_->status(call_.status, status);
            status = call_.status;
        }
        compare(status);
        report();
    }
    return finish();
}

// The lines of the profile that QX_PROFILE names, without the sections that are replaced.
std::string kept_lines(const std::vector<std::string> &replaced)
{
    const char *const name = environment_value("QX_PROFILE");
    std::string text;
    if (name == nullptr || read_file(name, text) != 0)
        return {};
    std::istringstream lines{text};
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words{line};
        std::string section;
        std::string word;
        words >> section;
        if (section == "code" && words >> word)
            section += " " + word;
        if (std::find(replaced.begin(), replaced.end(), section) == replaced.end())
            kept += line + "\n";
    }
    return kept;
}

std::string count_of(std::uint64_t count, const char *what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

int checking::finish() const
{
    const std::uint64_t all = statuses_ + values_;
    std::string text = count_of(calls_, "call") + " with " + library_.path() + ": ";
    if (all == 0)
        text += "no difference";
    else
        text += std::to_string(all) + (all == 1 ? " differs" : " differ") + ", " +
                std::to_string(statuses_) + " by status, " + std::to_string(values_) + " by values";
    if (left_out_ != 0)
        text += "; " + count_of(left_out_, "call") + " left out";
    if (!seen_) {
        print(text + "\n");
        return all == 0 ? 0 : differs;
    }
    const seen_numbers::proposal proposed = seen_->propose();
    print("# From " + from_.name() + ", by qx-trace check -profile. Beside the numbers here:\n# " +
          text + ".\n" + kept_lines(proposed.replaced) + proposed.lines);
    return all == 0 && proposed.is_clear ? 0 : differs;
}

} // namespace

int check(const words &all)
{
    words given = all;
    const bool propose = take_option(given, "-profile");
    expect_words(given, 1);
    const std::string name = given[0];
    return run_apart(name, [&](const call_pipe &pipe) {
        return checking{name, propose}.run(pipe);
    });
}

} // namespace qxtrace
