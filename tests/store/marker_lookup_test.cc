// Looking well markers up in a marker table by direction.
#include <gtest/gtest.h>

#include "vndata/store/internal/marker_lookup.h"

namespace vndata {
namespace {

struct Marker {
  int32_t i, j, k;
  const char* name;
  const char* style;
};

Array2<Variant> Table(std::initializer_list<Marker> markers) {
  Array2<Variant> v(1, 55, 1, static_cast<int32_t>(markers.size()));
  int32_t m = 0;
  for (const Marker& mk : markers) {
    ++m;
    v(3, m) = mk.i;
    v(4, m) = mk.j;
    v(5, m) = mk.k;
    v(10, m) = int32_t{4};
    v(11, m) = std::string(mk.name);
    v(12, m) = std::string(mk.style);
    v(13, m) = std::string("GRIDNAME");
  }
  return v;
}

const Array2<Variant> kMarkers = Table({
    {2, 3, 1, "P1", "PERF"},
    {2, 3, 4, "P1", "WELL"},
    {5, 6, 7, "I2", "WELL"},
    {5, 6, 8, "I3", "WELL"},
});

TEST(MarkerLookupTest, EachDirectionComparesTheTwoOtherAxes) {
  std::string name;
  int32_t w = 0;
  EXPECT_TRUE(WellMarkerName(kMarkers, 4, "I", 6, 7, name, w));
  EXPECT_EQ(name, "I2");
  EXPECT_EQ(w, 7);
  EXPECT_TRUE(WellMarkerName(kMarkers, 4, "J", 5, 8, name, w));
  EXPECT_EQ(name, "I3");
  EXPECT_EQ(w, 8);
  // Along K the first WELL row at I 5, J 6 wins; W is still its K.
  EXPECT_TRUE(WellMarkerName(kMarkers, 4, "k", 5, 6, name, w));
  EXPECT_EQ(name, "I2");
  EXPECT_EQ(w, 7);
}

TEST(MarkerLookupTest, PerforationRowsAndUnknownDirectionsAnswerFalse) {
  std::string name = "kept";
  int32_t w = -1;
  // The PERF row at J 3, K 1 does not count.
  EXPECT_FALSE(WellMarkerName(kMarkers, 4, "I", 3, 1, name, w));
  EXPECT_FALSE(WellMarkerName(kMarkers, 4, "X", 6, 7, name, w));
  EXPECT_FALSE(WellMarkerName(kMarkers, 4, "", 6, 7, name, w));
  EXPECT_EQ(name, "kept");
  EXPECT_EQ(w, -1);
  // Only markers 1..nMarkers are looked at.
  EXPECT_FALSE(WellMarkerName(kMarkers, 3, "J", 5, 8, name, w));
  EXPECT_FALSE(WellMarkerName(Array2<Variant>(), 4, "I", 6, 7, name, w));
}

TEST(MarkerLookupTest, PositionIsTheInverse) {
  int32_t u = 0, v = 0, w = 0;
  EXPECT_TRUE(WellMarkerPosition(kMarkers, 4, "I", "P1", u, v, w));
  EXPECT_EQ(u, 3);
  EXPECT_EQ(v, 4);
  EXPECT_EQ(w, 4);
  EXPECT_TRUE(WellMarkerPosition(kMarkers, 4, "J", "I3", u, v, w));
  EXPECT_EQ(u, 5);
  EXPECT_EQ(v, 8);
  EXPECT_TRUE(WellMarkerPosition(kMarkers, 4, "K", "I3", u, v, w));
  EXPECT_EQ(u, 5);
  EXPECT_EQ(v, 6);
  EXPECT_EQ(w, 8);
  u = v = w = -1;
  EXPECT_FALSE(WellMarkerPosition(kMarkers, 4, "I", "p1", u, v, w));
  EXPECT_FALSE(WellMarkerPosition(kMarkers, 4, "Z", "P1", u, v, w));
  EXPECT_EQ(u, -1);
}

}  // namespace
}  // namespace vndata
