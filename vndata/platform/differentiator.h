// Differentiator: numerical derivatives dy/dx of sampled values on unevenly
// spaced abscissae. Arrays are 1..n; dydx is dimensioned 1..n by the call.
//
//   Mode 0, forward difference:  (y(i+1) - y(i)) / (x(i+1) - x(i)); the last
//           point takes the backward difference.
//   Mode 1, backward difference: (y(i) - y(i-1)) / (x(i) - x(i-1)); the first
//           point takes the forward difference.
//   Mode 2, three points, second order: at an inner point with steps
//           h1 = x(i) - x(i-1) and h2 = x(i+1) - x(i)
//             -h2/(h1(h1+h2)) y(i-1) + (h2-h1)/(h1 h2) y(i) + h1/(h2(h1+h2)) y(i+1),
//           and the one-sided three-point formulae of the same order at the
//           two ends; with two points it is the plain difference.
//
// The results are exact for a straight line in every mode and for a
// quadratic in mode 2. qOK is false for fewer than two points (dydx is then
// all 0) and for x and y of different bounds (dydx is left alone); a point
// whose formula meets a zero step gets 0 and makes qOK false, rather than an
// infinity.
#pragma once

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

class VNDATA_API Differentiator {
 public:
  void DifferentiateMode0(const Array<double>& x, const Array<double>& y, Array<double>& dydx,
                          bool& qOK) const;
  void DifferentiateMode1(const Array<double>& x, const Array<double>& y, Array<double>& dydx,
                          bool& qOK) const;
  void DifferentiateMode2(const Array<double>& x, const Array<double>& y, Array<double>& dydx,
                          bool& qOK) const;
};

}  // namespace vndata
