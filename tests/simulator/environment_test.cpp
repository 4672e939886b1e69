// The environment switches, which are read at the first SDK call of a process: each test makes that
// call in a child process of its own, and the parent makes none.
#include "qx_sdk.h"
#include "qx_status.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
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
    EXPECT_EQ(text(), "");
}

TEST_F(environment, an_empty_switch_is_none)
{
    setenv("QX_SIM_FAULT", "", 1);
    setenv("QX_SIM_LOG", "", 1);
    setenv("QX_SIM_CONTROL", "", 1);
    EXPECT_TRUE(in_child([] { return suspended() == QX_OK; }, file_));
    EXPECT_EQ(text(), "");
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
    setenv("QX_SIM_CONTROL", "/", 1);
    EXPECT_TRUE(in_child(
        [] {
            if (suspended() != QX_BAD_SWITCH || suspended() != QX_BAD_SWITCH ||
                suspended(65535) != QX_BAD_SWITCH)
                return false;
            unsetenv("QX_SIM_LATENCY");
            unsetenv("QX_SIM_CONTROL"); // nothing of the refused switches is kept
            setenv("QX_SIM_FAULT", "qx_pm_ne_suspend_get 2 9", 1);
            return suspended() == QX_OK && suspended() == 9;
        },
        file_));
    EXPECT_EQ(text(),
              "qx_sim: QX_SIM_FAULT: expected: fault FUNCTION WHEN STATUS\n"
              "qx_sim: QX_SIM_LATENCY: \"soon\" is not a time from 0 to 10000000 microseconds\n");
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
    EXPECT_TRUE(in_child(
        [] {
            if (suspended() != QX_BAD_SWITCH || suspended() != QX_BAD_SWITCH)
                return false;
            unsetenv("QX_SIM_LOG");
            return suspended() == QX_OK;
        },
        file_));
    EXPECT_EQ(text(),
              "qx_sim: QX_SIM_LOG: cannot write /no/such/folder/log: No such file or directory\n");
}

TEST_F(environment, a_control_file_that_cannot_be_read_is_a_mistake_until_it_goes)
{
    std::remove(file_.c_str());
    ASSERT_EQ(mkdir(file_.c_str(), 0700), 0);
    setenv("QX_SIM_CONTROL", file_.c_str(), 1);
    const std::string errors = file_ + ".errors";
    const auto refused_until = [&](const char *said, const std::function<int()> &mend) {
        EXPECT_TRUE(in_child(
            [&] {
                return suspended() == QX_BAD_SWITCH && suspended() == QX_BAD_SWITCH &&
                       mend() == 0 && suspended() == QX_OK;
            },
            errors));
        std::ifstream file{errors};
        EXPECT_EQ("qx_sim: " + file_ + ": " + said + "\n",
                  (std::string{std::istreambuf_iterator<char>{file}, {}}));
    };
    refused_until("not a regular file", [&] { return rmdir(file_.c_str()); });
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    refused_until("not a regular file", [&] { return unlink(file_.c_str()); });
    ASSERT_EQ(symlink(file_.c_str(), file_.c_str()), 0);
    refused_until("Too many levels of symbolic links", [&] { return unlink(file_.c_str()); });
    std::remove(errors.c_str());
}

TEST_F(environment, a_folder_that_changes_moves_no_file)
{
    char folder[] = "/tmp/qx_sim_folder.XXXXXX";
    ASSERT_NE(mkdtemp(folder), nullptr);
    setenv("QX_SIM_LOG", "calls.log", 1);
    setenv("QX_SIM_CONTROL", "control", 1);
    EXPECT_TRUE(in_child([&] {
        if (chdir(folder) != 0 || suspended() != QX_OK || chdir("/") != 0)
            return false;
        std::ofstream{std::string{folder} + "/control"} << "fault qx_pm_* 1 9\nsnapshot shot\n";
        return suspended() == 9;
    }));
    for (const char *const name : {"/calls.log", "/control", "/shot"}) {
        EXPECT_EQ(std::remove((folder + std::string{name}).c_str()), 0) << name;
    }
    EXPECT_EQ(rmdir(folder), 0);
}

TEST_F(environment, keys_are_shown_for_the_words_for_on_only)
{
    setenv("QX_SIM_LOG", file_.c_str(), 1);
    const std::string errors = file_ + ".errors";
    const auto shown = [&](const char *word) {
        std::ofstream{file_}.flush();
        setenv("QX_SIM_KEYS", word, 1);
        EXPECT_TRUE(in_child(
            [&] {
                qx_pptp_sa_t session{};
                session.key[15] = 201;
                return qx_pptp_session_add(0, &session) == QX_BAD_SESSION_ID;
            },
            errors));
        return text().find(", 201]") != std::string::npos;
    };
    for (const char *const on : {"1", "on", "yes", "true"})
        EXPECT_TRUE(shown(on)) << on;
    for (const char *const off : {"0", "off", "no", "false"})
        EXPECT_FALSE(shown(off)) << off;
    EXPECT_FALSE(shown("maybe"));
    std::ifstream said{errors};
    EXPECT_EQ((std::string{std::istreambuf_iterator<char>{said}, {}}),
              "QX_SIM_KEYS is neither on (1, on, yes, true) nor off (0, off, no, false): it stays "
              "off\n");
    std::remove(errors.c_str());
}

TEST_F(environment, keys_off_in_a_control_file_wins)
{
    const std::string control = file_ + ".control";
    setenv("QX_SIM_LOG", file_.c_str(), 1);
    setenv("QX_SIM_KEYS", "1", 1);
    setenv("QX_SIM_CONTROL", control.c_str(), 1);
    std::ofstream{control} << "keys off\n";
    EXPECT_TRUE(in_child([] {
        qx_pptp_sa_t session{};
        return qx_pptp_session_add(0, &session) == QX_BAD_SESSION_ID;
    }));
    EXPECT_NE(std::string::npos, text().find("\"key\": \"16 bytes\"")) << text();
    std::remove(control.c_str());
}

// ------------------------------------------------------------------- what a log may come upon

// A call whose log fails is carried out, and the process goes on.
static void expect_that_only_the_log_ends(const std::string &errors, const std::string &said,
                                          const std::function<void()> &prepare)
{
    EXPECT_TRUE(in_child(
        [&] {
            prepare();
            return suspended() == QX_OK && suspended() == QX_OK;
        },
        errors));
    std::ifstream file{errors};
    EXPECT_EQ("qx_sim: " + said + "; the call log ends here\n",
              (std::string{std::istreambuf_iterator<char>{file}, {}}));
}

TEST_F(environment, a_log_that_cannot_be_written_ends_with_one_complaint)
{
    if (access("/dev/full", W_OK) != 0)
        GTEST_SKIP() << "this system has no /dev/full";
    setenv("QX_SIM_LOG", "/dev/full", 1);
    expect_that_only_the_log_ends(file_, "cannot write /dev/full: No space left on device", [] {});
}

TEST_F(environment, a_limit_on_file_sizes_ends_the_log_and_not_the_process)
{
    setenv("QX_SIM_LOG", file_.c_str(), 1);
    const std::string errors = file_ + ".errors";
    expect_that_only_the_log_ends(errors, "cannot write " + file_ + ": File too large", [] {
        const rlimit few{150, 150};
        setrlimit(RLIMIT_FSIZE, &few);
    });
    std::remove(errors.c_str());
    EXPECT_EQ(text().size(), 150U);
    // The next process does not continue the half line.
    EXPECT_TRUE(in_child([] { return suspended() == QX_OK; }));
    EXPECT_EQ(text().substr(150, 24), "\n{\"call\": 1, \"process\": ");
}

TEST_F(environment, a_fifo_nobody_reads_is_not_waited_for)
{
    std::remove(file_.c_str());
    ASSERT_EQ(mkfifo(file_.c_str(), 0600), 0);
    setenv("QX_SIM_LOG", file_.c_str(), 1);
    const std::string errors = file_ + ".errors";
    EXPECT_TRUE(in_child([] { return suspended() == QX_BAD_SWITCH; }, errors));
    const std::string fifo = "cannot write " + file_;
    // A reader that goes, and one that does not read.
    expect_that_only_the_log_ends(errors, fifo + ": Broken pipe", [&] {
        const int reader = open(file_.c_str(), O_RDONLY | O_NONBLOCK);
        suspended();
        close(reader);
    });
    expect_that_only_the_log_ends(errors, fifo + ": " + std::strerror(EAGAIN), [&] {
        (void)!open(file_.c_str(), O_RDONLY | O_NONBLOCK);
        const int writer = open(file_.c_str(), O_WRONLY | O_NONBLOCK);
        const char filling[1024] = {};
        while (write(writer, filling, sizeof filling) > 0) {
        }
    });
    std::remove(errors.c_str());
}

TEST_F(environment, processes_share_a_log_line_by_line)
{
    setenv("QX_SIM_LOG", file_.c_str(), 1);
    EXPECT_TRUE(in_child([] {
        bool held = suspended() == QX_OK;
        const pid_t other = fork();
        for (int call = 0; call < 200; ++call)
            held = held && suspended() == QX_OK;
        if (other == 0)
            _exit(held ? 0 : 1);
        int status = 1;
        return waitpid(other, &status, 0) == other && status == 0 && held;
    }));
    std::istringstream all{text()};
    unsigned count = 0;
    std::set<std::string> processes;
    for (std::string line; std::getline(all, line); ++count) {
        EXPECT_TRUE(line.starts_with("{\"call\": ") && line.ends_with("}")) << line;
        processes.insert(line.substr(line.find("\"process\": "), 20));
    }
    EXPECT_EQ(count, 401U);
    EXPECT_EQ(processes.size(), 2U);
}

TEST_F(environment, a_log_that_others_may_read_is_changed)
{
    ASSERT_EQ(chmod(file_.c_str(), 0644), 0);
    setenv("QX_SIM_LOG", file_.c_str(), 1);
    EXPECT_TRUE(in_child([] { return suspended() == QX_OK; }));
    struct stat is
    {};
    ASSERT_EQ(stat(file_.c_str(), &is), 0);
    EXPECT_EQ(is.st_mode & 07777U, 0600U);
    if (getuid() != 0)
        GTEST_SKIP() << "only root can give a file away";
    // Writable, and somebody else's.
    ASSERT_EQ(chown(file_.c_str(), 1, 1), 0);
    ASSERT_EQ(chmod(file_.c_str(), 0666), 0);
    const std::string errors = file_ + ".errors";
    EXPECT_TRUE(in_child(
        [] { return setgid(65534) == 0 && setuid(65534) == 0 && suspended() == QX_BAD_SWITCH; },
        errors));
    std::ifstream file{errors};
    EXPECT_EQ("qx_sim: QX_SIM_LOG: cannot write " + file_ +
                  ": Operation not permitted, and others may read it\n",
              (std::string{std::istreambuf_iterator<char>{file}, {}}));
    std::remove(errors.c_str());
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
