// mxMarker: a plain record of a marker.
#include <gtest/gtest.h>

#include <memory>

#include "vndata/dataset/mx_marker.h"

namespace vndata {
namespace {

TEST(MxMarkerTest, ANewMarkerIsZeroAndEmpty) {
  const mxMarker m;
  EXPECT_EQ(m.get_Row(), 0);
  EXPECT_EQ(m.get_Column(), 0);
  EXPECT_EQ(m.get_X(), 0);
  EXPECT_EQ(m.get_Y(), 0);
  EXPECT_EQ(m.get_Z(), 0);
  EXPECT_EQ(m.get_Status(), 0);
  EXPECT_EQ(m.get_Name(), "");
  EXPECT_EQ(m.get_Style(), "");
}

TEST(MxMarkerTest, EachPropertyKeepsItsOwnValueOnly) {
  auto m = std::make_shared<mxMarker>();
  m->let_Row(1);
  m->let_Column(2);
  m->let_X(3);
  m->let_Y(4);
  m->let_Z(5);
  m->let_Status(104);
  m->let_Name("P1");
  m->let_Style("WELL");
  EXPECT_EQ(m->get_Row(), 1);
  EXPECT_EQ(m->get_Column(), 2);
  EXPECT_EQ(m->get_X(), 3);
  EXPECT_EQ(m->get_Y(), 4);
  EXPECT_EQ(m->get_Z(), 5);
  EXPECT_EQ(m->get_Status(), 104);
  EXPECT_EQ(m->get_Name(), "P1");
  EXPECT_EQ(m->get_Style(), "WELL");
  // Writing one leaves the others.
  m->let_X(-7);
  m->let_Style("PERF");
  EXPECT_EQ(m->get_Row(), 1);
  EXPECT_EQ(m->get_X(), -7);
  EXPECT_EQ(m->get_Y(), 4);
  EXPECT_EQ(m->get_Name(), "P1");
  EXPECT_EQ(m->get_Style(), "PERF");
}

TEST(MxMarkerTest, InitMarkerResetsEveryField) {
  mxMarker m;
  m.let_Row(9);
  m.let_Column(9);
  m.let_X(9);
  m.let_Y(9);
  m.let_Z(9);
  m.let_Status(9);
  m.let_Name("name");
  m.let_Style("style");
  m.InitMarker();
  EXPECT_EQ(m.get_Row(), 0);
  EXPECT_EQ(m.get_Column(), 0);
  EXPECT_EQ(m.get_X(), 0);
  EXPECT_EQ(m.get_Y(), 0);
  EXPECT_EQ(m.get_Z(), 0);
  EXPECT_EQ(m.get_Status(), 0);
  EXPECT_EQ(m.get_Name(), "");
  EXPECT_EQ(m.get_Style(), "");
}

TEST(MxMarkerTest, CopiesAreIndependentValues) {
  mxMarker a;
  a.let_Name("A");
  a.let_Z(3);
  mxMarker b = a;
  b.let_Name("B");
  EXPECT_EQ(a.get_Name(), "A");
  EXPECT_EQ(b.get_Name(), "B");
  EXPECT_EQ(b.get_Z(), 3);
}

}  // namespace
}  // namespace vndata
