// Lookups in the type registry, by cast list and by table, and the propagation of client data.
#include "runtime/type_registry.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

namespace {

using names = std::vector<std::string>;

TEST(type_check, finds_the_exact_name_only)
{
    plain_type flow{"_p_qx_flow_t"};
    EXPECT_EQ(swig_type_check("_p_qx_flow_t", flow), flow->cast);
    for (const char *name :
         {"", "_p_qx_flow", "_p_qx_flow_tx", "_p_QX_flow_t", "p_qx_flow_t", "qx_flow_t *"})
        EXPECT_EQ(swig_type_check(name, flow), nullptr) << name;
}

TEST(type_check, moves_the_match_to_the_front)
{
    plain_type a{"_p_a"};
    plain_type b{"_p_b"};
    plain_type c{"_p_c"};
    sample_type any{"_p_any"};
    any.accept(a).accept(b).accept(c);
    EXPECT_EQ(swig_type_check("_p_c", any)->type, c.operator->()); // the last
    EXPECT_EQ(sources_of(any), (names{"_p_c", "_p_a", "_p_b"}));
    swig_type_check("_p_a", any); // one in the middle
    EXPECT_EQ(sources_of(any), (names{"_p_a", "_p_c", "_p_b"}));
    swig_type_check("_p_a", any); // the first
    EXPECT_EQ(sources_of(any), (names{"_p_a", "_p_c", "_p_b"}));
    swig_type_check("_p_none", any);
    EXPECT_EQ(sources_of(any), (names{"_p_a", "_p_c", "_p_b"}));
}

TEST(type_query, searches_the_modules_up_to_the_end)
{
    interpreter tcl;
    sample_module a{"_p_a", "_p_e"};
    sample_module b{"_p_b"};
    sample_module c{"_p_c", "_p_d"};
    a.link(tcl);
    b.link(tcl);
    c.link(tcl);
    auto *const start = a.record();
    for (const auto &[name, module] :
         {std::pair{"_p_a", &a}, {"_p_e", &a}, {"_p_b", &b}, {"_p_c", &c}, {"_p_d", &c}})
        EXPECT_EQ(swig_type_query_mangled(start, start, name), module->own(name));
    for (const char *name : {"", "_p_", "_p_0", "_p_aa", "_p_bb", "_p_f", "_p_z", "~"})
        EXPECT_EQ(swig_type_query_mangled(start, start, name), nullptr) << name;
    // The end itself is left out.
    EXPECT_EQ(swig_type_query_mangled(a.record()->next, a.record(), "_p_a"), nullptr);
    EXPECT_EQ(swig_type_query_mangled(a.record()->next, a.record(), "_p_d"), c.own("_p_d"));
    EXPECT_EQ(swig_type_query_mangled(a.record(), a.record()->next, "_p_e"), a.own("_p_e"));
    EXPECT_EQ(swig_type_query_mangled(a.record(), a.record()->next, "_p_b"), nullptr);
}

TEST(type_query, finds_every_name_of_a_sorted_table)
{
    interpreter tcl;
    // In byte order: capitals first, "_" before small letters, a name before a longer one.
    sample_module module{"_p_A", "_p_Z", "_p__", "_p_a", "_p_a_b", "_p_ab", "_p_b", "_p_\xc3\xbc"};
    module.link(tcl);
    for (unsigned i = 0; i < module.record()->size; ++i)
        EXPECT_EQ(
            swig_type_query_mangled(module.record(), module.record(), module.resolved(i)->name),
            module.resolved(i));
}

TEST(type_query, of_an_empty_module)
{
    interpreter tcl;
    sample_module empty{};
    empty.link(tcl);
    EXPECT_EQ(empty.resolved(0), nullptr);
    EXPECT_EQ(swig_type_query_mangled(empty.record(), empty.record(), "_p_a"), nullptr);
}

void *unchanged(void *pointer, int *)
{
    return pointer;
}

TEST(client_data, is_handed_to_sources_without_their_own)
{
    interpreter tcl;
    sample_module module{"_p_base", "_p_converted", "_p_has_own", "_p_plain", "_p_unrelated"};
    module.accept("_p_base", "_p_plain");
    module.accept("_p_base", "_p_converted", unchanged);
    module.accept("_p_base", "_p_has_own");
    int base_class;
    int own_class;
    module.own("_p_base")->client_data = &base_class;
    module.own("_p_has_own")->client_data = &own_class;
    module.link(tcl);
    swig_propagate_client_data(module.record());
    EXPECT_EQ(module.own("_p_base")->client_data, &base_class);
    EXPECT_EQ(module.own("_p_plain")->client_data, &base_class);
    EXPECT_EQ(module.own("_p_converted")->client_data, nullptr);
    EXPECT_EQ(module.own("_p_has_own")->client_data, &own_class);
    EXPECT_EQ(module.own("_p_unrelated")->client_data, nullptr);
}

TEST(client_data, stays_null_where_nobody_has_any)
{
    interpreter tcl;
    sample_module module{"_p_a", "_p_b"};
    module.accept("_p_a", "_p_b");
    module.link(tcl);
    swig_propagate_client_data(module.record());
    EXPECT_EQ(module.own("_p_a")->client_data, nullptr);
    EXPECT_EQ(module.own("_p_b")->client_data, nullptr);
}

// It reaches the records that the table holds, those of other modules too.
TEST(client_data, reaches_types_of_other_modules)
{
    interpreter tcl;
    sample_module first{"_p_base", "_p_derived"};
    sample_module second{"_p_base", "_p_derived"};
    second.accept("_p_base", "_p_derived");
    int base_class;
    first.own("_p_base")->client_data = &base_class;
    first.link(tcl);
    second.link(tcl);
    swig_propagate_client_data(second.record());
    EXPECT_EQ(first.own("_p_derived")->client_data, &base_class);
    EXPECT_EQ(second.own("_p_derived")->client_data, nullptr);
}

} // namespace
