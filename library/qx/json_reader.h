// JSON text as Tcl values: objects as dicts, arrays as lists, numbers and texts as themselves.
#pragma once

#include <tcl.h>

#include <string>
#include <string_view>

namespace qxsh {

/// Reads a whole text. Numbers must be integers of at most 64 bits; true, false and null are
/// mistakes, and so are a name given twice, bad UTF-8, text behind the value and too much nesting.
/// Returns an object whose dicts and lists have those types, with a reference that the caller
/// releases. For a mistake it returns null and sets an error, code {QX JSON <line> <column>}, whose
/// message is `source`, the place and what is wrong, without any of the text, which may have keys.
Tcl_Obj *read_json(Tcl_Interp *interp, const std::string &source, std::string_view text);

} // namespace qxsh
