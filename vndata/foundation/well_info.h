// WELLINFO: the 92-byte record of one well, as readers hand it over and as a
// data set keeps its wells (names of the members of its "WELL" class, or the
// wells of its markers).
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>
#include "vndata/platform/api.h"

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

}  // namespace vndata
