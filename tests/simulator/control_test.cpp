// The control file: faults, latency, reset, state, the call log, and what is wrong with a line.
#include "simulated.h"

#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace simulated;

namespace {

class control : public devices
{
protected:
    void TearDown() override { order(""); }
};

unsigned suspended(unsigned short device = 0)
{
    unsigned char value = 0;
    return qx_pm_ne_suspend_get(device, &value);
}

// What is written to stderr meanwhile.
template <class Action> std::string complaints(Action action)
{
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

unsigned lines(const std::string &text)
{
    unsigned count = 0;
    for (const char one : text)
        count += one == '\n';
    return count;
}

} // namespace

TEST_F(control, a_fault_answers_the_call_it_counts_to)
{
    order("fault qx_pm_ne_suspend_get 3 QX_IN_USE\n");
    EXPECT_EQ(QX_OK, suspended());
    EXPECT_EQ(QX_OK, suspended());
    EXPECT_EQ(QX_IN_USE, suspended());
    EXPECT_EQ(QX_OK, suspended());
}

TEST_F(control, a_fault_from_a_call_on_or_always)
{
    order("fault qx_pm_ne_* 2+ 4711\n");
    EXPECT_EQ(QX_OK, suspended());
    EXPECT_EQ(4711U, suspended());
    EXPECT_EQ(4711U, qx_pm_ne_suspend_set(0, 1));
    order("fault * * QX_NO_MEMORY\n");
    EXPECT_EQ(QX_NO_MEMORY, suspended());
    EXPECT_EQ(QX_NO_MEMORY, suspended(99)) << "before any check";
    order("");
    unsigned char value = 9;
    EXPECT_EQ(QX_OK, qx_pm_ne_suspend_get(0, &value));
    EXPECT_EQ(0U, value) << "a faulted call does nothing else";
}

TEST_F(control, a_faulted_call_writes_and_changes_nothing)
{
    const std::string before = snapshot();
    order("fault qx_ipsec_init * QX_INITIALISED\nfault qx_tunnel_add * QX_TABLE_FULL\n");
    unsigned id = 0xa5;
    qx_tunnel_cfg_t cfg = gre_tunnel(1);
    EXPECT_EQ(QX_INITIALISED, qx_ipsec_init(0));
    EXPECT_EQ(QX_TABLE_FULL, qx_tunnel_add(0, &cfg, &id));
    EXPECT_EQ(0xa5U, id);
    EXPECT_EQ(before, snapshot());
    EXPECT_EQ(0U, number_in(state(), "\"device\": 0", "ticks"));
}

TEST_F(control, the_first_rule_that_fires_answers)
{
    order("fault qx_pm_* 2 5\nfault qx_pm_ne_* * 6\n");
    EXPECT_EQ(6U, suspended());
    EXPECT_EQ(5U, suspended());
    EXPECT_EQ(6U, suspended());
}

TEST_F(control, a_line_that_stays_goes_on_counting)
{
    order("fault qx_pm_ne_suspend_get 3 7\n");
    EXPECT_EQ(QX_OK, suspended());
    order("fault qx_flow_add 1 7\nfault qx_pm_ne_suspend_get 3 7\n");
    EXPECT_EQ(QX_OK, suspended());
    EXPECT_EQ(7U, suspended());
    order("");
    order("fault qx_pm_ne_suspend_get 3 7\n");
    EXPECT_EQ(QX_OK, suspended());
}

TEST_F(control, a_latency_delays)
{
    const auto timed = [] {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(QX_OK, suspended());
        return std::chrono::steady_clock::now() - start;
    };
    order("latency qx_pm_ne_* 30000\nlatency * 0\n");
    EXPECT_GE(timed(), std::chrono::microseconds{30000});
}

TEST_F(control, mistakes_are_reported_once_and_ignored)
{
    const std::string said = complaints([] {
        order("# a comment\n\nfault qx_pm_ne_suspend_get 1 9\nfrob\nfault qx_flow_add\n"
              "fault qx_nothing * 1\nfault qx_* 0 1\nfault qx_* x 1\nfault qx_* 1 QX_OK\n"
              "fault qx_* 1 65536\nlatency qx_* 10000001\nlatency qx_*\nkeys maybe\nreset now\n"
              "snapshot\nlog\n");
        EXPECT_EQ(9U, suspended());
        EXPECT_EQ(QX_OK, suspended());
    });
    const std::string name = folder() + "/control:";
    EXPECT_NE(std::string::npos, said.find("qx_sim: " + name + "4: \"frob\" is none of")) << said;
    for (unsigned line = 5; line <= 16; ++line)
        EXPECT_NE(std::string::npos, said.find(name + std::to_string(line) + ": ")) << said;
    EXPECT_EQ(13U, lines(said)) << said;
}

TEST_F(control, a_file_that_goes_ends_its_settings)
{
    order("fault qx_pm_* * 8\n");
    EXPECT_EQ(8U, suspended());
    ASSERT_EQ(0, std::remove((folder() + "/control").c_str()));
    EXPECT_EQ(QX_OK, suspended());
}

TEST_F(control, state_lists_what_a_snapshot_leaves_out)
{
    EXPECT_EQ(QX_OK, suspended(1));
    EXPECT_EQ(QX_OK, qx_ipsec_init(1));
    qx_flow_t one = flow(1);
    EXPECT_EQ(QX_OK, qx_flow_add(1, &one));
    order("fault qx_flow_add 9 2\n");
    const std::string all = file_text(
        (order("fault qx_flow_add 9 2\nstate " + folder() + "/all\n"), folder() + "/all"));
    EXPECT_EQ(3U, number_in(all, "\"device\": 1", "ticks"));
    EXPECT_EQ(1U, number_in(all, "\"flows\": {\"used\": 1,", "used"));
    EXPECT_EQ(1024U, number_in(all, "\"flows\": {\"used\": 1,", "capacity"));
    EXPECT_NE(std::string::npos, all.find("\"ipsec_initialised\": true"));
    EXPECT_EQ(9U, number_in(all, "\"function\": \"qx_flow_add\"", "first"));
    EXPECT_NE(std::string::npos, all.find("\"qx_flow_add\": "));
}

TEST_F(control, files_are_their_owners_alone)
{
    const mode_t before = umask(0);
    order("log " + folder() + "/new.log\nsnapshot " + folder() + "/new.json\n");
    EXPECT_EQ(QX_OK, suspended());
    umask(before);
    for (const char *name : {"/new.log", "/new.json"}) {
        struct stat file
        {};
        ASSERT_EQ(0, stat((folder() + name).c_str(), &file));
        EXPECT_EQ(0600U, file.st_mode & 07777U);
    }
    const std::string said = complaints([] { order("snapshot " + folder() + "/no/where\n"); });
    EXPECT_NE(std::string::npos, said.find("cannot write " + folder() + "/no/where")) << said;
}

// -------------------------------------------------------------------------------------- the log

TEST_F(control, the_log_has_a_line_a_call)
{
    const std::string log = folder() + "/calls.log";
    order("log " + log + "\nfault qx_pm_ne_suspend_get 2 QX_IN_USE\n");
    EXPECT_EQ(QX_OK, suspended());
    EXPECT_EQ(QX_IN_USE, suspended());
    EXPECT_EQ(QX_NULL_POINTER, qx_pm_ne_suspend_get(3, nullptr));
    order(""); // not a call
    EXPECT_EQ(QX_OK, suspended());
    const std::string text = file_text(log);
    EXPECT_EQ(3U, lines(text)) << text;
    EXPECT_NE(std::string::npos,
              text.find("\"function\": \"qx_pm_ne_suspend_get\", \"arguments\": {\"dev_id\": 0, "
                        "\"suspend\": {\"before\": 0, \"after\": 0}}, \"status\": 0, "
                        "\"name\": \"QX_OK\", \"fault\": false, \"microseconds\": "))
        << text;
    EXPECT_NE(std::string::npos,
              text.find("\"status\": 13, \"name\": \"QX_IN_USE\", \"fault\": true"))
        << text;
    EXPECT_NE(std::string::npos, text.find("{\"dev_id\": 3, \"suspend\": null}, \"status\": 2"))
        << text;
}

TEST_F(control, the_log_has_records_in_full_before_and_after)
{
    const std::string log = folder() + "/records.log";
    qx_pptp_sa_t session = pptp(5, 1);
    ASSERT_EQ(QX_OK, qx_pptp_session_add(0, &session));
    order("log " + log + "\n");
    auto got = zeroed<qx_pptp_sa_t>();
    got.sa_id = 5;
    got.dir = 1;
    EXPECT_EQ(QX_OK, qx_pptp_session_get(0, &got));
    const std::string text = file_text(log);
    const auto after = text.find("\"after\"");
    EXPECT_LT(text.find("\"seq_num\": 0"), after);
    EXPECT_GT(text.find("\"seq_num\": 77"), after);
    EXPECT_GT(text.find("\"ipv4_addr\": 167772164"), after);
    EXPECT_NE(std::string::npos, text.find("\"key\": \"16 bytes\""));
    EXPECT_EQ(std::string::npos, text.find("248"));
}

TEST_F(control, a_cookie_is_a_key_under_whatever_name_its_bytes_have)
{
    const std::string log = folder() + "/cookie.log";
    qx_tunnel_cfg_t cfg = l2tp_tunnel(1);
    for (unsigned char &byte : cfg.tunnel.l2tp.cookie)
        byte = 0xa5;
    unsigned id = 0;
    order("log " + log + "\n");
    ASSERT_EQ(QX_OK, qx_tunnel_add(0, &cfg, &id));
    const std::string words = "2779096485"; // four such bytes, as the EtherIP settings over them
    for (const std::string &text : {file_text(log), snapshot()}) {
        EXPECT_NE(std::string::npos, text.find("\"cookie\": \"8 bytes\""));
        EXPECT_NE(std::string::npos, text.find("\"tun_saddr\": {\"addr\": \"16 bytes\""));
        EXPECT_NE(std::string::npos, text.find("\"tun_daddr\": {\"addr\": [0, 0, 0, 0]"));
        EXPECT_EQ(std::string::npos, text.find("165"));
        EXPECT_EQ(std::string::npos, text.find("42405")); // two
        EXPECT_EQ(std::string::npos, text.find(words));
    }
    order("log " + log + "\nkeys on\n");
    EXPECT_EQ(QX_EXISTS, qx_tunnel_add(0, &cfg, &id));
    EXPECT_NE(std::string::npos, file_text(log).find("\"cookie\": [165, 165"));
    EXPECT_NE(std::string::npos, file_text(log).find(words));
}

TEST_F(control, the_log_has_arrays_and_bit_fields_and_hides_keys)
{
    const std::string log = folder() + "/keys.log";
    ASSERT_EQ(QX_OK, qx_ipsec_init(0));
    unsigned spd = 0;
    unsigned policy = 0;
    ASSERT_EQ(QX_OK, qx_ipsec_spd_add(0, 1, 1, &spd));
    qx_ipsec_policy_t one = simulated::policy(1);
    ASSERT_EQ(QX_OK, qx_ipsec_policy_add(0, spd, &one, &policy));
    order("log " + log + "\n");
    qx_ipsec_sa_t sas[2] = {association(256, 1), association(257, 1)};
    sas[1].iv_len = 9;
    sas[1].reserved = 1;
    unsigned sa = 0xa5;
    EXPECT_EQ(QX_BAD_COUNT, qx_ipsec_sa_add(0, spd, policy, 200, sas, 0, &sa));
    EXPECT_EQ(QX_OK, qx_ipsec_sa_add(0, spd, policy, 2, sas, 0, &sa));
    std::string text = file_text(log);
    EXPECT_NE(std::string::npos, text.find("\"sa_array\": {\"before\": \"not read\""));
    EXPECT_NE(std::string::npos, text.find("\"sa_array\": {\"before\": [{\"replay_window\": 0"));
    EXPECT_NE(std::string::npos, text.find("\"sa_dir\": 1"));
    EXPECT_NE(std::string::npos, text.find("\"iv_len\": 9"));
    EXPECT_NE(std::string::npos, text.find("\"reserved\": 1"));
    EXPECT_NE(std::string::npos, text.find("\"ekey\": \"32 bytes\", \"akey\": \"32 bytes\""));
    EXPECT_EQ(std::string::npos, text.find("17, 17"));
    EXPECT_NE(std::string::npos, text.find("\"sa_handle\": {\"before\": 165, \"after\": "));
    EXPECT_EQ(std::string::npos, snapshot().find("17, 17"));

    order("log " + log + "\nkeys on\nsnapshot " + folder() + "/keys.json\n");
    EXPECT_EQ(QX_EXISTS, qx_ipsec_sa_add(0, spd, policy, 1, sas, 0, &sa));
    EXPECT_NE(std::string::npos, file_text(log).find("\"ekey\": [17, 17"));
    EXPECT_NE(std::string::npos, file_text(folder() + "/keys.json").find("\"akey\": [34, 34"));
}
