// The table of blocks under strict memory: what lies at an address, what freeing leaves behind, how
// long freed memory is held back, and in which order it is given back.
#include "strict/block_table.h"

#include <gtest/gtest.h>

namespace {

using namespace qxsh;

const script_place here{"make", "/a.tcl", "", 1};
const script_place there{"free", "/a.tcl", "", 2};

std::vector<std::uintptr_t> given_back;

class block_tables : public ::testing::Test
{
protected:
    block_tables() { given_back.clear(); }

    static constexpr std::uint64_t kept = 1000;
    block_table table{
        [](void *block) { given_back.push_back(reinterpret_cast<std::uintptr_t>(block)); }, kept};
};

TEST_F(block_tables, an_empty_table_knows_no_address)
{
    EXPECT_EQ(table.at(0), nullptr);
    EXPECT_EQ(table.at(0x1000), nullptr);
    EXPECT_EQ(table.up_to(UINT32_MAX), nullptr);
    EXPECT_TRUE(table.leaks().empty());
}

TEST_F(block_tables, a_block_reaches_from_its_start_to_its_end)
{
    table.add(0x1000, 16, 3, here);
    EXPECT_EQ(table.at(0x0fff), nullptr);
    ASSERT_NE(table.at(0x1000), nullptr);
    EXPECT_EQ(table.at(0x100f), table.at(0x1000));
    EXPECT_EQ(table.at(0x1010), nullptr);
    EXPECT_EQ(table.up_to(0x1010), table.at(0x1000));
    EXPECT_EQ(table.at(0x1000)->type, 3);
    EXPECT_EQ(table.at(0x1000)->serial, 1u);
    EXPECT_TRUE(table.at(0x1000)->live());
    EXPECT_EQ(*table.at(0x1000)->made, here);
}

TEST_F(block_tables, a_block_of_size_0_has_its_start)
{
    table.add(0x1000, 0, 3, here);
    EXPECT_NE(table.at(0x1000), nullptr);
    EXPECT_EQ(table.at(0x1001), nullptr);
}

TEST_F(block_tables, a_block_may_end_where_addresses_end)
{
    table.add(0xfffffff0, 16, 3, here);
    EXPECT_NE(table.at(0xffffffff), nullptr);
    EXPECT_EQ(table.at(0), nullptr);
}

TEST_F(block_tables, a_freed_block_stays_known_and_its_memory_is_kept)
{
    table.add(0x1000, 16, 3, here);
    table.release(0x1000, there);
    ASSERT_NE(table.at(0x1008), nullptr);
    EXPECT_FALSE(table.at(0x1008)->live());
    EXPECT_EQ(*table.at(0x1008)->freed, there);
    EXPECT_TRUE(given_back.empty());
}

TEST_F(block_tables, what_is_no_live_block_is_not_released)
{
    table.add(0x1000, 16, 3, here);
    table.release(0x1008, there);
    EXPECT_TRUE(table.at(0x1008)->live());
    table.release(0x1000, there);
    table.release(0x1000, here);
    EXPECT_EQ(*table.at(0x1000)->freed, there);
}

TEST_F(block_tables, the_oldest_freed_blocks_are_given_back_when_too_much_is_kept)
{
    constexpr std::uint32_t size = 500 - block_table::overhead; // two of them are just kept
    for (std::uint32_t i = 1; i <= 3; ++i)
        table.add(i * 0x1000, size, 3, here);
    table.release(0x2000, there);
    table.release(0x1000, there);
    EXPECT_TRUE(given_back.empty());
    table.release(0x3000, there);
    EXPECT_EQ(given_back, (std::vector<std::uintptr_t>{0x2000}));
    EXPECT_EQ(table.at(0x2000), nullptr);
    EXPECT_NE(table.at(0x1000), nullptr);
}

TEST_F(block_tables, small_blocks_count_for_more_than_their_size)
{
    constexpr auto most = static_cast<std::uint32_t>(kept / (block_table::overhead + 1));
    for (std::uint32_t i = 1; i <= most + 1; ++i) {
        table.add(i * 0x1000, 1, 3, here);
        table.release(i * 0x1000, there);
    }
    EXPECT_EQ(given_back, (std::vector<std::uintptr_t>{0x1000}));
}

TEST_F(block_tables, a_block_greater_than_all_that_is_kept_goes_at_once_and_after_the_others)
{
    table.add(0x1000, 16, 3, here);
    table.add(0x2000, 2000, 3, here);
    table.release(0x1000, there);
    table.release(0x2000, there);
    EXPECT_EQ(given_back, (std::vector<std::uintptr_t>{0x1000, 0x2000}));
    EXPECT_EQ(table.at(0x2000), nullptr);
}

TEST_F(block_tables, a_new_block_takes_the_place_of_what_was_known_there)
{
    table.add(0x1000, 16, 3, here);
    table.add(0x1010, 16, 3, here);
    table.add(0x1020, 16, 3, here);
    table.release(0x1010, there);
    table.add(0x1008, 16, 4, there); // touches the first two, not the third
    EXPECT_EQ(table.at(0x1000), nullptr);
    EXPECT_EQ(table.at(0x1008)->type, 4);
    EXPECT_EQ(table.at(0x1018), nullptr);
    EXPECT_NE(table.at(0x1020), nullptr);
    EXPECT_EQ(table.at(0x1008)->serial, 4u);
    // The forgotten one no longer counts, and is not given back later.
    table.add(0x8000, 2000, 3, here);
    table.release(0x8000, there);
    EXPECT_EQ(given_back, (std::vector<std::uintptr_t>{0x8000}));
}

TEST_F(block_tables, leaks_are_the_live_blocks_by_place_the_greatest_first)
{
    table.add(0x1000, 10, 3, here);
    table.add(0x2000, 30, 3, there);
    table.add(0x3000, 15, 3, here);
    table.add(0x4000, 500, 3, here);
    table.release(0x4000, there);
    const auto leaks = table.leaks();
    ASSERT_EQ(leaks.size(), 2u);
    EXPECT_EQ(*leaks[0].made, there);
    EXPECT_EQ(leaks[0].bytes, 30u);
    EXPECT_EQ(*leaks[1].made, here);
    EXPECT_EQ(leaks[1].blocks, 2u);
    EXPECT_EQ(leaks[1].bytes, 25u);
}

} // namespace
