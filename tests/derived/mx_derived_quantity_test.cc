#include "vndata/derived/mx_derived_quantity.h"

#include <gtest/gtest.h>

#include "vndata/platform/message_log.h"

using namespace vndata;

namespace {

class DerivedQuantityTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }
  void TearDown() override { MessageLog::Shared().Clear(); }

  static void AddTwo(mxDerivedQuantity& dq) {
    dq.AddArguments("A", "a.smspec", "grpA", "FOPR", false, "CaseA", 3, "FIELD");
    dq.AddArguments("B", "b.smspec", "grpB", "WELLS\\OPR", true, "CaseB", 7, "WELLS");
  }
};

TEST_F(DerivedQuantityTest, NewRecordHasItsInitialValues) {
  mxDerivedQuantity dq;
  EXPECT_EQ(dq.get_NumberOfArguments(), 0);
  EXPECT_EQ(dq.get_TargetDataSet(), -1);
  EXPECT_EQ(dq.get_ResultSolIndex(), -1);
  EXPECT_EQ(dq.get_AmendedDataSetUsed(), 0);
  EXPECT_EQ(dq.get_Expression(), "");
  EXPECT_EQ(dq.get_ResultColumnHeader(), "");
  EXPECT_EQ(dq.get_TargetDataDesc(), "");
  EXPECT_FALSE(dq.get_StandardFunction());
  EXPECT_FALSE(dq.get_qApplyToAll());
  EXPECT_FALSE(dq.get_qApplyToList());
  EXPECT_FALSE(dq.get_qApplyToAllGrids());
  EXPECT_FALSE(dq.get_HasLGRs());
  Array<std::string> zList{"keep"};
  int32_t nList = 5;
  dq.GetList(zList, nList);
  EXPECT_EQ(nList, 0);
  EXPECT_EQ(zList(1), "keep");
  EXPECT_EQ(dq.GetArgumentName(1), "");
}

TEST_F(DerivedQuantityTest, PropertiesReadBackWhatWasLet) {
  mxDerivedQuantity dq;
  dq.let_Verbose("Oil rate ratio");
  dq.let_qApplyToList(true);
  dq.let_qApplyToAll(true);
  dq.let_qApplyToAllGrids(true);
  dq.let_TargetDataDesc("INIT\\LGR1");
  dq.let_TargetDataSet(4);
  dq.let_ResultColumnHeaderBase("RATIO");
  dq.let_ResultColumnHeader("RATIO1");
  dq.let_ResultSolIndex(12);
  dq.let_Expression("A/B");
  dq.let_StandardFunction(true);
  dq.let_AmendedDataSetUsed(2);
  bool qLGR = true;
  dq.let_HasLGRs(qLGR);
  dq.let_ResultVariable("RVAR");
  dq.let_ResultOrigin("Data");
  dq.let_ResultUnits("STB/D");
  dq.let_Variable("VAR");
  dq.let_Index("IDX");
  dq.let_Member("P1");
  dq.let_Class("WELLS");
  dq.let_Well("P1");
  EXPECT_EQ(dq.get_Verbose(), "Oil rate ratio");
  EXPECT_TRUE(dq.get_qApplyToList());
  EXPECT_TRUE(dq.get_qApplyToAll());
  EXPECT_TRUE(dq.get_qApplyToAllGrids());
  EXPECT_EQ(dq.get_TargetDataDesc(), "INIT\\LGR1");
  EXPECT_EQ(dq.get_TargetDataSet(), 4);
  EXPECT_EQ(dq.get_ResultColumnHeaderBase(), "RATIO");
  EXPECT_EQ(dq.get_ResultColumnHeader(), "RATIO1");
  EXPECT_EQ(dq.get_ResultSolIndex(), 12);
  EXPECT_EQ(dq.get_Expression(), "A/B");
  EXPECT_TRUE(dq.get_StandardFunction());
  EXPECT_EQ(dq.get_AmendedDataSetUsed(), 2);
  EXPECT_TRUE(dq.get_HasLGRs());
  EXPECT_EQ(dq.get_ResultVariable(), "RVAR");
  EXPECT_EQ(dq.get_ResultOrigin(), "Data");
  EXPECT_EQ(dq.get_ResultUnits(), "STB/D");
  EXPECT_EQ(dq.get_Variable(), "VAR");
  EXPECT_EQ(dq.get_Index(), "IDX");
  EXPECT_EQ(dq.get_Member(), "P1");
  EXPECT_EQ(dq.get_Class(), "WELLS");
  EXPECT_EQ(dq.get_Well(), "P1");
}

TEST_F(DerivedQuantityTest, AddArgumentsAppendsAndGetArgumentsReadsEveryField) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  EXPECT_EQ(dq.get_NumberOfArguments(), 2);
  std::string a, f, s, c, o, k;
  bool h = false;
  int32_t si = 0;
  dq.GetArguments(2, a, f, s, c, h, o, si, k);
  EXPECT_EQ(a, "B");
  EXPECT_EQ(f, "b.smspec");
  EXPECT_EQ(s, "grpB");
  EXPECT_EQ(c, "WELLS\\OPR");
  EXPECT_TRUE(h);
  EXPECT_EQ(o, "CaseB");
  EXPECT_EQ(si, 7);
  EXPECT_EQ(k, "WELLS");
  EXPECT_EQ(dq.GetArgumentName(1), "A");
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DerivedQuantityTest, GetArgumentsWithoutTheOptionalOutputsReadsTheOthers) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  std::string a, f, s, c, o = "untouched";
  bool h = false;
  dq.GetArguments(1, a, f, s, c, h);
  EXPECT_EQ(a, "A");
  EXPECT_EQ(c, "FOPR");
  EXPECT_EQ(o, "untouched");
  int32_t si = 0;
  dq.GetArguments(1, a, f, s, c, h, o, si);
  EXPECT_EQ(o, "CaseA");
  EXPECT_EQ(si, 3);
}

TEST_F(DerivedQuantityTest, GetArgumentsWithIndexZeroLeavesAllOutputsAsTheyWere) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  std::string a = "a0", f = "f0", s = "s0", c = "c0", o = "o0", k = "k0";
  bool h = true;
  int32_t si = 99;
  dq.GetArguments(0, a, f, s, c, h, o, si, k);
  EXPECT_EQ(a, "a0");
  EXPECT_EQ(f, "f0");
  EXPECT_EQ(s, "s0");
  EXPECT_EQ(c, "c0");
  EXPECT_TRUE(h);
  EXPECT_EQ(o, "o0");
  EXPECT_EQ(si, 99);
  EXPECT_EQ(k, "k0");
  dq.GetArguments(3, a, f, s, c, h, o, si, k);
  EXPECT_EQ(a, "a0");
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DerivedQuantityTest, SetArgumentsAfterSetResamplePeriodMakesTheMethodZero) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  dq.SetResamplePeriod(1, 3, "MONTH", Date(40000.0));
  int32_t iMethod = -1;
  dq.GetResampleMethod(1, iMethod);
  EXPECT_EQ(iMethod, 2);
  dq.SetArguments(1, "A2", "f", "s", "c", false, "o", 1, "k");
  dq.GetResampleMethod(1, iMethod);
  EXPECT_EQ(iMethod, 0);
  // The period fields keep their values, no longer counting.
  int32_t iInterval = 0;
  std::string zUnits;
  Date dStart;
  dq.GetResamplePeriod(1, iInterval, zUnits, dStart);
  EXPECT_EQ(iInterval, 3);
  EXPECT_EQ(zUnits, "MONTH");
  EXPECT_EQ(dStart.Days(), 40000.0);
}

TEST_F(DerivedQuantityTest, ResampleSettersDoNotClearTheOtherMethodsFields) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  dq.SetResampleStepSize(2, 5);
  dq.SetResamplePeriod(2, 7, "YEAR", Date(100.0));
  int32_t iMethod = 0, iStep = 0;
  dq.GetResampleMethod(2, iMethod);
  dq.GetResampleStepSize(2, iStep);
  EXPECT_EQ(iMethod, 2);
  EXPECT_EQ(iStep, 5);
  dq.SetResampleStepSize(2, 9);
  int32_t iInterval = 0;
  std::string zUnits;
  Date dStart;
  dq.GetResamplePeriod(2, iInterval, zUnits, dStart);
  dq.GetResampleMethod(2, iMethod);
  EXPECT_EQ(iMethod, 1);
  EXPECT_EQ(iInterval, 7);
  EXPECT_EQ(zUnits, "YEAR");
}

TEST_F(DerivedQuantityTest, SetArgumentsLeavesReAssociateAlone) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  bool qOK = false;
  dq.SetArgument_ReAssociate(1, true, qOK);
  EXPECT_TRUE(qOK);
  dq.SetArguments(1, "X", "f", "s", "c", false, "o");
  EXPECT_TRUE(dq.GetArgument_ReAssociate(1, qOK));
  EXPECT_TRUE(qOK);
}

TEST_F(DerivedQuantityTest, ReAssociateWithABadIndexReportsFalse) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  bool qOK = true;
  EXPECT_FALSE(dq.GetArgument_ReAssociate(3, qOK));
  EXPECT_FALSE(qOK);
  qOK = true;
  dq.SetArgument_ReAssociate(0, true, qOK);
  EXPECT_FALSE(qOK);
}

TEST_F(DerivedQuantityTest, InitialiseArraySmallerKeepsTheFirstEntriesAndDropsTheRest) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  dq.AddArguments("C", "c.f", "grpC", "WOPR", false, "CaseC", 1, "WELLS");
  dq.InitialiseArray(2);
  EXPECT_EQ(dq.get_NumberOfArguments(), 2);
  EXPECT_EQ(dq.GetArgumentName(1), "A");
  EXPECT_EQ(dq.GetArgumentName(2), "B");
  EXPECT_EQ(dq.GetArgumentName(3), "");
  // Growing again brings back an empty third entry, not the dropped one.
  dq.InitialiseArray(3);
  EXPECT_EQ(dq.GetArgumentName(3), "");
  EXPECT_EQ(dq.GetArgumentName(2), "B");
}

TEST_F(DerivedQuantityTest, InitialiseArrayWithZeroDropsEveryArgument) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  dq.InitialiseArray(0);
  EXPECT_EQ(dq.get_NumberOfArguments(), 0);
  EXPECT_EQ(dq.GetArgumentName(1), "");
  // The array is anew: a count let back to 1 reaches an empty slot.
  dq.let_NumberOfArguments(1);
  EXPECT_EQ(dq.GetArgumentName(1), "");
  EXPECT_TRUE(MessageLog::Shared().Lines().empty());
}

TEST_F(DerivedQuantityTest, CountLetPastTheArrayFaultsOnAccessAndTheCallReturns) {
  mxDerivedQuantity dq;
  AddTwo(dq);
  dq.let_NumberOfArguments(4);
  std::string a = "a0", f, s, c, o, k;
  bool h = false;
  int32_t si = 0;
  dq.GetArguments(3, a, f, s, c, h, o, si, k);
  EXPECT_EQ(a, "a0");
  dq.SetArguments(4, "Z", "f", "s", "c", false, "o");
  ASSERT_EQ(MessageLog::Shared().Lines().size(), 2u);
  EXPECT_EQ(MessageLog::Shared().Lines()[0],
            "Error:Subscript out of range (No.9) In [mxDerivedQuantity (Code) (GetArguments)] ");
  EXPECT_EQ(MessageLog::Shared().Lines()[1],
            "Error:Subscript out of range (No.9) In [mxDerivedQuantity (Code) (SetArguments)] ");
  EXPECT_TRUE(MessageLog::Shared().Flags()[0]);
  EXPECT_EQ(dq.get_NumberOfArguments(), 4);
}

TEST_F(DerivedQuantityTest, SetListWithZeroKeepsTheCountOnlyAndGetListGivesAFreshCopy) {
  mxDerivedQuantity dq;
  dq.SetList(Array<std::string>{"P1", "P2"}, 2);
  Array<std::string> zOut;
  int32_t n = 0;
  dq.GetList(zOut, n);
  EXPECT_EQ(n, 2);
  ASSERT_EQ(zOut.UBound(), 2);
  EXPECT_EQ(zOut(2), "P2");
  zOut(1) = "changed";
  Array<std::string> zAgain;
  dq.GetList(zAgain, n);
  EXPECT_EQ(zAgain(1), "P1");

  dq.SetList(Array<std::string>(), 0);
  Array<std::string> zUntouched{"mine"};
  dq.GetList(zUntouched, n);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(zUntouched(1), "mine");
}

}  // namespace
