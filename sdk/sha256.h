// SHA-256 (FIPS 180-4), for fingerprints of keys and for the check of saved devices.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace qxsim {

/// The digest of `size` bytes.
std::array<std::uint8_t, 32> sha256(const void *bytes, std::size_t size);

} // namespace qxsim
