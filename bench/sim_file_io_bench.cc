// SimFileIO on a restart file of 400 MB: the index of its 2,000 records
// against reading the whole file once, a whole array against reading its
// bytes, and single values.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "vndata/platform/sim_file_io.h"

namespace {

using namespace vndata;

constexpr int32_t kCells = 250000;
constexpr int32_t kSteps = 100;

// The file, written once with the simulator writers' operations and
// removed at exit.
class RestartFile {
 public:
  RestartFile() {
    name_ = (std::filesystem::temp_directory_path() / "vndata_sim_bench.UNRST").string();
    RecordFile f;
    SimFileIO io;
    bool ok = false;
    f.OpenForWrite(name_, ok);
    Array<int32_t> head(1, 411);
    Array<int32_t> logi(1, 121);
    Array<double> doub(1, 229);
    Array<float> cells(1, kCells);
    Array<std::string> wells(1, 30);
    for (int32_t i = 1; i <= kCells; ++i) cells(i) = 100.0f + static_cast<float>(i % 997);
    for (int32_t i = 1; i <= 30; ++i) wells(i) = "W" + std::to_string(i);
    for (int32_t step = 1; step <= kSteps && ok; ++step) {
      io.WriteSimulatorHeader(f, "SEQNUM", 1, "INTE", ok);
      io.WriteIntegerArray(1, kSimulatorNumberBlock, Array<int32_t>{step}, f, ok);
      io.WriteSimulatorHeader(f, "INTEHEAD", 411, "INTE", ok);
      io.WriteIntegerArray(411, kSimulatorNumberBlock, head, f, ok);
      io.WriteSimulatorHeader(f, "LOGIHEAD", 121, "LOGI", ok);
      io.WriteIntegerArray(121, kSimulatorNumberBlock, logi, f, ok);
      io.WriteSimulatorHeader(f, "DOUBHEAD", 229, "DOUB", ok);
      io.WriteDoubleArray(229, kSimulatorNumberBlock, doub, f, ok);
      io.WriteSimulatorHeader(f, "ZWEL", 30, "CHAR", ok);
      io.WriteCharArray(30, wells, f, ok);
      io.WriteSimulatorHeader(f, "STARTSOL", 0, "MESS", ok);
      for (const char* k : {"PRESSURE", "SWAT", "SGAS", "RS"}) {
        if (positions_.size() < 4) positions_.push_back(f.Position());
        io.WriteSimulatorHeader(f, k, kCells, "REAL", ok);
        io.WriteRealArray(kCells, kSimulatorNumberBlock, cells, f, ok);
      }
      io.WriteSimulatorHeader(f, "ENDSOL", 0, "MESS", ok);
      for (int i = 0; i < 9; ++i) {
        io.WriteSimulatorHeader(f, "FILLER", 1, "INTE", ok);
        io.WriteIntegerArray(1, kSimulatorNumberBlock, Array<int32_t>{i}, f, ok);
      }
    }
    f.Close(ok);
    ok_ = ok;
  }
  ~RestartFile() {
    std::error_code ec;
    std::filesystem::remove(name_, ec);
  }
  const std::string& Name() const { return name_; }
  bool OK() const { return ok_; }
  int64_t Pressure() const { return positions_.empty() ? 0 : positions_[0]; }

 private:
  std::string name_;
  std::vector<int64_t> positions_;
  bool ok_ = false;
};

RestartFile& File() {
  static RestartFile file;
  return file;
}

void BM_IndexRecords(benchmark::State& state) {
  RestartFile& data = File();
  if (!data.OK()) state.SkipWithError("cannot write the file");
  SimFileIO io;
  std::vector<SimRecordInfo> records;
  for (auto _ : state) {
    RecordFile f;
    bool ok = false;
    io.OpenForRead(data.Name(), f, ok);
    io.IndexRecords(f, records, ok);
    if (!ok || records.size() != static_cast<std::size_t>(kSteps) * 20)
      state.SkipWithError("index failed");
    benchmark::DoNotOptimize(records.data());
  }
  state.counters["records"] = static_cast<double>(records.size());
}
BENCHMARK(BM_IndexRecords)->Unit(benchmark::kMillisecond);

// The baseline: every byte of the file read once, in 1 MB pieces.
void BM_ReadWholeFile(benchmark::State& state) {
  RestartFile& data = File();
  std::vector<char> buf(1 << 20);
  for (auto _ : state) {
    int fd = ::open(data.Name().c_str(), O_RDONLY);
    ssize_t n = 0;
    int64_t total = 0;
    while ((n = ::read(fd, buf.data(), buf.size())) > 0) total += n;
    ::close(fd);
    benchmark::DoNotOptimize(total);
  }
}
BENCHMARK(BM_ReadWholeFile)->Unit(benchmark::kMillisecond);

void BM_ReadVector(benchmark::State& state) {
  RestartFile& data = File();
  SimFileIO io;
  RecordFile f;
  bool ok = false;
  io.OpenForRead(data.Name(), f, ok);
  Array<float> values;
  for (auto _ : state) {
    int64_t pos = data.Pressure();
    int32_t p1 = static_cast<int32_t>(static_cast<uint32_t>(pos)), p2 = 0;
    int32_t flags = kSimVarReal, n = kCells;
    io.ReadVector(f, p1, p2, flags, n, values, ok);
    if (!ok) state.SkipWithError("read failed");
    benchmark::DoNotOptimize(values.data());
  }
  state.SetBytesProcessed(state.iterations() * int64_t{kCells} * 4);
}
BENCHMARK(BM_ReadVector)->Unit(benchmark::kMicrosecond);

// The baseline: what any reader of a whole array pays, a fresh array of the
// column's size with the payload's bytes (markers included) read into it as
// they are, by one call to the system.
void BM_ReadVectorBytes(benchmark::State& state) {
  RestartFile& data = File();
  const std::size_t bytes = static_cast<std::size_t>(kCells) * 4 + 8 * (kCells / 1000);
  int fd = ::open(data.Name().c_str(), O_RDONLY);
  for (auto _ : state) {
    Array<float> a(1, static_cast<int32_t>(bytes / 4));
    ssize_t n = ::pread(fd, a.data(), bytes, static_cast<off_t>(data.Pressure() + 24));
    benchmark::DoNotOptimize(n);
    benchmark::DoNotOptimize(a.data());
  }
  ::close(fd);
  state.SetBytesProcessed(state.iterations() * int64_t{kCells} * 4);
}
BENCHMARK(BM_ReadVectorBytes)->Unit(benchmark::kMicrosecond);

void BM_ReadValue(benchmark::State& state) {
  RestartFile& data = File();
  SimFileIO io;
  RecordFile f;
  bool ok = false;
  io.OpenForRead(data.Name(), f, ok);
  std::mt19937 random(5);
  std::uniform_int_distribution<int32_t> row(1, kCells);
  float s = 0;
  for (auto _ : state) {
    int64_t pos = data.Pressure();
    int32_t p1 = static_cast<int32_t>(static_cast<uint32_t>(pos)), p2 = 0;
    int32_t flags = kSimVarReal, n = kCells;
    io.ReadValue(f, p1, p2, flags, n, row(random), s, ok);
    if (!ok) state.SkipWithError("read failed");
    benchmark::DoNotOptimize(s);
  }
}
BENCHMARK(BM_ReadValue)->Unit(benchmark::kMicrosecond);

}  // namespace
