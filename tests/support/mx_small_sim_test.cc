#include "vndata/support/mx_small_sim.h"

#include <gtest/gtest.h>

#include <vector>

#include "vndata/platform/message_log.h"

using namespace vndata;

namespace {

class SmallSimTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }
  void TearDown() override { MessageLog::Shared().Clear(); }

  std::string Type(const std::string& zName) {
    std::string zType = "unset";
    bool qOK = false;
    sim.EclipseArrayType(zName, zType, qOK);
    EXPECT_TRUE(qOK) << zName;
    return zType;
  }

  mxSmallSim sim;
};

// ---- EclipseArrayType --------------------------------------------------------

TEST_F(SmallSimTest, TnumByTableAndByLength) {
  EXPECT_EQ(Type("TNUM"), "INTE");     // the table
  EXPECT_EQ(Type("TNUMAB"), "INTE");   // length 6, first four "TNUM"
  EXPECT_EQ(Type("TNUMABC"), "REAL");  // length 7: only IMBNUM and ALPHAN count
}

TEST_F(SmallSimTest, FipAndHmLengthRules) {
  EXPECT_EQ(Type("FIP"), "REAL");     // length 3 needs "HM"
  EXPECT_EQ(Type("FIPA"), "INTE");    // length 4
  EXPECT_EQ(Type("FIPAB"), "INTE");   // length 5
  EXPECT_EQ(Type("FIPABC"), "REAL");  // length 6 beginning "FIP" stays REAL
  EXPECT_EQ(Type("HMX"), "INTE");
  EXPECT_EQ(Type("HM"), "REAL");
}

TEST_F(SmallSimTest, OtherLengthRules) {
  EXPECT_EQ(Type("IMBNUM12"), "INTE");
  EXPECT_EQ(Type("ALPHANUM"), "INTE");
  EXPECT_EQ(Type("KRNUMX"), "INTE");
  EXPECT_EQ(Type("HMMLTX"), "REAL");
  EXPECT_EQ(Type("PORO"), "REAL");
  EXPECT_EQ(Type("X"), "REAL");
  EXPECT_EQ(Type(""), "REAL");
  EXPECT_EQ(Type("imbnum12"), "REAL");  // case counts
}

TEST_F(SmallSimTest, ExactNamesDecideFirst) {
  EXPECT_EQ(Type("ACTNUM"), "INTE");
  EXPECT_EQ(Type("YLDNUM"), "INTE");
  EXPECT_EQ(Type("ICAQ"), "INTE");
  EXPECT_EQ(Type("INOBR"), "INTE");
  EXPECT_EQ(Type("XGRP"), "DOUB");
  EXPECT_EQ(Type("ACAQ"), "DOUB");
  EXPECT_EQ(Type("RBRAN"), "DOUB");
  EXPECT_EQ(Type("SWEL"), "REAL");
  EXPECT_EQ(Type("ZWEL"), "CHAR");
  EXPECT_EQ(Type("TRACER"), "CHAR");
  EXPECT_EQ(Type("ZNODE"), "CHAR");
  EXPECT_EQ(Type("HMMLTX"), "REAL");
  EXPECT_EQ(Type("actnum"), "REAL");
}

// ---- VIPDualPorosityNames ------------------------------------------------------

TEST_F(SmallSimTest, DualPorosityNamesOfAnyMemberOfAFamily) {
  for (const char* z : {"TX", "TXM", "TXF"}) {
    std::string m, f;
    bool qOK = false;
    sim.VIPDualPorosityNames(z, m, f, qOK);
    EXPECT_TRUE(qOK);
    EXPECT_EQ(m, "TXM");
    EXPECT_EQ(f, "TXF");
  }
  std::string m, f;
  bool qOK = false;
  sim.VIPDualPorosityNames("IEQUIL", m, f, qOK);
  EXPECT_EQ(m, "IEQUM");
  EXPECT_EQ(f, "IEQUF");
  sim.VIPDualPorosityNames("MLTYF", m, f, qOK);
  EXPECT_EQ(m, "MLTYM");
  EXPECT_EQ(f, "MLTYF");
  sim.VIPDualPorosityNames("P", m, f, qOK);
  EXPECT_EQ(m, "PM");
  EXPECT_EQ(f, "PF");
}

TEST_F(SmallSimTest, DualPorosityNamesOfAnUnknownNameEndingInF) {
  std::string m, f;
  bool qOK = false;
  sim.VIPDualPorosityNames("ABCF", m, f, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(m, "ABCM");
  EXPECT_EQ(f, "ABCF");
  sim.VIPDualPorosityNames("XYZM", m, f, qOK);
  EXPECT_EQ(m, "XYZM");
  EXPECT_EQ(f, "XYZF");
}

TEST_F(SmallSimTest, DualPorosityNamesOfAnUnknownNameEndingInNeitherLeaveBoth) {
  std::string m = "old m", f = "old f";
  bool qOK = false;
  sim.VIPDualPorosityNames("ABC", m, f, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(m, "old m");
  EXPECT_EQ(f, "old f");
  sim.VIPDualPorosityNames("txf", m, f, qOK);  // no family in lower case; ends in "f"
  EXPECT_EQ(m, "old m");
}

// ---- VIP2EclipseName ---------------------------------------------------------------

struct Expect {
  const char* vip;
  const char* eclipse;
  const char* type;
  bool trans;
};

TEST_F(SmallSimTest, VipNamesMapToEclipseNames) {
  const Expect cases[] = {
      {"DX", "DX", "REAL", false},         {"DZF", "DZ", "REAL", false},
      {"DRM", "DR", "REAL", false},        {"DTHETA", "DTHETA", "REAL", false},
      {"TX", "TRANX", "REAL", true},       {"TYM", "TRANY", "REAL", true},
      {"TZF", "TRANZ", "REAL", true},      {"TRM", "TRANR", "REAL", true},
      {"TTHF", "TRANTHT", "REAL", true},   {"TMX", "MULTX", "REAL", true},
      {"TMYF", "MULTY", "REAL", true},     {"TMZM", "MULTZ", "REAL", true},
      {"TMR", "MULTR", "REAL", true},      {"TMTHM", "MULTTHT", "REAL", true},
      {"KX", "PERMX", "REAL", false},      {"KYM", "PERMY", "REAL", false},
      {"KZF", "PERMZ", "REAL", false},     {"KR", "PERMR", "REAL", false},
      {"KTM", "PERMR", "REAL", false},     {"KRF", "PERMR", "REAL", false},
      {"KTHM", "PERMTHT", "REAL", false},  {"POR", "PORO", "REAL", false},
      {"PORF", "PORO", "REAL", false},     {"NETGRS", "NTG", "REAL", false},
      {"NETGM", "NTG", "REAL", false},     {"DZNET", "DZNET", "REAL", false},
      {"PV", "PORV", "REAL", false},       {"PVMUL", "MULTPVV", "REAL", false},
      {"ISAT", "SATNUM", "INTE", false},   {"ISATIF", "IMBNUM", "INTE", false},
      {"IPVTM", "PVTNUM", "INTE", false},  {"IREGION", "FIPNUM", "INTE", false},
      {"IREGF", "FIPNUM", "INTE", false},  {"ICMT", "ROCKNUM", "INTE", false},
      {"IEQUIL", "EQLNUM", "INTE", false}, {"IEQUF", "EQLNUM", "INTE", false},
      {"SGL", "SGL", "REAL", false},       {"SGLM", "SGL", "REAL", false},
      {"SGLX+", "SGLX", "REAL", false},    {"SGLMX+", "SGLX", "REAL", false},
      {"SGLFX+", "SGLX", "REAL", false},   {"SGLX-", "SGLX-", "REAL", false},
      {"SGLFY-", "SGLY-", "REAL", false},  {"SGUZ+", "SGUZ", "REAL", false},
      {"SWLMZ-", "SWLZ-", "REAL", false},  {"SWUFY+", "SWUY", "REAL", false},
      {"BG", "BG", "REAL", false},         {"BOM", "BO", "REAL", false},
      {"BWF", "BW", "REAL", false},        {"P", "PRESSURE", "REAL", false},
      {"PF", "PRESSURE", "REAL", false},   {"RSM", "RS", "REAL", false},
      {"RV", "RV", "REAL", false},         {"SG", "SGAS", "REAL", false},
      {"SOM", "SOIL", "REAL", false},      {"SWF", "SWAT", "REAL", false},
      {"PSAT", "PSAT", "REAL", false},     {"PDATM", "PDAT", "REAL", false},
      {"PBUBF", "PBUB", "REAL", false},
  };
  for (const Expect& e : cases) {
    std::string zEclipse, zType;
    bool qTrans = !e.trans, qOK = false;
    sim.VIP2EclipseName(e.vip, zEclipse, zType, qTrans, qOK);
    EXPECT_TRUE(qOK) << e.vip;
    EXPECT_EQ(zEclipse, e.eclipse) << e.vip;
    EXPECT_EQ(zType, e.type) << e.vip;
    EXPECT_EQ(qTrans, e.trans) << e.vip;
  }
}

TEST_F(SmallSimTest, KrmIsNotTheMatrixFormOfKr) {
  std::string zEclipse, zType;
  bool qTrans = true, qOK = false;
  sim.VIP2EclipseName("KRM", zEclipse, zType, qTrans, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(zEclipse, "KRM");  // an unknown name stands for itself
  EXPECT_EQ(zType, "REAL");
  EXPECT_FALSE(qTrans);
}

TEST_F(SmallSimTest, UnknownOneLetterNameGivesFalseAndTwoLettersStandForThemselves) {
  std::string zEclipse = "before", zType = "INTE";
  bool qTrans = true, qOK = true;
  sim.VIP2EclipseName("Q", zEclipse, zType, qTrans, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(zEclipse, "before");
  EXPECT_EQ(zType, "REAL");
  EXPECT_FALSE(qTrans);
  sim.VIP2EclipseName("QQ", zEclipse, zType, qTrans, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(zEclipse, "QQ");
  sim.VIP2EclipseName("tx", zEclipse, zType, qTrans, qOK);  // case counts
  EXPECT_EQ(zEclipse, "tx");
  EXPECT_FALSE(qTrans);
}

// ---- AdjustTransArray ----------------------------------------------------------------

// A 3 x 2 x 2 grid whose cell (i,j,k) holds 100k + 10j + i.
Array<float> Grid() {
  Array<float> v(1, 12);
  int32_t c = 1;
  for (int32_t k = 1; k <= 2; ++k)
    for (int32_t j = 1; j <= 2; ++j)
      for (int32_t i = 1; i <= 3; ++i) v(c++) = static_cast<float>(100 * k + 10 * j + i);
  return v;
}

std::vector<float> Values(const Array<float>& a) { return std::vector<float>(a.begin(), a.end()); }

TEST_F(SmallSimTest, FirstAxisArraysMoveOneCellDownEachRow) {
  for (const char* z : {"TRANX", "TRANR", "MULTX", "MULTR"}) {
    Array<float> v = Grid();
    sim.AdjustTransArray(3, 2, 2, 12, z, v);
    EXPECT_EQ(Values(v), (std::vector<float>{112, 113, 0, 122, 123, 0, 212, 213, 0, 222, 223, 0}))
        << z;
  }
}

TEST_F(SmallSimTest, SecondAxisArraysMoveOneRowDown) {
  for (const char* z : {"TRANY", "TRANTHT", "MULTY", "MULTHT"}) {
    Array<float> v = Grid();
    sim.AdjustTransArray(3, 2, 2, 12, z, v);
    EXPECT_EQ(Values(v), (std::vector<float>{121, 122, 123, 0, 0, 0, 221, 222, 223, 0, 0, 0})) << z;
  }
}

TEST_F(SmallSimTest, ThirdAxisArraysMoveOneLayerDown) {
  for (const char* z : {"TRANZ", "MULTZ"}) {
    Array<float> v = Grid();
    sim.AdjustTransArray(3, 2, 2, 12, z, v);
    EXPECT_EQ(Values(v), (std::vector<float>{211, 212, 213, 221, 222, 223, 0, 0, 0, 0, 0, 0})) << z;
  }
}

TEST_F(SmallSimTest, OtherNamesAreLeftAloneIncludingMulttht) {
  for (const char* z : {"MULTTHT", "PERMX", "tranx"}) {
    Array<float> v = Grid();
    sim.AdjustTransArray(3, 2, 2, 12, z, v);
    EXPECT_EQ(Values(v), Values(Grid())) << z;
  }
}

TEST_F(SmallSimTest, ActiveCellArraysMoveThroughTheGrid) {
  // A 3 x 1 x 1 line with the middle cell inactive: active 1 is cell 1,
  // active 2 is cell 3. Cell 1 takes the inactive cell's 0; cell 3 is last.
  Array<float> v{5.f, 7.f};
  Array<int32_t> ia2n{1, 3};
  sim.AdjustTransArray(3, 1, 1, 2, "TRANX", v, ia2n);
  EXPECT_EQ(Values(v), (std::vector<float>{0.f, 0.f}));
  // All four cells of a 4 x 1 x 1 line active but listed through the map.
  Array<float> w{1.f, 2.f, 3.f};
  Array<int32_t> map{2, 3, 4};
  sim.AdjustTransArray(4, 1, 1, 3, "TRANX", w, map);
  EXPECT_EQ(Values(w), (std::vector<float>{2.f, 3.f, 0.f}));
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(SmallSimTest, AnActiveArrayWithoutItsMapIsLogged) {
  Array<float> v{5.f, 7.f};
  sim.AdjustTransArray(3, 1, 1, 2, "TRANX", v);
  EXPECT_EQ(Values(v), (std::vector<float>{5.f, 7.f}));
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Subscript out of range (No.9) In [mxSmallSim (Code) (AdjustTransArray)] ");
}

}  // namespace
