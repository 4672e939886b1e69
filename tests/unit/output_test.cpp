// The way out of everything printed: C's stdout by default, or whatever sink was set.
#include "helpers/output.h"
#include "helpers/records.h"
#include "tests/unit/captured_output.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace {

using namespace qxsh;

TEST(output, goes_to_stdout_by_default)
{
    testing::internal::CaptureStdout();
    std::printf("before, ");
    write_output("hello, ");
    report_bad_index("setter");
    std::printf("after");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "before, hello, setter bad Index \nafter");
}

TEST(output, goes_to_the_sink_and_back)
{
    testing::internal::CaptureStdout();
    {
        captured_output output;
        write_output("to the sink");
        EXPECT_EQ(output.calls(), 1);
        EXPECT_EQ(output.take(), "to the sink");
    }
    write_output("to stdout");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "to stdout");
}

TEST(output, takes_any_bytes)
{
    using namespace std::string_view_literals;
    captured_output output;
    write_output("a\0b\xff%s\n"sv);
    EXPECT_EQ(output.take(), "a\0b\xff%s\n"sv);
    const std::string large(1000000, 'x');
    write_output(large);
    EXPECT_EQ(output.calls(), 1);
    EXPECT_EQ(output.take(), large);
}

} // namespace
