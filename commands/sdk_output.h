// Keeps output in order: helpers print through Tcl's stdout channel, the SDK through C's stdout,
// and each is flushed before the other is used.
#pragma once

#include "runtime/tcl_api.h"

namespace qxsh {

/// Directs the helpers' output to the channel that is Tcl's stdout at the time of printing. If
/// there is none (closed), the text is dropped.
void send_output_to_tcl();

/// Makes C's stdout unbuffered. For the shell's process entry only: in another program the stream
/// may already be in use, and is flushed after each call instead.
void unbuffer_c_output();

/// What SDK calls check.
struct stdout_state
{
    Tcl_Channel tcl_stdout;  ///< while it is open; null: not known yet, none, or calls are prepared
    bool c_stdout_is_direct; ///< C's stdout is unbuffered
};
[[gnu::visibility("hidden")]] extern stdout_state stdout_now;

/// Whether something else is to be done before each SDK call: then tcl_stdout is always null.
void prepare_each_call(bool on);

/// Flushes Tcl's stdout, if it is open and holds anything.
void flush_tcl_output();

/// Flushes C's stdout, and makes it unbuffered again if unbuffer_c_output has done so, since a
/// library may have given it a buffer. Costs no system call if it is empty.
void keep_c_output_in_order();

} // namespace qxsh
