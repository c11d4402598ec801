#include "vndata/derived/mx_automatic_dq.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <initializer_list>
#include <vector>

#include "vndata/platform/message_log.h"

using namespace vndata;

namespace {

constexpr float kNull = -999.0f;

// An argument block from columns given as lists.
Array2<float> Block(std::initializer_list<std::initializer_list<float>> cols) {
  int32_t m = static_cast<int32_t>(cols.size());
  int32_t n = static_cast<int32_t>(cols.begin()->size());
  Array2<float> a(1, n, 1, m);
  int32_t k = 1;
  for (auto& col : cols) {
    int32_t i = 1;
    for (float v : col) a(i++, k) = v;
    ++k;
  }
  return a;
}

std::vector<float> Values(const Array<float>& a) { return std::vector<float>(a.begin(), a.end()); }

bool SameBits(const Array<float>& a, const Array<float>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

class AutomaticDQTest : public ::testing::Test {
 protected:
  void SetUp() override { MessageLog::Shared().Clear(); }
  void TearDown() override { MessageLog::Shared().Clear(); }
  const std::vector<std::string>& Log() { return MessageLog::Shared().Lines(); }
  mxAutomaticDQ adq;
};

// ---- the null rule ---------------------------------------------------------

TEST_F(AutomaticDQTest, AllRowsNullGivesAllNullAndFalse) {
  Array2<float> args = Block({{kNull, 1.f, kNull}, {2.f, kNull, 3.f}});
  Array<float> out;
  bool qOK = true;
  adq.CalculateADQWithNull(kADQAddition, args, true, kNull, out, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{kNull, kNull, kNull}));
}

TEST_F(AutomaticDQTest, AllRowsNullGivesAllNullAndFalseForEveryRule) {
  Array2<float> args = Block({{kNull, 1.f}, {2.f, kNull}});
  for (int32_t rule = 1; rule <= 10; ++rule) {
    Array<float> out{5.f};
    bool qOK = true;
    adq.CalculateADQWithNull(rule, args, true, kNull, out, qOK, Variant(2.0f));
    EXPECT_FALSE(qOK) << rule;
    EXPECT_EQ(Values(out), (std::vector<float>{kNull, kNull})) << rule;
  }
}

TEST_F(AutomaticDQTest, NoRowNullGivesTheResultOfTheRuleOff) {
  Array2<float> args = Block({{1.f, 4.f, 9.f, 2.5f}, {2.f, 0.f, 3.f, 0.5f}});
  for (int32_t rule = 1; rule <= 10; ++rule) {
    Array<float> on, off;
    bool qOn = false, qOff = false;
    adq.CalculateADQWithNull(rule, args, true, kNull, on, qOn, Variant(2.0f));
    adq.CalculateADQWithNull(rule, args, false, kNull, off, qOff, Variant(2.0f));
    EXPECT_TRUE(qOn) << rule;
    EXPECT_TRUE(qOff) << rule;
    EXPECT_TRUE(SameBits(on, off)) << "rule " << rule;
  }
}

TEST_F(AutomaticDQTest, NoRowNullBuildsNoCompactBlock) {
  // A refused kernel shows it: with a compact block its rows would all come
  // out null; without one the caller's vector stays unwritten.
  Array2<float> args = Block({{1.f, 2.f}, {3.f, 4.f}, {5.f, 6.f}});
  Array<float> out{7.f, 7.f};
  bool qOK = false;
  adq.CalculateADQWithNull(kADQRatio, args, true, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{7.f, 7.f}));
}

TEST_F(AutomaticDQTest, ARefusingKernelWithACompactBlockLeavesEveryRowNullAndReportsSuccess) {
  Array2<float> args = Block({{1.f, kNull, 2.f}, {3.f, 4.f, 5.f}, {5.f, 6.f, 7.f}});
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQRatio, args, true, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{kNull, kNull, kNull}));
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_EQ(
      Log()[0],
      "Error:Subscript out of range (No.9) In [mxAutomaticDQ (Code) (CalculateADQWithNull)] ");
}

TEST_F(AutomaticDQTest, WithTheRuleOffTheNullMarkerIsAnOrdinaryNumber) {
  Array2<float> args = Block({{kNull, 1.f}, {1.f, kNull}});
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQAddition, args, false, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{-998.f, -998.f}));
  adq.CalculateADQWithNull(kADQRatio, args, false, kNull, out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{-999.f, 1.f / -999.f}));
}

TEST_F(AutomaticDQTest, NullRowsAreDroppedAndTheOthersComputed) {
  Array2<float> args = Block({{6.f, kNull, 9.f, 8.f}, {2.f, 5.f, kNull, 4.f}});
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQRatio, args, true, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{3.f, kNull, kNull, 2.f}));
}

TEST_F(AutomaticDQTest, AnAccumulatedColumnCarriesTheSumOverANullGap) {
  // Rates 1, 2, null, 4 at times 0, 1, 2, 3: the step after the gap runs from
  // time 1 to time 3 at the rate of its end.
  Array2<float> args = Block({{1.f, 2.f, kNull, 4.f}, {0.f, 1.f, 2.f, 3.f}});
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQAccumulate, args, true, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{0.f, 2.f, kNull, 10.f}));
}

TEST_F(AutomaticDQTest, DerivativeRulesSeeTheValidRowsAsNeighbours) {
  // y = 3x on x = 0, 1, (null row), 4: mode 0 of the packed rows is 3 everywhere.
  Array2<float> args = Block({{0.f, 3.f, kNull, 12.f}, {0.f, 1.f, 2.f, 4.f}});
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQDerivativeMode0, args, true, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{3.f, 3.f, kNull, 3.f}));
}

TEST_F(AutomaticDQTest, ARuleOutsideOneToTenComputesNothingAndSucceeds) {
  Array2<float> args = Block({{1.f, 2.f}, {3.f, 4.f}});
  Array<float> out{5.f, 5.f};
  bool qOK = false;
  adq.CalculateADQWithNull(11, args, false, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{5.f, 5.f}));
  adq.CalculateADQWithNull(0, args, true, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{5.f, 5.f}));
}

TEST_F(AutomaticDQTest, AnUndimensionedBlockIsRefused) {
  Array2<float> args;
  Array<float> out;
  bool qOK = true;
  adq.CalculateADQWithNull(kADQAddition, args, true, kNull, out, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_FALSE(out.IsAllocated());
}

TEST_F(AutomaticDQTest, KernelFailureIsNotLookedAt) {
  // Ratio of one argument is refused by the kernel; the caller sees success.
  Array2<float> args = Block({{1.f, 2.f}});
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQRatio, args, false, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_FALSE(out.IsAllocated());
}

TEST_F(AutomaticDQTest, LongColumnsGiveTheSameBitsWithAndWithoutTheRuleAcrossBlocks) {
  // Long enough for several scan blocks; the null in the last block makes the
  // fused pass give up after writing part of the result.
  const int32_t n = 5000;
  Array2<float> args(1, n, 1, 3);
  for (int32_t i = 1; i <= n; ++i) {
    args(i, 1) = 0.37f * static_cast<float>(i % 97) - 3.0f;
    args(i, 2) = static_cast<float>(i % 5) - 2.0f;  // zeros for the divisions
    args(i, 3) = 1.0f / static_cast<float>(i);
  }
  for (int32_t rule : {kADQAddition, kADQCut, kADQMultiplication}) {
    Array<float> on, off;
    bool q1 = false, q2 = false;
    adq.CalculateADQWithNull(rule, args, true, kNull, on, q1);
    adq.CalculateADQWithNull(rule, args, false, kNull, off, q2);
    EXPECT_TRUE(SameBits(on, off)) << "rule " << rule;
    // Row by row against the scalar definition.
    for (int32_t i = 1; i <= n; ++i) {
      float s = 0.0f + args(i, 1);
      s = s + args(i, 2);
      s = s + args(i, 3);
      float p = 1.0f * args(i, 1);
      p = p * args(i, 2);
      p = p * args(i, 3);
      float want = rule == kADQAddition         ? s
                   : rule == kADQMultiplication ? p
                                                : (s == 0.f ? kNull : args(i, 1) / s);
      ASSERT_EQ(off(i), want) << "rule " << rule << " row " << i;
    }
  }
  args(n - 1, 2) = kNull;
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQAddition, args, true, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(out(n - 1), kNull);
  EXPECT_EQ(out(1), (0.0f + args(1, 1) + args(1, 2)) + args(1, 3));
  EXPECT_EQ(out(n), (0.0f + args(n, 1) + args(n, 2)) + args(n, 3));
}

TEST_F(AutomaticDQTest, LongTwoArgumentColumnsWithoutNullsMatchTheRuleOff) {
  const int32_t n = 3001;
  Array2<float> args(1, n, 1, 2);
  for (int32_t i = 1; i <= n; ++i) {
    args(i, 1) = 1.25f * static_cast<float>(i % 11) - 6.0f;
    args(i, 2) = static_cast<float>(i % 9) - 4.0f;
  }
  for (int32_t rule : {kADQRatio, kADQCut, kADQAddition, kADQMultiplication}) {
    Array<float> on, off;
    bool q1 = false, q2 = false;
    adq.CalculateADQWithNull(rule, args, true, kNull, on, q1);
    adq.CalculateADQWithNull(rule, args, false, kNull, off, q2);
    EXPECT_TRUE(q1 && q2);
    EXPECT_TRUE(SameBits(on, off)) << "rule " << rule;
    for (int32_t i = 1; i <= n; ++i) {
      float a = args(i, 1), b = args(i, 2), sum = (0.0f + a) + b;
      float want = rule == kADQRatio            ? (b == 0.f ? kNull : a / b)
                   : rule == kADQAddition       ? sum
                   : rule == kADQMultiplication ? (1.0f * a) * b
                                                : (sum == 0.f ? kNull : a / sum);
      ASSERT_EQ(off(i), want) << "rule " << rule << " row " << i;
    }
  }
}

TEST_F(AutomaticDQTest, ScatteredNullRowsOverManyBlocksAreNullAndTheRestComputed) {
  const int32_t n = 4100;
  Array2<float> args(1, n, 1, 2);
  for (int32_t i = 1; i <= n; ++i) {
    args(i, 1) = static_cast<float>(i % 13) - 4.0f;
    args(i, 2) = static_cast<float>(i % 7) - 3.0f;
    if (i % 311 == 0) args(i, 1) = kNull;
    if (i % 509 == 0) args(i, 2) = kNull;
  }
  for (int32_t rule : {kADQRatio, kADQCut, kADQAddition, kADQMultiplication}) {
    Array<float> out;
    bool qOK = false;
    adq.CalculateADQWithNull(rule, args, true, kNull, out, qOK);
    EXPECT_TRUE(qOK);
    ASSERT_EQ(out.UBound(), n);
    for (int32_t i = 1; i <= n; ++i) {
      float a = args(i, 1), b = args(i, 2);
      float want;
      if (a == kNull || b == kNull) {
        want = kNull;
      } else if (rule == kADQRatio) {
        want = b == 0.f ? kNull : a / b;
      } else if (rule == kADQAddition) {
        want = (0.0f + a) + b;
      } else if (rule == kADQMultiplication) {
        want = (1.0f * a) * b;
      } else {
        float sum = (0.0f + a) + b;
        want = sum == 0.f ? kNull : a / sum;
      }
      ASSERT_EQ(out(i), want) << "rule " << rule << " row " << i;
    }
  }
}

// ---- kernels -----------------------------------------------------------------

TEST_F(AutomaticDQTest, RatioWritesTheNullOnAZeroDenominatorWithTheRuleOff) {
  Array2<float> args = Block({{6.f, 5.f, 0.f}, {3.f, 0.f, 0.f}});
  Array<float> out;
  bool qOK = false;
  adq.RatioDQ(args, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{2.f, kNull, kNull}));
  adq.CalculateADQWithNull(kADQRatio, args, false, kNull, out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{2.f, kNull, kNull}));
}

TEST_F(AutomaticDQTest, RatioNeedsExactlyTwoArguments) {
  Array<float> out{1.f};
  bool qOK = true;
  adq.RatioDQ(Block({{1.f}, {2.f}, {3.f}}), kNull, out, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{1.f}));
}

TEST_F(AutomaticDQTest, CutOfOneArgumentIsOneWhereNonZeroAndNullWhereZero) {
  Array<float> out;
  bool qOK = false;
  adq.CutDQ(Block({{2.f, 0.f, -3.f}}), kNull, out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{1.f, kNull, 1.f}));
}

TEST_F(AutomaticDQTest, CutDividesTheFirstArgumentByTheSumOfAll) {
  Array<float> out;
  bool qOK = false;
  adq.CutDQ(Block({{1.f, 2.f}, {3.f, -2.f}}), kNull, out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{0.25f, kNull}));
}

TEST_F(AutomaticDQTest, AdditionRoundsEachStepToThirtyTwoBitsInArgumentOrder) {
  Array<float> out;
  bool qOK = false;
  adq.AdditionDQ(Block({{1e8f, -0.0f}, {1.f, -0.0f}, {-1e8f, -0.0f}}), out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(out(1), 0.f);  // 1e8 + 1 rounds back to 1e8
  // The sum starts at +0: adding negative zeros keeps it positive.
  EXPECT_EQ(out(2), 0.f);
  EXPECT_FALSE(std::signbit(out(2)));
}

TEST_F(AutomaticDQTest, MultiplicationStartsAtOneAndRoundsEachStep) {
  Array<float> out;
  bool qOK = false;
  adq.MultiplicationDQ(Block({{1e30f, 2.f}, {1e30f, 3.f}, {1e-30f, 4.f}}), out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_TRUE(std::isinf(out(1)));  // 1e30 * 1e30 overflows before the third factor
  EXPECT_EQ(out(2), 24.f);
}

TEST_F(AutomaticDQTest, AccumulateOfASingleRowGivesZero) {
  Array<float> out;
  bool qOK = false;
  adq.AccumulateDQ(Block({{5.f}, {3.f}}), out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{0.f}));
}

TEST_F(AutomaticDQTest, AccumulateUsesTheRateAtTheEndOfEachStep) {
  Array<float> out;
  bool qOK = false;
  adq.AccumulateDQ(Block({{1.f, 2.f, 3.f}, {0.f, 10.f, 15.f}}), out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{0.f, 20.f, 35.f}));
}

TEST_F(AutomaticDQTest, RateFromCutComputesAndLogsACutOfOne) {
  Array2<float> args = Block({{2.f, 0.f, 3.f, 4.f}, {0.5f, 0.5f, 1.f, 0.75f}});
  Array<float> out;
  bool qOK = false;
  adq.RateFromCutDQ(args, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  // -2*0.5/(0.5-1) = 2; a rate of 0 is null; a cut of 1 keeps 0 and is
  // logged; the next row still runs.
  EXPECT_EQ(Values(out), (std::vector<float>{2.f, kNull, 0.f, 12.f}));
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_EQ(Log()[0], "Error:Division by zero (No.11) In [mxAutomaticDQ (Code) (RateFromCutDQ)] ");
}

TEST_F(AutomaticDQTest, DerivativeOfALineAtUnevenPointsInEveryMode) {
  Array<float> x{0.f, 0.5f, 2.f, 2.25f, 5.f};
  Array<float> y;
  y.ReDim(1, 5);
  for (int32_t i = 1; i <= 5; ++i) y(i) = 4.f * x(i) - 1.f;
  for (int32_t mode = 0; mode <= 2; ++mode) {
    Array<float> out;
    bool qOK = false;
    adq.DerivativeDQ(y, x, out, qOK, mode);
    EXPECT_TRUE(qOK) << mode;
    for (int32_t i = 1; i <= 5; ++i) EXPECT_FLOAT_EQ(out(i), 4.f) << mode << " " << i;
  }
}

TEST_F(AutomaticDQTest, DerivativeRefusesVectorsOfDifferentLengths) {
  Array<float> out{9.f};
  bool qOK = true;
  adq.DerivativeDQ(Array<float>{1.f, 2.f}, Array<float>{1.f, 2.f, 3.f}, out, qOK, 0);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{9.f}));
}

TEST_F(AutomaticDQTest, DerivativeOfAnUnknownModeGivesZerosAndFalse) {
  Array<float> out;
  bool qOK = true;
  adq.DerivativeDQ(Array<float>{1.f, 2.f}, Array<float>{1.f, 2.f}, out, qOK, 5);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{0.f, 0.f}));
}

TEST_F(AutomaticDQTest, DerivativeRulesMapToModesTwoOneZero) {
  // y = x^2 at x = 0, 1, 3: forward (mode 0), backward (mode 1), three-point (mode 2).
  Array2<float> args = Block({{0.f, 1.f, 9.f}, {0.f, 1.f, 3.f}});
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQDerivativeMode0, args, false, kNull, out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{1.f, 4.f, 4.f}));
  adq.CalculateADQWithNull(kADQDerivativeMode1, args, false, kNull, out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{1.f, 1.f, 4.f}));
  adq.CalculateADQWithNull(kADQDerivativeMode2, args, false, kNull, out, qOK);
  ASSERT_EQ(out.size(), 3u);
  EXPECT_FLOAT_EQ(out(1), 0.f);
  EXPECT_FLOAT_EQ(out(2), 2.f);
  EXPECT_FLOAT_EQ(out(3), 6.f);
}

TEST_F(AutomaticDQTest, DerivativeRuleWithOneArgumentLogsAndStillSucceeds) {
  Array2<float> args = Block({{1.f, 2.f}});
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQDerivativeMode0, args, false, kNull, out, qOK);
  EXPECT_TRUE(qOK);
  ASSERT_EQ(Log().size(), 2u);
  EXPECT_EQ(
      Log()[0],
      "Error:Subscript out of range (No.9) In [mxAutomaticDQ (Code) (CalculateADQWithNull)] ");
  EXPECT_EQ(Log()[1],
            "Error:Subscript out of range (No.9) In [mxAutomaticDQ (Code) (DerivativeDQ)] ");
}

// ---- unit conversion ---------------------------------------------------------

TEST_F(AutomaticDQTest, UnitConvertByOneNumber) {
  Array2<float> args = Block({{1.f, -2.f}, {100.f, 100.f}});
  Array<float> out;
  bool qOK = false;
  adq.UnitConvertDQ(args, Variant(int16_t{3}), out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{3.f, -6.f}));
  adq.UnitConvertDQ(args, Variant(1.0), out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{1.f, -2.f}));
}

TEST_F(AutomaticDQTest, UnitConvertByArraysOfOneAndTwoFactors) {
  Array2<float> args = Block({{1.f, 2.f}});
  Array<float> out;
  bool qOK = false;
  adq.UnitConvertDQ(args, Variant(Array<float>{5.f}), out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{5.f, 10.f}));
  adq.UnitConvertDQ(args, Variant(Array<float>{5.f, 0.f}), out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{5.f, 10.f}));
  adq.UnitConvertDQ(args, Variant(Array<float>{1.f, 3.f}), out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{4.f, 5.f}));
  adq.UnitConvertDQ(args, Variant(Array<double>{2.0, 3.0}), out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{5.f, 7.f}));
  Array<Variant> mixed(1, 2);
  mixed(1) = Variant(int32_t{10});
  mixed(2) = Variant(-1.0f);
  adq.UnitConvertDQ(args, Variant(mixed), out, qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{9.f, 19.f}));
  EXPECT_TRUE(qOK);
}

TEST_F(AutomaticDQTest, UnitConvertWithAnotherArrayLengthGivesZeros) {
  Array<float> out;
  bool qOK = false;
  adq.UnitConvertDQ(Block({{1.f, 2.f}}), Variant(Array<float>{1.f, 2.f, 3.f}), out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{0.f, 0.f}));
}

TEST_F(AutomaticDQTest, UnitConvertRuleFromALoadWithIntegerZeroGivesZeros) {
  Array<float> out;
  bool qOK = false;
  adq.CalculateADQWithNull(kADQUnitConvert, Block({{4.f, 5.f}}), true, kNull, out, qOK,
                           Variant(int32_t{0}));
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{0.f, 0.f}));
}

TEST_F(AutomaticDQTest, UnitConvertArithmeticRunsInTheWiderType) {
  const float x = 1.1f;
  float wide = static_cast<float>(0.1 * static_cast<double>(x));
  float narrow = 0.1f * x;
  ASSERT_NE(wide, narrow);  // the case tells the two widths apart
  Array<float> out;
  bool qOK = false;
  adq.UnitConvertDQ(Block({{x}}), Variant(0.1), out, qOK);
  EXPECT_EQ(out(1), wide);
  adq.UnitConvertDQ(Block({{x}}), Variant(0.1f), out, qOK);
  EXPECT_EQ(out(1), narrow);
}

TEST_F(AutomaticDQTest, UnitConvertWithNothingCopiesIntoTheCallersVector) {
  Array<float> out{0.f, 0.f};
  bool qOK = false;
  adq.UnitConvertDQ(Block({{7.f, 8.f}}), Variant(), out, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(out), (std::vector<float>{7.f, 8.f}));
  EXPECT_TRUE(Log().empty());
  // Not dimensioned by the kernel: the cells the caller's vector lacks are
  // skipped and the misfit traced once; the cells it has are copied.
  Array<float> one{0.f};
  adq.UnitConvertDQ(Block({{7.f, 8.f, 9.f}}), Variant(), one, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(one), (std::vector<float>{7.f}));
  ASSERT_EQ(Log().size(), 1u);
  EXPECT_EQ(Log()[0],
            "Error:Subscript out of range (No.9) In [mxAutomaticDQ (Code) (UnitConvertDQ)] ");
}

TEST_F(AutomaticDQTest, ConvertUnitsWithOneAndZeroChangesNothingAndReportsTrue) {
  Array<float> v{1.5f, kNull, -2.f};
  int32_t n = 3;
  bool qOK = false;
  adq.ConvertUnitsWithNull(false, kNull, Array<float>{1.0f, 0.0f}, 2, v, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(v), (std::vector<float>{1.5f, kNull, -2.f}));
}

TEST_F(AutomaticDQTest, ConvertUnitsWithTwoAndZeroOnlyMultiplies) {
  Array<float> v{1.5f, kNull, -2.f};
  int32_t n = 3;
  bool qOK = false;
  adq.ConvertUnitsWithNull(true, kNull, Array<float>{2.0f, 0.0f}, 2, v, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(Values(v), (std::vector<float>{3.f, kNull, -4.f}));
  // Without the null rule the marker is converted too.
  adq.ConvertUnitsWithNull(false, kNull, Array<float>{2.0f, 0.0f}, 2, v, n, qOK);
  EXPECT_EQ(Values(v), (std::vector<float>{6.f, 2.f * kNull, -8.f}));
}

TEST_F(AutomaticDQTest, ConvertUnitsWithAFirstFactorOfOneOnlyAdds) {
  Array<float> v{1.5f, -2.f};
  int32_t n = 2;
  bool qOK = false;
  adq.ConvertUnitsWithNull(false, kNull, Array<float>{1.0f, 10.0f}, 2, v, n, qOK);
  EXPECT_EQ(Values(v), (std::vector<float>{11.5f, 8.f}));
}

TEST_F(AutomaticDQTest, ConvertUnitsRoundsTheProductAndSumOnce) {
  const float v0 = 1.0f + 1.0f / 4096.0f;
  float once = std::fmaf(v0, v0, -1.0f);
  float twice = v0 * v0;
  twice = twice + -1.0f;
  ASSERT_NE(once, twice);  // the case tells one rounding from two
  Array<float> v{v0};
  int32_t n = 1;
  bool qOK = false;
  adq.ConvertUnitsWithNull(false, kNull, Array<float>{v0, -1.0f}, 2, v, n, qOK);
  EXPECT_EQ(v(1), once);
}

TEST_F(AutomaticDQTest, ConvertUnitsCutsTheCountToTheArray) {
  Array<float> v{1.f, 2.f};
  int32_t n = 5;
  bool qOK = false;
  adq.ConvertUnitsWithNull(false, kNull, Array<float>{3.0f}, 1, v, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(n, 2);
  EXPECT_EQ(Values(v), (std::vector<float>{3.f, 6.f}));
}

TEST_F(AutomaticDQTest, ConvertUnitsVisitsOnlyTheGivenCount) {
  Array<float> v{1.f, 2.f, 3.f};
  int32_t n = 2;
  bool qOK = false;
  adq.ConvertUnitsWithNull(false, kNull, Array<float>{3.0f}, 1, v, n, qOK);
  EXPECT_EQ(Values(v), (std::vector<float>{3.f, 6.f, 3.f}));
}

TEST_F(AutomaticDQTest, ConvertUnitsWithMoreFactorsThanGivenIsRefused) {
  Array<float> v{1.f};
  int32_t n = 1;
  bool qOK = true;
  adq.ConvertUnitsWithNull(false, kNull, Array<float>{3.0f}, 2, v, n, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(v(1), 1.f);
}

TEST_F(AutomaticDQTest, ConvertUnitsWithThreeFactorsChangesNothing) {
  Array<float> v{1.f};
  int32_t n = 1;
  bool qOK = false;
  adq.ConvertUnitsWithNull(false, kNull, Array<float>{3.0f, 1.f, 1.f}, 3, v, n, qOK);
  EXPECT_TRUE(qOK);
  EXPECT_EQ(v(1), 1.f);
}

}  // namespace
