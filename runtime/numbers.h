// Conversion of script words to native numbers, and of numbers to results. Numbers are those of the
// board, whose long has 32 bits: every build accepts, wraps and rejects the same words.
#pragma once

#include "runtime/tcl_api.h"

#include <cstdint>

/// Error codes of the converters and of handle conversion.
enum swig_error : int {
    SWIG_OK = 0,
    SWIG_ERROR = -1, ///< no particular category; wrappers show it as a TypeError
    SWIG_IOError = -2,
    SWIG_RuntimeError = -3,
    SWIG_IndexError = -4,
    SWIG_TypeError = -5,
    SWIG_DivisionByZero = -6,
    SWIG_OverflowError = -7,
    SWIG_SyntaxError = -8,
    SWIG_ValueError = -9,
    SWIG_SystemError = -10,
    SWIG_AttributeError = -11,
    SWIG_MemoryError = -12,
};

// Each converter stores the number and returns SWIG_OK, or stores nothing and returns
// SWIG_TypeError or SWIG_OverflowError. With a null `value` it only checks. The interpreter is not
// used and may be null; no message is left.

/// Any integer from -4294967295 to 4294967295; those outside -2147483648 to 2147483647 wrap.
int swig_as_val_long(Tcl_Interp *interp, Tcl_Obj *object, long *value);
int swig_as_val_int(Tcl_Interp *interp, Tcl_Obj *object, int *value);

/// 0 to 4294967295. A word that is not a 32-bit long, or is a negative one, is read again as text
/// with the rules of strtoul and base 0: so " -1", with a leading blank, is 4294967295, while "-1"
/// overflows.
int swig_as_val_unsigned_long(Tcl_Interp *interp, Tcl_Obj *object, unsigned long *value);
int swig_as_val_unsigned_int(Tcl_Interp *interp, Tcl_Obj *object, unsigned int *value);

/// The same, but more than 65535 or 255 overflows.
int swig_as_val_unsigned_short(Tcl_Interp *interp, Tcl_Obj *object, unsigned short *value);
int swig_as_val_unsigned_char(Tcl_Interp *interp, Tcl_Obj *object, unsigned char *value);

/// 0 to 18446744073709551615. A word that is a 32-bit long counts as its low 32 bits, even a
/// negative one: "-1" is 4294967295.
int swig_as_val_unsigned_long_long(Tcl_Interp *interp, Tcl_Obj *object, unsigned long long *value);

// Result makers. Each returns a new object with reference count 0: an integer object up to
// 2147483646, above that a string object with the decimal digits.

Tcl_Obj *swig_from_int(int value);
Tcl_Obj *swig_from_unsigned_long(unsigned long value);
Tcl_Obj *swig_from_unsigned_long_long(unsigned long long value);

namespace qxsh {

/// The greatest unsigned result that is an integer object; greater ones are string objects.
constexpr unsigned int greatest_integer_result = 2147483646;

/// Does the same as Tcl_GetLongFromObj where long has 32 bits: false, with `value` unchanged, for a
/// word that is not an integer or is beyond +-4294967295. With an interpreter, Tcl's own message
/// and error code are left in it; a null interpreter gets none.
bool long32_from_obj(Tcl_Interp *interp, Tcl_Obj *object, std::int32_t &value);

} // namespace qxsh
