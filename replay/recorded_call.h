// A call as a recording tells it. Relies on the table of records and calls.
#pragma once

#include "records/table.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qxsh {

/// What a pointer argument points to, before or after the call.
struct recorded_memory
{
    /// A field with a key or over one, which the recording does not tell.
    struct hidden
    {
        std::uint32_t offset; ///< of the field, in bytes from the memory's start
        std::uint32_t size;   ///< of the field, in bytes
        std::string text;     ///< "32 bytes" or "32 bytes, 0f1e2d3c4b5a6978"
    };

    bool read = true;                   ///< false: "not read", all else is empty
    std::vector<unsigned char> bytes{}; ///< all elements behind each other; unknown bytes are 0
    std::vector<unsigned char> known{}; ///< of the same size: 1 for each byte that is told, else 0
    std::vector<hidden> keys{};         ///< in the order of the line
};

struct recorded_argument
{
    std::uint32_t value = 0;  ///< of an argument that is not a pointer
    bool null = false;        ///< a null pointer; no memory then
    recorded_memory before{}; ///< of a pointer
    recorded_memory after{};
};

struct recorded_call
{
    std::uint64_t line = 0;   ///< of the file, from 1; the header is line 1
    std::uint64_t number = 0; ///< as recorded
    const call_row *row = nullptr;
    std::vector<recorded_argument> arguments{}; ///< one for each argument of the function
    std::uint32_t status = 0;
    std::optional<std::int64_t> time_us{};       ///< since 1970
    std::optional<std::uint64_t> microseconds{}; ///< how long the call took
    std::optional<std::uint32_t> process{};
    bool fault = false; ///< a rule of the simulator answered
};

/// Elements of the largest array that a recording tells; larger ones are "not read".
constexpr std::uint32_t most_recorded_elements = 64;

/// What is wrong with a recording.
struct recording_error
{
    std::uint64_t line; ///< from 1; 0: it is the file's, not a line's
    std::string text;

    /// "FILE:LINE: TEXT"
    std::string message(const std::string &file) const
    {
        return file + (line == 0 ? "" : ":" + std::to_string(line)) + ": " + text;
    }
};

} // namespace qxsh
