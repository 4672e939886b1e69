// Cells and arrays of cells: values, null, sizes and indices modulo 2^32, the printing of 64-bit
// reads.
#include "helpers/cells.h"
#include "tests/unit/block.h"
#include "tests/unit/captured_output.h"

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace qxsh;

template <class Number> class cells : public testing::Test
{
protected:
    // Values that show width and sign.
    static std::vector<Number> values()
    {
        using limits = std::numeric_limits<Number>;
        return {0,
                1,
                static_cast<Number>(0x1122334455667788),
                limits::max(),
                limits::min(),
                static_cast<Number>(-1)};
    }
};

using cell_types =
    testing::Types<int, unsigned int, unsigned short, unsigned char, unsigned long long>;
TYPED_TEST_SUITE(cells, cell_types);

TYPED_TEST(cells, hold_what_they_are_created_with)
{
    for (const TypeParam value : this->values()) {
        TypeParam *const cell = create_cell(value);
        ASSERT_NE(cell, nullptr);
        EXPECT_EQ(*cell, value);
        EXPECT_EQ(read_cell(cell, 0), value);
        free_block(cell);
    }
}

TYPED_TEST(cells, arrays_are_filled)
{
    for (const TypeParam value : this->values()) {
        for (const std::uint32_t count : {1u, 2u, 3u, 100u}) {
            TypeParam *const array = create_cell_array(value, count);
            ASSERT_NE(array, nullptr);
            for (std::uint32_t index = 0; index < count; ++index)
                EXPECT_EQ(read_cell(array, index), value);
            free_block(array);
        }
    }
}

TYPED_TEST(cells, elements_are_written_alone)
{
    TypeParam *const array = create_cell_array(TypeParam{7}, 5);
    for (const TypeParam value : this->values()) {
        write_cell(array, value, 2);
        for (std::uint32_t index = 0; index < 5; ++index)
            EXPECT_EQ(read_cell(array, index), index == 2 ? value : TypeParam{7});
    }
    free_block(array);
}

// A pointer into the middle, and an index that stands for minus one.
TYPED_TEST(cells, indices_count_modulo_2_to_the_32)
{
    TypeParam *const array = create_cell_array(TypeParam{0}, 4);
    for (std::uint32_t index = 0; index < 4; ++index)
        write_cell(array, static_cast<TypeParam>(index + 10), index);
    EXPECT_EQ(read_cell(array + 1, 4294967295), 10);
    EXPECT_EQ(read_cell(array + 3, 4294967293), 10);
    EXPECT_EQ(read_cell(array + 3, 4294967294), 11);
    write_cell(array + 2, TypeParam{99}, 4294967295);
    EXPECT_EQ(read_cell(array, 1), 99);
    if (sizeof(TypeParam) > 1) {
        constexpr auto around =
            static_cast<std::uint32_t>((std::uint64_t{1} << 32) / sizeof(TypeParam));
        EXPECT_EQ(read_cell(array, around), 10);
        EXPECT_EQ(read_cell(array, around + 3), 13);
        write_cell(array, TypeParam{77}, around + 2);
        EXPECT_EQ(read_cell(array, 2), 77);
    }
    free_block(array);
}

TYPED_TEST(cells, arrays_whose_size_wraps_do_not_exist)
{
    constexpr std::uint64_t bytes = sizeof(TypeParam);
    for (const std::uint64_t count :
         {(std::uint64_t{1} << 31) / bytes, (std::uint64_t{1} << 32) / bytes - 1,
          (std::uint64_t{1} << 32) / bytes, (std::uint64_t{1} << 32) / bytes + 1,
          (std::uint64_t{1} << 32) / bytes + 64, std::uint64_t{0x80000000},
          std::uint64_t{UINT32_MAX}}) {
        // Volatile, or the compiler warns of a size that it takes for real.
        const volatile auto cut =
            static_cast<std::uint32_t>(std::min<std::uint64_t>(count, UINT32_MAX));
        EXPECT_EQ(create_cell_array(TypeParam{1}, cut), nullptr) << count;
    }
}

TYPED_TEST(cells, empty_arrays_are_blocks_of_their_own)
{
    TypeParam *const one = create_cell_array(TypeParam{1}, 0);
    TypeParam *const two = create_cell_array(TypeParam{1}, 0);
    EXPECT_NE(one, nullptr);
    EXPECT_NE(two, nullptr);
    EXPECT_NE(one, two);
    free_block(one);
    free_block(two);
}

TYPED_TEST(cells, null_reads_as_zero_and_ignores_writes)
{
    TypeParam *const null = nullptr;
    for (const std::uint32_t index : {0u, 1u, 1000u, UINT32_MAX}) {
        EXPECT_EQ(read_cell(null, index), 0);
        write_cell(null, TypeParam{5}, index);
    }
}

// Handles need no alignment.
TYPED_TEST(cells, any_address_will_do)
{
    block room{32};
    auto *const cell = reinterpret_cast<TypeParam *>(room.at(3));
    for (const TypeParam value : this->values()) {
        write_cell(cell, value, 1);
        EXPECT_EQ(read_cell(cell, 1), value);
    }
}

TEST(printed_cells, print_the_whole_value)
{
    captured_output output;
    auto *const array = create_cell_array(4294967301ull, 2);
    write_cell(array, ~0ull, 1);
    EXPECT_EQ(read_printed_cell(array, 0), 4294967301ull);
    EXPECT_EQ(output.calls(), 1);
    EXPECT_EQ(output.take(), "4294967301\n");
    EXPECT_EQ(read_printed_cell(array, 1), ~0ull);
    EXPECT_EQ(output.take(), "18446744073709551615\n");
    EXPECT_EQ(read_printed_cell(array + 1, UINT32_MAX), 4294967301ull);
    EXPECT_EQ(output.take(), "4294967301\n");
    free_block(array);
    EXPECT_EQ(read_printed_cell<unsigned long long>(nullptr, 0), 0u);
    EXPECT_EQ(read_printed_cell<unsigned long long>(nullptr, 7), 0u);
    EXPECT_EQ(output.take(), "0\n0\n");
}

TEST(printed_cells, print_as_printf_does)
{
    captured_output output;
    for (unsigned shift = 0; shift < 64; ++shift) {
        for (const auto value : {1ull << shift, (1ull << shift) - 1, ~(1ull << shift)}) {
            char text[32];
            std::snprintf(text, sizeof text, "%llu\n", value);
            print_number(value);
            EXPECT_EQ(output.take(), text);
        }
    }
}

} // namespace
