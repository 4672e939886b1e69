// The environment switches, which are read at the first SDK call of a process: each test makes that
// call in a child process of its own, and the parent makes none.
#include "qx_sdk.h"
#include "qx_status.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

class environment : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (const char *name :
             {"QX_SIM_CONTROL", "QX_SIM_FAULT", "QX_SIM_LATENCY", "QX_SIM_LOG", "QX_SIM_KEYS"})
            unsetenv(name);
        char name[] = "/tmp/qx_sim_file.XXXXXX";
        close(mkstemp(name));
        file_ = name;
    }
    void TearDown() override { std::remove(file_.c_str()); }

    std::string text() const
    {
        std::ifstream file{file_};
        return {std::istreambuf_iterator<char>{file}, {}};
    }

    std::string file_; ///< an empty file
};

// Runs a check in a child process, with its stderr in a file; true if it held.
bool in_child(const std::function<bool()> &check, const std::string &errors = "/dev/null")
{
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        if (std::freopen(errors.c_str(), "w", stderr) == nullptr)
            _exit(2);
        const bool held = check();
        std::fflush(stderr);
        _exit(held ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

unsigned suspended(unsigned short device = 0)
{
    unsigned char value = 0;
    return qx_pm_ne_suspend_get(device, &value);
}

} // namespace

TEST_F(environment, without_switches_nothing_is_controlled)
{
    EXPECT_TRUE(in_child(
        [&] {
            if (suspended() != QX_OK)
                return false;
            // Too late: the environment was read.
            setenv("QX_SIM_FAULT", "* * 5", 1);
            setenv("QX_SIM_LOG", file_.c_str(), 1);
            return suspended() == QX_OK && suspended(65535) == QX_BAD_DEVICE;
        },
        file_));
    EXPECT_EQ("", text());
}

TEST_F(environment, an_empty_switch_is_none)
{
    setenv("QX_SIM_FAULT", "", 1);
    setenv("QX_SIM_LOG", "", 1);
    setenv("QX_SIM_CONTROL", "", 1);
    EXPECT_TRUE(in_child([] { return suspended() == QX_OK; }, file_));
    EXPECT_EQ("", text());
}

TEST_F(environment, faults)
{
    setenv("QX_SIM_FAULT", " qx_pm_ne_suspend_get 2 QX_IN_USE;; qx_flow_* * 17 ;", 1);
    EXPECT_TRUE(in_child([] {
        return suspended() == QX_OK && suspended() == QX_IN_USE && suspended() == QX_OK &&
               qx_flow_delete(0, 1) == 17 && qx_flow_add(99, nullptr) == 17;
    }));
}

TEST_F(environment, mistakes_are_reported_under_the_name_of_the_switch)
{
    setenv("QX_SIM_FAULT", "qx_flow_add 1; qx_pm_ne_suspend_get * 9", 1);
    setenv("QX_SIM_LATENCY", "qx_flow_add soon", 1);
    EXPECT_TRUE(in_child([] { return suspended() == 9 && suspended() == 9; }, file_));
    EXPECT_EQ("qx_sim: QX_SIM_FAULT: expected: fault FUNCTION WHEN STATUS\n"
              "qx_sim: QX_SIM_LATENCY: \"soon\" is not a time from 0 to 10000000 microseconds\n",
              text());
}

TEST_F(environment, latency)
{
    setenv("QX_SIM_LATENCY", "qx_pm_* 40000", 1);
    EXPECT_TRUE(in_child([] {
        const auto start = std::chrono::steady_clock::now();
        return suspended() == QX_OK &&
               std::chrono::steady_clock::now() - start >= std::chrono::microseconds{40000};
    }));
}

TEST_F(environment, log_with_keys)
{
    setenv("QX_SIM_LOG", file_.c_str(), 1);
    setenv("QX_SIM_KEYS", "1", 1);
    EXPECT_TRUE(in_child([] {
        qx_pptp_sa_t session{};
        session.key[15] = 201;
        return qx_pptp_session_add(0, &session) == QX_BAD_SESSION_ID &&
               suspended(65535) == QX_BAD_DEVICE;
    }));
    EXPECT_NE(std::string::npos, text().find(", 201]")) << text();
    EXPECT_NE(std::string::npos, text().find("\"dev_id\": 65535")) << "no control file, so a call";
}

TEST_F(environment, a_log_that_cannot_be_opened_is_one_complaint)
{
    setenv("QX_SIM_LOG", "/no/such/folder/log", 1);
    EXPECT_TRUE(in_child([] { return suspended() == QX_OK && suspended() == QX_OK; }, file_));
    EXPECT_EQ("qx_sim: cannot write /no/such/folder/log: No such file or directory\n", text());
}

TEST_F(environment, a_log_that_cannot_be_written_ends_with_one_complaint)
{
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "this system has no /dev/full";
    setenv("QX_SIM_LOG", "/dev/full", 1);
    EXPECT_TRUE(in_child([] { return suspended() == QX_OK && suspended() == QX_OK; }, file_));
    EXPECT_EQ("qx_sim: cannot write /dev/full; the call log ends here\n", text());
}

// The address space is cut to what the process has, and all that malloc still has is used up.
TEST_F(environment, without_memory_there_is_a_status_and_nothing_else)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "AddressSanitizer ends a program that has no memory left";
#endif
    EXPECT_TRUE(in_child(
        [] {
            const rlimit none{1, RLIM_INFINITY};
            if (setrlimit(RLIMIT_AS, &none) != 0)
                return false;
            void *held = nullptr;
            for (std::size_t size = 1 << 20; size >= 16; size /= 2)
                while (void *const one = std::malloc(size)) {
                    std::memcpy(one, &held, sizeof held);
                    held = one;
                    if (size == 1 << 20) {
                        std::fputs("not enforced", stderr); // as under an emulator
                        _exit(0);
                    }
                }
            const bool refused = suspended() == QX_NO_MEMORY && suspended() == QX_NO_MEMORY;
            while (held != nullptr) {
                void *const one = held;
                std::memcpy(&held, one, sizeof held);
                std::free(one);
            }
            const rlimit all{RLIM_INFINITY, RLIM_INFINITY};
            return refused && setrlimit(RLIMIT_AS, &all) == 0 && suspended() == QX_OK;
        },
        file_));
    if (text() == "not enforced")
        GTEST_SKIP() << "this system does not limit the memory of a process";
}

TEST_F(environment, a_control_file_may_appear_later)
{
    std::remove(file_.c_str());
    setenv("QX_SIM_CONTROL", file_.c_str(), 1);
    setenv("QX_SIM_FAULT", "qx_flow_* * 5", 1);
    EXPECT_TRUE(in_child([&] {
        if (suspended() != QX_OK)
            return false;
        std::ofstream{file_} << "fault qx_pm_* * 7\nfault qx_flow_* * 6\n";
        return suspended() == 7 && qx_flow_delete(0, 0) == 5;
    }));
}
