#include <gtest/gtest.h>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

// The read direction is private to the data set (the stored format and
// copying use it); a host reaches it through the store, and so does this
// test. The store is gone before the data set it borrows.
struct mxDataSetPrivateAccess {
  static bool Get(mxDataSet& ds, Array<Variant>& v) {
    mxDataStore store;
    // The store hands its null rule to what it takes in: make it the data
    // set's own, so that taking it in changes nothing.
    store.let_UseNullVal(ds.get_UseNullVal());
    store.let_NullValue(ds.get_NullValue());
    store.AddItemAuto(std::shared_ptr<mxDataSet>(&ds, [](mxDataSet*) {}));
    return store.DSGetClassVarsFromAttributes(1, v);
  }
};

namespace {

using testutil::LogCapture;

Array<Variant> Fresh() {
  Array<Variant> v;
  bool qOK = false;
  InitSourceData(v, qOK);
  EXPECT_TRUE(qOK);
  return v;
}

TEST(DescriptionArray, InitSourceDataReportsSuccess) {
  Array<Variant> v = Fresh();
  EXPECT_EQ(v.UBound(), 66);
  EXPECT_EQ(v(SD_GROUPNAME).ToText(), "Data");
}

TEST(DescriptionArray, IdentitySlotsGoThroughTheirWriters) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_ORIGIN) = std::string("Case");
  v(SD_FILENAME) = std::string("CASE.SMSPEC");
  v(SD_SOURCETYPE) = std::string("ECL");
  v(SD_SIMULATOR) = std::string("E100");
  v(SD_GROUPNAME) = std::string("Summary");
  v(SD_DATESTAMP) = std::string("05/01/2024");
  v(SD_DATACLASS) = std::string("Summary");
  v(SD_TVDISPLAYROOT) = std::string("Display");
  EXPECT_TRUE(ds.SetClassVarsFromAttributes(v));
  EXPECT_EQ(ds.get_Origin(), "Case");
  EXPECT_EQ(ds.get_UCaseOrigin(), "CASE");
  EXPECT_EQ(ds.get_FileName(), "CASE.SMSPEC");
  EXPECT_EQ(ds.get_SourceType(), "ECL");
  EXPECT_EQ(ds.get_Simulator(), "E100");
  EXPECT_EQ(ds.get_UCaseGroupName(), "SUMMARY");
  EXPECT_EQ(ds.get_DataClass(), "Summary");
  int32_t d = 0, m = 0, y = 0;
  ds.GetDateStampParts(d, m, y);
  EXPECT_EQ(d, 5);
  EXPECT_EQ(m, 1);
  EXPECT_EQ(y, 2024);
  EXPECT_EQ(ds.get_TVDisplayRoot(), "Display");
  // Taken without the upper-case copy.
  EXPECT_EQ(ds.get_UCaseTVDisplayRoot(), "");
}

TEST(DescriptionArray, IndexOfMinusOneKeepsTheDataSetsIndex) {
  mxDataSet ds;
  ds.let_Index(4);
  Array<Variant> v = Fresh();
  v(SD_INDEX) = static_cast<int16_t>(-1);
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_Index(), 4);
  v(SD_INDEX) = static_cast<int16_t>(2);
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_Index(), 2);
  v(SD_INDEX) = std::string("not a number");
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_Index(), 2);
}

TEST(DescriptionArray, ColumnCountOfZeroKeepsTheCount) {
  mxDataSet ds;
  testutil::Build(ds, 3, 4);
  Array<Variant> v = Fresh();
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_NumCols(), 4);
}

TEST(DescriptionArray, NullPerforationsSlotLeavesTheFlagUnset) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  ds.SetClassVarsFromAttributes(v);
  EXPECT_FALSE(ds.get_PerforationsSet());
  v(SD_PERFORATIONS) = true;
  ds.SetClassVarsFromAttributes(v);
  EXPECT_TRUE(ds.get_PerforationsSet());
  EXPECT_TRUE(ds.get_Perforations());
}

TEST(DescriptionArray, TableNameSlotDoesNotTouchEclipseNamesUnlessItSaysEclipse) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_DATACLASS) = std::string("Tables");
  v(SD_SIMWORD_OR_TABLENAME) = std::string("PVTO");
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_TableName(), "PVTO");
  EXPECT_FALSE(ds.get_EclipseNames());
  v(SD_SIMWORD_OR_TABLENAME) = std::string("ECLIPSE");
  ds.SetClassVarsFromAttributes(v);
  EXPECT_TRUE(ds.get_EclipseNames());
  EXPECT_EQ(ds.get_TableName(), "ECLIPSE");
  // Never made false here.
  v(SD_SIMWORD_OR_TABLENAME) = std::string("OTHER");
  ds.SetClassVarsFromAttributes(v);
  EXPECT_TRUE(ds.get_EclipseNames());
}

TEST(DescriptionArray, SimulatorWordOfOtherDataIsNotATableName) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_DATACLASS) = std::string("Summary");
  v(SD_SIMWORD_OR_TABLENAME) = std::string("ECLIPSE");
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_TableName(), "");
  EXPECT_TRUE(ds.get_EclipseNames());
}

TEST(DescriptionArray, BranchIsTakenForSegmentBranchesOnly) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_BRANCH) = static_cast<int16_t>(3);
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_Branch(), 1);
  v(SD_DATACLASS) = std::string("SEGBRAN");
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_Branch(), 3);
}

TEST(DescriptionArray, ReaderNullFollowsTheNullValueWhenSet) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_NULLVALUE) = -1.5;
  v(SD_READERSETNULL) = static_cast<int32_t>(-1);
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_NullValue(), -1.5);
  EXPECT_TRUE(ds.get_ReaderSetNull());
  EXPECT_EQ(ds.get_ReaderNullValue(), -1.5);
}

TEST(DescriptionArray, UnitsTakeTheNumberAtTheHeadOfTheText) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_UNITS) = std::string("2 METRIC");
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_Units(), 2);
  v(SD_UNITS) = std::string("METRIC");
  ds.SetClassVarsFromAttributes(v);
  EXPECT_EQ(ds.get_Units(), 0);
}

TEST(DescriptionArray, ReadPositionHalvesAndModelOptions) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_READPOSITION64_LOW) = static_cast<int32_t>(1000);
  v(SD_READPOSITION64_HIGH) = static_cast<int32_t>(2);
  v(SD_HYSTERESIS) = static_cast<int32_t>(-1);
  v(SD_IPHASE) = static_cast<int32_t>(7);
  ds.SetClassVarsFromAttributes(v);
  int32_t hi = 0;
  EXPECT_EQ(ds.get_ReadPosition64(hi), 1000);
  EXPECT_EQ(hi, 2);
  EXPECT_TRUE(ds.get_Hysteresis());
  EXPECT_TRUE(ds.get_RevEndPointScaling());  // initial slot value -1
  EXPECT_EQ(ds.get_iPhase(), 7);
}

TEST(DescriptionArray, AFailedConversionStopsWithOneTraceLineAndKeepsWhatWasTaken) {
  LogCapture log;
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_ORIGIN) = std::string("CASE");
  v(SD_NORESTART) = std::string("maybe");
  EXPECT_FALSE(ds.SetClassVarsFromAttributes(v));
  EXPECT_EQ(ds.get_Origin(), "CASE");
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Type mismatch (No.13) In [mxDataSet  (SetClassVarsFromAttributes)] ");
}

TEST(DescriptionArray, SetThenGetGivesBackTheIdentityTexts) {
  mxDataSet ds;
  Array<Variant> v = Fresh();
  v(SD_ORIGIN) = std::string("CASE");
  v(SD_FILENAME) = std::string("/data/CASE.UNSMRY");
  v(SD_SOURCETYPE) = std::string("ECL");
  v(SD_DATESTAMP) = std::string("23/11/2026");
  ds.SetClassVarsFromAttributes(v);
  Array<Variant> back;
  EXPECT_TRUE(mxDataSetPrivateAccess::Get(ds, back));
  for (int32_t s = 1; s <= 4; ++s) EXPECT_EQ(back(s).ToText(), v(s).ToText()) << s;
}

TEST(DescriptionArray, GetTakesBufferRowsAndWritesConditionalSlotsOnlyWhenSet) {
  mxDataSet ds;
  testutil::Build(ds, 3, 2);
  Array<Variant> back;
  mxDataSetPrivateAccess::Get(ds, back);
  EXPECT_EQ(back(SD_NUMROWS).ToLong(), 3);
  EXPECT_EQ(back(SD_NUMCOLS).ToLong(), 2);
  EXPECT_TRUE(back(SD_PERFORATIONS).IsNull());
  EXPECT_EQ(back(SD_BRANCH).ToLong(), 1);  // the initial value: not SEGBRAN data
  EXPECT_EQ(back(SD_NULLVALUE).Type(), VarType::Double);
  EXPECT_EQ(back(SD_SIMWORD_OR_TABLENAME).ToText(), "");
}

TEST(DescriptionArray, GetOverwritesTheReaderNullDeliberately) {
  mxDataSet ds;
  ds.let_ReaderSetNull(true);
  ds.let_NullValue(-7.0);
  ds.let_ReaderNullValue(1.0);
  Array<Variant> back;
  mxDataSetPrivateAccess::Get(ds, back);
  EXPECT_EQ(ds.get_ReaderNullValue(), -7.0);
}

TEST(DescriptionArray, GetOfTableDataGivesTheTableName) {
  mxDataSet ds;
  ds.let_DataClass("Table");
  ds.let_TableName("SWOF");
  Array<Variant> back;
  mxDataSetPrivateAccess::Get(ds, back);
  EXPECT_EQ(back(SD_SIMWORD_OR_TABLENAME).ToText(), "SWOF");
}

}  // namespace
}  // namespace vndata
