// The active and the named well lists of a data set, and its row mask.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"

namespace vndata {
namespace {

using testutil::Build;

// Well records from a marker table of one marker a well, in this order.
void GiveWells(mxDataSet& ds, std::initializer_list<const char*> names) {
  const auto n = static_cast<int32_t>(names.size());
  Array2<Variant> v(1, 55, 1, n);
  int32_t m = 0;
  for (const char* name : names) {
    ++m;
    v(3, m) = m;
    v(4, m) = m;
    v(5, m) = int32_t{1};
    v(10, m) = std::string("4");
    v(11, m) = std::string(name);
    v(12, m) = std::string("WELL");
    v(13, m) = std::string("FIELD");
  }
  bool qOK = false;
  ds.SetMarkers(n, v, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(ds.get_NumWells(), n);
}

Array<std::string> List(std::initializer_list<std::string> names) { return Array<std::string>(names); }

std::vector<std::string> Values(const Array<std::string>& a) {
  return std::vector<std::string>(a.begin(), a.end());
}

std::vector<std::string> Active(const mxDataSet& ds) {
  Array<std::string> z;
  int32_t n = -1;
  bool qOK = false;
  ds.GetWellList(z, n, qOK);
  EXPECT_TRUE(qOK);
  if (n < 1) return {};
  EXPECT_EQ(static_cast<int32_t>(z.size()), n);
  return Values(z);
}

std::vector<std::string> Named(const mxDataSet& ds, const std::string& zName) {
  Array<std::string> z;
  int32_t n = -1;
  bool qOK = false;
  ds.WH_GetWellListDetails(zName, n, z, qOK);
  EXPECT_TRUE(qOK);
  if (n < 1) return {};
  return Values(z);
}

// Every named list as "name=joined".
std::vector<std::string> AllLists(const mxDataSet& ds) {
  int32_t n = -1;
  Array<std::string> names, joined;
  bool qOK = false;
  ds.WH_GetDelimitedLists(n, names, joined, qOK);
  EXPECT_TRUE(qOK);
  std::vector<std::string> out;
  for (int32_t k = 1; k <= n; ++k) out.push_back(names(k) + "=" + joined(k));
  return out;
}

class DataSetWellLists : public ::testing::Test {
 protected:
  void SetUp() override {
    ds.let_Origin("CASE");
    // P1 twice: two wells of one name.
    GiveWells(ds, {"P1", "P2", "INJ", "P1", "p3"});
  }
  mxDataSet ds;
};

TEST(DataSetWellListsStart, ANewDataSetHasNoListsAndAnEmptyActiveList) {
  mxDataSet ds;
  EXPECT_FALSE(ds.get_qSetWELLLIST());
  EXPECT_FALSE(ds.get_qUseWellList());
  EXPECT_EQ(ds.get_nWellLists(), 0);
  EXPECT_EQ(ds.get_nWellListsAllocated(), 1);
  Array<std::string> z{"kept"};
  int32_t n = -1;
  bool qOK = false;
  ds.GetWellList(z, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(Values(z), std::vector<std::string>({"kept"}));
  EXPECT_TRUE(AllLists(ds).empty());
}

TEST_F(DataSetWellLists, SetWELLLISTTakesTheWellsOfTheNamesInTheNamesOrder) {
  bool qOK = false;
  ds.SetWELLLIST(List({"INJ", "P1"}), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(ds.get_qSetWELLLIST());
  // Both wells named P1 enter, each once.
  EXPECT_EQ(Active(ds), std::vector<std::string>({"INJ", "P1", "P1"}));
}

TEST_F(DataSetWellLists, NamesCompareWithCaseAndANameTwiceCountsOnce) {
  bool qOK = false;
  ds.SetWELLLIST(List({"p3", "P3", "P2", "P2", "NOWELL"}), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Active(ds), std::vector<std::string>({"p3", "P2"}));
}

TEST_F(DataSetWellLists, SetWELLLISTOfEmptyNamesIsFalseAndChangesNothing) {
  bool qOK = false;
  ds.SetWELLLIST(List({"P2"}), qOK);
  ds.SetWELLLIST(List({"", ""}), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_TRUE(ds.get_qSetWELLLIST());
  EXPECT_EQ(Active(ds), std::vector<std::string>({"P2"}));
}

TEST_F(DataSetWellLists, SetWELLLISTOfNoWellIsTrueWithTheListOutOfUse) {
  bool qOK = false;
  ds.SetWELLLIST(List({"P2"}), qOK);
  ds.SetWELLLIST(List({"X1", "X2"}), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(ds.get_qSetWELLLIST());
  // The old positions stay behind the flag.
  EXPECT_EQ(Active(ds), std::vector<std::string>({"P2"}));
}

TEST_F(DataSetWellLists, SetNamedWellListUnderActiveInLowerCaseSetsTheActiveList) {
  ds.SetNamedWellList(List({"P2", "INJ"}), "active");
  EXPECT_TRUE(ds.get_qSetWELLLIST());
  EXPECT_EQ(Active(ds), std::vector<std::string>({"P2", "INJ"}));
  EXPECT_EQ(ds.get_nWellLists(), 0);
}

TEST_F(DataSetWellLists, SetNamedWellListUnderAnotherNameMakesANamedList) {
  ds.SetNamedWellList(List({"P2", "INJ"}), "Injectors");
  EXPECT_FALSE(ds.get_qSetWELLLIST());
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"Injectors=P2;INJ"}));
}

TEST_F(DataSetWellLists, addWellListWithAnExistingNameReplacesItsWells) {
  bool qOK = false;
  ds.addWellList("A", List({"P1"}), qOK, 7);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds.get_nWellListsAllocated(), 1);  // the first record was there
  ds.addWellList("A", List({"P2"}), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds.get_nWellLists(), 1);
  EXPECT_EQ(Named(ds, "A"), std::vector<std::string>({"P2"}));
}

TEST_F(DataSetWellLists, EachNewNameGrowsTheRecordsByOne) {
  bool qOK = false;
  ds.addWellList("a", List({"P1"}), qOK);
  ds.addWellList("A", List({"P2"}), qOK);  // names compare with case
  ds.addWellList("B", List({"INJ"}), qOK);
  EXPECT_EQ(ds.get_nWellLists(), 3);
  EXPECT_EQ(ds.get_nWellListsAllocated(), 3);
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"a=P1;P1", "A=P2", "B=INJ"}));
}

TEST_F(DataSetWellLists, addWellListWithoutANameGivesFalse) {
  bool qOK = true;
  ds.addWellList("A", List({"", ""}), qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(ds.get_nWellLists(), 0);
}

TEST_F(DataSetWellLists, AListOfNoWellIsKeptEmpty) {
  bool qOK = false;
  ds.addWellList("GHOSTS", List({"X"}), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"GHOSTS="}));
  Array<std::string> z{"kept"};
  int32_t n = -1;
  ds.WH_GetWellListDetails("GHOSTS", n, z, qOK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(Values(z), std::vector<std::string>({"kept"}));
}

TEST_F(DataSetWellLists, AnUnknownListLeavesTheOutputsWithQOKTrue) {
  bool qOK = false;
  ds.addWellList("A", List({"P2"}), qOK);
  Array<std::string> z{"kept"};
  int32_t n = 42;
  std::string joined = "kept";
  qOK = false;
  ds.WH_GetWellListDetailsByName("a", n, z, joined, qOK);  // names compare with case
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 42);
  EXPECT_EQ(Values(z), std::vector<std::string>({"kept"}));
  EXPECT_EQ(joined, "kept");
}

TEST_F(DataSetWellLists, DetailsByNameJoinTheWells) {
  bool qOK = false;
  ds.addWellList("Mixed", List({"p3", "INJ"}), qOK);
  Array<std::string> z;
  int32_t n = 0;
  std::string joined;
  ds.WH_GetWellListDetailsByName("Mixed", n, z, joined, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 2);
  EXPECT_EQ(Values(z), std::vector<std::string>({"p3", "INJ"}));
  EXPECT_EQ(joined, "p3;INJ");
}

TEST_F(DataSetWellLists, AppendingTheSameWellsUnderANewNameAddsNothing) {
  std::string zName = "First";
  ds.WH_AppendWellList(List({"P2", "INJ"}), zName);
  EXPECT_EQ(zName, "First");
  zName = "Second";
  ds.WH_AppendWellList(List({"p2", "inj"}), zName);  // the joined names compare in any case
  EXPECT_EQ(zName, "Second");
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"First=P2;INJ"}));
}

TEST_F(DataSetWellLists, AppendingUnderANameInUseTakesTheNameWithItsPlace) {
  std::string zName = "A";
  ds.WH_AppendWellList(List({"P1"}), zName);
  zName = "B";
  ds.WH_AppendWellList(List({"P2"}), zName);
  zName = "b";
  ds.WH_AppendWellList(List({"INJ"}), zName);
  EXPECT_EQ(zName, "b-2");
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"A=P1;P1", "B=P2", "b-2=INJ"}));
}

TEST_F(DataSetWellLists, ARenamedNameIsNotCheckedAgainstEarlierLists) {
  std::string zName = "X-2";
  ds.WH_AppendWellList(List({"P1"}), zName);
  zName = "X";
  ds.WH_AppendWellList(List({"P2"}), zName);
  zName = "X";
  ds.WH_AppendWellList(List({"INJ"}), zName);
  // "X" is list 2, so the name becomes "X-2": the name of list 1, whose
  // wells are then replaced.
  EXPECT_EQ(zName, "X-2");
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"X-2=INJ", "X=P2"}));
}

TEST_F(DataSetWellLists, WithoutANameTheThirdListOfCaseIsCASE2) {
  std::string zName;
  ds.WH_AppendWellList(List({"P1"}), zName);
  EXPECT_EQ(zName, "CASE-0");
  zName.clear();
  ds.WH_AppendWellList(List({"P2"}), zName);
  EXPECT_EQ(zName, "CASE-1");
  zName.clear();
  ds.WH_AppendWellList(List({"INJ"}), zName);
  EXPECT_EQ(zName, "CASE-2");
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"CASE-0=P1;P1", "CASE-1=P2", "CASE-2=INJ"}));
}

TEST_F(DataSetWellLists, DeletingKeepsTheOrderOfTheRest) {
  bool qOK = false;
  ds.addWellList("A", List({"P1"}), qOK);
  ds.addWellList("B", List({"P2"}), qOK);
  ds.addWellList("C", List({"INJ"}), qOK);
  ds.WH_DeleteWellListByName("B", qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"A=P1;P1", "C=INJ"}));
  EXPECT_EQ(ds.get_nWellListsAllocated(), 2);
  ds.WH_DeleteWellListByName("C", qOK);
  EXPECT_EQ(AllLists(ds), std::vector<std::string>({"A=P1;P1"}));
  EXPECT_EQ(ds.get_nWellListsAllocated(), 1);
  ds.WH_DeleteWellListByName("a", qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(ds.get_nWellLists(), 1);
}

TEST_F(DataSetWellLists, DeletingTheOnlyNamedListResetsTheActiveList) {
  bool qOK = false;
  ds.SetWELLLIST(List({"P2"}), qOK);
  ds.addWellList("A", List({"P1"}), qOK);
  ds.WH_DeleteWellListByName("A", qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds.get_nWellLists(), 0);
  EXPECT_EQ(ds.get_nWellListsAllocated(), 1);
  EXPECT_TRUE(Active(ds).empty());
  EXPECT_TRUE(ds.get_qSetWELLLIST());  // set and cleared by the active list alone
}

TEST_F(DataSetWellLists, ClearWellListsDropsAllListsAndKeepsTheFlags) {
  bool qOK = false;
  ds.SetWELLLIST(List({"P2"}), qOK);
  ds.let_qUseWellList(true);
  ds.addWellList("A", List({"P1"}), qOK);
  ds.addWellList("B", List({"P2"}), qOK);
  qOK = false;
  ds.ClearWellLists(qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ds.get_nWellLists(), 0);
  EXPECT_EQ(ds.get_nWellListsAllocated(), 1);
  EXPECT_TRUE(AllLists(ds).empty());
  EXPECT_TRUE(Active(ds).empty());
  EXPECT_TRUE(ds.get_qSetWELLLIST());
  EXPECT_TRUE(ds.get_qUseWellList());
}

TEST_F(DataSetWellLists, ListsPointAtPositionsOfTheWellRecords) {
  bool qOK = false;
  ds.addWellList("A", List({"P2", "INJ"}), qOK);
  // New well records put other names at the same positions.
  GiveWells(ds, {"W1", "W2", "W3"});
  EXPECT_EQ(Named(ds, "A"), std::vector<std::string>({"W2", "W3"}));
}

// ---- The row mask ------------------------------------------------------------------------------

TEST(DataSetMask, AMaskGivesTheExtractItsRowsInItsOrder) {
  mxDataSet ds;
  Build(ds, 5, 2);  // value 100*column + row
  bool qOK = false;
  ds.SetMask(true, Array<int32_t>{4, 2}, 2, qOK);
  EXPECT_TRUE(qOK);
  Array2<float> a;
  ds.ExtractDataArray(a, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(a.UBound(1), 2);
  EXPECT_EQ(a(1, 1), 104.f);
  EXPECT_EQ(a(2, 1), 102.f);
  EXPECT_EQ(a(1, 2), 204.f);
}

TEST(DataSetMask, AFalseFlagOrNoCountClearsTheMask) {
  mxDataSet ds;
  Build(ds, 5, 1);
  for (bool qFlag : {false, true}) {
    bool qOK = false;
    ds.SetMask(true, Array<int32_t>{3}, 1, qOK);
    qOK = false;
    ds.SetMask(qFlag, Array<int32_t>{3}, qFlag ? 0 : 1, qOK);
    EXPECT_TRUE(qOK);
    Array2<float> a;
    ds.ExtractDataArray(a, qOK);
    EXPECT_EQ(a.UBound(1), 5) << qFlag;
  }
}

}  // namespace
}  // namespace vndata
