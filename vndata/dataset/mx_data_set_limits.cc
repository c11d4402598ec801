// mxDataSet: the smallest and largest value of each column.
//
// The rule everywhere: a value replaces the minimum only when it is below it
// and the maximum only when it is above it (an equal value, and a NaN, change
// nothing); with UseNullVal on, values equal to NullValue taken as a 32-bit
// float are skipped.
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// Columns between two yields to the host during a limits pass.
constexpr int32_t kYieldEvery = 1024;

// Folds n values into mn and mx.
void MinMaxAll(const float* s, int64_t n, float& mn, float& mx) {
  int64_t i = 0;
#if defined(__SSE2__)
  if (n >= 8) {
    // minps(a, b) is "a < b ? a : b" and maxps "a > b ? a : b": exactly the
    // scalar rule, lane by lane, NaNs never replacing.
    __m128 mn0 = _mm_set1_ps(mn), mn1 = mn0, mx0 = _mm_set1_ps(mx), mx1 = mx0;
    for (; i + 8 <= n; i += 8) {
      const __m128 a = _mm_loadu_ps(s + i), b = _mm_loadu_ps(s + i + 4);
      mn0 = _mm_min_ps(a, mn0);
      mn1 = _mm_min_ps(b, mn1);
      mx0 = _mm_max_ps(a, mx0);
      mx1 = _mm_max_ps(b, mx1);
    }
    alignas(16) float lo[8], hi[8];
    _mm_store_ps(lo, mn0);
    _mm_store_ps(lo + 4, mn1);
    _mm_store_ps(hi, mx0);
    _mm_store_ps(hi + 4, mx1);
    for (int k = 0; k < 8; ++k) {
      if (lo[k] < mn) mn = lo[k];
      if (hi[k] > mx) mx = hi[k];
    }
  }
#endif
  for (; i < n; ++i) {
    const float v = s[i];
    if (v < mn) mn = v;
    if (v > mx) mx = v;
  }
}

// The same, skipping values equal to sNull.
void MinMaxSkip(const float* s, int64_t n, float sNull, float& mn, float& mx) {
  int64_t i = 0;
#if defined(__SSE2__)
  if (n >= 4) {
    // A skipped value is replaced by the seed of each side, which never
    // displaces a limit (the limits only move inwards from the seeds).
    const __m128 vNull = _mm_set1_ps(sNull);
    const __m128 seedMin = _mm_set1_ps(kLimitSeedMin), seedMax = _mm_set1_ps(kLimitSeedMax);
    __m128 vmn = _mm_set1_ps(mn), vmx = _mm_set1_ps(mx);
    for (; i + 4 <= n; i += 4) {
      const __m128 v = _mm_loadu_ps(s + i);
      const __m128 keep = _mm_cmpneq_ps(v, vNull);
      const __m128 forMin = _mm_or_ps(_mm_and_ps(keep, v), _mm_andnot_ps(keep, seedMin));
      const __m128 forMax = _mm_or_ps(_mm_and_ps(keep, v), _mm_andnot_ps(keep, seedMax));
      vmn = _mm_min_ps(forMin, vmn);
      vmx = _mm_max_ps(forMax, vmx);
    }
    alignas(16) float lo[4], hi[4];
    _mm_store_ps(lo, vmn);
    _mm_store_ps(hi, vmx);
    for (int k = 0; k < 4; ++k) {
      if (lo[k] < mn) mn = lo[k];
      if (hi[k] > mx) mx = hi[k];
    }
  }
#endif
  for (; i < n; ++i) {
    const float v = s[i];
    if (v == sNull) continue;
    if (v < mn) mn = v;
    if (v > mx) mx = v;
  }
}

}  // namespace

void mxDataSet::VectorMinMaxCore(const float* s, int64_t n, float& dMin, float& dMax) const {
  if (plot_.iUseNullVal == 0)
    MinMaxAll(s, n, dMin, dMax);
  else
    MinMaxSkip(s, n, static_cast<float>(plot_.dNullValue), dMin, dMax);
}

void mxDataSet::VectorMinMax(const Array<float>& sVals, float& dMinVal, float& dMaxVal, bool& qOK) const {
  qOK = false;
  dMinVal = kLimitSeedMin;
  dMaxVal = kLimitSeedMax;
  RunGuarded("mxDataSet  (VectorMinMax)", [&] {
    const float* s = &sVals(sVals.LBound());
    VectorMinMaxCore(s, static_cast<int64_t>(sVals.size()), dMinVal, dMaxVal);
    qOK = true;
  });
}

bool mxDataSet::GetColMinMax(int32_t ThisCol, float& dMinVal, float& dMaxVal, bool qReCalc) {
  bool qResult = false;
  RunGuarded("mxDataSet  (GetColMinMax)", [&] {
    if (!ValidColumnIndex(ThisCol)) return;
    // A column on disk is loaded first.
    if (fetch_.qFetchOnDemand && !headers_.columns(ThisCol).qLoaded) {
      bool qLoad = false;
      LoadFODVector(ThisCol, qLoad);
    }
    const COLUMNDATA& col = headers_.columns(ThisCol);
    if (col.qActive) {
      if (!qReCalc && !fetch_.qTableMode && col.qLimitsValid) {
        dMinVal = col.dMinVal;
        dMaxVal = col.dMaxVal;
        qResult = true;
        return;
      }
      CalcMinMax(ThisCol, dMinVal, dMaxVal, qResult);
      return;
    }
    // A column not in use is answered by the call without recalculation,
    // which gives false.
    if (qReCalc) qResult = GetColMinMax(ThisCol, dMinVal, dMaxVal);
  });
  return qResult;
}

bool mxDataSet::SetColMinMax(int32_t ThisCol, float dMinVal, float dMaxVal) {
  if (!ValidColumnIndex(ThisCol)) return false;
  COLUMNDATA& col = headers_.columns(ThisCol);
  col.dMinVal = dMinVal;
  col.dMaxVal = dMaxVal;
  col.qLimitsValid = true;
  return true;
}

void mxDataSet::CalcMinMax(int32_t iColumn, float& dMinVal, float& dMaxVal, bool& qOK) {
  qOK = false;
  dMinVal = kLimitSeedMin;
  dMaxVal = kLimitSeedMax;
  RunGuarded("mxDataSet  (CalcMinMax)", [&] {
    if (!ValidColumn(iColumn, true)) return;
    // A data set holding a tabulated function takes the values from the
    // table's column view, a column on disk from its loaded record, and
    // otherwise the values are the column's rows.
    float mn = kLimitSeedMin, mx = kLimitSeedMax;
    if (fetch_.qTableMode) {
      Array<float> values;
      if (!TableColumn(iColumn, values)) return;
      VectorMinMaxCore(values.data(), static_cast<int64_t>(values.size()), mn, mx);
    } else if (fetch_.qFetchOnDemand) {
      int32_t n = 0;
      const float* v = HeldValues(iColumn, n);
      if (v == nullptr) return;
      VectorMinMaxCore(v, n, mn, mx);
    } else {
      Array<float> values;
      if (!GetValues(iColumn, values)) return;
      VectorMinMaxCore(values.data(), static_cast<int64_t>(values.size()), mn, mx);
    }
    COLUMNDATA& col = headers_.columns(iColumn);
    col.dMaxVal = mx;
    col.dMinVal = mn;
    col.qLimitsValid = true;
    dMinVal = mn;
    dMaxVal = mx;
    qOK = true;
  });
}

bool mxDataSet::LimitsOfColumns(int32_t iFirst, int32_t iLast) {
  const float sNull = static_cast<float>(plot_.dNullValue);
  bool qCancelled = false;
  auto store = [&](int32_t c, float mn, float mx) {
    COLUMNDATA& col = headers_.columns(c);
    col.dMinVal = mn;
    col.dMaxVal = mx;
    col.qLimitsValid = true;
    if (c % kYieldEvery == 0 && YieldToHost()) qCancelled = true;
  };
  // Three copies of one loop, so that the null and buffer tests stand outside
  // the inner loop.
  if (plot_.iUseNullVal == 0) {
    for (int32_t c = iFirst; c <= iLast && !qCancelled; ++c) {
      float mn = kLimitSeedMin, mx = kLimitSeedMax;
      for (int32_t b = 1; b <= rows_.nBuffers; ++b) {
        const DATABUFFER& buf = rows_.buffers(b);
        if (buf.nRowsInUse > 0) MinMaxAll(buf.values.Column(c), buf.nRowsInUse, mn, mx);
      }
      store(c, mn, mx);
    }
  } else if (rows_.nBuffers == 1) {
    const DATABUFFER& buf = rows_.buffers(1);
    for (int32_t c = iFirst; c <= iLast && !qCancelled; ++c) {
      float mn = kLimitSeedMin, mx = kLimitSeedMax;
      if (buf.nRowsInUse > 0) MinMaxSkip(buf.values.Column(c), buf.nRowsInUse, sNull, mn, mx);
      store(c, mn, mx);
    }
  } else {
    for (int32_t c = iFirst; c <= iLast && !qCancelled; ++c) {
      float mn = kLimitSeedMin, mx = kLimitSeedMax;
      for (int32_t b = 1; b <= rows_.nBuffers; ++b) {
        const DATABUFFER& buf = rows_.buffers(b);
        if (buf.nRowsInUse > 0) MinMaxSkip(buf.values.Column(c), buf.nRowsInUse, sNull, mn, mx);
      }
      store(c, mn, mx);
    }
  }
  return !qCancelled;
}

bool mxDataSet::InitialiseColumnLimitsCore() {
  // Columns on disk have limits of their own pass, over the loaded ones.
  if (fetch_.qFetchOnDemand) {
    bool qOK = false;
    InitialiseColumnLimitsFOD(qOK);
    return qOK;
  }
  const bool qDone = LimitsOfColumns(1, rows_.buffers(1).values.UBound(2));
  qIsDirty_ = true;
  return qDone;
}

void mxDataSet::InitialiseColumnLimits(bool& qOK) {
  qOK = false;
  // A pass cancelled by the host stops at its next yield and reports false.
  RunGuarded("mxDataSet  (InitialiseColumnLimits)", [&] { qOK = InitialiseColumnLimitsCore(); });
}

void mxDataSet::UpDateColumnLimits(int32_t iColumn, float dVal) {
  RunGuarded("mxDataSet  (UpDateColumnLimits)", [&] {
    if (plot_.iUseNullVal != 0 && dVal == static_cast<float>(plot_.dNullValue)) return;
    COLUMNDATA& col = headers_.columns(iColumn);
    // Only one side moves per value: a first value into a column holding the
    // seeds sets the minimum alone.
    if (dVal < col.dMinVal) {
      col.dMinVal = dVal;
      col.qLimitsValid = true;
    } else if (dVal > col.dMaxVal) {
      col.dMaxVal = dVal;
      col.qLimitsValid = true;
    }
  });
}

}  // namespace vndata
