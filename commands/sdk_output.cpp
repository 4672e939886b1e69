// Output order between Tcl, the helpers and the SDK; see sdk_output.h.
#include "commands/sdk_output.h"

#include "helpers/output.h"
#include "runtime/tcl_api.h"

#include <cstdio>
#include <cstring>

namespace qxsh {

constinit stdout_state stdout_now = {nullptr, false};

static constinit Tcl_Channel open_stdout = nullptr; // null: not known yet, or none
static constinit bool calls_are_prepared = false;

static void use_stdout(Tcl_Channel channel)
{
    open_stdout = channel;
    stdout_now.tcl_stdout = calls_are_prepared ? nullptr : channel;
}

void prepare_each_call(bool on)
{
    calls_are_prepared = on;
    use_stdout(open_stdout);
}

static void forget_channel(ClientData)
{
    use_stdout(nullptr);
}

// Cached, because looking up the channel takes longer than flushing it.
static Tcl_Channel tcl_stdout()
{
    if (open_stdout == nullptr) {
        use_stdout(Tcl_GetStdChannel(TCL_STDOUT));
        if (open_stdout != nullptr)
            Tcl_CreateCloseHandler(open_stdout, forget_channel, nullptr);
    }
    return open_stdout;
}

// Texts from this size on bypass Tcl's buffer: copying them takes longer than a system call.
constexpr std::size_t large_text = 1024;

static bool line_ends_stay(Tcl_Channel channel)
{
    Tcl_DString translation;
    Tcl_DStringInit(&translation);
    const bool known =
        Tcl_GetChannelOption(nullptr, channel, "-translation", &translation) == TCL_OK;
    const bool stay = known && std::strcmp(Tcl_DStringValue(&translation), "lf") == 0;
    Tcl_DStringFree(&translation);
    return stay;
}

// A script may have pushed a filter onto the channel.
static bool filtered(Tcl_Channel channel)
{
    return Tcl_GetStackedChannel(Tcl_GetTopChannel(channel)) != nullptr;
}

// A channel that does not block may keep some of its buffer for later, and calls that success.
static bool emptied(Tcl_Channel channel)
{
    return Tcl_OutputBuffered(channel) == 0 ||
           (Tcl_Flush(channel) == TCL_OK && open_stdout == channel &&
            Tcl_OutputBuffered(channel) == 0);
}

// Flushes Tcl's buffer and writes past it. Returns the number of bytes written. A script may close
// the channel while it takes a text.
static std::size_t write_directly(Tcl_Channel channel, const char *bytes, std::size_t size)
{
    if (filtered(channel) || !line_ends_stay(channel) || !emptied(channel))
        return 0;
    std::size_t written = 0;
    while (written < size && open_stdout == channel) {
        const int count = Tcl_WriteRaw(channel, bytes + written, static_cast<int>(size - written));
        if (count <= 0)
            break;
        written += static_cast<std::size_t>(count);
    }
    return written;
}

static void write_to_tcl_stdout(const char *bytes, std::size_t size)
{
    Tcl_Channel channel = tcl_stdout();
    const std::size_t written =
        channel != nullptr && size >= large_text ? write_directly(channel, bytes, size) : 0;
    if (written < size && (channel = tcl_stdout()) != nullptr)
        Tcl_Write(channel, bytes + written, static_cast<int>(size - written));
}

void send_output_to_tcl()
{
    set_output(write_to_tcl_stdout);
}

void unbuffer_c_output()
{
    stdout_now.c_stdout_is_direct = std::setvbuf(stdout, nullptr, _IONBF, 0) == 0;
}

void flush_tcl_output()
{
    Tcl_Channel channel = tcl_stdout();
    if (channel != nullptr && Tcl_OutputBuffered(channel) > 0)
        Tcl_Flush(channel);
}

void keep_c_output_in_order()
{
    std::fflush(stdout);
    if (stdout_now.c_stdout_is_direct)
        unbuffer_c_output();
}

} // namespace qxsh
