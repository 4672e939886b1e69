// How a record is shown: a plan says for each of its fields what becomes of it, for one choice of
// views and with or without addresses as texts. Plans are made when they are first wanted and kept.
#pragma once

#include "library/qx/record_session.h"

namespace qxsh {

enum class shown_as : std::uint8_t { number, bits, numbers, mac, ipv4, ipv6, ip, record, records };

struct record_plan;

struct plan_step
{
    Tcl_Obj *name;
    const field_row *field;
    const record_plan *nested; ///< of a record, or of each in an array
    const field_row *family;   ///< beside an address: which it is; null if nothing says so
    shown_as what;
};

struct record_plan
{
    unsigned count;
    plan_step *steps;
    record_plan *next; ///< all plans are chained, to be freed
};

/// The views to show, as a list of words, and whether addresses stay numbers.
struct plan_options
{
    Tcl_Obj *views; ///< null: of each union the first of the largest
    bool raw;
};

class plan_cache
{
public:
    explicit plan_cache(record_session &session);
    ~plan_cache();
    plan_cache(const plan_cache &) = delete;
    plan_cache &operator=(const plan_cache &) = delete;

    /// The plan of a record. Null, with an error in the interpreter: a word names no view of it.
    const record_plan *plan(const record_row &record, plan_options options);

private:
    const record_plan *plain_plan(const record_row &record, bool raw);
    const record_plan *plan_of_views(const record_row &record, plan_options options);

    record_session &session_;
    const record_plan **const plain_; // of each record: with texts, raw
    Tcl_HashTable of_views_;
    record_plan *all_ = nullptr;

    friend class plan_maker;
};

/// A new object with the record as a dict, in a list's form.
Tcl_Obj *read_record(const record_plan &plan, const unsigned char *memory);

} // namespace qxsh
