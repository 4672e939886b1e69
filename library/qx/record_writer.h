// Writes the fields named in a dict into a record's bytes. Everything in the dict is checked; a
// mistake leaves an error that names its place, and the bytes are then not usable.
#pragma once

#include "library/qx/record_path.h"
#include "records/address_text.h"
#include "records/values.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace qxsh {

class record_writer
{
public:
    /// What values have to be: any, as in Tcl; no text for a dict or a list, unless it is an
    /// address or bytes; or besides, dicts and lists as read_json makes them.
    enum class typing : std::uint8_t { none, containers, strict };

    /// `bytes` is a copy of the record, which the caller owns: at most most_record_bytes.
    record_writer(record_session &session, unsigned char *bytes, typing types = typing::none)
        : session_(session), bytes_(bytes), types_(types)
    {}

    /// Writes a dict, or the text of an address record, to a record of type `row`. On failure
    /// returns false with an error in the interpreter, error code {QX VALUE <place>}; the bytes may
    /// then be partly written.
    bool write(const record_row &row, Tcl_Obj *values);

    /// The same for an argument of a call, or for element `index` of one that is an array: places
    /// begin with its name.
    bool write(const record_row &row, Tcl_Obj *values, const char *argument, int index = -1);

    /// The same for one field or element, whose place is `path`. What an earlier path of the same
    /// writer has written must not change.
    bool write(const path_target &target, Tcl_Obj *value, const char *path);

private:
    // A place in the dict: a field, or an element of one.
    struct place
    {
        const place *outer; // null: a field of the outermost record
        const char *name;   // null: element `index`
        int index;
    };

    // The keys and values of a dict, or of a list that represents one.
    class entries;

    bool padding_at(const path_target &target, Tcl_Obj *value, const place &here);
    bool value_at(const path_target &target, Tcl_Obj *value, const place &here);
    bool record(const record_row &row, unsigned at, Tcl_Obj *values, const place *here);
    bool fields(const record_row &row, unsigned at, entries &all, const place *here);
    void zero_rest(const record_row &row, unsigned at, bool whole, unsigned viewed);
    bool padding(const record_row &row, unsigned at, Tcl_Obj *runs, const place &here);
    void zero(unsigned at, std::uint8_t bits);
    bool check_family(const record_row &row, std::uint32_t family, int version,
                      const place &address, Tcl_Obj *text);
    void note_address(const record_row &row, unsigned at, int version, const place &address,
                      Tcl_Obj *text);
    bool check_families();

    bool field(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool nested(const record_row &row, unsigned at, Tcl_Obj *value, const place *here);
    bool records(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool array(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool mac(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool number(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool numbers_or_bytes(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool hexadecimal(Tcl_Obj *value, unsigned most, unsigned char *bytes, unsigned &count,
                     const place &here);
    bool numbers(const field_row &field, unsigned at, int count, Tcl_Obj *const elements[],
                 const place *here);
    bool address_numbers(unsigned at, Tcl_Obj *const elements[], const place *here);
    bool address(unsigned at, Tcl_Obj *value, holding holds, const place *here);
    bool prefix(const record_row &row, unsigned at, Tcl_Obj *value, const place *here);

    bool elements(Tcl_Obj *value, int most, Tcl_Obj **&elements, int &count, const place &here);
    // A number, or a code word of the field; null: of none.
    bool take(const field_row *field, Tcl_Obj *value, std::uint32_t greatest, std::uint32_t &number,
              const place *here, int index = -1);
    bool take_word(const field_row *field, Tcl_Obj *value, std::uint32_t &number,
                   const place *there);
    void store(unsigned at, unsigned size, std::uint32_t value, std::uint32_t mask = UINT32_MAX);
    void compare(unsigned at, unsigned size, std::uint32_t value, std::uint32_t mask);

    // The quick way (record_quick.cpp): false where it cannot be gone, without an error.
    bool quick(const record_row &row, unsigned at, Tcl_Obj *values);
    bool quick_field(const field_row &field, unsigned at, Tcl_Obj *value);
    bool quick_array(const field_row &field, unsigned at, Tcl_Obj *value);
    bool quick_number(const field_row &field, unsigned at, Tcl_Obj *value);
    bool quick_address(unsigned at, Tcl_Obj *value, holding holds);

    // A value for a message, which may end up in a log: not what is or may contain a key.
    const char *shown(Tcl_Obj *value) const { return secret_ ? "<key>" : Tcl_GetString(value); }

    bool refuse_dict(const record_row &row, Tcl_Obj *value, const place *here);
    /// Sets the error and returns false; frees the text, a new object.
    bool refuse(const place *here, Tcl_Obj *text);
    static void append_place(Tcl_Obj *text, const place *here);

    record_session &session_;
    unsigned char *const bytes_;
    const typing types_;
    bool secret_ = false; // the field being written is a key
    bool whole_ = false;  // the last record had all its fields
    int version_ = 0;     // of the last address, if it was written as text; else 0

    // Views of one union that are written together must agree, and so must paths.
    unsigned char *written_ = nullptr; // inside such a union, and with paths: the bits written
    std::optional<std::array<unsigned char, most_record_bytes>> by_path_; // these, with paths
    bool contradiction_ = false;

    // An address that a path has written as text: another path may write its family.
    struct noted_address
    {
        const record_row *row;
        unsigned at; // of the record that has both
        int version;
        std::string place;
        std::string text;
    };
    std::vector<noted_address> addresses_;
};

} // namespace qxsh
