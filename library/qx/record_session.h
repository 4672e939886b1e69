// What the library of the package qx keeps for an interpreter: names of fields as objects, records
// by name, and the way from a handle to a record's memory.
#pragma once

#include "commands/memory_access.h"
#include "record_numbers.h"
#include "records/table.h"

#include <tcl.h>

namespace qxsh {

/// A record in memory that can be read.
struct found_record
{
    const record_row *row;
    unsigned char *memory;
};

class record_session
{
public:
    explicit record_session(Tcl_Interp *interp);
    ~record_session();
    record_session(const record_session &) = delete;
    record_session &operator=(const record_session &) = delete;

    /// The record behind a handle. False: the interpreter has the error.
    bool find(Tcl_Obj *handle, found_record &found);

    /// False, with an error, unless it can be written.
    bool check_writable(Tcl_Obj *handle, const found_record &found);

    /// The record of a name; null if there is none.
    const record_row *record(const char *name) const;

    /// A field's name; the same object each time.
    Tcl_Obj *name(const field_row &field) const { return names_[&field - field_rows]; }

    /// Whether the object is a dict by now, which asking for a list would end.
    bool is_dict(const Tcl_Obj *object) const { return object->typePtr == dict_type_; }

    /// Takes a number from 0 to `greatest`. A text that is none, and a number outside, are told
    /// apart.
    enum class taken { number, outside, no_number };
    taken take_number(Tcl_Obj *object, std::uint32_t greatest, std::uint32_t &value) const;

    Tcl_Interp *interp() const { return interp_; }

private:
    bool recognise(Tcl_Obj *handle, found_record &found);
    bool ask_module(Tcl_Obj *handle, found_record &found);
    bool refuse_memory(Tcl_Obj *handle);

    Tcl_Interp *const interp_;
    const memory_access *access_ = nullptr; // null until the module is loaded
    Tcl_Obj **const names_;
    const Tcl_ObjType *dict_type_;
    const Tcl_ObjType *number_types_[2];
    const record_row *last_ = record_rows; // that of the handle before
    Tcl_HashTable records_;                // by name
};

} // namespace qxsh
