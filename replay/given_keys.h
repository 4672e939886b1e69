// The keys that a program has given, by the texts that a recording has in their place.
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

namespace qxsh {

/// Remembers at least the last `most` keys, and never more than twice as many.
class given_keys
{
public:
    static constexpr std::size_t most = 16384; ///< many times a device's associations

    void add(const std::string &text, const unsigned char *bytes, std::size_t size);

    /// The bytes of a key, or null. Valid until the next call.
    const std::string *find(const std::string &text);

private:
    std::unordered_map<std::string, std::string> young_{};
    std::unordered_map<std::string, std::string> old_{};
};

} // namespace qxsh
