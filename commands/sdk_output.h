// Keeps one order of output: what helpers print goes through Tcl's stdout channel, and around a
// call of the SDK, which prints through C's stdout, whatever is buffered comes out first.
#pragma once

namespace qxsh {

/// Points the helpers' output at Tcl's stdout channel, whatever it is at the time of printing. With
/// no such channel (closed) the text is dropped.
void send_output_to_tcl();

/// Makes C's stdout write at once, so that it never holds anything back. For the shell's process
/// entry only: in another program the stream may be in use already, and is flushed after each call
/// instead.
void unbuffer_c_output();

/// Stands around one SDK call: before it Tcl's stdout is flushed, after it C's.
class sdk_output
{
public:
    sdk_output();
    ~sdk_output();
    sdk_output(const sdk_output &) = delete;
    sdk_output &operator=(const sdk_output &) = delete;
};

} // namespace qxsh
