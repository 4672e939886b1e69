// The extension that the benchmark scripts load next to the module: a command that does nothing,
// the marks between which instructions are counted, a bare registration loop and a bare write loop.
// Relies on Tcl's stub table; on a PC on callgrind's requests, elsewhere on instruction_counter.c.
#include <tcl.h>

#include <dlfcn.h>
#include <malloc.h>
#include <sys/syscall.h>
#include <unistd.h>

#if defined __x86_64__ && __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#endif

#include <cstring>
#include <ctime>
#include <string>
#include <vector>

namespace {

#ifdef CALLGRIND_START_INSTRUMENTATION
// Outside Valgrind, the requests do nothing.
void start_counting()
{
    CALLGRIND_START_INSTRUMENTATION;
}
void begin_region()
{
    CALLGRIND_ZERO_STATS;
}
void end_region(const char *name)
{
    CALLGRIND_DUMP_STATS_AT(name);
}
#else
// A system call that fails without effect, which the emulator's plugin recognises by its number and
// first argument. The plugin counts from the start, so only the marks are needed.
constexpr long mark_argument = 0x71787368;
void start_counting() {}
void begin_region()
{
    syscall(SYS_getpriority, mark_argument, 0);
}
void end_region(const char *)
{
    syscall(SYS_getpriority, mark_argument, 1);
}
#endif

int no_op(ClientData, Tcl_Interp *, int, Tcl_Obj *const[])
{
    return TCL_OK;
}

int start(ClientData, Tcl_Interp *, int, Tcl_Obj *const[])
{
    start_counting();
    return TCL_OK;
}

int begin(ClientData, Tcl_Interp *, int, Tcl_Obj *const[])
{
    begin_region();
    return TCL_OK;
}

// bench_end NAME: a region's name consists of letters, digits, "_" and ".".
int end(ClientData, Tcl_Interp *, int, Tcl_Obj *const words[])
{
    end_region(Tcl_GetString(words[1]));
    return TCL_OK;
}

int fail(Tcl_Interp *interp, const char *message)
{
    Tcl_SetObjResult(interp, Tcl_NewStringObj(message, -1));
    return TCL_ERROR;
}

// bench_heap: bytes currently allocated from the C library's heap.
int heap(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
#if defined __GLIBC__ && !defined __UCLIBC__
    const auto info = mallinfo2();
    Tcl_SetObjResult(interp,
                     Tcl_NewWideIntObj(static_cast<Tcl_WideInt>(info.uordblks + info.hblkhd)));
    return TCL_OK;
#else
    return fail(interp, "this C library does not tell how large its heap is");
#endif
}

// bench_cpu: nanoseconds of CPU time that this process has used, so that waiting does not count.
int cpu(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    timespec now;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    Tcl_SetObjResult(interp, Tcl_NewWideIntObj(Tcl_WideInt{now.tv_sec} * 1000000000 + now.tv_nsec));
    return TCL_OK;
}

// bench_object_size: bytes of one Tcl_Obj.
int object_size(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const[])
{
    Tcl_SetObjResult(interp, Tcl_NewIntObj(static_cast<int>(sizeof(Tcl_Obj))));
    return TCL_OK;
}

// Names that live until the process ends, like those of a command table.
std::vector<std::string> command_names;

// bench_names NAME...: what bench_register registers.
int names(ClientData, Tcl_Interp *, int count, Tcl_Obj *const words[])
{
    command_names.clear();
    for (int i = 1; i < count; ++i)
        command_names.emplace_back(Tcl_GetString(words[i]));
    return TCL_OK;
}

// bench_register INTERPRETER: the bare loop.
int register_names(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const words[])
{
    Tcl_Interp *const target = Tcl_GetSlave(interp, Tcl_GetString(words[1]));
    for (const auto &name : command_names)
        Tcl_CreateObjCommand(target, name.c_str(), no_op, nullptr, nullptr);
    return TCL_OK;
}

// bench_initialise LIBRARY INTERPRETER: calls the package's start-up function in that interpreter.
int initialise(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const words[])
{
    void *const library = dlopen(Tcl_GetString(words[1]), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr)
        return fail(interp, dlerror());
    void *const symbol = dlsym(library, "Demo_Init");
    if (symbol == nullptr)
        return fail(interp, dlerror());
    int (*demo_init)(Tcl_Interp *);
    std::memcpy(&demo_init, &symbol, sizeof demo_init);
    return demo_init(Tcl_GetSlave(interp, Tcl_GetString(words[2])));
}

// bench_write TEXT COUNT: writes the text to file descriptor 1, with one system call each time.
int write_text(ClientData, Tcl_Interp *interp, int, Tcl_Obj *const words[])
{
    int length;
    int count;
    const char *const text = Tcl_GetStringFromObj(words[1], &length);
    if (Tcl_GetIntFromObj(interp, words[2], &count) != TCL_OK)
        return TCL_ERROR;
    for (int i = 0; i < count; ++i) {
        for (int done = 0; done < length;) {
            const auto written = write(1, text + done, static_cast<std::size_t>(length - done));
            if (written < 0)
                return fail(interp, "write failed");
            done += static_cast<int>(written);
        }
    }
    return TCL_OK;
}

} // namespace

extern "C" DLLEXPORT int Floor_Init(Tcl_Interp *interp)
{
    if (Tcl_InitStubs(interp, "8.5", 0) == nullptr)
        return TCL_ERROR;
    static constexpr struct
    {
        const char *name;
        Tcl_ObjCmdProc *procedure;
    } commands[] = {
        {"no_op", no_op},
        {"bench_start", start},
        {"bench_begin", begin},
        {"bench_end", end},
        {"bench_heap", heap},
        {"bench_cpu", cpu},
        {"bench_object_size", object_size},
        {"bench_names", names},
        {"bench_register", register_names},
        {"bench_initialise", initialise},
        {"bench_write", write_text},
    };
    for (const auto &each : commands)
        Tcl_CreateObjCommand(interp, each.name, each.procedure, nullptr, nullptr);
    return TCL_OK;
}
