#include <gtest/gtest.h>

#include <string>

#include "tests/store/store_fixtures.h"

namespace vndata {
namespace {

class OriginsTest : public StoreTest {
 protected:
  void SetUp() override {
    StoreTest::SetUp();
    // Data sets of these tests may share origin and group on purpose.
    store.let_CheckDataSetNames(false);
  }

  // Adds a data set of one column a variable; returns its position.
  int32_t Add(const std::string& zOrigin, const std::string& zGroup,
              std::initializer_list<const char*> variables = {"WOPR"}, int32_t iIndex = -1) {
    auto ds = MakeSummary(zOrigin, variables, zGroup);
    ds->let_Index(iIndex);
    bool qOK = false;
    store.AddDataSet(ds, qOK);
    return store.get_AddedDataSetPos();
  }

  std::shared_ptr<mxDataSet> At(int32_t iDataSet) {
    std::shared_ptr<mxDataSet> ds;
    store.GetDataSet(iDataSet, ds);
    return ds;
  }

  int32_t Resolve(const std::string& zOrigin, std::string zType, int32_t Index = -1,
                  const std::string& zName = "") {
    return store.GetOriginIndex(zOrigin, zType, Index, zName);
  }
  int32_t ResolveEx(const std::string& zOrigin, std::string zType, int32_t Index = -1,
                    int32_t iBranch = -1, const std::string& zName = "") {
    return store.GetOriginIndexEx(zOrigin, zType, Index, iBranch, zName);
  }
};

// ---- An empty store ----------------------------------------------------------------------

TEST_F(OriginsTest, AnEmptyStoreMissesEverywhere) {
  EXPECT_EQ(store.GetOriginIndex("CASE"), -1);
  EXPECT_EQ(store.GetOriginIndexEx("CASE"), -1);
  EXPECT_EQ(store.GetDataSetFromTreeViewKey("root\\Summary\\WOPR"), 0);
  Array<std::string> zOrigins{"old"};
  int32_t nOrigins = 7;
  bool qOK = false;
  store.GetAllOrigins(zOrigins, nOrigins, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nOrigins, 0);
  EXPECT_FALSE(zOrigins.IsAllocated());
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

// ---- The origin test ------------------------------------------------------------------------

TEST_F(OriginsTest, OriginsMatchWhateverTheCase) {
  Add("OTHER", "Summary");
  Add("CASE1", "Summary");
  EXPECT_EQ(store.GetOriginIndex("case1"), 2);
  EXPECT_EQ(store.GetOriginIndexEx("Case1"), 2);
}

TEST_F(OriginsTest, DataFindsANumberedCopyOfTheCaseOnly) {
  Add("CASE_2B", "DATA");
  Add("CASEX_2", "DATA");
  EXPECT_EQ(Resolve("CASE", "DATA"), -1);
  Add("CASE_2", "DATA");
  EXPECT_EQ(Resolve("CASE", "DATA"), 3);
  EXPECT_EQ(ResolveEx("case", "data"), 3);
}

TEST_F(OriginsTest, OnlyTheDataTypeMatchesPartially) {
  Add("CASE_2", "SOLUTION\\GRID\\0001");
  EXPECT_EQ(Resolve("CASE", "SOLUTION"), -1);
  EXPECT_EQ(Resolve("CASE_2", "SOLUTION"), 1);
  bool qPartial = true, qFull = true, qOK = true;
  store.CheckOriginMatch("CASE", 1, "data", qPartial, qFull, qOK);
  EXPECT_TRUE(qPartial);
  EXPECT_FALSE(qFull);
  store.CheckOriginMatch("CASE", 1, "SOLUTION", qPartial, qFull, qOK);
  EXPECT_FALSE(qPartial);
  EXPECT_FALSE(qFull);
  store.CheckOriginMatch("CASE_2", 1, "", qPartial, qFull, qOK);
  EXPECT_TRUE(qFull);
}

TEST_F(OriginsTest, TheCallersTypeComesBackUpperCased) {
  Add("CASE", "Summary");
  std::string zType = "summary";
  EXPECT_EQ(store.GetOriginIndex("CASE", zType), 1);
  EXPECT_EQ(zType, "SUMMARY");
  std::string zTypeEx = "Rft";
  EXPECT_EQ(store.GetOriginIndexEx("CASE", zTypeEx), -1);
  EXPECT_EQ(zTypeEx, "RFT");
}

TEST_F(OriginsTest, AnEmptyTypeTakesTheFirstDataSetOfTheOrigin) {
  Add("CASE", "RFT\\W1", {"PRESSURE"}, 4);
  Add("CASE", "Summary");
  std::string zType;
  EXPECT_EQ(store.GetOriginIndex("CASE", zType, 9, "nothing"), 1);
}

TEST_F(OriginsTest, TheTypeIsTheFirstGroupElement) {
  Add("CASE", "Summary");
  Add("CASE", "RESTART\\X", {"PRESSURE"}, 0);
  EXPECT_EQ(Resolve("CASE", "RESTART"), 2);
  EXPECT_EQ(Resolve("CASE", "X"), -1);
}

// ---- The data request ------------------------------------------------------------------------

TEST_F(OriginsTest, ADataRequestForAVectorFindsItsHistoryForm) {
  Add("CASE", "DATA", {"FOPR"});
  Add("CASE", "DATA", {"WOPRH"});
  EXPECT_EQ(Resolve("CASE", "DATA", -1, "WOPR"), 2);
  EXPECT_EQ(ResolveEx("CASE", "DATA", -1, -1, "WOPR"), 2);
  EXPECT_EQ(Resolve("CASE", "DATA", -1, "FOPR"), 1);
  EXPECT_EQ(Resolve("CASE", "DATA", -1, "GOPR"), -1);
  EXPECT_EQ(Resolve("CASE", "DATA"), 1);
}

TEST_F(OriginsTest, ADataRequestAlsoTriesThePieceAfterTheSeparator) {
  Add("CASE", "DATA", {"WOPR"});
  EXPECT_EQ(Resolve("CASE", "DATA", -1, "WELLS\\P1\\WOPR"), 1);  // the whole path fits
  EXPECT_EQ(Resolve("CASE", "DATA", -1, "SOMETHING\\WOPR"), 1);  // the piece after "\"
  EXPECT_EQ(Resolve("CASE", "DATA", -1, "SOMETHING\\ELSE"), -1);
}

TEST_F(OriginsTest, TheBranchAwareResolverRejectsATableWithoutAName) {
  Add("CASE", "TABLE", {"PVTO"});
  EXPECT_EQ(Resolve("CASE", "TABLE"), 1);
  EXPECT_EQ(ResolveEx("CASE", "TABLE"), -1);
  EXPECT_EQ(ResolveEx("CASE", "TABLE", -1, -1, "PVTO"), 1);
  Add("CASE", "TABLES", {"SWOFH"});
  // Neither the history form nor the split for tables in the branch-aware one.
  EXPECT_EQ(Resolve("CASE", "TABLES", -1, "SWOF"), 2);
  EXPECT_EQ(ResolveEx("CASE", "TABLES", -1, -1, "SWOF"), -1);
  EXPECT_EQ(ResolveEx("CASE", "TABLES", -1, -1, "X\\SWOFH"), -1);
  EXPECT_EQ(Resolve("CASE", "TABLES", -1, "X\\SWOFH"), 2);
}

TEST_F(OriginsTest, AnInitRequestComparesTheGridNameWithCase) {
  const int32_t iRoot = Add("CASE", "INIT");
  const int32_t iLgr = Add("CASE", "INIT");
  At(iLgr)->let_LGRName("Lgr1");
  EXPECT_EQ(Resolve("CASE", "INIT", -1, "Lgr1"), iLgr);
  EXPECT_EQ(Resolve("CASE", "INIT", -1, "LGR1"), -1);
  EXPECT_EQ(ResolveEx("CASE", "INIT", -1, -1, "Lgr1"), iLgr);
  EXPECT_EQ(Resolve("CASE", "INIT"), iRoot);
}

// ---- Index, names and branches ---------------------------------------------------------------

TEST_F(OriginsTest, IndexZeroFiltersOnIndexAndMinusOneDoesNot) {
  Add("CASE", "RESTART", {"PRESSURE"}, 3);
  Add("CASE", "RESTART", {"PRESSURE"}, 0);
  EXPECT_EQ(Resolve("CASE", "RESTART", 0), 2);
  EXPECT_EQ(Resolve("CASE", "RESTART", -1), 1);
  EXPECT_EQ(Resolve("CASE", "RESTART", 3), 1);
  EXPECT_EQ(Resolve("CASE", "RESTART", 5), -1);
}

TEST_F(OriginsTest, PltBranAndTheLongBranchSpellings) {
  const int32_t iPltBran = Add("C", "PLTBRAN\\B1\\W1", {"QO"}, 2);
  const int32_t iPltBranch = Add("C", "PLTBRANCH\\B1\\W1", {"QO"}, 2);
  const int32_t iSegBran = Add("C", "SEGBRAN\\B1\\W1", {"QO"}, 2);
  for (int32_t i : {iPltBran, iPltBranch, iSegBran}) At(i)->let_Branch(1);
  // The plain resolver: the last element.
  EXPECT_EQ(Resolve("C", "PLTBRAN", 2, "w1"), iPltBran);
  EXPECT_EQ(Resolve("C", "PLTBRAN", 2, "B1"), -1);
  // The branch-aware one: the short spelling is rejected with a branch...
  EXPECT_EQ(ResolveEx("C", "PLTBRAN", 2, 1, "W1"), -1);
  EXPECT_EQ(ResolveEx("C", "PLTBRAN", 2, 1, "B1"), -1);
  // ...and needs no name without one.
  EXPECT_EQ(ResolveEx("C", "PLTBRAN", 2, -1, "anything"), iPltBran);
  // The long spelling and SEGBRAN compare the last element but one.
  EXPECT_EQ(ResolveEx("C", "PLTBRANCH", 2, 1, "b1"), iPltBranch);
  EXPECT_EQ(ResolveEx("C", "PLTBRANCH", 2, 1, "W1"), -1);
  EXPECT_EQ(ResolveEx("C", "SEGBRAN", 2, 1, "B1"), iSegBran);
  EXPECT_EQ(ResolveEx("C", "SEGBRAN", 2, 2, "B1"), -1);
  EXPECT_EQ(ResolveEx("C", "SEGBRAN", 3, 1, "B1"), -1);
}

TEST_F(OriginsTest, PltAndRftCompareTheLastElementSolutionTheSecondOfThree) {
  const int32_t iRft = Add("C", "RFT\\01-JAN-2020\\P1", {"PRESSURE"}, 1);
  const int32_t iSol = Add("C", "SOLUTION\\LGR1\\0005", {"PRESSURE"}, 5);
  EXPECT_EQ(Resolve("C", "RFT", 1, "p1"), iRft);
  EXPECT_EQ(Resolve("C", "RFT", 1, "P2"), -1);
  EXPECT_EQ(ResolveEx("C", "RFT", 1, -1, "P1"), iRft);
  EXPECT_EQ(Resolve("C", "SOLUTION", 5, "lgr1"), iSol);
  EXPECT_EQ(Resolve("C", "SOLUTION", 5, "0005"), -1);
  EXPECT_EQ(ResolveEx("C", "SOLUTION", 5, -1, "LGR1"), iSol);
}

TEST_F(OriginsTest, SampleAndExtractRowsUseTheDateAndTheFirstMember) {
  const int32_t iSample = Add("C", "SAMPLE");
  At(iSample)->let_DateStamp("01/02/2020");
  const int32_t iExtract = Add("C", "EXTRACT\\X");
  At(iExtract)->let_DateStamp("03/04/2021");
  EXPECT_EQ(Resolve("C", "SAMPLE", -1, "01/02/2020"), iSample);
  EXPECT_EQ(Resolve("C", "SAMPLE", -1, "02/02/2020"), -1);
  EXPECT_EQ(Resolve("C", "EXTRACT"), iExtract);
  EXPECT_EQ(Resolve("C", "EXTRACT", -1, "03/04/2021"), iExtract);
  EXPECT_EQ(Resolve("C", "EXTRACT", -1, "03/04/2021\\p1"), iExtract);
  EXPECT_EQ(Resolve("C", "EXTRACT", -1, "03/04/2021\\P2"), -1);
  EXPECT_EQ(ResolveEx("C", "EXTRACT", -1, -1, "03/04/2021\\P1"), iExtract);
}

TEST_F(OriginsTest, AmongSeveralThatFitTheLowestPositionWins) {
  Add("CASE", "Summary");
  Add("CASE", "Summary");
  Add("CASE", "Summary");
  EXPECT_EQ(Resolve("CASE", "SUMMARY"), 1);
  EXPECT_EQ(ResolveEx("CASE", "SUMMARY"), 1);
}

TEST_F(OriginsTest, AFaultWritesOneLineUnderTheLowerCaseProcedureName) {
  Add("CASE", "Summary");
  Add("CASE", "Summary");
  ASSERT_TRUE(store.SetItem(1, nullptr));
  MessageLog::Shared().Clear();
  EXPECT_EQ(store.GetOriginIndex("CASE"), -1);
  EXPECT_EQ(store.GetOriginIndexEx("CASE"), -1);
  const auto& lines = MessageLog::Shared().Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0],
            "Error: Object variable or With block variable not set (No. 91) In [mxDataStore (Code) "
            "(getOriginIndex)] ");
  EXPECT_EQ(lines[1],
            "Error: Object variable or With block variable not set (No. 91) In [mxDataStore (Code) "
            "(getOriginIndexEx)] ");
}

// ---- Lookups around the resolvers -----------------------------------------------------------------

TEST_F(OriginsTest, DatasetFromOriginIsCaseSensitiveAndWantsAPlotClass) {
  const int32_t iTable = Add("Case", "TABLE");
  const int32_t iPlot = Add("Case", "Summary");
  At(iPlot)->let_DataClass("Summary");
  EXPECT_EQ(store.get_GetDatasetFromOrigin("Case"), iPlot);
  EXPECT_EQ(store.get_GetDatasetFromOrigin("CASE"), -1);
  At(iTable)->let_DataClass("PLOT");
  EXPECT_EQ(store.get_GetDatasetFromOrigin("Case"), iTable);
  At(iTable)->let_DataClass("plot");
  EXPECT_EQ(store.get_GetDatasetFromOrigin("Case"), iPlot);
}

TEST_F(OriginsTest, AllOriginsKeepTheFirstSpelling) {
  Add("a", "Summary");
  Add("A", "Summary");
  Add("b", "Summary");
  Array<std::string> zOrigins;
  int32_t nOrigins = 0;
  bool qOK = false;
  store.GetAllOrigins(zOrigins, nOrigins, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(nOrigins, 2);
  ASSERT_EQ(zOrigins.UBound(), 2);
  EXPECT_EQ(zOrigins(1), "a");
  EXPECT_EQ(zOrigins(2), "b");
}

TEST_F(OriginsTest, AllOriginsGrowPastThirty) {
  for (int32_t k = 1; k <= 35; ++k) Add("C" + std::to_string(k), "Summary");
  Array<std::string> zOrigins;
  int32_t nOrigins = 0;
  bool qOK = false;
  store.GetAllOrigins(zOrigins, nOrigins, qOK);
  ASSERT_EQ(nOrigins, 35);
  EXPECT_EQ(zOrigins.UBound(), 35);
  EXPECT_EQ(zOrigins(35), "C35");
}

TEST_F(OriginsTest, OriginsByDataAttributeAreUpperCaseAndDistinct) {
  At(Add("case1", "Summary"))->let_SourceType("ecl");
  At(Add("CASE1", "Summary"))->let_SourceType("ECL");
  At(Add("case2", "Summary"))->let_SourceType("VIP");
  At(Add("case3", "Summary"))->let_SourceType("Ecl");
  Array<std::string> zOrigins;
  bool qOK = false;
  store.GetOriginsByDataAttribute(3, "Ecl", zOrigins, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(zOrigins.UBound(), 2);
  EXPECT_EQ(zOrigins(1), "CASE1");
  EXPECT_EQ(zOrigins(2), "CASE3");
  store.GetOriginsByDataAttribute(3, "NONE", zOrigins, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(zOrigins.UBound(), 4);
  EXPECT_EQ(zOrigins(1), "");
}

TEST_F(OriginsTest, OriginsByDataAttributeOfAnEmptyStoreLeaveTheArray) {
  Array<std::string> zOrigins{"x"};
  bool qOK = true;
  store.GetOriginsByDataAttribute(1, "", zOrigins, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(zOrigins.UBound(), 1);
  EXPECT_EQ(zOrigins(1), "x");
}

TEST_F(OriginsTest, TreeViewKeyFindsTheDataSetByRootAndGroup) {
  const int32_t iSummary = Add("CASE", "Summary");
  const int32_t iInit = Add("CASE", "Init");
  At(iInit)->let_LGRName("LGR1");
  EXPECT_EQ(store.GetDataSetFromTreeViewKey("ROOT\\SUMMARY\\WELLS\\P1\\WOPR"), 0);
  EXPECT_EQ(store.GetDataSetFromTreeViewKey("root\\SUMMARY\\WOPR"), iSummary);
  // A local grid's folder holds its grid name...
  EXPECT_EQ(store.GetDataSetFromTreeViewKey("root\\init\\lgr1\\PORO"), iInit);
  // ...and the second pass finds the group without it.
  EXPECT_EQ(store.GetDataSetFromTreeViewKey("root\\Init\\PORO"), iInit);
  EXPECT_EQ(store.GetDataSetFromTreeViewKey("nothing"), 0);
}

TEST_F(OriginsTest, ExtractedKeyIsGroupSubclassGridAndMember) {
  auto ds = MakeSummary("CASE", {"WOPR"}, "EXTRACT\\E1");
  ds->let_LGRName("LGR1");
  ds->let_UniqueKey("KEY-7");
  ASSERT_TRUE(ds->SetColumnAttribute(1, ATT_SUBCLASS1, "S1"));
  bool qOK = false;
  store.AddDataSet(MakeSummary("OTHER"), qOK);
  store.AddDataSet(ds, qOK);
  std::string zFind = "EXTRACT\\E1\\S1\\LGR1 P1";
  int32_t iDataSet = 0;
  EXPECT_FALSE(store.CheckExtractedKey("case", "E2", zFind, iDataSet));
  EXPECT_EQ(iDataSet, -1);
  EXPECT_TRUE(store.CheckExtractedKey("case", "E1", zFind, iDataSet));
  EXPECT_EQ(iDataSet, 2);
  EXPECT_EQ(zFind, "KEY-7");
  std::string zWrong = "extract\\E1\\S1\\LGR1 P1";
  EXPECT_FALSE(store.CheckExtractedKey("CASE", "E1", zWrong, iDataSet));
  EXPECT_EQ(zWrong, "extract\\E1\\S1\\LGR1 P1");
}

TEST_F(OriginsTest, WellsComeFromTheClassOfTheFileType) {
  const int32_t iWells = Add("CASE", "Summary", {"WOPR"});  // class WELLS, member P1
  Array<std::string> zWells;
  int32_t nWells = 0;
  bool qOK = false;
  store.GetAllWells(iWells, zWells, nWells, qOK);  // file type 3: "WELLS"
  EXPECT_TRUE(qOK);
  ASSERT_EQ(nWells, 1);
  EXPECT_EQ(zWells(1), "P1");
  At(iWells)->let_FileType(32);  // "WELL", then "WELLS"
  nWells = 0;
  store.GetAllWells(iWells, zWells, nWells, qOK);
  ASSERT_EQ(nWells, 1);
  At(iWells)->let_FileType(113);  // "WAF" twice
  store.GetAllWells(iWells, zWells, nWells, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nWells, 0);
  qOK = true;
  store.GetAllWells(0, zWells, nWells, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(OriginsTest, WellsOfASolutionComeFromItsMarkers) {
  const int32_t i = Add("CASE", "SOLUTION", {"PRESSURE"});
  At(i)->let_DataClass("SOLUTION");
  Array<std::string> zWells;
  int32_t nWells = 5;
  bool qOK = false;
  store.GetAllWells(i, zWells, nWells, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nWells, 0);  // no markers
}

}  // namespace
}  // namespace vndata
