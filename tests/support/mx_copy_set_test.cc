// mxCopySet: a new data set made from an old one in one assignment.
#include "vndata/support/mx_copy_set.h"

#include <gtest/gtest.h>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_table.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/message_log.h"

namespace vndata {
namespace {

class CopySetTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }
  void TearDown() override { MessageLog::Shared().Clear(); }

  // Two columns of three rows, "VARIABLE" A and B, with a full description.
  static std::shared_ptr<mxDataSet> MakeOld() {
    auto ds = std::make_shared<mxDataSet>();
    Array2<float> values = testutil::Block(3, 2, [](int32_t i, int32_t j) {
      return static_cast<float>((j == 1 ? 0 : 9) + i);
    });
    bool qOK = false;
    ds->bInitialiseFrom2d(values,
                          testutil::Headers({{{ATT_ORIGIN, "CASE1"}, {ATT_VARIABLE, "A"}},
                                             {{ATT_ORIGIN, "CASE1"}, {ATT_VARIABLE, "B"}}}),
                          qOK);
    EXPECT_TRUE(qOK);
    ds->let_Origin("CASE1");
    ds->let_CaseName("case one");
    ds->let_Child(true);
    ds->let_DateStamp("5 January 2024");
    ds->let_FileName("case1.smspec");
    ds->let_FileType(7);
    ds->let_GroupName("Summary");
    ds->let_LGRName("  LGR1 ");
    ds->let_TVDisplayRoot("root");
    ds->let_UniqueKey("key1");
    ds->let_NullValue(-1.0e20);
    ds->let_UseNullVal(0);
    ds->let_TimeInDays(12.5f);
    ds->let_TableName("VFP 1");
    ds->let_DataSetDerivedFrom(3);
    ds->let_AccInterval("MONTH");
    ds->let_TextRowWell(4);
    ds->let_TextRowDateFormat("dd/mm/yyyy");
    ds->let_SimCase("SIM");
    ds->let_zOnly("W*");
    ds->let_IsDirty(true);
    return ds;
  }
};

TEST_F(CopySetTest, ANewCopySetHasAnEmptyNewDataSetAndCopiesData) {
  mxCopySet c;
  EXPECT_TRUE(c.get_qCopyData());
  ASSERT_NE(c.get_NewDataSet(), nullptr);
  EXPECT_EQ(c.get_NewDataSet()->get_NumCols(), 0);
  EXPECT_EQ(c.get_OldDataSet(), nullptr);
}

TEST_F(CopySetTest, TheDescriptionIsCopiedThroughTheWritingRules) {
  auto old = MakeOld();
  mxCopySet c;
  c.let_qCopyData(false);
  c.set_OldDataSet(old);
  EXPECT_EQ(c.get_OldDataSet(), old);
  const mxDataSet& n = *c.get_NewDataSet();
  EXPECT_EQ(n.get_Origin(), "CASE1");
  EXPECT_EQ(n.get_UCaseOrigin(), "CASE1");
  EXPECT_EQ(n.get_CaseName(), "case one");
  EXPECT_TRUE(n.get_Child());
  int32_t d = 0, m = 0, y = 0;
  n.GetDateStampParts(d, m, y);
  EXPECT_EQ(d * 10000 + m * 1000 + y, 5 * 10000 + 1 * 1000 + 2024);
  EXPECT_EQ(n.get_FileName(), "case1.smspec");
  EXPECT_EQ(n.get_FileType(), 7);
  EXPECT_EQ(n.get_UCaseGroupName(), "SUMMARY");
  EXPECT_EQ(n.get_LGRName(), "LGR1");
  EXPECT_EQ(n.get_UCaseTVDisplayRoot(), "ROOT");
  EXPECT_EQ(n.get_UniqueKey(), "key1");
  EXPECT_EQ(n.get_NullValue(), -1.0e20);
  EXPECT_EQ(n.get_UseNullVal(), 0);
  EXPECT_EQ(n.get_TimeInDays(), 12.5f);
  EXPECT_EQ(n.get_TableName(), "VFP 1");
  EXPECT_EQ(n.get_DataSetDerivedFrom(), 3);
  EXPECT_EQ(n.get_AccInterval(), "MONTH");
  EXPECT_EQ(n.get_TextRowWell(), 4);
  EXPECT_EQ(n.get_TextRowDateFormat(), "dd/mm/yyyy");
  EXPECT_EQ(n.get_SimCase(), "SIM");
  EXPECT_EQ(n.get_zOnly(), "W*");
  // Without the data the copy has the description and no columns.
  EXPECT_EQ(n.get_NumCols(), 0);
  EXPECT_TRUE(n.get_IsDirty());
}

TEST_F(CopySetTest, WithDataTheColumnsFollowAndTheCopyIsClean) {
  auto old = MakeOld();
  mxCopySet c;
  c.set_OldDataSet(old);
  mxDataSet& n = *c.get_NewDataSet();
  ASSERT_EQ(n.get_NumCols(), 2);
  EXPECT_EQ(n.get_NumRows(), 3);
  float v = 0.f;
  EXPECT_TRUE(n.GetValue(3, 2, v));
  EXPECT_EQ(v, 12.f);
  std::string z;
  EXPECT_TRUE(n.GetAttribute(2, ATT_VARIABLE, z));
  EXPECT_EQ(z, "B");
  // The block arrives after IsDirty, and a freshly built data set is clean.
  EXPECT_FALSE(n.get_IsDirty());
  // The values are the copy's own.
  n.SetValue(1, 1, 99.f);
  EXPECT_TRUE(old->GetValue(1, 1, v));
  EXPECT_EQ(v, 1.f);
}

TEST_F(CopySetTest, WhatIsNotListedIsNotCarried) {
  auto old = MakeOld();
  old->let_DeleteAfterFetch(true);
  old->let_Branch(4);
  old->let_RTMFilePattern("*.UNSMRY");
  old->let_Simulator("VIP");
  mxCopySet c;
  c.set_OldDataSet(old);
  mxDataSet& n = *c.get_NewDataSet();
  EXPECT_FALSE(n.get_DeleteAfterFetch());
  EXPECT_EQ(n.get_Branch(), 1);
  // The copy works its pattern out afresh from its own file name.
  EXPECT_NE(n.get_RTMFilePattern(), "*.UNSMRY");
  EXPECT_EQ(n.get_Simulator(), "");
}

TEST_F(CopySetTest, ATableIsSharedByReference) {
  auto old = MakeOld();
  auto t = std::make_shared<mxTable>();
  t->let_nVariables(1);
  bool qOK = false;
  t->SetVariableData(1, Array<float>{1.f, 2.f}, qOK);
  t->SetTableData(Array<float>{5.f, 6.f}, qOK);
  old->SetTable(t, qOK);
  mxCopySet c;
  c.let_qCopyData(false);
  c.set_OldDataSet(old);
  mxDataSet& n = *c.get_NewDataSet();
  EXPECT_TRUE(n.get_qTableSet());
  std::shared_ptr<mxTable> got;
  n.GetTable(got, qOK);
  EXPECT_EQ(got, t);
  // A change to the table is seen through both data sets.
  t->SetTableData(Array<float>{5.f, 60.f}, qOK);
  float a = 0.f, b = 0.f;
  old->GetTabulatedValue(Array<int32_t>{2}, a, qOK);
  n.GetTabulatedValue(Array<int32_t>{2}, b, qOK);
  EXPECT_EQ(a, 60.f);
  EXPECT_EQ(b, 60.f);
}

TEST_F(CopySetTest, ASecondAssignmentWritesOverTheSameNewDataSet) {
  mxCopySet c;
  const auto first = c.get_NewDataSet();
  c.let_qCopyData(false);
  c.set_OldDataSet(MakeOld());
  auto other = MakeOld();
  other->let_CaseName("case two");
  c.set_OldDataSet(other);
  EXPECT_EQ(c.get_NewDataSet(), first);
  EXPECT_EQ(first->get_CaseName(), "case two");
}

TEST_F(CopySetTest, EachFailedItemIsTracedAndTheCopyGoesOn) {
  mxCopySet c;
  c.set_OldDataSet(nullptr);
  const auto& lines = MessageLog::Shared().Lines();
  ASSERT_FALSE(lines.empty());
  EXPECT_GT(lines.size(), 50u);  // one line per item, none stopping the rest
  for (const auto& line : lines)
    EXPECT_EQ(line,
              "Error:Object variable or With block variable not set (No.91) In [mxCopyDataSet "
              "(Code) (OldDataSet)] ");
  EXPECT_EQ(c.get_NewDataSet()->get_NumCols(), 0);
}

}  // namespace
}  // namespace vndata
