// The generated command table: every command of the module with its wrapper, in order of
// registration, and what each command is: its usage, its words, and what it does with the memory
// behind them. Elsewhere a command is its number in this table.
#pragma once

#include "records/table.h"
#include "runtime/command_words.h"
#include "runtime/tcl_api.h"

struct swig_command_info
{
    const char *name; ///< null ends the table
    Tcl_ObjCmdProc *wrapper;
    ClientData client_data; ///< null for every command
};

extern const swig_command_info swig_commands[];

namespace qxsh {

/// The position of a command in swig_commands.
using command_number = unsigned int;

/// What a command does besides reading or writing the record or cell at each handle.
enum class command_form : std::uint8_t {
    plain,       ///< nothing
    makes,       ///< its result is a new block, of one element of type `what`
    makes_array, ///< the same, of as many as its last word says
    points,      ///< only computes an address from its first word, an array
    indexes,     ///< reads or writes one of the array at its first word; its last is the index
    releases,    ///< gives back the block at its only word
    calls,       ///< calls the SDK: call_rows[what]
};

struct command_row
{
    std::uint32_t usage; ///< its text begins here in command_usages
    std::uint16_t kinds; ///< those of its words begin here in word_kinds, and end with word_end
    command_form form;
    std::uint8_t what; ///< number of a type or of a call
};

/// What a pointer type points to.
struct element_type
{
    std::uint16_t size;  ///< bytes
    std::int16_t record; ///< number of the record; -1: a number
};

/// Texts as check_word_count expects them, one after the other, each with its null.
[[gnu::visibility("hidden")]] extern const char command_usages[];
[[gnu::visibility("hidden")]] extern const word_kind word_kinds[];
[[gnu::visibility("hidden")]] extern const command_row command_rows[];   ///< as swig_commands
[[gnu::visibility("hidden")]] extern const element_type element_types[]; ///< as swig_types

/// What the command in a row of the command table is.
inline const command_row &row_of(const swig_command_info &command)
{
    return command_rows[&command - swig_commands];
}

/// The command's name, which is that of the SDK or helper function, too.
inline const char *name_of(command_number command)
{
    return swig_commands[command].name;
}

/// E.g. "oo:qx_flow_add device_id p_flow ".
inline const char *usage_of(command_number command)
{
    return command_usages + command_rows[command].usage;
}

/// How many words it takes.
inline int words_of(const command_row &row)
{
    int words = 0;
    while (word_kinds[row.kinds + words] != word_end)
        ++words;
    return words;
}

} // namespace qxsh
