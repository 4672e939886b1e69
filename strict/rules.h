// What each command does with the memory behind its words, as strict memory has to know it. The
// tables are generated from the catalogue; nothing looks at them unless strict memory is on.
#pragma once

#include "commands/command_table.h"
#include "runtime/command_words.h"

#include <cstdint>

namespace qxsh {

/// What a command does with a word, or at last with its result.
enum class memory_use : std::uint8_t {
    none,     ///< nothing: a number, or no result that is a block
    element,  ///< reads or writes the record or cell at the address
    indexed,  ///< reads or writes one of the array at the address; word `with` is its index
    counted,  ///< reads or writes several of the array; word `with` is their number
    base,     ///< computes another address from it
    released, ///< gives a block back
    makes,    ///< the result is a new block, of as many elements as word `with` says; 0: of one
};

struct word_rule {
    word_kind kind;
    memory_use use;
    std::uint8_t with; ///< number of another word, from 1
};

/// A command's words are described from word_rules[first] on; the rule behind them is its result's.
struct command_rule {
    std::uint16_t first;
    std::uint8_t words;
};

/// What a pointer type points to.
struct element_type {
    std::uint16_t size;  ///< bytes
    std::int16_t record; ///< its number; -1: a number
};

[[gnu::visibility("hidden")]] extern const word_rule word_rules[];
[[gnu::visibility("hidden")]] extern const command_rule command_rules[]; ///< as swig_commands
[[gnu::visibility("hidden")]] extern const element_type element_types[]; ///< as swig_types

/// The rule of a row of the command table.
inline const command_rule &rule_of(const swig_command_info &row)
{
    return command_rules[&row - swig_commands];
}

} // namespace qxsh
