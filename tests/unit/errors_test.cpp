// Error categories and messages, and what commands say about their words.
#include "runtime/errors.h"
#include "runtime/numbers.h"
#include "tests/unit/command_call.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

#include <climits>

namespace {

TEST(error_names, by_code)
{
    EXPECT_STREQ(swig_error_type_name(-1), "RuntimeError");
    EXPECT_STREQ(swig_error_type_name(-2), "IOError");
    EXPECT_STREQ(swig_error_type_name(-3), "RuntimeError");
    EXPECT_STREQ(swig_error_type_name(-4), "IndexError");
    EXPECT_STREQ(swig_error_type_name(-5), "TypeError");
    EXPECT_STREQ(swig_error_type_name(-6), "ZeroDivisionError");
    EXPECT_STREQ(swig_error_type_name(-7), "OverflowError");
    EXPECT_STREQ(swig_error_type_name(-8), "SyntaxError");
    EXPECT_STREQ(swig_error_type_name(-9), "ValueError");
    EXPECT_STREQ(swig_error_type_name(-10), "SystemError");
    EXPECT_STREQ(swig_error_type_name(-11), "AttributeError");
    EXPECT_STREQ(swig_error_type_name(-12), "MemoryError");
    for (const int code : {0, 1, -13, -14, 5, 7, 100, -100, INT_MAX, INT_MIN})
        EXPECT_STREQ(swig_error_type_name(code), "RuntimeError");
}

TEST(error_messages, replace_result_and_error_code)
{
    interpreter tcl;
    tcl.error("error earlier {} {EARLIER CODE}");
    swig_set_error_msg(tcl, "OverflowError", "in method 'm', argument 3 of type 'unsigned char'");
    EXPECT_EQ(tcl.result(), "OverflowError in method 'm', argument 3 of type 'unsigned char'");
    EXPECT_EQ(tcl.error_code(), "SWIG OverflowError");
    swig_set_error_msg(tcl, "Two Words", "and\n a {message}");
    EXPECT_EQ(tcl.result(), "Two Words and\n a {message}");
    EXPECT_EQ(tcl.error_code(), "SWIG {Two Words}");
    swig_set_error_msg(tcl, "", "");
    EXPECT_EQ(tcl.result(), " ");
}

class command_errors : public testing::Test
{
protected:
    // A call of "qx_sample" with one word behind its name.
    command_call words(const std::string &word)
    {
        words_ = {"called otherwise", word};
        return {tcl_, words_.count(), words_.data(), "o:qx_sample argument "};
    }

    void expect_message(const std::string &category, const std::string &type)
    {
        EXPECT_EQ(tcl_.result(),
                  category + " in method 'qx_sample', argument 1 of type '" + type + "'");
        EXPECT_EQ(tcl_.error_code(), "SWIG " + category);
    }

    template <class Number> void expect_number(const std::string &word, Number right)
    {
        Number value = 77;
        EXPECT_TRUE(words(word).get(1, value)) << word;
        EXPECT_EQ(value, right);
    }

    template <class Number>
    void expect_refusal(const std::string &word, const std::string &category,
                        const std::string &type)
    {
        Number value = 77;
        EXPECT_FALSE(words(word).get(1, value)) << word;
        EXPECT_EQ(value, 77u);
        expect_message(category, type);
    }

    interpreter tcl_;
    word_list words_{};
};

TEST_F(command_errors, unsigned_char)
{
    expect_number<unsigned char>("255", 255);
    expect_number<unsigned char>("0xff", 255);
    expect_refusal<unsigned char>("256", "OverflowError", "unsigned char");
    expect_refusal<unsigned char>("-1", "OverflowError", "unsigned char");
    expect_refusal<unsigned char>("abc", "TypeError", "unsigned char");
}

TEST_F(command_errors, unsigned_short)
{
    expect_number<unsigned short>("65535", 65535);
    expect_refusal<unsigned short>("70000", "OverflowError", "unsigned short");
    expect_refusal<unsigned short>("", "TypeError", "unsigned short");
}

TEST_F(command_errors, unsigned_int)
{
    expect_number<unsigned int>("4294967295", UINT_MAX);
    expect_refusal<unsigned int>("4294967296", "OverflowError", "unsigned int");
    expect_refusal<unsigned int>("-1", "OverflowError", "unsigned int");
    expect_refusal<unsigned int>("abc", "TypeError", "unsigned int");
}

TEST_F(command_errors, unsigned_long_long)
{
    expect_number<unsigned long long>("-1", 4294967295u);
    expect_number<unsigned long long>("18446744073709551615", ULLONG_MAX);
    expect_refusal<unsigned long long>("-5000000000", "OverflowError", "unsigned long long");
    expect_refusal<unsigned long long>("18446744073709551616", "OverflowError",
                                       "unsigned long long");
    expect_refusal<unsigned long long>("x", "TypeError", "unsigned long long");
}

TEST_F(command_errors, int_has_no_overflow)
{
    expect_number<int>("4294967295", -1);
    expect_number<int>("-2147483648", INT_MIN);
    expect_refusal<int>("4294967296", "TypeError", "int");
    expect_refusal<int>("abc", "TypeError", "int");
}

TEST_F(command_errors, pointers)
{
    plain_type flow{"_p_qx_flow_t"};
    void *pointer = nullptr;
    EXPECT_TRUE(words("_b0a20100_p_qx_flow_t").get(1, pointer, flow));
    EXPECT_EQ(pointer, at(0x0001a2b0));
    EXPECT_FALSE(words("_b0a20100_p_qx_vlan_t").get(1, pointer, flow));
    expect_message("TypeError", "qx_flow_t *");
    EXPECT_TRUE(words("_b0a20100_p_qx_vlan_t").get(1, pointer));
    EXPECT_EQ(pointer, at(0x0001a2b0));
    EXPECT_TRUE(words("NULL").get(1, pointer, flow));
    EXPECT_EQ(pointer, nullptr);
    EXPECT_FALSE(words("0").get(1, pointer));
    expect_message("TypeError", "void *");
}

// The name in messages is the format's, whatever the command was called as.
TEST_F(command_errors, numbers_of_arguments)
{
    const word_list list{"renamed", "1", "2", "x"};
    const command_call call{tcl_, list.count(), list.data(), "ooo:qx_three a b c "};
    EXPECT_TRUE(call.count());
    int value;
    EXPECT_TRUE(call.get(1, value));
    EXPECT_FALSE(call.get(3, value));
    EXPECT_EQ(tcl_.result(), "TypeError in method 'qx_three', argument 3 of type 'int'");
}

TEST_F(command_errors, word_counts)
{
    const word_list two{"c", "1", "2"};
    const command_call call{tcl_, two.count(), two.data(), "o:qx_one a "};
    EXPECT_FALSE(call.count());
    EXPECT_EQ(tcl_.result(), "Wrong # args.:qx_one a  argument 2");
    const word_list none{"c"};
    EXPECT_FALSE((command_call{tcl_, none.count(), none.data(), "o:qx_one a "}.count()));
    EXPECT_EQ(tcl_.result(), "Wrong number of arguments :qx_one a  argument 1");
    EXPECT_TRUE((command_call{tcl_, none.count(), none.data(), ":qx_none "}.count()));
}

} // namespace
