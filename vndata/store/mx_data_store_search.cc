// The store search conversation: criteria, an optional list of data sets,
// the building of the hit table, and reading it back.
//
// Origin and type are the same for every column of a data set, so they
// filter the data sets once; the other criteria go to each data set's
// SearchDataSet, which compares pool cells rather than texts.
#include <algorithm>
#include <cstring>
#include <vector>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

namespace {
constexpr int32_t kMaxColumnCriterion = 14;
constexpr int32_t kMaxDataSetCriterion = 66;

bool IsOriginOrType(int32_t id) { return id == ATT_ORIGIN || id == ATT_TYPE; }
}  // namespace

// ---- State ------------------------------------------------------------------------------------

void mxDataStore::SearchClear() {
  RunGuarded("mxDataStore (Code) (SearchClear)", kSpacedWording, [&] {
    nSearchAttributes_ = 0;
    iSearchAttributes_.ReDim(1, 1);
    zSearchValues_.ReDim(1, 1);
    nSearchPointers_ = 0;
    iSearchPointers_.ReDim(1, 2, 1, 1);
    nSearchDataSets_ = 0;
    iSearchDataSets_.ReDim(1, 1);
    SearchExitAfter1_ = false;
  });
}

void mxDataStore::SearchDataSets(const Array<int32_t>& iDataSets, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (SearchDataSets)", kSpacedWording, [&] {
    const int32_t n = iDataSets.UBound();
    (void)iDataSets(1);
    Array<int32_t> iList(1, n);
    std::memcpy(iList.data(), &iDataSets(1), sizeof(int32_t) * static_cast<std::size_t>(n));
    iSearchDataSets_ = std::move(iList);
    nSearchDataSets_ = n;
    qOK = true;
  });
}

void mxDataStore::SearchAddCriterion(int32_t iAttribute, const std::string& zValue, int32_t iMaxId,
                                     bool& qOK) {
  if (iAttribute > iMaxId) return;
  for (int32_t k = 1; k <= nSearchAttributes_; ++k)
    if (iSearchAttributes_(k) == iAttribute) {
      zSearchValues_(k) = zValue;
      qOK = true;
      return;
    }
  const int32_t n = nSearchAttributes_ + 1;
  iSearchAttributes_.ReDimPreserve(n);
  zSearchValues_.ReDimPreserve(n);
  iSearchAttributes_(n) = iAttribute;
  zSearchValues_(n) = zValue;
  nSearchAttributes_ = n;
  qOK = true;
}

void mxDataStore::SearchAddAttribute(int32_t iAttribute, const std::string& zValue, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (SearchAddAttribute)", kSpacedWording,
             [&] { SearchAddCriterion(iAttribute, zValue, kMaxColumnCriterion, qOK); });
}

void mxDataStore::SearchDataSetAddAttribute(int32_t iAttribute, const std::string& zValue,
                                            bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (SearchDataSetAddAttribute)", kSpacedWording,
             [&] { SearchAddCriterion(iAttribute, zValue, kMaxDataSetCriterion, qOK); });
}

// ---- Filters of data sets ------------------------------------------------------------------------

namespace {
// Keeps, in order, the listed data sets that pass; the list is cut when some
// are dropped and left at its length (with a count of 0) when none is kept.
template <class Keep>
void FilterList(Array<int32_t>& iList, int32_t& n, Keep&& keep) {
  int32_t m = 0;
  for (int32_t k = 1; k <= n; ++k)
    if (keep(iList(k))) iList(++m) = iList(k);
  if (m == 0) {
    n = 0;
    return;
  }
  if (m < n) {
    iList.ReDimPreserve(m);
    n = m;
  }
}
}  // namespace

void mxDataStore::SearchOrigin(Array<int32_t>& iDataSetList, int32_t& nDataSets,
                               bool& qMatchOrigin, bool& qOK) {
  qOK = false;
  qMatchOrigin = false;
  if (!iDataSetList.IsAllocated() || nDataSets != iDataSetList.UBound()) return;
  int32_t k = 1;
  while (k <= nSearchAttributes_ && iSearchAttributes_(k) != ATT_ORIGIN) ++k;
  if (k <= nSearchAttributes_) {
    qMatchOrigin = true;
    const std::string zWanted = StringTools::Upper(zSearchValues_(k));
    FilterList(iDataSetList, nDataSets,
               [&](int32_t pos) { return Trusted(pos).get_UCaseOrigin() == zWanted; });
  }
  qOK = true;
}

void mxDataStore::SearchType(Array<int32_t>& iDataSetList, int32_t& nDataSets, bool& qMatchType,
                             bool& qOK) {
  qOK = false;
  qMatchType = false;
  RunGuarded("mxDataStore (Code) (SearchType)", kSpacedWording, [&] {
    if (!iDataSetList.IsAllocated() || nDataSets != iDataSetList.UBound()) return;
    int32_t k = 1;
    while (k <= nSearchAttributes_ && iSearchAttributes_(k) != ATT_TYPE) ++k;
    if (k <= nSearchAttributes_) {
      qMatchType = true;
      const std::string zWanted = StringTools::Upper(zSearchValues_(k));
      // The type of a data set is that of its first column.
      FilterList(iDataSetList, nDataSets, [&](int32_t pos) {
        std::string zType;
        return Trusted(pos).GetAttribute(1, ATT_TYPE, zType) && StringTools::Upper(zType) == zWanted;
      });
    }
    qOK = true;
  });
}

// ---- Building the hit table ----------------------------------------------------------------------

bool mxDataStore::SearchCandidates(Array<int32_t>& iCands, int32_t& nCands, bool& qOnlyOriginType) {
  if (nSearchDataSets_ >= 1) {
    nCands = nSearchDataSets_;
    iCands.ReDim(1, nCands);
    std::memcpy(iCands.data(), &iSearchDataSets_(1), sizeof(int32_t) * static_cast<std::size_t>(nCands));
  } else {
    nCands = get_NumberOfDataSets();
    if (nCands < 1) {
      nSearchPointers_ = 0;
      return false;
    }
    iCands.ReDim(1, nCands);
    for (int32_t k = 1; k <= nCands; ++k) iCands(k) = k;
  }
  bool qMatch = false, qFiltered = false;
  SearchOrigin(iCands, nCands, qMatch, qFiltered);
  if (!qFiltered) return false;
  SearchType(iCands, nCands, qMatch, qFiltered);
  if (!qFiltered) return false;
  qOnlyOriginType = (nSearchAttributes_ == 1 && IsOriginOrType(iSearchAttributes_(1))) ||
                    (nSearchAttributes_ == 2 && IsOriginOrType(iSearchAttributes_(1)) &&
                     IsOriginOrType(iSearchAttributes_(2)));
  if (nCands == 0) nSearchPointers_ = 0;
  return true;
}

void mxDataStore::StartHits(int32_t nCapacity) {
  hitScratch_.clear();
  hitScratch_.reserve(2 * static_cast<std::size_t>(nCapacity));
}

void mxDataStore::CommitHits() {
  const int32_t n = HitCount();
  if (n >= 1) {
    Array2<int32_t> iTable(1, 2, 1, n);
    std::memcpy(iTable.data(), hitScratch_.data(), sizeof(int32_t) * hitScratch_.size());
    iSearchPointers_ = std::move(iTable);
  }
  nSearchPointers_ = n;
}

// The columns of one data set from iStart on and then round from the other
// end, so that a find-next continues after the previous hit.
void mxDataStore::SearchColumnsOf(int32_t iDataSet, const Array<int32_t>& iWork,
                                  const Array<std::string>& zWork, int32_t nWork, int32_t iStart,
                                  bool qForward, bool qFirstOnly, Array<int32_t>& iScratch) {
  mxDataSet& ds = Trusted(iDataSet);
  const int32_t nCols = ds.get_NumCols();
  int32_t passes[2][2];
  if (qForward) {
    passes[0][0] = iStart, passes[0][1] = nCols;
    passes[1][0] = 1, passes[1][1] = std::min(iStart - 1, nCols);
  } else {
    passes[0][0] = std::min(iStart, nCols), passes[0][1] = 1;
    // Starting at or beyond the last column, the first pass has already
    // visited it: nothing is left for a second.
    passes[1][0] = nCols, passes[1][1] = iStart >= nCols ? 0 : iStart + 1;
  }
  for (const auto& pass : passes) {
    if (pass[1] <= 0) continue;
    int32_t nList = 0;
    bool qDone = false;
    ds.SearchDataSet(iWork, zWork, nWork, iScratch, nList, qDone, pass[0], pass[1], qFirstOnly);
    for (int32_t k = 1; k <= nList; ++k) {
      AppendHit(iDataSet, iScratch(k));
      if (qFirstOnly) return;
    }
  }
}

void mxDataStore::SearchOriginTypeOnly(const Array<int32_t>& iCands, int32_t nCands, bool& qOK) {
  if (nCands == 0) {
    qOK = true;
    return;
  }
  if (!SearchExitAfter1_) {
    for (int32_t k = 1; k <= nCands; ++k) {
      const int32_t pos = iCands(k);
      const int32_t nCols = Trusted(pos).get_NumCols();
      for (int32_t c = 1; c <= nCols; ++c) AppendHit(pos, c);
    }
  } else {
    AppendHit(iCands(1), 1);
  }
  CommitHits();
  qOK = true;
}

namespace {
// The criteria other than origin and type, which were settled per data set.
void ColumnCriteria(const Array<int32_t>& iIds, const Array<std::string>& zValues, int32_t n,
                    bool qUpper, Array<int32_t>& iWork, Array<std::string>& zWork, int32_t& nWork) {
  nWork = 0;
  iWork.ReDim(1, std::max(n, 1));
  zWork.ReDim(1, std::max(n, 1));
  for (int32_t k = 1; k <= n; ++k) {
    if (IsOriginOrType(iIds(k))) continue;
    iWork(++nWork) = iIds(k);
    zWork(nWork) = qUpper ? StringTools::Upper(zValues(k)) : zValues(k);
  }
}
}  // namespace

int32_t mxDataStore::ColumnHitCapacity(const Array<int32_t>& iCands, int32_t nCands,
                                       bool qMultiSet) {
  if (SearchExitAfter1_) return qMultiSet ? std::max(nCands, 1) : 1;
  int64_t nSum = 0;
  for (int32_t k = 1; k <= nCands; ++k)
    if (iCands(k) > 0) nSum += Trusted(iCands(k)).get_NumCols();
  return static_cast<int32_t>(nSum);
}

bool mxDataStore::StartColumnSearch(bool qMultiSet, bool qUpper, Array<int32_t>& iCands,
                                    int32_t& nCands, Array<int32_t>& iWork,
                                    Array<std::string>& zWork, int32_t& nWork, bool& qOK) {
  if (nSearchAttributes_ < 1) return false;
  bool qOnly = false;
  if (!SearchCandidates(iCands, nCands, qOnly)) return false;
  const int32_t nCapacity = ColumnHitCapacity(iCands, nCands, qMultiSet);
  if (nCapacity == 0) {
    nSearchPointers_ = 0;
    return false;
  }
  StartHits(nCapacity);
  if (qOnly) {
    SearchOriginTypeOnly(iCands, nCands, qOK);
    return false;
  }
  ColumnCriteria(iSearchAttributes_, zSearchValues_, nSearchAttributes_, qUpper, iWork, zWork, nWork);
  return true;
}

void mxDataStore::SearchCreatePointers(bool& qOK, int32_t iStart, bool qForward) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (SearchCreatePointers)", kSpacedWording, [&] {
    Array<int32_t> iCands, iWork, iScratch;
    Array<std::string> zWork;
    int32_t nCands = 0, nWork = 0;
    if (!StartColumnSearch(false, false, iCands, nCands, iWork, zWork, nWork, qOK)) return;
    for (int32_t k = 1; k <= nCands; ++k) {
      SearchColumnsOf(iCands(k), iWork, zWork, nWork, iStart, qForward, SearchExitAfter1_, iScratch);
      if (SearchExitAfter1_ && HitCount() >= 1) break;
    }
    CommitHits();
    qOK = true;
  });
}

void mxDataStore::SearchCreatePointersEx(bool& qOK, int32_t iStart, bool qForward,
                                         int32_t iSetStart, bool qSetForward) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (SearchCreatePointersEx)", kSpacedWording, [&] {
    Array<int32_t> iCands, iWork, iScratch;
    Array<std::string> zWork;
    int32_t nCands = 0, nWork = 0;
    if (!StartColumnSearch(MultiSetSearch_, true, iCands, nCands, iWork, zWork, nWork, qOK)) return;
    // Places in the candidate list, from iSetStart and round.
    std::vector<int32_t> places;
    if (qSetForward) {
      for (int32_t k = iSetStart; k <= nCands; ++k) places.push_back(k);
      for (int32_t k = 1; k <= std::min(iSetStart - 1, nCands); ++k) places.push_back(k);
    } else {
      for (int32_t k = std::min(iSetStart, nCands); k >= 1; --k) places.push_back(k);
      for (int32_t k = nCands; k >= iSetStart + 1; --k) places.push_back(k);
    }
    for (int32_t k : places) {
      const int32_t nBefore = HitCount();
      SearchColumnsOf(iCands(k), iWork, zWork, nWork, iStart, qForward, SearchExitAfter1_, iScratch);
      if (SearchExitAfter1_ && HitCount() > nBefore && !MultiSetSearch_) break;
    }
    CommitHits();
    qOK = true;
  });
}

void mxDataStore::SearchDataSetCreatePointers(bool& qOK, int32_t iStart, bool /*qForward*/) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (SearchDataSetCreatePointers)", kSpacedWording, [&] {
    if (nSearchAttributes_ < 1) return;
    Array<int32_t> iCands;
    int32_t nCands = 0;
    if (nSearchDataSets_ >= 1) {
      nCands = nSearchDataSets_;
      iCands = iSearchDataSets_;
    } else {
      nCands = get_NumberOfDataSets();
      if (nCands < 1) {
        nSearchPointers_ = 0;
        return;
      }
      iCands.ReDim(1, nCands);
      for (int32_t k = 1; k <= nCands; ++k) iCands(k) = k;
    }
    const int32_t nCapacity = SearchExitAfter1_ ? 1 : nCands;
    StartHits(nCapacity);
    Array<std::string> zWanted(1, nSearchAttributes_);
    for (int32_t k = 1; k <= nSearchAttributes_; ++k) zWanted(k) = StringTools::Upper(zSearchValues_(k));
    // Always forward, from iStart and round.
    std::vector<int32_t> places;
    for (int32_t k = iStart; k <= nCands; ++k) places.push_back(k);
    for (int32_t k = 1; k <= iStart - 1; ++k) places.push_back(k);
    for (int32_t k : places) {
      const int32_t pos = iCands(k);
      mxDataSet& ds = Trusted(pos);
      bool qFits = true;
      for (int32_t a = 1; a <= nSearchAttributes_ && qFits; ++a)
        qFits = ds.CompareDataSetAttribute(iSearchAttributes_(a), zWanted(a), false);
      if (!qFits) continue;
      AppendHit(pos, 0);
      if (SearchExitAfter1_) break;
    }
    CommitHits();
    qOK = true;
  });
}

// ---- Reading the hit table ----------------------------------------------------------------------

void mxDataStore::SearchPointers(Array2<int32_t>& iResults, int32_t& nResults, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (SearchPointers)", kSpacedWording, [&] {
    nResults = nSearchPointers_;
    if (nResults > 0) {
      (void)iSearchPointers_(2, nResults);
      Array2<int32_t> iCopy(1, 2, 1, nResults);
      std::memcpy(iCopy.data(), iSearchPointers_.data(), sizeof(int32_t) * 2 * static_cast<std::size_t>(nResults));
      iResults = std::move(iCopy);
    }
    qOK = true;
  });
}

void mxDataStore::SearchPointersDS(Array<int32_t>& iDataSets, int32_t& nDataSets, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataStore (Code) (SearchPointersDS)", kSpacedWording, [&] {
    nDataSets = nSearchPointers_;
    if (nDataSets < 1) {
      qOK = true;
      return;
    }
    std::vector<int32_t> sorted(static_cast<std::size_t>(nDataSets));
    for (int32_t k = 1; k <= nDataSets; ++k) sorted[static_cast<std::size_t>(k - 1)] = iSearchPointers_(1, k);
    std::sort(sorted.begin(), sorted.end());
    iDataSets.ReDim(1, nDataSets);
    int32_t m = 1;
    iDataSets(1) = sorted[0];
    for (std::size_t k = 1; k < sorted.size(); ++k)
      if (sorted[k] != iDataSets(m)) iDataSets(++m) = sorted[k];
    iDataSets.ReDimPreserve(m);
    nDataSets = m;
    qOK = true;
  });
}

}  // namespace vndata
