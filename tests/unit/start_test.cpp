// Start-up of the module when it is the first and only one of the process. The tests run in order:
// what the very first call does happens once.
#include "commands/command_table.h"
#include "runtime/constants.h"
#include "shell/demo.h"
#include "tests/unit/expected_table.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"
#include "types.h"

#include <set>
#include <thread>

namespace {

constexpr const char *variable_name = "swig_runtime_data_type_pointer4";
constexpr int command_count = 1093;

int count_commands(interpreter &tcl)
{
    return std::stoi(tcl.value("llength [info commands qx_*]"));
}

void expect_started(interpreter &tcl)
{
    EXPECT_EQ(count_commands(tcl), command_count);
    EXPECT_EQ(tcl.value("package provide demo"), "0.0");
    EXPECT_NE(tcl.variable(variable_name), "(unset)");
}

// Not even Tcl's stub table is filled yet.
TEST(start_1, null_interpreters_are_refused_without_effect)
{
    EXPECT_EQ(Demo_Init(nullptr), TCL_ERROR);
    EXPECT_EQ(Demo_SafeInit(nullptr), TCL_ERROR);
    EXPECT_EQ(swig_module.next, nullptr);
    EXPECT_EQ(qxsh::constant_count(), -1);
    EXPECT_EQ(swig_types[0], nullptr);
}

TEST(start_2, the_first_call)
{
    interpreter tcl;
    const auto before = tcl.value("lsort [info globals]");
    const auto namespaces = tcl.value("lsort [namespace children ::]");
    ASSERT_EQ(Demo_Init(tcl), TCL_OK) << tcl.result();
    expect_started(tcl);
    EXPECT_EQ(tcl.value("package require demo"), "0.0");
    EXPECT_EQ(tcl.value("package require -exact demo 0.0"), "0.0");
    EXPECT_EQ(tcl.variable(variable_name).size(), 1 + 2 * sizeof(void *));
    EXPECT_EQ(tcl.variable("tcl_rcFileName"), "(unset)"); // the shell's business
    tcl.value(std::string{"unset "} + variable_name);
    EXPECT_EQ(tcl.value("lsort [info globals]"), before);
    EXPECT_EQ(tcl.value("lsort [namespace children ::]"), namespaces);
}

TEST(start_2, the_table_of_constants_is_empty_but_there)
{
    EXPECT_EQ(qxsh::constant_count(), 0);
}

TEST(start_2, the_types)
{
    const auto rows = read_expected("types.tsv");
    ASSERT_EQ(rows.size(), 62u);
    ASSERT_EQ(swig_module.size, 62u);
    EXPECT_EQ(swig_module.types, swig_types);
    EXPECT_EQ(swig_module.client_data, nullptr);
    EXPECT_EQ(swig_module.next, &swig_module);
    EXPECT_EQ(swig_types[62], nullptr);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto *const type = swig_types[i];
        EXPECT_EQ(type, swig_module.type_initial[i]);
        EXPECT_EQ(type->name, rows[i][0]);
        EXPECT_EQ(type->str, rows[i][1]);
        EXPECT_EQ(type->dynamic_cast_hook, nullptr);
        EXPECT_EQ(type->client_data, nullptr);
        EXPECT_EQ(type->owns_client_data, 0);
        EXPECT_EQ(sources_of(type), std::vector<std::string>{rows[i][0]});
        EXPECT_EQ(type->cast->type, type);
        EXPECT_EQ(type->cast->converter, nullptr);
        EXPECT_LT(i > 0 ? rows[i - 1][0] : "", rows[i][0]); // byte by byte
    }
}

TEST(start_3, the_same_interpreter_again)
{
    interpreter tcl;
    for (int time = 0; time < 3; ++time) {
        ASSERT_EQ(Demo_Init(tcl), TCL_OK) << tcl.result();
        expect_started(tcl);
        EXPECT_EQ(swig_module.next, &swig_module);
        EXPECT_EQ(qxsh::constant_count(), 0);
    }
    for (int index = 0; index < type_count; ++index)
        EXPECT_EQ(sources_of(swig_types[index]).size(), 1u);
}

// Handles go from one interpreter to the other.
TEST(start_3, two_interpreters)
{
    interpreter one;
    interpreter two;
    ASSERT_EQ(Demo_Init(one), TCL_OK);
    const auto handle = one.value("qx_uint32_create 7");
    ASSERT_EQ(Demo_Init(two), TCL_OK);
    expect_started(two);
    EXPECT_EQ(one.variable(variable_name), two.variable(variable_name));
    EXPECT_EQ(two.value("qx_uint32_get " + handle), "7");
    EXPECT_EQ(two.value("qx_data_free " + handle), "");
    EXPECT_EQ(swig_module.next, &swig_module);
}

TEST(start_3, an_interpreter_after_another_was_deleted)
{
    {
        interpreter tcl;
        ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    }
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    expect_started(tcl);
}

TEST(start_3, safe_interpreters_have_all_commands)
{
    interpreter tcl;
    ASSERT_EQ(Tcl_MakeSafe(tcl), TCL_OK);
    ASSERT_EQ(Demo_SafeInit(tcl), TCL_OK) << tcl.result();
    ASSERT_TRUE(Tcl_IsSafe(tcl));
    expect_started(tcl);
    EXPECT_EQ(
        tcl.value("set h [qx_uint8_create 255]; set v [qx_uint8_get $h]; qx_data_free $h; set v"),
        "255");
    EXPECT_EQ(tcl.error("open /dev/null"), "invalid command name \"open\"");
    EXPECT_EQ(tcl.value("interp hidden {}").find("qx_"), std::string::npos);
}

TEST(start_3, child_interpreters)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    for (const int safe : {0, 1}) {
        Tcl_Interp *const child = Tcl_CreateSlave(tcl, "child", safe);
        EXPECT_EQ(tcl.value("child eval {llength [info commands qx_*]}"), "0");
        ASSERT_EQ(safe ? Demo_SafeInit(child) : Demo_Init(child), TCL_OK);
        EXPECT_EQ(tcl.value("child eval {llength [info commands qx_*]}"), "1093");
        EXPECT_EQ(tcl.value("child eval {package provide demo}"), "0.0");
        tcl.value("interp delete child");
    }
    expect_started(tcl);
}

// What provides the package is not asked whether it could.
TEST(start_3, another_version_of_the_package)
{
    interpreter tcl;
    tcl.value("package provide demo 1.7");
    EXPECT_EQ(Demo_Init(tcl), TCL_OK);
    EXPECT_EQ(count_commands(tcl), command_count);
    EXPECT_EQ(tcl.value("package provide demo"), "1.7");
    EXPECT_NE(tcl.variable(variable_name), "(unset)");
}

TEST(start_3, earlier_commands_of_a_name_are_replaced)
{
    interpreter tcl;
    static int deleted;
    deleted = 0;
    Tcl_CreateObjCommand(
        tcl, "qx_flow_create",
        [](ClientData, Tcl_Interp *, int, Tcl_Obj *const *) { return TCL_OK; }, nullptr,
        [](ClientData) { ++deleted; });
    tcl.value("proc qx_uint8_create args { return mine }");
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(tcl.error("qx_uint8_create"),
              "Wrong number of arguments :qx_uint8_create data  argument 1");
    const auto handle = tcl.value("qx_flow_create");
    EXPECT_EQ(handle.substr(9), "_p_qx_flow_t");
    tcl.value("qx_data_free " + handle);
}

TEST(start_3, a_command_renamed_is_registered_again)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    tcl.value("rename qx_data_free {}; rename qx_flow_create keep");
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    EXPECT_EQ(count_commands(tcl), command_count);
    EXPECT_EQ(tcl.value("info commands keep"), "keep");
}

TEST(start_3, garbage_in_the_registry_variable)
{
    interpreter tcl;
    tcl.value(std::string{"set "} + variable_name + " {not a handle}");
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    expect_started(tcl);
    interpreter other;
    ASSERT_EQ(Demo_Init(other), TCL_OK);
    EXPECT_EQ(tcl.variable(variable_name), other.variable(variable_name));
}

// Nothing of the module is locked, so only one thread may have it.
TEST(start_3, other_threads_are_refused)
{
    if (!interpreter{}.has_threads())
        GTEST_SKIP() << no_threads;
    std::thread{[] {
        {
            interpreter tcl;
            EXPECT_EQ(Demo_Init(tcl), TCL_ERROR);
            EXPECT_EQ(tcl.result(), "package demo is in use in another thread");
            EXPECT_EQ(count_commands(tcl), 0);
            EXPECT_EQ(tcl.value("package provide demo"), "");
            EXPECT_EQ(tcl.variable(variable_name), "(unset)");
        }
        Tcl_FinalizeThread();
    }}.join();
    interpreter tcl;
    EXPECT_EQ(Demo_Init(tcl), TCL_OK);
    expect_started(tcl);
}

// A module that comes later takes our types over, and joins our ring.
TEST(start_4, a_second_module)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    const auto published = tcl.variable(variable_name);
    static sample_module other{"_p_lamp", "_p_qx_flow_t", "_p_unsigned_int"};
    other.accept("_p_unsigned_int", "_p_lamp");
    other.link(tcl);
    EXPECT_EQ(tcl.variable(variable_name), published);
    EXPECT_EQ(swig_module.next, other.record());
    EXPECT_EQ(other.record()->next, &swig_module);
    EXPECT_EQ(other.resolved(0), other.own("_p_lamp"));
    EXPECT_EQ(other.resolved(1), swig_types[type_qx_flow_t]);
    EXPECT_EQ(other.resolved(2), swig_types[type_unsigned_int]);
    // Its cast is now ours: handles of its lamps are taken where cells are.
    const auto cell = tcl.value("qx_uint32_create 5");
    EXPECT_EQ(tcl.value("qx_uint32_get " + cell.substr(0, 9) + "_p_lamp"), "5");
    EXPECT_EQ(tcl.value("qx_uint32_get " + cell), "5");
    tcl.value("qx_data_free " + cell);
    // A further start links nothing twice.
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    EXPECT_EQ(swig_module.next, other.record());
    EXPECT_EQ(other.record()->next, &swig_module);
    interpreter fresh;
    ASSERT_EQ(Demo_Init(fresh), TCL_OK);
    EXPECT_EQ(swig_module.next, other.record());
    EXPECT_EQ(sources_of(swig_types[type_unsigned_int]).size(), 2u);
}

} // namespace
