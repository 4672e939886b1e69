// The whole module over the simulator, for targets that call its commands.
#pragma once

#include "fuzz/tcl_words.h"
#include "tests/random/tables.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// Starts the module in an interpreter without other harmful commands, and returns that; what
/// commands print goes to `print`. To be called once, before the functions below.
Tcl_Interp *start_module(const char *program, void (*print)(const char *bytes, std::size_t size));

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
