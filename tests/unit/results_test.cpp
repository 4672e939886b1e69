// Results of commands. They are put into whatever object the interpreter has for them: a fresh one,
// which is filled, one with an earlier result, or one that a script holds, too. Before the module's
// start none counts as fresh.
#include "runtime/known_objects.h"
#include "runtime/results.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

#include <climits>

namespace {

using namespace qxsh;

class command_results : public testing::TestWithParam<bool>
{
protected:
    void SetUp() override
    {
        if (GetParam())
            learn_known_objects();
    }

    // The result that `set` leaves, in each of these cases.
    template <class Set>
    void expect_result(Set set, const std::string &text, const std::string &type)
    {
        for (const char *script :
             {"", "set a {an earlier result}", "expr 1+1", "list a b", "format {}"}) {
            tcl_.value(script);
            for (int time = 0; time < 2; ++time) {
                const held_object earlier{Tcl_GetObjResult(tcl_)};
                const auto earlier_text = earlier.text();
                EXPECT_EQ(set(tcl_), TCL_OK);
                const held_object result{Tcl_GetObjResult(tcl_)};
                EXPECT_EQ(result.type(), type);
                EXPECT_EQ(result.text(), text);
                EXPECT_EQ(tcl_.result(), text);
                EXPECT_EQ(earlier.text(), earlier_text);
            }
            Tcl_ResetResult(tcl_);
            EXPECT_EQ(set(tcl_), TCL_OK);
            EXPECT_EQ(held_object{Tcl_GetObjResult(tcl_)}.type(), type);
            EXPECT_EQ(tcl_.result(),
                      text); // after the type: asking for the text changes the object
            Tcl_ResetResult(tcl_);
            EXPECT_EQ(tcl_.result(), "");
        }
    }

    interpreter tcl_;
};

INSTANTIATE_TEST_SUITE_P(before_and_after_the_start, command_results, testing::Values(false, true));

TEST_P(command_results, numbers)
{
    expect_result([](Tcl_Interp *tcl) { return set_int_result(tcl, -5); }, "-5", "int");
    expect_result([](Tcl_Interp *tcl) { return set_int_result(tcl, INT_MAX); }, "2147483647",
                  "int");
    expect_result([](Tcl_Interp *tcl) { return set_unsigned_result(tcl, 0); }, "0", "int");
    expect_result([](Tcl_Interp *tcl) { return set_unsigned_result(tcl, 2147483646); },
                  "2147483646", "int");
    expect_result([](Tcl_Interp *tcl) { return set_unsigned_result(tcl, 2147483647); },
                  "2147483647", "");
    expect_result([](Tcl_Interp *tcl) { return set_unsigned_result(tcl, UINT_MAX); }, "4294967295",
                  "");
}

TEST_P(command_results, long_long_keeps_32_bits_with_their_sign)
{
    const std::pair<unsigned long long, const char *> cases[] = {
        {0, "0"},
        {4294967301, "5"},
        {2147483646, "2147483646"},
        {2147483647, "2147483647"},
        {2147483648, "18446744071562067968"},
        {4294967295, "18446744073709551615"},
        {ULLONG_MAX, "18446744073709551615"},
        {0xffffffff00000000, "0"},
    };
    for (const auto &[value, text] : cases) {
        EXPECT_EQ(set_low32_result(tcl_, value), TCL_OK);
        EXPECT_EQ(tcl_.result(), text);
    }
}

TEST_P(command_results, pointers)
{
    plain_type flow{"_p_qx_flow_t"};
    expect_result([&](Tcl_Interp *tcl) { return set_pointer_result(tcl, at(0x0001a2b0), flow); },
                  "_b0a20100_p_qx_flow_t", "qx_handle");
    expect_result([&](Tcl_Interp *tcl) { return set_pointer_result(tcl, at(UINT32_MAX), flow); },
                  "_ffffffff_p_qx_flow_t", "qx_handle");
    expect_result([&](Tcl_Interp *tcl) { return set_pointer_result(tcl, nullptr, flow); }, "NULL",
                  "");
}

} // namespace
