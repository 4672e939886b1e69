// What a session under strict memory says about blocks that were never freed.
#include "strict/leak_report.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace qxsh;

const script_place in_file{"qx_flow_create", "/far/a.tcl", "", 7};
const script_place in_procedure{"qx_vlan_create", "", "::make", 3};
const script_place typed{"qx_uint8_create", "", "", 0};

TEST(leak_reports, are_empty_when_nothing_leaked)
{
    EXPECT_EQ(leak_report({}), "");
}

TEST(leak_reports, count_all_and_name_each_place)
{
    EXPECT_EQ(leak_report({{&in_file, 2, 424}, {&in_procedure, 1, 8}, {&typed, 1, 1}}),
              "strict memory: never freed: 433 bytes in 4 blocks\n"
              "  424 bytes in 2 blocks, made by 'qx_flow_create' at /far/a.tcl:7\n"
              "  8 bytes in 1 block, made by 'qx_vlan_create' in line 3 of procedure '::make'\n"
              "  1 byte in 1 block, made by 'qx_uint8_create'\n");
}

TEST(leak_reports, put_the_places_behind_the_twentieth_into_one_line)
{
    const std::vector<leak> twenty(most_places, leak{&in_file, 1, 10});
    const std::string all = leak_report(twenty);
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 21);
    auto more = twenty;
    more.push_back({&typed, 2, 5});
    EXPECT_TRUE(leak_report(more).ends_with("\n  5 bytes in 2 blocks, made at 1 other place\n"));
    more.push_back({&typed, 1, 5});
    EXPECT_TRUE(leak_report(more).ends_with("\n  10 bytes in 3 blocks, made at 2 other places\n"));
}

} // namespace
