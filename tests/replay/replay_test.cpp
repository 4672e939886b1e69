// Answering calls from a recording: every changed byte of an input is found and named, for each
// function; so is another order.
#include "made_calls.h"
#include "record_numbers.h"
#include "replay/replay.h"

#include <gtest/gtest.h>

using namespace recorded;
using qxsh::argument_row;
using qxsh::call_word;
using qxsh::direction;
using qxsh::profile;
using qxsh::recorded_keys;
using qxsh::recording_header;
using qxsh::replay;
using qxsh::replay_end;

namespace {

recording_header plain_header(recorded_keys keys = recorded_keys::clear)
{
    recording_header header;
    header.keys = keys;
    if (keys == recorded_keys::fingerprints)
        header.salt = "0123456789abcdef";
    return header;
}

// Why the call is not answered; empty: it was.
std::string refusal(replay &player, made_call &call)
{
    const std::vector<call_word> words = call.words();
    try {
        EXPECT_EQ(player.answer(call.row(), words.data()), call.status);
        return {};
    } catch (const replay_end &end) {
        return end.text;
    }
}

std::string start_of(const made_call &call)
{
    return std::string{"call 1, "} + call.row().name.text() + ": ";
}

// The path in a refusal, without the argument's name.
std::string path_in(const std::string &text, const std::string &start, const std::string &argument)
{
    if (!text.starts_with(start + argument)) {
        ADD_FAILURE() << text;
        return {};
    }
    const std::size_t from = start.size() + argument.size();
    return text.substr(from, text.find(": recorded ") - from);
}

void expect_byte_found(replay &player, made_call &call, std::size_t number, std::size_t at)
{
    const argument_row &argument = call.argument(number);
    call.before[number][at] ^= 0x40;
    const std::string text = refusal(player, call);
    call.before[number][at] ^= 0x40;
    std::string path = path_in(text, start_of(call), argument.name.text());
    if (argument.count >= 0) {
        const std::string index = "(" + std::to_string(at / argument.size) + ")";
        ASSERT_TRUE(path.starts_with(index)) << text;
        path.erase(0, index.size());
    }
    if (argument.record < 0) {
        EXPECT_EQ(path, "") << text;
        return;
    }
    ASSERT_TRUE(path.starts_with(".")) << text;
    const place found = place_of(qxsh::record_rows[argument.record], path.substr(1));
    const std::size_t inside = at % argument.size;
    EXPECT_TRUE(found.at <= inside && inside < found.at + found.size) << text << ", byte " << at;
}

const profile nothing_loose{};

} // namespace

// The call is not used up by those that differ, so one recording does for all bytes.
TEST(replay, finds_and_names_each_changed_byte)
{
    for (made_call &call : one_of_each(11)) {
        std::vector<made_call> alone{call};
        const file recording{"bytes", recording_of(plain_header(), alone)};
        replay player{recording.name, nothing_loose, false};
        for (std::size_t i = 0; i < call.row().arguments; ++i)
            for (std::size_t at = 0; at < call.before[i].size(); ++at)
                if (call.argument(i).way != direction::out)
                    expect_byte_found(player, call, i, at);
        EXPECT_EQ(refusal(player, call), "");
    }
}

TEST(replay, finds_and_names_each_changed_argument)
{
    for (made_call &call : one_of_each(12)) {
        std::vector<made_call> alone{call};
        const file recording{"values", recording_of(plain_header(), alone)};
        replay player{recording.name, nothing_loose, false};
        for (std::size_t i = 0; i < call.row().arguments; ++i) {
            const std::string name = call.argument(i).name.text();
            const std::string start = start_of(call) + name + ": recorded ";
            if (call.argument(i).pointer) {
                const char *const what = call.argument(i).count >= 0    ? "an array"
                                         : call.argument(i).record >= 0 ? "a record"
                                                                        : "a number";
                call.null[i] = true;
                EXPECT_EQ(refusal(player, call), start + what + ", now NULL");
                call.null[i] = false;
                continue;
            }
            const std::string recorded = std::to_string(call.values[i]);
            call.values[i] ^= 1;
            const std::string now = std::to_string(call.values[i]);
            EXPECT_EQ(refusal(player, call), start + recorded + ", now " + now);
            call.values[i] ^= 1;
        }
        EXPECT_EQ(refusal(player, call), "");
    }
}

TEST(replay, tells_a_recorded_null_pointer)
{
    std::vector<made_call> calls = one_of_each(13);
    for (made_call &call : calls) {
        if (call.row().arguments < 2 || !call.argument(1).pointer || call.argument(1).record < 0)
            continue;
        std::vector<made_call> alone{call};
        alone[0].null[1] = true;
        const file recording{"null", recording_of(plain_header(), alone)};
        replay player{recording.name, nothing_loose, false};
        EXPECT_EQ(refusal(player, call),
                  start_of(call) + call.argument(1).name.text() + ": recorded NULL, now a record");
        EXPECT_EQ(refusal(player, alone[0]), "");
    }
}

TEST(replay, finds_another_order_and_the_end)
{
    std::vector<made_call> calls = one_of_each(14);
    const file recording{"order", recording_of(plain_header(), calls)};
    replay player{recording.name, nothing_loose, false};
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const std::string number = "call " + std::to_string(i + 1);
        EXPECT_EQ(player.rest(), number + ", " + calls[i].row().name.text());
        made_call &other = calls[(i + 1) % calls.size()];
        EXPECT_EQ(refusal(player, other), number + ": recorded " + calls[i].row().name.text() +
                                              ", now " + other.row().name.text());
        EXPECT_EQ(refusal(player, calls[i]), "");
    }
    EXPECT_EQ(player.rest(), std::nullopt);
    EXPECT_EQ(refusal(player, calls[3]),
              std::string{"the recording is at its end, now "} + calls[3].row().name.text());
}

TEST(replay, answers_what_was_recorded)
{
    std::vector<made_call> calls = one_of_each(15);
    const file recording{"answers", recording_of(plain_header(), calls)};
    replay player{recording.name, nothing_loose, false};
    for (made_call &call : calls) {
        for (std::size_t i = 0; i < call.row().arguments; ++i)
            if (call.argument(i).way == direction::out) // anything may be there before
                call.before[i].assign(call.before[i].size(), 0xaa);
        EXPECT_EQ(refusal(player, call), "");
        EXPECT_EQ(call.before, call.after) << call.row().name.text();
    }
}

// ------------------------------------------------------------------------------ loose order

TEST(replay, takes_any_order_if_it_may)
{
    std::vector<made_call> calls = one_of_each(16);
    const std::vector<made_call> more = one_of_each(17);
    calls.insert(calls.end(), more.begin(), more.end());
    const file recording{"loose", recording_of(plain_header(), calls)};
    replay player{recording.name, nothing_loose, true};
    std::shuffle(calls.begin(), calls.end(), std::mt19937{18});
    for (made_call &call : calls) {
        EXPECT_EQ(refusal(player, call), "");
        EXPECT_EQ(call.before, call.after) << call.row().name.text();
    }
    const auto rest = player.rest();
    EXPECT_FALSE(rest) << *rest;
}

// Of calls that are the same, the first is answered first; what was left out is the rest.
TEST(replay, keeps_the_order_of_calls_that_are_the_same)
{
    std::vector<made_call> calls{one_of_each(19)[0], one_of_each(19)[1], one_of_each(19)[1]};
    calls[1].status = 5;
    calls[2].status = 6;
    const file recording{"same", recording_of(plain_header(), calls)};
    replay player{recording.name, nothing_loose, true};
    EXPECT_EQ(refusal(player, calls[1]), "");
    EXPECT_EQ(refusal(player, calls[2]), "");
    EXPECT_EQ(player.rest(), std::string{"call 1, "} + calls[0].row().name.text());
    EXPECT_NE(refusal(player, calls[2]), "");
}

TEST(replay, looks_ten_thousand_calls_ahead)
{
    std::vector<made_call> calls(10'001, one_of_each(20)[0]);
    calls[9'999].values.back() ^= 1;
    calls[10'000].values.back() ^= 2;
    const file recording{"window", recording_of(plain_header(), calls)};
    replay player{recording.name, nothing_loose, true};
    const std::string text = refusal(player, calls[10'000]);
    EXPECT_TRUE(text.starts_with(start_of(calls[0]))) << text;
    EXPECT_EQ(refusal(player, calls[9'999]), "");
    EXPECT_EQ(refusal(player, calls[10'000]), "");
}

// ----------------------------------------------------------------------- what is not compared

TEST(replay, does_not_compare_what_changes_by_itself)
{
    profile loose;
    loose.loose = {"qx_flow_t.life_time", "qx_flow_get.hash_index"};
    for (made_call &call : one_of_each(21)) {
        const std::string name = call.row().name.text();
        if (name != "qx_flow_add" && name != "qx_flow_get")
            continue;
        std::vector<made_call> alone{call};
        const file recording{"loose_values", recording_of(plain_header(), alone)};
        replay strict{recording.name, nothing_loose, false};
        replay player{recording.name, loose, false};
        if (name == "qx_flow_add") {
            const place field = place_of(qxsh::record_rows[qxsh::record_qx_flow_t], "life_time");
            call.before[1][field.at] ^= 1;
            EXPECT_NE(refusal(strict, call).find("p_flow.life_time: "), std::string::npos);
            call.before[1][0] ^= 1;
            EXPECT_NE(refusal(player, call).find("p_flow.flow_id: "), std::string::npos);
            call.before[1][0] ^= 1;
        } else {
            ASSERT_STREQ(call.argument(1).name.text(), "hash_index");
            call.values[1] ^= 1;
            EXPECT_NE(refusal(strict, call).find("hash_index: "), std::string::npos);
        }
        EXPECT_EQ(refusal(player, call), "");
    }
}

namespace {

// A call that gives a session with its key, and one that returns it.
struct key_calls
{
    made_call add;
    made_call get;
    place key;
};

key_calls session(unsigned seed)
{
    const std::vector<made_call> all = one_of_each(seed);
    const auto named = [&all](const std::string &name) {
        return *std::find_if(all.begin(), all.end(), [&name](const made_call &one) {
            return one.row().name.text() == name;
        });
    };
    key_calls calls{named("qx_pptp_session_add"), named("qx_pptp_session_get"),
                    place_of(qxsh::record_rows[qxsh::record_qx_pptp_sa_t], "key")};
    return calls;
}

std::size_t record_of(const made_call &call)
{
    for (std::size_t i = 0; i < call.row().arguments; ++i)
        if (call.argument(i).record == qxsh::record_qx_pptp_sa_t)
            return i;
    ADD_FAILURE() << call.row().name.text();
    return 0;
}

} // namespace

TEST(replay, answers_a_key_that_the_program_gave)
{
    key_calls calls = session(22);
    const std::size_t given = record_of(calls.add);
    const std::size_t got = record_of(calls.get);
    calls.get.after[got] = calls.add.before[given];
    for (const char *salt : {"0123456789abcdef", ""}) {
        std::vector<made_call> both{calls.add, calls.get};
        recording_header header = plain_header(recorded_keys::fingerprints);
        std::string text = recording_of(header, both);
        if (*salt == '\0') // fingerprints that nobody can make again
            text.replace(text.find("\"salt\": \"") + 9, 32, "");
        const file recording{"keys", text};
        replay player{recording.name, nothing_loose, false};
        player.on_unknown_key = [](const auto &) { ADD_FAILURE() << "the key was given"; };
        made_call other = calls.add;
        other.before[given][calls.key.at + 5] ^= 1;
        if (*salt != '\0') {
            const std::string difference = refusal(player, other);
            EXPECT_TRUE(difference.find(".key: recorded 16 bytes, ") != difference.npos &&
                        difference.find(", now 16 bytes, ") != difference.npos)
                << difference;
        }
        EXPECT_EQ(refusal(player, both[0]), "");
        EXPECT_EQ(refusal(player, both[1]), "");
        EXPECT_EQ(both[1].before[got], calls.add.before[given]);
    }
}

TEST(replay, answers_a_key_that_it_cannot_know_with_zeros)
{
    for (const recorded_keys keys : {recorded_keys::fingerprints, recorded_keys::lengths}) {
        key_calls calls = session(23);
        std::vector<made_call> twice{calls.get, calls.get};
        const file recording{"unknown", recording_of(plain_header(keys), twice)};
        replay player{recording.name, nothing_loose, false};
        unsigned told = 0;
        player.on_unknown_key = [&told](const auto &) { ++told; };
        const std::size_t got = record_of(calls.get);
        for (made_call &one : twice) {
            EXPECT_EQ(refusal(player, one), "");
            const std::vector<bool> secret = key_bytes(one.argument(got));
            for (std::size_t i = 0; i < secret.size(); ++i)
                EXPECT_EQ(one.before[got][i], secret[i] ? 0 : one.after[got][i]) << i;
        }
        EXPECT_EQ(told, 1U);
    }
}

// It may have failed before it wrote anything.
TEST(replay, leaves_a_key_alone_that_the_call_left_alone)
{
    for (const recorded_keys keys : {recorded_keys::fingerprints, recorded_keys::lengths}) {
        made_call get = session(27).get;
        const std::size_t got = record_of(get);
        get.after[got] = get.before[got];
        std::vector<made_call> alone{get};
        const file recording{"left", recording_of(plain_header(keys), alone)};
        replay player{recording.name, nothing_loose, false};
        player.on_unknown_key = [](const auto &) { ADD_FAILURE() << "no key was returned"; };
        EXPECT_EQ(refusal(player, alone[0]), "");
        EXPECT_EQ(alone[0].before[got], get.before[got]);
    }
}

TEST(replay, knows_a_key_of_zeros)
{
    key_calls calls = session(24);
    const std::size_t got = record_of(calls.get);
    const std::vector<bool> secret = key_bytes(calls.get.argument(got));
    for (std::size_t i = 0; i < secret.size(); ++i)
        if (secret[i])
            calls.get.after[got][i] = 0;
    std::vector<made_call> alone{calls.get};
    const file recording{"zeros", recording_of(plain_header(recorded_keys::fingerprints), alone)};
    replay player{recording.name, nothing_loose, false};
    player.on_unknown_key = [](const auto &) { ADD_FAILURE() << "zeros are known"; };
    EXPECT_EQ(refusal(player, alone[0]), "");
    EXPECT_EQ(alone[0].before[got], calls.get.after[got]);
}

// With lengths alone, any key is as good as the recorded one.
TEST(replay, does_not_compare_keys_by_their_lengths)
{
    key_calls calls = session(25);
    std::vector<made_call> alone{calls.add};
    const file recording{"lengths", recording_of(plain_header(recorded_keys::lengths), alone)};
    replay player{recording.name, nothing_loose, false};
    const std::size_t given = record_of(calls.add);
    calls.add.before[given][calls.key.at] ^= 1;
    calls.add.before[given][0] ^= 1;
    const std::string text = refusal(player, calls.add);
    EXPECT_TRUE(text.starts_with(start_of(calls.add))) << text;
    EXPECT_EQ(text.find("key"), text.npos) << text;
    calls.add.before[given][0] ^= 1;
    EXPECT_EQ(refusal(player, calls.add), "");
}

// Keys are in the recording then, but not in messages.
TEST(replay, shows_no_key_that_differs)
{
    key_calls calls = session(26);
    std::vector<made_call> alone{calls.add};
    const file recording{"clear", recording_of(plain_header(), alone)};
    replay player{recording.name, nothing_loose, false};
    calls.add.before[record_of(calls.add)][calls.key.at + 15] ^= 1;
    const std::string text = refusal(player, calls.add);
    EXPECT_NE(text.find(".key: recorded 16 bytes, "), text.npos) << text;
}
