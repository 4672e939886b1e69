// What an object remembers of its handle must never show: a remembered handle behaves as its text
// does. The six rules of handle.cpp, one test or more each, and what else may happen to an object
// in a script.
#include "runtime/handle.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

namespace {

constexpr const char *flow_text = "_b0a20100_p_qx_flow_t";

class handle_memory : public testing::Test
{
protected:
    int convert(const held_object &word, swig_type_record *type, int flags = 0)
    {
        pointer_ = at(0x77777777);
        return swig_convert_ptr(tcl_, word, &pointer_, type, flags);
    }

    interpreter tcl_;
    plain_type flow_{"_p_qx_flow_t"};
    plain_type vlan_{"_p_qx_vlan_t"};
    void *pointer_;
};

TEST_F(handle_memory, rule_1_null_is_plain_text_without_type)
{
    const held_object null{swig_new_pointer_obj(nullptr, flow_)};
    for (swig_type_record *type :
         {flow_.operator->(), vlan_.operator->(), static_cast<swig_type_record *>(nullptr)}) {
        EXPECT_EQ(convert(null, type), 0);
        EXPECT_EQ(pointer_, nullptr);
        EXPECT_EQ(null.type(), "");
        EXPECT_EQ(null.text(), "NULL");
    }
}

TEST_F(handle_memory, rule_2_a_typed_zero_is_a_null_of_its_type_only)
{
    const held_object zero{"_00000000_p_qx_flow_t"};
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(convert(zero, flow_), 0);
        EXPECT_EQ(pointer_, nullptr);
        EXPECT_EQ(convert(zero, vlan_), -1);
        EXPECT_EQ(zero.text(), "_00000000_p_qx_flow_t");
    }
    const held_object copy{Tcl_DuplicateObj(zero)};
    EXPECT_EQ(copy.text(), "_00000000_p_qx_flow_t");
    EXPECT_EQ(convert(copy, vlan_), -1);
}

TEST_F(handle_memory, rule_3_conversion_to_any_type_never_remembers)
{
    for (const char *text : {flow_text, "_b0a201zz_p_qx_flow_t", "_", "NULL"}) {
        const held_object word{text};
        EXPECT_EQ(convert(word, nullptr), 0);
        EXPECT_EQ(word.type(), "") << text;
    }
}

TEST_F(handle_memory, rule_3_conversion_to_any_type_starts_from_null_and_keeps_good_bytes)
{
    const held_object word{"_b0a2zz00_p_qx_flow_t"};
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(convert(word, nullptr), 0);
        EXPECT_EQ(pointer_, at(0xa2b0));
        EXPECT_EQ(convert(word, flow_), -1);
    }
}

TEST_F(handle_memory, rule_3_a_remembered_handle_is_of_any_type_too)
{
    const held_object word{flow_text};
    EXPECT_EQ(convert(word, flow_), 0);
    EXPECT_NE(word.type(), "");
    EXPECT_EQ(convert(word, nullptr), 0);
    EXPECT_EQ(pointer_, at(0x0001a2b0));
}

TEST_F(handle_memory, rule_4_the_source_is_remembered_and_converted_each_time)
{
    plain_type derived{"_p_derived"};
    sample_type base{"_p_base"};
    base.accept(base).accept(derived, sixteen_on);
    const held_object word{"_10000000_p_derived"};
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(convert(word, base), 0);
        EXPECT_EQ(pointer_, at(0x20));
        EXPECT_EQ(convert(word, derived), 0);
        EXPECT_EQ(pointer_, at(0x10));
        EXPECT_EQ(convert(word, nullptr), 0);
        EXPECT_EQ(pointer_, at(0x10));
    }
    EXPECT_EQ(word.text(), "_10000000_p_derived");
}

// A type may even convert its own handles.
TEST_F(handle_memory, rule_4_a_converter_of_the_type_itself_is_called)
{
    sample_type shifted{"_p_shifted"};
    shifted.accept(shifted, sixteen_on);
    const held_object made{swig_new_pointer_obj(at(0x10), shifted)};
    const held_object word{"_10000000_p_shifted"};
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(convert(made, shifted), 0);
        EXPECT_EQ(pointer_, at(0x20));
        EXPECT_EQ(convert(word, shifted), 0);
        EXPECT_EQ(pointer_, at(0x20));
    }
}

TEST_F(handle_memory, rule_4_the_match_moves_to_the_front_each_time)
{
    plain_type one{"_p_one"};
    plain_type two{"_p_two"};
    sample_type any{"_p_any"};
    any.accept(any).accept(one).accept(two);
    const held_object first{"_10000000_p_one"};
    const held_object second{swig_new_pointer_obj(at(0x20), two)};
    const held_object itself{swig_new_pointer_obj(at(0x30), any)};
    using names = std::vector<std::string>;
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(convert(second, any), 0);
        EXPECT_EQ(sources_of(any).front(), "_p_two");
        EXPECT_EQ(convert(first, any), 0);
        EXPECT_EQ(sources_of(any).front(), "_p_one");
        EXPECT_EQ(convert(itself, any), 0);
        EXPECT_EQ(sources_of(any), (names{"_p_any", "_p_one", "_p_two"}));
    }
}

// Types are matched by name, wherever the record that an object remembers came from.
TEST_F(handle_memory, rule_4_types_of_other_modules_match_by_name)
{
    plain_type other{"_p_qx_flow_t"};
    const held_object word{flow_text};
    for (int time = 0; time < 3; ++time) {
        EXPECT_EQ(convert(word, flow_), 0);
        EXPECT_EQ(pointer_, at(0x0001a2b0));
        EXPECT_EQ(convert(word, other), 0);
        EXPECT_EQ(pointer_, at(0x0001a2b0));
    }
}

TEST_F(handle_memory, rule_4_a_cast_taken_away_counts)
{
    sample_type open{"_p_open"};
    open.accept(flow_);
    const held_object word{flow_text};
    EXPECT_EQ(convert(word, open), 0);
    open->cast = nullptr;
    EXPECT_EQ(convert(word, open), -1);
    EXPECT_EQ(convert(word, flow_), 0);
    flow_->cast = nullptr;
    EXPECT_EQ(convert(word, flow_), -1);
}

// The three outcomes of a list that was emptied, or whose only entry got a converter, for a handle
// that was made, one that was read before, and one that is new.
TEST_F(handle_memory, rule_4_the_outcome_is_the_same_whatever_was_remembered)
{
    const held_object made{swig_new_pointer_obj(at(0x0001a2b0), flow_)};
    const held_object read{flow_text};
    EXPECT_EQ(convert(read, flow_), 0);
    flow_->cast->converter = sixteen_on;
    for (const auto &word : {made, read, held_object{flow_text}}) {
        EXPECT_EQ(convert(word, flow_), 0);
        EXPECT_EQ(pointer_, at(0x0001a2c0));
    }
    flow_->cast = nullptr;
    for (const auto &word : {made, read, held_object{flow_text}})
        EXPECT_EQ(convert(word, flow_), -1);
}

TEST_F(handle_memory, rule_5_failures_are_not_remembered)
{
    for (const char *text :
         {flow_text, "_b0a20100_p_qx_vlan_tx", "_b0a2", "_", "", "abc", "NULL "}) {
        const held_object word{text};
        EXPECT_EQ(convert(word, vlan_), -1);
        EXPECT_EQ(word.type(), "") << text;
    }
    const held_object word{flow_text};
    EXPECT_EQ(convert(word, vlan_), -1);
    EXPECT_EQ(convert(word, flow_), 0);
    EXPECT_EQ(convert(word, vlan_), -1);
    EXPECT_EQ(convert(word, flow_), 0);
    EXPECT_EQ(pointer_, at(0x0001a2b0));
}

TEST_F(handle_memory, rule_6_a_scripts_text_is_never_made_again)
{
    const held_object word{flow_text};
    const char *const bytes = Tcl_GetString(word);
    EXPECT_EQ(convert(word, flow_), 0);
    EXPECT_NE(word.type(), "");
    EXPECT_EQ(Tcl_GetString(word), bytes);
    EXPECT_EQ(word.text(), flow_text);
}

TEST_F(handle_memory, a_made_handle_gets_its_text_when_asked)
{
    const held_object handle{swig_new_pointer_obj(at(0x0001a2b0), flow_)};
    EXPECT_EQ(convert(handle, flow_), 0);
    EXPECT_EQ(convert(handle, vlan_), -1);
    EXPECT_EQ(handle.get()->bytes, nullptr);
    EXPECT_EQ(handle.text(), flow_text);
    EXPECT_EQ(handle.get()->length, 21);
    EXPECT_EQ(convert(handle, flow_), 0);
    EXPECT_EQ(pointer_, at(0x0001a2b0));
}

TEST_F(handle_memory, duplicates_remember_and_show_the_same)
{
    const held_object handle{swig_new_pointer_obj(at(0x0001a2b0), flow_)};
    const held_object copy{Tcl_DuplicateObj(handle)};
    EXPECT_EQ(convert(copy, flow_), 0);
    EXPECT_EQ(pointer_, at(0x0001a2b0));
    EXPECT_EQ(copy.text(), flow_text);
    EXPECT_EQ(handle.text(), flow_text);
}

// Scripts look at handles as lists, dictionaries, numbers, commands; each takes the object's memory
// over.
TEST_F(handle_memory, objects_that_tcl_used_otherwise)
{
    const held_object handle{swig_new_pointer_obj(at(0x0001a2b0), flow_)};
    for (const char *script :
         {"llength $h", "dict size [list $h 1]", "catch {expr {$h + 1}}", "catch {$h cget -this}",
          "string length $h", "string index $h 0", "lindex $h 0", "catch {incr h_ $h}",
          "string is integer $h", "catch {uplevel #0 $h}", "array set a [list $h 1]; set a($h)",
          "catch {open $h}", "string range $h 1 8", "binary scan $h a* x", "info exists $h"}) {
        Tcl_SetVar2Ex(tcl_, "h", nullptr, handle, TCL_GLOBAL_ONLY);
        tcl_.value(script);
        EXPECT_EQ(convert(handle, vlan_), -1) << script;
        EXPECT_EQ(convert(handle, flow_), 0) << script;
        EXPECT_EQ(pointer_, at(0x0001a2b0)) << script;
        EXPECT_EQ(handle.text(), flow_text) << script;
    }
}

TEST_F(handle_memory, scripts_see_plain_text)
{
    const held_object handle{swig_new_pointer_obj(at(0x0001a2b0), flow_)};
    Tcl_SetVar2Ex(tcl_, "h", nullptr, handle, TCL_GLOBAL_ONLY);
    EXPECT_EQ(tcl_.value("string equal $h _b0a20100_p_qx_flow_t"), "1");
    EXPECT_EQ(tcl_.value("append h x; set h"), std::string{flow_text} + "x");
    EXPECT_EQ(handle.text(), flow_text);
    const held_object changed{Tcl_GetVar2Ex(tcl_, "h", nullptr, TCL_GLOBAL_ONLY)};
    EXPECT_EQ(convert(changed, flow_), -1);
    EXPECT_EQ(tcl_.value("string replace $h end end"), flow_text);
    EXPECT_EQ(convert(held_object{Tcl_GetObjResult(tcl_)}, flow_), 0);
}

// Text put into an object replaces what it remembered.
TEST_F(handle_memory, objects_that_change)
{
    const held_object word{flow_text};
    EXPECT_EQ(convert(word, flow_), 0);
    Tcl_SetStringObj(word, "_08000200_p_qx_vlan_t", -1);
    EXPECT_EQ(convert(word, flow_), -1);
    EXPECT_EQ(convert(word, vlan_), 0);
    EXPECT_EQ(pointer_, at(0x00020008));
    Tcl_AppendToObj(word, "x", -1);
    EXPECT_EQ(convert(word, vlan_), -1);
    Tcl_SetObjLength(word, 21);
    EXPECT_EQ(convert(word, vlan_), 0);
}

} // namespace
