#include "vndata/foundation/packed_headers.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

// Trace tags of this module: "mxPackedHeaders (Code) (<procedure>)".

// Current position of each field of an attribute constant list, by field
// number (ACF_*); the legacy tree path has none.
constexpr int32_t kCurrentFieldPos[13] = {0, 1, 33, 41, 57, 73, 113, 129, 145, 161, 177, 0, 217};

// Bytes at column-major offset of (i, j) in a (1..n1, 1..n2) byte array.
inline std::size_t RecordOffset(int32_t iColumn) {
  return static_cast<std::size_t>(iColumn - 1) * kPackedRecordSize;
}

}  // namespace

int32_t UnpackReserve(int32_t iAttribute) {
  switch (iAttribute) {
    case ATT_ORIGIN: return 1;
    case ATT_CLASS: return 20;
    case ATT_TYPE: return 1;
    case ATT_VARIABLE: return 500;
    case ATT_UNITS: return 500;
    case ATT_MEMBER: return 500;
    case ATT_VERBOSE: return 500;
    case ATT_SUBCLASS1: return 10;
    case ATT_SUBCLASS2: return 10;
    case GRID: return 10;
    case ATT_INDEX: return 100;
    default: return 0;
  }
}

std::string ExtractAttribute(int32_t iAttribute, std::string_view zAttrib232) {
  int32_t p = 0, w = 0;
  InitSingleAttPos(iAttribute, p, w);
  if (p < 1) return std::string();
  if (static_cast<std::size_t>(p - 1) >= zAttrib232.size()) return std::string();
  std::string_view field = zAttrib232.substr(static_cast<std::size_t>(p - 1), static_cast<std::size_t>(w));
  const std::size_t nul = field.find('\0');
  if (nul == 0) return std::string();
  if (nul != std::string_view::npos) field = field.substr(0, nul);
  return StringTools::Trim(field);
}

std::string ExtractAttribute(int32_t iAttribute, const uint8_t* bRecord, int32_t nBytes) {
  return ExtractAttribute(iAttribute, std::string_view(reinterpret_cast<const char*>(bRecord),
                                                       static_cast<std::size_t>(std::max(nBytes, 0))));
}

void BlankHeaders(Array2<uint8_t>& bHeaders, int32_t nCols) {
  bHeaders.ReDim(1, kPackedRecordSize, 1, nCols);
  bHeaders.Fill(' ');
}

void ShapeHeaders(Array2<uint8_t>& bHeaders, int32_t nCols) {
  if (bHeaders.IsAllocated() && bHeaders.LBound(1) == 1 && bHeaders.UBound(1) == kPackedRecordSize &&
      bHeaders.LBound(2) == 1 && bHeaders.UBound(2) == nCols)
    return;
  BlankHeaders(bHeaders, nCols);
}

void PackField(const ByteStore& pool, int32_t iAttribute, const Array<int32_t>& iPointers,
               int32_t nCols, Array2<uint8_t>& bHeaders) {
  int32_t pos = 0, width = 0;
  InitSingleAttPos(iAttribute, pos, width);
  if (pos < 1 || nCols < 1) return;
  (void)bHeaders(kPackedRecordSize, nCols);  // the records must be there
  (void)iPointers(nCols);
  const int32_t cellWidth = pool.Width();
  const int32_t nCells = pool.Count();
  const int32_t nCopy = std::min(cellWidth, width);
  const uint8_t* cells = pool.AllBytes();
  uint8_t* out = bHeaders.data() + (pos - 1);
  const int32_t* ptr = &iPointers(1);
  for (int32_t k = 0; k < nCols; ++k) {
    const int32_t p = ptr[k];
    if (p < 1) continue;
    if (p > nCells) RaiseFault(kFaultSubscript);
    uint8_t* field = out + RecordOffset(k + 1);
    if (nCopy > 0)
      std::memcpy(field, cells + static_cast<std::size_t>(p - 1) * cellWidth, static_cast<std::size_t>(nCopy));
    if (nCopy < width) std::memset(field + nCopy, ' ', static_cast<std::size_t>(width - nCopy));
  }
}

void PackCell(const ByteStore& pool, int32_t iAttribute, int32_t p, uint8_t* bRecord) {
  int32_t pos = 0, width = 0;
  InitSingleAttPos(iAttribute, pos, width);
  if (pos < 1 || p < 1) return;
  if (p > pool.Count()) RaiseFault(kFaultSubscript);
  const int32_t nCopy = std::min(pool.Width(), width);
  uint8_t* field = bRecord + (pos - 1);
  if (nCopy > 0)
    std::memcpy(field, pool.AllBytes() + static_cast<std::size_t>(p - 1) * pool.Width(),
                static_cast<std::size_t>(nCopy));
  if (nCopy < width) std::memset(field + nCopy, ' ', static_cast<std::size_t>(width - nCopy));
}

Array<int32_t> UnpackField(const Array2<uint8_t>& bHeaders, int32_t iAttribute, ByteStore& pool) {
  int32_t pos = 0, width = 0;
  InitSingleAttPos(iAttribute, pos, width);
  if (pos < 1) return Array<int32_t>();
  const int32_t nCols = bHeaders.UBound(2) - bHeaders.LBound(2) + 1;
  const int32_t recSize = bHeaders.UBound(1) - bHeaders.LBound(1) + 1;
  if (pos + width - 1 > recSize) RaiseFault(kFaultSubscript);
  std::vector<uint8_t> block(static_cast<std::size_t>(width) * static_cast<std::size_t>(nCols));
  const uint8_t* in = bHeaders.data() + (pos - 1);
  for (int32_t k = 0; k < nCols; ++k)
    std::memcpy(&block[static_cast<std::size_t>(k) * width],
                in + static_cast<std::size_t>(k) * recSize, static_cast<std::size_t>(width));
  return pool.AddBytes(block.data(), nCols, width);
}

std::string HeaderText(const Array2<uint8_t>& bHeaders, int32_t iColumn) {
  const uint8_t* rec = &bHeaders(1, iColumn);
  (void)bHeaders(kPackedRecordSize, iColumn);
  return std::string(reinterpret_cast<const char*>(rec), kPackedRecordSize);
}

void HeadersFromText(const Array<std::string>& zHeaders, Array2<uint8_t>& bHeaders) {
  const int32_t lo = zHeaders.LBound(), hi = zHeaders.UBound();
  BlankHeaders(bHeaders, hi - lo + 1);
  for (int32_t i = lo; i <= hi; ++i) {
    const std::string& z = zHeaders(i);
    const std::size_t n = std::min<std::size_t>(z.size(), kPackedRecordSize);
    if (n > 0) std::memcpy(&bHeaders(1, i - lo + 1), z.data(), n);
  }
}

void RecordFromText(std::string_view zAttrib232, Array<uint8_t>& bRecord) {
  bRecord.ReDim(1, kPackedRecordSize);
  bRecord.Fill(' ');
  const std::size_t n = std::min<std::size_t>(zAttrib232.size(), kPackedRecordSize);
  if (n > 0) std::memcpy(bRecord.data(), zAttrib232.data(), n);
}

bool Update2NewAttribs(const Array<int32_t>& iAttConst, const Array2<uint8_t>& bOld,
                       Array2<uint8_t>& bNew, int32_t nRecords) {
  bool qOK = false;
  RunGuarded("mxPackedHeaders (Code) (Update2NewAttribs)", [&] {
    Array2<uint8_t> out(1, kPackedRecordSize, 1, nRecords);
    Array<uint8_t> work(1, kPackedRecordSize);  // zeros, kept from record to record
    for (int32_t r = 1; r <= nRecords; ++r) {
      for (int32_t f = ACF_ORIGIN; f <= ACF_GRID; ++f) {
        if (f == ACF_TREEPATH) continue;
        int32_t pos = 0, width = 0;
        AttConstField(iAttConst, f, pos, width);
        if (width < 1) continue;
        const int32_t cur = kCurrentFieldPos[f];
        // Both ends of both fields must lie inside their records.
        (void)bOld(pos, r);
        (void)bOld(pos + width - 1, r);
        (void)work(cur + width - 1);
        std::memcpy(&work(cur), &bOld(pos, r), static_cast<std::size_t>(width));
      }
      std::memcpy(&out(1, r), work.data(), kPackedRecordSize);
    }
    bNew.Swap(out);
    qOK = true;
  });
  return qOK;
}

bool UpdateBONLY(int32_t nRecords, const Array<int32_t>& iAttConst, const Array<uint8_t>& bOld,
                 Array2<uint8_t>& bOnly) {
  bool qOK = false;
  RunGuarded("mxPackedHeaders (Code) (UpdateBONLY)", [&] {
    int32_t pos = 0, wClass = 0, wMember = 0;
    AttConstField(iAttConst, ACF_CLASS, pos, wClass);
    AttConstField(iAttConst, ACF_MEMBER, pos, wMember);
    const int32_t w = wClass + wMember;
    Array2<uint8_t> out(1, kOnlyRecordSize, 1, nRecords);
    for (int32_t i = 1; i <= nRecords; ++i) {
      if (w < 1) break;
      const int64_t from = static_cast<int64_t>(i - 1) * w;
      (void)bOld(bOld.LBound() + from);
      (void)bOld(bOld.LBound() + from + w - 1);
      (void)out(w, i);
      std::memcpy(&out(1, i), &bOld(bOld.LBound() + from), static_cast<std::size_t>(w));
    }
    bOnly.Swap(out);
    qOK = true;
  });
  return qOK;
}

}  // namespace vndata
