#include "vndata/store/internal/marker_lookup.h"

#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

enum MarkerField : int32_t { kFieldI = 3, kFieldJ = 4, kFieldK = 5, kFieldName = 11, kFieldStyle = 12 };

// The fields of the two coordinates across a direction; false for an
// unknown direction.
bool AcrossFields(const std::string& zDir, int32_t& iFieldU, int32_t& iFieldV) {
  const std::string zUDir = StringTools::Upper(StringTools::Trim(zDir));
  if (zUDir.size() != 1) return false;
  switch (zUDir[0]) {
    case 'I': iFieldU = kFieldJ; iFieldV = kFieldK; return true;
    case 'J': iFieldU = kFieldI; iFieldV = kFieldK; return true;
    case 'K': iFieldU = kFieldI; iFieldV = kFieldJ; return true;
    default: return false;
  }
}

int32_t Whole(const Variant& v) { return v.IsEmpty() ? 0 : v.ToLong(); }
std::string Text(const Variant& v) { return StringTools::Trim(v.ToText()); }

int32_t LastMarker(const Array2<Variant>& vMarkers, int32_t nMarkers) {
  if (!vMarkers.IsAllocated() || vMarkers.UBound(1) < kFieldStyle) return 0;
  return nMarkers < vMarkers.UBound(2) ? nMarkers : vMarkers.UBound(2);
}

}  // namespace

bool WellMarkerName(const Array2<Variant>& vMarkers, int32_t nMarkers, const std::string& zDir,
                    int32_t iU, int32_t iV, std::string& zMarkName, int32_t& iW) {
  int32_t fU = 0, fV = 0;
  if (!AcrossFields(zDir, fU, fV)) return false;
  for (int32_t m = vMarkers.IsAllocated() ? vMarkers.LBound(2) : 1; m <= LastMarker(vMarkers, nMarkers); ++m) {
    if (Whole(vMarkers(fU, m)) != iU || Whole(vMarkers(fV, m)) != iV) continue;
    if (Text(vMarkers(kFieldStyle, m)) != "WELL") continue;
    zMarkName = Text(vMarkers(kFieldName, m));
    iW = Whole(vMarkers(kFieldK, m));
    return true;
  }
  return false;
}

bool WellMarkerPosition(const Array2<Variant>& vMarkers, int32_t nMarkers, const std::string& zDir,
                        const std::string& zMarkName, int32_t& iU, int32_t& iV, int32_t& iW) {
  int32_t fU = 0, fV = 0;
  if (!AcrossFields(zDir, fU, fV)) return false;
  const std::string zName = StringTools::Trim(zMarkName);
  for (int32_t m = vMarkers.IsAllocated() ? vMarkers.LBound(2) : 1; m <= LastMarker(vMarkers, nMarkers); ++m) {
    if (Text(vMarkers(kFieldStyle, m)) != "WELL" || Text(vMarkers(kFieldName, m)) != zName) continue;
    iU = Whole(vMarkers(fU, m));
    iV = Whole(vMarkers(fV, m));
    iW = Whole(vMarkers(kFieldK, m));
    return true;
  }
  return false;
}

}  // namespace vndata
