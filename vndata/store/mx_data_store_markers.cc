// mxDataStore: the markers and wells of a data set, by position.
#include "vndata/store/internal/marker_lookup.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

void mxDataStore::DSGetMarkers(int32_t iDataSet, int32_t& nMarker, Array<uint8_t>& bMarker,
                               bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (DSGetMarkers)", iDataSet,
              [&](mxDataSet& ds) { ds.GetMarkersByte(nMarker, bMarker, qOK); });
}

void mxDataStore::GetMarkers(int32_t iDataSet, int32_t& n, Array2<Variant>& vMarkers, bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (GetMarkers)", iDataSet,
              [&](mxDataSet& ds) { ds.GetMarkers(n, vMarkers, qOK); });
}

bool mxDataStore::GetMarkerName(int32_t iDataSet, const std::string& zDir, int32_t iU, int32_t iV,
                                std::string& zMarkName, int32_t& iW) {
  return Forward("mxDataStore (Code) (GetMarkerName)", iDataSet, false, [&](mxDataSet& ds) {
    int32_t n = 0;
    Array2<Variant> vMarkers;
    bool qOK = false;
    ds.GetMarkers(n, vMarkers, qOK);
    return qOK && WellMarkerName(vMarkers, n, zDir, iU, iV, zMarkName, iW);
  });
}

bool mxDataStore::GetMarkerPosition(int32_t iDataSet, const std::string& zDir,
                                    const std::string& zMarkName, int32_t& iU, int32_t& iV,
                                    int32_t& iW) {
  return Forward("mxDataStore (Code) (GetMarkerPosition)", iDataSet, false, [&](mxDataSet& ds) {
    int32_t n = 0;
    Array2<Variant> vMarkers;
    bool qOK = false;
    ds.GetMarkers(n, vMarkers, qOK);
    return qOK && WellMarkerPosition(vMarkers, n, zDir, zMarkName, iU, iV, iW);
  });
}

void mxDataStore::DSGetSectorBox(int32_t iDataSet, int32_t& iXL, int32_t& iXU, int32_t& jYL,
                                 int32_t& jYU, int32_t& kZL, int32_t& kZU) {
  ForwardVoid("mxDataStore (Code) (DSGetSectorBox)", iDataSet,
              [&](mxDataSet& ds) { ds.GetSectorBox(iXL, iXU, jYL, jYU, kZL, kZU); });
}

void mxDataStore::DSSetSectorBox(int32_t iDataSet, int32_t iXL, int32_t iXU, int32_t jYL,
                                 int32_t jYU, int32_t kZL, int32_t kZU) {
  ForwardVoid("mxDataStore (Code) (DSSetSectorBox)", iDataSet,
              [&](mxDataSet& ds) { ds.SetSectorBox(iXL, iXU, jYL, jYU, kZL, kZU); });
}

std::intptr_t mxDataStore::get_WellsPtr(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (WellsPtr)", iDataSet, std::intptr_t{0},
                 [](mxDataSet& ds) { return ds.get_WellsPtr(); });
}

std::intptr_t mxDataStore::get_MarkersPtr(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (MarkersPtr)", iDataSet, std::intptr_t{0},
                 [](mxDataSet& ds) { return ds.get_MarkersPtr(); });
}

bool mxDataStore::GetMarkerFromIJK(int32_t iDataSet, int32_t i, int32_t j, int32_t k,
                                   int32_t& iFound, std::string& zWellName, std::string& zStyle,
                                   int32_t& iStatus, std::string& zStatus) {
  return Forward("mxDataStore (Code) (GetMarkerFromIJK)", iDataSet, false, [&](mxDataSet& ds) {
    return ds.GetMarkerFromIJK(i, j, k, iFound, zWellName, zStyle, iStatus, zStatus);
  });
}

}  // namespace vndata
