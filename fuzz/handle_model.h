// What a word stands for as a handle, said in terms of its text alone; with types whose casts cover
// what lists of casts can be. What the targets hold the conversions against.
#pragma once

#include "runtime/type_registry.h"

#include <tcl.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

/// A source that a type accepts; its converter, if any, adds `added` to the pointer.
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

/// The same types in every process; none belongs to a module.
const std::vector<model_type> &model_types();

struct handle_reading
{
    bool known; ///< false: the word evaluates to something the model does not follow
    bool good = false;
    bool typed = false; ///< a cast of the type was taken
    void *pointer = nullptr;
    void *unconverted = nullptr;
};

/// What a word gives where a type (null: any) is expected. Without an interpreter nothing is
/// evaluated.
handle_reading read_handle(const std::string &word, const model_type *type, bool evaluates);

/// Pairs of lower-case digits from the text's start, at most `count`; gives how many there were.
std::size_t read_digits(std::string_view text, unsigned char *into, std::size_t count);

/// A pointer's handle; "NULL" for null.
std::string handle_text(std::uint32_t address, std::string_view name);

/// Makes commands whose " cget -this" answers with handles, with other commands and with nonsense.
void make_object_words(Tcl_Interp *interp);

} // namespace fuzz
