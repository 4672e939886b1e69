// What the parts of qx-trace share: its subcommands, how they read a recording and how they print.
#pragma once

#include "replay/recording_reader.h"
#include "replay/shown_names.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace qxtrace {

using words = std::vector<std::string>; ///< of the command line, behind the subcommand

/// Exit statuses besides 0.
constexpr int differs = 1;
constexpr int is_wrong = 2;

/// Why a subcommand cannot go on; printed behind "qx-trace: ". Ends with status 2.
struct trace_error
{
    std::string text;
};
/// The same for words that are wrong; printed with the subcommand's usage.
struct usage_error
{
    std::string text;
};

/// The result of the work, or is_wrong with the reason on stderr. Everything is printed then.
int exit_status(const std::function<int()> &work);

// The subcommands. Each returns the exit status, and throws trace_error or usage_error.
int show(const words &given);
int stat(const words &given);
int script(const words &given);
int diff(const words &given);
int check(const words &given);
int keys(const words &given);
int cut(const words &given);

/// Takes an option like "-failed" out of the words; whether it was there.
bool take_option(words &given, const std::string &name);
/// The same for one with a word behind it; empty if it is not there.
std::string take_value(words &given, const std::string &name);
/// Sees to it that no option and so many words are left.
void expect_words(const words &given, std::size_t count);
/// A whole number; `what` names it in the error.
std::uint64_t number_in(const std::string &word, const std::string &what);

/// The profile in use, with its names.
qxsh::profile used_profile();

/// Prints to stdout; throws if that fails.
void print(const std::string &line);

/// A recording that is read, with the mistakes in it as trace_error. Where reading takes long, a
/// terminal shows how far it is.
class recording
{
public:
    /// Output that somebody reads while it comes leaves no place for how far it is.
    enum class printing : bool { seldom, each_call };

    explicit recording(const std::string &name, printing much = printing::seldom);
    ~recording();
    recording(const recording &) = delete;
    recording &operator=(const recording &) = delete;

    const std::string &name() const { return name_; }
    const qxsh::recording_header &header() const { return reader_->header(); }
    /// Keys with the fingerprint of zeros are told as zeros, unless they are kept as written.
    bool next(qxsh::recorded_call &call);
    void keep_keys() { keeps_keys_ = true; }
    void restart();

private:
    void tell_zeros(qxsh::recorded_memory &memory);

    const std::string name_;
    std::unique_ptr<qxsh::recording_reader> reader_;
    bool keeps_keys_ = false;
    std::map<std::uint32_t, std::string> zeros_{}; ///< by size: the fingerprint of zeros
};

} // namespace qxtrace
