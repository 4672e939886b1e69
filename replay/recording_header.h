// The first line of a recording: where it was made, and how it tells keys. Relies on
// records/json.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qxsh {

/// The version of the format that is written, and the newest that can be read.
constexpr unsigned recording_version = 1;

/// What stands in place of a key.
enum class recorded_keys : std::uint8_t {
    clear,        ///< the key itself
    fingerprints, ///< fingerprint() of records/sha256.h
    lengths       ///< its length
};

/// The word for it in the header.
const char *word_of(recorded_keys keys);
std::optional<recorded_keys> recorded_keys_of(std::string_view word);

struct recording_header
{
    std::string library{};   ///< path of the SDK library's file; empty if unknown
    std::uint64_t size = 0;  ///< of that file, in bytes
    std::string build_id{};  ///< of that file, hexadecimal; empty if it has none
    std::string date{};      ///< "2026-11-22T13:48:36Z"
    std::string processor{}; ///< "armv7l", as the system calls it
    recorded_keys keys = recorded_keys::fingerprints;
    std::string salt{}; ///< 16 bytes of any value; empty if there are no fingerprints, or none
                        ///< that can be made again
};

/// A text as headers have it: in UTF-8, without control characters. "\xNN" stands in place of each
/// byte of anything else.
std::string header_text(std::string_view text);

/// The header's line, with a newline at its end.
std::string header_line(const recording_header &header);

/// Fills in date and processor and, for fingerprints, a new random salt. Without a source of random
/// numbers keys become lengths.
void describe_here_and_now(recording_header &header);

/// Two lower-case digits a byte; and back, nothing if the text is anything else.
std::string hexadecimal(std::string_view bytes);
std::optional<std::string> from_hexadecimal(std::string_view digits);

} // namespace qxsh
