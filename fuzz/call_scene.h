// SDK calls decoded from bytes, on the simulator's own descriptions of its functions. Records and
// cells stay from call to call, so that what was added can be found, changed and deleted again.
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

/// One call, and what came of it.
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

    /// Decodes one call and makes it. A finding if it fails and yet writes something.
    made_call next();

private:
    /// What a pointer argument may point to: exactly as many bytes as the function may touch, now
    /// and then at an odd address.
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
    std::map<std::string, std::array<memory, 3>> memories_; ///< by what is pointed to
    std::array<std::uint32_t, 8> ids_{};                    ///< what the last cells received
    std::size_t next_id_ = 0;
};

/// What docs/simulator.md says that a function may answer.
bool documented(const std::string &function, std::uint32_t status);

/// A finding unless the devices are consistent: tables within their capacities and sorted, and
/// whatever one entry refers to is there and counts its users rightly.
void check_device(qxsim::device &device);

} // namespace fuzz
