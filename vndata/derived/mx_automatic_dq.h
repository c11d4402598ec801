// mxAutomaticDQ: the arithmetic behind columns that a file reader declares as
// derived or as needing a unit change. Stateless; every kernel works on whole
// vectors of 32-bit floats, row by row.
//
// Argument block: sArgs(1..n, 1..m), column k the k-th argument. A cell is
// null when it equals sNull exactly; the null rule (qUseNull) drops rows in
// which any argument is null, computes the rest as if the dropped rows did
// not exist, and writes sNull into them. Kernels that divide write sNull on a
// zero denominator whatever the rule says.
//
// Rules (iRule): 1..3 derivative of argument 1 by argument 2 (modes 2, 1, 0),
// 4 ratio, 5 cut, 6 sum, 7 unit conversion by vConv, 8 running integral,
// 9 rate from cut, 10 product.
//
// A fault inside a kernel is logged as
// "... In [mxAutomaticDQ (Code) (<kernel>)] " and the kernel goes on with the
// next cell: it never stops half way because of one bad cell.
#pragma once

#include <cstdint>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/variant.h"

namespace vndata {

enum ADQRule : int32_t {
  kADQDerivativeMode2 = 1,
  kADQDerivativeMode1 = 2,
  kADQDerivativeMode0 = 3,
  kADQRatio = 4,
  kADQCut = 5,
  kADQAddition = 6,
  kADQUnitConvert = 7,
  kADQAccumulate = 8,
  kADQRateFromCut = 9,
  kADQMultiplication = 10,
};

class VNDATA_API mxAutomaticDQ {
 public:
  // Applies rule iRule with the null rule. qOK is false only for an argument
  // block without two dimensions and when every row is null (sOut is then
  // all sNull); otherwise true whatever the kernel reported, deliberately.
  void CalculateADQWithNull(int32_t iRule, const Array2<float>& sArgs, bool qUseNull, float sNull,
                            Array<float>& sOut, bool& qOK, const Variant& vConv = Variant()) const;
  // Converts sValues(1..nValues) in place by one factor (multiply) or two
  // (multiply and add, rounded once). A second factor of 0 counts as absent,
  // a first factor of 1 as no multiplication. With qUseNull, null cells are
  // left alone. nValues is cut down to the array when it runs past it.
  void ConvertUnitsWithNull(bool qUseNull, float sNull, const Array<float>& sFactors,
                            int32_t nFactors, Array<float>& sValues, int32_t& nValues,
                            bool& qOK) const;
  // Sum of all arguments, added in order from 0.0.
  void AdditionDQ(const Array2<float>& sArgs, Array<float>& sOut, bool& qOK) const;
  // Argument 1 over the sum of all arguments; sNull where the sum is 0.
  void CutDQ(const Array2<float>& sArgs, float sNull, Array<float>& sOut, bool& qOK) const;
  // Argument 1 over argument 2 (exactly two arguments); sNull where it is 0.
  void RatioDQ(const Array2<float>& sArgs, float sNull, Array<float>& sOut, bool& qOK) const;
  // dY/dX through a Differentiator of the given mode (0, 1 or 2).
  void DerivativeDQ(const Array<float>& sY, const Array<float>& sX, Array<float>& sOut, bool& qOK,
                    int32_t iMode) const;
  // Argument 1 converted by vConv: empty, one number c, or an array (c) or
  // (c1, c2) meaning c1 * x + c2.
  void UnitConvertDQ(const Array2<float>& sArgs, const Variant& vConv, Array<float>& sOut,
                     bool& qOK) const;
  // Running integral of argument 1 over argument 2 by the rectangle rule
  // with the rate at the step's end; starts at 0.
  void AccumulateDQ(const Array2<float>& sArgs, Array<float>& sOut, bool& qOK) const;
  // -a * b / (b - 1) for rate a and cut b; sNull where a is 0. A cut of
  // exactly 1 is a logged division by zero and leaves its cell 0.
  void RateFromCutDQ(const Array2<float>& sArgs, float sNull, Array<float>& sOut, bool& qOK) const;
  // Product of all arguments, multiplied in order from 1.0.
  void MultiplicationDQ(const Array2<float>& sArgs, Array<float>& sOut, bool& qOK) const;
};

}  // namespace vndata
