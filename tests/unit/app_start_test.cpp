// What the shell does with its interpreter: Tcl, then the module, then the name of the rc file; and
// where it stops when a step fails. The tests run in order: a failure has to come before the first
// success.
#include "shell/demo.h"
#include "tests/unit/interpreter.h"
#include "types.h"

#include <thread>

namespace {

TEST(app_start_1, stops_when_tcl_cannot_start)
{
    interpreter tcl;
    tcl.value("proc tclInit {} { error {no script library} }");
    EXPECT_EQ(Demo_AppInit(tcl), TCL_ERROR);
    EXPECT_EQ(tcl.result(), "no script library");
    EXPECT_EQ(tcl.value("info commands qx_*"), "");
    EXPECT_EQ(tcl.value("package provide demo"), "");
    EXPECT_EQ(tcl.variable("tcl_rcFileName"), "(unset)");
    EXPECT_EQ(tcl.variable("swig_runtime_data_type_pointer4"), "(unset)");
    EXPECT_EQ(swig_module.next, nullptr);
}

TEST(app_start_2, makes_a_shell_of_an_interpreter)
{
    interpreter tcl;
    ASSERT_EQ(Demo_AppInit(tcl), TCL_OK) << tcl.result();
    EXPECT_EQ(tcl.variable("tcl_rcFileName"), "~/.myapprc");
    EXPECT_EQ(tcl.value("package provide demo"), "0.0");
    EXPECT_EQ(tcl.value("llength [info commands qx_*]"), "1093");
    EXPECT_EQ(tcl.value("package require demo"), "0.0");
    EXPECT_NE(tcl.variable("tcl_library"), "(unset)"); // Tcl's own start
    EXPECT_EQ(tcl.value("info procs unknown"), "unknown");
}

TEST(app_start_2, does_so_again)
{
    interpreter tcl;
    for (int time = 0; time < 2; ++time) {
        ASSERT_EQ(Demo_AppInit(tcl), TCL_OK) << tcl.result();
        EXPECT_EQ(tcl.variable("tcl_rcFileName"), "~/.myapprc");
        EXPECT_EQ(tcl.value("llength [info commands qx_*]"), "1093");
        tcl.value("set tcl_rcFileName other");
    }
}

TEST(app_start_2, the_name_of_the_rc_file_is_global)
{
    interpreter tcl;
    Tcl_CreateObjCommand(
        tcl, "start",
        [](ClientData, Tcl_Interp *interp, int, Tcl_Obj *const *) { return Demo_AppInit(interp); },
        nullptr, nullptr);
    EXPECT_EQ(
        tcl.value("proc local {} { set tcl_rcFileName mine; start; set tcl_rcFileName }; local"),
        "mine");
    EXPECT_EQ(tcl.variable("tcl_rcFileName"), "~/.myapprc");
}

TEST(app_start_3, stops_when_the_module_cannot_start)
{
    if (!interpreter{}.has_threads())
        GTEST_SKIP() << no_threads;
    std::thread{[] {
        {
            interpreter tcl;
            EXPECT_EQ(Demo_AppInit(tcl), TCL_ERROR);
            EXPECT_EQ(tcl.result(), "package demo is in use in another thread");
            EXPECT_EQ(tcl.variable("tcl_rcFileName"), "(unset)");
        }
        Tcl_FinalizeThread();
    }}.join();
}

} // namespace
