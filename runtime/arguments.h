// Counts and parses words by a format: one letter per argument, "|" before the first optional one,
// then ":" (or ";", which allows surplus words), the command's name and the argument names, each
// followed by a blank.
#pragma once

#include "runtime/tcl_api.h"

/// Checks the words after the command name against the format and stores them into the targets, one
/// pointer per letter; a null target stores nothing:
///   i l h b   int, long, short, unsigned char: a 32-bit long, truncated
///   f d       float, double
///   s         const char *; "s#" has a second target, int *, for the length in bytes
///   c         char, the first of the word's text
///   p         void *, converted as a handle; after the target follows its swig_type_record *
///   o         Tcl_Obj *
/// An upper-case letter first replaces the word by the constant of that name, if there is one.
/// Returns TCL_OK, or TCL_ERROR with a message that ends with the format's tail and the argument's
/// number. Texts and objects still belong to the interpreter; targets of words before a bad one
/// have been written.
int swig_get_args(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format, ...);

namespace qxsh {

/// The same with a null target for every letter: checks only the number of words.
int check_word_count(Tcl_Interp *interp, int objc, Tcl_Obj *const objv[], const char *format);

} // namespace qxsh
