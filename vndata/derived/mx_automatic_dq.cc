#include "vndata/derived/mx_automatic_dq.h"

#include <cmath>
#include <string>
#include <vector>

#include "vndata/derived/internal/adq_row_kernels.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/differentiator.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {


// Dimensions out 1..n. A vector that already has exactly those bounds is
// reused, which is indistinguishable from a fresh one for a kernel that
// writes every cell.
void DimensionOut(Array<float>& out, int32_t n) {
  if (out.IsAllocated() && out.LBound() == 1 && out.UBound() == n) return;
  out.ReDim(1, n);
}

// The columns of an argument block as raw pointers.
std::vector<const float*> Columns(const Array2<float>& sArgs) {
  std::vector<const float*> c;
  for (int32_t k = sArgs.LBound(2); k <= sArgs.UBound(2); ++k) c.push_back(sArgs.Column(k));
  return c;
}

// Whether a rule's kernel is one of the per-row rules that cannot fault and
// accepts the block's shape; those run fused with the null scan.
bool FusableRule(int32_t iRule, int32_t m) {
  switch (iRule) {
    case kADQAddition:
    case kADQCut:
    case kADQMultiplication: return true;
    case kADQRatio: return m == 2;
    default: return false;
  }
}

// The kernel of a fusable rule over rows [b, e). Returns whether any argument
// in those rows equals sNull: two-argument rules find out while computing,
// others by a scan of the rows just computed.
bool FusedRows(int32_t iRule, const std::vector<const float*>& c, float sNull, float* out,
               std::size_t b, std::size_t e) {
  int32_t m = static_cast<int32_t>(c.size());
  if (m == 2) {
    switch (iRule) {
      case kADQAddition: return adq::Apply2<true>(c[0], c[1], out, b, e, sNull, adq::Add2{});
      case kADQMultiplication: return adq::Apply2<true>(c[0], c[1], out, b, e, sNull, adq::Mul2{});
      case kADQCut: return adq::Apply2<true>(c[0], c[1], out, b, e, sNull, adq::Cut2{sNull});
      case kADQRatio: return adq::Apply2<true>(c[0], c[1], out, b, e, sNull, adq::Ratio2{sNull});
      default: return false;
    }
  }
  switch (iRule) {
    case kADQAddition: adq::AddRows(c.data(), m, out, b, e); break;
    case kADQMultiplication: adq::MulRows(c.data(), m, out, b, e); break;
    case kADQCut: adq::CutRows(c.data(), m, sNull, out, b, e); break;
    default: break;
  }
  bool any = false;
  for (const float* p : c) any = any || adq::AnyEqual(p, sNull, b, e);
  return any;
}

// A fusable rule with the null rule on, in one pass over the block: each
// chunk of rows is computed and then its null rows are overwritten with
// sNull. For these per-row kernels that equals computing on the compact
// block of valid rows and spreading the result back, without the copies.
// A chunk without a null costs one extra scan of data already in cache.
// Returns the number of valid rows.
std::size_t ComputeFusedWithNulls(int32_t iRule, const Array2<float>& sArgs, float sNull,
                                  Array<float>& sOut) {
  std::size_t n = sArgs.Rows();
  std::vector<const float*> c = Columns(sArgs);
  DimensionOut(sOut, static_cast<int32_t>(n));
  float* out = sOut.data();
  std::size_t nValid = 0;
  for (std::size_t b = 0; b < n; b += adq::kChunk) {
    std::size_t e = b + adq::kChunk < n ? b + adq::kChunk : n;
    nValid += e - b;
    if (FusedRows(iRule, c, sNull, out, b, e))
      nValid -= adq::MaskNullRows(c.data(), static_cast<int32_t>(c.size()), sNull, out, b, e);
  }
  return nValid;
}

// InitSingleArray(n, true, value): out 1..n, every cell value. A vector that
// already has those bounds is refilled rather than reallocated.
void FillOut(Array<float>& out, int32_t n, float value) {
  if (out.IsAllocated() && out.LBound() == 1 && out.UBound() == n)
    out.Fill(value);
  else
    SharedArrayTools().Size(out, n, value);
}

// 1-based numbers of the rows in which no argument equals sNull.
std::vector<int32_t> ValidRows(const Array2<float>& sArgs, float sNull) {
  std::size_t n = sArgs.Rows();
  std::vector<const float*> c = Columns(sArgs);
  std::vector<int32_t> valid;
  valid.reserve(n);
  for (std::size_t i = 0; i < n; ++i) {
    bool ok = true;
    for (const float* p : c)
      if (p[i] == sNull) {
        ok = false;
        break;
      }
    if (ok) valid.push_back(static_cast<int32_t>(i + 1));
  }
  return valid;
}

// The valid rows packed together: row i of the block is valid row i.
Array2<float> CompactBlock(const Array2<float>& sArgs, const std::vector<int32_t>& valid) {
  int32_t nValid = static_cast<int32_t>(valid.size());
  int32_t m = static_cast<int32_t>(sArgs.Cols());
  Array2<float> block(1, nValid, 1, m);
  for (int32_t k = 1; k <= m; ++k) {
    const float* src = sArgs.Column(k);
    float* dst = block.Column(k);
    for (int32_t i = 0; i < nValid; ++i) dst[i] = src[valid[static_cast<std::size_t>(i)] - 1];
  }
  return block;
}

// Copies column k of the block into a vector; a missing column is a logged
// fault and leaves v as it was.
void CopyColumn(const Array2<float>& sArgs, int32_t k, Array<float>& v) {
  RunGuarded("mxAutomaticDQ (Code) (CalculateADQWithNull)", [&] {
    const float* src = sArgs.Column(k);
    Array<float> t(1, static_cast<int32_t>(sArgs.Rows()));
    std::copy(src, src + sArgs.Rows(), t.data());
    v.Swap(t);
  });
}

}  // namespace

// Runs the kernel of iRule on args into out. Kernels report through their own
// flags, which the dispatcher does not look at.
static void Dispatch(const mxAutomaticDQ& adq, int32_t iRule, const Array2<float>& args,
                     float sNull, const Variant& vConv, Array<float>& out) {
  bool ok = false;
  switch (iRule) {
    case kADQDerivativeMode2:
    case kADQDerivativeMode1:
    case kADQDerivativeMode0: {
      Array<float> y, x;
      CopyColumn(args, 1, y);
      CopyColumn(args, 2, x);
      int32_t iMode = iRule == kADQDerivativeMode2 ? 2 : iRule == kADQDerivativeMode1 ? 1 : 0;
      adq.DerivativeDQ(y, x, out, ok, iMode);
      break;
    }
    case kADQRatio: adq.RatioDQ(args, sNull, out, ok); break;
    case kADQCut: adq.CutDQ(args, sNull, out, ok); break;
    case kADQAddition: adq.AdditionDQ(args, out, ok); break;
    case kADQUnitConvert: adq.UnitConvertDQ(args, vConv, out, ok); break;
    case kADQAccumulate: adq.AccumulateDQ(args, out, ok); break;
    case kADQRateFromCut: adq.RateFromCutDQ(args, sNull, out, ok); break;
    case kADQMultiplication: adq.MultiplicationDQ(args, out, ok); break;
    default: break;
  }
}

void mxAutomaticDQ::CalculateADQWithNull(int32_t iRule, const Array2<float>& sArgs, bool qUseNull,
                                         float sNull, Array<float>& sOut, bool& qOK,
                                         const Variant& vConv) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (CalculateADQWithNull)", [&] {
    if (!sArgs.IsAllocated()) return;
    int32_t n = sArgs.UBound(1);
    int32_t m = sArgs.UBound(2);
    if (qUseNull && FusableRule(iRule, m)) {
      // All rows null leaves every cell sNull, as the general path would.
      qOK = ComputeFusedWithNulls(iRule, sArgs, sNull, sOut) > 0;
      return;
    }
    std::vector<int32_t> valid;
    if (qUseNull) {
      valid = ValidRows(sArgs, sNull);
      // Nothing null: the rule is off for the rest of the call.
      if (static_cast<int32_t>(valid.size()) == n) qUseNull = false;
    }
    if (!qUseNull) {
      Dispatch(*this, iRule, sArgs, sNull, vConv, sOut);
      qOK = true;
      return;
    }
    if (valid.empty()) {
      FillOut(sOut, n, sNull);
      return;
    }
    Array2<float> block = CompactBlock(sArgs, valid);
    Array<float> temp;
    Dispatch(*this, iRule, block, sNull, vConv, temp);
    FillOut(sOut, n, sNull);
    int32_t nValid = static_cast<int32_t>(valid.size());
    // A kernel that refused leaves no result: its rows stay null.
    RunGuarded("mxAutomaticDQ (Code) (CalculateADQWithNull)", [&] {
      if (!temp.InBounds(1) || !temp.InBounds(nValid)) RaiseFault(kFaultSubscript);
      const float* t = &temp(1);
      float* out = sOut.data();
      for (int32_t i = 0; i < nValid; ++i) out[valid[static_cast<std::size_t>(i)] - 1] = t[i];
    });
    qOK = true;
  });
}

void mxAutomaticDQ::ConvertUnitsWithNull(bool qUseNull, float sNull, const Array<float>& sFactors,
                                         int32_t nFactors, Array<float>& sValues, int32_t& nValues,
                                         bool& qOK) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (ConvertUnitsWithNull)", [&] {
    if (nFactors > sFactors.UBound()) return;
    if (nValues > sValues.UBound()) nValues = sValues.UBound();
    float f1 = sFactors(1);
    float f2 = 0.0f;
    if (nFactors == 2) f2 = sFactors(2);
    int32_t iMode = nFactors;
    if (iMode == 2 && f2 == 0.0f) iMode = 1;
    if ((iMode == 1 && f1 != 1.0f) || iMode == 2) {
      float* v = nValues >= 1 ? &sValues(1) : nullptr;
      if (nValues >= 1) (void)sValues(nValues);
      for (int32_t i = 0; i < nValues; ++i) {
        if (qUseNull && v[i] == sNull) continue;
        if (iMode == 1)
          v[i] = f1 * v[i];
        else if (f1 == 1.0f)
          v[i] = f2 + v[i];
        else
          v[i] = std::fmaf(v[i], f1, f2);  // the exact product, one rounding
      }
    }
    qOK = true;
  });
}

void mxAutomaticDQ::AdditionDQ(const Array2<float>& sArgs, Array<float>& sOut, bool& qOK) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (AdditionDQ)", [&] {
    if (!sArgs.IsAllocated()) return;
    std::vector<const float*> c = Columns(sArgs);
    DimensionOut(sOut, sArgs.UBound(1));
    adq::AddRows(c.data(), static_cast<int32_t>(c.size()), sOut.data(), 0, sArgs.Rows());
    qOK = true;
  });
}

void mxAutomaticDQ::CutDQ(const Array2<float>& sArgs, float sNull, Array<float>& sOut,
                          bool& qOK) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (CutDQ)", [&] {
    if (!sArgs.IsAllocated()) return;
    std::vector<const float*> c = Columns(sArgs);
    DimensionOut(sOut, sArgs.UBound(1));
    adq::CutRows(c.data(), static_cast<int32_t>(c.size()), sNull, sOut.data(), 0, sArgs.Rows());
    qOK = true;
  });
}

void mxAutomaticDQ::RatioDQ(const Array2<float>& sArgs, float sNull, Array<float>& sOut,
                            bool& qOK) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (RatioDQ)", [&] {
    if (!sArgs.IsAllocated() || sArgs.UBound(2) != 2) return;
    DimensionOut(sOut, sArgs.UBound(1));
    adq::RatioRows(sArgs.Column(1), sArgs.Column(2), sNull, sOut.data(), 0, sArgs.Rows());
    qOK = true;
  });
}

void mxAutomaticDQ::DerivativeDQ(const Array<float>& sY, const Array<float>& sX, Array<float>& sOut,
                                 bool& qOK, int32_t iMode) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (DerivativeDQ)", [&] {
    auto diff = std::make_unique<Differentiator>();
    if (sY.UBound() != sX.UBound()) return;
    int32_t n = sY.UBound();
    Array<double> x(1, n), y(1, n), dydx(1, n);
    for (int32_t i = 1; i <= n; ++i) {
      x(i) = sX(i);
      y(i) = sY(i);
    }
    bool ok = false;
    switch (iMode) {
      case 0: diff->DifferentiateMode0(x, y, dydx, ok); break;
      case 1: diff->DifferentiateMode1(x, y, dydx, ok); break;
      case 2: diff->DifferentiateMode2(x, y, dydx, ok); break;
      default: break;
    }
    sOut.ReDim(1, n);
    for (int32_t i = 1; i <= n; ++i) sOut(i) = static_cast<float>(dydx(i));
    qOK = ok;
  });
}

namespace {

// Whether arithmetic with a value of this type runs wider than 32 bits: a
// 64-bit float, and what converts to one (32-bit integers, dates, texts).
bool IsWide(VarType t) {
  switch (t) {
    case VarType::Double:
    case VarType::Long:
    case VarType::Date:
    case VarType::String: return true;
    default: return false;
  }
}

// One conversion factor with the width its arithmetic takes.
struct Factor {
  double value = 0.0;
  bool wide = false;
};

Factor ScalarFactor(const Variant& v) { return Factor{v.ToDouble(), IsWide(v.Type())}; }

// Upper bound of the array that vConv holds.
int32_t FactorUBound(const Variant& vConv) {
  if (auto a = vConv.GetArray<Variant>()) return a->UBound();
  if (auto a = vConv.GetArray<double>()) return a->UBound();
  if (auto a = vConv.GetArray<float>()) return a->UBound();
  if (auto a = vConv.GetArray<int32_t>()) return a->UBound();
  if (auto a = vConv.GetArray<int16_t>()) return a->UBound();
  if (auto a = vConv.GetArray<uint8_t>()) return a->UBound();
  if (auto a = vConv.GetArray<std::string>()) return a->UBound();
  RaiseFault(kFaultTypeMismatch);
}

// Element i of the array that vConv holds.
Factor FactorAt(const Variant& vConv, int32_t i) {
  if (auto a = vConv.GetArray<Variant>()) return ScalarFactor((*a)(i));
  if (auto a = vConv.GetArray<double>()) return Factor{(*a)(i), true};
  if (auto a = vConv.GetArray<float>()) return Factor{(*a)(i), false};
  if (auto a = vConv.GetArray<int32_t>()) return Factor{static_cast<double>((*a)(i)), true};
  if (auto a = vConv.GetArray<int16_t>()) return Factor{static_cast<double>((*a)(i)), false};
  if (auto a = vConv.GetArray<uint8_t>()) return Factor{static_cast<double>((*a)(i)), false};
  if (auto a = vConv.GetArray<std::string>()) return ScalarFactor(Variant((*a)(i)));
  RaiseFault(kFaultTypeMismatch);
}

// out = c * x, or x where c is 1, each result rounded to 32 bits at the store.
void Scale(const float* x, float* out, std::size_t n, Factor c) {
  if (c.value == 1.0) {
    std::copy(x, x + n, out);
  } else if (c.wide) {
    for (std::size_t i = 0; i < n; ++i) out[i] = static_cast<float>(c.value * x[i]);
  } else {
    float cf = static_cast<float>(c.value);
    for (std::size_t i = 0; i < n; ++i) out[i] = cf * x[i];
  }
}

// out = c2 + x where c1 is 1, otherwise c2 + c1 * x.
void ScaleAndShift(const float* x, float* out, std::size_t n, Factor c1, Factor c2) {
  bool wide = c1.wide || c2.wide;
  if (wide) {
    for (std::size_t i = 0; i < n; ++i)
      out[i] = static_cast<float>(c1.value == 1.0 ? c2.value + x[i] : c2.value + c1.value * x[i]);
    return;
  }
  float f1 = static_cast<float>(c1.value), f2 = static_cast<float>(c2.value);
  for (std::size_t i = 0; i < n; ++i) out[i] = f1 == 1.0f ? f2 + x[i] : f2 + f1 * x[i];
}

}  // namespace

void mxAutomaticDQ::UnitConvertDQ(const Array2<float>& sArgs, const Variant& vConv,
                                  Array<float>& sOut, bool& qOK) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (UnitConvertDQ)", [&] {
    int32_t n = sArgs.UBound(1);
    const float* x = sArgs.Column(1);
    if (vConv.IsEmpty()) {
      // A straight copy into the vector as the caller dimensioned it. The
      // cells it lacks are skipped, the copy goes on, and the misfit is
      // traced once for the call rather than once a cell.
      bool qMissing = false;
      for (int32_t i = 1; i <= n; ++i) {
        if (sOut.InBounds(i))
          sOut(i) = x[i - 1];
        else
          qMissing = true;
      }
      if (qMissing) LogFault("mxAutomaticDQ (Code) (UnitConvertDQ)", RuntimeFault(kFaultSubscript));
      qOK = true;
      return;
    }
    sOut.ReDim(1, n);
    std::size_t rows = static_cast<std::size_t>(n);
    // A factor that cannot be read leaves the result zero; the call still
    // succeeds.
    RunGuarded("mxAutomaticDQ (Code) (UnitConvertDQ)", [&] {
      if (!vConv.IsArray()) {
        Scale(x, sOut.data(), rows, ScalarFactor(vConv));
        return;
      }
      int32_t hi = FactorUBound(vConv);
      if (hi == 1) {
        Scale(x, sOut.data(), rows, FactorAt(vConv, 1));
      } else if (hi == 2) {
        Factor c1 = FactorAt(vConv, 1), c2 = FactorAt(vConv, 2);
        if (c2.value == 0.0)
          Scale(x, sOut.data(), rows, c1);
        else
          ScaleAndShift(x, sOut.data(), rows, c1, c2);
      }
    });
    qOK = true;
  });
}

void mxAutomaticDQ::AccumulateDQ(const Array2<float>& sArgs, Array<float>& sOut, bool& qOK) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (AccumulateDQ)", [&] {
    if (!sArgs.IsAllocated() || sArgs.UBound(2) != 2) return;
    std::size_t n = sArgs.Rows();
    DimensionOut(sOut, sArgs.UBound(1));
    const float* a = sArgs.Column(1);
    const float* t = sArgs.Column(2);
    float* out = sOut.data();
    out[0] = 0.0f;
    for (std::size_t i = 1; i < n; ++i) out[i] = (t[i] - t[i - 1]) * a[i] + out[i - 1];
    qOK = true;
  });
}

void mxAutomaticDQ::RateFromCutDQ(const Array2<float>& sArgs, float sNull, Array<float>& sOut,
                                  bool& qOK) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (RateFromCutDQ)", [&] {
    if (!sArgs.IsAllocated() || sArgs.UBound(2) != 2) return;
    std::size_t n = sArgs.Rows();
    // Fresh zeros: a cell whose division fails keeps this value.
    sOut.ReDim(1, sArgs.UBound(1));
    const float* a = sArgs.Column(1);
    const float* b = sArgs.Column(2);
    float* out = sOut.data();
    for (std::size_t i = 0; i < n; ++i) {
      if (a[i] == 0.0f) {
        out[i] = sNull;
        continue;
      }
      float den = b[i] - 1.0f;
      if (den == 0.0f) {
        // No guard for a cut of 1: the fault is logged and the cell skipped.
        LogFault("mxAutomaticDQ (Code) (RateFromCutDQ)", RuntimeFault(kFaultDivisionByZero));
        continue;
      }
      out[i] = (-a[i] * b[i]) / den;
    }
    qOK = true;
  });
}

void mxAutomaticDQ::MultiplicationDQ(const Array2<float>& sArgs, Array<float>& sOut,
                                     bool& qOK) const {
  qOK = false;
  RunGuarded("mxAutomaticDQ (Code) (MultiplicationDQ)", [&] {
    if (!sArgs.IsAllocated()) return;
    std::vector<const float*> c = Columns(sArgs);
    DimensionOut(sOut, sArgs.UBound(1));
    adq::MulRows(c.data(), static_cast<int32_t>(c.size()), sOut.data(), 0, sArgs.Rows());
    qOK = true;
  });
}

}  // namespace vndata
