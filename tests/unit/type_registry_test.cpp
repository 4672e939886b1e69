// The type registry: rings of modules, types resolved by name, casts, client data. Every test has
// modules and interpreters of its own.
#include "runtime/handle.h"
#include "runtime/type_registry.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

#include <algorithm>
#include <set>

namespace {

constexpr const char *variable_name = "swig_runtime_data_type_pointer4";
using names = std::vector<std::string>;

std::string published_text(const swig_module_record *module)
{
    char text[2 + 2 * sizeof module] = "_";
    *swig_pack_hex(text + 1, &module, sizeof module) = '\0';
    return text;
}

// The modules of a ring, from `start` on; ends where it began or after ten.
std::vector<swig_module_record *> ring_of(swig_module_record *start)
{
    std::vector<swig_module_record *> modules;
    auto *each = start;
    do {
        modules.push_back(each);
        each = each->next;
    } while (each != start && modules.size() < 10);
    return modules;
}

void expect_ring(std::initializer_list<sample_module *> members)
{
    std::set<swig_module_record *> records;
    for (auto *member : members)
        records.insert(member->record());
    for (auto *member : members) {
        const auto ring = ring_of(member->record());
        EXPECT_EQ(ring.size(), members.size());
        EXPECT_EQ(std::set(ring.begin(), ring.end()), records);
    }
}

TEST(type_registry, a_single_module_publishes_itself)
{
    interpreter tcl;
    sample_module module{"_p_a", "_p_b"};
    module.link(tcl);
    EXPECT_EQ(tcl.variable(variable_name), published_text(module.record()));
    EXPECT_EQ(tcl.variable(variable_name).size(), 1 + 2 * sizeof(void *));
    expect_ring({&module});
    EXPECT_EQ(module.resolved(0), module.own("_p_a"));
    EXPECT_EQ(module.resolved(1), module.own("_p_b"));
    EXPECT_EQ(module.resolved(2), nullptr);
    EXPECT_EQ(sources_of(module.own("_p_a")), names{"_p_a"});
    EXPECT_EQ(sources_of(module.own("_p_b")), names{"_p_b"});
    EXPECT_EQ(swig_published_module(tcl), module.record());
}

TEST(type_registry, linking_again_changes_nothing)
{
    interpreter tcl;
    sample_module module{"_p_a", "_p_b"};
    module.accept("_p_b", "_p_a");
    module.link(tcl);
    const auto *const before = module.own("_p_b")->cast;
    for (int time = 0; time < 3; ++time)
        module.link(tcl);
    expect_ring({&module});
    EXPECT_EQ(tcl.variable(variable_name), published_text(module.record()));
    EXPECT_EQ(module.own("_p_b")->cast, before);
    EXPECT_EQ(sources_of(module.own("_p_b")), (names{"_p_a", "_p_b"}));
}

TEST(type_registry, a_second_module_joins_the_ring_of_the_first)
{
    interpreter tcl;
    sample_module first{"_p_a", "_p_b"};
    sample_module second{"_p_b", "_p_c"};
    first.link(tcl);
    second.link(tcl);
    expect_ring({&first, &second});
    EXPECT_EQ(tcl.variable(variable_name), published_text(first.record()));
    // The type that both have is the first one's; handles of either are handles of both.
    EXPECT_EQ(second.resolved(0), first.own("_p_b"));
    EXPECT_EQ(second.resolved(1), second.own("_p_c"));
    EXPECT_EQ(first.resolved(1), first.own("_p_b"));
    EXPECT_EQ(sources_of(first.own("_p_b")), names{"_p_b"});
    EXPECT_EQ(sources_of(second.own("_p_b")), names{});
}

TEST(type_registry, three_modules)
{
    interpreter tcl;
    sample_module first{"_p_a"};
    sample_module second{"_p_b"};
    sample_module third{"_p_a", "_p_b", "_p_c"};
    first.link(tcl);
    second.link(tcl);
    third.link(tcl);
    first.link(tcl);
    second.link(tcl);
    expect_ring({&first, &second, &third});
    EXPECT_EQ(third.resolved(0), first.own("_p_a"));
    EXPECT_EQ(third.resolved(1), second.own("_p_b"));
    EXPECT_EQ(third.resolved(2), third.own("_p_c"));
}

TEST(type_registry, one_module_in_two_interpreters)
{
    interpreter one;
    interpreter two;
    sample_module module{"_p_a"};
    module.link(one);
    module.link(two);
    expect_ring({&module});
    EXPECT_EQ(one.variable(variable_name), published_text(module.record()));
    EXPECT_EQ(two.variable(variable_name), published_text(module.record()));
}

// Overwriting a `next` pointer instead of exchanging two would cut one of the rings off.
TEST(type_registry, rings_of_two_interpreters_are_joined)
{
    interpreter one;
    interpreter two;
    sample_module a{"_p_a"};
    sample_module b{"_p_b"};
    sample_module c{"_p_c"};
    sample_module d{"_p_d"};
    a.link(one);
    b.link(one);
    c.link(two);
    d.link(two);
    expect_ring({&a, &b});
    expect_ring({&c, &d});
    b.link(two);
    expect_ring({&a, &b, &c, &d});
    // Once joined, everybody is a member everywhere.
    for (auto *module : {&a, &b, &c, &d}) {
        module->link(one);
        module->link(two);
    }
    expect_ring({&a, &b, &c, &d});
    EXPECT_EQ(one.variable(variable_name), published_text(a.record()));
    EXPECT_EQ(two.variable(variable_name), published_text(c.record()));
}

// Types are resolved by the first call only.
TEST(type_registry, joining_later_resolves_nothing_again)
{
    interpreter one;
    interpreter two;
    sample_module a{"_p_x"};
    sample_module b{"_p_x"};
    a.link(one);
    b.link(two);
    a.link(two);
    expect_ring({&a, &b});
    EXPECT_EQ(a.resolved(0), a.own("_p_x"));
    EXPECT_EQ(b.resolved(0), b.own("_p_x"));
    EXPECT_EQ(sources_of(a.own("_p_x")), names{"_p_x"});
}

TEST(type_registry, garbage_in_the_variable_is_replaced)
{
    sample_module other{"_p_x"};
    const auto good = published_text(other.record());
    for (const auto &garbage :
         {std::string{}, std::string{"_"}, std::string{"garbage"}, std::string{"NULL"},
          good.substr(1), good.substr(0, good.size() - 1), good + "0", "x" + good.substr(1),
          " " + good, "_" + std::string(2 * sizeof(void *), 'g'),
          "_" + std::string(2 * sizeof(void *), 'A'),
          "_" + std::string(2 * sizeof(void *) - 1, '0') + "_", good + "_p_x"}) {
        interpreter tcl;
        sample_module module{"_p_a"};
        Tcl_SetVar(tcl, variable_name, garbage.c_str(), TCL_GLOBAL_ONLY);
        EXPECT_EQ(swig_published_module(tcl), nullptr) << garbage;
        module.link(tcl);
        EXPECT_EQ(tcl.variable(variable_name), published_text(module.record())) << garbage;
        expect_ring({&module});
        EXPECT_EQ(module.resolved(0), module.own("_p_a"));
    }
}

TEST(type_registry, the_variable_is_the_global_one)
{
    interpreter tcl;
    static sample_module *module; // for a command without client data
    sample_module first{"_p_a"};
    module = &first;
    Tcl_CreateObjCommand(
        tcl, "link",
        [](ClientData, Tcl_Interp *interp, int, Tcl_Obj *const *) {
            module->link(interp);
            return TCL_OK;
        },
        nullptr, nullptr);
    const std::string name = variable_name;
    EXPECT_EQ(
        tcl.value("namespace eval inner { variable " + name + " garbage; link; set " + name + " }"),
        "garbage");
    EXPECT_EQ(tcl.value("proc local {} { set " + name + " local; link; set " + name + " }; local"),
              "local");
    EXPECT_EQ(tcl.variable(variable_name), published_text(first.record()));
}

TEST(type_registry, static_casts_go_to_the_head)
{
    interpreter tcl;
    sample_module module{"_p_a", "_p_b", "_p_c"};
    module.accept("_p_c", "_p_a");
    module.accept("_p_c", "_p_b");
    module.link(tcl);
    EXPECT_EQ(sources_of(module.own("_p_c")), (names{"_p_b", "_p_a", "_p_c"}));
    EXPECT_EQ(sources_of(module.own("_p_a")), names{"_p_a"});
}

TEST(type_registry, a_source_that_is_there_is_not_added_twice)
{
    interpreter tcl;
    sample_module module{"_p_a", "_p_b"};
    module.accept("_p_b", "_p_a");
    module.accept("_p_b", "_p_a");
    module.accept("_p_b", "_p_b");
    module.link(tcl);
    EXPECT_EQ(sources_of(module.own("_p_b")), (names{"_p_a", "_p_b"}));
}

// The second module's casts go into the list of the record that both share.
TEST(type_registry, casts_of_a_later_module_are_added_to_the_shared_type)
{
    interpreter tcl;
    sample_module first{"_p_base", "_p_one"};
    sample_module second{"_p_base", "_p_one", "_p_two"};
    first.accept("_p_base", "_p_one");
    second.accept("_p_base", "_p_one");
    second.accept("_p_base", "_p_two");
    first.link(tcl);
    const auto *const one = swig_type_check("_p_one", first.own("_p_base"));
    second.link(tcl);
    EXPECT_EQ(sources_of(first.own("_p_base")), (names{"_p_two", "_p_one", "_p_base"}));
    EXPECT_EQ(swig_type_check("_p_one", first.own("_p_base")), one);
    EXPECT_EQ(swig_type_check("_p_two", first.own("_p_base"))->type, second.own("_p_two"));
}

// A source that another module brings is that module's record.
TEST(type_registry, sources_are_resolved_too)
{
    interpreter tcl;
    sample_module first{"_p_one"};
    sample_module second{"_p_base", "_p_one"};
    second.accept("_p_base", "_p_one");
    first.link(tcl);
    second.link(tcl);
    EXPECT_EQ(second.resolved(1), first.own("_p_one"));
    EXPECT_EQ(swig_type_check("_p_one", second.own("_p_base"))->type, first.own("_p_one"));
}

TEST(type_registry, a_module_without_casts)
{
    interpreter tcl;
    sample_module module{"_p_a"};
    module.accept_nothing("_p_a");
    module.link(tcl);
    EXPECT_EQ(module.own("_p_a")->cast, nullptr);
    EXPECT_EQ(swig_type_check("_p_a", module.own("_p_a")), nullptr);
}

TEST(type_registry, a_handle_of_one_module_is_one_of_the_other)
{
    interpreter tcl;
    sample_module first{"_p_a", "_p_b"};
    sample_module second{"_p_b"};
    first.link(tcl);
    second.link(tcl);
    const held_object handle{swig_new_pointer_obj(at(0x10), first.own("_p_b"))};
    void *pointer = nullptr;
    EXPECT_EQ(swig_convert_ptr(tcl, handle, &pointer, second.resolved(0), 0), 0);
    EXPECT_EQ(pointer, at(0x10));
    EXPECT_EQ(swig_convert_ptr(tcl, handle, &pointer, first.resolved(0), 0), -1);
}

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
