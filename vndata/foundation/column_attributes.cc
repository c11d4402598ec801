#include "vndata/foundation/column_attributes.h"

#include <cstring>
#include <limits>

#include "vndata/foundation/internal/column_pointers.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

int16_t VECTORDATA::*AttributeField16(int32_t iAttribute) {
  switch (iAttribute) {
    case ATT_ORIGIN: return &VECTORDATA::iOrigin;
    case ATT_TYPE: return &VECTORDATA::iType;
    case ATT_CLASS: return &VECTORDATA::iClass;
    case ATT_UNITS: return &VECTORDATA::iUnits;
    case GRID: return &VECTORDATA::iGrid;
    case ATT_VARIABLE: return &VECTORDATA::iVariable;
    case ATT_MEMBER: return &VECTORDATA::iMember;
    case ATT_SUBCLASS1: return &VECTORDATA::iSubClass1;
    case ATT_SUBCLASS2: return &VECTORDATA::iSubClass2;
    case ATT_VERBOSE: return &VECTORDATA::iVerbose;
    default: return nullptr;
  }
}

void InitVECTORDATA(VECTORDATA& v) { v = VECTORDATA(); }

bool ReadAttributePointer(const VECTORDATA& v, int32_t iAttribute, int32_t& iPointer) {
  if (iAttribute == ATT_INDEX) {
    iPointer = v.iIndex;
    return true;
  }
  int16_t VECTORDATA::*const f = AttributeField16(iAttribute);
  if (f == nullptr) return false;
  iPointer = v.*f;
  return true;
}

void WriteAttributePointer(VECTORDATA& v, int32_t iAttribute, int32_t iPointer) {
  if (iAttribute == ATT_INDEX) {
    v.iIndex = iPointer;
    return;
  }
  int16_t VECTORDATA::*const f = AttributeField16(iAttribute);
  if (f == nullptr) return;
  if (iPointer > std::numeric_limits<int16_t>::max() || iPointer < std::numeric_limits<int16_t>::min())
    RaiseFault(kFaultOverflow);
  v.*f = static_cast<int16_t>(iPointer);
}

void ResetColumnPointers(Array<COLUMNDATA>& cols, int32_t iFirstColumn) {
  if (!cols.IsAllocated()) return;
  for (int32_t c = iFirstColumn; c <= cols.UBound(); ++c) InitVECTORDATA(cols(c).Pointers);
}

bool getVECTORDATASingleAttributePointer(const VECTORDATA& v, int32_t iAttribute, int32_t& iPointer) {
  // Reading cannot fault; an id with no field is still a success.
  ReadAttributePointer(v, iAttribute, iPointer);
  return true;
}

bool setVECTORDATASingleAttributePointer(VECTORDATA& v, int32_t iAttribute, int32_t iPointer) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (setVECTORDATASingleAttributePointer)", [&] {
    WriteAttributePointer(v, iAttribute, iPointer);
    qOK = true;
  });
  return qOK;
}

bool getSingleAttributePointer(const Array<COLUMNDATA>& cols, int32_t iColumn, int32_t iAttribute,
                               int32_t& iPointer) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (getSingleAttributePointer)", [&] {
    ReadAttributePointer(cols(iColumn).Pointers, iAttribute, iPointer);
    qOK = true;
  });
  return qOK;
}

bool setSingleAttributePointer(Array<COLUMNDATA>& cols, int32_t iColumn, int32_t iAttribute,
                               int32_t iPointer) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (setSingleAttributePointer)", [&] {
    WriteAttributePointer(cols(iColumn).Pointers, iAttribute, iPointer);
    qOK = true;
  });
  return qOK;
}

bool getSingleAttributePointers(const Array<COLUMNDATA>& cols, int32_t iAttribute,
                                Array<int32_t>& iPointers) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (getSingleAttributePointers)", [&] {
    const int32_t n = static_cast<int32_t>(cols.size());
    if (n < 1) RaiseFault(kFaultSubscript);
    Array<int32_t> out(1, n);
    const COLUMNDATA* c = cols.data();
    int32_t* p = out.data();
    if (iAttribute == ATT_INDEX) {
      for (int32_t i = 0; i < n; ++i) p[i] = c[i].Pointers.iIndex;
    } else if (int16_t VECTORDATA::*const f = AttributeField16(iAttribute)) {
      for (int32_t i = 0; i < n; ++i) p[i] = c[i].Pointers.*f;
    }
    // Ids with no field leave their entries at 0, as a fresh array holds.
    iPointers.Swap(out);
    qOK = true;
  });
  return qOK;
}

bool setSingleAttributePointers(const Array<int32_t>& iPointers, int32_t iAttribute,
                                Array<COLUMNDATA>& cols, int32_t iFirstColumn) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (setSingleAttributePointers)", [&] {
    const int32_t f = iFirstColumn < 2 ? 1 : iFirstColumn;
    if (iPointers.IsAllocated()) {
      const int32_t lo = iPointers.LBound(), hi = iPointers.UBound();
      // The last column written must exist; checked once before any write.
      (void)cols(f - 1 + (hi - lo + 1));
      for (int32_t i = lo; i <= hi; ++i)
        WriteAttributePointer(cols(f - 1 + (i - lo + 1)).Pointers, iAttribute, iPointers(i));
    }
    qOK = true;
  });
  return qOK;
}

bool setVECTORDATAPointers(const Array<int32_t>& iPointers, VECTORDATA& v) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (setVECTORDATAPointers)", [&] {
    for (int32_t id = 1; id <= kNumAttributes; ++id) {
      if (id == TREEVIEWPATH || id == UNUSED3 || id == UNUSED13) continue;
      WriteAttributePointer(v, id, iPointers(id));
    }
    qOK = true;
  });
  return qOK;
}

bool InitColumnDataArray(Array<COLUMNDATA>& cols, int32_t iFirstColumn) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (InitColumnDataArray)", [&] {
    ResetColumnPointers(cols, iFirstColumn < 1 ? 1 : iFirstColumn);
    qOK = true;
  });
  return qOK;
}

namespace {

int32_t PoolCount(const AttributePools& pools, int32_t id) {
  if (!pools.IsAllocated() || !pools.InBounds(id) || !pools(id)) return 0;
  return pools(id)->Count();
}

}  // namespace

bool setClassPointerData(const AttributePools& pools, const Array<COLUMNDATA>& cols,
                         Array<CLASSDATA>& ClassData, int32_t& nClasses, int32_t& nList,
                         Array<int32_t>& ClassMemberList) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (setClassPointerData)", [&] {
    const int32_t M = PoolCount(pools, ATT_MEMBER);
    const int32_t C = PoolCount(pools, ATT_CLASS);
    nClasses = 0;
    nList = 0;
    // A class or member pool with no cells means no column can be counted.
    if (M < 1 || C < 1 || !cols.IsAllocated()) {
      qOK = true;
      return;
    }
    Array2<int32_t> seen(1, C, 1, M);
    Array<int32_t> counts(1, C);
    int32_t nCounted = 0;
    for (int32_t k = cols.LBound(); k <= cols.UBound(); ++k) {
      const VECTORDATA& v = cols(k).Pointers;
      const int32_t c = v.iClass, m = v.iMember;
      if (c < 1 || m < 1) continue;
      if (++seen(c, m) == 1) {
        ++counts(c);
        ++nList;
      }
      ++nCounted;
    }
    nClasses = C;
    if (nCounted == 0) {
      qOK = true;
      return;
    }
    ClassMemberList.ReDim(1, nList);
    ClassData.ReDim(1, C);
    int32_t start = 0;
    for (int32_t c = 1; c <= C; ++c) {
      ClassData(c).iStart = start;
      ClassData(c).nCount = counts(c);
      start += counts(c);
    }
    for (int32_t c = 1; c <= C; ++c) {
      const int32_t want = counts(c);
      if (want < 1) continue;
      int32_t got = 0;
      for (int32_t m = 1; m <= M && got < want; ++m)
        if (seen(c, m) > 0) ClassMemberList(ClassData(c).iStart + ++got) = m;
      if (got < want) return;  // an inconsistent index: false, no message
    }
    qOK = true;
  });
  return qOK;
}

bool getClassPointerList(const ByteStore* classPool, const std::string& zClasses,
                         const Array<CLASSDATA>& ClassData, const Array<int32_t>& ClassMemberList,
                         Array<int32_t>& iMembers, int32_t& nMembers) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (getClassPointerList)", [&] {
    nMembers = 0;
    if (classPool == nullptr) {
      qOK = true;
      return;
    }
    Array<std::string> words;
    int32_t nWords = 0;
    StringTools::Split(zClasses, ",", words, nWords);
    int32_t cell = -1;
    for (int32_t w = 1; w <= nWords && cell < 1; ++w) cell = classPool->FindString(words(w));
    // A class no counted column belongs to has no entry in the index.
    if (cell < 1 || !ClassData.InBounds(cell)) {
      qOK = true;
      return;
    }
    const CLASSDATA& cd = ClassData(cell);
    nMembers = cd.nCount;
    if (nMembers > 0) {
      iMembers.ReDim(1, nMembers);
      for (int32_t i = 1; i <= nMembers; ++i) iMembers(i) = ClassMemberList(cd.iStart + i);
    }
    qOK = true;
  });
  return qOK;
}

bool setMemberNames(const Array<std::string>& zNames, int32_t nNames, Array<WELLINFO>& wells,
                    int32_t& nWells) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (setMemberNames)", [&] {
    Array<WELLINFO> out(1, nNames < 1 ? 1 : nNames);
    for (int32_t i = 1; i <= nNames; ++i) {
      WELLINFO& w = out(i);
      w.iWell = i;
      const std::string& name = zNames(i);
      const std::size_t n = std::min<std::size_t>(name.size(), kWellNameWidth);
      std::memcpy(w.zWellName, name.data(), n);
      w.nWellMarkers = 0;
      w.iFirstMarker = 0;
    }
    wells.Swap(out);
    nWells = nNames < 0 ? 0 : nNames;
    qOK = true;
  });
  return qOK;
}

std::string getMemberName(const Array<WELLINFO>& wells, int32_t nWells, int32_t n) {
  if (n < 1 || n > nWells || !wells.InBounds(n)) return std::string();
  const WELLINFO& w = wells(n);
  return StringTools::Trim(std::string_view(reinterpret_cast<const char*>(w.zWellName), kWellNameWidth));
}

bool GetPointersToWellList(const Array<WELLINFO>& wells, int32_t nWells, const ByteStore& members,
                           Array<bool>& qInList) {
  bool qOK = false;
  RunGuarded("mxColumnAttributes (Code) (GetPointersToWellList)", [&] {
    if (nWells < 1) {
      qOK = true;
      return;
    }
    Array<bool> flags(1, nWells);
    for (int32_t i = 1; i <= nWells; ++i) {
      const std::string name = getMemberName(wells, nWells, i);
      for (int32_t c = 1; c <= members.Count() && !flags(i); ++c)
        flags(i) = members.View(c) == name;
    }
    qInList.Swap(flags);
    qOK = true;
  });
  return qOK;
}

}  // namespace vndata
