#include <gtest/gtest.h>

#include "tests/store/store_fixtures.h"
#include "vndata/store/internal/store_forward.h"

namespace vndata {
namespace {

class RegistryTest : public StoreTest {};

TEST_F(RegistryTest, NewStoreHasNoDataSetsAndItsSpareSlotIsValid) {
  EXPECT_EQ(store.get_NumberOfDataSets(), 0);
  EXPECT_TRUE(store.ValidDataSet(1));
  std::shared_ptr<mxDataSet> spare;
  EXPECT_TRUE(store.GetDataSet(1, spare));
  ASSERT_NE(spare, nullptr);
  EXPECT_EQ(spare->get_NumCols(), 0);
}

TEST_F(RegistryTest, BadPositionsAreInvalidWithoutLogging) {
  store.AddItem(MakeSummary("CASE"));
  EXPECT_FALSE(store.ValidDataSet(0));
  EXPECT_FALSE(store.ValidDataSet(-1));
  EXPECT_FALSE(store.ValidDataSet(store.get_NumberOfDataSets() + 2));
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(RegistryTest, AddReportsTheCheckNotTheAdd) {
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
  EXPECT_EQ(store.get_AddedDataSetPos(), 1);
  EXPECT_FALSE(store.get_OverWrittenDataSet());
  EXPECT_TRUE(store.get_IsModified());
}

TEST_F(RegistryTest, WithNameCheckOffAnExactTwinIsAppendedAndQokIsFalse) {
  bool qOK = true;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.let_CheckDataSetNames(false);
  store.AddDataSet(MakeSummary("CASE"), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 2);
  EXPECT_EQ(store.get_AddedDataSetPos(), 2);
}

TEST_F(RegistryTest, AddAfterCheckWithoutTheCheckReportsFalse) {
  bool qOK = true;
  store.AddDataSetAfterCheck(MakeSummary("CASE"), qOK, false);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
}

TEST_F(RegistryTest, AutomaticOverwriteReplacesTheTwinInPlace) {
  bool qOK = false;
  store.AddDataSet(MakeSummary("OTHER"), qOK);
  store.AddDataSet(MakeSummary("CASE"), qOK);
  auto twin = MakeSummary("CASE");
  store.let_AutomaticOverWrite(true);
  qOK = true;
  store.AddDataSet(twin, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 2);
  EXPECT_EQ(store.get_AddedDataSetPos(), 2);
  EXPECT_TRUE(store.get_OverWrittenDataSet());
  std::shared_ptr<mxDataSet> held;
  ASSERT_TRUE(store.GetDataSet(2, held));
  EXPECT_EQ(held, twin);
}

TEST_F(RegistryTest, OverwriteWinsOverRename) {
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.let_AutomaticOverWrite(true);
  store.let_AutomaticRename(true);
  auto twin = MakeSummary("CASE");
  store.AddDataSet(twin, qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
  EXPECT_TRUE(store.get_OverWrittenDataSet());
  EXPECT_EQ(twin->get_Origin(), "CASE");
}

TEST_F(RegistryTest, AutomaticCancelKeepsThePreviousAddedPosition) {
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.AddDataSet(MakeSummary("OTHER"), qOK);
  ASSERT_EQ(store.get_AddedDataSetPos(), 2);
  store.let_AutomaticCancel(true);
  qOK = true;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 2);
  EXPECT_EQ(store.get_AddedDataSetPos(), 2);
}

TEST_F(RegistryTest, AddDataSetRenamesWithoutSettingRenamedDataSet) {
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.let_AutomaticRename(true);
  auto twin = MakeSummary("CASE");
  store.AddDataSet(twin, qOK);
  EXPECT_EQ(twin->get_Origin(), "CASE1");
  EXPECT_EQ(store.get_NumberOfDataSets(), 2);
  EXPECT_FALSE(store.get_RenamedDataSet());
}

TEST_F(RegistryTest, AddDataSetAfterCheckRenamesAndSetsRenamedDataSet) {
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.let_AutomaticRename(true);
  auto twin = MakeSummary("CASE");
  store.AddDataSetAfterCheck(twin, qOK);
  EXPECT_EQ(twin->get_Origin(), "CASE1");
  EXPECT_TRUE(store.get_RenamedDataSet());
  EXPECT_TRUE(qOK);
}

TEST_F(RegistryTest, DefaultXOfMinusOneWithoutTimeColumnBecomesOne) {
  auto ds = MakeSummary("CASE");
  ds->let_DefaultX(-1);
  bool qOK = false;
  store.AddDataSet(ds, qOK);
  EXPECT_EQ(ds->get_DefaultX(), 1);
}

TEST_F(RegistryTest, DefaultXOfMinusOneFindsTheTimeColumn) {
  auto ds = MakeSummary("CASE", {"WOPR", "TIME"});
  ds->let_DefaultX(-1);
  bool qOK = false;
  store.AddDataSet(ds, qOK);
  EXPECT_EQ(ds->get_DefaultX(), 2);
}

TEST_F(RegistryTest, AddItemAutoLeavesTheSpareNullAndTheNextAddStillWorks) {
  store.let_UseNullVal(1);
  store.let_NullValue(-5.0);
  auto ds = MakeSummary("CASE");
  store.AddItemAuto(ds);
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
  EXPECT_FALSE(store.ValidDataSet(store.get_NumberOfDataSets() + 1));
  EXPECT_EQ(ds->get_NullValue(), -5.0);
  EXPECT_EQ(ds->get_UseNullVal(), 1);
  bool qOK = false;
  store.AddDataSet(MakeSummary("OTHER"), qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 2);
  EXPECT_TRUE(store.ValidDataSet(3));
}

TEST_F(RegistryTest, AddItemAutoRenamesADuplicateWithoutAsking) {
  auto host = InstallScriptedHost({});
  store.AddItem(MakeSummary("CASE"));
  auto twin = MakeSummary("CASE");
  store.AddItemAuto(twin);
  EXPECT_EQ(twin->get_Origin(), "CASE1");
  EXPECT_EQ(host->questions, 0);
}

TEST_F(RegistryTest, GetDataSetAndGetItemHandOutTheStoredObject) {
  auto ds = MakeSummary("CASE");
  store.AddItem(ds);
  std::shared_ptr<mxDataSet> a, b;
  EXPECT_TRUE(store.GetDataSet(1, a));
  EXPECT_TRUE(store.GetItem(1, b));
  EXPECT_EQ(a, ds);
  EXPECT_EQ(a, b);
  a->let_FileName("changed.smspec");
  std::shared_ptr<mxDataSet> c;
  store.GetItem(1, c);
  EXPECT_EQ(c->get_FileName(), "changed.smspec");
}

TEST_F(RegistryTest, GetDataSetOnABadPositionLeavesTheOutput) {
  auto mine = std::make_shared<mxDataSet>();
  std::shared_ptr<mxDataSet> out = mine;
  EXPECT_FALSE(store.GetDataSet(5, out));
  EXPECT_EQ(out, mine);
}

TEST_F(RegistryTest, ExtendThenTrimKeepsTheCount) {
  store.AddItem(MakeSummary("CASE"));
  bool qOK = false;
  store.ExtendDataSets(100, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
  store.ExtendDataSets(0, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
  EXPECT_TRUE(store.ValidDataSet(2));
  EXPECT_FALSE(store.ValidDataSet(3));
  store.AddItem(MakeSummary("OTHER"));
  EXPECT_EQ(store.get_NumberOfDataSets(), 2);
  EXPECT_TRUE(store.ValidDataSet(3));
}

TEST_F(RegistryTest, SetItemFillsAnySlotUpToTheSpareAndMarksOverwrite) {
  auto ds = MakeSummary("CASE");
  EXPECT_TRUE(store.SetItem(1, ds));
  EXPECT_EQ(store.get_AddedDataSetPos(), 1);
  EXPECT_TRUE(store.get_OverWrittenDataSet());
  EXPECT_FALSE(store.get_IsModified());
  EXPECT_FALSE(store.SetItem(3, ds));
}

TEST_F(RegistryTest, AppendColumnTakesTheDataSetOrigin) {
  store.AddItem(MakeSummary("CASE"));
  Array<float> vals{1.f, 2.f, 3.f};
  Array<std::string> atts(1, 14);
  atts(4) = "IGNORED";
  atts(11) = "WWCT";
  bool qOK = false;
  store.AppendColumnToDataSet(1, vals, atts, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(atts(4), "CASE");
  std::shared_ptr<mxDataSet> ds;
  store.GetItem(1, ds);
  EXPECT_EQ(ds->get_NumCols(), 2);
  std::string zOrigin;
  ds->GetAttribute(2, ATT_ORIGIN, zOrigin);
  EXPECT_EQ(zOrigin, "CASE");
}

TEST_F(RegistryTest, AppendColumnOnABadPositionReportsFalse) {
  Array<float> vals{1.f};
  Array<std::string> atts(1, 14);
  atts(4) = "KEEP";
  bool qOK = true;
  store.AppendColumnToDataSet(7, vals, atts, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(atts(4), "KEEP");
}

TEST_F(RegistryTest, NullValuesArePushedDownOnlyOnRequest) {
  auto ds = MakeSummary("CASE");
  store.AddItem(ds);
  store.let_UseNullVal(0);
  store.let_NullValue(-1.0);
  EXPECT_EQ(ds->get_NullValue(), -999.0);
  store.SET_GLOBAL_USING_NULLS();
  EXPECT_EQ(ds->get_UseNullVal(), 0);
  EXPECT_EQ(ds->get_NullValue(), -999.0);
  store.SET_GLOBAL_NULLVALUES();
  EXPECT_EQ(ds->get_NullValue(), -1.0);
}

TEST_F(RegistryTest, GetDataNullValueOnABadPositionGivesTheDefaults) {
  int32_t qUse = 7;
  double dNull = 7.0;
  store.GetDataNULLVALUE(9, qUse, dNull);
  EXPECT_EQ(qUse, 0);
  EXPECT_EQ(dNull, -999999.0);
  store.AddItem(MakeSummary("CASE"));
  store.SetDataNULLVALUE(1, 1, -42.0);
  store.GetDataNULLVALUE(1, qUse, dNull);
  EXPECT_EQ(qUse, 1);
  EXPECT_EQ(dNull, -42.0);
}

TEST_F(RegistryTest, ReInitialiseKeepsStandingAnswersAndKeys) {
  store.let_AutomaticRename(true);
  store.let_RootKey("ROOT");
  store.let_CheckDataSetNames(false);
  store.let_RenamedDataSet(true);
  store.AddItem(MakeSummary("CASE"));
  store.ReInitialise();
  EXPECT_EQ(store.get_NumberOfDataSets(), 0);
  EXPECT_TRUE(store.get_AutomaticRename());
  EXPECT_EQ(store.get_RootKey(), "ROOT");
  EXPECT_TRUE(store.get_CheckDataSetNames());
  EXPECT_FALSE(store.get_RenamedDataSet());
  EXPECT_FALSE(store.get_IsModified());
  EXPECT_EQ(store.get_AddedDataSetPos(), 1);
}

TEST_F(RegistryTest, FolderKeyFollowsRootAndMainKeys) {
  store.let_RootKey("Root");
  EXPECT_EQ(store.get_FolderKey(), "ROOT");
  store.let_MainKey("Main");
  EXPECT_EQ(store.get_FolderKey(), "ROOT\\MAIN");
}

TEST_F(RegistryTest, ProgressContainerFlagSurvivesANullContainer) {
  auto pct = std::make_shared<ProgressContainer>();
  store.set_pctContainer(pct);
  EXPECT_TRUE(Module().pctContainerSet);
  store.set_pctContainer(nullptr);
  EXPECT_EQ(store.get_pctContainer(), nullptr);
  EXPECT_TRUE(Module().pctContainerSet);
}

TEST_F(RegistryTest, CancelLoadIsSharedByTheStoresOfAThread) {
  mxDataStore other;
  store.let_CancelLoad(true);
  EXPECT_TRUE(other.get_CancelLoad());
  other.let_CancelLoad(false);
  EXPECT_FALSE(store.get_CancelLoad());
}

TEST_F(RegistryTest, AFaultInsideAForwarderLogsOneSpacedTraceLineAndTheStoreStaysUsable) {
  store.AddItem(MakeSummary("CASE"));
  int32_t result = store.Forward("mxDataStore (Code) (Probe)", 1, int32_t{-1}, [](mxDataSet&) -> int32_t {
    RaiseFault(kFaultSubscript);
  });
  EXPECT_EQ(result, -1);
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error: Subscript out of range (No. 9) In [mxDataStore (Code) (Probe)] ");
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
  store.AddItem(MakeSummary("OTHER"));
  EXPECT_EQ(store.get_NumberOfDataSets(), 2);
}

TEST_F(RegistryTest, ForwarderOnABadPositionReturnsTheDefaultSilently) {
  bool called = false;
  int32_t result = store.Forward("mxDataStore (Code) (Probe)", 0, int32_t{5}, [&](mxDataSet&) {
    called = true;
    return int32_t{1};
  });
  EXPECT_EQ(result, 5);
  EXPECT_FALSE(called);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

}  // namespace
}  // namespace vndata
