// Pieces of dumps: a filled flow of 114 lines and a VLAN tag of three, without the device behind
// them.
#include "helpers.h"
#include "helpers/output.h"

#include <benchmark/benchmark.h>

#include <cstring>

namespace {

std::size_t written = 0;

void count_bytes(const char *, std::size_t size)
{
    written += size;
}

void dump_flow(benchmark::State &state)
{
    qxsh::set_output(count_bytes);
    qx_flow_t flow;
    std::memset(&flow, 0xa5, sizeof flow);
    written = 0;
    for (auto _ : state)
        qx_flow_dump(&flow);
    state.SetBytesProcessed(static_cast<std::int64_t>(written));
}
BENCHMARK(dump_flow);

void dump_vlan(benchmark::State &state)
{
    qxsh::set_output(count_bytes);
    qx_vlan_t tag;
    std::memset(&tag, 0xa5, sizeof tag);
    written = 0;
    for (auto _ : state)
        qx_vlan_dump(&tag);
    state.SetBytesProcessed(static_cast<std::int64_t>(written));
}
BENCHMARK(dump_vlan);

void create_and_free_flow(benchmark::State &state)
{
    for (auto _ : state)
        qx_data_free(qx_flow_create());
}
BENCHMARK(create_and_free_flow);

} // namespace
