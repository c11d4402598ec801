#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"

using namespace vndata;
using namespace vndata::testutil;

namespace {

// A data set of n columns of 2 rows, attributes set by SetAttributes.
void WithColumns(mxDataSet& ds, const std::vector<Attrs>& cols) {
  ds.Dimension(static_cast<int32_t>(cols.size()), 2);
  for (std::size_t c = 0; c < cols.size(); ++c) {
    bool qOK = false;
    ds.SetAttributes(static_cast<int32_t>(c + 1), Row(cols[c]), qOK);
    ASSERT_TRUE(qOK);
  }
}

Attrs Well(const std::string& zMember, const std::string& zVariable,
           const std::string& zClass = "WELLS") {
  return {{ATT_CLASS, zClass}, {ATT_MEMBER, zMember}, {ATT_VARIABLE, zVariable}};
}

}  // namespace

// ---- The data set's own description ------------------------------------------------------

TEST(DataSetQueries, DataSetAttributeAnswersByTheDescriptionNumbering) {
  mxDataSet ds;
  ds.let_Origin("CASE1");
  ds.let_FileName("case1.smspec");
  ds.let_DateStamp("5 January 2024");
  ds.let_Index(7);
  ds.let_NoRestart(true);
  ds.let_TimeInDays(1.5f);
  ds.let_LGRName("LGR1");
  WithColumns(ds, {Well("P1", "WOPR"), Well("P2", "WOPR")});
  EXPECT_EQ(ds.GetDataSetAttribute(1), "CASE1");
  EXPECT_EQ(ds.GetDataSetAttribute(2), "case1.smspec");
  EXPECT_EQ(ds.GetDataSetAttribute(4), "05/01/2024");
  EXPECT_EQ(ds.get_DateStamp(), "5 January 2024");
  EXPECT_EQ(ds.GetDataSetAttribute(8), "7");
  EXPECT_EQ(ds.GetDataSetAttribute(11), "True");
  EXPECT_EQ(ds.GetDataSetAttribute(13), "True");
  EXPECT_EQ(ds.GetDataSetAttribute(16), "2");
  EXPECT_EQ(ds.GetDataSetAttribute(25), "2");
  EXPECT_EQ(ds.GetDataSetAttribute(29), "LGR1");
  EXPECT_EQ(ds.GetDataSetAttribute(40), "1.5");
  EXPECT_EQ(ds.GetDataSetAttribute(5), "Unknown");
  EXPECT_EQ(ds.GetDataSetAttribute(28), "Unknown");
  EXPECT_EQ(ds.GetDataSetAttribute(58), "Unknown");
  EXPECT_EQ(ds.GetDataSetAttribute(0), "Unknown");
}

TEST(DataSetQueries, DataSetAttribute14IsTheTableNameOrTheCmgSimulator) {
  mxDataSet ds;
  ds.let_TableName("PVTO");
  ds.let_Simulator("IMEX");
  EXPECT_EQ(ds.GetDataSetAttribute(14), "Unknown");
  ds.let_SourceType("CMG");
  EXPECT_EQ(ds.GetDataSetAttribute(14), "IMEX");
  ds.let_DataClass("TABLE");
  EXPECT_EQ(ds.GetDataSetAttribute(14), "PVTO");
  ds.let_DataClass("Tables");
  EXPECT_EQ(ds.GetDataSetAttribute(14), "PVTO");
}

TEST(DataSetQueries, RootIsBothSpellingsOfTheRootGridWhateverTheCase) {
  mxDataSet ds;
  EXPECT_TRUE(ds.CompareDataSetAttribute(29, "ROOT", true));
  EXPECT_TRUE(ds.CompareDataSetAttribute(29, "root", true));
  EXPECT_TRUE(ds.CompareDataSetAttribute(29, "", true));
  EXPECT_FALSE(ds.CompareDataSetAttribute(29, "LGR1", false));
  ds.let_LGRName("Root");
  EXPECT_TRUE(ds.CompareDataSetAttribute(29, "", true));
  ds.let_LGRName("LGR1");
  EXPECT_FALSE(ds.CompareDataSetAttribute(29, "ROOT", false));
  EXPECT_FALSE(ds.CompareDataSetAttribute(29, "", false));
  EXPECT_TRUE(ds.CompareDataSetAttribute(29, "lgr1", false));
  EXPECT_FALSE(ds.CompareDataSetAttribute(29, "lgr1", true));
}

TEST(DataSetQueries, TheRootRuleBelongsToTheGridNameOnly) {
  mxDataSet ds;  // empty Origin
  EXPECT_FALSE(ds.CompareDataSetAttribute(1, "ROOT", false));
  EXPECT_TRUE(ds.CompareDataSetAttribute(1, "", false));
}

// ---- Columns by name and key -------------------------------------------------------------

TEST(DataSetQueries, IndexFromVariableGivesZeroAndHeaderColumnMinusOneOnAMiss) {
  mxDataSet ds;
  WithColumns(ds, {Well("P1", "WOPR"), Well("P1", "WWCT")});
  EXPECT_EQ(ds.IndexFromVARIABLE("NOSUCH"), 0);
  EXPECT_EQ(ds.IndexFromVARIABLE(""), 0);
  EXPECT_EQ(ds.IndexFromHEADERCOLUMN("NOSUCH"), -1);
  EXPECT_EQ(ds.IndexFromHEADERCOLUMN(""), -1);
  EXPECT_EQ(ds.IndexFromVARIABLE("wwct"), 2);
  EXPECT_EQ(ds.IndexFromHEADERCOLUMN("WWCT"), 2);
  EXPECT_EQ(ds.IndexFromHEADERCOLUMN("wells\\p1\\wwct"), 2);
  EXPECT_EQ(ds.IndexFromHEADERCOLUMN("WELLS\\P2\\WWCT"), -1);
}

TEST(DataSetQueries, IndexFromTVKeyComparesTheStoredPathWithCase) {
  mxDataSet ds;
  WithColumns(ds, {Well("P1", "WOPR"), Well("P2", "WOPR")});
  // No path length stored yet: no column is considered.
  EXPECT_EQ(ds.IndexFromTVKEY("WELLS\\P2\\WOPR"), -1);
  std::string zPath;
  ASSERT_TRUE(ds.MakeTreeViewPath(1, zPath));
  ASSERT_TRUE(ds.MakeTreeViewPath(2, zPath));
  EXPECT_EQ(ds.IndexFromTVKEY("WELLS\\P2\\WOPR"), 2);
  EXPECT_EQ(ds.IndexFromTVKEY("wells\\p2\\wopr"), -1);
  EXPECT_EQ(ds.IndexFromTVKEY("WELLS\\P3\\WOPR"), -1);
}

TEST(DataSetQueries, IndexFromTVInfoJoinsTheDataSetKeyAndUppercasesTheCallersKey) {
  mxDataSet ds;
  ds.let_DataRootPath("Root");
  ds.let_UniqueKey("Case1");
  WithColumns(ds, {Well("P1", "WOPR"), Well("p2", "WOPR")});
  std::string zKey = "root\\case1\\Wells\\P2\\wopr";
  EXPECT_EQ(ds.IndexFromTVInfo(zKey), 2);
  EXPECT_EQ(zKey, "ROOT\\CASE1\\WELLS\\P2\\WOPR");
  std::string zOther = "ROOT\\CASE2\\WELLS\\P2\\WOPR";
  EXPECT_EQ(ds.IndexFromTVInfo(zOther), -1);
}

// ---- Distinct texts ------------------------------------------------------------------------

TEST(DataSetQueries, TabStripHeadersOf11TextsComeInAnArrayOf20) {
  mxDataSet ds;
  std::vector<Attrs> cols;
  for (int32_t k = 1; k <= 11; ++k) cols.push_back(Well("P" + std::to_string(k), "WOPR"));
  cols.push_back(Well("p3", "WOPR"));  // the same member in other case
  cols.push_back(Well("", "WOPR"));    // no member
  WithColumns(ds, cols);
  Array<std::string> zHeaders;
  int32_t nHeaders = -1;
  bool qOK = false;
  ds.GetUniqueTabStripHeaders(ATT_MEMBER, zHeaders, nHeaders, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nHeaders, 11);
  ASSERT_EQ(zHeaders.UBound(), 20);
  EXPECT_EQ(zHeaders(1), "P1");
  EXPECT_EQ(zHeaders(3), "P3");
  EXPECT_EQ(zHeaders(11), "P11");
  for (int32_t k = 12; k <= 20; ++k) EXPECT_EQ(zHeaders(k), "");
}

TEST(DataSetQueries, StoredItemsRefuseId14WhileTabStripHeadersAcceptIt) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_VARIABLE, "PORO"}, {GRID, "LGR1"}}, {{ATT_VARIABLE, "PERMX"}, {GRID, "LGR2"}}});
  Array<std::string> zItems{"kept"};
  int32_t nItems = 42;
  bool qOK = true;
  ds.GetStoredItems(GRID, zItems, nItems, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(nItems, 42);
  ASSERT_EQ(zItems.UBound(), 1);
  EXPECT_EQ(zItems(1), "kept");

  Array<std::string> zHeaders;
  int32_t nHeaders = 0;
  ds.GetUniqueTabStripHeaders(GRID, zHeaders, nHeaders, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nHeaders, 2);
  EXPECT_EQ(zHeaders(1), "LGR1");
  EXPECT_EQ(zHeaders(2), "LGR2");
}

TEST(DataSetQueries, StoredItemsAndUniqueVectorsListThePools) {
  mxDataSet ds;
  WithColumns(ds, {Well("P1", "WOPR"), Well("P2", "WOPR"), Well("P2", "WWCT")});
  Array<std::string> zItems;
  int32_t nItems = 0;
  bool qOK = false;
  ds.GetStoredItems(ATT_MEMBER, zItems, nItems, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(nItems, 2);
  EXPECT_EQ(zItems(1), "P1");
  EXPECT_EQ(zItems(2), "P2");
  ds.GetUniqueVectors(zItems, nItems, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(nItems, 2);
  EXPECT_EQ(zItems(1), "WOPR");
  EXPECT_EQ(zItems(2), "WWCT");
  ds.GetStoredItems(0, zItems, nItems, qOK);
  EXPECT_FALSE(qOK);
}

TEST(DataSetQueries, MembersOfAClassInOrderOfFirstSightWithTheFirstSpelling) {
  mxDataSet ds;
  WithColumns(ds, {Well("P2", "WOPR"), Well("P1", "WOPR"), Well("p2", "WWCT"), Well("G1", "GOPR", "GROUPS"),
                   Well("", "WOPR"), Well("P3", "WOPR"), Well("P1", "WWCT")});
  Array<std::string> zMembers;
  int32_t nMembers = 0;
  bool qOK = false;
  ds.GetUniqueMembersOfClass("wells", zMembers, nMembers, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(nMembers, 3);
  ASSERT_EQ(zMembers.UBound(), 3);
  EXPECT_EQ(zMembers(1), "P2");
  EXPECT_EQ(zMembers(2), "P1");
  EXPECT_EQ(zMembers(3), "P3");
}

TEST(DataSetQueries, ASecondCallInOtherCaseComesFromTheCache) {
  mxDataSet ds;
  const std::string zLong(45, 'L');  // beyond the 40 bytes the cache keeps
  WithColumns(ds, {Well("P1", "WOPR"), Well(zLong, "WOPR")});
  Array<std::string> zMembers;
  int32_t nMembers = 0;
  bool qOK = false;
  ds.GetUniqueMembersOfClass("WELLS", zMembers, nMembers, qOK);
  ASSERT_EQ(nMembers, 2);
  EXPECT_EQ(zMembers(2), zLong);
  ds.GetUniqueMembersOfClass("Wells", zMembers, nMembers, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(nMembers, 2);
  EXPECT_EQ(zMembers(1), "P1");
  EXPECT_EQ(zMembers(2), std::string(40, 'L'));
}

TEST(DataSetQueries, AClassWithNoMembersKeeps1000EmptyEntriesAndIsNotCached) {
  mxDataSet ds;
  const std::string zLong(45, 'L');
  WithColumns(ds, {Well(zLong, "WOPR"), Well("", "GOPR", "GROUPS")});
  Array<std::string> zMembers;
  int32_t nMembers = 0;
  bool qOK = false;
  ds.GetUniqueMembersOfClass("WELLS", zMembers, nMembers, qOK);  // cached
  ds.GetUniqueMembersOfClass("GROUPS", zMembers, nMembers, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nMembers, 0);
  EXPECT_EQ(zMembers.UBound(), 1000);
  EXPECT_EQ(zMembers(1000), "");
  // Nothing is cached any more: the long name comes back whole.
  ds.GetUniqueMembersOfClass("WELLS", zMembers, nMembers, qOK);
  ASSERT_EQ(nMembers, 1);
  EXPECT_EQ(zMembers(1), zLong);
  ds.GetUniqueMembersOfClass("NOSUCH", zMembers, nMembers, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nMembers, 0);
  EXPECT_EQ(zMembers.UBound(), 1000);
}

TEST(DataSetQueries, MoreThan1000MembersAllComeBack) {
  mxDataSet ds;
  std::vector<Attrs> cols;
  for (int32_t k = 1; k <= 1015; ++k) cols.push_back(Well("W" + std::to_string(k), "WOPR"));
  WithColumns(ds, cols);
  Array<std::string> zMembers;
  int32_t nMembers = 0;
  bool qOK = false;
  ds.GetUniqueMembersOfClass("WELLS", zMembers, nMembers, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(nMembers, 1015);
  EXPECT_EQ(zMembers.UBound(), 1015);
  EXPECT_EQ(zMembers(1001), "W1001");
  EXPECT_EQ(zMembers(1015), "W1015");
}

TEST(DataSetQueries, ChangedAttributesClearTheMembersCache) {
  mxDataSet ds;
  WithColumns(ds, {Well("P1", "WOPR"), Well("P2", "WOPR")});
  Array<std::string> zMembers;
  int32_t nMembers = 0;
  bool qOK = false;
  ds.GetUniqueMembersOfClass("WELLS", zMembers, nMembers, qOK);
  ASSERT_EQ(nMembers, 2);
  ASSERT_TRUE(ds.SetColumnAttribute(2, ATT_MEMBER, "P9"));
  ds.GetUniqueMembersOfClass("WELLS", zMembers, nMembers, qOK);
  ASSERT_EQ(nMembers, 2);
  EXPECT_EQ(zMembers(2), "P9");
}

// ---- Columns by packed record ------------------------------------------------------------------

TEST(DataSetQueries, ExistingColumnsByPackedRecordIgnoringCase) {
  mxDataSet ds;
  Build(ds, 2, 3);  // variables V1, V2, V3
  Array2<uint8_t> bIn = Headers({{{ATT_ORIGIN, "orig"}, {ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "v3"}},
                                 {{ATT_ORIGIN, "ORIG"}, {ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "V9"}},
                                 {{ATT_ORIGIN, "ORIG"}, {ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "V1"}}});
  // The last byte of a record is the data set's own.
  Array<uint8_t> bOwn;
  ASSERT_TRUE(ds.bGetAttributes(1, bOwn));
  for (int32_t k = 1; k <= 3; ++k) bIn(kPackedRecordSize, k) = bOwn(kPackedRecordSize);
  Array<int32_t> iCols;
  int32_t nFound = -1;
  bool qOK = false;
  ds.ReturnListOfExistingCols(bIn, 3, iCols, nFound, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nFound, 2);
  ASSERT_EQ(iCols.UBound(), 3);
  EXPECT_EQ(iCols(1), 3);
  EXPECT_EQ(iCols(2), 0);
  EXPECT_EQ(iCols(3), 1);
}

TEST(DataSetQueries, ARecordMatchingSeveralColumnsKeepsTheLastAndCountsEach) {
  mxDataSet ds;
  Array2<uint8_t> bHeaders = Headers({{{ATT_VARIABLE, "A"}}, {{ATT_VARIABLE, "B"}}, {{ATT_VARIABLE, "A"}}});
  Array2<float> values = Numbered(2, 3);
  bool qOK = false;
  ds.bInitialiseFrom2d(values, bHeaders, qOK);
  ASSERT_TRUE(qOK);
  Array<uint8_t> bOwn;
  ASSERT_TRUE(ds.bGetAttributes(1, bOwn));
  Array2<uint8_t> bIn(1, kPackedRecordSize, 1, 1);
  for (int32_t i = 1; i <= kPackedRecordSize; ++i) bIn(i, 1) = bOwn(i);
  Array<int32_t> iCols;
  int32_t nFound = 0;
  ds.ReturnListOfExistingCols(bIn, 1, iCols, nFound, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nFound, 2);
  EXPECT_EQ(iCols(1), 3);
}

TEST(DataSetQueries, AFaultInAQueryWritesOneTraceLineUnderItsName) {
  mxDataSet ds;
  Build(ds, 2, 2);
  LogCapture log;
  Array2<uint8_t> bIn(1, kPackedRecordSize, 1, 1);
  Array<int32_t> iCols;
  int32_t nFound = 0;
  bool qOK = true;
  ds.ReturnListOfExistingCols(bIn, 2, iCols, nFound, qOK);  // one record given, two announced
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDataSet  (ReturnListOfExistingCols)] ");
}
