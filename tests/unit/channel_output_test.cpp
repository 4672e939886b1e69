// Commands that print to a stdout which runs other commands while it takes their text: a channel
// written by a script, as `chan create` makes in Tcl 8.6. The channel here also serves Tcl 8.5.
#include "commands/sdk_call.h"
#include "commands/sdk_output.h"
#include "shell/demo.h"
#include "tests/unit/interpreter.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t most_bytes = 1000; // that the channel takes at once

// A stdout that keeps what it takes, and runs a script before it takes the first bytes.
class script_channel : public testing::Test
{
protected:
    script_channel() : channel_(Tcl_CreateChannel(&type, "taker", this, TCL_WRITABLE))
    {
        EXPECT_EQ(Demo_Init(tcl_), TCL_OK);
        Tcl_SetStdChannel(channel_, TCL_STDOUT);
        Tcl_RegisterChannel(tcl_, channel_);
        Tcl_SetChannelOption(tcl_, channel_, "-translation", "lf");
        qxsh::send_output_to_tcl();
    }
    ~script_channel() override
    {
        if (channel_ != nullptr)
            Tcl_UnregisterChannel(tcl_, channel_);
        Tcl_SetStdChannel(nullptr, TCL_STDOUT);
    }

    void set_buffering(const char *buffering)
    {
        Tcl_SetChannelOption(tcl_, channel_, "-buffering", buffering);
    }

    /// What a dump of a filled record prints.
    std::string dumped(const std::string &command)
    {
        text_.clear();
        tcl_.value(command);
        Tcl_Flush(channel_);
        return std::exchange(text_, {});
    }

    interpreter tcl_;
    Tcl_Channel channel_;
    std::string text_;   // what the channel has taken
    std::string script_; // for the next write

private:
    static int close(ClientData data, Tcl_Interp *)
    {
        static_cast<script_channel *>(data)->channel_ = nullptr;
        return 0;
    }
    static int write(ClientData data, const char *bytes, int size, int *)
    {
        auto &self = *static_cast<script_channel *>(data);
        const std::string script = std::exchange(self.script_, {});
        // Its own commands may print as well, and the result is that of the command which writes.
        if (!script.empty()) {
            const Tcl_InterpState state = Tcl_SaveInterpState(self.tcl_, TCL_OK);
            self.tcl_.value(script);
            Tcl_RestoreInterpState(self.tcl_, state);
        }
        const auto taken = std::min(static_cast<std::size_t>(size), most_bytes);
        self.text_.append(bytes, taken);
        return static_cast<int>(taken);
    }
    static void watch(ClientData, int) {}
    static int handle(ClientData, int, ClientData *) { return TCL_ERROR; }

    static Tcl_ChannelType type;
};

char type_name[] = "taker"; // Tcl 8.5 declares it without const

Tcl_ChannelType script_channel::type = {type_name, TCL_CHANNEL_VERSION_5,
                                        close,     nullptr,
                                        write,     nullptr,
                                        nullptr,   nullptr,
                                        watch,     handle,
                                        nullptr,   nullptr,
                                        nullptr,   nullptr,
                                        nullptr,   nullptr,
                                        nullptr};

TEST_F(script_channel, a_dump_that_is_interrupted_by_another_one)
{
    set_buffering("none");
    tcl_.value("set flow [qx_flow_create]; qx_flow_set_flow_id $flow 4660\n"
               "qx_flow_set_swid_array $flow 171 4294967295\n"
               "set other [qx_flow_create]; qx_flow_set_flow_id $other 43981\n"
               "set rule [qx_rule_hash_create]\n"
               "set vlan [qx_vlan_create]; qx_vlan_set_vlan_id $vlan 77");
    const auto flow = dumped("qx_flow_dump $flow");
    ASSERT_GT(flow.size(), most_bytes);
    ASSERT_NE(flow.find("flow_id = 0x1234 \n"), flow.npos);
    for (const char *command : {"qx_flow_dump $other", "qx_rule_hash_dump $rule",
                                "qx_vlan_dump $vlan", "qx_flow_dump $flow"}) {
        const auto inner = dumped(command);
        script_ = command;
        EXPECT_EQ(dumped("qx_flow_dump $flow"), inner + flow) << command;
    }
    tcl_.value("foreach each {flow other rule vlan} { qx_data_free [set $each] }");
}

TEST_F(script_channel, a_dump_of_a_record_that_is_freed_meanwhile)
{
    set_buffering("none");
    const auto right = dumped("set flow [qx_flow_create]; qx_flow_dump $flow");
    script_ = "qx_data_free $flow";
    EXPECT_EQ(dumped("qx_flow_dump $flow"), right);
}

// What an SDK call has to tell of itself is not that of a command which ran in between.
TEST_F(script_channel, an_sdk_call_before_which_other_commands_run)
{
    set_buffering("full");
    tcl_.value("set cell [qx_uint8_create 9]");
    script_ = "qx_data_free [qx_flow_create]; set ran yes";
    Tcl_WriteChars(channel_, "before", -1);
    EXPECT_EQ(tcl_.value("qx_qos_dscp_map_get 0 1 46 $cell"), "0");
    EXPECT_EQ(tcl_.variable("ran"), "yes");
    EXPECT_EQ(text_, "before");
    EXPECT_EQ(qxsh::history.interp, nullptr);
    const auto &call = qxsh::history.calls[(qxsh::history.count - 1) % qxsh::call_history::length];
    EXPECT_STREQ(qxsh::name_of(call.command), "qx_qos_dscp_map_get");
    EXPECT_EQ(call.status, 0u);
    tcl_.value("qx_data_free $cell");
}

// A dump ends with the channel, and the next one is dropped, since there is no stdout.
TEST_F(script_channel, a_dump_during_which_stdout_is_closed)
{
    set_buffering("none");
    const auto right = dumped("set flow [qx_flow_create]; qx_flow_dump $flow");
    script_ = "close taker";
    tcl_.value("qx_flow_dump $flow");
    EXPECT_EQ(channel_, nullptr);
    EXPECT_EQ(text_, right.substr(0, most_bytes));
    tcl_.value("qx_flow_dump $flow; qx_data_free $flow");
    EXPECT_EQ(text_, right.substr(0, most_bytes));
}

} // namespace
