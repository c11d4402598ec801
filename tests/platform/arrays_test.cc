#include "vndata/platform/arrays.h"

#include <gtest/gtest.h>

using namespace vndata;

TEST(Array, NewArrayIsUnallocatedAndItsBoundsFault) {
  Array<int32_t> a;
  EXPECT_FALSE(a.IsAllocated());
  EXPECT_EQ(a.size(), 0u);
  try {
    (void)a.UBound();
    FAIL() << "no fault";
  } catch (const RuntimeFault& f) {
    EXPECT_EQ(f.Number(), 9);
  }
}

TEST(Array, InitializerListHasBoundsOneToN) {
  Array<float> a{1.f, 2.f};
  EXPECT_EQ(a.LBound(), 1);
  EXPECT_EQ(a.UBound(), 2);
  EXPECT_EQ(a(2), 2.f);
}

TEST(Array, SubscriptOutsideBoundsIsFault9) {
  Array<int32_t> a(1, 3);
  EXPECT_THROW(a(0), RuntimeFault);
  EXPECT_THROW(a(4), RuntimeFault);
  try {
    a(4) = 1;
  } catch (const RuntimeFault& f) {
    EXPECT_EQ(f.Number(), 9);
    EXPECT_EQ(f.Description(), "Subscript out of range");
  }
}

TEST(Array, OwnLowerBound) {
  Array<int32_t> a(0, 2);
  a(0) = 7;
  EXPECT_EQ(a.LBound(), 0);
  EXPECT_EQ(a(0), 7);
}

TEST(Array, ReDimPreserveKeepsContents) {
  Array<int32_t> a{1, 2, 3};
  a.ReDimPreserve(5);
  EXPECT_EQ(a(3), 3);
  EXPECT_EQ(a(5), 0);
  a.ReDimPreserve(2);
  EXPECT_EQ(a.UBound(), 2);
  EXPECT_EQ(a(2), 2);
}

TEST(Array, EraseReturnsToUnallocated) {
  Array<std::string> a{"x"};
  a.Erase();
  EXPECT_FALSE(a.IsAllocated());
}

TEST(Array, EmptyDimensionIsFault9) {
  Array<int32_t> a;
  EXPECT_THROW(a.ReDim(1, 0), RuntimeFault);
  EXPECT_FALSE(a.IsAllocated());
}

TEST(Array, BoolArrayHasContiguousData) {
  Array<bool> a(1, 4);
  a(2) = true;
  EXPECT_TRUE(a.data()[1]);
}

TEST(Array2, FirstSubscriptFastestSoColumnsAreContiguous) {
  Array2<float> a(1, 3, 1, 2);
  a(1, 2) = 10.f;
  a(2, 2) = 20.f;
  a(3, 2) = 30.f;
  const float* col = a.Column(2);
  EXPECT_EQ(col[0], 10.f);
  EXPECT_EQ(col[2], 30.f);
  EXPECT_EQ(&a(1, 2), a.data() + 3);
}

TEST(Array2, BoundsAndFault9) {
  Array2<int32_t> a(1, 2, 0, 4);
  EXPECT_EQ(a.LBound(1), 1);
  EXPECT_EQ(a.UBound(1), 2);
  EXPECT_EQ(a.LBound(2), 0);
  EXPECT_EQ(a.UBound(2), 4);
  EXPECT_THROW(a(3, 0), RuntimeFault);
  EXPECT_THROW(a(1, 5), RuntimeFault);
  EXPECT_THROW((void)a.UBound(3), RuntimeFault);
}

TEST(Array2, PreservingResizeKeepsBothDimensions) {
  Array2<int32_t> a(1, 2, 1, 2);
  a(1, 1) = 11;
  a(2, 1) = 21;
  a(1, 2) = 12;
  a(2, 2) = 22;
  a.ReDimPreserve(4, 3);
  EXPECT_EQ(a(1, 1), 11);
  EXPECT_EQ(a(2, 1), 21);
  EXPECT_EQ(a(1, 2), 12);
  EXPECT_EQ(a(2, 2), 22);
  EXPECT_EQ(a(4, 3), 0);
  a.ReDimPreserve(1, 2);
  EXPECT_EQ(a(1, 2), 12);
  EXPECT_EQ(a.UBound(1), 1);
}

TEST(ArrayLargeBlocks, LargeArraysStartZeroedAndKeepContentsOnResize) {
  // 2 million floats (8 MB) and 100,000 (400 KB) take the mapped-block paths.
  for (int32_t n : {2000000, 100000}) {
    Array<float> a(1, n);
    EXPECT_EQ(a(1), 0.0f);
    EXPECT_EQ(a(n), 0.0f);
    a(n) = 7.0f;
    a.ReDimPreserve(n + 10);
    EXPECT_EQ(a(n), 7.0f);
    EXPECT_EQ(a(n + 10), 0.0f);
    Array<float> b = a;
    EXPECT_EQ(b(n), 7.0f);
    a.Erase();
    EXPECT_FALSE(a.IsAllocated());
  }
  Array2<float> m(1, 1000, 1, 2000);
  EXPECT_EQ(m(1000, 2000), 0.0f);
  m(1000, 1999) = 3.0f;
  m.ReDimPreserve(1001, 1999);
  EXPECT_EQ(m(1000, 1999), 3.0f);
  EXPECT_EQ(m(1001, 1), 0.0f);
}

TEST(ArrayLargeBlocks, AnArrayOnCarvedMemoryHoldsItsOwner) {
  auto owner = std::make_shared<std::vector<float>>(12, 0.0f);
  std::weak_ptr<std::vector<float>> watch = owner;
  {
    Array2<float> m;
    m.ReDimOn(owner->data() + 2, owner, 1, 5, 1, 2);
    owner.reset();
    ASSERT_FALSE(watch.expired());  // the array keeps its memory alive
    m(5, 2) = 4.0f;
    EXPECT_EQ((*watch.lock())[11], 4.0f);
    EXPECT_EQ(m.UBound(1), 5);
    // Resizing moves the values to memory of the array's own.
    m.ReDimPreserve(6, 2);
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(m(5, 2), 4.0f);
  }
}
