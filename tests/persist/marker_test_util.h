// Marker byte arrays laid out by hand for the marker tests, byte by byte
// from the layout tables (never through the code under test), and the small
// case they describe: three wells and seven markers.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "vndata/persist/marker_bytes.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/variant.h"

namespace vndata::marker_test {

// Bytes appended one field at a time; numbers little-endian, written out
// byte by byte here.
class HandBytes {
 public:
  HandBytes& Word(int32_t v) {
    const auto u = static_cast<uint32_t>(v);
    for (int s = 0; s < 32; s += 8) bytes_.push_back(static_cast<uint8_t>((u >> s) & 0xFF));
    return *this;
  }
  HandBytes& Words(std::initializer_list<int32_t> vs) {
    for (int32_t v : vs) Word(v);
    return *this;
  }
  HandBytes& Float(float v) { return Word(static_cast<int32_t>(std::bit_cast<uint32_t>(v))); }
  HandBytes& Double(double v) {
    const auto u = std::bit_cast<uint64_t>(v);
    for (int s = 0; s < 64; s += 8) bytes_.push_back(static_cast<uint8_t>((u >> s) & 0xFF));
    return *this;
  }
  // zText in exactly nWidth bytes, blank-padded.
  HandBytes& Text(std::string_view zText, std::size_t nWidth) {
    for (std::size_t i = 0; i < nWidth; ++i) bytes_.push_back(i < zText.size() ? static_cast<uint8_t>(zText[i]) : ' ');
    return *this;
  }
  HandBytes& Raw(std::initializer_list<uint8_t> bs) {
    bytes_.insert(bytes_.end(), bs);
    return *this;
  }
  std::size_t size() const { return bytes_.size(); }
  std::vector<uint8_t>& bytes() { return bytes_; }
  Array<uint8_t> ToArray() const { return ToByteArray(bytes_); }

  static Array<uint8_t> ToByteArray(const std::vector<uint8_t>& v) {
    Array<uint8_t> a;
    if (v.empty()) return a;
    a.ReDim(1, static_cast<int32_t>(v.size()));
    std::memcpy(a.data(), v.data(), v.size());
    return a;
  }

 private:
  std::vector<uint8_t> bytes_;
};

inline std::vector<uint8_t> ToVector(const Array<uint8_t>& a) {
  return a.IsAllocated() ? std::vector<uint8_t>(a.data(), a.data() + a.size()) : std::vector<uint8_t>();
}

// One marker of the case.
struct CaseMarker {
  const char* zName;
  int32_t i, j, k;
  int32_t iStyle;   // 1 "WELL", 0 "PERF"
  int32_t iStatus;
};

// Well P1 (markers 1-3), well INJ (4-5), and P1 again (6-7): the same name
// after another one starts a third well.
inline const CaseMarker kCase[7] = {
    {"P1", 10, 12, 1, 1, 4},   {"P1", 10, 12, 5, 0, 4}, {"P1", 10, 12, 6, 0, 104},
    {"INJ", 3, 4, 1, 1, 2},    {"INJ", 3, 4, 8, 0, 2},  {"P1", 20, 21, 1, 1, 5},
    {"P1", 20, 21, 9, 0, 0},
};

// The case as "MK32", 536 bytes.
inline Array<uint8_t> HandMK32Case() {
  HandBytes b;
  b.Text("MK32", 4).Word(20);
  // H1 6 integer words, H2 no floats, H3 no doubles, H4 one string of H5 40
  // bytes; H6 integers from 89 = 8 + 4 * 20 + 1; H7 = H8 = H9 = 89 + 7 * 6 *
  // 4 = 257; H10 = 257 + 7 * 40 - 1 = 536; H11 7 markers; H12 to H20 0.
  b.Words({6, 0, 0, 1, 40, 89, 257, 257, 257, 536, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0});
  EXPECT_EQ(b.size(), 88u);
  for (const CaseMarker& m : kCase) b.Words({0, m.i, m.j, m.k, m.iStyle, m.iStatus});
  EXPECT_EQ(b.size(), 256u);
  for (const CaseMarker& m : kCase) b.Text(m.zName, 40);
  EXPECT_EQ(b.size(), 536u);
  return b.ToArray();
}

// The case as "MKEX" with 16 integer words, 35 floats and 10 doubles a
// marker (filled with values a reader must skip); H12 11 and H13 22.
inline Array<uint8_t> HandMKEXCase() {
  HandBytes b;
  b.Text("MKEX", 4).Word(20);
  // H7 = 89 + 7 * 16 * 4 = 537; H8 = 537 + 7 * 35 * 4 = 1517;
  // H9 = 1517 + 7 * 10 * 8 = 2077; H10 = 2077 + 7 * 40 - 1 = 2356.
  b.Words({16, 35, 10, 1, 40, 89, 537, 1517, 2077, 2356, 7, 11, 22, 0, 0, 0, 0, 0, 0, 0});
  int32_t m = 0;
  for (const CaseMarker& c : kCase) {
    ++m;
    b.Words({0, c.i, c.j, c.k, c.iStyle, c.iStatus});
    for (int32_t w = 7; w <= 16; ++w) b.Word(1000 * m + w);
  }
  EXPECT_EQ(b.size(), 536u);
  for (int32_t n = 0; n < 7 * 35; ++n) b.Float(0.25f * static_cast<float>(n));
  EXPECT_EQ(b.size(), 1516u);
  for (int32_t n = 0; n < 7 * 10; ++n) b.Double(-1.5 * n);
  EXPECT_EQ(b.size(), 2076u);
  for (const CaseMarker& c : kCase) b.Text(c.zName, 40);
  EXPECT_EQ(b.size(), 2356u);
  return b.ToArray();
}

// The case in the older form: 7 words a marker (I, J, K in words 3 to 5;
// the others hold values that are not read), 8 unread bytes a marker, then
// four 40-byte strings a marker: status text, name, style text, unread.
inline Array<uint8_t> HandOlderCase() {
  HandBytes b;
  int32_t m = 0;
  for (const CaseMarker& c : kCase) {
    ++m;
    b.Words({-m, 77, c.i, c.j, c.k, 500 + m, 600 + m});
  }
  for (int32_t n = 0; n < 7 * 8; ++n) b.Raw({0xEE});
  EXPECT_EQ(b.size(), 7u * 36u);
  for (const CaseMarker& c : kCase) {
    b.Text(std::to_string(c.iStatus), 40);
    b.Text(c.zName, 40);
    b.Text(c.iStyle == 1 ? "WELL" : "PERF", 40);
    b.Text("NOT READ", 40);
  }
  EXPECT_EQ(b.size(), 7u * 196u);
  return b.ToArray();
}

// The case as a vMarkers table, with the fields the records do not keep
// filled as well.
inline Array2<Variant> CaseTable(const std::string& zGrid = "GRIDNAME") {
  Array2<Variant> v(1, 55, 1, 7);
  int32_t m = 0;
  for (const CaseMarker& c : kCase) {
    ++m;
    v(1, m) = int32_t{100 + m};
    v(2, m) = int32_t{200 + m};
    v(3, m) = c.i;
    v(4, m) = c.j;
    v(5, m) = c.k;
    v(6, m) = int32_t{255};
    v(7, m) = std::string("SWAT");
    v(8, m) = 1.5f;
    v(9, m) = 2.5f;
    v(10, m) = std::to_string(c.iStatus);
    v(11, m) = std::string(c.zName);
    v(12, m) = std::string(c.iStyle == 1 ? "WELL" : "PERF");
    v(13, m) = zGrid;
  }
  return v;
}

inline std::string Name40(const uint8_t* p) { return std::string(reinterpret_cast<const char*>(p), 40); }
inline std::string Padded40(const std::string& z) { return z + std::string(40 - z.size(), ' '); }

// Field-by-field equality of two sets (the records as bytes).
inline void ExpectSameSet(const MarkerSet& a, const MarkerSet& b) {
  EXPECT_EQ(a.NumWells, b.NumWells);
  EXPECT_EQ(a.NumMarkers, b.NumMarkers);
  EXPECT_EQ(a.nWellsAllocated, b.nWellsAllocated);
  EXPECT_EQ(a.nMaxConnections, b.nMaxConnections);
  ASSERT_EQ(a.Wells.size(), b.Wells.size());
  ASSERT_EQ(a.Markers.size(), b.Markers.size());
  if (a.Wells.size() > 0) {
    EXPECT_EQ(0, std::memcmp(a.Wells.data(), b.Wells.data(), a.Wells.size() * sizeof(WELLINFO)));
  }
  if (a.Markers.size() > 0) {
    EXPECT_EQ(0, std::memcmp(a.Markers.data(), b.Markers.data(), a.Markers.size() * sizeof(MARKERINFO)));
  }
}

// A set that no test input builds, to see that a refused read leaves it.
inline MarkerSet SentinelSet() {
  MarkerSet s;
  s.Wells.ReDim(1, 1);
  s.Markers.ReDim(1, 2);
  std::memcpy(s.Wells(1).zWellName, "SENTINEL", 8);
  s.Wells(1).iWell = 1;
  s.Wells(1).nWellMarkers = 2;
  s.Wells(1).iFirstMarker = 1;
  s.Markers(1).iMarker = 1;
  s.Markers(1).iWell = 1;
  s.Markers(1).i = 42;
  s.Markers(2).iMarker = 2;
  s.Markers(2).iWell = 1;
  s.Markers(2).k = 43;
  s.NumWells = 1;
  s.NumMarkers = 2;
  s.nWellsAllocated = 1;
  s.nMaxConnections = 1;
  return s;
}

}  // namespace vndata::marker_test
