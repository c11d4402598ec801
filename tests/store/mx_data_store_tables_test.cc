// The store's members for a data set's table and its ternary columns.
#include <gtest/gtest.h>

#include "tests/dataset/dataset_test_util.h"
#include "tests/store/store_fixtures.h"
#include "vndata/dataset/mx_table.h"

namespace vndata {
namespace {

class StoreTablesTest : public StoreTest {
 protected:
  // One data set at position 1 with the columns SO, SG, SW (rows 1..3 of
  // 10*column + row).
  void SetUp() override {
    StoreTest::SetUp();
    ds = std::make_shared<mxDataSet>();
    ds->let_Origin("CASE");
    Array2<float> values = testutil::Block(3, 3, [](int32_t i, int32_t j) {
      return static_cast<float>(10 * j + i);
    });
    std::vector<testutil::Attrs> cols;
    for (const char* v : {"SO", "SG", "SW"}) cols.push_back({{ATT_ORIGIN, "CASE"}, {ATT_VARIABLE, v}});
    bool qOK = false;
    ds->bInitialiseFrom2d(values, testutil::Headers(cols), qOK);
    ASSERT_TRUE(qOK);
    store.AddItem(ds);
    ASSERT_EQ(store.get_NumberOfDataSets(), 1);
  }
  std::shared_ptr<mxDataSet> ds;
};

TEST_F(StoreTablesTest, ATableSetThroughTheStoreAnswersItsReads) {
  auto t = std::make_shared<mxTable>();
  t->let_nVariables(2);
  bool qOK = false;
  t->SetVariableData(1, Array<float>{1.f, 2.f}, qOK);
  t->SetVariableData(2, Array<float>{5.f, 6.f, 7.f}, qOK);
  t->SetTableData(Array<float>{1.f, 2.f, 3.f, 4.f, 5.f, 6.f}, qOK);
  EXPECT_FALSE(store.DSTableSet(1));
  store.DSSetTable(1, t, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(store.DSTableSet(1));
  float v = 0.f;
  store.DSGetTabulatedValue(1, Array<int32_t>{1, 3}, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 5.f);
  store.DSGetTableVariableValue(1, 2, 3, v, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v, 7.f);
  int32_t n = 0;
  store.DSGetNumberVarsInTable(1, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 2);
}

TEST_F(StoreTablesTest, WithoutATableTheReadsAreFalse) {
  float v = -1.f;
  bool qOK = true;
  store.DSGetTabulatedValue(1, Array<int32_t>{1}, v, qOK);
  EXPECT_FALSE(qOK);
  int32_t n = 3;
  store.DSGetNumberVarsInTable(1, n, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(n, 3);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(StoreTablesTest, TernaryColumnsByPosition) {
  EXPECT_TRUE(store.get_qTernaryColsExist(1));
  float a = 0.f, b = 0.f, c = 0.f;
  store.GetTernaryDataLimits(1, a, b, c);
  EXPECT_EQ(a, 11.f);
  EXPECT_EQ(b, 21.f);
  EXPECT_EQ(c, 31.f);
  bool qExists = false, qOK = false;
  Array<int32_t> iTern;
  store.GetTernaryColumns(1, qExists, iTern, a, b, c, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(qExists);
  EXPECT_EQ(iTern(2), 2);
  store.GetTernaryColumnsDP(1, qExists, iTern, a, b, c, true, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(qExists);  // outside VIP "SO" stands beside "SOIL"
  EXPECT_TRUE(store.get_qTernaryColsExistDP(1, false));
}

}  // namespace
}  // namespace vndata
