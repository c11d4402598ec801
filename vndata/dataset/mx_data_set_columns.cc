// mxDataSet: adding columns, and reading and writing columns, rows and cells.
#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// Makes out 1..n, keeping its allocation when it already has those bounds.
template <class T>
void SizeOneBased(Array<T>& out, int32_t n) {
  if (out.IsAllocated() && out.LBound() == 1 && out.UBound() == n) return;
  out.ReDim(1, n);
}

int16_t CreationTypeOf(int32_t iCreationType) {
  if (iCreationType > std::numeric_limits<int16_t>::max() ||
      iCreationType < std::numeric_limits<int16_t>::min())
    RaiseFault(kFaultOverflow);
  return static_cast<int16_t>(iCreationType);
}

}  // namespace

// ---- Adding columns -------------------------------------------------------------------------

void mxDataSet::AddDataColumn(const Array<float>& sVals, const Array<std::string>& zAttributes,
                              bool& qOK, int32_t iCreationType) {
  // Columns held outside the buffers (fetched from disk) take the light form.
  AddColumn(sVals, zAttributes, qOK, iCreationType, fetch_.qFetchOnDemand);
}

void mxDataSet::AddColumn(const Array<float>& sVals, const Array<std::string>& zAttributes, bool& qOK,
                          int32_t iCreationType) {
  AddColumn(sVals, zAttributes, qOK, iCreationType, false);
}

void mxDataSet::AddColumn(const Array<float>& sVals, const Array<std::string>& zAttributes, bool& qOK,
                          int32_t iCreationType, bool qRecordsOnly) {
  qOK = false;
  RunGuarded("mxDataSet  (AddColumn)", [&] {
    const int16_t iType = CreationTypeOf(iCreationType);
    const int32_t c = headers_.nCols + 1;
    if (qRecordsOnly) {
      ResizeColumnRecords(c, false);
      qInitialised_ = true;
      COLUMNDATA& col = headers_.columns(c);
      col.iCreationType = iType;
      bool qStep = false;
      SetAttributes(c, zAttributes, qStep);
      if (!qStep) return;
      col.values = sVals;
      col.qLoaded = true;
      // A column added beside columns on disk is in memory from the start;
      // its entry of the location table gives its count.
      if (FODPointer* e = FODEntry(c)) e->nValues = static_cast<int32_t>(sVals.size());
      float mn, mx;
      VectorMinMax(col.values, mn, mx, qStep);
      if (qStep) {
        col.dMinVal = mn;
        col.dMaxVal = mx;
        col.qLimitsValid = true;
      }
      qIsDirty_ = true;
      qOK = true;
      return;
    }
    // A column must be contiguous over all rows, so appended buffers are
    // merged back into one first.
    if (rows_.nBuffers > 1) MergeArraysCore();
    const int32_t r = sVals.UBound();
    DATABUFFER& b1 = rows_.buffers(1);
    if (c == 1) {
      DimensionBufferArray(b1, true, r, 1, r);
      ResizeColumnRecords(1, false);
    } else {
      ResizeColumnRecords(c, false);
      ArrayTools::Resize2(b1.values, b1.nCapacity, c);
      b1.nColumns = c;
    }
    if (r > b1.nRowsInUse) {
      DimensionBufferArray(b1, true, r, b1.nColumns, r);
      qIsDirty_ = true;
    }
    headers_.columns(c).iCreationType = iType;
    bool qStep = false;
    SetAttributes(c, zAttributes, qStep);
    if (!qStep) return;
    SetValues(c, sVals, qStep);
    if (!qStep) return;
    qIsDirty_ = true;
    qOK = true;
  });
}

// ---- Columns ---------------------------------------------------------------------------------

bool mxDataSet::GetValues(int32_t ThisCol, Array<float>& ThisColumnValues) {
  bool qResult = false;
  RunGuarded("mxDataSet  (GetValues)", [&] {
    if (fetch_.qFetchOnDemand) {
      qResult = GetFODValues(ThisCol, ThisColumnValues);
      return;
    }
    if (!ValidColumn(ThisCol, true)) return;
    const int32_t n = get_NumRows();
    if (n < 1) return;
    SizeOneBased(ThisColumnValues, n);
    float* out = ThisColumnValues.data();
    for (int32_t b = 1; b <= rows_.nBuffers; ++b) {
      const DATABUFFER& buf = rows_.buffers(b);
      if (buf.nRowsInUse < 1) continue;
      std::memcpy(out, buf.values.Column(ThisCol), sizeof(float) * static_cast<std::size_t>(buf.nRowsInUse));
      out += buf.nRowsInUse;
    }
    qResult = true;
  });
  return qResult;
}

bool mxDataSet::GetValue(int32_t Row, int32_t Column, float& dVal) {
  bool qResult = false;
  RunGuarded("mxDataSet  (GetValue)", [&] {
    if (fetch_.qFetchOnDemand) {
      GetFODValue(Row, Column, dVal, qResult);
      return;
    }
    int32_t iBuffer = -1, iRowInBuffer = -1;
    bool qFound = false;
    TranslateRowToBufferAndRow(Row, iBuffer, iRowInBuffer, qFound);
    if (iRowInBuffer < 1) {
      qResult = plot_.dNullValue != 0.0;
      return;
    }
    // The buffer found is read at the row as given, not the translated one.
    qResult = GetValueBuffer(iBuffer, Row, Column, dVal);
  });
  return qResult;
}

bool mxDataSet::GetValueBuffer(int32_t iBuffer, int32_t Row, int32_t Column, float& dVal) {
  bool qResult = false;
  RunGuarded("mxDataSet  (GetValueBuffer)", [&] {
    if (Row == 0 || Column == 0 || !ValidColumn(Column, true)) return;
    dVal = rows_.buffers(iBuffer).values(Row, Column);
    qResult = true;
  });
  return qResult;
}

void mxDataSet::SetValue(int32_t Row, int32_t Column, float dVal) {
  RunGuarded("mxDataSet  (SetValue)", [&] {
    // A value of a column on disk is written into its loaded values;
    // otherwise the write goes to buffer 1.
    if (fetch_.qFetchOnDemand) {
      SetValuesFOD(Row, Column, dVal);
      return;
    }
    SetValueBuffer(1, Row, Column, dVal);
    UpDateColumnLimits(Column, dVal);
    qIsDirty_ = true;
  });
}

void mxDataSet::SetValueBuffer(int32_t iBuffer, int32_t Row, int32_t Column, float dVal) {
  RunGuarded("mxDataSet  (SetValueBuffer)", [&] {
    if (Row == 0 || Column == 0) return;
    rows_.buffers(iBuffer).values(Row, Column) = dVal;
  });
}

void mxDataSet::SetValues(int32_t Index, const Array<float>& sVals, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetValues)", [&] {
    bool qStep = false;
    SetValuesOnly(Index, sVals, qStep);
    if (!qStep) return;
    if (ValidColumn(Index, true)) {
      float mn, mx;
      CalcMinMax(Index, mn, mx, qStep);
    }
    qOK = true;
  });
}

void mxDataSet::SetColumnValues(int32_t Index, const Array<float>& sVals, bool& qOK) {
  SetValues(Index, sVals, qOK);
}

void mxDataSet::SetValuesOnly(int32_t Index, const Array<float>& sVals, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetValuesOnly)", [&] {
    if (rows_.nBuffers < 2) {
      SetValuesBuffer(1, Index, sVals, qOK, false);
      return;
    }
    // Each buffer takes the part of the values that fits its rows in use.
    int64_t from = 0;
    const int64_t nTotal = sVals.IsAllocated() ? static_cast<int64_t>(sVals.size()) : 0;
    const float* src = sVals.data();
    for (int32_t b = 1; b <= rows_.nBuffers && from < nTotal; ++b) {
      const int32_t n = static_cast<int32_t>(std::min<int64_t>(rows_.buffers(b).nRowsInUse, nTotal - from));
      if (n < 1) continue;
      SetValuesBufferCore(b, Index, src + from, n, false);
      from += n;
    }
    qOK = true;
  });
}

void mxDataSet::SetValuesBuffer(int32_t iBuffer, int32_t Index, const Array<float>& sVals, bool& qOK,
                                bool qUpdateLimits) {
  qOK = false;
  RunGuarded("mxDataSet  (SetValuesBuffer)", [&] {
    if (!ValidColumn(Index, true)) {
      qOK = true;
      return;
    }
    const int32_t n = sVals.UBound();
    SetValuesBufferCore(iBuffer, Index, &sVals(1), n, qUpdateLimits);
    qOK = true;
  });
}

void mxDataSet::SetValuesBufferCore(int32_t iBuffer, int32_t Index, const float* sVals, int32_t nVals,
                                    bool qUpdateLimits) {
  DATABUFFER& buf = rows_.buffers(iBuffer);
  // The values must fit the buffer before anything is written.
  if (nVals > 0) (void)buf.values(nVals, Index);
  buf.nRowsInUse = nVals;
  if (nVals < 1) return;
  std::memcpy(buf.values.Column(Index), sVals, sizeof(float) * static_cast<std::size_t>(nVals));
  if (qUpdateLimits) {
    float mn = kLimitSeedMin, mx = kLimitSeedMax;
    VectorMinMaxCore(sVals, nVals, mn, mx);
    COLUMNDATA& col = headers_.columns(Index);
    col.dMinVal = mn;
    col.dMaxVal = mx;
    col.qLimitsValid = true;
  }
}

// ---- Rows ---------------------------------------------------------------------------------------

bool mxDataSet::GetRowValuesBuffer(int32_t iBuffer, int32_t iRowInBuffer, float* sRow) const {
  const DATABUFFER& buf = rows_.buffers(iBuffer);
  if (headers_.nCols < 1) return false;
  (void)buf.values(iRowInBuffer, headers_.nCols);
  const float* base = &buf.values(iRowInBuffer, 1);
  const std::size_t stride = buf.values.Rows();
  for (int32_t j = 0; j < headers_.nCols; ++j) sRow[j] = base[j * stride];
  return true;
}

namespace {
// The buffer and row in it of a data set row, walking the rows in use of each
// buffer in order; false when the row lies outside them.
template <class Buffers>
bool LocateRow(const Buffers& buffers, int32_t nBuffers, int32_t iRow, int32_t& iBuffer,
               int32_t& iRowInBuffer) {
  if (iRow < 1) return false;
  int64_t before = 0;
  for (int32_t b = 1; b <= nBuffers; ++b) {
    const int32_t n = buffers(b).nRowsInUse;
    if (iRow <= before + n) {
      iBuffer = b;
      iRowInBuffer = static_cast<int32_t>(iRow - before);
      return true;
    }
    before += n;
  }
  return false;
}
}  // namespace

bool mxDataSet::GetRowValues(int32_t iRow, Array<float>& sVals) {
  bool qResult = false;
  RunGuarded("mxDataSet  (GetRowValues)", [&] {
    if (fetch_.qFetchOnDemand) {
      GetRowValuesFOD(iRow, sVals, qResult);
      return;
    }
    int32_t b = 0, r = 0;
    if (headers_.nCols < 1 || !LocateRow(rows_.buffers, rows_.nBuffers, iRow, b, r)) return;
    SizeOneBased(sVals, headers_.nCols);
    qResult = GetRowValuesBuffer(b, r, sVals.data());
  });
  return qResult;
}

bool mxDataSet::GetRowValuesMulti(int32_t iRowFirst, int32_t iRowLast, Array2<float>& sVals) {
  bool qResult = false;
  RunGuarded("mxDataSet  (GetRowValuesMulti)", [&] {
    if (fetch_.qFetchOnDemand) {
      int32_t iRow1 = iRowFirst, iRow2 = iRowLast;
      GetMultipleRowValuesFOD(iRow1, iRow2, sVals, qResult);
      return;
    }
    const int32_t n = iRowLast - iRowFirst + 1;
    if (n < 1 || headers_.nCols < 1) return;
    Array2<float> out(1, n, 1, headers_.nCols);
    std::vector<float> row(static_cast<std::size_t>(headers_.nCols));
    for (int32_t i = 1; i <= n; ++i) {
      int32_t b = 0, r = 0;
      if (!LocateRow(rows_.buffers, rows_.nBuffers, iRowFirst + i - 1, b, r)) return;
      GetRowValuesBuffer(b, r, row.data());
      for (int32_t j = 1; j <= headers_.nCols; ++j) out(i, j) = row[static_cast<std::size_t>(j - 1)];
    }
    sVals.Swap(out);
    qResult = true;
  });
  return qResult;
}

void mxDataSet::GetMaskedValues(int32_t iColumn, const Array<bool>& qMask, Array<float>& sVals,
                                int32_t& nVals, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (GetMaskedValues)", [&] {
    Array<float> all;
    if (!GetValues(iColumn, all)) return;
    const int32_t nRows = all.UBound();
    int32_t n = 0;
    for (int32_t i = 1; i <= nRows; ++i)
      if (qMask.InBounds(i) && qMask(i)) ++n;
    if (n > 0) {
      Array<float> out(1, n);
      int32_t k = 0;
      for (int32_t i = 1; i <= nRows; ++i)
        if (qMask.InBounds(i) && qMask(i)) out(++k) = all(i);
      sVals.Swap(out);
    }
    nVals = n;
    qOK = true;
  });
}

// ---- Addresses ------------------------------------------------------------------------------------

std::intptr_t mxDataSet::ColumnAddress(int32_t ThisCol, int32_t ThisRow) {
  if (!ValidColumnIndex(ThisCol)) return 0;
  if (rows_.nBuffers > 1) {
    bool qMerged = false;
    MergeArrays(qMerged);
    if (!qMerged) return 0;
  }
  if (fetch_.qFetchOnDemand) {
    // A column on disk is loaded first and gives the address of its own
    // values.
    if (!headers_.columns(ThisCol).qLoaded) {
      bool qOK = false;
      LoadFODVector(ThisCol, qOK);
      if (!qOK) return 0;
    }
    int32_t n = 0;
    const float* v = HeldValues(ThisCol, n);
    if (v == nullptr || ThisRow < 1 || ThisRow > n) return 0;
    return reinterpret_cast<std::intptr_t>(v + (ThisRow - 1));
  }
  if (!headers_.columns(ThisCol).qActive) return 0;
  return reinterpret_cast<std::intptr_t>(&rows_.buffers(1).values(ThisRow, ThisCol));
}

std::intptr_t mxDataSet::ValuesPtr(int32_t ThisCol) {
  std::intptr_t iPtr = 0;
  RunGuarded("mxDataSet (Code) (ValuesPtr)", [&] { iPtr = ColumnAddress(ThisCol, 1); });
  return iPtr;
}

std::intptr_t mxDataSet::ValuesRowPtr(int32_t ThisCol, int32_t ThisRow) {
  std::intptr_t iPtr = 0;
  RunGuarded("mxDataSet (Code) (ValuesRowPtr)", [&] { iPtr = ColumnAddress(ThisCol, ThisRow); });
  return iPtr;
}

// ---- Per-column flags -------------------------------------------------------------------------------

int16_t mxDataSet::GetCreationType(int32_t iColumn) const {
  return ValidColumnIndex(iColumn) ? headers_.columns(iColumn).iCreationType : 0;
}

void mxDataSet::SetCreationType(int32_t iColumn, int16_t iCreationType) {
  if (ValidColumnIndex(iColumn)) headers_.columns(iColumn).iCreationType = iCreationType;
}

bool mxDataSet::get_qLoaded(int32_t iVector) const {
  return ValidColumnIndex(iVector) && headers_.columns(iVector).qLoaded;
}

void mxDataSet::let_qLoaded(int32_t iVector, bool qLoaded) {
  if (ValidColumnIndex(iVector)) headers_.columns(iVector).qLoaded = qLoaded;
}

}  // namespace vndata
