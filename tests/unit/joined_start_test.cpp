// Start-up of the module in an interpreter where another module was before: its types stand for
// ours. The tests run in order, since only the first start resolves types.
#include "helpers/block_memory.h"
#include "runtime/handle.h"
#include "shell/demo.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"
#include "types.h"

#include <algorithm>

namespace {

constexpr const char *variable_name = "swig_runtime_data_type_pointer4";
using names = std::vector<std::string>;

// The other modules last as long as the process, as loaded modules do.
sample_module &other()
{
    static sample_module module{"_p_char", "_p_int", "_p_lamp", "_p_qx_flow_t", "_p_room"};
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
    other().own("_p_char")->client_data = &a_class;
    other().link(tcl);
    const auto published = tcl.variable(variable_name);
    ASSERT_EQ(Demo_Init(tcl), TCL_OK) << tcl.result();

    EXPECT_EQ(tcl.variable(variable_name), published);
    EXPECT_EQ(swig_module.next, other().record());
    EXPECT_EQ(other().record()->next, &swig_module);
    for (const auto index : {type_char, type_int, type_qx_flow_t}) {
        EXPECT_EQ(swig_types[index], other().own(swig_types[index]->name));
        EXPECT_NE(swig_types[index], swig_module.type_initial[index]);
    }
    for (int index = 0; index < type_count; ++index) {
        const bool shared = index == type_char || index == type_int || index == type_qx_flow_t;
        EXPECT_EQ(swig_types[index] == swig_module.type_initial[index], !shared);
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
