// Random calls of all functions: statuses are documented ones, failing calls change nothing, memory
// does not grow, and two runs with the same calls end in the same state.
#include "random_calls.h"
#include "tests/simulator/documented_statuses.h"

#include <fstream>
#include <map>
#include <sstream>

#if defined(__SANITIZE_ADDRESS__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes(); // GCC installs no header for it
static std::size_t memory_in_use()
{
    return __sanitizer_get_current_allocated_bytes();
}
#else
#include <malloc.h>
static std::size_t memory_in_use()
{
    const struct mallinfo2 use = mallinfo2();
    return use.uordblks + use.hblkhd;
}
#endif

using namespace simulated;

namespace {

class random_calls : public devices
{};

// Names and numbers of qx_status.h.
std::map<unsigned, std::string> status_names()
{
    std::map<unsigned, std::string> names;
    std::ifstream header{QXSH_STATUS_HEADER};
    std::string name;
    std::string equals;
    unsigned number = 0;
    for (std::string line; std::getline(header, line);) {
        std::istringstream words{line};
        if (words >> name >> equals >> number && equals == "=")
            names[number] = name;
    }
    return names;
}

constexpr unsigned short_run = 100'000;
constexpr unsigned long_run = 1'000'000;
constexpr unsigned life = 2000;

unsigned rounds()
{
    return long_tests() ? long_run : short_run;
}

} // namespace

TEST_F(random_calls, answer_what_is_documented_and_fail_without_a_trace)
{
    const auto names = status_names();
    const auto table = read_documented_statuses(QXSH_SIMULATOR_PAGE);
    ASSERT_GE(names.size(), 50U);
    ASSERT_EQ(table.size(), 83U);
    std::map<std::string, std::map<std::string, unsigned>> seen;
    world all{5};
    std::size_t memory = 0;
    for (unsigned round = 0; round < rounds(); ++round) {
        // Ids get lost and tables fill up: every so often all devices are new again, and as large
        // as before.
        if (round % life == 0) {
            order("reset\n");
            all.forget();
            snapshot(); // makes all devices
            if (round == life)
                memory = memory_in_use();
            else if (round > life) {
                ASSERT_LE(memory_in_use(), memory + 65536) << "memory grew until round " << round;
            }
        }
        // Now and then the whole state is compared.
        const bool watched = round < short_run && round % 500 == 0;
        const std::string before = watched ? snapshot() : "";
        const char *name = nullptr;
        bool quiet = false;
        const unsigned status = all.call(name, quiet);
        ASSERT_TRUE(names.count(status)) << name << " answered " << status;
        const std::string &said = names.at(status);
        ASSERT_TRUE(table.at(name).count(said)) << name << " answered " << said;
        ASSERT_TRUE(quiet) << name << " wrote something although it answered " << said;
        ++seen[name][said];
        if (watched && status != QX_OK) {
            ASSERT_EQ(before, snapshot()) << name << " answered " << said;
        }
    }
    // Walks and lookups are worth little if nothing ever succeeds.
    for (const auto &[name, answers] : seen)
        EXPECT_TRUE(answers.count("QX_OK")) << name << " never succeeded";
    EXPECT_EQ(seen.size(), 83U);
}

TEST_F(random_calls, the_same_calls_have_the_same_effect)
{
    const auto run = [] {
        order("reset\n");
        world all{6};
        std::string answers;
        for (unsigned round = 0; round < 5000; ++round) {
            const char *name = nullptr;
            bool quiet = false;
            answers += std::to_string(all.call(name, quiet)) + " ";
        }
        return answers + snapshot();
    };
    const std::string first = run();
    EXPECT_EQ(first, run());
}
