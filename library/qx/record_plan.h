// Plans for reading records: a plan says how each field is shown, for one choice of views, with or
// without addresses as text and codes as words. Plans are made on first use and kept until the
// profile changes.
#pragma once

#include "library/qx/record_session.h"

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

struct plan_step
{
    Tcl_Obj *name;
    const field_row *field;
    const record_plan *nested;        ///< of a record or an array of records; else null
    const field_row *family;          ///< the field with an address's family, or null
    const code_list *codes;           ///< of a code that is shown by its word, else null
    const address_families *families; ///< null if addresses stay numbers
    shown_as what;
};

struct record_plan
{
    unsigned count;
    plan_step *steps;
    record_plan *next; ///< in the list of all plans, which frees them
};

/// The views to show, a Tcl list of names, whether addresses stay numbers, and whether codes are
/// shown by their words.
struct plan_options
{
    Tcl_Obj *views; ///< null: the first largest one of each union
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

/// A new dict (reference count 0, in list form) of the record at `memory`, which must be readable.
Tcl_Obj *read_record(const record_plan &plan, const unsigned char *memory);

/// The same for one field of the record, which the plan must show, or for its element `index`; -1
/// stands for the whole field.
Tcl_Obj *read_field(const record_plan &plan, const field_row &field, int index,
                    const unsigned char *memory);

} // namespace qxsh
