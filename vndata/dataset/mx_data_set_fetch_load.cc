// mxDataSet, fetch on demand: loading a column from the file or computing
// it from others, dropping it again, and the bulk move into the buffers.
#include <algorithm>
#include <string>

#include "vndata/dataset/internal/fod_flags.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/derived/mx_automatic_dq.h"
#include "vndata/foundation/mx_notify_data.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/record_file.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/sim_file_io.h"

namespace vndata {

namespace {

// Marks a column's load as under way for the life of the object.
class LoadInProgress {
 public:
  LoadInProgress(std::vector<int32_t>& loading, int32_t iCol) : loading_(loading) {
    loading_.push_back(iCol);
  }
  ~LoadInProgress() { loading_.pop_back(); }
  LoadInProgress(const LoadInProgress&) = delete;
  LoadInProgress& operator=(const LoadInProgress&) = delete;

 private:
  std::vector<int32_t>& loading_;
};

bool InProgress(const std::vector<int32_t>& loading, int32_t iCol) {
  return std::find(loading.begin(), loading.end(), iCol) != loading.end();
}

}  // namespace

// ---- What a column holds -------------------------------------------------------------------

const float* mxDataSet::HeldValues(int32_t iCol, int32_t& n) const {
  n = 0;
  if (!ValidColumnIndex(iCol)) return nullptr;
  const COLUMNDATA& col = headers_.columns(iCol);
  if (!col.qLoaded) return nullptr;
  if (col.values.IsAllocated()) {
    n = static_cast<int32_t>(col.values.size());
    return col.values.data();
  }
  // A column LoadAllData has moved counts as loaded without values of its
  // own: its cells are in buffer 1, as many as it had.
  if (!fetch_.qLoadAllVectors) return nullptr;
  const DATABUFFER& buf = rows_.buffers(1);
  if (!buf.values.IsAllocated() || iCol > buf.values.UBound(2)) return nullptr;
  n = buf.values.UBound(1);
  if (const FODPointer* e = FODEntry(iCol); e != nullptr && e->nValues > 0) n = std::min(n, e->nValues);
  return buf.values.Column(iCol);
}

float* mxDataSet::HeldCells(int32_t iCol, int32_t& n) {
  return const_cast<float*>(HeldValues(iCol, n));
}

// ---- Loading ---------------------------------------------------------------------------------

void mxDataSet::LoadStoredColumn(int32_t iCol, bool& qOK) {
  qOK = false;
  COLUMNDATA& col = headers_.columns(iCol);
  FODPointer& e = fetch_.FODPointers(iCol);
  col.values.ReDim(1, 1);
  if (GetFODCompress(iCol)) grid_.nCellsUncompressed = e.nValues;
  if (fetch_.xIO && fetch_.cFILETYPE) {
    const int32_t nMask = lists_.qRowMask ? lists_.nRowMask : 0;
    // The table's own words go by reference: a compressed read rewrites the
    // count to what it delivered.
    fetch_.xIO->ReadVector(*fetch_.cFILETYPE, e.iPos1, e.iPos2, e.iFlags, e.nValues, lists_.iRowMask,
                           nMask, col.values, qOK);
  }
  if (qOK && grid_.qColumnMap) {
    // The rows as read are put in the order of the map. A masked read holds
    // fewer values than the count; the map then runs over those it holds.
    const int32_t n = std::min<int32_t>(e.nValues, static_cast<int32_t>(col.values.size()));
    Array<float> work(1, std::max(n, 1));
    std::copy_n(col.values.data(), n, work.data());
    for (int32_t i = 1; i <= n; ++i) col.values(i) = work(grid_.iColumnMap(i));
  }
  Array<float> factors;
  int32_t nFactors = 0;
  if (qOK && ConversionFactors(iCol, factors, nFactors))
    xADQ_->ConvertUnitsWithNull(plot_.iUseNullVal != 0, static_cast<float>(plot_.dNullValue), factors,
                                nFactors, col.values, e.nValues, qOK);
  col.qLoaded = qOK;
  if (!qOK) col.values.Erase();
}

bool mxDataSet::DerivedArguments(int32_t iDQPtr, int32_t nDQPars, int32_t nRows, bool qDrop,
                                 Array2<float>& work) {
  for (int32_t k = 1; k <= nDQPars; ++k) {
    const int32_t a = fetch_.iDQArray(iDQPtr + k - 1);
    const bool qWasLoaded = get_qLoaded(a);
    Array<float> tmp;
    bool ok = false;
    GetAVector(a, tmp, ok);
    // An argument loaded only to be copied goes again at once.
    if (qDrop && !qWasLoaded) {
      bool qDropped = false;
      DeleteAVector(a, qDropped, true);
    }
    // An argument that could not be read fails the column rather than
    // entering it as zeros.
    if (!ok || !tmp.IsAllocated() || static_cast<int32_t>(tmp.size()) < nRows) return false;
    std::copy_n(tmp.data(), nRows, work.Column(k));
  }
  return true;
}

bool mxDataSet::LoadComplementColumn(int32_t iCol, bool& qOK) {
  const int32_t n = fetch_.FODPointers(iCol).nValues;
  Array<float> values(1, n);
  values.Fill(1.0f);
  qOK = true;
  for (int32_t operand : {fetch_.FODPointers(iCol).iPos1, fetch_.FODPointers(iCol).iPos2}) {
    if (!ValidColumnIndex(operand)) continue;
    const bool qWasLoaded = get_qLoaded(operand);
    Array<float> tmp;
    bool ok = false;
    GetAVector(operand, tmp, ok);
    // An operand of another length is passed over without complaint; one
    // that could not be read fails the column.
    bool qRead = true;
    if (fetch_.FODPointers(operand).nValues == n) {
      qRead = tmp.IsAllocated() && static_cast<int32_t>(tmp.size()) >= n;
      float* v = values.data();
      const float* t = tmp.data();
      for (int32_t i = 0; qRead && i < n; ++i) v[i] = v[i] - t[i];
    }
    if (!qWasLoaded) {
      bool qDropped = false;
      DeleteAVector(operand, qDropped, true);
    }
    if (!qRead) {
      qOK = false;
      return false;
    }
  }
  COLUMNDATA& col = headers_.columns(iCol);
  col.values.Swap(values);
  col.qLoaded = true;
  return true;
}

bool mxDataSet::LoadDerivedColumn(int32_t iCol, int32_t iADQ, int32_t iDQPtr, int32_t nDQPars,
                                  bool& qOK) {
  qOK = false;
  // Values computed already: the load completes, still reporting false.
  if (GetFODDQLoaded(iCol)) return true;
  if (iADQ == 0) return LoadComplementColumn(iCol, qOK);
  if (nDQPars < 1 || !fetch_.qDQArraySet || iDQPtr < fetch_.iDQArray.LBound() ||
      static_cast<int64_t>(iDQPtr) + nDQPars - 1 > fetch_.iDQArray.UBound())
    return true;
  const int32_t n = fetch_.FODPointers(iCol).nValues;
  Array2<float> work(1, n, 1, nDQPars);
  if (!DerivedArguments(iDQPtr, nDQPars, n, true, work)) return false;
  COLUMNDATA& col = headers_.columns(iCol);
  // The rule is given the integer 0 as its conversion: a unit conversion
  // rule reached from a load yields zeros.
  xADQ_->CalculateADQWithNull(iADQ, work, plot_.iUseNullVal != 0, static_cast<float>(plot_.dNullValue),
                              col.values, qOK, Variant(int32_t{0}));
  if (qOK) col.qLoaded = true;
  return true;
}

void mxDataSet::LoadAVector(int32_t iCol, bool& qOK, bool qEvent) {
  qOK = false;
  const bool qRan = RunGuarded("mxDataSet (Code) (LoadAVector)", [&] {
    if (!ValidColumnIndex(iCol)) return;
    if (headers_.columns(iCol).qLoaded) {
      qOK = true;
      return;
    }
    if (!fetch_.qFODPointersSet || !fetch_.FODPointers.InBounds(iCol)) return;
    if (InProgress(fetch_.loading, iCol)) return;
    LoadInProgress guard(fetch_.loading, iCol);
    int32_t iADQ = -1, iDQPtr = -1, nDQPars = 0;
    if (!GetFODDerivedFlags(iCol, iADQ, iDQPtr, nDQPars)) {
      LoadStoredColumn(iCol, qOK);
      if (!qOK) return;
    } else if (!LoadDerivedColumn(iCol, iADQ, iDQPtr, nDQPars, qOK)) {
      headers_.columns(iCol).values.Erase();
      return;
    }
    // Completion. A pass-through read (qDeleteNow) tells the host nothing.
    if (reading_.qDeleteNow) return;
    if (qEvent && source_.EventHandler) {
      std::string zPath = TreeViewPath(iCol);
      int32_t iColumn = iCol;
      source_.EventHandler->FODDataTVKey(zPath, iColumn);
      if (headers_.columns(iCol).qLoaded) {
        int32_t iSet = source_.iIndex;
        iColumn = iCol;
        source_.EventHandler->FODDataLoaded(iSet, iColumn);
      }
    }
    headers_.columns(iCol).qLimitsValid = false;
  });
  // A fault part way through a read leaves the column unloaded, so that the
  // next read tries again.
  if (!qRan && ValidColumnIndex(iCol) && !headers_.columns(iCol).qLoaded) {
    headers_.columns(iCol).values.Erase();
    qOK = false;
  }
}

void mxDataSet::LoadAValue(int32_t iCol, int32_t iRow, float& sValue, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (LoadAValue)", [&] {
    if (!ValidColumnIndex(iCol)) return;
    if (headers_.columns(iCol).qLoaded) {
      // A loaded column holds the rows its read delivered, the masked ones
      // under a row mask, so row iRow is its iRow-th value.
      int32_t n = 0;
      const float* v = HeldValues(iCol, n);
      if (v == nullptr || iRow < 1 || iRow > n) RaiseFault(kFaultSubscript);
      sValue = v[iRow - 1];
      qOK = true;
      return;
    }
    if (!fetch_.qFODPointersSet || !fetch_.FODPointers.InBounds(iCol)) return;
    if (InProgress(fetch_.loading, iCol)) return;
    LoadInProgress guard(fetch_.loading, iCol);
    int32_t iADQ = -1, iDQPtr = -1, nDQPars = 0;
    if (!GetFODDerivedFlags(iCol, iADQ, iDQPtr, nDQPars)) {
      FODPointer& e = fetch_.FODPointers(iCol);
      if (GetFODCompress(iCol)) grid_.nCellsUncompressed = e.nValues;
      int32_t r = iRow;
      if (lists_.qRowMask)
        r = lists_.iRowMask(iRow);
      else if (grid_.qColumnMap)
        r = grid_.iColumnMap(iRow);
      // A single value is never converted.
      if (fetch_.xIO && fetch_.cFILETYPE)
        fetch_.xIO->ReadValue(*fetch_.cFILETYPE, e.iPos1, e.iPos2, e.iFlags, e.nValues, r, sValue, qOK);
      return;
    }
    if (GetFODDQLoaded(iCol)) return;
    if (iADQ != 0) {
      // The whole column is computed into its values; sValue is left and
      // the column is not marked loaded: the caller finds the column filled.
      if (nDQPars < 1 || !fetch_.qDQArraySet || iDQPtr < fetch_.iDQArray.LBound() ||
          static_cast<int64_t>(iDQPtr) + nDQPars - 1 > fetch_.iDQArray.UBound())
        return;
      const int32_t n = fetch_.FODPointers(iCol).nValues;
      Array2<float> work(1, n, 1, nDQPars);
      if (!DerivedArguments(iDQPtr, nDQPars, n, false, work)) return;
      xADQ_->CalculateADQWithNull(iADQ, work, plot_.iUseNullVal != 0,
                                  static_cast<float>(plot_.dNullValue), headers_.columns(iCol).values, qOK,
                                  Variant(int32_t{0}));
      return;
    }
    // The complement rule, one value: 1 less the operands' values.
    sValue = 1.0f;
    for (int32_t operand : {fetch_.FODPointers(iCol).iPos1, fetch_.FODPointers(iCol).iPos2}) {
      if (!ValidColumnIndex(operand)) continue;
      float v = 0.0f;
      LoadAValue(operand, iRow, v, qOK);
      sValue = sValue - v;
    }
  });
}

void mxDataSet::GetAVector(int32_t iCol, Array<float>& sValues, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (GetAVector)", [&] {
    // An invalid column is no failure here: the caller copes with nothing.
    if (!ValidColumnIndex(iCol)) {
      qOK = true;
      return;
    }
    int32_t n = 0;
    const float* v = HeldValues(iCol, n);
    if (v != nullptr) {
      Array<float> out(1, n);
      std::copy_n(v, n, out.data());
      sValues.Swap(out);
    } else if (!headers_.columns(iCol).qLoaded) {
      bool ok = false;
      LoadAVector(iCol, ok, true);
      if (headers_.columns(iCol).qLoaded) {
        bool again = false;
        GetAVector(iCol, sValues, again);
        if (source_.EventHandler) source_.EventHandler->NotifyText("GETAVECTOR:" + std::to_string(iCol));
      }
    }
    qOK = true;
  });
}

// ---- Dropping --------------------------------------------------------------------------------

void mxDataSet::DeleteAVector(int32_t iCol, bool& qOK, bool qUnload) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (DeleteAVector)", [&] {
    if (ValidColumnIndex(iCol) && headers_.columns(iCol).qLoaded) {
      if (qUnload && source_.EventHandler) {
        std::string zPath = TreeViewPath(iCol);
        int32_t iColumn = iCol;
        source_.EventHandler->FODDataUnloaded(zPath, iColumn);
      }
      COLUMNDATA& col = headers_.columns(iCol);
      col.values.Erase();
      if (FODPointer* e = FODEntry(iCol)) {
        // A compressed read shortened the count; the full count comes back.
        if (fod::CompressedEither(e->iFlags)) e->nValues = grid_.nCellsUncompressed;
        if (fod::DQLoaded(e->iFlags)) e->iFlags -= fod::kDQLoaded;
        if (fod::Converted(e->iFlags)) e->iFlags -= fod::kConverted;
      }
      // Kept loaded without values: the column now lives in the buffers.
      col.qLoaded = !qUnload;
      col.qLimitsValid = false;
    }
    qOK = true;
  });
}

void mxDataSet::DeleteFODVector(int32_t iCol, bool& qOK) {
  qOK = false;
  if (!fetch_.qFetchOnDemand) return;
  DeleteAVector(iCol, qOK, true);
}

// ---- Opening, loading, closing ---------------------------------------------------------------

void mxDataSet::LoadFODVector(int32_t ThisCol, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (LoadFODVector)", [&] {
    if (!fetch_.qFetchOnDemand || !ValidColumnIndex(ThisCol) || headers_.columns(ThisCol).qLoaded)
      return;
    bool qOpen = false;
    InitFOD(true, ThisCol, fetch_.cFILETYPE, fetch_.xIO, false, qOpen);
    LoadAVector(ThisCol, qOK, true);
    // A failed read leaves the file open, as the next read of the same file
    // would open it again.
    if (!qOK) return;
    InitFOD(false, ThisCol, fetch_.cFILETYPE, fetch_.xIO, false, qOK);
  });
}

void mxDataSet::LoadFODVectors(const Array<int32_t>& iColumns, int32_t nCols, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (LoadFODVectors)", [&] {
    for (int32_t i = 1; i <= nCols; ++i) {
      const int32_t c = iColumns(i);
      if (get_qLoaded(c)) continue;
      // The file stays open while the columns lie in the same file.
      bool qOpen = false;
      InitFOD(true, c, fetch_.cFILETYPE, fetch_.xIO, false, qOpen);
      bool ok = false;
      LoadAVector(c, ok, true);
      if (!ok) {
        bool qClosed = false;
        InitFOD(false, c, fetch_.cFILETYPE, fetch_.xIO, false, qClosed);
        return;
      }
    }
    InitFOD(false, nCols >= 1 ? iColumns(nCols) : 0, fetch_.cFILETYPE, fetch_.xIO, false, qOK);
  });
}

void mxDataSet::LoadFODValue(int32_t ThisColumn, int32_t ThisRow, float& sValue, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (LoadFODValue)", [&] {
    bool qOpen = false;
    InitFOD(true, ThisColumn, fetch_.cFILETYPE, fetch_.xIO, false, qOpen);
    LoadAValue(ThisColumn, ThisRow, sValue, qOK);
    if (!qOK) return;
    InitFOD(false, ThisColumn, fetch_.cFILETYPE, fetch_.xIO, false, qOK);
  });
}

// ---- Everything into the buffers -------------------------------------------------------------

void mxDataSet::LoadAllData(bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (LoadAllData)", [&] {
    const int32_t nCols = headers_.nCols;
    if (nCols < 1) return;
    // Columns an earlier, unfinished pass moved live in the buffer that is
    // made anew here: they are read again.
    for (int32_t c = 1; c <= nCols; ++c) {
      COLUMNDATA& col = headers_.columns(c);
      if (col.qLoaded && !col.values.IsAllocated()) col.qLoaded = false;
    }
    const int32_t nRows = RowCount();
    bool ok = false;
    DimensionDataBuffer(1, nCols, nRows, ok, true, false);
    if (!ok && nRows > 0) {
      fetch_.qLoadAllVectors = false;
      fetch_.qFetchOnDemand = true;
      return;
    }
    for (int32_t c = 1; c <= nCols; ++c) {
      // The host may cancel between columns; the data set is then left half
      // moved, still fetching on demand.
      if (YieldToHost()) return;
      bool qOpen = false;
      InitFOD(true, c, fetch_.cFILETYPE, fetch_.xIO, false, qOpen);
      bool qLoad = false;
      LoadAVector(c, qLoad, false);
      // A column that cannot be read stops the move as a cancel does, so
      // that it stays on disk and the next read tries it again.
      if (!qLoad) return;
      bool qStep = false;
      SetValuesOnly(c, headers_.columns(c).values, qStep);
      DeleteAVector(c, qStep, false);
    }
    fetch_.qFetchOnDemand = false;
    bool qClosed = false;
    InitFOD(false, 1, fetch_.cFILETYPE, fetch_.xIO, true, qClosed);
    qOK = true;
  });
}

}  // namespace vndata
