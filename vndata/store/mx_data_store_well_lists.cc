// mxDataStore: the well lists of a data set, by position, and stepping from
// well to well.
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

namespace {

// The name after zWell in names 1..n (before it, backwards). A name not in
// the list starts at the first (the last); the ends give "" unless the walk
// wraps round.
std::string NextName(const Array<std::string>& zNames, int32_t n, const std::string& zWell,
                     bool qWrapSearch, bool qBackwards) {
  if (n < 1) return std::string();
  int32_t p = 0;
  for (int32_t k = 1; k <= n && p == 0; ++k)
    if (StringTools::Equal(zNames(k), zWell, false)) p = k;
  if (qBackwards) {
    if (p == 0) return zNames(n);
    if (p == 1) return qWrapSearch ? zNames(n) : std::string();
    return zNames(p - 1);
  }
  if (p == 0) return zNames(1);
  if (p >= n) return qWrapSearch ? zNames(1) : std::string();
  return zNames(p + 1);
}

}  // namespace

bool mxDataStore::get_DSqUseWellList(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSqUseWellList)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_qUseWellList(); });
}

void mxDataStore::let_DSqUseWellList(int32_t iDataSet, bool qUseWellList) {
  ForwardVoid("mxDataStore (Code) (DSqUseWellList)", iDataSet,
              [&](mxDataSet& ds) { ds.let_qUseWellList(qUseWellList); });
}

void mxDataStore::WellListNextItem(int32_t iDataSet, const std::string& zWell, bool qWrapSearch,
                                   bool qBackwards, std::string& zNextWell, bool& qOK) {
  zNextWell.clear();
  qOK = false;
  ForwardVoid("mxDataStore (Code) (WellListNextItem)", iDataSet, [&](mxDataSet& ds) {
    if (!ds.get_qSetWELLLIST() || !ds.get_qUseWellList()) return;
    Array<std::string> zNames;
    int32_t n = 0;
    bool qList = false;
    ds.GetWellList(zNames, n, qList);
    zNextWell = NextName(zNames, n, zWell, qWrapSearch, qBackwards);
    qOK = true;
  });
}

void mxDataStore::WellNextItem(int32_t iDataSet, const std::string& zWell, bool qWrapSearch,
                               bool qBackwards, std::string& zNextWell, bool& qOK) {
  zNextWell.clear();
  qOK = false;
  ForwardVoid("mxDataStore (Code) (WellNextItem)", iDataSet, [&](mxDataSet&) {
    Array<std::string> zNames;
    int32_t n = 0;
    bool qList = false;
    DSGetWellListOrAll(iDataSet, zNames, n, qList);
    zNextWell = NextName(zNames, n, zWell, qWrapSearch, qBackwards);
    qOK = true;
  });
}

void mxDataStore::DSGetWellListOrAll(int32_t iDataSet, Array<std::string>& zWells,
                                     int32_t& NumFound, bool& qOK) {
  NumFound = 0;
  qOK = false;
  ForwardVoid("mxDataStore (Code) (DSGetWellListOrAll)", iDataSet, [&](mxDataSet& ds) {
    NumFound = 1;
    Array<std::string> one(1, 1);
    zWells.Swap(one);
    if (ds.get_qUseWellList() && ds.get_qSetWELLLIST()) {
      bool qList = false;
      ds.GetWellList(zWells, NumFound, qList);
      if (!zWells(1).empty() && NumFound >= 1) return;
    }
    bool qAll = false;
    GetAllWells(iDataSet, zWells, NumFound, qAll);
  });
  qOK = true;
}

bool mxDataStore::DSqSetWellList(int32_t iDataSet) {
  return Forward("mxDataStore (Code) (DSqSetWellList)", iDataSet, false,
                 [](mxDataSet& ds) { return ds.get_qSetWELLLIST(); });
}

void mxDataStore::DSSetWellList(int32_t iDataSet, const Array<std::string>& zWellList,
                                bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (DSSetWellList)", kSpacedWording, [&] {
    if (!ValidDataSet(iDataSet)) {
      qOK = true;  // a bad position has always reported true here
      return;
    }
    Array<std::string> zAll;
    int32_t nAll = 0;
    bool qAll = false;
    GetAllWells(iDataSet, zAll, nAll, qAll);
    // Names that are no well of the data set are blanked and left out.
    Array<std::string> zKept = zWellList;
    int32_t nBlanked = 0;
    for (std::string& zName : zKept) {
      bool qWell = false;
      for (int32_t k = 1; k <= nAll && !qWell; ++k) qWell = zAll(k) == zName;
      if (!qWell) {
        zName.clear();
        ++nBlanked;
      }
    }
    const auto nNames = static_cast<int32_t>(zKept.size());
    bool qSet = false;
    if (nBlanked < nNames) {
      Array<std::string> zList(1, nNames - nBlanked);
      int32_t n = 0;
      for (const std::string& zName : zKept)
        if (!zName.empty()) zList(++n) = zName;
      At(iDataSet).SetWELLLIST(zList, qSet);
      qOK = true;
    } else {
      At(iDataSet).SetWELLLIST(zWellList, qSet);
    }
  });
}

void mxDataStore::DSGetWellsInWellList(int32_t iDataSet, Array<std::string>& zWells,
                                       int32_t& nWells, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSGetWellsInWellList)", iDataSet,
              [&](mxDataSet& ds) { ds.GetWellList(zWells, nWells, qOK); });
}

void mxDataStore::DSGetWellList(int32_t iDataSet, Array<std::string>& zWells, int32_t& nWells,
                                bool& qOK) {
  ForwardVoid("mxDataStore (Code) (DSGetWellList)", iDataSet,
              [&](mxDataSet& ds) { ds.GetWellList(zWells, nWells, qOK); });
}

void mxDataStore::WDS_DSGetOriginWellLists(int32_t iDataSet, int32_t& nLists,
                                           Array<std::string>& zNames,
                                           Array<std::string>& zDelimited, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (WDS_DSGetOriginWellLists)", iDataSet,
              [&](mxDataSet& ds) { ds.WH_GetDelimitedLists(nLists, zNames, zDelimited, qOK); });
}

void mxDataStore::WDS_DSGetWellListArray(int32_t iDataSet, const std::string& zName,
                                         int32_t& nWells, Array<std::string>& zWells, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (WDS_DSGetWellListArray)", iDataSet,
              [&](mxDataSet& ds) { ds.WH_GetWellListDetails(zName, nWells, zWells, qOK); });
}

void mxDataStore::WDS_GetWellList(int32_t iDataSet, Array<std::string>& zWells, int32_t& nWells,
                                  bool& qOK) {
  ForwardVoid("mxDataStore (Code) (WDS_GetWellList)", iDataSet,
              [&](mxDataSet& ds) { ds.GetWellList(zWells, nWells, qOK); });
}

void mxDataStore::WDS_GetWellListDetailsByName(int32_t iDataSet, const std::string& zName,
                                               int32_t& nWells, Array<std::string>& zWells,
                                               std::string& zDelimited, bool& qOK) {
  ForwardVoid("mxDataStore (Code) (WDS_GetWellListDetailsByName)", iDataSet, [&](mxDataSet& ds) {
    ds.WH_GetWellListDetailsByName(zName, nWells, zWells, zDelimited, qOK);
  });
}

bool mxDataStore::WSH_AppendNamedWellList(int32_t iDataSet, const Array<std::string>& zWellList,
                                          std::string& zThisListName) {
  return Forward("mxDataStore (Code) (WSH_AppendNamedWellList)", iDataSet, false,
                 [&](mxDataSet& ds) {
                   ds.WH_AppendWellList(zWellList, zThisListName);
                   return true;
                 });
}

bool mxDataStore::WSH_AppendNamedWellList(int32_t iDataSet, const Array<std::string>& zWellList) {
  std::string zThisListName;
  return WSH_AppendNamedWellList(iDataSet, zWellList, zThisListName);
}

void mxDataStore::WSH_DeleteWellListByName(int32_t iDataSet, const std::string& zName,
                                           bool& qOK) {
  ForwardVoid("mxDataStore (Code) (WSH_DeleteWellListByName)", iDataSet,
              [&](mxDataSet& ds) { ds.WH_DeleteWellListByName(zName, qOK); });
}

}  // namespace vndata
