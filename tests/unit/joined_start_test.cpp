// Start-up of the module in an interpreter where another module was before: its types stand for
// ours. The tests run in order, since only the first start resolves types.
#include "commands/command_table.h"
#include "helpers/block_memory.h"
#include "runtime/handle.h"
#include "shell/demo.h"
#include "strict/strict_command.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"
#include "types.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char *variable_name = "swig_runtime_data_type_pointer4";
using names = std::vector<std::string>;

// The other modules last as long as the process, as loaded modules do.
sample_module &other()
{
    static sample_module module{"_p_char",      "_p_int",           "_p_lamp",
                                "_p_qx_flow_t", "_p_qx_pkt_info_t", "_p_room"};
    return module;
}

sample_module &elsewhere()
{
    static sample_module module{"_p_elsewhere", "_p_qx_vlan_t"};
    return module;
}

int a_class;
int another_class;

TEST(joined_start_1, types_of_an_earlier_module_stand_for_ours)
{
    interpreter tcl;
    other().accept("_p_qx_flow_t", "_p_lamp", sixteen_on);
    other().accept("_p_char", "_p_room");
    other().accept_nothing("_p_int");
    other().accept_nothing("_p_qx_pkt_info_t");
    other().accept("_p_qx_pkt_info_t", "_p_qx_pkt_info_t", sixteen_on);
    other().own("_p_char")->client_data = &a_class;
    other().own("_p_qx_flow_t")->str = "struct flow *|qx_flow_t *";
    other().own("_p_qx_pkt_info_t")->str = nullptr;
    other().link(tcl);
    const auto published = tcl.variable(variable_name);
    ASSERT_EQ(Demo_Init(tcl), TCL_OK) << tcl.result();

    EXPECT_EQ(tcl.variable(variable_name), published);
    EXPECT_EQ(swig_module.next, other().record());
    EXPECT_EQ(other().record()->next, &swig_module);
    const auto shared = {type_char, type_int, type_qx_flow_t, type_qx_pkt_info_t};
    for (const auto index : shared) {
        EXPECT_EQ(swig_types[index], other().own(swig_types[index]->name));
        EXPECT_NE(swig_types[index], swig_module.type_initial[index]);
    }
    for (int index = 0; index < type_count; ++index) {
        const bool own = std::find(shared.begin(), shared.end(), index) == shared.end();
        EXPECT_EQ(swig_types[index] == swig_module.type_initial[index], own);
        EXPECT_LT(std::string{index > 0 ? swig_types[index - 1]->name : ""},
                  swig_types[index]->name);
    }
    EXPECT_EQ(swig_types[type_count], nullptr);
}

TEST(joined_start_2, our_casts_are_added_where_they_are_missing)
{
    // Our cast of int from int, which the other module has not.
    auto *const type_of_int = other().own("_p_int");
    EXPECT_EQ(sources_of(type_of_int), names{"_p_int"});
    EXPECT_EQ(type_of_int->cast->type, type_of_int);
    // Those that it has are not doubled.
    EXPECT_EQ(sources_of(other().own("_p_qx_flow_t")), (names{"_p_lamp", "_p_qx_flow_t"}));
    EXPECT_EQ(sources_of(swig_types[type_qx_vlan_t]), names{"_p_qx_vlan_t"});
    // Our own records of those types are left as they were built.
    EXPECT_EQ(sources_of(swig_module.type_initial[type_qx_flow_t]), names{});
}

TEST(joined_start_2, client_data_is_handed_on_once)
{
    EXPECT_EQ(other().own("_p_room")->client_data, &a_class);
    EXPECT_EQ(swig_types[type_char]->client_data, &a_class);
    other().own("_p_room")->client_data = nullptr;
    swig_types[type_char]->client_data = &another_class;
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    EXPECT_EQ(other().own("_p_room")->client_data, nullptr);
    swig_types[type_char]->client_data = nullptr;
}

TEST(joined_start_3, commands_take_what_the_shared_type_takes)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    void *const lamp = qxsh::allocate_block(16 + 212);
    const held_object handle{swig_new_pointer_obj(lamp, other().own("_p_lamp"))};
    Tcl_SetVar2Ex(tcl, "lamp", nullptr, handle, TCL_GLOBAL_ONLY);
    for (int time = 0; time < 2; ++time) {
        tcl.value("qx_flow_set_flow_id $lamp 4660");
        EXPECT_EQ(static_cast<unsigned char *>(lamp)[16], 0x34);
        EXPECT_EQ(static_cast<unsigned char *>(lamp)[17], 0x12);
        EXPECT_EQ(tcl.value("qx_flow_get_flow_id $lamp"), "4660");
        EXPECT_EQ(sources_of(swig_types[type_qx_flow_t]), (names{"_p_lamp", "_p_qx_flow_t"}));
        const auto flow = tcl.value("qx_flow_create");
        EXPECT_EQ(tcl.value("qx_flow_get_flow_id " + flow), "0");
        EXPECT_EQ(sources_of(swig_types[type_qx_flow_t]), (names{"_p_qx_flow_t", "_p_lamp"}));
        tcl.value("qx_data_free " + flow);
    }
    EXPECT_EQ(tcl.error("qx_vlan_get_vlan_id $lamp"),
              "TypeError in method 'qx_vlan_get_vlan_id', argument 1 of type 'qx_vlan_t *'");
    tcl.value("qx_data_free $lamp");
}

// The ways in which a script can have a handle: as it was made, as a text that was read before, and
// as a text that is new.
std::vector<held_object> forms_of(interpreter &tcl, const held_object &made)
{
    const held_object read{made.text()};
    Tcl_SetVar2Ex(tcl, "read", nullptr, read, TCL_GLOBAL_ONLY);
    tcl.eval("catch {qx_flow_get_flow_id $read}; catch {qx_pkt_info_get_phy_port $read}");
    EXPECT_NE(read.type(), "");
    return {made, read, held_object{made.text()}};
}

TEST(joined_start_3, the_match_is_the_first_of_the_list_whatever_was_remembered)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    void *const lamp = qxsh::allocate_block(16 + 212);
    Tcl_SetVar2Ex(tcl, "lamp", nullptr,
                  held_object{swig_new_pointer_obj(lamp, other().own("_p_lamp"))}, TCL_GLOBAL_ONLY);
    tcl.value("set id 0; set array [qx_flow_array_create 1]; qx_flow_create");
    for (const auto &form : forms_of(tcl, held_object{Tcl_GetObjResult(tcl)})) {
        Tcl_SetVar2Ex(tcl, "flow", nullptr, form, TCL_GLOBAL_ONLY);
        // As the first word, as another one, before a bad word, and in a call of the SDK.
        for (const char *script :
             {"qx_flow_get_flow_id $flow", "qx_flow_array_set $array $flow $id",
              "catch {qx_flow_set_flow_id $flow bad}", "qx_flow_add 0 $flow"}) {
            tcl.value("qx_flow_get_flow_id $lamp");
            EXPECT_EQ(sources_of(swig_types[type_qx_flow_t]), (names{"_p_lamp", "_p_qx_flow_t"}));
            tcl.value(script);
            EXPECT_EQ(sources_of(swig_types[type_qx_flow_t]), (names{"_p_qx_flow_t", "_p_lamp"}))
                << script;
        }
    }
    // Each word of a command is converted in turn, with the converter of its own source.
    tcl.value("qx_flow_set_flow_id $lamp 4660; qx_flow_array_set $array $lamp 0");
    EXPECT_EQ(tcl.value("qx_flow_get_flow_id $array"), "4660");
    tcl.value("qx_flow_set_flow_id $flow 22136; qx_flow_array_set $lamp $flow 0");
    EXPECT_EQ(tcl.value("qx_flow_get_flow_id $lamp"), "22136");
    EXPECT_EQ(static_cast<unsigned char *>(lamp)[16], 0x78);
    tcl.value("qx_data_free $lamp; qx_data_free $array; qx_data_free $flow");
}

TEST(joined_start_3, a_converter_of_the_type_itself_is_applied_whatever_was_remembered)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    auto *const bytes = static_cast<unsigned char *>(qxsh::allocate_block(16 + 88));
    unsigned port = 0x80;
    const held_object made{swig_new_pointer_obj(bytes, swig_types[type_qx_pkt_info_t])};
    for (const auto &form : forms_of(tcl, made)) {
        Tcl_SetVar2Ex(tcl, "packet", nullptr, form, TCL_GLOBAL_ONLY);
        tcl.value("qx_pkt_info_set_phy_port $packet " + std::to_string(++port));
        EXPECT_EQ(bytes[16], port);
        EXPECT_EQ(tcl.value("qx_pkt_info_get_phy_port $packet"), std::to_string(port));
    }
    EXPECT_EQ(std::count(bytes, bytes + 16, 0), 16);
    qxsh::free_block(bytes);
}

// Other modules share the records, and may change a list while we run.
TEST(joined_start_3, a_list_that_changes_counts_whatever_was_remembered)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    tcl.value("set array [qx_flow_array_create 2]; set id 0");
    const held_object made{Tcl_GetVar2Ex(tcl, "array", nullptr, TCL_GLOBAL_ONLY)};
    auto *const type = swig_types[type_qx_flow_t];
    const auto refused = [](const char *command, int number) {
        return std::string{"TypeError in method '"} + command + "', argument " +
               std::to_string(number) + " of type 'qx_flow_t *'";
    };
    for (const auto &form : forms_of(tcl, made)) {
        Tcl_SetVar2Ex(tcl, "flow", nullptr, form, TCL_GLOBAL_ONLY);
        tcl.value("qx_flow_get_flow_id $array");
        auto *const casts = std::exchange(type->cast, nullptr);
        for (int time = 0; time < 2; ++time) {
            EXPECT_EQ(tcl.error("qx_flow_get_flow_id $flow"), refused("qx_flow_get_flow_id", 1));
            EXPECT_EQ(tcl.error("qx_flow_add 0 $flow"), refused("qx_flow_add", 2));
        }
        type->cast = casts;
        EXPECT_EQ(tcl.value("qx_flow_get_flow_id $flow"), "0");

        casts->converter = [](void *pointer, int *) -> void * {
            return static_cast<char *>(pointer) + 212;
        };
        for (int time = 0; time < 2; ++time) {
            tcl.value("qx_flow_set_flow_id $flow [incr id]");
            EXPECT_EQ(tcl.value("qx_flow_get_flow_id $flow"), tcl.variable("id"));
        }
        casts->converter = nullptr;
        EXPECT_EQ(tcl.value("qx_flow_get_flow_id $flow"), "0");
        EXPECT_EQ(tcl.value("qx_flow_get_flow_id [qx_flow_array_get $flow 1]"), tcl.variable("id"));
    }
    tcl.value("qx_data_free $array");
}

// The words of messages are our own, whatever the earlier module calls its types.
TEST(joined_start_3, messages_are_literals)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    const auto of_type = [](const std::string &command, const std::string &type) {
        return "TypeError in method '" + command + "', argument 1 of type '" + type + "'";
    };
    EXPECT_EQ(tcl.error("qx_flow_get_flow_id bad"), of_type("qx_flow_get_flow_id", "qx_flow_t *"));
    EXPECT_EQ(tcl.error("qx_pkt_info_dump bad"), of_type("qx_pkt_info_dump", "qx_pkt_info_t *"));
    EXPECT_EQ(tcl.error("qx_flow_dump [qx_int32_create 0]"),
              of_type("qx_flow_dump", "qx_flow_t *"));
}

TEST(joined_start_3, messages_of_strict_memory_are_literals)
{
    interpreter tcl;
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    for (const auto *each = swig_commands; each->name != nullptr; ++each)
        Tcl_CreateObjCommand(tcl, each->name, qxsh::strict_command,
                             const_cast<swig_command_info *>(each), nullptr);
    EXPECT_EQ(tcl.error("qx_flow_get_flow_id bad"),
              "TypeError in method 'qx_flow_get_flow_id', argument 1 of type 'qx_flow_t *'");
    EXPECT_EQ(tcl.error("qx_pkt_info_dump bad"),
              "TypeError in method 'qx_pkt_info_dump', argument 1 of type 'qx_pkt_info_t *'");
    const auto vlan = tcl.value("set vlan [qx_vlan_create]");
    EXPECT_NE(tcl.error("qx_flow_get_flow_id _[string range $vlan 1 8]_p_qx_flow_t")
                  .find("argument 1: there is no qx_flow_t * at byte 0 of block"),
              std::string::npos)
        << tcl.result();
    tcl.value("qx_data_free $vlan");
}

// The two rings become one; what was resolved stays.
TEST(joined_start_4, an_interpreter_with_another_ring)
{
    interpreter tcl;
    elsewhere().link(tcl);
    const auto published = tcl.variable(variable_name);
    ASSERT_EQ(Demo_Init(tcl), TCL_OK);
    EXPECT_EQ(tcl.variable(variable_name), published);
    std::vector<swig_module_record *> ring = {&swig_module};
    while (ring.back()->next != &swig_module && ring.size() < 10)
        ring.push_back(ring.back()->next);
    ASSERT_EQ(ring.size(), 3u);
    EXPECT_NE(std::find(ring.begin(), ring.end(), other().record()), ring.end());
    EXPECT_NE(std::find(ring.begin(), ring.end(), elsewhere().record()), ring.end());
    EXPECT_EQ(swig_types[type_qx_vlan_t], swig_module.type_initial[type_qx_vlan_t]);
    EXPECT_EQ(sources_of(elsewhere().own("_p_qx_vlan_t")), names{"_p_qx_vlan_t"});
    // A handle is a handle, whoever made it.
    const auto vlan = tcl.value("qx_vlan_create");
    void *pointer;
    EXPECT_EQ(
        swig_convert_ptr(tcl, held_object{vlan}, &pointer, elsewhere().own("_p_qx_vlan_t"), 0), 0);
    const held_object handle{swig_new_pointer_obj(pointer, elsewhere().own("_p_qx_vlan_t"))};
    Tcl_SetVar2Ex(tcl, "vlan", nullptr, handle, TCL_GLOBAL_ONLY);
    EXPECT_EQ(tcl.value("qx_vlan_set_vlan_id $vlan 99; qx_vlan_get_vlan_id " + vlan), "99");
    tcl.value("qx_data_free $vlan");
}

} // namespace
