// Helpers shared by the marker readers and writers; not part of the
// library's surface.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "vndata/persist/marker_bytes.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata::marker_detail {

// The well array of a byte array grows by this many records when full, that
// of vMarkers by kWellGrowthVariants.
constexpr int32_t kWellGrowthBytes = 1000;
constexpr int32_t kWellGrowthVariants = 100;

// The fields of vMarkers that the records keep.
enum MarkerField : int32_t {
  kFieldI = 3,
  kFieldJ = 4,
  kFieldK = 5,
  kFieldStatus = 10,
  kFieldName = 11,
  kFieldStyle = 12,
  kFieldGrid = 13,
  kMarkerFields = 55,
};

inline int32_t GetLE32(const uint8_t* p) {
  const uint32_t u = uint32_t{p[0]} | uint32_t{p[1]} << 8 | uint32_t{p[2]} << 16 | uint32_t{p[3]} << 24;
  return static_cast<int32_t>(u);
}

inline void PutLE32(uint8_t* p, int32_t v) {
  const auto u = static_cast<uint32_t>(v);
  p[0] = static_cast<uint8_t>(u);
  p[1] = static_cast<uint8_t>(u >> 8);
  p[2] = static_cast<uint8_t>(u >> 16);
  p[3] = static_cast<uint8_t>(u >> 24);
}

// A 64-bit intermediate back in 32 bits; fault 6 when it does not fit.
inline int32_t Narrow(int64_t v) {
  if (v < INT32_MIN || v > INT32_MAX) RaiseFault(kFaultOverflow);
  return static_cast<int32_t>(v);
}

inline std::string ByteText(const uint8_t* p, int32_t n) {
  return std::string(reinterpret_cast<const char*>(p), static_cast<std::size_t>(n));
}

// True when count records of width bytes, the first at one-based position
// start and each next one stride bytes on, all lie inside size bytes. The
// positions are linear in the record number, so both ends decide.
inline bool SpanInside(int64_t start, int64_t stride, int64_t count, int64_t width, int64_t size) {
  if (count < 1) return true;
  if (width < 0 || start < 1 || start - 1 + width > size) return false;
  if (count == 1) return true;
  if (stride > size || stride < -size) return false;
  const int64_t last = start + (count - 1) * stride;
  return last >= 1 && last - 1 + width <= size;
}

// "GRIDNAME" blank-padded to 40 bytes: the grid of a well whose source
// names none.
inline void PutDefaultGridName(uint8_t* dst) {
  std::memset(dst, ' ', kMarkerNameBytes);
  std::memcpy(dst, "GRIDNAME", 8);
}

// The number a text begins with, as the platform reads a value out of a
// text: blanks, tabs and line feeds are passed over wherever they stand, an
// optional sign, digits with an optional decimal point, an optional
// exponent ("E" or "D"). The reading stops at the first other character; a
// text that begins with no number is 0. A value beyond a double is fault 6.
double TextValue(std::string_view zText);

// One marker as a source delivers it, before it is placed in its well.
struct IncomingMarker {
  std::string zKey;  // compared with the previous marker's key: a change starts a well
  int32_t i = 0, j = 0, k = 0;
  int32_t iStatus = 0;
  int32_t iStyle = 0;
};

// A set with no markers: one spare record in each array.
inline MarkerSet EmptyMarkerSet() {
  MarkerSet s;
  s.Wells.ReDim(1, 1);
  s.Markers.ReDim(1, 1);
  s.nWellsAllocated = 1;
  return s;
}

// Groups markers 1..n into wells: read(m, in) delivers marker m; a marker
// whose key differs from the one before (the first always) starts a well,
// whose name and grid name startWell(m, well) fills. The well array starts
// with nCapacity records, grows by nGrowth when full and is cut to the
// wells found (at least one record) at the end.
template <class ReadMarker, class StartWell>
MarkerSet GroupIntoWells(int32_t n, int32_t nCapacity, int32_t nGrowth, ReadMarker&& read,
                         StartWell&& startWell) {
  MarkerSet s;
  s.NumMarkers = n;
  s.Markers.ReDim(1, n);
  int32_t nAllocated = std::max(nCapacity, 1);
  s.Wells.ReDim(1, nAllocated);
  IncomingMarker in;
  std::string zPrevious;
  for (int32_t m = 1; m <= n; ++m) {
    read(m, in);
    if (s.NumWells == 0 || in.zKey != zPrevious) {
      if (s.NumWells >= nAllocated) {
        nAllocated += nGrowth;
        s.Wells.ReDimPreserve(nAllocated);
      }
      ++s.NumWells;
      WELLINFO& w = s.Wells(s.NumWells);
      w.iWell = s.NumWells;
      w.nWellMarkers = 0;
      w.iFirstMarker = m;
      startWell(m, w);
      zPrevious.swap(in.zKey);
    }
    MARKERINFO& r = s.Markers(m);
    r.iMarker = m;
    r.iWell = s.NumWells;
    r.i = in.i;
    r.j = in.j;
    r.k = in.k;
    r.iStatus = in.iStatus;
    r.iStyle = in.iStyle;
    ++s.Wells(s.NumWells).nWellMarkers;
  }
  s.nWellsAllocated = std::max(s.NumWells, 1);
  s.Wells.ReDimPreserve(s.nWellsAllocated);
  s.nMaxConnections = getMaxMarkerCount(s);
  return s;
}

// Visits the markers well by well: wells 1..NumWells, each from its first
// marker through nWellMarkers records, passing over records that are not
// there, and at most nLimit markers in all.
template <class Visit>
void ForEachMarkerInWellOrder(const MarkerSet& set, int32_t nLimit, Visit&& visit) {
  if (!set.Markers.IsAllocated()) return;
  const int64_t lo = set.Markers.LBound(), hi = set.Markers.UBound();
  int32_t nVisited = 0;
  for (int32_t w = 1; w <= set.NumWells && set.Wells.InBounds(w); ++w) {
    const WELLINFO& well = set.Wells(w);
    const int64_t first = std::max<int64_t>(well.iFirstMarker, lo);
    const int64_t last = std::min<int64_t>(int64_t{well.iFirstMarker} + well.nWellMarkers - 1, hi);
    for (int64_t m = first; m <= last; ++m) {
      if (nVisited >= nLimit) return;
      ++nVisited;
      visit(well, set.Markers(m));
    }
  }
}

}  // namespace vndata::marker_detail
