#include "vndata/derived/mx_dq_store.h"

#include <gtest/gtest.h>

#include "vndata/platform/message_log.h"

using namespace vndata;

namespace {

std::shared_ptr<mxDerivedQuantity> Named(const std::string& zName) {
  auto dq = std::make_shared<mxDerivedQuantity>();
  dq->let_ResultColumnHeader(zName);
  dq->let_Expression(zName + "=A+B");
  return dq;
}

// getItem with its success flag dropped, as the store's DQGetItem calls it.
void GetQuietly(const mxDQStore& store, int32_t i, std::shared_ptr<mxDerivedQuantity>& dq) {
  bool qOK = false;
  store.getItem(i, dq, qOK);
}

std::string NameAt(const mxDQStore& store, int32_t i) {
  std::shared_ptr<mxDerivedQuantity> dq;
  bool qOK = false;
  store.getItem(i, dq, qOK);
  return qOK && dq ? dq->get_ResultColumnHeader() : "<none>";
}

class DQStoreTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }
  void TearDown() override { MessageLog::Shared().Clear(); }
};

TEST_F(DQStoreTest, NewStoreIsEmptyWithOneSpareCell) {
  mxDQStore store;
  EXPECT_EQ(store.Count(), 0);
  EXPECT_EQ(store.get_NextDQPos(), 1);
  EXPECT_FALSE(store.get_IsDirty());
}

TEST_F(DQStoreTest, AddItemAppendsACopyAndMarksTheStoreDirty) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  store.AddItem(Named("Q2"));
  EXPECT_EQ(store.Count(), 2);
  EXPECT_EQ(store.get_NextDQPos(), 3);
  EXPECT_TRUE(store.get_IsDirty());
  EXPECT_EQ(NameAt(store, 1), "Q1");
  EXPECT_EQ(NameAt(store, 2), "Q2");
}

TEST_F(DQStoreTest, AfterDeletingTheOnlyItemTheCountIsZeroAndTheNextAddTakesPositionOne) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  store.DeleteItem(1);
  EXPECT_EQ(store.Count(), 0);
  EXPECT_EQ(store.get_NextDQPos(), 1);
  // Emptying by deletion does not touch IsDirty; only ReInitialise clears it.
  EXPECT_TRUE(store.get_IsDirty());
  store.AddItem(Named("Q9"));
  EXPECT_EQ(store.Count(), 1);
  EXPECT_EQ(NameAt(store, 1), "Q9");
  store.ReInitialise();
  EXPECT_FALSE(store.get_IsDirty());
  EXPECT_EQ(store.Count(), 0);
}

TEST_F(DQStoreTest, DeletingAnItemKeepsTheOrderOfTheOthersAndLeavesTheStoreDirty) {
  mxDQStore store;
  for (const char* z : {"Q1", "Q2", "Q3", "Q4"}) store.AddItem(Named(z));
  store.DeleteItem(2);
  EXPECT_EQ(store.Count(), 3);
  EXPECT_EQ(store.get_NextDQPos(), 4);
  EXPECT_EQ(NameAt(store, 1), "Q1");
  EXPECT_EQ(NameAt(store, 2), "Q3");
  EXPECT_EQ(NameAt(store, 3), "Q4");
  EXPECT_TRUE(store.get_IsDirty());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DQStoreTest, DeletingOutsideTheValidRangeDoesNothing) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  store.DeleteItem(0);
  store.DeleteItem(3);
  EXPECT_EQ(store.Count(), 1);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DQStoreTest, DeletingTheSpareCellOfAOneItemStoreEmptiesIt) {
  // The spare cell passes ValidItem, and with one item the store is emptied.
  mxDQStore store;
  store.AddItem(Named("Q1"));
  store.DeleteItem(2);
  EXPECT_EQ(store.Count(), 0);
}

TEST_F(DQStoreTest, DeletingTheSpareCellOfALargerStoreFaultsAndChangesNothing) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  store.AddItem(Named("Q2"));
  store.DeleteItem(3);
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDQStore (Code) (DeleteItem)] ");
  EXPECT_EQ(store.Count(), 2);
  EXPECT_EQ(NameAt(store, 2), "Q2");
}

TEST_F(DQStoreTest, DQUpdateOnABadIndexDoesNothingAndRaisesNothing) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  store.DQUpdate(0, Named("X"));
  store.DQUpdate(5, Named("X"));
  EXPECT_EQ(NameAt(store, 1), "Q1");
  EXPECT_EQ(store.Count(), 1);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DQStoreTest, DQUpdateReplacesTheItemByACopy) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  auto dq = Named("NEW");
  store.DQUpdate(1, dq);
  dq->let_ResultColumnHeader("CHANGED");
  EXPECT_EQ(NameAt(store, 1), "NEW");
}

TEST_F(DQStoreTest, ARecordChangedAfterAddDoesNotChangeTheStoredCopy) {
  mxDQStore store;
  auto dq = Named("Q1");
  dq->AddArguments("A", "f", "s", "FOPR", false, "o", 1, "k");
  store.AddItem(dq);
  dq->let_ResultColumnHeader("CHANGED");
  dq->SetArguments(1, "Z", "f", "s", "ZZZ", false, "o", 1, "k");
  std::shared_ptr<mxDerivedQuantity> got;
  GetQuietly(store, 1, got);
  ASSERT_TRUE(got);
  EXPECT_EQ(got->get_ResultColumnHeader(), "Q1");
  EXPECT_EQ(got->GetArgumentName(1), "A");
}

TEST_F(DQStoreTest, ARecordGotFromTheStoreCanBeChangedFreely) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  std::shared_ptr<mxDerivedQuantity> got;
  GetQuietly(store, 1, got);
  got->let_ResultColumnHeader("CHANGED");
  std::shared_ptr<mxDerivedQuantity> again;
  GetQuietly(store, 1, again);
  EXPECT_NE(got.get(), again.get());
  EXPECT_EQ(again->get_ResultColumnHeader(), "Q1");
}

TEST_F(DQStoreTest, DQGetItemWithPositionZeroLeavesTheRecordAsItWas) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  auto mine = Named("MINE");
  auto before = mine.get();
  GetQuietly(store, 0, mine);
  EXPECT_EQ(mine.get(), before);
  EXPECT_EQ(mine->get_ResultColumnHeader(), "MINE");
  std::shared_ptr<mxDerivedQuantity> none;
  GetQuietly(store, 0, none);
  EXPECT_EQ(none, nullptr);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DQStoreTest, GetItemOnAnEmptyStoreIsRefused) {
  mxDQStore store;
  auto mine = Named("MINE");
  bool qOK = true;
  store.getItem(1, mine, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(mine->get_ResultColumnHeader(), "MINE");
  store.SetItem(1, Named("X"), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DQStoreTest, TheSpareCellCountsAsValid) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  bool qOK = false;
  EXPECT_TRUE(store.ValidItem(2, qOK));
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(store.ValidItem(3, qOK));
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(store.ValidItem(0, qOK));
}

TEST_F(DQStoreTest, GetItemOfTheSpareCellFaultsAndLogs) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  auto mine = Named("MINE");
  bool qOK = true;
  store.getItem(2, mine, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(mine->get_ResultColumnHeader(), "MINE");
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Object variable or With block variable not set (No.91) In [mxDQStore (Code) "
            "(getItem)] ");
}

TEST_F(DQStoreTest, SetItemFillsTheSpareCellWithoutCountingIt) {
  mxDQStore store;
  store.AddItem(Named("Q1"));
  bool qOK = false;
  store.SetItem(2, Named("SPARE"), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(store.Count(), 1);
  EXPECT_EQ(NameAt(store, 2), "SPARE");
  // The next add overwrites the filled spare cell.
  store.AddItem(Named("Q2"));
  EXPECT_EQ(store.Count(), 2);
  EXPECT_EQ(NameAt(store, 2), "Q2");
}

TEST_F(DQStoreTest, CopyCarriesEveryFieldAndPlainArguments) {
  mxDerivedQuantity from;
  from.let_Class("WELLS");
  from.let_Expression("A*B");
  from.let_Index("3");
  from.let_Member("P1");
  from.let_ResultColumnHeader("H1");
  from.let_ResultColumnHeaderBase("H");
  from.let_ResultOrigin("Case");
  from.let_ResultUnits("SM3");
  from.let_ResultVariable("RV");
  from.let_TargetDataDesc("Summary");
  from.let_TargetDataSet(6);
  from.let_Variable("V");
  from.let_Well("W");
  from.let_ResultSolIndex(8);
  from.let_StandardFunction(true);
  from.let_AmendedDataSetUsed(4);
  from.SetList(Array<std::string>{"P1", "P2"}, 2);
  from.let_qApplyToAll(true);
  from.let_qApplyToList(true);
  from.let_qApplyToAllGrids(true);
  bool qLGR = true;
  from.let_HasLGRs(qLGR);
  from.let_Verbose("Verbose");
  from.AddArguments("A", "a.f", "grp", "FOPR", true, "Case", 5, "FIELD");
  bool qOK = false;
  from.SetArgument_ReAssociate(1, true, qOK);

  std::shared_ptr<mxDerivedQuantity> to;
  mxDQStore::copyDQClass(from, to);
  ASSERT_TRUE(to);
  EXPECT_EQ(to->get_Class(), "WELLS");
  EXPECT_EQ(to->get_Expression(), "A*B");
  EXPECT_EQ(to->get_Index(), "3");
  EXPECT_EQ(to->get_Member(), "P1");
  EXPECT_EQ(to->get_ResultColumnHeader(), "H1");
  EXPECT_EQ(to->get_ResultColumnHeaderBase(), "H");
  EXPECT_EQ(to->get_ResultOrigin(), "Case");
  EXPECT_EQ(to->get_ResultUnits(), "SM3");
  EXPECT_EQ(to->get_ResultVariable(), "RV");
  EXPECT_EQ(to->get_TargetDataDesc(), "Summary");
  EXPECT_EQ(to->get_TargetDataSet(), 6);
  EXPECT_EQ(to->get_Variable(), "V");
  EXPECT_EQ(to->get_Well(), "W");
  EXPECT_EQ(to->get_ResultSolIndex(), 8);
  EXPECT_TRUE(to->get_StandardFunction());
  EXPECT_EQ(to->get_AmendedDataSetUsed(), 4);
  Array<std::string> zList;
  int32_t nList = 0;
  to->GetList(zList, nList);
  EXPECT_EQ(nList, 2);
  EXPECT_EQ(zList(2), "P2");
  EXPECT_TRUE(to->get_qApplyToAll());
  EXPECT_TRUE(to->get_qApplyToList());
  EXPECT_TRUE(to->get_qApplyToAllGrids());
  EXPECT_TRUE(to->get_HasLGRs());
  EXPECT_EQ(to->get_Verbose(), "Verbose");
  EXPECT_EQ(to->get_NumberOfArguments(), 1);
  std::string a, f, s, c, o, k;
  bool h = false;
  int32_t si = 0;
  to->GetArguments(1, a, f, s, c, h, o, si, k);
  EXPECT_EQ(a, "A");
  EXPECT_EQ(f, "a.f");
  EXPECT_EQ(s, "grp");
  EXPECT_EQ(c, "FOPR");
  EXPECT_TRUE(h);
  EXPECT_EQ(o, "Case");
  EXPECT_EQ(si, 5);
  EXPECT_EQ(k, "FIELD");
  EXPECT_TRUE(to->GetArgument_ReAssociate(1, qOK));
}

TEST_F(DQStoreTest, AResampledArgumentKeepsOnlyItsResamplingThroughTheStore) {
  auto dq = Named("Q");
  dq->AddArguments("A", "a.f", "grp", "FOPR", true, "Case", 5, "FIELD");
  dq->AddArguments("B", "b.f", "grp", "FWPR", false, "Case", 6, "FIELD");
  bool qOK = false;
  dq->SetArgument_ReAssociate(1, true, qOK);
  dq->SetArgument_ReAssociate(2, true, qOK);
  dq->SetResampleStepSize(1, 4);
  dq->SetResamplePeriod(2, 3, "MONTH", Date(36526.0));

  mxDQStore store;
  store.AddItem(dq);
  std::shared_ptr<mxDerivedQuantity> got;
  store.getItem(1, got, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(got->get_NumberOfArguments(), 2);
  int32_t iMethod = 0, iStep = 0, iInterval = 0;
  std::string zUnits;
  Date dStart;
  got->GetResampleMethod(1, iMethod);
  got->GetResampleStepSize(1, iStep);
  EXPECT_EQ(iMethod, 1);
  EXPECT_EQ(iStep, 4);
  got->GetResampleMethod(2, iMethod);
  got->GetResamplePeriod(2, iInterval, zUnits, dStart);
  EXPECT_EQ(iMethod, 2);
  EXPECT_EQ(iInterval, 3);
  EXPECT_EQ(zUnits, "MONTH");
  EXPECT_EQ(dStart.Days(), 36526.0);
  for (int32_t i = 1; i <= 2; ++i) {
    std::string a = "x", f = "x", s = "x", c = "x", o = "x", k = "x";
    bool h = true;
    int32_t si = 99;
    got->GetArguments(i, a, f, s, c, h, o, si, k);
    EXPECT_EQ(a, "");
    EXPECT_EQ(f, "");
    EXPECT_EQ(s, "");
    EXPECT_EQ(c, "");
    EXPECT_EQ(o, "");
    EXPECT_EQ(k, "");
    EXPECT_FALSE(h);
    EXPECT_EQ(si, 0);
    EXPECT_FALSE(got->GetArgument_ReAssociate(i, qOK));
  }
}

TEST_F(DQStoreTest, AddingAnEmptyReferenceIsLoggedAndAddsNothing) {
  mxDQStore store;
  store.AddItem(nullptr);
  EXPECT_EQ(store.Count(), 0);
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Object variable or With block variable not set (No.91) In [mxDQStore (Code) "
            "(AddItem)] ");
}

}  // namespace
