/* A plugin of qemu's user-mode emulators that counts the instructions of the emulated program. It
 * writes the count so far, one line each, whenever the program makes the system call that floor.cpp
 * marks with, and at its end. Option out=FILE. Relies on version 1 of qemu's plugin interface,
 * whose header is not packaged: what is used of it is declared here. Counts are exact for programs
 * of one thread. */
#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef uint64_t qemu_plugin_id_t;
typedef struct
{
    const char *target_name;
    struct
    {
        int min;
        int cur;
    } version;
    bool system_emulation;
} qemu_info_t; /* has more members behind these, for whole machines */

struct qemu_plugin_tb;
struct qemu_plugin_insn;
enum qemu_plugin_op { QEMU_PLUGIN_INLINE_ADD_U64 };

size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb *block);
struct qemu_plugin_insn *qemu_plugin_tb_get_insn(const struct qemu_plugin_tb *block, size_t index);
const char *qemu_plugin_insn_symbol(const struct qemu_plugin_insn *instruction);
void qemu_plugin_register_vcpu_insn_exec_inline(struct qemu_plugin_insn *instruction,
                                                enum qemu_plugin_op op, void *target,
                                                uint64_t operand);
void qemu_plugin_register_vcpu_tb_trans_cb(qemu_plugin_id_t id,
                                           void (*callback)(qemu_plugin_id_t id,
                                                            struct qemu_plugin_tb *block));
void qemu_plugin_register_vcpu_syscall_cb(qemu_plugin_id_t id,
                                          void (*callback)(qemu_plugin_id_t id, unsigned int vcpu,
                                                           int64_t number, uint64_t a1, uint64_t a2,
                                                           uint64_t a3, uint64_t a4, uint64_t a5,
                                                           uint64_t a6, uint64_t a7, uint64_t a8));
void qemu_plugin_register_atexit_cb(qemu_plugin_id_t id,
                                    void (*callback)(qemu_plugin_id_t id, void *data), void *data);

#define EXPORTED __attribute__((visibility("default")))

EXPORTED int qemu_plugin_version = 1;

enum { arm_getpriority = 96, mark_argument = 0x71787368 };

static uint64_t executed;
static FILE *out;

/* The functions met so far; the emulator knows no names in shared libraries: those share an empty
 * one. */
struct function
{
    const char *name;
    uint64_t executed;
    uint64_t at_begin;
};
enum { greatest_number = 4096 };
static struct function functions[greatest_number];
static size_t function_count;
static bool by_function;

/* Beyond the greatest number all functions count as the last. */
static struct function *function_named(const char *name)
{
    size_t i = 0;
    while (i < function_count && strcmp(functions[i].name, name) != 0)
        ++i;
    if (i == function_count && function_count < greatest_number)
        functions[function_count++].name = strdup(name);
    return &functions[i < greatest_number ? i : greatest_number - 1];
}

static void count_for_function(struct qemu_plugin_insn *instruction)
{
    const char *const symbol = qemu_plugin_insn_symbol(instruction);
    struct function *const function = function_named(symbol != NULL ? symbol : "");
    qemu_plugin_register_vcpu_insn_exec_inline(instruction, QEMU_PLUGIN_INLINE_ADD_U64,
                                               &function->executed, 1);
}

static void count_block(qemu_plugin_id_t id, struct qemu_plugin_tb *block)
{
    (void)id;
    const size_t count = qemu_plugin_tb_n_insns(block);
    for (size_t i = 0; i < count; ++i) {
        struct qemu_plugin_insn *const instruction = qemu_plugin_tb_get_insn(block, i);
        qemu_plugin_register_vcpu_insn_exec_inline(instruction, QEMU_PLUGIN_INLINE_ADD_U64,
                                                   &executed, 1);
        if (by_function)
            count_for_function(instruction);
    }
}

static void print_count(const char *what)
{
    fprintf(out, "%s %llu\n", what, (unsigned long long)executed);
    fflush(out);
}

static void begin_functions(void)
{
    for (size_t i = 0; i < function_count; ++i)
        functions[i].at_begin = functions[i].executed;
}

static void print_functions(void)
{
    for (size_t i = 0; i < function_count; ++i) {
        const uint64_t count = functions[i].executed - functions[i].at_begin;
        if (count != 0)
            fprintf(out, "function %llu %s\n", (unsigned long long)count, functions[i].name);
    }
    fflush(out);
}

static void look_for_mark(qemu_plugin_id_t id, unsigned int vcpu, int64_t number, uint64_t a1,
                          uint64_t a2, uint64_t a3, uint64_t a4, uint64_t a5, uint64_t a6,
                          uint64_t a7, uint64_t a8)
{
    (void)id, (void)vcpu, (void)a3, (void)a4, (void)a5, (void)a6, (void)a7, (void)a8;
    if (number != arm_getpriority || a1 != mark_argument)
        return;
    print_count(a2 == 0 ? "begin" : "end");
    if (a2 == 0)
        begin_functions();
    else
        print_functions();
}

static void print_total(qemu_plugin_id_t id, void *data)
{
    (void)id, (void)data;
    print_count("total");
}

EXPORTED int qemu_plugin_install(qemu_plugin_id_t id, const qemu_info_t *info, int argc,
                                 char **argv)
{
    (void)info;
    out = stderr;
    for (int i = 0; i < argc; ++i) {
        if (strncmp(argv[i], "out=", 4) == 0)
            out = fopen(argv[i] + 4, "w");
        else if (strcmp(argv[i], "functions=yes") == 0)
            by_function = true;
    }
    if (out == NULL)
        return -1;
    qemu_plugin_register_vcpu_tb_trans_cb(id, count_block);
    qemu_plugin_register_vcpu_syscall_cb(id, look_for_mark);
    qemu_plugin_register_atexit_cb(id, print_total, NULL);
    return 0;
}
