#include <gtest/gtest.h>

#include <cmath>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"

using namespace vndata;
using namespace vndata::testutil;

namespace {

// Rows of the buffer's whole array, which an extract of that buffer gives.
int32_t Capacity(mxDataSet& ds, int32_t iBuffer) {
  Array2<float> a;
  bool qOK = false;
  ds.ExtractDataArrayBuffer(iBuffer, a, qOK);
  return qOK ? a.UBound(1) : -1;
}

// Column c of all rows, or an empty vector.
std::vector<float> Column(mxDataSet& ds, int32_t c) {
  Array<float> v;
  if (!ds.GetValues(c, v)) return {};
  return std::vector<float>(v.begin(), v.end());
}

std::vector<float> Range(float first, int32_t n) {
  std::vector<float> v;
  for (int32_t i = 0; i < n; ++i) v.push_back(first + static_cast<float>(i));
  return v;
}

}  // namespace

// ---- Dimensions -----------------------------------------------------------------------

TEST(DataSetDimensions, DimensionSetsColumnsRowsAndInitialised) {
  mxDataSet ds;
  ds.Dimension(3, 5);
  EXPECT_TRUE(ds.get_Initialised());
  EXPECT_EQ(ds.get_NumCols(), 3);
  EXPECT_EQ(ds.get_NumRows(), 5);
  EXPECT_EQ(Capacity(ds, 1), 5);
}

TEST(DataSetDimensions, DimensionWithoutRowsSetsOnlyTheColumnRecords) {
  mxDataSet ds;
  ds.Dimension(4);
  EXPECT_TRUE(ds.get_Initialised());
  EXPECT_EQ(ds.get_NumCols(), 4);
  EXPECT_EQ(ds.get_NumRows(), 0);
}

TEST(DataSetDimensions, DimensionBufferCapacityBelowOneMeansRows) {
  mxDataSet ds;
  bool qOK = false;
  ds.DimensionBuffer(1, 2, qOK, 7, 0);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Capacity(ds, 1), 7);
  ds.DimensionBuffer(1, 2, qOK, 7, 20);
  EXPECT_EQ(Capacity(ds, 1), 20);
  EXPECT_EQ(ds.get_NumRows(), 7);
}

TEST(DataSetDimensions, DimensionDataLeavesTheRowsInUse) {
  mxDataSet ds;
  bool qOK = false;
  ds.DimensionData(3, 6, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_TRUE(ds.get_Initialised());
  EXPECT_EQ(ds.get_NumCols(), 3);
  EXPECT_EQ(ds.get_NumRows(), 0);
  EXPECT_EQ(Capacity(ds, 1), 6);
}

TEST(DataSetDimensions, DimensionDataWithoutDataKeepsTheArray) {
  mxDataSet ds;
  Build(ds, 4, 2);
  bool qOK = false;
  ds.DimensionDataBuffer(1, 2, 9, qOK, false, true);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Capacity(ds, 1), 4);
  EXPECT_EQ(ds.get_NumRows(), 4);
}

TEST(DataSetDimensions, RedimensionGrowsRowsKeepingContents) {
  mxDataSet ds;
  Build(ds, 3, 2);
  ds.Redimension(5);
  EXPECT_EQ(ds.get_NumRows(), 5);
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{201, 202, 203, 0, 0}));
  EXPECT_TRUE(ds.get_IsDirty());
  ds.Redimension(2);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{101, 102}));
}

TEST(DataSetDimensions, RedimensionColumnsKeepsContentsAndRows) {
  mxDataSet ds;
  Build(ds, 3, 2);
  ds.RedimensionColumns(4);
  EXPECT_EQ(ds.get_NumCols(), 4);
  EXPECT_EQ(ds.get_NumRows(), 3);
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{201, 202, 203}));
  EXPECT_EQ(Column(ds, 4), (std::vector<float>{0, 0, 0}));
  ds.RedimensionColumns(1);
  EXPECT_EQ(ds.get_NumCols(), 1);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{101, 102, 103}));
}

TEST(DataSetDimensions, RedimensionColumnDataAfreshResetsTheRecords) {
  mxDataSet ds;
  Build(ds, 2, 2);
  bool qOK = false;
  ds.RedimensionColumnData(3, qOK, true);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumCols(), 3);
  std::string z = "x";
  EXPECT_TRUE(ds.GetAttribute(1, ATT_VARIABLE, z));
  EXPECT_EQ(z, "");
}

TEST(DataSetDimensions, RedimensionColumnDataKeepingOldRecords) {
  mxDataSet ds;
  Build(ds, 2, 2);
  bool qOK = false;
  ds.RedimensionColumnData(3, qOK, false);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumCols(), 3);
  std::string z;
  EXPECT_TRUE(ds.GetAttribute(2, ATT_VARIABLE, z));
  EXPECT_EQ(z, "V2");
  EXPECT_TRUE(ds.GetAttribute(3, ATT_VARIABLE, z));
  EXPECT_EQ(z, "");
}

TEST(DataSetDimensions, RedimensionAllBuffersArraySetsTheCount) {
  mxDataSet ds;
  ds.RedimensionAllBuffersArray(3, true);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 3);
}

TEST(DataSetDimensions, InitialiseColumnValuesBeyondCapacityFailsWithFieldsChanged) {
  mxDataSet ds;
  ds.Dimension(2, 3);
  bool qOK = true;
  ds.InitialiseColumnValues(Numbered(5, 2), qOK);
  EXPECT_FALSE(qOK);
  // The rows in use were already taken from the array.
  EXPECT_EQ(ds.get_NumRows(), 5);
}

// ---- Whole-array loads --------------------------------------------------------------------

TEST(DataSetLoad, OneByOneZeroMeansNothing) {
  mxDataSet ds;
  Array2<float> a(1, 1, 1, 1);
  a(1, 1) = 0.0f;
  bool qOK = true;
  ds.bInitialiseFrom2d(a, SimpleHeaders(1), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(ds.get_Initialised());
  EXPECT_EQ(ds.get_NumCols(), 0);
}

TEST(DataSetLoad, OneByOneValueBuildsAOneRowTable) {
  mxDataSet ds;
  Array2<float> a(1, 1, 1, 1);
  a(1, 1) = 1.5f;
  bool qOK = false;
  ds.bInitialiseFrom2d(a, SimpleHeaders(1), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumRows(), 1);
  EXPECT_EQ(ds.get_NumCols(), 1);
  float v = 0;
  EXPECT_TRUE(ds.GetValue(1, 1, v));
  EXPECT_EQ(v, 1.5f);
}

TEST(DataSetLoad, AnEmptyArrayFails) {
  mxDataSet ds;
  Array2<float> a;
  bool qOK = true;
  ds.bInitialiseFrom2d(a, SimpleHeaders(1), qOK);
  EXPECT_FALSE(qOK);
}

TEST(DataSetLoad, ValuesAttributesAndLimitsArrive) {
  mxDataSet ds;
  Build(ds, 4, 3);
  EXPECT_EQ(ds.get_NumRows(), 4);
  EXPECT_EQ(ds.get_NumCols(), 3);
  EXPECT_EQ(Column(ds, 3), (std::vector<float>{301, 302, 303, 304}));
  std::string z;
  EXPECT_TRUE(ds.GetAttribute(3, ATT_VARIABLE, z));
  EXPECT_EQ(z, "V3");
  float mn = 0, mx = 0;
  EXPECT_TRUE(ds.GetColMinMax(2, mn, mx));
  EXPECT_EQ(mn, 201.0f);
  EXPECT_EQ(mx, 204.0f);
}

TEST(DataSetLoad, InitialiseFrom2dTakesTextHeaders) {
  mxDataSet ds;
  Array<std::string> zHeaders(1, 2);
  zHeaders(1) = std::string(160, ' ') + "WOPR";
  zHeaders(2) = std::string(160, ' ') + "TIME";
  ds.let_DefaultX(0);
  bool qOK = false;
  ds.InitialiseFrom2d(Numbered(3, 2), zHeaders, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_FALSE(ds.get_IsDirty());
  EXPECT_EQ(ds.get_DefaultX(), 2);
  std::string z;
  EXPECT_TRUE(ds.GetAttribute(1, ATT_VARIABLE, z));
  EXPECT_EQ(z, "WOPR");
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{201, 202, 203}));
}

TEST(DataSetLoad, InitialiseFromByteStoreTakesPoolsAndPointers) {
  mxDataSet src;
  Build(src, 2, 3);
  AttributePools pools;
  bool qOK = false;
  src.GetByteStoreArray(pools, qOK);
  ASSERT_TRUE(qOK);
  // The stored pointer block: 24 bytes a column, as the records hold them.
  Array2<uint8_t> bPointers(1, 24, 1, 3);
  for (int32_t c = 1; c <= 3; ++c) {
    VECTORDATA v;
    for (int32_t id : kPackOrder) {
      int32_t p = -1;
      std::string z;
      src.GetAttribute(c, id, z);
      p = z.empty() ? -1 : pools(id)->FindString(z);
      setVECTORDATASingleAttributePointer(v, id, p);
    }
    std::memcpy(&bPointers(1, c), &v, 24);
  }
  mxDataSet ds;
  Array2<float> a(1, 1, 1, 1);  // 1-by-1 zero is data here: no test is made
  a(1, 1) = 0.0f;
  ds.InitialiseFromByteStore(a, pools, Array2<uint8_t>(1, 24, 1, 1), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumRows(), 1);

  mxDataSet ds3;
  Array2<float> b = Numbered(2, 3);
  ds3.InitialiseFromByteStore(b, pools, bPointers, qOK);
  ASSERT_TRUE(qOK);
  std::string z;
  EXPECT_TRUE(ds3.GetAttribute(2, ATT_VARIABLE, z));
  EXPECT_EQ(z, "V2");
  EXPECT_TRUE(ds3.GetAttribute(3, ATT_ORIGIN, z));
  EXPECT_EQ(z, "ORIG");
}

// ---- Appending ---------------------------------------------------------------------------

TEST(DataSetAppend, ExactlyTheFreeSpaceFillsTheBufferAndAddsNone) {
  mxDataSet ds;
  bool qOK = false;
  ds.DimensionBuffer(1, 2, qOK, 2, 10);
  ds.AddRowsToDatasetBuffer(Numbered(8, 2), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 1);
  EXPECT_EQ(ds.get_NumRows(), 10);
  float v = 0;
  ds.GetValue(10, 2, v);
  EXPECT_EQ(v, 208.0f);
}

TEST(DataSetAppend, RowsPastAFullBufferGoToANewBufferOf4096) {
  mxDataSet ds;
  Build(ds, 10, 2);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(4096, 2, 11), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 2);
  EXPECT_EQ(Capacity(ds, 2), 4096);
  EXPECT_EQ(ds.get_NumRows(), 4106);
}

TEST(DataSetAppend, Rows4097PastAFullBufferMakeABufferOfExactly4097) {
  mxDataSet ds;
  Build(ds, 10, 2);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(4097, 2, 11), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 2);
  EXPECT_EQ(Capacity(ds, 2), 4097);
  // The new buffer is full: one more row makes a third.
  ds.AddRowsToDatasetBuffer(Numbered(1, 2), qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 3);
}

TEST(DataSetAppend, SmallAppendsShareOneBuffer) {
  mxDataSet ds;
  Build(ds, 3, 2);
  bool qOK = false;
  for (int32_t k = 0; k < 5; ++k) ds.AddRowsToDatasetBuffer(Numbered(10, 2, 4 + 10 * k), qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 2);
  EXPECT_EQ(ds.get_NumRows(), 53);
  EXPECT_EQ(Column(ds, 1), Range(101, 53));
}

TEST(DataSetAppend, PartOfTheRowsFillTheLastBufferAndTheRestStartANewOne) {
  mxDataSet ds;
  bool qOK = false;
  ds.DimensionBuffer(1, 1, qOK, 2, 5);
  ds.SetValues(1, Floats({1, 2}), qOK);
  ds.AddRowsToDatasetBuffer(Block(6, 1, [](int32_t i, int32_t) { return 2.0f + i; }), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 2);
  EXPECT_EQ(ds.get_NumRows(), 8);
  EXPECT_EQ(Column(ds, 1), Range(1, 8));
}

TEST(DataSetAppend, FromAGivenRowOn) {
  mxDataSet ds;
  Build(ds, 2, 2);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(5, 2, 1), qOK, 4);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{201, 202, 204, 205}));
}

TEST(DataSetAppend, OneColumnTooFewChangesNothing) {
  mxDataSet ds;
  Build(ds, 3, 3);
  bool qOK = true;
  ds.AddRowsToDatasetBuffer(Numbered(2, 2), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(ds.get_NumRows(), 3);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 1);
}

TEST(DataSetAppend, AsColumnWithNoNewKeyAddsNothing) {
  mxDataSet ds;
  Build(ds, 3, 2);  // column 1 ends at 103
  bool qOK = true;
  ds.AddRowsToDatasetBuffer_AsColumn(Block(3, 2, [](int32_t i, int32_t) { return 100.0f + i; }), qOK, 1);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(ds.get_NumRows(), 3);
}

TEST(DataSetAppend, AsColumnAddsFromTheFirstLaterKey) {
  mxDataSet ds;
  Build(ds, 3, 2);  // column 1: 101, 102, 103
  bool qOK = false;
  // Keys 102..106: overlap of two rows, then three new ones.
  ds.AddRowsToDatasetBuffer_AsColumn(Block(5, 2, [](int32_t i, int32_t j) { return 100.0f * j + 1 + i; }),
                                     qOK, 1);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{101, 102, 103, 104, 105, 106}));
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{201, 202, 203, 204, 205, 206}));
}

TEST(DataSetAppend, AsColumnWithAllKeysNewAddsAll) {
  mxDataSet ds;
  Build(ds, 2, 1);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer_AsColumn(Block(2, 1, [](int32_t i, int32_t) { return 200.0f + i; }), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{101, 102, 201, 202}));
}

// ---- Row translation -------------------------------------------------------------------------

TEST(DataSetRows, TranslateWithOneBufferGivesTheRowUnchecked) {
  mxDataSet ds;
  Build(ds, 3, 1);
  int32_t b = 0, r = 0;
  bool qOK = false;
  ds.TranslateRowToBufferAndRow(99, b, r, qOK);
  EXPECT_EQ(b, 1);
  EXPECT_EQ(r, 99);
}

TEST(DataSetRows, TranslateReportsARowOfBufferOneInBufferTwo) {
  mxDataSet ds;
  Build(ds, 10, 1);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(10, 1, 11), qOK);
  ASSERT_EQ(ds.get_NumberOfBuffers(), 2);
  int32_t b = 0, r = 0;
  ds.TranslateRowToBufferAndRow(3, b, r, qOK);
  EXPECT_EQ(b, 2);
  EXPECT_EQ(r, 3 - (20 - 10));
  // With equal neighbours a row of buffer 2 is exact.
  ds.TranslateRowToBufferAndRow(12, b, r, qOK);
  EXPECT_EQ(b, 2);
  EXPECT_EQ(r, 2);
}

TEST(DataSetRows, TranslateCountsBackFromThePreviousBuffersRows) {
  mxDataSet ds;
  Build(ds, 10, 1);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(5, 1, 11), qOK);
  int32_t b = 0, r = 0;
  ds.TranslateRowToBufferAndRow(12, b, r, qOK);
  EXPECT_EQ(b, 2);
  // Row 12 is row 2 of buffer 2, but the previous buffer's 10 rows are used.
  EXPECT_EQ(r, 12 - (15 - 10));
}

TEST(DataSetRows, TranslateBeyondAllRowsLeavesMinusOne) {
  mxDataSet ds;
  Build(ds, 10, 1);
  bool qOK = true;
  ds.AddRowsToDatasetBuffer(Numbered(5, 1, 11), qOK);
  int32_t b = 0, r = 0;
  ds.TranslateRowToBufferAndRow(16, b, r, qOK);
  EXPECT_EQ(b, -1);
  EXPECT_EQ(r, -1);
  EXPECT_FALSE(qOK);
}

// ---- Cells ---------------------------------------------------------------------------------

TEST(DataSetCells, GetValueOfRowZeroReportsWhetherNullValueIsNonZero) {
  mxDataSet ds;
  Build(ds, 3, 1);
  float v = 42.0f;
  EXPECT_TRUE(ds.GetValue(0, 1, v));
  EXPECT_EQ(v, 42.0f);
  ds.let_NullValue(0.0);
  EXPECT_FALSE(ds.GetValue(0, 1, v));
  EXPECT_EQ(v, 42.0f);
}

TEST(DataSetCells, GetValueOfARowOfBufferOneInTwoBuffersGivesNoValue) {
  mxDataSet ds;
  Build(ds, 10, 1);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(5, 1, 11), qOK);
  float v = 7.0f;
  // Row 3 is reported at row -2 of buffer 2: no value, result NullValue <> 0.
  EXPECT_TRUE(ds.GetValue(3, 1, v));
  EXPECT_EQ(v, 7.0f);
}

TEST(DataSetCells, GetValueReadsTheBufferFoundAtTheRowAsGiven) {
  mxDataSet ds;
  Build(ds, 10, 1);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(10, 1, 11), qOK);
  float v = 0.0f;
  // Row 12 is found in buffer 2 and read there at row 12, not row 2.
  EXPECT_TRUE(ds.GetValue(12, 1, v));
  EXPECT_EQ(v, 0.0f);  // row 12 of buffer 2 is beyond its rows in use
  EXPECT_TRUE(ds.GetValueBuffer(2, 2, 1, v));
  EXPECT_EQ(v, 112.0f);
}

TEST(DataSetCells, GetValueBufferWithRowOrColumnZeroIsFalse) {
  mxDataSet ds;
  Build(ds, 3, 2);
  float v = 5.0f;
  EXPECT_FALSE(ds.GetValueBuffer(1, 0, 1, v));
  EXPECT_FALSE(ds.GetValueBuffer(1, 1, 0, v));
  EXPECT_EQ(v, 5.0f);
}

TEST(DataSetCells, ABadSubscriptWritesOneTraceLineAndLeavesTheOutput) {
  mxDataSet ds;
  Build(ds, 3, 2);
  LogCapture log;
  float v = 5.0f;
  EXPECT_FALSE(ds.GetValue(4, 1, v));
  EXPECT_EQ(v, 5.0f);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Subscript out of range (No.9) In [mxDataSet  (GetValueBuffer)] ");
}

TEST(DataSetCells, SetValueWritesBufferOneAtTheRawRow) {
  mxDataSet ds;
  Build(ds, 10, 1);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(10, 1, 11), qOK);
  LogCapture log;
  ds.SetValue(2, 1, -5.0f);
  EXPECT_EQ(Column(ds, 1)[1], -5.0f);
  EXPECT_TRUE(log.Lines().empty());
  // Row 12 would be buffer 2; buffer 1 has no row 12.
  ds.SetValue(12, 1, -6.0f);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Subscript out of range (No.9) In [mxDataSet  (SetValueBuffer)] ");
  EXPECT_EQ(Column(ds, 1)[11], 112.0f);
  EXPECT_TRUE(ds.get_IsDirty());
}

TEST(DataSetCells, SetValueBufferWithRowZeroDoesNothing) {
  mxDataSet ds;
  Build(ds, 2, 1);
  LogCapture log;
  ds.SetValueBuffer(1, 0, 1, 9.0f);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{101, 102}));
  EXPECT_TRUE(log.Lines().empty());
}

// ---- Columns -------------------------------------------------------------------------------

TEST(DataSetColumns, TwoBuffersGiveAllRowsThroughGetValuesInOrder) {
  mxDataSet ds;
  Build(ds, 10, 2);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(7, 2, 11), qOK);
  ASSERT_EQ(ds.get_NumberOfBuffers(), 2);
  EXPECT_EQ(Column(ds, 2), Range(201, 17));
}

TEST(DataSetColumns, TwoBuffersGiveAllRowsThroughExtractArrayInOrder) {
  mxDataSet ds;
  Build(ds, 10, 2);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(7, 2, 11), qOK);
  Array2<float> a;
  ds.ExtractArray(a, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(a.UBound(1), 17);
  ASSERT_EQ(a.UBound(2), 2);
  for (int32_t i = 1; i <= 17; ++i) {
    EXPECT_EQ(a(i, 1), 100.0f + i);
    EXPECT_EQ(a(i, 2), 200.0f + i);
  }
  EXPECT_EQ(ds.get_NumberOfBuffers(), 1);
}

TEST(DataSetColumns, ExtractGivesTheWholeArrayNotTheRowsInUse) {
  mxDataSet ds;
  Build(ds, 5, 1);
  bool qOK = false;
  ds.SetValues(1, Floats({1, 2}), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumRows(), 2);
  Array2<float> a;
  ds.ExtractDataArray(a, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(a.UBound(1), 5);
  EXPECT_EQ(a(2, 1), 2.0f);
  EXPECT_EQ(a(5, 1), 105.0f);
}

TEST(DataSetColumns, ExtractOfAnUninitialisedDataSetFails) {
  mxDataSet ds;
  Array2<float> a;
  bool qOK = true;
  ds.ExtractArray(a, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(a.IsAllocated());
}

TEST(DataSetColumns, MergeArraysMovesAllRowsIntoBufferOne) {
  mxDataSet ds;
  Build(ds, 4, 3);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(3, 3, 5), qOK);
  ds.AddRowsToDatasetBuffer(Numbered(5000, 3, 8), qOK);
  ASSERT_EQ(ds.get_NumberOfBuffers(), 3);
  ds.MergeArrays(qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 1);
  EXPECT_EQ(ds.get_NumRows(), 5007);
  EXPECT_EQ(Capacity(ds, 1), 5007);
  EXPECT_EQ(Column(ds, 3), Range(301, 5007));
}

TEST(DataSetColumns, SetValuesBufferTakesTheRowsInUseFromTheValues) {
  mxDataSet ds;
  Build(ds, 5, 2);
  bool qOK = false;
  ds.SetValuesBuffer(1, 2, Floats({7, 8, 9}), qOK, true);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumRows(), 3);
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{7, 8, 9}));
  float mn = 0, mx = 0;
  ds.GetColMinMax(2, mn, mx);
  EXPECT_EQ(mn, 7.0f);
  EXPECT_EQ(mx, 9.0f);
}

TEST(DataSetColumns, SetValuesBufferOfAnInvalidColumnIsTrueAndDoesNothing) {
  mxDataSet ds;
  Build(ds, 2, 1);
  bool qOK = false;
  ds.SetValuesBuffer(1, 5, Floats({1, 2, 3}), qOK, true);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumRows(), 2);
}

TEST(DataSetColumns, SetValuesOverTwoBuffersSplitsTheValues) {
  mxDataSet ds;
  Build(ds, 3, 2);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(2, 2, 4), qOK);
  ds.SetValues(1, Floats({1, 2, 3, 4, 5}), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 2);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{1, 2, 3, 4, 5}));
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{201, 202, 203, 204, 205}));
  float mn = 0, mx = 0;
  ds.GetColMinMax(1, mn, mx);
  EXPECT_EQ(mn, 1.0f);
  EXPECT_EQ(mx, 5.0f);
}

TEST(DataSetColumns, AddDataColumnToAnEmptyDataSet) {
  mxDataSet ds;
  bool qOK = false;
  ds.AddDataColumn(Floats({3, 1, 2}), Row({{ATT_VARIABLE, "WOPR"}, {ATT_ORIGIN, "P1"}}), qOK, 7);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumCols(), 1);
  EXPECT_EQ(ds.get_NumRows(), 3);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{3, 1, 2}));
  EXPECT_EQ(ds.GetCreationType(1), 7);
  std::string z;
  EXPECT_TRUE(ds.GetAttribute(1, ATT_VARIABLE, z));
  EXPECT_EQ(z, "WOPR");
  float mn = 0, mx = 0;
  EXPECT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 1.0f);
  EXPECT_EQ(mx, 3.0f);
  EXPECT_TRUE(ds.get_IsDirty());
}

TEST(DataSetColumns, AddDataColumnLongerThanTheRowsGrowsThem) {
  mxDataSet ds;
  Build(ds, 2, 2);
  bool qOK = false;
  ds.AddDataColumn(Floats({1, 2, 3, 4}), Row({{ATT_VARIABLE, "NEW"}}), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumCols(), 3);
  EXPECT_EQ(ds.get_NumRows(), 4);
  EXPECT_EQ(Column(ds, 1), (std::vector<float>{101, 102, 0, 0}));
  EXPECT_EQ(Column(ds, 3), (std::vector<float>{1, 2, 3, 4}));
}

TEST(DataSetColumns, AddDataColumnMergesBuffersFirst) {
  mxDataSet ds;
  Build(ds, 3, 1);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(2, 1, 4), qOK);
  ASSERT_EQ(ds.get_NumberOfBuffers(), 2);
  ds.AddDataColumn(Floats({5, 4, 3, 2, 1}), Row({{ATT_VARIABLE, "B"}}), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 1);
  EXPECT_EQ(Column(ds, 1), Range(101, 5));
  EXPECT_EQ(Column(ds, 2), (std::vector<float>{5, 4, 3, 2, 1}));
}

TEST(DataSetColumns, AddColumnLightFormExtendsOnlyTheRecords) {
  mxDataSet ds;
  Build(ds, 3, 1);
  bool qOK = false;
  ds.AddColumn(Floats({9, 8}), Row({{ATT_VARIABLE, "L"}}), qOK, 2, true);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumCols(), 2);
  EXPECT_TRUE(ds.get_qLoaded(2));
  EXPECT_EQ(ds.GetCreationType(2), 2);
  float mn = 0, mx = 0;
  EXPECT_TRUE(ds.GetColMinMax(2, mn, mx));
  EXPECT_EQ(mn, 8.0f);
  EXPECT_EQ(mx, 9.0f);
  // The buffers were not extended.
  Array2<float> a;
  ds.ExtractDataArrayBuffer(1, a, qOK);
  EXPECT_EQ(a.UBound(2), 2);
  EXPECT_EQ(a(1, 1), 101.0f);
}

TEST(DataSetColumns, ACreationTypeBeyond16BitsIsAnOverflow) {
  mxDataSet ds;
  LogCapture log;
  bool qOK = true;
  ds.AddDataColumn(Floats({1}), Row({}), qOK, 40000);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(ds.get_NumCols(), 0);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Overflow (No.6) In [mxDataSet  (AddColumn)] ");
}

// ---- Rows -----------------------------------------------------------------------------------

TEST(DataSetRowValues, OneRowAcrossAllColumns) {
  mxDataSet ds;
  Build(ds, 4, 3);
  Array<float> r;
  ASSERT_TRUE(ds.GetRowValues(2, r));
  ASSERT_EQ(r.UBound(), 3);
  EXPECT_EQ(r(1), 102.0f);
  EXPECT_EQ(r(3), 302.0f);
  EXPECT_FALSE(ds.GetRowValues(5, r));
  EXPECT_FALSE(ds.GetRowValues(0, r));
}

TEST(DataSetRowValues, ARangeOfRowsAcrossBuffers) {
  mxDataSet ds;
  Build(ds, 3, 2);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(3, 2, 4), qOK);
  Array2<float> r;
  ASSERT_TRUE(ds.GetRowValuesMulti(2, 5, r));
  ASSERT_EQ(r.UBound(1), 4);
  ASSERT_EQ(r.UBound(2), 2);
  for (int32_t i = 1; i <= 4; ++i) {
    EXPECT_EQ(r(i, 1), 101.0f + i);
    EXPECT_EQ(r(i, 2), 201.0f + i);
  }
  EXPECT_FALSE(ds.GetRowValuesMulti(5, 7, r));
}

TEST(DataSetRowValues, MaskedValues) {
  mxDataSet ds;
  Build(ds, 5, 2);
  Array<bool> mask(1, 5);
  mask(2) = mask(4) = mask(5) = true;
  Array<float> v;
  int32_t n = -1;
  bool qOK = false;
  ds.GetMaskedValues(2, mask, v, n, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(n, 3);
  EXPECT_EQ(v(1), 202.0f);
  EXPECT_EQ(v(2), 204.0f);
  EXPECT_EQ(v(3), 205.0f);
}

// ---- Addresses -------------------------------------------------------------------------------

TEST(DataSetAddresses, ValuesPtrReadsAWholeColumn) {
  mxDataSet ds;
  Build(ds, 4, 3);
  const float* p = reinterpret_cast<const float*>(ds.ValuesPtr(2));
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p[0], 201.0f);
  EXPECT_EQ(p[3], 204.0f);
  const float* q = reinterpret_cast<const float*>(ds.ValuesRowPtr(3, 2));
  EXPECT_EQ(*q, 302.0f);
  EXPECT_EQ(ds.ValuesPtr(0), 0);
  EXPECT_EQ(ds.ValuesPtr(4), 0);
}

TEST(DataSetAddresses, ValuesPtrMergesBuffersFirst) {
  mxDataSet ds;
  Build(ds, 4, 1);
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Numbered(3, 1, 5), qOK);
  const float* p = reinterpret_cast<const float*>(ds.ValuesPtr(1));
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(ds.get_NumberOfBuffers(), 1);
  for (int32_t i = 0; i < 7; ++i) EXPECT_EQ(p[i], 101.0f + i);
}

TEST(DataSetDimensions, OutOfMemoryWhileDimensioningIsOneTraceLine) {
  mxDataSet ds;
  Build(ds, 2, 3000);
  LogCapture log;
  ds.Redimension(2000000000);  // 24 TB of values
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Out of memory (No.7) In [mxDataSet  (ReDimensionBuffer)] ");
  EXPECT_EQ(ds.get_NumRows(), 2);
  EXPECT_EQ(Column(ds, 3000), (std::vector<float>{300001, 300002}));
}

TEST(DataSetAppend, ManyAppendedBuffersKeepTheirRowsThroughAMerge) {
  // 40 buffers of 4096 rows by 16 columns: more than one chunk of memory.
  mxDataSet ds;
  ds.Dimension(16, 1);
  bool qOK = false;
  for (int32_t k = 0; k < 40; ++k) {
    ds.AddRowsToDatasetBuffer(Numbered(4096, 16, 2 + 4096 * k), qOK);
    ASSERT_TRUE(qOK);
  }
  ASSERT_EQ(ds.get_NumberOfBuffers(), 41);
  EXPECT_EQ(ds.get_NumRows(), 1 + 40 * 4096);
  Array<float> v;
  ASSERT_TRUE(ds.GetValues(16, v));
  EXPECT_EQ(v(1), 0.0f);
  for (int32_t i = 2; i <= 1 + 40 * 4096; i += 997) ASSERT_EQ(v(i), 1600.0f + i) << i;
  ds.MergeArrays(qOK);
  ASSERT_TRUE(qOK);
  Array<float> w;
  ASSERT_TRUE(ds.GetValues(16, w));
  for (int32_t i = 1; i <= w.UBound(); ++i) ASSERT_EQ(w(i), v(i)) << i;
}
