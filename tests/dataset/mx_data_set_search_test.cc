#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"

using namespace vndata;
using namespace vndata::testutil;

namespace {

void WithColumns(mxDataSet& ds, const std::vector<Attrs>& cols, int32_t nRows = 2) {
  ds.Dimension(static_cast<int32_t>(cols.size()), nRows);
  for (std::size_t c = 0; c < cols.size(); ++c) {
    bool qOK = false;
    ds.SetAttributes(static_cast<int32_t>(c + 1), Row(cols[c]), qOK);
    ASSERT_TRUE(qOK);
  }
}

Attrs Col(const std::string& zClass, const std::string& zMember, const std::string& zVariable) {
  return {{ATT_CLASS, zClass}, {ATT_MEMBER, zMember}, {ATT_VARIABLE, zVariable}};
}

struct Result {
  std::vector<int32_t> cols;
  int32_t nList = -1;
  bool qOK = false;
};

Result Search(mxDataSet& ds, const std::vector<std::pair<int32_t, std::string>>& criteria,
              int32_t iStart = -1, int32_t iEnd = -1, bool qExitAfterOne = false) {
  Array<int32_t> iAtt;
  Array<std::string> zAtt;
  if (!criteria.empty()) {
    iAtt.ReDim(1, static_cast<int32_t>(criteria.size()));
    zAtt.ReDim(1, static_cast<int32_t>(criteria.size()));
    for (std::size_t k = 0; k < criteria.size(); ++k) {
      iAtt(static_cast<int32_t>(k + 1)) = criteria[k].first;
      zAtt(static_cast<int32_t>(k + 1)) = criteria[k].second;
    }
  }
  Array<int32_t> iList;
  Result r;
  ds.SearchDataSet(iAtt, zAtt, static_cast<int32_t>(criteria.size()), iList, r.nList, r.qOK, iStart,
                   iEnd, qExitAfterOne);
  for (int32_t k = 1; k <= r.nList; ++k) r.cols.push_back(iList(k));
  return r;
}

void SetColumn(mxDataSet& ds, int32_t c, std::initializer_list<float> v) {
  bool qOK = false;
  ds.SetValues(c, Array<float>(v), qOK);
  ASSERT_TRUE(qOK);
}

}  // namespace

// ---- SearchDataSet --------------------------------------------------------------------------

TEST(DataSetSearch, AllCriteriaMustHold) {
  mxDataSet ds;
  WithColumns(ds, {Col("WELLS", "P1", "WOPR"), Col("WELLS", "P2", "WOPR"), Col("WELLS", "P2", "WWCT"),
                   Col("GROUPS", "P2", "WOPR")});
  Result r = Search(ds, {{ATT_VARIABLE, "WOPR"}, {ATT_CLASS, "WELLS"}, {ATT_MEMBER, "P2"}});
  EXPECT_TRUE(r.qOK);
  EXPECT_EQ(r.cols, std::vector<int32_t>({2}));
  r = Search(ds, {{ATT_VARIABLE, "WOPR"}});
  EXPECT_EQ(r.cols, std::vector<int32_t>({1, 2, 4}));
  r = Search(ds, {{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "P2"}});
  EXPECT_EQ(r.cols, std::vector<int32_t>({2, 3}));
  r = Search(ds, {{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "P2"}, {ATT_VARIABLE, "WWCT"}, {ATT_ORIGIN, ""}});
  EXPECT_EQ(r.cols, std::vector<int32_t>({3}));
}

TEST(DataSetSearch, AValueTheDataSetDoesNotHoldRefusesBeforeAnyColumn) {
  mxDataSet ds;
  WithColumns(ds, {Col("WELLS", "P1", "WOPR"), Col("WELLS", "P2", "WOPR")});
  Array<int32_t> iAtt{ATT_CLASS, ATT_VARIABLE};
  Array<std::string> zAtt{"WELLS", "NOSUCH"};
  Array<int32_t> iList{7, 8, 9};
  int32_t nList = -1;
  bool qOK = true;
  ds.SearchDataSet(iAtt, zAtt, 2, iList, nList, qOK);
  EXPECT_EQ(nList, 0);
  EXPECT_FALSE(qOK);
  // The list was never sized for the columns: it is as it came.
  ASSERT_EQ(iList.UBound(), 3);
  EXPECT_EQ(iList(1), 7);
  EXPECT_EQ(iList(3), 9);
}

TEST(DataSetSearch, TheWantedTextsAreTheHeldTextsExactly) {
  mxDataSet ds;
  WithColumns(ds, {Col("WELLS", "P1", "WOPR")});
  Result r = Search(ds, {{ATT_VARIABLE, "wopr"}});
  EXPECT_EQ(r.nList, 0);
  EXPECT_TRUE(r.cols.empty());
}

TEST(DataSetSearch, NoCriteriaReturnEveryColumnOfTheRange) {
  mxDataSet ds;
  WithColumns(ds, std::vector<Attrs>(6, Col("WELLS", "P1", "WOPR")));
  Result r = Search(ds, {});
  EXPECT_TRUE(r.qOK);
  EXPECT_EQ(r.cols, std::vector<int32_t>({1, 2, 3, 4, 5, 6}));
  r = Search(ds, {}, 2, 4);
  EXPECT_EQ(r.cols, std::vector<int32_t>({2, 3, 4}));
  r = Search(ds, {}, 5, 2);
  EXPECT_EQ(r.cols, std::vector<int32_t>({5, 4, 3, 2}));
  r = Search(ds, {}, 3, 99);
  EXPECT_EQ(r.cols, std::vector<int32_t>({3, 4, 5, 6}));
}

TEST(DataSetSearch, AStartOutsideTheColumnsFindsNothing) {
  mxDataSet ds;
  WithColumns(ds, std::vector<Attrs>(3, Col("WELLS", "P1", "WOPR")));
  Result r = Search(ds, {}, 4, 9);
  EXPECT_TRUE(r.qOK);
  EXPECT_EQ(r.nList, 0);
}

TEST(DataSetSearch, ExitAfterOneStopsAtTheFirstHitOfTheWalk) {
  mxDataSet ds;
  WithColumns(ds, {Col("WELLS", "P1", "WOPR"), Col("WELLS", "P2", "WWCT"), Col("WELLS", "P3", "WOPR")});
  Result r = Search(ds, {{ATT_VARIABLE, "WOPR"}}, -1, -1, true);
  EXPECT_EQ(r.cols, std::vector<int32_t>({1}));
  r = Search(ds, {{ATT_VARIABLE, "WOPR"}}, 3, 1, true);
  EXPECT_EQ(r.cols, std::vector<int32_t>({3}));
}

TEST(DataSetSearch, AnEmptyWantedTextFitsColumnsWithoutThatAttribute) {
  mxDataSet ds;
  // Unpacked headers leave an absent attribute without a value.
  Array2<uint8_t> bHeaders = Headers({{{ATT_VARIABLE, "A"}, {ATT_INDEX, "1"}},
                                      {{ATT_VARIABLE, "B"}},
                                      {{ATT_VARIABLE, "C"}, {ATT_INDEX, "2"}}});
  Array2<float> values = Numbered(2, 3);
  bool qOK = false;
  ds.bInitialiseFrom2d(values, bHeaders, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Search(ds, {{ATT_INDEX, ""}}).cols, std::vector<int32_t>({2}));
  EXPECT_EQ(Search(ds, {{ATT_INDEX, "2"}}).cols, std::vector<int32_t>({3}));
}

TEST(DataSetSearch, TheTreePathCriterionComparesTheComputedPathIgnoringCase) {
  mxDataSet ds;
  WithColumns(ds, {Col("WELLS", "P1", "WOPR"), Col("WELLS", "P2", "WOPR")});
  EXPECT_EQ(Search(ds, {{TREEVIEWPATH, "wells\\p2\\wopr"}}).cols, std::vector<int32_t>({2}));
  EXPECT_EQ(Search(ds, {{ATT_VARIABLE, "WOPR"}, {TREEVIEWPATH, "WELLS\\P1\\WOPR"}}).cols,
            std::vector<int32_t>({1}));
}

TEST(DataSetSearch, FaultsArePassedOverWithoutATraceLine) {
  mxDataSet ds;
  WithColumns(ds, {Col("WELLS", "P1", "WOPR")});
  LogCapture log;
  Array<int32_t> iAtt{ATT_VARIABLE};
  Array<std::string> zAtt{"WOPR"};
  Array<int32_t> iList;
  int32_t nList = -1;
  bool qOK = true;
  ds.SearchDataSet(iAtt, zAtt, 3, iList, nList, qOK);  // three criteria announced, one given
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(log.Lines().empty());
}

// ---- Start and end of activity -----------------------------------------------------------------

TEST(DataSetSearch, StartAndEndKeepOneEmptyRowEachSide) {
  mxDataSet ds;
  int32_t iStart = -1, iEnd = -1;
  ds.GetStartAndEndTime(Array<float>{0.f, 0.f, 5.f, 7.f, 0.f, 0.f}, iStart, iEnd);
  EXPECT_EQ(iStart, 2);
  EXPECT_EQ(iEnd, 5);
}

TEST(DataSetSearch, StartAndEndOfASeriesWithNothingAboveZeroAreLeftAlone) {
  mxDataSet ds;
  int32_t iStart = 17, iEnd = 19;
  ds.GetStartAndEndTime(Array<float>{0.f, -1.f, 0.f}, iStart, iEnd);
  EXPECT_EQ(iStart, 17);
  EXPECT_EQ(iEnd, 19);
}

TEST(DataSetSearch, ARateFromRow1StartsAt1AndFromRow5At4) {
  mxDataSet ds;
  int32_t iStart = -1, iEnd = -1;
  ds.GetStartAndEndTime(Array<float>{3.f, 3.f, 3.f, 0.f}, iStart, iEnd);
  EXPECT_EQ(iStart, 1);
  EXPECT_EQ(iEnd, 4);
  ds.GetStartAndEndTime(Array<float>{0.f, 0.f, 0.f, 0.f, 2.f, 2.f}, iStart, iEnd);
  EXPECT_EQ(iStart, 4);
  EXPECT_EQ(iEnd, 6);
}

// ---- Auto scale lists and limits ---------------------------------------------------------------

TEST(DataSetSearch, AutoScaleNamesByClassAndPhase) {
  mxDataSet ds;
  ds.let_Simulator("ECLIPSE");
  const Array<std::string>* z = nullptr;
  Variant v = ds.GetAutoScaleVectorList("WELLS", "P");
  ASSERT_NE(z = v.GetArray<std::string>(), nullptr);
  ASSERT_EQ(z->size(), 10u);
  EXPECT_EQ((*z)(1), "WOPR");
  EXPECT_EQ((*z)(10), "WLPT");
  v = ds.GetAutoScaleVectorList("GROUPS", "I");
  ASSERT_NE(z = v.GetArray<std::string>(), nullptr);
  ASSERT_EQ(z->size(), 6u);
  EXPECT_EQ((*z)(1), "GGIR");
  EXPECT_EQ((*z)(6), "GVIT");
  v = ds.GetAutoScaleVectorList("FIELD", "");
  ASSERT_NE(z = v.GetArray<std::string>(), nullptr);
  ASSERT_EQ(z->size(), 16u);
  EXPECT_EQ((*z)(11), "FGIR");
  EXPECT_TRUE(ds.GetAutoScaleVectorList("AQUIFERS", "P").IsEmpty());
  ds.let_Simulator("UTCHEM");
  v = ds.GetAutoScaleVectorList("WELLS", "I");
  ASSERT_NE(z = v.GetArray<std::string>(), nullptr);
  EXPECT_EQ((*z)(1), "QI");
  ds.let_Simulator("VIP");
  EXPECT_TRUE(ds.GetAutoScaleVectorList("WELLS", "P").IsEmpty());
}

TEST(DataSetSearch, AVectorOfZerosIsSkippedAndTheNextNameTried) {
  mxDataSet ds;
  ds.let_Simulator("ECLIPSE");
  WithColumns(ds, {Col("WELLS", "P1", "WOPR"), Col("WELLS", "P1", "WGPR")}, 6);
  SetColumn(ds, 1, {0, 0, 0, 0, 0, 0});
  SetColumn(ds, 2, {0, 0, 4, 5, 0, 0});
  int32_t iStart = 0, iEnd = 0;
  ds.GetAutoScaleLimits("WELLS", "P1", "P", iStart, iEnd);
  EXPECT_EQ(iStart, 2);
  EXPECT_EQ(iEnd, 5);
}

TEST(DataSetSearch, AConstantNonZeroVectorSpansTheTable) {
  mxDataSet ds;
  ds.let_Simulator("ECLIPSE");
  WithColumns(ds, {Col("WELLS", "P1", "WOPR")}, 5);
  SetColumn(ds, 1, {3, 3, 3, 3, 3});
  int32_t iStart = 0, iEnd = 0;
  ds.GetAutoScaleLimits("WELLS", "P1", "P", iStart, iEnd);
  EXPECT_EQ(iStart, 1);
  EXPECT_EQ(iEnd, 5);
  ds.GetAutoScaleLimits("WELLS", "P2", "P", iStart, iEnd);
  EXPECT_EQ(iStart, -1);
  EXPECT_EQ(iEnd, -1);
}

// ---- Index range -----------------------------------------------------------------------------

TEST(DataSetSearch, AnItemWithNoRowsSpansTheWholeTableAndTheResultIsFalse) {
  mxDataSet ds;
  WithColumns(ds, {Col("WELLS", "P1", "WOPR")}, 4);
  int32_t iStart = 0, iEnd = 0;
  EXPECT_FALSE(ds.GetIndexRange("WELLS", "NOSUCH", iStart, iEnd));
  EXPECT_EQ(iStart, 1);
  EXPECT_EQ(iEnd, 4);
}

TEST(DataSetSearch, IndexRangeJoinsProductionAndInjectionAndIsCalculatedOnce) {
  mxDataSet ds;
  ds.let_Simulator("ECLIPSE");
  WithColumns(ds, {Col("WELLS", "P1", "WOPR"), Col("WELLS", "P1", "WWIR")}, 8);
  SetColumn(ds, 1, {0, 0, 0, 1, 1, 0, 0, 0});   // production: rows 3 to 6
  SetColumn(ds, 2, {0, 0, 0, 0, 0, 0, 2, 0});   // injection: rows 6 to 8
  int32_t iStart = 0, iEnd = 0;
  EXPECT_FALSE(ds.GetIndexRange("WELLS", "P1", iStart, iEnd));
  EXPECT_EQ(iStart, 3);
  EXPECT_EQ(iEnd, 8);
  // The answer is kept by class and item: new values do not change it.
  SetColumn(ds, 1, {1, 1, 1, 1, 1, 1, 1, 0});
  EXPECT_FALSE(ds.GetIndexRange("WELLS", "P1", iStart, iEnd));
  EXPECT_EQ(iStart, 3);
  EXPECT_EQ(iEnd, 8);
}

TEST(DataSetSearch, ASearchFollowsChangedAndAddedColumns) {
  mxDataSet ds;
  WithColumns(ds, {Col("WELLS", "P1", "WOPR"), Col("WELLS", "P2", "WOPR")});
  EXPECT_EQ(Search(ds, {{ATT_VARIABLE, "WOPR"}}).cols, std::vector<int32_t>({1, 2}));
  ASSERT_TRUE(ds.SetColumnAttribute(1, ATT_VARIABLE, "WWCT"));
  EXPECT_EQ(Search(ds, {{ATT_VARIABLE, "WOPR"}}).cols, std::vector<int32_t>({2}));
  bool qOK = false;
  ds.AddDataColumn(Array<float>{1.f, 2.f}, Row(Col("WELLS", "P3", "WOPR")), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Search(ds, {{ATT_VARIABLE, "WOPR"}}).cols, std::vector<int32_t>({2, 3}));
  ASSERT_TRUE(ds.SetAttribute(ATT_VARIABLE, "FOPR"));
  EXPECT_EQ(Search(ds, {{ATT_VARIABLE, "FOPR"}}).cols, std::vector<int32_t>({1, 2, 3}));
  EXPECT_EQ(Search(ds, {{ATT_VARIABLE, "FOPR"}, {ATT_MEMBER, "P3"}}).cols, std::vector<int32_t>({3}));
}
