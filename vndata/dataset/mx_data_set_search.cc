// mxDataSet: the per-column search on which the store's search rests, and
// the row range of an item's active life used to scale plots.
#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <string_view>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/internal/column_pointers.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

// One wanted attribute, resolved to what a column holds for it.
struct Wanted {
  enum Kind : int32_t { kPointer, kPath, kNone };
  Kind kind = kNone;
  int32_t id = 0;
  int32_t iCode = -1;
  const std::string* zText = nullptr;  // kPath
};

// The walk over columns for criteria that are all pointer compares, each
// criterion's pointers lying one after the other: N criteria known at
// compile time (the usual one to three), or any number. Criteria are tested
// in order and the first that fails ends the test of a column.
template <std::size_t N>
int32_t ScanPointers(const int32_t* const* cells, const int32_t* codes, int32_t nWanted,
                     int32_t iFirst, int32_t iStep, int32_t nCount, int32_t* hits,
                     bool qExitAfterOne) {
  int32_t nHits = 0;
  const int32_t* first = N > 0 || nWanted > 0 ? cells[0] : nullptr;
  const int32_t code0 = N > 0 || nWanted > 0 ? codes[0] : 0;
  int32_t c = iFirst;
  for (int32_t i = 0; i < nCount; ++i, c += iStep) {
    const std::size_t at = static_cast<std::size_t>(c - 1);
    bool qFits = true;
    if constexpr (N > 0) {
      if (first[at] != code0) continue;
      for (std::size_t k = 1; k < N; ++k)
        if (cells[k][at] != codes[k]) {
          qFits = false;
          break;
        }
    } else {
      for (int32_t k = 0; k < nWanted; ++k)
        if (cells[k][at] != codes[k]) {
          qFits = false;
          break;
        }
    }
    if (!qFits) continue;
    hits[nHits++] = c;
    if (qExitAfterOne) break;
  }
  return nHits;
}

constexpr int32_t kRangeKinds = 2;  // production "P" and injection "I"
}  // namespace

// ---- SearchDataSet --------------------------------------------------------------------------

void mxDataSet::SearchDataSet(const Array<int32_t>& iAttribute, const Array<std::string>& zAttribute,
                              int32_t nAttribute, Array<int32_t>& iList, int32_t& nList, bool& qOK,
                              int32_t iStart, int32_t iEnd, bool qExitAfterOne) {
  qOK = false;
  // The search has always passed over its faults without a word: a bad
  // criterion simply finds nothing, and the caller goes on by nList.
  try {
    SearchDataSetCore(iAttribute, zAttribute, nAttribute, iList, nList, qOK, iStart, iEnd,
                      qExitAfterOne);
  } catch (...) {
  }
}

void mxDataSet::SearchDataSetCore(const Array<int32_t>& iAttribute,
                                  const Array<std::string>& zAttribute, int32_t nAttribute,
                                  Array<int32_t>& iList, int32_t& nList, bool& qOK, int32_t iStart,
                                  int32_t iEnd, bool qExitAfterOne) {
  // 1. Each wanted text becomes the cell of its pool once; a text that the
  // data set does not hold at all cannot fit a column.
  std::vector<Wanted> wanted(static_cast<std::size_t>(std::max(nAttribute, 0)));
  bool qPointersOnly = true;
  for (int32_t k = 1; k <= nAttribute; ++k) {
    const int32_t id = iAttribute(iAttribute.LBound() + k - 1);
    const std::string& zText = zAttribute(zAttribute.LBound() + k - 1);
    Wanted& w = wanted[static_cast<std::size_t>(k - 1)];
    w.id = id;
    if (id == TREEVIEWPATH) {
      w.kind = Wanted::kPath;
      w.zText = &zText;
      qPointersOnly = false;
      continue;
    }
    const ByteStore* pool = Pool(id);
    w.iCode = pool == nullptr ? -1 : pool->FindString(zText);
    if (w.iCode == -1 && !zText.empty()) {
      nList = 0;
      return;
    }
    VECTORDATA probe;
    int32_t iUnused = 0;
    w.kind = ReadAttributePointer(probe, id, iUnused) ? Wanted::kPointer : Wanted::kNone;
    if (w.kind == Wanted::kNone) qPointersOnly = false;
  }

  // 2, 3. The walk, and room for every column of it.
  int32_t iFirst = 0, iLast = 0, iStep = 1, nCount = 0;
  ArrayTools::ColumnRange(headers_.nCols, iStart, iEnd, iFirst, iLast, iStep, nCount);
  nList = 0;
  if (nCount < 1) {
    qOK = true;
    return;
  }
  const int32_t nRoom = qExitAfterOne ? 1 : nCount;
  iList.ReDim(1, nRoom);
  int32_t* hits = iList.data();

  // 4, 5. Integer compares only, unless a criterion is the computed path.
  if (qPointersOnly) {
    std::vector<const int32_t*> cells(wanted.size());
    std::vector<int32_t> codes(wanted.size());
    for (std::size_t k = 0; k < wanted.size(); ++k) {
      cells[k] = PointerColumn(wanted[k].id);
      codes[k] = wanted[k].iCode;
    }
    const int32_t* const* p = cells.data();
    const int32_t* q = codes.data();
    switch (nAttribute) {
      case 0: nList = ScanPointers<0>(p, q, 0, iFirst, iStep, nCount, hits, qExitAfterOne); break;
      case 1: nList = ScanPointers<1>(p, q, 1, iFirst, iStep, nCount, hits, qExitAfterOne); break;
      case 2: nList = ScanPointers<2>(p, q, 2, iFirst, iStep, nCount, hits, qExitAfterOne); break;
      case 3: nList = ScanPointers<3>(p, q, 3, iFirst, iStep, nCount, hits, qExitAfterOne); break;
      default: nList = ScanPointers<0>(p, q, nAttribute, iFirst, iStep, nCount, hits, qExitAfterOne);
    }
  } else {
    int32_t c = iFirst;
    for (int32_t i = 0; i < nCount; ++i, c += iStep) {
      bool qFits = true;
      for (const Wanted& w : wanted) {
        int32_t p = -1;
        switch (w.kind) {
          case Wanted::kPath: qFits = StringTools::Equal(ComputedTreePath(c), *w.zText, false); break;
          case Wanted::kNone: qFits = false; break;
          default: qFits = ReadAttributePointer(headers_.columns(c).Pointers, w.id, p) && p == w.iCode;
        }
        if (!qFits) break;
      }
      if (!qFits) continue;
      hits[nList++] = c;
      if (qExitAfterOne) break;
    }
  }

  // 6. Cut to the hits.
  if (nList > 0 && nList < nRoom) iList.ReDimPreserve(nList);
  qOK = true;
}

const int32_t* mxDataSet::PointerColumn(int32_t iAttribute) {
  const std::size_t id = static_cast<std::size_t>(iAttribute);
  std::vector<int32_t>& cells = caches_.pointerIndex.at(id);
  const std::size_t n = static_cast<std::size_t>(headers_.nCols);
  if (!caches_.pointerIndexValid[id] || cells.size() != n) {
    cells.assign(n, -1);
    if (n > 0) {
      (void)headers_.columns(headers_.nCols);
      const COLUMNDATA* cols = &headers_.columns(1);
      if (int16_t VECTORDATA::*field = AttributeField16(iAttribute))
        for (std::size_t c = 0; c < n; ++c) cells[c] = cols[c].Pointers.*field;
      else if (iAttribute == ATT_INDEX)
        for (std::size_t c = 0; c < n; ++c) cells[c] = cols[c].Pointers.iIndex;
    }
    caches_.pointerIndexValid[id] = true;
  }
#ifndef NDEBUG
  // A write of pointers that did not call ColumnPointersChanged shows here.
  for (std::size_t c = 0; c < n; ++c) {
    int32_t p = -1;
    ReadAttributePointer(headers_.columns(static_cast<int32_t>(c + 1)).Pointers, iAttribute, p);
    assert(cells[c] == p);
  }
#endif
  return cells.data();
}

// ---- Row range of an item ----------------------------------------------------------------------

bool mxDataSet::GetIndexRange(const std::string& zClass, const std::string& zItem, int32_t& iStart,
                              int32_t& iEnd) {
  RunGuarded("mxDataSet  (GetIndexRange)", [&] {
    const std::string zKey = zClass + " " + zItem;
    int32_t iFound = 0;
    for (int32_t k = 1; k <= caches_.nIndexRanges && iFound == 0; ++k)
      if (caches_.indexRanges(k).zKey == zKey) iFound = k;
    if (iFound == 0) {
      CalculateTimeRange(zClass, zItem);
      iFound = caches_.nIndexRanges;
    }
    iStart = caches_.indexRanges(iFound).iStart;
    iEnd = caches_.indexRanges(iFound).iEnd;
  });
  // The answer is in iStart and iEnd; callers have never read the result.
  return false;
}

void mxDataSet::CalculateTimeRange(const std::string& zClass, const std::string& zItem) {
  std::array<int32_t, kRangeKinds> first{-1, -1}, last{-1, -1};
  GetAutoScaleLimits(zClass, zItem, "P", first[0], last[0]);
  GetAutoScaleLimits(zClass, zItem, "I", first[1], last[1]);
  int32_t iStart = -1, iEnd = -1;
  for (int32_t k = 0; k < kRangeKinds; ++k) {
    const int32_t f = first[static_cast<std::size_t>(k)], l = last[static_cast<std::size_t>(k)];
    if (f >= 0 && (iStart < 0 || f < iStart)) iStart = f;
    if (l >= 0 && (iEnd < 0 || l > iEnd)) iEnd = l;
  }
  if (iStart < 0) {
    iStart = 1;
    iEnd = get_NumRows();
  }
  caches_.indexRanges.ReDimPreserve(caches_.nIndexRanges + 1);
  INDEXRANGE& r = caches_.indexRanges(++caches_.nIndexRanges);
  r.iStart = iStart;
  r.iEnd = iEnd;
  r.zKey = zClass + " " + zItem;
}

Variant mxDataSet::GetAutoScaleVectorList(const std::string& zClass, const std::string& zPhase) {
  Variant result;
  RunGuarded("mxDataSet (Code) (GetAutoScaleVectorList)", [&] {
    static constexpr std::array<std::string_view, 10> kProduction = {
        "OPR", "GPR", "WPR", "VPR", "LPR", "OPT", "GPT", "WPT", "VPT", "LPT"};
    static constexpr std::array<std::string_view, 6> kInjection = {"GIR", "GIT", "WIR",
                                                                   "WIT", "VIR", "VIT"};
    Array<std::string> zNames;
    if (StringTools::Equal(source_.zSimulator, "ECLIPSE", false)) {
      static constexpr std::array<std::pair<std::string_view, char>, 6> kPrefixes = {{
          {"FIELD", 'F'}, {"GROUPS", 'G'}, {"REGIONS", 'R'},
          {"BLOCKS", 'B'}, {"COMPLETIONS", 'C'}, {"WELLS", 'W'}}};
      char prefix = 0;
      for (const auto& [zWord, c] : kPrefixes)
        if (StringTools::Equal(zClass, zWord, false)) prefix = c;
      if (prefix == 0) return;
      const bool qP = StringTools::Equal(zPhase, "P", false);
      const bool qI = StringTools::Equal(zPhase, "I", false);
      const int32_t n = qP ? 10 : (qI ? 6 : 16);
      zNames.ReDim(1, n);
      int32_t k = 0;
      if (!qI)
        for (std::string_view s : kProduction) zNames(++k) = prefix + std::string(s);
      if (!qP)
        for (std::string_view s : kInjection) zNames(++k) = prefix + std::string(s);
    } else if (StringTools::Equal(source_.zSimulator, "UTCHEM", false)) {
      if (StringTools::Equal(zPhase, "I", false)) zNames = Array<std::string>{"QI"};
      else if (StringTools::Equal(zPhase, "P", false)) zNames = Array<std::string>{"QP"};
      else return;
    } else {
      return;
    }
    result = Variant(std::move(zNames));
  });
  return result;
}

void mxDataSet::GetAutoScaleLimits(const std::string& zClass, const std::string& zMember,
                                   const std::string& zPhase, int32_t& iStart, int32_t& iEnd) {
  RunGuarded("mxDataSet (Code) (GetAutoScaleLimits)", [&] {
    iStart = -1;
    iEnd = -1;
    const Variant vList = GetAutoScaleVectorList(zClass, zPhase);
    const Array<std::string>* zNames = vList.GetArray<std::string>();
    if (zNames == nullptr || zNames->size() == 0) return;
    const Array<int32_t> iAtts{ATT_CLASS, ATT_MEMBER, ATT_VARIABLE};
    Array<std::string> zAtts{zClass, zMember, ""};
    for (int32_t k = zNames->LBound(); k <= zNames->UBound(); ++k) {
      zAtts(3) = (*zNames)(k);
      Array<int32_t> iHits;
      int32_t nHits = 0;
      bool qFound = false;
      SearchDataSet(iAtts, zAtts, 3, iHits, nHits, qFound, -1, -1, true);
      if (nHits < 1) continue;
      float sMin = 0.f, sMax = 0.f;
      if (!GetColMinMax(iHits(1), sMin, sMax)) continue;
      if (sMin != sMax) {
        Array<float> values;
        if (GetValues(iHits(1), values)) GetStartAndEndTime(values, iStart, iEnd);
        if (iStart != iEnd) return;
      } else if (sMin != 0.f) {
        // A constant, non-zero vector: active throughout.
        iStart = 1;
        iEnd = get_NumRows();
        return;
      }
    }
    iStart = -1;
    iEnd = -1;
  });
}

void mxDataSet::GetStartAndEndTime(const Array<float>& values, int32_t& iStart, int32_t& iEnd) {
  RunGuarded("mxDataSet (Code) (GetStartAndEndTime)", [&] {
    if (!values.IsAllocated()) return;
    const int32_t lo = values.LBound(), hi = values.UBound();
    int32_t iFirst = lo;
    while (iFirst <= hi && !(values(iFirst) > 0.f)) ++iFirst;
    if (iFirst > hi) return;
    // Keep one empty row before the data where there is one.
    iStart = iFirst > lo ? iFirst - 1 : iFirst;
    for (int32_t i = hi; i >= iStart; --i)
      if (values(i) > 0.f) {
        iEnd = i < hi ? i + 1 : i;
        break;
      }
    if (iEnd == 0) iEnd = hi;
  });
}

}  // namespace vndata
