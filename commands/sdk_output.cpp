// Output order between Tcl, the helpers and the SDK; see sdk_output.h.
#include "commands/sdk_output.h"

#include "helpers/output.h"

#include <tcl.h>

#include <cstdio>

namespace qxsh {

static void write_to_tcl_stdout(const char *bytes, std::size_t size)
{
    if (Tcl_Channel channel = Tcl_GetStdChannel(TCL_STDOUT); channel != nullptr)
        Tcl_Write(channel, bytes, static_cast<int>(size));
}

void send_output_to_tcl() { set_output(write_to_tcl_stdout); }

sdk_output::sdk_output()
{
    Tcl_Channel channel = Tcl_GetStdChannel(TCL_STDOUT);
    if (channel != nullptr && Tcl_OutputBuffered(channel) > 0)
        Tcl_Flush(channel);
}

// Costs no system call when the SDK printed nothing.
sdk_output::~sdk_output() { std::fflush(stdout); }

} // namespace qxsh
