// mxDataSet: grid names, the source file list, the row and column lists,
// the only-list reset and the texts of volumetric calculations.
#include <algorithm>
#include <cstring>
#include <vector>

#include "vndata/dataset/mx_data_set.h"
#include "vndata/foundation/packed_headers.h"
#include "vndata/platform/array_tools.h"
#include "vndata/platform/byte_tools.h"
#include "vndata/platform/internal/run_guarded.h"
#include "vndata/platform/runtime_fault.h"
#include "vndata/platform/string_tools.h"

namespace vndata {

namespace {

constexpr uint8_t kBlank = ' ';

// Copies up to `width` bytes of b(from..to) into record k of the grid names.
void PutGridName(Array2<uint8_t>& records, int32_t k, const Array<uint8_t>& b, int32_t from,
                 int32_t to, int32_t width) {
  const int32_t n = std::min(to - from + 1, width);
  for (int32_t i = 0; i < n; ++i) records(1 + i, k) = b(from + i);
}

// The rule shared by the row and the column list: a list shorter than the
// table keeps its first nList entries; anything else leaves no list.
void SetSelection(const Array<int32_t>& iList, int32_t nList, int32_t nLimit, bool& qList,
                  Array<int32_t>& iKept, int32_t& nKept) {
  Array<int32_t> none(1, 1);
  iKept.Swap(none);
  nKept = 0;
  qList = false;
  if (nList > 0 && nList < nLimit) {
    Array<int32_t> kept(1, nList);
    const int32_t lo = iList.LBound();
    for (int32_t k = 1; k <= nList; ++k) kept(k) = iList(lo + k - 1);
    iKept.Swap(kept);
    qList = true;
    nKept = nList;
  }
}

void GetSelection(bool qList, const Array<int32_t>& iKept, int32_t nKept, Array<int32_t>& iList,
                  int32_t& nList) {
  nList = 0;
  if (qList && nKept > 0) {
    iList = iKept;
    nList = nKept;
  }
}

}  // namespace

// ---- Grid names ---------------------------------------------------------------------------

void mxDataSet::SetGridNames(const Array<uint8_t>& bGridNames, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetGridNames)", [&] {
    const int32_t hi = bGridNames.UBound();
    std::vector<int32_t> blanks;
    for (int32_t i = 1; i <= hi; ++i)
      if (bGridNames(i) == kBlank) blanks.push_back(i);
    Array2<uint8_t> records;
    int32_t nGrids = 1;
    if (!blanks.empty()) {
      // Each name ends at its blank; bytes after the last blank name nothing.
      nGrids = static_cast<int32_t>(blanks.size());
      ArrayTools::Size2(records, kGridNameWidth, nGrids, kBlank);
      int32_t from = 1;
      for (int32_t k = 1; k <= nGrids; ++k) {
        const int32_t blank = blanks[static_cast<std::size_t>(k - 1)];
        PutGridName(records, k, bGridNames, from, blank - 1, kGridNameWidth);
        from = blank + 1;
      }
    } else {
      ArrayTools::Size2(records, kGridNameWidth, 1, kBlank);
      PutGridName(records, 1, bGridNames, 1, hi, kGridNameWidth);
    }
    lists_.bGridNames.Swap(records);
    lists_.nGrids = nGrids;
    qOK = true;
  });
}

void mxDataSet::SetGridNamesString(const Array<std::string>& zGridNames, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetGridNamesString)", [&] {
    const int32_t nGrids = zGridNames.UBound();
    Array2<uint8_t> records;
    if (nGrids >= 1) {
      ArrayTools::Size2(records, kGridNameWidth, nGrids, kBlank);
      for (int32_t k = 1; k <= nGrids; ++k)
        ByteTools::PutText(&records(1, k), kGridNameWidth, zGridNames(k));
    }
    lists_.bGridNames.Swap(records);
    lists_.nGrids = nGrids;
    qOK = true;
  });
}

void mxDataSet::GetGridNames(Array<std::string>& zGridNames, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetGridNames)", [&] {
    const int32_t nGrids = lists_.nGrids;
    Array<std::string> names(1, std::max(nGrids, 1));
    for (int32_t k = 1; k <= nGrids; ++k)
      names(k) = StringTools::Trim(ByteTools::GetText(&lists_.bGridNames(1, k), kGridNameWidth));
    zGridNames.Swap(names);
    qOK = true;
  });
}

void mxDataSet::GetGridName(int32_t iRow, std::string& zGridName, bool& qOK) const {
  zGridName.clear();
  qOK = false;
  RunGuarded("mxDataSet  (GetGridName)", [&] {
    if (iRow < 1 || iRow >= lists_.nGrids) return;
    zGridName =
        StringTools::Trim(ByteTools::GetText(&lists_.bGridNames(1, iRow), kGridNameWidth));
    qOK = true;
  });
}

// ---- Source files ---------------------------------------------------------------------------

void mxDataSet::SetFileList(std::shared_ptr<ByteStore>& xFileList, int32_t nFiles, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetFileList)", [&] {
    lists_.xFileList = std::move(xFileList);
    xFileList.reset();
    lists_.nFiles = nFiles;
    qOK = true;
  });
}

std::string mxDataSet::GetFileName(int32_t iColumn) {
  std::string zName;
  RunGuarded("mxDataSet  (GetFileName)", [&] {
    if (!ValidColumn(iColumn, true)) return;
    if (lists_.nFiles < 1) {
      zName = source_.zFileName;
      return;
    }
    int32_t index = 1;
    GetFileIndex(iColumn, index);
    if (!lists_.xFileList) RaiseFault(kFaultObjectNotSet);
    zName = lists_.xFileList->GetString(index);
  });
  return zName;
}

void mxDataSet::GetFileIndex(int32_t iColumn, int32_t& index) const {
  index = 1;
  if (fetch_.qFileIndexSet && ValidColumn(iColumn, true)) index = fetch_.iFileIndex(iColumn);
}

// ---- Row and column lists -------------------------------------------------------------------

void mxDataSet::SetRowList(const Array<int32_t>& iRowList, int32_t nRowList, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetRowList)", [&] {
    SetSelection(iRowList, nRowList, get_NumRows(), lists_.qRowList, lists_.iRowList,
                 lists_.nRowList);
    qOK = true;
  });
}

void mxDataSet::SetColumnList(const Array<int32_t>& iColumnList, int32_t nColumnList, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (SetColumnList)", [&] {
    SetSelection(iColumnList, nColumnList, headers_.nCols, lists_.qColumnList,
                 lists_.iColumnList, lists_.nColumnList);
    qOK = true;
  });
}

void mxDataSet::GetRowList(Array<int32_t>& iRowList, int32_t& nRowList, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetRowList)", [&] {
    GetSelection(lists_.qRowList, lists_.iRowList, lists_.nRowList, iRowList, nRowList);
    qOK = true;
  });
}

void mxDataSet::GetColumnList(Array<int32_t>& iColumnList, int32_t& nColumnList, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetColumnList)", [&] {
    GetSelection(lists_.qColumnList, lists_.iColumnList, lists_.nColumnList, iColumnList,
                 nColumnList);
    qOK = true;
  });
}

Array<int32_t> mxDataSet::get_RowList() const {
  Array<int32_t> iList;
  int32_t n = 0;
  bool qOK = false;
  GetRowList(iList, n, qOK);
  return iList;
}

void mxDataSet::let_RowList(const Array<int32_t>& iRowList) {
  bool qOK = false;
  SetRowList(iRowList, static_cast<int32_t>(iRowList.size()), qOK);
}

Array<int32_t> mxDataSet::get_ColumnList() const {
  Array<int32_t> iList;
  int32_t n = 0;
  bool qOK = false;
  GetColumnList(iList, n, qOK);
  return iList;
}

void mxDataSet::let_ColumnList(const Array<int32_t>& iColumnList) {
  bool qOK = false;
  SetColumnList(iColumnList, static_cast<int32_t>(iColumnList.size()), qOK);
}

void mxDataSet::ClearLists() {
  RunGuarded("mxDataSet  (ClearLists)", [&] {
    Array2<uint8_t> blank(1, kOnlyRecordSize, 1, 1);
    blank.Fill(kBlank);
    lists_.bOnly.Swap(blank);
    lists_.qOnly = false;
    const Array<int32_t> none;
    SetSelection(none, 0, 0, lists_.qRowList, lists_.iRowList, lists_.nRowList);
    SetSelection(none, 0, 0, lists_.qColumnList, lists_.iColumnList, lists_.nColumnList);
  });
}

// ---- Volumetric calculations ------------------------------------------------------------------

void mxDataSet::AddVCParameters(const std::string& zTimeSteps, const std::string& zVectors,
                                const std::string& zRegions, const std::string& zCalculations,
                                const std::string& zWeight, bool& qOK) {
  qOK = false;
  RunGuarded("mxDataSet  (AddVCParameters)", [&] {
    const int32_t n = lists_.nVolumetricCalcs + 1;
    lists_.zVCTimeSteps.ReDimPreserve(n);
    lists_.zVCVectors.ReDimPreserve(n);
    lists_.zVCRegions.ReDimPreserve(n);
    lists_.zVCCalculations.ReDimPreserve(n);
    lists_.zVCWeight.ReDimPreserve(n);
    lists_.zVCTimeSteps(n) = zTimeSteps;
    lists_.zVCVectors(n) = zVectors;
    lists_.zVCRegions(n) = zRegions;
    lists_.zVCCalculations(n) = zCalculations;
    lists_.zVCWeight(n) = zWeight;
    lists_.nVolumetricCalcs = n;
    qOK = true;
  });
}

void mxDataSet::GetVCParameters(int32_t iVolCalc, std::string& zTimeSteps, std::string& zVectors,
                                std::string& zRegions, std::string& zCalculations,
                                std::string& zWeight, bool& qOK) const {
  qOK = false;
  RunGuarded("mxDataSet  (GetVCParameters)", [&] {
    if (iVolCalc < 1 || iVolCalc > lists_.nVolumetricCalcs) RaiseFault(kFaultSubscript);
    zTimeSteps = lists_.zVCTimeSteps(iVolCalc);
    zVectors = lists_.zVCVectors(iVolCalc);
    zRegions = lists_.zVCRegions(iVolCalc);
    zCalculations = lists_.zVCCalculations(iVolCalc);
    zWeight = lists_.zVCWeight(iVolCalc);
    qOK = true;
  });
}

}  // namespace vndata
