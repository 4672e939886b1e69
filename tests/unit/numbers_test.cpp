// Every word of the number table through every converter, as a fresh object and as one that Tcl or
// a converter has looked at before: on each build the answers are the board's.
#include "tests/unit/interpreter.h"
#include "tests/unit/number_readings.h"

#include <gtest/gtest.h>

namespace {

class numbers : public testing::Test
{
protected:
    static void SetUpTestSuite() { table_ = read_number_table(); }
    static void TearDownTestSuite() { table_ = {}; }

    // Each word once more in an object that `look` has looked at.
    template <class Look> void expect_readings_after(Look look)
    {
        for (const auto &row : table_) {
            const held_object word{row.word};
            look(word.get());
            EXPECT_EQ(number_line(converter_readings(tcl_, word)), number_line(row));
            EXPECT_EQ(word.text(), row.word);
        }
    }

    interpreter tcl_;
    static std::vector<number_row> table_;
};

std::vector<number_row> numbers::table_;

TEST_F(numbers, table_is_read)
{
    ASSERT_GT(table_.size(), 200u);
    for (const auto &row : table_) {
        for (const auto &reading : row.readings)
            EXPECT_NE(reading, "") << number_line(row);
    }
}

TEST_F(numbers, fresh_words)
{
    expect_readings_after([](Tcl_Obj *) {});
}

TEST_F(numbers, words_converted_before)
{
    expect_readings_after([this](Tcl_Obj *word) { converter_readings(tcl_, word); });
}

TEST_F(numbers, shared_words)
{
    for (const auto &row : table_) {
        const held_object word{row.word};
        const held_object other{word};
        EXPECT_EQ(number_line(converter_readings(tcl_, other)), number_line(row));
        EXPECT_EQ(number_line(converter_readings(tcl_, word)), number_line(row));
    }
}

TEST_F(numbers, words_that_tcl_took_as_integers)
{
    expect_readings_after([](Tcl_Obj *word) {
        Tcl_WideInt wide;
        Tcl_GetWideIntFromObj(nullptr, word, &wide);
    });
}

TEST_F(numbers, words_that_tcl_took_as_longs)
{
    expect_readings_after([](Tcl_Obj *word) {
        long number;
        Tcl_GetLongFromObj(nullptr, word, &number);
    });
}

TEST_F(numbers, words_that_tcl_took_as_floating)
{
    expect_readings_after([](Tcl_Obj *word) {
        double floating;
        Tcl_GetDoubleFromObj(nullptr, word, &floating);
    });
}

TEST_F(numbers, words_that_tcl_took_as_truth)
{
    expect_readings_after([](Tcl_Obj *word) {
        int truth;
        Tcl_GetBooleanFromObj(nullptr, word, &truth);
    });
}

TEST_F(numbers, words_that_tcl_took_as_lists)
{
    expect_readings_after([](Tcl_Obj *word) {
        int length;
        Tcl_ListObjLength(nullptr, word, &length);
    });
}

TEST_F(numbers, words_that_tcl_took_apart)
{
    expect_readings_after([](Tcl_Obj *word) {
        Tcl_GetCharLength(word);
        Tcl_GetUnicode(word);
    });
}

// A duplicate is made of the representation and the text.
TEST_F(numbers, duplicates)
{
    for (const auto &row : table_) {
        const held_object word{row.word};
        converter_readings(tcl_, word);
        const held_object copy{Tcl_DuplicateObj(word)};
        EXPECT_EQ(number_line(converter_readings(tcl_, copy)), number_line(row));
    }
}

} // namespace
