/* SDK functions that take the process down, each device in a way of its own. */
#ifndef _GNU_SOURCE
#define _GNU_SOURCE /* MAP_ANONYMOUS */
#endif
#include <qx_sdk.h>

#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

static volatile int zero = 0;

static void write_to_null(void)
{
    volatile int *volatile null = NULL;
    *null = 1;
}

static void use_truncated_file(void)
{
    const size_t page = (size_t)sysconf(_SC_PAGESIZE);
    FILE *file = tmpfile();
    volatile char *bytes =
        mmap(NULL, 4 * page, PROT_READ | PROT_WRITE, MAP_SHARED, fileno(file), 0);
    bytes[3 * page] = 1;
}

/* A processor that has no division gives the signal by hand. */
static void divide_by_zero(void)
{
    zero = 1 / zero;
    raise(SIGFPE);
}

static int overflow_stack(const volatile char *above)
{
    volatile char frame[4096];
    frame[0] = above[0];
    return zero == 0 ? overflow_stack(frame) + frame[0] : 0;
}

/* Its callers' words with it: whoever looks at them crashes again. */
static void overwrite_stack(void)
{
    char here[16];
    volatile char *volatile at = here;
    for (int i = 0; i < 4096; ++i)
        at[i] = 0x5a;
    write_to_null();
}

/* Later it is found to be so by some other user of the memory. */
static void spoil_heap(void)
{
    char *volatile block = malloc(24);
    memset(block - 16, 0x5a, 4096);
    free(block);
    block = malloc(100000);
    raise(SIGSEGV);
}

static void leave_text_behind(void)
{
    static char buffer[4096];
    setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
    printf("sdk: buffered");
    write_to_null();
}

static void block_signals(void)
{
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, NULL);
    raise(SIGABRT);
    abort();
}

unsigned int qx_pm_system_suspend_enter(unsigned short dev_id)
{
    switch (dev_id) {
    case 0:
        write_to_null();
        break;
    case 1:
        use_truncated_file();
        break;
    case 2:
        divide_by_zero();
        break;
    case 3:
        __builtin_trap();
        break;
    case 4:
        abort();
        break;
    case 5:
        return (unsigned int)overflow_stack("");
    case 6:
        overwrite_stack();
        break;
    case 7:
        spoil_heap();
        break;
    case 8:
        leave_text_behind();
        break;
    case 9:
        block_signals();
        break;
    default:
        break;
    }
    return 0;
}

unsigned int qx_flow_add(unsigned short device_id, qx_flow_t *p_flow)
{
    (void)p_flow;
    return device_id == 0 ? (write_to_null(), 0) : device_id;
}

unsigned int qx_ipsec_sa_add(unsigned short device_id, unsigned int spd_handle,
                             unsigned int policy_handle, unsigned char sa_count,
                             qx_ipsec_sa_t *sa_array, unsigned int previous_sa_handle,
                             unsigned int *sa_handle)
{
    (void)spd_handle;
    (void)policy_handle;
    (void)sa_count;
    (void)sa_array;
    (void)previous_sa_handle;
    (void)sa_handle;
    write_to_null();
    return device_id;
}
