#include "vndata/platform/differentiator.h"

#include <cstddef>

namespace vndata {

namespace {

// Checks the shapes and dimensions dydx 1..n with zeros. Returns n, or 0
// when there is nothing to differentiate.
std::size_t Prepare(const Array<double>& x, const Array<double>& y, Array<double>& dydx) {
  if (!x.IsAllocated() || !y.IsAllocated()) return 0;
  if (x.LBound() != y.LBound() || x.UBound() != y.UBound()) return 0;
  std::size_t n = x.size();
  dydx.ReDim(1, static_cast<int32_t>(n));
  return n >= 2 ? n : 0;
}

// (y1 - y0) / (x1 - x0), 0 with qOK cleared on a zero step.
double Slope(double x0, double y0, double x1, double y1, bool& qOK) {
  double h = x1 - x0;
  if (h == 0.0) {
    qOK = false;
    return 0.0;
  }
  return (y1 - y0) / h;
}

// Second-order three-point derivative at the middle point of (x0, x1, x2).
double Central(const double* x, const double* y, bool& qOK) {
  double h1 = x[1] - x[0], h2 = x[2] - x[1];
  if (h1 == 0.0 || h2 == 0.0 || h1 + h2 == 0.0) {
    qOK = false;
    return 0.0;
  }
  return -h2 / (h1 * (h1 + h2)) * y[0] + (h2 - h1) / (h1 * h2) * y[1] +
         h1 / (h2 * (h1 + h2)) * y[2];
}

// Second-order one-sided derivative at the first point of (x0, x1, x2).
double LeftEnd(const double* x, const double* y, bool& qOK) {
  double h1 = x[1] - x[0], h2 = x[2] - x[1];
  if (h1 == 0.0 || h2 == 0.0 || h1 + h2 == 0.0) {
    qOK = false;
    return 0.0;
  }
  return -(2.0 * h1 + h2) / (h1 * (h1 + h2)) * y[0] + (h1 + h2) / (h1 * h2) * y[1] -
         h1 / (h2 * (h1 + h2)) * y[2];
}

// Second-order one-sided derivative at the last point of (x0, x1, x2).
double RightEnd(const double* x, const double* y, bool& qOK) {
  double h1 = x[1] - x[0], h2 = x[2] - x[1];
  if (h1 == 0.0 || h2 == 0.0 || h1 + h2 == 0.0) {
    qOK = false;
    return 0.0;
  }
  return h2 / (h1 * (h1 + h2)) * y[0] - (h1 + h2) / (h1 * h2) * y[1] +
         (2.0 * h2 + h1) / (h2 * (h1 + h2)) * y[2];
}

}  // namespace

void Differentiator::DifferentiateMode0(const Array<double>& x, const Array<double>& y,
                                        Array<double>& dydx, bool& qOK) const {
  qOK = false;
  std::size_t n = Prepare(x, y, dydx);
  if (n == 0) return;
  const double* px = x.data();
  const double* py = y.data();
  double* d = dydx.data();
  bool ok = true;
  for (std::size_t i = 0; i + 1 < n; ++i) d[i] = Slope(px[i], py[i], px[i + 1], py[i + 1], ok);
  d[n - 1] = Slope(px[n - 2], py[n - 2], px[n - 1], py[n - 1], ok);
  qOK = ok;
}

void Differentiator::DifferentiateMode1(const Array<double>& x, const Array<double>& y,
                                        Array<double>& dydx, bool& qOK) const {
  qOK = false;
  std::size_t n = Prepare(x, y, dydx);
  if (n == 0) return;
  const double* px = x.data();
  const double* py = y.data();
  double* d = dydx.data();
  bool ok = true;
  d[0] = Slope(px[0], py[0], px[1], py[1], ok);
  for (std::size_t i = 1; i < n; ++i) d[i] = Slope(px[i - 1], py[i - 1], px[i], py[i], ok);
  qOK = ok;
}

void Differentiator::DifferentiateMode2(const Array<double>& x, const Array<double>& y,
                                        Array<double>& dydx, bool& qOK) const {
  qOK = false;
  std::size_t n = Prepare(x, y, dydx);
  if (n == 0) return;
  const double* px = x.data();
  const double* py = y.data();
  double* d = dydx.data();
  bool ok = true;
  if (n == 2) {
    d[0] = d[1] = Slope(px[0], py[0], px[1], py[1], ok);
    qOK = ok;
    return;
  }
  d[0] = LeftEnd(px, py, ok);
  for (std::size_t i = 1; i + 1 < n; ++i) d[i] = Central(px + i - 1, py + i - 1, ok);
  d[n - 1] = RightEnd(px + n - 3, py + n - 3, ok);
  qOK = ok;
}

}  // namespace vndata
