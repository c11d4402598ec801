#include <gtest/gtest.h>

#include "tests/store/store_fixtures.h"

namespace vndata {
namespace {

class DuplicatesTest : public StoreTest {
 protected:
  int32_t Check(const std::shared_ptr<mxDataSet>& ds, bool& qOK) {
    int32_t pos = 0;
    store.CheckPreviouslyLoaded(ds, pos, qOK);
    return pos;
  }
  int32_t Check(const std::shared_ptr<mxDataSet>& ds) {
    bool qOK = false;
    return Check(ds, qOK);
  }
  std::shared_ptr<mxDataSet> MakeTable(const std::string& zName, int32_t index) {
    auto ds = MakeSummary("TAB", {"X"}, "Tables");
    ds->let_TableName(zName);
    ds->let_Index(index);
    return ds;
  }
  std::shared_ptr<mxDataSet> MakeBranch(int32_t branch, int32_t index) {
    auto ds = MakeSummary("SEG", {"X"}, "SEGBRAN");
    ds->let_Branch(branch);
    ds->let_Index(index);
    return ds;
  }
};

TEST_F(DuplicatesTest, EmptyStoreFindsNothingAndLeavesTheDataSetAlone) {
  auto ds = MakeSummary("CASE");
  bool qOK = false;
  EXPECT_EQ(Check(ds, qOK), -1);
  EXPECT_TRUE(qOK);
  int32_t pos = 0;
  qOK = false;
  store.CheckPreviouslyLoaded2(ds, pos, qOK);
  EXPECT_EQ(pos, -1);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds->get_Origin(), "CASE");
}

TEST_F(DuplicatesTest, NameCheckOffFindsNothingAndReportsFalse) {
  store.AddItem(MakeSummary("CASE"));
  store.let_CheckDataSetNames(false);
  bool qOK = true;
  EXPECT_EQ(Check(MakeSummary("CASE"), qOK), -1);
  EXPECT_FALSE(qOK);
}

TEST_F(DuplicatesTest, GroupAndOriginIgnoreCase) {
  store.AddItem(MakeSummary("CASE1"));
  EXPECT_EQ(Check(MakeSummary("case1", {"WOPR"}, "SUMMARY")), 1);
}

TEST_F(DuplicatesTest, DifferentGridsAreDifferentDataSets) {
  auto a = MakeSummary("CASE");
  a->let_LGRName("LGR1");
  store.AddItem(a);
  auto b = MakeSummary("CASE");
  b->let_LGRName("LGR2");
  EXPECT_EQ(Check(b), -1);
  b->let_LGRName("lgr1");
  EXPECT_EQ(Check(b), 1);
}

TEST_F(DuplicatesTest, UnnumberedTablesAreAlwaysNew) {
  store.AddItem(MakeTable("PVT", 0));
  EXPECT_EQ(Check(MakeTable("PVT", 0)), -1);
}

TEST_F(DuplicatesTest, NumberedTablesOfOneNameAreTheSame) {
  store.AddItem(MakeTable("PVT", 1));
  EXPECT_EQ(Check(MakeTable("pvt", 1)), 1);
  EXPECT_EQ(Check(MakeTable("PVT", 2)), -1);
  EXPECT_EQ(Check(MakeTable("SCAL", 1)), -1);
}

TEST_F(DuplicatesTest, BranchZeroIsNeverTheSame) {
  store.AddItem(MakeBranch(0, 1));
  EXPECT_EQ(Check(MakeBranch(0, 1)), -1);
  store.AddItem(MakeBranch(2, 1));
  EXPECT_EQ(Check(MakeBranch(2, 1)), 2);
  EXPECT_EQ(Check(MakeBranch(2, 0)), -1);
}

TEST_F(DuplicatesTest, SamplesCompareStepGridAndFirstMember) {
  auto a = MakeSummary("S", {"X"});
  a->let_DataClass("Sample");
  a->let_Index(3);
  store.AddItem(a);
  auto b = MakeSummary("S", {"X"});
  b->let_Index(3);
  EXPECT_EQ(Check(b), 1);
  b->let_Index(4);
  EXPECT_EQ(Check(b), -1);
  b->let_Index(3);
  b->SetColumnAttribute(1, ATT_MEMBER, "P2");
  EXPECT_EQ(Check(b), -1);
}

TEST_F(DuplicatesTest, FileType24IsNeverATwinButIsStillRenamed) {
  store.AddItem(MakeSummary("CASE"));
  auto ds = MakeSummary("CASE");
  ds->let_FileType(24);
  EXPECT_EQ(Check(ds), -1);
  int32_t pos = 0;
  bool qOK = false;
  store.CheckPreviouslyLoaded2(ds, pos, qOK);
  EXPECT_EQ(pos, 1);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds->get_Origin(), "CASE1");
}

TEST_F(DuplicatesTest, ExtractGroupIsNeverATwin) {
  store.AddItem(MakeSummary("CASE", {"WOPR"}, "Extract"));
  EXPECT_EQ(Check(MakeSummary("CASE", {"WOPR"}, "EXTRACT")), -1);
}

TEST_F(DuplicatesTest, MonitoringFilesCompareTheirFilePattern) {
  auto a = MakeSummary("RTM");
  a->let_FileType(322);
  a->let_RTMFilePattern("well*.txt");
  store.AddItem(a);
  auto b = MakeSummary("RTM");
  b->let_FileType(323);
  b->let_RTMFilePattern("WELL*.TXT");
  EXPECT_EQ(Check(b), 1);
  b->let_RTMFilePattern("other*.txt");
  EXPECT_EQ(Check(b), -1);
}

TEST_F(DuplicatesTest, RenameSkipsNamesInUse) {
  store.let_CheckDataSetNames(false);
  store.AddItem(MakeSummary("CASE"));
  store.AddItem(MakeSummary("CASE1"));
  store.let_CheckDataSetNames(true);
  auto ds = MakeSummary("CASE");
  int32_t pos = 0;
  bool qOK = false;
  store.CheckPreviouslyLoaded2(ds, pos, qOK);
  EXPECT_EQ(ds->get_Origin(), "CASE2");
  EXPECT_EQ(pos, 1);
  EXPECT_TRUE(qOK);
}

TEST_F(DuplicatesTest, RenameGivesTheSameNumberToAllFourNames) {
  store.AddItem(MakeSummary("CASE"));
  auto ds = MakeSummary("CASE");
  ds->let_UniqueKey("KEY");
  ds->let_DataRootPath("PATH");
  ds->let_TVDisplayRoot("DISPLAY");
  int32_t pos = 0;
  bool qOK = false;
  store.CheckPreviouslyLoaded2(ds, pos, qOK);
  EXPECT_EQ(ds->get_Origin(), "CASE1");
  EXPECT_EQ(ds->get_UniqueKey(), "KEY1");
  EXPECT_EQ(ds->get_DataRootPath(), "PATH1");
  EXPECT_EQ(ds->get_TVDisplayRoot(), "DISPLAY1");
}

TEST_F(DuplicatesTest, RenameWithNameCheckOffRunsOnceAndReportsFalse) {
  store.AddItem(MakeSummary("CASE"));
  store.let_CheckDataSetNames(false);
  auto ds = MakeSummary("CASE");
  int32_t pos = 0;
  bool qOK = true;
  store.CheckPreviouslyLoaded2(ds, pos, qOK);
  EXPECT_EQ(ds->get_Origin(), "CASE1");
  EXPECT_FALSE(qOK);
}

TEST_F(DuplicatesTest, SuccessiveRenamesGiveCase1ThenCase2) {
  store.let_AutomaticRename(true);
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  auto second = MakeSummary("CASE");
  store.AddDataSet(second, qOK);
  auto third = MakeSummary("CASE");
  store.AddDataSet(third, qOK);
  EXPECT_EQ(second->get_Origin(), "CASE1");
  EXPECT_EQ(third->get_Origin(), "CASE2");
  EXPECT_EQ(store.get_NumberOfDataSets(), 3);
}

// ---- The duplicate question -------------------------------------------------------

TEST_F(DuplicatesTest, DialogShowsTheFixedTitleButtonsStyleAndText) {
  auto host = InstallScriptedHost({3});
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.AddDataSet(MakeSummary("CASE"), qOK);
  ASSERT_EQ(host->questions, 1);
  EXPECT_EQ(host->lastCaption, "Duplicate Name");
  EXPECT_EQ(host->lastStyle, 32);
  EXPECT_EQ(host->lastButtons, (std::vector<std::string>{"&Overwrite", "&Rename", "&Cancel"}));
  EXPECT_EQ(host->lastText, "CASE [Summary]\r\n\r\n Name currently in use.");
}

TEST_F(DuplicatesTest, AnswerOneOverwritesAndStandsForTheNextAdds) {
  auto host = InstallScriptedHost({1});
  bool qOK = true;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  auto twin = MakeSummary("CASE");
  store.AddDataSet(twin, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(store.get_OverWrittenDataSet());
  EXPECT_TRUE(store.get_AutomaticOverWrite());
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
  store.AddDataSet(MakeSummary("CASE"), qOK);
  EXPECT_EQ(host->questions, 1);
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
}

TEST_F(DuplicatesTest, AnswerTwoRenamesAndStandsForTheNextAdds) {
  auto host = InstallScriptedHost({2});
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  auto twin = MakeSummary("CASE");
  store.AddDataSet(twin, qOK);
  EXPECT_EQ(twin->get_Origin(), "CASE1");
  EXPECT_TRUE(store.get_AutomaticRename());
  EXPECT_FALSE(store.get_RenamedDataSet());
  auto third = MakeSummary("CASE");
  store.AddDataSet(third, qOK);
  EXPECT_EQ(third->get_Origin(), "CASE2");
  EXPECT_EQ(host->questions, 1);
  EXPECT_EQ(store.get_NumberOfDataSets(), 3);
}

TEST_F(DuplicatesTest, AnswerTwoThroughAddAfterCheckSetsRenamedDataSet) {
  InstallScriptedHost({2});
  bool qOK = false;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.AddDataSetAfterCheck(MakeSummary("CASE"), qOK);
  EXPECT_TRUE(store.get_RenamedDataSet());
}

TEST_F(DuplicatesTest, AnswerThreeCancelsAndStandsForTheNextAdds) {
  auto host = InstallScriptedHost({3});
  bool qOK = true;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.AddDataSet(MakeSummary("CASE"), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(store.get_AutomaticCancel());
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
  store.AddDataSet(MakeSummary("CASE"), qOK);
  EXPECT_EQ(host->questions, 1);
}

TEST_F(DuplicatesTest, WithoutAHostTheQuestionIsAnsweredWithCancel) {
  bool qOK = true;
  store.AddDataSet(MakeSummary("CASE"), qOK);
  store.AddDataSet(MakeSummary("CASE"), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(store.get_AutomaticCancel());
  EXPECT_EQ(store.get_NumberOfDataSets(), 1);
}

}  // namespace
}  // namespace vndata
