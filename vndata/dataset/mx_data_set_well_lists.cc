// mxDataSet: the active and the named well lists, and the row mask.
//
// A list holds positions in the well records, never names: a name that is no
// well drops out when the list is made, and a list means nothing once the
// well records are rebuilt.
#include <algorithm>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/platform/byte_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

constexpr const char* kActiveListName = "ACTIVE";

int32_t CountNonEmpty(const Array<std::string>& zNames) {
  int32_t n = 0;
  for (const std::string& z : zNames)
    if (!z.empty()) ++n;
  return n;
}

}  // namespace

// ---- Records ------------------------------------------------------------------------------

std::string mxDataSet::WellListName(const WellListRecord& list) {
  if (list.nName < 1 || !list.bName.IsAllocated()) return std::string();
  return ByteTools::GetText(list.bName, 1, list.nName);
}

void mxDataSet::SetWellListName(WellListRecord& list, const std::string& zName) {
  list.bName = ByteTools::FromText(zName);
  list.nName = static_cast<int32_t>(zName.size());
}

void mxDataSet::InitWellLists() {
  wells_.WellLists = Array<WellListRecord>(1, 1);
  wells_.nWellLists = 0;
  wells_.nWellListsAllocated = 1;
  WellListRecord active;
  SetWellListName(active, kActiveListName);
  active.MasterList = -1;
  wells_.ActiveWellList = std::move(active);
}

std::string mxDataSet::DelimitedWellList(const WellListRecord& list) const {
  if (list.nWells < 1) return std::string();
  Array<std::string> zNames(1, list.nWells);
  for (int32_t k = 1; k <= list.nWells; ++k) zNames(k) = getMemberName(list.iWells(k));
  return StringTools::Join(zNames, ";");
}

// ---- Names to positions -----------------------------------------------------------------------

void mxDataSet::GetPointersToWellList(const Array<std::string>& zWellList, Array<int32_t>& iWells,
                                      int32_t& nWells) const {
  nWells = 0;
  const int32_t nRecords = wells_.markers.NumWells;
  if (nRecords < 1 || !zWellList.IsAllocated()) return;
  std::vector<std::string> zWellNames(static_cast<std::size_t>(nRecords) + 1);
  for (int32_t w = 1; w <= nRecords; ++w) zWellNames[static_cast<std::size_t>(w)] = getMemberName(w);
  std::vector<bool> qUsed(static_cast<std::size_t>(nRecords) + 1, false);
  // Room for the smaller of names and wells; wells sharing a name all enter,
  // so the list may outgrow it.
  std::vector<int32_t> found;
  found.reserve(static_cast<std::size_t>(
      std::min(static_cast<int32_t>(zWellList.size()), nRecords)));
  for (const std::string& zName : zWellList) {
    for (int32_t w = 1; w <= nRecords; ++w) {
      const auto iw = static_cast<std::size_t>(w);
      if (qUsed[iw] || zWellNames[iw] != zName) continue;
      found.push_back(w);
      qUsed[iw] = true;
    }
  }
  if (found.empty()) return;
  Array<int32_t> positions(1, static_cast<int32_t>(found.size()));
  std::copy(found.begin(), found.end(), positions.begin());
  iWells.Swap(positions);
  nWells = static_cast<int32_t>(found.size());
}

// ---- The active list ----------------------------------------------------------------------------

void mxDataSet::SetActiveWellList(const Array<std::string>& zWellList, bool& qOK,
                                  int32_t MasterList) {
  qOK = false;
  if (CountNonEmpty(zWellList) < 1) return;
  Array<int32_t> iWells;
  int32_t nWells = 0;
  GetPointersToWellList(zWellList, iWells, nWells);
  wells_.qSetWELLLIST = false;
  if (nWells < 1) {
    // The old positions stay, out of use.
    qOK = true;
    return;
  }
  WellListRecord& active = wells_.ActiveWellList;
  active.nWells = nWells;
  active.MasterList = MasterList;
  active.iWells.Swap(iWells);
  wells_.qSetWELLLIST = true;
  qOK = true;
}

void mxDataSet::ClearWellLists(bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (ClearWellLists)", [&] {
    InitWellLists();
    qOK = true;
  });
}

void mxDataSet::SetWELLLIST(const Array<std::string>& zWellList, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetWELLLIST)", [&] { SetActiveWellList(zWellList, qOK, -1); });
}

void mxDataSet::GetWellList(Array<std::string>& zWellList, int32_t& nWells, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetWellList)", [&] {
    const WellListRecord& active = wells_.ActiveWellList;
    nWells = active.nWells;
    if (nWells >= 1) {
      Array<std::string> zNames(1, nWells);
      for (int32_t k = 1; k <= nWells; ++k) zNames(k) = getMemberName(active.iWells(k));
      zWellList.Swap(zNames);
    }
    qOK = true;
  });
}

// ---- Named lists ----------------------------------------------------------------------------------

int32_t mxDataSet::FindWellListPosition(const std::string& zName) const {
  for (int32_t k = 1; k <= wells_.nWellLists; ++k) {
    const WellListRecord& list = wells_.WellLists(k);
    if (list.nName > 0 && WellListName(list) == zName) return k;
  }
  return -1;
}

void mxDataSet::GetOneNamedWellList(const std::string& zName, Array<std::string>& zWells,
                                    int32_t& nWells, bool& qOK) const {
  const int32_t pos = FindWellListPosition(zName);
  if (pos >= 1) {
    const WellListRecord& list = wells_.WellLists(pos);
    nWells = list.nWells;
    if (nWells >= 1) {
      Array<std::string> zNames(1, nWells);
      for (int32_t k = 1; k <= nWells; ++k) zNames(k) = getMemberName(list.iWells(k));
      zWells.Swap(zNames);
    }
  }
  qOK = true;
}

void mxDataSet::addWellList(const std::string& zName, const Array<std::string>& zWellList,
                            bool& qOK, int32_t MasterList) {
  qOK = false;
  RunGuarded("mxDataSet  (addWellList)", [&] {
    if (CountNonEmpty(zWellList) < 1) return;
    int32_t pos = FindWellListPosition(zName);
    if (pos < 1) {
      pos = wells_.nWellLists + 1;
      if (pos > wells_.nWellListsAllocated) {
        wells_.WellLists.ReDimPreserve(pos);
        wells_.nWellListsAllocated = pos;
      }
      WellListRecord fresh;
      SetWellListName(fresh, zName);
      wells_.WellLists(pos) = std::move(fresh);
      wells_.nWellLists = pos;
    }
    Array<int32_t> iWells;
    int32_t nWells = 0;
    GetPointersToWellList(zWellList, iWells, nWells);
    WellListRecord& list = wells_.WellLists(pos);
    list.nWells = nWells;
    list.MasterList = MasterList;
    list.iWells.Swap(iWells);
    qOK = true;
  });
}

void mxDataSet::SetNamedWellList(const Array<std::string>& zWellList,
                                 const std::string& zThisWellListName) {
  RunGuarded("mxDataSet  (SetNamedWellList)", [&] {
    if (StringTools::Equal(zThisWellListName, kActiveListName, false)) {
      bool qOK = false;
      SetActiveWellList(zWellList, qOK, -1);
      return;
    }
    std::string zName = zThisWellListName;
    WH_AppendWellList(zWellList, zName);
  });
}

void mxDataSet::WH_GetWellListDetails(const std::string& zName, int32_t& nWells,
                                      Array<std::string>& zWells, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (WH_GetWellListDetails)",
             [&] { GetOneNamedWellList(zName, zWells, nWells, qOK); });
}

void mxDataSet::WH_GetWellListDetailsByName(const std::string& zName, int32_t& nWells,
                                            Array<std::string>& zWells, std::string& zDelimited,
                                            bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (WH_GetWellListDetailsByName)", [&] {
    GetOneNamedWellList(zName, zWells, nWells, qOK);
    const int32_t pos = FindWellListPosition(zName);
    if (pos >= 1) zDelimited = DelimitedWellList(wells_.WellLists(pos));
  });
}

void mxDataSet::WH_GetDelimitedLists(int32_t& nLists, Array<std::string>& zNames,
                                     Array<std::string>& zDelimited, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (WH_GetDelimitedLists)", [&] {
    nLists = wells_.nWellLists;
    if (nLists >= 1) {
      Array<std::string> names(1, nLists), joined(1, nLists);
      for (int32_t k = 1; k <= nLists; ++k) {
        const WellListRecord& list = wells_.WellLists(k);
        names(k) = WellListName(list);
        joined(k) = DelimitedWellList(list);
      }
      zNames.Swap(names);
      zDelimited.Swap(joined);
    }
    qOK = true;
  });
}

void mxDataSet::WH_AppendWellList(const Array<std::string>& zWellList,
                                  std::string& zThisListName) {
  RunGuarded("mxDataSet  (WH_AppendWellList)", [&] {
    const std::string zJoined = StringTools::Join(zWellList, ";");
    int32_t nLists = 0;
    Array<std::string> zNames, zDelimited;
    bool qOK = false;
    WH_GetDelimitedLists(nLists, zNames, zDelimited, qOK);
    // The same wells under another name are not added again; a name in use
    // takes the place of the list that has it, and the new name is not
    // checked in turn.
    bool qAdd = true;
    for (int32_t k = 1; k <= nLists; ++k) {
      if (StringTools::Equal(zNames(k), zThisListName, false))
        zThisListName = zThisListName + "-" + std::to_string(k);
      if (StringTools::Equal(zDelimited(k), zJoined, false)) {
        qAdd = false;
        break;
      }
    }
    if (!qAdd) return;
    if (zThisListName.empty()) zThisListName = source_.zOrigin + "-" + std::to_string(nLists);
    addWellList(zThisListName, zWellList, qOK, -1);
  });
}

void mxDataSet::WH_DeleteWellListByName(const std::string& zName, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (WH_DeleteWellListByName)", [&] {
    const int32_t pos = FindWellListPosition(zName);
    if (pos < 1) return;
    const int32_t nLeft = wells_.nWellLists - 1;
    if (nLeft < 1) {
      // The last named list goes, and the active list with it.
      InitWellLists();
      qOK = true;
      return;
    }
    for (int32_t k = pos; k <= nLeft; ++k) wells_.WellLists(k) = std::move(wells_.WellLists(k + 1));
    wells_.WellLists.ReDimPreserve(nLeft);
    wells_.nWellListsAllocated = nLeft;
    wells_.nWellLists = nLeft;
    qOK = true;
  });
}

// ---- The row mask -----------------------------------------------------------------------------------

void mxDataSet::SetMask(bool qMask, const Array<int32_t>& iMask, int32_t nMask, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetMask)", [&] {
    if (qMask && nMask > 0) {
      lists_.iRowMask = iMask;
      lists_.nRowMask = nMask;
      lists_.qRowMask = true;
    } else {
      lists_.qRowMask = false;
    }
    qOK = true;
  });
}

}  // namespace vndata
