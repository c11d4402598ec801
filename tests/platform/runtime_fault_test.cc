#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/internal/run_guarded.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

#include "vndata/platform/arrays.h"
#include "vndata/platform/message_log.h"

using namespace vndata;

namespace {
class GuardTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }
  void TearDown() override { MessageLog::Shared().Clear(); }
  static const std::vector<std::string>& Lines() { return MessageLog::Shared().Lines(); }
};
}  // namespace

TEST(FaultTexts, PlatformNumbersHaveThePlatformTexts) {
  EXPECT_EQ(FaultDescription(5), "Invalid procedure call or argument");
  EXPECT_EQ(FaultDescription(6), "Overflow");
  EXPECT_EQ(FaultDescription(7), "Out of memory");
  EXPECT_EQ(FaultDescription(9), "Subscript out of range");
  EXPECT_EQ(FaultDescription(11), "Division by zero");
  EXPECT_EQ(FaultDescription(13), "Type mismatch");
  EXPECT_EQ(FaultDescription(53), "File not found");
  EXPECT_EQ(FaultDescription(91), "Object variable or With block variable not set");
  EXPECT_EQ(FaultDescription(94), "Invalid use of Null");
}

TEST(FaultTexts, FaultCarriesNumberAndText) {
  RuntimeFault f(9);
  EXPECT_EQ(f.Number(), 9);
  EXPECT_EQ(f.Description(), "Subscript out of range");
  EXPECT_STREQ(f.what(), "Subscript out of range");
  RuntimeFault g(53, "File not found: x.dat");
  EXPECT_EQ(g.Number(), 53);
  EXPECT_EQ(g.Description(), "File not found: x.dat");
}

TEST(FaultTexts, RaiseFaultThrowsTheNumberedFault) {
  try {
    RaiseFault(11);
    FAIL() << "no fault";
  } catch (const RuntimeFault& f) {
    EXPECT_EQ(f.Number(), 11);
    EXPECT_EQ(f.Description(), "Division by zero");
  }
}

TEST(TraceLine, BuiltFromTextNumberAndTag) {
  EXPECT_EQ(ErrorTraceLine("mxDataSet  (SetAttributes)", RuntimeFault(9)),
            "Error:Subscript out of range (No.9) In [mxDataSet  (SetAttributes)] ");
  EXPECT_EQ(ErrorTraceLine("mxDataStore (Code) (Search)", RuntimeFault(13)),
            "Error:Type mismatch (No.13) In [mxDataStore (Code) (Search)] ");
}

TEST(TraceLine, TagsOfBothShapesAppearInTheLine) {
  const std::string a = ErrorTraceLine(TagOf("mxDataSet", "SetAttributes", "  "), RuntimeFault(9));
  EXPECT_EQ(a, "Error:Subscript out of range (No.9) In [mxDataSet  (SetAttributes)] ");
  EXPECT_NE(a.find(") In [mxDataSet  (SetAttributes)] "), std::string::npos);
  const std::string b = ErrorTraceLine(TagOf("mxDataStore (Code)", "Search"), RuntimeFault(6));
  EXPECT_NE(b.find(") In [mxDataStore (Code) (Search)] "), std::string::npos);
  EXPECT_EQ(TagOf("mxDataStore (Code)", "Search"), "mxDataStore (Code) (Search)");
}

TEST_F(GuardTest, LogFaultWritesOneLineWithTrueFlag) {
  LogFault("mxDataSet  (SetAttributes)", RuntimeFault(9));
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Lines()[0], "Error:Subscript out of range (No.9) In [mxDataSet  (SetAttributes)] ");
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
}

TEST_F(GuardTest, CompletedBodyReturnsTrueAndLogsNothing) {
  int32_t x = 0;
  EXPECT_TRUE(RunGuarded("mxDataSet  (SetAttributes)", [&] { x = 5; }));
  EXPECT_EQ(x, 5);
  EXPECT_TRUE(Lines().empty());
}

TEST_F(GuardTest, FaultLogsExactlyOneLineWithTrueFlag) {
  EXPECT_FALSE(RunGuarded("mxDataSet  (SetAttributes)", [] { RaiseFault(kFaultSubscript); }));
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Lines()[0], "Error:Subscript out of range (No.9) In [mxDataSet  (SetAttributes)] ");
  ASSERT_EQ(MessageLog::Shared().Flags().size(), 1u);
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
}

TEST_F(GuardTest, OutputsKeepWhatTheyHeldAtTheFault) {
  int32_t x = 0;
  bool qOK = true;
  RunGuarded("mxDataStore (Code) (Search)", [&] {
    qOK = false;
    x = 1;
    RaiseFault(kFaultOverflow);
    x = 2;
    qOK = true;
  });
  EXPECT_EQ(x, 1);
  EXPECT_FALSE(qOK);
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Lines()[0], "Error:Overflow (No.6) In [mxDataStore (Code) (Search)] ");
}

TEST_F(GuardTest, BadAllocCountsAsOutOfMemory7) {
  EXPECT_FALSE(RunGuarded("mxDataSet  (DimensionBuffer)", [] { throw std::bad_alloc(); }));
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Lines()[0], "Error:Out of memory (No.7) In [mxDataSet  (DimensionBuffer)] ");
}

TEST_F(GuardTest, OtherExceptionsCountAsInvalidCall5) {
  EXPECT_FALSE(RunGuarded("T (A)", [] { throw std::runtime_error("x"); }));
  EXPECT_FALSE(RunGuarded("T (B)", [] { throw 42; }));
  ASSERT_EQ(Lines().size(), 2u);
  EXPECT_EQ(Lines()[0], "Error:Invalid procedure call or argument (No.5) In [T (A)] ");
  EXPECT_EQ(Lines()[1], "Error:Invalid procedure call or argument (No.5) In [T (B)] ");
}

TEST_F(GuardTest, ArraySubscriptFaultReachesTheTrace) {
  Array<int32_t> a(1, 3);
  EXPECT_FALSE(RunGuarded("mxDataSet  (SetAttributes)", [&] { a(4) = 1; }));
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Lines()[0], "Error:Subscript out of range (No.9) In [mxDataSet  (SetAttributes)] ");
}

TEST_F(GuardTest, InnerGuardEndsOnlyItsOwnOperation) {
  bool outerDone = false;
  EXPECT_TRUE(RunGuarded("Outer (Op)", [&] {
    EXPECT_FALSE(RunGuarded("Inner (Op)", [] { RaiseFault(kFaultDivisionByZero); }));
    outerDone = true;
  }));
  EXPECT_TRUE(outerDone);
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Lines()[0], "Error:Division by zero (No.11) In [Inner (Op)] ");
}

TEST_F(GuardTest, TagGivenAsStringIsUsedAsIs) {
  const std::string tag = "mxDQStore (ReadDQ)";
  RunGuarded(tag, [] { RaiseFault(kFaultFileNotFound); });
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Lines()[0], "Error:File not found (No.53) In [mxDQStore (ReadDQ)] ");
}

TEST(TraceLine, CompactWordingIsTheDefault) {
  EXPECT_EQ(ErrorTraceLine("mxDataSet  (SetAttributes)", RuntimeFault(9), kCompactWording),
            ErrorTraceLine("mxDataSet  (SetAttributes)", RuntimeFault(9)));
}

TEST(TraceLine, SpacedWordingPutsBlanksAfterErrorAndNo) {
  EXPECT_EQ(ErrorTraceLine("mxDataStore (Code) (AddDataSet)", RuntimeFault(91), kSpacedWording),
            "Error: Object variable or With block variable not set (No. 91) In [mxDataStore (Code) (AddDataSet)] ");
}

TEST_F(GuardTest, GuardWritesItsModulesWording) {
  EXPECT_FALSE(RunGuarded("mxDataStore (Code) (AddDataSet)", kSpacedWording, [] { RaiseFault(kFaultSubscript); }));
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(Lines()[0], "Error: Subscript out of range (No. 9) In [mxDataStore (Code) (AddDataSet)] ");
  LogFault("mxDataStore (Code) (AddDataSet)", RuntimeFault(6), kSpacedWording);
  ASSERT_EQ(Lines().size(), 2u);
  EXPECT_EQ(Lines()[1], "Error: Overflow (No. 6) In [mxDataStore (Code) (AddDataSet)] ");
}
