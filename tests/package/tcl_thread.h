// Threads with Tcl interpreters of their own, for tests that load the package in several of them.
#pragma once

#include "tests/unit/interpreter.h"

#include <dlfcn.h>

#include <functional>
#include <ostream>
#include <string>

/// What Tcl's `catch` says of a script: its status and its result.
struct outcome
{
    int status;
    std::string result;
    bool operator==(const outcome &) const = default;
};

inline std::ostream &operator<<(std::ostream &stream, const outcome &each)
{
    return stream << each.status << " {" << each.result << "}";
}

inline outcome try_script(interpreter &tcl, const std::string &script)
{
    const int status = tcl.eval(script);
    return {status, tcl.result()};
}

/// Runs a task in a thread of Tcl's. Its interpreters have to end in the task.
class tcl_thread
{
public:
    explicit tcl_thread(std::function<void()> task) : task_(std::move(task))
    {
        const int status =
            Tcl_CreateThread(&id_, run, this, TCL_THREAD_STACK_DEFAULT, TCL_THREAD_JOINABLE);
        EXPECT_EQ(status, TCL_OK);
    }
    tcl_thread(const tcl_thread &) = delete;
    tcl_thread &operator=(const tcl_thread &) = delete;
    ~tcl_thread()
    {
        int status;
        Tcl_JoinThread(id_, &status);
    }

private:
    static void run(ClientData self)
    {
        static_cast<tcl_thread *>(self)->task_();
        Tcl_ExitThread(0);
    }

    std::function<void()> task_;
    Tcl_ThreadId id_;
};

/// Runs a task in a thread and waits for its end.
inline void in_a_thread(const std::function<void()> &task)
{
    tcl_thread{task};
}

/// Keeps the library when Tcl unloads it at its end: a leak checker must still see what its pools
/// hold.
[[maybe_unused]] static void *const kept_library = dlopen(QXSH_PACKAGE, RTLD_NOW | RTLD_LOCAL);

inline const std::string load_package = "load {" QXSH_PACKAGE "} Demo";
inline const std::string count_commands = "llength [info commands qx_*]";
inline const outcome refused{TCL_ERROR, "package demo is in use in another thread"};
