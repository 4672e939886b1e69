// The SDK's records and calls: the one table of their layouts, which the generator writes from the
// catalogue (record_table.cpp; record_numbers.h numbers the rows). It has no pointers, which would
// need relocation at every start: names and rows are referred to by index.
#pragma once

#include <cstdint>
#include <span>

namespace qxsh {

[[gnu::visibility("hidden")]] extern const char table_names[];

/// A name, by its start in table_names.
struct table_name
{
    std::uint16_t at;

    const char *text() const { return table_names + at; }
};

/// The meaning of a field's numbers.
enum class holding : std::uint8_t {
    number, ///< plain numbers
    mac,    ///< six bytes of a MAC address
    ipv4,   ///< an IPv4 address, its first byte in the highest bits
    ipv6,   ///< four such words of an IPv6 address
    ip,     ///< the same, or an IPv4 address and three zero words
    family, ///< the family number of the address beside it; see version_of
    key,    ///< secret bytes
};

/// A field. All numbers are unsigned and little-endian, at any alignment.
struct field_row
{
    table_name name;
    std::uint16_t offset; ///< bytes from the record's start
    std::uint16_t size;   ///< bytes of one element, or of a bit-field's storage unit
    std::uint16_t count;  ///< elements of an array; 0 for other fields
    std::uint8_t bit;     ///< lowest bit of a bit-field
    std::uint8_t width;   ///< bits of a bit-field; 0 for other fields
    holding holds;
    bool dumped;         ///< whether dumps show it
    std::int16_t record; ///< index in record_rows of its elements; -1 for numbers
    std::uint8_t id = 0; ///< which kind of id that the device assigns, an id_number; else id_none
    bool hexadecimal = false; ///< whether people read it in hexadecimal
};

struct record_row
{
    table_name name;
    std::uint16_t size;  ///< bytes
    std::uint16_t first; ///< index of its first field in field_rows; the others follow
    std::uint8_t fields; ///< how many
    bool is_union;
    std::int8_t largest; ///< of a union: the first of its largest views, counted from `first`
    std::int8_t family;  ///< the field with its address's family, counted from `first`; or -1
};

/// A number in a record that says which view of a union beside it is meant.
struct view_row
{
    table_name word;       ///< for the number in the profile; an empty text: `number` is given
    std::uint16_t field;   ///< index in field_rows of the union
    std::uint16_t chooser; ///< index in field_rows of the number
    std::uint16_t offset;  ///< of the number, in bytes from the start of the union's record
    std::uint8_t size;     ///< of the number, in bytes
    std::uint8_t view;     ///< counted from the union's first
    std::uint32_t number;
};

/// How a call uses the memory that an argument points to; values are always `in`.
enum class direction : std::uint8_t { in, out, inout };

struct argument_row
{
    table_name name;
    direction way;
    bool pointer;
    std::uint16_t size;  ///< bytes of the value, or of one element that is pointed to
    std::uint16_t place; ///< of a pointer to one element: where a frame with the copies of all that
                         ///< a call is pointed to has its own, a multiple of 4
    std::int8_t count;   ///< of an array: index of the call's argument with its size; else -1
    std::int16_t record; ///< index in record_rows of what it points to; -1 for numbers
    std::uint8_t id = 0; ///< as field_row::id, also of a number that is pointed to
};

struct call_row
{
    table_name name;
    std::uint16_t first;    ///< index of its first argument in argument_rows; the others follow
    std::uint8_t arguments; ///< how many
    bool names_device;      ///< the first argument is a device number
};

[[gnu::visibility("hidden")]] extern const record_row record_rows[];
[[gnu::visibility("hidden")]] extern const field_row field_rows[];
[[gnu::visibility("hidden")]] extern const view_row view_rows[];
[[gnu::visibility("hidden")]] extern const call_row call_rows[];
[[gnu::visibility("hidden")]] extern const argument_row argument_rows[];

inline std::span<const field_row> fields_of(const record_row &record)
{
    return {field_rows + record.first, record.fields};
}

inline std::span<const argument_row> arguments_of(const call_row &call)
{
    return {argument_rows + call.first, call.arguments};
}

/// The record type of a field's elements, or null for numbers.
inline const record_row *record_in(const field_row &field)
{
    return field.record < 0 ? nullptr : record_rows + field.record;
}

/// The number of elements of a field; 1 if it is not an array.
inline unsigned elements_of(const field_row &field)
{
    return field.count == 0 ? 1 : field.count;
}

/// Whether the record is a union that represents an IP address: its largest view is one.
inline bool is_address(const record_row &record)
{
    return record.is_union && fields_of(record)[record.largest].holds == holding::ip;
}

} // namespace qxsh
