// Words that do not begin with "_": commands that answer " cget -this" stand for the handle that
// they answer.
#include "runtime/handle.h"
#include "tests/unit/handle_doors.h"

namespace {

class handle_words : public handle_doors
{
protected:
    handle_words()
    {
        // A box answers nothing but the one question, and counts how often it is asked.
        tcl_.value("set asked 0; set unknown {}\n"
                   "proc box {method option} {\n"
                   "    if {$method ne {cget} || $option ne {-this}} { error {bad question} }\n"
                   "    incr ::asked\n"
                   "    return $::content\n"
                   "}\n"
                   "proc unknown args { lappend ::unknown $args; return _b0a20100_p_qx_flow_t }\n"
                   "set content _b0a20100_p_qx_flow_t");
        Tcl_ResetResult(tcl_);
    }

    void *answer(const std::string &word, swig_type_record *type)
    {
        tcl_.eval("set result {an earlier result}");
        void *const pointer = convert(word, type);
        EXPECT_EQ(tcl_.result(), "") << word;
        return pointer;
    }

    void refuse(const std::string &word, swig_type_record *type)
    {
        tcl_.eval("set result {an earlier result}");
        expect_refused(word, type);
        EXPECT_EQ(tcl_.variable("unknown"), "") << word;
    }

    // Commands link1 ... linkN, each of which answers the next one's name; the last answers `end`.
    void make_chain(int length, const std::string &end)
    {
        for (int i = 1; i <= length; ++i)
            tcl_.value("proc link" + std::to_string(i) + " args { return " +
                       (i < length ? "link" + std::to_string(i + 1) : end) + " }");
    }

    plain_type flow_{"_p_qx_flow_t"};
    plain_type vlan_{"_p_qx_vlan_t"};
};

TEST_F(handle_words, a_command_stands_for_its_handle)
{
    EXPECT_EQ(answer("box", flow_), at(0x0001a2b0));
    EXPECT_EQ(answer("box", nullptr), at(0x0001a2b0));
    EXPECT_EQ(answer("::box", flow_), at(0x0001a2b0));
    refuse("box", vlan_);
}

// Commands come and go, and may answer otherwise the next time.
TEST_F(handle_words, are_looked_at_afresh_each_time)
{
    const held_object word{"box"};
    void *pointer;
    EXPECT_EQ(swig_convert_ptr(tcl_, word, &pointer, flow_, 0), 0);
    EXPECT_EQ(pointer, at(0x0001a2b0));
    tcl_.value("set content _08000200_p_qx_flow_t");
    EXPECT_EQ(swig_convert_ptr(tcl_, word, &pointer, flow_, 0), 0);
    EXPECT_EQ(pointer, at(0x00020008));
    tcl_.value("rename box {}");
    EXPECT_EQ(swig_convert_ptr(tcl_, word, &pointer, flow_, 0), -1);
    EXPECT_EQ(tcl_.variable("asked"), "2");
    EXPECT_EQ(tcl_.variable("unknown"), "");
}

TEST_F(handle_words, nested_commands)
{
    tcl_.value("proc outer args { return middle }; proc middle args { return box }");
    EXPECT_EQ(answer("outer", flow_), at(0x0001a2b0));
    refuse("outer", vlan_);
}

TEST_F(handle_words, a_command_may_answer_NULL)
{
    tcl_.value("set content NULL");
    EXPECT_EQ(answer("box", flow_), nullptr);
    EXPECT_EQ(answer("box", vlan_), nullptr);
    EXPECT_EQ(answer("box", nullptr), nullptr);
    // Even a command of this name is not asked.
    tcl_.value("proc NULL args { incr ::asked 100; return _b0a20100_p_qx_flow_t }; set asked 0");
    EXPECT_EQ(convert("NULL", flow_), nullptr);
    EXPECT_EQ(tcl_.variable("asked"), "0");
}

TEST_F(handle_words, bad_answers)
{
    for (const char *content : {"{}", "abc", "{a b}", "null", "_", "_b0a2_p_qx_flow_t",
                                "_b0a20100_p_qx_vlan_t", "{ _b0a20100_p_qx_flow_t}"}) {
        tcl_.value(std::string{"set content "} + content);
        refuse("box", flow_);
    }
}

TEST_F(handle_words, the_pointer_is_null_when_the_word_is_no_command)
{
    for (const char *word : {"abc", "", "a b", "null"}) {
        void *pointer = at(5);
        EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(tcl_, word, &pointer, flow_, 0), -1);
        EXPECT_EQ(pointer, nullptr);
    }
}

TEST_F(handle_words, the_unknown_handler_is_not_asked)
{
    for (const char *word : {"abc", "a b", "no_such_command", "null", "5", "-1", "{", "a\"b", "[",
                             "ab c d", "$no_such_variable", "::no::such", "\\", "}"})
        refuse(word, flow_);
}

TEST_F(handle_words, a_command_that_fails)
{
    tcl_.value("proc broken args { error {out of order} {} {OUT OF ORDER} }");
    refuse("broken", flow_);
    refuse("error", flow_);
    refuse("set", flow_); // succeeds, but what it answers is not a handle
    refuse("box extra", flow_);
}

// Within a command, where conversions take place, a return, break or continue is no success either.
TEST_F(handle_words, a_command_that_ends_otherwise)
{
    Tcl_CreateObjCommand(
        tcl_, "convert",
        [](ClientData type, Tcl_Interp *interp, int, Tcl_Obj *const objv[]) {
            void *pointer;
            const int status = swig_convert_ptr(interp, objv[1], &pointer,
                                                static_cast<swig_type_record *>(type), 0);
            EXPECT_STREQ(Tcl_GetStringResult(interp), "");
            Tcl_SetObjResult(interp, Tcl_NewIntObj(status));
            return TCL_OK;
        },
        flow_.operator->(), nullptr);
    for (const char *code : {"return", "break", "continue", "error", "5"}) {
        tcl_.value(std::string{"proc ending args { return -code "} + code +
                   " _b0a20100_p_qx_flow_t }");
        EXPECT_EQ(tcl_.value("proc caller {} { convert ending }; caller"), "-1") << code;
    }
    tcl_.value("proc ending args { return -code ok _b0a20100_p_qx_flow_t }");
    EXPECT_EQ(tcl_.value("caller"), "0");
}

// A pattern finds a command, but is none.
TEST_F(handle_words, a_pattern_is_no_command)
{
    tcl_.value("rename unknown {}");
    refuse("bo*", flow_);
    refuse("b?x", flow_);
    refuse("*", flow_);
}

TEST_F(handle_words, an_interpreter_without_info)
{
    tcl_.value("rename info {}; rename unknown {}");
    expect_refused("box", flow_);
    EXPECT_EQ(convert("_b0a20100_p_qx_flow_t", flow_), at(0x0001a2b0));
    EXPECT_EQ(convert("NULL", flow_), nullptr);
}

// The word becomes part of a script: brackets and dollars work, once for each of the two scripts.
TEST_F(handle_words, brackets_and_variables_are_evaluated)
{
    tcl_.value("set evaluated 0; set name box");
    void *pointer;
    EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(tcl_, "[incr evaluated; set name]", &pointer, flow_, 0),
              0);
    EXPECT_EQ(pointer, at(0x0001a2b0));
    EXPECT_EQ(tcl_.variable("evaluated"), "2");
    EXPECT_EQ(answer("$name", flow_), at(0x0001a2b0));
    EXPECT_EQ(answer("{box}", flow_), at(0x0001a2b0));
    EXPECT_EQ(answer("\"box\"", flow_), at(0x0001a2b0));
}

TEST_F(handle_words, circles_end)
{
    tcl_.value("proc circle args { incr ::asked; return circle }");
    void *pointer;
    EXPECT_EQ(SWIG_Tcl_ConvertPtrFromString(tcl_, "circle", &pointer, flow_, 0), -1);
    EXPECT_EQ(tcl_.variable("asked"), std::to_string(qxsh::max_indirections));
    EXPECT_EQ(tcl_.result(), "");
    refuse("circle", nullptr);
}

TEST_F(handle_words, long_chains_up_to_the_limit)
{
    make_chain(qxsh::max_indirections, "_b0a20100_p_qx_flow_t");
    EXPECT_EQ(answer("link1", flow_), at(0x0001a2b0));
    make_chain(qxsh::max_indirections, "NULL");
    EXPECT_EQ(answer("link1", flow_), nullptr);
    make_chain(qxsh::max_indirections + 1, "_b0a20100_p_qx_flow_t");
    refuse("link1", flow_);
    make_chain(qxsh::max_indirections + 1, "NULL");
    refuse("link1", flow_);
}

// A command may throw away the variable that held the word, or itself, while it is asked.
TEST_F(handle_words, a_command_that_deletes_itself)
{
    tcl_.value("proc once args { rename once {}; unset -nocomplain ::word; return $::content }");
    Tcl_SetVar2Ex(tcl_, "word", nullptr, Tcl_NewStringObj("once", -1), TCL_GLOBAL_ONLY);
    void *pointer;
    const held_object word{Tcl_GetVar2Ex(tcl_, "word", nullptr, TCL_GLOBAL_ONLY)};
    EXPECT_EQ(swig_convert_ptr(tcl_, word, &pointer, flow_, 0), 0);
    EXPECT_EQ(pointer, at(0x0001a2b0));
    EXPECT_EQ(tcl_.value("info exists word"), "0");
    EXPECT_EQ(swig_convert_ptr(tcl_, word, &pointer, flow_, 0), -1);
}

TEST_F(handle_words, words_of_other_languages)
{
    tcl_.value("proc \xc3\xbc"
               "ber args { return $::content }");
    EXPECT_EQ(answer("\xc3\xbc"
                     "ber",
                     flow_),
              at(0x0001a2b0));
}

} // namespace
