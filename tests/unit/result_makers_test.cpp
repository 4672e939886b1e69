// The makers of number results: an integer object as long as 2147483646 is not exceeded, then a
// plain string.
#include "runtime/numbers.h"
#include "tests/unit/interpreter.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>

namespace {

void expect_integer(Tcl_Obj *made, const std::string &text)
{
    EXPECT_EQ(made->refCount, 0);
    const held_object result{made};
    EXPECT_EQ(result.type(), "int") << text;
    EXPECT_EQ(result.text(), text);
}

void expect_string(Tcl_Obj *made, const std::string &text)
{
    EXPECT_EQ(made->refCount, 0);
    const held_object result{made};
    EXPECT_EQ(result.type(), "") << text;
    EXPECT_EQ(result.text(), text);
}

TEST(result_makers, int_results_are_integer_objects)
{
    for (const int value : {0, 1, -1, 255, INT_MAX - 1, INT_MAX, INT_MIN})
        expect_integer(swig_from_int(value), std::to_string(value));
}

TEST(result_makers, unsigned_results_up_to_2147483646_are_integer_objects)
{
    for (const unsigned long value :
         {0ul, 1ul, 255ul, 65535ul, 65536ul, 2147483645ul, 2147483646ul})
        expect_integer(swig_from_unsigned_long(value), std::to_string(value));
}

TEST(result_makers, greater_unsigned_results_are_strings)
{
    for (const unsigned long value : {2147483647ul, 2147483648ul, 4294967294ul, 4294967295ul})
        expect_string(swig_from_unsigned_long(value), std::to_string(value));
}

TEST(result_makers, unsigned_long_long_results)
{
    for (const unsigned long long value : {0ull, 1ull, 2147483646ull})
        expect_integer(swig_from_unsigned_long_long(value), std::to_string(value));
    for (const unsigned long long value :
         {2147483647ull, 2147483648ull, 4294967295ull, 4294967296ull, 9223372036854775807ull,
          9223372036854775808ull, 18446744071562067968ull, ULLONG_MAX})
        expect_string(swig_from_unsigned_long_long(value), std::to_string(value));
}

// What a command returns can be given to the next one.
TEST(result_makers, results_read_back)
{
    for (const std::uint32_t value :
         {0u, 255u, 2147483646u, 2147483647u, 2147483648u, UINT32_MAX}) {
        unsigned int back;
        ASSERT_EQ(
            swig_as_val_unsigned_int(nullptr, held_object{swig_from_unsigned_long(value)}, &back),
            SWIG_OK);
        EXPECT_EQ(back, value);
    }
    unsigned long long back;
    ASSERT_EQ(swig_as_val_unsigned_long_long(
                  nullptr, held_object{swig_from_unsigned_long_long(ULLONG_MAX)}, &back),
              SWIG_OK);
    EXPECT_EQ(back, ULLONG_MAX);
}

} // namespace
