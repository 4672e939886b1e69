// Runs on 32-bit builds, where Tcl and the C library themselves say how a word reads: the number
// table has to be what they say. With QXSH_RENEW_NUMBERS=1 in the environment it is written again,
// so that a new word needs only a line with the quoted word.
#include "runtime/numbers.h"
#include "tests/unit/interpreter.h"
#include "tests/unit/number_readings.h"
#include "tests/unit/number_reference.h"

#include <gtest/gtest.h>

#include <cstdlib>

TEST(number_reference, table_is_what_this_tcl_says)
{
    interpreter tcl;
    const auto rows = read_number_table();
    ASSERT_FALSE(rows.empty());
    std::vector<number_row> right;
    for (const auto &row : rows)
        right.push_back(reference_readings(tcl, held_object{row.word}));
    if (std::getenv("QXSH_RENEW_NUMBERS") != nullptr)
        write_number_table(right);
    else
        for (std::size_t i = 0; i < rows.size(); ++i)
            EXPECT_EQ(number_line(rows[i]), number_line(right[i]));
}

// Whatever the object holds besides its text, Tcl reads the text; so the table serves all objects.
TEST(number_reference, computed_numbers_read_as_their_text)
{
    interpreter tcl;
    for (const auto &row : read_number_table()) {
        Tcl_Obj *value;
        if (Tcl_ExprObj(tcl, held_object{row.word}, &value) != TCL_OK)
            continue;
        const held_object number{value};
        Tcl_DecrRefCount(value);
        const held_object text{number.text()};
        EXPECT_EQ(number_line(reference_readings(tcl, number)),
                  number_line(reference_readings(tcl, text)));
        EXPECT_EQ(number_line(converter_readings(tcl, number)),
                  number_line(reference_readings(tcl, text)));
    }
}

// The message and the error code that a failed conversion leaves, too.
TEST(number_reference, messages)
{
    interpreter ours;
    interpreter theirs;
    for (const auto &row : read_number_table()) {
        std::int32_t value;
        long number;
        const bool good = qxsh::long32_from_obj(ours, held_object{row.word}, value);
        ASSERT_EQ(good, Tcl_GetLongFromObj(theirs, held_object{row.word}, &number) == TCL_OK);
        EXPECT_EQ(ours.result(), theirs.result());
        EXPECT_EQ(ours.error_code(), theirs.error_code());
    }
}
