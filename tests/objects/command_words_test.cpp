// The module's own commands with types that have classes: what they return becomes object commands,
// and such commands are words that other commands take. Two types are given classes for the time of
// a test.
#include "shell/demo.h"
#include "tests/objects/sample_class.h"

namespace {

constexpr const char *handle_pattern = "_????????_p_*";

class command_words : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(Demo_Init(tcl_), TCL_OK);
        // Handles and numbers are read as text and as whatever Tcl makes of them.
        tcl_.value("proc objects {} { lsort [info commands {" + std::string(handle_pattern) +
                   "}] }\n"
                   "proc unknown args { error {the unknown handler was called} }");
    }
    void TearDown() override
    {
        for (auto *each : attached_)
            each->detach();
    }

    /// Gives a type of the module a class with one method, "words", and one attribute, "-words".
    void attach(sample_class &description, const char *type)
    {
        Tcl_ObjCmdProc *const report = [](ClientData, Tcl_Interp *interp, int objc,
                                          Tcl_Obj *const objv[]) {
            Tcl_SetObjResult(interp, Tcl_NewListObj(objc, objv));
            return TCL_OK;
        };
        auto *const ring = swig_published_module(tcl_);
        auto *const record = swig_type_query_mangled(ring, ring, type);
        ASSERT_NE(record, nullptr);
        ASSERT_EQ(record->client_data, nullptr);
        description.method("words", report).attribute("-words", report, report).attach(record);
        attached_.push_back(&description);
    }
    void attach_flow() { attach(flow_, "_p_qx_flow_t"); }

    /// A status and a result, as "0 {}".
    std::string outcome(const std::string &script)
    {
        return tcl_.value("set status [catch {" + script + "} text]; list $status $text");
    }

    sample_class flow_{"flow"};
    sample_class packet_{"packet"};
    std::vector<sample_class *> attached_;
    interpreter tcl_;
};

TEST_F(command_words, without_classes_nothing_becomes_a_command)
{
    const auto before = tcl_.value("lsort [info commands]");
    tcl_.value("set flow [qx_flow_create]; set cell [qx_uint32_create 1]; set array "
               "[qx_flow_array_create 2]\n"
               "qx_flow_get_ingress_pkt $flow; qx_flow_array_get $array 1");
    EXPECT_EQ(tcl_.value("lsort [info commands]"), before);
    tcl_.value("qx_data_free $flow; qx_data_free $cell; qx_data_free $array");
}

TEST_F(command_words, with_a_class_a_returned_pointer_becomes_one)
{
    attach_flow();
    const auto flow = tcl_.value("set flow [qx_flow_create]");
    EXPECT_EQ(tcl_.value("objects"), flow);
    EXPECT_EQ(tcl_.value("$flow cget -this"), flow);
    EXPECT_EQ(tcl_.value("$flow cget -thisown"), "0"); // commands own nothing
    EXPECT_EQ(tcl_.value("$flow words a"), flow + " " + flow + " a");
    tcl_.value("$flow -delete; qx_flow_set_flow_id $flow 5");
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id $flow"), "5"); // the record has not gone with it
    tcl_.value("qx_data_free $flow");
}

TEST_F(command_words, each_type_for_itself)
{
    attach_flow();
    tcl_.value("set flow [qx_flow_create]; set vlan [qx_vlan_create]; set packet "
               "[qx_flow_get_ingress_pkt $flow]");
    EXPECT_EQ(tcl_.value("objects"), tcl_.value("set flow"));
    attach(packet_, "_p_qx_pkt_info_t");
    tcl_.value("qx_flow_get_ingress_pkt $flow");
    EXPECT_EQ(tcl_.value("objects"), tcl_.value("lsort [list $flow $packet]"));
    tcl_.value("qx_data_free $flow; qx_data_free $vlan");
}

// Array elements are returned pointers as others are; the same element is the same command.
TEST_F(command_words, elements_of_arrays)
{
    attach_flow();
    tcl_.value("set array [qx_flow_array_create 3]");
    for (int time = 0; time < 2; ++time)
        tcl_.value("foreach i {0 1 2} { set flow$i [qx_flow_array_get $array $i] }");
    EXPECT_EQ(tcl_.value("objects"), tcl_.value("lsort [list $flow0 $flow1 $flow2]"));
    EXPECT_EQ(tcl_.value("set array"), tcl_.value("set flow0"));
    tcl_.value("qx_data_free $array");
}

TEST_F(command_words, a_null_result_becomes_one)
{
    attach(packet_, "_p_qx_pkt_info_t");
    EXPECT_EQ(tcl_.value("qx_flow_array_get NULL 0"), "NULL"); // of a type without class
    EXPECT_EQ(tcl_.value("info commands {NULL*}"), "");
    EXPECT_EQ(tcl_.value("qx_flow_get_ingress_pkt NULL"), "NULL");
    EXPECT_EQ(tcl_.value("info commands {NULL*}"), "NULL");
    EXPECT_EQ(tcl_.value("NULL words a"), "NULL NULL a");
    EXPECT_EQ(tcl_.value("qx_flow_get_ingress_pkt NULL"), "NULL");
    EXPECT_EQ(tcl_.value("NULL -delete; info commands {NULL*}"), "");
}

// ------------------------------------------------------------------------------- objects as
// arguments

class object_words : public command_words
{
protected:
    void SetUp() override
    {
        command_words::SetUp();
        attach_flow();
        handle_ = tcl_.value(
            "set handle [qx_flow_create]; qx_flow_set_flow_id $handle 7; rename $handle flow\n"
            "set handle");
    }
    void TearDown() override
    {
        tcl_.value("qx_data_free $handle");
        command_words::TearDown();
    }
    std::string handle_;
};

TEST_F(object_words, stand_for_their_records)
{
    EXPECT_EQ(outcome("qx_flow_get_flow_id flow"), "0 7");
    EXPECT_EQ(outcome("qx_flow_get_flow_id ::flow"), "0 7");
    EXPECT_EQ(outcome("qx_flow_get_flow_id $handle"), "0 7");
    EXPECT_EQ(outcome("qx_flow_get_ingress_pkt flow"), outcome("qx_flow_get_ingress_pkt $handle"));
}

// The object's answer was the interpreter's result for a moment; none of it is left.
TEST_F(object_words, leave_no_result)
{
    EXPECT_EQ(outcome("qx_flow_set_flow_id flow 8"), "0 {}");
    EXPECT_EQ(outcome("set before result; qx_flow_set_flow_id flow 9"), "0 {}");
    EXPECT_EQ(outcome("qx_flow_set_swid_array flow 3 0"), "0 {}");
    EXPECT_EQ(outcome("qx_flow_array_set flow flow 0"), "0 {}");
    EXPECT_EQ(outcome("qx_flow_set_ingress_pkt flow [qx_flow_get_ingress_pkt flow]"), "0 {}");
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id $handle"), "9");
    EXPECT_EQ(outcome("proc set_it {} { qx_flow_set_flow_id flow 10 }; set_it"), "0 {}");
    EXPECT_EQ(outcome("list [qx_flow_set_flow_id flow 11] [qx_flow_set_flow_id flow 12]"),
              "0 {{} {}}");
}

TEST_F(object_words, leave_no_result_of_a_command_that_frees)
{
    tcl_.value("set vlan [qx_vlan_create]; proc box args { return $::vlan }");
    EXPECT_EQ(outcome("qx_data_free box"), "0 {}");
}

TEST_F(object_words, of_another_type_are_refused)
{
    EXPECT_EQ(tcl_.error("qx_vlan_get_priority flow"),
              "TypeError in method 'qx_vlan_get_priority', argument 1 of type 'qx_vlan_t *'");
    EXPECT_EQ(tcl_.error_code(), "SWIG TypeError");
    EXPECT_EQ(
        tcl_.error("qx_flow_set_ingress_pkt flow flow"),
        "TypeError in method 'qx_flow_set_ingress_pkt', argument 2 of type 'qx_pkt_info_t *'");
    EXPECT_EQ(outcome("qx_uint8_array_get flow 0").substr(0, 2), "1 ");
}

TEST_F(object_words, of_any_type_where_any_is_taken)
{
    tcl_.value("set other [qx_flow_create]; rename $other other");
    EXPECT_EQ(outcome("qx_data_free other"), "0 {}");
    EXPECT_EQ(tcl_.value("other cget -this"),
              tcl_.value("set other")); // a command without a record
}

TEST_F(object_words, that_are_gone)
{
    tcl_.value("flow -delete");
    EXPECT_EQ(tcl_.error("qx_flow_get_flow_id flow"),
              "TypeError in method 'qx_flow_get_flow_id', argument 1 of type 'qx_flow_t *'");
    EXPECT_EQ(outcome("qx_flow_get_flow_id $handle"), "0 7");
}

TEST_F(object_words, lead_on_to_each_other)
{
    tcl_.value("proc box args { return flow }; interp alias {} outer {} box");
    EXPECT_EQ(outcome("qx_flow_get_flow_id outer"), "0 7");
    EXPECT_EQ(outcome("qx_flow_set_flow_id box 13"), "0 {}");
    EXPECT_EQ(outcome("qx_flow_get_flow_id flow"), "0 13");
}

// The same word object, asked again after its command has changed its meaning.
TEST_F(object_words, are_looked_at_each_time)
{
    tcl_.value("set word flow; set other [qx_flow_create]; qx_flow_set_flow_id $other 20");
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id $word"), "7");
    tcl_.value("rename flow first; rename $other flow");
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id $word"), "20");
    tcl_.value("qx_data_free flow; flow -delete; rename first flow");
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id $word"), "7");
}

TEST_F(object_words, in_namespaces)
{
    tcl_.value("namespace eval inner {}; rename flow inner::flow");
    EXPECT_EQ(outcome("qx_flow_get_flow_id inner::flow"), "0 7");
    EXPECT_EQ(outcome("namespace eval inner { qx_flow_get_flow_id flow }"), "0 7");
    EXPECT_EQ(outcome("namespace eval inner { qx_flow_set_flow_id flow 14 }"), "0 {}");
    EXPECT_EQ(outcome("qx_flow_get_flow_id flow").substr(0, 2), "1 ");
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id $handle"), "14");
}

// A result made in a namespace is a global command all the same.
TEST_F(object_words, made_in_a_namespace)
{
    tcl_.value("namespace eval inner { variable other [qx_flow_create] }");
    EXPECT_EQ(tcl_.value("namespace which $inner::other"), "::" + tcl_.value("set inner::other"));
    EXPECT_EQ(tcl_.value("info commands inner::*"), "");
    tcl_.value("qx_data_free $inner::other");
}

// Words that are converted one after the other do not disturb each other.
TEST_F(object_words, several_in_one_command)
{
    tcl_.value(
        "set other [qx_flow_array_create 2]; rename $other other; proc one args { return 1 }");
    EXPECT_EQ(outcome("qx_flow_array_set other flow 1"), "0 {}");
    EXPECT_EQ(outcome("qx_flow_get_flow_id [qx_flow_array_get other 1]"), "0 7");
    EXPECT_EQ(tcl_.error("qx_flow_array_set other flow 4294967296"),
              "OverflowError in method 'qx_flow_array_set', argument 3 of type 'unsigned int'");
    tcl_.value("qx_data_free other");
}

// A child interpreter has the module for itself; its words may name objects of its parent.
TEST_F(object_words, of_another_interpreter)
{
    auto *const child = Tcl_CreateSlave(tcl_, "child", 0);
    ASSERT_EQ(Demo_Init(child), TCL_OK);
    EXPECT_EQ(outcome("child eval {qx_flow_get_flow_id flow}").substr(0, 2), "1 ");
    tcl_.value("child alias flow flow");
    EXPECT_EQ(outcome("child eval {qx_flow_get_flow_id flow}"), "0 7");
    EXPECT_EQ(outcome("child eval {qx_flow_set_flow_id flow 15}"), "0 {}");
    EXPECT_EQ(outcome("child eval {qx_flow_create}; llength [child eval {info commands {" +
                      std::string(handle_pattern) + "}}]"),
              "0 1");
    tcl_.value("qx_data_free [child eval {lindex [info commands {" + std::string(handle_pattern) +
               "}] 0}]");
    tcl_.value("interp delete child");
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id flow"), "15");
}

// A method may call the module's commands with its own handle, and accessors may end the object.
TEST_F(object_words, in_methods)
{
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id [lindex [flow words] 1]"), "7");
    EXPECT_EQ(tcl_.value("qx_flow_get_flow_id [lindex [flow cget -words] 1]"), "7");
}

} // namespace
