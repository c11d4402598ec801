#include "vndata/foundation/vocabulary.h"

#include <gtest/gtest.h>

#include "vndata/platform/module_state.h"

using namespace vndata;

TEST(Vocabulary, AttributeKeywordsByIdAndEmptyOutsideRange) {
  EXPECT_EQ(AttributeKeyword(2), "UNITS");
  EXPECT_EQ(AttributeKeyword(4), "ORIGIN");
  EXPECT_EQ(AttributeKeyword(9), "MEMBER");
  EXPECT_EQ(AttributeKeyword(14), "GRID");
  EXPECT_EQ(AttributeKeyword(0), "");
  EXPECT_EQ(AttributeKeyword(15), "");
}

TEST(Vocabulary, PositionTableMatchesPackedRecordLayout) {
  const int32_t expected[15][2] = {{0, 0},   {0, 0},    {41, 16},  {0, 0},    {1, 32},
                                   {33, 8},  {57, 16},  {113, 16}, {129, 16}, {73, 40},
                                   {145, 16}, {161, 16}, {177, 40}, {0, 0},    {217, 16}};
  Array2<int32_t> t;
  InitAttributes(t);
  for (int32_t id = 1; id <= 14; ++id) {
    EXPECT_EQ(t(1, id), expected[id][0]) << id;
    EXPECT_EQ(t(2, id), expected[id][1]) << id;
    int32_t pos = -1, width = -1;
    InitSingleAttPos(id, pos, width);
    EXPECT_EQ(pos, expected[id][0]);
    EXPECT_EQ(width, expected[id][1]);
  }
}

TEST(Vocabulary, PositionReaderGivesZeroOutsideIds) {
  int32_t pos = 5, width = 5;
  InitSingleAttPos(0, pos, width);
  EXPECT_EQ(pos, 0);
  EXPECT_EQ(width, 0);
  InitSingleAttPos(15, pos, width);
  EXPECT_EQ(pos, 0);
}

TEST(Vocabulary, PackedFieldsEndAtPosition232) {
  // The last field (GRID) ends at 232; 233 is the record's dimension.
  int32_t pos, width;
  InitSingleAttPos(GRID, pos, width);
  EXPECT_EQ(pos + width - 1, 232);
  EXPECT_EQ(kPackedRecordSize, 233);
}

TEST(Vocabulary, PackOrderIsFixed) {
  const std::array<int32_t, 11> order = {4, 6, 5, 11, 2, 9, 12, 7, 8, 14, 10};
  EXPECT_EQ(kPackOrder, order);
}

TEST(Vocabulary, PackedAttsHas42EntriesOfTriples) {
  Array<int32_t> t = PackedAttsTriples();
  EXPECT_EQ(t.LBound(), 1);
  EXPECT_EQ(t.UBound(), 42);
  EXPECT_EQ(t(1), 1);
  EXPECT_EQ(t(2), 0);
  EXPECT_EQ(t(3), 0);
  EXPECT_EQ(t(4), 2);
  EXPECT_EQ(t(5), 41);
  EXPECT_EQ(t(6), 16);
  EXPECT_EQ(t(40), 14);
  EXPECT_EQ(t(41), 217);
  EXPECT_EQ(t(42), 16);
}

TEST(Vocabulary, CurrentConstantListMarksTreePathAbsent) {
  Array<int32_t> c = CurrentAttConst();
  ASSERT_EQ(c.UBound(), 25);
  EXPECT_EQ(c(1), 233);
  int32_t pos, width;
  AttConstField(c, ACF_TREEPATH, pos, width);
  EXPECT_EQ(pos, 0);
  EXPECT_EQ(width, 72);
  AttConstField(c, ACF_MEMBER, pos, width);
  EXPECT_EQ(pos, 73);
  EXPECT_EQ(width, 40);
  AttConstField(c, ACF_GRID, pos, width);
  EXPECT_EQ(pos, 217);
}

TEST(Vocabulary, LegacyConstantList) {
  Array<int32_t> c = LegacyAttConst();
  const int32_t expected[25] = {273, 1, 32, 33, 8, 41, 16, 57, 16, 73, 16, 89, 16,
                                105, 16, 121, 16, 137, 16, 153, 32, 185, 72, 257, 16};
  for (int32_t i = 1; i <= 25; ++i) EXPECT_EQ(c(i), expected[i - 1]) << i;
  Module().AttConst.Erase();
  InitOldAttributeConstants();
  EXPECT_EQ(Module().AttConst(1), 273);
}

TEST(Vocabulary, InitSourceDataGivesInitialValues) {
  Array<Variant> v;
  InitSourceData(v);
  EXPECT_EQ(v.LBound(), 1);
  EXPECT_EQ(v.UBound(), 66);
  EXPECT_EQ(v(SD_ORIGIN).Type(), VarType::String);
  EXPECT_EQ(v(SD_UNITS).Type(), VarType::Integer);
  EXPECT_EQ(v(SD_NORESTART).Type(), VarType::Long);
  EXPECT_EQ(v(SD_NORESTART).ToLong(), -1);
  EXPECT_EQ(v(SD_UNIFIED).ToLong(), -1);
  EXPECT_EQ(v(SD_FORMATTED).ToLong(), 0);
  EXPECT_EQ(v(SD_DEFAULTX).ToInteger(), 1);
  EXPECT_EQ(v(SD_GROUPNAME).ToText(), "Data");
  EXPECT_EQ(v(SD_FILETYPE).ToLong(), 3);
  EXPECT_EQ(v(SD_ZONLY).Type(), VarType::Long);
  EXPECT_EQ(v(SD_ALLDATA).ToLong(), -1);
  EXPECT_EQ(v(SD_NULLVALUE).Type(), VarType::Long);
  EXPECT_EQ(v(SD_NULLVALUE).ToLong(), -999);
  EXPECT_EQ(v(SD_USENULLVAL).ToLong(), 1);
  EXPECT_TRUE(v(SD_OBSNAME).IsEmpty());
  EXPECT_EQ(v(SD_TIMEINDAYS).ToLong(), -999);
  EXPECT_EQ(v(SD_BRANCH).Type(), VarType::Integer);
  EXPECT_EQ(v(SD_BRANCH).ToInteger(), 1);
  EXPECT_EQ(v(SD_SLOT43).ToLong(), -1);
  for (int32_t s = 44; s <= 51; ++s) EXPECT_EQ(v(s).Type(), VarType::Integer) << s;
  EXPECT_EQ(v(SD_TEXTROWDATEFORMAT).Type(), VarType::String);
  EXPECT_TRUE(v(SD_PERFORATIONS).IsNull());
  EXPECT_TRUE(v(SD_UCASETVDISPLAYROOT).IsEmpty());
  EXPECT_EQ(v(SD_READPOSITION64_LOW).ToLong(), -1);
  EXPECT_EQ(v(SD_READPOSITION64_HIGH).ToLong(), -1);
  EXPECT_EQ(v(SD_REVENDPOINTSCALING).ToLong(), -1);
  EXPECT_EQ(v(SD_ALTENDPOINTSCALING).ToLong(), 0);
  EXPECT_TRUE(v(SD_IPHASE).IsEmpty());
  for (int32_t s = 64; s <= 66; ++s) EXPECT_TRUE(v(s).IsEmpty()) << s;
}

TEST(Vocabulary, DataSetAttributeIdsWithoutRowsAreUnknown) {
  EXPECT_FALSE(IsKnownDataSetAttribute(5));
  EXPECT_FALSE(IsKnownDataSetAttribute(58));
  EXPECT_FALSE(IsKnownDataSetAttribute(0));
  EXPECT_FALSE(IsKnownDataSetAttribute(28));
  EXPECT_FALSE(IsKnownDataSetAttribute(42));
  EXPECT_TRUE(IsKnownDataSetAttribute(4));
  EXPECT_TRUE(IsKnownDataSetAttribute(29));
  EXPECT_TRUE(IsKnownDataSetAttribute(37));
  EXPECT_TRUE(IsKnownDataSetAttribute(57));
  EXPECT_EQ(kUnknownAttribute, "Unknown");
}

TEST(Vocabulary, Scalars) {
  EXPECT_EQ(kDefaultNullValue, -999.0);
  EXPECT_EQ(kDefaultTimeInDays, -999.0f);
  EXPECT_EQ(kDateFormat, "dd/mm/yyyy");
  EXPECT_EQ(kDefaultGroup, "Data");
  EXPECT_EQ(kDefaultFileType, 3);
  EXPECT_EQ(kTimeVectorName, "TIME");
  EXPECT_EQ(kPathSeparator, "\\");
}

TEST(Vocabulary, WordListsCompareExactly) {
  EXPECT_TRUE(IsWord(WordGroup::SimulatorsAndSources, "UTCHEM"));
  EXPECT_TRUE(IsWord(WordGroup::SimulatorsAndSources, "Nexus"));
  EXPECT_FALSE(IsWord(WordGroup::SimulatorsAndSources, "utchem"));
  EXPECT_TRUE(IsWord(WordGroup::DataClassWords, "RFT SIMULATED"));
  EXPECT_EQ(Words(WordGroup::StoreSectionWords).UBound(), 6);
  EXPECT_EQ(Words(WordGroup::HeaderArrays)(1), "INTEHEAD");
  EXPECT_EQ(Words(WordGroup::DefaultMarks)(3), "-32768");
}
