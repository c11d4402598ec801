#include <gtest/gtest.h>

#include "tests/dataset/dataset_test_util.h"

namespace vndata {
namespace {

using testutil::Attrs;
using testutil::Headers;
using testutil::LogCapture;
using testutil::Numbered;

// A data set of two rows whose columns have the given attributes.
void Load(mxDataSet& ds, const std::vector<Attrs>& cols) {
  Array2<float> a = Numbered(2, static_cast<int32_t>(cols.size()));
  bool qOK = false;
  ds.bInitialiseFrom2d(a, Headers(cols), qOK);
  ASSERT_TRUE(qOK);
}

std::string PathOf(mxDataSet& ds, int32_t col) {
  std::string z;
  int32_t n = 0;
  bool qOK = false;
  ds.BuildTreeViewPath(col, z, n, qOK);
  EXPECT_EQ(n, static_cast<int32_t>(z.size()));
  return z;
}

const Attrs kAllFilled = {{ATT_CLASS, "CLS"},    {ATT_SUBCLASS1, "S1"}, {ATT_SUBCLASS2, "S2"},
                          {ATT_MEMBER, "P1"},    {ATT_INDEX, "7"},      {ATT_VARIABLE, "WOPR"},
                          {ATT_TYPE, "Summary"}, {GRID, "LGR1"}};

Attrs WithType(const std::string& type) {
  Attrs a = kAllFilled;
  a[ATT_TYPE] = type;
  return a;
}

TEST(TreePaths, AllLevelsJoinedInOrder) {
  mxDataSet ds;
  Load(ds, {kAllFilled});
  EXPECT_EQ(PathOf(ds, 1), "CLS\\S1\\S2\\P1\\7\\WOPR");
}

TEST(TreePaths, SolutionColumnWithAllAttributesHasClassSubclass2AndVariableOnly) {
  mxDataSet ds;
  Load(ds, {WithType("SOLUTION")});
  EXPECT_EQ(PathOf(ds, 1), "CLS\\S2\\WOPR");
  mxDataSet seg;
  Load(seg, {WithType("SEGBRAN")});
  EXPECT_EQ(PathOf(seg, 1), "CLS\\S2\\WOPR");
}

TEST(TreePaths, SolutionColumnWithoutSubclass1HasThreeTokensWhateverItsMember) {
  Attrs a = WithType("SOLUTION");
  a.erase(ATT_SUBCLASS1);
  mxDataSet ds;
  Load(ds, {a});
  Array<std::string> tokens;
  Array<int32_t> lengths;
  int32_t total = 0, n = 0;
  bool qOK = false;
  ds.BuildTreeViewPathArray(1, tokens, lengths, total, n, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(n, 3);
  EXPECT_EQ(tokens(1), "CLS");
  EXPECT_EQ(tokens(2), "S2");
  EXPECT_EQ(tokens(3), "WOPR");
  EXPECT_EQ(total, 3 + 2 + 4 + 2);
}

TEST(TreePaths, FamilyWordsCompareWithCase) {
  mxDataSet ds;
  Load(ds, {WithType("solution")});
  EXPECT_EQ(PathOf(ds, 1), "CLS\\S1\\S2\\P1\\7\\WOPR");
  mxDataSet rft;
  Load(rft, {WithType("RFT")});
  EXPECT_EQ(PathOf(rft, 1), "CLS\\S1\\S2\\WOPR");
}

TEST(TreePaths, EmptyAttributesGiveNoTokenAndNoDoubledSeparator) {
  mxDataSet ds;
  Load(ds, {{{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "P1"}, {ATT_VARIABLE, "WOPR"}}});
  EXPECT_EQ(PathOf(ds, 1), "WELLS\\P1\\WOPR");
}

TEST(TreePaths, VariableOnlyPathHasNoSeparatorAndLastLevelIsTheRootLeaf) {
  mxDataSet ds;
  ds.let_DataRootUnique("ROOT\\CASE");
  Load(ds, {{{ATT_VARIABLE, "TIME"}}});
  std::string z;
  EXPECT_TRUE(ds.MakeTreeViewPath(1, z));
  EXPECT_EQ(z, "TIME");
  EXPECT_EQ(ds.LenTreeViewPath(1), 4);
  EXPECT_EQ(ds.LenTreeViewLastLevel(1), 0);
  EXPECT_EQ(ds.TreeViewLastLevel(1), "CASE");
}

TEST(TreePaths, LastLevelIsTheTokenAboveTheLeaf) {
  mxDataSet ds;
  Load(ds, {{{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "P1"}, {ATT_VARIABLE, "WOPR"}}});
  EXPECT_EQ(ds.TreeViewLastLevel(1), "P1");
}

TEST(TreePaths, LastLevelKeepsSubclass1ForIcdBranches) {
  // The path drops SUBCLASS1 for "ICDBRAN"; the last-level reader does not.
  mxDataSet ds;
  Load(ds, {{{ATT_TYPE, "ICDBRAN"}, {ATT_CLASS, "C"}, {ATT_SUBCLASS1, "B1"}, {ATT_VARIABLE, "V"}}});
  EXPECT_EQ(PathOf(ds, 1), "C\\V");
  EXPECT_EQ(ds.TreeViewLastLevel(1), "B1");
  mxDataSet pb;
  Load(pb, {{{ATT_TYPE, "PLTBRAN"}, {ATT_CLASS, "C"}, {ATT_SUBCLASS1, "B1"}, {ATT_VARIABLE, "V"}}});
  EXPECT_EQ(pb.TreeViewLastLevel(1), "C");
}

TEST(TreePaths, InvalidColumnGivesEmptyTextAndFalse) {
  LogCapture log;
  mxDataSet ds;
  Load(ds, {kAllFilled});
  std::string z = "x";
  int32_t n = 5;
  bool qOK = true;
  ds.BuildTreeViewPath(9, z, n, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(z, "");
  int32_t iType = 0;
  ds.GetTreeViewKey(0, z, iType, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(ds.TreeViewLastLevel(9), "");
  EXPECT_TRUE(log.Lines().empty());
}

TEST(TreePaths, SetTreeViewPathKeepsOnlyLengths) {
  mxDataSet ds;
  Load(ds, {kAllFilled});
  ds.SetTreeViewPath(1, "A\\BC\\D");
  EXPECT_EQ(ds.LenTreeViewPath(1), 6);
  EXPECT_EQ(ds.LenTreeViewLastLevel(1), 4);
  ds.SetTreeViewPath(1, "");
  EXPECT_EQ(ds.LenTreeViewPath(1), 6);
  EXPECT_EQ(ds.LenTreeViewLastLevel(1), 0);
  ds.SetTreeViewPath(1, "\\LEAF");
  EXPECT_EQ(ds.LenTreeViewPath(1), 5);
  EXPECT_EQ(ds.LenTreeViewLastLevel(1), 0);
}

TEST(TreePaths, LengthsOfAnInvalidColumnAreZero) {
  mxDataSet ds;
  Load(ds, {kAllFilled});
  EXPECT_EQ(ds.LenTreeViewPath(0), 0);
  EXPECT_EQ(ds.LenTreeViewLastLevel(2), 0);
  bool qOK = false;
  ds.SetTreeViewPathLengths(5, 10, 3, qOK);
  EXPECT_TRUE(qOK);
  ds.SetTreeViewPathLengths(1, 10, 3, qOK);
  EXPECT_EQ(ds.LenTreeViewPath(1), 10);
  EXPECT_EQ(ds.LenTreeViewLastLevel(1), 3);
}

TEST(TreePaths, TreeViewPathPrefixesTheUniqueRootOnceLengthsAreKnown) {
  mxDataSet ds;
  ds.let_DataRootUnique("ROOT\\CASE");
  Load(ds, {{{ATT_CLASS, "WELLS"}, {ATT_VARIABLE, "WOPR"}}});
  EXPECT_EQ(ds.TreeViewPath(1), "");
  std::string z;
  ds.MakeTreeViewPath(1, z);
  EXPECT_EQ(ds.TreeViewPath(1), "ROOT\\CASE\\WELLS\\WOPR");
}

TEST(TreePaths, KeyDataSectionKeepsItsBlanksAndIsToldByItsLength) {
  mxDataSet ds;
  Load(ds, {{{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "P1"}, {ATT_VARIABLE, "WOPR"}}});
  std::string key, section;
  int32_t lenKey = 0, lenSection = 0, n = 0, iType = -1;
  Array<std::string> tokens;
  Array<int32_t> lengths;
  bool qOK = false;
  ds.GetTreeViewKeyData(1, key, lenKey, section, lenSection, tokens, lengths, n, iType, qOK, true);
  ASSERT_TRUE(qOK);
  EXPECT_EQ(key, "WELLS\\P1\\WOPR");
  EXPECT_EQ(lenKey, 13);
  EXPECT_EQ(n, 3);
  EXPECT_EQ(lenSection, 8);
  EXPECT_EQ(section, "WELLS\\P1     ");
  EXPECT_EQ(section.substr(0, static_cast<std::size_t>(lenSection)), "WELLS\\P1");
  EXPECT_EQ(iType, 0);
}

TEST(TreePaths, KeyDataOfTwoTokensHasTheFirstAsSection) {
  mxDataSet ds;
  Load(ds, {{{ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "FOPR"}}});
  std::string key, section;
  Array<std::string> tokens;
  Array<int32_t> lengths;
  int32_t lenSection = -1, n = 0;
  bool qOK = false;
  ds.BuildTreeViewData(1, key, section, lenSection, tokens, lengths, n, qOK, true);
  EXPECT_EQ(section, "FIELD");
  EXPECT_EQ(lenSection, 5);
}

TEST(TreePaths, KeyDataWithoutKeysGivesLengthsOnly) {
  mxDataSet ds;
  Load(ds, {{{ATT_CLASS, "WELLS"}, {ATT_MEMBER, "P1"}, {ATT_VARIABLE, "WOPR"}},
            {{ATT_VARIABLE, "TIME"}}});
  std::string key = "untouched", section = "untouched";
  Array<std::string> tokens;
  Array<int32_t> lengths;
  int32_t lenSection = -1, n = 0;
  bool qOK = false;
  ds.BuildTreeViewData(1, key, section, lenSection, tokens, lengths, n, qOK, false);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(key, "untouched");
  EXPECT_EQ(lenSection, 8);
  ds.BuildTreeViewData(2, key, section, lenSection, tokens, lengths, n, qOK, false);
  EXPECT_EQ(lenSection, 0);
}

// Tokens of a key as the compare takes them.
struct Key {
  explicit Key(std::initializer_list<const char*> parts) {
    tokens.ReDim(1, static_cast<int32_t>(parts.size()));
    lengths.ReDim(1, static_cast<int32_t>(parts.size()));
    int32_t i = 1;
    for (const char* p : parts) {
      tokens(i) = p;
      lengths(i) = static_cast<int32_t>(std::string(p).size());
      ++i;
    }
    n = static_cast<int32_t>(parts.size());
  }
  Array<std::string> tokens;
  Array<int32_t> lengths;
  int32_t n;
};

bool Matches(mxDataSet& ds, const Key& k, int32_t col = 1) {
  bool q = false;
  ds.CompareTreeViewPathArray(k.tokens, k.lengths, k.n, col, true, q);
  return q;
}

TEST(TreePaths, CompareAcceptsTheBuiltKeyIgnoringCase) {
  mxDataSet ds;
  Load(ds, {kAllFilled});
  EXPECT_TRUE(Matches(ds, Key({"CLS", "S1", "S2", "P1", "7", "WOPR"})));
  EXPECT_TRUE(Matches(ds, Key({"cls", "s1", "s2", "p1", "7", "wopr"})));
}

TEST(TreePaths, CompareOfTheLeafAloneNeedsOnlyTheVariable) {
  mxDataSet ds;
  Load(ds, {kAllFilled});
  EXPECT_TRUE(Matches(ds, Key({"WOPR"})));
  EXPECT_FALSE(Matches(ds, Key({"WWCT"})));
}

TEST(TreePaths, RightLeafWrongMemberFailsOnlyAtTheEnd) {
  mxDataSet ds;
  Load(ds, {kAllFilled});
  EXPECT_FALSE(Matches(ds, Key({"CLS", "S1", "S2", "P2", "7", "WOPR"})));
}

TEST(TreePaths, CompareAcceptsAKeyThatEndsItsLevelsWithTheGrid) {
  mxDataSet ds;
  Load(ds, {{{ATT_CLASS, "WELLS"}, {ATT_VARIABLE, "WOPR"}, {GRID, "LGR1"}}});
  EXPECT_TRUE(Matches(ds, Key({"WELLS", "WOPR"})));
  EXPECT_TRUE(Matches(ds, Key({"WELLS", "LGR1", "WOPR"})));
}

TEST(TreePaths, CompareTriesSubclass1WhateverTheType) {
  mxDataSet ds;
  Load(ds, {{{ATT_TYPE, "SEGBRAN"}, {ATT_CLASS, "C"}, {ATT_SUBCLASS1, "B1"}, {ATT_VARIABLE, "V"}}});
  EXPECT_TRUE(Matches(ds, Key({"C", "B1", "V"})));
  EXPECT_TRUE(Matches(ds, Key({"C", "V"})));
}

TEST(TreePaths, CompareWithNoTokensIsFalse) {
  mxDataSet ds;
  Load(ds, {kAllFilled});
  Key k({"WOPR"});
  bool q = true;
  ds.CompareTreeViewPathArray(k.tokens, k.lengths, 0, 1, true, q);
  EXPECT_FALSE(q);
}

TEST(TreePaths, KeyPathAttributeComparesSizeThenTextIgnoringCase) {
  mxDataSet ds;
  Load(ds, {kAllFilled});
  EXPECT_TRUE(ds.CompareKeyPathAttributeSize(ATT_MEMBER, 1, 2, true));
  EXPECT_FALSE(ds.CompareKeyPathAttributeSize(ATT_MEMBER, 1, 3, true));
  EXPECT_FALSE(ds.CompareKeyPathAttributeSize(ATT_VERBOSE, 1, 0, true));
  EXPECT_TRUE(ds.CompareKeyPathAttribute(ATT_MEMBER, 1, 2, "p1", true));
  EXPECT_FALSE(ds.CompareKeyPathAttribute(ATT_MEMBER, 1, 3, "p1", true));
}

TEST(TreePaths, TokensAloneWithTheCreationType) {
  mxDataSet ds;
  Load(ds, {{{ATT_CLASS, "FIELD"}, {ATT_VARIABLE, "FOPR"}}});
  ds.SetCreationType(1, 4);
  Array<std::string> tv;
  int32_t n = 0, iType = 0;
  ds.GetTreeViewKeyArray(1, iType, tv, n);
  EXPECT_EQ(n, 2);
  EXPECT_EQ(tv(2), "FOPR");
  EXPECT_EQ(iType, 4);
}

}  // namespace
}  // namespace vndata
