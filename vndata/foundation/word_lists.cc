// The word lists of the common constant module.
#include <initializer_list>
#include <vector>

#include "vndata/foundation/vocabulary.h"

namespace vndata {

namespace {
struct Group {
  const char* name;
  std::vector<const char*> words;
};

const std::vector<Group>& Groups() {
  static const std::vector<Group> groups = {
      {"Attribute keywords",
       {"ORIGIN", "UNITS", "TYPE", "CLASS", "VARIABLE", "VECTOR", "MEMBER", "INDEX", "VERBOSE",
        "SUBCLASS1", "SUBCLASS2"}},
      {"Text file keywords",
       {"PAGE", "END", "STOP", "STARTDATE", "START", "DATE", "DATEFORMAT", "FORMAT", "MISSING",
        "NULLVALUE", "NULL"}},
      {"Record kinds",
       {"INTE", "REAL", "DOUB", "CHAR", "LOGI", "INT2", "MESS", "INTEGER", "SINGLE", "DOUBLE",
        "LONG", "STRING", "FLOAT", "BYTE"}},
      {"Store section words", {"MX", "ENDMX", "ALL", "MK32", "MKEX", "MXHPG"}},
      {"Simulators and sources",
       {"ECLIPSE", "SLN", "ALLOC", "vdb", "VDB", "ASCII", "VIP", "NEXUS", "Nexus", "CORE", "EXEC",
        "MORE", "USER", "SURE", "3DSL", "ATHOS", "MERLIN", "UTCHEM", "CMG", "IMEX", "GEM",
        "STARS", "UTCOMP", "KOREL", "INTERSECT", "GPRS", "COMET3", "CHEARS", "VOL.INIT",
        "VOL.SOL"}},
      {"Well orientation and role", {"VERTICAL", "DEVIATED", "HORIZONTAL", "PRODUCER", "INJECTOR"}},
      {"Unit systems", {"METRIC", "FIELD", "LAB", "METRICKPA", "METRICKG", "METKPA", "METKG"}},
      {"Length units", {"FEET", "METRES", "METERS", "CM", "CENTIMETRES", "CENTIMETERS"}},
      {"Grid geometry", {"CARTESIAN", "RADIAL"}},
      {"Data class words",
       {"Summary", "SUMMARY", "SPEC", "spec", "Rate", "RATE", "RAT", "rat", "Plot", "Observed",
        "OBSERVED", "OBS", "Data", "DATA", "Run", "RUN", "Solution", "SOLUTION", "INIT", "Init",
        "RFT SOLUTION", "RFT SIMULATED", "RFT Measured", "PLT CONNECTION", "PLT SEGMENT",
        "Extract", "EXTRACT", "Table", "Tables", "TABLE", "Sample", "SAMPLE", "DATAMINE", "Grid",
        "GRID", "ROOT", "egrid", "EGRID", "RESTART", "GRF", "GRIDPROP", "GridProp", "FHF", "OUT",
        "SSS", "SUM", "NEXUSSS", "Inflow", "Connect", "CSV", "User"}},
      {"Object classes and TYPE words",
       {"WELL", "OBSWELL", "WELLS", "PERF", "GROUP", "LAYER", "SECTOR", "SPHIST", "ALLOCATIONS",
        "GAP", "SEGBRAN", "ICDBRAN", "SEGMENT", "SEG", "PLTBRAN", "ICDBRANCH", "PLTBRANCH", "RFT",
        "PLT", "INFLOW", "CONNECT", "BUBBLE", "OIL", "GAS", "WATER", "LENGTH"}},
      {"Time units",
       {"DAY", "DAYS", "TIME", "YEAR", "YEARS", "DATES", "WEEK", "WEEKS", "MONTH", "MONTHS",
        "QUARTER", "QUARTERS", "HOUR", "HOURS", "MINUTE", "MINUTES", "SECOND", "SECONDS"}},
      {"Tree roots of a data set",
       {"AQUIFERS", "BLOCKS", "COMPLETIONS", "GROUPS", "IRF", "REGIONS", "SEGMENTS", "NODES"}},
      {"Summary file extensions",
       {"FUNSMRY", "FUS", "FSMSPEC", "FSM", "SMSPEC", "SMS", "FUNRST", "FUR", "UNRST", "URS",
        "FGRID", "FEGRID", "_GRID", "FGR", "GRD", "FEG", "EGR", "FINIT", "FIN", "INI", "RSSPEC",
        "INSPEC", "DAI", "DAM", "FLP", "GDD", "PRD", "REC", "RRO", "SIM", "TTS", "WRT", "HIS",
        "IN", "DAT"}},
      {"Header arrays of the simulator files",
       {"INTEHEAD", "REALHEAD", "DOUBHEAD", "LOGIHEAD", "FILEPROPS"}},
      {"Marks of the default grid and null", {"(none)", "Default", "-32768"}},
  };
  return groups;
}

std::vector<Array<std::string>> BuildArrays() {
  std::vector<Array<std::string>> out;
  for (const Group& g : Groups()) {
    Array<std::string> a(1, static_cast<int32_t>(g.words.size()));
    int32_t i = 1;
    for (const char* w : g.words) a(i++) = w;
    out.push_back(std::move(a));
  }
  return out;
}
}  // namespace

const Array<std::string>& Words(WordGroup group) {
  static const std::vector<Array<std::string>> arrays = BuildArrays();
  return arrays.at(static_cast<std::size_t>(group));
}

std::string WordGroupName(WordGroup group) {
  return Groups().at(static_cast<std::size_t>(group)).name;
}

bool IsWord(WordGroup group, std::string_view zWord) {
  for (const std::string& w : Words(group))
    if (w == zWord) return true;
  return false;
}

}  // namespace vndata
