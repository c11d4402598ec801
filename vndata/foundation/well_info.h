// WELLINFO and MARKERINFO: the 92-byte record of one well and the 36-byte
// record of one marker, as readers hand them over and as a data set keeps its
// wells (names of the members of its "WELL" class, or the wells of its
// markers) and markers. vndata/persist/marker_bytes.h draws both layouts and
// reads and writes the byte forms they travel in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"

namespace vndata {

constexpr int32_t kWellNameWidth = 40;

struct VNDATA_API WELLINFO {
  int32_t iWell = 0;                    // the well's own index, from 1
  uint8_t zWellName[kWellNameWidth];    // blank-padded single-byte text
  uint8_t zGridName[kWellNameWidth];    // blank-padded single-byte text
  int32_t nWellMarkers = 0;             // markers of this well
  int32_t iFirstMarker = 0;             // index of its first marker
  WELLINFO() {
    for (auto& b : zWellName) b = ' ';
    for (auto& b : zGridName) b = ' ';
  }
};

// The record is copied raw to and from byte arrays: its layout is fixed.
static_assert(std::is_standard_layout_v<WELLINFO>);
static_assert(sizeof(WELLINFO) == 92);
static_assert(offsetof(WELLINFO, zWellName) == 4);
static_assert(offsetof(WELLINFO, zGridName) == 44);
static_assert(offsetof(WELLINFO, nWellMarkers) == 84);
static_assert(offsetof(WELLINFO, iFirstMarker) == 88);

struct MARKERINFO {
  int32_t iMarker = 0;  // the marker's own number
  int32_t iWell = 0;    // its well's WELLINFO record
  int32_t i = 0;
  int32_t j = 0;
  int32_t k = 0;
  int32_t iStatus = 0;  // status word
  int32_t iStyle = 0;   // 1 "WELL", 0 "PERF"
  uint8_t bSpare[8] = {0, 0, 0, 0, 0, 0, 0, 0};
};

// The records are copied raw to and from byte arrays: their layout is fixed.
static_assert(std::is_standard_layout_v<MARKERINFO>);
static_assert(sizeof(MARKERINFO) == 36);
static_assert(offsetof(MARKERINFO, iWell) == 4);
static_assert(offsetof(MARKERINFO, i) == 8);
static_assert(offsetof(MARKERINFO, k) == 16);
static_assert(offsetof(MARKERINFO, iStatus) == 20);
static_assert(offsetof(MARKERINFO, iStyle) == 24);
static_assert(offsetof(MARKERINFO, bSpare) == 28);

// The markers of one data set: the two record arrays and their counts.
struct MarkerSet {
  Array<WELLINFO> Wells;      // records 1..nWellsAllocated
  Array<MARKERINFO> Markers;  // records 1..NumMarkers (one spare when none)
  int32_t NumWells = 0;
  int32_t NumMarkers = 0;
  // Well records allocated: the record count of the raw WELLINFO and
  // MARKERINFO forms (see GetMARKERINFO).
  int32_t nWellsAllocated = 0;
  // The most connections of a well: what getMaxMarkerCount gave when the
  // records were last built.
  int32_t nMaxConnections = 0;

  bool IsMarkers() const { return NumMarkers >= 1 && NumWells >= 1; }
};

// A data set's sector of the grid, bounds included.
struct SectorBox {
  int32_t iXL = 0, iXU = 0;
  int32_t jYL = 0, jYU = 0;
  int32_t kZL = 0, kZU = 0;
};

}  // namespace vndata
