// Keys that are not in the clear: which ones the player remembers, and what two recordings can tell
// of them. And memory that must not be written.
#include "made_calls.h"
#include "record_numbers.h"
#include "replay/replay.h"

#include <gtest/gtest.h>

#include <sys/mman.h>

using namespace recorded;
using qxsh::recorded_keys;
using qxsh::recording_header;

namespace {

recording_header salted_header(const std::string &salt)
{
    recording_header header;
    header.keys = salt.empty() ? recorded_keys::clear : recorded_keys::fingerprints;
    header.salt = salt;
    return header;
}

made_call session_add()
{
    for (const made_call &call : one_of_each(41))
        if (call.row().name.text() == std::string{"qx_pptp_session_add"})
            return call;
    throw std::runtime_error{"there is no qx_pptp_session_add"};
}

// The paths of the differences between two recordings of one call.
std::vector<std::string> differences(const recording_header &first_header, const made_call &first,
                                     const recording_header &second_header, const made_call &second)
{
    std::vector<made_call> calls{first};
    std::vector<made_call> other_calls{second};
    const file one{"one", recording_of(first_header, calls)};
    const file two{"two", recording_of(second_header, other_calls)};
    qxsh::recording_reader reader{one.name};
    qxsh::recording_reader other_reader{two.name};
    qxsh::recorded_call call;
    qxsh::recorded_call other;
    EXPECT_TRUE(reader.next(call) && other_reader.next(other));
    const qxsh::loose_places loose{qxsh::profile{}};
    const qxsh::memory_comparison comparison{loose, reader.header(), other_reader.header()};
    std::vector<std::string> paths;
    comparison.compare(first.argument(1), call.arguments[1].before, other.arguments[1].before,
                       [&paths](const qxsh::difference &found) {
                           paths.push_back(found.path);
                           return true;
                       });
    return paths;
}

} // namespace

TEST(given_keys, remembers_the_last_ones_and_not_all)
{
    qxsh::given_keys keys;
    const auto text = [](std::size_t number) { return "key " + std::to_string(number); };
    const std::size_t count = 3 * qxsh::given_keys::most;
    for (std::size_t i = 0; i < count; ++i)
        keys.add(text(i), reinterpret_cast<const unsigned char *>(text(i).data()), text(i).size());
    for (std::size_t i = count - qxsh::given_keys::most; i < count; ++i) {
        ASSERT_NE(keys.find(text(i)), nullptr) << i;
        EXPECT_EQ(*keys.find(text(i)), text(i));
    }
    EXPECT_EQ(keys.find(text(0)), nullptr);
}

TEST(memory_comparison, compares_keys_of_recordings_by_what_both_tell)
{
    const recording_header clear = salted_header("");
    const recording_header first = salted_header("0123456789abcdef");
    const recording_header second = salted_header("another salt, 16");
    const made_call call = session_add();
    made_call changed = call;
    changed.before[1][65] ^= 1; // of the key
    made_call both = changed;
    both.before[1][0] ^= 1;
    using paths = std::vector<std::string>;
    const paths key{"session.key"};
    const paths all{"session.sa_id", "session.key"};
    EXPECT_EQ(differences(clear, call, clear, call), paths{});
    EXPECT_EQ(differences(clear, call, clear, changed), key);
    EXPECT_EQ(differences(first, call, first, changed), key);
    EXPECT_EQ(differences(first, call, first, call), paths{});
    EXPECT_EQ(differences(first, call, clear, changed), key);
    EXPECT_EQ(differences(clear, call, second, changed), key);
    EXPECT_EQ(differences(clear, call, second, call), paths{});
    EXPECT_EQ(differences(first, call, first, both), all);
    // Fingerprints with two salts tell nothing of each other.
    EXPECT_EQ(differences(first, call, second, changed), paths{});
    EXPECT_EQ(differences(first, call, second, both), paths{"session.sa_id"});
}

// The memory of inputs may be constants of the program.
TEST(replay, does_not_write_what_only_tells_the_library_something)
{
    constexpr std::size_t size = 65536;
    void *const page =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(page, MAP_FAILED);
    for (const std::string &salt : {std::string{}, std::string{"0123456789abcdef"}}) {
        std::vector<made_call> calls = one_of_each(42);
        const file recording{"constant", recording_of(salted_header(salt), calls)};
        qxsh::replay player{recording.name, qxsh::profile{}, false};
        for (made_call &call : calls) {
            std::vector<qxsh::call_word> words = call.words();
            mprotect(page, size, PROT_READ | PROT_WRITE);
            auto *at = static_cast<unsigned char *>(page);
            for (std::size_t i = 0; i < words.size(); ++i) {
                if (!call.argument(i).pointer || call.argument(i).way != qxsh::direction::in)
                    continue;
                words[i] = qxsh::call_word{static_cast<void *>(at)};
                at = std::copy(call.before[i].begin(), call.before[i].end(), at);
            }
            mprotect(page, size, PROT_READ);
            EXPECT_EQ(player.answer(call.row(), words.data()), call.status);
        }
    }
    munmap(page, size);
}
