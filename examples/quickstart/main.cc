// Example host: drives the library the way a post-processor does, and prints
// what it sees. It grows with the library into a tour of the store.
#include <cstdio>
#include <string>

#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/byte_store.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/variant.h"

using namespace vndata;

namespace {

void PrintAttributeTable() {
  std::printf("Column attributes (id, keyword, position, width)\n");
  for (int32_t id = 1; id <= kNumAttributes; ++id) {
    int32_t pos, width;
    InitSingleAttPos(id, pos, width);
    std::printf("  %2d  %-13s %4d %4d\n", id, AttributeKeyword(id).c_str(), pos, width);
  }
  std::printf("Pack order:");
  for (int32_t id : kPackOrder) std::printf(" %d", id);
  std::printf("\n\n");
}

void PrintConstantLists() {
  Array<int32_t> cur = CurrentAttConst(), old = LegacyAttConst();
  std::printf("Attribute constant lists (current / legacy)\n  dimension %d / %d\n", cur(1), old(1));
  const char* fields[] = {"ORIGIN", "TYPE",     "UNITS",    "CLASS",   "MEMBER",    "SUBCLASS1",
                          "SUBCLASS2", "INDEX", "VARIABLE", "VERBOSE", "tree path", "GRID"};
  for (int32_t f = 1; f <= 12; ++f) {
    int32_t p1, w1, p2, w2;
    AttConstField(cur, f, p1, w1);
    AttConstField(old, f, p2, w2);
    std::printf("  %-10s %4d,%3d / %4d,%3d\n", fields[f - 1], p1, w1, p2, w2);
  }
  std::printf("\n");
}

void PrintSourceSlots() {
  Array<Variant> v;
  InitSourceData(v);
  std::printf("Description array: initial values of the 66 slots\n ");
  for (int32_t s = 1; s <= kNumSourceSlots; ++s) {
    std::string text = v(s).IsNull() ? "Null" : v(s).IsEmpty() ? "-" : "'" + v(s).ToText() + "'";
    std::printf(" %d=%s", s, text.c_str());
    if (s % 10 == 0) std::printf("\n ");
  }
  std::printf("\n\n");
}

void PrintWordGroups() {
  std::printf("Word lists\n");
  for (int32_t g = 0; g < kNumWordGroups; ++g) {
    const auto group = static_cast<WordGroup>(g);
    std::printf("  %-38s %zu words, first \"%s\"\n", WordGroupName(group).c_str(),
                Words(group).size(), Words(group)(1).c_str());
  }
  std::printf("\n");
}

void ExercisePlatform() {
  std::printf("Platform\n");
  ByteStore pool;
  int32_t a = pool.AddString("WOPR"), b = pool.AddString("WWCT"), c = pool.AddString("WOPR");
  std::printf("  interning: WOPR=%d WWCT=%d WOPR again=%d, %d cells\n", a, b, c, pool.Count());
  std::printf("  CInt(2.5)=%d CInt(3.5)=%d  CStr(1E7)=%s CStr(0.000015)=%s CStr(True)=%s\n",
              Variant(2.5).ToInteger(), Variant(3.5).ToInteger(), Variant(1.0e7f).ToText().c_str(),
              Variant(1.5e-5f).ToText().c_str(), Variant(true).ToText().c_str());
  RunGuarded("mxDataSet  (SetAttributes)", [] { Variant(std::string("abc")).ToLong(); });
  std::printf("  trace of a caught fault: \"%s\"\n\n", MessageLog::Shared().Lines().back().c_str());
}

}  // namespace

int main() {
  std::printf("vndata63 quickstart\n\n");
  PrintAttributeTable();
  PrintConstantLists();
  PrintSourceSlots();
  PrintWordGroups();
  ExercisePlatform();
  return 0;
}
