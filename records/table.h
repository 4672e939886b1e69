// What records and calls the SDK has: the one table of their layouts, which the generator writes
// from the catalogue (record_table.cpp; record_numbers.h numbers the rows). It holds no pointers,
// which would have to be relocated at every start: names and rows are found by number.
#pragma once

#include <cstdint>
#include <span>

namespace qxsh {

[[gnu::visibility("hidden")]] extern const char table_names[];

/// A name, by where it begins in table_names.
struct table_name
{
    std::uint16_t at;

    const char *text() const { return table_names + at; }
};

/// What the number or numbers of a field are.
enum class holding : std::uint8_t {
    number, ///< nothing but numbers
    mac,    ///< six bytes of a MAC address
    ipv4,   ///< an IPv4 address, the first byte of the text in the highest bits
    ipv6,   ///< four such words of an IPv6 address
    ip,     ///< the same, or an IPv4 address and three zeros
    family, ///< which of both the address beside it is
    key,    ///< secret bytes
};

/// A field. All numbers are unsigned and little-endian, at any alignment.
struct field_row
{
    table_name name;
    std::uint16_t offset; ///< bytes from the record's start
    std::uint16_t size;   ///< bytes of one element, or of a bit-field's unit
    std::uint16_t count;  ///< elements of an array; 0 for other fields
    std::uint8_t bit;     ///< lowest bit of a bit-field
    std::uint8_t width;   ///< bits of a bit-field; 0 for other fields
    holding holds;
    bool dumped;         ///< false for a field that dumps leave out
    std::int16_t record; ///< number of the record that it is made of; -1 for numbers
};

struct record_row
{
    table_name name;
    std::uint16_t size;  ///< bytes
    std::uint16_t first; ///< number of its first field; the others follow
    std::uint8_t fields; ///< how many
    bool is_union;
    std::int8_t largest; ///< of a union the first of the largest views, counted from `first`
    std::int8_t family;  ///< the field that holds the family of its address; -1 if none
};

/// How a call uses what an argument points to; values are always `in`.
enum class direction : std::uint8_t { in, out, inout };

struct argument_row
{
    table_name name;
    direction way;
    bool pointer;
    std::uint16_t size;  ///< bytes of the value, or of one element that is pointed to
    std::uint16_t place; ///< of a pointer to one element: where a frame with the copies of all that
                         ///< a call is pointed to has its own, a multiple of 4
    std::int8_t count;   ///< of an array: number of the argument with its size; else -1
    std::int16_t record; ///< number of the record that is pointed to; -1 for numbers
};

struct call_row
{
    table_name name;
    std::uint16_t first;    ///< number of its first argument; the others follow
    std::uint8_t arguments; ///< how many
    bool names_device;      ///< the first argument is a device number
};

[[gnu::visibility("hidden")]] extern const record_row record_rows[];
[[gnu::visibility("hidden")]] extern const field_row field_rows[];
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

/// The record that a field is made of, or null for numbers.
inline const record_row *record_in(const field_row &field)
{
    return field.record < 0 ? nullptr : record_rows + field.record;
}

/// How many elements a field has, an array or not.
inline unsigned elements_of(const field_row &field)
{
    return field.count == 0 ? 1 : field.count;
}

/// Whether the record is a union that stands for an address: its largest view is one.
inline bool is_address(const record_row &record)
{
    return record.is_union && fields_of(record)[record.largest].holds == holding::ip;
}

} // namespace qxsh
