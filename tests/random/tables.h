// The tables of tests/expected: what records and commands there are and how words are read as
// numbers. They were written by hand; nothing here looks at the catalogue or at generated code.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace random_test {

struct record;

/// A native type of numbers, as fields and cells have it.
struct number_type
{
    const char *name;    ///< in the field table; int32 and u64 stand in cells only
    const char *native;  ///< as arguments are declared
    std::uint32_t width; ///< bytes
    const char *cell;    ///< in command names
    std::size_t reading; ///< its place among a word's readings
};

/// u8, u16, u32, i32, u64, in this order.
const std::vector<number_type> &number_types();

/// The one with this name in the field table, or declared like that; null for records and pointers.
const number_type *number_named(const std::string &name);
const number_type *number_declared(const std::string &native);

/// A field; in arrays, what is said of bytes is said of one element.
struct field
{
    std::string name;
    std::uint32_t offset = 0;
    std::uint32_t bit = 0;   ///< lowest bit of a bit-field
    std::uint32_t bits = 0;  ///< its width; 0: no bit-field
    std::uint32_t count = 0; ///< elements of an array; 0: no array
    const number_type *number = nullptr;
    const record *nested = nullptr; ///< this or `number`
    std::uint32_t copied = 0;       ///< bytes that the setter stores
    std::string type;               ///< of the setter's value
    bool in_init = false;
    bool in_dump = false;

    std::uint32_t stride() const; ///< bytes from element to element
    std::uint32_t elements() const { return count == 0 ? 1 : count; }
};

struct record
{
    std::string name; ///< the type
    std::string stem; ///< of its commands
    std::uint32_t size = 0;
    std::uint32_t alignment = 1;
    std::uint32_t dump_lines = 0;
    std::vector<field> fields;
    bool has_init = false;
};

struct command
{
    std::string name;
    std::string usage;                  ///< with the letters, the colon and the blank at the end
    std::vector<std::string> arguments; ///< their declared types
    std::string result;                 ///< none, int, unsigned, uint64, status or a pointer type

    std::string usage_tail() const { return usage.substr(usage.find(':')); }
};

/// How a word is read: a number for each of the types, or nothing and the error's category.
struct number_word
{
    struct reading
    {
        std::optional<std::uint64_t> value; ///< cut to the type
        std::string category;
    };
    std::string text; ///< as a quoted Tcl word
    std::vector<reading> readings;
};

struct tables
{
    std::deque<record> records; ///< in the order of the table; addresses stay
    std::map<std::string, command> commands;
    std::vector<number_word> words;

    const record *find_record(const std::string &name) const;
};

/// Reads a folder of tables and checks them against each other; throws std::runtime_error with the
/// reason if one is not there, cannot be understood or contradicts another one.
tables read_tables(const std::string &folder);

/// A pointer type from its pointee and back: "qx_flow_t *", "qx_flow_t".
std::string pointer_to(const std::string &pointee);
std::string pointee_of(const std::string &pointer);

/// The end of a handle of this pointee: "_p_unsigned_int".
std::string mangled(const std::string &pointee);

} // namespace random_test
