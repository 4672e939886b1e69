// qx-trace diff: two recordings call by call. Times are not compared, nor what a failing call
// leaves in its outputs, nor what changes by itself.
#include "replay/comparison.h"
#include "replay/trace.h"

namespace qxtrace {

using namespace qxsh;

namespace {

class two_recordings
{
public:
    two_recordings(const std::string &one, const std::string &other, bool all)
        : one_(one), other_(other), all_(all), used_(used_profile()), names_(used_), loose_(used_),
          comparison_(loose_, one_.header(), other_.header())
    {}

    int run();

private:
    bool compare();
    bool compare_functions();
    bool compare_argument(std::size_t number);
    bool found(const std::string &place, const std::string &in_one, const std::string &in_other);
    std::string name_of_call() const;

    recording one_;
    recording other_;
    const bool all_;
    const profile used_;
    const shown_names names_;
    const loose_places loose_;
    const memory_comparison comparison_;
    recorded_call a_{};
    recorded_call b_{};
    bool differ_ = false;
};

std::string two_recordings::name_of_call() const
{
    std::string text = "call " + std::to_string(a_.number);
    if (b_.number != a_.number)
        text += " (" + std::to_string(b_.number) + " in B)";
    return text;
}

// Prints a difference; returns whether to look for more.
bool two_recordings::found(const std::string &place, const std::string &in_one,
                           const std::string &in_other)
{
    print(name_of_call() + ", " + a_.row->name.text() + ": " + place + ": " + in_one + " in A, " +
          in_other + " in B\n");
    differ_ = true;
    return all_;
}

bool two_recordings::compare_functions()
{
    if (a_.row == b_.row)
        return true;
    print(name_of_call() + ": " + a_.row->name.text() + " in A, " + b_.row->name.text() +
          " in B\n");
    if (all_)
        print("The calls behind these are not compared.\n");
    differ_ = true;
    return false;
}

bool two_recordings::compare_argument(std::size_t number)
{
    const argument_row &row = arguments_of(*a_.row)[number];
    const recorded_argument &a = a_.arguments[number];
    const recorded_argument &b = b_.arguments[number];
    const std::string name = row.name.text();
    if (!row.pointer)
        return a.value == b.value || loose_.has(row) ||
               found(name, std::to_string(a.value), std::to_string(b.value));
    if (a.null || b.null)
        return a.null == b.null ||
               found(name, a.null ? "NULL" : "a record", b.null ? "NULL" : "a record");
    const auto same = [&](const recorded_memory &in_one, const recorded_memory &in_other) {
        if (!in_one.read || !in_other.read)
            return in_one.read == in_other.read || found(name, in_one.read ? "read" : "not read",
                                                         in_other.read ? "read" : "not read");
        return comparison_.compare(row, in_one, in_other, [&](const difference &each) {
            return found(each.path, each.recorded, each.now);
        });
    };
    if (row.way != direction::out && !same(a.before, b.before))
        return false;
    // What is only read is the same behind the call.
    if (row.way == direction::in || a_.status != 0 || b_.status != 0)
        return true;
    return same(a.after, b.after);
}

// Compares the current calls; returns whether to go on.
bool two_recordings::compare()
{
    if (!compare_functions())
        return false;
    for (std::size_t i = 0; i < a_.arguments.size(); ++i)
        if (!compare_argument(i))
            return false;
    return a_.status == b_.status ||
           found("status", names_.status(a_.status), names_.status(b_.status));
}

int two_recordings::run()
{
    for (;;) {
        const bool more = one_.next(a_);
        const bool more_in_other = other_.next(b_);
        if (more != more_in_other) {
            const recorded_call &next = more ? a_ : b_;
            print(std::string{more ? "B" : "A"} + " ends, " + (more ? "A" : "B") +
                  " goes on with call " + std::to_string(next.number) + ", " +
                  next.row->name.text() + "\n");
            return differs;
        }
        if (!more || !compare())
            return differ_ ? differs : 0;
    }
}

} // namespace

int diff(const words &all)
{
    words given = all;
    const bool every = take_option(given, "-all");
    expect_words(given, 2);
    return two_recordings{given[0], given[1], every}.run();
}

} // namespace qxtrace
