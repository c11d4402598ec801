// mxDataSet: column attributes through the per-attribute pools, the class
// index and the well names taken from it.
#include <cstring>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/internal/column_pointers.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

// ---- Pools ----------------------------------------------------------------------------------

ByteStore* mxDataSet::Pool(int32_t iAttribute) const { return headers_.pools(iAttribute).get(); }

ByteStore& mxDataSet::MakePool(int32_t iAttribute) {
  std::shared_ptr<ByteStore>& slot = headers_.pools(iAttribute);
  if (!slot) slot = std::make_shared<ByteStore>();
  return *slot;
}

// The tree path of a column is built from its attributes on demand by the
// tree view paths; until they exist a column has no path.

void mxDataSet::SetStoreAttribute(int32_t iAttribute, const std::string& zValue) {
  ColumnPointersChanged();
  const int32_t cell = MakePool(iAttribute).AddString(zValue, true, false);
  for (int32_t c = 1; c <= headers_.nCols; ++c) WriteAttributePointer(headers_.columns(c).Pointers, iAttribute, cell);
}

void mxDataSet::SetSingleStoreAttribute(int32_t iColumn, int32_t iAttribute, const std::string& zValue) {
  ColumnPointersChanged();
  const int32_t cell = MakePool(iAttribute).AddString(zValue, true, false);
  WriteAttributePointer(headers_.columns(iColumn).Pointers, iAttribute, cell);
}

// ---- Reading by attribute id -----------------------------------------------------------------

void mxDataSet::StoredAttributeCore(int32_t iColumn, int32_t iAttribute, std::string& zAttribute,
                                    int32_t& nLength, bool& qOK, bool qCheck) {
  zAttribute.clear();
  nLength = 0;
  qOK = false;
  if (iAttribute >= 2 && iAttribute <= kNumAttributes && Pool(iAttribute) == nullptr) return;
  if (!ValidColumn(iColumn, qCheck)) return;
  if (iAttribute == TREEVIEWPATH) {
    zAttribute = ComputedTreePath(iColumn);
    nLength = static_cast<int32_t>(zAttribute.size());
    qOK = true;
    return;
  }
  int32_t p = -1;
  if (!ReadAttributePointer(headers_.columns(iColumn).Pointers, iAttribute, p)) {
    // Ids 3 and 13, and ids outside 1..14, carry nothing.
    qOK = true;
    return;
  }
  qOK = Pool(iAttribute)->GetString(p, zAttribute, nLength);
}

void mxDataSet::GetStoredAttribute(int32_t iColumn, int32_t iAttribute, std::string& zAttribute,
                                   int32_t& nLength, bool& qOK, bool qCheck) {
  qOK = false;
  RunGuarded("mxDataSet  (GetStoredAttribute)",
             [&] { StoredAttributeCore(iColumn, iAttribute, zAttribute, nLength, qOK, qCheck); });
}

bool mxDataSet::GetAttribute(int32_t Index, int32_t iType, std::string& zAttribute) {
  bool qOK = false;
  RunGuarded("mxDataSet  (GetAttribute)", [&] {
    int32_t n = 0;
    StoredAttributeCore(Index, iType, zAttribute, n, qOK, true);
  });
  return qOK;
}

bool mxDataSet::GetAttributes(int32_t ThisCol, Array<std::string>& Attributes) {
  bool qResult = false;
  RunGuarded("mxDataSet  (GetAttributes)", [&] {
    if (!Attributes.IsAllocated() || Attributes.UBound() < kNumAttributes)
      Attributes.ReDimPreserve(kNumAttributes);
    if (!ValidColumn(ThisCol, true)) return;
    for (int32_t id = 1; id <= kNumAttributes; ++id) {
      int32_t n = 0;
      bool qOne = false;
      StoredAttributeCore(ThisCol, id, Attributes(id), n, qOne, true);
    }
    qResult = true;
  });
  return qResult;
}

bool mxDataSet::GetListedAttributes(int32_t ThisCol, const Array<int32_t>& iList,
                                    Array<std::string>& Attributes, int32_t nList) {
  bool qResult = false;
  RunGuarded("mxDataSet  (GetListedAttributes)", [&] {
    const int32_t n = nList < 1 ? static_cast<int32_t>(iList.size()) : nList;
    if (n < 1 || !ValidColumn(ThisCol, true)) return;
    if (!Attributes.IsAllocated() || Attributes.UBound() < n) Attributes.ReDim(1, n);
    const int32_t lo = iList.LBound();
    for (int32_t i = 1; i <= n; ++i) {
      int32_t len = 0;
      bool qOne = false;
      StoredAttributeCore(ThisCol, iList(lo + i - 1), Attributes(i), len, qOne, true);
    }
    qResult = true;
  });
  return qResult;
}

int32_t mxDataSet::GetStoredAttributeSize(int32_t iColumn, int32_t iAttribute, bool qCheck) {
  int32_t nSize = -1;
  RunGuarded("mxDataSet  (GetStoredAttributeSize)", [&] {
    if (!ValidColumn(iColumn, qCheck)) return;
    // Id 1 deliberately has no size here: a path's length is kept in the
    // column record.
    int32_t p = -1;
    if (!ReadAttributePointer(headers_.columns(iColumn).Pointers, iAttribute, p)) return;
    const ByteStore* pool = Pool(iAttribute);
    nSize = pool == nullptr ? 0 : pool->GetLength(p);
  });
  return nSize;
}

int32_t mxDataSet::NumberStoredAttributes(int32_t iAttribute) const {
  if (!IsStoredAttribute(iAttribute)) return 0;
  if (!headers_.pools.IsAllocated()) return -1;
  const ByteStore* pool = Pool(iAttribute);
  return pool == nullptr ? -1 : pool->Count();
}

// ---- Writing ----------------------------------------------------------------------------------

void mxDataSet::SetAttributes(int32_t ThisCol, const Array<std::string>& zAttributes, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetAttributes)", [&] {
    ColumnPointersChanged();
    int32_t cells[kNumAttributes + 1] = {};
    for (int32_t id = 1; id <= kNumAttributes; ++id)
      cells[id] = MakePool(id).AddString(zAttributes(id), true, false);
    // Ids 1, 3 and 13 have no pointer: their texts stay in their pools only.
    VECTORDATA& v = headers_.columns(ThisCol).Pointers;
    for (int32_t id = 1; id <= kNumAttributes; ++id) WriteAttributePointer(v, id, cells[id]);
    qOK = true;
  });
}

bool mxDataSet::SetAttribute(int32_t iAttribute, const std::string& zValue) {
  bool qOK = false;
  RunGuarded("mxDataSet  (SetAttribute)", [&] {
    SetStoreAttribute(iAttribute, zValue);
    qOK = true;
  });
  return qOK;
}

bool mxDataSet::SetColumnAttribute(int32_t iColumn, int32_t iAttribute, const std::string& zValue) {
  bool qOK = false;
  RunGuarded("mxDataSet  (SetColumnAttribute)", [&] {
    SetSingleStoreAttribute(iColumn, iAttribute, zValue);
    qOK = true;
  });
  return qOK;
}

int32_t mxDataSet::FindAttributePosition(int32_t iAttribute, const std::string& zText) {
  int32_t iFound = -1;
  RunGuarded("mxDataSet  (FindAttributePosition)", [&] {
    if (zText.empty()) return;
    if (iAttribute == TREEVIEWPATH) {
      for (int32_t c = 1; c <= headers_.nCols; ++c)
        if (StringTools::Equal(ComputedTreePath(c), zText, false)) {
          iFound = c;
          return;
        }
      return;
    }
    const ByteStore* pool = Pool(iAttribute);
    if (pool == nullptr || pool->Count() < 1) return;
    // Resolve the text to the cells that equal it (without regard to case),
    // then scan the columns comparing integers.
    const int32_t nCells = pool->Count();
    std::vector<char> match(static_cast<std::size_t>(nCells) + 1, 0);
    bool qAny = false;
    for (int32_t cell = 1; cell <= nCells; ++cell)
      if (StringTools::Equal(pool->View(cell), zText, false)) {
        match[static_cast<std::size_t>(cell)] = 1;
        qAny = true;
      }
    if (!qAny) return;
    for (int32_t c = 1; c <= headers_.nCols; ++c) {
      int32_t p = -1;
      if (!ReadAttributePointer(headers_.columns(c).Pointers, iAttribute, p)) return;
      if (p >= 1 && p <= nCells && match[static_cast<std::size_t>(p)]) {
        iFound = c;
        return;
      }
    }
  });
  return iFound;
}

void mxDataSet::CompareAttribute(int32_t iColumn, int32_t iAttribute, const std::string& zText,
                                 int32_t iCell, bool qCheck, bool& qResult) {
  qResult = false;
  RunGuarded("mxDataSet  (CompareAttribute)", [&] {
    if (!ValidColumn(iColumn, qCheck)) return;
    if (iAttribute == TREEVIEWPATH) {
      qResult = StringTools::Equal(ComputedTreePath(iColumn), zText, false);
      return;
    }
    int32_t p = -1;
    if (ReadAttributePointer(headers_.columns(iColumn).Pointers, iAttribute, p)) qResult = p == iCell;
  });
}

// ---- Pools by reference ------------------------------------------------------------------------

void mxDataSet::SetByteStore(int32_t iAtt, const std::shared_ptr<ByteStore>& xStore, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetByteStore)", [&] {
    ColumnPointersChanged();
    if (!IsStoredAttribute(iAtt)) return;
    headers_.pools(iAtt) = xStore;
    qOK = true;
  });
}

void mxDataSet::GetByteStore(int32_t iAtt, std::shared_ptr<ByteStore>& xStore, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetByteStore)", [&] {
    if (!IsStoredAttribute(iAtt)) return;
    xStore = headers_.pools(iAtt);
    qOK = true;
  });
}

void mxDataSet::SetByteStoreArray(const AttributePools& xStore, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetByteStoreArray)", [&] {
    ColumnPointersChanged();
    headers_.pools = xStore;
    qOK = true;
  });
}

void mxDataSet::GetByteStoreArray(AttributePools& xStore, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetByteStoreArray)", [&] {
    xStore = headers_.pools;
    qOK = true;
  });
}

// ---- Bulk initialisation ----------------------------------------------------------------------

void mxDataSet::InitialiseByteStore(const AttributePools& xStore, const Array2<uint8_t>& bPointers,
                                    bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (InitialiseByteStore)", [&] {
    ColumnPointersChanged();
    headers_.pools = xStore;
    if (headers_.nCols >= 1) {
      // The pointer records are taken as they stand, 24 bytes a column.
      (void)bPointers(kVectorDataSize, headers_.nCols);
      const std::size_t stride = bPointers.Rows();
      const uint8_t* src = &bPointers(1, 1);
      for (int32_t c = 1; c <= headers_.nCols; ++c)
        std::memcpy(&headers_.columns(c).Pointers, src + (c - 1) * stride, kVectorDataSize);
    }
    bool qStep = false;
    RebuildClassIndex(qStep);
    if (!StringTools::Equal(source_.zSimulator, "UTCHEM", false)) RebuildWellNames(qStep);
    qOK = true;
  });
}

void mxDataSet::bInitialiseColumnAttributes(const Array2<uint8_t>& bHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (bInitialiseColumnAttributes)", [&] {
    if (!UnpackbHeadersCore(bHeaders, 1)) return;
    bool qStep = false;
    RebuildClassIndex(qStep);
    RebuildWellNames(qStep);
    qIsDirty_ = true;
    qOK = true;
  });
}

void mxDataSet::InitialiseColumnAttributes(const Array<std::string>& zHeaders, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (InitialiseColumnAttributes)", [&] {
    Array2<uint8_t> bHeaders;
    HeadersFromText(zHeaders, bHeaders);
    if (!UnpackbHeadersCore(bHeaders, 1)) return;
    bool qStep = false;
    RebuildClassIndex(qStep);
    RebuildWellNames(qStep);
    qIsDirty_ = true;
    qOK = true;
  });
}

void mxDataSet::InitColumnDataArray(int32_t iFirstColumn, bool& qOK) {
  ColumnPointersChanged();
  qOK = vndata::InitColumnDataArray(headers_.columns, iFirstColumn);
}

// ---- Class index and well names ----------------------------------------------------------------

void mxDataSet::RebuildClassIndex(bool& qOK) {
  headers_.classData.Erase();
  headers_.classMemberList.Erase();
  headers_.nClasses = headers_.nClassList = 0;
  qOK = setClassPointerData(headers_.pools, headers_.columns, headers_.classData, headers_.nClasses, headers_.nClassList, headers_.classMemberList);
}

// The members of the class "WELL", or else "WELLS", become the well names.
void mxDataSet::RebuildWellNames(bool qOK) {
  if (!qOK) return;
  Array<int32_t> iMembers;
  int32_t nMembers = 0;
  getClassPointerList(Pool(ATT_CLASS), "WELL,WELLS", headers_.classData, headers_.classMemberList, iMembers, nMembers);
  Array<std::string> zNames;
  if (nMembers > 0) {
    zNames.ReDim(1, nMembers);
    const ByteStore* members = Pool(ATT_MEMBER);
    for (int32_t i = 1; i <= nMembers; ++i) zNames(i) = members->GetString(iMembers(i));
  }
  setMemberNames(zNames, nMembers, wells_.markers.Wells, wells_.markers.NumWells);
  // The raw record forms count the records the array holds.
  wells_.markers.nWellsAllocated =
      wells_.markers.Wells.IsAllocated() ? wells_.markers.Wells.UBound() : 0;
}

void mxDataSet::GetClassIndex(Array<CLASSDATA>& ClassData, int32_t& nClasses,
                              Array<int32_t>& ClassMemberList, int32_t& nList) const {
  ClassData = headers_.classData;
  nClasses = headers_.nClasses;
  ClassMemberList = headers_.classMemberList;
  nList = headers_.nClassList;
}

std::string mxDataSet::getMemberName(int32_t n) const { return vndata::getMemberName(wells_.markers.Wells, wells_.markers.NumWells, n); }

}  // namespace vndata
