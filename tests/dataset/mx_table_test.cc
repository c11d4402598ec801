// mxTable: the tabulated function of n variables, its index checks, its
// column view and its data set form.
#include "vndata/dataset/mx_table.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"

namespace vndata {
namespace {

using testutil::LogCapture;

Array<uint8_t> Bytes(const std::string& z) {
  Array<uint8_t> b(1, static_cast<int32_t>(z.size()));
  for (std::size_t i = 0; i < z.size(); ++i) b(static_cast<int32_t>(i) + 1) = static_cast<uint8_t>(z[i]);
  return b;
}

std::string Text(const Array2<uint8_t>& b, int32_t iColumn, int32_t iPos, int32_t nWidth) {
  std::string z;
  for (int32_t i = iPos; i < iPos + nWidth; ++i) z.push_back(static_cast<char>(b(i, iColumn)));
  return z;
}

std::string Padded(const std::string& z, std::size_t n) { return z + std::string(n - z.size(), ' '); }

// A table of the given variables; its data are 1, 2, 3, ... in cell order.
std::shared_ptr<mxTable> MakeTable(const std::vector<std::pair<std::string, Array<float>>>& vars) {
  auto t = std::make_shared<mxTable>();
  t->let_nVariables(static_cast<int32_t>(vars.size()));
  int32_t nCells = 1;
  for (std::size_t i = 0; i < vars.size(); ++i) {
    bool qOK = false;
    const int32_t k = static_cast<int32_t>(i) + 1;
    t->SetVariable(k, Bytes(vars[i].first), qOK);
    EXPECT_TRUE(qOK);
    if (!vars[i].second.IsAllocated()) continue;
    t->SetVariableData(k, vars[i].second, qOK);
    EXPECT_TRUE(qOK);
    nCells *= vars[i].second.IsAllocated() ? vars[i].second.UBound() : 0;
  }
  if (nCells > 0) {
    Array<float> data(1, nCells);
    for (int32_t c = 1; c <= nCells; ++c) data(c) = static_cast<float>(c);
    bool qOK = false;
    t->SetTableData(data, qOK);
    EXPECT_TRUE(qOK);
  }
  return t;
}

// Two variables: "THP" with 2 values and "RATE" with 3; data 1..6.
std::shared_ptr<mxTable> TwoByThree() {
  return MakeTable({{"THP", Array<float>{10.f, 20.f}}, {"RATE", Array<float>{100.f, 200.f, 300.f}}});
}

// ---- Fields and variables -----------------------------------------------------------------------

TEST(Table, NewTableHasNoVariablesAndEmptyTexts) {
  mxTable t;
  EXPECT_EQ(t.get_nVariables(), 0);
  EXPECT_EQ(t.get_TableNumber(), 0);
  EXPECT_EQ(t.get_BottomHoleDatumDepth(), 0.f);
  Array<uint8_t> b{7};
  t.GetOrigin(b);
  EXPECT_FALSE(b.IsAllocated());
  int32_t iType = 5;
  t.GetFileType(iType);
  EXPECT_EQ(iType, 0);
}

TEST(Table, ByteStringsAreCopiedWhole) {
  mxTable t;
  const Array<uint8_t> b{'A', 0, 'B', ' '};
  t.SetOrigin(b);
  t.SetFileName(b);
  t.SetFileSource(b);
  t.SetTableType(b);
  t.SetTabulatedQuantity(b);
  t.SetUnits(b);
  Array<uint8_t> o;
  for (auto get : {&mxTable::GetOrigin, &mxTable::GetFileName, &mxTable::GetFileSource,
                   &mxTable::GetTableType, &mxTable::GetTabulatedQuantity, &mxTable::GetUnits}) {
    o.Erase();
    (t.*get)(o);
    ASSERT_EQ(o.UBound(), 4);
    EXPECT_EQ(o(2), 0);
    EXPECT_EQ(o(4), ' ');
  }
}

TEST(Table, VariableAboveTheCountIsSilentlyFalse) {
  LogCapture log;
  auto t = TwoByThree();
  bool qOK = true;
  t->SetVariable(3, Bytes("X"), qOK);
  EXPECT_FALSE(qOK);
  Array<uint8_t> b{7};
  qOK = true;
  t->GetVariable(3, b, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(b(1), 7);
  Array<float> v;
  int32_t n = 9;
  qOK = true;
  t->GetVariableData(3, v, n, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(n, 9);
  qOK = true;
  t->SetVariableData(3, Array<float>{1.f}, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(Table, VariableBelowOneIsALoggedFault) {
  LogCapture log;
  auto t = TwoByThree();
  Array<uint8_t> b;
  bool qOK = true;
  t->GetVariable(0, b, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Subscript out of range (No.9) In [mxTable (Code) (GetVariable)] ");
}

TEST(Table, VariableNamesAndValuesComeBack) {
  auto t = TwoByThree();
  Array<uint8_t> b;
  bool qOK = false;
  t->GetVariable(2, b, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(b.UBound(), 4);
  EXPECT_EQ(b(1), 'R');
  Array<float> v;
  int32_t n = 0;
  t->GetVariableData(2, v, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 3);
  ASSERT_EQ(v.UBound(), 3);
  EXPECT_EQ(v(3), 300.f);
}

TEST(Table, VariableWithoutValuesLeavesTheOutputArray) {
  mxTable t;
  t.let_nVariables(1);
  Array<float> v{5.f};
  int32_t n = 9;
  bool qOK = false;
  t.GetVariableData(1, v, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  ASSERT_EQ(v.UBound(), 1);
  EXPECT_EQ(v(1), 5.f);
}

TEST(Table, SettingTheCountMakesTheVariablesAfresh) {
  auto t = TwoByThree();
  t->let_nVariables(2);
  Array<float> v;
  int32_t n = 9;
  bool qOK = false;
  t->GetVariableData(1, v, n, qOK);
  EXPECT_EQ(n, 0);
  // A count of 0 is stored but keeps the variables.
  auto u = TwoByThree();
  u->let_nVariables(0);
  EXPECT_EQ(u->get_nVariables(), 0);
  u->let_nVariables(-1);
  EXPECT_EQ(u->get_nVariables(), -1);
}

TEST(Table, PlainPropertiesKeepTheirValues) {
  mxTable t;
  t.let_BottomHoleDatumDepth(2500.5f);
  t.let_TableNumber(12);
  t.SetFileType(4);
  int32_t i = 0;
  t.GetFileType(i);
  EXPECT_EQ(t.get_BottomHoleDatumDepth(), 2500.5f);
  EXPECT_EQ(t.get_TableNumber(), 12);
  EXPECT_EQ(i, 4);
}

TEST(Table, TableDataIsCopiedInAndOut) {
  mxTable t;
  Array<float> d{1.f, 2.f};
  bool qOK = false;
  t.SetTableData(d, qOK);
  EXPECT_TRUE(qOK);
  d(1) = 9.f;
  Array<float> o;
  qOK = false;
  t.GetTableData(o, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(o.UBound(), 2);
  EXPECT_EQ(o(1), 1.f);
}

// ---- Tabulated values ---------------------------------------------------------------------------

TEST(Table, TabulatedValueRunsTheFirstVariableFastest) {
  auto t = TwoByThree();
  float v = 0.f;
  bool qOK = false;
  t->GetTabulatedValue(Array<int32_t>{2, 3}, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 6.f);  // 2 + (3 - 1) * 2
  t->GetTabulatedValue(Array<int32_t>{1, 2}, v, qOK);
  EXPECT_EQ(v, 3.f);  // 1 + (2 - 1) * 2
}

TEST(Table, TabulatedValueWithFewerIndicesCountsTheRestAsOne) {
  auto t = TwoByThree();
  float v = 0.f;
  bool qOK = false;
  t->GetTabulatedValue(Array<int32_t>{2}, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 2.f);
}

TEST(Table, TabulatedValueWithMoreIndicesThanVariablesIsFalse) {
  LogCapture log;
  auto t = TwoByThree();
  float v = -1.f;
  bool qOK = true;
  t->GetTabulatedValue(Array<int32_t>{1, 1, 1}, v, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(v, -1.f);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(Table, TabulatedValueWithAZeroIndexAfterTheFirstIsFalse) {
  LogCapture log;
  auto t = TwoByThree();
  float v = -1.f;
  bool qOK = true;
  t->GetTabulatedValue(Array<int32_t>{1, 0}, v, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(v, -1.f);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(Table, TabulatedValueBeyondTheDataIsALoggedFault) {
  LogCapture log;
  auto t = TwoByThree();
  float v = -1.f;
  bool qOK = true;
  // Neither index is tested against its count: (3, 3) reaches cell 7 of 6.
  t->GetTabulatedValue(Array<int32_t>{3, 3}, v, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(v, -1.f);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Subscript out of range (No.9) In [mxTable (Code) (GetTabulatedValue)] ");
}

TEST(Table, TabulatedValueOfAnIndexPastItsCountReadsAnotherCell) {
  auto t = TwoByThree();
  float v = 0.f;
  bool qOK = false;
  // The first index is not tested against its count of 2.
  t->GetTabulatedValue(Array<int32_t>{3, 1}, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 3.f);
}

// ---- Column view and single values ----------------------------------------------------------------

TEST(Table, ColumnDataGivesVariablesAndThenTheTableData) {
  auto t = TwoByThree();
  Array<float> v;
  bool qOK = false;
  t->GetColumnData(1, v, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(v.UBound(), 2);
  EXPECT_EQ(v(2), 20.f);
  t->GetColumnData(3, v, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(v.UBound(), 6);
  EXPECT_EQ(v(6), 6.f);
}

TEST(Table, ColumnDataTwoPastTheVariablesIsFalse) {
  LogCapture log;
  auto t = TwoByThree();
  Array<float> v{8.f};
  bool qOK = true;
  t->GetColumnData(4, v, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(v.UBound(), 1);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(Table, TableVariableValueBeyondTheCountIsTrueAndLeavesTheOutput) {
  auto t = TwoByThree();
  float v = -7.f;
  bool qOK = false;
  t->GetTableVariableValue(2, 4, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, -7.f);
  t->GetTableVariableValue(2, 3, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 300.f);
}

TEST(Table, TableVariableValueOfAVariableAboveTheCountIsFalse) {
  LogCapture log;
  auto t = TwoByThree();
  float v = -7.f;
  bool qOK = true;
  t->GetTableVariableValue(3, 1, v, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(log.Lines().empty());
  t->GetTableVariableValue(0, 1, v, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Subscript out of range (No.9) In [mxTable (Code) (GetTableVariableValue)] ");
}

// ---- The data set form ------------------------------------------------------------------------------

TEST(Table, OneVariableOfThreeValuesGivesThreeRowsByTwoColumns) {
  auto t = MakeTable({{"THP", Array<float>{10.f, 20.f, 30.f}}});
  Array2<float> d;
  bool qOK = false;
  t->GetDataSetData(d, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(d.UBound(1), 3);
  ASSERT_EQ(d.UBound(2), 2);
  EXPECT_EQ(d(2, 1), 20.f);
  EXPECT_EQ(d(3, 2), 3.f);
}

TEST(Table, TwoVariablesGiveTheirProductWithTheFirstRunningFastest) {
  auto t = TwoByThree();
  Array2<float> d;
  bool qOK = false;
  t->GetDataSetData(d, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(d.UBound(1), 6);
  ASSERT_EQ(d.UBound(2), 3);
  const float first[] = {10.f, 20.f, 10.f, 20.f, 10.f, 20.f};      // 1 2 1 2 1 2
  const float second[] = {100.f, 100.f, 200.f, 200.f, 300.f, 300.f};  // 1 1 2 2 3 3
  for (int32_t r = 1; r <= 6; ++r) {
    EXPECT_EQ(d(r, 1), first[r - 1]) << r;
    EXPECT_EQ(d(r, 2), second[r - 1]) << r;
    EXPECT_EQ(d(r, 3), static_cast<float>(r)) << r;
  }
}

TEST(Table, RowsOfTheProductAgreeWithTabulatedValues) {
  auto t = MakeTable({{"A", Array<float>{1.f, 2.f}}, {"B", Array<float>{1.f, 2.f, 3.f}},
                      {"C", Array<float>{1.f, 2.f}}});
  Array2<float> d;
  bool qOK = false;
  t->GetDataSetData(d, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(d.UBound(1), 12);
  for (int32_t r = 1; r <= 12; ++r) {
    float v = 0.f;
    Array<int32_t> idx{static_cast<int32_t>(d(r, 1)), static_cast<int32_t>(d(r, 2)),
                       static_cast<int32_t>(d(r, 3))};
    t->GetTabulatedValue(idx, v, qOK);
    EXPECT_EQ(v, d(r, 4)) << r;
  }
}

TEST(Table, AVariableWithNoValuesGivesNoDataAndLeavesTheOutput) {
  auto t = MakeTable({{"THP", Array<float>{10.f, 20.f}}, {"RATE", Array<float>()}});
  Array2<float> d(1, 1, 1, 1);
  d(1, 1) = 42.f;
  bool qOK = true;
  t->GetDataSetData(d, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(d.UBound(1), 1);
  EXPECT_EQ(d(1, 1), 42.f);
}

TEST(Table, HeadersCarryNamesOriginClassMemberAndType) {
  auto t = TwoByThree();
  t->SetOrigin(Bytes("VFP"));
  t->SetTableType(Bytes("VFPPROD"));
  t->SetTabulatedQuantity(Bytes("BHP"));
  t->let_TableNumber(7);
  Array2<uint8_t> h;
  bool qOK = false;
  t->GetDataSetHeaders(h, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(h.UBound(1), 233);
  ASSERT_EQ(h.UBound(2), 3);
  EXPECT_EQ(Text(h, 1, 161, 16), Padded("THP", 16));
  EXPECT_EQ(Text(h, 2, 177, 40), Padded("RATE", 40));
  EXPECT_EQ(Text(h, 3, 161, 16), Padded("BHP", 16));
  for (int32_t c = 1; c <= 3; ++c) {
    EXPECT_EQ(Text(h, c, 1, 32), Padded("VFP", 32));
    EXPECT_EQ(Text(h, c, 57, 16), Padded("VFPPROD", 16));
    EXPECT_EQ(Text(h, c, 73, 40), Padded("7", 40));
    EXPECT_EQ(Text(h, c, 33, 8), "Table   ");
    EXPECT_EQ(Text(h, c, 41, 16), std::string(16, ' '));  // units are not written
  }
}

TEST(Table, ALongNameIsWholeInVerboseAndCutInVariable) {
  const std::string zLong = "GAS_LIFT_INJECTION_RATE";  // 23 bytes
  auto t = MakeTable({{zLong, Array<float>{1.f}}});
  Array2<uint8_t> h;
  bool qOK = false;
  t->GetDataSetHeaders(h, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(Text(h, 1, 161, 16), zLong.substr(0, 16));
  EXPECT_EQ(Text(h, 1, 177, 40), Padded(zLong, 40));
  // A name past 40 bytes is cut in "VERBOSE" too, and spills into nothing.
  const std::string zLonger(45, 'N');
  auto u = MakeTable({{zLonger, Array<float>{1.f}}});
  u->GetDataSetHeaders(h, qOK);
  EXPECT_EQ(Text(h, 1, 177, 40), std::string(40, 'N'));
  EXPECT_EQ(Text(h, 1, 217, 16), std::string(16, ' '));
}

TEST(Table, TableAsDataSetTakesItsOriginFromTheHeadersAlone) {
  auto t = TwoByThree();
  t->SetOrigin(Bytes("VFP"));
  t->SetFileName(Bytes("deck.data"));
  t->SetFileSource(Bytes("reader"));
  t->SetFileType(9);
  std::shared_ptr<mxDataSet> ds;
  bool qOK = false;
  t->GetTableAsDataSet(ds, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_NE(ds, nullptr);
  EXPECT_EQ(ds->get_NumCols(), 3);
  EXPECT_EQ(ds->get_NumRows(), 6);
  EXPECT_EQ(ds->get_FileType(), 9);
  // The table's Origin, FileName and FileSource do not reach the properties.
  EXPECT_EQ(ds->get_Origin(), "");
  EXPECT_EQ(ds->get_FileName(), "");
  EXPECT_EQ(ds->get_SourceType(), "");
  std::string z;
  EXPECT_TRUE(ds->GetAttribute(2, ATT_ORIGIN, z));
  EXPECT_EQ(z, "VFP");
  EXPECT_TRUE(ds->GetAttribute(1, ATT_TYPE, z));
  EXPECT_EQ(z, "Table");
  float v = 0.f;
  EXPECT_TRUE(ds->GetValue(5, 2, v));
  EXPECT_EQ(v, 300.f);
  EXPECT_TRUE(ds->GetValue(5, 3, v));
  EXPECT_EQ(v, 5.f);
}

}  // namespace
}  // namespace vndata
