#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/dataset/dataset_test_util.h"
#include "tests/support/scripted_host.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/module_state.h"

using namespace vndata;
using namespace vndata::testutil;

namespace {

constexpr float kSeedMin = 3.402823E+38f;
constexpr float kSeedMax = -3.402823E+38f;

void Load(mxDataSet& ds, const Array2<float>& values) {
  Array2<float> a = values;
  bool qOK = false;
  ds.bInitialiseFrom2d(a, SimpleHeaders(a.UBound(2)), qOK);
  ASSERT_TRUE(qOK);
}

}  // namespace

TEST(DataSetLimits, SeedsAreTheLargestSingleBothWays) {
  EXPECT_EQ(kLimitSeedMin, 3.402823E+38f);
  EXPECT_EQ(kLimitSeedMax, -3.402823E+38f);
}

TEST(DataSetLimits, AColumnWhollyOfNullsHasTheSeedsAndTheyCountAsKnown) {
  mxDataSet ds;
  Load(ds, Block(4, 2, [](int32_t i, int32_t j) { return j == 1 ? -999.0f : static_cast<float>(i); }));
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, kSeedMin);
  EXPECT_EQ(mx, kSeedMax);
  ASSERT_TRUE(ds.GetColMinMax(2, mn, mx));
  EXPECT_EQ(mn, 1.0f);
  EXPECT_EQ(mx, 4.0f);
}

TEST(DataSetLimits, NullsCountWhenTheRuleIsOff) {
  mxDataSet ds;
  ds.let_UseNullVal(0);
  Load(ds, Block(3, 1, [](int32_t i, int32_t) { return i == 2 ? -999.0f : 5.0f * i; }));
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, -999.0f);
  EXPECT_EQ(mx, 15.0f);
}

TEST(DataSetLimits, TheNullIsComparedAsASingle) {
  mxDataSet ds;
  ds.let_NullValue(0.1);  // not exact as a single: the single 0.1f is the marker
  Load(ds, Block(3, 1, [](int32_t i, int32_t) { return i == 1 ? 0.1f : 2.0f * i; }));
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 4.0f);
  EXPECT_EQ(mx, 6.0f);
}

TEST(DataSetLimits, SetColMinMaxHoldsUntilRecalculation) {
  mxDataSet ds;
  Load(ds, Numbered(3, 2));
  EXPECT_TRUE(ds.SetColMinMax(2, -1.0f, 1.0f));
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(2, mn, mx));
  EXPECT_EQ(mn, -1.0f);
  EXPECT_EQ(mx, 1.0f);
  ASSERT_TRUE(ds.GetColMinMax(2, mn, mx, false));
  EXPECT_EQ(mn, -1.0f);
  ASSERT_TRUE(ds.GetColMinMax(2, mn, mx, true));
  EXPECT_EQ(mn, 201.0f);
  EXPECT_EQ(mx, 203.0f);
  // The recalculation was stored.
  ASSERT_TRUE(ds.GetColMinMax(2, mn, mx));
  EXPECT_EQ(mn, 201.0f);
  EXPECT_FALSE(ds.SetColMinMax(3, 0.0f, 0.0f));
  EXPECT_FALSE(ds.SetColMinMax(0, 0.0f, 0.0f));
}

TEST(DataSetLimits, GetColMinMaxOfAnInvalidColumnIsFalse) {
  mxDataSet ds;
  Load(ds, Numbered(3, 2));
  float mn = 7, mx = 8;
  EXPECT_FALSE(ds.GetColMinMax(3, mn, mx));
  EXPECT_FALSE(ds.GetColMinMax(0, mn, mx, true));
  EXPECT_EQ(mn, 7.0f);
  EXPECT_EQ(mx, 8.0f);
}

TEST(DataSetLimits, SetValueBetweenTheLimitsLeavesThem) {
  mxDataSet ds;
  Load(ds, Numbered(5, 1));  // 101..105
  ds.SetValue(3, 1, 102.5f);
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 101.0f);
  EXPECT_EQ(mx, 105.0f);
  ds.SetValue(3, 1, 110.0f);
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mx, 110.0f);
  ds.SetValue(3, 1, -999.0f);  // a null does not move the limits
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 101.0f);
  EXPECT_EQ(mx, 110.0f);
}

TEST(DataSetLimits, SetValueBetweenKnownLimitsKeepsThem) {
  mxDataSet ds;
  Load(ds, Numbered(5, 1));
  ASSERT_TRUE(ds.SetColMinMax(1, 0.0f, 1000.0f));
  // SetColMinMax set the flag; a value inside the limits changes nothing,
  // so what was set is still reported.
  ds.SetValue(2, 1, 500.0f);
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 0.0f);
  EXPECT_EQ(mx, 1000.0f);
}

TEST(DataSetLimits, AFirstValueIntoASeededColumnSetsOnlyTheMinimum) {
  mxDataSet ds;
  ds.Dimension(1, 3);  // a fresh column: seeds, limits not known
  ds.SetValue(1, 1, 5.0f);
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 5.0f);
  EXPECT_EQ(mx, kSeedMax);
  ds.SetValue(2, 1, 7.0f);
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, 5.0f);
  EXPECT_EQ(mx, 7.0f);
}

TEST(DataSetLimits, AColumnOfUnknownLimitsIsCalculatedOnFirstAsk) {
  mxDataSet ds;
  ds.Dimension(1, 3);
  bool qOK = false;
  ds.SetValuesBuffer(1, 1, Floats({4, -2, 9}), qOK, false);
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, -2.0f);
  EXPECT_EQ(mx, 9.0f);
}

TEST(DataSetLimits, CalcMinMaxWithNoRowsIsFalseWithTheSeeds) {
  mxDataSet ds;
  ds.Dimension(2);
  float mn = 1, mx = 2;
  bool qOK = true;
  ds.CalcMinMax(1, mn, mx, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(mn, kSeedMin);
  EXPECT_EQ(mx, kSeedMax);
}

TEST(DataSetLimits, VectorMinMaxEqualValuesAndNaNsChangeNothing) {
  mxDataSet ds;
  const float nan = std::numeric_limits<float>::quiet_NaN();
  float mn = 0, mx = 0;
  bool qOK = false;
  ds.VectorMinMax(Floats({nan, 3, 3, nan, -1, -1}), mn, mx, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(mn, -1.0f);
  EXPECT_EQ(mx, 3.0f);
  ds.VectorMinMax(Floats({-999, -999}), mn, mx, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(mn, kSeedMin);
  EXPECT_EQ(mx, kSeedMax);
}

TEST(DataSetLimits, VectorMinMaxAgreesWithAPlainLoopOnLongVectors) {
  std::mt19937 gen(7);
  std::uniform_real_distribution<float> d(-1e6f, 1e6f);
  for (int32_t n : {1, 3, 7, 8, 9, 31, 1000, 4099}) {
    Array<float> v(1, n);
    for (int32_t i = 1; i <= n; ++i) v(i) = (i % 5 == 0) ? -999.0f : d(gen);
    for (int32_t useNull : {0, 1}) {
      mxDataSet ds;
      ds.let_UseNullVal(useNull);
      float mn = 0, mx = 0;
      bool qOK = false;
      ds.VectorMinMax(v, mn, mx, qOK);
      float emn = kSeedMin, emx = kSeedMax;
      for (int32_t i = 1; i <= n; ++i) {
        if (useNull && v(i) == -999.0f) continue;
        if (v(i) < emn) emn = v(i);
        if (v(i) > emx) emx = v(i);
      }
      EXPECT_EQ(mn, emn) << n << " " << useNull;
      EXPECT_EQ(mx, emx) << n << " " << useNull;
    }
  }
}

TEST(DataSetLimits, LimitsRunOverAllBuffers) {
  mxDataSet ds;
  Load(ds, Numbered(3, 2));
  bool qOK = false;
  ds.AddRowsToDatasetBuffer(Block(2, 2, [](int32_t i, int32_t j) { return i == 1 ? -999.0f : -50.0f * j; }), qOK);
  ASSERT_EQ(ds.get_NumberOfBuffers(), 2);
  ds.InitialiseColumnLimits(qOK);
  ASSERT_TRUE(qOK);
  float mn = 0, mx = 0;
  ASSERT_TRUE(ds.GetColMinMax(2, mn, mx));
  EXPECT_EQ(mn, -100.0f);
  EXPECT_EQ(mx, 203.0f);
  ds.let_UseNullVal(0);
  ds.InitialiseColumnLimits(qOK);
  ASSERT_TRUE(ds.GetColMinMax(1, mn, mx));
  EXPECT_EQ(mn, -999.0f);
  EXPECT_EQ(mx, 103.0f);
  EXPECT_TRUE(ds.get_IsDirty());
}

TEST(DataSetLimits, ACancelledLimitsPassStopsAndTheLoadFails) {
  auto host = std::make_shared<test_support::ScriptedHost>();
  host->onYield = [] { Module().CancelLoad = true; };
  test_support::ScopedHost installed(host);
  mxDataSet ds;
  Array2<float> a = Numbered(2, 3000);
  bool qOK = true;
  ds.bInitialiseFrom2d(a, SimpleHeaders(3000), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(host->CallsNamed("Yield"), 1);
  Module().CancelLoad = false;
  // The pass stopped after the column it yielded at.
  float mn = 0, mx = 0;
  EXPECT_TRUE(ds.GetColMinMax(1024, mn, mx));
  EXPECT_EQ(mn, 102401.0f);
}

TEST(DataSetLimits, ALoadOfManyLongColumnsHasEveryColumnsLimits) {
  // 20,000 rows: the copy and the limits go a few columns at a time.
  mxDataSet ds;
  Array2<float> a = Block(20000, 10, [](int32_t i, int32_t j) {
    return i == 7 ? -999.0f : static_cast<float>(j * 1000 + (i * 37) % 991);
  });
  Load(ds, a);
  for (int32_t j = 1; j <= 10; ++j) {
    float mn = 0, mx = 0;
    ASSERT_TRUE(ds.GetColMinMax(j, mn, mx));
    EXPECT_EQ(mn, j * 1000.0f) << j;
    EXPECT_EQ(mx, j * 1000.0f + 990.0f) << j;
    Array<float> v;
    ASSERT_TRUE(ds.GetValues(j, v));
    EXPECT_EQ(v(20000), static_cast<float>(j * 1000 + (20000 * 37) % 991));
  }
}
