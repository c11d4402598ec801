// Looking a well marker up in the marker table a data set gives the host
// (vMarkers: fields 1..55 by marker, of which 3, 4, 5 are I, J, K, 11 the
// well name and 12 the style text "WELL" or "PERF").
//
// A direction names the grid axis along which the caller looks; the two
// other axes locate the marker: "I" compares J and K, "J" compares I and K,
// "K" compares I and J. Only "WELL" rows count. These are the store's
// GetMarkerName and GetMarkerPosition once a data set hands over its table.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/arrays.h"
#include "vndata/platform/variant.h"

namespace vndata {

// The first "WELL" row among markers 1..nMarkers whose two coordinates
// across zDir (compared in upper case) are iU and iV: its well name, and its
// K whatever the direction. False, outputs untouched, when there is none or
// zDir is not "I", "J" or "K".
bool WellMarkerName(const Array2<Variant>& vMarkers, int32_t nMarkers, const std::string& zDir,
                    int32_t iU, int32_t iV, std::string& zMarkName, int32_t& iW);

// The inverse: the first "WELL" row named zMarkName gives its two
// coordinates across zDir and its K.
bool WellMarkerPosition(const Array2<Variant>& vMarkers, int32_t nMarkers, const std::string& zDir,
                        const std::string& zMarkName, int32_t& iU, int32_t& iV, int32_t& iW);

}  // namespace vndata
