// Writes the fields that a dict names into a record's bytes. Everything in the dict is checked; a
// mistake leaves an error that names its place, and bytes that are not to be used.
#pragma once

#include "library/qx/record_session.h"
#include "records/address_text.h"
#include "records/values.h"

namespace qxsh {

class record_writer
{
public:
    /// `bytes` are the record's, most_record_bytes at most.
    record_writer(record_session &session, unsigned char *bytes) : session_(session), bytes_(bytes)
    {}

    /// False: the interpreter has the error, its code {QX VALUE <place>}.
    bool write(const record_row &row, Tcl_Obj *values);

private:
    // Where in the dict: a field, or an element of one.
    struct place
    {
        const place *outer; // null: the field is the record's own
        const char *name;   // null: it is element number `index`
        int index;
    };

    // Keys and values of a dict: a dict in a list's form is read as it is.
    class entries;

    bool record(const record_row &row, unsigned at, Tcl_Obj *values, const place *here);
    bool fields(const record_row &row, unsigned at, entries &all, const place *here);
    bool check_family(const record_row &row, Tcl_Obj *family, int version, const place &address,
                      Tcl_Obj *text);
    bool refuse_name(const record_row &row, const place &here);
    void note_views(const record_row &row, const place *here);

    bool field(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool nested(const record_row &row, unsigned at, Tcl_Obj *value, const place &here);
    bool records(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool array(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool mac(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool number(const field_row &field, unsigned at, Tcl_Obj *value, const place &here);
    bool numbers(unsigned size, unsigned at, int count, Tcl_Obj *const elements[],
                 const place &here);
    bool address(unsigned at, Tcl_Obj *value, holding holds, const place &here);
    bool prefix(const record_row &row, unsigned at, Tcl_Obj *value, const place &here);

    bool elements(Tcl_Obj *value, int wanted, Tcl_Obj **&elements, const place &here);
    bool take(Tcl_Obj *value, std::uint32_t greatest, std::uint32_t &number, const place &here,
              int index = -1);
    void store(unsigned at, unsigned size, std::uint32_t value, std::uint32_t mask = UINT32_MAX);
    void compare(unsigned at, unsigned size, std::uint32_t value, std::uint32_t mask);

    /// Leaves the error; takes the text, an object of its own.
    bool refuse(const place *here, Tcl_Obj *text);
    static void append_place(Tcl_Obj *text, const place *here);

    record_session &session_;
    unsigned char *const bytes_;
    int version_ = 0; // of the address that was written last; 0: it was none in words

    // Views of a union that are written together have to agree.
    unsigned char *written_ = nullptr; // inside such a union: which bits are
    bool contradiction_ = false;
    Tcl_Obj *unions_ = nullptr; // their places
};

} // namespace qxsh
