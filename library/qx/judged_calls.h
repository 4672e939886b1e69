// Turns statuses of SDK functions into errors, for qx::check with a script.
#pragma once

#include <tcl.h>

namespace qxsh {

/// Creates two commands. `::qx::status::judge_calls NAMES` makes each of these commands, unless it
/// returns 0, call `::qx::status::left WORDS CODE RESULT` at its end; an error there becomes the
/// command's error. Names that are not commands are ignored. `::qx::status::leave_calls` undoes it.
void create_judging_commands(Tcl_Interp *interp);

/// While one of these exists, calls are not judged, since its owner judges them.
class unjudged_calls
{
public:
    unjudged_calls() { ++count_; }
    ~unjudged_calls() { --count_; }
    unjudged_calls(const unjudged_calls &) = delete;
    unjudged_calls &operator=(const unjudged_calls &) = delete;

    static bool any() { return count_ > 0; }

private:
    static inline int count_ = 0;
};

} // namespace qxsh
