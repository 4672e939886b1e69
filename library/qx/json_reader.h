// JSON text as Tcl values: objects as dicts, arrays as lists, numbers and texts as themselves.
#pragma once

#include <tcl.h>

#include <string>
#include <string_view>

namespace qxsh {

/// Where a JSON text is wrong, and what is. The text around the place may be a key and is not
/// shown.
struct json_mistake
{
    int line = 0;   ///< from 1
    int column = 0; ///< from 1, in characters
    std::string what;
};

/// Reads a whole text. Numbers must be integers of at most 64 bits; true, false and null are
/// mistakes, and so are a name given twice, bad UTF-8, text behind the value and too much nesting.
/// Returns an object whose dicts and lists have those types, with a reference that the caller
/// releases, or null.
Tcl_Obj *read_json(std::string_view text, json_mistake &mistake);

} // namespace qxsh
