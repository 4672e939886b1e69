// The object table and the flag of conversions that takes a pointer out of it; converters and their
// new-memory flag.
#include "runtime/object_table.h"
#include "tests/unit/handle_doors.h"

#include <csignal>

namespace {

using namespace qxsh;

TEST(object_table, acquire_and_disown)
{
    EXPECT_FALSE(object_table::owned(at(0x10)));
    EXPECT_FALSE(object_table::disown(at(0x10)));
    object_table::acquire(at(0x10));
    object_table::acquire(at(0x20));
    object_table::acquire(at(0x10)); // twice is once
    EXPECT_TRUE(object_table::owned(at(0x10)));
    EXPECT_TRUE(object_table::disown(at(0x10)));
    EXPECT_FALSE(object_table::owned(at(0x10)));
    EXPECT_FALSE(object_table::disown(at(0x10)));
    EXPECT_TRUE(object_table::owned(at(0x20)));
    EXPECT_TRUE(object_table::disown(at(0x20)));
}

// Keys are whole pointers.
TEST(object_table, pointers_that_differ_in_one_bit)
{
    for (unsigned bit = 0; bit < 8 * sizeof(void *); ++bit) {
        auto *const pointer = reinterpret_cast<void *>(std::uintptr_t{1} << bit);
        EXPECT_FALSE(object_table::owned(pointer));
        object_table::acquire(pointer);
    }
    for (unsigned bit = 0; bit < 8 * sizeof(void *); ++bit)
        EXPECT_TRUE(object_table::disown(reinterpret_cast<void *>(std::uintptr_t{1} << bit)));
}

void *told_of_no_new_memory(void *pointer, int *new_memory)
{
    EXPECT_EQ(*new_memory, 0);
    return sixteen_on(pointer, new_memory);
}

class disowning : public handle_doors
{
protected:
    void SetUp() override { object_table::acquire(at(0x10)); }
    void TearDown() override
    {
        object_table::disown(at(0x10));
        object_table::disown(at(0x20));
    }

    int convert_text(const char *text, swig_type_record *type, int flags)
    {
        return SWIG_Tcl_ConvertPtrFromString(tcl_, text, &pointer_, type, flags);
    }

    plain_type flow_{"_p_qx_flow_t"};
    plain_type vlan_{"_p_qx_vlan_t"};
    void *pointer_;
};

TEST_F(disowning, takes_the_pointer_out_of_the_table)
{
    EXPECT_EQ(convert_text("_10000000_p_qx_flow_t", flow_, swig_disown), 0);
    EXPECT_EQ(pointer_, at(0x10));
    EXPECT_FALSE(object_table::owned(at(0x10)));
    EXPECT_EQ(convert_text("_10000000_p_qx_flow_t", flow_, swig_disown),
              0); // none is left: no matter
}

TEST_F(disowning, needs_bit_0_of_the_flags)
{
    EXPECT_EQ(convert_text("_10000000_p_qx_flow_t", flow_, 0), 0);
    EXPECT_EQ(convert_text("_10000000_p_qx_flow_t", flow_, 2), 0);
    EXPECT_EQ(convert_text("_10000000_p_qx_flow_t", flow_, 4), 0);
    EXPECT_TRUE(object_table::owned(at(0x10)));
    EXPECT_EQ(convert_text("_10000000_p_qx_flow_t", flow_, 3), 0);
    EXPECT_FALSE(object_table::owned(at(0x10)));
}

TEST_F(disowning, works_for_remembered_handles)
{
    const held_object word{"_10000000_p_qx_flow_t"};
    const held_object made{swig_new_pointer_obj(at(0x10), flow_)};
    for (const auto &object : {word, made, word}) {
        object_table::acquire(at(0x10));
        EXPECT_EQ(swig_convert_ptr(tcl_, object, &pointer_, flow_, 0), 0);
        EXPECT_TRUE(object_table::owned(at(0x10)));
        EXPECT_EQ(swig_convert_ptr(tcl_, object, &pointer_, flow_, swig_disown), 0);
        EXPECT_FALSE(object_table::owned(at(0x10)));
    }
}

TEST_F(disowning, works_through_commands)
{
    tcl_.value("proc box args { return _10000000_p_qx_flow_t }");
    EXPECT_EQ(convert_text("box", flow_, swig_disown), 0);
    EXPECT_FALSE(object_table::owned(at(0x10)));
}

// Conversion to any type ends before, and so does a failed one.
TEST_F(disowning, is_for_matching_types_only)
{
    expect_refused("_10000000_p_qx_flow_t", vlan_, swig_disown);
    expect_refused("_10000000", flow_, swig_disown);
    EXPECT_EQ(convert("_10000000_p_qx_flow_t", nullptr, swig_disown), at(0x10));
    EXPECT_EQ(convert("NULL", flow_, swig_disown), nullptr);
    EXPECT_TRUE(object_table::owned(at(0x10)));
}

TEST_F(disowning, takes_out_the_pointer_before_its_conversion)
{
    sample_type base{"_p_base"};
    base.accept(flow_, told_of_no_new_memory);
    object_table::acquire(at(0x20));
    EXPECT_EQ(convert_text("_10000000_p_qx_flow_t", base, swig_disown), 0);
    EXPECT_EQ(pointer_, at(0x20));
    EXPECT_FALSE(object_table::owned(at(0x10)));
    EXPECT_TRUE(object_table::owned(at(0x20)));
}

class converters : public handle_doors
{
protected:
    plain_type derived_{"_p_derived"};
    sample_type base_{"_p_base"};
};

TEST_F(converters, replace_the_pointer)
{
    base_.accept(base_).accept(derived_, told_of_no_new_memory);
    EXPECT_EQ(convert("_10000000_p_derived", base_), at(0x20));
    EXPECT_EQ(convert("_10000000_p_base", base_), at(0x10));
    expect_refused("_10000000_p_base", derived_);
}

// Null stays outside: "NULL" has no type. A typed zero goes through.
TEST_F(converters, are_not_asked_about_NULL)
{
    base_.accept(derived_, told_of_no_new_memory);
    EXPECT_EQ(convert("NULL", base_), nullptr);
    EXPECT_EQ(convert("_00000000_p_derived", base_), at(0x10));
}

void *claims_new_memory(void *pointer, int *new_memory)
{
    *new_memory = 1;
    return pointer;
}

constexpr const char *assertion = "test_wrap.*1088.*SWIG_Tcl_ConvertPtrFromString.*!newmemory";

TEST_F(converters, that_make_new_memory_stop_the_process)
{
    base_.accept(derived_, claims_new_memory);
    void *pointer;
    EXPECT_EXIT(SWIG_Tcl_ConvertPtrFromString(tcl_, "_10000000_p_derived", &pointer, base_, 0),
                testing::KilledBySignal(SIGABRT), assertion);
    const held_object word{swig_new_pointer_obj(at(0x10), derived_)};
    EXPECT_EXIT(swig_convert_ptr(tcl_, word, &pointer, base_, 0), testing::KilledBySignal(SIGABRT),
                assertion);
    EXPECT_EQ(convert("_10000000_p_derived", derived_), at(0x10));
}

} // namespace
