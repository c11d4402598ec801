// Fetch on demand: the reads the storage operations turn to (values, rows,
// extracts, limits, addresses), the selections they honour, the lists of
// columns and the bulk move into the row buffers.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/dataset/fetch_test_util.h"
#include "tests/support/scripted_host.h"
#include "vndata/platform/module_state.h"

using namespace vndata;
using namespace vndata::fetch_test;
using vndata::sim_test::BinaryFile;
using vndata::sim_test::TempDir;

namespace {

const std::vector<float> kPress = {100, 101, 102, 103, 104, 105};
const std::vector<float> kSwat = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f};
const std::vector<float> kSgas = {0.05f, 0.1f, 0.15f, 0.2f, 0.25f, 0.3f};

class FetchReads : public ::testing::Test {
 protected:
  void SetUp() override {
    MessageLog::Shared().Clear();
    Module().CancelLoad = false;
    pPress_ = f_.Reals("PRESSURE", kPress);
    pSwat_ = f_.Reals("SWAT", kSwat);
    pSgas_ = f_.Reals("SGAS", kSgas);
    pShort_ = f_.Reals("SHORT", {1, 2, 3});
    record_test::WriteAllBytes(file_, f_.b);
    ASSERT_TRUE(MakeFetchDataSet(ds_, file_, {Stored(pPress_, 6), Stored(pSwat_, 6), Stored(pSgas_, 6)}));
  }
  void TearDown() override {
    Module().CancelLoad = false;
    MessageLog::Shared().Clear();
  }
  void Load(int32_t c) {
    bool qOK = false;
    ds_.LoadFODVector(c, qOK);
    ASSERT_TRUE(qOK);
  }
  void ColumnList(std::initializer_list<int32_t> cols) {
    bool qOK = false;
    ds_.SetColumnList(Array<int32_t>(cols), static_cast<int32_t>(cols.size()), qOK);
  }
  void RowList(std::initializer_list<int32_t> rows) {
    bool qOK = false;
    ds_.SetRowList(Array<int32_t>(rows), static_cast<int32_t>(rows.size()), qOK);
  }

  TempDir dir_;
  std::string file_ = dir_.File("CASE.UNRST");
  BinaryFile f_;
  int64_t pPress_ = 0, pSwat_ = 0, pSgas_ = 0, pShort_ = 0;
  mxDataSet ds_;
};

// ---- Whole columns and the selections ---------------------------------------------------------

TEST_F(FetchReads, ColumnOutsideTheColumnListGivesFalseAndLoadsNothing) {
  ColumnList({1, 3});
  Array<float> v{9.0f};
  EXPECT_FALSE(ds_.GetFODVector(2, v));
  EXPECT_EQ(Values(v), std::vector<float>{9.0f});
  EXPECT_FALSE(ds_.get_qLoaded(2));
  EXPECT_FALSE(ds_.GetFODValues(2, v));
  EXPECT_FALSE(ds_.get_qLoaded(2));
  EXPECT_FALSE(FileHeldOpen(file_));
  ASSERT_TRUE(ds_.GetFODVector(3, v));
  EXPECT_EQ(Values(v), kSgas);
}

TEST_F(FetchReads, GetFODValuesTakesTheRowsOfTheRowList) {
  RowList({5, 2});
  Array<float> v;
  ASSERT_TRUE(ds_.GetFODValues(1, v));
  EXPECT_EQ(Values(v), (std::vector<float>{104, 101}));
  // GetFODVector gives the whole column whatever the row list.
  ASSERT_TRUE(ds_.GetFODVector(1, v));
  EXPECT_EQ(Values(v), kPress);
  // GetValues of a data set on fetch on demand is GetFODValues.
  ASSERT_TRUE(ds_.GetValues(2, v));
  EXPECT_EQ(Values(v), (std::vector<float>{0.5f, 0.2f}));
}

TEST_F(FetchReads, RowListIndexesTheRowsAMaskedReadHolds) {
  bool qOK = false;
  ds_.SetMask(true, Array<int32_t>{6, 4, 2}, 3, qOK);
  RowList({3, 1});
  Array<float> v;
  ASSERT_TRUE(ds_.GetFODValues(1, v));
  EXPECT_EQ(Values(v), (std::vector<float>{101, 105}));
}

TEST_F(FetchReads, RowListBeyondTheColumnLeavesTheOutputAndIsTraced) {
  // A list is kept only when shorter than the rows: 2 of 6.
  RowList({1, 9});
  Array<float> v{5.0f};
  EXPECT_FALSE(ds_.GetFODValues(1, v));
  EXPECT_EQ(Values(v), std::vector<float>{5.0f});
  ASSERT_EQ(TraceLines().size(), 1u);
  EXPECT_EQ(TraceLines()[0], "Error:Subscript out of range (No.9) In [mxDataSet (Code) (GetFODValues)] ");
}

TEST_F(FetchReads, ListsAsLongAsTheTableMeanAll) {
  RowList({1, 2, 3, 4, 5, 6});
  ColumnList({1, 2, 3});
  Array<int32_t> rows;
  Array<float> v;
  ASSERT_TRUE(ds_.GetFODValues(1, v));
  EXPECT_EQ(v.UBound(), 6);
}

TEST_F(FetchReads, GetFODVectorNeedsFetchOnDemandAndAValidColumn) {
  Array<float> v;
  EXPECT_FALSE(ds_.GetFODVector(0, v));
  EXPECT_FALSE(ds_.GetFODVector(4, v));
  ds_.let_FetchOnDemandActive(false);
  EXPECT_FALSE(ds_.GetFODVector(1, v));
  EXPECT_FALSE(ds_.get_qLoaded(1));
  EXPECT_FALSE(ds_.FetchOnDemandColumnLoaded(1));
}

// ---- Single values and rows --------------------------------------------------------------------

TEST_F(FetchReads, GetFODValueOfRowZeroOnALoadedColumnKeepsTheValue) {
  Load(2);
  float v = -1.5f;
  bool qOK = false;
  ds_.GetFODValue(0, 2, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, -1.5f);
  ds_.GetFODValue(4, 2, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 0.4f);
}

TEST_F(FetchReads, GetFODValueReadsOneValueWithoutLoading) {
  float v = 0;
  bool qOK = false;
  ds_.GetFODValue(3, 1, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 102.0f);
  EXPECT_FALSE(ds_.get_qLoaded(1));
  EXPECT_FALSE(FileHeldOpen(file_));
  // GetValue on a data set on fetch on demand goes the same way.
  EXPECT_TRUE(ds_.GetValue(6, 3, v));
  EXPECT_EQ(v, 0.3f);
  EXPECT_FALSE(ds_.GetValue(1, 9, v));
}

TEST_F(FetchReads, GetRowValuesFODTakesEachColumnsValue) {
  Load(2);
  Array<float> row;
  bool qOK = false;
  ds_.GetRowValuesFOD(2, row, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Values(row), (std::vector<float>{101, 0.2f, 0.1f}));
  ds_.GetRowValuesFOD(0, row, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_TRUE(ds_.GetRowValues(3, row));
  EXPECT_EQ(Values(row), (std::vector<float>{102, 0.3f, 0.15f}));
}

TEST_F(FetchReads, MultipleRowsAreSwappedInTheCallersVariables) {
  int32_t r1 = 5, r2 = 3;
  Array2<float> rows;
  bool qOK = false;
  ds_.GetMultipleRowValuesFOD(r1, r2, rows, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(r1, 3);
  EXPECT_EQ(r2, 5);
  ASSERT_EQ(rows.UBound(1), 3);
  ASSERT_EQ(rows.UBound(2), 3);
  EXPECT_EQ(rows(1, 1), 102.0f);
  EXPECT_EQ(rows(3, 2), 0.5f);
  EXPECT_EQ(rows(2, 3), 0.2f);
  // The columns stay loaded and the file is closed.
  for (int32_t c = 1; c <= 3; ++c) EXPECT_TRUE(ds_.get_qLoaded(c));
  EXPECT_FALSE(FileHeldOpen(file_));
  r1 = -1;
  ds_.GetMultipleRowValuesFOD(r1, r2, rows, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_TRUE(ds_.GetRowValuesMulti(6, 6, rows));
  EXPECT_EQ(rows(1, 1), 105.0f);
}

// ---- Lists of columns --------------------------------------------------------------------------

TEST_F(FetchReads, LoadFODVectorsLoadsTheListAndClosesOnce) {
  Load(1);
  bool qOK = false;
  ds_.LoadFODVectors(Array<int32_t>{1, 3, 2}, 3, qOK);
  EXPECT_TRUE(qOK);
  for (int32_t c = 1; c <= 3; ++c) EXPECT_TRUE(ds_.get_qLoaded(c));
  EXPECT_FALSE(FileHeldOpen(file_));
  Array<int32_t> cols;
  int32_t n = 0;
  ds_.GetLoadedVectors(cols, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 3);
  EXPECT_EQ(cols(3), 3);
}

TEST_F(FetchReads, LoadFODVectorsStopsAtTheFirstFailureAndCloses) {
  bool qOK = false;
  ds_.AssignFODPointers(Settings(), PosArray({Stored(pPress_, 6), Stored(pSwat_ + 1, 6), Stored(pSgas_, 6)}),
                        qOK);
  ds_.LoadFODVectors(Array<int32_t>{1, 2, 3}, 3, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(ds_.get_qLoaded(1));
  EXPECT_FALSE(ds_.get_qLoaded(2));
  EXPECT_FALSE(ds_.get_qLoaded(3));
  EXPECT_FALSE(FileHeldOpen(file_));
  Array<int32_t> cols;
  int32_t n = -1;
  ds_.GetLoadedVectors(cols, n, qOK);
  EXPECT_EQ(n, 1);
  EXPECT_EQ(cols(1), 1);
}

// ---- Extracts ----------------------------------------------------------------------------------

TEST_F(FetchReads, ExtractsOfLoadedColumnsHonourTheColumnList) {
  Load(1);
  Load(3);
  Array2<float> data;
  int32_t nCols = 0;
  bool qOK = false;
  ds_.FODExtractDataArray(data, nCols, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(nCols, 2);
  EXPECT_EQ(data(6, 1), 105.0f);
  EXPECT_EQ(data(6, 2), 0.3f);
  ColumnList({3});
  ds_.FODExtractDataArray(data, nCols, qOK);
  EXPECT_EQ(nCols, 1);
  EXPECT_EQ(data(1, 1), 0.05f);
  Array<std::string> heads;
  ds_.FODExtractHeaders(heads, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(heads.UBound(), 1);
  EXPECT_NE(heads(1).find("V3"), std::string::npos);
  Array2<uint8_t> b;
  ds_.FODbExtractHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(b.UBound(1), 233);
  EXPECT_EQ(b.UBound(2), 1);
}

TEST_F(FetchReads, HeaderExtractWithNoLoadedColumnLeavesTheArray) {
  Array<std::string> heads{"keep"};
  bool qOK = false;
  ds_.FODExtractHeaders(heads, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(heads.UBound(), 1);
  EXPECT_EQ(heads(1), "keep");
}

TEST_F(FetchReads, DataExtractWithARowListTakesItsRows) {
  bool qOK = false;
  ds_.AssignFODPointers(Settings(), PosArray({Stored(pPress_, 6), Stored(pShort_, 3), Stored(pSgas_, 6)}),
                        qOK);
  Load(1);
  Load(2);
  Array2<float> data;
  int32_t nCols = 0;
  ds_.FODExtractDataArray(data, nCols, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(data.UBound(1), 6);
  EXPECT_EQ(data(3, 2), 3.0f);
  EXPECT_EQ(data(4, 2), 0.0f);  // a shorter column leaves its tail as made
  RowList({6, 1, 3});
  ds_.FODExtractDataArray(data, nCols, qOK);
  ASSERT_EQ(data.UBound(1), 3);
  EXPECT_EQ(data(1, 1), 105.0f);
  EXPECT_EQ(data(2, 1), 100.0f);
  EXPECT_EQ(data(1, 2), 0.0f);  // row 6 of a column of 3
  EXPECT_EQ(data(3, 2), 3.0f);
}

TEST_F(FetchReads, ExtractArrayFetchesEveryColumnAndDropsThemWhenAsked) {
  ds_.let_DeleteAfterFetch(true);
  Load(2);
  Array2<float> data;
  bool qOK = false;
  ds_.ExtractArray(data, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(data.UBound(1), 6);
  ASSERT_EQ(data.UBound(2), 3);
  EXPECT_EQ(data(2, 1), 101.0f);
  EXPECT_EQ(data(2, 2), 0.2f);
  EXPECT_EQ(data(2, 3), 0.1f);
  EXPECT_FALSE(ds_.get_qLoaded(1));
  EXPECT_TRUE(ds_.get_qLoaded(2));
  EXPECT_FALSE(ds_.get_qLoaded(3));
  // ExtractDataArray sees the loaded columns only.
  ds_.ExtractDataArray(data, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(data.UBound(2), 1);
  EXPECT_EQ(data(6, 1), 0.6f);
}

// ---- Limits, writes, addresses, columns ---------------------------------------------------------

TEST_F(FetchReads, LimitsComeFromTheLoadedColumns) {
  Load(1);
  Load(2);
  bool qOK = false;
  ds_.InitialiseColumnLimitsFOD(qOK, 2);
  EXPECT_TRUE(qOK);
  float mn = 0, mx = 0;
  ds_.SetColMinMax(1, -1, -1);
  ds_.InitialiseColumnLimits(qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(ds_.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 100.0f);
  EXPECT_EQ(mx, 105.0f);
  // An unloaded column is loaded by the limits query.
  EXPECT_TRUE(ds_.GetColMinMax(3, mn, mx));
  EXPECT_TRUE(ds_.get_qLoaded(3));
  EXPECT_EQ(mn, 0.05f);
  EXPECT_EQ(mx, 0.3f);
}

TEST_F(FetchReads, SetValueWritesTheLoadedValues) {
  ds_.SetValue(2, 1, 150.0f);
  EXPECT_TRUE(ds_.get_qLoaded(1));
  float v = 0;
  EXPECT_TRUE(ds_.GetValue(2, 1, v));
  EXPECT_EQ(v, 150.0f);
  float mn = 0, mx = 0;
  EXPECT_TRUE(ds_.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mx, 150.0f);
  EXPECT_TRUE(ds_.get_IsDirty());
}

TEST_F(FetchReads, ValuesPtrLoadsTheColumnAndPointsAtItsValues) {
  const std::intptr_t p = ds_.ValuesPtr(2);
  ASSERT_NE(p, 0);
  EXPECT_TRUE(ds_.get_qLoaded(2));
  const float* v = reinterpret_cast<const float*>(p);
  EXPECT_EQ(v[0], 0.1f);
  EXPECT_EQ(v[5], 0.6f);
  EXPECT_EQ(reinterpret_cast<const float*>(ds_.ValuesRowPtr(2, 3)), v + 2);
  EXPECT_EQ(ds_.ValuesRowPtr(2, 7), 0);
  EXPECT_EQ(ds_.ValuesPtr(9), 0);
  bool qOK = false;
  ds_.AssignFODPointers(Settings(), PosArray({Stored(pPress_ + 2, 6), Stored(pSwat_, 6), Stored(pSgas_, 6)}),
                        qOK);
  EXPECT_EQ(ds_.ValuesPtr(1), 0);
}

TEST_F(FetchReads, ColumnAddedBesideColumnsOnDiskIsInMemory) {
  Array<float> sVals{1, 2, 3, 4, 5, 6, 7};
  bool qOK = false;
  ds_.AddDataColumn(sVals, testutil::Row({{ATT_VARIABLE, "EXTRA"}}), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds_.get_NumCols(), 4);
  EXPECT_TRUE(ds_.get_qLoaded(4));
  EXPECT_EQ(ds_.RowCount(), 7);
  Array<float> v;
  ASSERT_TRUE(ds_.GetFODVector(4, v));
  EXPECT_EQ(v.UBound(), 7);
  // The other columns keep their entries.
  ASSERT_TRUE(ds_.GetFODVector(3, v));
  EXPECT_EQ(Values(v), kSgas);
}

TEST_F(FetchReads, RedimensioningKeepsTheEntriesOfTheColumnsKept) {
  bool qOK = false;
  ds_.RedimensionColumnData(2, qOK, false);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds_.get_NumCols(), 2);
  EXPECT_EQ(ds_.GetFODVarType(3), -1);
  Array<float> v;
  ASSERT_TRUE(ds_.GetFODVector(2, v));
  EXPECT_EQ(Values(v), kSwat);
  ds_.RedimensionColumnData(3, qOK, false);
  // A new column's entry is empty: no record at position 0 of this length.
  EXPECT_EQ(ds_.GetFODVarType(3), 0);
  EXPECT_FALSE(ds_.GetFODVector(3, v));
}

// ---- Everything into the buffers ----------------------------------------------------------------

TEST_F(FetchReads, LoadAllVectorsMovesEveryColumnForGood) {
  auto rec = Listen(ds_);
  auto host = std::make_shared<test_support::ScriptedHost>();
  test_support::ScopedHost installed(host);
  Load(2);
  rec->lines.clear();
  ds_.let_LoadAllVectors(true);
  EXPECT_EQ(host->nYields, 3);  // one a column
  EXPECT_FALSE(ds_.get_FetchOnDemandActive());
  EXPECT_TRUE(ds_.get_LoadAllVectors());
  for (int32_t c = 1; c <= 3; ++c) EXPECT_TRUE(ds_.get_qLoaded(c));
  EXPECT_TRUE(rec->lines.empty());
  EXPECT_FALSE(FileHeldOpen(file_));
  EXPECT_EQ(ds_.get_NumRows(), 6);
  Array<float> v;
  ASSERT_TRUE(ds_.GetValues(1, v));
  EXPECT_EQ(Values(v), kPress);
  ASSERT_TRUE(ds_.GetValues(2, v));
  EXPECT_EQ(Values(v), kSwat);
  float val = 0;
  EXPECT_TRUE(ds_.GetValue(4, 3, val));
  EXPECT_EQ(val, 0.2f);
}

TEST_F(FetchReads, CancelBetweenColumnsLeavesTheDataSetHalfMoved) {
  auto host = std::make_shared<test_support::ScriptedHost>();
  host->CancelAtYield(2);
  test_support::ScopedHost installed(host);
  ds_.let_LoadAllVectors(true);
  EXPECT_EQ(host->nYields, 2);
  EXPECT_TRUE(ds_.get_FetchOnDemandActive());
  EXPECT_TRUE(ds_.get_LoadAllVectors());
  EXPECT_TRUE(ds_.get_qLoaded(1));
  EXPECT_FALSE(ds_.get_qLoaded(2));
  // Column 1 lives in the buffer now; column 2 is still read from disk.
  Module().CancelLoad = false;
  Array<float> v;
  ASSERT_TRUE(ds_.GetFODVector(1, v));
  EXPECT_EQ(Values(v), kPress);
  ASSERT_TRUE(ds_.GetFODVector(2, v));
  EXPECT_EQ(Values(v), kSwat);
  // A second pass finishes the move.
  ds_.let_LoadAllVectors(true);
  EXPECT_FALSE(ds_.get_FetchOnDemandActive());
  ASSERT_TRUE(ds_.GetValues(1, v));
  EXPECT_EQ(Values(v), kPress);
  ASSERT_TRUE(ds_.GetValues(3, v));
  EXPECT_EQ(Values(v), kSgas);
}

TEST_F(FetchReads, UnreadableColumnStopsTheMoveAndStaysOnDisk) {
  bool qOK = false;
  ds_.AssignFODPointers(Settings(), PosArray({Stored(pPress_, 6), Stored(pSwat_ + 5, 6), Stored(pSgas_, 6)}),
                        qOK);
  ds_.LoadAllData(qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(ds_.get_FetchOnDemandActive());
  EXPECT_TRUE(ds_.get_qLoaded(1));
  EXPECT_FALSE(ds_.get_qLoaded(2));
  EXPECT_FALSE(ds_.get_qLoaded(3));
}

TEST_F(FetchReads, LoadAllDataOfNoColumnsSaysFalse) {
  mxDataSet empty;
  bool qOK = true;
  empty.LoadAllData(qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(FetchReads, DerivedColumnMovedAfterItsArgumentsReadsThemFromTheBuffer) {
  bool qOK = false;
  std::vector<Column> cols = {Stored(pPress_, 6), Derived(6, 1, 2, 6), Stored(pSwat_, 6)};
  mxDataSet ds;
  ASSERT_TRUE(MakeFetchDataSet(ds, file_, cols, Array<int32_t>{1, 3}));
  ds.let_LoadAllVectors(true);
  EXPECT_FALSE(ds.get_FetchOnDemandActive());
  Array<float> v;
  ASSERT_TRUE(ds.GetValues(2, v));
  for (int i = 0; i < 6; ++i)
    EXPECT_EQ(v(i + 1), (0.0f + kPress[static_cast<std::size_t>(i)]) + kSwat[static_cast<std::size_t>(i)]);
  ASSERT_TRUE(ds.GetValues(3, v));
  EXPECT_EQ(Values(v), kSwat);
  (void)qOK;
}

}  // namespace
