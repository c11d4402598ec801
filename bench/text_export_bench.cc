// Text export benchmark. A data set of 100,000 rows by 200 columns is
// written in the plain comma-separated layout (WriteAsCSV, the host answering
// no to the layout question), and in the same iteration a baseline formats
// the same floats with snprintf("%.7G") into lines of the same shape and
// writes them to a file the same way. Both are reported as MB/s of text
// written; "ratio" is the median over the iterations of
// export time / baseline time (target: at most 1).
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
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

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  const std::size_t n = v.size();
  return n % 2 ? v[n / 2] : 0.5 * (v[n / 2 - 1] + v[n / 2]);
}

// Values of the kinds a summary holds side by side: rates in the thousands,
// cumulative totals in the millions, pressures, fractions, whole numbers.
Array2<float> MakeBlock(int32_t nRows, int32_t nCols) {
  Array2<float> a(1, nRows, 1, nCols);
  for (int32_t j = 1; j <= nCols; ++j) {
    for (int32_t i = 1; i <= nRows; ++i) {
      const float t = static_cast<float>(i);
      float v = 0.0f;
      switch (j % 5) {
        case 0: v = 1234.5678f + 0.37f * t; break;
        case 1: v = 1.0e6f + 987.654f * t; break;
        case 2: v = 250.0f - 1.0e-3f * t; break;
        case 3: v = static_cast<float>((i * 7919) % 10007) / 10007.0f; break;
        default: v = static_cast<float>(i); break;
      }
      a(i, j) = v;
    }
  }
  return a;
}

void PutField(Array2<uint8_t>& b, int32_t c, int32_t id, const std::string& text) {
  int32_t pos = 0, width = 0;
  InitSingleAttPos(id, pos, width);
  std::memcpy(&b(pos, c), text.data(), std::min<std::size_t>(text.size(), static_cast<std::size_t>(width)));
}

Array2<uint8_t> MakeHeaders(int32_t nCols) {
  Array2<uint8_t> b(1, kPackedRecordSize, 1, nCols);
  b.Fill(' ');
  for (int32_t c = 1; c <= nCols; ++c) {
    PutField(b, c, ATT_ORIGIN, "BENCH_CASE");
    PutField(b, c, ATT_TYPE, "SUMMARY");
    PutField(b, c, ATT_CLASS, "WELLS");
    PutField(b, c, ATT_MEMBER, "W" + std::to_string(c));
    PutField(b, c, ATT_VARIABLE, "VAR" + std::to_string(c % 20));
    PutField(b, c, ATT_UNITS, "SM3/DAY");
    PutField(b, c, ATT_VERBOSE, "Description " + std::to_string(c % 20));
  }
  return b;
}

// The baseline: the same values, each through snprintf("%.7G"), joined by
// "," into CR LF lines in a buffer of the export's size, written with fwrite.
std::size_t WriteBaseline(const std::string& zFile, const Array2<float>& a, int32_t nRows,
                          int32_t nCols) {
  std::FILE* f = std::fopen(zFile.c_str(), "wb");
  if (!f) return 0;
  std::vector<char> buffer(std::size_t{1} << 18);
  std::size_t used = 0, total = 0;
  const float* base = a.data();
  for (int32_t i = 0; i < nRows; ++i) {
    if (used + static_cast<std::size_t>(nCols) * 24 + 2 > buffer.size()) {
      std::fwrite(buffer.data(), 1, used, f);
      total += used;
      used = 0;
    }
    char* p = buffer.data() + used;
    for (int32_t j = 0; j < nCols; ++j) {
      if (j > 0) *p++ = ',';
      p += std::snprintf(p, 24, "%.7G",
                         static_cast<double>(base[static_cast<std::size_t>(j) * nRows + i]));
    }
    *p++ = '\r';
    *p++ = '\n';
    used = static_cast<std::size_t>(p - buffer.data());
  }
  std::fwrite(buffer.data(), 1, used, f);
  total += used;
  std::fclose(f);
  return total;
}

}  // namespace

static void BM_WriteAsCSVPlain(benchmark::State& state) {
  const int32_t nRows = 100000, nCols = 200;
  const std::filesystem::path dir = std::filesystem::temp_directory_path() / "vndata_text_export_bench";
  std::filesystem::create_directories(dir);
  const std::string zExport = (dir / "export.csv").string();
  const std::string zBaseline = (dir / "baseline.csv").string();

  const Array2<float> block = MakeBlock(nRows, nCols);
  mxDataSet ds;
  {
    Array2<float> a = block;
    bool qOK = false;
    ds.bInitialiseFrom2d(a, MakeHeaders(nCols), qOK);
    if (!qOK) state.SkipWithError("load failed");
  }
  std::vector<double> tOp, tBase, ratios;
  double mbOp = 0, mbBase = 0;
  for (auto _ : state) {
    const auto b0 = Clock::now();
    const std::size_t baseBytes = WriteBaseline(zBaseline, block, nRows, nCols);
    const auto b1 = Clock::now();
    ds.WriteAsCSV(zExport);
    const auto t1 = Clock::now();
    const double op = Seconds(b1, t1), base = Seconds(b0, b1);
    const double opBytes = static_cast<double>(std::filesystem::file_size(zExport));
    tOp.push_back(op);
    tBase.push_back(base);
    ratios.push_back(op / base);
    mbOp = opBytes / 1e6;
    mbBase = static_cast<double>(baseBytes) / 1e6;
    state.SetIterationTime(op);
  }
  state.counters["export_ms"] = 1e3 * Median(tOp);
  state.counters["baseline_ms"] = 1e3 * Median(tBase);
  state.counters["export_MBps"] = mbOp / Median(tOp);
  state.counters["baseline_MBps"] = mbBase / Median(tBase);
  state.counters["file_MB"] = mbOp;
  state.counters["ratio"] = Median(ratios);
  std::filesystem::remove_all(dir);
}
BENCHMARK(BM_WriteAsCSVPlain)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
