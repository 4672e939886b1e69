// Package qx without memory: each allocation that a command's library, or the block memory behind
// it, makes fails once, in turn. The command then fails as commands do, nothing is lost or half
// written, and the same command works again. Tcl's own memory is not part of it.
#include "commands/sdk_output.h"
#include "helpers/block_memory.h"
#include "shell/demo.h"
#include "tests/unit/interpreter.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>

extern "C" int Qxmemory_Init(Tcl_Interp *interp);

// ------------------------------------------------------------------ memory that ends when told to

static int left = 0; // allocations until the one that fails; 0: none will
static bool has_failed = false;
static int pieces = 0; // of the C++ library
static int blocks = 0;

static bool fails()
{
    if (left == 0 || --left != 0)
        return false;
    has_failed = true;
    return true;
}

void *operator new(std::size_t size)
{
    void *const piece = fails() ? nullptr : std::malloc(size != 0 ? size : 1);
    if (piece == nullptr)
        throw std::bad_alloc{};
    ++pieces;
    return piece;
}
void *operator new[](std::size_t size)
{
    return operator new(size);
}
void operator delete(void *piece) noexcept
{
    pieces -= piece != nullptr ? 1 : 0;
    std::free(piece);
}
void operator delete(void *piece, std::size_t) noexcept
{
    operator delete(piece);
}
void operator delete[](void *piece) noexcept
{
    operator delete(piece);
}
void operator delete[](void *piece, std::size_t) noexcept
{
    operator delete(piece);
}

// The linker puts the second of each pair in place of the function.
void *real_allocate(std::uint32_t size) asm("__real__ZN4qxsh14allocate_blockEj");
void *counted_allocate(std::uint32_t size) asm("__wrap__ZN4qxsh14allocate_blockEj");
void real_free(void *block) asm("__real__ZN4qxsh10free_blockEPv");
void counted_free(void *block) asm("__wrap__ZN4qxsh10free_blockEPv");

void *counted_allocate(std::uint32_t size)
{
    void *const block = fails() ? nullptr : real_allocate(size);
    blocks += block != nullptr ? 1 : 0;
    return block;
}
void counted_free(void *block)
{
    blocks -= block != nullptr ? 1 : 0;
    real_free(block);
}

namespace {

using namespace qxsh;

// ---------------------------------------------------------------------------------- the commands

class package_memory : public testing::Test
{
protected:
    // The simulator takes its orders from the same file as long as the process runs.
    static void SetUpTestSuite()
    {
        folder_ = std::filesystem::temp_directory_path() / "package_memory.XXXXXX";
        ASSERT_NE(mkdtemp(folder_.data()), nullptr);
        shared_ = std::make_unique<interpreter>();
        ASSERT_EQ(Demo_Init(*shared_), TCL_OK) << shared_->result();
        shared_->value("source {" QXSH_PACKAGE_QX "/qx.tcl}");
        ASSERT_EQ(Qxmemory_Init(*shared_), TCL_OK) << shared_->result();
        shared_->value("set folder {" + folder_ + "}; qx::sim::attach $folder/control");
    }
    static void TearDownTestSuite()
    {
        shared_->value("qx::sim::detach");
        shared_.reset();
        std::filesystem::remove_all(folder_);
    }

    // Evaluates the command, of which allocation `number` fails.
    int without(int number, const held_object &command)
    {
        has_failed = false;
        left = number;
        const int code = Tcl_EvalObjEx(tcl_, command, TCL_EVAL_GLOBAL);
        left = 0;
        return code;
    }

    void expect_no_memory(int code, const std::string &what)
    {
        EXPECT_EQ(code, TCL_ERROR) << what;
        const std::string kind = tcl_.error_code();
        EXPECT_TRUE(kind.starts_with("QX MEMORY ") || kind == "QX_STATUS 3 QX_NO_MEMORY")
            << what << ": " << kind << ": " << tcl_.result();
    }

    // Lets each allocation of a command fail; returns how many there are. `state` is a script whose
    // result the failures must not change; `prepare` runs before each one. Without failure, the
    // command ends with `usual`.
    int fail_each(const std::string &prepare, const std::string &command,
                  const std::string &state = {}, int usual = TCL_OK)
    {
        const held_object script{command};
        tcl_.value(prepare);
        EXPECT_EQ(tcl_.eval(command), usual) << command << ": " << tcl_.result();
        const std::string answer = tcl_.result();
        for (int number = 1;; ++number) {
            const std::string what = command + ", allocation " + std::to_string(number);
            tcl_.value(prepare);
            const std::string before = tcl_.value(state);
            const int blocks_before = blocks;
            const int pieces_before = pieces;
            const int code = without(number, script);
            const int lost = pieces - pieces_before;
            if (!has_failed) {
                EXPECT_EQ(code, usual) << what << ": " << tcl_.result();
                return number - 1;
            }
            expect_no_memory(code, what);
            EXPECT_EQ(blocks, blocks_before) << what;
            EXPECT_EQ(lost, 0) << what;
            EXPECT_EQ(tcl_.value(state), before) << what;
            EXPECT_EQ(tcl_.eval(command), usual) << what << ", then: " << tcl_.result();
            EXPECT_EQ(tcl_.result(), answer) << what;
            if (HasFailure())
                return number;
        }
    }

    static inline std::unique_ptr<interpreter> shared_;
    static inline std::string folder_;
    interpreter &tcl_ = *shared_;
};

// Each in the example of its page, which succeeds; so does all that it does with memory.
TEST_F(package_memory, each_of_the_sdk_functions)
{
    int functions = 0;
    int failures = 0;
    for (; functions < std::stoi(tcl_.value("llength [qx::catalogue::calls]")); ++functions) {
        tcl_.value("set lines [qx::example::call [lindex [qx::catalogue::calls] " +
                   std::to_string(functions) + "]]");
        const std::string before = tcl_.value("join [lrange $lines 0 end-1] \\n");
        const int made = fail_each("qx::sim::reset\n" + before, tcl_.value("lindex $lines end"));
        const int pointers = std::stoi(tcl_.value(
            "set pointers 0; foreach argument [dict get [qx::catalogue::call [lindex"
            " [qx::catalogue::calls] " +
            std::to_string(functions) +
            "]] arguments] {"
            " incr pointers [string match *\\\\* [dict get $argument type]] }; set pointers"));
        EXPECT_GE(made, pointers);
        failures += made;
    }
    EXPECT_EQ(functions, 83);
    EXPECT_GE(failures, 50);
}

TEST_F(package_memory, a_call_with_an_array_of_records)
{
    tcl_.value("set one [qx::new qx_ipsec_sa_t {spi 300 sa_dir 1}]");
    EXPECT_GT(
        fail_each(
            "qx::sim::reset; qx::call qx_ipsec_init 0;"
            "set spd [qx::call qx_ipsec_spd_add 0 1 1];"
            "set policy [qx::call qx_ipsec_policy_add 0 $spd {policy_action 2 selector_count 1}]",
            "qx::call qx_ipsec_sa_add 0 $spd $policy [list {spi 301 sa_dir 1} $one] 0",
            "qx::get $one"),
        1);
}

TEST_F(package_memory, a_new_record)
{
    int records = 0;
    for (; records < std::stoi(tcl_.value("llength [qx::catalogue::records]")); ++records) {
        tcl_.value("set type [lindex [qx::catalogue::records] " + std::to_string(records) + "]");
        EXPECT_GE(fail_each("", "qx_data_free [qx::new $type [qx::template $type]]"), 1);
    }
    EXPECT_GT(records, 30);
    EXPECT_EQ(fail_each("", "qx::with flow qx_flow_t {flow_id 7} { qx::get $flow flow_id }"), 1);
}

constexpr const char *two_flows = R"(
    foreach name {flow other} {
        if {[info exists $name]} { qx_data_free [set $name] }
        set $name [qx::new qx_flow_t {flow_id 1}]
    })";

// Written as data, they are in Tcl's memory alone.
TEST_F(package_memory, a_record_that_is_written)
{
    const std::string state = "qx::get $flow -raw -view *";
    EXPECT_EQ(fail_each(two_flows, "qx::set $flow {flow_id 7 ingress_pkt {phy_port 3}}", state), 0);
    EXPECT_EQ(fail_each(two_flows, "qx::set $flow ingress_pkt.tag(0).vlan_id 5", state), 0);
    EXPECT_GT(fail_each(two_flows,
                        "qx::set $flow ingress_pkt.da_ip.ip_addr 2001:db8::1"
                        " ingress_pkt.da_ip.afi ipv6",
                        state),
              0);
    EXPECT_GT(fail_each(two_flows, R"(qx::set $flow -json {
        {"flow_id": 7, "ingress_pkt": {"phy_port": 3, "sa_mac": "02:00:00:00:00:01",
         "tag": [{"vlan_id": 5}, {}], "sa_ip": "2001:db8:1111:2222:3333:4444:5555:6666"}}})",
                        state),
              3);
    // Texts that are wrong, at the end and in the middle, with values and names that are long.
    for (const std::string json :
         {"{\"flow_id\": 7, \"ingress_pkt\": {\"phy_port\": 3},",
          "{\"flow_id\": \"a long word and"
          " more words\", \"flow_id\": 7}",
          "{\"no_such_field_in_a_flow\": [{\"a\": [1, 2.5]}]}",
          "{\"flow_id\": 7, \"no_such_field_in_a_flow\": 1}", "[[[[]]], nothing]"}) {
        Tcl_SetVar(tcl_, "json", json.c_str(), TCL_GLOBAL_ONLY);
        EXPECT_GT(fail_each(two_flows, "qx::set $flow -json $json", state, TCL_ERROR), 0) << json;
    }
}

TEST_F(package_memory, a_record_that_is_read)
{
    const std::string fill = std::string{two_flows} +
                             "\nqx::set $flow {ingress_pkt {sa_ip 10.1.2.3 tag {{vlan_id 5}}"
                             " protocol 6 l4_header {tcp {sport 1}}} swid_array {1 2}}";
    const std::string state = "list [qx::get $flow -raw -view *] [qx::get $other -raw -view *]";
    EXPECT_EQ(fail_each(fill, "qx::get $flow -words", state), 0);
    EXPECT_EQ(fail_each(fill, "qx::get $flow ingress_pkt.tag(0)", state), 0);
    EXPECT_EQ(fail_each(fill, "qx::get $flow -view tcp", state), 0);
    EXPECT_GT(fail_each(fill, "qx::json $flow", state), 3);
    EXPECT_GT(fail_each(fill, "qx::json $flow -words -view *", state), 3);
    EXPECT_GT(fail_each(fill, "qx::diff $flow $other", state), 3);
    EXPECT_GT(fail_each(fill, "qx::diff $flow $other -words -raw -view *", state), 3);
}

// What the calls before have done stays done, as when a call itself fails.
TEST_F(package_memory, a_file_of_calls)
{
    tcl_.value(R"(
        set channel [open $folder/calls.json w]
        puts $channel {[
            {"call": "qx_flow_add", "args": [0, {"flow_id": 7}], "allow": ["QX_EXISTS"]},
            {"call": "qx_qos_dscp_map_get", "args": [0, 1, 5], "save": "the_value_of_the_map"},
            {"call": "qx_qos_dscp_map_set", "args": [0, 1, 5, "$the_value_of_the_map"]},
            {"call": "qx_flow_get", "args": [0, 17], "allow": ["QX_NO_FLOW"]}]}
        close $channel
        set channel [open $folder/wrong.json w]
        puts $channel {[{"call": "qx_ipsec_init", "args": [0, "$never_saved_by_any_call"]}]}
        close $channel
        set channel [open $folder/many.json w]
        puts $channel \[[join [lrepeat 300 {{"call": "qx_flow_delete", "args": [0, 8], "allow": [30]}}] ,]\]
        close $channel)");
    EXPECT_GT(fail_each("", "qx::apply $folder/calls.json"), 10);
    EXPECT_GT(fail_each("", "qx::apply $folder/wrong.json", {}, TCL_ERROR), 5);
    EXPECT_GT(fail_each("", "qx::apply $folder/many.json"), 10);
}

TEST_F(package_memory, a_profile)
{
    const std::string head = "qx::profile::parse a.profile ";
    EXPECT_GT(fail_each("", head + "{status 30 QX_NO_FLOW there is no such flow in the table\n"
                                   "code qx_tunnel_cfg_t.type 2 ipsec\ncapacity flows 1024\n"
                                   "family ipv4 0\n}"),
              10);
    EXPECT_GT(fail_each("", head + "{\nports 32\nstatus 30 30\n}", {}, TCL_ERROR), 0);
    EXPECT_GT(fail_each("", head + "{ports 32\nports 32\n}", {}, TCL_ERROR), 0);
}

// ---------------------------------------------------------------------------------- block memory

// A large block, which has memory of its own: the next one gets the same place.
TEST(block_memory_without_memory, loses_no_place)
{
    constexpr std::uint32_t size = 5000000;
    void *const first = allocate_block(size);
    free_block(first);
    int failures = 0;
    for (bool again = true; again; ++failures) {
        has_failed = false;
        left = failures + 1;
        void *const refused = allocate_block(size);
        left = 0;
        again = has_failed;
        EXPECT_EQ(refused == nullptr, has_failed);
        free_block(refused);
        void *const next = allocate_block(size);
        EXPECT_EQ(next, first) << failures;
        free_block(next);
    }
    EXPECT_GT(failures, UINTPTR_MAX > UINT32_MAX ? 2 : 1);
}

// A recording or a trace is not worth a call.
TEST_F(package_memory, a_call_goes_on_without_memory_for_its_line)
{
    const held_object call{"qx_flow_delete 0 1"};
    for (int number = 1;; ++number) {
        tcl_.value("qx::trace on; qx::record $folder/calls.rec -force");
        tcl_.value("qx_flow_delete 0 2"); // what is made once
        testing::internal::CaptureStderr();
        EXPECT_EQ(without(number, call), TCL_OK) << number;
        EXPECT_EQ(tcl_.result(), "30") << number;
        const std::string said = testing::internal::GetCapturedStderr();
        const std::string state = tcl_.value("list [qx::trace] [qx::record]");
        if (!has_failed) {
            EXPECT_GT(number, 1);
            EXPECT_EQ(state, "on " + folder_ + "/calls.rec");
            break;
        }
        EXPECT_EQ(state, "off {}") << number;
        EXPECT_EQ(said, "qx::record: no memory for a call; the recording ends here\n"
                        "qx::trace: no memory for a call; the trace ends here\n")
            << number;
        tcl_.value("qx_flow_delete 0 2");
        EXPECT_NE(stdout_now.tcl_stdout, nullptr) << "calls are prepared though nobody watches";
    }
    EXPECT_EQ(stdout_now.tcl_stdout, nullptr);
    tcl_.value("qx::trace off; qx::record off; qx_flow_delete 0 2");
    EXPECT_NE(stdout_now.tcl_stdout, nullptr);
}

} // namespace
