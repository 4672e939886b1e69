// A model of handles, against which the targets check the conversions: what a word means as a
// handle, determined from its text alone, and types with all forms of cast lists.
#pragma once

#include "runtime/type_registry.h"

#include <tcl.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// A source type that a type accepts; the cast adds `added` bytes to the pointer.
struct model_cast
{
    std::string source;
    std::uintptr_t added;
};

struct model_type
{
    std::string name; ///< mangled
    std::vector<model_cast> accepts;
    swig_type_record *record;
};

/// The model's types, always the same; none belongs to a module.
const std::vector<model_type> &model_types();

struct handle_reading
{
    bool known;              ///< false: the model cannot tell what the word evaluates to
    bool good = false;       ///< the conversion succeeds
    bool typed = false;      ///< a cast of the type was used
    void *pointer = nullptr; ///< the result, after the cast
    void *unconverted = nullptr;
};

/// The conversion of a word where a type (null: any) is expected. `evaluates` is false if there is
/// no interpreter to evaluate the word.
handle_reading read_handle(const std::string &word, const model_type *type, bool evaluates);

/// Reads up to `count` bytes, two lower-case hex digits each, from the start of the text; returns
/// how many it read.
std::size_t read_digits(std::string_view text, unsigned char *into, std::size_t count);

/// A pointer's handle; "NULL" for null.
std::string handle_text(std::uint32_t address, std::string_view name);

/// Creates commands whose " cget -this" returns handles, names of other commands, and nonsense.
void make_object_words(Tcl_Interp *interp);

} // namespace fuzz
