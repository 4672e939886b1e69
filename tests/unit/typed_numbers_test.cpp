// Numbers that a script has computed: objects that hold a number and get their text from it. They
// read as their text does, and the number table has each of these texts.
#include "tests/unit/interpreter.h"
#include "tests/unit/number_readings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <map>

namespace {

class typed_numbers : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        for (const auto &row : read_number_table())
            by_word_[row.word] = number_line(row);
    }
    static void TearDownTestSuite() { by_word_.clear(); }

    // The object's text is made only after it was read, and then decides what was right.
    void expect_board_readings(const held_object &number)
    {
        auto readings = converter_readings(tcl_, held_object{Tcl_DuplicateObj(number)});
        readings.word = number.text();
        ASSERT_TRUE(by_word_.contains(readings.word)) << readings.word << " is not in the table";
        EXPECT_EQ(number_line(readings), by_word_[readings.word]);
        EXPECT_EQ(number_line(converter_readings(tcl_, number)), by_word_[readings.word]);
    }

    interpreter tcl_;
    static std::map<std::string, std::string> by_word_;
};

std::map<std::string, std::string> typed_numbers::by_word_;

// clang-format off
constexpr std::int64_t wide_values[] = {
    0, 1, -1, 5, -5, 255, 256, 65535, 65536, 2147483646, 2147483647, 2147483648, -2147483648,
    -2147483649, 4294967294, 4294967295, 4294967296, -4294967294, -4294967295, -4294967296,
    -5000000000, INT64_MAX, INT64_MIN,
};

constexpr const char *expressions[] = {
    "4294967295", "65535*65537", "-65535*65537", "1<<31", "(1<<31)-1", "-(1<<31)", "-(1<<31)-1",
    "1<<32", "-(1<<32)", "-5000000000", "(1<<63)-1", "1<<63", "-(1<<63)", "-(1<<63)-1",
    "(1<<64)-1", "1<<64", "-(1<<64)+1", "-(1<<64)", "0xff", "0b11", "0o17", "5.0", "1e3",
    "double(4294967295)", "round(4294967295.0)", "entier(1e20)", "wide(5)", "1==1", "!1", "255+1",
    "+5", "-5", "2**16", "2**16-1", "2**64", "7/2", "1e3==1000",
};
// clang-format on

TEST_F(typed_numbers, wide_objects)
{
    for (const auto value : wide_values)
        expect_board_readings(held_object{Tcl_NewWideIntObj(value)});
}

TEST_F(typed_numbers, int_and_long_objects)
{
    for (const auto value : wide_values) {
        if (value >= INT32_MIN && value <= INT32_MAX) {
            expect_board_readings(held_object{Tcl_NewIntObj(static_cast<int>(value))});
            expect_board_readings(held_object{Tcl_NewLongObj(static_cast<long>(value))});
        }
    }
    expect_board_readings(held_object{Tcl_NewBooleanObj(1)});
    expect_board_readings(held_object{Tcl_NewBooleanObj(0)});
}

TEST_F(typed_numbers, double_objects)
{
    for (const double value :
         {0.0, 5.0, -1.0, 1000.0, 0.5, 4294967295.0, 1e20, HUGE_VAL, -HUGE_VAL})
        expect_board_readings(held_object{Tcl_NewDoubleObj(value)});
}

TEST_F(typed_numbers, list_and_byte_objects)
{
    Tcl_Obj *element = Tcl_NewStringObj("5", -1);
    expect_board_readings(held_object{Tcl_NewListObj(1, &element)});
    expect_board_readings(held_object{Tcl_NewListObj(0, nullptr)});
    expect_board_readings(
        held_object{Tcl_NewByteArrayObj(reinterpret_cast<const unsigned char *>("255"), 3)});
}

// What `expr` gives, without a text of its own.
TEST_F(typed_numbers, expressions)
{
    for (const char *expression : expressions) {

        Tcl_Obj *value;
        ASSERT_EQ(Tcl_ExprObj(tcl_, held_object{expression}, &value), TCL_OK) << tcl_.result();
        const held_object number{value};
        Tcl_DecrRefCount(value);
        expect_board_readings(number);
    }
}

// `incr` changes an object in place; what a converter remembered of it must not survive.
TEST_F(typed_numbers, objects_that_change)
{
    const held_object number{"0xffffffff"};
    EXPECT_EQ(converter_readings(tcl_, number).readings[as_unsigned_int], "4294967295");
    Tcl_SetIntObj(number, 256);
    EXPECT_EQ(converter_readings(tcl_, number).readings[as_unsigned_char], "OverflowError");
    Tcl_SetStringObj(number, " 255", -1);
    EXPECT_EQ(converter_readings(tcl_, number).readings[as_unsigned_char], "255");
    Tcl_AppendToObj(number, " ", -1);
    EXPECT_EQ(converter_readings(tcl_, number).readings[as_int], "255");
    Tcl_AppendToObj(number, "x", -1);
    EXPECT_EQ(converter_readings(tcl_, number).readings[as_int], "TypeError");
}

} // namespace
