// Real OPM Flow output (tests/data/flow): every array of every file, found
// by IndexRecords and read by ReadVector in a shuffled order, and single
// values read by ReadValue, equal what OPM's own reader gives.
#include <algorithm>
#include <bit>
#include <cstdlib>
#include <map>
#include <random>
#include <sstream>

#include "tests/platform/opm_python.h"
#include "tests/platform/sim_file_test_util.h"

using namespace vndata;
using namespace vndata::sim_test;
using vndata::opm_python::OpmAvailable;
using vndata::opm_python::RunScript;

namespace {

const std::string kFlow = std::string(VNDATA_TEST_DATA_DIR) + "/flow/";

// One array as OPM's reader gives it: numbers as the bits of 32-bit floats.
struct OpmArray {
  std::string keyword;
  std::string type;
  int32_t count = 0;
  std::vector<uint32_t> bits;
};

const std::vector<std::string> kFlowFiles = {
    "SMALL/SMALL.INIT",   "SMALL/SMALL.UNRST",  "SMALL/SMALL.FINIT",  "SMALL/SMALL.FUNRST",
    "SMALL/SMALL.EGRID",  "SMALL/SMALL.SMSPEC", "SMALL/SMALL.UNSMRY", "SMALL/SMALL.RFT",
    "WELLS/WELLS.INIT",   "WELLS/WELLS.UNRST",  "WELLS/WELLS.EGRID",  "WELLS/WELLS.SMSPEC",
    "WELLS/WELLS.UNSMRY", "WELLS/WELLS.RFT"};

// The script's output: a line "== name" before the arrays of each file.
bool ParseOpm(const std::string& out, std::map<std::string, std::vector<OpmArray>>& files,
              std::string& why) {
  std::istringstream in(out);
  std::string line;
  std::vector<OpmArray>* arrays = nullptr;
  while (std::getline(in, line)) {
    if (line.rfind("== ", 0) == 0) {
      arrays = &files[line.substr(3)];
      continue;
    }
    OpmArray a;
    std::size_t p1 = line.find('|'), p2 = line.find('|', p1 + 1), p3 = line.find('|', p2 + 1);
    if (arrays == nullptr || p3 == std::string::npos) {
      why = "unexpected line from the OPM script: " + line.substr(0, 200);
      return false;
    }
    a.keyword = line.substr(0, p1);
    a.type = line.substr(p1 + 1, p2 - p1 - 1);
    a.count = std::stoi(line.substr(p2 + 1, p3 - p2 - 1));
    std::string hex = line.substr(p3 + 1);
    for (std::size_t i = 0; i + 8 <= hex.size(); i += 8)
      a.bits.push_back(static_cast<uint32_t>(std::stoul(hex.substr(i, 8), nullptr, 16)));
    arrays->push_back(std::move(a));
  }
  return true;
}

// OPM's reading of every file, made by one run of the script for all tests.
const std::map<std::string, std::vector<OpmArray>>& OpmReading(std::string& why) {
  static std::map<std::string, std::vector<OpmArray>> files;
  static std::string failure;
  static bool done = false;
  if (!done) {
    done = true;
    std::string names;
    for (const std::string& f : kFlowFiles) names += " " + kFlow + f;
    int status = 0;
    std::string out = RunScript(kFlow + "opm_values.py", names, status);
    if (status != 0)
      failure = "the OPM script failed: " + out.substr(0, 2000);
    else if (!ParseOpm(out, files, failure))
      files.clear();
  }
  why = failure;
  return files;
}

class SimFileOpm : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    // Whether OPM's reader is there is asked once for all the tests.
    static std::string missing;
    static const bool available = OpmAvailable(missing);
    if (!available) GTEST_SKIP() << missing;
    std::string why;
    path_ = kFlow + GetParam();
    const auto& files = OpmReading(why);
    ASSERT_TRUE(why.empty()) << why;
    auto it = files.find(path_);
    ASSERT_NE(it, files.end()) << path_;
    opm_ = it->second;
    ASSERT_FALSE(opm_.empty());
    bool qOK = false;
    io_.OpenForRead(path_, file_, qOK);
    ASSERT_TRUE(qOK) << file_.LastError();
    io_.IndexRecords(file_, records_, qOK);
    ASSERT_TRUE(qOK) << file_.LastError();
  }

  static uint32_t Bits(float v) { return std::bit_cast<uint32_t>(v); }

  std::string path_;
  std::vector<OpmArray> opm_;
  SimFileIO io_;
  RecordFile file_;
  std::vector<SimRecordInfo> records_;
};

TEST_P(SimFileOpm, IndexListsTheArraysOpmReads) {
  ASSERT_EQ(records_.size(), opm_.size());
  for (std::size_t i = 0; i < opm_.size(); ++i) {
    EXPECT_EQ(records_[i].zKeyword, opm_[i].keyword) << i;
    EXPECT_EQ(records_[i].zType, opm_[i].type) << i;
    EXPECT_EQ(records_[i].nValues, opm_[i].count) << i;
    if (i > 0) {
      EXPECT_LT(records_[i - 1].Offset(), records_[i].Offset()) << i;
    }
  }
}

TEST_P(SimFileOpm, EveryArrayReadInAnyOrderEqualsOpms) {
  ASSERT_EQ(records_.size(), opm_.size());
  std::vector<std::size_t> order;
  for (std::size_t i = 0; i < records_.size(); ++i)
    if (records_[i].iVarType != 0) order.push_back(i);
  ASSERT_FALSE(order.empty());
  std::mt19937 random(20240611);
  std::shuffle(order.begin(), order.end(), random);
  int64_t compared = 0;
  for (std::size_t i : order) {
    const SimRecordInfo& r = records_[i];
    int32_t p1 = r.iPos1, p2 = r.iPos2, flags = r.iVarType, n = r.nValues;
    Array<float> v;
    bool qOK = false;
    io_.ReadVector(file_, p1, p2, flags, n, v, qOK);
    ASSERT_TRUE(qOK) << r.zKeyword << " at " << r.Offset() << ": " << file_.LastError();
    ASSERT_EQ(v.size(), opm_[i].bits.size()) << r.zKeyword;
    for (std::size_t k = 0; k < v.size(); ++k) {
      ASSERT_EQ(Bits(v.data()[k]), opm_[i].bits[k])
          << r.zKeyword << " (array " << i << ") value " << k + 1 << " read as " << v.data()[k];
    }
    compared += static_cast<int64_t>(v.size());
  }
  EXPECT_GT(compared, 0);
}

TEST_P(SimFileOpm, SingleValuesEqualOpms) {
  ASSERT_EQ(records_.size(), opm_.size());
  std::mt19937 random(7);
  for (std::size_t i = 0; i < records_.size(); ++i) {
    const SimRecordInfo& r = records_[i];
    if (r.iVarType == 0 || r.nValues == 0) continue;
    std::vector<int32_t> rows = {1, r.nValues, (r.nValues + 1) / 2};
    if (r.nValues > 1000) rows.insert(rows.end(), {1000, 1001, r.nValues - 1});
    rows.push_back(std::uniform_int_distribution<int32_t>(1, r.nValues)(random));
    for (int32_t row : rows) {
      int32_t p1 = r.iPos1, p2 = r.iPos2, flags = r.iVarType, n = r.nValues;
      float s = 0;
      bool qOK = false;
      io_.ReadValue(file_, p1, p2, flags, n, row, s, qOK);
      ASSERT_TRUE(qOK) << r.zKeyword << " row " << row << ": " << file_.LastError();
      ASSERT_EQ(Bits(s), opm_[i].bits[static_cast<std::size_t>(row - 1)])
          << r.zKeyword << " (array " << i << ") row " << row;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(FlowOutput, SimFileOpm, ::testing::ValuesIn(kFlowFiles),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                           std::string name = info.param.substr(info.param.find('/') + 1);
                           std::replace(name.begin(), name.end(), '.', '_');
                           return name;
                         });

// Without OPM: checks of the committed files that need only the reader.

TEST(SimFileFlow, FormattedRestartHoldsTheBinaryOnesRecordsAtTheirOwnPositions) {
  SimFileIO io;
  RecordFile binary, text;
  bool qOK = false;
  io.OpenForRead(kFlow + "SMALL/SMALL.UNRST", binary, qOK);
  ASSERT_TRUE(qOK);
  io.OpenForRead(kFlow + "SMALL/SMALL.FUNRST", text, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_FALSE(binary.FileOption(1));
  EXPECT_TRUE(text.FileOption(1));
  std::vector<SimRecordInfo> a, b;
  io.IndexRecords(binary, a, qOK);
  ASSERT_TRUE(qOK);
  io.IndexRecords(text, b, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(a.size(), b.size());
  ASSERT_EQ(a.size(), 15u * 23u);  // 15 report steps of 23 arrays
  for (std::size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a[i].zKeyword, b[i].zKeyword);
    EXPECT_EQ(a[i].nValues, b[i].nValues);
    EXPECT_EQ(a[i].zType, b[i].zType);
  }
  // The last PRESSURE of both: eight significant digits in the text.
  std::size_t last = 0;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (a[i].zKeyword == "PRESSURE") last = i;
  Array<float> pa, pb;
  int32_t p1 = a[last].iPos1, p2 = a[last].iPos2, flags = kSimVarReal, n = 300;
  io.ReadVector(binary, p1, p2, flags, n, pa, qOK);
  ASSERT_TRUE(qOK);
  p1 = b[last].iPos1;
  p2 = b[last].iPos2;
  io.ReadVector(text, p1, p2, flags, n, pb, qOK);
  ASSERT_TRUE(qOK);
  for (int32_t i = 1; i <= 300; ++i) EXPECT_NEAR(pa(i), pb(i), 2.5e-7f * std::abs(pa(i))) << i;
}

TEST(SimFileFlow, ActiveCellRecordReadsAsACompressedColumnOfTheWholeGrid) {
  // WELLS has 900 cells of which 864 are active: PORV holds all 900,
  // PRESSURE the active ones.
  SimFileIO io;
  RecordFile f;
  bool qOK = false;
  io.OpenForRead(kFlow + "WELLS/WELLS.INIT", f, qOK);
  ASSERT_TRUE(qOK);
  std::vector<SimRecordInfo> init;
  io.IndexRecords(f, init, qOK);
  ASSERT_TRUE(qOK);
  auto porv = std::find_if(init.begin(), init.end(),
                           [](const SimRecordInfo& r) { return r.zKeyword == "PORV"; });
  ASSERT_NE(porv, init.end());
  EXPECT_EQ(porv->nValues, 900);
  io.OpenForRead(kFlow + "WELLS/WELLS.UNRST", f, qOK);
  ASSERT_TRUE(qOK);
  std::vector<SimRecordInfo> rst;
  io.IndexRecords(f, rst, qOK);
  ASSERT_TRUE(qOK);
  auto pressure = std::find_if(rst.begin(), rst.end(),
                               [](const SimRecordInfo& r) { return r.zKeyword == "PRESSURE"; });
  ASSERT_NE(pressure, rst.end());
  int32_t p1 = pressure->iPos1, p2 = pressure->iPos2, flags = kSimVarReal + kSimFlagCompressed;
  int32_t n = 900;
  Array<float> v;
  io.ReadVector(f, p1, p2, flags, n, v, qOK);
  ASSERT_TRUE(qOK) << f.LastError();
  EXPECT_EQ(n, 864);
  EXPECT_EQ(v.UBound(), 864);
  // Metric pressures of the reservoir, in bar.
  for (float p : v) {
    EXPECT_GT(p, 150.0f);
    EXPECT_LT(p, 400.0f);
  }
  // Not compressed, the column must be as long as the record.
  n = 900;
  flags = kSimVarReal;
  io.ReadVector(f, p1, p2, flags, n, v, qOK);
  EXPECT_FALSE(qOK);
}

}  // namespace
