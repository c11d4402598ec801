#include "vndata/foundation/column_attributes.h"

#include <gtest/gtest.h>

#include <cstring>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/message_log.h"

using namespace vndata;

namespace {

struct LogCapture {
  LogCapture() { MessageLog::Shared().Clear(); }
  ~LogCapture() { MessageLog::Shared().Clear(); }
  const std::vector<std::string>& Lines() const { return MessageLog::Shared().Lines(); }
};

std::shared_ptr<ByteStore> PoolOf(std::initializer_list<const char*> texts) {
  auto p = std::make_shared<ByteStore>();
  for (const char* t : texts) p->AddString(t, true, false);
  return p;
}

}  // namespace

TEST(VectorData, TwentyFourBytesInDeclaredOrder) {
  EXPECT_EQ(sizeof(VECTORDATA), 24u);
  VECTORDATA v;
  // Pointer k of the ten 16-bit ones, by id, at byte 2k; "INDEX" at 20.
  const int32_t idOfSlot[10] = {4, 5, 6, 2, 14, 11, 9, 7, 8, 12};
  for (int32_t k = 0; k < 10; ++k) ASSERT_TRUE(setVECTORDATASingleAttributePointer(v, idOfSlot[k], 100 + k));
  ASSERT_TRUE(setVECTORDATASingleAttributePointer(v, ATT_INDEX, 70000));
  uint8_t bytes[24];
  std::memcpy(bytes, &v, 24);
  for (int32_t k = 0; k < 10; ++k) {
    int16_t x;
    std::memcpy(&x, bytes + 2 * k, 2);
    EXPECT_EQ(x, 100 + k) << "slot " << k;
  }
  int32_t idx;
  std::memcpy(&idx, bytes + 20, 4);
  EXPECT_EQ(idx, 70000);
}

TEST(VectorData, ANewRecordHoldsMinusOneEverywhere) {
  VECTORDATA v;
  v.iClass = 5;
  v.iIndex = 9;
  InitVECTORDATA(v);
  for (int32_t id = 1; id <= 14; ++id) {
    int32_t p = 77;
    getVECTORDATASingleAttributePointer(v, id, p);
    if (IsStoredAttribute(id))
      EXPECT_EQ(p, -1) << id;
    else
      EXPECT_EQ(p, 77) << id;
  }
}

TEST(VectorData, IdsWithoutAFieldLeaveTheOutputAndSucceed) {
  VECTORDATA v;
  for (int32_t id : {1, 3, 13, 0, 15}) {
    int32_t p = 42;
    EXPECT_TRUE(getVECTORDATASingleAttributePointer(v, id, p));
    EXPECT_EQ(p, 42);
    EXPECT_TRUE(setVECTORDATASingleAttributePointer(v, id, 9));
  }
  VECTORDATA fresh;
  EXPECT_EQ(std::memcmp(&v, &fresh, sizeof v), 0);
}

TEST(VectorData, SixteenBitOverflowIsOneTraceLineAndKeepsTheField) {
  LogCapture log;
  VECTORDATA v;
  v.iMember = 12;
  EXPECT_FALSE(setVECTORDATASingleAttributePointer(v, ATT_MEMBER, 32768));
  EXPECT_EQ(v.iMember, 12);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Overflow (No.6) In [mxColumnAttributes (Code) (setVECTORDATASingleAttributePointer)] ");
  EXPECT_TRUE(setVECTORDATASingleAttributePointer(v, ATT_MEMBER, 32767));
  EXPECT_EQ(v.iMember, 32767);
  // "INDEX" has 32 bits.
  EXPECT_TRUE(setVECTORDATASingleAttributePointer(v, ATT_INDEX, 1000000));
  EXPECT_EQ(v.iIndex, 1000000);
  EXPECT_EQ(log.Lines().size(), 1u);
}

TEST(ColumnPointers, SingleAndBulkAccess) {
  Array<COLUMNDATA> cols(1, 4);
  ASSERT_TRUE(setSingleAttributePointer(cols, 2, ATT_VARIABLE, 3));
  int32_t p = 0;
  ASSERT_TRUE(getSingleAttributePointer(cols, 2, ATT_VARIABLE, p));
  EXPECT_EQ(p, 3);
  Array<int32_t> all;
  ASSERT_TRUE(getSingleAttributePointers(cols, ATT_VARIABLE, all));
  ASSERT_EQ(all.UBound(), 4);
  EXPECT_EQ(all(1), -1);
  EXPECT_EQ(all(2), 3);
}

TEST(ColumnPointers, BulkWriteFromAFirstColumn) {
  Array<COLUMNDATA> cols(1, 5);
  ASSERT_TRUE(setSingleAttributePointers(Array<int32_t>{7, 8}, ATT_CLASS, cols, 3));
  EXPECT_EQ(cols(2).Pointers.iClass, -1);
  EXPECT_EQ(cols(3).Pointers.iClass, 7);
  EXPECT_EQ(cols(4).Pointers.iClass, 8);
  // A first column below 2 means column 1.
  ASSERT_TRUE(setSingleAttributePointers(Array<int32_t>{5}, ATT_CLASS, cols, 0));
  EXPECT_EQ(cols(1).Pointers.iClass, 5);
}

TEST(ColumnPointers, BulkWritePastTheLastColumnIsABadSubscript) {
  LogCapture log;
  Array<COLUMNDATA> cols(1, 2);
  EXPECT_FALSE(setSingleAttributePointers(Array<int32_t>{1, 2}, ATT_CLASS, cols, 2));
  EXPECT_EQ(cols(2).Pointers.iClass, -1);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0],
            "Error:Subscript out of range (No.9) In [mxColumnAttributes (Code) (setSingleAttributePointers)] ");
}

TEST(ColumnPointers, FourteenPointersByIdIgnoreOneThreeAndThirteen) {
  Array<int32_t> byId(1, 14);
  for (int32_t id = 1; id <= 14; ++id) byId(id) = id * 10;
  VECTORDATA v;
  ASSERT_TRUE(setVECTORDATAPointers(byId, v));
  EXPECT_EQ(v.iUnits, 20);
  EXPECT_EQ(v.iOrigin, 40);
  EXPECT_EQ(v.iIndex, 100);
  EXPECT_EQ(v.iGrid, 140);
}

TEST(ColumnPointers, InitColumnDataArrayResetsFromAColumnOn) {
  Array<COLUMNDATA> cols(1, 3);
  for (int32_t c = 1; c <= 3; ++c) cols(c).Pointers.iType = static_cast<int16_t>(c);
  ASSERT_TRUE(InitColumnDataArray(cols, 2));
  EXPECT_EQ(cols(1).Pointers.iType, 1);
  EXPECT_EQ(cols(2).Pointers.iType, -1);
  EXPECT_EQ(cols(3).Pointers.iType, -1);
}

TEST(ClassIndex, MembersOfEachClassInCellOrder) {
  AttributePools pools(1, 14);
  pools(ATT_CLASS) = PoolOf({"WELL", "GROUP"});
  pools(ATT_MEMBER) = PoolOf({"P1", "G1", "P2", "I1"});
  Array<COLUMNDATA> cols(1, 6);
  auto set = [&](int32_t c, int16_t cls, int16_t mem) {
    cols(c).Pointers.iClass = cls;
    cols(c).Pointers.iMember = mem;
  };
  set(1, 1, 3);  // WELL P2
  set(2, 1, 1);  // WELL P1
  set(3, 2, 2);  // GROUP G1
  set(4, 1, 3);  // WELL P2 again
  set(5, -1, 4); // no class: left out
  set(6, 1, 4);  // WELL I1
  Array<CLASSDATA> cd;
  Array<int32_t> list;
  int32_t nClasses = 0, nList = 0;
  ASSERT_TRUE(setClassPointerData(pools, cols, cd, nClasses, nList, list));
  EXPECT_EQ(nClasses, 2);
  EXPECT_EQ(nList, 4);
  EXPECT_EQ(cd(1).iStart, 0);
  EXPECT_EQ(cd(1).nCount, 3);
  EXPECT_EQ(cd(2).iStart, 3);
  EXPECT_EQ(cd(2).nCount, 1);
  // Members stand in the order of their cells, not of the columns.
  EXPECT_EQ(list(1), 1);
  EXPECT_EQ(list(2), 3);
  EXPECT_EQ(list(3), 4);
  EXPECT_EQ(list(4), 2);
}

TEST(ClassIndex, AClassPointerBelowOneLeavesTheColumnOut) {
  AttributePools pools(1, 14);
  pools(ATT_CLASS) = PoolOf({"WELL"});
  pools(ATT_MEMBER) = PoolOf({"P1", "P2"});
  Array<COLUMNDATA> cols(1, 2);
  cols(1).Pointers.iClass = 0;
  cols(1).Pointers.iMember = 2;
  cols(2).Pointers.iClass = 1;
  cols(2).Pointers.iMember = 1;
  Array<CLASSDATA> cd;
  Array<int32_t> list;
  int32_t nClasses = 0, nList = 0;
  ASSERT_TRUE(setClassPointerData(pools, cols, cd, nClasses, nList, list));
  EXPECT_EQ(nList, 1);
  EXPECT_EQ(cd(1).nCount, 1);
  EXPECT_EQ(list(1), 1);
}

TEST(ClassIndex, NoColumnCountedGivesTrueAndNoIndex) {
  AttributePools pools(1, 14);
  pools(ATT_CLASS) = PoolOf({"WELL"});
  pools(ATT_MEMBER) = PoolOf({"P1"});
  Array<COLUMNDATA> cols(1, 2);
  Array<CLASSDATA> cd;
  Array<int32_t> list;
  int32_t nClasses = 0, nList = 0;
  EXPECT_TRUE(setClassPointerData(pools, cols, cd, nClasses, nList, list));
  EXPECT_EQ(nList, 0);
  EXPECT_FALSE(cd.IsAllocated());
  EXPECT_FALSE(list.IsAllocated());
}

TEST(ClassIndex, ClassListUsesTheFirstKnownWordOnly) {
  auto classes = PoolOf({"GROUP", "WELLS", "WELL"});
  Array<CLASSDATA> cd(1, 3);
  cd(1) = {0, 1};
  cd(2) = {1, 2};
  cd(3) = {3, 1};
  Array<int32_t> list{10, 20, 21, 30};
  Array<int32_t> members;
  int32_t n = -1;
  ASSERT_TRUE(getClassPointerList(classes.get(), "NONE,WELL,WELLS", cd, list, members, n));
  ASSERT_EQ(n, 1);
  EXPECT_EQ(members(1), 30);
  ASSERT_TRUE(getClassPointerList(classes.get(), "WELLS,WELL", cd, list, members, n));
  ASSERT_EQ(n, 2);
  EXPECT_EQ(members(1), 20);
  EXPECT_EQ(members(2), 21);
  // Words are looked up exactly.
  ASSERT_TRUE(getClassPointerList(classes.get(), "well,X", cd, list, members, n));
  EXPECT_EQ(n, 0);
}

TEST(MemberNames, NamesArePaddedOrCutTo40Bytes) {
  Array<std::string> names(1, 2);
  names(1) = "P1";
  names(2) = std::string(45, 'W');
  Array<WELLINFO> wells;
  int32_t n = 0;
  ASSERT_TRUE(setMemberNames(names, 2, wells, n));
  ASSERT_EQ(n, 2);
  EXPECT_EQ(wells(1).iWell, 1);
  EXPECT_EQ(wells(2).iWell, 2);
  EXPECT_EQ(std::string(reinterpret_cast<const char*>(wells(1).zWellName), 40), "P1" + std::string(38, ' '));
  EXPECT_EQ(wells(2).nWellMarkers, 0);
  EXPECT_EQ(wells(2).iFirstMarker, 0);
  EXPECT_EQ(getMemberName(wells, n, 1), "P1");
  EXPECT_EQ(getMemberName(wells, n, 2), std::string(40, 'W'));
  EXPECT_EQ(getMemberName(wells, n, 0), "");
  EXPECT_EQ(getMemberName(wells, n, 3), "");
}

TEST(MemberNames, WellsFoundInTheMemberPoolCompareWithCase) {
  Array<std::string> names{"P1", "p2", "I1"};
  Array<WELLINFO> wells;
  int32_t n = 0;
  setMemberNames(names, 3, wells, n);
  auto members = PoolOf({"I1", "P2", "P1"});
  Array<bool> in;
  ASSERT_TRUE(GetPointersToWellList(wells, n, *members, in));
  ASSERT_EQ(in.UBound(), 3);
  EXPECT_TRUE(in(1));
  EXPECT_FALSE(in(2));
  EXPECT_TRUE(in(3));
}
