// Example host: drives the library the way a post-processor does, and prints
// what it sees. It grows with the library into a tour of the store.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/derived/mx_automatic_dq.h"
#include "vndata/derived/mx_derived_quantity.h"
#include "vndata/derived/mx_dq_store.h"
#include "vndata/foundation/vocabulary.h"
#include "vndata/platform/byte_store.h"
#include "vndata/platform/byte_tools.h"
#include "vndata/platform/message_log.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/variant.h"
#include "vndata/store/mx_data_store.h"

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
  // A conversion a host makes itself faults like the platform's; the library
  // words the trace of such a fault the same way inside its guards.
  std::string zTrace;
  try {
    Variant(std::string("abc")).ToLong();
  } catch (const RuntimeFault& fault) {
    zTrace = ErrorTraceLine("mxDataSet  (SetAttributes)", fault);
  }
  std::printf("  trace of a caught fault: \"%s\"\n\n", zTrace.c_str());
}

void DeriveAColumn() {
  std::printf("Derived quantities\n");
  // A user's definition: water cut of well P1 from its water and oil rates.
  auto wct = std::make_shared<mxDerivedQuantity>();
  wct->let_Verbose("Water cut of P1");
  wct->let_Expression("WWPR / (WWPR + WOPR)");
  wct->AddArguments("WWPR", "CASE.SMSPEC", "Summary", "WWPR:P1", false, "CASE", -1, "WELLS");
  wct->AddArguments("WOPR", "CASE.SMSPEC", "Summary", "WOPR:P1", false, "CASE", -1, "WELLS");
  mxDQStore definitions;
  definitions.AddItem(wct);
  std::printf("  %d definition(s); \"%s\" takes %d arguments\n",
              definitions.Count(), wct->get_Verbose().c_str(),
              wct->get_NumberOfArguments());

  // An automatic column: the cut with the null rule on, -999 marking a gap.
  const float kNull = -999.0f;
  Array2<float> args(1, 5, 1, 2);
  const float water[5] = {10.f, 20.f, kNull, 40.f, 0.f};
  const float oil[5] = {90.f, 80.f, 70.f, 60.f, 0.f};
  for (int32_t r = 1; r <= 5; ++r) {
    args(r, 1) = water[r - 1];
    args(r, 2) = oil[r - 1];
  }
  mxAutomaticDQ kernels;
  Array<float> cut;
  bool qOK = false;
  kernels.CalculateADQWithNull(kADQCut, args, true, kNull, cut, qOK);
  std::printf("  cut with nulls (ok=%s):", qOK ? "true" : "false");
  for (float v : cut) std::printf(" %s", SingleText(v).c_str());
  std::printf("\n\n");
}

// Writes text into the id's field of packed record c, as a reader does.
void PutField(Array2<uint8_t>& bHeaders, int32_t c, int32_t id, const std::string& text) {
  int32_t pos, width;
  InitSingleAttPos(id, pos, width);
  ByteTools::PutText(&bHeaders(pos, c), width, text);
}

// A summary data set of 4 monthly rows: TIME and two rates of one well.
std::shared_ptr<mxDataSet> ReadSummary(const std::string& zOrigin, float scale) {
  const int32_t nRows = 4, nCols = 3;
  Array2<float> values(1, nRows, 1, nCols);
  for (int32_t r = 1; r <= nRows; ++r) {
    values(r, 1) = 30.f * static_cast<float>(r);
    values(r, 2) = scale * (1000.f - 50.f * static_cast<float>(r));
    values(r, 3) = 0.1f * static_cast<float>(r);
  }
  Array2<uint8_t> headers(1, kPackedRecordSize, 1, nCols);
  headers.Fill(' ');
  const char* vars[nCols] = {"TIME", "WOPR", "WWCT"};
  const char* units[nCols] = {"DAYS", "SM3/DAY", ""};
  for (int32_t c = 1; c <= nCols; ++c) {
    PutField(headers, c, ATT_ORIGIN, zOrigin);
    PutField(headers, c, ATT_TYPE, "Summary");
    PutField(headers, c, ATT_CLASS, c == 1 ? "" : "WELLS");
    PutField(headers, c, ATT_MEMBER, c == 1 ? "" : "PROD1");
    PutField(headers, c, ATT_VARIABLE, vars[c - 1]);
    PutField(headers, c, ATT_UNITS, units[c - 1]);
  }
  auto ds = std::make_shared<mxDataSet>();
  ds->let_Origin(zOrigin);
  ds->let_GroupName("Summary");
  ds->let_DataRootUnique("Cases\\" + zOrigin);
  bool qOK = false;
  ds->bInitialiseFrom2d(values, headers, qOK);
  return ds;
}

void TourOfADataSet() {
  std::printf("A data set from a block of floats and packed headers\n");
  auto ds = ReadSummary("BASE", 1.f);
  std::printf("  %d rows x %d columns, DefaultX %d\n", ds->get_NumRows(), ds->get_NumCols(),
              ds->get_DefaultX());
  for (int32_t c = 1; c <= ds->get_NumCols(); ++c) {
    std::string var, units;
    ds->GetAttribute(c, ATT_VARIABLE, var);
    ds->GetAttribute(c, ATT_UNITS, units);
    Array<float> col;
    ds->GetValues(c, col);
    float lo = 0, hi = 0;
    ds->GetColMinMax(c, lo, hi);
    std::printf("  %-5s %-8s", var.c_str(), units.c_str());
    for (float v : col) std::printf(" %8s", SingleText(v).c_str());
    std::printf("   min %s max %s\n", SingleText(lo).c_str(), SingleText(hi).c_str());
  }
  std::printf("\n");
}

// A host that answers the library's yes/no question from a setting.
class ExampleHost : public HostServices {
 public:
  bool YesNoQuestion(const std::string&, const std::string& zText) override {
    std::printf("  host asked: \"%s\" -> %s\n", zText.c_str(), answer ? "yes" : "no");
    return answer;
  }
  bool answer = false;
};

void PrintHead(const std::string& zFile, int nLines) {
  std::ifstream in(zFile, std::ios::binary);
  std::string line;
  for (int i = 0; i < nLines && std::getline(in, line); ++i) {
    if (!line.empty() && line.back() == '\r') line.pop_back();  // lines end in CR LF
    std::printf("    | %s\n", line.c_str());
  }
}

void SearchAndExport(mxDataStore& store) {
  std::printf("A search conversation: VARIABLE = WOPR, CLASS = WELLS\n");
  bool qOK = false;
  store.SearchClear();
  store.SearchAddAttribute(ATT_VARIABLE, "WOPR", qOK);
  store.SearchAddAttribute(ATT_CLASS, "WELLS", qOK);
  store.SearchCreatePointers(qOK);
  Array2<int32_t> hits;
  int32_t nHits = 0;
  store.SearchPointers(hits, nHits, qOK);
  for (int32_t h = 1; h <= nHits; ++h) {
    std::shared_ptr<mxDataSet> ds;
    store.GetDataSet(hits(1, h), ds);
    std::string key;
    int32_t iType = 0;
    ds->GetTreeViewKey(hits(2, h), key, iType, qOK);
    std::printf("  hit %d: data set %d (%s), column %d: %s\n", h, hits(1, h), ds->get_Origin().c_str(),
                hits(2, h), key.c_str());
  }

  std::printf("\nText export of data set 1\n");
  auto host = std::make_shared<ExampleHost>();
  SetHostServices(host);
  const std::string dir = std::filesystem::temp_directory_path().string();
  const std::string plain = dir + "/quickstart_plain.csv", extended = dir + "/quickstart_ext.csv";
  std::shared_ptr<mxDataSet> ds;
  store.GetDataSet(1, ds);
  host->answer = false;
  ds->WriteAsCSV(plain);
  std::printf("  plain layout, first lines of %s:\n", plain.c_str());
  PrintHead(plain, 3);
  host->answer = true;
  ds->WriteAsCSV(extended);
  std::printf("  extended layout, first lines of %s:\n", extended.c_str());
  PrintHead(extended, 8);
  SetHostServices(nullptr);
  std::filesystem::remove(plain);
  std::filesystem::remove(extended);
  std::printf("\n");
}

void TourOfAStore() {
  std::printf("A store of data sets\n");
  mxDataStore store;
  store.let_AutomaticRename(true);  // a duplicate is renamed without asking
  bool qOK = false;
  store.AddDataSet(ReadSummary("BASE", 1.f), qOK);
  store.AddDataSet(ReadSummary("HIGH", 1.2f), qOK);
  store.AddDataSet(ReadSummary("BASE", 0.9f), qOK);  // same origin and group again
  for (int32_t i = 1; i <= store.get_NumberOfDataSets(); ++i) {
    std::shared_ptr<mxDataSet> ds;
    store.GetDataSet(i, ds);
    std::printf("  %d: %s [%s]\n", i, ds->get_Origin().c_str(), ds->get_GroupName().c_str());
    for (int32_t c = 1; c <= ds->get_NumCols(); ++c) {
      std::string key;
      ds->MakeTreeViewPath(c, key);
      std::printf("       %s\n", ds->TreeViewPath(c).c_str());
    }
  }
  std::printf("\n");
  SearchAndExport(store);
}

// A grid data set as a reader of solutions delivers it: its wells come with
// their markers, one row of vMarkers (fields 1..55) a marker.
std::shared_ptr<mxDataSet> ReadGridWithMarkers() {
  struct Row {
    const char* well;
    int32_t i, j, k;
    const char* status;
    const char* style;
  };
  const Row rows[] = {{"PROD1", 2, 3, 1, "4", "WELL"}, {"PROD1", 2, 3, 4, "4", "PERF"},
                      {"INJ1", 7, 7, 1, "2", "WELL"},  {"INJ1", 7, 7, 5, "2", "PERF"},
                      {"PROD2", 9, 1, 1, "0", "WELL"}};
  const int32_t n = static_cast<int32_t>(sizeof(rows) / sizeof(rows[0]));
  Array2<Variant> vMarkers(1, 55, 1, n);
  for (int32_t m = 1; m <= n; ++m) {
    const Row& r = rows[m - 1];
    vMarkers(3, m) = r.i;
    vMarkers(4, m) = r.j;
    vMarkers(5, m) = r.k;
    vMarkers(10, m) = std::string(r.status);
    vMarkers(11, m) = std::string(r.well);
    vMarkers(12, m) = std::string(r.style);
    vMarkers(13, m) = std::string("FIELD");
  }
  auto ds = std::make_shared<mxDataSet>();
  ds->let_Origin("GRID");
  ds->let_DataClass("SOLUTION");  // a solution names its wells by its markers
  bool qOK = false;
  ds->SetMarkers(n, vMarkers, qOK);
  return ds;
}

void PrintNames(const char* zWhat, const Array<std::string>& zNames, int32_t n) {
  std::printf("  %s:", zWhat);
  for (int32_t k = 1; k <= n; ++k) std::printf(" %s", zNames(k).c_str());
  std::printf("\n");
}

void TourOfWellsAndWellLists() {
  std::printf("Wells, markers and well lists\n");
  mxDataStore store;
  store.AddItem(ReadGridWithMarkers());
  const int32_t iGrid = store.get_NumberOfDataSets();
  std::printf("  data set %d holds %d wells and %d markers\n", iGrid, store.get_NumWells(iGrid),
              store.get_NumMarkers(iGrid));
  int32_t nMarkers = 0;
  Array2<Variant> vMarkers;
  bool qOK = false;
  store.GetMarkers(iGrid, nMarkers, vMarkers, qOK);
  for (int32_t m = 1; m <= nMarkers; ++m)
    std::printf("    %-6s I %2d J %2d K %2d  %s\n", vMarkers(11, m).ToText().c_str(),
                static_cast<int>(vMarkers(3, m).ToLong()), static_cast<int>(vMarkers(4, m).ToLong()),
                static_cast<int>(vMarkers(5, m).ToLong()), vMarkers(12, m).ToText().c_str());
  int32_t iWell = 0, iStatus = 0;
  std::string zWell, zStyle, zStatus;
  store.GetMarkerFromIJK(iGrid, 7, 7, 5, iWell, zWell, zStyle, iStatus, zStatus);
  std::printf("  cell (7, 7, 5): well %d %s, %s, status %d \"%s\"\n", iWell, zWell.c_str(),
              zStyle.c_str(), iStatus, zStatus.c_str());

  Array<std::string> zAll;
  int32_t nAll = 0;
  store.GetAllWells(iGrid, zAll, nAll, qOK);
  PrintNames("all wells", zAll, nAll);

  std::printf("  named lists (a list of the same wells is not added twice):\n");
  std::string zName = "Producers";
  store.WSH_AppendNamedWellList(iGrid, Array<std::string>{"PROD1", "PROD2"}, zName);
  zName = "Again";
  store.WSH_AppendNamedWellList(iGrid, Array<std::string>{"PROD1", "PROD2"}, zName);
  zName.clear();  // no name: the origin and the number of lists so far
  store.WSH_AppendNamedWellList(iGrid, Array<std::string>{"INJ1", "NOWELL"}, zName);
  int32_t nLists = 0;
  Array<std::string> zNames, zJoined;
  store.WDS_DSGetOriginWellLists(iGrid, nLists, zNames, zJoined, qOK);
  for (int32_t k = 1; k <= nLists; ++k)
    std::printf("    %-10s %s\n", zNames(k).c_str(), zJoined(k).c_str());

  std::printf("  walking the list \"Producers\" as the active list:\n");
  Array<std::string> zWells;
  int32_t nWells = 0;
  store.WDS_DSGetWellListArray(iGrid, "Producers", nWells, zWells, qOK);
  store.DSSetWellList(iGrid, zWells, qOK);
  store.let_DSqUseWellList(iGrid, true);
  std::string zAt;
  for (int step = 0; step < 3; ++step) {
    std::string zNext;
    store.WellListNextItem(iGrid, zAt, true, false, zNext, qOK);
    std::printf("    after \"%s\" comes \"%s\"\n", zAt.c_str(), zNext.c_str());
    zAt = zNext;
  }
  store.let_DSqUseWellList(iGrid, false);
  std::string zNext;
  store.WellNextItem(iGrid, "PROD1", false, false, zNext, qOK);
  std::printf("  with the list out of use, after \"PROD1\" among all wells comes \"%s\"\n",
              zNext.c_str());
  std::printf("\n");
}

}  // namespace

int main() {
  std::printf("vndata63 quickstart\n\n");
  PrintAttributeTable();
  PrintConstantLists();
  PrintSourceSlots();
  PrintWordGroups();
  ExercisePlatform();
  DeriveAColumn();
  TourOfADataSet();
  TourOfAStore();
  TourOfWellsAndWellLists();
  return 0;
}
