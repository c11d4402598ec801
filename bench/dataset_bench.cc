// Data set benchmarks. Each one times its operation and, in the same
// iteration, a baseline memcpy of the same bytes, and reports the ratio of
// the two as the counter "ratio" (the figure the targets are set on):
//
//   bInitialiseFrom2d  20,000 x 2,000 with packed headers, limits included,
//                      against one memcpy of the 160 MB block   (target <= 3)
//   GetValues          one column of 1,000,000 rows, against a memcpy of
//                      that column                               (target <= 1.5)
//   AppendRows         1,000,000 rows in calls of 10, against one memcpy
//                      of all the bytes appended                 (target <= 3)
//   PackUnpack         headers of 50,000 columns packed and unpacked; the
//                      times are reported, with a memcpy of the records as
//                      the reference
//
// The memcpy baselines ("ratio") write into memory that is already mapped,
// allocated the way the library allocates its arrays: the strict
// comparison. "ratio_fresh" compares with a memcpy into memory freshly taken
// the same way (allocation and release timed too), which pays what fresh
// memory costs on the machine, as a load or an append must.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/vocabulary.h"

using namespace vndata;

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point a, Clock::time_point b) {
  return std::chrono::duration<double>(b - a).count();
}

Array2<float> MakeBlock(int32_t nRows, int32_t nCols) {
  Array2<float> a(1, nRows, 1, nCols);
  float* p = a.data();
  for (std::size_t k = 0; k < a.size(); ++k) p[k] = static_cast<float>(k % 9973) * 0.5f - 100.0f;
  return a;
}

void PutField(Array2<uint8_t>& b, int32_t c, int32_t id, const std::string& text) {
  int32_t pos = 0, width = 0;
  InitSingleAttPos(id, pos, width);
  std::memcpy(&b(pos, c), text.data(), std::min<std::size_t>(text.size(), static_cast<std::size_t>(width)));
}

// Headers with the repetition of a summary file: one origin, a few classes,
// hundreds of members, a couple of hundred variables.
Array2<uint8_t> MakeHeaders(int32_t nCols) {
  Array2<uint8_t> b(1, kPackedRecordSize, 1, nCols);
  b.Fill(' ');
  const char* classes[] = {"WELLS", "GROUPS", "REGIONS", "BLOCKS", "FIELD"};
  for (int32_t c = 1; c <= nCols; ++c) {
    PutField(b, c, ATT_ORIGIN, "BENCH_CASE");
    PutField(b, c, ATT_TYPE, "SUMMARY");
    PutField(b, c, ATT_CLASS, classes[c % 5]);
    PutField(b, c, ATT_MEMBER, "MEMBER-" + std::to_string(c % 500));
    PutField(b, c, ATT_VARIABLE, "VAR" + std::to_string(c % 200));
    PutField(b, c, ATT_UNITS, "UNIT" + std::to_string(c % 20));
    PutField(b, c, ATT_VERBOSE, "Description of VAR" + std::to_string(c % 200));
    PutField(b, c, ATT_INDEX, std::to_string(c % 100));
  }
  return b;
}

// Times of one benchmark, iteration by iteration. Each iteration times the
// baseline and the operation one right after the other, so both meet the
// same load of the machine; the ratio reported is the median of the
// iterations' ratios, with the ratio of the mean times beside it.
struct Times {
  std::vector<double> op, base, fresh;
  void Add(double tOp, double tBase, double tFresh) {
    op.push_back(tOp);
    base.push_back(tBase);
    fresh.push_back(tFresh);
  }
  static double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    const std::size_t n = v.size();
    return n % 2 ? v[n / 2] : 0.5 * (v[n / 2 - 1] + v[n / 2]);
  }
  static double Sum(const std::vector<double>& v) {
    double s = 0;
    for (double x : v) s += x;
    return s;
  }
  void Report(benchmark::State& state) const {
    std::vector<double> r, rf;
    for (std::size_t i = 0; i < op.size(); ++i) {
      r.push_back(op[i] / base[i]);
      if (fresh[i] > 0) rf.push_back(op[i] / fresh[i]);
    }
    state.counters["op_ms"] = 1e3 * Median(op);
    state.counters["memcpy_ms"] = 1e3 * Median(base);
    state.counters["ratio"] = Median(r);
    state.counters["ratio_of_means"] = Sum(op) / Sum(base);
    if (!rf.empty()) state.counters["ratio_fresh"] = Median(rf);
  }
};

// A memcpy into fresh memory taken the way the library takes an array of
// that size, timed with the allocation and the release.
double FreshCopy(const void* src, std::size_t n) {
  const auto t0 = Clock::now();
  {
    Array<float> dst(1, static_cast<int32_t>(n / sizeof(float)));
    std::memcpy(dst.data(), src, n);
    benchmark::DoNotOptimize(dst.data());
  }
  const auto t1 = Clock::now();
  return Seconds(t0, t1);
}

}  // namespace

static void BM_bInitialiseFrom2d(benchmark::State& state) {
  const int32_t nRows = 20000, nCols = 2000;
  const Array2<float> source = MakeBlock(nRows, nCols);
  const Array2<uint8_t> headers = MakeHeaders(nCols);
  const std::size_t bytes = source.size() * sizeof(float);
  Array2<float> dst(1, nRows, 1, nCols);
  dst.Fill(1.0f);
  Times times;
  for (auto _ : state) {
    const auto b0 = Clock::now();
    std::memcpy(dst.data(), source.data(), bytes);
    benchmark::DoNotOptimize(dst.data());
    const auto b1 = Clock::now();
    const double tFresh = FreshCopy(source.data(), bytes);

    Array2<float> a = source;  // the reader's array, made outside the timing
    auto ds = std::make_unique<mxDataSet>();
    bool qOK = false;
    const auto t0 = Clock::now();
    ds->bInitialiseFrom2d(a, headers, qOK);
    const auto t1 = Clock::now();
    float v = 0;
    if (!qOK || !ds->GetValue(nRows, nCols, v) || v != source(nRows, nCols)) state.SkipWithError("load failed");
    times.Add(Seconds(t0, t1), Seconds(b0, b1), tFresh);
    state.SetIterationTime(Seconds(t0, t1));
  }
  times.Report(state);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_bInitialiseFrom2d)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);

static void BM_GetValues(benchmark::State& state) {
  const int32_t nRows = 1000000, nCols = 4;
  mxDataSet ds;
  Array2<float> a = MakeBlock(nRows, nCols);
  Array2<uint8_t> headers = MakeHeaders(nCols);
  bool qOK = false;
  ds.bInitialiseFrom2d(a, headers, qOK);
  const std::size_t bytes = nRows * sizeof(float);
  Array<float> dst(1, nRows);
  dst.Fill(1.0f);
  Array<float> out;
  Times times;
  int32_t col = 1;
  for (auto _ : state) {
    const float* src = reinterpret_cast<const float*>(ds.ValuesPtr(col));
    const auto b0 = Clock::now();
    std::memcpy(dst.data(), src, bytes);
    benchmark::DoNotOptimize(dst.data());
    const auto b1 = Clock::now();
    const double tFresh = FreshCopy(src, bytes);
    const auto t0 = Clock::now();
    const bool q = ds.GetValues(col, out);
    benchmark::DoNotOptimize(out.data());
    const auto t1 = Clock::now();
    if (!q) state.SkipWithError("GetValues failed");
    times.Add(Seconds(t0, t1), Seconds(b0, b1), tFresh);
    state.SetIterationTime(Seconds(t0, t1));
    col = col % nCols + 1;
  }
  times.Report(state);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_GetValues)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(200);

static void BM_AppendRows(benchmark::State& state) {
  const int32_t nCols = 16, nChunk = 10, nTotal = 1000000;
  const Array2<float> chunk = MakeBlock(nChunk, nCols);
  const std::size_t bytes = static_cast<std::size_t>(nTotal) * nCols * sizeof(float);
  const Array2<float> all = MakeBlock(nTotal, nCols);
  Array2<float> dst(1, nTotal, 1, nCols);
  dst.Fill(1.0f);
  Times times;
  for (auto _ : state) {
    const auto b0 = Clock::now();
    std::memcpy(dst.data(), all.data(), bytes);
    benchmark::DoNotOptimize(dst.data());
    const auto b1 = Clock::now();
    const double tFresh = FreshCopy(all.data(), bytes);

    auto ds = std::make_unique<mxDataSet>();
    ds->Dimension(nCols, 1);
    bool qOK = true;
    const auto t0 = Clock::now();
    for (int32_t k = 0; k < nTotal / nChunk && qOK; ++k) ds->AddRowsToDatasetBuffer(chunk, qOK);
    const auto t1 = Clock::now();
    if (!qOK || ds->get_NumRows() != nTotal + 1) state.SkipWithError("append failed");
    times.Add(Seconds(t0, t1), Seconds(b0, b1), tFresh);
    state.SetIterationTime(Seconds(t0, t1));
  }
  times.Report(state);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_AppendRows)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);

static void BM_PackUnpackHeaders(benchmark::State& state) {
  const int32_t nCols = 50000;
  const Array2<uint8_t> headers = MakeHeaders(nCols);
  mxDataSet source;
  source.Dimension(nCols, 1);
  bool qOK = false;
  source.UnpackbHeaders(headers, qOK);
  std::vector<uint8_t> dst(headers.size(), 1);
  double tPack = 0, tUnpack = 0, tBase = 0;
  for (auto _ : state) {
    const auto b0 = Clock::now();
    std::memcpy(dst.data(), headers.data(), headers.size());
    benchmark::DoNotOptimize(dst.data());
    const auto b1 = Clock::now();
    tBase += Seconds(b0, b1);

    Array2<uint8_t> packed;
    const auto p0 = Clock::now();
    source.bgetHeaders(packed, qOK);
    const auto p1 = Clock::now();
    if (!qOK || std::memcmp(packed.data(), headers.data(), headers.size()) != 0)
      state.SkipWithError("pack failed");

    auto target = std::make_unique<mxDataSet>();
    target->Dimension(nCols, 1);
    const auto u0 = Clock::now();
    target->bInitialiseColumnAttributes(packed, qOK);
    const auto u1 = Clock::now();
    if (!qOK) state.SkipWithError("unpack failed");
    tPack += Seconds(p0, p1);
    tUnpack += Seconds(u0, u1);
    state.SetIterationTime(Seconds(p0, p1) + Seconds(u0, u1));
  }
  const double n = static_cast<double>(state.iterations());
  state.counters["pack_ms"] = 1e3 * tPack / n;
  state.counters["unpack_ms"] = 1e3 * tUnpack / n;
  state.counters["memcpy_ms"] = 1e3 * tBase / n;
  state.counters["ratio"] = (tPack + tUnpack) / tBase;
}
BENCHMARK(BM_PackUnpackHeaders)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);
