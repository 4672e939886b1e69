// Answering calls from a recording: each call has to be the recorded one, or with loose order one
// of those that follow. Relies on recording_reader and comparison.
#pragma once

#include "records/call_words.h"
#include "replay/comparison.h"
#include "replay/given_keys.h"
#include "replay/recording_reader.h"

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace qxsh {

/// Why a call cannot be answered: "call 7, qx_l3_route_get: route.afi: recorded 1, now 2".
struct replay_end
{
    std::string text;
};

class replay
{
public:
    /// With loose order, the calls that are looked at ahead of the one that is recorded next.
    static constexpr std::size_t window = 10'000;

    /// Reads all of the recording first. Throws recording_error.
    replay(const std::string &file, const profile &numbers, bool loose_order);

    /// Answers a call: writes what its pointers point to and returns its status. Throws replay_end
    /// and, if the file has changed since, recording_error.
    std::uint32_t answer(const call_row &call, const call_word *words);

    /// The call that the recording goes on with, "call 8, qx_flow_get"; nothing at its end.
    std::optional<std::string> rest();

    /// Called once, when a key has to be answered that the program has not given.
    std::function<void(const recorded_call &)> on_unknown_key{};

private:
    using call_pointer = std::unique_ptr<recorded_call>;

    void check(const std::string &file);
    bool read_ahead();
    std::size_t place_of_same(const call_row &call, const call_word *words);
    std::optional<difference> first_difference(const recorded_call &recorded,
                                               const call_word *words);
    [[noreturn]] void fail(const call_row &call, const call_word *words);
    void learn_keys(const recorded_call &recorded, const call_word *words);
    void give(const recorded_call &recorded, const call_word *words);
    void give_keys(const recorded_call &recorded, unsigned number, unsigned char *to,
                   std::size_t size);
    const std::string *key_of(const std::string &text, std::size_t size);

    recording_reader reader_;
    const loose_places loose_;
    const memory_comparison comparison_;
    const bool loose_order_;
    std::deque<call_pointer> ahead_{}; ///< calls that were read and not answered
    call_pointer spare_{};             ///< whose memory is used again
    given_keys keys_{};
    std::string zeros_{};
    bool told_ = false; ///< of an unknown key
};

} // namespace qxsh
