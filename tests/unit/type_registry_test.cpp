// The type registry: rings of modules, types resolved by name, their casts. Every test has modules
// and interpreters of its own.
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

} // namespace
