// mxDataSet's derived views: column addresses, the ternary saturation
// columns and dual porosity arrays.
#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"

namespace vndata {
namespace {

using testutil::LogCapture;

// One column per name, 3 rows; column c holds 10*c + row.
void BuildNamed(mxDataSet& ds, const std::vector<std::string>& names) {
  std::vector<testutil::Attrs> cols;
  for (const auto& n : names) cols.push_back({{ATT_ORIGIN, "CASE"}, {ATT_VARIABLE, n}});
  const int32_t nCols = static_cast<int32_t>(names.size());
  Array2<float> a = testutil::Block(3, nCols, [](int32_t i, int32_t j) {
    return static_cast<float>(10 * j + i);
  });
  bool qOK = false;
  ds.bInitialiseFrom2d(a, testutil::Headers(cols), qOK);
  ASSERT_TRUE(qOK);
}

// ---- Addresses --------------------------------------------------------------------------------

TEST(DerivedViews, ValuesPtrAddressesTheColumnInPlace) {
  mxDataSet ds;
  BuildNamed(ds, {"A", "B"});
  const std::intptr_t p = ds.ValuesPtr(2);
  ASSERT_NE(p, 0);
  EXPECT_EQ(reinterpret_cast<const float*>(p)[0], 21.f);
  EXPECT_EQ(reinterpret_cast<const float*>(ds.ValuesRowPtr(2, 3))[0], 23.f);
  EXPECT_EQ(ds.ValuesPtr(3), 0);
  EXPECT_EQ(ds.ValuesPtr(0), 0);
}

TEST(DerivedViews, AllValuesPtrsGivesAddressesNamesLimitsAndTernarySlots) {
  mxDataSet ds;
  BuildNamed(ds, {"so", "TIME", "SG", "SWM"});
  Array<std::intptr_t> iPtrs, iTern;
  Array<std::string> zHeads;
  Array<uint8_t> bHeads;
  Array<float> sMins, sMaxs;
  int32_t n = 0;
  ds.GetAllValuesPtrs(iPtrs, n, zHeads, bHeads, sMins, sMaxs, iTern);
  ASSERT_EQ(n, 4);
  EXPECT_EQ(zHeads(2), "TIME");
  EXPECT_EQ(iPtrs(2), ds.ValuesPtr(2));
  EXPECT_EQ(sMins(3), 31.f);
  EXPECT_EQ(sMaxs(3), 33.f);
  ASSERT_EQ(iTern.UBound(), 6);
  EXPECT_EQ(iTern(1), iPtrs(1));  // names compare in upper case
  EXPECT_EQ(iTern(2), iPtrs(3));
  EXPECT_EQ(iTern(3), iPtrs(4));
  ASSERT_EQ(bHeads.UBound(), 64);
  EXPECT_EQ(std::memcmp(&bHeads(17), "TIME", 4), 0);
  EXPECT_EQ(bHeads(21), 0);
}

TEST(DerivedViews, FractureColumnsFillTheirSlotsOnlyInVip) {
  mxDataSet ds;
  BuildNamed(ds, {"SOF", "SGF", "SWF"});
  Array<std::intptr_t> iPtrs, iTern;
  Array<std::string> zHeads;
  Array<uint8_t> bHeads;
  Array<float> sMins, sMaxs;
  int32_t n = 0;
  ds.GetAllValuesPtrs(iPtrs, n, zHeads, bHeads, sMins, sMaxs, iTern);
  EXPECT_EQ(iTern(4), 0);
  EXPECT_EQ(iTern(5), 0);
  ds.let_Simulator("VIP");
  ds.GetAllValuesPtrs(iPtrs, n, zHeads, bHeads, sMins, sMaxs, iTern);
  EXPECT_EQ(iTern(4), iPtrs(1));
  EXPECT_EQ(iTern(6), iPtrs(3));
  EXPECT_EQ(iTern(1), 0);
}

// ---- Ternary columns -------------------------------------------------------------------------------

TEST(DerivedViews, NoWaterColumnMeansNoTernary) {
  mxDataSet ds;
  BuildNamed(ds, {"SO", "SG", "PRESSURE"});
  EXPECT_FALSE(ds.qTernaryColsExist());
  bool qExists = true, qOK = false;
  Array<int32_t> iTern;
  float a = -1.f, b = -1.f, c = -1.f;
  ds.GetTernaryColumns(qExists, iTern, a, b, c, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(qExists);
  ASSERT_EQ(iTern.UBound(), 3);
  EXPECT_EQ(iTern(1), 1);
  EXPECT_EQ(iTern(2), 2);
  EXPECT_EQ(iTern(3), 0);
  EXPECT_EQ(a, -1.f);  // minima only when all three exist
}

TEST(DerivedViews, TernaryColumnsTakeTheLastMatchAndTheirMinima) {
  mxDataSet ds;
  BuildNamed(ds, {"SW", "SO", "SG", "SOM"});
  bool qExists = false, qOK = false;
  Array<int32_t> iTern;
  float sOil = 0.f, sGas = 0.f, sWat = 0.f;
  ds.GetTernaryColumns(qExists, iTern, sOil, sGas, sWat, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(qExists);
  EXPECT_EQ(iTern(1), 4);
  EXPECT_EQ(iTern(2), 3);
  EXPECT_EQ(iTern(3), 1);
  EXPECT_EQ(sOil, 41.f);
  EXPECT_EQ(sGas, 31.f);
  EXPECT_EQ(sWat, 11.f);
}

TEST(DerivedViews, TernaryExistenceKeepsTheLimits) {
  mxDataSet ds;
  float a = -1.f, b = -1.f, c = -1.f;
  ds.GetTernaryDataLimits(a, b, c);
  EXPECT_EQ(a + b + c, 0.f);
  BuildNamed(ds, {"SO", "SG", "SW"});
  EXPECT_TRUE(ds.qTernaryColsExist());
  ds.GetTernaryDataLimits(a, b, c);
  EXPECT_EQ(a, 11.f);
  EXPECT_EQ(b, 21.f);
  EXPECT_EQ(c, 31.f);
}

TEST(DerivedViews, TernaryColumnsWithoutColumnsAreFalse) {
  mxDataSet ds;
  bool qExists = true, qOK = true;
  Array<int32_t> iTern{7};
  float a = 0.f, b = 0.f, c = 0.f;
  ds.GetTernaryColumns(qExists, iTern, a, b, c, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(iTern.UBound(), 1);
}

TEST(DerivedViews, DualPorosityTernaryNamesFollowTheSimulator) {
  mxDataSet ds;
  BuildNamed(ds, {"SOIL", "SGAS", "SWAT", "SOM", "SGM", "SWM", "SOF", "SGF", "SWF"});
  bool qExists = false, qOK = false;
  Array<int32_t> iTern;
  float a = 0.f, b = 0.f, c = 0.f;
  ds.GetTernaryColumnsDP(qExists, iTern, a, b, c, true, qOK);
  EXPECT_TRUE(qExists);
  EXPECT_EQ(iTern(1), 1);
  EXPECT_EQ(iTern(3), 3);
  ds.let_Simulator("VIP");
  ds.GetTernaryColumnsDP(qExists, iTern, a, b, c, true, qOK);
  EXPECT_EQ(iTern(1), 4);
  EXPECT_EQ(iTern(2), 5);
  EXPECT_TRUE(ds.qTernaryColsExistDP(false));
  ds.GetTernaryColumnsDP(qExists, iTern, a, b, c, false, qOK);
  EXPECT_EQ(iTern(1), 7);
  EXPECT_EQ(iTern(3), 9);
  ds.GetTernaryDataLimits(a, b, c);
  EXPECT_EQ(a, 71.f);
}

TEST(DerivedViews, VipFractureTernaryTakesOnlyFractureNames) {
  mxDataSet ds;
  BuildNamed(ds, {"SO", "SG", "SW"});
  ds.let_Simulator("VIP");
  EXPECT_FALSE(ds.qTernaryColsExistDP(false));
  EXPECT_TRUE(ds.qTernaryColsExistDP(true));
}

// ---- Dual porosity arrays ----------------------------------------------------------------------------

TEST(DerivedViews, OutsideVipAndNexusAnArrayIsItsOwnTwoHalves) {
  mxDataSet ds;
  BuildNamed(ds, {"PORO", "PERMX"});
  std::string zM, zF;
  int32_t iM = 0, iF = 0;
  bool qOK = false;
  ds.DualPorosityArrayNames("PORO", 1, zM, iM, zF, iF, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(zM, "PORO");
  EXPECT_EQ(zF, "PORO");
  EXPECT_EQ(iM, 1);
  EXPECT_EQ(iF, 1);
}

TEST(DerivedViews, VipArrayFindsBothHalves) {
  mxDataSet ds;
  BuildNamed(ds, {"PORF", "PORM"});
  ds.let_Simulator("VIP");
  std::string zM, zF;
  int32_t iM = 0, iF = 0;
  bool qOK = false;
  ds.DualPorosityArrayNames("POR", 9, zM, iM, zF, iF, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(zM, "PORM");
  EXPECT_EQ(iM, 2);
  EXPECT_EQ(zF, "PORF");
  EXPECT_EQ(iF, 1);
  int32_t nValues = 3;
  Array<float> s;
  ds.getDualPorosityArray("POR", 9, nValues, iM, iF, s, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nValues, 6);
  ASSERT_EQ(s.UBound(), 6);
  EXPECT_EQ(s(1), 21.f);
  EXPECT_EQ(s(4), 11.f);
}

TEST(DerivedViews, OnlyTheMatrixPresentGivesTheMatrixValuesTwice) {
  mxDataSet ds;
  BuildNamed(ds, {"TIME", "PORM"});
  ds.let_Simulator("NEXUS");
  int32_t nValues = 3, iM = 0, iF = 0;
  Array<float> s;
  bool qOK = false;
  ds.getDualPorosityArray("POR", 1, nValues, iM, iF, s, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(iM, 2);
  EXPECT_EQ(iF, 2);
  EXPECT_EQ(nValues, 6);
  ASSERT_EQ(s.UBound(), 6);
  for (int32_t i = 1; i <= 3; ++i) {
    EXPECT_EQ(s(i), 20.f + i);
    EXPECT_EQ(s(i + 3), 20.f + i);
  }
}

TEST(DerivedViews, ADualArrayOfNoValuesIsTracedUnderItsRoutine) {
  LogCapture log;
  mxDataSet ds;
  BuildNamed(ds, {"PORO"});
  int32_t nValues = 0, iM = 0, iF = 0;
  Array<float> s{4.f};
  bool qOK = true;
  ds.getDualPorosityArray("PORO", 1, nValues, iM, iF, s, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(nValues, 0);
  EXPECT_EQ(s(1), 4.f);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDataSet (Code) (getDualPorosityArray)] ");
}

TEST(DerivedViews, NoHalfPresentFallsBackToTheColumnGiven) {
  mxDataSet ds;
  BuildNamed(ds, {"TIME", "POR"});
  ds.let_Simulator("VIP");
  std::string zM, zF;
  int32_t iM = 0, iF = 0;
  bool qOK = false;
  ds.DualPorosityArrayNames("POR", 2, zM, iM, zF, iF, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(zM, "POR");
  EXPECT_EQ(iF, 2);
}

}  // namespace
}  // namespace vndata
