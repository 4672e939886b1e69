// SHA-256 (FIPS 180-4).
#include "records/sha256.h"

#include <bit>
#include <cstring>

namespace qxsh {

namespace {

constexpr std::size_t block_bytes = 64;
using state = std::array<std::uint32_t, 8>;

constexpr std::uint32_t constants[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

std::uint32_t big_endian(const unsigned char *bytes)
{
    return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 |
           std::uint32_t{bytes[2]} << 8 | bytes[3];
}

void add_block(state &sum, const unsigned char *block)
{
    std::uint32_t words[64];
    for (unsigned index = 0; index < 16; ++index)
        words[index] = big_endian(block + index * 4);
    for (unsigned index = 16; index < 64; ++index) {
        const std::uint32_t early = words[index - 15];
        const std::uint32_t late = words[index - 2];
        words[index] = words[index - 16] + words[index - 7] +
                       (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3) +
                       (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10);
    }
    auto [a, b, c, d, e, f, g, h] = sum;
    for (unsigned index = 0; index < 64; ++index) {
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                    ((e & f) ^ (~e & g)) + constants[index] + words[index];
        const std::uint32_t second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g, g = f, f = e, e = d + first;
        d = c, c = b, b = a, a = first + second;
    }
    const state added{a, b, c, d, e, f, g, h};
    for (unsigned index = 0; index < 8; ++index)
        sum[index] += added[index];
}

} // namespace

std::array<std::uint8_t, 32> sha256(const void *bytes, std::size_t size)
{
    state sum{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
              0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    const auto *rest = static_cast<const unsigned char *>(bytes);
    std::size_t left = size;
    for (; left >= block_bytes; left -= block_bytes, rest += block_bytes)
        add_block(sum, rest);
    // The rest, a 1 bit, zeros, and the number of bits in the last eight bytes.
    unsigned char tail[2 * block_bytes] = {};
    if (left != 0)
        std::memcpy(tail, rest, left);
    tail[left] = 0x80;
    const std::size_t tail_size = left + 9 <= block_bytes ? block_bytes : 2 * block_bytes;
    const std::uint64_t bits = std::uint64_t{size} * 8;
    for (unsigned index = 0; index < 8; ++index)
        tail[tail_size - 1 - index] = static_cast<unsigned char>(bits >> (8 * index));
    for (std::size_t at = 0; at < tail_size; at += block_bytes)
        add_block(sum, tail + at);
    std::array<std::uint8_t, 32> digest{};
    for (unsigned index = 0; index < 32; ++index)
        digest[index] = static_cast<std::uint8_t>(sum[index / 4] >> (24 - index % 4 * 8));
    return digest;
}

std::string fingerprint(std::string_view salt, const unsigned char *key, std::size_t size)
{
    static constexpr char digits[] = "0123456789abcdef";
    constexpr std::size_t shown = 8;
    std::string all{salt};
    all.append(reinterpret_cast<const char *>(key), size);
    const auto digest = sha256(all.data(), all.size());
    std::string text = std::to_string(size) + " bytes, ";
    for (std::size_t index = 0; index < shown; ++index) {
        text += digits[digest[index] >> 4];
        text += digits[digest[index] & 15];
    }
    return text;
}

} // namespace qxsh
