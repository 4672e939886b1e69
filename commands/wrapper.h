// What every wrapper shares. A wrapper looks whether its words are as nearly all words are; if one
// is not, it has them converted and is called again with words that are. So what it does at once
// needs no stack frame, and all that takes time is in one place.
#pragma once

#include "helpers/guarded_memory.h"
#include "runtime/command_words.h"
#include "runtime/results.h"
#include "runtime/tcl_api.h"
#include "types.h"

namespace qxsh {

/// Counts and converts the words of a command, by their kinds in order, and calls its wrapper with
/// them. `usage` and `kinds` are the wrapper's own. The message of the first word that is refused
/// is the command's error.
int call_converted(Tcl_ObjCmdProc *wrapper, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[],
                   const char *usage, const word_kind *kinds);

/// Makes the pending fault of guarded_memory.h the command's error.
int report_memory_fault(Tcl_Interp *interp, const char *usage);

// The ends of commands that went to memory: their result, or the fault they met there.

inline int finish(Tcl_Interp *interp, const char *usage)
{
    if (pending_fault.happened) [[unlikely]]
        return report_memory_fault(interp, usage);
    return TCL_OK;
}

template <class Number> int finish(Tcl_Interp *interp, const char *usage, Number value)
{
    if (pending_fault.happened) [[unlikely]]
        return report_memory_fault(interp, usage);
    if constexpr (sizeof(Number) > 4)
        return set_low32_result(interp, value);
    else if constexpr (std::is_signed_v<Number>)
        return set_int_result(interp, value);
    else
        return set_unsigned_result(interp, value);
}

} // namespace qxsh
