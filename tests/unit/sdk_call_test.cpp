// What stands around SDK calls: the status as a result, and the history of the latest calls.
#include "commands/sdk_call.h"
#include "commands/sdk_output.h"
#include "tests/unit/interpreter.h"

#include <climits>
#include <string>

namespace {

using namespace qxsh;

class sdk_calls : public testing::Test
{
protected:
    std::string result_of(unsigned int status, const char *usage = "o:qx_sample device_id ")
    {
        begin_sdk_call(tcl_, 0, nullptr, usage);
        EXPECT_EQ(history.interp, tcl_);
        EXPECT_EQ(history.usage, usage);
        EXPECT_EQ(end_sdk_call(status), TCL_OK);
        EXPECT_EQ(history.interp, nullptr);
        return tcl_.result();
    }

    const call_history::call &latest(unsigned int back)
    {
        return history.calls[(history.count - 1 - back) % call_history::length];
    }

    interpreter tcl_;
};

TEST_F(sdk_calls, status_keeps_16_bits)
{
    EXPECT_EQ(result_of(0), "0");
    EXPECT_EQ(result_of(65537), "1");
    EXPECT_EQ(result_of(UINT_MAX), "65535");
    EXPECT_EQ(result_of(0x80000000), "0");
}

TEST_F(sdk_calls, history_has_the_latest_with_whole_statuses)
{
    const auto before = history.count;
    for (unsigned int i = 0; i < 3 * call_history::length + 5; ++i)
        result_of(0x10000 + i, i % 2 != 0 ? "o:qx_odd a " : "o:qx_even a ");
    EXPECT_EQ(history.count, before + 3 * call_history::length + 5);
    for (unsigned int back = 0; back < call_history::length; ++back) {
        EXPECT_EQ(latest(back).status, 0x10000 + 3 * call_history::length + 4 - back);
        EXPECT_STREQ(latest(back).usage, latest(back).status % 2 ? "o:qx_odd a " : "o:qx_even a ");
    }
}

// As where C's stdout cannot be made unbuffered once it is in use, with uClibc.
TEST_F(sdk_calls, a_stdout_that_is_flushed_after_each_call_does_not_have_each_inspected)
{
    static unsigned int inspections = 0;
    const auto direct = stdout_now.c_stdout_is_direct;
    stdout_now.c_stdout_is_direct = false;
    inspect_after_sdk_calls([](const char *) { ++inspections; });
    for (unsigned int i = 0; i < 3 * 2048; ++i)
        result_of(0);
    inspect_after_sdk_calls(nullptr);
    stdout_now.c_stdout_is_direct = direct;
    EXPECT_GE(inspections, 3u);
    EXPECT_LE(inspections, 64u + 3u);
}

TEST_F(sdk_calls, block_memory_is_noted_too)
{
    begin_call(tcl_, 3, nullptr, "o:qx_data_free data ");
    EXPECT_EQ(history.objc, 3);
    EXPECT_STREQ(history.usage, "o:qx_data_free data ");
    const auto count = history.count;
    end_call();
    EXPECT_EQ(history.interp, nullptr);
    EXPECT_EQ(history.count, count);
}

} // namespace
