// The marker records in their other forms: vMarkers, the "MK32" array
// written out, the raw record arrays, and the queries over the records.
#include <algorithm>
#include <cstring>
#include <type_traits>
#include <vector>

#include "vndata/persist/marker_bytes.h"
#include "vndata/persist/marker_bytes_detail.h"
#include "vndata/platform/byte_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

using namespace marker_detail;

namespace {

constexpr char kTagFromVMarkers[] = "mxDataSet  (SetMarkersUDTFromVMarkers)";
constexpr char kTagGetTypeMarkers[] = "mxDataSet  (GetTypeMarkers)";
constexpr char kTagByteFromUDT32[] = "mxDataSet  (SetMarkersByteFromUDT32)";
constexpr char kTagByteFromUDT32Box[] = "mxDataSet  (GetMarkersByteFromUDT32)";
constexpr char kTagMoveToTop[] = "mxDataSet  (MoveAllMarkersToTopLayer)";
constexpr char kTagFromIJK[] = "mxDataSet  (GetMarkerFromIJK)";
constexpr char kTagWellNames[] = "mxDataSet  (getWellNamesfromMarkers)";
constexpr char kTagWELLINFO[] = "mxDataSet  (WELLINFO)";
constexpr char kTagMARKERINFO[] = "mxDataSet  (MARKERINFO)";

static_assert(std::is_trivially_copyable_v<WELLINFO>);
static_assert(std::is_trivially_copyable_v<MARKERINFO>);

// One marker on its way into an "MK32" array.
struct OutgoingMarker {
  const uint8_t* zWellName;  // 40 bytes
  int32_t i, j, k, iStyle, iStatus;
};

OutgoingMarker Outgoing(const WELLINFO& w, const MARKERINFO& m) {
  return {w.zWellName, m.i, m.j, m.k, m.iStyle, m.iStatus};
}

// The plain "MK32" array of the given markers, blank-filled before the
// fields go in. False when the header cannot be made (logged there).
bool WriteMK32(const std::vector<OutgoingMarker>& markers, Array<uint8_t>& bMarker) {
  Array<int32_t> iHead;
  int32_t nHead = 0;
  bool qOK = false;
  setMarkerINTEHead(Narrow(static_cast<int64_t>(markers.size())), 0, 0, iHead, nHead, qOK);
  if (!qOK) return false;
  MarkerHead head;
  getMarkerINTEHeadData(iHead, nHead, head, qOK);
  if (!qOK) return false;
  Array<uint8_t> b(1, head.iTotalLength);
  b.Fill(' ');
  uint8_t* p = b.data();
  std::memcpy(p, "MK32", 4);
  PutLE32(p + 4, nHead);
  for (int32_t w = 1; w <= nHead; ++w) PutLE32(p + 8 + 4 * (w - 1), iHead(w));
  for (std::size_t r = 0; r < markers.size(); ++r) {
    const OutgoingMarker& m = markers[r];
    // The whole 6-word block goes in, word 1 as 0.
    const int32_t block[kMarkerPlainWords] = {0, m.i, m.j, m.k, m.iStyle, m.iStatus};
    uint8_t* q = p + (head.iIntStart - 1) + r * (4 * kMarkerPlainWords);
    for (int32_t w = 0; w < kMarkerPlainWords; ++w) PutLE32(q + 4 * w, block[w]);
    std::memcpy(p + (head.iStringStart - 1) + r * kMarkerNameBytes, m.zWellName, kMarkerNameBytes);
  }
  bMarker.Swap(b);
  return true;
}

bool InBox(const SectorBox& box, const MARKERINFO& m) {
  return m.i >= box.iXL && m.i <= box.iXU && m.j >= box.jYL && m.j <= box.jYU && m.k >= box.kZL &&
         m.k <= box.kZU;
}

// Coordinates moved so that the box's lower corner is (1, 1, 1).
OutgoingMarker Shifted(const WELLINFO& w, const MARKERINFO& m, const SectorBox& box) {
  OutgoingMarker o = Outgoing(w, m);
  o.i = Narrow(int64_t{m.i} - (int64_t{box.iXL} - 1));
  o.j = Narrow(int64_t{m.j} - (int64_t{box.jYL} - 1));
  o.k = Narrow(int64_t{m.k} - (int64_t{box.kZL} - 1));
  return o;
}

std::string TrimmedName(const uint8_t* zName) {
  return StringTools::Trim(ByteText(zName, kMarkerNameBytes));
}

// The first count records of an array as bytes (count records in all; those
// the array does not have are zeros). Unallocated for a count below 1.
template <class Record>
Array<uint8_t> RecordBytes(const Array<Record>& records, int32_t count) {
  Array<uint8_t> b;
  if (count < 1) return b;
  b.ReDim(1, Narrow(int64_t{count} * int64_t{sizeof(Record)}));
  const std::size_t have = std::min<std::size_t>(records.size(), static_cast<std::size_t>(count));
  if (have > 0) std::memcpy(b.data(), records.data(), have * sizeof(Record));
  return b;
}

// The whole records of b: as many as its upper bound divided by the record
// size, no more than its bytes hold. Returns their count, 0 (and an
// unallocated array) when there are none.
template <class Record>
int32_t RecordsFromBytes(const Array<uint8_t>& b, Array<Record>& records) {
  Array<Record> out;
  int64_t count = b.IsAllocated() ? b.UBound() / int64_t{sizeof(Record)} : 0;
  count = std::min<int64_t>(count, static_cast<int64_t>(b.size() / sizeof(Record)));
  if (count >= 1) {
    out.ReDim(1, static_cast<int32_t>(count));
    std::memcpy(static_cast<void*>(out.data()), b.data(), static_cast<std::size_t>(count) * sizeof(Record));
  } else {
    count = 0;
  }
  records.Swap(out);
  return static_cast<int32_t>(count);
}

}  // namespace

// ---- vMarkers -------------------------------------------------------------------

void SetMarkersUDTFromVMarkers(MarkerSet& set, int32_t n, const Array2<Variant>& vMarkers, bool& qOK) {
  qOK = false;
  RunGuarded(kTagFromVMarkers, [&] {
    set.NumWells = 0;
    if (n < 1) return;
    // Fields up to the grid name of every marker must be there.
    if (!vMarkers.InBounds(kFieldI, 1) || !vMarkers.InBounds(kFieldGrid, n)) RaiseFault(kFaultSubscript);
    auto read = [&](int32_t m, IncomingMarker& in) {
      in.zKey = vMarkers(kFieldName, m).ToText();
      in.i = vMarkers(kFieldI, m).ToLong();
      in.j = vMarkers(kFieldJ, m).ToLong();
      in.k = vMarkers(kFieldK, m).ToLong();
      in.iStatus = RoundToLong(TextValue(StringTools::Trim(vMarkers(kFieldStatus, m).ToText())));
      in.iStyle = StringTools::Trim(vMarkers(kFieldStyle, m).ToText()) == "WELL" ? 1 : 0;
    };
    auto startWell = [&](int32_t m, WELLINFO& w) {
      ByteTools::PutText(w.zWellName, kMarkerNameBytes, vMarkers(kFieldName, m).ToText());
      ByteTools::PutText(w.zGridName, kMarkerNameBytes, vMarkers(kFieldGrid, m).ToText());
    };
    MarkerSet built = GroupIntoWells(n, kWellGrowthVariants, kWellGrowthVariants, read, startWell);
    std::swap(set, built);
    qOK = true;
  });
}

void GetTypeMarkers(const MarkerSet& set, int32_t& n, Array2<Variant>& vMarkers, bool& qOK) {
  qOK = false;
  RunGuarded(kTagGetTypeMarkers, [&] {
    if (!set.IsMarkers()) {
      Array2<Variant> one(1, 1, 1, 1);
      vMarkers.Swap(one);
      n = 0;
      qOK = true;
      return;
    }
    Array2<Variant> v(1, kMarkerFields, 1, set.NumMarkers);
    int32_t r = 0;
    ForEachMarkerInWellOrder(set, set.NumMarkers, [&](const WELLINFO& w, const MARKERINFO& m) {
      ++r;
      v(kFieldI, r) = m.i;
      v(kFieldJ, r) = m.j;
      v(kFieldK, r) = m.k;
      v(kFieldStatus, r) = m.iStatus;
      v(kFieldName, r) = TrimmedName(w.zWellName);
      v(kFieldStyle, r) = std::string(m.iStyle == 1 ? "WELL" : "PERF");
      v(kFieldGrid, r) = TrimmedName(w.zGridName);
    });
    vMarkers.Swap(v);
    n = r;
    qOK = true;
  });
}

// ---- "MK32" out -----------------------------------------------------------------

void SetMarkersByteFromUDT32(const MarkerSet& set, int32_t& n, Array<uint8_t>& bMarker, bool& qOK) {
  qOK = false;
  RunGuarded(kTagByteFromUDT32, [&] {
    if (!set.IsMarkers()) {
      qOK = true;
      return;
    }
    std::vector<OutgoingMarker> out;
    out.reserve(static_cast<std::size_t>(set.NumMarkers));
    ForEachMarkerInWellOrder(set, set.NumMarkers, [&](const WELLINFO& w, const MARKERINFO& m) {
      out.push_back(Outgoing(w, m));
    });
    if (!WriteMK32(out, bMarker)) return;
    n = static_cast<int32_t>(out.size());
    qOK = true;
  });
}

void GetMarkersByteFromUDT32(const MarkerSet& set, const SectorBox& box, int32_t& nMarker,
                             Array<uint8_t>& bMarker, bool& qOK) {
  qOK = false;
  RunGuarded(kTagByteFromUDT32Box, [&] {
    if (!set.IsMarkers()) {
      qOK = true;
      return;
    }
    std::vector<OutgoingMarker> out;
    std::vector<const MARKERINFO*> inside;
    for (int32_t w = 1; w <= set.NumWells && set.Wells.InBounds(w); ++w) {
      const WELLINFO& well = set.Wells(w);
      if (well.nWellMarkers < 1 || !set.Markers.IsAllocated()) continue;
      // The connections (every marker after the first) decide whether the
      // well is in the sector.
      inside.clear();
      const int64_t head = well.iFirstMarker;
      const int64_t first = std::max<int64_t>(head + 1, set.Markers.LBound());
      const int64_t last = std::min<int64_t>(head + well.nWellMarkers - 1, set.Markers.UBound());
      for (int64_t m = first; m <= last; ++m)
        if (InBox(box, set.Markers(m))) inside.push_back(&set.Markers(m));
      if (inside.empty()) continue;
      // The well head goes in front of its connections unless it lies
      // before the box across I or J.
      if (set.Markers.InBounds(head)) {
        const OutgoingMarker o = Shifted(well, set.Markers(head), box);
        if (o.i > 0 && o.j > 0) out.push_back(o);
      }
      for (const MARKERINFO* m : inside) out.push_back(Shifted(well, *m, box));
    }
    if (!WriteMK32(out, bMarker)) return;
    nMarker = static_cast<int32_t>(out.size());
    qOK = true;
  });
}

void GetMarkersByte(const MarkerSet& set, const SectorBox* pBox, int32_t& nMarker,
                    Array<uint8_t>& bMarker, bool& qOK) {
  if (pBox != nullptr)
    GetMarkersByteFromUDT32(set, *pBox, nMarker, bMarker, qOK);
  else
    SetMarkersByteFromUDT32(set, nMarker, bMarker, qOK);
}

// ---- Queries and edits ----------------------------------------------------------

int32_t getMaxMarkerCount(const MarkerSet& set) {
  int32_t nMax = 0;
  for (int32_t w = 1; w <= set.NumWells && set.Wells.InBounds(w); ++w)
    nMax = static_cast<int32_t>(std::max<int64_t>(nMax, int64_t{set.Wells(w).nWellMarkers} - 1));
  return nMax;
}

void MoveAllMarkersToTopLayer(MarkerSet& set) {
  RunGuarded(kTagMoveToTop, [&] {
    for (int32_t m = 1; m <= set.NumMarkers && set.Markers.InBounds(m); ++m) set.Markers(m).k = 1;
  });
}

bool MarkerStatusText(int32_t iStatus, std::string& zStatus) {
  const char* z = nullptr;
  switch (iStatus) {
    case 1: z = "Gas"; break;
    case 2: z = "Water"; break;
    case 3: z = "Solvent"; break;
    case 4: z = "Producer"; break;
    case 104: z = "Gas Producer"; break;
    case 5: z = "Undrilled"; break;
    default: if (iStatus <= 0) z = "Shutin"; break;
  }
  if (z == nullptr) return false;
  zStatus = z;
  return true;
}

bool GetMarkerFromIJK(const MarkerSet& set, int32_t i, int32_t j, int32_t k, int32_t& iFound,
                      std::string& zWellName, std::string& zStyle, int32_t& iStatus,
                      std::string& zStatus) {
  bool qResult = false;
  RunGuarded(kTagFromIJK, [&] {
    if (set.NumMarkers < 1) {
      qResult = true;
      return;
    }
    for (int32_t m = 1; m <= set.NumMarkers && set.Markers.InBounds(m); ++m) {
      const MARKERINFO& r = set.Markers(m);
      if (r.i != i || r.j != j || r.k != k) continue;
      iFound = r.iWell;
      if (r.iStyle == 0) zStyle = "PERF";
      if (r.iStyle == 1) zStyle = "WELL";
      iStatus = r.iStatus;
      MarkerStatusText(r.iStatus, zStatus);
      if (set.Wells.InBounds(r.iWell)) zWellName = TrimmedName(set.Wells(r.iWell).zWellName);
      qResult = true;
      return;
    }
    iFound = 0;
    qResult = true;
  });
  return qResult;
}

void getWellNamesfromMarkers(const MarkerSet& set, Array<std::string>& zWells, int32_t& nWells) {
  nWells = 0;
  RunGuarded(kTagWellNames, [&] {
    const int32_t n = set.Wells.IsAllocated() ? std::min(set.NumWells, set.Wells.UBound()) : 0;
    if (n < 1) return;
    Array<std::string> names(1, n);
    for (int32_t w = 1; w <= n; ++w) names(w) = TrimmedName(set.Wells(w).zWellName);
    zWells.Swap(names);
    nWells = n;
  });
}

// ---- Raw records ----------------------------------------------------------------

Array<uint8_t> GetWELLINFO(const MarkerSet& set) {
  Array<uint8_t> b;
  RunGuarded(kTagWELLINFO, [&] {
    if (set.NumMarkers < 1) return;
    b = RecordBytes(set.Wells, set.nWellsAllocated);
  });
  return b;
}

void LetWELLINFO(MarkerSet& set, const Array<uint8_t>& b) {
  RunGuarded(kTagWELLINFO, [&] { set.nWellsAllocated = RecordsFromBytes(b, set.Wells); });
}

Array<uint8_t> GetMARKERINFO(const MarkerSet& set) {
  Array<uint8_t> b;
  RunGuarded(kTagMARKERINFO, [&] {
    if (set.NumMarkers < 1) return;
    // The well record count, as this pair has always had it.
    b = RecordBytes(set.Markers, set.nWellsAllocated);
  });
  return b;
}

void LetMARKERINFO(MarkerSet& set, const Array<uint8_t>& b) {
  RunGuarded(kTagMARKERINFO, [&] { set.nWellsAllocated = RecordsFromBytes(b, set.Markers); });
}

std::intptr_t WellsPtr(const MarkerSet& set) {
  if (set.NumWells < 1 || set.Wells.size() == 0) return 0;
  return reinterpret_cast<std::intptr_t>(set.Wells.data());
}

std::intptr_t MarkersPtr(const MarkerSet& set) {
  if (set.NumMarkers < 1 || set.Markers.size() == 0) return 0;
  return reinterpret_cast<std::intptr_t>(set.Markers.data());
}

}  // namespace vndata
