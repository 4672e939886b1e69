// Calling a library that nobody knows; see checked_library.h.
#include "replay/checked_library.h"

#include "replay/sdk_library.h"
#include "replay/trace.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qxtrace {

using namespace qxsh;

checked_library::checked_library() : library_(dlopen("libqx-sdk.so", RTLD_NOW | RTLD_LOCAL))
{
    if (library_ == nullptr)
        throw trace_error{std::string{"no SDK library: "} + dlerror()};
    for (unsigned i = 0; i < call_count; ++i) {
        void *const function = dlsym(library_, call_rows[i].name.text());
        std::memcpy(&functions_[i], &function, sizeof function);
        if (function != nullptr && path_.empty())
            path_ = file_of(functions_[i]).path;
    }
    if (path_.empty())
        path_ = "libqx-sdk.so";
}

std::uint32_t checked_library::call(const recorded_call &call,
                                    std::vector<std::vector<unsigned char>> &memory) const
{
    const auto number = static_cast<unsigned>(call.row - call_rows);
    if (functions_[number] == nullptr)
        throw trace_error{path_ + " has no function " + call.row->name.text()};
    call_word words[most_call_arguments];
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        const bool pointer = arguments_of(*call.row)[i].pointer;
        if (!pointer)
            words[i].value = call.arguments[i].value;
        else if (!call.arguments[i].null)
            words[i].pointer = memory[i].data();
    }
    return call_through(number, functions_[number], words);
}

// ------------------------------------------------------------------------------- the process

namespace {

// What comes through the pipe before each call; number 0 with line 0 is the end of the work.
struct message
{
    std::uint64_t number;
    std::uint64_t line;
    std::uint64_t function;
};

void send(int file, const message &what)
{
    // Less than PIPE_BUF: it goes whole or, if nobody listens any more, not at all.
    while (write(file, &what, sizeof what) < 0 && errno == EINTR)
        continue;
}

// Reads until the child ends; the last message is where it was.
message last_message(int file)
{
    message result{};
    message buffer[128];
    std::size_t have = 0;
    auto *const bytes = reinterpret_cast<char *>(buffer);
    for (;;) {
        const ssize_t more = read(file, bytes + have, sizeof buffer - have);
        if (more < 0 && errno == EINTR)
            continue;
        if (more <= 0)
            return result;
        have += static_cast<std::size_t>(more);
        const std::size_t whole = have / sizeof(message);
        if (whole == 0)
            continue;
        result = buffer[whole - 1];
        have -= whole * sizeof(message);
        std::memmove(bytes, bytes + whole * sizeof(message), have);
    }
}

std::string end_of_child(int status)
{
    if (WIFSIGNALED(status))
        return "signal " + std::to_string(WTERMSIG(status)) + ", " + strsignal(WTERMSIG(status));
    return "status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

void call_pipe::begin(const recorded_call &call) const
{
    send(file_, {call.number, call.line, static_cast<std::uint64_t>(call.row - call_rows)});
}

int run_apart(const std::string &recording, const std::function<int(const call_pipe &)> &work)
{
    int files[2];
    if (pipe(files) != 0)
        throw trace_error{std::string{"no pipe: "} + std::strerror(errno)};
    const pid_t child = fork();
    if (child < 0)
        throw trace_error{std::string{"no process: "} + std::strerror(errno)};
    if (child == 0) {
        close(files[0]);
        std::setvbuf(stdout, nullptr, _IOLBF, 0); // what was printed is not lost
        const int result = exit_status([&] { return work(call_pipe{files[1]}); });
        send(files[1], {});
        _exit(result);
    }
    close(files[1]);
    const message last = last_message(files[0]);
    close(files[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        continue;
    if (last.line == 0 && WIFEXITED(status))
        return WEXITSTATUS(status);
    const std::string how = end_of_child(status);
    if (last.line == 0)
        throw trace_error{"the process that called the library ended with " + how};
    print("call " + std::to_string(last.number) + ", " + call_rows[last.function].name.text() +
          ": the library ended the process with " + how + "; the recording goes on (" + recording +
          ":" + std::to_string(last.line) + ")\n");
    return differs;
}

} // namespace qxtrace
