// Grid names, files, row and column lists and well lists of a data set
// reached through the store by position, and stepping from well to well.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "tests/dataset/dataset_test_util.h"
#include "tests/persist/marker_test_util.h"
#include "tests/store/store_fixtures.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/platform/byte_store.h"

namespace vndata {
namespace {

std::vector<std::string> Values(const Array<std::string>& a) {
  return std::vector<std::string>(a.begin(), a.end());
}
std::vector<int32_t> Values(const Array<int32_t>& a) { return std::vector<int32_t>(a.begin(), a.end()); }
Array<std::string> List(std::initializer_list<std::string> names) { return Array<std::string>(names); }

class StoreListsTest : public StoreTest {
 protected:
  // A summary data set of well columns: wells P1, P2 and INJ, 4 rows.
  std::shared_ptr<mxDataSet> AddWellData(const std::string& zOrigin = "CASE") {
    using testutil::Attrs;
    std::vector<Attrs> cols;
    for (const char* well : {"P1", "P2", "INJ"})
      cols.push_back({{ATT_ORIGIN, zOrigin}, {ATT_CLASS, "WELL"}, {ATT_MEMBER, well},
                      {ATT_VARIABLE, "WOPR"}});
    auto ds = std::make_shared<mxDataSet>();
    ds->let_Origin(zOrigin);
    ds->let_FileType(506);
    Array2<float> a = testutil::Numbered(4, 3);
    bool qOK = false;
    ds->bInitialiseFrom2d(a, testutil::Headers(cols), qOK);
    EXPECT_TRUE(qOK);
    EXPECT_EQ(ds->get_NumWells(), 3);
    store.AddItemAuto(ds);
    return ds;
  }

  std::string Step(const std::string& zWell, bool qWrap, bool qBack, bool qAllWells = true) {
    std::string zNext = "unset";
    bool qOK = false;
    if (qAllWells)
      store.WellNextItem(1, zWell, qWrap, qBack, zNext, qOK);
    else
      store.WellListNextItem(1, zWell, qWrap, qBack, zNext, qOK);
    EXPECT_TRUE(qOK) << zWell;
    return zNext;
  }

  std::vector<std::string> ActiveList(int32_t iDataSet = 1) {
    Array<std::string> z;
    int32_t n = 0;
    bool qOK = false;
    store.DSGetWellList(iDataSet, z, n, qOK);
    EXPECT_TRUE(qOK);
    if (n < 1) return {};
    return Values(z);
  }
};

// ---- Grid names, files, row and column lists ---------------------------------------------------

TEST_F(StoreListsTest, GridNamesGoThroughThePosition) {
  AddWellData();
  Array<uint8_t> b(1, 10);
  const std::string text = "FIELD LG1 ";
  for (int32_t i = 1; i <= 10; ++i) b(i) = static_cast<uint8_t>(text[static_cast<std::size_t>(i - 1)]);
  bool qOK = false;
  store.DSSetGridNames(1, b, qOK);
  EXPECT_TRUE(qOK);
  Array<std::string> z;
  store.DSGetGridNames(1, z, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(z), std::vector<std::string>({"FIELD", "LG1"}));
  std::string one;
  store.DSGetGridName(1, 1, one, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(one, "FIELD");
  store.DSGetGridName(1, 2, one, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(StoreListsTest, TheFileListIsTakenOverOnlyByAValidPosition) {
  auto ds = AddWellData();
  auto files = std::make_shared<ByteStore>();
  files->AddString("CASE.X0001");
  bool qOK = false;
  store.DSSetFileList(5, files, 1, qOK);
  EXPECT_FALSE(qOK);
  ASSERT_NE(files, nullptr);
  store.DSSetFileList(1, files, 1, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(files, nullptr);
  EXPECT_EQ(ds->GetFileName(2), "CASE.X0001");
}

TEST_F(StoreListsTest, RowAndColumnListsGoThroughThePosition) {
  AddWellData();
  bool qOK = false;
  store.DSSetRowList(1, Array<int32_t>{3, 2}, 2, qOK);
  EXPECT_TRUE(qOK);
  Array<int32_t> list;
  int32_t n = 0;
  store.DSGetRowList(1, list, n, qOK);
  EXPECT_EQ(n, 2);
  EXPECT_EQ(Values(list), std::vector<int32_t>({3, 2}));
  EXPECT_EQ(Values(store.get_DSRowList(1)), std::vector<int32_t>({3, 2}));
  store.let_DSRowList(1, Array<int32_t>{1, 2, 3, 4});  // as long as the table
  store.DSGetRowList(1, list, n, qOK);
  EXPECT_EQ(n, 0);

  store.DSSetColumnList(1, Array<int32_t>{2}, 1, qOK);
  EXPECT_TRUE(qOK);
  store.DSGetColumnList(1, list, n, qOK);
  EXPECT_EQ(n, 1);
  EXPECT_EQ(list(1), 2);
  store.let_DSColumnList(1, Array<int32_t>{3, 1});
  EXPECT_EQ(Values(store.get_DSColumnList(1)), std::vector<int32_t>({3, 1}));
  Array2<float> a;
  Array2<uint8_t> b;
  store.DSbExtract2dArrays(1, a, b, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(a.UBound(2), 2);
  EXPECT_EQ(a(1, 1), 301.f);
  ASSERT_EQ(b.UBound(2), 2);
}

TEST_F(StoreListsTest, ClearListsResetsTheSelections) {
  AddWellData();
  bool qOK = false;
  store.DSSetRowList(1, Array<int32_t>{2}, 1, qOK);
  store.DSSetColumnList(1, Array<int32_t>{2}, 1, qOK);
  Array2<uint8_t> only(1, kOnlyRecordSize, 1, 1);
  only.Fill('Z');
  store.DSSetOnlyList(1, only, true);
  EXPECT_TRUE(store.DSClearLists(1));
  EXPECT_FALSE(store.get_DSRowList(1).IsAllocated());
  EXPECT_FALSE(store.get_DSColumnList(1).IsAllocated());
  Array2<uint8_t> b;
  bool qOnly = true;
  EXPECT_TRUE(store.DSGetOnlyList(1, b, qOnly));
  EXPECT_FALSE(qOnly);
  EXPECT_EQ(b(1, 1), ' ');
}

TEST_F(StoreListsTest, TheMaskSelectsRowsOfTheExtract) {
  AddWellData();
  bool qOK = false;
  store.DSSetMask(1, true, Array<int32_t>{4}, 1, qOK);
  EXPECT_TRUE(qOK);
  Array2<float> a;
  Array2<uint8_t> b;
  store.DSbExtract2dArrays(1, a, b, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(a.UBound(1), 1);
  EXPECT_EQ(a(1, 2), 204.f);
}

// ---- Well lists by position ---------------------------------------------------------------------------

TEST_F(StoreListsTest, TheFlagsOfTheActiveListGoThroughThePosition) {
  AddWellData();
  EXPECT_FALSE(store.DSqSetWellList(1));
  EXPECT_FALSE(store.get_DSqUseWellList(1));
  store.let_DSqUseWellList(1, true);
  EXPECT_TRUE(store.get_DSqUseWellList(1));
  bool qOK = false;
  store.DSSetWellList(1, List({"P2"}), qOK);
  EXPECT_TRUE(store.DSqSetWellList(1));
}

TEST_F(StoreListsTest, DSSetWellListWithOneUnknownNameAmongThreeSetsAListOfTwo) {
  AddWellData();
  bool qOK = false;
  store.DSSetWellList(1, List({"INJ", "NOWELL", "P1"}), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ActiveList(), std::vector<std::string>({"INJ", "P1"}));
  Array<std::string> z;
  int32_t n = 0;
  store.DSGetWellsInWellList(1, z, n, qOK);
  EXPECT_EQ(n, 2);
  store.WDS_GetWellList(1, z, n, qOK);
  EXPECT_EQ(Values(z), std::vector<std::string>({"INJ", "P1"}));
}

TEST_F(StoreListsTest, DSSetWellListOfNoWellLeavesQOKFalse) {
  AddWellData();
  bool qOK = false;
  store.DSSetWellList(1, List({"P2"}), qOK);
  qOK = true;
  store.DSSetWellList(1, List({"X", "p2"}), qOK);  // names compare exactly
  EXPECT_FALSE(qOK);
  // The list as it came names no well: the active list goes out of use.
  EXPECT_FALSE(store.DSqSetWellList(1));
}

TEST_F(StoreListsTest, DSSetWellListOnABadPositionReportsTrue) {
  AddWellData();
  bool qOK = false;
  store.DSSetWellList(7, List({"P1"}), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(StoreListsTest, DSGetWellListOrAllGivesTheListOnlyWhenUsed) {
  AddWellData();
  bool qOK = false;
  store.DSSetWellList(1, List({"P2"}), qOK);
  Array<std::string> z;
  int32_t n = 0;
  store.DSGetWellListOrAll(1, z, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 3);
  EXPECT_EQ(Values(z).at(2), "INJ");
  store.let_DSqUseWellList(1, true);
  store.DSGetWellListOrAll(1, z, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 1);
  EXPECT_EQ(Values(z), std::vector<std::string>({"P2"}));
}

TEST_F(StoreListsTest, DSGetWellListOrAllIsTrueOnABadPosition) {
  AddWellData();
  Array<std::string> z{"kept"};
  int32_t n = 5;
  bool qOK = false;
  store.DSGetWellListOrAll(0, z, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(Values(z), std::vector<std::string>({"kept"}));
}

TEST_F(StoreListsTest, NamedListsGoThroughThePosition) {
  AddWellData("CASE");
  std::string zName = "Producers";
  EXPECT_TRUE(store.WSH_AppendNamedWellList(1, List({"P1", "P2"}), zName));
  EXPECT_EQ(zName, "Producers");
  EXPECT_TRUE(store.WSH_AppendNamedWellList(1, List({"INJ"})));  // named CASE-1
  int32_t nLists = 0;
  Array<std::string> names, joined;
  bool qOK = false;
  store.WDS_DSGetOriginWellLists(1, nLists, names, joined, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(nLists, 2);
  EXPECT_EQ(Values(names), std::vector<std::string>({"Producers", "CASE-1"}));
  EXPECT_EQ(Values(joined), std::vector<std::string>({"P1;P2", "INJ"}));
  Array<std::string> wells;
  int32_t n = 0;
  store.WDS_DSGetWellListArray(1, "CASE-1", n, wells, qOK);
  EXPECT_EQ(n, 1);
  EXPECT_EQ(wells(1), "INJ");
  std::string zJoined;
  store.WDS_GetWellListDetailsByName(1, "Producers", n, wells, zJoined, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(zJoined, "P1;P2");
  store.WSH_DeleteWellListByName(1, "Producers", qOK);
  EXPECT_TRUE(qOK);
  store.WDS_DSGetOriginWellLists(1, nLists, names, joined, qOK);
  EXPECT_EQ(nLists, 1);
  EXPECT_EQ(names(1), "CASE-1");
}

// ---- Stepping from well to well ----------------------------------------------------------------

TEST_F(StoreListsTest, WellNextItemStepsForwardThroughAllWells) {
  AddWellData();
  EXPECT_EQ(Step("", false, false), "P1");        // not in the list: the first
  EXPECT_EQ(Step("P1", false, false), "P2");
  EXPECT_EQ(Step("p2", false, false), "INJ");     // found in any case
  EXPECT_EQ(Step("INJ", false, false), "");       // the last, no wrap: qOK still true
  EXPECT_EQ(Step("INJ", true, false), "P1");
}

TEST_F(StoreListsTest, WellNextItemStepsBackwards) {
  AddWellData();
  EXPECT_EQ(Step("NOWELL", false, true), "INJ");  // not in the list: the last
  EXPECT_EQ(Step("INJ", false, true), "P2");
  EXPECT_EQ(Step("P2", false, true), "P1");
  EXPECT_EQ(Step("P1", false, true), "");
  EXPECT_EQ(Step("P1", true, true), "INJ");
}

TEST_F(StoreListsTest, WellNextItemFollowsTheActiveListInUse) {
  AddWellData();
  bool qOK = false;
  store.DSSetWellList(1, List({"INJ", "P1"}), qOK);
  store.let_DSqUseWellList(1, true);
  EXPECT_EQ(Step("INJ", false, false), "P1");
  EXPECT_EQ(Step("P1", true, false), "INJ");
}

TEST_F(StoreListsTest, WellListNextItemNeedsTheListInUse) {
  AddWellData();
  bool qOK = false;
  store.DSSetWellList(1, List({"INJ", "P2"}), qOK);
  std::string zNext = "unset";
  qOK = true;
  store.WellListNextItem(1, "INJ", false, false, zNext, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(zNext, "");
  store.let_DSqUseWellList(1, true);
  EXPECT_EQ(Step("INJ", false, false, false), "P2");
  EXPECT_EQ(Step("P2", false, false, false), "");
  EXPECT_EQ(Step("P2", true, false, false), "INJ");
  EXPECT_EQ(Step("", false, true, false), "P2");
}

TEST_F(StoreListsTest, AFaultInTheDataSetIsTracedInItsOwnFrame) {
  AddWellData();
  bool qOK = true;
  store.DSSetGridNames(1, Array<uint8_t>(), qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 1u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDataSet  (SetGridNames)] ");
}

TEST_F(StoreListsTest, ASolutionStepsThroughTheWellsOfItsMarkers) {
  auto ds = std::make_shared<mxDataSet>();
  ds->let_Origin("GRID");
  ds->let_DataClass("SOLUTION");
  bool qOK = false;
  ds->SetMarkersb(7, marker_test::HandMK32Case(), qOK);  // wells P1, INJ, P1
  ASSERT_TRUE(qOK);
  store.AddItemAuto(ds);
  EXPECT_EQ(Step("", false, false), "P1");
  EXPECT_EQ(Step("P1", false, false), "INJ");  // the first P1 is found
  EXPECT_EQ(Step("INJ", false, false), "P1");
  EXPECT_EQ(Step("", false, true), "P1");
  // Both wells named P1 enter the list.
  store.DSSetWellList(1, List({"P1"}), qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(ActiveList(), std::vector<std::string>({"P1", "P1"}));
}

TEST_F(StoreListsTest, SteppingOnABadPositionIsFalse) {
  AddWellData();
  std::string zNext = "unset";
  bool qOK = true;
  store.WellNextItem(3, "P1", true, false, zNext, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(zNext, "");
}

}  // namespace
}  // namespace vndata
