// SHA-256 (FIPS 180-4), for fingerprints of keys and for the check of saved devices.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qxsh {

/// The digest of `size` bytes.
std::array<std::uint8_t, 32> sha256(const void *bytes, std::size_t size);

/// What tells a key from others and does not tell the key: its length and the first 8 bytes of the
/// digest of the salt and the key, such as "32 bytes, 0f1e2d3c4b5a6978". Somebody who can guess the
/// key and knows the salt can confirm it.
std::string fingerprint(std::string_view salt, const unsigned char *key, std::size_t size);

} // namespace qxsh
