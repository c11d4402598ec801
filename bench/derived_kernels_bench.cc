// Automatic quantity kernels on 10,000,000 rows by 2 arguments, against the
// memcpy bandwidth of the same run.
//
// Throughput is counted in bytes of arguments read (rows x 2 x 4 bytes) per
// second. Each kernel also reports `x_memcpy`: its throughput divided by the
// memcpy throughput of BM_Memcpy, which runs first in the same process and
// copies the same number of bytes (bytes copied per second, the usual
// memcpy figure; the best of its repetitions). When BM_Memcpy is filtered
// out, a start-up measurement of the same copy stands in. The output vector
// is reused from one iteration to the next, as a caller that converts
// column after column would.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <vector>

#include "vndata/derived/mx_automatic_dq.h"

using namespace vndata;

namespace {

constexpr int32_t kRows = 10'000'000;
constexpr float kNull = -999.0f;
constexpr double kArgBytes = 2.0 * kRows * sizeof(float);

// Two argument columns without a zero denominator, and optionally one row in
// a hundred made null.
Array2<float> MakeArgs(bool qNulls) {
  Array2<float> a(1, kRows, 1, 2);
  float* c1 = a.Column(1);
  float* c2 = a.Column(2);
  for (int32_t i = 0; i < kRows; ++i) {
    c1[i] = 0.5f + static_cast<float>(i % 1000);
    c2[i] = 1.0f + static_cast<float>(i % 37);
    if (qNulls && i % 100 == 50) (i % 200 == 50 ? c1 : c2)[i] = kNull;
  }
  return a;
}

const Array2<float>& Args(bool qNulls) {
  static const Array2<float> clean = MakeArgs(false);
  static const Array2<float> nulls = MakeArgs(true);
  return qNulls ? nulls : clean;
}

// Bytes copied per second by BM_Memcpy in this run (0 before it ran).
double g_memcpyRate = 0.0;

// Best of several copies of kArgBytes: bytes copied per second.
double MemcpyBytesPerSecond() {
  if (g_memcpyRate > 0.0) return g_memcpyRate;
  static const double rate = [] {
    std::vector<char> src(static_cast<std::size_t>(kArgBytes), 'x'), dst(src.size(), 'y');
    double best = 0.0;
    for (int rep = 0; rep < 7; ++rep) {
      auto t0 = std::chrono::steady_clock::now();
      std::memcpy(dst.data(), src.data(), src.size());
      benchmark::DoNotOptimize(dst.data());
      benchmark::ClobberMemory();
      auto t1 = std::chrono::steady_clock::now();
      double s = std::chrono::duration<double>(t1 - t0).count();
      if (rep > 0) best = std::max(best, kArgBytes / s);  // the first pays for the pages
    }
    return best;
  }();
  return rate;
}

void Report(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                          static_cast<int64_t>(kArgBytes));
  state.counters["x_memcpy"] = benchmark::Counter(kArgBytes / MemcpyBytesPerSecond(),
                                                  benchmark::Counter::kIsIterationInvariantRate);
}

void BM_Memcpy(benchmark::State& state) {
  std::vector<char> src(static_cast<std::size_t>(kArgBytes), 'x'), dst(src.size(), 'y');
  auto t0 = std::chrono::steady_clock::now();
  for (auto _ : state) {
    std::memcpy(dst.data(), src.data(), src.size());
    benchmark::DoNotOptimize(dst.data());
    benchmark::ClobberMemory();
  }
  double s = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
  if (state.iterations() > 0 && s > 0.0)
    g_memcpyRate = std::max(g_memcpyRate, static_cast<double>(state.iterations()) * kArgBytes / s);
  Report(state);
}

void BM_AdditionDQ(benchmark::State& state) {
  const Array2<float>& args = Args(false);
  mxAutomaticDQ adq;
  Array<float> out;
  bool qOK = false;
  for (auto _ : state) {
    adq.AdditionDQ(args, out, qOK);
    benchmark::DoNotOptimize(out.data());
  }
  Report(state);
}

void BM_RatioDQ(benchmark::State& state) {
  const Array2<float>& args = Args(false);
  mxAutomaticDQ adq;
  Array<float> out;
  bool qOK = false;
  for (auto _ : state) {
    adq.RatioDQ(args, kNull, out, qOK);
    benchmark::DoNotOptimize(out.data());
  }
  Report(state);
}

// range(0): the rule; range(1): 1 with one row in a hundred null.
void BM_CalculateADQWithNull(benchmark::State& state) {
  const Array2<float>& args = Args(state.range(1) != 0);
  int32_t iRule = static_cast<int32_t>(state.range(0));
  mxAutomaticDQ adq;
  Array<float> out;
  bool qOK = false;
  for (auto _ : state) {
    adq.CalculateADQWithNull(iRule, args, true, kNull, out, qOK);
    benchmark::DoNotOptimize(out.data());
  }
  if (!qOK) state.SkipWithError("the rule reported failure");
  Report(state);
}

}  // namespace

BENCHMARK(BM_Memcpy)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_AdditionDQ)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_RatioDQ)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_CalculateADQWithNull)
    ->ArgNames({"rule", "nulls"})
    ->Args({kADQAddition, 0})
    ->Args({kADQRatio, 0})
    ->Args({kADQAddition, 1})
    ->Args({kADQRatio, 1})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
