// Reading recordings: what is written comes back, byte by byte.
#include "made_calls.h"
#include "record_numbers.h"
#include "replay/recording_reader.h"

#include <gtest/gtest.h>

using namespace recorded;
using qxsh::recorded_call;
using qxsh::recorded_keys;
using qxsh::recorded_memory;
using qxsh::recording_error;
using qxsh::recording_header;
using qxsh::recording_reader;

namespace {

const std::string salt = "0123456789abcdef";

recording_header header_with(recorded_keys keys)
{
    recording_header header;
    header.library = "/usr/lib/libqx-sdk.so";
    header.size = 5'000'000'000;
    header.build_id = "0123456789abcdef";
    header.date = "2026-11-22T13:48:36Z";
    header.processor = "armv7l";
    header.keys = keys;
    if (keys == recorded_keys::fingerprints)
        header.salt = salt;
    return header;
}

// Bytes that the recording does not tell are keys; all others have to be right.
void expect_memory(const recorded_memory &read, const std::vector<unsigned char> &bytes,
                   const qxsh::argument_row &argument, bool clear)
{
    ASSERT_EQ(read.bytes.size(), bytes.size());
    ASSERT_EQ(read.known.size(), bytes.size());
    const std::vector<bool> keys = key_bytes(argument);
    bool has_keys = false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool key = keys[i % argument.size];
        has_keys = has_keys || key;
        if (clear || key) {
            EXPECT_EQ(read.known[i], clear ? 1 : 0) << argument.name.text() << ", byte " << i;
        }
        const unsigned char told = read.known[i] != 0 ? bytes[i] : 0;
        EXPECT_EQ(read.bytes[i], told) << argument.name.text() << ", byte " << i;
        if (read.known[i] != 0)
            continue;
        const auto hidden = std::find_if(read.keys.begin(), read.keys.end(), [i](const auto &one) {
            return one.offset <= i && i < one.offset + one.size;
        });
        EXPECT_NE(hidden, read.keys.end()) << argument.name.text() << ", byte " << i;
    }
    EXPECT_EQ(!read.keys.empty(), has_keys && !clear);
}

void expect_round_trip(recorded_keys keys)
{
    std::vector<made_call> calls = one_of_each(1 + static_cast<unsigned>(keys));
    for (std::size_t i = 0; i < 10; ++i)
        calls[i * 7].null.assign(calls[i * 7].null.size(), true);
    const file written{"round", recording_of(header_with(keys), calls)};
    recording_reader reader{written.name};
    EXPECT_EQ(reader.header().size, 5'000'000'000U);
    EXPECT_EQ(reader.header().salt, header_with(keys).salt);
    EXPECT_EQ(reader.header().keys, keys);
    recorded_call read;
    std::uint64_t number = 0;
    for (const made_call &made : calls) {
        ASSERT_TRUE(reader.next(read));
        EXPECT_EQ(read.number, ++number);
        EXPECT_EQ(read.line, number + 1);
        ASSERT_EQ(read.row, &made.row());
        EXPECT_EQ(read.status, made.status);
        EXPECT_TRUE(read.time_us && read.microseconds);
        EXPECT_EQ(read.process, 77U);
        EXPECT_GT(*read.time_us, 1'600'000'000'000'000);
        for (std::size_t i = 0; i < made.row().arguments; ++i) {
            if (!made.argument(i).pointer) {
                EXPECT_EQ(read.arguments[i].value, made.values[i]);
                continue;
            }
            EXPECT_EQ(read.arguments[i].null, made.null[i]);
            if (made.null[i])
                continue;
            const bool clear = keys == recorded_keys::clear;
            expect_memory(read.arguments[i].before, made.before[i], made.argument(i), clear);
            expect_memory(read.arguments[i].after, made.after[i], made.argument(i), clear);
        }
    }
    EXPECT_FALSE(reader.next(read));
    EXPECT_EQ(reader.done(), 1);
    reader.restart();
    ASSERT_TRUE(reader.next(read));
    EXPECT_EQ(read.number, 1U);
}

} // namespace

TEST(recording_reader, gives_every_byte_back)
{
    expect_round_trip(recorded_keys::clear);
}

TEST(recording_reader, tells_keys_by_their_fingerprints)
{
    expect_round_trip(recorded_keys::fingerprints);
}

TEST(recording_reader, tells_keys_by_their_lengths)
{
    expect_round_trip(recorded_keys::lengths);
}

// Calls that were cut out keep their numbers.
TEST(recording_reader, wants_ascending_numbers)
{
    std::vector<made_call> calls = one_of_each(7);
    const std::string text = recording_of(header_with(recorded_keys::clear), calls);
    std::vector<std::string> lines;
    std::istringstream all{text};
    for (std::string line; std::getline(all, line);)
        lines.push_back(line + "\n");
    recorded_call read;
    const file gap{"gap", lines[0] + lines[3] + lines[9]};
    recording_reader reader{gap.name};
    EXPECT_TRUE(reader.next(read) && reader.next(read));
    EXPECT_EQ(read.number, 9U);
    EXPECT_FALSE(reader.next(read));
    const file twice{"twice", lines[0] + lines[3] + lines[3]};
    recording_reader other{twice.name};
    EXPECT_TRUE(other.next(read));
    try {
        other.next(read);
        ADD_FAILURE() << "a number twice";
    } catch (const recording_error &error) {
        EXPECT_EQ(error.message("F"), "F:3: call: 3 does not follow 3");
    }
}

// However long a file is, what the reader holds is a block of it and one call.
TEST(recording_reader, reads_lines_across_blocks)
{
    std::vector<made_call> calls = one_of_each(9);
    std::string text = recording_of(header_with(recorded_keys::clear), calls);
    const std::size_t header = text.find('\n') + 1;
    const std::string call = text.substr(header, text.find('\n', header) + 1 - header);
    ASSERT_TRUE(call.starts_with("{\"call\": 1, "));
    text.resize(header);
    for (unsigned i = 1; i <= 3000; ++i)
        text += "{\"call\": " + std::to_string(i) + ", " + call.substr(12);
    text.pop_back(); // a last line without its end is whole all the same
    const file many{"many", text};
    recording_reader reader{many.name};
    recorded_call read;
    unsigned count = 0;
    while (reader.next(read))
        EXPECT_EQ(read.number, ++count);
    EXPECT_EQ(count, 3000U);
}
