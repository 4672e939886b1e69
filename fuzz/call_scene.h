// SDK calls decoded from bytes, using the simulator's own descriptions of its functions. Records
// and cells persist between calls, so that what was added can be found, changed and deleted.
#pragma once

#include "fuzz/bytes.h"

#include "capacities.h"
#include "sdk_calls.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace fuzz {

/// One call and its status.
struct made_call
{
    const qxsh::call_row *function = nullptr;
    std::array<std::uint32_t, 8> values{}; ///< of arguments passed by value
    std::uint32_t status = 0;
};

class call_scene
{
public:
    explicit call_scene(bytes &input) : input_(input) {}

    /// Decodes one call and makes it. Reports a finding if it fails but writes something, or writes
    /// to an input.
    made_call next();

private:
    /// What a pointer argument may point to: exactly as many bytes as the function may access,
    /// sometimes at an odd address.
    struct memory
    {
        std::vector<unsigned char> bytes;
        bool odd = false;
        unsigned char *start() { return bytes.data() + (odd ? 1 : 0); }
    };

    std::uint32_t value();
    void *place(const qxsh::argument_row &argument);
    void patch(unsigned char *record, const qxsh::argument_row &argument);

    bytes &input_;
    std::map<std::string, std::array<memory, 3>> memories_; ///< by pointee type
    std::array<std::uint32_t, 8> ids_{};                    ///< the last values stored in cells
    std::size_t next_id_ = 0;
};

/// True if docs/simulator.md says that the function may return this status. A function that is not
/// in its table is a finding.
bool documented(const std::string &function, std::uint32_t status);

/// Reports a finding unless the device is consistent: tables are sorted and within their
/// capacities, and whatever an entry refers to exists and counts its users correctly.
void check_device(qxsim::device &device);

} // namespace fuzz
