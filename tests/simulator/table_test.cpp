// The bounded tables against plain models: a std::map for sorted rows, a counter for numbers.
#include "table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <list>
#include <map>
#include <random>
#include <set>
#include <string>

using qxsim::bounded_table;
using qxsim::numbered_table;

TEST(bounded_table, behaves_as_a_map)
{
    std::mt19937 random{3};
    constexpr std::size_t capacity = 40;
    bounded_table<int, unsigned> table{capacity};
    std::map<int, unsigned> model;
    EXPECT_EQ(table.first(), nullptr);
    for (int round = 0; round < 50000; ++round) {
        const int key = static_cast<int>(random() % 80) - 40;
        const unsigned value = random();
        const bool known = model.count(key) != 0;
        ASSERT_EQ(known, table.find(key) != nullptr);
        if (random() % 2 == 0 && !known && !table.full()) {
            table.add(key, value);
            model[key] = value;
        } else if (random() % 2 == 0) {
            ASSERT_EQ(known, table.remove(key));
            model.erase(key);
        }
        ASSERT_EQ(model.size(), table.size());
        ASSERT_EQ(model.size() == capacity, table.full());
        const auto next = model.upper_bound(key);
        const auto *const row = table.next(key);
        ASSERT_EQ(next == model.end(), row == nullptr);
        if (row != nullptr) {
            ASSERT_EQ(next->first, row->key);
            ASSERT_EQ(next->second, row->entry);
        }
        const auto *const before = table.at_or_before(key);
        ASSERT_EQ(next == model.begin(), before == nullptr);
        if (before != nullptr) {
            ASSERT_EQ(std::prev(next)->first, before->key);
        }
    }
    auto expected = model.begin();
    for (const auto &row : table) {
        ASSERT_EQ(expected->first, row.key);
        ASSERT_EQ(expected->second, row.entry);
        ++expected;
    }
    EXPECT_EQ(model.end(), expected);
    table.clear();
    EXPECT_TRUE(table.empty());
    EXPECT_EQ(capacity, table.capacity());
}

TEST(bounded_table, takes_its_memory_once)
{
    bounded_table<int, unsigned> table{8};
    table.add(0, 0);
    const void *const place = table.find(0);
    for (int key = 1; key < 8; ++key)
        table.add(key, 0);
    EXPECT_EQ(place, table.find(0));
    EXPECT_TRUE(table.full());
}

static bool known(const bounded_table<int, int> &table, int key)
{
    return table.removed(key) != nullptr;
}

TEST(bounded_table, remembers_the_last_rows_that_were_removed)
{
    bounded_table<int, int> table{2};
    EXPECT_FALSE(known(table, 1));
    for (const int key : {1, 2, 3}) {
        table.add(key, key * 10);
        EXPECT_FALSE(known(table, key));
        EXPECT_TRUE(table.remove(key));
    }
    EXPECT_FALSE(known(table, 1)) << "two are remembered";
    EXPECT_TRUE(known(table, 2));
    EXPECT_TRUE(known(table, 3));
    EXPECT_EQ(*table.removed(2), 20);
    EXPECT_EQ(table.removed_count(), 2U);
    table.add(2, 0);
    EXPECT_FALSE(known(table, 2)) << "it is there again";
    table.clear();
    EXPECT_TRUE(known(table, 2));
}

TEST(bounded_table, remembers_as_a_list_by_age)
{
    std::mt19937 random{4};
    constexpr std::size_t capacity = 7;
    bounded_table<int, int> table{capacity};
    std::set<int> present;
    std::list<int> removed; // the newest first
    for (int round = 0; round < 50000; ++round) {
        const int key = static_cast<int>(random() % 20);
        if (present.count(key) == 0 && !table.full()) {
            table.add(key, key);
            present.insert(key);
            removed.remove(key);
        } else if (table.remove(key)) {
            present.erase(key);
            removed.push_front(key);
        } else if (random() % 100 == 0) {
            table.clear();
            removed.insert(removed.begin(), present.rbegin(), present.rend());
            present.clear();
        }
        if (removed.size() > capacity)
            removed.resize(capacity);
        ASSERT_EQ(removed.size(), table.removed_count());
        for (int each = 0; each < 20; ++each)
            ASSERT_EQ(std::count(removed.begin(), removed.end(), each) != 0, known(table, each));
    }
}

TEST(bounded_table, is_restored_from_what_it_saved)
{
    bounded_table<int, int> table{4};
    for (const int key : {7, 3, 9, 5})
        table.add(key, key * 10);
    for (const int key : {9, 3})
        table.remove(key);
    std::string bytes;
    table.save(bytes);
    bounded_table<int, int> other{4};
    std::string_view rest = bytes;
    ASSERT_TRUE(other.restore(rest));
    EXPECT_TRUE(rest.empty());
    std::string again;
    other.save(again);
    EXPECT_EQ(bytes, again);
    EXPECT_EQ(*other.find(7), 70);
    EXPECT_TRUE(known(other, 9));
    for (int key = 20; key < 22; ++key)
        other.add(key, 0);
    other.clear();
    EXPECT_FALSE(known(other, 9)) << "the oldest are forgotten first";

    for (std::size_t size = 0; size < bytes.size(); ++size) {
        bounded_table<int, int> broken{4};
        rest = std::string_view{bytes}.substr(0, size);
        EXPECT_FALSE(broken.restore(rest)) << size << " bytes";
    }
    bounded_table<int, int> small{1};
    rest = bytes;
    EXPECT_FALSE(small.restore(rest));
    bytes[4] = 7; // the first key, 5, becomes that of the second row
    bounded_table<int, int> twice{4};
    rest = bytes;
    EXPECT_FALSE(twice.restore(rest));
}

TEST(numbered_table, gives_numbers_in_turn)
{
    numbered_table<int> table{3, 0x10000};
    EXPECT_EQ(table.add(7), 0x10001U);
    EXPECT_EQ(table.add(8), 0x10002U);
    EXPECT_TRUE(table.remove(0x10001));
    EXPECT_EQ(table.add(9), 0x10003U);
    EXPECT_EQ(table.add(10), 0x10004U);
    EXPECT_TRUE(table.full());
    EXPECT_EQ(table.find(1), nullptr);
    EXPECT_EQ(*table.find(0x10002), 8);
}

TEST(numbered_table, numbers_come_again_when_all_were_used)
{
    numbered_table<int> table{4, 0};
    EXPECT_EQ(table.add(1), 1U);
    EXPECT_EQ(table.add(2), 2U);
    for (unsigned expected = 3; expected <= 65535; ++expected) {
        ASSERT_EQ(expected, table.add(0));
        ASSERT_TRUE(table.remove(expected));
    }
    EXPECT_TRUE(table.remove(1));
    EXPECT_EQ(table.add(0), 1U) << "2 is still taken";
    EXPECT_EQ(table.add(0), 3U);
}

TEST(find_row, finds_the_first_in_order)
{
    bounded_table<int, int> table{8};
    table.add(5, 1);
    table.add(3, 1);
    table.add(1, 0);
    const auto *const row = qxsim::find_row(table, [](int entry) { return entry == 1; });
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->key, 3);
    EXPECT_EQ(qxsim::find_row(table, [](int entry) { return entry == 2; }), nullptr);
}
