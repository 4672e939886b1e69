// Word counting and parsing by format: one letter per argument, "|" before the first optional one,
// then ":" (or ";", which lets surplus words pass), the command's name and the argument names, each
// with a blank.
#pragma once

#include "runtime/tcl_api.h"

/// Checks the words behind the command name against the format and stores them into the targets,
/// one pointer per letter; null stores nothing:
///   i l h b   int, long, short, unsigned char of a 32-bit long, cut
///   f d       float, double
///   s         const char *; "s#" takes a further target, int *, for the length
///   c         char, the first of the text
///   p         void *, converted as a handle; a swig_type_record * follows the target
///   o         Tcl_Obj *
/// An upper-case letter first replaces the word by the constant of that name, if there is one.
/// Gives TCL_ERROR with a message that ends in the format's tail and the argument's number. Texts
/// and objects stay the interpreter's.
int swig_get_args(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format, ...);

namespace qxsh {

/// The same with a null target for every letter: only the number of words is checked.
int check_word_count(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format);

} // namespace qxsh
