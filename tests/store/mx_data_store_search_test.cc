#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/store/store_fixtures.h"

namespace vndata {
namespace {

using Hits = std::vector<std::pair<int32_t, int32_t>>;

class SearchTest : public StoreTest {
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

  // Columns V1..Vn, class WELLS, member P1.
  static std::shared_ptr<mxDataSet> Numbered(const std::string& zOrigin, int32_t n,
                                             const std::string& zGroup = "Summary") {
    auto ds = std::make_shared<mxDataSet>();
    ds->let_Origin(zOrigin);
    ds->let_GroupName(zGroup);
    for (int32_t c = 1; c <= n; ++c) {
      Array<std::string> atts(1, kNumAttributes);
      atts(ATT_ORIGIN) = zOrigin;
      atts(ATT_TYPE) = "Summary";
      atts(ATT_CLASS) = "WELLS";
      atts(ATT_MEMBER) = "P1";
      atts(ATT_VARIABLE) = "V" + std::to_string(c);
      bool qOK = false;
      ds->AddDataColumn(Array<float>{1.f, 2.f}, atts, qOK, 0);
      EXPECT_TRUE(qOK);
    }
    return ds;
  }

  void Criterion(int32_t id, const std::string& zValue) {
    bool qOK = false;
    store.SearchAddAttribute(id, zValue, qOK);
    ASSERT_TRUE(qOK);
  }

  Hits Table() {
    Array2<int32_t> iResults;
    int32_t n = -1;
    bool qOK = false;
    store.SearchPointers(iResults, n, qOK);
    EXPECT_TRUE(qOK);
    Hits hits;
    for (int32_t k = 1; k <= n; ++k) hits.emplace_back(iResults(1, k), iResults(2, k));
    return hits;
  }

  static Hits Columns(int32_t iDataSet, std::initializer_list<int32_t> cols) {
    Hits h;
    for (int32_t c : cols) h.emplace_back(iDataSet, c);
    return h;
  }
};

// ---- Criteria -----------------------------------------------------------------------------------

TEST_F(SearchTest, CreateWithNoCriteriaReportsFalse) {
  Add(Numbered("CASE", 2));
  store.SearchClear();
  bool qOK = true;
  store.SearchCreatePointers(qOK);
  EXPECT_FALSE(qOK);
  store.SearchCreatePointersEx(qOK);
  EXPECT_FALSE(qOK);
  store.SearchDataSetCreatePointers(qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(SearchTest, TheSameIdTwiceKeepsOneCriterionWithTheSecondValue) {
  const int32_t i = Add(Numbered("CASE", 3));
  store.SearchClear();
  Criterion(ATT_VARIABLE, "V1");
  Criterion(ATT_VARIABLE, "V3");
  bool qOK = false;
  store.SearchCreatePointers(qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(i, {3}));
}

TEST_F(SearchTest, ColumnCriteriaStopAt14AndDataSetCriteriaAt66) {
  store.SearchClear();
  bool qOK = true;
  store.SearchAddAttribute(15, "X", qOK);
  EXPECT_FALSE(qOK);
  store.SearchDataSetAddAttribute(15, "X", qOK);
  EXPECT_TRUE(qOK);
  store.SearchDataSetAddAttribute(66, "X", qOK);
  EXPECT_TRUE(qOK);
  store.SearchDataSetAddAttribute(67, "X", qOK);
  EXPECT_FALSE(qOK);
  store.SearchAddAttribute(-3, "X", qOK);  // no lower limit
  EXPECT_TRUE(qOK);
}

// ---- Origin and type ----------------------------------------------------------------------------

TEST_F(SearchTest, AnOriginAloneGivesEveryColumnFromColumn1WhateverTheStart) {
  Add(Numbered("OTHER", 2));
  const int32_t i = Add(Numbered("CASE", 3));
  const int32_t j = Add(Numbered("case", 2));
  store.SearchClear();
  Criterion(ATT_ORIGIN, "Case");
  bool qOK = false;
  store.SearchCreatePointers(qOK, 3, false);
  EXPECT_TRUE(qOK);
  Hits want = Columns(i, {1, 2, 3});
  for (auto h : Columns(j, {1, 2})) want.push_back(h);
  EXPECT_EQ(Table(), want);
}

TEST_F(SearchTest, TheTypeOfADataSetIsThatOfItsFirstColumn) {
  auto mixed = Numbered("CASE", 3);
  ASSERT_TRUE(mixed->SetColumnAttribute(1, ATT_TYPE, "RFT"));
  const int32_t iMixed = Add(mixed);
  const int32_t iPlain = Add(Numbered("CASE", 2));
  store.SearchClear();
  Criterion(ATT_TYPE, "summary");
  Criterion(ATT_VARIABLE, "V2");
  bool qOK = false;
  store.SearchCreatePointers(qOK);
  EXPECT_TRUE(qOK);
  // Column 2 of the mixed data set is of the type but its data set is not.
  EXPECT_EQ(Table(), Columns(iPlain, {2}));
  (void)iMixed;
}

TEST_F(SearchTest, SearchTypeFiltersAListInPlace) {
  auto rft = Numbered("CASE", 1);
  ASSERT_TRUE(rft->SetColumnAttribute(1, ATT_TYPE, "RFT"));
  Add(Numbered("A", 1));
  Add(rft);
  Add(Numbered("B", 1));
  store.SearchClear();
  Criterion(ATT_TYPE, "SUMMARY");
  Array<int32_t> iList{3, 2, 1};
  int32_t n = 3;
  bool qMatch = false, qOK = false;
  store.SearchType(iList, n, qMatch, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(qMatch);
  ASSERT_EQ(n, 2);
  ASSERT_EQ(iList.UBound(), 2);
  EXPECT_EQ(iList(1), 3);
  EXPECT_EQ(iList(2), 1);
  n = 5;  // disagrees with the list
  store.SearchType(iList, n, qMatch, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(SearchTest, AnOriginThatMatchesNothingLeavesThePreviousTable) {
  const int32_t i = Add(Numbered("CASE", 2));
  store.SearchClear();
  Criterion(ATT_VARIABLE, "V2");
  bool qOK = false;
  store.SearchCreatePointers(qOK);
  ASSERT_EQ(Table(), Columns(i, {2}));
  Criterion(ATT_ORIGIN, "NOSUCH");
  store.SearchCreatePointers(qOK);
  // The origin filter keeps no data set and leaves its list at full length;
  // the type filter then finds the list inconsistent and the run is refused.
  EXPECT_FALSE(qOK);
  EXPECT_EQ(Table(), Columns(i, {2}));
}

// ---- Walks ------------------------------------------------------------------------------------

TEST_F(SearchTest, FromColumn5ForwardTheVisitIs5To8Then1To4) {
  const int32_t i = Add(Numbered("CASE", 8));
  store.SearchClear();
  Criterion(ATT_CLASS, "WELLS");
  bool qOK = false;
  store.SearchCreatePointers(qOK, 5, true);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(i, {5, 6, 7, 8, 1, 2, 3, 4}));
}

TEST_F(SearchTest, FromColumn5BackwardTheVisitIs5To1Then8To6) {
  const int32_t i = Add(Numbered("CASE", 8));
  store.SearchClear();
  Criterion(ATT_CLASS, "WELLS");
  bool qOK = false;
  store.SearchCreatePointers(qOK, 5, false);
  EXPECT_EQ(Table(), Columns(i, {5, 4, 3, 2, 1, 8, 7, 6}));
}

TEST_F(SearchTest, ABackwardWalkFromTheLastColumnOrBeyondVisitsItOnce) {
  const int32_t i = Add(Numbered("CASE", 4));
  store.SearchClear();
  Criterion(ATT_CLASS, "WELLS");
  bool qOK = false;
  store.SearchCreatePointers(qOK, 4, false);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(i, {4, 3, 2, 1}));
  store.SearchCreatePointers(qOK, 9, false);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(i, {4, 3, 2, 1}));
  store.SearchCreatePointersEx(qOK, 4, false);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(i, {4, 3, 2, 1}));
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(SearchTest, AForwardWalkBeyondTheLastColumnStartsAgainAt1) {
  const int32_t i = Add(Numbered("CASE", 3));
  store.SearchClear();
  Criterion(ATT_CLASS, "WELLS");
  bool qOK = false;
  store.SearchCreatePointers(qOK, 7, true);
  EXPECT_EQ(Table(), Columns(i, {1, 2, 3}));
}

TEST_F(SearchTest, TheSameStartAppliesToEveryDataSet) {
  const int32_t a = Add(Numbered("A", 3));
  const int32_t b = Add(Numbered("B", 4));
  store.SearchClear();
  Criterion(ATT_MEMBER, "P1");
  bool qOK = false;
  store.SearchCreatePointers(qOK, 2, true);
  Hits want = Columns(a, {2, 3, 1});
  for (auto h : Columns(b, {2, 3, 4, 1})) want.push_back(h);
  EXPECT_EQ(Table(), want);
}

TEST_F(SearchTest, ExitAfterOneGivesTheFirstHitOfTheWalk) {
  Add(Numbered("A", 3));
  const int32_t b = Add(Numbered("B", 4));
  store.SearchClear();
  store.let_SearchExitAfter1(true);
  Criterion(ATT_ORIGIN, "B");
  Criterion(ATT_MEMBER, "P1");
  bool qOK = false;
  store.SearchCreatePointers(qOK, 3, true);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(b, {3}));
}

TEST_F(SearchTest, ExitAfterOneSetBeforeTheClearHasNoEffect) {
  const int32_t i = Add(Numbered("CASE", 3));
  store.let_SearchExitAfter1(true);
  store.SearchClear();
  Criterion(ATT_CLASS, "WELLS");
  bool qOK = false;
  store.SearchCreatePointers(qOK);
  EXPECT_EQ(Table(), Columns(i, {1, 2, 3}));
}

TEST_F(SearchTest, ExitAfterOneWithOriginOnlyGivesColumn1OfTheFirstDataSet) {
  const int32_t i = Add(Numbered("CASE", 3));
  Add(Numbered("CASE", 2));
  store.SearchClear();
  store.let_SearchExitAfter1(true);
  Criterion(ATT_ORIGIN, "CASE");
  bool qOK = false;
  store.SearchCreatePointers(qOK, 3, true);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(i, {1}));
}

TEST_F(SearchTest, TheRestrictionListIsVisitedInItsOrder) {
  Add(Numbered("A", 1));
  Add(Numbered("B", 1));
  Add(Numbered("C", 1));
  store.SearchClear();
  bool qOK = false;
  store.SearchDataSets(Array<int32_t>{3, 1}, qOK);
  EXPECT_TRUE(qOK);
  Criterion(ATT_VARIABLE, "V1");
  store.SearchCreatePointers(qOK);
  EXPECT_EQ(Table(), (Hits{{3, 1}, {1, 1}}));
}

TEST_F(SearchTest, ABadPositionInTheRestrictionListIsOneTraceLine) {
  Add(Numbered("A", 1));
  store.SearchClear();
  bool qOK = false;
  store.SearchDataSets(Array<int32_t>{1, 9}, qOK);
  Criterion(ATT_VARIABLE, "V1");
  MessageLog::Shared().Clear();
  store.SearchCreatePointers(qOK);
  EXPECT_FALSE(qOK);
  const auto& lines = MessageLog::Shared().Lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0],
            "Error: Subscript out of range (No. 9) In [mxDataStore (Code) (SearchCreatePointers)] ");
}

TEST_F(SearchTest, PlainCreateComparesValuesAsAddedAndExUpperCasesThem) {
  const int32_t i = Add(Numbered("CASE", 2));
  store.SearchClear();
  Criterion(ATT_VARIABLE, "v2");
  bool qOK = false;
  store.SearchCreatePointers(qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(Table().empty());
  store.SearchCreatePointersEx(qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(i, {2}));
}

TEST_F(SearchTest, ExVisitsTheDataSetsFromASetStartAndRound) {
  Add(Numbered("A", 2));
  Add(Numbered("B", 2));
  Add(Numbered("C", 2));
  store.SearchClear();
  Criterion(ATT_VARIABLE, "V2");
  bool qOK = false;
  store.SearchCreatePointersEx(qOK, 1, true, 2, true);
  EXPECT_EQ(Table(), (Hits{{2, 2}, {3, 2}, {1, 2}}));
  store.SearchCreatePointersEx(qOK, 1, true, 2, false);
  EXPECT_EQ(Table(), (Hits{{2, 2}, {1, 2}, {3, 2}}));
  store.SearchCreatePointersEx(qOK, 1, true, 3, false);
  EXPECT_EQ(Table(), (Hits{{3, 2}, {2, 2}, {1, 2}}));
}

TEST_F(SearchTest, MultiSetSearchGivesAtMostOneHitADataSet) {
  Add(Numbered("A", 3));
  Add(Numbered("B", 2));
  store.SearchClear();
  store.let_SearchExitAfter1(true);
  store.let_MultiSetSearch(true);
  Criterion(ATT_MEMBER, "P1");
  bool qOK = false;
  store.SearchCreatePointersEx(qOK, 2, true);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), (Hits{{1, 2}, {2, 2}}));
  // The plain create does not honour it.
  store.SearchCreatePointers(qOK, 2, true);
  EXPECT_EQ(Table(), (Hits{{1, 2}}));
  // It outlives a clear.
  store.SearchClear();
  store.let_SearchExitAfter1(true);
  Criterion(ATT_MEMBER, "P1");
  store.SearchCreatePointersEx(qOK);
  EXPECT_EQ(Table(), (Hits{{1, 1}, {2, 1}}));
  // Without it the run stops at the first hit.
  store.let_MultiSetSearch(false);
  store.SearchCreatePointersEx(qOK);
  EXPECT_EQ(Table(), (Hits{{1, 1}}));
}

// ---- Data set criteria and reading the table ---------------------------------------------------

TEST_F(SearchTest, DataSetHitsHaveColumn0AndPointersDSAreSortedAndDistinct) {
  auto a = Numbered("A", 1);
  a->let_SourceType("ECL");
  auto b = Numbered("B", 1);
  b->let_SourceType("VIP");
  auto c = Numbered("C", 1);
  c->let_SourceType("ecl");
  Add(a);
  Add(b);
  Add(c);
  store.SearchClear();
  bool qOK = false;
  store.SearchDataSetAddAttribute(3, "Ecl", qOK);
  store.SearchDataSetCreatePointers(qOK, 2, false);
  EXPECT_TRUE(qOK);
  // Always forward: from place 2 to the end, then round.
  EXPECT_EQ(Table(), (Hits{{3, 0}, {1, 0}}));
  Array<int32_t> iDataSets;
  int32_t n = 0;
  store.SearchPointersDS(iDataSets, n, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(n, 2);
  ASSERT_EQ(iDataSets.UBound(), 2);
  EXPECT_EQ(iDataSets(1), 1);
  EXPECT_EQ(iDataSets(2), 3);
}

TEST_F(SearchTest, PointersDSOfColumnHitsAreDistinctDataSets) {
  Add(Numbered("A", 3));
  Add(Numbered("B", 2));
  store.SearchClear();
  Criterion(ATT_CLASS, "WELLS");
  bool qOK = false;
  store.SearchDataSets(Array<int32_t>{2, 1}, qOK);
  store.SearchCreatePointers(qOK);
  Array<int32_t> iDataSets;
  int32_t n = 0;
  store.SearchPointersDS(iDataSets, n, qOK);
  ASSERT_EQ(n, 2);
  EXPECT_EQ(iDataSets(1), 1);
  EXPECT_EQ(iDataSets(2), 2);
}

TEST_F(SearchTest, PointersAfterAnEmptyResultLeaveTheCallersArray) {
  Add(Numbered("A", 3));
  store.SearchClear();
  Criterion(ATT_VARIABLE, "NOSUCH");
  bool qOK = false;
  store.SearchCreatePointers(qOK);
  EXPECT_TRUE(qOK);
  Array2<int32_t> iResults(1, 2, 1, 1);
  iResults(1, 1) = 77;
  int32_t n = -1;
  qOK = false;
  store.SearchPointers(iResults, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(iResults(1, 1), 77);
  Array<int32_t> iDataSets{5};
  store.SearchPointersDS(iDataSets, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(iDataSets(1), 5);
}

// ---- One-shot searches ------------------------------------------------------------------------

TEST_F(SearchTest, SearchWithNothingGivenMissesWithQokTrue) {
  Add(Numbered("A", 3));
  int32_t iDataSet = 0, iColumn = 0;
  bool qOK = false;
  store.Search(iDataSet, iColumn, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(iDataSet, -1);
  EXPECT_EQ(iColumn, -1);
  store.Search(iDataSet, iColumn, qOK, "  ", " ");
  EXPECT_TRUE(qOK);
  EXPECT_EQ(iDataSet, -1);
}

TEST_F(SearchTest, SearchFindsTheFirstColumnAndLeavesItsCriteriaInTheState) {
  Add(Numbered("A", 3));
  const int32_t b = Add(Numbered("B", 3));
  int32_t iDataSet = 0, iColumn = 0;
  bool qOK = false;
  store.Search(iDataSet, iColumn, qOK, "b", "V2", "", "WELLS");
  EXPECT_TRUE(qOK);
  EXPECT_EQ(iDataSet, b);
  EXPECT_EQ(iColumn, 2);
  // The hits and the criteria stay: a later create finds them again.
  EXPECT_EQ(Table(), Columns(b, {2}));
  store.SearchCreatePointers(qOK, 3, true);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Table(), Columns(b, {2}));
  store.Search(iDataSet, iColumn, qOK, "", "NOSUCH");
  EXPECT_TRUE(qOK);
  EXPECT_EQ(iDataSet, -1);
  EXPECT_EQ(iColumn, -1);
}

TEST_F(SearchTest, SearchaDataSetWithNoStringsGivesTheColumnsOfTheRange) {
  const int32_t i = Add(Numbered("A", 6));
  Array<int32_t> iResults;
  int32_t n = 0;
  bool qOK = false;
  store.SearchaDataSet(i, iResults, n, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(n, 6);
  EXPECT_EQ(iResults.UBound(), 6);
  int32_t iEnd = 2;
  store.SearchaDataSet(i, iResults, n, qOK, "", "", "", "", "", "", false, 5, iEnd);
  ASSERT_EQ(n, 4);
  EXPECT_EQ(iResults(1), 5);
  EXPECT_EQ(iResults(4), 2);
  iEnd = 4;
  store.SearchaDataSet(i, iResults, n, qOK, "", "", "", "", "", "", false, 3, iEnd);
  ASSERT_EQ(n, 2);
  EXPECT_EQ(iResults(1), 3);
  EXPECT_EQ(iResults(2), 4);
}

TEST_F(SearchTest, SearchaDataSetComparesUpperCasedTexts) {
  const int32_t i = Add(Numbered("A", 4));
  Array<int32_t> iResults;
  int32_t n = 0;
  bool qOK = false;
  store.SearchaDataSet(i, iResults, n, qOK, " v3 ", "wells", "p1");
  EXPECT_TRUE(qOK);
  ASSERT_EQ(n, 1);
  EXPECT_EQ(iResults(1), 3);
  EXPECT_EQ(iResults.UBound(), 1);
  store.SearchaDataSet(i, iResults, n, qOK, "", "WELLS", "", "", "", "", true);
  ASSERT_EQ(n, 1);
  EXPECT_EQ(iResults(1), 1);
}

TEST_F(SearchTest, AnIndexAloneFitsOnlyColumnsWithoutAVariable) {
  const int32_t i = Add(Numbered("A", 3));
  Array<int32_t> iResults;
  int32_t n = -1;
  bool qOK = false;
  store.SearchaDataSet(i, iResults, n, qOK, "", "", "", "7");
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  // A column without a variable fits whatever the index text.
  std::shared_ptr<mxDataSet> ds;
  store.GetDataSet(i, ds);
  ASSERT_TRUE(ds->SetColumnAttribute(2, ATT_VARIABLE, ""));
  store.SearchaDataSet(i, iResults, n, qOK, "", "", "", "7");
  ASSERT_EQ(n, 1);
  EXPECT_EQ(iResults(1), 2);
  // With a variable as well nothing can fit.
  store.SearchaDataSet(i, iResults, n, qOK, "V1", "", "", "7");
  EXPECT_EQ(n, 0);
}

TEST_F(SearchTest, ABackwardRangeEndingAtZeroRewritesTheCallersEnd) {
  const int32_t i = Add(Numbered("A", 4));
  Array<int32_t> iResults;
  int32_t n = 0;
  bool qOK = false;
  int32_t iEnd = 0;
  store.SearchaDataSet(i, iResults, n, qOK, "", "", "", "", "", "", false, 3, iEnd);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(iEnd, 1);
  ASSERT_EQ(n, 3);
  EXPECT_EQ(iResults(1), 3);
  EXPECT_EQ(iResults(3), 1);
}

TEST_F(SearchTest, ARangeOutsideTheDataSetReportsFalse) {
  const int32_t i = Add(Numbered("A", 4));
  Array<int32_t> iResults;
  int32_t n = 0;
  bool qOK = true;
  store.SearchaDataSet(i, iResults, n, qOK, "", "", "", "", "", "", false, 9);
  EXPECT_FALSE(qOK);
  int32_t iEnd = 9;
  store.SearchaDataSet(i, iResults, n, qOK, "", "", "", "", "", "", false, 10, iEnd);
  EXPECT_FALSE(qOK);
  store.SearchaDataSet(0, iResults, n, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(SearchTest, DataSetVariablesByVariableAndClass) {
  const int32_t i = Add(Numbered("A", 4));
  Array<int32_t> iResults;
  bool qOK = false;
  store.SearchForDataSetVariables(i, "v2", "", iResults, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(iResults.UBound(), 1);
  EXPECT_EQ(iResults(1), 2);
  store.SearchForDataSetVariables(i, "", "wells", iResults, qOK, false, 2, 3);
  ASSERT_EQ(iResults.UBound(), 2);
  EXPECT_EQ(iResults(1), 2);
  EXPECT_EQ(iResults(2), 3);
  qOK = true;
  store.SearchForDataSetVariables(i, "", "", iResults, qOK);
  EXPECT_FALSE(qOK);
  store.SearchForDataSetVariables(i, "NOSUCH", "", iResults, qOK);
  EXPECT_TRUE(qOK);
}

TEST_F(SearchTest, DataSetVariablePointersAddressTheFirstValues) {
  const int32_t i = Add(Numbered("A", 3));
  std::shared_ptr<mxDataSet> ds;
  store.GetDataSet(i, ds);
  Array<std::intptr_t> iPointers;
  bool qOK = false;
  store.SearchForDataSetVariablePointers(i, "", "WELLS", iPointers, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(iPointers.UBound(), 3);
  EXPECT_EQ(iPointers(2), ds->ValuesPtr(2));
  EXPECT_NE(iPointers(2), 0);
  EXPECT_EQ(*reinterpret_cast<const float*>(iPointers(3)), 1.f);
}

}  // namespace
}  // namespace vndata
