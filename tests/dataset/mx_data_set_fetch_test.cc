// Fetch on demand on the data set: the location table and its flag word,
// the opening of the file, loading stored, derived and converted columns,
// dropping them, the events, and reads of files that are damaged or gone.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/dataset/fetch_test_util.h"
#include "vndata/platform/record_file.h"
#include "vndata/platform/sim_file_io.h"

using namespace vndata;
using namespace vndata::fetch_test;
using vndata::sim_test::BinaryFile;
using vndata::sim_test::TempDir;

namespace {

class Fetch : public ::testing::Test {
 protected:
  void SetUp() override {
    MessageLog::Shared().Clear();
    pSeq_ = f_.Ints("SEQNUM", {1});
    pPress_ = f_.Reals("PRESSURE", {100, 101, 102, 103, 104, 105});
    pSwat_ = f_.Reals("SWAT", {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f});
    pSgas_ = f_.Reals("SGAS", {0.05f, 0.1f, 0.15f, 0.2f, 0.25f, 0.3f});
    pActive_ = f_.Reals("PACT", {7, 8, 9, 10});
    pInte_ = f_.Ints("NUMS", {1, 2, 3, 4, 5, 6});
    pShort_ = f_.Reals("SHORT", {1, 2, 3});
    Write();
  }
  void TearDown() override { MessageLog::Shared().Clear(); }
  void Write() { record_test::WriteAllBytes(file_, f_.b); }

  bool Make(mxDataSet& ds, const std::vector<Column>& cols,
            const Array<int32_t>& iDQArray = Array<int32_t>(),
            const Array<float>& sUCFactors = Array<float>()) {
    return MakeFetchDataSet(ds, file_, cols, iDQArray, sUCFactors);
  }
  std::vector<Column> Basic() {
    return {Stored(pPress_, 6), Stored(pSwat_, 6), Stored(pSgas_, 6)};
  }
  static std::vector<float> Get(mxDataSet& ds, int32_t c) {
    Array<float> v;
    EXPECT_TRUE(ds.GetFODVector(c, v)) << "column " << c;
    return Values(v);
  }

  TempDir dir_;
  std::string file_ = dir_.File("CASE.UNRST");
  BinaryFile f_;
  int64_t pSeq_ = 0, pPress_ = 0, pSwat_ = 0, pSgas_ = 0, pActive_ = 0, pInte_ = 0, pShort_ = 0;
};

// ---- The location table ------------------------------------------------------------------

TEST_F(Fetch, AssignWithAnotherColumnCountChangesNothing) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  Array<float> v;
  ASSERT_TRUE(ds.GetFODVector(1, v));
  ASSERT_TRUE(ds.get_qLoaded(1));
  std::vector<Column> four = Basic();
  four.push_back(Stored(pInte_, 6, 1));
  bool qOK = true;
  ds.AssignFODPointers(Settings(), PosArray(four), qOK);
  EXPECT_FALSE(qOK);
  // The old table and the loaded column are as they were.
  EXPECT_TRUE(ds.get_qLoaded(1));
  EXPECT_EQ(ds.GetFODVarType(1), 0);
  qOK = true;
  ds.AssignFODPlusPointers(Settings(), PosArray(four), Array<int32_t>{1}, Array<float>{2.0f}, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(ds.get_qLoaded(1));
}

TEST_F(Fetch, AssignMakesEveryColumnUnloaded) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  Array<float> v;
  ASSERT_TRUE(ds.GetFODVector(2, v));
  bool qOK = false;
  ds.AssignFODPointers(Settings(), PosArray(Basic()), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_FALSE(ds.get_qLoaded(2));
  EXPECT_FALSE(ds.FetchOnDemandColumnLoaded(2));
}

TEST_F(Fetch, FileIndexOfOneEverywhereIsNotKept) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  ASSERT_TRUE(Make(ds, cols));
  for (int32_t c = 1; c <= 3; ++c) {
    int32_t index = -5;
    ds.GetFileIndex(c, index);
    EXPECT_EQ(index, 1);
  }
}

TEST_F(Fetch, FileIndexOfTwoAnywhereKeepsTheWholeRow) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[0].iFile = 0;
  cols[1].iFile = 1;
  cols[2].iFile = 2;
  ASSERT_TRUE(Make(ds, cols));
  int32_t index = -5;
  ds.GetFileIndex(1, index);
  EXPECT_EQ(index, 0);  // row 5 copied as it stands, 0 included
  ds.GetFileIndex(2, index);
  EXPECT_EQ(index, 1);
  ds.GetFileIndex(3, index);
  EXPECT_EQ(index, 2);
  ds.GetFileIndex(4, index);
  EXPECT_EQ(index, 1);  // no such column
}

TEST_F(Fetch, ShortSettingsArrayIsTracedUnderTheTableTag) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  bool qOK = true;
  ds.AssignFODPointers(Array<bool>{true, true, false}, PosArray(Basic()), qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(TraceLines().size(), 1u);
  EXPECT_EQ(TraceLines()[0],
            "Error:Subscript out of range (No.9) In [mx173DataStorage4 - mxDataSet (Code) "
            "(AssignFODPointers)] ");
}

// ---- The flag word -------------------------------------------------------------------------

TEST_F(Fetch, FlagAccessorsAnswerTheirDefaultsWithoutATable) {
  mxDataSet ds;
  bool qOK = false;
  ds.DimensionData(2, 1, qOK);
  int32_t a = 7, b = 7, n = 7;
  EXPECT_EQ(ds.GetFODVarType(1), -1);
  EXPECT_FALSE(ds.GetFODDerivedFlags(1, a, b, n));
  EXPECT_EQ(a, -1);
  EXPECT_EQ(b, -1);
  EXPECT_EQ(n, 0);
  EXPECT_FALSE(ds.GetFODDQLoaded(1));
  EXPECT_FALSE(ds.GetFODConverted(1));
  EXPECT_FALSE(ds.GetFODCompress(1));
  EXPECT_FALSE(ds.GetFODConvertFlags(1, a, n));
  EXPECT_EQ(a, -1);
  EXPECT_EQ(n, 0);
}

TEST_F(Fetch, DerivedFlagsOfAStoredColumnAreMinusOneMinusOneZero) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  int32_t iADQ = 5, iDQPtr = 5, nDQPars = 5;
  EXPECT_FALSE(ds.GetFODDerivedFlags(1, iADQ, iDQPtr, nDQPars));
  EXPECT_EQ(iADQ, -1);
  EXPECT_EQ(iDQPtr, -1);
  EXPECT_EQ(nDQPars, 0);
}

TEST_F(Fetch, FlagWordIsReadByField) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[0].e.iFlags = 3 | 8 | (2 << 5) | 256 | 512 | (7 << 16);  // DOUB, compressed, 2 factors at 7
  cols[1].e.iFlags = 4 | 32768;                                  // LOGI, second compression
  cols[2] = Derived(9, 11, 2, 6);
  cols[2].e.iFlags |= 1;
  ASSERT_TRUE(Make(ds, cols));
  EXPECT_EQ(ds.GetFODVarType(1), 3);
  EXPECT_EQ(ds.GetFODVarType(2), 4);
  EXPECT_EQ(ds.GetFODVarType(3), 1);
  EXPECT_TRUE(ds.GetFODCompress(1));
  EXPECT_TRUE(ds.GetFODCompress(2));
  EXPECT_FALSE(ds.GetFODCompress(3));
  EXPECT_TRUE(ds.GetFODDQLoaded(1));
  EXPECT_TRUE(ds.GetFODConverted(1));
  int32_t iConvPtr = 0, nConvPars = 0;
  EXPECT_TRUE(ds.GetFODConvertFlags(1, iConvPtr, nConvPars));
  EXPECT_EQ(iConvPtr, 7);
  EXPECT_EQ(nConvPars, 2);
  EXPECT_FALSE(ds.GetFODConvertFlags(2, iConvPtr, nConvPars));
  EXPECT_EQ(iConvPtr, -1);
  EXPECT_EQ(nConvPars, 0);
  int32_t iADQ = 0, iDQPtr = 0, nDQPars = 0;
  EXPECT_TRUE(ds.GetFODDerivedFlags(3, iADQ, iDQPtr, nDQPars));
  EXPECT_EQ(iADQ, 9);
  EXPECT_EQ(iDQPtr, 11);
  EXPECT_EQ(nDQPars, 2);
}

TEST_F(Fetch, AllFlagsSeeBitThreeOnlyAsCompression) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[0].e.iFlags = 2 | 32768;
  cols[1].e.iFlags = 2 | 8 | (1 << 5) | (4 << 16);
  ASSERT_TRUE(Make(ds, cols));
  int32_t iVarType = 0, iADQ = 0, iDQPtr = 0, nDQPars = 0, iConvPtr = 0, nConvPars = 0;
  bool qCompress = true, qDerived = true, qConvert = true, qOK = false;
  ds.GetAllFODFlags(1, iVarType, qCompress, qDerived, iADQ, iDQPtr, nDQPars, qConvert, iConvPtr,
                    nConvPars, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(iVarType, 2);
  EXPECT_FALSE(qCompress);  // bit 15 is not seen here
  EXPECT_TRUE(ds.GetFODCompress(1));
  EXPECT_FALSE(qDerived);
  EXPECT_FALSE(qConvert);
  ds.GetAllFODFlags(2, iVarType, qCompress, qDerived, iADQ, iDQPtr, nDQPars, qConvert, iConvPtr,
                    nConvPars, qOK);
  EXPECT_TRUE(qCompress);
  EXPECT_TRUE(qConvert);
  EXPECT_EQ(iConvPtr, 4);
  EXPECT_EQ(nConvPars, 1);
  qOK = true;
  ds.GetAllFODFlags(9, iVarType, qCompress, qDerived, iADQ, iDQPtr, nDQPars, qConvert, iConvPtr,
                    nConvPars, qOK);
  EXPECT_FALSE(qOK);
}

// ---- The file ------------------------------------------------------------------------------

TEST_F(Fetch, InitFODGivesEachSettingItsOwnNumber) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  bool qOK = false;
  // Settings 3 and 4 differ, so a swap left in place would show.
  ds.AssignFODPointers(Settings(false, true, true, false, true), PosArray(Basic()), qOK);
  ASSERT_TRUE(qOK);
  ds.let_Simulator("Eclipse");
  std::shared_ptr<RecordFile> file;
  std::shared_ptr<SimFileIO> io;
  ds.InitFOD(true, 1, file, io, false, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_TRUE(file && io);
  EXPECT_TRUE(file->IsOpen());
  EXPECT_FALSE(file->FileOption(1));  // the reader writes what the file is: binary
  EXPECT_TRUE(file->FileOption(2));
  EXPECT_TRUE(file->FileOption(3));
  EXPECT_FALSE(file->FileOption(4));
  EXPECT_EQ(file->UnitSize(), 8);
  EXPECT_EQ(file->RecordOption(), 0);
  EXPECT_TRUE(file->EclipseFile());
  EXPECT_EQ(io->get_EventHandler(), ds.get_IOEventHandler());
}

TEST_F(Fetch, InitFODKeepsTheFileOpenUnderTheSameName) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  std::shared_ptr<RecordFile> file;
  std::shared_ptr<SimFileIO> io;
  bool qOK = false;
  ds.InitFOD(true, 1, file, io, false, qOK);
  ASSERT_TRUE(qOK);
  RecordFile* first = file.get();
  SimFileIO* reader = io.get();
  ds.InitFOD(true, 2, file, io, false, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(file.get(), first);
  EXPECT_EQ(io.get(), reader);
  // Another name: both objects go and new ones open it.
  const std::string other = dir_.File("OTHER.UNRST");
  std::filesystem::copy_file(file_, other);
  ds.let_FileName(other);
  ds.InitFOD(true, 1, file, io, false, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(file->get_FileName(), other);
  EXPECT_FALSE(FileHeldOpen(file_));
}

TEST_F(Fetch, InitFODCloseKeepsTheReaderUnlessAsked) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  std::shared_ptr<RecordFile> file;
  std::shared_ptr<SimFileIO> io;
  bool qOK = false;
  ds.InitFOD(true, 1, file, io, false, qOK);
  ASSERT_TRUE(FileHeldOpen(file_));
  ds.InitFOD(false, 1, file, io, false, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(file, nullptr);
  EXPECT_NE(io, nullptr);
  EXPECT_FALSE(FileHeldOpen(file_));
  ds.InitFOD(false, 1, file, io, true, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(io, nullptr);
}

// ---- Stored columns ------------------------------------------------------------------------

TEST_F(Fetch, StoredColumnsReadAsRecorded) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Stored(pInte_, 6, 1));
  ASSERT_TRUE(Make(ds, cols));
  EXPECT_EQ(ds.get_NumRows(), 6);
  EXPECT_EQ(Get(ds, 1), (std::vector<float>{100, 101, 102, 103, 104, 105}));
  EXPECT_EQ(Get(ds, 4), (std::vector<float>{1, 2, 3, 4, 5, 6}));
  EXPECT_TRUE(ds.FetchOnDemandColumnLoaded(1));
  EXPECT_FALSE(ds.FetchOnDemandColumnLoaded(2));
  // The read closed the file behind it.
  EXPECT_FALSE(FileHeldOpen(file_));
}

TEST_F(Fetch, LoadFODVectorOfALoadedColumnDoesNothingAndSaysFalse) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  bool qOK = false;
  ds.LoadFODVector(1, qOK);
  ASSERT_TRUE(qOK);
  ds.LoadFODVector(1, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(ds.get_qLoaded(1));
}

TEST_F(Fetch, ColumnMapPutsTheRowsInItsOrder) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  ds.let_ColumnMap(Array<int32_t>{6, 5, 4, 3, 2, 1});
  EXPECT_EQ(Get(ds, 1), (std::vector<float>{105, 104, 103, 102, 101, 100}));
}

TEST_F(Fetch, ColumnMapOutsideTheRowsFailsTheLoadWithATrace) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  ds.let_ColumnMap(Array<int32_t>{1, 2, 3, 4, 5, 7});
  bool qOK = true;
  ds.LoadFODVector(1, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(ds.get_qLoaded(1));
  ASSERT_FALSE(TraceLines().empty());
  EXPECT_EQ(TraceLines()[0], "Error:Subscript out of range (No.9) In [mxDataSet (Code) (LoadAVector)] ");
}

TEST_F(Fetch, ConvertedColumnsTakeTheirFactorsOnLoad) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[0].e.iFlags = ConvertFlags(0, 1, 2);  // one factor: sUCFactors(2)
  cols[1].e.iFlags = ConvertFlags(0, 2, 3);  // two: sUCFactors(3), (4)
  cols[2].e.iFlags = ConvertFlags(0, 2, 5);  // a second factor of 0 counts as absent
  ds.let_UseNullVal(1);
  ds.let_NullValue(102.0);
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>(), Array<float>{9.0f, 2.0f, 10.0f, 0.5f, 3.0f, 0.0f}));
  // 102 is the null value: it is left alone.
  EXPECT_EQ(Get(ds, 1), (std::vector<float>{200, 202, 102, 206, 208, 210}));
  std::vector<float> swat = Get(ds, 2);
  const float raw[] = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(swat[static_cast<std::size_t>(i)], std::fmaf(raw[i], 10.0f, 0.5f));
  std::vector<float> sgas = Get(ds, 3);
  const float g[] = {0.05f, 0.1f, 0.15f, 0.2f, 0.25f, 0.3f};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(sgas[static_cast<std::size_t>(i)], 3.0f * g[i]);
  // Conversion never sets the converted bit itself.
  EXPECT_FALSE(ds.GetFODConverted(1));
}

TEST_F(Fetch, FactorsBeyondTheTableLeaveTheColumnAsRead) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[0].e.iFlags = ConvertFlags(0, 2, 2);  // needs sUCFactors(2..3), only 2 there
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>(), Array<float>{2.0f, 2.0f}));
  EXPECT_EQ(Get(ds, 1), (std::vector<float>{100, 101, 102, 103, 104, 105}));
}

TEST_F(Fetch, ColumnMarkedConvertedIsNotConvertedAgainUntilDropped) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[0].e.iFlags = ConvertFlags(0, 1, 1) | 512;
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>(), Array<float>{2.0f}));
  EXPECT_EQ(Get(ds, 1), (std::vector<float>{100, 101, 102, 103, 104, 105}));
  bool qOK = false;
  ds.DeleteAVector(1, qOK, true);
  EXPECT_TRUE(qOK);
  // The drop took bit 9 off: the next load converts.
  EXPECT_FALSE(ds.GetFODConverted(1));
  EXPECT_EQ(Get(ds, 1), (std::vector<float>{200, 202, 204, 206, 208, 210}));
}

TEST_F(Fetch, RowMaskReadsTheMaskedRows) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  bool qOK = false;
  ds.SetMask(true, Array<int32_t>{6, 2, 4}, 3, qOK);
  EXPECT_EQ(ds.RowCount(), 3);
  EXPECT_EQ(ds.get_NumRows(), 3);
  // The count of the uncompressed record stays; the output has the rows
  // the read delivered.
  EXPECT_EQ(Get(ds, 1), (std::vector<float>{105, 101, 103}));
  float v = 0;
  ds.LoadFODValue(2, 2, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FLOAT_EQ(v, 0.2f);
  // A loaded column's row 3 is the third row it holds.
  ds.LoadAValue(1, 3, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 103.0f);
}

TEST_F(Fetch, CompressedColumnKeepsItsReadLengthOnlyWhileLoaded) {
  mxDataSet ds;
  // Column 1: 4 active cells of a grid of 6. Columns 2 and 3 take 1 less
  // column 1 when its count equals theirs, 4 and 6.
  ASSERT_TRUE(Make(ds, {Stored(pActive_, 6, 8), Derived(0, 1, 0, 4), Derived(0, 1, 0, 6)}));
  bool qOK = false;
  ds.LoadFODVector(1, qOK);
  ASSERT_TRUE(qOK);
  // The full count was noted before the read shortened the entry to 4.
  EXPECT_EQ(ds.get_NumCellsUncompressed(), 6);
  EXPECT_EQ(Get(ds, 1), (std::vector<float>{7, 8, 9, 10}));
  EXPECT_EQ(Get(ds, 2), (std::vector<float>{1 - 7.0f, 1 - 8.0f, 1 - 9.0f, 1 - 10.0f}));
  EXPECT_EQ(Get(ds, 3), std::vector<float>(6, 1.0f));
  // Dropped, the entry takes NumCellsUncompressed, whatever it holds then:
  // a count of 3 is too few for the record of 4, and the read is refused.
  ds.SetNumCellsUncompressed(3);
  ds.DeleteAVector(1, qOK, true);
  ds.LoadFODVector(1, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(ds.get_qLoaded(1));
}

TEST_F(Fetch, CompressedCountIsTheFullCountAgainAfterADrop) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, {Stored(pActive_, 6, 8), Derived(0, 1, 0, 6)}));
  bool qOK = false;
  ds.LoadFODVector(1, qOK);
  ASSERT_TRUE(qOK);
  ds.DeleteAVector(1, qOK, true);
  // Loaded by the complement and compared before it goes again: 4 against
  // 6, so nothing is subtracted; the count is 6 once more afterwards.
  EXPECT_EQ(Get(ds, 2), std::vector<float>(6, 1.0f));
  ds.SetNumCellsUncompressed(0);
  ds.LoadFODVector(1, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumCellsUncompressed(), 6);
}

TEST_F(Fetch, RowCountOfAllCompressedColumnsIsMinusOne) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, {Stored(pActive_, 6, 8), Stored(pPress_, 6, 32768)}));
  EXPECT_EQ(ds.RowCount(), -1);
  EXPECT_EQ(ds.get_NumRows(), -1);
}

TEST_F(Fetch, RowCountIsTheLongestUncompressedColumn) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, {Stored(pShort_, 3), Stored(pPress_, 6), Stored(pActive_, 9, 8)}));
  EXPECT_EQ(ds.RowCount(), 6);
}

// ---- Derived columns ------------------------------------------------------------------------

TEST_F(Fetch, DerivedColumnIsComputedFromItsArgumentsWhichGoAgain) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(6, 2, 2, 6));  // SWAT + SGAS, arguments iDQArray(2..3)
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>{1, 2, 3}));
  auto rec = Listen(ds);
  std::vector<float> sum = Get(ds, 4);
  const float w[] = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f};
  const float g[] = {0.05f, 0.1f, 0.15f, 0.2f, 0.25f, 0.3f};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(sum[static_cast<std::size_t>(i)], (0.0f + w[i]) + g[i]);
  EXPECT_TRUE(ds.get_qLoaded(4));
  EXPECT_FALSE(ds.get_qLoaded(2));
  EXPECT_FALSE(ds.get_qLoaded(3));
  EXPECT_EQ(rec->Count("FODDataUnloaded"), 2);
}

TEST_F(Fetch, ArgumentLoadedBeforeStaysLoaded) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(4, 1, 2, 6));  // PRESSURE / SWAT
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>{1, 2}));
  bool qOK = false;
  ds.LoadFODVector(1, qOK);
  ASSERT_TRUE(qOK);
  std::vector<float> ratio = Get(ds, 4);
  EXPECT_EQ(ratio[0], 100.0f / 0.1f);
  EXPECT_TRUE(ds.get_qLoaded(1));
  EXPECT_FALSE(ds.get_qLoaded(2));
}

TEST_F(Fetch, DerivedColumnWithAnUnreadableArgumentFailsAndTriesAgain) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[1] = Stored(pSwat_ + 3, 6);  // a position inside a record
  cols.push_back(Derived(6, 1, 2, 6));
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>{1, 2}));
  bool qOK = true;
  ds.LoadFODVector(4, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(ds.get_qLoaded(4));
  EXPECT_FALSE(ds.get_qLoaded(1));  // the argument read for it went again
  EXPECT_TRUE(TraceLines().empty());
}

TEST_F(Fetch, DerivedColumnWithoutArgumentTableCompletesWithFalse) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(6, 5, 2, 6));  // run 5..6 beyond the array of 3
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>{1, 2, 3}));
  auto rec = Listen(ds);
  bool qOK = true;
  ds.LoadAVector(4, qOK, true);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(ds.get_qLoaded(4));
  // The completion ran: the host was told of the column all the same.
  EXPECT_EQ(rec->Count("FODDataTVKey"), 1);
  EXPECT_EQ(rec->Count("FODDataLoaded"), 0);
}

TEST_F(Fetch, DerivedColumnAlreadyComputedCompletesWithFalse) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(6, 1, 2, 6));
  cols[3].e.iFlags |= 256;
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>{1, 2}));
  auto rec = Listen(ds);
  bool qOK = true;
  ds.LoadAVector(4, qOK, true);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(ds.get_qLoaded(4));
  EXPECT_EQ(rec->lines, (std::vector<std::string>{"FODDataTVKey  4"}));
  float v = 0;
  ds.LoadAValue(4, 1, v, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(Fetch, ComplementIsOneLessItsOperands) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(0, 2, 3, 6));  // 1 - SWAT - SGAS
  ASSERT_TRUE(Make(ds, cols));
  std::vector<float> so = Get(ds, 4);
  const float w[] = {0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f};
  const float g[] = {0.05f, 0.1f, 0.15f, 0.2f, 0.25f, 0.3f};
  for (int i = 0; i < 6; ++i) {
    const float step = 1.0f - w[i];
    EXPECT_EQ(so[static_cast<std::size_t>(i)], step - g[i]);
  }
  EXPECT_FALSE(ds.get_qLoaded(2));
  EXPECT_FALSE(ds.get_qLoaded(3));
}

TEST_F(Fetch, ComplementWhoseOperandsDifferInLengthKeepsOneEverywhere) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Stored(pShort_, 3));
  cols.push_back(Derived(0, 4, 4, 6));  // both operands of 3 values
  ASSERT_TRUE(Make(ds, cols));
  EXPECT_EQ(Get(ds, 5), std::vector<float>(6, 1.0f));
  EXPECT_TRUE(ds.get_qLoaded(5));
}

TEST_F(Fetch, ComplementWithBothOperandsInvalidIsOneAndLoaded) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(0, 0, 99, 6));
  ASSERT_TRUE(Make(ds, cols));
  bool qOK = false;
  ds.LoadFODVector(4, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(ds.get_qLoaded(4));
  EXPECT_EQ(Get(ds, 4), std::vector<float>(6, 1.0f));
}

TEST_F(Fetch, DerivedColumnNamingItselfFailsWithoutRecursing) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(0, 4, 2, 6));
  cols.push_back(Derived(6, 1, 1, 6));  // iDQArray(1) is column 5 itself
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>{5}));
  bool qOK = true;
  ds.LoadFODVector(4, qOK);
  EXPECT_FALSE(qOK);
  ds.LoadFODVector(5, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(ds.get_qLoaded(5));
}

TEST_F(Fetch, LoadAValueOfADerivedColumnFillsTheColumnNotTheValue) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(10, 1, 2, 6));  // PRESSURE * SWAT
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>{1, 2}));
  float v = -7.0f;
  bool qOK = false;
  ds.LoadFODValue(4, 3, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, -7.0f);
  EXPECT_FALSE(ds.get_qLoaded(4));
  // The arguments were not dropped on this path.
  EXPECT_TRUE(ds.get_qLoaded(1));
  EXPECT_TRUE(ds.get_qLoaded(2));
  // The column's own values hold the product, though it is not loaded:
  // a limits pass over loaded columns passes it over.
  bool q = false;
  ds.InitialiseColumnLimitsFOD(q, 4);
  float mn = 0, mx = 0;
  EXPECT_TRUE(q);
  ds.LoadFODVector(4, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_TRUE(ds.GetColMinMax(4, mn, mx));
  EXPECT_EQ(mn, 100.0f * 0.1f);
  EXPECT_EQ(mx, 105.0f * 0.6f);
}

TEST_F(Fetch, LoadAValueOfTheComplementSubtractsOperandValues) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(0, 2, 3, 6));
  ASSERT_TRUE(Make(ds, cols));
  float v = 0;
  bool qOK = false;
  ds.LoadFODValue(4, 5, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, (1.0f - 0.5f) - 0.25f);
  EXPECT_FALSE(ds.get_qLoaded(4));
  EXPECT_FALSE(ds.get_qLoaded(2));
}

TEST_F(Fetch, UnitRuleReachedFromALoadGivesZeros) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols.push_back(Derived(7, 1, 1, 6));
  ASSERT_TRUE(Make(ds, cols, Array<int32_t>{1}));
  EXPECT_EQ(Get(ds, 4), std::vector<float>(6, 0.0f));
}

// ---- Dropping ------------------------------------------------------------------------------

TEST_F(Fetch, DeleteAVectorTakesBitsEightAndNineOff) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[0].e.iFlags = 256 | 512 | 2;
  ASSERT_TRUE(Make(ds, cols));
  bool qOK = false;
  ds.LoadFODVector(1, qOK);
  ASSERT_TRUE(qOK);
  ds.DeleteAVector(1, qOK, true);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(ds.GetFODDQLoaded(1));
  EXPECT_FALSE(ds.GetFODConverted(1));
  EXPECT_EQ(ds.GetFODVarType(1), 2);
}

TEST_F(Fetch, DeleteWithoutUnloadKeepsTheColumnCountedLoaded) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  auto rec = Listen(ds);
  bool qOK = false;
  ds.LoadFODVector(1, qOK);
  rec->lines.clear();
  ds.DeleteAVector(1, qOK, false);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(ds.get_qLoaded(1));
  EXPECT_TRUE(rec->lines.empty());
  ds.DeleteAVector(2, qOK, true);  // not loaded: nothing, still true
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(rec->lines.empty());
}

TEST_F(Fetch, DeleteFODVectorActsOnlyOnFetchOnDemand) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  bool qOK = false;
  ds.LoadFODVector(1, qOK);
  ds.let_FetchOnDemandActive(false);
  ds.DeleteFODVector(1, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(ds.get_qLoaded(1));
  ds.let_FetchOnDemandActive(true);
  ds.DeleteFODVector(1, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(ds.get_qLoaded(1));
}

// ---- Events --------------------------------------------------------------------------------

TEST_F(Fetch, LoadTellsTheHostByTreeKeyAndPosition) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  ds.let_Index(3);
  ds.let_DataRootUnique("ROOT\\CASE");
  ds.SetTreeViewPath(2, "X\\Y");
  auto rec = Listen(ds);
  Array<float> v;
  ASSERT_TRUE(ds.GetFODVector(2, v));
  const std::string key = ds.TreeViewPath(2);
  EXPECT_FALSE(key.empty());
  EXPECT_EQ(rec->lines, (std::vector<std::string>{"FODDataTVKey " + key + " 2", "FODDataLoaded 3 2"}));
}

// A failed single read leaves the data set's own file open, so that the
// steps that read through it can be called directly.
void OpenOwnFile(mxDataSet& ds, const std::string& zFile) {
  float v = 0;
  bool qOK = true;
  ds.LoadFODValue(1, 0, v, qOK);
  ASSERT_FALSE(qOK);
  ASSERT_TRUE(FileHeldOpen(zFile));
}

TEST_F(Fetch, LoadWithoutEventTellsNothingButStillClearsTheLimits) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  auto rec = Listen(ds);
  OpenOwnFile(ds, file_);
  ds.SetColMinMax(2, 1.0f, 2.0f);
  bool qOK = false;
  ds.LoadAVector(2, qOK, false);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(rec->lines.empty());
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(2, mn, mx));
  EXPECT_EQ(mn, 0.1f);
  EXPECT_EQ(mx, 0.6f);
  // Loaded already: true at once, and nothing told.
  ds.LoadAVector(2, qOK, true);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(rec->lines.empty());
}

TEST_F(Fetch, GetAVectorNotifiesTheColumnItLoaded) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  ds.let_Index(7);
  auto rec = Listen(ds);
  OpenOwnFile(ds, file_);
  Array<float> v;
  bool qOK = false;
  ds.GetAVector(99, v, qOK);
  EXPECT_TRUE(qOK);  // an invalid column is no failure here
  EXPECT_FALSE(v.IsAllocated());
  ds.GetAVector(2, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(v), (std::vector<float>{0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f}));
  EXPECT_EQ(rec->lines, (std::vector<std::string>{"FODDataTVKey  2", "FODDataLoaded 7 2",
                                                  "Notify GETAVECTOR:2"}));
  rec->lines.clear();
  ds.GetAVector(2, v, qOK);  // loaded: a copy and no event
  EXPECT_TRUE(rec->lines.empty());
  EXPECT_EQ(v.UBound(), 6);
}

TEST_F(Fetch, PassThroughReadIsInvisibleButForTheDrop) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  ds.let_DeleteAfterFetch(true);
  bool qOK = false;
  ds.LoadFODVector(1, qOK);  // loaded before the reads below
  ASSERT_TRUE(qOK);
  auto rec = Listen(ds);
  Array<float> v;
  ASSERT_TRUE(ds.GetFODVector(1, v));
  EXPECT_TRUE(ds.get_qLoaded(1));
  ASSERT_TRUE(ds.GetFODVector(2, v));
  EXPECT_FALSE(ds.get_qLoaded(2));
  EXPECT_EQ(Values(v), (std::vector<float>{0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f}));
  EXPECT_EQ(rec->Count("FODDataTVKey"), 0);
  EXPECT_EQ(rec->Count("FODDataLoaded"), 0);
  EXPECT_EQ(rec->Count("FODDataUnloaded"), 1);
  // The standing wish came back for the next read.
  ASSERT_TRUE(ds.GetFODValues(3, v));
  EXPECT_FALSE(ds.get_qLoaded(3));
}

TEST_F(Fetch, GetFODValueLeavesTheWorkingWishOff) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  ds.let_DeleteAfterFetch(true);
  float v = 0;
  bool qOK = false;
  ds.GetFODValue(2, 1, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 101.0f);
  // Not reset from the standing wish: the next whole read keeps its column.
  Array<float> out;
  ASSERT_TRUE(ds.GetFODVector(2, out));
  EXPECT_TRUE(ds.get_qLoaded(2));
  // That read reset it, so the one after drops again.
  ASSERT_TRUE(ds.GetFODVector(3, out));
  EXPECT_FALSE(ds.get_qLoaded(3));
}

// ---- Bad input -----------------------------------------------------------------------------

TEST_F(Fetch, PositionAtNoRecordFailsAndTheNextReadTriesAgain) {
  mxDataSet ds;
  std::vector<Column> cols = Basic();
  cols[0] = Stored(pPress_ + 20, 6);
  ASSERT_TRUE(Make(ds, cols));
  Array<float> v{42.0f};
  EXPECT_FALSE(ds.GetFODVector(1, v));
  EXPECT_EQ(Values(v), std::vector<float>{42.0f});
  EXPECT_FALSE(ds.get_qLoaded(1));
  EXPECT_TRUE(TraceLines().empty());
  // The file stays open after the failure.
  EXPECT_TRUE(FileHeldOpen(file_));
  // A table with the right position reads it.
  bool qOK = false;
  ds.AssignFODPointers(Settings(), PosArray(Basic()), qOK);
  ASSERT_TRUE(ds.GetFODVector(1, v));
  EXPECT_EQ(v(1), 100.0f);
}

TEST_F(Fetch, RecordOfAnotherLengthFails) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, {Stored(pPress_, 7), Stored(pPress_, 6, 1)}));
  Array<float> v;
  EXPECT_FALSE(ds.GetFODVector(1, v));
  EXPECT_FALSE(ds.get_qLoaded(1));
  // A flag word naming another type than the record's is refused too.
  EXPECT_FALSE(ds.GetFODVector(2, v));
  // So is a single value of it, which is left as it was.
  float s = 3.0f;
  bool qOK = true;
  ds.LoadFODValue(1, 2, s, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(s, 3.0f);
  EXPECT_TRUE(TraceLines().empty());
}

TEST_F(Fetch, TruncatedFileFailsAndTheNextReadTriesAgain) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  std::vector<uint8_t> cut(f_.b.begin(), f_.b.begin() + static_cast<std::ptrdiff_t>(pSwat_ + 30));
  record_test::WriteAllBytes(file_, cut);
  Array<float> v;
  EXPECT_FALSE(ds.GetFODVector(2, v));
  EXPECT_FALSE(ds.get_qLoaded(2));
  EXPECT_FALSE(ds.GetFODVector(3, v));
  EXPECT_TRUE(TraceLines().empty());
  // The failed reads kept the file open; it is opened afresh once the file
  // on disk is no longer the one that was opened.
  ASSERT_TRUE(FileHeldOpen(file_));
  Write();
  ASSERT_TRUE(ds.GetFODVector(2, v));
  EXPECT_EQ(v(6), 0.6f);
  ASSERT_TRUE(ds.GetFODVector(3, v));
  EXPECT_EQ(v(1), 0.05f);
  ASSERT_TRUE(ds.GetFODVector(1, v));
}

TEST_F(Fetch, FileRemovedAfterTheDataSetWasBuiltFailsUntilItIsBack) {
  mxDataSet ds;
  ASSERT_TRUE(Make(ds, Basic()));
  std::filesystem::remove(file_);
  Array<float> v;
  EXPECT_FALSE(ds.GetFODVector(1, v));
  EXPECT_FALSE(ds.get_qLoaded(1));
  float s = 0;
  bool qOK = true;
  ds.LoadFODValue(2, 1, s, qOK);
  EXPECT_FALSE(qOK);
  Write();
  ASSERT_TRUE(ds.GetFODVector(1, v));
  EXPECT_EQ(v(6), 105.0f);
  EXPECT_TRUE(TraceLines().empty());
}

}  // namespace
