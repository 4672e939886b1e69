// Dumps: a record's fields as text, one line a scalar, "<field> = <hex> \n", and one an array
// element, "<field>[<index>] = <hex>\n" (without the blank), nested records through their own
// fields.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace qxsh {

struct record_layout;

/// A field's name, in place: a pointer would be one more thing to relocate at every start.
struct field_name {
    template <std::size_t Size>
    consteval field_name(const char (&literal)[Size])
    {
        static_assert(Size <= sizeof text, "names of fields have at most 31 characters");
        for (std::size_t i = 0; i < Size; ++i)
            text[i] = literal[i];
    }

    char text[32] = {};
};

/// One field as a dump needs it.
struct field_layout {
    field_name name;
    std::uint16_t offset;        ///< bytes from the record's start
    std::uint8_t size;           ///< bytes of a scalar or of a bit-field's unit; 0 for records
    std::uint8_t bit;            ///< lowest bit of a bit-field
    std::uint8_t width;          ///< bits of a bit-field; 0 for other fields
    std::uint16_t count;         ///< elements of an array; 0 for other fields
    const record_layout *nested; ///< the nested record's layout; null for scalars
    bool dumped;                 ///< false for a field that dumps leave out
};

struct record_layout {
    std::uint32_t size; ///< bytes
    std::span<const field_layout> fields;
};

/// Prints all fields of a record in declaration order, in one piece; nothing for null, or where
/// there is no memory. The layout has to stay: what follows from it is kept.
void dump_record(const void *record, const record_layout &layout);

} // namespace qxsh
