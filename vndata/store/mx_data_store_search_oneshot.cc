// One-shot searches: the first column of given texts across the store, and
// the columns of one data set by attribute texts or by variable and class.
#include <algorithm>
#include <array>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"
#include "vndata/store/internal/store_forward.h"
#include "vndata/store/mx_data_store.h"

namespace vndata {

void mxDataStore::Search(int32_t& iDataSet, int32_t& iColumn, bool& qOK, const std::string& zOrigin,
                         const std::string& zVariable, const std::string& zType,
                         const std::string& zClass, const std::string& zMember,
                         const std::string& zSubClass1, const std::string& zSubClass2,
                         const std::string& zIndex) {
  iDataSet = -1;
  iColumn = -1;
  qOK = false;
  RunGuarded("mxDataStore (Code) (Search)", kSpacedWording, [&] {
    SearchClear();
    const std::array<std::pair<int32_t, const std::string*>, 8> given = {{
        {ATT_ORIGIN, &zOrigin}, {ATT_VARIABLE, &zVariable}, {ATT_TYPE, &zType},
        {ATT_CLASS, &zClass}, {ATT_MEMBER, &zMember}, {ATT_SUBCLASS1, &zSubClass1},
        {ATT_SUBCLASS2, &zSubClass2}, {ATT_INDEX, &zIndex}}};
    int32_t nAdded = 0;
    for (const auto& [id, zValue] : given) {
      if (StringTools::Trim(*zValue).empty()) continue;
      bool qAdded = false;
      SearchAddAttribute(id, *zValue, qAdded);
      ++nAdded;
    }
    if (nAdded > 0) {
      bool qBuilt = false;
      SearchCreatePointers(qBuilt, 1, true);
      Array2<int32_t> iResults;
      int32_t nResults = 0;
      SearchPointers(iResults, nResults, qBuilt);
      if (nResults > 0) {
        iDataSet = iResults(1, 1);
        iColumn = iResults(2, 1);
      }
    }
    // A miss is told by -1, not by the flag.
    qOK = true;
  });
}

void mxDataStore::SearchaDataSet(int32_t iDataSet, Array<int32_t>& iResults, int32_t& nResults,
                                 bool& qOK, const std::string& zVector, const std::string& zClass,
                                 const std::string& zMember, const std::string& zIndex,
                                 const std::string& zSubClass1, const std::string& zSubClass2,
                                 bool qEndAfter1, int32_t iStart) {
  int32_t iEnd = -1;
  SearchaDataSet(iDataSet, iResults, nResults, qOK, zVector, zClass, zMember, zIndex, zSubClass1,
                 zSubClass2, qEndAfter1, iStart, iEnd);
}

void mxDataStore::SearchaDataSet(int32_t iDataSet, Array<int32_t>& iResults, int32_t& nResults,
                                 bool& qOK, const std::string& zVector, const std::string& zClass,
                                 const std::string& zMember, const std::string& zIndex,
                                 const std::string& zSubClass1, const std::string& zSubClass2,
                                 bool qEndAfter1, int32_t iStart, int32_t& iEnd) {
  qOK = false;
  nResults = 0;
  const std::string zTexts[6] = {zVector, zClass, zMember, zIndex, zSubClass1, zSubClass2};
  ForwardVoid("mxDataStore (Code) (SearchaDataSet)", iDataSet, [&](mxDataSet&) {
    SearchaDataSetCore(iDataSet, iResults, nResults, qOK, zTexts, qEndAfter1, iStart, iEnd);
  });
}

namespace {
// The first and last column of SearchaDataSet's walk from its two ends;
// false when the range lies outside the data set. A backward range ending
// below column 1 rewrites the caller's end as 1.
bool SearchaDataSetRange(int32_t nCols, int32_t A, int32_t& B, int32_t& iFirst, int32_t& iLast) {
  if (A < 0 && B < 0) {
    iFirst = 1, iLast = nCols;
  } else if (A < 0 && B > 0) {
    iFirst = 1, iLast = std::min(B, nCols);
  } else if (A >= 1 && B < 0) {
    if (A > nCols) return false;
    iFirst = A, iLast = nCols;
  } else if (A > B && B >= 0 && A >= 1) {
    iFirst = std::min(A, nCols);
    if (B > nCols) return false;
    if (B < 1) {
      B = 1;
      iLast = 0;
    } else {
      iLast = B;
    }
  } else if (A <= B) {
    if (A > nCols) return false;
    iFirst = A >= 1 ? A : 1;
    if (B < 1) return false;
    iLast = std::min(B, nCols);
  } else {
    // A start of 0 with an end below 0 names no column.
    return false;
  }
  return true;
}
}  // namespace

void mxDataStore::SearchaDataSetCore(int32_t iDataSet, Array<int32_t>& iResults, int32_t& nResults,
                                     bool& qOK, const std::string* zTexts, bool qEndAfter1,
                                     int32_t iStart, int32_t& iEnd) {
  mxDataSet& ds = Trusted(iDataSet);
  enum { kVector, kClass, kMember, kIndex, kSub1, kSub2 };
  std::string zWanted[6];
  int32_t nCriteria = 0;
  for (int32_t k = 0; k < 6; ++k) {
    zWanted[k] = StringTools::Upper(StringTools::Trim(zTexts[k]));
    if (!zWanted[k].empty()) ++nCriteria;
  }
  // An index has no test of its own: it switches on the variable test.
  struct Test {
    bool qOn;
    int32_t id;
    const std::string& zWanted;
  };
  const Test tests[5] = {{!zWanted[kVector].empty() || !zWanted[kIndex].empty(), ATT_VARIABLE, zWanted[kVector]},
                         {!zWanted[kClass].empty(), ATT_CLASS, zWanted[kClass]},
                         {!zWanted[kMember].empty(), ATT_MEMBER, zWanted[kMember]},
                         {!zWanted[kSub1].empty(), ATT_SUBCLASS1, zWanted[kSub1]},
                         {!zWanted[kSub2].empty(), ATT_SUBCLASS2, zWanted[kSub2]}};

  const int32_t nCols = ds.get_NumCols();
  if (nCols < 1) return;
  const int32_t nRoom = qEndAfter1 ? 1 : nCols;
  iResults.ReDim(1, nRoom);
  int32_t iFirst = 0, iLast = 0;
  if (!SearchaDataSetRange(nCols, iStart, iEnd, iFirst, iLast)) return;
  const int32_t iStep = iFirst > iLast ? -1 : 1;
  for (int32_t c = iFirst; iStep > 0 ? c <= iLast : c >= iLast; c += iStep) {
    if (c < 1) continue;  // a walk never leaves the columns
    int32_t nCount = 0;
    for (const Test& t : tests) {
      if (!t.qOn) continue;
      std::string zText;
      if (!ds.GetAttribute(c, t.id, zText) || StringTools::Upper(zText) != t.zWanted) continue;
      nCount = t.id == ATT_VARIABLE ? 1 : nCount + 1;
    }
    if (nCount != nCriteria) continue;
    iResults(++nResults) = c;
    if (qEndAfter1) break;
  }
  if (nResults >= 1 && nResults < nRoom) iResults.ReDimPreserve(nResults);
  qOK = true;
}

template <class T, class Fill>
void mxDataStore::SearchForVariables(int32_t iDataSet, const std::string& zVector,
                                     const std::string& zClass, Array<T>& iOut, bool& qOK,
                                     bool qEndAfter1, int32_t iStart, int32_t iEnd, Fill&& fill) {
  mxDataSet& ds = Trusted(iDataSet);
  Array<int32_t> iAtt(1, 2);
  Array<std::string> zAtt(1, 2);
  int32_t n = 0;
  if (!zVector.empty()) iAtt(++n) = ATT_VARIABLE, zAtt(n) = StringTools::Upper(zVector);
  if (!zClass.empty()) iAtt(++n) = ATT_CLASS, zAtt(n) = StringTools::Upper(zClass);
  if (n == 0) return;
  const int32_t nCapacity = qEndAfter1 ? 1 : ds.get_NumCols();
  if (nCapacity >= 1) fill(ds, iAtt, zAtt, n, nCapacity, iStart, iEnd, qEndAfter1, iOut);
  qOK = true;
}

void mxDataStore::SearchForDataSetVariables(int32_t iDataSet, const std::string& zVector,
                                            const std::string& zClass, Array<int32_t>& iResults,
                                            bool& qOK, bool qEndAfter1, int32_t iStart,
                                            int32_t iEnd) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (SearchForDataSetVariables)", iDataSet, [&](mxDataSet&) {
    SearchForVariables(iDataSet, zVector, zClass, iResults, qOK, qEndAfter1, iStart, iEnd,
                       [](mxDataSet& ds, const Array<int32_t>& iAtt, const Array<std::string>& zAtt,
                          int32_t n, int32_t nCapacity, int32_t a, int32_t b, bool q1,
                          Array<int32_t>& iOut) {
                         ArrayTools::Size(iOut, nCapacity, int32_t{0});
                         int32_t nFound = 0;
                         bool qFound = false;
                         ds.SearchDataSet(iAtt, zAtt, n, iOut, nFound, qFound, a, b, q1);
                         if (nFound >= 1 && nFound < iOut.UBound()) iOut.ReDimPreserve(nFound);
                       });
  });
}

void mxDataStore::SearchForDataSetVariablePointers(int32_t iDataSet, const std::string& zVector,
                                                   const std::string& zClass,
                                                   Array<std::intptr_t>& iPointers, bool& qOK,
                                                   bool qEndAfter1, int32_t iStart, int32_t iEnd) {
  qOK = false;
  ForwardVoid("mxDataStore (Code) (SearchForDataSetVariablePointers)", iDataSet, [&](mxDataSet&) {
    SearchForVariables(
        iDataSet, zVector, zClass, iPointers, qOK, qEndAfter1, iStart, iEnd,
        [](mxDataSet& ds, const Array<int32_t>& iAtt, const Array<std::string>& zAtt, int32_t n,
           int32_t nCapacity, int32_t a, int32_t b, bool q1, Array<std::intptr_t>& iOut) {
          Array<int32_t> iCols(1, nCapacity);
          int32_t nFound = 0;
          bool qFound = false;
          ds.SearchDataSet(iAtt, zAtt, n, iCols, nFound, qFound, a, b, q1);
          // Each column number becomes the address of the column's first value.
          Array<std::intptr_t> iAddresses(1, iCols.UBound());
          for (int32_t k = 1; k <= iCols.UBound(); ++k)
            iAddresses(k) = iCols(k) >= 1 ? ds.ValuesPtr(iCols(k)) : 0;
          if (nFound >= 1 && nFound < iAddresses.UBound()) iAddresses.ReDimPreserve(nFound);
          iOut = std::move(iAddresses);
        });
  });
}

}  // namespace vndata
