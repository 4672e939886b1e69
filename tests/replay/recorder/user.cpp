// A program that uses an SDK library and is not ours: its words are steps, each of which makes
// calls and prints what came of them.
#include <qx_sdk.h>

#include <cerrno>
#include <csetjmp>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <pthread.h>
#include <string>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static const char *program;
static sigjmp_buf way_out;

static unsigned number(const char *text)
{
    return static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

static unsigned short small(const char *text)
{
    return static_cast<unsigned short>(number(text));
}

static void leave(int)
{
    siglongjmp(way_out, 1);
}

static void call_from_handler(int)
{
    qx_flow_delete(0, 78);
}

// A call while a call runs, in the same stack or in one that is above it.
static void enter_interrupted(bool other_stack)
{
    static char room[262144];
    stack_t above{};
    above.ss_sp = room;
    above.ss_size = sizeof room;
    above.ss_flags = other_stack ? 0 : SS_DISABLE;
    sigaltstack(&above, nullptr);
    struct sigaction handler
    {};
    handler.sa_handler = call_from_handler;
    handler.sa_flags = SA_ONSTACK;
    sigaction(SIGUSR2, &handler, nullptr);
    qx_pm_system_suspend_enter(5);
    above.ss_flags = SS_DISABLE;
    sigaltstack(&above, nullptr);
}

// Two pages, of which the second cannot be read.
static char *end_of_memory(bool mapped)
{
    const long page = sysconf(_SC_PAGESIZE);
    auto *const start =
        static_cast<char *>(mmap(nullptr, static_cast<size_t>(2 * page), PROT_READ | PROT_WRITE,
                                 MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    if (mapped)
        mprotect(start + page, static_cast<size_t>(page), PROT_NONE);
    else
        munmap(start + page, static_cast<size_t>(page));
    return start + page;
}

static void *many_calls(void *)
{
    for (int count = 0; count < 500; ++count)
        qx_flow_delete(0, 1);
    return nullptr;
}

static void *one_that_stays(void *)
{
    qx_pm_system_suspend_enter(8);
    return nullptr;
}

// From further down in the stack, where what is left there stays as it is.
static void enter_below(unsigned short device)
{
    volatile char room[16384];
    room[0] = 1;
    qx_pm_system_suspend_enter(device);
    room[1] = room[0];
}

// The same, with use for the stack.
static void delete_below(unsigned short flow)
{
    char room[16384];
    std::memset(room, 1, sizeof room);
    std::printf("delete %u\n%.*s", qx_flow_delete(0, flow), room[flow] - 1, room);
}

static void add(void *flow)
{
    std::printf("add %u\n", qx_flow_add(0, static_cast<qx_flow_t *>(flow)));
}

static void add_associations(unsigned count)
{
    static qx_ipsec_sa_t all[65];
    unsigned handle = 0;
    const auto bytes = static_cast<unsigned char>(count);
    std::printf("sa %u\n", qx_ipsec_sa_add(0, 1, 2, bytes, all, 0, &handle));
}

static void try_step(const char *step, const char *word)
{
    const std::string name{step};
    if (name == "enter") {
        errno = 0;
        std::printf("enter %s: ", word);
        const unsigned status = qx_pm_system_suspend_enter(small(word));
        const int error = errno;
        std::printf("%u, errno %d\n", status, error);
    } else if (name == "delete") {
        std::printf("delete %u\n", qx_flow_delete(0, small(word)));
    } else if (name == "wild") {
        add(reinterpret_cast<void *>(static_cast<uintptr_t>(number(word))));
    } else if (name == "edge") {
        add(end_of_memory(*word == 'm') - 10);
    } else if (name == "unmapped") {
        qx_qos_map_mode_get(
            0, 0, reinterpret_cast<unsigned *>(end_of_memory(false) - sysconf(_SC_PAGESIZE)));
    } else if (name == "sas") {
        add_associations(number(word));
    } else if (name == "catch") {
        try {
            qx_pm_system_suspend_enter(small(word));
        } catch (int what) {
            std::printf("caught %d\n", what);
        }
    } else if (name == "jump") {
        signal(SIGUSR2, leave);
        if (sigsetjmp(way_out, 1) == 0)
            qx_pm_system_suspend_enter(small(word));
        else
            std::printf("jumped\n");
    } else if (name == "below") {
        signal(SIGUSR2, leave);
        if (sigsetjmp(way_out, 1) == 0)
            enter_below(small(word));
        else
            std::printf("jumped\n");
    } else if (name == "interrupt") {
        enter_interrupted(*word == 'o');
    } else if (name == "deep") {
        delete_below(small(word));
    } else if (name == "stay") {
        pthread_t one;
        pthread_create(&one, nullptr, one_that_stays, nullptr);
        usleep(100000);
    } else if (name == "threads") {
        pthread_t all[4];
        for (pthread_t &one : all)
            pthread_create(&one, nullptr, many_calls, nullptr);
        for (const pthread_t &one : all)
            pthread_join(one, nullptr);
    } else if (name == "fork") {
        if (fork() == 0) {
            try_step("delete", word);
            std::exit(0);
        }
        wait(nullptr);
    } else if (name == "start") {
        if (fork() == 0) {
            execl(program, program, "delete", word, static_cast<char *>(nullptr));
            _exit(1);
        }
        wait(nullptr);
    } else if (name == "limit") {
        const struct rlimit bytes = {number(word), number(word)};
        setrlimit(RLIMIT_FSIZE, &bytes);
    } else if (name == "block") {
        sigset_t senders;
        sigemptyset(&senders);
        sigaddset(&senders, SIGXFSZ);
        sigprocmask(SIG_BLOCK, &senders, nullptr);
        if (*word == 'r')
            raise(SIGXFSZ);
    } else if (name == "pending") {
        sigset_t pending;
        sigpending(&pending);
        std::printf("pending %d\n", sigismember(&pending, SIGXFSZ));
    } else if (name == "reopen") {
        for (int file = 3; file < 1024; ++file)
            close(file);
        for (int file = 3; file < 1024; ++file)
            open(word, O_RDWR | O_CREAT | O_APPEND, S_IRUSR | S_IWUSR);
    } else if (name == "file") {
        std::printf("file %d\n", dup(0));
    } else {
        std::printf("no step %s\n", step);
    }
    std::fflush(stdout);
}

int main(int count, char **words)
{
    program = words[0];
    for (int index = 1; index + 1 < count; index += 2)
        try_step(words[index], words[index + 1]);
    return 0;
}
