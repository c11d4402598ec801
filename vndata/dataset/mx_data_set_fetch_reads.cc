// mxDataSet, fetch on demand: the reads the storage operations turn to for
// columns on disk (whole columns, single values, rows, extracts, limits).
#include <algorithm>
#include <cstring>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// Makes out 1..n, keeping its allocation when it already has those bounds.
void SizeOneBased(Array<float>& out, int32_t n) {
  if (out.IsAllocated() && out.LBound() == 1 && out.UBound() == n) return;
  out.ReDim(1, n);
}

}  // namespace

bool mxDataSet::InColumnList(int32_t iCol) const {
  if (!lists_.qColumnList) return true;
  for (int32_t k = 1; k <= lists_.nColumnList; ++k)
    if (lists_.iColumnList(k) == iCol) return true;
  return false;
}

// ---- Whole columns ----------------------------------------------------------------------------

bool mxDataSet::FetchColumn(int32_t ThisCol, Array<float>& out, bool qRowList) {
  bool qResult = false;
  if (ValidColumnIndex(ThisCol) && fetch_.qFetchOnDemand && InColumnList(ThisCol)) {
    const bool qWasLoaded = headers_.columns(ThisCol).qLoaded;
    bool ok = qWasLoaded;
    if (!qWasLoaded) LoadFODVector(ThisCol, ok);
    int32_t n = 0;
    const float* v = ok ? HeldValues(ThisCol, n) : nullptr;
    bool qListFits = true;
    if (v != nullptr && n > 0) {
      // The values as the column holds them: a read under a row mask holds
      // the masked rows only, fewer than the column's count, and the row
      // list picks among those.
      if (qRowList && lists_.qRowList) {
        for (int32_t i = 1; i <= lists_.nRowList && qListFits; ++i)
          qListFits = lists_.iRowList(i) >= 1 && lists_.iRowList(i) <= n;
        if (qListFits) {
          SizeOneBased(out, lists_.nRowList);
          for (int32_t i = 1; i <= lists_.nRowList; ++i) out(i) = v[lists_.iRowList(i) - 1];
        }
      } else {
        SizeOneBased(out, n);
        std::memcpy(out.data(), v, sizeof(float) * static_cast<std::size_t>(n));
      }
      qResult = qListFits;
    }
    if (ok && reading_.qDeleteNow && !qWasLoaded) {
      bool qDropped = false;
      DeleteAVector(ThisCol, qDropped, true);
    }
    // A row of the list beyond the column: the output is left as it was.
    if (!qListFits) RaiseFault(kFaultSubscript);
  }
  return qResult;
}

bool mxDataSet::GetFODVector(int32_t ThisCol, Array<float>& ThisColumnValues) {
  bool qResult = false;
  RunGuarded("mxDataSet (Code) (GetFODVector)", [&] { qResult = FetchColumn(ThisCol, ThisColumnValues, false); });
  // A wish to drop lasts one read; the standing one comes back.
  reading_.qDeleteNow = reading_.qDeleteAfterFetch;
  return qResult;
}

bool mxDataSet::GetFODValues(int32_t ThisCol, Array<float>& ThisColumnValues) {
  bool qResult = false;
  RunGuarded("mxDataSet (Code) (GetFODValues)", [&] { qResult = FetchColumn(ThisCol, ThisColumnValues, true); });
  reading_.qDeleteNow = reading_.qDeleteAfterFetch;
  return qResult;
}

// ---- Single values and rows ----------------------------------------------------------------------

void mxDataSet::GetFODValue(int32_t iRow, int32_t iCol, float& sValue, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (GetFODValue)", [&] {
    if (!ValidColumnIndex(iCol) || !fetch_.qFetchOnDemand) return;
    if (!headers_.columns(iCol).qLoaded) {
      bool ok = false;
      LoadFODValue(iCol, iRow, sValue, ok);
    } else if (iRow >= 1) {
      int32_t n = 0;
      const float* v = HeldValues(iCol, n);
      if (v == nullptr || iRow > n) RaiseFault(kFaultSubscript);
      sValue = v[iRow - 1];
    }
    qOK = true;
  });
  // Deliberately not the standing wish: a single value never drops a column.
  reading_.qDeleteNow = false;
}

void mxDataSet::GetRowValuesFOD(int32_t iRow, Array<float>& sValues, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (GetRowValuesFOD)", [&] {
    if (iRow < 1) return;
    Array<float> out(1, std::max(headers_.nCols, 1));
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      float v = 0.0f;
      bool ok = false;
      GetFODValue(iRow, c, v, ok);
      if (ok) out(c) = v;
    }
    if (headers_.nCols < 1) out.Erase();
    sValues.Swap(out);
    qOK = true;
  });
}

void mxDataSet::GetMultipleRowValuesFOD(int32_t& iRow1, int32_t& iRow2, Array2<float>& sValues,
                                        bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (GetMultipleRowValuesFOD)", [&] {
    if (iRow1 < 0 || iRow2 < 0 || headers_.nCols < 1) return;
    if (iRow2 < iRow1) std::swap(iRow1, iRow2);
    const int32_t nRows = iRow2 - iRow1 + 1;
    Array2<float> out(1, nRows, 1, headers_.nCols);
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      // The columns are loaded and stay so; the file of each is opened as
      // it comes (kept open while it is the same) and closed at the end.
      if (!get_qLoaded(c)) {
        bool qOpen = false;
        InitFOD(true, c, fetch_.cFILETYPE, fetch_.xIO, false, qOpen);
      }
      bool ok = false;
      LoadAVector(c, ok, true);
      int32_t n = 0;
      const float* v = HeldValues(c, n);
      if (v == nullptr) continue;
      // Cells of rows the column does not hold stay 0.
      for (int32_t r = std::max(iRow1, 1); r <= std::min(iRow2, n); ++r) out(r - iRow1 + 1, c) = v[r - 1];
    }
    bool qClosed = false;
    InitFOD(false, 1, fetch_.cFILETYPE, fetch_.xIO, false, qClosed);
    sValues.Swap(out);
    qOK = true;
  });
}

// ---- Extracts -------------------------------------------------------------------------------------

void mxDataSet::FODbExtractHeaders(Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (FODbExtractHeaders)", [&] {
    std::vector<int32_t> chosen;
    for (int32_t c = 1; c <= headers_.nCols; ++c)
      if (headers_.columns(c).qLoaded && InColumnList(c)) chosen.push_back(c);
    if (!chosen.empty()) {
      Array2<uint8_t> all;
      BlankHeaders(all, headers_.nCols);
      bool qPacked = false;
      packbHeaders(all, qPacked);
      if (!qPacked) return;
      Array2<uint8_t> out;
      BlankHeaders(out, static_cast<int32_t>(chosen.size()));
      for (std::size_t k = 0; k < chosen.size(); ++k)
        std::memcpy(&out(1, static_cast<int32_t>(k + 1)), &all(1, chosen[k]), kPackedRecordSize);
      bHeaders.Swap(out);
    }
    qOK = true;
  });
}

void mxDataSet::FODExtractHeaders(Array<std::string>& zHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (FODExtractHeaders)", [&] {
    Array2<uint8_t> bHeaders;
    bool qPacked = false;
    FODbExtractHeaders(bHeaders, qPacked);
    if (!qPacked) return;
    if (bHeaders.IsAllocated()) {
      const int32_t n = bHeaders.UBound(2);
      Array<std::string> out(1, n);
      for (int32_t k = 1; k <= n; ++k) out(k) = HeaderText(bHeaders, k);
      zHeaders.Swap(out);
    }
    qOK = true;
  });
}

void mxDataSet::FODExtractDataArray(Array2<float>& sData, int32_t& nCols, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (FODExtractDataArray)", [&] {
    std::vector<int32_t> chosen;
    int32_t nRows = 0;
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      if (!headers_.columns(c).qLoaded || !InColumnList(c)) continue;
      chosen.push_back(c);
      int32_t n = 0;
      HeldValues(c, n);
      nRows = std::max(nRows, n);
    }
    const bool qList = lists_.qRowList && lists_.nRowList < nRows;
    if (qList) nRows = lists_.nRowList;
    const int32_t nChosen = static_cast<int32_t>(chosen.size());
    if (nRows < 1 || nChosen < 1) return;
    Array2<float> out;
    ArrayTools::Size2(out, nRows, nChosen, 0.0f);
    for (int32_t k = 1; k <= nChosen; ++k) {
      int32_t n = 0;
      const float* v = HeldValues(chosen[static_cast<std::size_t>(k - 1)], n);
      if (v == nullptr) continue;
      if (qList) {
        for (int32_t r = 1; r <= nRows; ++r) {
          const int32_t src = lists_.iRowList(r);
          if (src >= 1 && src <= n) out(r, k) = v[src - 1];
        }
      } else {
        // A shorter column leaves the rest of its cells as they were made.
        std::memcpy(out.Column(k), v, sizeof(float) * static_cast<std::size_t>(std::min(n, nRows)));
      }
    }
    sData.Swap(out);
    nCols = nChosen;
    qOK = true;
  });
}

void mxDataSet::FODExtractArray(Array2<float>& sData, int32_t& nCols, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (FODExtractArray)", [&] {
    std::vector<int32_t> chosen;
    for (int32_t c = 1; c <= headers_.nCols; ++c)
      if (InColumnList(c)) chosen.push_back(c);
    int32_t nRows = get_NumRows();
    if (lists_.qRowList && lists_.nRowList < nRows) nRows = lists_.nRowList;
    const int32_t nChosen = static_cast<int32_t>(chosen.size());
    if (nRows < 1 || nChosen < 1) return;
    Array2<float> out;
    ArrayTools::Size2(out, nRows, nChosen, 0.0f);
    for (int32_t k = 1; k <= nChosen; ++k) {
      // Each column is fetched through GetValues, dropped again afterwards
      // when the data set asks for pass-through reads.
      reading_.qDeleteNow = reading_.qDeleteAfterFetch;
      Array<float> values;
      if (!GetValues(chosen[static_cast<std::size_t>(k - 1)], values)) continue;
      const int32_t n = std::min<int32_t>(nRows, static_cast<int32_t>(values.size()));
      std::memcpy(out.Column(k), values.data(), sizeof(float) * static_cast<std::size_t>(n));
    }
    sData.Swap(out);
    nCols = nChosen;
    qOK = true;
  });
}

// ---- Limits and writes ------------------------------------------------------------------------------

void mxDataSet::InitialiseColumnLimitsFOD(bool& qOK, int32_t iColumn) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (InitialiseColumnLimitsFOD)", [&] {
    const bool qOne = ValidColumnIndex(iColumn);
    const int32_t first = qOne ? iColumn : 1, last = qOne ? iColumn : headers_.nCols;
    for (int32_t c = first; c <= last; ++c) {
      int32_t n = 0;
      const float* v = HeldValues(c, n);
      if (v == nullptr) continue;
      float mn = kLimitSeedMin, mx = kLimitSeedMax;
      VectorMinMaxCore(v, n, mn, mx);
      COLUMNDATA& col = headers_.columns(c);
      col.dMinVal = mn;
      col.dMaxVal = mx;
      col.qLimitsValid = true;
    }
    qIsDirty_ = true;
    qOK = true;
  });
}

void mxDataSet::SetValuesFOD(int32_t Row, int32_t Column, float dVal) {
  RunGuarded("mxDataSet (Code) (SetValuesFOD)", [&] {
    if (!ValidColumnIndex(Column)) return;
    if (!headers_.columns(Column).qLoaded) {
      bool ok = false;
      LoadFODVector(Column, ok);
      if (!ok) return;
    }
    int32_t n = 0;
    float* v = HeldCells(Column, n);
    if (v == nullptr || Row < 1 || Row > n) RaiseFault(kFaultSubscript);
    v[Row - 1] = dVal;
    // Known limits widen by the value; limits not known yet (a column just
    // loaded) are computed from all its values when next asked for.
    if (headers_.columns(Column).qLimitsValid) UpDateColumnLimits(Column, dVal);
    qIsDirty_ = true;
  });
}

}  // namespace vndata
