// Fields at byte offsets and bit-fields, against models that count bytes and bits one by one. The
// compiler's own bit-fields are asked where they lie.
#include "helpers/fields.h"
#include "tests/unit/bit_field_place.h"
#include "tests/unit/block.h"

#include <random>
#include <string>

namespace {

using namespace qxsh;

TEST(fields, are_little_endian_at_any_offset)
{
    const byte_list bytes = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88};
    const block record{bytes};
    for (std::uint32_t offset = 0; offset < 5; ++offset) {
        EXPECT_EQ(load<std::uint8_t>(record, offset), bytes[offset]);
        EXPECT_EQ(load<std::uint16_t>(record, offset), bytes[offset] + 0x100u * bytes[offset + 1]);
        EXPECT_EQ(load<std::uint32_t>(record, offset), bytes[offset] + 0x100u * bytes[offset + 1] +
                                                           0x10000u * bytes[offset + 2] +
                                                           0x1000000u * bytes[offset + 3]);
    }
}

template <class Storage> void expect_store(std::uint32_t offset)
{
    block record{16};
    record.fill(0xee);
    auto right = record.bytes();
    store<Storage>(record, offset, 0x12345678);
    for (std::uint32_t i = 0; i < sizeof(Storage); ++i)
        right[offset + i] = static_cast<unsigned char>(0x12345678u >> (8 * i));
    EXPECT_EQ(record.bytes(), right);
    EXPECT_EQ(load<Storage>(record, offset), static_cast<Storage>(0x12345678));
}

TEST(fields, are_cut_to_their_width_and_keep_their_neighbours)
{
    for (std::uint32_t offset = 0; offset < 12; ++offset) {
        expect_store<std::uint8_t>(offset);
        expect_store<std::uint16_t>(offset);
        expect_store<std::uint32_t>(offset);
    }
}

TEST(bit_masks, have_ones_where_the_field_is)
{
    EXPECT_EQ(bit_mask(0, 1), 1u);
    EXPECT_EQ(bit_mask(31, 1), 0x80000000u);
    EXPECT_EQ(bit_mask(0, 32), 0xffffffffu);
    EXPECT_EQ(bit_mask(4, 3), 0x70u);
    for (unsigned width = 1; width <= 32; ++width) {
        for (unsigned bit = 0; bit + width <= 32; ++bit) {
            std::uint32_t mask = 0;
            for (unsigned i = bit; i < bit + width; ++i)
                mask |= std::uint32_t{1} << i;
            EXPECT_EQ(bit_mask(bit, width), mask) << bit << " " << width;
        }
    }
}

// Bit `number` of a range of bytes, counted from the first byte's lowest.
bool bit_of(const byte_list &bytes, std::size_t number)
{
    return (bytes[number / 8] >> (number % 8) & 1) != 0;
}

void set_bit_of(byte_list &bytes, std::size_t number, bool value)
{
    const auto mask = static_cast<unsigned char>(1u << (number % 8));
    bytes[number / 8] =
        static_cast<unsigned char>(value ? bytes[number / 8] | mask : bytes[number / 8] & ~mask);
}

// The bytes after `width` bits of `value` went to `first` and up.
byte_list with_bits(byte_list bytes, std::size_t first, unsigned width, std::uint32_t value)
{
    for (unsigned i = 0; i < width; ++i)
        set_bit_of(bytes, first + i, (value >> i & 1) != 0);
    return bytes;
}

constexpr std::uint32_t patterns[] = {0,          UINT32_MAX, 0x55555555, 0xaaaaaaaa,
                                      0x12345678, 1,          0x80000000};

template <class Storage> void expect_bits()
{
    for (unsigned width = 1; width <= 8 * sizeof(Storage); ++width) {
        for (unsigned bit = 0; bit + width <= 8 * sizeof(Storage); ++bit) {
            for (const std::uint32_t offset : {0u, 3u}) {
                for (const auto value : patterns) {
                    block record{byte_list{0x00, 0xff, 0x5a, 0xa5, 0x3c, 0xc3, 0x00, 0xff}};
                    const auto right = with_bits(record.bytes(), 8 * offset + bit, width, value);
                    store_bits<Storage>(record, offset, bit, width, value);
                    ASSERT_EQ(record.bytes(), right) << bit << " " << width;
                    ASSERT_EQ(load_bits<Storage>(record, offset, bit, width),
                              value & bit_mask(0, width));
                }
            }
        }
    }
}

TEST(bits, of_every_place_and_width)
{
    expect_bits<std::uint8_t>();
    expect_bits<std::uint16_t>();
    expect_bits<std::uint32_t>();
}

// The places that the catalogue names are those where this compiler puts its own bit-fields.
TEST(bits, lie_where_the_compiler_puts_them)
{
    ASSERT_NE(bit_field_places[0].name, nullptr);
    constexpr std::size_t room = 1024;
    for (const auto *place = bit_field_places; place->name != nullptr; ++place) {
        ASSERT_LT(place->offset + 4, room) << place->name;
        for (const unsigned char background : {0x00, 0xff, 0x5a}) {
            for (const auto value : patterns) {
                block record{room};
                record.fill(background);
                const auto right =
                    with_bits(record.bytes(), 8 * place->offset + place->bit, place->width, value);
                place->store(record, value);
                ASSERT_EQ(record.bytes(), right) << place->name;
            }
        }
    }
}

TEST(bits, models_see_single_bits)
{
    byte_list bytes = {0x01, 0x80};
    EXPECT_TRUE(bit_of(bytes, 0));
    EXPECT_FALSE(bit_of(bytes, 1));
    EXPECT_TRUE(bit_of(bytes, 15));
    EXPECT_EQ(with_bits(bytes, 7, 2, 3), (byte_list{0x81, 0x81}));
}

} // namespace
