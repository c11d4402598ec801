// mxDataSet with a table: the reference it holds, the reads forwarded to the
// table, and the column limits and extracts answered from it.
#include <gtest/gtest.h>

#include <memory>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/dataset/mx_table.h"

namespace vndata {
namespace {

using testutil::LogCapture;

// Two variables of 2 and 3 values; data 1..6 in cell order.
std::shared_ptr<mxTable> SmallTable() {
  auto t = std::make_shared<mxTable>();
  t->let_nVariables(2);
  bool qOK = false;
  t->SetVariable(1, Array<uint8_t>{'T', 'H', 'P'}, qOK);
  t->SetVariableData(1, Array<float>{10.f, 20.f}, qOK);
  t->SetVariable(2, Array<uint8_t>{'Q'}, qOK);
  t->SetVariableData(2, Array<float>{100.f, 200.f, 300.f}, qOK);
  t->SetTableData(Array<float>{1.f, 2.f, 3.f, 4.f, 5.f, 6.f}, qOK);
  return t;
}

TEST(DataSetTable, WithoutATableTheReadsAreSilentlyFalse) {
  LogCapture log;
  mxDataSet ds;
  EXPECT_FALSE(ds.get_qTableSet());
  std::shared_ptr<mxTable> t = std::make_shared<mxTable>();
  bool qOK = true;
  ds.GetTable(t, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_NE(t, nullptr);
  float v = -1.f;
  ds.GetTabulatedValue(Array<int32_t>{1}, v, qOK);
  EXPECT_FALSE(qOK);
  ds.GetTableVariableValue(1, 1, v, qOK);
  EXPECT_FALSE(qOK);
  int32_t n = 8;
  ds.GetNumberVarsInTable(n, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(n, 8);
  EXPECT_EQ(v, -1.f);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(DataSetTable, SetTableKeepsTheReferenceAndForwardsTheReads) {
  mxDataSet ds;
  auto t = SmallTable();
  bool qOK = false;
  ds.SetTable(t, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(ds.get_qTableSet());
  std::shared_ptr<mxTable> back;
  ds.GetTable(back, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(back, t);
  float v = 0.f;
  ds.GetTabulatedValue(Array<int32_t>{2, 3}, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 6.f);
  ds.GetTableVariableValue(2, 2, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 200.f);
  int32_t n = 0;
  ds.GetNumberVarsInTable(n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 2);
  // The table is shared: a change is seen through the data set.
  t->SetTableData(Array<float>{1.f, 2.f, 3.f, 4.f, 5.f, 60.f}, qOK);
  ds.GetTabulatedValue(Array<int32_t>{2, 3}, v, qOK);
  EXPECT_EQ(v, 60.f);
}

TEST(DataSetTable, TheFlagWithoutATableIsAnObjectFault) {
  LogCapture log;
  mxDataSet ds;
  ds.let_qTableSet(true);
  float v = -1.f;
  bool qOK = true;
  ds.GetTabulatedValue(Array<int32_t>{1}, v, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Object variable or With block variable not set (No.91) In [mxDataSet  "
            "(GetTabulatedValue)] ");
}

TEST(DataSetTable, LimitsComeFromTheTableColumnsAndAreAlwaysRecomputed) {
  auto t = SmallTable();
  std::shared_ptr<mxDataSet> ds;
  bool qOK = false;
  t->GetTableAsDataSet(ds, qOK);
  ASSERT_TRUE(qOK);
  ds->SetTable(t, qOK);
  float mn = 0.f, mx = 0.f;
  // Column 1 of the table view is the variable's own two values.
  EXPECT_TRUE(ds->GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 10.f);
  EXPECT_EQ(mx, 20.f);
  t->SetTableData(Array<float>{-4.f, 2.f, 3.f, 4.f, 5.f, 90.f}, qOK);
  EXPECT_TRUE(ds->GetColMinMax(3, mn, mx));
  EXPECT_EQ(mn, -4.f);
  EXPECT_EQ(mx, 90.f);
}

TEST(DataSetTable, WithTheFlagClearedLimitsComeFromTheRows) {
  auto t = SmallTable();
  std::shared_ptr<mxDataSet> ds;
  bool qOK = false;
  t->GetTableAsDataSet(ds, qOK);
  ds->SetTable(t, qOK);
  ds->let_qTableSet(false);
  t->SetTableData(Array<float>{-4.f, 2.f, 3.f, 4.f, 5.f, 90.f}, qOK);
  float mn = 0.f, mx = 0.f;
  EXPECT_TRUE(ds->GetColMinMax(3, mn, mx, true));
  EXPECT_EQ(mn, 1.f);
  EXPECT_EQ(mx, 6.f);
}

TEST(DataSetTable, AnExtractIsFilledFromTheTable) {
  auto t = SmallTable();
  std::shared_ptr<mxDataSet> ds;
  bool qOK = false;
  t->GetTableAsDataSet(ds, qOK);
  ds->SetTable(t, qOK);
  t->SetTableData(Array<float>{11.f, 12.f, 13.f, 14.f, 15.f, 16.f}, qOK);
  Array2<float> a;
  ds->ExtractDataArray(a, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(a.UBound(1), 6);
  ASSERT_EQ(a.UBound(2), 3);
  EXPECT_EQ(a(4, 1), 20.f);
  EXPECT_EQ(a(4, 2), 200.f);
  EXPECT_EQ(a(4, 3), 14.f);
}

}  // namespace
}  // namespace vndata
