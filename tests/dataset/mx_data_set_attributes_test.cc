#include <gtest/gtest.h>

#include "tests/dataset/dataset_test_util.h"
#include "vndata/dataset/mx_data_set.h"

using namespace vndata;
using namespace vndata::testutil;

namespace {

// A data set of n columns of 2 rows, column attributes set by SetAttributes.
void WithColumns(mxDataSet& ds, const std::vector<Attrs>& cols) {
  ds.Dimension(static_cast<int32_t>(cols.size()), 2);
  for (std::size_t c = 0; c < cols.size(); ++c) {
    bool qOK = false;
    ds.SetAttributes(static_cast<int32_t>(c + 1), Row(cols[c]), qOK);
    ASSERT_TRUE(qOK);
  }
}

std::string Attr(mxDataSet& ds, int32_t c, int32_t id) {
  std::string z = "unset";
  ds.GetAttribute(c, id, z);
  return z;
}

}  // namespace

TEST(DataSetAttributes, EqualTextsShareOneCell) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_VARIABLE, "WOPR"}}, {{ATT_VARIABLE, "WOPR"}}});
  bool r = false;
  std::shared_ptr<ByteStore> pool;
  bool qOK = false;
  ds.GetByteStore(ATT_VARIABLE, pool, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(pool->Count(), 1);
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_VARIABLE), 1);
  ds.CompareAttribute(2, ATT_VARIABLE, "", 1, true, r);
  EXPECT_TRUE(r);
  ds.CompareAttribute(1, ATT_VARIABLE, "", 1, true, r);
  EXPECT_TRUE(r);
}

TEST(DataSetAttributes, SetAttributeOnAnIdWithNoPoolCreatesIt) {
  mxDataSet ds;
  ds.Dimension(2, 1);
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_UNITS), -1);
  EXPECT_TRUE(ds.SetAttribute(ATT_UNITS, "SM3/DAY"));
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_UNITS), 1);
  EXPECT_EQ(Attr(ds, 1, ATT_UNITS), "SM3/DAY");
  EXPECT_EQ(Attr(ds, 2, ATT_UNITS), "SM3/DAY");
}

TEST(DataSetAttributes, SetColumnAttributePointsOneColumn) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_CLASS, "A"}}, {{ATT_CLASS, "A"}}});
  EXPECT_TRUE(ds.SetColumnAttribute(2, ATT_CLASS, "B"));
  EXPECT_EQ(Attr(ds, 1, ATT_CLASS), "A");
  EXPECT_EQ(Attr(ds, 2, ATT_CLASS), "B");
}

TEST(DataSetAttributes, EmptyMemberThroughSetAttributesPointsAtAnEmptyCell) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_VARIABLE, "X"}}});
  std::shared_ptr<ByteStore> pool;
  bool qOK = false;
  ds.GetByteStore(ATT_MEMBER, pool, qOK);
  ASSERT_EQ(pool->Count(), 1);
  EXPECT_EQ(pool->GetString(1), "");
  // The column points at that cell: its pointer is 1, not -1.
  bool r = false;
  ds.CompareAttribute(1, ATT_MEMBER, "", 1, true, r);
  EXPECT_TRUE(r);
}

TEST(DataSetAttributes, EmptyMemberThroughPackedBytesHasNoPointer) {
  mxDataSet ds;
  Array2<float> a = Numbered(1, 1);
  bool qOK = false;
  ds.bInitialiseFrom2d(a, Headers({{{ATT_VARIABLE, "X"}}}), qOK);
  ASSERT_TRUE(qOK);
  bool r = true;
  ds.CompareAttribute(1, ATT_MEMBER, "", -1, true, r);
  EXPECT_TRUE(r);
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_MEMBER), 0);
  EXPECT_EQ(Attr(ds, 1, ATT_MEMBER), "");
}

TEST(DataSetAttributes, AfterInitColumnDataArrayEveryIdReadsEmpty) {
  mxDataSet ds;
  Attrs all;
  for (int32_t id = 1; id <= 14; ++id) all[id] = "T" + std::to_string(id);
  WithColumns(ds, {all, all});
  EXPECT_EQ(Attr(ds, 2, ATT_VERBOSE), "T12");
  bool qOK = false;
  ds.InitColumnDataArray(1, qOK);
  ASSERT_TRUE(qOK);
  for (int32_t c = 1; c <= 2; ++c)
    for (int32_t id = 1; id <= 14; ++id) {
      std::string z = "unset";
      EXPECT_TRUE(ds.GetAttribute(c, id, z)) << id;
      EXPECT_EQ(z, "") << id;
    }
}

TEST(DataSetAttributes, ReadingAnIdWhosePoolIsAbsentFails) {
  mxDataSet ds;
  ds.Dimension(1, 1);
  LogCapture log;
  std::string z = "x";
  int32_t n = 5;
  bool qOK = true;
  ds.GetStoredAttribute(1, GRID, z, n, qOK, true);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(z, "");
  EXPECT_EQ(n, 0);
  EXPECT_TRUE(log.Lines().empty());
}

TEST(DataSetAttributes, IdsThreeAndThirteenAndOutsideTheRangeReadEmpty) {
  mxDataSet ds;
  Attrs all;
  for (int32_t id = 1; id <= 14; ++id) all[id] = "T" + std::to_string(id);
  WithColumns(ds, {all});
  LogCapture log;
  for (int32_t id : {3, 13, 0, 15, -2}) {
    std::string z = "x";
    EXPECT_TRUE(ds.GetAttribute(1, id, z)) << id;
    EXPECT_EQ(z, "") << id;
  }
  EXPECT_TRUE(log.Lines().empty());
}

TEST(DataSetAttributes, TheTreePathIdGivesTheComputedPath) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_CLASS, "WELLS"}, {ATT_VARIABLE, "WOPR"}}});
  std::string z = "x";
  int32_t n = 9;
  bool qOK = false;
  ds.GetStoredAttribute(1, TREEVIEWPATH, z, n, qOK, true);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(z, "WELLS\\WOPR");
  EXPECT_EQ(n, 10);
}

TEST(DataSetAttributes, InvalidColumnWithCheckFails) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_VARIABLE, "A"}}});
  std::string z = "x";
  EXPECT_FALSE(ds.GetAttribute(2, ATT_VARIABLE, z));
  EXPECT_EQ(z, "");
  EXPECT_FALSE(ds.GetAttribute(0, ATT_VARIABLE, z));
}

TEST(DataSetAttributes, GetAttributesSizesTheArrayTo14) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_ORIGIN, "O"}, {GRID, "LGR1"}, {ATT_INDEX, "5"}}});
  Array<std::string> z(1, 3);
  ASSERT_TRUE(ds.GetAttributes(1, z));
  ASSERT_EQ(z.UBound(), 14);
  EXPECT_EQ(z(ATT_ORIGIN), "O");
  EXPECT_EQ(z(GRID), "LGR1");
  EXPECT_EQ(z(ATT_INDEX), "5");
  EXPECT_EQ(z(ATT_TYPE), "");
  EXPECT_EQ(z(UNUSED3), "");
}

TEST(DataSetAttributes, ListedAttributesStandAtTheirPlaceInTheList) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_ORIGIN, "O"}, {ATT_VARIABLE, "V"}, {ATT_UNITS, "U"}}});
  Array<std::string> z;
  ASSERT_TRUE(ds.GetListedAttributes(1, Array<int32_t>{11, 4, 2}, z, 0));
  ASSERT_EQ(z.UBound(), 3);
  EXPECT_EQ(z(1), "V");
  EXPECT_EQ(z(2), "O");
  EXPECT_EQ(z(3), "U");
  Array<std::string> two;
  ASSERT_TRUE(ds.GetListedAttributes(1, Array<int32_t>{2, 11, 4}, two, 2));
  ASSERT_EQ(two.UBound(), 2);
  EXPECT_EQ(two(2), "V");
}

TEST(DataSetAttributes, StoredAttributeSize) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_VARIABLE, "WOPR"}, {ATT_MEMBER, "PROD-12"}}});
  EXPECT_EQ(ds.GetStoredAttributeSize(1, ATT_VARIABLE, true), 4);
  EXPECT_EQ(ds.GetStoredAttributeSize(1, ATT_MEMBER, true), 7);
  EXPECT_EQ(ds.GetStoredAttributeSize(1, ATT_TYPE, true), 0);
  // Id 1 deliberately has no size; nor do 3, 13 and ids outside 2..14.
  EXPECT_EQ(ds.GetStoredAttributeSize(1, TREEVIEWPATH, true), -1);
  EXPECT_EQ(ds.GetStoredAttributeSize(1, UNUSED3, true), -1);
  EXPECT_EQ(ds.GetStoredAttributeSize(1, UNUSED13, true), -1);
  EXPECT_EQ(ds.GetStoredAttributeSize(1, 15, true), -1);
  EXPECT_EQ(ds.GetStoredAttributeSize(2, ATT_VARIABLE, true), -1);
}

TEST(DataSetAttributes, NumberStoredAttributes) {
  mxDataSet ds;
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_VARIABLE), -1);
  WithColumns(ds, {{{ATT_VARIABLE, "A"}}, {{ATT_VARIABLE, "B"}}, {{ATT_VARIABLE, "A"}}});
  EXPECT_EQ(ds.NumberStoredAttributes(ATT_VARIABLE), 2);
  EXPECT_EQ(ds.NumberStoredAttributes(TREEVIEWPATH), 0);
  EXPECT_EQ(ds.NumberStoredAttributes(UNUSED3), 0);
  EXPECT_EQ(ds.NumberStoredAttributes(UNUSED13), 0);
  EXPECT_EQ(ds.NumberStoredAttributes(15), 0);
}

TEST(DataSetAttributes, FindAttributePositionIgnoresCaseAndGivesTheFirst) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_VARIABLE, "FOPR"}}, {{ATT_VARIABLE, "wopr"}}, {{ATT_VARIABLE, "WOPR"}}});
  EXPECT_EQ(ds.FindAttributePosition(ATT_VARIABLE, "WOPR"), 2);
  EXPECT_EQ(ds.FindAttributePosition(ATT_VARIABLE, "fopr"), 1);
  EXPECT_EQ(ds.FindAttributePosition(ATT_VARIABLE, "WOP"), -1);
  EXPECT_EQ(ds.FindAttributePosition(ATT_VARIABLE, ""), -1);
  EXPECT_EQ(ds.FindAttributePosition(GRID, "X"), -1);
}

TEST(DataSetAttributes, FindAttributePositionInAPoolWithNoCellsIsMinusOne) {
  mxDataSet ds;
  ds.Dimension(1, 1);
  bool qOK = false;
  ds.SetByteStore(ATT_UNITS, std::make_shared<ByteStore>(), qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.FindAttributePosition(ATT_UNITS, "M"), -1);
}

TEST(DataSetAttributes, CompareAttributeComparesTheCell) {
  mxDataSet ds;
  WithColumns(ds, {{{ATT_CLASS, "WELLS"}}, {{ATT_CLASS, "GROUPS"}}});
  bool r = true;
  ds.CompareAttribute(2, ATT_CLASS, "ignored", 1, true, r);
  EXPECT_FALSE(r);
  ds.CompareAttribute(2, ATT_CLASS, "ignored", 2, true, r);
  EXPECT_TRUE(r);
  ds.CompareAttribute(3, ATT_CLASS, "", 2, true, r);
  EXPECT_FALSE(r);
}

TEST(DataSetAttributes, ByteStoresByReference) {
  mxDataSet a, b;
  WithColumns(a, {{{ATT_VARIABLE, "A1"}}});
  std::shared_ptr<ByteStore> pool;
  bool qOK = false;
  a.GetByteStore(ATT_VARIABLE, pool, qOK);
  ASSERT_TRUE(qOK);
  b.Dimension(1, 1);
  b.SetByteStore(ATT_VARIABLE, pool, qOK);
  ASSERT_TRUE(qOK);
  b.SetColumnAttribute(1, ATT_VARIABLE, "B1");
  // Both data sets now see the shared pool's second cell.
  EXPECT_EQ(pool->Count(), 2);
  EXPECT_EQ(a.NumberStoredAttributes(ATT_VARIABLE), 2);
  for (int32_t id : {1, 3, 13, 0, 15}) {
    a.SetByteStore(id, pool, qOK);
    EXPECT_FALSE(qOK) << id;
    std::shared_ptr<ByteStore> got;
    a.GetByteStore(id, got, qOK);
    EXPECT_FALSE(qOK) << id;
    EXPECT_EQ(got, nullptr);
  }
  AttributePools all;
  a.GetByteStoreArray(all, qOK);
  ASSERT_TRUE(qOK);
  ASSERT_EQ(all.UBound(), 14);
  EXPECT_EQ(all(ATT_VARIABLE), pool);
  mxDataSet c;
  c.SetByteStoreArray(all, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(c.NumberStoredAttributes(ATT_VARIABLE), 2);
}

TEST(DataSetAttributes, SixteenBitPointerOverflowIsOneTraceLine) {
  mxDataSet ds;
  ds.Dimension(2, 1);
  auto pool = std::make_shared<ByteStore>();
  for (int32_t i = 1; i <= 32767; ++i) pool->AddString("V" + std::to_string(i), true, false);
  bool qOK = false;
  ds.SetByteStore(ATT_VARIABLE, pool, qOK);
  EXPECT_TRUE(ds.SetColumnAttribute(1, ATT_VARIABLE, "V32767"));
  LogCapture log;
  EXPECT_FALSE(ds.SetColumnAttribute(2, ATT_VARIABLE, "NEW"));
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Overflow (No.6) In [mxDataSet  (SetColumnAttribute)] ");
  // The pool keeps the text; the column keeps its former pointer.
  EXPECT_EQ(pool->Count(), 32768);
  EXPECT_EQ(Attr(ds, 2, ATT_VARIABLE), "");
  EXPECT_EQ(Attr(ds, 1, ATT_VARIABLE), "V32767");
  // "INDEX" has 32 bits and takes cells beyond 32767.
  auto idx = std::make_shared<ByteStore>();
  for (int32_t i = 1; i <= 32768; ++i) idx->AddString(std::to_string(i), true, false);
  ds.SetByteStore(ATT_INDEX, idx, qOK);
  EXPECT_TRUE(ds.SetColumnAttribute(2, ATT_INDEX, "32768"));
  EXPECT_EQ(Attr(ds, 2, ATT_INDEX), "32768");
  EXPECT_EQ(log.Lines().size(), 1u);
}

TEST(DataSetAttributes, SetAttributesOverflowReportsFalseWithOneLine) {
  mxDataSet ds;
  ds.Dimension(1, 1);
  auto pool = std::make_shared<ByteStore>();
  for (int32_t i = 1; i <= 32767; ++i) pool->AddString("M" + std::to_string(i), true, false);
  bool qOK = false;
  ds.SetByteStore(ATT_MEMBER, pool, qOK);
  LogCapture log;
  ds.SetAttributes(1, Row({{ATT_MEMBER, "ONE-TOO-MANY"}}), qOK);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(log.Lines().size(), 1u);
  EXPECT_EQ(log.Lines()[0], "Error:Overflow (No.6) In [mxDataSet  (SetAttributes)] ");
}

TEST(DataSetAttributes, TextsOfIdsOneThreeAndThirteenStayInTheirPools) {
  mxDataSet ds;
  WithColumns(ds, {{{TREEVIEWPATH, "A\\B"}, {UNUSED3, "three"}, {UNUSED13, "thirteen"}}});
  AttributePools all;
  bool qOK = false;
  ds.GetByteStoreArray(all, qOK);
  ASSERT_TRUE(all(TREEVIEWPATH));
  EXPECT_EQ(all(TREEVIEWPATH)->GetString(1), "A\\B");
  EXPECT_EQ(all(UNUSED3)->GetString(1), "three");
  EXPECT_EQ(all(UNUSED13)->GetString(1), "thirteen");
  EXPECT_EQ(Attr(ds, 1, UNUSED3), "");
}

TEST(DataSetWells, MembersOfClassWellBecomeTheWells) {
  mxDataSet ds;
  Array2<float> a = Numbered(1, 5);
  bool qOK = false;
  ds.bInitialiseFrom2d(a,
                       Headers({{{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "W-X"}},
                                {{ATT_CLASS, "WELL"}, {ATT_MEMBER, "P2"}},
                                {{ATT_CLASS, "WELL"}, {ATT_MEMBER, "P1"}},
                                {{ATT_CLASS, "GROUP"}, {ATT_MEMBER, "G1"}},
                                {{ATT_CLASS, "WELL"}, {ATT_MEMBER, "P2"}}}),
                       qOK);
  ASSERT_TRUE(qOK);
  // "WELL" is looked for before "WELLS".
  ASSERT_EQ(ds.get_NumWells(), 2);
  EXPECT_EQ(ds.getMemberName(1), "P2");
  EXPECT_EQ(ds.getMemberName(2), "P1");
  EXPECT_EQ(ds.getMemberName(3), "");
}

TEST(DataSetWells, ClassWellsWhenThereIsNoClassWell) {
  mxDataSet ds;
  Array2<float> a = Numbered(1, 2);
  bool qOK = false;
  ds.bInitialiseFrom2d(a, Headers({{{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "A"}}, {{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "B"}}}),
                       qOK);
  ASSERT_EQ(ds.get_NumWells(), 2);
  EXPECT_EQ(ds.getMemberName(2), "B");
}

TEST(DataSetWells, NoWellClassMeansNoWellNames) {
  mxDataSet ds;
  Array2<float> a = Numbered(1, 2);
  bool qOK = false;
  ds.bInitialiseFrom2d(a, Headers({{{ATT_CLASS, "GROUPS"}, {ATT_MEMBER, "G"}}, {{ATT_CLASS, "well"}, {ATT_MEMBER, "w"}}}),
                       qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(ds.get_NumWells(), 0);
  EXPECT_EQ(ds.getMemberName(1), "");
}

TEST(DataSetWells, ClassIndexOfTheDataSet) {
  mxDataSet ds;
  Array2<float> a = Numbered(1, 3);
  bool qOK = false;
  ds.bInitialiseFrom2d(a,
                       Headers({{{ATT_CLASS, "WELL"}, {ATT_MEMBER, "P1"}},
                                {{ATT_MEMBER, "NOCLASS"}},
                                {{ATT_CLASS, "WELL"}, {ATT_MEMBER, "P2"}}}),
                       qOK);
  Array<CLASSDATA> cd;
  Array<int32_t> list;
  int32_t nClasses = 0, nList = 0;
  ds.GetClassIndex(cd, nClasses, list, nList);
  EXPECT_EQ(nClasses, 1);
  EXPECT_EQ(nList, 2);
  EXPECT_EQ(cd(1).nCount, 2);
}

TEST(DataSetWells, InitialiseByteStoreSkipsTheWellListForUTCHEM) {
  mxDataSet src;
  Array2<float> a = Numbered(1, 1);
  bool qOK = false;
  src.bInitialiseFrom2d(a, Headers({{{ATT_CLASS, "WELL"}, {ATT_MEMBER, "P1"}}}), qOK);
  AttributePools pools;
  src.GetByteStoreArray(pools, qOK);
  Array2<uint8_t> bPointers(1, 24, 1, 1);
  VECTORDATA v;
  v.iClass = 1;
  v.iMember = 1;
  std::memcpy(&bPointers(1, 1), &v, 24);

  mxDataSet plain;
  Array2<float> b = Numbered(1, 1);
  plain.InitialiseFromByteStore(b, pools, bPointers, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(plain.get_NumWells(), 1);

  mxDataSet utchem;
  utchem.let_Simulator("utchem");
  Array2<float> c = Numbered(1, 1);
  utchem.InitialiseFromByteStore(c, pools, bPointers, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(utchem.get_NumWells(), 0);
  EXPECT_EQ(Attr(utchem, 1, ATT_MEMBER), "P1");
}
