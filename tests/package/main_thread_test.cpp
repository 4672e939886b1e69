// The package was loaded in the main thread: every other thread is refused, with a clear message
// and without a trace, and the main thread goes on undisturbed.
#include "tests/package/tcl_thread.h"

namespace {

class main_thread : public testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ(try_script(tcl_, load_package), (outcome{TCL_OK, ""})); }

    interpreter tcl_;
};

class beside_main_thread : public main_thread
{
protected:
    void SetUp() override
    {
        if (!tcl_.has_threads())
            GTEST_SKIP() << no_threads;
        main_thread::SetUp();
    }
};

TEST_F(main_thread, has_the_package)
{
    EXPECT_EQ(tcl_.value(count_commands), "1093");
    EXPECT_EQ(tcl_.value("package provide demo"), "0.0");
    interpreter other;
    EXPECT_EQ(try_script(other, load_package), (outcome{TCL_OK, ""}));
    EXPECT_EQ(other.value(count_commands), "1093");
}

TEST_F(beside_main_thread, has_it_alone)
{
    in_a_thread([] {
        interpreter tcl;
        EXPECT_EQ(try_script(tcl, load_package), refused);
        EXPECT_EQ(try_script(tcl, load_package), refused); // asking again changes nothing
        EXPECT_EQ(tcl.error_code(), "NONE");
    });
}

TEST_F(beside_main_thread, leaves_no_trace_elsewhere)
{
    in_a_thread([] {
        interpreter tcl;
        const std::string state =
            "list [lsort [info commands]] [lsort [info globals]] [package provide demo]";
        const auto before = tcl.value("catch {error x}; " + state);
        EXPECT_EQ(try_script(tcl, load_package), refused);
        EXPECT_EQ(tcl.value(state), before);
    });
}

TEST_F(beside_main_thread, refuses_safe_interpreters_too)
{
    in_a_thread([] {
        interpreter tcl;
        tcl.value("interp create -safe inside");
        EXPECT_EQ(try_script(tcl, load_package + " inside"), refused);
        EXPECT_EQ(tcl.value("inside eval {" + count_commands + "}"), "0");
    });
}

TEST_F(beside_main_thread, refuses_many)
{
    for (int i = 0; i < 10; ++i)
        in_a_thread([] {
            interpreter tcl;
            EXPECT_EQ(try_script(tcl, load_package), refused);
        });
}

// Between refusals, records and interpreters of the main thread stay as they are.
TEST_F(beside_main_thread, goes_on)
{
    tcl_.value("set flow [qx_flow_create]; qx_flow_set_flow_id $flow 5");
    in_a_thread([] {
        interpreter tcl;
        EXPECT_EQ(try_script(tcl, load_package), refused);
    });
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id $flow"), "5");
    interpreter later;
    EXPECT_EQ(try_script(later, load_package), (outcome{TCL_OK, ""}));
    EXPECT_EQ(later.value("qx_flow_get_flow_id " + tcl_.value("set flow")), "5");
    tcl_.value("qx_data_free $flow");
}

TEST_F(beside_main_thread, goes_on_while_another_is_refused)
{
    tcl_thread other{[] {
        for (int i = 0; i < 20; ++i) {
            interpreter tcl;
            EXPECT_EQ(try_script(tcl, load_package), refused);
        }
    }};
    for (int i = 0; i < 20; ++i) {
        interpreter tcl;
        EXPECT_EQ(try_script(tcl, load_package), (outcome{TCL_OK, ""}));
        tcl.value("set flow [qx_flow_create]; qx_flow_set_flow_id $flow 5; qx_data_free $flow");
    }
}

} // namespace
