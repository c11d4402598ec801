// The column attribute store: per-column pointer records, the per-attribute
// pools of distinct texts, bulk reading and writing of pointers, and the
// class-to-member index derived from them.
//
// A column holds no text. Each attribute id has one ByteStore of distinct
// texts per data set, and a column keeps, per attribute, the number of the
// cell holding its text. Equal text means equal pointer within one data set,
// so comparing two columns' attributes is comparing two integers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>

#include "vndata/foundation/well_info.h"
#include "vndata/platform/api.h"
#include "vndata/platform/arrays.h"
#include "vndata/platform/byte_store.h"

namespace vndata {

// The 11 attribute pointers of a column, in their persisted order: ten
// signed 16-bit pointers and one signed 32-bit pointer for "INDEX", which can
// have far more distinct values (cells, dates) than any other attribute.
// These 24 bytes, in this order and in the host's byte order, are also the
// stored pointer block of a data set. -1 means that the attribute has no
// value.
struct VNDATA_API VECTORDATA {
  int16_t iOrigin = -1;     // pointer 0: id 4 "ORIGIN"
  int16_t iType = -1;       // pointer 1: id 5 "TYPE"
  int16_t iClass = -1;      // pointer 2: id 6 "CLASS"
  int16_t iUnits = -1;      // pointer 3: id 2 "UNITS"
  int16_t iGrid = -1;       // pointer 4: id 14 GRID
  int16_t iVariable = -1;   // pointer 5: id 11 "VARIABLE"
  int16_t iMember = -1;     // pointer 6: id 9 "MEMBER"
  int16_t iSubClass1 = -1;  // pointer 7: id 7 "SUBCLASS1"
  int16_t iSubClass2 = -1;  // pointer 8: id 8 "SUBCLASS2"
  int16_t iVerbose = -1;    // pointer 9: id 12 "VERBOSE"
  int32_t iIndex = -1;      // pointer 10: id 10 "INDEX"
};

constexpr int32_t kVectorDataSize = 24;
static_assert(std::is_standard_layout_v<VECTORDATA>);
static_assert(sizeof(VECTORDATA) == kVectorDataSize);
static_assert(offsetof(VECTORDATA, iVerbose) == 18);
static_assert(offsetof(VECTORDATA, iIndex) == 20);

// Seeds of a limits computation: a column with nothing to count reports its
// minimum above its maximum.
constexpr float kLimitSeedMin = 3.402823E+38f;
constexpr float kLimitSeedMax = -3.402823E+38f;

// One record per column.
struct VNDATA_API COLUMNDATA {
  Array<float> values;         // the column's own values, held only for columns fetched from disk
  float dMinVal = kLimitSeedMin;
  float dMaxVal = kLimitSeedMax;
  bool qActive = false;        // the column is in use
  bool qLimitsValid = false;   // dMinVal and dMaxVal are known
  int16_t iCreationType = 0;   // how the column was made
  int16_t LenTreeViewPath = 0;
  int16_t LenTreeViewLastLevel = 0;
  VECTORDATA Pointers;
  bool qLoaded = false;        // the values are in memory (fetch on demand)
};

// The pools of a data set, indexed by attribute id 1..14; a slot is empty
// until a text of its id is first added.
using AttributePools = Array<std::shared_ptr<ByteStore>>;

// One class of the class index: its members are entries iStart+1 to
// iStart+nCount of the member list.
struct VNDATA_API CLASSDATA {
  int32_t iStart = 0;
  int32_t nCount = 0;
};

// Puts -1 in every field.
VNDATA_API void InitVECTORDATA(VECTORDATA& v);

// ---- Pointer access ------------------------------------------------------------
// An id with no field (1, 3, 13, or outside 1..14) leaves the output untouched
// and still reports success. A 16-bit field written with a value outside its
// range is fault 6 (overflow): these guarded forms log one trace line and
// return false, keeping the field as it stood.
VNDATA_API bool getVECTORDATASingleAttributePointer(const VECTORDATA& v, int32_t iAttribute,
                                                    int32_t& iPointer);
VNDATA_API bool setVECTORDATASingleAttributePointer(VECTORDATA& v, int32_t iAttribute,
                                                    int32_t iPointer);
VNDATA_API bool getSingleAttributePointer(const Array<COLUMNDATA>& cols, int32_t iColumn,
                                          int32_t iAttribute, int32_t& iPointer);
VNDATA_API bool setSingleAttributePointer(Array<COLUMNDATA>& cols, int32_t iColumn,
                                          int32_t iAttribute, int32_t iPointer);
// Sizes iPointers to the number of column records and fills it with the id's
// pointer of every column.
VNDATA_API bool getSingleAttributePointers(const Array<COLUMNDATA>& cols, int32_t iAttribute,
                                           Array<int32_t>& iPointers);
// Writes pointer i of the array into column iFirstColumn-1+i; a first column
// below 2 means from column 1.
VNDATA_API bool setSingleAttributePointers(const Array<int32_t>& iPointers, int32_t iAttribute,
                                           Array<COLUMNDATA>& cols, int32_t iFirstColumn);
// Fills one VECTORDATA from 14 pointers by id; entries 1, 3 and 13 are ignored.
VNDATA_API bool setVECTORDATAPointers(const Array<int32_t>& iPointers, VECTORDATA& v);
// Resets the pointers of every record from iFirstColumn to the last to -1.
VNDATA_API bool InitColumnDataArray(Array<COLUMNDATA>& cols, int32_t iFirstColumn);

// ---- Class index -------------------------------------------------------------
// Builds ClassData (one entry per "CLASS" cell) and ClassMemberList ("MEMBER"
// cells, the members of each class in cell order) from the columns' "CLASS"
// and "MEMBER" pointers. A column whose class or member pointer is below 1 is
// left out. With no column counted, returns true and leaves the outputs.
VNDATA_API bool setClassPointerData(const AttributePools& pools, const Array<COLUMNDATA>& cols,
                                    Array<CLASSDATA>& ClassData, int32_t& nClasses, int32_t& nList,
                                    Array<int32_t>& ClassMemberList);
// The member cells of the first of the comma-separated class words found in
// the "CLASS" pool; count 0 with true when no word is known.
VNDATA_API bool getClassPointerList(const ByteStore* classPool, const std::string& zClasses,
                                    const Array<CLASSDATA>& ClassData,
                                    const Array<int32_t>& ClassMemberList, Array<int32_t>& iMembers,
                                    int32_t& nMembers);

// ---- Member names as well records ----------------------------------------------
// One well record per name: its number, the name blank-padded or cut to 40
// bytes, a blank grid name and zero in the two trailing fields.
VNDATA_API bool setMemberNames(const Array<std::string>& zNames, int32_t nNames,
                               Array<WELLINFO>& wells, int32_t& nWells);
// The trimmed name of well n; "" when n is outside 1..nWells.
VNDATA_API std::string getMemberName(const Array<WELLINFO>& wells, int32_t nWells, int32_t n);
// For each well, whether its trimmed name is a text of the "MEMBER" pool,
// compared with case. qInList is sized 1..nWells (left unallocated for none).
VNDATA_API bool GetPointersToWellList(const Array<WELLINFO>& wells, int32_t nWells,
                                      const ByteStore& members, Array<bool>& qInList);

}  // namespace vndata
