// Constants: script variables that stand for native pointers and data, and the table that finds
// them by name.
#pragma once

#include "runtime/tcl_api.h"
#include "runtime/type_registry.h"

/// Kinds of constants; a descriptor of kind 0 ends a table.
enum swig_constant_kind : int {
    SWIG_END_OF_CONSTANTS = 0,
    SWIG_POINTER = 4, ///< the pointer's handle
    SWIG_BINARY = 5,  ///< the packed handle of `integer` bytes at the pointer
};

struct swig_const_info {
    int kind;
    const char *name;
    long integer;
    double floating;
    void *pointer;
    swig_type_record **type; ///< a place in a type table, resolved when the constant is made
};

/// Sets a global variable for each constant that has a value and enters the value in the
/// process-wide table, which is made on the first call even if there are no constants.
void swig_install_constants(Tcl_Interp *interp, const swig_const_info *constants);

namespace qxsh {

/// The constant's value if the word names one, else the word itself.
Tcl_Obj *constant_for(Tcl_Obj *word);

/// Number of constants in the table, or -1 before it is made.
int constant_count();

} // namespace qxsh
