// The data that package qx's library keeps per interpreter: field names as objects, records by
// name, and the lookup from a handle to its record's memory.
#pragma once

#include "commands/memory_access.h"
#include "library/qx/code_words.h"
#include "library/qx/record_holes.h"
#include "record_numbers.h"
#include "records/table.h"

#include <tcl.h>

#include <initializer_list>

namespace qxsh {

/// A record in readable memory.
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

    /// Finds the record behind a handle and checks that all of it can be read, and may be under
    /// strict memory. On failure returns false with an error in the interpreter; `found` is then
    /// unspecified.
    bool find(Tcl_Obj *handle, found_record &found);

    /// Whether the record can be written; if not, leaves an error that names the handle.
    bool check_writable(Tcl_Obj *handle, const found_record &found);

    /// The record type with this name, or null.
    const record_row *record(const char *name) const;

    /// A field's name: the same object each time, owned by the session.
    Tcl_Obj *name(const field_row &field) const { return names_[&field - field_rows]; }

    /// The bits in no field; see record_holes.h.
    hole_lists &holes() { return holes_; }

    /// The names of a record's fields, in their order.
    Tcl_Obj *const *names_of(const record_row &row) const { return names_ + row.first; }

    /// Whether the object already is a dict; reading it as a list would discard that form.
    bool is_dict(const Tcl_Obj *object) const { return object->typePtr == dict_type_; }

    /// The same of lists, and of both.
    bool is_list(const Tcl_Obj *object) const { return object->typePtr == list_type_; }
    bool is_container(const Tcl_Obj *object) const { return is_dict(object) || is_list(object); }

    /// Whether the object is a dict, or a list of other than one element. Its text may be long and
    /// is not asked for.
    bool is_structured(Tcl_Obj *object) const;

    /// Runs a command of the package's scripts, whose words are new or shared objects. Returns
    /// whether it succeeded; its result or its error is in the interpreter.
    bool run_script(const char *command, std::initializer_list<Tcl_Obj *> words) const;

    /// Reads a number from 0 to `greatest` into `value`, which is unchanged otherwise. Tells
    /// numbers out of range from text that is not a number.
    enum class taken { number, outside, no_number };
    taken take_number(Tcl_Obj *object, std::uint32_t greatest, std::uint32_t &value) const;

    /// Whether the object already is a number: then it is not a word.
    bool is_number(const Tcl_Obj *object) const
    {
        return object->typePtr == number_types_[0] || object->typePtr == number_types_[1];
    }

    /// The code words of fields and arguments.
    code_book &codes() { return codes_; }

    /// The same for an object that already is an integer; false if it is none, or out of range.
    bool take_small(const Tcl_Obj *object, std::uint32_t greatest, std::uint32_t &value) const
    {
        const long number = object->internalRep.longValue;
        if (object->typePtr != number_types_[0] || number < 0 ||
            static_cast<unsigned long>(number) > greatest)
            return false;
        value = static_cast<std::uint32_t>(number);
        return true;
    }

    Tcl_Interp *interp() const { return interp_; }

private:
    bool recognise(Tcl_Obj *handle, found_record &found);
    bool ask_module(Tcl_Obj *handle, found_record &found);
    // Set the error and return false.
    bool refuse_memory(Tcl_Obj *handle, Tcl_Obj *text);
    bool refuse_missing(Tcl_Obj *handle);

    Tcl_Interp *const interp_;
    const memory_access *access_ = nullptr; // null until the module is loaded
    Tcl_Obj **const names_;
    const Tcl_ObjType *dict_type_;
    const Tcl_ObjType *list_type_;
    const Tcl_ObjType *number_types_[2];
    const record_row *last_ = record_rows; // of the previous handle
    Tcl_HashTable records_;                // by name
    code_book codes_{*this};
    hole_lists holes_;
};

} // namespace qxsh
