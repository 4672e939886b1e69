// The format language of commands: every letter, optional words, surplus words, and the messages.
#include "runtime/arguments.h"
#include "runtime/handle.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/sample_module.h"

namespace {

class arguments : public testing::Test
{
protected:
    template <class... Targets>
    int parse(const word_list &words, const char *format, Targets... targets)
    {
        Tcl_ResetResult(tcl_);
        return swig_get_args(tcl_, words.count(), words.data(), format, targets...);
    }

    template <class... Targets>
    void expect_error(const word_list &words, const std::string &message, const char *format,
                      Targets... targets)
    {
        EXPECT_EQ(parse(words, format, targets...), TCL_ERROR) << format;
        EXPECT_EQ(tcl_.result(), message);
    }

    interpreter tcl_;
    void *const none_ = nullptr;
};

TEST_F(arguments, none)
{
    EXPECT_EQ(parse({"cmd"}, ":cmd "), TCL_OK);
    EXPECT_EQ(parse({"cmd"}, ""), TCL_OK);
    EXPECT_EQ(tcl_.result(), "");
}

TEST_F(arguments, word_count_messages)
{
    expect_error({"cmd"}, "Wrong number of arguments :qx_int32_create data  argument 1",
                 "o:qx_int32_create data ", none_);
    expect_error({"cmd", "1", "2"}, "Wrong # args.:qx_int32_create data  argument 2",
                 "o:qx_int32_create data ", none_);
    expect_error({"cmd", "1"}, "Wrong # args.:qx_flow_create  argument 1", ":qx_flow_create ");
    expect_error({"cmd", "1"},
                 "Wrong number of arguments :qx_flow_add device_id p_flow  argument 2",
                 "oo:qx_flow_add device_id p_flow ", none_, none_);
    expect_error({"cmd", "1", "2", "3", "4"},
                 "Wrong # args.:qx_flow_add device_id p_flow  argument 3",
                 "oo:qx_flow_add device_id p_flow ", none_, none_);
}

TEST_F(arguments, word_count_errors_leave_no_error_code)
{
    expect_error({"cmd"}, "Wrong number of arguments :c a  argument 1", "o:c a ", none_);
    EXPECT_EQ(tcl_.error_code(), "NONE");
    expect_error({"cmd", "1"}, "Wrong # args.:c  argument 1", ":c ");
    EXPECT_EQ(tcl_.error_code(), "NONE");
}

// The message replaces an earlier result.
TEST_F(arguments, word_count_messages_stand_alone)
{
    const word_list words{"cmd"};
    tcl_.eval("set result earlier");
    EXPECT_EQ(swig_get_args(tcl_, words.count(), words.data(), "o:c a ", nullptr), TCL_ERROR);
    EXPECT_EQ(tcl_.result(), "Wrong number of arguments :c a  argument 1");
}

TEST_F(arguments, tails_of_messages)
{
    expect_error({"cmd"}, "Wrong number of arguments ;c a  argument 1", "o;c a ", none_);
    expect_error({"cmd"}, "Wrong number of arguments  argument 1", "o", none_);
    expect_error({"cmd", "1"}, "Wrong # args. argument 1", "");
    expect_error({"cmd"}, "Wrong number of arguments :b a  argument 1", "o;x:b a ", none_);
    expect_error({"cmd"}, "Wrong number of arguments :x;b a  argument 1", "o:x;b a ", none_);
    expect_error({"cmd", "1"}, "Wrong # args.: argument 1", ":");
}

TEST_F(arguments, numbers_of_arguments_have_as_many_digits_as_they_need)
{
    word_list words{"cmd"};
    for (int i = 1; i < 12; ++i)
        words.add(held_object{"x"});
    EXPECT_EQ(qxsh::check_word_count(tcl_, words.count(), words.data(), "oooooooooooo:c "),
              TCL_ERROR);
    EXPECT_EQ(tcl_.result(), "Wrong number of arguments :c  argument 12");
    EXPECT_EQ(qxsh::check_word_count(tcl_, words.count(), words.data(), "ooooooooooo:c "), TCL_OK);
}

TEST_F(arguments, optional_words)
{
    int one = -1;
    int two = -1;
    int three = -1;
    const char *const format = "i|ii:c a b d ";
    expect_error({"cmd"}, "Wrong number of arguments :c a b d  argument 1", format, &one, &two,
                 &three);
    EXPECT_EQ(parse({"cmd", "1"}, format, &one, &two, &three), TCL_OK);
    EXPECT_EQ(one, 1);
    EXPECT_EQ(two, -1);
    EXPECT_EQ(parse({"cmd", "1", "2"}, format, &one, &two, &three), TCL_OK);
    EXPECT_EQ(two, 2);
    EXPECT_EQ(three, -1);
    EXPECT_EQ(parse({"cmd", "1", "2", "3"}, format, &one, &two, &three), TCL_OK);
    EXPECT_EQ(three, 3);
    expect_error({"cmd", "1", "2", "3", "4"}, "Wrong # args.:c a b d  argument 4", format, &one,
                 &two, &three);
    EXPECT_EQ(parse({"cmd"}, "|i:c ", &one), TCL_OK);
    EXPECT_EQ(parse({"cmd"}, "|:c "), TCL_OK);
    EXPECT_EQ(parse({"cmd"}, "||i:c ", &one), TCL_OK);
}

TEST_F(arguments, surplus_words)
{
    int one = -1;
    EXPECT_EQ(parse({"cmd", "1", "2", "3"}, "i;c a ", &one), TCL_OK);
    EXPECT_EQ(one, 1);
    EXPECT_EQ(parse({"cmd", "1", "2"}, ";c "), TCL_OK);
    expect_error({"cmd"}, "Wrong number of arguments ;c a  argument 1", "i;c a ", &one);
    EXPECT_EQ(parse({"cmd"}, "|i;c a ", &one), TCL_OK);
}

// A bar behind the colon, or a semicolon, is part of the name.
TEST_F(arguments, letters_end_at_the_first_colon_or_semicolon)
{
    expect_error({"cmd", "1"}, "Wrong # args.:c|;oo argument 1", ":c|;oo");
    EXPECT_EQ(parse({"cmd", "1", "2"}, ";c:oooo"), TCL_OK);
}

TEST_F(arguments, integers)
{
    int i = 0;
    long l = 0;
    short h = 0;
    unsigned char b = 0;
    EXPECT_EQ(parse({"cmd", "-7", "-8", "-9", "10"}, "ilhb:c ", &i, &l, &h, &b), TCL_OK);
    EXPECT_EQ(i, -7);
    EXPECT_EQ(l, -8);
    EXPECT_EQ(h, -9);
    EXPECT_EQ(b, 10);
    EXPECT_EQ(
        parse({"cmd", "0x7fffffff", "0x80000000", "0x12345", "0x1ff"}, "ilhb:c ", &i, &l, &h, &b),
        TCL_OK);
    EXPECT_EQ(i, 2147483647);
    EXPECT_EQ(l, -2147483647 - 1); // the board's long has 32 bits
    EXPECT_EQ(h, 0x2345);
    EXPECT_EQ(b, 0xff);
    EXPECT_EQ(
        parse({"cmd", "4294967295", "-4294967295", "0x8000", "-1"}, "ilhb:c ", &i, &l, &h, &b),
        TCL_OK);
    EXPECT_EQ(i, -1);
    EXPECT_EQ(l, 1);
    EXPECT_EQ(h, -32768);
    EXPECT_EQ(b, 255);
}

// A store is as wide as the letter's type and no wider.
TEST_F(arguments, neighbours_of_targets_are_kept)
{
    struct
    {
        unsigned char before, value, after;
    } bytes{1, 2, 3};
    struct
    {
        short before, value, after;
    } shorts{1, 2, 3};
    struct
    {
        float before, value, after;
    } floats{1, 2, 3};
    struct
    {
        char before, value, after;
    } chars{'1', '2', '3'};
    EXPECT_EQ(parse({"cmd", "-1", "-1", "0.5", "xyz"}, "bhfc:c ", &bytes.value, &shorts.value,
                    &floats.value, &chars.value),
              TCL_OK);
    EXPECT_EQ(bytes.before + bytes.after, 4);
    EXPECT_EQ(bytes.value, 255);
    EXPECT_EQ(shorts.before + shorts.after, 4);
    EXPECT_EQ(shorts.value, -1);
    EXPECT_EQ(floats.before + floats.after, 4);
    EXPECT_EQ(floats.value, 0.5f);
    EXPECT_EQ(std::string({chars.before, chars.value, chars.after}), "1x3");
}

TEST_F(arguments, bad_integers_keep_tcls_message)
{
    int i = 5;
    for (const char *format :
         {"i:c a ", "l:c a ", "h:c a ", "b:c a ", "I:c a ", "L:c a ", "H:c a ", "B:c a "}) {
        expect_error({"cmd", "abc"}, "expected integer but got \"abc\":c a  argument 1", format,
                     &i);
        expect_error({"cmd", "4294967296"}, "integer value too large to represent:c a  argument 1",
                     format, &i);
        expect_error({"cmd", "1.5"}, "expected integer but got \"1.5\":c a  argument 1", format,
                     &i);
    }
    EXPECT_EQ(i, 5);
    expect_error({"cmd", "1", ""}, "expected integer but got \"\":c  argument 2", "oi:c ", none_,
                 &i);
}

TEST_F(arguments, too_large_integers_set_tcls_error_code)
{
    int i;
    for (const char *word :
         {"4294967296", "-5000000000", "18446744073709551615", "99999999999999999999"}) {
        expect_error({"cmd", word}, "integer value too large to represent:c  argument 1", "i:c ",
                     &i);
        EXPECT_EQ(tcl_.error_code(), "ARITH IOVERFLOW {integer value too large to represent}");
    }
}

TEST_F(arguments, floating)
{
    float f = 0;
    double d = 0;
    EXPECT_EQ(parse({"cmd", "1.5", "-2.25e10"}, "fd:c ", &f, &d), TCL_OK);
    EXPECT_EQ(f, 1.5f);
    EXPECT_EQ(d, -2.25e10);
    EXPECT_EQ(parse({"cmd", "7", "0x10"}, "FD:c ", &f, &d), TCL_OK);
    EXPECT_EQ(f, 7.0f);
    EXPECT_EQ(d, 16.0);
    expect_error({"cmd", "abc"}, "expected floating-point number but got \"abc\":c  argument 1",
                 "f:c ", &f);
    expect_error({"cmd", "1", "x"}, "expected floating-point number but got \"x\":c  argument 2",
                 "fd:c ", &f, &d);
    EXPECT_EQ(d, 16.0);
}

TEST_F(arguments, texts)
{
    const char *text = nullptr;
    const char *other = nullptr;
    int length = -1;
    int number = -1;
    char first = '?';
    const word_list words{"cmd", "hello", "42", "world", "zebra"};
    EXPECT_EQ(parse(words, "sis#c:c ", &text, &number, &other, &length, &first), TCL_OK);
    EXPECT_STREQ(text, "hello");
    EXPECT_EQ(number, 42);
    EXPECT_STREQ(other, "world");
    EXPECT_EQ(length, 5);
    EXPECT_EQ(first, 'z');
    EXPECT_EQ(text, Tcl_GetString(words[1]));
    EXPECT_EQ(parse({"cmd", "", ""}, "s#c:c ", &text, &length, &first), TCL_OK);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(first, '\0');
    EXPECT_EQ(parse({"cmd", "abc", "def"}, "S#C:c ", &text, &length, &first), TCL_OK);
    EXPECT_EQ(length, 3);
    EXPECT_EQ(first, 'd');
}

TEST_F(arguments, objects)
{
    Tcl_Obj *one = nullptr;
    Tcl_Obj *two = nullptr;
    const word_list words{"cmd", "a", "b"};
    EXPECT_EQ(parse(words, "oO:c ", &one, &two), TCL_OK);
    EXPECT_EQ(one, words[1].get());
    EXPECT_EQ(two, words[2].get());
}

TEST_F(arguments, pointers)
{
    plain_type flow{"_p_qx_flow_t"};
    plain_type vlan{"_p_qx_vlan_t"};
    void *one = nullptr;
    void *two = at(1);
    int after = 0;
    EXPECT_EQ(parse({"cmd", "_b0a20100_p_qx_flow_t", "NULL", "9"}, "pPi:c ", &one,
                    flow.operator->(), &two, vlan.operator->(), &after),
              TCL_OK);
    EXPECT_EQ(one, at(0x0001a2b0));
    EXPECT_EQ(two, nullptr);
    EXPECT_EQ(after, 9);
    EXPECT_EQ(parse({"cmd", "_b0a2zz"}, "p:c ", &one, none_), TCL_OK);
    EXPECT_EQ(one, at(0xa2b0));
    expect_error({"cmd", "_b0a20100_p_qx_vlan_t"}, ":c  argument 1", "p:c ", &one,
                 flow.operator->());
    expect_error({"cmd", "1", "nothing"}, ":c  argument 2", "op:c ", none_, &one,
                 flow.operator->());
}

TEST_F(arguments, other_letters_take_a_word_and_a_target)
{
    int untouched = 5;
    int number = 0;
    EXPECT_EQ(parse({"cmd", "x", "7"}, "zi:c ", &untouched, &number), TCL_OK);
    EXPECT_EQ(untouched, 5);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(parse({"cmd", "x", "8"}, "#i:c ", &untouched, &number), TCL_OK);
    EXPECT_EQ(untouched, 5);
    EXPECT_EQ(number, 8);
    expect_error({"cmd", "x"}, "Wrong number of arguments :c  argument 2", "z?:c ", none_, none_);
}

// Nothing is stored, the word is not looked at, and nothing further is taken for the letter.
TEST_F(arguments, null_targets)
{
    int length = -1;
    int last = 0;
    for (const char *letter : {"i", "l", "h", "b", "f", "d", "s", "c", "o", "I", "S", "z"}) {
        const auto format = std::string{letter} + "i:c ";
        EXPECT_EQ(parse({"cmd", "no number", "3"}, format.c_str(), none_, &last), TCL_OK) << letter;
        EXPECT_EQ(last, 3);
        last = 0;
    }
    for (const char *format : {"pi:c ", "Pi:c "}) {
        EXPECT_EQ(parse({"cmd", "no handle", "4"}, format, none_, &last), TCL_OK);
        EXPECT_EQ(last, 4);
        last = 0;
    }
    // A length belongs to a text that is stored; without one "#" is a letter like any other.
    EXPECT_EQ(parse({"cmd", "text", "x", "5"}, "s#i:c ", none_, &length, &last), TCL_OK);
    EXPECT_EQ(last, 5);
    EXPECT_EQ(length, -1);
    EXPECT_EQ(parse({"cmd", "text", "x", "6"}, "S#i:c ", none_, none_, &last), TCL_OK);
    EXPECT_EQ(last, 6);
    expect_error({"cmd", "text", "5"}, "Wrong number of arguments :c  argument 3", "s#i:c ", none_,
                 &length, &last);
}

TEST_F(arguments, stores_before_a_failure_stay)
{
    int one = 0;
    int two = 0;
    expect_error({"cmd", "1", "x"}, "expected integer but got \"x\":c  argument 2", "ii:c ", &one,
                 &two);
    EXPECT_EQ(one, 1);
    EXPECT_EQ(two, 0);
}

// All words are counted only at the end, so a bad word is reported before a surplus one.
TEST_F(arguments, bad_words_are_reported_before_surplus_ones)
{
    int one = 0;
    expect_error({"cmd", "x", "2"}, "expected integer but got \"x\":c  argument 1", "i:c ", &one);
    expect_error({"cmd", "x"}, "expected integer but got \"x\":c  argument 1", "ii:c ", &one, &one);
}

TEST_F(arguments, counting_only)
{
    const word_list words{"cmd", "x", "y"};
    EXPECT_EQ(qxsh::check_word_count(tcl_, words.count(), words.data(), "oo:c "), TCL_OK);
    EXPECT_EQ(qxsh::check_word_count(tcl_, words.count(), words.data(), "ip:c "), TCL_OK);
    EXPECT_EQ(qxsh::check_word_count(tcl_, words.count(), words.data(), "s#|oo:c "), TCL_OK);
    EXPECT_EQ(qxsh::check_word_count(tcl_, words.count(), words.data(), "o:c a "), TCL_ERROR);
    EXPECT_EQ(tcl_.result(), "Wrong # args.:c a  argument 2");
}

} // namespace
