// A command's result. Each of these returns TCL_OK.
#pragma once

#include "runtime/numbers.h"
#include "runtime/tcl_api.h"
#include "runtime/type_registry.h"

namespace qxsh {

int set_int_result(Tcl_Interp *interp, int value);

int set_great_result(Tcl_Interp *interp, unsigned int value); ///< beyond the integer objects

inline int set_unsigned_result(Tcl_Interp *interp, unsigned int value)
{
    if (value <= greatest_integer_result) [[likely]]
        return set_int_result(interp, static_cast<int>(value));
    return set_great_result(interp, value);
}

/// The low 32 bits with their sign, as an unsigned 64-bit number: all that a command keeps of one.
int set_low32_result(Tcl_Interp *interp, unsigned long long value);

/// The handle of a pointer, whose type is one of this module's.
int set_pointer_result(Tcl_Interp *interp, void *pointer, swig_type_record *type);

} // namespace qxsh
