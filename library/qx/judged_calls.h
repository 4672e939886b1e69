// Turns statuses of SDK functions into errors, for qx::check with a script.
#pragma once

#include <tcl.h>

#include <utility>

namespace qxsh {

/// Creates two commands. `::qx::status::judge_calls NAMES` makes each of these commands, unless it
/// returns 0, call `::qx::status::left WORDS CODE RESULT` at its end; an error there becomes the
/// command's error. Names that are not commands are ignored. `::qx::status::leave_calls` undoes it.
void create_judging_commands(Tcl_Interp *interp);

/// Lets the SDK function that its owner calls next be unjudged, since the owner judges it.
class unjudged_call
{
public:
    unjudged_call() { next_ = true; }
    ~unjudged_call() { next_ = false; }
    unjudged_call(const unjudged_call &) = delete;
    unjudged_call &operator=(const unjudged_call &) = delete;

    /// Whether the function that begins is the one.
    static bool begins() { return std::exchange(next_, false); }

private:
    static inline bool next_ = false;
};

} // namespace qxsh
