// Grid names, the source file list, the row and column lists, the reset of
// the selections and the texts of volumetric calculations.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/platform/byte_store.h"

namespace vndata {
namespace {

using testutil::Build;
using testutil::LogCapture;

Array<uint8_t> Bytes(const std::string& z) {
  Array<uint8_t> b(1, static_cast<int32_t>(z.size()));
  for (std::size_t i = 0; i < z.size(); ++i) b(static_cast<int32_t>(i) + 1) = static_cast<uint8_t>(z[i]);
  return b;
}

std::vector<std::string> Names(const mxDataSet& ds) {
  Array<std::string> z;
  bool qOK = false;
  ds.GetGridNames(z, qOK);
  EXPECT_TRUE(qOK);
  std::vector<std::string> out;
  for (const std::string& s : z) out.push_back(s);
  return out;
}

std::vector<int32_t> Values(const Array<int32_t>& a) { return std::vector<int32_t>(a.begin(), a.end()); }

// ---- Grid names ---------------------------------------------------------------------------

TEST(DataSetGridNames, ANewDataSetHasOneEmptyNameAndGivesNoneByRow) {
  mxDataSet ds;
  EXPECT_EQ(Names(ds), std::vector<std::string>({""}));
  std::string z = "x";
  bool qOK = true;
  ds.GetGridName(1, z, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(z, "");
}

TEST(DataSetGridNames, TwoNamesWithoutATrailingBlankGiveOneName) {
  mxDataSet ds;
  bool qOK = false;
  ds.SetGridNames(Bytes("FIELD LGR1"), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Names(ds), std::vector<std::string>({"FIELD"}));
}

TEST(DataSetGridNames, TwoNamesWithATrailingBlankGiveTwoNames) {
  mxDataSet ds;
  bool qOK = false;
  ds.SetGridNames(Bytes("FIELD LGR1 "), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Names(ds), std::vector<std::string>({"FIELD", "LGR1"}));
}

TEST(DataSetGridNames, ATwentyCharacterNameKeepsItsFirstSixteen) {
  mxDataSet ds;
  bool qOK = false;
  ds.SetGridNames(Bytes("ABCDEFGHIJKLMNOPQRST X "), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Names(ds), std::vector<std::string>({"ABCDEFGHIJKLMNOP", "X"}));
}

TEST(DataSetGridNames, BytesWithNoBlankAreOneNameOfAtMostSixteen) {
  mxDataSet ds;
  bool qOK = false;
  ds.SetGridNames(Bytes("ABCDEFGHIJKLMNOPQRST"), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Names(ds), std::vector<std::string>({"ABCDEFGHIJKLMNOP"}));
}

TEST(DataSetGridNames, TwoBlanksInARowMakeAnEmptyName) {
  mxDataSet ds;
  bool qOK = false;
  ds.SetGridNames(Bytes("A  B "), qOK);
  EXPECT_EQ(Names(ds), std::vector<std::string>({"A", "", "B"}));
}

TEST(DataSetGridNames, ByRowTheLastNameIsNeverGiven) {
  mxDataSet ds;
  bool qOK = false;
  ds.SetGridNames(Bytes("G1 G2 G3 "), qOK);
  std::string z;
  ds.GetGridName(1, z, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(z, "G1");
  ds.GetGridName(2, z, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(z, "G2");
  z = "kept?";
  ds.GetGridName(3, z, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(z, "");
  ds.GetGridName(0, z, qOK);
  EXPECT_FALSE(qOK);
}

TEST(DataSetGridNames, StringsAreCutToSixteenAndGivenBackTrimmed) {
  mxDataSet ds;
  Array<std::string> z{"  LGR A ", "ABCDEFGHIJKLMNOPQRST", ""};
  bool qOK = false;
  ds.SetGridNamesString(z, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Names(ds), std::vector<std::string>({"LGR A", "ABCDEFGHIJKLMNOP", ""}));
  std::string one;
  ds.GetGridName(1, one, qOK);
  EXPECT_EQ(one, "LGR A");
}

TEST(DataSetGridNames, StringsCountToTheUpperBound) {
  mxDataSet ds;
  Array<std::string> z(0, 2);  // element 0 lies below the names
  z(0) = "ZERO";
  z(1) = "ONE";
  z(2) = "TWO";
  bool qOK = false;
  ds.SetGridNamesString(z, qOK);
  EXPECT_EQ(Names(ds), std::vector<std::string>({"ONE", "TWO"}));
  Array<std::string> none(0, 0);
  ds.SetGridNamesString(none, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Names(ds), std::vector<std::string>({""}));
}

TEST(DataSetGridNames, AnUnallocatedArrayIsTracedAndKeepsTheNames) {
  mxDataSet ds;
  bool qOK = false;
  ds.SetGridNames(Bytes("G1 G2 "), qOK);
  LogCapture log;
  ds.SetGridNames(Array<uint8_t>(), qOK);
  EXPECT_FALSE(qOK);
  ds.SetGridNamesString(Array<std::string>(), qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log.Lines().size(), 2u);
  EXPECT_EQ(log.Lines()[0], "Error:Subscript out of range (No.9) In [mxDataSet  (SetGridNames)] ");
  EXPECT_EQ(log.Lines()[1],
            "Error:Subscript out of range (No.9) In [mxDataSet  (SetGridNamesString)] ");
  EXPECT_EQ(Names(ds), std::vector<std::string>({"G1", "G2"}));
}

// ---- Source files -------------------------------------------------------------------------------

TEST(DataSetFileList, WithoutAListEveryColumnReadsFileName) {
  mxDataSet ds;
  Build(ds, 3, 2);
  ds.let_FileName("CASE.SUM");
  EXPECT_EQ(ds.GetFileName(1), "CASE.SUM");
  EXPECT_EQ(ds.GetFileName(2), "CASE.SUM");
  EXPECT_EQ(ds.GetFileName(3), "");  // not a column
  EXPECT_EQ(ds.GetFileName(0), "");
  int32_t index = 0;
  ds.GetFileIndex(2, index);
  EXPECT_EQ(index, 1);
}

TEST(DataSetFileList, TheListIsTakenOverAndNamesTheColumnsFile) {
  mxDataSet ds;
  Build(ds, 3, 2);
  ds.let_FileName("CASE.SUM");
  auto files = std::make_shared<ByteStore>();
  files->AddString("CASE.UNSMRY");
  files->AddString("CASE_2.UNSMRY");
  bool qOK = false;
  ds.SetFileList(files, 2, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(files, nullptr);
  // Without a file a column, every column lies in the first file.
  EXPECT_EQ(ds.GetFileName(1), "CASE.UNSMRY");
  EXPECT_EQ(ds.GetFileName(2), "CASE.UNSMRY");
  EXPECT_EQ(ds.GetFileName(5), "");
}

TEST(DataSetFileList, AListWithoutTheCellGivesTheEmptyName) {
  mxDataSet ds;
  Build(ds, 2, 1);
  auto files = std::make_shared<ByteStore>();
  bool qOK = false;
  ds.SetFileList(files, 1, qOK);
  EXPECT_EQ(ds.GetFileName(1), "");
}

TEST(DataSetFileList, ACountOfZeroKeepsFileName) {
  mxDataSet ds;
  Build(ds, 2, 1);
  ds.let_FileName("A.DAT");
  auto files = std::make_shared<ByteStore>();
  files->AddString("B.DAT");
  bool qOK = false;
  ds.SetFileList(files, 0, qOK);
  EXPECT_EQ(files, nullptr);
  EXPECT_EQ(ds.GetFileName(1), "A.DAT");
}

// ---- Row and column lists ----------------------------------------------------------------------------

TEST(DataSetRowList, AShorterListIsKeptInTheCallersOrder) {
  mxDataSet ds;
  Build(ds, 5, 2);
  bool qOK = false;
  ds.SetRowList(Array<int32_t>{4, 1, 3, 9}, 3, qOK);
  EXPECT_TRUE(qOK);
  Array<int32_t> rows;
  int32_t n = -1;
  ds.GetRowList(rows, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 3);
  EXPECT_EQ(Values(rows), std::vector<int32_t>({4, 1, 3}));
}

TEST(DataSetRowList, AListAsLongAsNumRowsLeavesNoList) {
  mxDataSet ds;
  Build(ds, 5, 2);
  ASSERT_EQ(ds.get_NumRows(), 5);
  bool qOK = false;
  ds.SetRowList(Array<int32_t>{1, 2}, 2, qOK);
  ds.SetRowList(Array<int32_t>{5, 4, 3, 2, 1}, 5, qOK);
  EXPECT_TRUE(qOK);
  Array<int32_t> rows{7};
  int32_t n = -1;
  ds.GetRowList(rows, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(Values(rows), std::vector<int32_t>({7}));  // untouched
}

TEST(DataSetRowList, LongerOrEmptyListsLeaveNoList) {
  mxDataSet ds;
  Build(ds, 3, 1);
  bool qOK = false;
  for (int32_t n : {4, 0, -1}) {
    ds.SetRowList(Array<int32_t>{1}, 1, qOK);
    ds.SetRowList(Array<int32_t>{1, 2, 3, 1}, n, qOK);
    EXPECT_TRUE(qOK);
    int32_t nOut = -1;
    Array<int32_t> rows;
    ds.GetRowList(rows, nOut, qOK);
    EXPECT_EQ(nOut, 0) << n;
  }
}

TEST(DataSetRowList, ACountBeyondTheArrayIsTraced) {
  mxDataSet ds;
  Build(ds, 5, 1);
  LogCapture log;
  bool qOK = true;
  ds.SetRowList(Array<int32_t>{2}, 3, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Subscript out of range (No.9) In [mxDataSet  (SetRowList)] ");
}

TEST(DataSetRowList, ThePropertyIsTheListAsAValue) {
  mxDataSet ds;
  Build(ds, 4, 1);
  EXPECT_FALSE(ds.get_RowList().IsAllocated());
  ds.let_RowList(Array<int32_t>{2, 3});
  EXPECT_EQ(Values(ds.get_RowList()), std::vector<int32_t>({2, 3}));
  ds.let_RowList(Array<int32_t>{1, 2, 3, 4});
  EXPECT_FALSE(ds.get_RowList().IsAllocated());
}

TEST(DataSetColumnList, TheRuleStandsAgainstNumCols) {
  mxDataSet ds;
  Build(ds, 2, 3);
  bool qOK = false;
  ds.SetColumnList(Array<int32_t>{3, 1}, 2, qOK);
  EXPECT_TRUE(qOK);
  Array<int32_t> cols;
  int32_t n = 0;
  ds.GetColumnList(cols, n, qOK);
  EXPECT_EQ(n, 2);
  EXPECT_EQ(Values(cols), std::vector<int32_t>({3, 1}));
  EXPECT_EQ(Values(ds.get_ColumnList()), std::vector<int32_t>({3, 1}));
  ds.SetColumnList(Array<int32_t>{3, 1, 2}, 3, qOK);
  ds.GetColumnList(cols, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  ds.let_ColumnList(Array<int32_t>{2});
  EXPECT_EQ(Values(ds.get_ColumnList()), std::vector<int32_t>({2}));
}

TEST(DataSetColumnList, TheExtractsGiveTheListedColumnsInTheListsOrder) {
  mxDataSet ds;
  Build(ds, 2, 3);  // value 100*column + row
  bool qOK = false;
  ds.SetColumnList(Array<int32_t>{3, 1}, 2, qOK);
  Array2<float> a;
  ds.ExtractDataArray(a, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(a.UBound(2), 2);
  EXPECT_EQ(a(1, 1), 301.f);
  EXPECT_EQ(a(2, 1), 302.f);
  EXPECT_EQ(a(1, 2), 101.f);
  Array2<uint8_t> b;
  ds.bExtractHeaders(b, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(b.UBound(2), 2);
  int32_t pos = 0, width = 0;
  InitSingleAttPos(ATT_VARIABLE, pos, width);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&b(pos, 1)), 2), "V3");
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(&b(pos, 2)), 2), "V1");
}

TEST(DataSetLists, ClearListsResetsTheOnlyListAndTheRowAndColumnLists) {
  mxDataSet ds;
  Build(ds, 4, 3);
  Array2<uint8_t> only(1, kOnlyRecordSize, 1, 2);
  only.Fill('W');
  ds.SetbOnly(only, true);
  ds.let_zOnly("WELLS");
  bool qOK = false;
  ds.SetRowList(Array<int32_t>{2}, 1, qOK);
  ds.SetColumnList(Array<int32_t>{2}, 1, qOK);
  ds.ClearLists();
  Array2<uint8_t> b;
  bool qOnly = true;
  ds.GetbOnly(b, qOnly);
  EXPECT_FALSE(qOnly);
  ASSERT_EQ(b.UBound(1), kOnlyRecordSize);
  ASSERT_EQ(b.UBound(2), 1);
  for (int32_t i = 1; i <= kOnlyRecordSize; ++i) EXPECT_EQ(b(i, 1), ' ');
  int32_t n = -1;
  Array<int32_t> list;
  ds.GetRowList(list, n, qOK);
  EXPECT_EQ(n, 0);
  ds.GetColumnList(list, n, qOK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(ds.get_zOnly(), "WELLS");  // the name filter text is not a list
  Array2<float> a;
  ds.ExtractDataArray(a, qOK);
  EXPECT_EQ(a.UBound(2), 3);
}

// ---- Volumetric calculations --------------------------------------------------------------------

TEST(DataSetVolumetricCalcs, TheTextsComeBackByPosition) {
  mxDataSet ds;
  EXPECT_EQ(ds.get_NumberOfVolumetricCalcs(), 0);
  bool qOK = false;
  ds.AddVCParameters("1;2", "SOIL", "FIPNUM", "SUM", "PORV", qOK);
  EXPECT_TRUE(qOK);
  ds.AddVCParameters("3", "SGAS", "ALL", "MEAN", "", qOK);
  EXPECT_EQ(ds.get_NumberOfVolumetricCalcs(), 2);
  std::string t, v, r, c, w;
  ds.GetVCParameters(1, t, v, r, c, w, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(std::vector<std::string>({t, v, r, c, w}),
            std::vector<std::string>({"1;2", "SOIL", "FIPNUM", "SUM", "PORV"}));
  ds.GetVCParameters(2, t, v, r, c, w, qOK);
  EXPECT_EQ(std::vector<std::string>({t, v, r, c, w}),
            std::vector<std::string>({"3", "SGAS", "ALL", "MEAN", ""}));
}

TEST(DataSetVolumetricCalcs, APositionOutsideIsTracedWithTheOutputsKept) {
  mxDataSet ds;
  bool qOK = false;
  ds.AddVCParameters("1", "SOIL", "ALL", "SUM", "", qOK);
  LogCapture log;
  std::string t = "t", v = "v", r = "r", c = "c", w = "w";
  ds.GetVCParameters(2, t, v, r, c, w, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(t + v + r + c + w, "tvrcw");
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDataSet  (GetVCParameters)] ");
}

}  // namespace
}  // namespace vndata
