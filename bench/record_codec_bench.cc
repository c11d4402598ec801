// RecordCodec against plain stdio on 200 MB of "REAL" data.
//
// Each iteration moves the same file image twice: once through RecordCodec
// (header, one WriteRealArray / ReadRealArray with block size 0, byte swap
// included) and once with a single fwrite / fread of the identical bytes
// already in file order, the two in alternating order. Both include open
// and close, and both work on the page cache (the files are rewritten or
// reread, never forced to disk). The reported time is the codec's; the
// counters give both times and their ratio, measured in the same iterations
// so that machine load hits both alike.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "vndata/platform/record_codec.h"

using namespace vndata;

namespace {

constexpr int32_t kCount = 200 * 1024 * 1024 / 4;  // 200 MB of floats

std::string TempName(const char* tag) {
  return (std::filesystem::temp_directory_path() /
          ("vndata_bench_" + std::to_string(getpid()) + "_" + tag + ".bin"))
      .string();
}

struct Data {
  Array<float> values{};
  std::vector<uint8_t> image;  // the codec's file, byte for byte
  std::string codecFile = TempName("codec");
  std::string plainFile = TempName("plain");

  Data() {
    values.ReDim(1, kCount);
    for (int32_t i = 0; i < kCount; ++i) values.data()[i] = static_cast<float>(i % 9973) * 0.25f;
  }
  ~Data() {
    std::remove(codecFile.c_str());
    std::remove(plainFile.c_str());
  }
};

Data& Shared() {
  static Data d;
  return d;
}

double Seconds(std::chrono::steady_clock::time_point a, std::chrono::steady_clock::time_point b) {
  return std::chrono::duration<double>(b - a).count();
}

bool CodecWrite(Data& d) {
  RecordCodec c;
  RecordFile f;
  bool q = false;
  f.OpenForWrite(d.codecFile, q);
  c.WriteHeader(f, "COLROWDATA", kCount, "REAL", q);
  c.WriteRealArray(kCount, 0, d.values, f, q);
  bool closed = false;
  f.Close(closed);
  return q && closed;
}

bool PlainWrite(const Data& d) {
  FILE* fp = std::fopen(d.plainFile.c_str(), "wb");
  if (fp == nullptr) return false;
  bool ok = std::fwrite(d.image.data(), 1, d.image.size(), fp) == d.image.size();
  return std::fclose(fp) == 0 && ok;
}

bool CodecRead(const Data& d, Array<float>& into) {
  RecordCodec c;
  RecordFile f;
  bool q = false;
  f.OpenForRead(d.codecFile, q);
  std::string k, t;
  int32_t n = 0;
  c.ReadHeader(f, k, n, t, q);
  if (!q || n != kCount) return false;
  c.ReadRealArray(n, "'", f, into, q);
  return q;
}

bool PlainRead(const Data& d, std::vector<uint8_t>& into) {
  FILE* fp = std::fopen(d.plainFile.c_str(), "rb");
  if (fp == nullptr) return false;
  bool ok = std::fread(into.data(), 1, into.size(), fp) == into.size();
  std::fclose(fp);
  return ok;
}

void Prepare(Data& d) {
  if (!d.image.empty()) return;
  CodecWrite(d);
  FILE* fp = std::fopen(d.codecFile.c_str(), "rb");
  if (fp == nullptr) return;
  d.image.resize(std::filesystem::file_size(d.codecFile));
  if (std::fread(d.image.data(), 1, d.image.size(), fp) != d.image.size()) d.image.clear();
  std::fclose(fp);
  PlainWrite(d);
}

void Report(benchmark::State& state, double codec, double plain, int64_t iterations) {
  state.counters["codec_ms"] = benchmark::Counter(codec * 1e3 / static_cast<double>(iterations));
  state.counters["plain_ms"] = benchmark::Counter(plain * 1e3 / static_cast<double>(iterations));
  state.counters["ratio"] = benchmark::Counter(codec / plain);
  state.SetBytesProcessed(iterations * int64_t{kCount} * 4);
}

// Times fn in seconds; false results are reported as an error.
template <class Fn>
double Timed(benchmark::State& state, Fn&& fn) {
  auto t0 = std::chrono::steady_clock::now();
  bool ok = fn();
  auto t1 = std::chrono::steady_clock::now();
  if (!ok) state.SkipWithError("a transfer failed");
  return Seconds(t0, t1);
}

void BM_WriteReal200MB(benchmark::State& state) {
  Data& d = Shared();
  Prepare(d);
  double codec = 0, plain = 0;
  bool codecFirst = true;
  for (auto _ : state) {
    double c = 0, p = 0;
    // Alternate the order so that neither side always runs on a cache or a
    // writeback state left by the other.
    if (codecFirst) {
      c = Timed(state, [&] { return CodecWrite(d); });
      p = Timed(state, [&] { return PlainWrite(d); });
    } else {
      p = Timed(state, [&] { return PlainWrite(d); });
      c = Timed(state, [&] { return CodecWrite(d); });
    }
    codecFirst = !codecFirst;
    codec += c;
    plain += p;
    state.SetIterationTime(c);
  }
  Report(state, codec, plain, state.iterations());
}

void BM_ReadReal200MB(benchmark::State& state) {
  Data& d = Shared();
  Prepare(d);
  // Both files are in the page cache; write back what the writing
  // benchmark left dirty, so that no writeback runs during the reads.
  sync();
  Array<float> into(1, kCount);
  std::vector<uint8_t> raw(d.image.size());
  double codec = 0, plain = 0;
  bool codecFirst = true;
  for (auto _ : state) {
    double c = 0, p = 0;
    if (codecFirst) {
      c = Timed(state, [&] { return CodecRead(d, into); });
      p = Timed(state, [&] { return PlainRead(d, raw); });
    } else {
      p = Timed(state, [&] { return PlainRead(d, raw); });
      c = Timed(state, [&] { return CodecRead(d, into); });
    }
    codecFirst = !codecFirst;
    codec += c;
    plain += p;
    state.SetIterationTime(c);
    benchmark::DoNotOptimize(into.data());
    benchmark::DoNotOptimize(raw.data());
  }
  if (into(kCount) != d.values(kCount)) state.SkipWithError("values differ after reading");
  Report(state, codec, plain, state.iterations());
}

}  // namespace

BENCHMARK(BM_WriteReal200MB)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(6);
BENCHMARK(BM_ReadReal200MB)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(6);
