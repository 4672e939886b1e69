// The code that all wrappers share. A wrapper checks whether its words are ready
// (runtime/command_words.h); if one is not, it has all of them converted and is called again with
// the converted words. So its fast path needs no stack frame, and the slow path is shared.
#pragma once

#include "commands/command_table.h"
#include "helpers/guarded_memory.h"
#include "runtime/command_words.h"
#include "runtime/results.h"
#include "runtime/tcl_api.h"
#include "types.h"

namespace qxsh {

/// The type of a word of this kind; null records for the kinds that are not handles of one type.
inline wanted_type type_of(word_kind kind)
{
    if (kind < word_handle)
        return {};
    return {swig_types[kind - word_handle], &swig_expected_types[kind - word_handle]};
}

/// Counts and converts the words of a command in order and calls its wrapper with the converted
/// words. Returns the wrapper's result, or TCL_ERROR with the message for the first bad word.
int call_converted(command_number command, Tcl_Interp *interp, int objc, Tcl_Obj *const objv[]);

/// Turns the pending fault of guarded_memory.h into the command's error and clears it. Returns
/// TCL_ERROR.
int report_memory_fault(Tcl_Interp *interp, command_number command);

// The ends of commands that accessed memory: they set the result, if the command has one, and
// return TCL_OK; or they report the fault.

inline int finish(Tcl_Interp *interp, command_number command)
{
    if (pending_fault.happened) [[unlikely]]
        return report_memory_fault(interp, command);
    return TCL_OK;
}

template <class Number> int finish(Tcl_Interp *interp, command_number command, Number value)
{
    if (pending_fault.happened) [[unlikely]]
        return report_memory_fault(interp, command);
    if constexpr (sizeof(Number) > 4)
        return set_low32_result(interp, value);
    else if constexpr (std::is_signed_v<Number>)
        return set_int_result(interp, value);
    else
        return set_unsigned_result(interp, value);
}

} // namespace qxsh
