// What a command does with each of its words, as strict memory has to know it: follows from the
// command's form (commands/command_table.h).
#pragma once

#include "commands/command_table.h"

namespace qxsh {

enum class memory_use : std::uint8_t {
    none,     ///< nothing: a number
    element,  ///< reads or writes the record or cell at the address
    indexed,  ///< reads or writes one of the array at the address; word `with` is its index
    counted,  ///< reads or writes several of the array; word `with` is their number
    base,     ///< computes another address from it
    released, ///< gives a block back
};

struct word_rule
{
    word_kind kind;
    memory_use use;
    int with; ///< number of another word, from 1; 0: none
};

/// How many words a command takes.
int words_of(const command_row &row);

/// The rule of a command's word `number`, from 1.
word_rule rule_of(const command_row &row, int number);

} // namespace qxsh
