// mxDataSet, fetch on demand: the location table, the reading of its flag
// word, the opening and closing of the source file and the row count.
#include <algorithm>
#include <filesystem>

#include "vndata/dataset/internal/fod_flags.h"
#include "vndata/dataset/mx_data_set.h"
#include "vndata/derived/mx_automatic_dq.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/record_file.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/sim_file_io.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

// The record option handed to every file opened for reading columns: the
// record layer's own default, since the reader takes the blocking of a
// record from its length markers.
constexpr int32_t kFetchRecordOption = 0;

// Whether the file on disk still has the length the open file was opened
// with.
bool SameLength(const RecordFile& file) {
  std::error_code ec;
  const std::uintmax_t n = std::filesystem::file_size(file.get_FileName(), ec);
  return !ec && n == static_cast<std::uintmax_t>(file.FileSize());
}

// Whether first..first+count-1 lies inside the array.
template <class T>
bool RunInside(const Array<T>& a, int32_t first, int32_t count) {
  if (!a.IsAllocated() || count < 1) return false;
  return first >= a.LBound() && static_cast<int64_t>(first) + count - 1 <= a.UBound();
}

}  // namespace

// ---- The location table -------------------------------------------------------------------

const mxDataSet::FODPointer* mxDataSet::FODEntry(int32_t iCol) const {
  if (!fetch_.qFODPointersSet || !ValidColumnIndex(iCol) || !fetch_.FODPointers.InBounds(iCol))
    return nullptr;
  return &fetch_.FODPointers(iCol);
}

mxDataSet::FODPointer* mxDataSet::FODEntry(int32_t iCol) {
  return const_cast<FODPointer*>(static_cast<const mxDataSet*>(this)->FODEntry(iCol));
}

void mxDataSet::AssignTable(const Array<bool>& qFileTypeSettings, const Array2<int32_t>& iPosArray) {
  const int32_t n = headers_.nCols;
  // Everything is read and checked before the data set changes, so that a
  // short array leaves the old table in place.
  std::array<bool, 6> settings{};
  settings[0] = true;
  settings[1] = qFileTypeSettings(1);
  settings[2] = qFileTypeSettings(2);
  // Kept swapped, as the stored form has always held them; InitFOD gives
  // each to the file under its own number.
  settings[4] = qFileTypeSettings(3);
  settings[3] = qFileTypeSettings(4);
  settings[5] = qFileTypeSettings(5);
  Array<FODPointer> table;
  Array<int32_t> fileIndex;
  bool qFileIndexSet = false;
  if (n > 0) {
    if (!iPosArray.InBounds(1, 1) || !iPosArray.InBounds(5, n)) RaiseFault(kFaultSubscript);
    table.ReDim(1, n);
    for (int32_t c = 1; c <= n; ++c) {
      FODPointer& e = table(c);
      e.nValues = iPosArray(1, c);
      e.iFlags = iPosArray(2, c);
      e.iPos1 = iPosArray(3, c);
      e.iPos2 = iPosArray(4, c);
    }
    // The file numbers are kept only when some column lies in another file
    // than the first; then the whole row is kept.
    for (int32_t c = 1; c <= n && !qFileIndexSet; ++c) qFileIndexSet = iPosArray(5, c) > 1;
    if (qFileIndexSet) {
      fileIndex.ReDim(1, n);
      for (int32_t c = 1; c <= n; ++c) fileIndex(c) = iPosArray(5, c);
    }
  }
  fetch_.qFODSettings = settings;
  fetch_.nFODPointers = n;
  fetch_.FODPointers.Swap(table);
  fetch_.qFODPointersSet = true;
  for (int32_t c = 1; c <= n; ++c) {
    COLUMNDATA& col = headers_.columns(c);
    col.qLoaded = false;
    col.values.ReDim(1, 1);
  }
  fetch_.qFileIndexSet = qFileIndexSet;
  if (qFileIndexSet) fetch_.iFileIndex.Swap(fileIndex);
}

void mxDataSet::AssignFODPointers(const Array<bool>& qFileTypeSettings,
                                  const Array2<int32_t>& iPosArray, bool& qOK) {
  qOK = false;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (AssignFODPointers)", [&] {
    if (!iPosArray.IsAllocated() || iPosArray.UBound(2) != headers_.nCols) return;
    AssignTable(qFileTypeSettings, iPosArray);
    qOK = true;
  });
}

void mxDataSet::AssignFODPlusPointers(const Array<bool>& qFileTypeSettings,
                                      const Array2<int32_t>& iPosArray, const Array<int32_t>& iDQArray,
                                      const Array<float>& sUCFactors, bool& qOK, bool qConvertUnitsNow,
                                      bool qCalculateDQsNow) {
  qOK = false;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (AssignFODPlusPointers)", [&] {
    if (!iPosArray.IsAllocated() || iPosArray.UBound(2) != headers_.nCols) return;
    AssignTable(qFileTypeSettings, iPosArray);
    if (iDQArray.IsAllocated()) {
      Array<int32_t> copy(1, iDQArray.UBound());
      for (int32_t i = 1; i <= iDQArray.UBound(); ++i) copy(i) = iDQArray(i);
      fetch_.iDQArray.Swap(copy);
      fetch_.qDQArraySet = true;
    }
    if (sUCFactors.IsAllocated()) {
      Array<float> copy(1, sUCFactors.UBound());
      for (int32_t i = 1; i <= sUCFactors.UBound(); ++i) copy(i) = sUCFactors(i);
      fetch_.sUCFactors.Swap(copy);
      fetch_.qUCFactorsSet = true;
    }
    // Columns on disk are converted and computed when they are loaded.
    if (!fetch_.qFetchOnDemand) ConvertAndComputeNow(qConvertUnitsNow, qCalculateDQsNow);
    qOK = true;
  });
}

bool mxDataSet::ConversionFactors(int32_t iCol, Array<float>& factors, int32_t& nFactors) {
  int32_t iConvPtr = -1;
  nFactors = 0;
  if (!GetFODConvertFlags(iCol, iConvPtr, nFactors) || GetFODConverted(iCol)) return false;
  if (!fetch_.qUCFactorsSet || !RunInside(fetch_.sUCFactors, iConvPtr, nFactors)) return false;
  factors.ReDim(1, nFactors);
  for (int32_t k = 1; k <= nFactors; ++k) factors(k) = fetch_.sUCFactors(iConvPtr + k - 1);
  return true;
}

// Columns already in memory are converted and computed when the table is
// assigned, reading and writing the row buffers.
void mxDataSet::ConvertAndComputeNow(bool qConvertUnitsNow, bool qCalculateDQsNow) {
  const bool qUseNull = plot_.iUseNullVal != 0;
  const float sNull = static_cast<float>(plot_.dNullValue);
  if (qConvertUnitsNow) {
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      Array<float> factors;
      int32_t nFactors = 0;
      if (!ConversionFactors(c, factors, nFactors) || fetch_.FODPointers(c).nValues <= 0) continue;
      Array<float> values;
      if (!GetValues(c, values)) continue;
      int32_t n = values.UBound();
      bool ok = false;
      xADQ_->ConvertUnitsWithNull(qUseNull, sNull, factors, nFactors, values, n, ok);
      if (ok) SetColumnValues(c, values, ok);
    }
  }
  if (!qCalculateDQsNow) return;
  for (int32_t c = 1; c <= headers_.nCols; ++c) {
    int32_t iADQ = -1, iDQPtr = -1, nDQPars = 0;
    if (!GetFODDerivedFlags(c, iADQ, iDQPtr, nDQPars) || GetFODDQLoaded(c)) continue;
    // The complement rule is computed only when its column is loaded.
    if (iADQ == 0 || !fetch_.qDQArraySet || !RunInside(fetch_.iDQArray, iDQPtr, nDQPars)) continue;
    const int32_t n = get_NumRows();
    if (n <= 0) continue;
    Array2<float> work(1, n, 1, nDQPars);
    for (int32_t k = 1; k <= nDQPars; ++k) {
      Array<float> values;
      if (!GetValues(fetch_.iDQArray(iDQPtr + k - 1), values)) continue;
      const int32_t m = std::min<int32_t>(n, values.UBound());
      std::copy_n(values.data(), m, work.Column(k));
    }
    Array<float> out;
    bool ok = false;
    xADQ_->CalculateADQWithNull(iADQ, work, qUseNull, sNull, out, ok, Variant(int32_t{0}));
    if (ok) SetColumnValues(c, out, ok);
  }
}

// ---- The flag word -------------------------------------------------------------------------

int32_t mxDataSet::GetFODVarType(int32_t iCol) {
  int32_t iType = -1;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (GetFODVarType)", [&] {
    if (const FODPointer* e = FODEntry(iCol)) iType = fod::VarType(e->iFlags);
  });
  return iType;
}

bool mxDataSet::GetFODDerivedFlags(int32_t iCol, int32_t& iADQ, int32_t& iDQPtr, int32_t& nDQPars) {
  bool qDerived = false;
  iADQ = -1;
  iDQPtr = -1;
  nDQPars = 0;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (GetFODDerivedFlags)", [&] {
    const FODPointer* e = FODEntry(iCol);
    if (e == nullptr || !fod::Derived(e->iFlags)) return;
    iADQ = fod::HighHalf(e->iFlags);
    iDQPtr = e->iPos1;
    nDQPars = e->iPos2;
    qDerived = true;
  });
  return qDerived;
}

bool mxDataSet::GetFODDQLoaded(int32_t iCol) {
  bool q = false;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (GetFODDQLoaded)", [&] {
    if (const FODPointer* e = FODEntry(iCol)) q = fod::DQLoaded(e->iFlags);
  });
  return q;
}

bool mxDataSet::GetFODConverted(int32_t iCol) {
  bool q = false;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (GetFODConverted)", [&] {
    if (const FODPointer* e = FODEntry(iCol)) q = fod::Converted(e->iFlags);
  });
  return q;
}

bool mxDataSet::GetFODConvertFlags(int32_t iCol, int32_t& iConvPtr, int32_t& nConvPars) {
  bool qConvert = false;
  iConvPtr = -1;
  nConvPars = 0;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (GetFODConvertFlags)", [&] {
    const FODPointer* e = FODEntry(iCol);
    if (e == nullptr) return;
    nConvPars = fod::ConvPars(e->iFlags);
    qConvert = nConvPars >= 1;
    if (qConvert) iConvPtr = fod::HighHalf(e->iFlags);
  });
  return qConvert;
}

bool mxDataSet::GetFODCompress(int32_t iCol) {
  bool q = false;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (GetFODCompress)", [&] {
    if (const FODPointer* e = FODEntry(iCol)) q = fod::CompressedEither(e->iFlags);
  });
  return q;
}

void mxDataSet::GetAllFODFlags(int32_t iCol, int32_t& iVarType, bool& qCompress, bool& qDerived,
                               int32_t& iADQ, int32_t& iDQPtr, int32_t& nDQPars, bool& qConvert,
                               int32_t& iConvPtr, int32_t& nConvPars, bool& qOK) {
  qOK = false;
  RunGuarded("mx173DataStorage4 - mxDataSet (Code) (GetAllFODFlags)", [&] {
    const FODPointer* e = FODEntry(iCol);
    if (e == nullptr) return;
    const int32_t f = e->iFlags;
    iVarType = fod::VarType(f);
    // Bit 3 alone: the second form of compression is not reported here.
    qCompress = fod::Compressed(f);
    qDerived = fod::Derived(f);
    iADQ = qDerived ? fod::HighHalf(f) : -1;
    iDQPtr = qDerived ? e->iPos1 : -1;
    nDQPars = qDerived ? e->iPos2 : 0;
    nConvPars = fod::ConvPars(f);
    qConvert = nConvPars >= 1;
    iConvPtr = qConvert ? fod::HighHalf(f) : -1;
    qOK = true;
  });
}

// ---- State ---------------------------------------------------------------------------------

void mxDataSet::let_LoadAllVectors(bool q) {
  fetch_.qLoadAllVectors = q;
  if (!q) return;
  bool qOK = false;
  LoadAllData(qOK);
}

bool mxDataSet::FetchOnDemandColumnLoaded(int32_t ThisCol) const {
  return fetch_.qFetchOnDemand && ValidColumnIndex(ThisCol) && headers_.columns(ThisCol).qLoaded;
}

void mxDataSet::GetLoadedVectors(Array<int32_t>& iColumns, int32_t& nCols, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (GetLoadedVectors)", [&] {
    int32_t n = 0;
    for (int32_t c = 1; c <= headers_.nCols; ++c) n += headers_.columns(c).qLoaded ? 1 : 0;
    if (n > 0) {
      Array<int32_t> out(1, n);
      int32_t k = 0;
      for (int32_t c = 1; c <= headers_.nCols; ++c)
        if (headers_.columns(c).qLoaded) out(++k) = c;
      iColumns.Swap(out);
    }
    nCols = n;
    qOK = true;
  });
}

int32_t mxDataSet::RowCount() const {
  if (lists_.qRowMask) return lists_.nRowMask;
  int32_t nMax = 0;
  if (fetch_.qFODPointersSet)
    for (int32_t c = 1; c <= fetch_.nFODPointers && fetch_.FODPointers.InBounds(c); ++c) {
      const FODPointer& e = fetch_.FODPointers(c);
      if (!fod::CompressedEither(e.iFlags)) nMax = std::max(nMax, e.nValues);
    }
  return nMax > 0 ? nMax : -1;
}

// ---- The source file -----------------------------------------------------------------------

void mxDataSet::InitFOD(bool qOpen, int32_t iCol, std::shared_ptr<RecordFile>& cFILETYPE,
                        std::shared_ptr<SimFileIO>& xIO, bool qCloseIO, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (InitFOD)", [&] {
    auto close = [&] {
      bool ok = false;
      if (xIO && cFILETYPE)
        xIO->CloseFile(cFILETYPE, ok);
      else if (cFILETYPE)
        cFILETYPE->Close();
    };
    if (!qOpen) {
      // Closing the file keeps the reader unless it is asked to go too.
      close();
      if (qCloseIO) xIO.reset();
      cFILETYPE.reset();
      qOK = true;
      return;
    }
    const std::string zName = GetFileName(iCol);
    if (cFILETYPE) {
      // The file of the last read serves the next one while it is open
      // under the same name; a handle whose open failed is not kept, nor one
      // whose file has changed length since (cut short, or written again).
      if (cFILETYPE->IsOpen() && cFILETYPE->get_FileName() == zName && SameLength(*cFILETYPE)) {
        qOK = true;
        return;
      }
      close();
      xIO.reset();
      cFILETYPE.reset();
    }
    cFILETYPE = std::make_shared<RecordFile>();
    if (!xIO) {
      xIO = std::make_shared<SimFileIO>();
      xIO->SetEventHandler(source_.IOEventHandler);
    }
    const std::array<bool, 6>& q = fetch_.qFODSettings;
    cFILETYPE->SetFileOption2(q[2]);
    cFILETYPE->SetFileOption4(q[3]);
    cFILETYPE->SetFileOption1(q[1]);
    cFILETYPE->SetFileOption3(q[4]);
    if (q[5]) cFILETYPE->SetUnitSize(8);
    cFILETYPE->SetRecordOption(kFetchRecordOption);
    if (StringTools::Equal(source_.zSimulator, "ECLIPSE", false)) cFILETYPE->SetEclipseFile(true);
    bool ok = false;
    xIO->OpenForRead(zName, *cFILETYPE, ok);
    qOK = ok;
  });
}

}  // namespace vndata
