// Header words and the readers of the byte forms (layouts in marker_bytes.h).
#include "vndata/persist/marker_bytes.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <string_view>
#include <utility>

#include "vndata/persist/marker_bytes_detail.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace marker_detail {

double TextValue(std::string_view zText) {
  // The characters of the text with the passed-over blanks taken out.
  std::string z;
  z.reserve(zText.size());
  for (char c : zText)
    if (c != ' ' && c != '\t' && c != '\n') z.push_back(c);
  std::size_t p = 0;
  const bool qNegative = p < z.size() && z[p] == '-';
  if (p < z.size() && (z[p] == '-' || z[p] == '+')) ++p;
  auto isDigit = [&](std::size_t q) { return q < z.size() && z[q] >= '0' && z[q] <= '9'; };
  // Mantissa: its digits, and the power of ten of its first non-zero digit.
  const std::size_t start = p;
  std::size_t nDigits = 0;
  int64_t iLead = 0;
  bool qNonZero = false;
  for (; isDigit(p); ++p, ++nDigits) {
    if (qNonZero)
      ++iLead;
    else if (z[p] != '0')
      qNonZero = true;
  }
  if (p < z.size() && z[p] == '.') {
    int64_t iFraction = 0;
    for (++p; isDigit(p); ++p, ++nDigits) {
      --iFraction;
      if (!qNonZero && z[p] != '0') {
        qNonZero = true;
        iLead = iFraction;
      }
    }
  }
  if (nDigits == 0) return 0.0;
  std::string number = z.substr(start, p - start);
  int64_t iExponent = 0;
  if (p < z.size() && (z[p] == 'E' || z[p] == 'e' || z[p] == 'D' || z[p] == 'd')) {
    std::size_t q = p + 1;
    const bool qNegExp = q < z.size() && z[q] == '-';
    if (q < z.size() && (z[q] == '-' || z[q] == '+')) ++q;
    if (isDigit(q)) {
      std::string exponent = qNegExp ? "e-" : "e";
      for (; isDigit(q); ++q) {
        exponent.push_back(z[q]);
        if (iExponent < 100000) iExponent = iExponent * 10 + (z[q] - '0');
      }
      if (qNegExp) iExponent = -iExponent;
      number += exponent;
    }
  }
  if (!qNonZero) return 0.0;
  double v = 0.0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), v);
  if (result.ec == std::errc::result_out_of_range) {
    // Beyond a double above is an overflow; below, the value is zero.
    if (iLead + iExponent > 0) RaiseFault(kFaultOverflow);
    return 0.0;
  }
  return qNegative ? -v : v;
}

}  // namespace marker_detail

using namespace marker_detail;

namespace {

constexpr char kTagSetMarkerINTEHead[] = "mxDataSet  (setMarkerINTEHead)";
constexpr char kTagGetMarkerINTEHead[] = "mxDataSet  (getMarkerINTEHead)";
constexpr char kTagGetMarkerINTEHeadData[] = "mxDataSet  (getMarkerINTEHeadData)";
constexpr char kTagFromBMarkers[] = "mxDataSet  (SetMarkersUDTFromBMarkers)";
constexpr char kTagFromByte32[] = "mxDataSet  (SetMarkersUDTFromByte32)";
constexpr char kTagFromByte32Ex[] = "mxDataSet  (SetMarkersUDTFromByte32Ex)";
constexpr char kTagFromByte[] = "mxDataSet  (SetMarkersUDTFromByte)";

// Reads the header of bMarker and checks that it describes n markers whose
// integer blocks and names lie inside the array. False when it does not.
bool ReadCheckedHead(int32_t n, const Array<uint8_t>& bMarker, MarkerHead& head) {
  Array<int32_t> iHead;
  int32_t nHead = 0;
  bool qOK = false;
  getMarkerINTEHead(bMarker, iHead, nHead, qOK);
  if (!qOK) return false;
  getMarkerINTEHeadData(iHead, nHead, head, qOK);
  if (!qOK) return false;
  // Words 2 to 6 of each block are read: a shorter block is not a marker.
  if (head.nIntWords < kMarkerPlainWords) return false;
  const int64_t size = static_cast<int64_t>(bMarker.size());
  const int64_t intBytes = int64_t{head.nIntWords} * 4;
  const int64_t nameStride = int64_t{head.nStrings} * head.nStringBytes;
  return SpanInside(head.iIntStart, intBytes, n, intBytes, size) &&
         SpanInside(head.iStringStart, nameStride, n, kMarkerNameBytes, size);
}

// Builds the records from an "MK32" or "MKEX" array whose header has been
// checked for n markers, with room for nCapacity wells to start with.
MarkerSet FromByte32(int32_t n, const Array<uint8_t>& bMarker, const MarkerHead& head,
                     int32_t nCapacity) {
  const uint8_t* b = bMarker.data();
  const int64_t intBytes = int64_t{head.nIntWords} * 4;
  const int64_t nameStride = int64_t{head.nStrings} * head.nStringBytes;
  auto read = [&](int32_t m, IncomingMarker& in) {
    in.zKey = StringTools::Trim(ByteText(b + (head.iStringStart - 1) + (m - 1) * nameStride, kMarkerNameBytes));
    // Word 1 of the block is not used; 2 to 4 are I, J, K, 5 the style and
    // 6 the status.
    const uint8_t* block = b + (head.iIntStart - 1) + (m - 1) * intBytes;
    in.i = GetLE32(block + 4);
    in.j = GetLE32(block + 8);
    in.k = GetLE32(block + 12);
    in.iStyle = GetLE32(block + 16);
    in.iStatus = GetLE32(block + 20);
  };
  auto startWell = [&](int32_t m, WELLINFO& w) {
    std::memcpy(w.zWellName, b + (head.iStringStart - 1) + (m - 1) * nameStride, kMarkerNameBytes);
    PutDefaultGridName(w.zGridName);
  };
  return GroupIntoWells(n, nCapacity, kWellGrowthBytes, read, startWell);
}

}  // namespace

// ---- Header words ---------------------------------------------------------------

int32_t MarkerType(int32_t nMarker, const Array<uint8_t>& bMarker) {
  if (nMarker < 1 || !bMarker.IsAllocated() || bMarker.UBound() < 12) return kMarkersOlder;
  const uint8_t* b = bMarker.data();
  const int64_t size = static_cast<int64_t>(bMarker.size());
  if (size < 8) return kMarkersOlder;
  int32_t form = 0;
  if (std::memcmp(b, "MK32", 4) == 0)
    form = kMarkersMK32;
  else if (std::memcmp(b, "MKEX", 4) == 0)
    form = kMarkersMKEX;
  else
    return kMarkersOlder;
  if (GetLE32(b + 4) < 2) return kMarkersOlder;
  const int32_t h10 = size >= 48 ? GetLE32(b + 44) : -1;
  const int32_t h11 = size >= 52 ? GetLE32(b + 48) : -1;
  if (h10 != bMarker.UBound() || h11 != nMarker) return kMarkersOlder;
  return form;
}

void setMarkerINTEHead(int32_t n, int32_t iH12, int32_t iH13, Array<int32_t>& iHead, int32_t& nHead,
                       bool& qOK, bool qExtended, bool qFloats) {
  qOK = false;
  RunGuarded(kTagSetMarkerINTEHead, [&] {
    const int64_t h1 = qExtended ? kMarkerExtendedWords : kMarkerPlainWords;
    const int64_t h2 = qFloats ? kMarkerExtendedFloats : 0;
    const int64_t h3 = qExtended ? kMarkerExtendedDoubles : 0;
    const int64_t h4 = 1, h5 = kMarkerNameBytes;
    const int64_t h6 = 8 + 4 * int64_t{kMarkerHeadWords} + 1;
    const int64_t h7 = h6 + n * h1 * 4;
    const int64_t h8 = h7 + n * h2 * 4;
    const int64_t h9 = h8 + n * h3 * 8;
    const int64_t h10 = h9 + n * h4 * h5 - 1;
    Array<int32_t> words(1, kMarkerHeadWords);
    const int64_t values[] = {h1, h2, h3, h4, h5, h6, h7, h8, h9, h10, n, iH12, iH13};
    int32_t w = 0;
    for (int64_t v : values) words(++w) = Narrow(v);
    iHead.Swap(words);
    nHead = kMarkerHeadWords;
    qOK = true;
  });
}

void getMarkerINTEHead(const Array<uint8_t>& bMarker, Array<int32_t>& iHead, int32_t& nHead, bool& qOK) {
  qOK = false;
  RunGuarded(kTagGetMarkerINTEHead, [&] {
    const int64_t size = static_cast<int64_t>(bMarker.size());
    if (size <= 12) return;
    const uint8_t* b = bMarker.data();
    const int32_t nWords = GetLE32(b + 4);
    if (nWords < 1 || nWords > kMarkerHeadWords) return;
    if (8 + 4 * int64_t{nWords} > size) return;
    Array<int32_t> words(1, kMarkerHeadWords);
    for (int32_t w = 1; w <= nWords; ++w) words(w) = GetLE32(b + 8 + 4 * (w - 1));
    iHead.Swap(words);
    nHead = nWords;
    qOK = true;
  });
}

void getMarkerINTEHeadData(const Array<int32_t>& iHead, int32_t nHead, MarkerHead& head, bool& qOK) {
  qOK = false;
  RunGuarded(kTagGetMarkerINTEHeadData, [&] {
    if (nHead < 1 || nHead > kMarkerHeadWords || !iHead.InBounds(1) || !iHead.InBounds(nHead)) return;
    auto word = [&](int32_t w) { return w <= nHead ? iHead(w) : 0; };
    MarkerHead h;
    h.nIntWords = word(1);
    h.nFloatWords = word(2);
    h.nDoubleWords = word(3);
    h.nStrings = word(4);
    h.nStringBytes = word(5);
    h.iIntStart = word(6);
    h.iFloatStart = word(7);
    h.iDoubleStart = word(8);
    h.iStringStart = word(9);
    h.iTotalLength = word(10);
    h.nMarkers = word(11);
    h.iCaller1 = word(12);
    h.iCaller2 = word(13);
    head = h;
    qOK = true;
  });
}

// ---- Building the records ------------------------------------------------------

void SetMarkersUDTFromBMarkers(MarkerSet& set, int32_t nMarker, const Array<uint8_t>& bMarker,
                               bool& qOK) {
  qOK = false;
  RunGuarded(kTagFromBMarkers, [&] {
    switch (MarkerType(nMarker, bMarker)) {
      case kMarkersMK32: SetMarkersUDTFromByte32(set, nMarker, bMarker, qOK); break;
      case kMarkersMKEX: SetMarkersUDTFromByte32Ex(set, nMarker, bMarker, qOK); break;
      default: SetMarkersUDTFromByte(set, nMarker, bMarker, qOK); break;
    }
  });
}

void SetMarkersUDTFromByte32(MarkerSet& set, int32_t nMarker, const Array<uint8_t>& bMarker,
                             bool& qOK) {
  qOK = false;
  RunGuarded(kTagFromByte32, [&] {
    if (nMarker == 0) {
      qOK = true;
      return;
    }
    MarkerHead head;
    if (nMarker < 0 || !ReadCheckedHead(nMarker, bMarker, head)) return;
    MarkerSet built = FromByte32(nMarker, bMarker, head, nMarker);
    std::swap(set, built);
    qOK = true;
  });
}

void SetMarkersUDTFromByte32Ex(MarkerSet& set, int32_t nMarker, const Array<uint8_t>& bMarker,
                               bool& qOK) {
  qOK = false;
  RunGuarded(kTagFromByte32Ex, [&] {
    if (nMarker == 0) {
      qOK = true;
      return;
    }
    if (nMarker < 0) return;
    Array<int32_t> iHead;
    int32_t nHead = 0;
    MarkerHead head;
    getMarkerINTEHead(bMarker, iHead, nHead, qOK);
    if (qOK) getMarkerINTEHeadData(iHead, nHead, head, qOK);
    if (!qOK) return;
    qOK = false;
    if (head.nMarkers < 1) {
      // A header that counts no markers empties the set.
      MarkerSet empty = EmptyMarkerSet();
      std::swap(set, empty);
      qOK = true;
      return;
    }
    if (!ReadCheckedHead(nMarker, bMarker, head)) return;
    // The header's count starts the well array; no more wells than markers
    // can come, so a count beyond them allocates nothing more.
    MarkerSet built = FromByte32(nMarker, bMarker, head, std::min(head.nMarkers, nMarker));
    std::swap(set, built);
    qOK = true;
  });
}

void SetMarkersUDTFromByte(MarkerSet& set, int32_t nMarker, const Array<uint8_t>& bMarker, bool& qOK) {
  qOK = false;
  RunGuarded(kTagFromByte, [&] {
    if (nMarker == 0) {
      qOK = true;
      return;
    }
    if (nMarker < 0) return;
    const int64_t n = nMarker;
    const int64_t stringStart = n * (kOldMarkerWordBytes + kOldMarkerSkipBytes);
    if (stringStart + n * kOldMarkerStringBytes > static_cast<int64_t>(bMarker.size())) return;
    const uint8_t* b = bMarker.data();
    auto strings = [&](int32_t m) { return b + stringStart + int64_t{m - 1} * kOldMarkerStringBytes; };
    auto read = [&](int32_t m, IncomingMarker& in) {
      // Strings of a marker: status text, well name, style text, one unread.
      const uint8_t* s = strings(m);
      in.zKey = StringTools::Trim(ByteText(s + kMarkerNameBytes, kMarkerNameBytes));
      const uint8_t* words = b + int64_t{m - 1} * kOldMarkerWordBytes;
      in.i = GetLE32(words + 8);
      in.j = GetLE32(words + 12);
      in.k = GetLE32(words + 16);
      in.iStatus = RoundToLong(TextValue(ByteText(s, kMarkerNameBytes)));
      in.iStyle = std::memcmp(s + 2 * kMarkerNameBytes, "WELL", 4) == 0 ? 1 : 0;
    };
    auto startWell = [&](int32_t m, WELLINFO& w) {
      std::memcpy(w.zWellName, strings(m) + kMarkerNameBytes, kMarkerNameBytes);
      PutDefaultGridName(w.zGridName);
    };
    MarkerSet built = GroupIntoWells(nMarker, nMarker, kWellGrowthBytes, read, startWell);
    std::swap(set, built);
    qOK = true;
  });
}

}  // namespace vndata
