// mxDataSet: wells and markers. The byte forms and their rules live in
// vndata/persist/marker_bytes.h; the data set holds the records, the sector
// box and forwards. The readers there trace their own faults, so these
// members add no guard of their own.
#include "vndata/dataset/mx_data_set.h"
#include "vndata/persist/marker_bytes.h"

namespace vndata {

Array<uint8_t> mxDataSet::get_WELLINFO() const { return GetWELLINFO(wells_.markers); }

void mxDataSet::let_WELLINFO(const Array<uint8_t>& bWellInfo) {
  LetWELLINFO(wells_.markers, bWellInfo);
}

Array<uint8_t> mxDataSet::get_MARKERINFO() const { return GetMARKERINFO(wells_.markers); }

void mxDataSet::let_MARKERINFO(const Array<uint8_t>& bMarkerInfo) {
  LetMARKERINFO(wells_.markers, bMarkerInfo);
}

void mxDataSet::SetMarkersb(int32_t nMarker, const Array<uint8_t>& bMarker, bool& qOK) {
  SetMarkersUDTFromBMarkers(wells_.markers, nMarker, bMarker, qOK);
}

void mxDataSet::GetMarkersByte(int32_t& nMarker, Array<uint8_t>& bMarker, bool& qOK) {
  vndata::GetMarkersByte(wells_.markers, wells_.qSectorBox ? &wells_.box : nullptr, nMarker,
                         bMarker, qOK);
}

void mxDataSet::SetMarkers(int32_t n, const Array2<Variant>& vMarkers, bool& qOK) {
  SetMarkersUDTFromVMarkers(wells_.markers, n, vMarkers, qOK);
}

void mxDataSet::GetMarkers(int32_t& n, Array2<Variant>& vMarkers, bool& qOK) {
  GetTypeMarkers(wells_.markers, n, vMarkers, qOK);
}

void mxDataSet::setMarkerINTEHead(int32_t n, int32_t iH12, int32_t iH13, Array<int32_t>& iHead,
                                  int32_t& nHead, bool& qOK, bool qExtended, bool qFloats) {
  vndata::setMarkerINTEHead(n, iH12, iH13, iHead, nHead, qOK, qExtended, qFloats);
}

void mxDataSet::getMarkerINTEHead(const Array<uint8_t>& bMarker, Array<int32_t>& iHead,
                                  int32_t& nHead, bool& qOK) {
  vndata::getMarkerINTEHead(bMarker, iHead, nHead, qOK);
}

void mxDataSet::MoveAllMarkersToTopLayer() { vndata::MoveAllMarkersToTopLayer(wells_.markers); }

bool mxDataSet::GetMarkerFromIJK(int32_t i, int32_t j, int32_t k, int32_t& iFound,
                                 std::string& zWellName, std::string& zStyle, int32_t& iStatus,
                                 std::string& zStatus) {
  return vndata::GetMarkerFromIJK(wells_.markers, i, j, k, iFound, zWellName, zStyle, iStatus,
                                  zStatus);
}

void mxDataSet::getWellNamesfromMarkers(Array<std::string>& zWells, int32_t& nWells) {
  vndata::getWellNamesfromMarkers(wells_.markers, zWells, nWells);
}

std::intptr_t mxDataSet::get_WellsPtr() const { return WellsPtr(wells_.markers); }

std::intptr_t mxDataSet::get_MarkersPtr() const { return MarkersPtr(wells_.markers); }

void mxDataSet::GetSectorBox(int32_t& iXL, int32_t& iXU, int32_t& jYL, int32_t& jYU, int32_t& kZL,
                             int32_t& kZU) const {
  const SectorBox& b = wells_.box;
  iXL = b.iXL, iXU = b.iXU, jYL = b.jYL, jYU = b.jYU, kZL = b.kZL, kZU = b.kZU;
}

// A box cuts the markers handed out to it; all six bounds 0, the state of a
// fresh data set, means no box.
void mxDataSet::SetSectorBox(int32_t iXL, int32_t iXU, int32_t jYL, int32_t jYU, int32_t kZL,
                             int32_t kZU) {
  wells_.box = SectorBox{iXL, iXU, jYL, jYU, kZL, kZU};
  wells_.qSectorBox = (iXL | iXU | jYL | jYU | kZL | kZU) != 0;
}

}  // namespace vndata
