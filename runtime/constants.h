// Constants: script variables that hold native pointers and data, and the table to look them up by
// name.
#pragma once

#include "runtime/tcl_api.h"
#include "runtime/type_registry.h"

/// Kinds of constants; a descriptor of kind 0 ends a table.
enum swig_constant_kind : int {
    SWIG_END_OF_CONSTANTS = 0,
    SWIG_POINTER = 4, ///< the pointer's handle
    SWIG_BINARY = 5,  ///< the packed handle of `integer` bytes at the pointer
};

struct swig_const_info
{
    int kind;
    const char *name;
    long integer;
    double floating;
    void *pointer;
    swig_type_record **type; ///< an element of a type table, read when the constant is created
};

/// Sets a global variable for each constant of a known kind and enters its value in the
/// process-wide table, replacing a value of the same name. `constants` ends with kind 0. The first
/// call creates the table, even if there are no constants.
void swig_install_constants(Tcl_Interp *interp, const swig_const_info *constants);

namespace qxsh {

/// The constant's value if the word names a constant, else the word itself. The caller gets no
/// reference.
Tcl_Obj *constant_for(Tcl_Obj *word);

/// Number of constants in the table, or -1 before the table is created.
int constant_count();

} // namespace qxsh
