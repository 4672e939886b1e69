// qx-trace: shows, compares and replays recordings of SDK calls. This file has the command line and
// the printing; each subcommand is in a file of its own.
#include "replay/trace.h"

#include "records/sha256.h"
#include "replay/file_progress.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>
#include <unistd.h>

namespace qxtrace {

namespace {

struct subcommand
{
    const char *name;
    int (*run)(const words &given);
    const char *usage;
    const char *what;
};

constexpr subcommand subcommands[] = {
    {"show", show, "FILE ?-function PATTERN? ?-failed? ?-around N?", "prints a line for each call"},
    {"stat", stat, "FILE", "counts calls, failures and times by function"},
    {"script", script, "FILE", "prints a Tcl script that makes the same calls"},
    {"diff", diff, "A B ?-all?", "prints the first difference of two recordings, or all"},
    {"check", check, "FILE ?-profile?",
     "makes the calls in the SDK library that the loader finds, and prints what differs, or a\n"
     "      profile with the numbers that the recording has in place of the library's"},
    {"keys", keys, "-renew|-remove FILE OUT",
     "writes the recording with new fingerprints of its keys, or without any"},
    {"cut", cut, "FROM TO FILE OUT", "writes the calls with these numbers"},
};

void print_usage(FILE *to)
{
    std::fputs("usage:\n", to);
    for (const subcommand &each : subcommands)
        std::fprintf(to, "  qx-trace %s %s\n      %s\n", each.name, each.usage, each.what);
    std::fputs("A name that ends in .gz is that of a compressed file. The exit status is 0, 1 if "
               "something differs,\n2 if something is wrong. man qx-trace says more.\n",
               to);
}

int run(const subcommand &command, const words &given)
try {
    return command.run(given);
} catch (const usage_error &wrong) {
    std::fprintf(stderr, "qx-trace: %s\nusage: qx-trace %s %s\n", wrong.text.c_str(), command.name,
                 command.usage);
    return is_wrong;
}

int run(int count, char **given)
{
    const std::string name = count > 1 ? given[1] : "";
    if (name == "--help") {
        print_usage(stdout);
        return 0;
    }
    if (name == "--version") {
        std::puts("qx-trace " QXSH_VERSION);
        return 0;
    }
    for (const subcommand &each : subcommands)
        if (name == each.name)
            return run(each, words(given + 2, given + count));
    if (!name.empty())
        std::fprintf(stderr, "qx-trace: there is no subcommand \"%s\"\n", name.c_str());
    print_usage(stderr);
    return is_wrong;
}

// That of the one recording that is read, or of one of two.
std::optional<qxsh::file_progress> progress;

} // namespace

int exit_status(const std::function<int()> &work)
{
    std::string mistake;
    try {
        const int status = work();
        if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
            return status;
        mistake = "cannot write the output";
    } catch (const trace_error &wrong) {
        mistake = wrong.text;
    } catch (const qxsh::recording_error &wrong) {
        mistake = wrong.message("the recording");
    } catch (const std::bad_alloc &) {
        mistake = "no memory";
    }
    std::fflush(stdout);
    std::fprintf(stderr, "qx-trace: %s\n", mistake.c_str());
    return is_wrong;
}

bool take_option(words &given, const std::string &name)
{
    for (auto each = given.begin(); each != given.end(); ++each)
        if (*each == name) {
            given.erase(each);
            return true;
        }
    return false;
}

std::string take_value(words &given, const std::string &name)
{
    for (auto each = given.begin(); each != given.end(); ++each)
        if (*each == name) {
            if (each + 1 == given.end() || each[1].empty())
                throw usage_error{name + " is followed by nothing"};
            std::string value = each[1];
            given.erase(each, each + 2);
            return value;
        }
    return {};
}

void expect_words(const words &given, std::size_t count)
{
    for (const std::string &each : given)
        if (each.size() > 1 && each.front() == '-')
            throw usage_error{"there is no option " + each};
    if (given.size() != count)
        throw usage_error{"wrong number of words"};
}

std::uint64_t number_in(const std::string &word, const std::string &what)
{
    std::uint64_t number = 0;
    const char *const end = word.data() + word.size();
    const auto read = std::from_chars(word.data(), end, number);
    if (read.ec != std::errc{} || read.ptr != end)
        throw usage_error{what + " is a number, not \"" + word + "\""};
    return number;
}

void print(const std::string &line)
{
    if (progress)
        progress->hide();
    if (std::fwrite(line.data(), 1, line.size(), stdout) != line.size())
        throw trace_error{"cannot write the output"};
}

qxsh::profile used_profile()
try {
    return qxsh::profile_in_use();
} catch (const qxsh::profile_error &wrong) {
    throw trace_error{wrong.text};
}

recording::recording(const std::string &name, printing much) : name_(name)
{
    try {
        reader_ = std::make_unique<qxsh::recording_reader>(name);
    } catch (const qxsh::recording_error &wrong) {
        throw trace_error{wrong.message(name)};
    }
    if (!progress && (much == printing::seldom || isatty(STDOUT_FILENO) == 0))
        progress.emplace("qx-trace: " + name);
}

recording::~recording()
{
    progress.reset();
}

void recording::tell_zeros(qxsh::recorded_memory &memory)
{
    const auto is_told = [&](const qxsh::recorded_memory::hidden &key) {
        const auto first = memory.known.begin() + key.offset;
        std::string &zeros = zeros_[key.size];
        if (zeros.empty())
            zeros = qxsh::fingerprint(header().salt, std::vector<unsigned char>(key.size).data(),
                                      key.size);
        if (key.text == zeros)
            std::fill(first, first + key.size, 1);
        return std::find(first, first + key.size, 0) == first + key.size;
    };
    // A field that overlaps a key may stand before it.
    for (const auto &key : memory.keys)
        is_told(key);
    std::erase_if(memory.keys, is_told);
}

bool recording::next(qxsh::recorded_call &call)
try {
    if (progress)
        progress->at([&] { return reader_->done(); });
    if (!reader_->next(call))
        return false;
    if (!keeps_keys_ && !header().salt.empty())
        for (qxsh::recorded_argument &each : call.arguments) {
            tell_zeros(each.before);
            tell_zeros(each.after);
        }
    return true;
} catch (const qxsh::recording_error &wrong) {
    throw trace_error{wrong.message(name_)};
}

void recording::restart()
try {
    reader_->restart();
} catch (const qxsh::recording_error &wrong) {
    throw trace_error{wrong.message(name_)};
}

} // namespace qxtrace

int main(int count, char **given)
{
    return qxtrace::exit_status([=] { return qxtrace::run(count, given); });
}
