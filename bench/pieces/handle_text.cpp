// Pieces of handles: making one, making its text, reading a text and reading a remembered handle.
#include "runtime/handle.h"
#include "stubs.h"

#include <benchmark/benchmark.h>

namespace {

swig_type_record type = {"_p_qx_flow_t", "qx_flow_t *", nullptr, nullptr, nullptr, 0};
swig_cast_record casts[] = {{&type, nullptr, nullptr, nullptr}};
void *const address = reinterpret_cast<void *>(0x12345678);

Tcl_Interp *prepared()
{
    type.cast = casts;
    return stubbed_interpreter(Tcl_CreateInterp);
}

void make_handle(benchmark::State &state)
{
    prepared();
    for (auto _ : state) {
        Tcl_Obj *const object = swig_new_pointer_obj(address, &type);
        Tcl_IncrRefCount(object);
        Tcl_DecrRefCount(object);
    }
}
BENCHMARK(make_handle);

void make_handle_and_text(benchmark::State &state)
{
    prepared();
    for (auto _ : state) {
        Tcl_Obj *const object = swig_new_pointer_obj(address, &type);
        Tcl_IncrRefCount(object);
        benchmark::DoNotOptimize(Tcl_GetString(object));
        Tcl_DecrRefCount(object);
    }
}
BENCHMARK(make_handle_and_text);

void read_text(benchmark::State &state)
{
    Tcl_Interp *const interp = prepared();
    for (auto _ : state) {
        void *pointer;
        benchmark::DoNotOptimize(
            SWIG_Tcl_ConvertPtrFromString(interp, "_78563412_p_qx_flow_t", &pointer, &type, 0));
        benchmark::DoNotOptimize(pointer);
    }
}
BENCHMARK(read_text);

void read_remembered(benchmark::State &state)
{
    Tcl_Interp *const interp = prepared();
    Tcl_Obj *const object = swig_new_pointer_obj(address, &type);
    Tcl_IncrRefCount(object);
    for (auto _ : state) {
        void *pointer;
        benchmark::DoNotOptimize(swig_convert_ptr(interp, object, &pointer, &type, 0));
        benchmark::DoNotOptimize(pointer);
    }
    Tcl_DecrRefCount(object);
}
BENCHMARK(read_remembered);

void unpack_digits(benchmark::State &state)
{
    for (auto _ : state) {
        unsigned char bytes[4];
        benchmark::DoNotOptimize(swig_unpack_hex("78563412", bytes, sizeof bytes));
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(unpack_digits);

} // namespace
