// The whole module over the simulator, for targets that call its commands.
#pragma once

#include "fuzz/tcl_words.h"
#include "tests/random/tables.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

/// Starts the module in an interpreter whose other commands are harmless; what commands print goes
/// to `print`. To be called once, before all that follows.
Tcl_Interp *start_module(const char *program, void (*print)(const char *bytes, std::size_t size));

/// The records and commands as the tests' own tables have them.
const random_test::tables &tables();

/// Any of the module's commands; all numbers will do.
const random_test::command &any_command(std::uint32_t number);

/// Calls a command; its status, with the interpreter's result as it left it.
int evaluate(const std::vector<Tcl_Obj *> &words);
std::string result();

/// The address in a well-formed handle; 0 of "NULL" and of what is not a handle.
std::uint32_t address_in(const std::string &handle);

} // namespace fuzz
