// Pieces of number conversion: words that are integers already, words that are texts, and results.
#include "runtime/numbers.h"
#include "stubs.h"

#include <benchmark/benchmark.h>

namespace {

Tcl_Obj *kept(Tcl_Obj *object)
{
    Tcl_IncrRefCount(object);
    return object;
}

void unsigned_from_integer(benchmark::State &state)
{
    stubbed_interpreter(Tcl_CreateInterp);
    Tcl_Obj *const word = kept(Tcl_NewIntObj(1234));
    for (auto _ : state) {
        unsigned int value;
        benchmark::DoNotOptimize(swig_as_val_unsigned_int(nullptr, word, &value));
        benchmark::DoNotOptimize(value);
    }
    Tcl_DecrRefCount(word);
}
BENCHMARK(unsigned_from_integer);

// Each pass reads a text that was never read; making it is part of the time.
void unsigned_from_text(benchmark::State &state)
{
    stubbed_interpreter(Tcl_CreateInterp);
    for (auto _ : state) {
        Tcl_Obj *const word = kept(Tcl_NewStringObj("1234", 4));
        unsigned int value;
        benchmark::DoNotOptimize(swig_as_val_unsigned_int(nullptr, word, &value));
        benchmark::DoNotOptimize(value);
        Tcl_DecrRefCount(word);
    }
}
BENCHMARK(unsigned_from_text);

void text_alone(benchmark::State &state)
{
    stubbed_interpreter(Tcl_CreateInterp);
    for (auto _ : state)
        Tcl_DecrRefCount(kept(Tcl_NewStringObj("1234", 4)));
}
BENCHMARK(text_alone);

// Too great for an integer of 32 bits: read by its text.
void unsigned_from_great_integer(benchmark::State &state)
{
    stubbed_interpreter(Tcl_CreateInterp);
    Tcl_Obj *const word = kept(Tcl_NewStringObj("4294967295", -1));
    for (auto _ : state) {
        unsigned int value;
        benchmark::DoNotOptimize(swig_as_val_unsigned_int(nullptr, word, &value));
        benchmark::DoNotOptimize(value);
    }
    Tcl_DecrRefCount(word);
}
BENCHMARK(unsigned_from_great_integer);

void integer_result(benchmark::State &state)
{
    stubbed_interpreter(Tcl_CreateInterp);
    for (auto _ : state)
        Tcl_DecrRefCount(kept(swig_from_unsigned_long(1234)));
}
BENCHMARK(integer_result);

void text_result(benchmark::State &state)
{
    stubbed_interpreter(Tcl_CreateInterp);
    for (auto _ : state)
        Tcl_DecrRefCount(kept(swig_from_unsigned_long(4294967295)));
}
BENCHMARK(text_result);

} // namespace
