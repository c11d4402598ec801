#include <gtest/gtest.h>

#include <string>

#include "tests/store/store_fixtures.h"

namespace vndata {
namespace {

class LookupsTest : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    store.let_CheckDataSetNames(false);
  }

  int32_t Add(std::shared_ptr<mxDataSet> ds) {
    bool qOK = false;
    store.AddDataSet(std::move(ds), qOK);
    return store.get_AddedDataSetPos();
  }

  // One column "WOPR" of nRows rows holding 1, 2, 3, ...
  static std::shared_ptr<mxDataSet> Rows(const std::string& zOrigin, int32_t nRows) {
    auto ds = std::make_shared<mxDataSet>();
    ds->let_Origin(zOrigin);
    ds->let_GroupName("Summary");
    Array<float> vals(1, nRows);
    for (int32_t i = 1; i <= nRows; ++i) vals(i) = static_cast<float>(i);
    Array<std::string> atts(1, kNumAttributes);
    atts(ATT_CLASS) = "WELLS";
    atts(ATT_MEMBER) = "P1";
    atts(ATT_VARIABLE) = "WOPR";
    bool qOK = false;
    ds->AddDataColumn(vals, atts, qOK, 0);
    EXPECT_TRUE(qOK);
    return ds;
  }
};

TEST_F(LookupsTest, VectorSizeRoundsHalvesToEven) {
  const int32_t i384 = Add(Rows("A", 384));
  const int32_t i640 = Add(Rows("B", 640));
  const int32_t i1000 = Add(Rows("C", 1000));
  EXPECT_EQ(store.GetVectorSize(i384), 2);   // 1.5
  EXPECT_EQ(store.GetVectorSize(i640), 2);   // 2.5
  EXPECT_EQ(store.GetVectorSize(i1000), 4);  // 3.90625
  EXPECT_EQ(store.GetVectorSize(0), 0);
  EXPECT_EQ(store.GetVectorSize(99), 0);
}

TEST_F(LookupsTest, UniquePathIsOriginGroupAndTreePath) {
  const int32_t i = Add(MakeSummary("CASE", {"WOPR", "WWCT"}));
  EXPECT_EQ(store.GetUniquePath(i, 2), "CASE\\Summary\\WELLS\\P1\\WWCT");
  EXPECT_EQ(store.GetUniquePath(0, 1), "");
  EXPECT_EQ(store.GetUniquePath(99, 1), "");
}

TEST_F(LookupsTest, TabStripHeadersOfAnOrigin) {
  Add(MakeSummary("OTHER", {"FOPR"}));
  Add(MakeSummary("CASE", {"WOPR", "WWCT", "WOPR"}));
  Array<std::string> zHeaders;
  int32_t nHeaders = 0;
  bool qOK = false;
  store.GetUniqueTabStripHeaders("case", ATT_VARIABLE, zHeaders, nHeaders, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(nHeaders, 2);
  EXPECT_EQ(zHeaders.UBound(), 10);
  EXPECT_EQ(zHeaders(1), "WOPR");
  EXPECT_EQ(zHeaders(2), "WWCT");
  store.GetUniqueTabStripHeaders("NOSUCH", ATT_VARIABLE, zHeaders, nHeaders, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(LookupsTest, ValuesWithTwoEmptyStringsComeFromColumn1OfDataSet1) {
  auto ds = MakeSummary("CASE", {"WOPR", "WWCT"});
  ds->let_FileName("case.smspec");
  Add(ds);
  Add(MakeSummary("OTHER", {"FOPR"}));
  Array<float> dVals;
  std::string zFile = "old";
  bool qOK = false;
  store.GetValues("", "", dVals, zFile, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(zFile, "case.smspec");
  ASSERT_EQ(dVals.UBound(), 3);
  EXPECT_EQ(dVals(1), 1.f);
  EXPECT_EQ(dVals(3), 3.f);
}

TEST_F(LookupsTest, ValuesByKeyInTheDataSetOfAGroupOrDisplayRoot) {
  Add(MakeSummary("CASE", {"WOPR", "WWCT"}));
  auto other = MakeSummary("OTHER", {"WWCT"}, "Plots");
  other->let_TVDisplayRoot("Display");
  Add(other);
  Array<float> dVals;
  std::string zFile;
  bool qOK = false;
  store.GetValues("WELLS\\P1\\WWCT", "", dVals, zFile, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(dVals(1), 11.f);  // the second column of the first data set
  store.GetValues("WELLS\\P1\\WWCT", "display", dVals, zFile, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(dVals(1), 1.f);
  store.GetValues("WELLS\\P1\\WWCT", "PLOTS", dVals, zFile, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(dVals(1), 1.f);
  // The origin is not what "zOrigin" is compared with.
  dVals = Array<float>{42.f};
  store.GetValues("WELLS\\P1\\WWCT", "OTHER", dVals, zFile, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(zFile, "");
  EXPECT_EQ(dVals(1), 42.f);
  // The key compares with case.
  store.GetValues("wells\\p1\\wwct", "", dVals, zFile, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(LookupsTest, ValuesOfRows3To5ComeAsThreeElementsFrom1) {
  Add(Rows("CASE", 8));
  Array<float> dVals;
  std::string zFile;
  bool qOK = false;
  store.GetValues("WELLS\\P1\\WOPR", "", dVals, zFile, qOK, 3, 5);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(dVals.LBound(), 1);
  ASSERT_EQ(dVals.UBound(), 3);
  EXPECT_EQ(dVals(1), 3.f);
  EXPECT_EQ(dVals(2), 4.f);
  EXPECT_EQ(dVals(3), 5.f);
}

TEST_F(LookupsTest, ValuesFromANameTakeTheFirstColumnOfThatVariable) {
  const int32_t i = Add(MakeSummary("CASE", {"WOPR", "WWCT", "WWCT"}));
  Array<float> sVals;
  EXPECT_TRUE(store.DSGetValuesFromName(i, "wwct", sVals, false));
  ASSERT_EQ(sVals.UBound(), 3);
  EXPECT_EQ(sVals(1), 11.f);
  EXPECT_TRUE(store.DSGetValuesFromName(i, "WOPR", sVals, true));
  EXPECT_EQ(sVals(1), 1.f);
  EXPECT_FALSE(store.DSGetValuesFromName(i, "NOSUCH", sVals, false));
  EXPECT_FALSE(store.DSGetValuesFromName(0, "WOPR", sVals, false));
  EXPECT_EQ(sVals(1), 1.f);
}

}  // namespace
}  // namespace vndata
