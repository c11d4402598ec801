// Query benchmarks. Each iteration times the operation and, right after it,
// a baseline of plain code doing the least the operation must do, and the
// counters report the median of the iterations' figures:
//
//   SearchCreatePointers  20 data sets of 5,000 columns (100,000 columns;
//                         pools of 200 members, 400 variables, 10 classes),
//                         criteria on variable, class and member: the whole
//                         conversation (clear, three criteria, create, read
//                         the hits). "ns_per_column" (target < 5) and
//                         "ratio" against a loop comparing three 16-bit
//                         fields of 100,000 24-byte records and collecting
//                         the hits (target <= 4). "first_search_us" is the
//                         first search after the load, which also lays out
//                         the pointers of the three attributes it reads.
//   MembersOfClass        GetUniqueMembersOfClass of a class of 2,000
//                         members in 50,000 columns: the first call and the
//                         cached one, with a loop over the 50,000 class
//                         pointers as the reference.
//   OriginIndex           GetOriginIndex of the last of 1,000 data sets, with
//                         a loop of 1,000 string compares as the reference.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/string_tools.h"
#include "vndata/store/mx_data_store.h"

using namespace vndata;

namespace {

using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point a, Clock::time_point b) {
  return std::chrono::duration<double>(b - a).count();
}

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  const std::size_t n = v.size();
  return n == 0 ? 0.0 : (n % 2 ? v[n / 2] : 0.5 * (v[n / 2 - 1] + v[n / 2]));
}

void PutField(Array2<uint8_t>& b, int32_t c, int32_t id, const std::string& text) {
  int32_t pos = 0, width = 0;
  InitSingleAttPos(id, pos, width);
  std::memcpy(&b(pos, c), text.data(), std::min<std::size_t>(text.size(), static_cast<std::size_t>(width)));
}

const char* const kClasses[10] = {"WELLS",  "GROUPS", "REGIONS", "BLOCKS", "FIELD",
                                  "COMPLS", "AQUIFS", "SEGS",    "NETS",   "MISC"};

// One data set of nCols columns of 2 rows; column c has class c % 10,
// member c % nMembers and variable c % nVariables (of the whole store, so a
// data set's pools hold all of them).
std::shared_ptr<mxDataSet> MakeDataSet(const std::string& zOrigin, int32_t nCols, int32_t iFirst,
                                       int32_t nMembers, int32_t nVariables) {
  Array2<uint8_t> b(1, kPackedRecordSize, 1, nCols);
  b.Fill(' ');
  for (int32_t c = 1; c <= nCols; ++c) {
    const int32_t k = iFirst + c;
    PutField(b, c, ATT_ORIGIN, zOrigin);
    PutField(b, c, ATT_TYPE, "SUMMARY");
    PutField(b, c, ATT_CLASS, kClasses[k % 10]);
    PutField(b, c, ATT_MEMBER, "MEMBER-" + std::to_string(k % nMembers));
    PutField(b, c, ATT_VARIABLE, "VAR" + std::to_string(k % nVariables));
    PutField(b, c, ATT_UNITS, "UNIT" + std::to_string(k % 20));
  }
  Array2<float> values(1, 2, 1, nCols);
  values.Fill(1.f);
  auto ds = std::make_shared<mxDataSet>();
  ds->let_Origin(zOrigin);
  ds->let_GroupName("Summary");
  bool qOK = false;
  ds->bInitialiseFrom2d(values, b, qOK);
  return ds;
}

// ---- The store search -------------------------------------------------------------------------

struct Record {  // a column's pointer record, as the library lays it out
  int16_t f[12];
};

void BM_SearchCreatePointers(benchmark::State& state) {
  constexpr int32_t kSets = 20, kCols = 5000, kTotal = kSets * kCols;
  mxDataStore store;
  store.let_CheckDataSetNames(false);
  for (int32_t s = 0; s < kSets; ++s) {
    bool qOK = false;
    store.AddDataSet(MakeDataSet("CASE" + std::to_string(s), kCols, s * kCols, 200, 400), qOK);
  }
  // The baseline's records hold the same pointers at the same places.
  std::vector<Record> records(kTotal);
  for (int32_t k = 0; k < kTotal; ++k) {
    Record& r = records[static_cast<std::size_t>(k)];
    std::fill(std::begin(r.f), std::end(r.f), int16_t{-1});
    r.f[2] = static_cast<int16_t>(1 + (k + 1) % 10);
    r.f[5] = static_cast<int16_t>(1 + (k + 1) % 400);
    r.f[6] = static_cast<int16_t>(1 + (k + 1) % 200);
  }
  const int16_t wantClass = 8, wantVariable = 8, wantMember = 8;
  std::vector<int32_t> hitsBase(kTotal);

  int32_t nHits = 0, nBaseHits = 0;
  auto search = [&] {
    bool qOK = false;
    store.SearchClear();
    store.SearchAddAttribute(ATT_VARIABLE, "VAR7", qOK);
    store.SearchAddAttribute(ATT_CLASS, "SEGS", qOK);
    store.SearchAddAttribute(ATT_MEMBER, "MEMBER-7", qOK);
    store.SearchCreatePointers(qOK);
    Array2<int32_t> iResults;
    store.SearchPointers(iResults, nHits, qOK);
    benchmark::DoNotOptimize(iResults.data());
  };
  // The first search after a load also lays out the pointers it reads.
  const auto tFirst0 = Clock::now();
  search();
  const double tFirst = Seconds(tFirst0, Clock::now());

  std::vector<double> tOp, tBase, ratio;
  for (auto _ : state) {
    const auto t0 = Clock::now();
    search();
    const auto t1 = Clock::now();
    int32_t n = 0;
    for (int32_t k = 0; k < kTotal; ++k) {
      const Record& r = records[static_cast<std::size_t>(k)];
      if (r.f[5] == wantVariable && r.f[2] == wantClass && r.f[6] == wantMember) hitsBase[static_cast<std::size_t>(n++)] = k;
    }
    benchmark::DoNotOptimize(hitsBase.data());
    nBaseHits = n;
    const auto t2 = Clock::now();
    tOp.push_back(Seconds(t0, t1));
    tBase.push_back(Seconds(t1, t2));
    ratio.push_back(tOp.back() / tBase.back());
  }
  state.counters["first_search_us"] = 1e6 * tFirst;
  state.counters["hits"] = nHits;
  state.counters["baseline_hits"] = nBaseHits;
  state.counters["op_us"] = 1e6 * Median(tOp);
  state.counters["baseline_us"] = 1e6 * Median(tBase);
  state.counters["ns_per_column"] = 1e9 * Median(tOp) / kTotal;
  state.counters["baseline_ns_per_column"] = 1e9 * Median(tBase) / kTotal;
  state.counters["ratio"] = Median(ratio);
}
BENCHMARK(BM_SearchCreatePointers)->Iterations(200)->Unit(benchmark::kMicrosecond);

// ---- Members of a class --------------------------------------------------------------------------

void BM_MembersOfClass(benchmark::State& state) {
  constexpr int32_t kCols = 50000;
  // Class "WELLS" (every tenth column) has 2,000 members in 5,000 columns,
  // each member's columns lying together as a reader writes them.
  Array2<uint8_t> b(1, kPackedRecordSize, 1, kCols);
  b.Fill(' ');
  for (int32_t c = 1; c <= kCols; ++c) {
    PutField(b, c, ATT_CLASS, kClasses[c % 10]);
    const int32_t m = c % 10 == 0 ? (c / 10 - 1) * 2000 / 5000 : c % 300;
    PutField(b, c, ATT_MEMBER, (c % 10 == 0 ? "W" : "G") + std::to_string(m));
    PutField(b, c, ATT_VARIABLE, "VAR" + std::to_string(c % 400));
  }
  Array2<float> values(1, 2, 1, kCols);
  mxDataSet ds;
  bool qOK = false;
  ds.bInitialiseFrom2d(values, b, qOK);
  std::vector<int16_t> classes(kCols);
  for (int32_t c = 1; c <= kCols; ++c) classes[static_cast<std::size_t>(c - 1)] = static_cast<int16_t>(c % 10);

  std::vector<double> tFirst, tCached, tBase;
  int32_t nMembers = 0;
  for (auto _ : state) {
    Array<std::string> zMembers;
    ds.GetUniqueMembersOfClass("NOSUCH", zMembers, nMembers, qOK);  // empties the cache
    const auto t0 = Clock::now();
    ds.GetUniqueMembersOfClass("WELLS", zMembers, nMembers, qOK);
    const auto t1 = Clock::now();
    ds.GetUniqueMembersOfClass("wells", zMembers, nMembers, qOK);
    benchmark::DoNotOptimize(zMembers.data());
    const auto t2 = Clock::now();
    int32_t n = 0;
    for (int16_t k : classes) n += k == 0;
    benchmark::DoNotOptimize(n);
    const auto t3 = Clock::now();
    tFirst.push_back(Seconds(t0, t1));
    tCached.push_back(Seconds(t1, t2));
    tBase.push_back(Seconds(t2, t3));
  }
  state.counters["members"] = nMembers;
  state.counters["first_us"] = 1e6 * Median(tFirst);
  state.counters["cached_us"] = 1e6 * Median(tCached);
  state.counters["class_loop_us"] = 1e6 * Median(tBase);
  state.counters["first_ns_per_column"] = 1e9 * Median(tFirst) / kCols;
}
BENCHMARK(BM_MembersOfClass)->Iterations(50)->Unit(benchmark::kMicrosecond);

// ---- Origin resolution ---------------------------------------------------------------------------

void BM_OriginIndex(benchmark::State& state) {
  constexpr int32_t kSets = 1000;
  mxDataStore store;
  store.let_CheckDataSetNames(false);
  std::vector<std::string> origins;
  for (int32_t s = 1; s <= kSets; ++s) {
    origins.push_back("CASE_RUN" + std::to_string(s));
    bool qOK = false;
    store.AddDataSet(MakeDataSet(origins.back(), 1, 0, 1, 1), qOK);
  }
  std::vector<double> tOp, tBase;
  int32_t iFound = 0, iBase = 0;
  for (auto _ : state) {
    const auto t0 = Clock::now();
    std::string zType = "summary";
    iFound = store.GetOriginIndex("case_run1000", zType);
    const auto t1 = Clock::now();
    const std::string zWanted = StringTools::Upper("case_run1000");
    iBase = -1;
    for (int32_t s = 0; s < kSets && iBase < 0; ++s)
      if (StringTools::Equal(origins[static_cast<std::size_t>(s)], zWanted, false)) iBase = s + 1;
    benchmark::DoNotOptimize(iBase);
    const auto t2 = Clock::now();
    tOp.push_back(Seconds(t0, t1));
    tBase.push_back(Seconds(t1, t2));
  }
  state.counters["found"] = iFound;
  state.counters["op_us"] = 1e6 * Median(tOp);
  state.counters["compare_loop_us"] = 1e6 * Median(tBase);
  state.counters["ns_per_data_set"] = 1e9 * Median(tOp) / kSets;
}
BENCHMARK(BM_OriginIndex)->Iterations(500)->Unit(benchmark::kMicrosecond);

}  // namespace
