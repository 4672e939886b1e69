// Setting a command's result. Each function returns TCL_OK.
#pragma once

#include "runtime/numbers.h"
#include "runtime/tcl_api.h"
#include "runtime/type_registry.h"

namespace qxsh {

int set_int_result(Tcl_Interp *interp, int value);

/// For a `value` above greatest_integer_result only.
int set_great_result(Tcl_Interp *interp, unsigned int value);

inline int set_unsigned_result(Tcl_Interp *interp, unsigned int value)
{
    if (value <= greatest_integer_result) [[likely]]
        return set_int_result(interp, static_cast<int>(value));
    return set_great_result(interp, value);
}

/// Keeps only the low 32 bits of `value`, sign-extended and shown as an unsigned 64-bit number.
int set_low32_result(Tcl_Interp *interp, unsigned long long value);

/// The handle of `pointer`, or "NULL" for null. `type` is one of this module's types.
int set_pointer_result(Tcl_Interp *interp, void *pointer, swig_type_record *type);

} // namespace qxsh
