// mxDataSet: row buffers, their dimensions and growth, and whole-array loads.
#include <algorithm>
#include <cstring>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/module_state.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {
// A buffer made by appending holds this many rows unless more are placed at
// once, so that small appends do not allocate a buffer each.
constexpr int32_t kAppendGranularity = 4096;
// Appended buffers smaller than this are carved from chunks of this size;
// larger ones are taken from the system on their own.
constexpr std::size_t kAppendChunkBytes = std::size_t{8} << 20;
constexpr std::size_t kAppendCarveLimit = std::size_t{2} << 20;
}  // namespace

mxDataSet::AppendChunk::~AppendChunk() {
  if (base != nullptr) array_storage::FreeLargeBlock(base, bytes);
}

void mxDataSet::MakeAppendedBuffer(DATABUFFER& buf, int32_t nRows, int32_t nColumns, int32_t nCapacity) {
  const std::size_t bytes = sizeof(float) * static_cast<std::size_t>(nCapacity) * static_cast<std::size_t>(nColumns);
  if (bytes > kAppendCarveLimit) {
    DimensionBufferArray(buf, false, nRows, nColumns, nCapacity);
    return;
  }
  const std::size_t need = (bytes + 63) / 64 * 64;
  if (!rows_.appendChunk || rows_.appendChunk->bytes - rows_.appendChunk->used < need) {
    auto chunk = std::make_shared<AppendChunk>();
    chunk->base = static_cast<uint8_t*>(array_storage::AllocateLargeBlock(kAppendChunkBytes));
    chunk->bytes = kAppendChunkBytes;
    rows_.appendChunk = std::move(chunk);
  }
  float* values = reinterpret_cast<float*>(rows_.appendChunk->base + rows_.appendChunk->used);
  rows_.appendChunk->used += need;
  buf.values.ReDimOn(values, rows_.appendChunk, 1, nCapacity, 1, nColumns);
  buf.nRowsInUse = nRows;
  buf.nColumns = nColumns;
  buf.nCapacity = nCapacity;
}

// ---- Internals --------------------------------------------------------------------------

void mxDataSet::DimensionBufferArray(DATABUFFER& buf, bool qKeep, int32_t nRows, int32_t nColumns,
                                     int32_t nCapacity) {
  nRows = std::max(nRows, 1);
  nColumns = std::max(nColumns, 1);
  if (nCapacity < 1) nCapacity = nRows;
  // The array first: when memory is refused the buffer keeps its sizes.
  if (qKeep)
    ArrayTools::Resize2(buf.values, nCapacity, nColumns);
  else
    buf.values.ReDim(1, nCapacity, 1, nColumns);
  buf.nRowsInUse = nRows;
  buf.nColumns = nColumns;
  buf.nCapacity = buf.values.UBound(1);
}

void mxDataSet::ResizeColumnRecords(int32_t nCount, bool qAfresh) {
  ColumnPointersChanged();
  if (qAfresh) {
    headers_.columns.ReDim(1, std::max(nCount, 1));
    headers_.nCols = std::max(nCount, 0);
  } else if (nCount > 0 && nCount != static_cast<int32_t>(headers_.columns.size())) {
    // Records added by the resize are new, so their pointers are all -1.
    headers_.columns.ReDimPreserve(nCount);
    headers_.nCols = nCount;
  } else if (headers_.nCols == 0) {
    headers_.nCols = std::max(nCount, 0);
  }
  // Records made by dimensioning are columns in use.
  for (int32_t c = 1; c <= headers_.nCols; ++c) headers_.columns(c).qActive = true;
  // Columns on disk keep their entries of the location table in step.
  if (fetch_.qFetchOnDemand) {
    const int32_t n = headers_.nCols;
    if (n < 1) {
      fetch_.FODPointers.Erase();
    } else if (!fetch_.FODPointers.IsAllocated() || fetch_.FODPointers.UBound() != n) {
      fetch_.FODPointers.ReDimPreserve(n);
      if (fetch_.qFileIndexSet) {
        const int32_t nOld = fetch_.iFileIndex.IsAllocated() ? fetch_.iFileIndex.UBound() : 0;
        fetch_.iFileIndex.ReDimPreserve(n);
        for (int32_t c = nOld + 1; c <= n; ++c) fetch_.iFileIndex(c) = 1;
      }
    }
    fetch_.nFODPointers = n;
  }
}

void mxDataSet::CopyIntoBuffer(DATABUFFER& buf, const Array2<float>& dArr, int32_t nRows,
                               int32_t nCols) {
  if (nRows < 1 || nCols < 1) return;
  const float* src = &dArr(dArr.LBound(1), dArr.LBound(2));
  if (src == buf.values.data()) return;  // the buffer's array is its own source
  const std::size_t srcStride = dArr.Rows();
  if (buf.nCapacity == nRows && srcStride == static_cast<std::size_t>(nRows)) {
    std::memcpy(buf.values.data(), src, sizeof(float) * static_cast<std::size_t>(nRows) * nCols);
    return;
  }
  for (int32_t j = 1; j <= nCols; ++j)
    std::memcpy(buf.values.Column(j), src + (j - 1) * srcStride,
                sizeof(float) * static_cast<std::size_t>(nRows));
}

bool mxDataSet::CopyWithLimits(DATABUFFER& buf, const Array2<float>& dArr, int32_t nRows, int32_t nCols) {
  constexpr std::size_t kSliceBytes = 256 << 10;
  const std::size_t colBytes = sizeof(float) * static_cast<std::size_t>(std::max(nRows, 1));
  const int32_t nSlice = static_cast<int32_t>(std::max<std::size_t>(1, kSliceBytes / colBytes));
  const float* src = &dArr(dArr.LBound(1), dArr.LBound(2));
  const std::size_t srcStride = dArr.Rows(), dstStride = buf.values.Rows();
  bool qLimits = true;
  for (int32_t c0 = 1; c0 <= nCols; c0 += nSlice) {
    const int32_t c1 = std::min(nCols, c0 + nSlice - 1);
    float* dst = buf.values.Column(c0);
    const float* from = src + static_cast<std::size_t>(c0 - 1) * srcStride;
    if (srcStride == dstStride && srcStride == static_cast<std::size_t>(nRows))
      std::memcpy(dst, from, colBytes * static_cast<std::size_t>(c1 - c0 + 1));
    else
      for (int32_t j = 0; j <= c1 - c0; ++j)
        std::memcpy(dst + j * dstStride, from + j * srcStride, sizeof(float) * static_cast<std::size_t>(nRows));
    // After a cancel the values are still all copied; only the limits stop.
    if (qLimits) qLimits = LimitsOfColumns(c0, c1);
  }
  return qLimits;
}

// ---- Dimensions -------------------------------------------------------------------------

void mxDataSet::Dimension(int32_t nItems, int32_t nRows) {
  bool qOK = false;
  DimensionBuffer(1, nItems, qOK, nRows);
}

void mxDataSet::DimensionBuffer(int32_t iBuffer, int32_t nItems, bool& qOK, int32_t nRows,
                                int32_t nCapacity) {
  qOK = false;
  RunGuarded("mxDataSet  (DimensionBuffer)", [&] {
    ResizeColumnRecords(nItems, true);
    if (nItems >= 1 && nRows > 0) DimensionBufferArray(rows_.buffers(iBuffer), false, nRows, nItems, nCapacity);
    qInitialised_ = true;
    qOK = true;
  });
}

void mxDataSet::DimensionData(int32_t nItems, int32_t nRows, bool& qOK, bool qData) {
  DimensionDataBuffer(1, nItems, nRows, qOK, qData, true);
}

void mxDataSet::DimensionDataBuffer(int32_t iBuffer, int32_t nItems, int32_t nRows, bool& qOK,
                                    bool qData, bool qColumns) {
  qOK = false;
  RunGuarded("mxDataSet  (DimensionDataBuffer)", [&] {
    if (qColumns) ResizeColumnRecords(nItems, true);
    if (qData && nItems > 0 && nRows > 0) {
      DATABUFFER& buf = rows_.buffers(iBuffer);
      buf.values.ReDim(1, nRows, 1, nItems);
      buf.nCapacity = nRows;
    }
    qInitialised_ = true;
    qOK = true;
  });
}

void mxDataSet::RedimensionAllBuffersArray(int32_t nCount, bool qKeep) {
  RunGuarded("mxDataSet  (RedimensionAllBuffersArray)", [&] {
    if (qKeep)
      rows_.buffers.ReDimPreserve(nCount);
    else
      rows_.buffers.ReDim(1, nCount);
    rows_.nBuffers = nCount;
  });
}

void mxDataSet::RedimensionColumnData(int32_t nCount, bool& qOK, bool qAfresh) {
  qOK = false;
  RunGuarded("mxDataSet  (RedimensionColumnData)", [&] {
    ResizeColumnRecords(nCount, qAfresh);
    qOK = true;
  });
}

void mxDataSet::Redimension(int32_t Rows) { ReDimensionBuffer(1, Rows); }

void mxDataSet::ReDimensionBuffer(int32_t iBuffer, int32_t Rows) {
  RunGuarded("mxDataSet  (ReDimensionBuffer)", [&] {
    DATABUFFER& buf = rows_.buffers(iBuffer);
    if (Rows != buf.nRowsInUse) {
      const bool qKeep = buf.nColumns >= 1 && buf.nRowsInUse >= 1;
      DimensionBufferArray(buf, qKeep, Rows, buf.nColumns, Rows);
    }
    qIsDirty_ = true;
  });
}

void mxDataSet::RedimensionColumns(int32_t nColumns) { reDimensionColumnsBuffer(1, nColumns); }

void mxDataSet::reDimensionColumnsBuffer(int32_t iBuffer, int32_t nColumns) {
  RunGuarded("mxDataSet  (reDimensionColumnsBuffer)", [&] {
    if (nColumns >= 1 && nColumns != headers_.nCols) {
      DATABUFFER& buf = rows_.buffers(iBuffer);
      const int32_t nRowsInUse = buf.nRowsInUse;
      DimensionBufferArray(buf, true, nRowsInUse, nColumns, buf.nCapacity);
      buf.nRowsInUse = nRowsInUse;
      ResizeColumnRecords(nColumns, false);
    }
    qIsDirty_ = true;
  });
}

void mxDataSet::TranslateRowToBufferAndRow(int32_t iRow, int32_t& iBuffer, int32_t& iRowInBuffer,
                                           bool& qOK) const {
  iBuffer = -1;
  iRowInBuffer = -1;
  qOK = false;
  RunGuarded("mxDataSet  (TranslateRowToBufferAndRow)", [&] {
    if (rows_.nBuffers < 2) {
      iBuffer = 1;
      iRowInBuffer = iRow;
      qOK = true;
      return;
    }
    // Kept as the appended buffers have always been searched: the walk starts
    // at buffer 2, and the row is counted back from the previous buffer's rows.
    int64_t S = rows_.buffers(1).nRowsInUse;
    for (int32_t b = 2; b <= rows_.nBuffers; ++b) {
      S += rows_.buffers(b).nRowsInUse;
      if (S >= iRow) {
        iBuffer = b;
        iRowInBuffer = static_cast<int32_t>(iRow - (S - rows_.buffers(b - 1).nRowsInUse));
        qOK = true;
        return;
      }
    }
  });
}

// ---- Whole arrays -------------------------------------------------------------------------

void mxDataSet::InitialiseColumnValues(const Array2<float>& dArr, bool& qOK) {
  InitialiseColumnValuesBuffer(1, dArr, qOK);
}

void mxDataSet::InitialiseColumnValuesBuffer(int32_t iBuffer, const Array2<float>& dArr, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (InitialiseColumnValuesBuffer)", [&] {
    DATABUFFER& buf = rows_.buffers(iBuffer);
    const int32_t nRows = dArr.UBound(1), nCols = dArr.UBound(2);
    buf.nRowsInUse = nRows;
    buf.nColumns = nCols;
    if (nRows > buf.nCapacity || nCols > buf.values.UBound(2)) return;
    bool qLimits = false;
    if (iBuffer == 1 && nCols == buf.values.UBound(2) && &dArr != &buf.values) {
      // The copy and the limits pass go a slice of columns at a time, so that
      // the limits read the values while they are still in the cache. The
      // result is that of the whole copy followed by the limits pass.
      qLimits = CopyWithLimits(buf, dArr, nRows, nCols);
    } else {
      CopyIntoBuffer(buf, dArr, nRows, nCols);
      InitialiseColumnLimits(qLimits);
    }
    qIsDirty_ = true;
    qOK = qLimits;
  });
}

void mxDataSet::InitialiseFrom2d(const Array2<float>& dArray, const Array<std::string>& zHeaders,
                                 bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (InitialiseFrom2d)", [&] {
    Dimension(dArray.UBound(2), dArray.UBound(1));
    bool qStep = false;
    InitialiseColumnValues(dArray, qStep);
    if (!qStep) return;
    InitialiseColumnAttributes(zHeaders, qStep);
    if (!qStep) return;
    ApplyDefaultX();
    qIsDirty_ = false;
    qOK = true;
  });
}

// The common part of the whole-array loads: dimension and copy, or go by way
// of the scratch file. qGo tells the caller to go on with the attributes.
void mxDataSet::LoadWholeArray(Array2<float>& dArray, bool qZeroTest, bool& qGo) {
  qGo = false;
  bool qGotMemory = false;
  if (!source_.qScratchFile) {
    if (!dArray.IsAllocated()) return;
    const int32_t nRows = static_cast<int32_t>(dArray.Rows());
    const int32_t nCols = static_cast<int32_t>(dArray.Cols());
    if (nRows == 0 || nCols == 0) return;
    // A 1-by-1 array holding exactly 0 is a reader's way of saying "nothing".
    if (qZeroTest && nRows == 1 && nCols == 1 && dArray(dArray.LBound(1), dArray.LBound(2)) == 0.0f)
      return;
    bool qDim = false;
    DimensionData(nCols, nRows, qDim, true);
    if (!qDim) return;
    qGotMemory = true;
  }
  if (qGotMemory) {
    bool qValues = false;
    InitialiseColumnValues(dArray, qValues);
    if (Module().CancelLoad || !qValues) return;
  }
  if (source_.qScratchFile) {
    MessageLog::Shared().Add("Memory squeeze " + source_.zScratchFileName, false);
    bool qSqueeze = false;
    MemorySqeeezeBuffer(1, dArray, qSqueeze);
    if (!qSqueeze) return;
  }
  qGo = true;
}

void mxDataSet::bInitialiseFrom2d(Array2<float>& dArray, const Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (bInitialiseFrom2d)", [&] {
    bool qGo = false;
    LoadWholeArray(dArray, true, qGo);
    if (!qGo) return;
    bool qAttributes = false;
    bInitialiseColumnAttributes(bHeaders, qAttributes);
    ApplyDefaultX();
    qIsDirty_ = false;
    qOK = true;
  });
}

void mxDataSet::InitialiseFromByteStore(Array2<float>& dArray, const AttributePools& xStore,
                                        const Array2<uint8_t>& bPointers, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (InitialiseFromByteStore)", [&] {
    bool qGo = false;
    LoadWholeArray(dArray, false, qGo);
    if (!qGo) return;
    bool qAttributes = false;
    InitialiseByteStore(xStore, bPointers, qAttributes);
    ApplyDefaultX();
    qIsDirty_ = false;
    qOK = true;
  });
}

// ---- Appending rows ---------------------------------------------------------------------

void mxDataSet::AddRowsToDatasetBuffer(const Array2<float>& dArray, bool& qOK, int32_t iRowIn) {
  qOK = false;
  RunGuarded("mxDataSet  (AddRowsToDatasetBuffer)", [&] {
    if (!dArray.IsAllocated() || dArray.UBound(2) != headers_.nCols) return;
    const int32_t n = dArray.UBound(1) - iRowIn + 1;
    DATABUFFER* last = &rows_.buffers(rows_.nBuffers);
    const int32_t s = last->nCapacity - last->nRowsInUse;
    if (n <= s) {
      ArrayTools::CopyRows2(dArray, iRowIn, last->values, last->nRowsInUse + 1, n, headers_.nCols);
      if (n > 0) last->nRowsInUse += n;
      qOK = true;
      return;
    }
    const int32_t sFill = std::max(s, 0);
    if (sFill > 0) {
      ArrayTools::CopyRows2(dArray, iRowIn, last->values, last->nRowsInUse + 1, sFill, headers_.nCols);
      last->nRowsInUse = last->nCapacity;
    }
    rows_.buffers.ReDimPreserve(rows_.nBuffers + 1);
    rows_.nBuffers += 1;
    const int32_t r = n - sFill;
    DATABUFFER& fresh = rows_.buffers(rows_.nBuffers);
    MakeAppendedBuffer(fresh, r, headers_.nCols, r < kAppendGranularity + 1 ? kAppendGranularity : r);
    ArrayTools::CopyRows2(dArray, iRowIn + sFill, fresh.values, 1, r, headers_.nCols);
    qOK = true;
  });
}

void mxDataSet::AddRowsToDatasetBuffer_AsColumn(const Array2<float>& dArray, bool& qOK,
                                                int32_t iColumn) {
  qOK = false;
  RunGuarded("mxDataSet  (AddRowsToDatasetBuffer_AsColumn)", [&] {
    if (fetch_.qFetchOnDemand) {
      // Appending to columns that live on disk is not supported.
      GetHostServices().InformationMessage("", "FOD -STILL TO BE CHECKED - AddRowsToDataSetBuffer - during RTM");
      return;
    }
    // The last stored key value: row NumRows, the last row of the last buffer
    // that has rows. With no rows yet every row of dArray is new.
    bool qHaveLast = false;
    float L = 0.0f;
    for (int32_t b = rows_.nBuffers; b >= 1 && !qHaveLast; --b) {
      const DATABUFFER& buf = rows_.buffers(b);
      if (buf.nRowsInUse < 1) continue;
      if (!ValidColumn(iColumn, true)) RaiseFault(kFaultSubscript);
      L = buf.values(buf.nRowsInUse, iColumn);
      qHaveLast = true;
    }
    int32_t iStart = -1;
    for (int32_t r = dArray.LBound(1); r <= dArray.UBound(1); ++r) {
      if (!qHaveLast || dArray(r, iColumn) > L) {
        iStart = r;
        break;
      }
    }
    if (iStart < 1) return;
    AddRowsToDatasetBuffer(dArray, qOK, iStart);
  });
}

// ---- Merging and extracting ----------------------------------------------------------------

void mxDataSet::MergeArraysCore() {
  const int32_t nTotal = get_NumRows();
  if (nTotal < 1 || headers_.nCols < 1) return;
  DATABUFFER& b1 = rows_.buffers(1);
  const int32_t r1 = b1.nRowsInUse;
  ArrayTools::Resize2(b1.values, nTotal, b1.values.UBound(2));
  int32_t w = r1 + 1;
  for (int32_t b = 2; b <= rows_.nBuffers; ++b) {
    const DATABUFFER& bb = rows_.buffers(b);
    if (bb.nRowsInUse < 1) continue;
    const int32_t nc = bb.values.UBound(2);
    (void)b1.values(w + bb.nRowsInUse - 1, nc);
    for (int32_t j = 1; j <= nc; ++j)
      std::memcpy(&b1.values(w, j), bb.values.Column(j), sizeof(float) * static_cast<std::size_t>(bb.nRowsInUse));
    w += bb.nRowsInUse;
  }
  b1.nRowsInUse = nTotal;
  b1.nCapacity = b1.values.UBound(1);
  rows_.buffers.ReDimPreserve(1);
  rows_.nBuffers = 1;
  rows_.appendChunk.reset();
}

void mxDataSet::MergeArrays(bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (MergeArrays)", [&] {
    MergeArraysCore();
    qOK = true;
  });
}

void mxDataSet::ExtractDataArray(Array2<float>& arr2d, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (ExtractDataArray)", [&] {
    // Columns on disk are extracted column by column from what is loaded.
    if (fetch_.qFetchOnDemand) {
      int32_t nCols = 0;
      FODExtractDataArray(arr2d, nCols, qOK);
      return;
    }
    if (rows_.nBuffers > 1) {
      bool qMerged = false;
      MergeArrays(qMerged);
      if (!qMerged) return;
    }
    ExtractDataArrayBuffer(1, arr2d, qOK);
  });
}

void mxDataSet::ExtractArray(Array2<float>& arr2d, bool& qOK) {
  // The two extractions differ only for columns on disk.
  qOK = false;
  RunGuarded("mxDataSet  (ExtractArray)", [&] {
    // Columns on disk are all read, the unloaded ones fetched.
    if (fetch_.qFetchOnDemand) {
      int32_t nCols = 0;
      FODExtractArray(arr2d, nCols, qOK);
      return;
    }
    if (rows_.nBuffers > 1) {
      bool qMerged = false;
      MergeArrays(qMerged);
      if (!qMerged) return;
    }
    ExtractDataArrayBuffer(1, arr2d, qOK);
  });
}

void mxDataSet::ExtractDataArrayBuffer(int32_t iBuffer, Array2<float>& arr2d, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (ExtractDataArrayBuffer)", [&] {
    if (!qInitialised_) return;
    // A data set holding a tabulated function shows the table's rows.
    if (table_.qTableSet) FillBufferFromTable(iBuffer);
    DATABUFFER& buf = rows_.buffers(iBuffer);
    buf.nCapacity = buf.values.UBound(1);
    if (buf.nCapacity < 1) return;
    // An extract gives the whole array, not only the rows in use.
    const int32_t nRows = lists_.qRowMask ? lists_.nRowMask : buf.nCapacity;
    const int32_t nCols = lists_.qColumnList ? lists_.nColumnList : headers_.nCols;
    if (nRows < 1 || nCols < 1) return;
    Array2<float> fresh;
    const bool qReuse = arr2d.IsAllocated() && arr2d.LBound(1) == 1 && arr2d.UBound(1) == nRows &&
                        arr2d.LBound(2) == 1 && arr2d.UBound(2) == nCols;
    Array2<float>& out = qReuse ? arr2d : fresh;
    if (!qReuse) out.ReDim(1, nRows, 1, nCols);
    const std::size_t colBytes = sizeof(float) * static_cast<std::size_t>(nRows);
    if (!lists_.qRowMask && !lists_.qColumnList) {
      const int32_t nHeld = buf.values.UBound(2);
      if (nCols <= nHeld)
        std::memcpy(out.data(), buf.values.data(), colBytes * static_cast<std::size_t>(nCols));
      else
        for (int32_t j = 1; j <= nHeld; ++j) std::memcpy(out.Column(j), buf.values.Column(j), colBytes);
    } else if (!lists_.qRowMask) {
      for (int32_t j = 1; j <= nCols; ++j)
        std::memcpy(out.Column(j), buf.values.Column(lists_.iColumnList(j)), colBytes);
    } else {
      for (int32_t j = 1; j <= nCols; ++j) {
        const int32_t src = lists_.qColumnList ? lists_.iColumnList(j) : j;
        for (int32_t i = 1; i <= nRows; ++i) out(i, j) = buf.values(lists_.iRowMask(i), src);
      }
    }
    if (!qReuse) arr2d.Swap(fresh);
    qOK = true;
  });
}

}  // namespace vndata
