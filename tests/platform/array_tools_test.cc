#include "vndata/platform/array_tools.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace vndata;

namespace {
struct Range {
  int32_t first, last, step, count;
};
Range RangeOf(int32_t nCols, int32_t iStart, int32_t iEnd) {
  Range r{99, 99, 99, 99};
  ArrayTools::ColumnRange(nCols, iStart, iEnd, r.first, r.last, r.step, r.count);
  return r;
}
// The columns a range visits, in order.
std::vector<int32_t> Walk(const Range& r) {
  std::vector<int32_t> cols;
  for (int32_t k = 0, c = r.first; k < r.count; ++k, c += r.step) cols.push_back(c);
  return cols;
}
}  // namespace

TEST(ColumnRange, BothEndsMinusOneGiveAllColumns) {
  Range r = RangeOf(8, -1, -1);
  EXPECT_EQ(r.first, 1);
  EXPECT_EQ(r.last, 8);
  EXPECT_EQ(r.step, 1);
  EXPECT_EQ(r.count, 8);
}

TEST(ColumnRange, OneEndMinusOneMeansFirstOrLastColumn) {
  Range a = RangeOf(8, 5, -1);
  EXPECT_EQ(Walk(a), (std::vector<int32_t>{5, 6, 7, 8}));
  Range b = RangeOf(8, -1, 3);
  EXPECT_EQ(Walk(b), (std::vector<int32_t>{1, 2, 3}));
}

TEST(ColumnRange, BackwardRangeStepsMinusOne) {
  Range r = RangeOf(8, 6, 2);
  EXPECT_EQ(r.first, 6);
  EXPECT_EQ(r.last, 2);
  EXPECT_EQ(r.step, -1);
  EXPECT_EQ(r.count, 5);
  EXPECT_EQ(Walk(r), (std::vector<int32_t>{6, 5, 4, 3, 2}));
}

TEST(ColumnRange, StartBeyondTheColumnsGivesCountZero) {
  EXPECT_EQ(RangeOf(8, 9, -1).count, 0);
  EXPECT_EQ(RangeOf(8, 12, 20).count, 0);
  EXPECT_EQ(RangeOf(8, 0, 3).count, 0);
}

TEST(ColumnRange, NoColumnsGiveCountZero) { EXPECT_EQ(RangeOf(0, -1, -1).count, 0); }

TEST(ColumnRange, EndBeyondTheColumnsIsPulledIn) {
  Range r = RangeOf(8, 3, 20);
  EXPECT_EQ(r.last, 8);
  EXPECT_EQ(r.count, 6);
  Range b = RangeOf(8, 4, -5);
  EXPECT_EQ(b.last, 1);
  EXPECT_EQ(b.step, -1);
  EXPECT_EQ(Walk(b), (std::vector<int32_t>{4, 3, 2, 1}));
}

TEST(ColumnRange, SingleColumn) {
  Range r = RangeOf(8, 4, 4);
  EXPECT_EQ(r.step, 1);
  EXPECT_EQ(Walk(r), (std::vector<int32_t>{4}));
}

TEST(ColumnRange, ForwardWalkFromFiveOnEightColumnsWrapsToOneToFour) {
  // A find-next from column 5: the first pass to the end, the second from 1.
  std::vector<int32_t> order = Walk(RangeOf(8, 5, 8));
  std::vector<int32_t> second = Walk(RangeOf(8, 1, 4));
  order.insert(order.end(), second.begin(), second.end());
  EXPECT_EQ(order, (std::vector<int32_t>{5, 6, 7, 8, 1, 2, 3, 4}));
}

TEST(ColumnRange, ForwardWalkSplitBeyondTheLastColumnVisitsEachOnce) {
  std::vector<int32_t> order = Walk(RangeOf(8, 9, 8));
  std::vector<int32_t> second = Walk(RangeOf(8, 1, 8));
  order.insert(order.end(), second.begin(), second.end());
  EXPECT_EQ(order, (std::vector<int32_t>{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(ColumnRange, BackwardSecondPassAskedPastTheEndGivesTheLastColumnAlone) {
  // nCols to nCols + 1 is an upward range whose end is pulled in; the search
  // that already visited nCols in its first pass skips this pass.
  Range r = RangeOf(8, 8, 9);
  EXPECT_EQ(r.step, 1);
  EXPECT_EQ(Walk(r), (std::vector<int32_t>{8}));
}

TEST(ArraySizing, SizeDimensionsFromOneAndFills) {
  Array<int32_t> a;
  ArrayTools::Size(a, 5, int32_t{7});
  EXPECT_EQ(a.LBound(), 1);
  EXPECT_EQ(a.UBound(), 5);
  for (int32_t i = 1; i <= 5; ++i) EXPECT_EQ(a(i), 7);

  Array<bool> keep;
  ArrayTools::Size(keep, 3, true);
  EXPECT_TRUE(keep(1) && keep(2) && keep(3));

  Array<std::string> s{"old"};
  ArrayTools::Size(s, 2, std::string("x"));
  EXPECT_EQ(s.UBound(), 2);
  EXPECT_EQ(s(1), "x");
  EXPECT_EQ(s(2), "x");
}

TEST(ArraySizing, SizeToNoElementsIsFault9) {
  Array<int32_t> a;
  try {
    ArrayTools::Size(a, 0, int32_t{0});
    FAIL() << "no fault";
  } catch (const RuntimeFault& f) {
    EXPECT_EQ(f.Number(), 9);
  }
}

TEST(ArraySizing, Size2DimensionsBothFromOneAndFills) {
  Array2<uint8_t> b;
  ArrayTools::Size2(b, 16, 3, uint8_t{' '});
  EXPECT_EQ(b.LBound(1), 1);
  EXPECT_EQ(b.UBound(1), 16);
  EXPECT_EQ(b.LBound(2), 1);
  EXPECT_EQ(b.UBound(2), 3);
  for (int32_t j = 1; j <= 3; ++j)
    for (int32_t i = 1; i <= 16; ++i) EXPECT_EQ(b(i, j), ' ');
}

TEST(ArraySizing, Resize2KeepsContentsAndFillsNewElements) {
  Array2<float> a;
  ArrayTools::Size2(a, 2, 2, 0.f);
  a(1, 1) = 11.f;
  a(2, 1) = 21.f;
  a(1, 2) = 12.f;
  a(2, 2) = 22.f;
  ArrayTools::Resize2(a, 3, 3, -999.f);
  EXPECT_EQ(a.UBound(1), 3);
  EXPECT_EQ(a.UBound(2), 3);
  EXPECT_EQ(a(1, 1), 11.f);
  EXPECT_EQ(a(2, 1), 21.f);
  EXPECT_EQ(a(1, 2), 12.f);
  EXPECT_EQ(a(2, 2), 22.f);
  EXPECT_EQ(a(3, 1), -999.f);
  EXPECT_EQ(a(3, 2), -999.f);
  for (int32_t i = 1; i <= 3; ++i) EXPECT_EQ(a(i, 3), -999.f);
}

TEST(ArraySizing, Resize2ShrinkingRowsKeepsWhatRemains) {
  Array2<int32_t> a(1, 3, 1, 1);
  a(1, 1) = 1;
  a(2, 1) = 2;
  a(3, 1) = 3;
  ArrayTools::Resize2(a, 2, 2, int32_t{-1});
  EXPECT_EQ(a(1, 1), 1);
  EXPECT_EQ(a(2, 1), 2);
  EXPECT_EQ(a(1, 2), -1);
  EXPECT_EQ(a(2, 2), -1);
}

TEST(ArraySizing, Resize2OfAnUnallocatedArrayFillsAll) {
  Array2<int32_t> a;
  ArrayTools::Resize2(a, 2, 2, int32_t{4});
  EXPECT_EQ(a.LBound(1), 1);
  EXPECT_EQ(a(1, 1), 4);
  EXPECT_EQ(a(2, 2), 4);
}

TEST(BlockCopy, CopyRows2CopiesABlockOfRowsOfEveryColumn) {
  Array2<float> src(1, 4, 1, 2), dst;
  for (int32_t j = 1; j <= 2; ++j)
    for (int32_t i = 1; i <= 4; ++i) src(i, j) = static_cast<float>(10 * j + i);
  ArrayTools::Size2(dst, 6, 2, 0.f);
  ArrayTools::CopyRows2(src, 2, dst, 5, 2, 2);
  EXPECT_EQ(dst(5, 1), 12.f);
  EXPECT_EQ(dst(6, 1), 13.f);
  EXPECT_EQ(dst(5, 2), 22.f);
  EXPECT_EQ(dst(6, 2), 23.f);
  for (int32_t j = 1; j <= 2; ++j)
    for (int32_t i = 1; i <= 4; ++i) EXPECT_EQ(dst(i, j), 0.f);
}

TEST(BlockCopy, CopyRows2OverrunningEitherArrayIsFault9AndCopiesNothing) {
  Array2<float> src(1, 4, 1, 2), dst;
  src.Fill(1.f);
  ArrayTools::Size2(dst, 3, 2, 0.f);
  EXPECT_THROW(ArrayTools::CopyRows2(src, 1, dst, 2, 3, 2), RuntimeFault);
  EXPECT_THROW(ArrayTools::CopyRows2(src, 3, dst, 1, 3, 2), RuntimeFault);
  EXPECT_THROW(ArrayTools::CopyRows2(src, 1, dst, 1, 2, 3), RuntimeFault);
  for (int32_t j = 1; j <= 2; ++j)
    for (int32_t i = 1; i <= 3; ++i) EXPECT_EQ(dst(i, j), 0.f);
}

TEST(BlockCopy, CopyRows2WithinOneArrayShiftsRows) {
  Array2<int32_t> a(1, 5, 1, 1);
  for (int32_t i = 1; i <= 5; ++i) a(i, 1) = i;
  ArrayTools::CopyRows2(a, 1, a, 2, 4, 1);
  EXPECT_EQ(a(1, 1), 1);
  EXPECT_EQ(a(2, 1), 1);
  EXPECT_EQ(a(3, 1), 2);
  EXPECT_EQ(a(4, 1), 3);
  EXPECT_EQ(a(5, 1), 4);
}

TEST(BlockCopy, CopyRows2OfNothingDoesNothing) {
  Array2<int32_t> src, dst;
  ArrayTools::CopyRows2(src, 1, dst, 1, 0, 3);
  EXPECT_FALSE(dst.IsAllocated());
}
