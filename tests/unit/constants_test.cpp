// The installation of constants and their lookup by upper-case letters of formats. A program of its
// own, since the table of constants is the process's and its first use counts; the tests run in
// order.
#include "runtime/arguments.h"
#include "runtime/constants.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

#include <climits>

namespace {

constexpr swig_const_info end_of_table = {SWIG_END_OF_CONSTANTS, nullptr, 0, 0.0, nullptr, nullptr};

TEST(constants_1, no_table_before_the_first_installation)
{
    EXPECT_EQ(qxsh::constant_count(), -1);
    const held_object word{"FIRST"};
    EXPECT_EQ(qxsh::constant_for(word), word.get());
    interpreter tcl;
    Tcl_Obj *object;
    const word_list words{"cmd", "FIRST"};
    EXPECT_EQ(swig_get_args(tcl, words.count(), words.data(), "O:c ", &object), TCL_OK);
    EXPECT_EQ(object, words[1].get());
}

TEST(constants_2, an_empty_table_is_initialised_too)
{
    interpreter tcl;
    const auto before = tcl.value("info vars");
    swig_install_constants(tcl, &end_of_table);
    EXPECT_EQ(qxsh::constant_count(), 0);
    EXPECT_EQ(tcl.value("info vars"), before);
    const held_object word{"FIRST"};
    EXPECT_EQ(qxsh::constant_for(word), word.get());
}

class constants_3 : public testing::Test
{
public:
    void install(Tcl_Interp *interp)
    {
        const swig_const_info table[] = {
            {4, "POINTER", 99, 1.5, at(0x0001a2b0), types_},
            {4, "NOTHING", 0, 0.0, nullptr, types_},
            {5, "BYTES", 3, 0.0, data_, types_ + 1},
            {5, "TOO_LONG", 1000, 0.0, data_, types_ + 1},
            {5, "NEGATIVE", -1, 0.0, data_, types_ + 1},
            {1, "INTEGER", 7, 0.0, nullptr, nullptr},
            {2, "FLOATING", 0, 2.5, nullptr, nullptr},
            {3, "STRING", 0, 0.0, data_, nullptr},
            {6, "OTHER", 7, 2.5, data_, types_},
            {-1, "BELOW", 7, 2.5, data_, types_},
            {5, "NO_BYTES", 0, 0.0, data_, types_},
            {4, "space::inner", 0, 0.0, at(0x10), types_},
            end_of_table,
            {4, "BEHIND_THE_END", 0, 0.0, at(0x20), types_},
        };
        swig_install_constants(interp, table);
    }

    plain_type flow_{"_p_qx_flow_t"};
    plain_type word_{"_p_word"};
    swig_type_record *types_[2] = {flow_, word_};
    char data_[3] = {'\x01', '\xab', '\x7f'};
};

TEST_F(constants_3, kinds_4_and_5_become_variables)
{
    interpreter tcl;
    tcl.value("namespace eval space {}");
    install(tcl);
    EXPECT_EQ(tcl.variable("POINTER"), "_b0a20100_p_qx_flow_t");
    EXPECT_EQ(tcl.variable("NOTHING"), "NULL");
    EXPECT_EQ(tcl.variable("BYTES"), "_01ab7f_p_word");
    EXPECT_EQ(tcl.variable("NO_BYTES"), "__p_qx_flow_t");
    EXPECT_EQ(tcl.variable("space::inner"), "_10000000_p_qx_flow_t");
    for (const char *name : {"TOO_LONG", "NEGATIVE", "INTEGER", "FLOATING", "STRING", "OTHER",
                             "BELOW", "BEHIND_THE_END"})
        EXPECT_EQ(tcl.variable(name), "(unset)") << name;
    EXPECT_EQ(qxsh::constant_count(), 5);
    EXPECT_EQ(tcl.value("info commands _*"), "");
}

TEST_F(constants_3, variables_are_global)
{
    interpreter tcl;
    tcl.value("namespace eval space {}");
    static constants_3 *test;
    test = this;
    Tcl_CreateObjCommand(
        tcl, "install",
        [](ClientData, Tcl_Interp *interp, int, Tcl_Obj *const *) {
            test->install(interp);
            return TCL_OK;
        },
        nullptr, nullptr);
    EXPECT_EQ(tcl.value("proc local {} { install; info locals }; local"), "");
    EXPECT_EQ(tcl.value("namespace eval other { install; info vars other::* }"), "");
    EXPECT_EQ(tcl.variable("POINTER"), "_b0a20100_p_qx_flow_t");
}

TEST_F(constants_3, installing_again_replaces_the_values)
{
    interpreter tcl;
    tcl.value("namespace eval space {}");
    install(tcl);
    const swig_const_info other[] = {{4, "POINTER", 0, 0.0, at(0x30), types_}, end_of_table};
    swig_install_constants(tcl, other);
    EXPECT_EQ(tcl.variable("POINTER"), "_30000000_p_qx_flow_t");
    EXPECT_EQ(held_object{qxsh::constant_for(held_object{"POINTER"})}.text(),
              "_30000000_p_qx_flow_t");
    EXPECT_EQ(qxsh::constant_count(), 5);
    install(tcl);
    EXPECT_EQ(tcl.variable("POINTER"), "_b0a20100_p_qx_flow_t");
}

// What cannot be set as a variable is still found by name.
TEST_F(constants_3, a_name_that_is_no_variable)
{
    interpreter tcl;
    tcl.value("array set ARRAY {a 1}");
    const swig_const_info table[] = {{4, "ARRAY", 0, 0.0, at(0x40), types_}, end_of_table};
    swig_install_constants(tcl, table);
    EXPECT_EQ(held_object{qxsh::constant_for(held_object{"ARRAY"})}.text(),
              "_40000000_p_qx_flow_t");
    EXPECT_EQ(qxsh::constant_count(), 6);
}

TEST_F(constants_3, upper_case_letters_take_the_value)
{
    interpreter tcl;
    tcl.value("namespace eval space {}");
    install(tcl);
    const word_list words{"cmd", "POINTER", "POINTER", "BYTES", "POINTER", "POINTER", "unknown"};
    void *pointer = nullptr;
    Tcl_Obj *object = nullptr;
    const char *text = nullptr;
    char letter = '?';
    int length = -1;
    Tcl_Obj *same = nullptr;
    EXPECT_EQ(swig_get_args(tcl, words.count(), words.data(), "POS#CSO:c ", &pointer, types_[0],
                            &object, &text, &length, &letter, &text, &same),
              TCL_OK)
        << tcl.result();
    EXPECT_EQ(pointer, at(0x0001a2b0));
    EXPECT_STREQ(Tcl_GetString(object), "_b0a20100_p_qx_flow_t");
    EXPECT_EQ(length, 14);
    EXPECT_EQ(letter, '_');
    EXPECT_STREQ(text, "_b0a20100_p_qx_flow_t");
    EXPECT_EQ(same, words[6].get());
}

TEST_F(constants_3, lower_case_letters_take_the_word)
{
    interpreter tcl;
    tcl.value("namespace eval space {}");
    install(tcl);
    const word_list words{"cmd", "POINTER", "POINTER"};
    Tcl_Obj *object = nullptr;
    const char *text = nullptr;
    EXPECT_EQ(swig_get_args(tcl, words.count(), words.data(), "os:c ", &object, &text), TCL_OK);
    EXPECT_EQ(object, words[1].get());
    EXPECT_STREQ(text, "POINTER");
}

// The value is used as the letter wants it: a handle is not a number.
TEST_F(constants_3, upper_case_numbers)
{
    interpreter tcl;
    tcl.value("namespace eval space {}");
    install(tcl);
    int number = 5;
    const word_list good{"cmd", "12"};
    EXPECT_EQ(swig_get_args(tcl, good.count(), good.data(), "I:c ", &number), TCL_OK);
    EXPECT_EQ(number, 12);
    const word_list bad{"cmd", "POINTER"};
    EXPECT_EQ(swig_get_args(tcl, bad.count(), bad.data(), "I:c ", &number), TCL_ERROR);
    EXPECT_EQ(tcl.result(), "expected integer but got \"_b0a20100_p_qx_flow_t\":c  argument 1");
}

} // namespace
