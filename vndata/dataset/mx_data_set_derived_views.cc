// mxDataSet: views of the columns that some host views need: the ternary
// saturation columns, every column's address in one call, and dual porosity
// arrays as their matrix and fracture halves. None holds data of its own.
#include <algorithm>
#include <array>
#include <cstring>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/dual_porosity_names.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

using TernaryNames = std::array<std::array<const char*, 2>, 3>;

// Oil, gas and water by the slots of iTern.
constexpr TernaryNames kTernaryNames = {{{"SO", "SOM"}, {"SG", "SGM"}, {"SW", "SWM"}}};
constexpr TernaryNames kEclipseNames = {{{"SOIL", "SO"}, {"SGAS", "SG"}, {"SWAT", "SW"}}};
constexpr TernaryNames kVipMatrixNames = {{{"SOM", "SO"}, {"SGM", "SG"}, {"SWM", "SW"}}};
constexpr TernaryNames kVipFractureNames = {{{"SOF", nullptr}, {"SGF", nullptr}, {"SWF", nullptr}}};
// The fracture slots 4..6 of GetAllValuesPtrs.
constexpr std::array<const char*, 3> kFractureNames = {"SOF", "SGF", "SWF"};

bool IsSimulator(const std::string& zSimulator, const char* zName) {
  return StringTools::Equal(zSimulator, zName, false);
}

// The slot (1..3) of zUpper among the names, 0 for none.
int32_t TernarySlot(const TernaryNames& zNames, const std::string& zUpper) {
  for (std::size_t s = 0; s < zNames.size(); ++s)
    for (const char* z : zNames[s])
      if (z != nullptr && zUpper == z) return static_cast<int32_t>(s) + 1;
  return 0;
}

}  // namespace

// ---- Ternary columns ------------------------------------------------------------------------

void mxDataSet::TernaryScan(const TernaryNames& zNames, bool& qTernExists, Array<int32_t>& iTern,
                            float& sOil, float& sGas, float& sWat, bool& qOK) {
  if (headers_.nCols < 1) return;
  Array<int32_t> slots(1, 3);
  slots.Fill(0);
  for (int32_t c = 1; c <= headers_.nCols; ++c) {
    std::string zName;
    int32_t nLength = 0;
    bool qRead = false;
    GetStoredAttribute(c, ATT_VARIABLE, zName, nLength, qRead, false);
    const int32_t s = TernarySlot(zNames, StringTools::Upper(zName));
    if (s > 0) slots(s) = c;
  }
  iTern.Swap(slots);
  qTernExists = iTern(1) >= 1 && iTern(2) >= 1 && iTern(3) >= 1;
  qOK = true;
  if (!qTernExists) return;
  sOil = headers_.columns(iTern(1)).dMinVal;
  sGas = headers_.columns(iTern(2)).dMinVal;
  sWat = headers_.columns(iTern(3)).dMinVal;
}

void mxDataSet::GetTernaryColumns(bool& qTernExists, Array<int32_t>& iTern, float& sTernOilMin,
                                  float& sTernGasMin, float& sTernWatMin, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (GetTernaryColumns)", [&] {
    TernaryScan(kTernaryNames, qTernExists, iTern, sTernOilMin, sTernGasMin, sTernWatMin, qOK);
  });
}

void mxDataSet::GetTernaryColumnsDP(bool& qTernExists, Array<int32_t>& iTern, float& sTernOilMin,
                                    float& sTernGasMin, float& sTernWatMin, bool qDPMatrix,
                                    bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (GetTernaryColumnsDP)", [&] {
    const TernaryNames& zNames = !IsSimulator(source_.zSimulator, "VIP") ? kEclipseNames
                                 : qDPMatrix                              ? kVipMatrixNames
                                                                          : kVipFractureNames;
    TernaryScan(zNames, qTernExists, iTern, sTernOilMin, sTernGasMin, sTernWatMin, qOK);
  });
}

bool mxDataSet::qTernaryColsExist() {
  bool qExists = false, qOK = false;
  Array<int32_t> iTern;
  GetTernaryColumns(qExists, iTern, table_.sTernOilLimit, table_.sTernGasLimit,
                    table_.sTernWatLimit, qOK);
  return qOK && qExists;
}

bool mxDataSet::qTernaryColsExistDP(bool qDPMatrix) {
  bool qExists = false, qOK = false;
  Array<int32_t> iTern;
  GetTernaryColumnsDP(qExists, iTern, table_.sTernOilLimit, table_.sTernGasLimit,
                      table_.sTernWatLimit, qDPMatrix, qOK);
  return qOK && qExists;
}

void mxDataSet::GetTernaryDataLimits(float& sTernOilLimit, float& sTernGasLimit,
                                     float& sTernWatLimit) const {
  sTernOilLimit = table_.sTernOilLimit;
  sTernGasLimit = table_.sTernGasLimit;
  sTernWatLimit = table_.sTernWatLimit;
}

// ---- All addresses in one call ------------------------------------------------------------------

void mxDataSet::GetAllValuesPtrs(Array<std::intptr_t>& iPtrs, int32_t& NumPtrs,
                                 Array<std::string>& zHeads, Array<uint8_t>& bHeads,
                                 Array<float>& sMins, Array<float>& sMaxs,
                                 Array<std::intptr_t>& iTern) {
  RunGuarded("mxDataSet (Code) (GetAllValuesPtrs)", [&] {
    NumPtrs = headers_.nCols;
    if (NumPtrs < 1) return;
    iPtrs.ReDim(1, NumPtrs);
    sMins.ReDim(1, NumPtrs);
    sMaxs.ReDim(1, NumPtrs);
    zHeads.ReDim(1, NumPtrs);
    iTern.ReDim(1, 6);
    iTern.Fill(0);
    const bool qVip = IsSimulator(source_.zSimulator, "VIP");
    for (int32_t k = 1; k <= NumPtrs; ++k) {
      int32_t nLength = 0;
      bool qRead = false;
      GetStoredAttribute(k, ATT_VARIABLE, zHeads(k), nLength, qRead, false);
      // A column still on disk is not fetched for a drawing overview.
      if (fetch_.qFetchOnDemand && !get_qLoaded(k)) continue;
      iPtrs(k) = ValuesPtr(k);
      if (!GetColMinMax(k, sMins(k), sMaxs(k))) continue;
      const std::string zUpper = StringTools::Upper(zHeads(k));
      const int32_t s = TernarySlot(kTernaryNames, zUpper);
      if (s > 0) iTern(s) = iPtrs(k);
      if (!qVip) continue;
      for (std::size_t f = 0; f < kFractureNames.size(); ++f)
        if (zUpper == kFractureNames[f]) iTern(static_cast<int32_t>(f) + 4) = iPtrs(k);
    }
    constexpr int32_t kHeadBytes = 16;
    bHeads.ReDim(1, kHeadBytes * NumPtrs);
    bHeads.Fill(0);
    for (int32_t k = 1; k <= NumPtrs; ++k) {
      const std::size_t n = std::min<std::size_t>(zHeads(k).size(), kHeadBytes);
      if (n > 0) std::memcpy(&bHeads(kHeadBytes * (k - 1) + 1), zHeads(k).data(), n);
    }
  });
}

// ---- Dual porosity arrays -------------------------------------------------------------------------

bool mxDataSet::ReadColumnOnce(int32_t iColumn, Array<float>& sValues) {
  return GetValues(iColumn, sValues);
}

void mxDataSet::DualPorosityArrayNames(const std::string& zArray, int32_t iCol, std::string& zMatrix,
                                       int32_t& iMatrix, std::string& zFracture, int32_t& iFracture,
                                       bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (DualPorosityArrayNames)", [&] {
    auto single = [&] {
      zMatrix = zFracture = zArray;
      iMatrix = iFracture = iCol;
      qOK = true;
    };
    if (!IsSimulator(source_.zSimulator, "VIP") && !IsSimulator(source_.zSimulator, "NEXUS"))
      return single();
    std::string zM, zF;
    DualPorosityFamilyNames(zArray, zM, zF);
    if (zM.empty()) return single();
    int32_t iM = -1, iF = -1, nHits = 0;
    for (int32_t c = 1; c <= headers_.nCols && nHits < 2; ++c) {
      std::string zName;
      int32_t nLength = 0;
      bool qRead = false;
      GetStoredAttribute(c, ATT_VARIABLE, zName, nLength, qRead, false);
      if (zName == zM) {
        iM = c;
        ++nHits;
      } else if (zName == zF) {
        iF = c;
        ++nHits;
      }
    }
    if (iM < 0 && iF < 0) return single();
    // With one half present, that half stands for both.
    if (iM < 0) {
      zM = zF;
      iM = iF;
    } else if (iF < 0) {
      zF = zM;
      iF = iM;
    }
    zMatrix = zM;
    zFracture = zF;
    iMatrix = iM;
    iFracture = iF;
    qOK = true;
  });
}

void mxDataSet::getDualPorosityArray(const std::string& zArray, int32_t iCol, int32_t& nValues,
                                     int32_t& iMatrix, int32_t& iFracture, Array<float>& sValues,
                                     bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet (Code) (getDualPorosityArray)", [&] {
    std::string zMatrix, zFracture;
    bool qNames = false;
    DualPorosityArrayNames(zArray, iCol, zMatrix, iMatrix, zFracture, iFracture, qNames);
    Array<float> sMatrix, sFracture;
    ReadColumnOnce(iMatrix, sMatrix);
    ReadColumnOnce(iFracture, sFracture);
    Array<float> out(1, 2 * nValues);
    out.Fill(0.0f);
    const std::size_t n = static_cast<std::size_t>(nValues);
    if (sMatrix.IsAllocated())
      std::memcpy(out.data(), sMatrix.data(), sizeof(float) * std::min(n, sMatrix.size()));
    if (sFracture.IsAllocated())
      std::memcpy(out.data() + n, sFracture.data(), sizeof(float) * std::min(n, sFracture.size()));
    sValues.Swap(out);
    nValues *= 2;
    qOK = true;
  });
}

}  // namespace vndata
