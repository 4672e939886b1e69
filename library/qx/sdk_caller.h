// Calls SDK functions with records as dicts, for qx::call.
#pragma once

#include "library/qx/record_plan.h"
#include "library/qx/record_session.h"

namespace qxsh {

class sdk_caller
{
public:
    /// Both must outlive the caller.
    sdk_caller(record_session &session, plan_cache &plans);
    ~sdk_caller();
    sdk_caller(const sdk_caller &) = delete;
    sdk_caller &operator=(const sdk_caller &) = delete;

    /// The command `qx::call ?-allow STATUSES? ?-status NAME? ?-dict? ?-words? FUNCTION
    /// ?WORD ...?`. Sets the interpreter's result and returns TCL_OK or TCL_ERROR. Blocks that it
    /// creates are released in both cases.
    int run(int objc, Tcl_Obj *const objv[]);

    /// Whether there is a function of this name; if not, leaves an error.
    bool knows(Tcl_Obj *function) const { return find(function) != nullptr; }

    /// The same as `run`, for a function that is known and words that come from data: of a record
    /// they are dicts, lists or addresses, and the only handle is NULL. `allow` lists statuses that
    /// are not errors, or is null. `status` is what the function has returned.
    int call(Tcl_Obj *function, Tcl_Obj *allow, int count, Tcl_Obj *const words[],
             std::uint32_t &status);

    /// Whether `call` would take these words. What is not known yet is a word that begins with `$`,
    /// for an argument or an element of an array, and is not checked. If not, leaves an error.
    bool check(Tcl_Obj *function, int count, Tcl_Obj *const words[]);

private:
    class one_call;
    enum class origin : std::uint8_t { script, data, draft }; // of a call's words
    struct call_options
    {
        Tcl_Obj *allow = nullptr;  ///< statuses that are not errors; null: none
        Tcl_Obj *status = nullptr; ///< the variable that gets the status; null: none
        bool dict = false;         ///< the result is a dict in any case
        bool words = false;        ///< codes come as words
    };

    const call_row *find(Tcl_Obj *function) const;
    int call(const call_row &row, const call_options &options, origin from, int count,
             Tcl_Obj *const words[], std::uint32_t &status);
    const call_row *take_function(int objc, Tcl_Obj *const objv[], int &first,
                                  call_options &options);
    bool keep_status(const call_options &options, std::uint32_t status) const;

    record_session &session_;
    plan_cache &plans_;
    Tcl_HashTable calls_;   // by name
    Tcl_Obj **const words_; // by number of the call, then by number of the argument: commands, or
                            // null until they are needed
    Tcl_Obj *const free_;   // the command that releases a block
    Tcl_Obj *const zero_;
};

} // namespace qxsh
