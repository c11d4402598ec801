// mxDataSet: questions about the columns that move no values: the data
// set's own description as text, which column has a variable, a tree key or
// a packed record, and the distinct texts, members and vectors it holds.
#include <algorithm>
#include <cstring>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/date_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"
#include "vndata/platform/variant.h"

namespace vndata {

namespace {
constexpr int32_t kTabStripStep = 10;
constexpr int32_t kMembersInitial = 1000;
constexpr int32_t kMemberWidth = 40;

std::string IntText(int32_t v) { return std::to_string(v); }

// Marks the cells of a pool whose text equals zText without regard to case
// (several cells may differ only in case); false when there is none.
bool MatchingCells(const ByteStore* pool, std::string_view zText, std::vector<char>& match) {
  match.assign(pool == nullptr ? 1 : static_cast<std::size_t>(pool->Count()) + 1, 0);
  if (pool == nullptr) return false;
  bool qAny = false;
  for (int32_t cell = 1; cell <= pool->Count(); ++cell)
    if (StringTools::Equal(pool->View(cell), zText, false)) {
      match[static_cast<std::size_t>(cell)] = 1;
      qAny = true;
    }
  return qAny;
}
}  // namespace

// ---- The data set's own description --------------------------------------------------------

std::string mxDataSet::GetDataSetAttribute(int32_t iType) {
  std::string result(kUnknownAttribute);
  RunGuarded("mxDataSet  (GetDataSetAttribute)", [&] {
    switch (iType) {
      case SD_ORIGIN: result = source_.zOrigin; break;
      case SD_FILENAME: result = source_.zFileName; break;
      case SD_SOURCETYPE: result = source_.zSourceType; break;
      case SD_DATESTAMP: result = DateTools::NormaliseDate(source_.zDateStamp, std::string(kDateFormat)); break;
      case SD_DATACLASS: result = source_.zDataClass; break;
      case SD_UNITS: result = IntText(source_.iUnits); break;
      case SD_INDEX: result = IntText(source_.iIndex); break;
      case SD_ISTART: result = IntText(reading_.iStart); break;
      case SD_IEND: result = IntText(reading_.iEnd); break;
      case SD_NORESTART: result = BoolText(reading_.qNoRestart); break;
      case SD_UNIFIED: result = BoolText(reading_.qUnified); break;
      case SD_FORMATTED: result = BoolText(reading_.qFormatted); break;
      case SD_SIMWORD_OR_TABLENAME:
        // A table's name, or the simulator word of a source that has one.
        if (source_.zDataClass == "Tables" || source_.zDataClass == "TABLE") result = source_.zTableName;
        else if (source_.zSourceType == "CMG") result = source_.zSimulator;
        break;
      case SD_SIMULATOR: result = source_.zSimulator; break;
      case SD_NUMCOLS: result = IntText(headers_.nCols); break;
      case SD_DEFAULTX: result = IntText(plot_.iDefaultX); break;
      case SD_TVGROUPNAME: result = source_.zTVGroupName; break;
      case SD_GROUPNAME: result = source_.zGroupName; break;
      case SD_DATAROOTPATH: result = source_.zDataRootPath; break;
      case SD_UNIQUEKEY: result = source_.zUniqueKey; break;
      case SD_ISDIRTY: result = BoolText(qIsDirty_); break;
      case SD_FILETYPE: result = IntText(source_.iFileType); break;
      case SD_TVDISPLAYROOT: result = source_.zTVDisplayRoot; break;
      case SD_NUMROWS: result = IntText(get_NumRows()); break;
      case SD_NUMMARKERS: result = IntText(wells_.markers.NumMarkers); break;
      case SD_ZONLY: result = lists_.zOnly; break;
      case SD_LGRNAME: result = source_.zLGRName; break;
      case SD_OBSNAME: result = source_.zObsName; break;
      case SD_TIMEINDAYS: result = SingleText(source_.sTimeInDays); break;
      case SD_CREATIONMETHOD: result = IntText(source_.iCreationMethod); break;
      case SD_UCASETVDISPLAYROOT: result = source_.zUCaseTVDisplayRoot; break;
      case SD_READPOSITION64_LOW: result = IntText(reading_.iReadPosL); break;
      case SD_READPOSITION64_HIGH: result = IntText(reading_.iReadPosH); break;
      default: break;
    }
  });
  return result;
}

bool mxDataSet::CompareDataSetAttribute(int32_t iType, const std::string& zValue,
                                        bool qCaseSensitive) {
  bool result = false;
  RunGuarded("mxDataSet  (CompareDataSetAttribute)", [&] {
    const std::string zHeld = GetDataSetAttribute(iType);
    result = StringTools::Equal(zHeld, zValue, qCaseSensitive);
    if (result || iType != SD_LGRNAME) return;
    // The root grid is named either way.
    if (zHeld.empty() && StringTools::Equal(zValue, "ROOT", false)) result = true;
    else if (zValue.empty() && StringTools::Equal(zHeld, "ROOT", false)) result = true;
  });
  return result;
}

// ---- Columns by name and key -------------------------------------------------------------------

int32_t mxDataSet::IndexFromVARIABLE(const std::string& zVariable) {
  int32_t result = 0;
  RunGuarded("mxDataSet  (IndexFromVARIABLE)", [&] {
    const int32_t pos = FindAttributePosition(ATT_VARIABLE, zVariable);
    result = pos == -1 ? 0 : pos;
  });
  return result;
}

int32_t mxDataSet::IndexFromHEADERCOLUMN(const std::string& zHeader) {
  int32_t result = -1;
  RunGuarded("mxDataSet  (IndexFromHEADERCOLUMN)", [&] {
    Array<std::string> zTokens;
    int32_t nTokens = 0;
    StringTools::Split(zHeader, std::string(kPathSeparator), zTokens, nTokens);
    if (nTokens < 1) return;
    Array<int32_t> iLengths(1, nTokens);
    for (int32_t k = 1; k <= nTokens; ++k) iLengths(k) = static_cast<int32_t>(zTokens(k).size());
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      bool qFits = false;
      CompareTreeViewPathArray(zTokens, iLengths, nTokens, c, true, qFits);
      if (qFits) {
        result = c;
        return;
      }
    }
  });
  return result;
}

int32_t mxDataSet::IndexFromTVInfo(std::string& zKey) {
  int32_t result = -1;
  RunGuarded("mxDataSet  (IndexFromTVInfo)", [&] {
    zKey = StringTools::Upper(zKey);
    // The data set's place in the host's tree: its data root and its key.
    const std::string zPrefix = StringTools::KeyJoin(source_.zDataRootPath, source_.zUniqueKey, true);
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      std::string zColumnKey;
      int32_t iCreationType = 0;
      bool qOK = false;
      GetTreeViewKey(c, zColumnKey, iCreationType, qOK);
      if (StringTools::KeyJoin(zPrefix, zColumnKey, true) == zKey) {
        result = c;
        return;
      }
    }
  });
  return result;
}

int32_t mxDataSet::IndexFromTVKEY(const std::string& zKey) {
  int32_t result = -1;
  RunGuarded("mxDataSet  (IndexFromTVKEY)", [&] {
    const int32_t n = static_cast<int32_t>(zKey.size());
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      // The stored length rejects most columns before a path is built.
      if (headers_.columns(c).LenTreeViewPath != n) continue;
      if (TreeViewPath(c) == zKey) {
        result = c;
        return;
      }
    }
  });
  return result;
}

// ---- Distinct texts ----------------------------------------------------------------------------

void mxDataSet::GetUniqueTabStripHeaders(int32_t iType, Array<std::string>& zHeaders,
                                         int32_t& nHeaders, bool& qOK) {
  qOK = false;
  nHeaders = 0;
  RunGuarded("mxDataSet  (GetUniqueTabStripHeaders)", [&] {
    zHeaders.ReDim(1, kTabStripStep);
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      std::string zText;
      int32_t nLength = 0;
      bool qRead = false;
      StoredAttributeCore(c, iType, zText, nLength, qRead, true);
      if (nLength == 0) continue;
      bool qKnown = false;
      for (int32_t k = 1; k <= nHeaders && !qKnown; ++k)
        qKnown = StringTools::Equal(zHeaders(k), zText, false);
      if (qKnown) continue;
      if (nHeaders == zHeaders.UBound()) zHeaders.ReDimPreserve(nHeaders + kTabStripStep);
      zHeaders(++nHeaders) = zText;
    }
    qOK = true;
  });
}

void mxDataSet::MembersFromCache(Array<std::string>& zMembers, int32_t& nMembers) {
  nMembers = caches_.nMembersCached;
  if (nMembers < 1) return;
  zMembers.ReDim(1, nMembers);
  for (int32_t m = 1; m <= nMembers; ++m) {
    const char* p = reinterpret_cast<const char*>(&caches_.bMembersCached(1, m));
    zMembers(m) = StringTools::Trim(std::string_view(p, kMemberWidth));
  }
}

void mxDataSet::CacheMembers(const std::string& zClass, const Array<std::string>& zMembers,
                             int32_t nMembers) {
  caches_.bMembersCached.ReDim(1, kMemberWidth, 1, nMembers);
  caches_.bMembersCached.Fill(static_cast<uint8_t>(' '));
  for (int32_t m = 1; m <= nMembers; ++m) {
    const std::string& z = zMembers(m);
    std::memcpy(&caches_.bMembersCached(1, m), z.data(), std::min<std::size_t>(z.size(), kMemberWidth));
  }
  caches_.nMembersCached = nMembers;
  caches_.zMembersClass = zClass;
  caches_.qMembersCached = true;
}

void mxDataSet::GetUniqueMembersOfClass(const std::string& zClass, Array<std::string>& zMembers,
                                        int32_t& nMembers, bool& qOK) {
  qOK = false;
  nMembers = 0;
  RunGuarded("mxDataSet  (GetUniqueMembersOfClass)", [&] {
    if (caches_.qMembersCached && StringTools::Equal(zClass, caches_.zMembersClass, false)) {
      MembersFromCache(zMembers, nMembers);
      qOK = true;
      return;
    }
    caches_.qMembersCached = false;
    caches_.nMembersCached = 0;
    caches_.bMembersCached.Erase();

    // The names are gathered aside and the array is made once at the end,
    // at the size the growing array ends with: the members found, or its
    // first 1000 entries when there are none.
    std::vector<std::string_view> found;
    const ByteStore* classes = Pool(ATT_CLASS);
    const ByteStore* members = Pool(ATT_MEMBER);
    std::vector<char> classMatch;
    if (members != nullptr && MatchingCells(classes, zClass, classMatch)) {
      // A member cell is settled once: the columns of one member usually lie
      // together, and later columns of a settled cell cost one integer test.
      // A new cell is looked up among the names found by its case-folded
      // text, so the first spelling stands and the walk stays linear.
      const int32_t nClassCells = classes->Count(), nMemberCells = members->Count();
      std::vector<char> settled(static_cast<std::size_t>(nMemberCells) + 1, 0);
      std::unordered_set<std::string> folded;
      const int32_t* iClass = PointerColumn(ATT_CLASS);
      const int32_t* iMember = PointerColumn(ATT_MEMBER);
      for (std::size_t c = 0; c < static_cast<std::size_t>(headers_.nCols); ++c) {
        const int32_t k = iClass[c], m = iMember[c];
        if (k < 1 || k > nClassCells || !classMatch[static_cast<std::size_t>(k)]) continue;
        if (m < 1 || m > nMemberCells || settled[static_cast<std::size_t>(m)]) continue;
        settled[static_cast<std::size_t>(m)] = 1;
        std::string_view zName = members->View(m);
        if (zName.empty() || !folded.insert(StringTools::Upper(zName)).second) continue;
        found.push_back(zName);
      }
    }
    nMembers = static_cast<int32_t>(found.size());
    zMembers.ReDim(1, nMembers == 0 ? kMembersInitial : nMembers);
    for (int32_t m = 1; m <= nMembers; ++m) zMembers(m) = std::string(found[static_cast<std::size_t>(m - 1)]);
    if (nMembers > 0) CacheMembers(zClass, zMembers, nMembers);
    qOK = true;
  });
}

void mxDataSet::GetUniqueVectors(Array<std::string>& zVectors, int32_t& nVectors, bool& qOK) {
  GetStoredItems(ATT_VARIABLE, zVectors, nVectors, qOK);
}

void mxDataSet::GetStoredItems(int32_t iType, Array<std::string>& zItems, int32_t& nItems,
                               bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (GetStoredItems)", [&] {
    if (iType < 1 || iType > UNUSED13) return;
    const ByteStore* pool = Pool(iType);
    if (pool == nullptr) {
      // No text of this id was ever given.
      nItems = 0;
      qOK = true;
      return;
    }
    int32_t n = 0;
    Array<std::string> zAll = pool->GetAllStrings(n);
    zItems = std::move(zAll);
    nItems = n;
    qOK = true;
  });
}

// ---- Columns by packed record --------------------------------------------------------------

void mxDataSet::ReturnListOfExistingCols(const Array2<uint8_t>& bHeaders, int32_t nHeaders,
                                         Array<int32_t>& iCols, int32_t& nFound, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (ReturnListOfExistingCols)", [&] {
    // The incoming records by their upper-cased text, so that each column's
    // record is looked up once rather than compared with every record.
    std::unordered_map<std::string, std::vector<int32_t>> incoming;
    for (int32_t k = 1; k <= nHeaders; ++k) {
      const char* p = reinterpret_cast<const char*>(&bHeaders(1, k));
      (void)bHeaders(kPackedRecordSize, k);
      incoming[StringTools::Upper(std::string_view(p, kPackedRecordSize))].push_back(k);
    }
    if (nHeaders >= 1) iCols.ReDim(1, nHeaders);
    else iCols.Erase();
    nFound = 0;
    Array<uint8_t> bRecord;
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      if (!bGetAttributes(c, bRecord)) continue;
      const char* p = reinterpret_cast<const char*>(bRecord.data());
      const std::size_t n = std::min<std::size_t>(bRecord.size(), kPackedRecordSize);
      auto it = incoming.find(StringTools::Upper(std::string_view(p, n)));
      if (it == incoming.end()) continue;
      for (int32_t k : it->second) {
        ++nFound;
        iCols(k) = c;
      }
    }
    qOK = true;
  });
}

}  // namespace vndata
