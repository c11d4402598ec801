// Tree view paths: a column's place in the host's tree, built from its
// attributes on demand and never stored. A column record keeps only two
// lengths, so callers can size or reject without building a text.
#include <array>
#include <string_view>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/internal/column_pointers.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {
constexpr int32_t kMaxTokens = 7;
constexpr char kSeparator = '\\';

// Families whose member and index are already in the subclass words of the
// reader, or are the row axis.
bool SkipsMemberAndIndex(std::string_view zType) {
  static constexpr std::array<std::string_view, 10> kFamilies = {
      "PLT", "SEG", "INFLOW", "CONNECT", "SEGBRAN", "PLTBRAN", "ICDBRAN", "SEGMENT", "SOLUTION", "RFT"};
  for (std::string_view f : kFamilies)
    if (zType == f) return true;
  return false;
}

// Families that carry no first subclass level in the path: the branch
// families, and grid solutions, whose path is class, second subclass and
// variable whatever else the column holds.
bool SkipsSubClass1(std::string_view zType) {
  return zType == "SEGBRAN" || zType == "PLTBRAN" || zType == "ICDBRAN" || zType == "SOLUTION";
}

// The same test as the last-token builder has always made it: without
// "ICDBRAN", which is kept.
bool SkipsSubClass1ForLastToken(std::string_view zType) {
  return zType == "SEGBRAN" || zType == "PLTBRAN";
}
}  // namespace

std::string_view mxDataSet::AttributeView(int32_t iColumn, int32_t iAttribute) const {
  ByteStore* pool = Pool(iAttribute);
  if (pool == nullptr || !headers_.columns.InBounds(iColumn)) return std::string_view();
  int32_t iPointer = -1;
  if (!ReadAttributePointer(headers_.columns(iColumn).Pointers, iAttribute, iPointer)) return {};
  return pool->View(iPointer);
}

// The ids that give the path's tokens for a column of the given type, in
// path order.
int32_t mxDataSet::TreePathAttributes(std::string_view zType, bool qLastTokenRule,
                                      std::array<int32_t, 6>& ids) {
  int32_t n = 0;
  ids[n++] = ATT_CLASS;
  bool skip1 = qLastTokenRule ? SkipsSubClass1ForLastToken(zType) : SkipsSubClass1(zType);
  if (!skip1) ids[n++] = ATT_SUBCLASS1;
  ids[n++] = ATT_SUBCLASS2;
  if (!SkipsMemberAndIndex(zType)) {
    ids[n++] = ATT_MEMBER;
    ids[n++] = ATT_INDEX;
  }
  ids[n++] = ATT_VARIABLE;
  return n;
}

void mxDataSet::BuildTreeViewPathArray(int32_t iColumn, Array<std::string>& zTokens,
                                       Array<int32_t>& iLengths, int32_t& nTotal, int32_t& nTokens,
                                       bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (BuildTreeViewPathArray)", [&] {
    nTotal = 0;
    nTokens = 0;
    zTokens.ReDim(1, kMaxTokens);
    iLengths.ReDim(1, kMaxTokens);
    if (!ValidColumn(iColumn, true)) return;
    std::array<int32_t, 6> ids{};
    int32_t nIds = TreePathAttributes(AttributeView(iColumn, ATT_TYPE), false, ids);
    for (int32_t k = 0; k < nIds; ++k) {
      std::string_view text = AttributeView(iColumn, ids[static_cast<std::size_t>(k)]);
      if (text.empty()) continue;
      ++nTokens;
      zTokens(nTokens) = std::string(text);
      iLengths(nTokens) = static_cast<int32_t>(text.size());
      nTotal += iLengths(nTokens);
    }
    if (nTokens > 1) nTotal += nTokens - 1;
    qOK = true;
  });
}

void mxDataSet::BuildTreeViewPath(int32_t iColumn, std::string& zPath, int32_t& nLength,
                                  bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (BuildTreeViewPath)", [&] {
    zPath.clear();
    nLength = 0;
    if (!ValidColumn(iColumn, true)) return;
    std::array<int32_t, 6> ids{};
    int32_t nIds = TreePathAttributes(AttributeView(iColumn, ATT_TYPE), false, ids);
    for (int32_t k = 0; k < nIds; ++k) {
      std::string_view text = AttributeView(iColumn, ids[static_cast<std::size_t>(k)]);
      if (text.empty()) continue;
      if (!zPath.empty()) zPath += kSeparator;
      zPath += text;
    }
    nLength = static_cast<int32_t>(zPath.size());
    qOK = true;
  });
}

std::string mxDataSet::ComputedTreePath(int32_t iColumn) {
  std::string zPath;
  int32_t nLength = 0;
  bool qOK = false;
  BuildTreeViewPath(iColumn, zPath, nLength, qOK);
  return zPath;
}

void mxDataSet::BuildTreeViewData(int32_t iColumn, std::string& zKey, std::string& zSection,
                                  int32_t& nSection, Array<std::string>& zTokens,
                                  Array<int32_t>& iLengths, int32_t& nTokens, bool& qOK,
                                  bool qKeys) {
  qOK = false;
  RunGuarded("mxDataSet  (BuildTreeViewData)", [&] {
    int32_t nTotal = 0;
    bool qBuilt = false;
    BuildTreeViewPathArray(iColumn, zTokens, iLengths, nTotal, nTokens, qBuilt);
    if (!qBuilt) return;
    nSection = 0;
    if (nTotal < 1) {
      qOK = true;
      return;
    }
    // The section is the part of the key before the leaf.
    int32_t nBeforeLeaf = 0;
    for (int32_t k = 1; k < nTokens; ++k) nBeforeLeaf += iLengths(k);
    if (nTokens > 2) nBeforeLeaf += nTokens - 2;
    if (!qKeys) {
      nSection = nTokens == 1 ? 0 : (nTokens == 2 ? iLengths(1) : nBeforeLeaf);
      qOK = true;
      return;
    }
    zKey.assign(static_cast<std::size_t>(nTotal), ' ');
    zSection.clear();
    std::size_t at = 0;
    for (int32_t k = 1; k <= nTokens; ++k) {
      if (k > 1) zKey[at++] = kSeparator;
      zKey.replace(at, static_cast<std::size_t>(iLengths(k)), zTokens(k));
      at += static_cast<std::size_t>(iLengths(k));
      // The section is a copy of the whole buffer at that moment, blanks
      // still standing at its end: its length says how much is meant.
      if (nTokens > 2 && k == nTokens - 1) zSection = zKey;
    }
    if (nTokens == 2) zSection = zTokens(1);
    nSection = nTokens == 1 ? 0 : (nTokens == 2 ? iLengths(1) : nBeforeLeaf);
    qOK = true;
  });
}

void mxDataSet::GetTreeViewKey(int32_t ThisCol, std::string& zTreeViewKey, int32_t& iCreationType,
                               bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (GetTreeViewKey)", [&] {
    zTreeViewKey.clear();
    if (!ValidColumn(ThisCol, true)) return;
    int32_t nLength = 0;
    BuildTreeViewPath(ThisCol, zTreeViewKey, nLength, qOK);
    iCreationType = headers_.columns(ThisCol).iCreationType;
  });
}

void mxDataSet::GetTreeViewKeyData(int32_t ThisCol, std::string& zTreeViewKey, int32_t& LenKey,
                                   std::string& zSection, int32_t& LenSection,
                                   Array<std::string>& zTreeViewKeyArray,
                                   Array<int32_t>& LenKeyArray, int32_t& nLevel,
                                   int32_t& iCreationType, bool& qOK, bool qKeys) {
  qOK = false;
  RunGuarded("mxDataSet  (GetTreeViewKeyData)", [&] {
    BuildTreeViewData(ThisCol, zTreeViewKey, zSection, LenSection, zTreeViewKeyArray, LenKeyArray,
                      nLevel, qOK, qKeys);
    if (!qOK) return;
    LenKey = 0;
    for (int32_t k = 1; k <= nLevel; ++k) LenKey += LenKeyArray(k);
    if (nLevel > 1) LenKey += nLevel - 1;
    iCreationType = headers_.columns(ThisCol).iCreationType;
  });
}

void mxDataSet::GetTreeViewKeyArray(int32_t ThisCol, int32_t& iCreationType,
                                    Array<std::string>& zTV, int32_t& iNTV) {
  RunGuarded("mxDataSet  (GetTreeViewKeyArray)", [&] {
    Array<int32_t> lengths;
    int32_t nTotal = 0;
    bool qOK = false;
    BuildTreeViewPathArray(ThisCol, zTV, lengths, nTotal, iNTV, qOK);
    if (qOK) iCreationType = headers_.columns(ThisCol).iCreationType;
  });
}

std::string mxDataSet::BuildTreeViewPathLastToken(int32_t iColumn) {
  std::array<int32_t, 6> ids{};
  int32_t nIds = TreePathAttributes(AttributeView(iColumn, ATT_TYPE), true, ids);
  std::array<int32_t, 6> given{};
  int32_t nGiven = 0;
  for (int32_t k = 0; k < nIds; ++k)
    if (!AttributeView(iColumn, ids[static_cast<std::size_t>(k)]).empty())
      given[static_cast<std::size_t>(nGiven++)] = ids[static_cast<std::size_t>(k)];
  // The level above the leaf; a path of one token has none, and the data
  // set's own leaf name stands in.
  if (nGiven < 2) return source_.zDataRootLeaf;
  return std::string(AttributeView(iColumn, given[static_cast<std::size_t>(nGiven - 2)]));
}

std::string mxDataSet::TreeViewLastLevel(int32_t ThisCol) {
  std::string result;
  RunGuarded("mxDataSet  (TreeViewLastLevel)", [&] {
    if (ValidColumn(ThisCol, true)) result = BuildTreeViewPathLastToken(ThisCol);
  });
  return result;
}

std::string mxDataSet::TreeViewPath(int32_t ThisCol) {
  std::string result;
  RunGuarded("mxDataSet  (TreeViewPath)", [&] {
    if (!ValidColumnIndex(ThisCol) || headers_.columns(ThisCol).LenTreeViewPath <= 0) return;
    result = StringTools::KeyJoin(source_.zDataRootUnique, ComputedTreePath(ThisCol), false);
  });
  return result;
}

void mxDataSet::SetTreeViewPath(int32_t Index, const std::string& zTreeViewPath) {
  RunGuarded("mxDataSet  (SetTreeViewPath)", [&] {
    COLUMNDATA& col = headers_.columns(Index);
    if (!zTreeViewPath.empty()) col.LenTreeViewPath = RoundToInteger(static_cast<double>(zTreeViewPath.size()));
    std::size_t last = zTreeViewPath.rfind(kSeparator);
    col.LenTreeViewLastLevel =
        (last != std::string::npos && last >= 1) ? static_cast<int16_t>(last) : int16_t{0};
  });
}

void mxDataSet::SetTreeViewPathLengths(int32_t Index, int32_t iLenTreeViewPath,
                                       int32_t iLenTreeViewLastLevel, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetTreeViewPathLengths)", [&] {
    if (ValidColumn(Index, true)) {
      headers_.columns(Index).LenTreeViewPath = RoundToInteger(iLenTreeViewPath);
      headers_.columns(Index).LenTreeViewLastLevel = RoundToInteger(iLenTreeViewLastLevel);
    }
    qOK = true;
  });
}

int32_t mxDataSet::LenTreeViewPath(int32_t iCol) const {
  return ValidColumnIndex(iCol) ? headers_.columns(iCol).LenTreeViewPath : 0;
}

int32_t mxDataSet::LenTreeViewLastLevel(int32_t iCol) const {
  return ValidColumnIndex(iCol) ? headers_.columns(iCol).LenTreeViewLastLevel : 0;
}

bool mxDataSet::MakeTreeViewPath(int32_t Index, std::string& zTreeViewPath) {
  bool result = false;
  RunGuarded("mxDataSet  (MakeTreeViewPath)", [&] {
    int32_t nLength = 0;
    bool qOK = false;
    BuildTreeViewPath(Index, zTreeViewPath, nLength, qOK);
    if (StringTools::Trim(zTreeViewPath).empty()) return;
    SetTreeViewPath(Index, zTreeViewPath);
    result = true;
  });
  return result;
}

bool mxDataSet::CompareKeyPathAttributeSize(int32_t iAttribute, int32_t iColumn, int32_t nLength,
                                            bool qCheck) {
  if (qCheck && !ValidColumn(iColumn, true)) return false;
  int32_t size = static_cast<int32_t>(AttributeView(iColumn, iAttribute).size());
  return size >= 1 && size == nLength;
}

bool mxDataSet::CompareKeyPathAttribute(int32_t iAttribute, int32_t iColumn, int32_t nLength,
                                        const std::string& zText, bool qCheck) {
  if (qCheck && !ValidColumn(iColumn, true)) return false;
  std::string_view text = AttributeView(iColumn, iAttribute);
  return static_cast<int32_t>(text.size()) == nLength && StringTools::Equal(text, zText, false);
}

void mxDataSet::CompareTreeViewPathArray(const Array<std::string>& zTokens,
                                         const Array<int32_t>& iLengths, int32_t nTokens,
                                         int32_t iColumn, bool qCheck, bool& qResult) {
  qResult = false;
  RunGuarded("mxDataSet  (CompareTreeViewPathArray)", [&] {
    if (nTokens < 1) return;
    if (qCheck && !ValidColumn(iColumn, true)) return;
    // The leaf differs most often: test it first.
    if (!CompareKeyPathAttributeSize(ATT_VARIABLE, iColumn, iLengths(nTokens), false)) return;
    if (!CompareKeyPathAttribute(ATT_VARIABLE, iColumn, iLengths(nTokens), zTokens(nTokens), false))
      return;
    if (nTokens == 1) {
      qResult = true;
      return;
    }
    const bool qSkip = SkipsMemberAndIndex(AttributeView(iColumn, ATT_TYPE));
    int32_t m = 1, p = 1;
    bool qTooMany = false;
    auto tryAttribute = [&](int32_t iAttribute) {
      if (qTooMany || p > nTokens) return;
      if (CompareKeyPathAttributeSize(iAttribute, iColumn, iLengths(p), false) &&
          CompareKeyPathAttribute(iAttribute, iColumn, iLengths(p), zTokens(p), false)) {
        ++m;
        if (m > nTokens) qTooMany = true;
        else ++p;
      }
    };
    tryAttribute(ATT_CLASS);
    tryAttribute(ATT_SUBCLASS1);
    tryAttribute(ATT_SUBCLASS2);
    if (!qSkip) {
      tryAttribute(ATT_MEMBER);
      tryAttribute(ATT_INDEX);
    }
    tryAttribute(GRID);
    qResult = !qTooMany && m == nTokens;
  });
}

}  // namespace vndata
