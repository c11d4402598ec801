#include "vndata/platform/differentiator.h"

#include <gtest/gtest.h>

#include <functional>

using namespace vndata;

namespace {

using Mode = void (Differentiator::*)(const Array<double>&, const Array<double>&, Array<double>&,
                                      bool&) const;

const Mode kModes[] = {&Differentiator::DifferentiateMode0, &Differentiator::DifferentiateMode1,
                       &Differentiator::DifferentiateMode2};

// Unevenly spaced abscissae, including a long and a very short step.
Array<double> UnevenX() { return Array<double>{-1.0, -0.25, 0.5, 2.0, 2.125, 5.0, 9.5}; }

Array<double> Apply(const Array<double>& x, const std::function<double(double)>& f) {
  Array<double> y(1, x.UBound());
  for (int32_t i = 1; i <= x.UBound(); ++i) y(i) = f(x(i));
  return y;
}

TEST(Differentiator, ALineIsExactInEveryMode) {
  Array<double> x = UnevenX();
  Array<double> y = Apply(x, [](double v) { return -2.5 * v + 7.0; });
  Differentiator d;
  for (Mode m : kModes) {
    Array<double> dydx;
    bool qOK = false;
    (d.*m)(x, y, dydx, qOK);
    ASSERT_TRUE(qOK);
    ASSERT_EQ(dydx.UBound(), x.UBound());
    for (int32_t i = 1; i <= x.UBound(); ++i) EXPECT_NEAR(dydx(i), -2.5, 1e-12) << i;
  }
}

TEST(Differentiator, AQuadraticOnUnevenPointsIsExactInModeTwo) {
  Array<double> x = UnevenX();
  auto f = [](double v) { return 3.0 * v * v - 2.0 * v + 1.0; };
  Array<double> y = Apply(x, f);
  Array<double> dydx;
  bool qOK = false;
  Differentiator().DifferentiateMode2(x, y, dydx, qOK);
  ASSERT_TRUE(qOK);
  for (int32_t i = 2; i < x.UBound(); ++i) EXPECT_NEAR(dydx(i), 6.0 * x(i) - 2.0, 1e-11) << i;
  // The one-sided ends are of the same order, so exact here as well.
  EXPECT_NEAR(dydx(1), 6.0 * x(1) - 2.0, 1e-11);
  EXPECT_NEAR(dydx(x.UBound()), 6.0 * x(x.UBound()) - 2.0, 1e-11);
}

TEST(Differentiator, ForwardAndBackwardDifferencesOfAQuadratic) {
  // For y = x^2 the difference over [a, b] is a + b.
  Array<double> x{0.0, 1.0, 3.0, 7.0};
  Array<double> y = Apply(x, [](double v) { return v * v; });
  Differentiator d;
  Array<double> fwd, bwd;
  bool q0 = false, q1 = false;
  d.DifferentiateMode0(x, y, fwd, q0);
  d.DifferentiateMode1(x, y, bwd, q1);
  ASSERT_TRUE(q0 && q1);
  EXPECT_DOUBLE_EQ(fwd(1), 1.0);
  EXPECT_DOUBLE_EQ(fwd(2), 4.0);
  EXPECT_DOUBLE_EQ(fwd(3), 10.0);
  EXPECT_DOUBLE_EQ(fwd(4), 10.0);  // the last point looks back
  EXPECT_DOUBLE_EQ(bwd(1), 1.0);   // the first point looks ahead
  EXPECT_DOUBLE_EQ(bwd(2), 1.0);
  EXPECT_DOUBLE_EQ(bwd(3), 4.0);
  EXPECT_DOUBLE_EQ(bwd(4), 10.0);
}

TEST(Differentiator, TwoPointsGiveTheSlopeInModeTwo) {
  Array<double> dydx;
  bool qOK = false;
  Differentiator().DifferentiateMode2(Array<double>{1.0, 3.0}, Array<double>{2.0, 8.0}, dydx, qOK);
  ASSERT_TRUE(qOK);
  EXPECT_DOUBLE_EQ(dydx(1), 3.0);
  EXPECT_DOUBLE_EQ(dydx(2), 3.0);
}

TEST(Differentiator, OnePointIsRefusedWithAZeroResult) {
  for (Mode m : kModes) {
    Array<double> dydx;
    bool qOK = true;
    (Differentiator().*m)(Array<double>{1.0}, Array<double>{2.0}, dydx, qOK);
    EXPECT_FALSE(qOK);
    ASSERT_EQ(dydx.UBound(), 1);
    EXPECT_EQ(dydx(1), 0.0);
  }
}

TEST(Differentiator, DifferentBoundsAreRefusedAndLeaveTheOutputAlone) {
  for (Mode m : kModes) {
    Array<double> dydx{42.0};
    bool qOK = true;
    (Differentiator().*m)(Array<double>{1.0, 2.0}, Array<double>{2.0, 3.0, 4.0}, dydx, qOK);
    EXPECT_FALSE(qOK);
    EXPECT_EQ(dydx(1), 42.0);
  }
}

TEST(Differentiator, AZeroStepGivesZeroThereAndReportsFalse) {
  Array<double> x{0.0, 1.0, 1.0, 2.0};
  Array<double> y{0.0, 1.0, 1.0, 2.0};
  Array<double> dydx;
  bool qOK = true;
  Differentiator().DifferentiateMode0(x, y, dydx, qOK);
  EXPECT_FALSE(qOK);
  EXPECT_EQ(dydx(1), 1.0);
  EXPECT_EQ(dydx(2), 0.0);
  EXPECT_EQ(dydx(3), 1.0);
}

}  // namespace
