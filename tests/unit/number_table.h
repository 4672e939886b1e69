// The table of number words, tests/expected/numbers.tsv: how the board reads each of them. Its
// values come from a 32-bit build (number_reference.h); every build is checked against them.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

/// The readings of a word, in column order.
enum number_reading {
    as_int,
    as_unsigned_int,
    as_unsigned_short,
    as_unsigned_char,
    as_unsigned_long_long,
    as_tcl_long, ///< Tcl's own conversion to a 32-bit long
    number_readings
};

/// One word: for each reading a decimal number, or why there is none.
struct number_row
{
    std::string word;
    std::array<std::string, number_readings> readings;
};

/// The table; empty, with a failure of the running test, if it cannot be read.
std::vector<number_row> read_number_table();

/// Rewrites the table with new readings, and keeps its header.
void write_number_table(const std::vector<number_row> &rows);

/// One line of the table, without line end. Words are quoted, so that blanks are visible.
std::string number_line(const number_row &row);
