#include "vndata/platform/string_tools.h"

#include <gtest/gtest.h>

#include <string>

using namespace vndata;

TEST(StringCompare, CaseSensitiveCompareIsExact) {
  EXPECT_TRUE(StringTools::Equal("WOPR", "WOPR", true));
  EXPECT_FALSE(StringTools::Equal("WOPR", "wopr", true));
  EXPECT_FALSE(StringTools::Equal("WOPR", "WOPR ", true));
}

TEST(StringCompare, WithoutCaseSensitivityLettersMatchEitherCase) {
  EXPECT_TRUE(StringTools::Equal("WOPR", "wopr", false));
  EXPECT_TRUE(StringTools::Equal("Root", "ROOT", false));
  EXPECT_FALSE(StringTools::Equal("WOPR", "WOPT", false));
  EXPECT_FALSE(StringTools::Equal("WOPR", "WOP", false));
  EXPECT_TRUE(StringTools::Equal("", "", false));
  // Only letters fold: '@' and '`' are not the case pair of any letter.
  EXPECT_FALSE(StringTools::Equal("@", "`", false));
}

TEST(StringCompare, ThreeWayCompareOrdersByByteThenLength) {
  EXPECT_EQ(StringTools::Compare("abc", "abc", true), 0);
  EXPECT_LT(StringTools::Compare("abc", "abd", true), 0);
  EXPECT_GT(StringTools::Compare("abd", "abc", true), 0);
  EXPECT_LT(StringTools::Compare("ab", "abc", true), 0);
  EXPECT_GT(StringTools::Compare("abc", "ab", true), 0);
  EXPECT_LT(StringTools::Compare("ABC", "abc", true), 0);
  EXPECT_EQ(StringTools::Compare("ABC", "abc", false), 0);
  EXPECT_LT(StringTools::Compare("abc", "ABD", false), 0);
}

TEST(StringCase, UpperAndLowerChangeLettersOnly) {
  EXPECT_EQ(StringTools::Upper("Well-1 p2"), "WELL-1 P2");
  EXPECT_EQ(StringTools::Lower("Well-1 P2"), "well-1 p2");
}

TEST(StringTrim, BlanksGoFromTheChosenEnds) {
  EXPECT_EQ(StringTools::Trim("  P1  "), "P1");
  EXPECT_EQ(StringTools::TrimRight("  P1  "), "  P1");
  EXPECT_EQ(StringTools::TrimLeft("  P1  "), "P1  ");
  EXPECT_EQ(StringTools::Trim("    "), "");
  EXPECT_EQ(StringTools::Trim("A B"), "A B");
}

TEST(StringSplit, SplitsAtEveryDelimiterIntoOneBasedTokens) {
  Array<std::string> t;
  int32_t n = -1;
  EXPECT_TRUE(StringTools::Split("WELL,WELLS", ",", t, n));
  EXPECT_EQ(n, 2);
  EXPECT_EQ(t.LBound(), 1);
  EXPECT_EQ(t.UBound(), 2);
  EXPECT_EQ(t(1), "WELL");
  EXPECT_EQ(t(2), "WELLS");
}

TEST(StringSplit, EmptyTokensAreKept) {
  Array<std::string> t;
  int32_t n = 0;
  EXPECT_TRUE(StringTools::Split("a,,b,", ",", t, n));
  EXPECT_EQ(n, 4);
  EXPECT_EQ(t(1), "a");
  EXPECT_EQ(t(2), "");
  EXPECT_EQ(t(3), "b");
  EXPECT_EQ(t(4), "");
}

TEST(StringSplit, TextWithoutDelimiterIsOneToken) {
  Array<std::string> t;
  int32_t n = 0;
  EXPECT_TRUE(StringTools::Split("FIELD", ",", t, n));
  EXPECT_EQ(n, 1);
  EXPECT_EQ(t(1), "FIELD");
}

TEST(StringSplit, EmptyTextGivesNoTokens) {
  Array<std::string> t{"stale"};
  int32_t n = 5;
  EXPECT_TRUE(StringTools::Split("", ",", t, n));
  EXPECT_EQ(n, 0);
  EXPECT_FALSE(t.IsAllocated());
}

TEST(StringSplit, EmptyDelimiterFails) {
  Array<std::string> t;
  int32_t n = 5;
  EXPECT_FALSE(StringTools::Split("a,b", "", t, n));
  EXPECT_EQ(n, 0);
}

TEST(StringSplit, DelimiterMayBeLongerThanOneCharacter) {
  Array<std::string> t;
  int32_t n = 0;
  EXPECT_TRUE(StringTools::Split("P1::P2::P3", "::", t, n));
  EXPECT_EQ(n, 3);
  EXPECT_EQ(t(3), "P3");
}

TEST(StringSplit, SplitInTwoUsesTheFirstDelimiter) {
  std::string before, after;
  EXPECT_TRUE(StringTools::SplitInTwo("ROOT\\WELLS\\P1", "\\", before, after));
  EXPECT_EQ(before, "ROOT");
  EXPECT_EQ(after, "WELLS\\P1");
  EXPECT_TRUE(StringTools::SplitInTwo("P1:", ":", before, after));
  EXPECT_EQ(before, "P1");
  EXPECT_EQ(after, "");
}

TEST(StringSplit, SplitInTwoWithoutDelimiterGivesWholeTextBefore) {
  std::string before = "x", after = "y";
  EXPECT_FALSE(StringTools::SplitInTwo("FIELD", "\\", before, after));
  EXPECT_EQ(before, "FIELD");
  EXPECT_EQ(after, "");
}

TEST(StringJoin, JoinsWithTheDelimiterBetweenElements) {
  Array<std::string> names{"P1", "P2", "I1"};
  EXPECT_EQ(StringTools::Join(names, ";"), "P1;P2;I1");
  EXPECT_EQ(StringTools::Join(names, ";", 2), "P1;P2");
  EXPECT_EQ(StringTools::Join(names, ";", 0), "");
  EXPECT_EQ(StringTools::Join(names, ";", 10), "P1;P2;I1");
  EXPECT_EQ(StringTools::Join(Array<std::string>{"P1"}, ";"), "P1");
  EXPECT_EQ(StringTools::Join(Array<std::string>(), ";"), "");
}

TEST(StringJoin, JoinStartsAtTheArraysOwnLowerBound) {
  Array<std::string> a(0, 2);
  a(0) = "A";
  a(1) = "B";
  a(2) = "C";
  EXPECT_EQ(StringTools::Join(a, ","), "A,B,C");
  EXPECT_EQ(StringTools::Join(a, ",", 2), "A,B");
}

TEST(StringJoin, KeyJoinMakesOneBackslashPath) {
  EXPECT_EQ(StringTools::KeyJoin("ROOT", "WELLS\\P1\\WOPR", false), "ROOT\\WELLS\\P1\\WOPR");
  EXPECT_EQ(StringTools::KeyJoin("", "WELLS\\P1", false), "WELLS\\P1");
  EXPECT_EQ(StringTools::KeyJoin("Root", "", false), "Root");
  EXPECT_EQ(StringTools::KeyJoin("Root", "Wells", true), "ROOT\\WELLS");
  EXPECT_EQ(StringTools::KeyJoin("", "", false), "");
}
