// An SDK library that whoever records its calls has to stand: qx_pm_system_suspend_enter does to
// its process what the device says.
#include <qx_sdk.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

static volatile unsigned came;

static void call_from_handler(int)
{
    came = qx_flow_delete(0, 77);
}

static void call_itself()
{
    qx_flow_delete(0, 11);
    qx_pm_system_suspend_enter(2);
}

static void *call_from_thread(void *)
{
    qx_flow_delete(0, 13);
    return nullptr;
}

static void call_from_own_thread()
{
    pthread_t own;
    pthread_create(&own, nullptr, call_from_thread, nullptr);
    pthread_join(own, nullptr);
}

static void close_all()
{
    for (int file = 3; file < 2048; ++file)
        close(file);
}

static void allow_few_bytes()
{
    const struct rlimit few = {300, 300};
    setrlimit(RLIMIT_FSIZE, &few);
    signal(SIGXFSZ, SIG_DFL);
}

unsigned int qx_pm_system_suspend_enter(unsigned short dev_id)
{
    switch (dev_id) {
    case 0:
        *static_cast<volatile int *>(nullptr) = 1;
        break;
    case 1:
        call_itself();
        break;
    case 2:
        std::printf("sdk: printed, ");
        break;
    case 3:
        signal(SIGUSR1, call_from_handler);
        raise(SIGUSR1);
        break;
    case 4:
        throw 4;
    case 5: // for a handler that does not return
        raise(SIGUSR2);
        break;
    case 6:
        _exit(6);
    case 7:
        std::exit(7);
    case 8:
        for (;;)
            pause();
    case 9:
        close_all();
        break;
    case 10:
        allow_few_bytes();
        break;
    case 11:
        abort();
    case 12: // as its last act, so that it returns where this function would
        return qx_flow_delete(0, 12);
    case 13:
        call_from_own_thread();
        break;
    default:
        break;
    }
    errno = 4711;
    return dev_id;
}

// Takes the page of the cell away.
unsigned int qx_qos_map_mode_get(unsigned short, unsigned short, unsigned int *cell)
{
    munmap(cell, 1);
    return 1;
}
