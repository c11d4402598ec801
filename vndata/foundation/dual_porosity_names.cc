// The dual porosity families of grid array names.
#include "vndata/foundation/dual_porosity_names.h"

#include <array>

namespace vndata {

namespace {

struct DualFamily {
  const char* base;  // "" where the family has no base name
  const char* matrix;
  const char* fracture;
};

constexpr std::array<DualFamily, 43> kDualFamilies = {{
    {"TX", "TXM", "TXF"},       {"TY", "TYM", "TYF"},          {"TZ", "TZM", "TZF"},
    {"TR", "TRM", "TRF"},       {"TTH", "TTHM", "TTHF"},       {"", "MLTXM", "MLTXF"},
    {"", "MLTYM", "MLTYF"},     {"", "MLTZM", "MLTZF"},        {"TMX", "TMXM", "TMXF"},
    {"TMY", "TMYM", "TMYF"},    {"TMZ", "TMZM", "TMZF"},       {"TMR", "TMRM", "TMRF"},
    {"TMTH", "TMTHM", "TMTHF"}, {"KX", "KXM", "KXF"},          {"KY", "KYM", "KYF"},
    {"KZ", "KZM", "KZF"},       {"KR", "KRM", "KRF"},          {"KTH", "KTHM", "KTHF"},
    {"SWL", "SWLM", "SWLF"},    {"SWU", "SWUM", "SWUF"},       {"SWR", "SWRM", "SWRF"},
    {"SWRO", "SWROM", "SWROF"}, {"SGL", "SGLM", "SGLF"},       {"SGU", "SGUM", "SGUF"},
    {"SGR", "SGRM", "SGRF"},    {"SGRO", "SGROM", "SGROF"},    {"ISAT", "ISATM", "ISATF"},
    {"IPVT", "IPVTM", "IPVTF"}, {"ISATI", "ISATIM", "ISATIF"}, {"IEQUIL", "IEQUM", "IEQUF"},
    {"IREG", "IREGM", "IREGF"}, {"ICMT", "ICMTM", "ICMTF"},    {"POR", "PORM", "PORF"},
    {"PV", "PVM", "PVF"},       {"NETG", "NETGM", "NETGF"},    {"GOC", "GOCM", "GOCF"},
    {"WOC", "WOCM", "WOCF"},    {"PSAT", "PSATM", "PSATF"},    {"PDAT", "PDATM", "PDATF"},
    {"P", "PM", "PF"},          {"SG", "SGM", "SGF"},          {"SO", "SOM", "SOF"},
    {"SW", "SWM", "SWF"},
}};

}  // namespace

void DualPorosityFamilyNames(const std::string& zName, std::string& zMatrix,
                             std::string& zFracture) {
  for (const DualFamily& f : kDualFamilies) {
    if ((f.base[0] != '\0' && zName == f.base) || zName == f.matrix || zName == f.fracture) {
      zMatrix = f.matrix;
      zFracture = f.fracture;
      return;
    }
  }
  if (!zName.empty() && zName.back() == 'F') {
    zFracture = zName;
    zMatrix = zName.substr(0, zName.size() - 1) + "M";
  } else if (!zName.empty() && zName.back() == 'M') {
    zMatrix = zName;
    zFracture = zName.substr(0, zName.size() - 1) + "F";
  }
}

}  // namespace vndata
