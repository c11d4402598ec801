#include "vndata/support/mx_small_sim.h"
#include "vndata/platform/internal/run_guarded.h"

#include <array>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "vndata/foundation/dual_porosity_names.h"
#include "vndata/platform/runtime_fault.h"

namespace vndata {

namespace {


// ---- Eclipse record types ------------------------------------------------

const std::unordered_map<std::string, std::string>& EclipseTypeTable() {
  static const std::unordered_map<std::string, std::string> table = [] {
    std::unordered_map<std::string, std::string> t;
    for (const char* z :
         {"ACTNUM", "COALNUM", "DPNUM", "DSTNUM", "ENDNUM", "EOSNUM", "EQLNUM", "FIPNUM", "FIPOWG",
          "FLUXNUM", "IMBNUM", "ISOLNUM", "ISTNUM", "LSLTWNUM", "LWSLTNUM", "MISCNUM", "MPFANUM",
          "MULTNUM", "NINENUM", "PENUM", "PMANUM", "PINCHNUM", "PSTNUM", "PVTNUM", "RESIDNUM",
          "ROCKNUM", "SATNUM", "SDRGO", "SDRGW", "SDROG", "SDROW", "SDRWG", "SDRWO", "SURFNUM",
          "SURFWNUM", "THERMNUM", "TNUM", "TRACKREG", "TRKPF", "YLDNUM",
          // restart arrays
          "IWEL", "ICON", "IGRP", "ISEG", "ILBS", "ILBR", "ICRD", "ICOT", "IWET", "IGRT", "INODE",
          "IBRAN", "INOBR", "IAAQ", "IAQL", "IAQN", "ICAQ"})
      t.emplace(z, "INTE");
    for (const char* z : {"XGRP", "RSEG", "XWEL", "XCON", "XCOT", "XWET", "XGRT", "RNODE", "RBRAN",
                          "XAAQ", "RAQN", "ACAQ"})
      t.emplace(z, "DOUB");
    for (const char* z : {"SGRP", "SWEL", "SCON"}) t.emplace(z, "REAL");
    for (const char* z : {"ZGRP", "ZWEL", "TRACER", "ZNODE"}) t.emplace(z, "CHAR");
    return t;
  }();
  return table;
}

bool StartsWith(const std::string& z, std::string_view head) {
  return z.size() >= head.size() && std::string_view(z).substr(0, head.size()) == head;
}

// Numbered families caught by length; the uneven cut-offs are deliberate.
std::string TypeByLength(const std::string& zName) {
  std::size_t n = zName.size();
  if (n > 6) return StartsWith(zName, "IMBNUM") || StartsWith(zName, "ALPHAN") ? "INTE" : "REAL";
  if (n == 6) {
    if (StartsWith(zName, "KRNUM")) return "INTE";
    if (StartsWith(zName, "HMMLT")) return "REAL";
    return StartsWith(zName, "TNUM") ? "INTE" : "REAL";
  }
  if (n == 4 || n == 5) return StartsWith(zName, "FIP") ? "INTE" : "REAL";
  if (n == 3) return StartsWith(zName, "HM") ? "INTE" : "REAL";
  return "REAL";
}

// ---- VIP to Eclipse names --------------------------------------------------

struct EclipseName {
  std::string name;
  std::string type;
  bool trans;
};

using NameTable = std::unordered_map<std::string, EclipseName>;

void AddNames(NameTable& t, std::initializer_list<const char*> zVip, const char* zEclipse,
              const char* zType = "REAL", bool qTrans = false) {
  for (const char* z : zVip) t.emplace(z, EclipseName{zEclipse, zType, qTrans});
}

// A base name with its matrix and fracture forms (base + "M", base + "F").
void AddFamily(NameTable& t, const std::string& zBase, const char* zEclipse,
               const char* zType = "REAL", bool qTrans = false) {
  for (const std::string& z : {zBase, zBase + "M", zBase + "F"})
    t.emplace(z, EclipseName{zEclipse, zType, qTrans});
}

// An end-point family: the base, and per axis the "+" and "-" forms, each
// with its matrix and fracture forms ("SGLX+", "SGLMX+", "SGLFX+").
void AddEndPointFamily(NameTable& t, const std::string& zBase) {
  AddFamily(t, zBase, zBase.c_str());
  for (const char* zAxis : {"X", "Y", "Z"}) {
    for (const char* zSide : {"+", "-"}) {
      std::string zEclipse = zBase + zAxis + (zSide[0] == '-' ? "-" : "");
      for (const char* zForm : {"", "M", "F"})
        t.emplace(zBase + zForm + zAxis + zSide, EclipseName{zEclipse, "REAL", false});
    }
  }
}

const NameTable& VipNameTable() {
  static const NameTable table = [] {
    NameTable t;
    AddFamily(t, "DX", "DX");
    AddFamily(t, "DY", "DY");
    AddFamily(t, "DZ", "DZ");
    AddFamily(t, "DR", "DR");
    AddNames(t, {"DTHETA"}, "DTHETA");
    AddFamily(t, "TX", "TRANX", "REAL", true);
    AddFamily(t, "TY", "TRANY", "REAL", true);
    AddFamily(t, "TZ", "TRANZ", "REAL", true);
    AddFamily(t, "TR", "TRANR", "REAL", true);
    AddFamily(t, "TTH", "TRANTHT", "REAL", true);
    AddFamily(t, "TMX", "MULTX", "REAL", true);
    AddFamily(t, "TMY", "MULTY", "REAL", true);
    AddFamily(t, "TMZ", "MULTZ", "REAL", true);
    AddFamily(t, "TMR", "MULTR", "REAL", true);
    AddFamily(t, "TMTH", "MULTTHT", "REAL", true);
    AddFamily(t, "KX", "PERMX");
    AddFamily(t, "KY", "PERMY");
    AddFamily(t, "KZ", "PERMZ");
    // "KTM", not "KRM", is the matrix form here, deliberately.
    AddNames(t, {"KR", "KTM", "KRF"}, "PERMR");
    AddFamily(t, "KTH", "PERMTHT");
    AddFamily(t, "POR", "PORO");
    AddNames(t, {"NETGRS", "NETGM", "NETGF"}, "NTG");
    AddNames(t, {"DZNET"}, "DZNET");
    AddFamily(t, "PV", "PORV");
    AddNames(t, {"PVMUL"}, "MULTPVV");
    AddFamily(t, "ISAT", "SATNUM", "INTE");
    AddFamily(t, "ISATI", "IMBNUM", "INTE");
    AddFamily(t, "IPVT", "PVTNUM", "INTE");
    AddNames(t, {"IREGION", "IREG", "IREGM", "IREGF"}, "FIPNUM", "INTE");
    AddFamily(t, "ICMT", "ROCKNUM", "INTE");
    AddNames(t, {"IEQUIL", "IEQUM", "IEQUF"}, "EQLNUM", "INTE");
    for (const char* z : {"SGL", "SGU", "SWL", "SWU"}) AddEndPointFamily(t, z);
    AddFamily(t, "BG", "BG");
    AddFamily(t, "BO", "BO");
    AddFamily(t, "BW", "BW");
    AddFamily(t, "P", "PRESSURE");
    AddFamily(t, "RS", "RS");
    AddFamily(t, "RV", "RV");
    AddFamily(t, "SG", "SGAS");
    AddFamily(t, "SO", "SOIL");
    AddFamily(t, "SW", "SWAT");
    AddFamily(t, "PSAT", "PSAT");
    AddFamily(t, "PDAT", "PDAT");
    AddFamily(t, "PBUB", "PBUB");
    return t;
  }();
  return table;
}

// ---- Connection arrays -------------------------------------------------------

// 1, 2 or 3 for the axis a connection array's name picks, 0 for none.
// "MULTHT" here, not "MULTTHT", on purpose.
int32_t TransAxis(const std::string& zName) {
  if (zName == "TRANX" || zName == "TRANR" || zName == "MULTX" || zName == "MULTR") return 1;
  if (zName == "TRANY" || zName == "TRANTHT" || zName == "MULTY" || zName == "MULTHT") return 2;
  if (zName == "TRANZ" || zName == "MULTZ") return 3;
  return 0;
}

// Moves a whole grid one cell down the axis: cell c takes cell c + stride,
// and the last cell of each line along the axis takes 0.
void ShiftGrid(std::vector<float>& g, int32_t NX, int32_t NY, int32_t NZ, int32_t iAxis) {
  std::size_t nx = static_cast<std::size_t>(NX), ny = static_cast<std::size_t>(NY),
              nz = static_cast<std::size_t>(NZ);
  std::size_t stride = iAxis == 1 ? 1 : iAxis == 2 ? nx : nx * ny;
  for (std::size_t k = 0; k < nz; ++k)
    for (std::size_t j = 0; j < ny; ++j)
      for (std::size_t i = 0; i < nx; ++i) {
        std::size_t c = i + nx * (j + ny * k);
        bool last = (iAxis == 1 && i + 1 == nx) || (iAxis == 2 && j + 1 == ny) ||
                    (iAxis == 3 && k + 1 == nz);
        g[c] = last ? 0.0f : g[c + stride];
      }
}

}  // namespace

void mxSmallSim::EclipseArrayType(const std::string& zName, std::string& zType, bool& qOK) const {
  zType = "REAL";
  qOK = true;
  RunGuarded("mxSmallSim (Code) (EclipseArrayType)", [&] {
    const auto& table = EclipseTypeTable();
    auto it = table.find(zName);
    zType = it != table.end() ? it->second : TypeByLength(zName);
  });
  qOK = true;
}

void mxSmallSim::VIPDualPorosityNames(const std::string& zName, std::string& zMatrix,
                                      std::string& zFracture, bool& qOK) const {
  qOK = false;
  RunGuarded("mxSmallSim (Code) (VIPDualPorosityNames)", [&] {
    DualPorosityFamilyNames(zName, zMatrix, zFracture);
    qOK = true;
  });
}

void mxSmallSim::VIP2EclipseName(const std::string& zName, std::string& zEclipse,
                                 std::string& zType, bool& qTrans, bool& qOK) const {
  qOK = false;
  qTrans = false;
  zType = "REAL";
  RunGuarded("mxSmallSim (Code) (VIP2EclipseName)", [&] {
    const NameTable& table = VipNameTable();
    auto it = table.find(zName);
    if (it != table.end()) {
      zEclipse = it->second.name;
      zType = it->second.type;
      qTrans = it->second.trans;
      qOK = true;
      return;
    }
    if (zName.size() > 1) {
      zEclipse = zName;
      qOK = true;
    }
  });
}

void mxSmallSim::AdjustTransArray(int32_t NX, int32_t NY, int32_t NZ, int32_t nValues,
                                  const std::string& zName, Array<float>& sValues,
                                  const Array<int32_t>& IA2N) const {
  RunGuarded("mxSmallSim (Code) (AdjustTransArray)", [&] {
    int32_t iAxis = TransAxis(zName);
    if (iAxis == 0 || NX < 1 || NY < 1 || NZ < 1 || nValues < 1) return;
    int64_t nCells = static_cast<int64_t>(NX) * NY * NZ;
    (void)sValues(nValues);  // the values must be there before anything moves
    float* v = &sValues(1);
    std::size_t n = static_cast<std::size_t>(nValues);
    if (nValues == nCells) {
      std::vector<float> g(v, v + n);
      ShiftGrid(g, NX, NY, NZ, iAxis);
      std::copy(g.begin(), g.end(), v);
      return;
    }
    // Active cells only: spread over the grid, move, gather back.
    (void)IA2N(nValues);
    std::vector<float> g(static_cast<std::size_t>(nCells), 0.0f);
    for (int32_t a = 1; a <= nValues; ++a) {
      int32_t c = IA2N(a);
      if (c < 1 || c > nCells) RaiseFault(kFaultSubscript);
      g[static_cast<std::size_t>(c - 1)] = v[a - 1];
    }
    ShiftGrid(g, NX, NY, NZ, iAxis);
    for (int32_t a = 1; a <= nValues; ++a) v[a - 1] = g[static_cast<std::size_t>(IA2N(a) - 1)];
  });
}

}  // namespace vndata
