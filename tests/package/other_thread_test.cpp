// The package was not loaded in the main thread first: whoever loads it first has it, and the main
// thread is refused as any other. One test after the other; the process remembers.
#include "tests/package/tcl_thread.h"

#include <atomic>
#include <list>

namespace {

class other_thread : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!interpreter{}.has_threads())
            GTEST_SKIP() << no_threads;
    }
};

// All threads load at the same moment, and keep what they got until all have tried.
TEST_F(other_thread, one_of_many_gets_the_package)
{
    constexpr int threads = 8;
    std::atomic<int> ready{0};
    std::atomic<int> tried{0};
    std::atomic<int> loaded{0};
    std::atomic<int> others{0};
    std::list<tcl_thread> running;
    for (int i = 0; i < threads; ++i)
        running.emplace_back([&] {
            interpreter tcl;
            ++ready;
            while (ready < threads)
                Tcl_Sleep(0);
            const auto got = try_script(tcl, load_package);
            ++(got == outcome{TCL_OK, ""} ? loaded : got == refused ? others : ready);
            ++tried;
            while (tried < threads)
                Tcl_Sleep(1);
            EXPECT_EQ(tcl.value(count_commands), got.status == TCL_OK ? "1093" : "0");
        });
    running.clear();
    EXPECT_EQ(loaded, 1);
    EXPECT_EQ(others, threads - 1);
}

TEST_F(other_thread, the_main_thread_comes_too_late)
{
    interpreter tcl;
    EXPECT_EQ(try_script(tcl, load_package), refused);
    EXPECT_EQ(tcl.value(count_commands), "0");
}

// A system may give a new thread the name of one that has ended. Then the package is its own, and
// sound.
TEST_F(other_thread, a_later_thread_is_refused_or_has_it_alone)
{
    for (int i = 0; i < 5; ++i)
        in_a_thread([] {
            interpreter tcl;
            const auto got = try_script(tcl, load_package);
            if (got.status != TCL_OK) {
                EXPECT_EQ(got, refused);
                return;
            }
            EXPECT_EQ(tcl.value(count_commands), "1093");
            EXPECT_EQ(tcl.value("set flow [qx_flow_create]; qx_flow_set_flow_id $flow 5\n"
                                "qx_flow_get_flow_id $flow"),
                      "5");
            tcl.value("qx_data_free $flow");
        });
}

} // namespace
