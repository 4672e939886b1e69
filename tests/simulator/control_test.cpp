// The control file: faults, latency, reset, state, the call log, and what is wrong with a line.
#include "simulated.h"

#include <chrono>
#include <fcntl.h>
#include <fstream>
#include <regex>
#include <sys/stat.h>
#include <unistd.h>

using namespace simulated;

namespace {

class control : public devices
{
protected:
    void TearDown() override { order(""); }
};

void order_refused(const std::string &lines)
{
    order(lines, QX_BAD_SWITCH);
}

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
    EXPECT_EQ(suspended(), QX_OK);
    EXPECT_EQ(suspended(), QX_OK);
    EXPECT_EQ(suspended(), QX_IN_USE);
    EXPECT_EQ(suspended(), QX_OK);
}

TEST_F(control, a_fault_from_a_call_on_or_always)
{
    order("fault qx_pm_ne_* 2+ 4711\n");
    EXPECT_EQ(suspended(), QX_OK);
    EXPECT_EQ(suspended(), 4711U);
    EXPECT_EQ(qx_pm_ne_suspend_set(0, 1), 4711U);
    order("fault * * QX_NO_MEMORY\n");
    EXPECT_EQ(suspended(), QX_NO_MEMORY);
    EXPECT_EQ(suspended(99), QX_NO_MEMORY) << "before any check";
    order("");
    unsigned char value = 9;
    EXPECT_EQ(qx_pm_ne_suspend_get(0, &value), QX_OK);
    EXPECT_EQ(value, 0U) << "a faulted call does nothing else";
}

TEST_F(control, a_faulted_call_writes_and_changes_nothing)
{
    const std::string before = snapshot();
    order("fault qx_ipsec_init * QX_INITIALISED\nfault qx_tunnel_add * QX_TABLE_FULL\n");
    unsigned id = 0xa5;
    qx_tunnel_cfg_t cfg = gre_tunnel(1);
    EXPECT_EQ(qx_ipsec_init(0), QX_INITIALISED);
    EXPECT_EQ(qx_tunnel_add(0, &cfg, &id), QX_TABLE_FULL);
    EXPECT_EQ(id, 0xa5U);
    EXPECT_EQ(before, snapshot());
    EXPECT_EQ(number_in(state(), "\"device\": 0", "ticks"), 0U);
}

TEST_F(control, the_first_rule_that_fires_answers)
{
    order("fault qx_pm_* 2 5\nfault qx_pm_ne_* * 6\n");
    EXPECT_EQ(suspended(), 6U);
    EXPECT_EQ(suspended(), 5U);
    EXPECT_EQ(suspended(), 6U);
}

TEST_F(control, a_line_that_stays_goes_on_counting)
{
    order("fault qx_pm_ne_suspend_get 3 7\n");
    EXPECT_EQ(suspended(), QX_OK);
    order("fault qx_flow_add 1 7\nfault qx_pm_ne_suspend_get 3 7\n");
    EXPECT_EQ(suspended(), QX_OK);
    EXPECT_EQ(suspended(), 7U);
    order("");
    order("fault qx_pm_ne_suspend_get 3 7\n");
    EXPECT_EQ(suspended(), QX_OK);
}

TEST_F(control, a_latency_delays)
{
    const auto timed = [] {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(suspended(), QX_OK);
        return std::chrono::steady_clock::now() - start;
    };
    order("latency qx_pm_ne_* 30000\nlatency * 0\n");
    EXPECT_GE(timed(), std::chrono::microseconds{30000});
}

TEST_F(control, a_mistake_is_reported_once_and_no_call_is_answered)
{
    const std::string said = complaints([] {
        order_refused(
            "# a comment\n\nfault qx_pm_ne_suspend_get 1 9\nfrob\nfault qx_flow_add\n"
            "fault qx_nothing * 1\nfault qx_* 0 1\nfault qx_* x 1\nfault qx_* 1 QX_OK\n"
            "fault qx_* 1 65536\nlatency qx_* 10000001\nlatency qx_*\nkeys maybe\nreset now\n"
            "snapshot\nlog\nanswer\nprocess\nprocess 0\nprocess 1x\nprocess 4294967296\n");
        EXPECT_EQ(suspended(), QX_BAD_SWITCH);
        EXPECT_EQ(suspended(), QX_BAD_SWITCH);
    });
    const std::string name = folder() + "/control:";
    EXPECT_NE(std::string::npos, said.find("qx_sim: " + name + "4: \"frob\" is not one of"))
        << said;
    for (unsigned line = 5; line <= 21; ++line)
        EXPECT_NE(std::string::npos, said.find(name + std::to_string(line) + ": ")) << said;
    EXPECT_EQ(lines(said), 18U) << said;
    order("");
    EXPECT_EQ(suspended(), QX_OK);
}

TEST_F(control, a_refused_file_changes_nothing)
{
    order("fault qx_pm_ne_suspend_get 2 7\n");
    EXPECT_EQ(suspended(), QX_OK);
    qx_flow_t one = flow(1);
    ASSERT_EQ(qx_flow_add(0, &one), QX_OK);
    const std::string shot = folder() + "/refused.json";
    complaints([&] { order_refused("reset\nsnapshot " + shot + "\nfault qx_x * 1\n"); });
    EXPECT_EQ(qx_flow_delete(0, 1), QX_BAD_SWITCH);
    EXPECT_EQ(file_text(shot), "");
    order("fault qx_pm_ne_suspend_get 2 7\n");
    EXPECT_EQ(suspended(), 7U) << "the rule went on counting";
    EXPECT_EQ(qx_flow_delete(0, 1), QX_OK);
}

TEST_F(control, the_same_rule_again_begins_when_the_first_is_over)
{
    order("fault qx_pm_ne_* 2 7\nfault qx_pm_ne_* 2 7\nfault qx_pm_ne_* 3 8\n");
    const unsigned expected[] = {QX_OK, 7, 8, 7, QX_OK};
    for (const unsigned status : expected)
        EXPECT_EQ(status, suspended());
    order("fault qx_pm_ne_* 2 7\nfault qx_pm_ne_* 2 7\nfault qx_pm_ne_* 2 7\n");
    EXPECT_EQ(suspended(), QX_OK) << "only the third counts";
    EXPECT_EQ(suspended(), 7U);
    order("fault * * 5\nfault * * 5\n");
    EXPECT_EQ(suspended(), 5U);
}

TEST_F(control, an_answer_says_what_came_of_the_file)
{
    const std::string name = folder() + "/said";
    const auto answer = [&](const std::string &lines, unsigned status = QX_BAD_DEVICE) {
        std::remove(name.c_str());
        const std::string said =
            complaints([&] { order(lines + "answer " + name + "\n", status); });
        EXPECT_EQ(said, "");
        struct stat file
        {};
        EXPECT_EQ(stat(name.c_str(), &file), 0);
        EXPECT_EQ(file.st_mode & 07777U, 0600U);
        return file_text(name);
    };
    EXPECT_EQ(answer("reset\n"), "ok\n");
    const std::string rules = "fault qx_pm_ne_suspend_get 2 7\nfault qx_pm_* 3+ QX_IN_USE\n";
    EXPECT_EQ(answer(rules),
              "ok\nfired 0 qx_pm_ne_suspend_get 2 7\nfired 0 qx_pm_* 3+ QX_IN_USE\n");
    for (const unsigned status : {unsigned{QX_OK}, 7U, unsigned{QX_IN_USE}, unsigned{QX_IN_USE}})
        EXPECT_EQ(status, suspended());
    EXPECT_EQ(answer(rules + "# again\n"),
              "ok\nfired 1 qx_pm_ne_suspend_get 2 7\nfired 2 qx_pm_* 3+ QX_IN_USE\n");
    EXPECT_EQ(answer("reset\nkeys\n", QX_BAD_SWITCH),
              "error 2: expected: keys on or keys off\nfired 1 qx_pm_ne_suspend_get 2 7\n"
              "fired 2 qx_pm_* 3+ QX_IN_USE\n");
    EXPECT_EQ(answer("snapshot /no/where\n", QX_BAD_SWITCH),
              "error cannot write /no/where: No such file or directory\n");
    EXPECT_EQ(answer("log /no/log\n", QX_BAD_SWITCH),
              "error cannot write /no/log: No such file or directory\n");
}

TEST_F(control, an_answer_follows_no_link_and_replaces_no_file)
{
    const std::string name = folder() + "/link";
    const std::string target = folder() + "/target";
    ASSERT_EQ(symlink(target.c_str(), name.c_str()), 0);
    const std::string said = complaints([&] { order_refused("answer " + name + "\n"); });
    EXPECT_EQ("qx_sim: " + folder() + "/control: cannot write " + name + ": File exists\n", said);
    EXPECT_EQ(suspended(), QX_BAD_SWITCH);
    EXPECT_NE(access(target.c_str(), F_OK), 0);
}

TEST_F(control, lines_for_another_process_are_passed_over)
{
    const std::string own = std::to_string(getpid());
    const std::string shot = folder() + "/theirs.json";
    order("fault qx_pm_ne_* 1 7\nprocess 1\nnonsense\nsnapshot " + shot +
          "\nfault * * 9\nprocess " + own + "\nfault qx_pm_ne_* 2 8\n");
    EXPECT_EQ(suspended(), 7U);
    EXPECT_EQ(suspended(), 8U);
    EXPECT_EQ(suspended(), QX_OK);
    EXPECT_EQ(file_text(shot), "");
}

TEST_F(control, a_file_that_goes_ends_its_settings)
{
    order("fault qx_pm_* * 8\n");
    EXPECT_EQ(suspended(), 8U);
    ASSERT_EQ(std::remove((folder() + "/control").c_str()), 0);
    EXPECT_EQ(suspended(), QX_OK);
}

TEST_F(control, state_lists_what_a_snapshot_leaves_out)
{
    EXPECT_EQ(suspended(1), QX_OK);
    EXPECT_EQ(qx_ipsec_init(1), QX_OK);
    qx_flow_t one = flow(1);
    EXPECT_EQ(qx_flow_add(1, &one), QX_OK);
    order("fault qx_flow_add 9 2\n");
    const std::string all = file_text(
        (order("fault qx_flow_add 9 2\nstate " + folder() + "/all\n"), folder() + "/all"));
    EXPECT_EQ(number_in(all, "\"device\": 1", "ticks"), 3U);
    EXPECT_EQ(number_in(all, "\"flows\": {\"used\": 1,", "used"), 1U);
    EXPECT_EQ(number_in(all, "\"flows\": {\"used\": 1,", "capacity"), 1024U);
    EXPECT_NE(std::string::npos, all.find("\"ipsec_initialised\": true"));
    EXPECT_EQ(number_in(all, "\"function\": \"qx_flow_add\"", "first"), 9U);
    EXPECT_NE(std::string::npos, all.find("\"qx_flow_add\": "));
}

TEST_F(control, files_are_their_owners_alone)
{
    const mode_t before = umask(0);
    order("log " + folder() + "/new.log\nsnapshot " + folder() + "/new.json\n");
    EXPECT_EQ(suspended(), QX_OK);
    umask(before);
    for (const char *name : {"/new.log", "/new.json"}) {
        struct stat file
        {};
        ASSERT_EQ(stat((folder() + name).c_str(), &file), 0);
        EXPECT_EQ(file.st_mode & 07777U, 0600U);
    }
    const std::string said =
        complaints([] { order_refused("snapshot " + folder() + "/no/where\n"); });
    EXPECT_NE(std::string::npos, said.find("cannot write " + folder() + "/no/where")) << said;
}

TEST_F(control, a_file_of_others_rights_becomes_its_owners_alone)
{
    const std::string name = folder() + "/open.json";
    std::ofstream{name} << "old";
    ASSERT_EQ(chmod(name.c_str(), 0644), 0);
    order("snapshot " + name + "\n");
    struct stat file
    {};
    ASSERT_EQ(stat(name.c_str(), &file), 0);
    EXPECT_EQ(file.st_mode & 07777U, 0600U);
    EXPECT_EQ(file_text(name).front(), '{');
}

TEST_F(control, a_fifo_nobody_reads_is_no_file_to_write)
{
    const std::string name = folder() + "/fifo";
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    for (const char *const what : {"log ", "snapshot ", "state "}) {
        const std::string said = complaints([&] { order_refused(what + name + "\n"); });
        EXPECT_NE(std::string::npos, said.find("cannot write " + name + ": nobody reads it"))
            << said;
    }
}

// -------------------------------------------------------------------------------------- the log

TEST_F(control, a_log_asked_for_again_is_opened_again)
{
    const std::string log = folder() + "/rotated.log";
    order("log " + log + "\n");
    EXPECT_EQ(suspended(), QX_OK);
    ASSERT_EQ(std::rename(log.c_str(), (log + ".1").c_str()), 0);
    EXPECT_EQ(suspended(), QX_OK);
    EXPECT_EQ(lines(file_text(log + ".1")), 2U) << "until it is asked for";
    order("log " + log + "\nlog " + log + "\n");
    EXPECT_EQ(suspended(), QX_OK);
    EXPECT_EQ(lines(file_text(log)), 1U);
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "this system has no /dev/full";
    order("log /dev/full\n");
    for (int again = 0; again < 2; ++again) {
        const std::string said = complaints([] {
            EXPECT_EQ(suspended(), QX_OK);
            EXPECT_EQ(suspended(), QX_OK);
        });
        EXPECT_EQ(said,
                  "qx_sim: cannot write /dev/full: No space left on device; the call log ends "
                  "here\n");
        order("log /dev/full\nlog /dev/full\n");
    }
}

TEST_F(control, the_log_has_a_line_a_call)
{
    const std::string log = folder() + "/calls.log";
    order("log " + log + "\nfault qx_pm_ne_suspend_get 2 QX_IN_USE\n");
    EXPECT_EQ(suspended(), QX_OK);
    EXPECT_EQ(suspended(), QX_IN_USE);
    EXPECT_EQ(qx_pm_ne_suspend_get(3, nullptr), QX_NULL_POINTER);
    order(""); // not a call
    EXPECT_EQ(suspended(), QX_OK);
    const std::string text = file_text(log);
    EXPECT_EQ(lines(text), 3U) << text;
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
    ASSERT_EQ(qx_pptp_session_add(0, &session), QX_OK);
    order("log " + log + "\n");
    auto got = zeroed<qx_pptp_sa_t>();
    got.sa_id = 5;
    got.dir = 1;
    EXPECT_EQ(qx_pptp_session_get(0, &got), QX_OK);
    const std::string text = file_text(log);
    const auto after = text.find("\"after\"");
    EXPECT_LT(text.find("\"seq_num\": 0"), after);
    EXPECT_GT(text.find("\"seq_num\": 77"), after);
    EXPECT_GT(text.find("\"ipv4_addr\": 167772164"), after);
    EXPECT_NE(std::string::npos, text.find("\"key\": \"16 bytes\""));
    EXPECT_EQ(std::string::npos, text.find("248, 248"));
}

TEST_F(control, a_cookie_is_a_key_under_whatever_name_its_bytes_have)
{
    const std::string log = folder() + "/cookie.log";
    qx_tunnel_cfg_t cfg = l2tp_tunnel(1);
    for (unsigned char &byte : cfg.tunnel.l2tp.cookie)
        byte = 0xa5;
    cfg.tunnel.l2tp.cookie_len = 8;
    unsigned id = 0;
    order("log " + log + "\n");
    ASSERT_EQ(qx_tunnel_add(0, &cfg, &id), QX_OK);
    const std::string words = "2779096485"; // four such bytes, as the EtherIP settings over them
    // The process id may have the digits of a byte.
    const std::regex process{"\"process\": [0-9]+"};
    for (const std::string &text : {std::regex_replace(file_text(log), process, ""), snapshot()}) {
        EXPECT_NE(std::string::npos, text.find("\"cookie\": \"8 bytes"));
        EXPECT_NE(std::string::npos, text.find("\"tun_saddr\": {\"addr\": \"16 bytes"));
        EXPECT_NE(std::string::npos, text.find("\"tun_daddr\": {\"addr\": [0, 0, 0, 0]"));
        EXPECT_EQ(std::string::npos, text.find("165, 165"));
        EXPECT_EQ(std::string::npos, text.find("42405")); // two
        EXPECT_EQ(std::string::npos, text.find(words));
    }
    order("log " + log + "\nkeys on\n");
    EXPECT_EQ(qx_tunnel_add(0, &cfg, &id), QX_EXISTS);
    EXPECT_NE(std::string::npos, file_text(log).find("\"cookie\": [165, 165"));
    EXPECT_NE(std::string::npos, file_text(log).find(words));
}

TEST_F(control, the_log_has_arrays_and_bit_fields_and_hides_keys)
{
    const std::string log = folder() + "/keys.log";
    ASSERT_EQ(qx_ipsec_init(0), QX_OK);
    unsigned spd = 0;
    unsigned policy = 0;
    ASSERT_EQ(qx_ipsec_spd_add(0, 1, 1, &spd), QX_OK);
    qx_ipsec_policy_t one = simulated::policy(1);
    ASSERT_EQ(qx_ipsec_policy_add(0, spd, &one, &policy), QX_OK);
    order("log " + log + "\n");
    qx_ipsec_sa_t sas[2] = {association(256, 1), association(257, 1)};
    sas[1].iv_len = 9;
    sas[1].reserved = 1;
    unsigned sa = 0xa5;
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, policy, 200, sas, 0, &sa), QX_BAD_COUNT);
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, policy, 2, sas, 0, &sa), QX_OK);
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
    EXPECT_EQ(qx_ipsec_sa_add(0, spd, policy, 1, sas, 0, &sa), QX_EXISTS);
    EXPECT_NE(std::string::npos, file_text(log).find("\"ekey\": [17, 17"));
    EXPECT_NE(std::string::npos, file_text(folder() + "/keys.json").find("\"akey\": [34, 34"));
}
