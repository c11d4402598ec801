#include <gtest/gtest.h>

#include <ctime>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/date_tools.h"

using namespace vndata;
using namespace vndata::testutil;

namespace {

double NowDays() {
  const std::time_t t = std::time(nullptr);
  std::tm local{};
  localtime_r(&t, &local);
  return Date::FromYMD(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).Days() +
         (local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec) / 86400.0;
}

}  // namespace

TEST(DataSetDefaults, IdentityAndSourceDefaults) {
  mxDataSet ds;
  EXPECT_EQ(ds.get_Origin(), "");
  EXPECT_EQ(ds.get_UCaseOrigin(), "");
  EXPECT_EQ(ds.get_UniqueKey(), "");
  EXPECT_EQ(ds.get_Index(), -1);
  EXPECT_EQ(ds.get_FileName(), "");
  EXPECT_EQ(ds.get_CaseName(), "");
  EXPECT_EQ(ds.get_SimCase(), "");
  EXPECT_EQ(ds.get_GroupName(), "Data");
  EXPECT_EQ(ds.get_UCaseGroupName(), "DATA");
  EXPECT_EQ(ds.get_TVGroupName(), "");
  EXPECT_EQ(ds.get_TVDisplayRoot(), "");
  EXPECT_EQ(ds.get_DataRootPath(), "");
  EXPECT_EQ(ds.get_DataRootUnique(), "");
  EXPECT_EQ(ds.get_DataRootLeaf(), "");
  EXPECT_EQ(ds.get_DataClass(), "");
  EXPECT_EQ(ds.get_SourceType(), "");
  EXPECT_EQ(ds.get_Simulator(), "");
  EXPECT_FALSE(ds.get_EclipseNames());
  EXPECT_EQ(ds.get_FileType(), 3);
  EXPECT_EQ(ds.get_Units(), 0);
  EXPECT_EQ(ds.get_UnitSource(), "");
  EXPECT_EQ(ds.get_UnitCurrent(), "");
  EXPECT_EQ(ds.get_UnitDataSource(), 0);
  EXPECT_EQ(ds.get_LGRName(), "");
  EXPECT_EQ(ds.get_TableName(), "");
  EXPECT_EQ(ds.get_ObsName(), "");
  EXPECT_EQ(ds.get_CreationMethod(), 0);
  EXPECT_EQ(ds.get_DataSetDerivedFrom(), 0);
  EXPECT_FALSE(ds.get_Child());
  EXPECT_EQ(ds.get_TimeInDays(), -999.0f);
}

TEST(DataSetDefaults, DateStampIsTodayAsDayMonthNameYear) {
  mxDataSet ds;
  EXPECT_EQ(ds.get_DateStamp(), DateTools::DayMonthYearText(Date::Today()));
  int32_t y = 0, m = 0, d = 0;
  Date::Today().ToYMD(y, m, d);
  int32_t dd = 0, mm = 0, yy = 0;
  ds.GetDateStampParts(dd, mm, yy);
  EXPECT_EQ(dd, d);
  EXPECT_EQ(mm, m);
  EXPECT_EQ(yy, y);
}

TEST(DataSetDefaults, ReadingStateDefaults) {
  mxDataSet ds;
  EXPECT_EQ(ds.get_iStart(), -1);
  EXPECT_EQ(ds.get_iEnd(), -1);
  int32_t high = 0;
  EXPECT_EQ(ds.get_ReadPosition64(high), -1);
  EXPECT_EQ(high, -1);
  EXPECT_EQ(ds.get_ReadPosition(), -1);
  EXPECT_TRUE(ds.get_NoRestart());
  EXPECT_TRUE(ds.get_Unified());
  EXPECT_TRUE(ds.get_Formatted());
  EXPECT_TRUE(ds.get_AllData());
  EXPECT_FALSE(ds.get_NoInactive());
  EXPECT_FALSE(ds.get_qSelectionOnly());
  EXPECT_FALSE(ds.get_Perforations());
  EXPECT_FALSE(ds.get_PerforationsSet());
  EXPECT_FALSE(ds.get_DeleteAfterFetch());
  EXPECT_FALSE(ds.get_IgnoreInGRF());
  EXPECT_FALSE(ds.get_DualPorosity());
  EXPECT_FALSE(ds.get_Hysteresis());
  EXPECT_FALSE(ds.get_EndPointScaling());
  EXPECT_FALSE(ds.get_DirEndPointScaling());
  EXPECT_FALSE(ds.get_RevEndPointScaling());
  EXPECT_FALSE(ds.get_AltEndPointScaling());
  EXPECT_EQ(ds.get_iPhase(), 0);
  EXPECT_EQ(ds.get_zOnly(), "");
  Array2<uint8_t> bOnly;
  bool qOnly = true;
  ds.GetbOnly(bOnly, qOnly);
  EXPECT_FALSE(qOnly);
  ASSERT_EQ(bOnly.UBound(1), 56);
  ASSERT_EQ(bOnly.UBound(2), 1);
  for (int32_t i = 1; i <= 56; ++i) EXPECT_EQ(bOnly(i, 1), ' ');
}

TEST(DataSetDefaults, NullsPlotAccumulationAndTextRows) {
  const double before = NowDays();
  mxDataSet ds;
  const double after = NowDays();
  EXPECT_EQ(ds.get_NullValue(), -999.0);
  EXPECT_EQ(ds.get_UseNullVal(), 1);
  EXPECT_EQ(ds.get_ReaderNullValue(), 0.0);
  EXPECT_FALSE(ds.get_ReaderSetNull());
  EXPECT_EQ(ds.get_DefaultX(), -1);
  EXPECT_FALSE(ds.get_Accumulate());
  EXPECT_EQ(ds.get_AccFrequency(), 0);
  EXPECT_EQ(ds.get_AccInterval(), "");
  EXPECT_EQ(ds.get_AccRates(), 0);
  // The present moment at creation, to the second.
  EXPECT_GE(ds.get_AccSimDate().Days(), before - 1.0 / 86400);
  EXPECT_LE(ds.get_AccSimDate().Days(), after + 1.0 / 86400);
  EXPECT_EQ(ds.get_AccAccDate().Days(), ds.get_AccSimDate().Days());
  EXPECT_EQ(ds.get_TextRowName(), 0);
  EXPECT_EQ(ds.get_TextRowUnits(), 0);
  EXPECT_EQ(ds.get_TextRowLGR(), 0);
  EXPECT_EQ(ds.get_TextRowIndex(), 0);
  EXPECT_EQ(ds.get_TextRowVerbose(), 0);
  EXPECT_EQ(ds.get_TextRowWell(), 0);
  EXPECT_EQ(ds.get_TextRowData(), 0);
  EXPECT_EQ(ds.get_TextRowFixed(), 0);
  EXPECT_EQ(ds.get_TextRowDateFormat(), "");
}

TEST(DataSetDefaults, SizesOfANewObject) {
  mxDataSet ds;
  EXPECT_EQ(ds.get_NumCols(), 0);
  EXPECT_EQ(ds.get_NumRows(), 0);
  EXPECT_EQ(ds.get_MaxRows(), 0);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 1);
  EXPECT_EQ(ds.get_NumCellsUncompressed(), 0);
  EXPECT_EQ(ds.get_NumMarkers(), 0);
  EXPECT_EQ(ds.get_NumWells(), 0);
  EXPECT_FALSE(ds.get_Initialised());
  EXPECT_FALSE(ds.get_IsDirty());
  EXPECT_FALSE(ds.get_INITA2NSet());
  EXPECT_NE(ds.get_ADQ(), nullptr);
  int32_t nx = -1, ny = -1, nz = -1;
  ds.GetNxNyNz(nx, ny, nz);
  EXPECT_EQ(nx, 0);
  EXPECT_EQ(ny, 0);
  EXPECT_EQ(nz, 0);
}

TEST(DataSetProperties, OriginKeepsUpperCaseCopy) {
  mxDataSet ds;
  ds.let_Origin("Well-A1");
  EXPECT_EQ(ds.get_Origin(), "Well-A1");
  EXPECT_EQ(ds.get_UCaseOrigin(), "WELL-A1");
}

TEST(DataSetProperties, OriginOnObjectWithNoColumnsCreatesTheOriginStore) {
  mxDataSet ds;
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_ORIGIN), -1);
  ds.let_Origin("CASE1");
  ASSERT_EQ(ds.NumberStoredAttributes(ATT_ORIGIN), 1);
  std::shared_ptr<ByteStore> pool;
  bool qOK = false;
  ds.GetByteStore(ATT_ORIGIN, pool, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(pool->GetString(1), "CASE1");
}

TEST(DataSetProperties, OriginRepointsEveryColumn) {
  mxDataSet ds;
  Build(ds, 3, 4);
  ds.let_Origin("RENAMED");
  for (int32_t c = 1; c <= 4; ++c) {
    std::string z;
    ASSERT_TRUE(ds.GetAttribute(c, ATT_ORIGIN, z));
    EXPECT_EQ(z, "RENAMED");
  }
  // The old origin stays in the pool; the new one is added once.
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_ORIGIN), 2);
}

TEST(DataSetProperties, GroupNameAndDisplayRootKeepUpperCaseCopies) {
  mxDataSet ds;
  ds.let_GroupName("Observed");
  EXPECT_EQ(ds.get_GroupName(), "Observed");
  EXPECT_EQ(ds.get_UCaseGroupName(), "OBSERVED");
  ds.let_TVDisplayRoot("Root\\Sub");
  EXPECT_EQ(ds.get_TVDisplayRoot(), "Root\\Sub");
  EXPECT_EQ(ds.get_UCaseTVDisplayRoot(), "ROOT\\SUB");
}

TEST(DataSetProperties, DataRootUniqueKeepsTheLeafBehindTheLastBackslash) {
  mxDataSet ds;
  ds.let_DataRootUnique("C:\\runs\\CASE7");
  EXPECT_EQ(ds.get_DataRootUnique(), "C:\\runs\\CASE7");
  EXPECT_EQ(ds.get_DataRootLeaf(), "CASE7");
}

TEST(DataSetProperties, DataRootUniqueEndingInBackslashKeepsTheOldLeaf) {
  mxDataSet ds;
  ds.let_DataRootUnique("A\\B\\Leaf");
  ds.let_DataRootUnique("A\\B\\");
  EXPECT_EQ(ds.get_DataRootUnique(), "A\\B\\");
  EXPECT_EQ(ds.get_DataRootLeaf(), "Leaf");
  ds.let_DataRootUnique("NoSeparator");
  EXPECT_EQ(ds.get_DataRootLeaf(), "Leaf");
}

TEST(DataSetProperties, DateStampIsSplitUnderDayMonthYear) {
  mxDataSet ds;
  ds.let_DateStamp("05/01/2024");
  EXPECT_EQ(ds.get_DateStamp(), "05/01/2024");
  int32_t d = 0, m = 0, y = 0;
  ds.GetDateStampParts(d, m, y);
  EXPECT_EQ(d, 5);
  EXPECT_EQ(m, 1);
  EXPECT_EQ(y, 2024);
  ds.let_DateStamp("not a date");
  ds.GetDateStampParts(d, m, y);
  EXPECT_EQ(d, 0);
  EXPECT_EQ(m, 0);
  EXPECT_EQ(y, 0);
}

TEST(DataSetProperties, LGRNameIsTrimmedAndBlanksReadBackEmpty) {
  mxDataSet ds;
  ds.let_LGRName("   ");
  EXPECT_EQ(ds.get_LGRName(), "");
  ds.let_LGRName("  LGR1  ");
  EXPECT_EQ(ds.get_LGRName(), "LGR1");
}

TEST(DataSetProperties, ReadPositionWriteLeavesZeroInTheHighWord) {
  mxDataSet ds;
  ds.let_ReadPosition64(7, 5);
  int32_t high = 0;
  EXPECT_EQ(ds.get_ReadPosition64(high), 5);
  EXPECT_EQ(high, 7);
  ds.let_ReadPosition(123456);
  EXPECT_EQ(ds.get_ReadPosition(), 123456);
  EXPECT_EQ(ds.get_ReadPosition64(high), 123456);
  EXPECT_EQ(high, 0);
  ds.let_ReadPosition(-1);
  EXPECT_EQ(ds.get_ReadPosition64(high), -1);
  EXPECT_EQ(high, 0);
}

TEST(DataSetProperties, PlainPropertiesReadBackAsWritten) {
  mxDataSet ds;
  ds.let_UniqueKey("KEY");
  ds.let_Index(4);
  ds.let_FileName("x.SMSPEC");
  ds.let_Simulator("ECLIPSE");
  ds.let_FileType(7);
  ds.let_Units(2);
  ds.let_NullValue(-1.5);
  ds.let_UseNullVal(0);
  ds.let_DeleteAfterFetch(true);
  ds.let_TimeInDays(12.5f);
  ds.let_zOnly("WELLS");
  EXPECT_EQ(ds.get_UniqueKey(), "KEY");
  EXPECT_EQ(ds.get_Index(), 4);
  EXPECT_EQ(ds.get_FileName(), "x.SMSPEC");
  EXPECT_EQ(ds.get_Simulator(), "ECLIPSE");
  EXPECT_EQ(ds.get_FileType(), 7);
  EXPECT_EQ(ds.get_Units(), 2);
  EXPECT_EQ(ds.get_NullValue(), -1.5);
  EXPECT_EQ(ds.get_UseNullVal(), 0);
  EXPECT_TRUE(ds.get_DeleteAfterFetch());
  EXPECT_EQ(ds.get_TimeInDays(), 12.5f);
  EXPECT_EQ(ds.get_zOnly(), "WELLS");
}

TEST(DataSetProperties, OnlyListBytesAndFlagRoundTrip) {
  mxDataSet ds;
  Array2<uint8_t> b(1, 56, 1, 2);
  b.Fill('x');
  ds.SetbOnly(b, true);
  Array2<uint8_t> out;
  bool qOnly = false;
  ds.GetbOnly(out, qOnly);
  EXPECT_TRUE(qOnly);
  ASSERT_EQ(out.UBound(2), 2);
  EXPECT_EQ(out(56, 2), 'x');
}

TEST(DataSetProperties, INITA2NCopyLengthAndFlag) {
  mxDataSet ds;
  bool qA2N = true, qOK = false;
  Array<int32_t> got;
  int32_t n = -5;
  ds.GetINITA2N(qA2N, got, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(qA2N);
  EXPECT_EQ(n, 0);

  Array<int32_t> map{3, 1, 2};
  ds.SetINITA2N(map, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(ds.get_INITA2NSet());
  map(1) = 99;  // a copy was taken
  ds.GetINITA2N(qA2N, got, n, qOK);
  EXPECT_TRUE(qA2N);
  EXPECT_EQ(n, 3);
  EXPECT_EQ(got(1), 3);
  EXPECT_EQ(ds.get_INITA2N()(3), 2);

  ds.SetINITA2N(Array<int32_t>(), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(ds.get_INITA2NSet());
  ds.GetINITA2N(qA2N, got, n, qOK);
  EXPECT_FALSE(qA2N);
  EXPECT_EQ(n, 0);
}

TEST(DataSetProperties, GridDimensionsRoundTrip) {
  mxDataSet ds;
  ds.SetNxNyNz(10, 20, 3);
  int32_t nx, ny, nz;
  ds.GetNxNyNz(nx, ny, nz);
  EXPECT_EQ(nx, 10);
  EXPECT_EQ(ny, 20);
  EXPECT_EQ(nz, 3);
  ds.SetNumCellsUncompressed(600);
  EXPECT_EQ(ds.get_NumCellsUncompressed(), 600);
}

TEST(DataSetProperties, SetDefaultXByHeaderFindsTheVariableWithoutRegardToCase) {
  mxDataSet ds;
  Build(ds, 2, 3);
  EXPECT_TRUE(ds.SetDefaultXByHeader("v2"));
  EXPECT_EQ(ds.get_DefaultX(), 2);
}

TEST(DataSetProperties, SetDefaultXByHeaderWithUnknownHeaderKeepsDefaultX) {
  mxDataSet ds;
  Build(ds, 2, 3);
  ds.let_DefaultX(3);
  EXPECT_FALSE(ds.SetDefaultXByHeader("NOSUCH"));
  EXPECT_EQ(ds.get_DefaultX(), 3);
}

TEST(DataSetLifecycle, DefaultXMinusOneIsLeftAloneByALoad) {
  mxDataSet ds;
  Build(ds, 2, 3);
  EXPECT_EQ(ds.get_DefaultX(), -1);
}

TEST(DataSetLifecycle, LoadMakesTheTimeColumnDefaultX) {
  mxDataSet ds;
  ds.let_DefaultX(0);
  Array2<float> a = Numbered(2, 3);
  bool qOK = false;
  ds.bInitialiseFrom2d(a, Headers({{{ATT_VARIABLE, "WOPR"}}, {{ATT_VARIABLE, "WWCT"}}, {{ATT_VARIABLE, "TIME"}}}),
                       qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_DefaultX(), 3);
}

TEST(DataSetLifecycle, LoadWithoutTimeColumnMakesColumnOneDefaultX) {
  mxDataSet ds;
  ds.let_DefaultX(2);
  Build(ds, 2, 3);
  EXPECT_EQ(ds.get_DefaultX(), 1);
}

TEST(DataSetLifecycle, ALoadedDataSetIsInitialisedAndClean) {
  mxDataSet ds;
  Build(ds, 4, 2);
  EXPECT_TRUE(ds.get_Initialised());
  EXPECT_FALSE(ds.get_IsDirty());
  ds.Redimension(6);
  EXPECT_TRUE(ds.get_IsDirty());
}

TEST(DataSetLifecycle, TerminateOnlyClearsInitialised) {
  mxDataSet ds;
  Build(ds, 4, 2);
  ds.Terminate();
  EXPECT_FALSE(ds.get_Initialised());
  EXPECT_EQ(ds.get_NumRows(), 4);
  EXPECT_EQ(ds.get_NumCols(), 2);
  float v = 0;
  EXPECT_TRUE(ds.GetValue(3, 2, v));
  EXPECT_EQ(v, 203.0f);
}

TEST(DataSetChecks, ValidColumnWithoutActiveCheckIsAlwaysTrue) {
  mxDataSet ds;
  Build(ds, 2, 3);
  EXPECT_TRUE(ds.ValidColumn(0, false));
  EXPECT_TRUE(ds.ValidColumn(999, false));
  EXPECT_FALSE(ds.ValidColumn(0, true));
  EXPECT_TRUE(ds.ValidColumn(1, true));
  EXPECT_TRUE(ds.ValidColumn(3, true));
  EXPECT_FALSE(ds.ValidColumn(4, true));
}

TEST(DataSetChecks, ValidColumnIndexIsOneToNumCols) {
  mxDataSet ds;
  EXPECT_FALSE(ds.ValidColumnIndex(1));
  Build(ds, 2, 3);
  EXPECT_FALSE(ds.ValidColumnIndex(0));
  EXPECT_TRUE(ds.ValidColumnIndex(1));
  EXPECT_TRUE(ds.ValidColumnIndex(3));
  EXPECT_FALSE(ds.ValidColumnIndex(4));
}

TEST(DataSetChecks, ValidWellIndexAndIsMarkers) {
  mxDataSet ds;
  Array2<float> a = Numbered(2, 3);
  bool qOK = false;
  ds.bInitialiseFrom2d(a,
                       Headers({{{ATT_CLASS, "WELL"}, {ATT_MEMBER, "P1"}, {ATT_VARIABLE, "WOPR"}},
                                {{ATT_CLASS, "WELL"}, {ATT_MEMBER, "P2"}, {ATT_VARIABLE, "WOPR"}},
                                {{ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "FOPR"}}}),
                       qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(ds.get_NumWells(), 2);
  EXPECT_FALSE(ds.ValidWellIndex(0));
  EXPECT_TRUE(ds.ValidWellIndex(1));
  EXPECT_TRUE(ds.ValidWellIndex(2));
  EXPECT_FALSE(ds.ValidWellIndex(3));
  // Wells without markers are not markers.
  EXPECT_FALSE(ds.IsMarkers());
}

TEST(DataSetSizes, MaxRowsOfTwoPartlyFilledBuffersIsTheRowsInUse) {
  mxDataSet ds;
  bool qOK = false;
  // Buffer 1: capacity 8 holding 4 rows; appending 6 fills it and makes a
  // second buffer of capacity 4096 holding 2.
  ds.DimensionBuffer(1, 2, qOK, 4, 8);
  ASSERT_TRUE(qOK);
  ds.AddRowsToDatasetBuffer(Numbered(6, 2), qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(ds.get_NumberOfBuffers(), 2);
  EXPECT_EQ(ds.get_NumRows(), 10);
  EXPECT_EQ(ds.get_MaxRows(), 10);
  // Shorter values given to buffer 1 leave it half full too.
  ds.SetValuesBuffer(1, 1, Floats({1.f, 2.f}), qOK, false);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumRows(), 4);
  EXPECT_EQ(ds.get_MaxRows(), 4);
}
