// Keeps one order of output: what helpers print goes through Tcl's stdout channel, and around a
// call of the SDK, which prints through C's stdout, whatever is buffered comes out first.
#pragma once

#include "runtime/tcl_api.h"

namespace qxsh {

/// Points the helpers' output at Tcl's stdout channel, whatever it is at the time of printing. With
/// no such channel (closed) the text is dropped.
void send_output_to_tcl();

/// Makes C's stdout write at once, so that it never holds anything back. For the shell's process
/// entry only: in another program the stream may be in use already, and is flushed after each call
/// instead.
void unbuffer_c_output();

/// What the two below look at, on every call of the SDK.
struct output_state {
    Tcl_Channel tcl_stdout;  ///< as long as it is open; null: not known yet, or none
    bool c_stdout_is_direct; ///< C's stdout holds nothing back
};
extern output_state output;

/// Writes out what Tcl's stdout holds back.
void flush_tcl_output();

/// Writes out what C's stdout holds back. Costs no system call if that is nothing.
void flush_c_output();

} // namespace qxsh
