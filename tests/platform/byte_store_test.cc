#include "vndata/platform/byte_store.h"

#include <gtest/gtest.h>

#include <string>

#include "vndata/platform/byte_tools.h"

using namespace vndata;

namespace {
std::string AllBytesText(const ByteStore& s, int32_t& iWidth) {
  return ByteTools::ToText(s.GetAllBytes(iWidth));
}
}  // namespace

TEST(ByteStoreInterning, SameTextAddedTwiceIsOneCell) {
  ByteStore s;
  EXPECT_EQ(s.AddString("WOPR", true, false), 1);
  EXPECT_EQ(s.AddString("WOPR", true, false), 1);
  EXPECT_EQ(s.Count(), 1);
}

TEST(ByteStoreInterning, CellsAreNumberedFromOneInOrderOfAddition) {
  ByteStore s;
  EXPECT_EQ(s.AddString("FIELD"), 1);
  EXPECT_EQ(s.AddString("WELLS"), 2);
  EXPECT_EQ(s.AddString("FIELD"), 1);
  EXPECT_EQ(s.AddString("GROUPS"), 3);
  EXPECT_EQ(s.Count(), 3);
  EXPECT_EQ(s.GetString(2), "WELLS");
}

TEST(ByteStoreInterning, TextsDifferingInCaseAreDistinctCells) {
  ByteStore s;
  EXPECT_EQ(s.AddString("WOPR"), 1);
  EXPECT_EQ(s.AddString("wopr"), 2);
  EXPECT_EQ(s.FindString("Wopr"), -1);
  EXPECT_EQ(s.FindStringNoCase("Wopr"), 1);
}

TEST(ByteStoreInterning, OptionsDoNotChangeWhichCellATextGets) {
  ByteStore s;
  int32_t c = s.AddString("P1", true, false);
  EXPECT_EQ(s.AddString("P1", false, true), c);
  EXPECT_EQ(s.Count(), 1);
}

TEST(ByteStoreInterning, EmptyTextGetsACellOfItsOwn) {
  ByteStore s;
  EXPECT_EQ(s.AddString("P1"), 1);
  EXPECT_EQ(s.AddString(""), 2);
  EXPECT_EQ(s.AddString(""), 2);
  EXPECT_EQ(s.GetString(2), "");
  EXPECT_EQ(s.GetLength(2), 0);
  EXPECT_EQ(s.FindString(""), 2);
}

TEST(ByteStoreFind, AbsentTextGivesMinusOne) {
  ByteStore s;
  EXPECT_EQ(s.FindString("WOPR"), -1);
  s.AddString("WOPR");
  s.AddString("WWPR");
  EXPECT_EQ(s.FindString("WWPR"), 2);
  EXPECT_EQ(s.FindString("WGPR"), -1);
  EXPECT_EQ(s.FindString("WOP"), -1);
}

TEST(ByteStoreRead, CellMinusOneGivesTheEmptyString) {
  ByteStore s;
  s.AddString("WOPR");
  EXPECT_EQ(s.GetString(-1), "");
  std::string z = "stale";
  int32_t n = 99;
  EXPECT_TRUE(s.GetString(-1, z, n));
  EXPECT_EQ(z, "");
  EXPECT_EQ(n, 0);
  EXPECT_EQ(s.GetLength(-1), 0);
}

TEST(ByteStoreRead, CellOutsideThePoolIsEmptyAndNotOk) {
  ByteStore s;
  s.AddString("WOPR");
  std::string z;
  int32_t n = 5;
  EXPECT_FALSE(s.GetString(0, z, n));
  EXPECT_EQ(z, "");
  EXPECT_EQ(n, 0);
  EXPECT_FALSE(s.GetString(2, z, n));
  EXPECT_TRUE(s.GetString(1, z, n));
  EXPECT_EQ(z, "WOPR");
  EXPECT_EQ(n, 4);
  EXPECT_FALSE(s.GetBytes(2).IsAllocated());
  EXPECT_FALSE(s.GetBytes(-1).IsAllocated());
}

TEST(ByteStoreWidth, CellWidthComesFromTheFirstRecord) {
  ByteStore s;
  s.AddString("ORIG");
  s.AddString("AB");
  EXPECT_EQ(s.Width(), 4);
  EXPECT_EQ(ByteTools::ToText(s.GetBytes(2)), "AB  ");
  EXPECT_EQ(s.GetString(2), "AB");
  EXPECT_EQ(s.GetLength(2), 2);
  int32_t w = 0;
  EXPECT_EQ(AllBytesText(s, w), "ORIGAB  ");
  EXPECT_EQ(w, 4);
}

TEST(ByteStoreWidth, ReserveSetsTheWidthAndEmptiesThePool) {
  ByteStore s;
  s.AddString("OLD");
  s.Reserve(10, 16);
  EXPECT_EQ(s.Count(), 0);
  EXPECT_EQ(s.FindString("OLD"), -1);
  EXPECT_EQ(s.AddString("WOPR"), 1);
  EXPECT_EQ(s.Width(), 16);
  EXPECT_EQ(ByteTools::ToText(s.GetBytes(1)), "WOPR            ");
}

TEST(ByteStoreWidth, LongerLaterTextWidensCellsWithoutLosingAnything) {
  ByteStore s;
  s.AddString("WOPR");
  s.AddString("FOPT");
  EXPECT_EQ(s.AddString("FIELDOPR"), 3);
  EXPECT_EQ(s.Width(), 8);
  EXPECT_EQ(s.GetString(1), "WOPR");
  EXPECT_EQ(s.GetString(2), "FOPT");
  EXPECT_EQ(s.GetString(3), "FIELDOPR");
  int32_t w = 0;
  EXPECT_EQ(AllBytesText(s, w), "WOPR    FOPT    FIELDOPR");
  EXPECT_EQ(w, 8);
  EXPECT_EQ(s.FindString("WOPR"), 1);
  EXPECT_EQ(s.AddString("FOPT"), 2);
}

TEST(ByteStoreWidth, PoolStartedWithAnEmptyTextWidensOnTheNext) {
  ByteStore s;
  EXPECT_EQ(s.AddString(""), 1);
  EXPECT_EQ(s.Width(), 0);
  EXPECT_EQ(s.AddString("WOPR"), 2);
  EXPECT_EQ(s.Width(), 4);
  EXPECT_EQ(s.GetString(1), "");
  EXPECT_EQ(s.GetString(2), "WOPR");
  int32_t w = 0;
  EXPECT_EQ(AllBytesText(s, w), "    WOPR");
}

TEST(ByteStoreAddBytes, RecordsGiveTheirCellsInOrder) {
  ByteStore s;
  Array<uint8_t> b = ByteTools::FromText("WOPR    FOPR    WOPR    ");
  Array<int32_t> cells = s.AddBytes(b, 8);
  ASSERT_TRUE(cells.IsAllocated());
  EXPECT_EQ(cells.LBound(), 1);
  EXPECT_EQ(cells.UBound(), 3);
  EXPECT_EQ(cells(1), 1);
  EXPECT_EQ(cells(2), 2);
  EXPECT_EQ(cells(3), 1);
  EXPECT_EQ(s.Count(), 2);
  EXPECT_EQ(s.Width(), 8);
  EXPECT_EQ(s.GetString(2), "FOPR");
  EXPECT_EQ(s.GetLength(2), 4);
}

TEST(ByteStoreAddBytes, BlankRecordGivesMinusOneAndAddsNothing) {
  ByteStore s;
  Array<uint8_t> b = ByteTools::FromText("P1      " "        " "P2      ");
  Array<int32_t> cells = s.AddBytes(b, 8);
  ASSERT_EQ(cells.UBound(), 3);
  EXPECT_EQ(cells(1), 1);
  EXPECT_EQ(cells(2), -1);
  EXPECT_EQ(cells(3), 2);
  EXPECT_EQ(s.Count(), 2);
  EXPECT_EQ(s.FindString(""), -1);
}

TEST(ByteStoreAddBytes, RecordEndsAtItsFirstNul) {
  ByteStore s;
  const uint8_t rec[8] = {'A', 'B', 0, 'X', 'Y', ' ', ' ', ' '};
  Array<int32_t> cells = s.AddBytes(rec, 1, 8);
  ASSERT_EQ(cells.UBound(), 1);
  EXPECT_EQ(s.GetString(cells(1)), "AB");
}

TEST(ByteStoreAddBytes, SharesCellsWithTextsAddedAsStrings) {
  ByteStore s;
  s.AddString("WELLS");
  Array<int32_t> cells = s.AddBytes(ByteTools::FromText("FIELD   WELLS   "), 8);
  EXPECT_EQ(cells(1), 2);
  EXPECT_EQ(cells(2), 1);
  EXPECT_EQ(s.AddString("FIELD"), 2);
}

TEST(ByteStoreAddBytes, LongerRecordsWidenAnExistingPool) {
  ByteStore s;
  s.AddString("AB");
  Array<int32_t> cells = s.AddBytes(ByteTools::FromText("ABCDEF  "), 8);
  EXPECT_EQ(cells(1), 2);
  EXPECT_EQ(s.Width(), 6);
  EXPECT_EQ(s.GetString(1), "AB");
  EXPECT_EQ(s.GetString(2), "ABCDEF");
}

TEST(ByteStoreAddBytes, NoRecordsGiveAnUnallocatedResult) {
  ByteStore s;
  EXPECT_FALSE(s.AddBytes(Array<uint8_t>(), 8).IsAllocated());
  EXPECT_FALSE(s.AddBytes(ByteTools::FromText("ABCD"), 0).IsAllocated());
  EXPECT_EQ(s.Count(), 0);
}

TEST(ByteStoreBulk, GetAllStringsListsEveryCell) {
  ByteStore s;
  int32_t n = -1;
  EXPECT_FALSE(s.GetAllStrings(n).IsAllocated());
  EXPECT_EQ(n, 0);
  s.AddString("ORIGIN");
  s.AddString("");
  s.AddString("TYPE");
  Array<std::string> all = s.GetAllStrings(n);
  EXPECT_EQ(n, 3);
  ASSERT_EQ(all.UBound(), 3);
  EXPECT_EQ(all(1), "ORIGIN");
  EXPECT_EQ(all(2), "");
  EXPECT_EQ(all(3), "TYPE");
}

TEST(ByteStoreBulk, EmptyPoolHasNoBytes) {
  ByteStore s;
  int32_t w = -1;
  EXPECT_FALSE(s.GetAllBytes(w).IsAllocated());
  EXPECT_EQ(w, 0);
  EXPECT_EQ(s.Count(), 0);
}

TEST(ByteStoreBulk, APoolOfOnlyTheEmptyTextReadsItBack) {
  // Its width stays 0, so the pool holds no bytes for the cell.
  ByteStore s;
  EXPECT_EQ(s.AddString(""), 1);
  EXPECT_EQ(s.Width(), 0);
  EXPECT_EQ(s.GetString(1), "");
  EXPECT_EQ(s.View(1).size(), 0u);
  EXPECT_EQ(s.FindStringNoCase(""), 1);
}
