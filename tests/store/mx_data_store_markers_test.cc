// The markers of a data set as the host reaches them: through the data set
// and through the store by position.
#include <gtest/gtest.h>

#include "tests/persist/marker_test_util.h"
#include "tests/store/store_fixtures.h"

namespace vndata {
namespace {

using namespace marker_test;

class StoreMarkersTest : public StoreTest {
 protected:
  // A grid data set carrying the hand-laid "MK32" case; position 1.
  std::shared_ptr<mxDataSet> AddGridWithMarkers(const std::string& zDataClass = "SOLUTION") {
    auto ds = MakeSummary("GRID");
    ds->let_DataClass(zDataClass);
    bool qOK = false;
    ds->SetMarkersb(7, HandMK32Case(), qOK);
    EXPECT_TRUE(qOK);
    store.AddItemAuto(ds);
    return ds;
  }
};

TEST_F(StoreMarkersTest, ADataSetTakesTheByteFormAndCountsWellsAndMarkers) {
  auto ds = AddGridWithMarkers();
  EXPECT_EQ(ds->get_NumMarkers(), 7);
  EXPECT_EQ(ds->get_NumWells(), 3);  // P1, INJ, then P1 again
  EXPECT_EQ(store.get_NumWells(1), 3);
  EXPECT_EQ(store.get_NumMarkers(1), 7);
  // Most connections of a well: P1 has three markers, so two connections.
  EXPECT_EQ(ds->getMaxMarkerCount(), 2);
}

TEST_F(StoreMarkersTest, DSGetMarkersGivesTheWholeByteArrayBack) {
  AddGridWithMarkers();
  int32_t n = 0;
  Array<uint8_t> b;
  bool qOK = false;
  store.DSGetMarkers(1, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ToVector(b), ToVector(HandMK32Case()));
}

TEST_F(StoreMarkersTest, ASectorBoxCutsTheMarkersHandedOut) {
  AddGridWithMarkers();
  // Only the INJ well (I 3, J 4) lies inside I 1..5, J 1..5, K 1..10.
  store.DSSetSectorBox(1, 1, 5, 1, 5, 1, 10);
  int32_t a = 0, b = 0, c = 0, d = 0, e = 0, f = 0;
  store.DSGetSectorBox(1, a, b, c, d, e, f);
  EXPECT_EQ(std::vector<int32_t>({a, b, c, d, e, f}), std::vector<int32_t>({1, 5, 1, 5, 1, 10}));
  int32_t n = 0;
  Array<uint8_t> bytes;
  bool qOK = false;
  store.DSGetMarkers(1, n, bytes, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(n, 2);
  ASSERT_GE(bytes.UBound(), 4);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()), 4), "MK32");
}

TEST_F(StoreMarkersTest, AnAllZeroSectorBoxRemovesTheBox) {
  AddGridWithMarkers();
  store.DSSetSectorBox(1, 1, 5, 1, 5, 1, 10);
  store.DSSetSectorBox(1, 0, 0, 0, 0, 0, 0);
  int32_t n = 0;
  Array<uint8_t> b;
  bool qOK = false;
  store.DSGetMarkers(1, n, b, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ToVector(b), ToVector(HandMK32Case()));
}

TEST_F(StoreMarkersTest, GridDataNamesItsWellsByItsMarkers) {
  AddGridWithMarkers();
  Array<std::string> wells;
  int32_t n = 0;
  bool qOK = false;
  store.GetAllWells(1, wells, n, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(n, 3);
  EXPECT_EQ(wells(1), "P1");
  EXPECT_EQ(wells(2), "INJ");
  EXPECT_EQ(wells(3), "P1");
}

TEST_F(StoreMarkersTest, MarkerNameAndPositionGoThroughTheMarkerTable) {
  AddGridWithMarkers();
  std::string zName;
  int32_t iW = 0;
  // Along K, the first "WELL" row at I 3, J 4 is INJ's well head at K 1.
  EXPECT_TRUE(store.GetMarkerName(1, "k", 3, 4, zName, iW));
  EXPECT_EQ(zName, "INJ");
  EXPECT_EQ(iW, 1);
  int32_t iU = 0, iV = 0;
  EXPECT_TRUE(store.GetMarkerPosition(1, "K", "P1", iU, iV, iW));
  EXPECT_EQ(iU, 10);
  EXPECT_EQ(iV, 12);
  // A "PERF" row never answers: I 10, J 12 along K has a well head, but
  // along I the pair (J 12, K 5) is a perforation only.
  zName = "kept";
  EXPECT_FALSE(store.GetMarkerName(1, "I", 12, 5, zName, iW));
  EXPECT_EQ(zName, "kept");
}

TEST_F(StoreMarkersTest, GetMarkerFromIJKWordsTheStatus) {
  AddGridWithMarkers();
  int32_t iFound = -1, iStatus = -1;
  std::string zWell, zStyle, zStatus;
  EXPECT_TRUE(store.GetMarkerFromIJK(1, 20, 21, 9, iFound, zWell, zStyle, iStatus, zStatus));
  EXPECT_EQ(iFound, 3);  // the second P1 well
  EXPECT_EQ(zWell, "P1");
  EXPECT_EQ(zStyle, "PERF");
  EXPECT_EQ(iStatus, 0);
  EXPECT_EQ(zStatus, "Shutin");
  EXPECT_TRUE(store.GetMarkerFromIJK(1, 99, 99, 99, iFound, zWell, zStyle, iStatus, zStatus));
  EXPECT_EQ(iFound, 0);
}

TEST_F(StoreMarkersTest, PointersAddressTheRecords) {
  auto ds = AddGridWithMarkers();
  EXPECT_NE(store.get_WellsPtr(1), 0);
  EXPECT_NE(store.get_MarkersPtr(1), 0);
  const auto* first = reinterpret_cast<const MARKERINFO*>(store.get_MarkersPtr(1));
  EXPECT_EQ(first->i, 10);
  EXPECT_EQ(first->k, 1);
  ds->MoveAllMarkersToTopLayer();
  int32_t n = 0;
  Array2<Variant> v;
  bool qOK = false;
  store.GetMarkers(1, n, v, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(n, 7);
  for (int32_t m = 1; m <= n; ++m) EXPECT_EQ(v(5, m).ToLong(), 1) << m;
  EXPECT_EQ(v(3, 7).ToLong(), 20);
}

}  // namespace
}  // namespace vndata
