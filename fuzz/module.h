// The whole module over the simulator, for targets that call its commands.
#pragma once

#include "fuzz/tcl_words.h"
#include "tests/random/tables.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// Which commands of Tcl's there are besides the module's: harmless ones, or all, for targets whose
/// words are never evaluated.
enum class tcl_commands : unsigned char { harmless, all };

/// Starts the module in an interpreter, and returns that; what commands print goes to `print`. To
/// be called once, before the functions below.
Tcl_Interp *start_module(const char *program, void (*print)(const char *bytes, std::size_t size),
                         tcl_commands kept = tcl_commands::harmless);

/// The records and commands, from the tests' own tables.
const random_test::tables &tables();

/// One of the module's commands; any number is valid.
const random_test::command &any_command(std::uint32_t number);

/// Calls a command and returns Tcl's status; `result` is the interpreter's result afterwards.
int evaluate(const std::vector<Tcl_Obj *> &words);
std::string result();

/// The address in a handle; 0 for "NULL" and for any text that is not a handle.
std::uint32_t address_in(const std::string &handle);

} // namespace fuzz
