// Origin resolution: from the texts a host or a derived quantity names data
// by (origin, type, index, name) to a data set position.
#include <string_view>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"
#include "vndata/platform/variant.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

namespace {
constexpr const char* kSep = "\\";

// Families whose data sets tell a report by the last group element.
bool NamedByLastElement(const std::string& zType) {
  return zType == "PLT" || zType == "RFT" || zType == "PLTBRAN" || zType == "ICDBRAN" ||
         zType == "SEGBRAN";
}

// The branch families of the branch-aware resolver; the short "PLTBRAN" is
// deliberately not among them.
bool BranchFamily(const std::string& zType) {
  return zType == "SEGBRAN" || zType == "PLTBRANCH" || zType == "ICDBRANCH" || zType == "ICDBRAN";
}

bool EqualNoCase(std::string_view a, std::string_view b) { return StringTools::Equal(a, b, false); }

std::string Column1Attribute(mxDataSet& ds, int32_t iAttribute) {
  std::string z;
  ds.GetAttribute(1, iAttribute, z);
  return z;
}
}  // namespace

mxDataSet* mxDataStore::Slot(int32_t iDataSet) const {
  if (!DataSets_.InBounds(iDataSet)) return nullptr;
  return DataSets_(iDataSet).get();
}

mxDataSet& mxDataStore::Trusted(int32_t iDataSet) const {
  const std::shared_ptr<mxDataSet>& p = DataSets_(iDataSet);
  if (!p) RaiseFault(kFaultObjectNotSet);
  return *p;
}

// ---- The origin test -------------------------------------------------------------------------

void mxDataStore::CheckOriginMatch(const std::string& zOrigin, int32_t iDataSet,
                                   const std::string& zType, bool& qPartialMatch,
                                   bool& qFullMatch, bool& /*qOK*/) {
  qPartialMatch = false;
  qFullMatch = false;
  RunGuarded("mxDataStore (Code) (CheckOriginMatch)", kSpacedWording, [&] {
    mxDataSet& ds = Trusted(iDataSet);
    const std::string& zUOrigin = ds.get_UCaseOrigin();
    if (zUOrigin == zOrigin) {
      qFullMatch = true;
      return;
    }
    if (StringTools::Upper(zType) != "DATA") return;
    if (zUOrigin.find(zOrigin + "_") == std::string::npos) return;
    // The numbered copies of a case: the origin and a number after the
    // last "_".
    const std::string& zHeld = ds.get_Origin();
    const std::size_t at = zHeld.rfind('_');
    const std::string zCase = zHeld.substr(0, at), zNumber = zHeld.substr(at + 1);
    qPartialMatch = StringTools::Upper(zCase) == zOrigin && Variant(zNumber).IsNumeric();
  });
}

// ---- The two resolvers ------------------------------------------------------------------------

// The "SAMPLE" and "EXTRACT" rows, shared by both resolvers; false when the
// type is neither.
bool mxDataStore::SampleOrExtractRows(mxDataSet& ds, const std::string& zType,
                                      const std::string& zName, bool& qAccept) {
  if (zType == "SAMPLE") {
    qAccept = EqualNoCase(ds.get_DateStamp(), zName);
    return true;
  }
  if (zType != "EXTRACT") return false;
  Array<std::string> zParts;
  int32_t nParts = 0;
  if (zName.empty() || !StringTools::Split(zName, kSep, zParts, nParts) || nParts < 1) {
    qAccept = true;
    return true;
  }
  qAccept = EqualNoCase(ds.get_DateStamp(), zParts(1)) &&
            (nParts < 2 || EqualNoCase(Column1Attribute(ds, ATT_MEMBER), zParts(2)));
  return true;
}

// Whether a table or data data set holds the named vector: by the name, by
// its history form (the name and "H"), and by the piece after a `\`. The
// branch-aware resolver tries the name alone.
bool mxDataStore::HeaderColumnRows(mxDataSet& ds, const std::string& zName, bool qHistoryAndSplit) {
  if (ds.IndexFromHEADERCOLUMN(zName) > 0) return true;
  if (!qHistoryAndSplit) return false;
  if (ds.IndexFromHEADERCOLUMN(zName + "H") > 0) return true;
  std::string zBefore, zAfter;
  StringTools::SplitInTwo(zName, kSep, zBefore, zAfter);
  return ds.IndexFromHEADERCOLUMN(zAfter) > 0;
}

bool mxDataStore::OriginRows(mxDataSet& ds, const std::string& zType, int32_t Index,
                             const std::string& zName, const Array<std::string>& zParts,
                             int32_t nParts) {
  bool qAccept = false;
  if (SampleOrExtractRows(ds, zType, zName, qAccept)) return qAccept;
  const std::string zUName = StringTools::Upper(zName);
  if (Index >= 0) {
    if (ds.get_Index() != Index) return false;
    if (NamedByLastElement(zType)) return StringTools::Upper(zParts(nParts)) == zUName;
    if (zType == "SOLUTION" && nParts == 3) return StringTools::Upper(zParts(2)) == zUName;
    return true;
  }
  if (zType == "TABLE" || zType == "TABLES" || zType == "DATA")
    return zName.empty() || HeaderColumnRows(ds, zName, true);
  if (zType == "INIT" && !zName.empty()) return ds.get_LGRName() == zName;
  return true;
}

bool mxDataStore::OriginRowsEx(mxDataSet& ds, const std::string& zType, int32_t Index,
                               int32_t iBranch, const std::string& zName,
                               const Array<std::string>& zParts, int32_t nParts) {
  bool qAccept = false;
  if (SampleOrExtractRows(ds, zType, zName, qAccept)) return qAccept;
  const std::string zUName = StringTools::Upper(zName);
  if (Index >= 0) {
    if (ds.get_Index() != Index) return false;
    if (iBranch < 1) {
      if (zType == "PLT" || zType == "RFT") return StringTools::Upper(zParts(nParts)) == zUName;
      if (zType == "SOLUTION" && nParts == 3) return StringTools::Upper(zParts(2)) == zUName;
      return true;
    }
    if (!BranchFamily(zType)) return false;
    return ds.get_Branch() == iBranch && nParts >= 2 &&
           StringTools::Upper(zParts(nParts - 1)) == zUName;
  }
  if (zType == "DATA") return zName.empty() || HeaderColumnRows(ds, zName, true);
  if (zType == "TABLE" || zType == "TABLES") return !zName.empty() && HeaderColumnRows(ds, zName, false);
  if (zType == "INIT" && !zName.empty()) return ds.get_LGRName() == zName;
  return true;
}

int32_t mxDataStore::ResolveOrigin(std::string zOrigin, std::string& zType, int32_t Index,
                                   int32_t iBranch, const std::string& zName, bool qEx) {
  zOrigin = StringTools::Upper(zOrigin);
  zType = StringTools::Upper(zType);
  for (int32_t pos = 1; pos <= get_NumberOfDataSets(); ++pos) {
    mxDataSet* ds = &Trusted(pos);
    bool qPartial = false, qFull = false, qUnused = false;
    CheckOriginMatch(zOrigin, pos, zType, qPartial, qFull, qUnused);
    if (!qPartial && !qFull) continue;
    if (zType.empty()) return pos;
    Array<std::string> zParts;
    int32_t nParts = 0;
    StringTools::Split(ds->get_GroupName(), kSep, zParts, nParts);
    if (nParts < 1 || StringTools::Upper(zParts(1)) != zType) continue;
    const bool qAccept = qEx ? OriginRowsEx(*ds, zType, Index, iBranch, zName, zParts, nParts)
                             : OriginRows(*ds, zType, Index, zName, zParts, nParts);
    if (qAccept) return pos;
  }
  return -1;
}

int32_t mxDataStore::GetOriginIndex(std::string zOrigin) {
  std::string zType;
  return GetOriginIndex(std::move(zOrigin), zType);
}

int32_t mxDataStore::GetOriginIndex(std::string zOrigin, std::string& zType, int32_t Index,
                                    const std::string& zName) {
  int32_t result = -1;
  RunGuarded("mxDataStore (Code) (getOriginIndex)", kSpacedWording,
             [&] { result = ResolveOrigin(std::move(zOrigin), zType, Index, -1, zName, false); });
  return result;
}

int32_t mxDataStore::GetOriginIndexEx(std::string zOrigin) {
  std::string zType;
  return GetOriginIndexEx(std::move(zOrigin), zType);
}

int32_t mxDataStore::GetOriginIndexEx(std::string zOrigin, std::string& zType, int32_t Index,
                                      int32_t iBranch, const std::string& zName) {
  int32_t result = -1;
  RunGuarded("mxDataStore (Code) (getOriginIndexEx)", kSpacedWording,
             [&] { result = ResolveOrigin(std::move(zOrigin), zType, Index, iBranch, zName, true); });
  return result;
}

// ---- Lookups around the resolvers ---------------------------------------------------------------

bool mxDataStore::CheckExtractedKey(const std::string& zOrigin, const std::string& zTVGroupName,
                                    std::string& zGROUPtoFind, int32_t& iDataSet) {
  bool result = false;
  iDataSet = -1;
  RunGuarded("mxDataStore (Code) (CheckExtractedKey)", kSpacedWording, [&] {
    const std::string zUOrigin = StringTools::Upper(zOrigin);
    for (int32_t pos = 1; pos <= get_NumberOfDataSets(); ++pos) {
      mxDataSet* ds = &Trusted(pos);
      if (ds->get_UCaseOrigin() != zUOrigin) continue;
      if (ds->get_GroupName().find(zTVGroupName) == std::string::npos) continue;
      const std::string zKey = ds->get_GroupName() + kSep + Column1Attribute(*ds, ATT_SUBCLASS1) +
                               kSep + ds->get_LGRName() + " " + Column1Attribute(*ds, ATT_MEMBER);
      if (zGROUPtoFind != zKey) continue;
      iDataSet = pos;
      zGROUPtoFind = ds->get_UniqueKey();
      result = true;
      return;
    }
  });
  return result;
}

void mxDataStore::GetAllOrigins(Array<std::string>& zOrigins, int32_t& nOrigins, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (GetAllOrigins)", kSpacedWording, [&] {
    constexpr int32_t kStep = 30;
    const int32_t nDataSets = get_NumberOfDataSets();
    nOrigins = 0;
    if (nDataSets < 1) {
      zOrigins.Erase();
      qOK = true;
      return;
    }
    zOrigins.ReDim(1, std::min(kStep, nDataSets));
    for (int32_t pos = 1; pos <= nDataSets; ++pos) {
      const std::string& zOrigin = Trusted(pos).get_Origin();
      bool qKnown = false;
      for (int32_t k = 1; k <= nOrigins && !qKnown; ++k) qKnown = EqualNoCase(zOrigins(k), zOrigin);
      if (qKnown) continue;
      if (nOrigins == zOrigins.UBound()) zOrigins.ReDimPreserve(nOrigins + kStep);
      zOrigins(++nOrigins) = zOrigin;
    }
    zOrigins.ReDimPreserve(nOrigins);
    qOK = true;
  });
}

int32_t mxDataStore::get_GetDatasetFromOrigin(const std::string& zOrigin) {
  int32_t result = -1;
  RunGuarded("mxDataStore (Code) (GetDatasetFromOrigin)", kSpacedWording, [&] {
    for (int32_t pos = 1; pos <= NextDataSetPos_; ++pos) {
      mxDataSet* ds = Slot(pos);
      if (ds == nullptr) continue;
      const std::string& zClass = ds->get_DataClass();
      const bool qPlot =
          zClass == "SUMMARY" || zClass == "PLOT" || zClass == "Summary" || zClass == "Plot";
      if (qPlot && ds->get_Origin() == zOrigin) {
        result = pos;
        return;
      }
    }
  });
  return result;
}

void mxDataStore::GetAllWells(int32_t iDataSet, Array<std::string>& zWells, int32_t& nWells,
                              bool& qOK) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (GetAllWells)", iDataSet, [&](mxDataSet& ds) {
    const int32_t iFileType = ds.get_FileType();
    const bool qSolution = ds.get_DataClass() == "SOLUTION";
    std::string zClass;
    switch (iFileType) {
      case 3: case 13: case 21: zClass = "WELLS"; break;
      case 113: zClass = "WAF"; break;
      case 506: zClass = "WELL"; break;
      case 31: case 32: case 38: case 40: case 220: case 321: case 322: case 323: case 390: case 391:
        if (!qSolution) zClass = "WELL";
        break;
      default: break;
    }
    if (qSolution || iFileType == 11) {
      // Grid data names its wells by its markers.
      ds.getWellNamesfromMarkers(zWells, nWells);
      qOK = true;
      return;
    }
    bool qFound = false;
    ds.GetUniqueMembersOfClass(zClass, zWells, nWells, qFound);
    if (nWells < 1) {
      switch (iFileType) {
        case 3: case 13: case 21: zClass = "WELL"; break;
        case 32: case 38: zClass = "WELLS"; break;
        case 113: zClass = "WAF"; break;
        default: break;
      }
      ds.GetUniqueMembersOfClass(zClass, zWells, nWells, qFound);
    }
    qOK = true;
  });
}

void mxDataStore::GetOriginsByDataAttribute(int32_t iAttribute, const std::string& zAttribute,
                                            Array<std::string>& zOrigins, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (GetOriginsByDataAttribute)", kSpacedWording, [&] {
    const int32_t nDataSets = get_NumberOfDataSets();
    if (nDataSets < 1) return;
    zOrigins.ReDim(1, nDataSets);
    const std::string zValue = StringTools::Upper(zAttribute);
    int32_t n = 0;
    for (int32_t pos = 1; pos <= nDataSets; ++pos) {
      mxDataSet& ds = Trusted(pos);
      if (!ds.CompareDataSetAttribute(iAttribute, zValue, false)) continue;
      const std::string& zOrigin = ds.get_UCaseOrigin();
      bool qKnown = false;
      for (int32_t k = 1; k <= n && !qKnown; ++k) qKnown = zOrigins(k) == zOrigin;
      if (!qKnown) zOrigins(++n) = zOrigin;
    }
    if (n < 1) return;
    zOrigins.ReDimPreserve(n);
    qOK = true;
  });
}

int32_t mxDataStore::GetDataSetFromTreeViewKey(const std::string& zTreeViewKey) {
  int32_t result = 0;
  RunGuarded("mxDataStore (Code) (GetDataSetFromTreeViewKey)", kSpacedWording, [&] {
    const std::size_t last = zTreeViewKey.rfind('\\');
    const std::string zPrefix =
        StringTools::Upper(last == std::string::npos ? zTreeViewKey.substr(0, 1)
                                                     : zTreeViewKey.substr(0, last + 1));
    // First with the grid of a local-grid data set, then without it.
    for (int32_t pos = 1; pos <= NextDataSetPos_; ++pos) {
      mxDataSet* ds = Slot(pos);
      if (ds == nullptr) continue;
      const std::string zUGroup = StringTools::Upper(ds->get_GroupName());
      std::string zPath = ds->get_DataRootPath() + kSep + zUGroup + kSep;
      if (!ds->get_LGRName().empty() && (zUGroup == "CALC" || zUGroup == "INIT" || zUGroup == "GEO"))
        zPath += ds->get_LGRName() + kSep;
      if (zPath.size() == zPrefix.size() && StringTools::Upper(zPath) == zPrefix) {
        result = pos;
        return;
      }
    }
    for (int32_t pos = 1; pos <= NextDataSetPos_; ++pos) {
      mxDataSet* ds = Slot(pos);
      if (ds == nullptr) continue;
      const std::string zPath = ds->get_DataRootPath() + kSep + ds->get_GroupName() + kSep;
      if (zPath.size() == zPrefix.size() && EqualNoCase(zPath, zPrefix)) {
        result = pos;
        return;
      }
    }
  });
  return result;
}

}  // namespace vndata
