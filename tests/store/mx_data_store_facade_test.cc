// The store's per-data-set family on valid positions: values pass through,
// the reads by reference, and the rows that do more than forward.
#include <gtest/gtest.h>

#include "tests/dataset/dataset_test_util.h"
#include "tests/store/store_fixtures.h"
#include "vndata/foundation/packed_headers.h"

namespace vndata {
namespace {

class FacadeTest : public StoreTest {
 protected:
  // One data set at position 1 with two columns (WOPR 1,2,3 and WWCT 11,12,13).
  void SetUp() override {
    StoreTest::SetUp();
    ds = std::make_shared<mxDataSet>();
    ds->let_Origin("CASE");
    ds->let_GroupName("Summary");
    ds->let_UniqueKey("CASE");
    ds->let_DataRootPath("root");
    Array2<float> values = testutil::Block(3, 2, [](int32_t i, int32_t j) {
      return static_cast<float>(10 * (j - 1) + i);
    });
    std::vector<testutil::Attrs> cols;
    for (const char* v : {"WOPR", "WWCT"})
      cols.push_back({{ATT_ORIGIN, "CASE"}, {ATT_TYPE, "Summary"}, {ATT_CLASS, "WELLS"},
                      {ATT_MEMBER, "P1"}, {ATT_VARIABLE, v}});
    bool qOK = false;
    ds->bInitialiseFrom2d(values, testutil::Headers(cols), qOK);
    ASSERT_TRUE(qOK);
    store.AddItem(ds);
    ASSERT_EQ(store.get_NumberOfDataSets(), 1);
  }
  std::shared_ptr<mxDataSet> ds;
};

TEST_F(FacadeTest, GetValuesAtPositionZeroIsFalseAndLeavesTheOutput) {
  Array<float> out{7.f, 8.f, 9.f, 10.f};
  EXPECT_FALSE(store.DSGetValues(0, 1, out));
  ASSERT_EQ(out.UBound(), 4);
  EXPECT_EQ(out(1), 7.f);
  EXPECT_EQ(out(4), 10.f);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(FacadeTest, GetValuesOnAValidPositionGivesTheColumn) {
  Array<float> out;
  EXPECT_TRUE(store.DSGetValues(1, 2, out));
  ASSERT_EQ(out.UBound(), 3);
  EXPECT_EQ(out(1), 11.f);
  EXPECT_EQ(out(3), 13.f);
  float d = 0.f;
  EXPECT_TRUE(store.DSGetValue(1, 2, 1, d));
  EXPECT_EQ(d, 2.f);
  EXPECT_FALSE(store.DSGetValue(1, 9, 1, d));
}

TEST_F(FacadeTest, GetDataSetAttributeAnswersOnlyItsFiveIds) {
  ds->let_SourceType("READER");
  ds->let_DateStamp("01/02/2003");
  ds->let_Index(12);
  EXPECT_EQ(store.GetDataSetAttribute(1, 1), "CASE");
  EXPECT_EQ(store.GetDataSetAttribute(1, 2), "");
  EXPECT_EQ(store.GetDataSetAttribute(1, 3), "READER");
  EXPECT_EQ(store.GetDataSetAttribute(1, 4), "01/02/2003");
  EXPECT_EQ(store.GetDataSetAttribute(1, 10), "12");
  EXPECT_EQ(store.GetDataSetAttribute(1, 14), "Summary");
  for (int32_t id : {0, 5, 6, 9, 11, 13, 15, 57})
    EXPECT_EQ(store.GetDataSetAttribute(1, id), "") << id;
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(FacadeTest, ReadsByReferenceGiveTheValueAndReportThePosition) {
  ds->let_TVGroupName("tv");
  ds->let_DataClass("SUMMARY");
  ds->let_TableName("VFP1");
  ds->let_Units(2);
  ds->let_FileType(40);
  ds->let_Index(4);
  std::string z;
  int32_t i = 0;
  EXPECT_TRUE(store.DSOrigin(1, z));
  EXPECT_EQ(z, "CASE");
  EXPECT_TRUE(store.DSGroupName(1, z));
  EXPECT_EQ(z, "Summary");
  EXPECT_TRUE(store.DSTVGroupName(1, z));
  EXPECT_EQ(z, "tv");
  EXPECT_TRUE(store.DSDataClass(1, z));
  EXPECT_EQ(z, "SUMMARY");
  EXPECT_TRUE(store.DSTableName(1, z));
  EXPECT_EQ(z, "VFP1");
  EXPECT_TRUE(store.DSUnits(1, i));
  EXPECT_EQ(i, 2);
  EXPECT_TRUE(store.DSFileType(1, i));
  EXPECT_EQ(i, 40);
  EXPECT_TRUE(store.DSDataIndex(1, i));
  EXPECT_EQ(i, 4);
  EXPECT_EQ(store.get_GetDataClass(1), "SUMMARY");
  EXPECT_EQ(store.GetDataRootPath(1), "root");
}

TEST_F(FacadeTest, TreeViewPathByReferenceIsTheKeyUnderTheUniqueRoot) {
  ds->let_DataRootUnique("ROOT\\CASE");
  std::string z;
  ASSERT_TRUE(store.DSMakeTreeViewPath(1, 1, z));
  EXPECT_EQ(z, "WELLS\\P1\\WOPR");
  EXPECT_TRUE(store.DSTreeViewPath(1, 1, z));
  EXPECT_EQ(z, "ROOT\\CASE\\WELLS\\P1\\WOPR");
  EXPECT_EQ(store.DSGetTreeViewPath(1, 2), "WELLS\\P1\\WWCT");
}

TEST_F(FacadeTest, WritesReachTheDataSet) {
  EXPECT_TRUE(store.DSSetDateStamp(1, "03/04/2005"));
  EXPECT_EQ(ds->get_DateStamp(), "03/04/2005");
  EXPECT_TRUE(store.SetDataSetDate(1, "04/05/2006"));
  EXPECT_EQ(store.GetDataSetDate(1), "04/05/2006");
  EXPECT_TRUE(store.DSSetNullValue(1, -1.5));
  EXPECT_EQ(store.DSGetNullValue(1), -1.5);
  EXPECT_EQ(store.get_DSNullValue(1), -1.5);
  EXPECT_TRUE(store.DSSetAccInterval(1, "MONTH"));
  EXPECT_EQ(store.DSGetAccInterval(1), "MONTH");
  EXPECT_TRUE(store.DSSetAccSimDate(1, Date(40000.5)));
  EXPECT_EQ(store.DSGetAccSimDate(1), Date(40000.5));
  EXPECT_TRUE(store.DSSetReadPosition(1, 77));
  EXPECT_EQ(store.DSGetReadPosition(1), 77);
  EXPECT_TRUE(store.DSSetZOnly(1, "WOPR"));
  EXPECT_EQ(store.DSGetzOnly(1), "WOPR");
  store.let_Index(1, 9);
  EXPECT_EQ(store.get_Index(1), 9);
  store.let_DSDeleteAfterFetch(1, true);
  EXPECT_TRUE(ds->get_DeleteAfterFetch());
  store.let_IsDirty(1, true);
  EXPECT_TRUE(store.DSGetIsDirty(1));
  EXPECT_TRUE(store.DSSetIsDirty(1, false));
  EXPECT_FALSE(store.get_IsDirty(1));
}

TEST_F(FacadeTest, IndexedPropertiesReadTheDataSet) {
  EXPECT_EQ(store.get_Origin(1), "CASE");
  EXPECT_EQ(store.get_UCaseOrigin(1), "CASE");
  EXPECT_EQ(store.get_NumCols(1), 2);
  EXPECT_EQ(store.get_NumRows(1), 3);
  EXPECT_EQ(store.get_MaxRows(1), 3);
  EXPECT_TRUE(store.get_Initialised(1));
  EXPECT_EQ(store.get_FileType(1), 3);
  EXPECT_EQ(store.get_DSIPHASE(1), 0);
  EXPECT_FALSE(store.get_DSHysteresis(1));
  EXPECT_EQ(store.get_UniqueKey(1), "CASE");
  EXPECT_NE(store.get_ValuesPtr(1, 1), 0);
  EXPECT_EQ(*reinterpret_cast<const float*>(store.get_ValuesRowPtr(1, 2, 3)), 13.f);
}

TEST_F(FacadeTest, TheSpareSlotIsValidAndAnswersForItsEmptyDataSet) {
  EXPECT_TRUE(store.ValidDataSet(2));
  EXPECT_EQ(store.get_GroupName(2), "Data");
  EXPECT_EQ(store.get_NumCols(2), 0);
  std::string z = "kept";
  EXPECT_TRUE(store.DSOrigin(2, z));
  EXPECT_EQ(z, "");
}

TEST_F(FacadeTest, UpdateTreeViewPathKeepsTheLengthsOfTheAbsolutePath) {
  // "root" \ "Summary" \ "WELLS\P1\WOPR": 4 + 1 + 7 + 1 + 13 characters.
  EXPECT_TRUE(store.DSUpdateTreeViewPath(1, 1));
  EXPECT_EQ(ds->LenTreeViewPath(1), 26);
  // Up to the last separator, which stands before "WOPR".
  EXPECT_EQ(ds->LenTreeViewLastLevel(1), 21);
}

TEST_F(FacadeTest, UpdateTreeViewPathOfAMissingColumnReportsFalseFromTheDataSetFrame) {
  EXPECT_FALSE(store.DSUpdateTreeViewPath(1, 9));
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDataSet  (SetTreeViewPath)] ");
}

TEST_F(FacadeTest, AFaultInAForwardedCallIsLoggedByTheDataSetFrame) {
  EXPECT_TRUE(store.DSSetTreeViewPath(1, 9, "a\\b"));
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDataSet  (SetTreeViewPath)] ");
}

TEST_F(FacadeTest, ColumnVariableAndAttributes) {
  EXPECT_EQ(store.DSGetColumnVariable(1, 2), "WWCT");
  EXPECT_EQ(store.DSGetColumnVariable(1, 5), "");
  std::string z;
  EXPECT_TRUE(store.DSGetAttribute(1, 1, ATT_MEMBER, z));
  EXPECT_EQ(z, "P1");
  Array<std::string> atts;
  EXPECT_TRUE(store.DSGetAttributes(1, 2, atts));
  EXPECT_EQ(atts(ATT_VARIABLE), "WWCT");
  Array<uint8_t> rec;
  EXPECT_TRUE(store.DSbGetAttributes(1, 1, rec));
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, rec.data(), rec.UBound()), "WOPR");
  EXPECT_TRUE(store.DSSetAttribute(1, ATT_CLASS, "GROUPS"));
  EXPECT_EQ(store.DSGetColumnVariable(1, 1), "WOPR");
  EXPECT_TRUE(store.DSGetAttribute(1, 2, ATT_CLASS, z));
  EXPECT_EQ(z, "GROUPS");
}

TEST_F(FacadeTest, AppendColumnsTakesEachColumnWithTheDataSetOrigin) {
  Array2<float> vals(1, 3, 1, 2);
  Array2<std::string> atts(1, kNumAttributes, 1, 2);
  for (int32_t r = 1; r <= 3; ++r) {
    vals(r, 1) = 100.f + r;
    vals(r, 2) = 200.f + r;
  }
  atts(ATT_ORIGIN, 1) = "ELSEWHERE";
  atts(ATT_VARIABLE, 1) = "FOPR";
  atts(ATT_VARIABLE, 2) = "FGPR";
  bool qOK = false;
  store.AppendColumnsToDataSet(1, vals, atts, qOK, 2);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(atts(ATT_ORIGIN, 1), "CASE");
  EXPECT_EQ(atts(ATT_ORIGIN, 2), "CASE");
  ASSERT_EQ(ds->get_NumCols(), 4);
  EXPECT_EQ(store.DSGetColumnVariable(1, 4), "FGPR");
  float d = 0.f;
  EXPECT_TRUE(store.DSGetValue(1, 3, 4, d));
  EXPECT_EQ(d, 203.f);
  EXPECT_EQ(store.DSGetCreationType(1, 3), 2);
  std::string z;
  store.DSGetAttribute(1, 3, ATT_ORIGIN, z);
  EXPECT_EQ(z, "CASE");
}

TEST_F(FacadeTest, SetAllCreationTypesReachesEveryColumn) {
  EXPECT_TRUE(store.DSSetAllCreationTypes(1, 5));
  EXPECT_EQ(store.DSGetCreationType(1, 1), 5);
  EXPECT_EQ(store.DSGetCreationType(1, 2), 5);
  EXPECT_TRUE(store.DSSetCreationType(1, 2, 1));
  EXPECT_EQ(store.DSGetCreationType(1, 2), 1);
}

TEST_F(FacadeTest, OnlyListRoundTrip) {
  Array2<uint8_t> b(1, kOnlyRecordSize, 1, 2);
  for (int32_t c = 1; c <= 2; ++c)
    for (int32_t k = 1; k <= kOnlyRecordSize; ++k) b(k, c) = static_cast<uint8_t>('A' + c);
  EXPECT_TRUE(store.DSSetOnlyList(1, b, true));
  Array2<uint8_t> out;
  bool qOnly = false;
  EXPECT_TRUE(store.DSGetOnlyList(1, out, qOnly));
  EXPECT_TRUE(qOnly);
  ASSERT_EQ(out.UBound(2), 2);
  EXPECT_EQ(out(1, 2), 'C');
}

TEST_F(FacadeTest, ClassVarsComeBackAsTheDescriptionArray) {
  Array<Variant> v;
  EXPECT_TRUE(store.DSGetClassVarsFromAttributes(1, v));
  ASSERT_EQ(v.UBound(), kNumSourceSlots);
  EXPECT_EQ(v(SD_ORIGIN).ToText(), "CASE");
  EXPECT_EQ(v(SD_GROUPNAME).ToText(), "Summary");
}

TEST_F(FacadeTest, LimitsAndWholeTables) {
  float lo = 0.f, hi = 0.f;
  EXPECT_TRUE(store.DSGetColMinMax(1, 2, lo, hi));
  EXPECT_EQ(lo, 11.f);
  EXPECT_EQ(hi, 13.f);
  Array2<float> arr;
  Array2<uint8_t> b;
  bool qOK = false;
  store.DSbExtract2dArrays(1, arr, b, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(arr(3, 2), 13.f);
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, &b(1, 2), kPackedRecordSize), "WWCT");
  Array<std::string> z;
  store.DSExtractDataHeaders(1, z, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(z.UBound(), 2);
  EXPECT_EQ(ExtractAttribute(ATT_VARIABLE, z(1)), "WOPR");
  Array<float> row;
  EXPECT_TRUE(store.DSGetRowValues(1, 2, row));
  EXPECT_EQ(row(2), 12.f);
}

TEST_F(FacadeTest, SetItemFromDataRebuildsTheDataSetInPlace) {
  Array2<float> xy(1, 2, 1, 1);
  xy(1, 1) = 5.f;
  xy(2, 1) = 6.f;
  Array<std::string> headers(1, 1);
  headers(1) = std::string(kPackedRecordSize, ' ');
  bool qOKL = false;
  store.SetItemFromData(1, xy, headers, qOKL);
  EXPECT_TRUE(qOKL);
  EXPECT_EQ(store.get_NumRows(1), 2);
  EXPECT_TRUE(store.get_IsDirty(1));
  EXPECT_TRUE(store.get_OverWrittenDataSet());
}

// Array data sets: one row per cell, a few variables, one data set per
// report time.
class CellHistoryTest : public StoreTest {
 protected:
  static std::shared_ptr<mxDataSet> ArrayDataSet(const std::string& zOrigin, float sTime,
                                                 std::initializer_list<const char*> variables,
                                                 float base, int32_t iFileType = 11,
                                                 const std::string& zLGR = "") {
    auto ds = std::make_shared<mxDataSet>();
    ds->let_Origin(zOrigin);
    ds->let_GroupName("SOLUTION");
    ds->let_FileType(iFileType);
    ds->let_LGRName(zLGR);
    ds->let_TimeInDays(sTime);
    ds->let_DateStamp(std::to_string(sTime));
    std::vector<testutil::Attrs> cols;
    for (const char* v : variables)
      cols.push_back({{ATT_ORIGIN, zOrigin}, {ATT_TYPE, "SOLUTION"}, {ATT_CLASS, "CELL"},
                      {ATT_VARIABLE, v}});
    const int32_t nCols = static_cast<int32_t>(cols.size());
    Array2<float> values = testutil::Block(4, nCols, [base](int32_t i, int32_t j) {
      return base + static_cast<float>(10 * j + i);
    });
    bool qOK = false;
    ds->bInitialiseFrom2d(values, testutil::Headers(cols), qOK);
    EXPECT_TRUE(qOK);
    return ds;
  }
};

TEST_F(CellHistoryTest, OneArrayDataSetWithoutATimeGivesNoPoint) {
  store.AddItem(ArrayDataSet("CASE", -999.0f, {"PRESSURE"}, 0.f));
  Array<float> x, y;
  bool qOK = true;
  store.DSArrays(2, 1, 1, x, y, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(CellHistoryTest, PointsComeFromTheDataSetsOfTheSameSourceInOrder) {
  store.let_CheckDataSetNames(false);
  store.AddItem(ArrayDataSet("CASE", 0.f, {"PRESSURE", "SWAT"}, 100.f));
  store.AddItem(ArrayDataSet("OTHER", 10.f, {"PRESSURE"}, 900.f));
  store.AddItem(ArrayDataSet("CASE", 30.f, {"SWAT", "PRESSURE"}, 200.f));
  store.AddItem(ArrayDataSet("CASE", -999.f, {"PRESSURE"}, 300.f));
  store.AddItem(ArrayDataSet("CASE", 60.f, {"SGAS"}, 400.f));
  store.AddItem(ArrayDataSet("CASE", 70.f, {"PRESSURE"}, 500.f, 12));
  store.AddItem(ArrayDataSet("CASE", 80.f, {"PRESSURE"}, 600.f, 11, "LGR1"));
  store.AddItem(ArrayDataSet("CASE", 90.f, {"pressure"}, 700.f));
  ASSERT_EQ(store.get_NumberOfDataSets(), 8);
  Array<float> x, y;
  bool qOK = false;
  // Row 3 of PRESSURE, asked through data set 3 (where it is column 2).
  store.DSArrays(3, 3, 2, x, y, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(x.UBound(), 3);
  ASSERT_EQ(y.UBound(), 3);
  EXPECT_EQ(x(1), 0.f);
  EXPECT_EQ(y(1), 113.f);  // data set 1, column 1
  EXPECT_EQ(x(2), 30.f);
  EXPECT_EQ(y(2), 223.f);  // data set 3, column 2
  EXPECT_EQ(x(3), 90.f);
  EXPECT_EQ(y(3), 713.f);  // the variable is found in any case
  std::shared_ptr<mxDataSet> d;
  store.GetDataSet(1, d);
  EXPECT_TRUE(d->get_DeleteAfterFetch());
  store.GetDataSet(4, d);
  EXPECT_TRUE(d->get_DeleteAfterFetch());  // asked, though its time is unset
  store.GetDataSet(2, d);
  EXPECT_FALSE(d->get_DeleteAfterFetch());
  store.GetDataSet(5, d);
  EXPECT_FALSE(d->get_DeleteAfterFetch());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(CellHistoryTest, ARowBeyondTheTableGivesNoPoint) {
  store.AddItem(ArrayDataSet("CASE", 5.f, {"PRESSURE"}, 0.f));
  Array<float> x, y;
  bool qOK = true;
  store.DSArrays(9, 1, 1, x, y, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(FacadeTest, QueriesOfOneDataSet) {
  EXPECT_EQ(store.DSIndexFromVariable(1, "wwct"), 2);
  EXPECT_EQ(store.DSIndexFromVariable(1, "NONE"), 0);
  Array<std::string> members;
  int32_t n = 0;
  bool qOK = false;
  store.GetUniqueMembersOfClass(1, "wells", members, n, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(n, 1);
  EXPECT_EQ(members(1), "P1");
  EXPECT_EQ(store.DSGetDataSetAttribute(1, 1), ds->GetDataSetAttribute(1));
  EXPECT_EQ(store.DSGetDataSetAttribute(1, 1), "CASE");
  EXPECT_TRUE(store.DSCompareDataSetAttribute(1, 1, "case", false));
  EXPECT_FALSE(store.DSCompareDataSetAttribute(1, 1, "case", true));
  int32_t iStart = 0, iEnd = 0;
  EXPECT_FALSE(store.DSGetIndexRange(1, "WELLS", "NOSUCH", iStart, iEnd));
  EXPECT_EQ(iStart, 1);
  EXPECT_EQ(iEnd, 3);
}

}  // namespace
}  // namespace vndata
