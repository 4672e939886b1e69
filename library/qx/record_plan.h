// Plans for reading records: a plan says how each field is shown, for one choice of views, with or
// without addresses as text and codes as words. Plans are made on first use and kept until the
// profile changes.
#pragma once

#include "library/qx/record_session.h"

#include <span>

namespace qxsh {

enum class shown_as : std::uint8_t {
    number,
    bits,
    code,
    numbers,
    codes,
    mac,
    ipv4,
    ipv6,
    ip,
    record,
    records
};

struct record_plan;

/// A number of a record that means one view of a union in it.
struct view_choice
{
    const view_row *row; ///< where the number is, and the view
    std::uint32_t number;
};

struct plan_step
{
    Tcl_Obj *name;
    const field_row *field;
    const record_plan *nested;        ///< of a record or an array of records; else null
    const field_row *family;          ///< the field with an address's family, or null
    const code_list *codes;           ///< of a code that is shown by its word, else null
    const address_families *families; ///< null if addresses stay numbers
    shown_as what;
    bool named;   ///< of a view of a union: the options name it
    holes hidden; ///< of a view: the bits of the union that it does not show
    std::span<const view_choice> choices; ///< of a union: its views by a number of the record
};

struct record_plan
{
    const record_row *row;
    unsigned count;
    plan_step *steps;  ///< of all fields; of a union, of all its views
    bool named;        ///< of a union: the options name some of its views
    holes padding;     ///< in no field
    record_plan *next; ///< in the list of all plans, which frees them
};

/// The views to show, a Tcl list of names, whether addresses stay numbers, and whether codes are
/// shown by their words.
struct plan_options
{
    Tcl_Obj *views; ///< null: those that the records' numbers choose, else the first largest ones
    bool raw;
    bool words;
};

class plan_cache
{
public:
    explicit plan_cache(record_session &session);
    ~plan_cache();
    plan_cache(const plan_cache &) = delete;
    plan_cache &operator=(const plan_cache &) = delete;

    /// The plan of a record, owned by the cache. Returns null, with an error in the interpreter, if
    /// the views are not a list or one of them is not in the record, or if the profile cannot be
    /// read.
    const record_plan *plan(const record_row &record, plan_options options);

    /// Drops all plans: another profile is in use.
    void clear();

private:
    const record_plan *plain_plan(const record_row &record, plan_options options);
    const record_plan *&plain_place(const record_row &record, plan_options options) const;
    const record_plan *plan_of_views(const record_row &record, plan_options options);
    void free_plans(const record_plan *kept); // those made after this one

    record_session &session_;
    const record_plan **const plain_; // four per record: with text or raw, numbers or words
    Tcl_HashTable of_views_;
    record_plan *all_ = nullptr;

    friend class plan_maker;
};

/// What a union is shown as: views, and bits that none of them shows.
struct shown_views
{
    shown_views(const record_plan &plan, const unsigned char *memory, const plan_step *chosen);

    unsigned count = 0;
    const plan_step *steps[most_fields];
    bool is_all = true;                    ///< nothing is left for `rest`
    unsigned char rest[most_record_bytes]; ///< the bits that no view shows; unset if is_all
};

/// The view that a number of the record at `record` chooses for the union of a step; null if none.
const plan_step *chosen_view(const plan_step &step, const unsigned char *record);

/// Calls put(offset, bytes, count) for each run of bytes that are not all zero.
template <class Put> void for_each_run(const unsigned char *bytes, unsigned size, Put put)
{
    for (unsigned start = 0; start < size; ++start) {
        unsigned end = start;
        while (end < size && bytes[end] != 0)
            ++end;
        if (end != start)
            put(start, bytes + start, end - start);
        start = end;
    }
}

/// Writes 0x and two digits for each byte, and returns the end.
char *put_bytes(char *text, const unsigned char *bytes, unsigned count);

/// Copies the bits of a record's padding to `bits`, and zeroes the others.
void copy_padding(const record_plan &plan, const unsigned char *memory, unsigned char *bits);

/// A new dict (reference count 0, in list form) of the record at `memory`, which must be readable.
/// With its padding, which is only shown where it is not zero, it holds every bit of the record.
Tcl_Obj *read_record(const record_plan &plan, const unsigned char *memory);

/// The same for one field of the record, or for its element `index`; -1 stands for the whole field.
Tcl_Obj *read_field(const record_plan &plan, const field_row &field, int index,
                    const unsigned char *memory);

/// A new object with the bytes of a record from one on, up to the next without a bit in no field:
/// 0x and two digits for each. The bits of fields are 0.
Tcl_Obj *read_padding(const record_row &row, unsigned from, const unsigned char *memory);

/// The text of an address, and its end; null if the step is shown as numbers or as a record.
char *put_address(char *text, const plan_step &step, const unsigned char *record);

} // namespace qxsh
