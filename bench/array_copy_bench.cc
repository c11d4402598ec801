// Placeholder baseline: memcpy bandwidth, the reference of every ratio.
#include <benchmark/benchmark.h>

#include <cstring>
#include <vector>

static void BM_Memcpy(benchmark::State& state) {
  std::vector<char> a(static_cast<std::size_t>(state.range(0)), 'x'), b(a.size());
  for (auto _ : state) {
    std::memcpy(b.data(), a.data(), a.size());
    benchmark::DoNotOptimize(b.data());
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Memcpy)->Arg(1 << 24);
