#include "vndata/foundation/vocabulary.h"

#include <initializer_list>

#include "vndata/platform/module_state.h"

namespace vndata {

namespace {
struct AttributeRow {
  const char* keyword;
  int32_t position;
  int32_t width;
};
// Indexed by id - 1.
constexpr std::array<AttributeRow, kNumAttributes> kAttributes = {{
    {"TREEVIEWPATH", 0, 0},
    {"UNITS", 41, 16},
    {"UNUSED3", 0, 0},
    {"ORIGIN", 1, 32},
    {"TYPE", 33, 8},
    {"CLASS", 57, 16},
    {"SUBCLASS1", 113, 16},
    {"SUBCLASS2", 129, 16},
    {"MEMBER", 73, 40},
    {"INDEX", 145, 16},
    {"VARIABLE", 161, 16},
    {"VERBOSE", 177, 40},
    {"UNUSED13", 0, 0},
    {"GRID", 217, 16},
}};

Array<int32_t> ListOf(std::initializer_list<int32_t> v) { return Array<int32_t>(v); }
}  // namespace

std::string AttributeKeyword(int32_t iAttribute) {
  if (iAttribute < 1 || iAttribute > kNumAttributes) return std::string();
  return kAttributes[static_cast<std::size_t>(iAttribute - 1)].keyword;
}

bool IsStoredAttribute(int32_t iAttribute) {
  return iAttribute == 2 || (iAttribute >= 4 && iAttribute <= 12) || iAttribute == 14;
}

void InitAttributes(Array2<int32_t>& AttPos) {
  AttPos.ReDim(1, 2, 1, kNumAttributes);
  for (int32_t id = 1; id <= kNumAttributes; ++id) {
    AttPos(1, id) = kAttributes[static_cast<std::size_t>(id - 1)].position;
    AttPos(2, id) = kAttributes[static_cast<std::size_t>(id - 1)].width;
  }
}

const Array2<int32_t>& AttPosTable() {
  thread_local Array2<int32_t> table;
  if (!table.IsAllocated()) InitAttributes(table);
  return table;
}

void InitSingleAttPos(int32_t iAttribute, int32_t& iPos, int32_t& iWidth) {
  iPos = 0;
  iWidth = 0;
  if (iAttribute < 1 || iAttribute > kNumAttributes) return;
  const Array2<int32_t>& t = AttPosTable();
  iPos = t(1, iAttribute);
  iWidth = t(2, iAttribute);
}

Array<int32_t> PackedAttsTriples() {
  Array<int32_t> triples(1, 3 * kNumAttributes);
  for (int32_t id = 1; id <= kNumAttributes; ++id) {
    int32_t pos, width;
    InitSingleAttPos(id, pos, width);
    triples(3 * id - 2) = id;
    triples(3 * id - 1) = pos;
    triples(3 * id) = width;
  }
  return triples;
}

Array<int32_t> CurrentAttConst() {
  return ListOf({233, 1, 32, 33, 8, 41, 16, 57, 16, 73, 40, 113, 16, 129,
                 16, 145, 16, 161, 16, 177, 40, 0, 72, 217, 16});
}

Array<int32_t> LegacyAttConst() {
  return ListOf({273, 1, 32, 33, 8, 41, 16, 57, 16, 73, 16, 89, 16, 105,
                 16, 121, 16, 137, 16, 153, 32, 185, 72, 257, 16});
}

void InitOldAttributeConstants() { Module().AttConst = LegacyAttConst(); }

void AttConstField(const Array<int32_t>& list, int32_t f, int32_t& iPos, int32_t& iWidth) {
  iPos = list(2 * f);
  iWidth = list(2 * f + 1);
}

void InitSourceData(Array<Variant>& v) {
  v.ReDim(1, kNumSourceSlots);
  const Variant emptyText = std::string();
  const Variant zero16 = static_cast<int16_t>(0);
  const Variant zero32 = static_cast<int32_t>(0);
  const Variant minus1 = static_cast<int32_t>(-1);
  for (int32_t s : {1, 2, 3, 4, 5, 6, 14, 15, 18, 20, 21, 24, 28, 29, 30, 52, 53}) v(s) = emptyText;
  for (int32_t s : {7, 8, 9, 10, 16, 25, 26}) v(s) = zero16;
  for (int32_t s = 44; s <= 51; ++s) v(s) = zero16;
  for (int32_t s : {13, 22, 27, 31, 33, 36, 38, 39, 41, 58, 59, 60, 62}) v(s) = zero32;
  for (int32_t s : {11, 12, 32, 43, 56, 57, 61}) v(s) = minus1;
  v(SD_DEFAULTX) = static_cast<int16_t>(1);
  v(SD_GROUPNAME) = std::string(kDefaultGroup);
  v(SD_FILETYPE) = static_cast<int32_t>(kDefaultFileType);
  v(SD_NULLVALUE) = static_cast<int32_t>(-999);
  v(SD_USENULLVAL) = static_cast<int32_t>(1);
  v(SD_TIMEINDAYS) = static_cast<int32_t>(-999);
  v(SD_BRANCH) = static_cast<int16_t>(1);
  v(SD_PERFORATIONS) = Variant::Null();
  // Slots 37, 55, 63 to 66 stay empty.
}

bool IsKnownDataSetAttribute(int32_t iType) {
  if (iType < 1 || iType > kMaxDataSetAttribute) return false;
  switch (iType) {
    case 5: case 28: case 30: case 31: case 32: case 33: case 34: case 35: case 36:
    case 38: case 39:
      return false;
    default:
      return iType <= 27 || iType == 29 || iType == 37 || iType == 40 || iType == 41 ||
             iType == 55 || iType == 56 || iType == 57;
  }
}

}  // namespace vndata
