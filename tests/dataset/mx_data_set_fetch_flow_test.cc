// Fetch on demand over real OPM Flow output (tests/data/flow/SMALL): a data
// set whose columns are the arrays of a file, located by IndexRecords, reads
// every array in a shuffled order as OPM's own reader gives it; and derived
// and unit-converted columns computed on load from the real columns equal
// the arithmetic the rules fix, applied to OPM's values.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/dataset/fetch_test_util.h"
#include "tests/platform/opm_python.h"
#include "vndata/platform/sim_file_io.h"

using namespace vndata;
using namespace vndata::fetch_test;
using vndata::opm_python::OpmAvailable;
using vndata::opm_python::RunScript;

namespace {

const std::string kFlow = std::string(VNDATA_TEST_DATA_DIR) + "/flow/";
const std::vector<std::string> kFiles = {"SMALL/SMALL.UNRST", "SMALL/SMALL.INIT", "SMALL/SMALL.FUNRST",
                                         "SMALL/SMALL.FINIT"};

// One array as OPM's reader gives it, numbers as 32-bit floats.
struct OpmArray {
  std::string keyword, type;
  int32_t count = 0;
  std::vector<float> values;
};

// The output of opm_values.py: "== name", then name|type|count|hex lines.
const std::map<std::string, std::vector<OpmArray>>& OpmReading(std::string& why) {
  static std::map<std::string, std::vector<OpmArray>> files;
  static std::string failure;
  static bool done = false;
  if (done) {
    why = failure;
    return files;
  }
  done = true;
  std::string names;
  for (const std::string& f : kFiles) names += " " + kFlow + f;
  int status = 0;
  const std::string out = RunScript(kFlow + "opm_values.py", names, status);
  if (status != 0) {
    failure = "the OPM script failed: " + out.substr(0, 2000);
    why = failure;
    return files;
  }
  std::istringstream in(out);
  std::string line;
  std::vector<OpmArray>* arrays = nullptr;
  while (std::getline(in, line)) {
    if (line.rfind("== ", 0) == 0) {
      arrays = &files[line.substr(3)];
      continue;
    }
    const std::size_t p1 = line.find('|'), p2 = line.find('|', p1 + 1), p3 = line.find('|', p2 + 1);
    if (arrays == nullptr || p3 == std::string::npos) {
      failure = "unexpected line from the OPM script: " + line.substr(0, 200);
      files.clear();
      break;
    }
    OpmArray a;
    a.keyword = line.substr(0, p1);
    a.type = line.substr(p1 + 1, p2 - p1 - 1);
    a.count = std::stoi(line.substr(p2 + 1, p3 - p2 - 1));
    const std::string hex = line.substr(p3 + 1);
    for (std::size_t i = 0; i + 8 <= hex.size(); i += 8)
      a.values.push_back(std::bit_cast<float>(static_cast<uint32_t>(std::stoul(hex.substr(i, 8), nullptr, 16))));
    arrays->push_back(std::move(a));
  }
  why = failure;
  return files;
}

// Skips the test when OPM's Python reader is absent, saying so.
#define REQUIRE_OPM()                                             \
  do {                                                            \
    static std::string missing;                                   \
    static const bool available = OpmAvailable(missing);          \
    if (!available) GTEST_SKIP() << missing;                      \
  } while (false)

std::vector<SimRecordInfo> Index(const std::string& path) {
  SimFileIO io;
  RecordFile f;
  bool qOK = false;
  std::vector<SimRecordInfo> records;
  io.OpenForRead(path, f, qOK);
  if (qOK) io.IndexRecords(f, records, qOK);
  EXPECT_TRUE(qOK) << path << ": " << f.LastError();
  return records;
}

uint32_t Bits(float v) { return std::bit_cast<uint32_t>(v); }

// ---- Every array of the files ------------------------------------------------------------

class FetchFlowFile : public ::testing::TestWithParam<std::string> {};

TEST_P(FetchFlowFile, EveryArrayFetchedInAnyOrderEqualsOpms) {
  REQUIRE_OPM();
  const std::string path = kFlow + GetParam();
  std::string why;
  const auto& files = OpmReading(why);
  ASSERT_TRUE(why.empty()) << why;
  auto it = files.find(path);
  ASSERT_NE(it, files.end());
  const std::vector<OpmArray>& opm = it->second;
  const std::vector<SimRecordInfo> records = Index(path);
  ASSERT_EQ(records.size(), opm.size());

  // A column for every array of numbers; every other one takes its type
  // from the record header (flag type 0).
  std::vector<Column> cols;
  std::vector<std::size_t> source;
  for (std::size_t i = 0; i < records.size(); ++i) {
    const SimRecordInfo& r = records[i];
    if (r.iVarType == 0 || r.nValues == 0) continue;
    Column c = Stored(r.Offset(), r.nValues, cols.size() % 2 == 0 ? r.iVarType : 0);
    cols.push_back(c);
    source.push_back(i);
  }
  ASSERT_GT(cols.size(), 20u);
  mxDataSet ds;
  ASSERT_TRUE(MakeFetchDataSet(ds, path, cols));
  const int32_t n = static_cast<int32_t>(cols.size());
  std::vector<int32_t> order(static_cast<std::size_t>(n));
  for (int32_t c = 1; c <= n; ++c) order[static_cast<std::size_t>(c - 1)] = c;
  std::mt19937 random(4711);
  std::shuffle(order.begin(), order.end(), random);
  int64_t compared = 0;
  for (int32_t c : order) {
    const OpmArray& a = opm[source[static_cast<std::size_t>(c - 1)]];
    Array<float> v;
    // A single-value read leaves the working wish off (deliberately), so it
    // is asked for again before each whole read.
    ds.let_DeleteAfterFetch(true);
    ASSERT_TRUE(ds.GetValues(c, v)) << a.keyword << " (column " << c << ")";
    ASSERT_EQ(static_cast<std::size_t>(v.UBound()), a.values.size()) << a.keyword;
    for (std::size_t k = 0; k < a.values.size(); ++k)
      ASSERT_EQ(Bits(v.data()[k]), Bits(a.values[k])) << a.keyword << " (column " << c << ") value " << k + 1;
    compared += static_cast<int64_t>(a.values.size());
    // Pass-through reads leave nothing loaded.
    ASSERT_FALSE(ds.get_qLoaded(c));
    // One value of the column, read alone.
    const int32_t row = std::uniform_int_distribution<int32_t>(1, a.count)(random);
    float s = 0;
    ASSERT_TRUE(ds.GetValue(row, c, s));
    ASSERT_EQ(Bits(s), Bits(a.values[static_cast<std::size_t>(row - 1)])) << a.keyword << " row " << row;
  }
  EXPECT_GT(compared, 1000);
  EXPECT_TRUE(TraceLines().empty());
}

TEST_P(FetchFlowFile, LoadAllDataMovesEveryArrayIntoTheBuffer) {
  REQUIRE_OPM();
  const std::string path = kFlow + GetParam();
  std::string why;
  const auto& files = OpmReading(why);
  ASSERT_TRUE(why.empty()) << why;
  const std::vector<OpmArray>& opm = files.at(path);
  const std::vector<SimRecordInfo> records = Index(path);
  ASSERT_EQ(records.size(), opm.size());
  // The arrays of the grid's 300 cells, as a grid solution data set holds.
  std::vector<Column> cols;
  std::vector<std::size_t> source;
  for (std::size_t i = 0; i < records.size(); ++i)
    if (records[i].iVarType != 0 && records[i].nValues == 300) {
      cols.push_back(Stored(records[i].Offset(), 300));
      source.push_back(i);
    }
  ASSERT_GE(cols.size(), 4u);
  mxDataSet ds;
  ASSERT_TRUE(MakeFetchDataSet(ds, path, cols));
  ds.let_LoadAllVectors(true);
  ASSERT_FALSE(ds.get_FetchOnDemandActive());
  ASSERT_EQ(ds.get_NumRows(), 300);
  for (std::size_t c = 1; c <= cols.size(); ++c) {
    Array<float> v;
    ASSERT_TRUE(ds.GetValues(static_cast<int32_t>(c), v));
    const OpmArray& a = opm[source[c - 1]];
    for (std::size_t k = 0; k < 300; ++k) ASSERT_EQ(Bits(v.data()[k]), Bits(a.values[k])) << a.keyword;
  }
}

INSTANTIATE_TEST_SUITE_P(FlowOutput, FetchFlowFile, ::testing::ValuesIn(kFiles),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                           std::string name = info.param.substr(info.param.find('/') + 1);
                           std::replace(name.begin(), name.end(), '.', '_');
                           return name;
                         });

// ---- Derived and converted columns on load ---------------------------------------------------

// The last report step of SMALL.UNRST: PRESSURE, SWAT, SGAS, RS as columns
// 1 to 4, then the derived columns of a test.
class FetchFlowDerived : public ::testing::Test {
 protected:
  void SetUp() override {
    MessageLog::Shared().Clear();
    path_ = kFlow + "SMALL/SMALL.UNRST";
    records_ = Index(path_);
    for (const char* k : {"PRESSURE", "SWAT", "SGAS", "RS"}) {
      std::size_t last = records_.size();
      for (std::size_t i = 0; i < records_.size(); ++i)
        if (records_[i].zKeyword == k) last = i;
      ASSERT_LT(last, records_.size()) << k;
      arrays_.push_back(last);
    }
  }
  // OPM's values of base column 1 to 4.
  std::vector<float> Opm(int32_t c) {
    std::string why;
    const auto& files = OpmReading(why);
    EXPECT_TRUE(why.empty()) << why;
    return files.at(path_)[arrays_[static_cast<std::size_t>(c - 1)]].values;
  }
  std::vector<Column> Base() {
    std::vector<Column> cols;
    for (std::size_t i : arrays_) cols.push_back(Stored(records_[i].Offset(), 300));
    return cols;
  }
  std::vector<float> Fetch(mxDataSet& ds, int32_t c) {
    Array<float> v;
    EXPECT_TRUE(ds.GetValues(c, v)) << "column " << c;
    return Values(v);
  }

  std::string path_;
  std::vector<SimRecordInfo> records_;
  std::vector<std::size_t> arrays_;
};

// The per-row rules as the kernels' table fixes them, in 32-bit arithmetic.
float RowRule(int32_t iRule, float a, float b, float sNull) {
  switch (iRule) {
    case 4: return b == 0.0f ? sNull : a / b;
    case 5: {
      const float sum = (0.0f + a) + b;
      return sum == 0.0f ? sNull : a / sum;
    }
    case 6: return (0.0f + a) + b;
    case 9: return a == 0.0f ? sNull : (-a * b) / (b - 1.0f);
    case 10: return (1.0f * a) * b;
    default: return 0.0f;
  }
}

TEST_F(FetchFlowDerived, PerRowRulesComputeOnLoadFromTheRealColumns) {
  REQUIRE_OPM();
  // Rule r over (a, b): ratio RS/PRESSURE, cut SWAT/(SWAT+SGAS), sum and
  // product of SWAT and SGAS, rate RS from cut SWAT.
  struct Case { int32_t iRule, a, b; };
  const std::vector<Case> cases = {{4, 4, 1}, {5, 2, 3}, {6, 2, 3}, {9, 4, 2}, {10, 2, 3}};
  std::vector<Column> cols = Base();
  Array<int32_t> iDQArray(1, 2 * static_cast<int32_t>(cases.size()));
  for (std::size_t k = 0; k < cases.size(); ++k) {
    const int32_t at = 2 * static_cast<int32_t>(k) + 1;
    iDQArray(at) = cases[k].a;
    iDQArray(at + 1) = cases[k].b;
    cols.push_back(Derived(cases[k].iRule, at, 2, 300));
  }
  for (int32_t iUseNull : {0, 1}) {
    mxDataSet ds;
    ds.let_UseNullVal(iUseNull);
    // A value SWAT really holds serves as the null, so that rows drop out.
    const std::vector<float> swat = Opm(2);
    const float sNull = swat[150];
    ds.let_NullValue(sNull);
    ASSERT_TRUE(MakeFetchDataSet(ds, path_, cols, iDQArray));
    int32_t nNullRows = 0;
    for (std::size_t k = 0; k < cases.size(); ++k) {
      const std::vector<float> a = Opm(cases[k].a), b = Opm(cases[k].b);
      const std::vector<float> got = Fetch(ds, 5 + static_cast<int32_t>(k));
      ASSERT_EQ(got.size(), 300u);
      for (std::size_t i = 0; i < 300; ++i) {
        const bool qNullRow = iUseNull != 0 && (a[i] == sNull || b[i] == sNull);
        nNullRows += qNullRow ? 1 : 0;
        const float want = qNullRow ? sNull : RowRule(cases[k].iRule, a[i], b[i], sNull);
        ASSERT_EQ(Bits(got[i]), Bits(want)) << "rule " << cases[k].iRule << " row " << i + 1;
      }
    }
    EXPECT_EQ(nNullRows > 0, iUseNull != 0);
    // The arguments were fetched for the columns and dropped again.
    for (int32_t c = 1; c <= 4; ++c) EXPECT_FALSE(ds.get_qLoaded(c));
  }
}

TEST_F(FetchFlowDerived, AccumulationRunsOverTheRowsLeftByTheNullRule) {
  REQUIRE_OPM();
  std::vector<Column> cols = Base();
  cols.push_back(Derived(8, 1, 2, 300));  // SWAT accumulated over PRESSURE
  mxDataSet ds;
  const std::vector<float> swat = Opm(2), press = Opm(1);
  const float sNull = swat[10];
  ds.let_UseNullVal(1);
  ds.let_NullValue(sNull);
  ASSERT_TRUE(MakeFetchDataSet(ds, path_, cols, Array<int32_t>{2, 1}));
  const std::vector<float> got = Fetch(ds, 5);
  // The rows without a null are neighbours: each step runs from the last
  // row kept, with the rate at the step's end.
  float sum = 0.0f;
  bool qFirst = true;
  float xPrev = 0.0f;
  int32_t nNull = 0;
  for (std::size_t i = 0; i < 300; ++i) {
    if (swat[i] == sNull || press[i] == sNull) {
      ++nNull;
      ASSERT_EQ(got[i], sNull) << i + 1;
      continue;
    }
    if (!qFirst) sum = (press[i] - xPrev) * swat[i] + sum;
    qFirst = false;
    xPrev = press[i];
    ASSERT_EQ(Bits(got[i]), Bits(sum)) << "row " << i + 1;
  }
  EXPECT_GT(nNull, 0);
}

TEST_F(FetchFlowDerived, DerivativeRulesComputeOnLoad) {
  REQUIRE_OPM();
  std::vector<Column> cols = Base();
  // d SGAS / d PRESSURE by rules 1 (three-point), 2 (backward), 3 (forward).
  for (int32_t rule : {1, 2, 3}) cols.push_back(Derived(rule, 1, 2, 300));
  mxDataSet ds;
  ds.let_UseNullVal(0);
  ASSERT_TRUE(MakeFetchDataSet(ds, path_, cols, Array<int32_t>{3, 1}));
  const std::vector<float> y = Opm(3), x = Opm(1);
  auto slope = [&](std::size_t i, std::size_t j) {
    const double h = static_cast<double>(x[j]) - x[i];
    return h == 0.0 ? 0.0 : (static_cast<double>(y[j]) - y[i]) / h;
  };
  const std::vector<float> backward = Fetch(ds, 6), forward = Fetch(ds, 7), three = Fetch(ds, 5);
  for (std::size_t i = 0; i < 300; ++i) {
    const double f = i + 1 < 300 ? slope(i, i + 1) : slope(i - 1, i);
    const double b = i > 0 ? slope(i - 1, i) : slope(0, 1);
    EXPECT_NEAR(forward[i], f, 1e-6 * std::max(1.0, std::abs(f))) << "row " << i + 1;
    EXPECT_NEAR(backward[i], b, 1e-6 * std::max(1.0, std::abs(b))) << "row " << i + 1;
    if (i > 0 && i + 1 < 300) {
      const double h1 = static_cast<double>(x[i]) - x[i - 1], h2 = static_cast<double>(x[i + 1]) - x[i];
      if (h1 == 0.0 || h2 == 0.0 || h1 + h2 == 0.0) continue;
      const double d = -h2 / (h1 * (h1 + h2)) * y[i - 1] + (h2 - h1) / (h1 * h2) * y[i] +
                       h1 / (h2 * (h1 + h2)) * y[i + 1];
      EXPECT_NEAR(three[i], d, 1e-5 * std::max(1.0, std::abs(d))) << "row " << i + 1;
    }
  }
}

TEST_F(FetchFlowDerived, ComplementIsOneLessSwatAndSgas) {
  REQUIRE_OPM();
  std::vector<Column> cols = Base();
  cols.push_back(Derived(0, 2, 3, 300));
  mxDataSet ds;
  ASSERT_TRUE(MakeFetchDataSet(ds, path_, cols));
  const std::vector<float> swat = Opm(2), sgas = Opm(3), got = Fetch(ds, 5);
  for (std::size_t i = 0; i < 300; ++i) {
    const float step = 1.0f - swat[i];
    ASSERT_EQ(Bits(got[i]), Bits(step - sgas[i])) << "row " << i + 1;
  }
  // Row by row, through the single-value path, the same.
  float v = 0;
  ds.let_DeleteAfterFetch(false);
  bool qOK = false;
  ds.DeleteFODVector(5, qOK);
  ds.LoadFODValue(5, 17, v, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Bits(v), Bits((1.0f - swat[16]) - sgas[16]));
}

TEST_F(FetchFlowDerived, UnitRuleFromALoadIsZero) {
  REQUIRE_OPM();
  std::vector<Column> cols = Base();
  cols.push_back(Derived(7, 1, 1, 300));
  mxDataSet ds;
  ASSERT_TRUE(MakeFetchDataSet(ds, path_, cols, Array<int32_t>{1}));
  EXPECT_EQ(Fetch(ds, 5), std::vector<float>(300, 0.0f));
}

TEST_F(FetchFlowDerived, ConvertedColumnsComputeOnLoadWithTheNullRule) {
  REQUIRE_OPM();
  std::vector<Column> cols = Base();
  cols[0].e.iFlags = ConvertFlags(2, 1, 1);  // PRESSURE psi to bar
  cols[1].e.iFlags = ConvertFlags(0, 2, 2);  // SWAT * 100 + 0.5
  cols[3].e.iFlags = ConvertFlags(0, 2, 4);  // RS with a second factor of 0: multiply only
  const std::vector<float> press = Opm(1), swat = Opm(2), rs = Opm(4);
  for (int32_t iUseNull : {0, 1}) {
    mxDataSet ds;
    ds.let_UseNullVal(iUseNull);
    ds.let_NullValue(press[42]);
    ASSERT_TRUE(MakeFetchDataSet(ds, path_, cols, Array<int32_t>(),
                                 Array<float>{0.0689476f, 100.0f, 0.5f, 5.6146f, 0.0f}));
    const std::vector<float> p = Fetch(ds, 1), w = Fetch(ds, 2), r = Fetch(ds, 4);
    int32_t nKept = 0;
    for (std::size_t i = 0; i < 300; ++i) {
      const bool qNull = iUseNull != 0 && press[i] == press[42];
      nKept += qNull ? 1 : 0;
      ASSERT_EQ(Bits(p[i]), Bits(qNull ? press[i] : 0.0689476f * press[i])) << i + 1;
      const bool qNullW = iUseNull != 0 && swat[i] == press[42];
      ASSERT_EQ(Bits(w[i]), Bits(qNullW ? swat[i] : std::fmaf(swat[i], 100.0f, 0.5f))) << i + 1;
      ASSERT_EQ(Bits(r[i]), Bits(5.6146f * rs[i])) << i + 1;
    }
    EXPECT_EQ(nKept > 0, iUseNull != 0);
    // The unconverted column is as read.
    const std::vector<float> g = Fetch(ds, 3), sgas = Opm(3);
    EXPECT_EQ(g, sgas);
  }
}

TEST_F(FetchFlowDerived, InMemoryDataSetIsConvertedAndComputedWhenTheTableIsAssigned) {
  REQUIRE_OPM();
  // The same columns held in memory: the table converts and computes now.
  const std::vector<float> press = Opm(1), swat = Opm(2), sgas = Opm(3);
  Array2<float> block(1, 300, 1, 3);
  for (int32_t i = 1; i <= 300; ++i) {
    block(i, 1) = press[static_cast<std::size_t>(i - 1)];
    block(i, 2) = swat[static_cast<std::size_t>(i - 1)];
    block(i, 3) = 0.0f;
  }
  mxDataSet ds;
  bool qOK = false;
  ds.bInitialiseFrom2d(block, testutil::SimpleHeaders(3), qOK);
  ASSERT_TRUE(qOK);
  std::vector<Column> cols = Base();
  cols.resize(3);
  cols[0].e.iFlags = ConvertFlags(2, 1, 1);
  cols[2] = Derived(6, 1, 2, 300);
  ds.AssignFODPlusPointers(Settings(), PosArray(cols), Array<int32_t>{1, 2}, Array<float>{2.0f}, qOK, true,
                           true);
  ASSERT_TRUE(qOK);
  Array<float> v;
  ASSERT_TRUE(ds.GetValues(1, v));
  for (std::size_t i = 0; i < 300; ++i) ASSERT_EQ(v.data()[i], 2.0f * press[i]);
  ASSERT_TRUE(ds.GetValues(3, v));
  // The sum reads the converted pressure: conversion runs first.
  for (std::size_t i = 0; i < 300; ++i) ASSERT_EQ(v.data()[i], (0.0f + 2.0f * press[i]) + swat[i]);
  (void)sgas;
}

}  // namespace
