// What the library of the package qx knows of the records: tables that the generator writes from
// the catalogue.
#pragma once

#include <cstdint>

namespace qxsh {

/// What the number or numbers of a field are.
enum class holding : std::uint8_t {
    number, ///< nothing but numbers
    mac,    ///< six bytes of a MAC address
    ipv4,   ///< an IPv4 address, the first byte of the text in the highest bits
    ipv6,   ///< four such words of an IPv6 address
    ip,     ///< the same, or an IPv4 address and three zeros
    family, ///< which of both the address beside it is
};

/// A field. All numbers are unsigned and little-endian, at any alignment.
struct field_row
{
    const char *name;
    std::uint16_t offset; ///< bytes from the record's start
    std::uint16_t size;   ///< bytes of an element, or of a bit-field's unit
    std::uint8_t bit;     ///< lowest bit of a bit-field
    std::uint8_t width;   ///< bits of a bit-field; 0 for other fields
    std::uint16_t count;  ///< elements of an array; 0 for other fields
    holding holds;
    std::int16_t record; ///< the nested record by number; -1 for numbers
};

/// A record; its fields stand together in field_rows.
struct record_row
{
    const char *name;
    std::uint16_t size;  ///< bytes
    std::uint16_t first; ///< its first field by number
    std::uint8_t fields; ///< their number
    bool is_union;
    std::int8_t largest; ///< of a union the first of the largest views, counted from `first`
    std::int8_t family;  ///< the field that holds the family of its address; -1 if none
};

// Bounds of all records; the generated file has the compiler compare.
constexpr unsigned most_record_bytes = 1024; ///< a guarded access takes up to 4096
constexpr unsigned most_fields = 64;
constexpr unsigned most_elements = 64;

extern const record_row record_rows[];
extern const field_row field_rows[];
extern const unsigned record_count;
extern const unsigned field_count;

inline const field_row *fields_of(const record_row &record)
{
    return field_rows + record.first;
}

/// Whether the record is a union that stands for an address: its largest view is one.
inline bool is_address(const record_row &record)
{
    return record.is_union && fields_of(record)[record.largest].holds == holding::ip;
}

} // namespace qxsh
