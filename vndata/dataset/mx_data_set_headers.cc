// mxDataSet: column attributes to and from packed header records.
#include <cstring>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/internal/column_pointers.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {

// Makes bRecord a blank record of 233 bytes unless it already is one.
void ShapeRecord(Array<uint8_t>& bRecord) {
  if (bRecord.IsAllocated() && bRecord.LBound() == 1 && bRecord.UBound() == kPackedRecordSize) return;
  bRecord.ReDim(1, kPackedRecordSize);
  bRecord.Fill(' ');
}

}  // namespace

// ---- Packing ---------------------------------------------------------------------------------

void mxDataSet::packSinglebHeaders(const std::shared_ptr<ByteStore>& xPool, int32_t iAttribute,
                                   Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (packSinglebHeaders)", [&] {
    ShapeHeaders(bHeaders, headers_.nCols);
    if (xPool && xPool->Count() > 0) {
      Array<int32_t> iPointers;
      if (!getSingleAttributePointers(headers_.columns, iAttribute, iPointers)) return;
      PackField(*xPool, iAttribute, iPointers, headers_.nCols, bHeaders);
    }
    qOK = true;
  });
}

void mxDataSet::packbHeaders(Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (packbHeaders)", [&] {
    for (int32_t id : kPackOrder) {
      bool qOne = false;
      packSinglebHeaders(headers_.pools(id), id, bHeaders, qOne);
      if (!qOne) return;
    }
    qOK = true;
  });
}

void mxDataSet::PackRecordCore(int32_t iColumn, const ByteStore* pool, int32_t iAttribute,
                               Array<uint8_t>& bRecord) {
  ShapeRecord(bRecord);
  if (pool == nullptr || pool->Count() < 1) return;
  int32_t p = -1;
  if (!ReadAttributePointer(headers_.columns(iColumn).Pointers, iAttribute, p)) return;
  PackCell(*pool, iAttribute, p, bRecord.data());
}

void mxDataSet::packbHeader(int32_t iColumn, const std::shared_ptr<ByteStore>& xPool,
                            int32_t iAttribute, Array<uint8_t>& bRecord, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (packbHeader)", [&] {
    PackRecordCore(iColumn, xPool.get(), iAttribute, bRecord);
    qOK = true;
  });
}

void mxDataSet::packbHeader(int32_t iColumn, Array<uint8_t>& bRecord, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (packbHeader)", [&] {
    bRecord.ReDim(1, kPackedRecordSize);
    bRecord.Fill(' ');
    for (int32_t id : kPackOrder) PackRecordCore(iColumn, Pool(id), id, bRecord);
    qOK = true;
  });
}

// ---- Unpacking -------------------------------------------------------------------------------

void mxDataSet::UnpackbHeader(const Array2<uint8_t>& bHeaders, int32_t iAttribute,
                              std::shared_ptr<ByteStore>& xPool, bool& qOK, int32_t nReserve,
                              int32_t iFirstColumn) {
  qOK = false;
  RunGuarded("mxDataSet  (UnpackbHeader)", [&] {
    ColumnPointersChanged();
    int32_t pos = 0, width = 0;
    InitSingleAttPos(iAttribute, pos, width);
    if (iFirstColumn == 1 && !xPool) {
      xPool = std::make_shared<ByteStore>();
      xPool->Reserve(nReserve, width / 2);
    }
    if (!xPool) RaiseFault(kFaultObjectNotSet);
    const Array<int32_t> cells = UnpackField(bHeaders, iAttribute, *xPool);
    if (cells.IsAllocated()) {
      const int32_t f = iFirstColumn < 2 ? 1 : iFirstColumn;
      const int32_t n = static_cast<int32_t>(cells.size());
      (void)headers_.columns(f + n - 1);
      for (int32_t i = 1; i <= n; ++i) WriteAttributePointer(headers_.columns(f - 1 + i).Pointers, iAttribute, cells(i));
    }
    qOK = true;
  });
}

bool mxDataSet::UnpackbHeadersCore(const Array2<uint8_t>& bHeaders, int32_t iFirstColumn) {
  for (int32_t id : kPackOrder) {
    bool qOne = false;
    UnpackbHeader(bHeaders, id, headers_.pools(id), qOne, UnpackReserve(id), iFirstColumn);
    if (!qOne) return false;
  }
  return true;
}

void mxDataSet::UnpackbHeaders(const Array2<uint8_t>& bHeaders, bool& qOK, int32_t iFirstColumn) {
  qOK = false;
  RunGuarded("mxDataSet  (UnpackbHeaders)", [&] { qOK = UnpackbHeadersCore(bHeaders, iFirstColumn); });
}

void mxDataSet::UnpackSingleCore(int32_t iColumn, const Array<uint8_t>& bRecord, int32_t iAttribute) {
  ColumnPointersChanged();
  std::shared_ptr<ByteStore>& slot = headers_.pools(iAttribute);
  if (!slot) slot = std::make_shared<ByteStore>();
  const std::string zText =
      ExtractAttribute(iAttribute, bRecord.data(), static_cast<int32_t>(bRecord.size()));
  // An empty field adds nothing: the attribute has no value.
  const int32_t cell = zText.empty() ? -1 : slot->AddString(zText, true, false);
  WriteAttributePointer(headers_.columns(iColumn).Pointers, iAttribute, cell);
}

void mxDataSet::UnpackSinglebHeader(int32_t iColumn, const Array<uint8_t>& bRecord, int32_t iAttribute,
                                    std::shared_ptr<ByteStore>& xPool, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (UnpackSinglebHeader)", [&] {
    ColumnPointersChanged();
    if (!xPool) xPool = std::make_shared<ByteStore>();
    const std::string zText =
        ExtractAttribute(iAttribute, bRecord.data(), static_cast<int32_t>(bRecord.size()));
    const int32_t cell = zText.empty() ? -1 : xPool->AddString(zText, true, false);
    WriteAttributePointer(headers_.columns(iColumn).Pointers, iAttribute, cell);
    qOK = true;
  });
}

void mxDataSet::unPackSinglebHeaders(int32_t iColumn, const Array<uint8_t>& bRecord, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (unPackSinglebHeaders)", [&] {
    if (ValidColumn(iColumn, true))
      for (int32_t id : kPackOrder) UnpackSingleCore(iColumn, bRecord, id);
    qOK = true;
  });
}

bool mxDataSet::SetUDTAttribute(int32_t Index, const std::string& zAttrib232) {
  bool qResult = false;
  RunGuarded("mxDataSet  (SetUDTAttribute)", [&] {
    if (!ValidColumn(Index, true)) return;
    Array<uint8_t> bRecord;
    RecordFromText(zAttrib232, bRecord);
    for (int32_t id : kPackOrder) UnpackSingleCore(Index, bRecord, id);
    qResult = true;
  });
  return qResult;
}

void mxDataSet::InitByteStorage(bool qCreate, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (InitByteStorage)", [&] {
    if (qCreate)
      headers_.pools.ReDim(1, kNumAttributes);
    else
      headers_.pools.Erase();
    qOK = true;
  });
}

// ---- Requests --------------------------------------------------------------------------------

void mxDataSet::bExtractDataHeaders(Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (bExtractDataHeaders)", [&] {
    if (!qInitialised_) return;
    // Columns on disk are counted by NumCols; in memory by the first buffer.
    const int32_t n = fetch_.qFetchOnDemand ? headers_.nCols : rows_.buffers(1).nColumns;
    if (n == 0) return;
    BlankHeaders(bHeaders, n);
    packbHeaders(bHeaders, qOK);
  });
}

void mxDataSet::bExtractHeaders(Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (bExtractHeaders)", [&] {
    if (!qInitialised_) return;
    if (fetch_.qFetchOnDemand) {
      bgetHeaders(bHeaders, qOK);
      return;
    }
    const DATABUFFER& b1 = rows_.buffers(1);
    if (b1.nRowsInUse < 1 || b1.nColumns == 0) return;
    Array2<uint8_t> all;
    BlankHeaders(all, b1.nColumns);
    bool qPacked = false;
    packbHeaders(all, qPacked);
    if (!qPacked) return;
    if (lists_.qColumnList) {
      // Only the records of the selected columns, in the order of the selection.
      Array2<uint8_t> kept;
      BlankHeaders(kept, lists_.nColumnList);
      for (int32_t j = 1; j <= lists_.nColumnList; ++j)
        std::memcpy(&kept(1, j), &all(1, lists_.iColumnList(j)), kPackedRecordSize);
      bHeaders.Swap(kept);
    } else {
      bHeaders.Swap(all);
    }
    qOK = true;
  });
}

void mxDataSet::bgetHeaders(Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (bgetHeaders)", [&] {
    if (!qInitialised_ || headers_.nCols < 1) return;
    BlankHeaders(bHeaders, headers_.nCols);
    packbHeaders(bHeaders, qOK);
  });
}

void mxDataSet::bExtract2dArrays(Array2<float>& arr2d, Array2<uint8_t>& bHeaders, bool& qOK) {
  bool qData = false;
  ExtractDataArray(arr2d, qData);
  bExtractHeaders(bHeaders, qOK);
}

void mxDataSet::bExtractData(Array2<float>& arr2d, Array2<uint8_t>& bHeaders, bool& qOK) {
  bool qData = false;
  ExtractArray(arr2d, qData);
  bExtractDataHeaders(bHeaders, qOK);
}

void mxDataSet::ExtractHeaders(Array<std::string>& zHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (ExtractHeaders)", [&] {
    if (!qInitialised_) return;
    // An empty first buffer is no failure here: there is nothing to give.
    if (!fetch_.qFetchOnDemand && rows_.buffers(1).nRowsInUse < 1) {
      qOK = true;
      return;
    }
    Array2<uint8_t> bHeaders;
    bool qPacked = false;
    bExtractHeaders(bHeaders, qPacked);
    if (!qPacked) return;
    const int32_t n = bHeaders.UBound(2);
    Array<std::string> out(1, n);
    for (int32_t c = 1; c <= n; ++c) out(c) = HeaderText(bHeaders, c);
    zHeaders.Swap(out);
    qOK = true;
  });
}

void mxDataSet::ExtractDataArrays(Array2<float>& arr2d, Array<std::string>& zAttrib2d, bool& qOK) {
  qOK = false;
  bool qData = false;
  ExtractDataArray(arr2d, qData);
  if (!qData) return;
  bool qHeaders = false;
  ExtractHeaders(zAttrib2d, qHeaders);
  qOK = true;
}

void mxDataSet::Extract2dArrays(Array2<float>& arr2d, Array<std::string>& attrib2d) {
  bool qStep = false;
  ExtractDataArray(arr2d, qStep);
  ExtractHeaders(attrib2d, qStep);
}

bool mxDataSet::bGetAttributes(int32_t ThisCol, Array<uint8_t>& bAttributes) {
  if (!ValidColumn(ThisCol, true)) return false;
  bool qOK = false;
  packbHeader(ThisCol, bAttributes, qOK);
  return qOK;
}

}  // namespace vndata
